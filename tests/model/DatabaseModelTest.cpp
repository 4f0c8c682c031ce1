#include "core/model/DatabaseModel.h"

#include "core/model/FieldType.h"

#include <gtest/gtest.h>
#include <string_view>
#include <vector>

namespace tallybook::model {
namespace {

TEST(DatabaseModel, isClearedToTheBeginningsOfANewOne) {
    DatabaseModel db;
    db.DBName = "MS2_Books";
    db.Fields[3].Type = FieldType::Text;
    db.Views[0].Name = "Short";
    db.Filters[12].Name = "spare";
    db.Passwords[0] = "x";
    db.LastKey = 9;
    db.FormatVersion = 20;
    db.NumForms = 3;
    db.StartForm = 2;
    db.Forms[14].FormByte = 1;
    db.Forms[14].Items[11].Field = 7;
    db.Lists[3].Items.push_back("item");
    db.AutoIncNext[3] = 5;
    Clearg_CurrDB20(db);
    EXPECT_EQ(db, DatabaseModel{});
    EXPECT_EQ(db.FormatVersion, 21);
    EXPECT_EQ(db.NumForms, 1);
    EXPECT_EQ(db.StartForm, 1);
    for (const FormDef& form : db.Forms) {
        EXPECT_EQ(form.Name, "");
        EXPECT_EQ(form.FormByte, 40);
        EXPECT_EQ(form.Items[11].Field, 0);
        EXPECT_EQ(form.Items[11].Row, 0);
    }
    EXPECT_FALSE(db.Lists.has(3));
}

TEST(DatabaseModel, countsFieldsByTheHighestSlotInUse) {
    DatabaseModel db;
    EXPECT_EQ(highestField(db), 0);
    db.Fields[0].Type = FieldType::List;
    EXPECT_EQ(highestField(db), 1); // the categories alone
    db.Fields[1].Type = FieldType::Text;
    db.Fields[7].Type = FieldType::Date; // free slots between used ones keep their place
    EXPECT_EQ(highestField(db), 8);
    db.Fields[80].Type = FieldType::Text;
    EXPECT_EQ(highestField(db), 81);
    db.Fields[81].Type = FieldType::Text; // no slot of a user's
    EXPECT_EQ(highestField(db), 81);
}

TEST(DatabaseModel, countsFiltersByTheirFirstCondition) {
    DatabaseModel db;
    EXPECT_EQ(highestFilter(db), 0);
    db.Filters[4].Name = "a name makes no filter";
    EXPECT_EQ(highestFilter(db), 0);
    db.Filters[4].CondFields[0] = 3;
    EXPECT_EQ(highestFilter(db), 5);
    db.Filters[12].CondFields[0] = 3; // never written
    EXPECT_EQ(highestFilter(db), 5);
}

TEST(DatabaseModel, countsAViewsColumnsByTheHighestInUse) {
    ViewDef view;
    EXPECT_EQ(highestColumn(view), 0);
    view.Columns[5].Field = 2;
    EXPECT_EQ(highestColumn(view), 6);
    view.Columns[80].Field = 2;
    EXPECT_EQ(highestColumn(view), 81);
}

TEST(SlotTable, readsADefaultWhereASlotHasNothing) {
    SlotTable<ListDef> lists;
    EXPECT_EQ(lists.at(7).Count(), 0);
    EXPECT_FALSE(lists.has(7));
    lists[7].Items.push_back("one");
    EXPECT_TRUE(lists.has(7));
    EXPECT_EQ(lists.at(7).Count(), 1);
    lists.erase(7);
    EXPECT_FALSE(lists.has(7));
}

TEST(FieldType, hasTheNamesThatUsersKnow) {
    const std::vector<std::string_view> names = {"Not Used",
                                                 "Text",
                                                 "Integer",
                                                 "Long",
                                                 "Float",
                                                 "List",
                                                 "Checkbox",
                                                 "Date",
                                                 "Time",
                                                 "Expression",
                                                 "Memo",
                                                 "Key",
                                                 "DB Join",
                                                 "DB Lookup",
                                                 "One to Many",
                                                 "Address Book Join",
                                                 "Address Book Lookup",
                                                 "Radio Button",
                                                 "Image",
                                                 "Conditional Expression",
                                                 "Auto Incremental",
                                                 "Plugin",
                                                 "Adv Expression"};
    ASSERT_EQ(names.size(), static_cast<std::size_t>(kFieldTypes));
    for (std::size_t code = 0; code < names.size(); ++code)
        EXPECT_EQ(fieldTypeName(static_cast<FieldType>(code)), names[code]);
    EXPECT_EQ(fieldTypeName(static_cast<FieldType>(23)), "");
    EXPECT_EQ(fieldTypeName(static_cast<FieldType>(255)), "");
}

TEST(AddressBookFieldNames, areTheHandheldsInItsOrder) {
    const std::vector<std::string_view> names = {
        " ",       "Sort Field",  "First Last", "Last, First", "Company, Last", "Last",     "First",
        "Company", "First Phone", "Work Phone", "Home Phone",  "Fax",           "Other",    "E-mail",
        "Main",    "Pager",       "Mobile",     "Address",     "City",          "State",    "Zip code",
        "Country", "Title",       "Custom 1",   "Custom 2",    "Custom 3",      "Custom 4", "Note"};
    EXPECT_EQ(std::vector<std::string_view>(AddressBookFieldNames.begin(), AddressBookFieldNames.end()), names);
}

TEST(ExternalDef, namesItsBytesByTheFieldsType) {
    ExternalDef external;
    external.ABField1 = 4;
    external.Extra = 5;
    EXPECT_EQ(external.SortField(), 4);
    EXPECT_EQ(external.ABField2(), 5);
    EXPECT_EQ(external.KeyType, 11); // of the oldest files, which do not say
}

} // namespace
} // namespace tallybook::model
