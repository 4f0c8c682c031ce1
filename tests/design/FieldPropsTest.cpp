#include "core/design/FieldProps.h"

#include "core/document/views/Views.h"
#include "core/pdb/Passwords.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace tallybook::design {
namespace {

using model::columnOfSlot;
using model::FieldType;

constexpr int kPrice = 1;
constexpr int kTwice = 2;

// A number field, and an expression that doubles it.
class FieldProps : public testing::Test {
protected:
    FieldProps() {
        model::clearDocument(doc);
        model::resetRows(doc, 2);
        field(kPrice) = {.Type = FieldType::Integer, .Name = "Price", .Default = {}};
        field(kTwice) = {.Type = FieldType::Expression, .Name = "Twice", .Default = {}};
        doc.CurrDB20.Expressions[kTwice].Tokens = {kPrice, 90, kPrice};
        doc.grd.setText(2, columnOfSlot(kPrice), "4");
        doc.grd.setText(3, columnOfSlot(kPrice), "5");
        doc.GridReady = true;
    }
    model::FieldDef& field(int slot) { return doc.CurrDB20.Fields[static_cast<std::size_t>(slot)]; }
    std::string twice(int record) { return doc.grd.text(record + 2, columnOfSlot(kTwice)); }

    test::TestServices t;
    model::Document doc;
};

TEST_F(FieldProps, areThoseOfTheCurrentColumn) {
    doc.grd.setCell(2, columnOfSlot(kTwice));
    EXPECT_EQ(fieldPropsSlot(doc), kTwice);
    doc.grd.setCell(2, columnOfSlot(0));
    EXPECT_EQ(fieldPropsSlot(doc), 0); // the categories
    doc.grd.setCell(2, model::kNumberColumn);
    EXPECT_EQ(fieldPropsSlot(doc), std::nullopt);
}

TEST_F(FieldProps, ofAViewAreThoseOfTheFieldThatItsColumnShows) {
    model::ViewDef& view = doc.CurrDB20.Views[0];
    view.Name = "Results";
    view.Columns[0].Field = kTwice;
    view.NumCols = 1;
    doc.CurrentView = "Results";
    document::SetViewFilter(doc, t, "Results", document::kNoFilter);
    doc.ViewGrd.setCell(2, 1);
    EXPECT_EQ(fieldPropsSlot(doc), kTwice);
    field(kTwice).Name = "Double";
    fieldPropsAccepted(doc, t, {});
    EXPECT_EQ(doc.ViewGrd.text(0, 1), doc.grd.text(0, columnOfSlot(kTwice)));
    EXPECT_EQ(doc.ViewGrd.text(3, 1), "10");
}

TEST_F(FieldProps, anExpressionIsBroughtUpToDateWhenItsPropertiesOpen) {
    EXPECT_TRUE(mayOpenFieldProps(doc, t, kPrice));
    EXPECT_EQ(twice(0), "");
    EXPECT_TRUE(mayOpenFieldProps(doc, t, kTwice));
    EXPECT_EQ(twice(0), "8");
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(FieldProps, ofAReadOnlyDatabaseDoNotOpen) {
    doc.CurrDB20.ReadOnly = 1;
    EXPECT_FALSE(mayOpenFieldProps(doc, t, kPrice));
    ASSERT_EQ(t.user.messages.size(), 1U);
    EXPECT_EQ(t.user.messages.front().text, "Tallybook is readonly.");
}

TEST_F(FieldProps, askForTheDesignPassword) {
    doc.CurrDB20.Passwords[2] = pdb::ApplyPwd("plan");
    t.user.passwords = {std::nullopt};
    EXPECT_FALSE(mayOpenFieldProps(doc, t, kPrice));
    ASSERT_EQ(t.user.passwordQuestions.size(), 1U);
    EXPECT_EQ(t.user.passwordQuestions.front().first, "Design");
}

TEST_F(FieldProps, afterOkTheColumnsAreCalculatedAndShown) {
    doc.grd.setColumnWidth(columnOfSlot(kTwice), 0);
    fieldPropsAccepted(doc, t, {.notUsedFields = false, .fieldTypes = true});
    EXPECT_EQ(twice(1), "10");
    EXPECT_NE(doc.grd.columnWidth(columnOfSlot(kTwice)), 0);
    EXPECT_EQ(doc.grd.columnWidth(columnOfSlot(5)), 0);
}

} // namespace
} // namespace tallybook::design
