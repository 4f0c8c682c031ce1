#include "core/document/file/OpenSave.h"
#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

struct NewDatabase : test::DocumentFixture {};

TEST_F(NewDatabase, hasCategoriesAndNothingElse) {
    field(1, model::FieldType::Text, "Old");
    records(3);
    doc.DocModified = true;
    doc.CurrentFilter = 3;
    doc.SessionPwd[0] = "secret";
    doc.CurrFilePath = "/home/MS2_old.pdb";
    CreateNewDatabase(doc, t);
    EXPECT_EQ(doc.CurrFileName, "MSA_New.pdb");
    EXPECT_EQ(doc.Caption, "New Database");
    EXPECT_TRUE(doc.CurrFilePath.empty());
    EXPECT_TRUE(doc.Is2xFormat);
    EXPECT_TRUE(doc.GridReady);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_EQ(doc.CurrentFilter, 0);
    EXPECT_EQ(doc.SessionPwd[0], "");
    EXPECT_EQ(doc.CurrDB20.Fields[0].Type, model::FieldType::List);
    EXPECT_EQ(doc.CurrDB20.Fields[0].Name, "Categories");
    EXPECT_EQ(doc.CurrDB20.Fields[1].Type, model::FieldType::NotUsed);
    EXPECT_EQ(doc.CurrDB20.NumFields, 1);
    EXPECT_EQ(doc.CurrDB20.Views[0].Name, "View01");
    EXPECT_EQ(doc.CurrDB20.NumViews, 1);
    EXPECT_EQ(doc.CurrDB20.AutoIncNext.at(1), 1);
    EXPECT_EQ(doc.CurrDB20.AutoIncNext.at(80), 1);
    EXPECT_TRUE(t.user.atRest());
}

TEST_F(NewDatabase, gridHasOneHiddenRow) {
    CreateNewDatabase(doc, t);
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.fixedRows(), 2);
    EXPECT_EQ(doc.grd.rowHeight(2), 0);
    EXPECT_EQ(doc.grd.cols(), 83);
    EXPECT_EQ(doc.grd.columnWidth(0), 480);
    EXPECT_EQ(doc.grd.columnWidth(82), 0);
    EXPECT_EQ(doc.grd.text(0, 1), "Categories");
    EXPECT_EQ(doc.grd.text(1, 1), "List");
    EXPECT_EQ(doc.grd.text(0, 2), "Fld01");
    EXPECT_EQ(doc.grd.text(0, 81), "Fld80");
    EXPECT_EQ(doc.grd.text(1, 2), "Not Used");
    EXPECT_EQ(doc.NumDataRecs, 0);
}

} // namespace
} // namespace tallybook::document
