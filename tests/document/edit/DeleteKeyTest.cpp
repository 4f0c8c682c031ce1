#include "core/document/edit/DeleteKey.h"

#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

using model::FieldType;
using model::Picture;
using platform::Answer;

struct DeleteKey : test::DocumentFixture {
    // Two records with a field of the type in slot 1, whose first cell holds a text, and a date in slot 2 that tells
    // when the record was updated.
    model::FieldDef& prepare(FieldType type, const std::string& text) {
        field(2, FieldType::Date, "Changed").Default = "U";
        model::FieldDef& made = field(1, type);
        records(2);
        setCell(0, 1, text);
        go(0, 1);
        return made;
    }
    bool changed() const { return doc.DocModified && cell(0, 2) == "3/5/2003"; }
    bool untouched() const { return !doc.DocModified && cell(0, 2).empty(); }
};

TEST_F(DeleteKey, emptiesWhatMayBeEmpty) {
    struct Row {
        FieldType type;
        const char* text;
    };
    const Row rows[] = {
        {FieldType::Text, "old"},     {FieldType::Memo, "one\ntwo"},     {FieldType::Integer, "12"},
        {FieldType::Long, "-70000"},  {FieldType::Float, "1.5"},         {FieldType::Date, "1/2/2003"},
        {FieldType::Time, "7:05:00"}, {FieldType::AutoIncremental, "7"},
    };
    for (const Row& row : rows) {
        model::clearDocument(doc);
        prepare(row.type, row.text);
        deleteKey(doc, t);
        EXPECT_EQ(cell(0, 1), "") << row.text;
        EXPECT_TRUE(changed()) << row.text;
        EXPECT_FALSE(doc.editor.open());
    }
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(DeleteKey, aNumberWithArrowsBecomesEmptyAndNotZero) {
    prepare(FieldType::Long, "3").IncDec = 1;
    deleteKey(doc, t);
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_TRUE(changed());
}

TEST_F(DeleteKey, takesAnItemOffAndUnfilesTheCategory) {
    prepare(FieldType::List, "Upper");
    items(1, {{4, "Upper"}});
    items(0, {{2, "Home"}});
    doc.CellLongs.set(0, 1, 4);
    deleteKey(doc, t);
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_EQ(doc.CellLongs.get(0, 1), 0);
    EXPECT_TRUE(changed());
    setCell(0, 0, "Home");
    doc.CellLongs.set(0, 0, 2);
    go(0, 0);
    deleteKey(doc, t);
    EXPECT_EQ(cell(0, 0), "Unfiled");
    EXPECT_EQ(doc.CellLongs.get(0, 0), 0);
}

// What is stored of a join is its key; the record is not stamped, as with a typed key.
TEST_F(DeleteKey, letsAJoinReferToNoRecord) {
    for (const int shownField : {0, 2}) {
        model::clearDocument(doc);
        prepare(FieldType::DBJoin, "Old Mill");
        doc.CurrDB20.Externals[1].MatchField = static_cast<std::uint8_t>(shownField);
        doc.CellVals.set(0, 1, "20");
        deleteKey(doc, t);
        std::string scratch;
        EXPECT_EQ(cell(0, 1), "");
        EXPECT_EQ(doc.CellVals.get(0, 1, scratch), "");
        EXPECT_TRUE(doc.DocModified);
    }
}

TEST_F(DeleteKey, leavesAnEmptyCellWithoutAMark) {
    for (const FieldType type : {FieldType::Text, FieldType::Memo, FieldType::Integer, FieldType::Float,
                                 FieldType::Date, FieldType::Time, FieldType::List, FieldType::DBJoin}) {
        model::clearDocument(doc);
        prepare(type, "");
        deleteKey(doc, t);
        EXPECT_TRUE(untouched()) << static_cast<int>(type);
    }
    go(0, 0); // "Unfiled"
    deleteKey(doc, t);
    EXPECT_TRUE(untouched());
}

TEST_F(DeleteKey, leavesAloneWhatCannotBeEmpty) {
    prepare(FieldType::Checkbox, "");
    doc.grd.setPicture(2, 2, Picture::CheckOn);
    deleteKey(doc, t);
    EXPECT_EQ(picture(0, 1), Picture::CheckOn);
    for (const FieldType type : {FieldType::RadioButton, FieldType::Image, FieldType::DBLookup, FieldType::NotUsed}) {
        prepare(type, "shown");
        items(1, {{1, "shown"}});
        deleteKey(doc, t);
        EXPECT_EQ(cell(0, 1), "shown");
    }
    EXPECT_TRUE(untouched());
    EXPECT_TRUE(t.user.messages.empty());
}

// The message that typing there gives.
TEST_F(DeleteKey, saysWhyACellIsNotTheUsersToChange) {
    struct Row {
        FieldType type;
        const char* message;
    };
    const Row rows[] = {
        {FieldType::Key, "To change the key values, change the field type to 'Long' and then change back to 'Key'."},
        {FieldType::Expression, "To recalculate expressions, select the '!' button on the toolbar."},
        {FieldType::AdvExpression, "To recalculate expressions, select the '!' button on the toolbar."},
        {FieldType::ConditionalExpression, "To recalculate expressions, select the '!' button on the toolbar."},
        {FieldType::OneToMany, "One to many fields are only available on the handheld."},
        {FieldType::Plugin, "Plugins are only available on the handheld."},
        {FieldType::AddressBookJoin, "The data for this field can only be modified on the handheld."},
        {FieldType::AddressBookLookup, "The data for this field can only be modified on the handheld."},
    };
    for (const Row& row : rows) {
        prepare(row.type, "shown");
        deleteKey(doc, t);
        EXPECT_EQ(lastMessage().text, row.message);
        EXPECT_EQ(cell(0, 1), "shown");
        EXPECT_TRUE(untouched());
    }
}

TEST_F(DeleteKey, isGuardedAsEditingIs) {
    prepare(FieldType::Text, "old");
    protect(model::PasswordKind::Modify, "secret");
    t.user.passwords = {std::nullopt};
    deleteKey(doc, t);
    EXPECT_EQ(cell(0, 1), "old");
    doc.CurrDB20.ReadOnly = 1;
    deleteKey(doc, t);
    EXPECT_EQ(cell(0, 1), "old");
    doc.CurrDB20.ReadOnly = 0;
    doc.ViewShown = true;
    deleteKey(doc, t);
    EXPECT_EQ(cell(0, 1), "old");
    doc.ViewShown = false;
    doc.GridReady = false;
    deleteKey(doc, t);
    EXPECT_EQ(cell(0, 1), "old");
    doc.GridReady = true;
    doc.grd.setRowHeight(2, 0);
    deleteKey(doc, t);
    EXPECT_EQ(cell(0, 1), "old");
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(DeleteKey, onAWholeRowAsksToDeleteTheRecord) {
    prepare(FieldType::Text, "old");
    selectRow(doc.grd, 3);
    t.user.answers = {Answer::No, Answer::Yes};
    deleteKey(doc, t);
    EXPECT_EQ(lastMessage().text, "Delete current record.  Are you sure?");
    EXPECT_EQ(lastMessage().preferred, Answer::No);
    EXPECT_EQ(doc.NumDataRecs, 2);
    deleteKey(doc, t);
    EXPECT_EQ(doc.NumDataRecs, 1);
    EXPECT_EQ(cell(0, 1), "old");
}

TEST_F(DeleteKey, onABlockSaysThatOneCellIsEmptiedAtATime) {
    prepare(FieldType::Text, "old");
    doc.grd.setPlace({2, 1, 2, 2});
    deleteKey(doc, t);
    EXPECT_EQ(lastMessage().text, "Only one cell can be emptied at a time.");
    doc.grd.setPlace({2, 2, 3, 2});
    deleteKey(doc, t);
    EXPECT_EQ(t.user.messages.size(), 2U);
    EXPECT_EQ(cell(0, 1), "old");
    EXPECT_TRUE(untouched());
}

TEST_F(DeleteKey, doesNothingWithoutRecords) {
    prepare(FieldType::Text, "");
    records(0);
    deleteKey(doc, t);
    doc.grd.setPlace({2, 1, 2, 81});
    t.user.answers = {};
    deleteKey(doc, t);
    EXPECT_EQ(t.user.texts(), std::vector<std::string>{"No records for deletion."});
}

} // namespace
} // namespace tallybook::document
