#include "core/pdb/OldDB.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using model::DatabaseModel;
using model::FieldType;

DatabaseModel converted(const OldDB& old) {
    DatabaseModel db;
    ConvertTo20(old, db);
    return db;
}

TEST(InitDB, makesAListOfCategoriesAndOneView) {
    DatabaseModel db;
    initDB(db);
    EXPECT_EQ(db.Fields[0].Type, FieldType::List);
    EXPECT_EQ(db.Fields[0].Name, "Categories");
    EXPECT_EQ(db.Fields[1].Type, FieldType::NotUsed);
    EXPECT_EQ(db.Fields[1].Name, "Fld01");
    EXPECT_EQ(db.Fields[36].Name, "Fld36");
    EXPECT_EQ(db.Fields[37].Name, "Fld37"); // which the older format does not have
    EXPECT_EQ(db.Fields[80].Name, "Fld80");
    EXPECT_EQ(db.Fields[81].Name, "");
    EXPECT_EQ(db.NumFields, 1);
    EXPECT_EQ(db.NumViews, 1);
    EXPECT_EQ(db.Views[0].Name, "View01");
    EXPECT_EQ(db.Views[0].NumCols, 0);
    EXPECT_EQ(db.Views[1].Name, "");
    EXPECT_EQ(db.NumFilters, 0);
    EXPECT_EQ(db.Filters[0], model::FilterDef{});
    EXPECT_EQ(db.LastKey, 0);
    EXPECT_EQ(db.FormatVersion, 21);
    EXPECT_EQ(db.AutoIncNext.at(1), 1);
    EXPECT_EQ(db.AutoIncNext.at(80), 1);
    EXPECT_EQ(db.Passwords[0], "");
}

TEST(ConvertTo20, carriesFieldsAndTheirAttributesToTheSameSlots) {
    OldDB old;
    old.Fields[36] = {.Type = FieldType::Float, .HandheldByte = 5, .Decimals = 2, .Name = "Price", .Default = ""};
    old.Fields[2].Type = FieldType::Text; // without a name
    old.Lists[0] = {.ItemIds = {1}, .Items = {"home"}};
    old.Expressions[3].Tokens = {1, '+', 2};
    old.Externals[4] = {.Source = "MSA_B", .SourceField = 1, .MatchField = 2};
    const DatabaseModel db = converted(old);
    EXPECT_EQ(db.Fields[36], old.Fields[36]);
    EXPECT_EQ(db.Fields[2].Type, FieldType::Text);
    EXPECT_EQ(db.Fields[2].Name, "Fld02");
    EXPECT_EQ(db.NumFields, 37);
    EXPECT_EQ(db.Lists, old.Lists);
    EXPECT_EQ(db.Expressions.at(3).Tokens[1], std::uint32_t{'+'}); // as calcExpression wants it
    EXPECT_EQ(db.Externals.at(4).KeyType, 11);
    EXPECT_EQ(db.Externals, old.Externals);
}

TEST(ConvertTo20, carriesViewsAndFiltersToTheSameSlots) {
    OldDB old;
    old.NumViews = 12;
    old.Views[11].Name = "Last";
    old.Views[11].Columns[0] = {.Field = 3, .Width = 60};
    old.Views[11].Columns[35] = {.Field = 36, .Width = 20};
    old.Views[11].ViewByte = 9;
    old.Filters[11].Name = "Big";
    old.Filters[11].CondFields = {1, 0, 0};
    old.Filters[11].CondValues[0] = "5";
    old.Filters[11].CondLinks = {1, 2};
    const DatabaseModel db = converted(old);
    EXPECT_EQ(db.NumViews, 12);
    EXPECT_EQ(db.Views[11].Name, "Last");
    EXPECT_EQ(db.Views[11].NumCols, 36);
    EXPECT_EQ(db.Views[11].Columns[35].Field, 36);
    EXPECT_EQ(db.Views[11].Columns[35].Width, 20);
    EXPECT_EQ(db.Views[11].ViewByte, 9);
    EXPECT_EQ(db.Views[12], model::ViewDef{});
    EXPECT_EQ(db.NumFilters, 12);
    EXPECT_EQ(db.Filters[11], old.Filters[11]);
}

TEST(ConvertTo20, namesTheFirstViewWhenItHasNoName) {
    OldDB old;
    EXPECT_EQ(converted(old).Views[0].Name, "View01");
    EXPECT_EQ(converted(old).Views[1].Name, "");
    old.Views[0].Name = "Mine";
    EXPECT_EQ(converted(old).Views[0].Name, "Mine");
}

TEST(ConvertTo20, carriesThePasswordAndTheLastKey) {
    OldDB old;
    old.Password = "scrambled!";
    old.LastKey = 77;
    const DatabaseModel db = converted(old);
    EXPECT_EQ(db.Passwords[0], "scrambled!");
    EXPECT_EQ(db.Passwords[1], "");
    EXPECT_EQ(db.LastKey, 77);
}

TEST(ConvertTo20, leavesTheHandheldsOwnBytesBehind) {
    OldDB old;
    old.FormFlag = 1;
    old.Splitters = {1, 2, 3};
    old.HdrBytes = {1, 2, 3, 2, 5};
    old.Texts.fill("text");
    DatabaseModel expected = converted({});
    EXPECT_EQ(converted(old), expected);
}

} // namespace
} // namespace tallybook::pdb
