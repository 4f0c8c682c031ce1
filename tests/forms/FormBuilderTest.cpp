#include "core/forms/FormBuilder.h"

#include "core/pdb/ByteWriter.h"
#include "core/pdb/Screens.h"
#include "support/Hex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::forms {
namespace {

using model::DatabaseModel;
using model::FieldType;
using model::FormItem;
using testing::ElementsAre;

std::string bytesOf(const DatabaseModel& db) {
    pdb::ByteWriter out;
    pdb::buildForms(db, out);
    return test::toHex(out.take());
}

FormItem itemOf(std::uint8_t field, const char* caption) {
    FormItem item = freeRow();
    item.Field = field;
    item.Caption = caption;
    return item;
}

// A base part of two rows with a free one between them, and bytes of the handheld.
DatabaseModel gapped() {
    DatabaseModel db;
    Clearg_CurrDB20(db);
    db.Forms[0].NumItems = 3;
    db.Forms[0].Items[0] = itemOf(1, "One");
    db.Forms[0].Items[0].Row = 7;
    db.Forms[0].Items[0].ItemPos = {1, 2};
    db.Forms[0].Items[2] = itemOf(3, "Three");
    db.Forms[0].FormFlags = {5, 6};
    return db;
}

TEST(FormBuilder, newDatabaseHasNoTabs) {
    DatabaseModel db;
    Clearg_CurrDB20(db);
    const FormBuilder builder = TransferPDBInfoToFormBuilder(db);
    EXPECT_EQ(builder.tabs, 0);
    EXPECT_EQ(builder.startRow, 0);
    EXPECT_EQ(builder.part(0).FormByte, 40);
    EXPECT_TRUE(isFree(builder.row(0, 0)));
    EXPECT_EQ(builder.row(0, 11).LabelBack, (model::Colour{255, 255, 255}));
    EXPECT_EQ(builder.row(0, 11).LabelFore, (model::Colour{0, 0, 0}));
    EXPECT_EQ(builder.row(0, 11).DataBack, (model::Colour{255, 255, 255}));
}

TEST(FormBuilder, startOfZeroReadsAsRowZero) {
    DatabaseModel db;
    db.StartForm = 0;
    EXPECT_EQ(TransferPDBInfoToFormBuilder(db).startRow, 0);
    db.StartForm = 4;
    EXPECT_EQ(TransferPDBInfoToFormBuilder(db).startRow, 3);
    db.StartForm = 200;
    EXPECT_EQ(TransferPDBInfoToFormBuilder(db).startRow, 9);
}

TEST(FormBuilder, rowsBehindTheCountAreFree) {
    DatabaseModel db = gapped();
    db.Forms[0].NumItems = 1;
    const FormBuilder builder = TransferPDBInfoToFormBuilder(db);
    EXPECT_EQ(builder.row(0, 0).Caption, "One");
    EXPECT_TRUE(isFree(builder.row(0, 2)));
}

TEST(FormBuilder, freeRowsAreClosedUp) {
    DatabaseModel db = gapped();
    PutBackFormBuilderInfoToPDB(TransferPDBInfoToFormBuilder(db), db);
    const model::FormDef& form = db.Forms[0];
    EXPECT_EQ(form.NumItems, 2);
    EXPECT_EQ(form.Items[0].Field, 1);
    EXPECT_EQ(form.Items[0].Row, 0);
    EXPECT_EQ(form.Items[1].Field, 3);
    EXPECT_EQ(form.Items[1].Row, 1);
    EXPECT_EQ(form.Items[2], FormItem());
    EXPECT_THAT(form.FormFlags, ElementsAre(5, 6));
    EXPECT_THAT(form.Items[0].ItemPos, ElementsAre(1, 2));
}

// Rows without a gap keep even the places that another program gave them.
TEST(FormBuilder, untouchedScreensStayToTheByte) {
    DatabaseModel db = gapped();
    db.Forms[0].NumItems = 1;
    db.StartForm = 0;
    db.NumForms = 3;
    db.Forms[1].Name = "More";
    db.Forms[2].NumItems = 12;
    for (FormItem& item : db.Forms[2].Items)
        item = itemOf(255, "x");
    const std::string before = bytesOf(db);
    PutBackFormBuilderInfoToPDB(TransferPDBInfoToFormBuilder(db), db);
    EXPECT_EQ(bytesOf(db), before);
}

TEST(FormBuilder, sixteenScreensOfAFileStay) {
    DatabaseModel db;
    db.NumForms = 16;
    db.Forms[15].Name = "last";
    const FormBuilder builder = TransferPDBInfoToFormBuilder(db);
    EXPECT_EQ(builder.tabs, 14);
    PutBackFormBuilderInfoToPDB(builder, db);
    EXPECT_EQ(db.NumForms, 16);
    EXPECT_EQ(db.Forms[15].Name, "last");
}

TEST(FormBuilder, fileWithoutAScreenGetsOneWithItsFirstRow) {
    DatabaseModel db;
    db.NumForms = 0;
    FormBuilder builder = TransferPDBInfoToFormBuilder(db);
    EXPECT_EQ(builder.tabs, 0);
    PutBackFormBuilderInfoToPDB(builder, db);
    EXPECT_EQ(db.NumForms, 0);
    builder.row(0, 0) = itemOf(1, "One");
    PutBackFormBuilderInfoToPDB(builder, db);
    EXPECT_EQ(db.NumForms, 1);
    EXPECT_EQ(db.Forms[0].NumItems, 1);
}

TEST(FormBuilder, tabThatWasTakenAwayIsEmptied) {
    DatabaseModel db;
    db.NumForms = 2;
    db.Forms[1].Name = "gone";
    FormBuilder builder = TransferPDBInfoToFormBuilder(db);
    builder.tabs = 0;
    PutBackFormBuilderInfoToPDB(builder, db);
    EXPECT_EQ(db.NumForms, 1);
    EXPECT_EQ(db.Forms[1], model::FormDef());
}

TEST(FormBuilder, staticTextIsKept) {
    DatabaseModel db;
    FormBuilder builder = TransferPDBInfoToFormBuilder(db);
    builder.row(0, 4) = itemOf(255, "Address");
    builder.startRow = 5;
    PutBackFormBuilderInfoToPDB(builder, db);
    EXPECT_EQ(db.Forms[0].NumItems, 1);
    EXPECT_EQ(db.Forms[0].Items[0].Field, 255);
    EXPECT_EQ(db.StartForm, 6);
}

// Slots that are free, and numbers that are no slot, are rows like others.
TEST(FormBuilder, onlyFieldZeroIsAFreeRow) {
    DatabaseModel db;
    FormBuilder builder = TransferPDBInfoToFormBuilder(db);
    builder.row(0, 0) = itemOf(80, "free slot");
    builder.row(0, 1) = itemOf(200, "no slot");
    PutBackFormBuilderInfoToPDB(builder, db);
    EXPECT_EQ(db.Forms[0].NumItems, 2);
}

TEST(FormBuilder, tabsWithoutNameAreCounted) {
    FormBuilder builder;
    builder.tabs = 2;
    builder.part(2).Name = "Notes";
    EXPECT_EQ(tabCaption(builder, 1), "tab1");
    EXPECT_EQ(tabCaption(builder, 2), "Notes");
}

TEST(FormBuilder, tabsTakenAwayAreNoDifference) {
    FormBuilder a;
    FormBuilder b;
    b.part(3).Name = "taken away";
    EXPECT_FALSE(differs(a, b));
    b.startRow = 1;
    EXPECT_TRUE(differs(a, b));
    b.startRow = 0;
    b.row(0, 11).ItemText = "help";
    EXPECT_TRUE(differs(a, b));
}

TEST(FormBuilder, listHasAFieldALineAndTheLabelBehind) {
    DatabaseModel db;
    db.Fields[1].Type = FieldType::Text;
    db.Fields[1].Name = "Title";
    db.Fields[80].Type = FieldType::AdvExpression;
    db.Fields[80].Name = "Sum";
    const std::vector<FieldLine> lines = SetUpFldList(db);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].key, "K_1");
    EXPECT_EQ(lines[0].text, "1");
    EXPECT_EQ(lines[0].name, "Title");
    EXPECT_EQ(lines[0].type, "Text");
    EXPECT_EQ(lines[1].key, "K_80");
    EXPECT_EQ(lines[1].type, "Adv Expression");
    EXPECT_EQ(lines[2].key, "K_255");
    EXPECT_EQ(lines[2].text, "_");
    EXPECT_EQ(lines[2].name, "Label");
    EXPECT_EQ(lines[2].type, "(Static Text)");
    EXPECT_TRUE(lines[2].isStatic());
}

} // namespace
} // namespace tallybook::forms
