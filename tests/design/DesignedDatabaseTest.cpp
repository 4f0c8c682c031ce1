// A database made with the designers alone, saved and opened again.
#include "core/design/FieldProperties.h"
#include "core/design/FilterDesign.h"
#include "core/design/ListEditor.h"
#include "core/design/Properties.h"
#include "core/design/ViewDesign.h"
#include "document/FileFixture.h"

#include <gtest/gtest.h>
#include <string>

namespace tallybook::design {
namespace {

using model::FieldType;

class DesignedDatabase : public test::FileFixture {
protected:
    DesignedDatabase() { document::CreateNewDatabase(doc, t); }

    void nameIt() {
        UserList users{{"Ann"}, {"/home"}, "Ann", {}};
        Properties properties(doc, t, users);
        properties.txtPDBname = "Every type";
        properties.ChkSearch = true;
        properties.TxtStartup = "Hello\r\nall";
        properties.ChkStartup = true;
        properties.CmdDone();
        ASSERT_EQ(properties.cmdOK(), Properties::Accepted::Done);
    }

    // A field of every type, each in the slot of its code, with something in each panel.
    void makeField(FieldType type) {
        const int slot = static_cast<int>(type);
        FieldPropDraft draft = fillAttributeValues(doc.CurrDB20, slot, t);
        selectFieldType(draft, type, doc.CurrDB20, slot, t);
        draft.txtFieldName = "The " + std::string(model::fieldTypeName(type));
        draft.txtDefault = type == FieldType::Text ? "new" : "5";
        draft.cmbDefault = 1;
        draft.cmbDefaultText = "42";
        draft.cmbDecDigs = 2;
        draft.checkAutoWriter = true;
        draft.cmbSeparate = 3;
        cmdAddToList(draft, "one", t);
        draft.checkIncrementDecrement = true;
        draft.chkBarcodeScan = true;
        draft.frmExpr.operands[0] = {static_cast<int>(FieldType::Long), ""};
        draft.frmExpr.operands[1] = {kTypedNumber, "2.5"};
        draft.frmExpr.operators[0] = 3;
        draft.frmExprAdv = {"[The Long] * 2", 0};
        draft.external = {"Books", 1, 2, 3, 3, 0, 0};
        draft.frmMasterDetail.Source = "Loans";
        draft.frmMasterDetail.Label1 = "Lent to";
        draft.FrmRadio.Optxt = {"red", "green"};
        draft.condition.CondFields[0] = 3;
        draft.condition.CondOps[0] = '>';
        draft.condition.CondValues[0] = "10";
        draft.branchThen = {false, 0, "many", 1};
        draft.branchElse = {true, 1, "", 0};
        ASSERT_TRUE(fieldPropertiesOK(doc, t, slot, draft, FieldPropMode::Document).accepted)
            << draft.txtFieldName << ": " << lastMessage().text;
    }

    void addItems() {
        ListEditor editor(doc, t, static_cast<int>(FieldType::List));
        t.user.typedTexts = {"soft", "hard"};
        editor.CmdAdd();
        editor.CmdAdd();
        EXPECT_TRUE(editor.OKButton());
    }

    void makeFilterAndView() {
        FilterControls controls;
        controls.LblFilterName = "Many";
        controls.conditions[0] = {3, 4, 0, "10"};
        EXPECT_TRUE(filterOk(doc, t, 0, controls).accepted);
        ViewDesign view(doc, t);
        view.TxtView = "Short";
        view.chooseField(2);
        view.chooseSort(2);
        view.filter = 1;
        EXPECT_TRUE(view.cmdOK());
    }
};

TEST_F(DesignedDatabase, comesBackFromItsFile) {
    nameIt();
    for (int type = 1; type < model::kFieldTypes; ++type)
        makeField(static_cast<FieldType>(type));
    addItems();
    makeFilterAndView();
    ASSERT_TRUE(document::RecordAdd(doc, t));
    ASSERT_EQ(doc.CurrFilePath, "/home/MS2_Every_type.pdb");
    ASSERT_EQ(document::savePDBFile20(doc, t, doc.CurrFilePath), test::Outcome::Done);
    ASSERT_EQ(open(doc.CurrFilePath), test::Outcome::Done);

    const model::DatabaseModel& made = doc.CurrDB20;
    const model::DatabaseModel& read = opened->CurrDB20;
    EXPECT_EQ(read.DBName, "MS2_Every type");
    EXPECT_EQ(read.StartupText, "Hello\nall");
    EXPECT_EQ(read.SearchFlags, 0x80);
    for (std::size_t slot = 1; slot < model::kFieldTypes; ++slot) {
        const int at = static_cast<int>(slot);
        SCOPED_TRACE(made.Fields[slot].Name);
        EXPECT_EQ(read.Fields[slot], made.Fields[slot]);
        EXPECT_EQ(read.Expressions.at(at), made.Expressions.at(at));
        EXPECT_EQ(read.Externals.at(at), made.Externals.at(at));
        EXPECT_EQ(read.OneToManys.at(at), made.OneToManys.at(at));
    }
    for (const int slot : {1, 2, 3, 4, 5, 10, 17})
        EXPECT_EQ(read.Lists.at(slot), made.Lists.at(slot)) << slot;
    EXPECT_EQ(read.AutoIncNext.at(20), made.AutoIncNext.at(20));
    EXPECT_EQ(read.CondExprs.at(19), made.CondExprs.at(19)); // one condition: no links to move
    EXPECT_EQ(read.Filters[0], made.Filters[0]);
    EXPECT_EQ(read.Views[0], made.Views[0]);
    EXPECT_EQ(opened->NumDataRecs, 1);
}

} // namespace
} // namespace tallybook::design
