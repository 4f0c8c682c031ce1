#include "core/document/edit/Records.h"

#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

using model::FieldType;
using model::Picture;
using platform::Answer;
using platform::Buttons;
using platform::Icon;

constexpr const char* kReadOnly = "Tallybook is readonly.";
constexpr const char* kNothing = "No records for deletion.";
constexpr const char* kDelete = "Delete current record.  Are you sure?";
constexpr const char* kDeleteAll = "WARNING: Delete all records in this Tallybook. Are you sure?";

struct Records : test::DocumentFixture {
    // Records whose slot 1 holds "r0", "r1" ... and whose keys are 100, 101 ...
    void numbered(int count) {
        field(1, FieldType::Text);
        records(count);
        for (int record = 0; record < count; ++record) {
            setCell(record, 1, "r" + std::to_string(record));
            doc.RecKeys.set(record, 100 + record);
        }
    }
    std::vector<std::string> firstCells() const {
        std::vector<std::string> all;
        for (int record = 0; record < doc.NumDataRecs; ++record)
            all.push_back(cell(record, 1));
        return all;
    }
};

// Adding

TEST_F(Records, readOnlyDatabaseTakesNoRecord) {
    numbered(1);
    doc.CurrDB20.ReadOnly = 1;
    EXPECT_FALSE(RecordAdd(doc, t));
    EXPECT_EQ(lastMessage().text, kReadOnly);
    EXPECT_EQ(lastMessage().icon, Icon::Critical);
    EXPECT_EQ(doc.NumDataRecs, 1);
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(Records, firstRecordReusesThePlaceholder) {
    numbered(0);
    ASSERT_EQ(doc.grd.rows(), 3);
    ASSERT_EQ(doc.grd.rowHeight(2), 0);
    EXPECT_TRUE(RecordAdd(doc, t));
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.rowHeight(2), model::kDefaultSize);
    EXPECT_EQ(doc.NumDataRecs, 1);
    EXPECT_EQ(doc.NumFileRecs, 88);
    EXPECT_EQ(cell(0, 0), "Unfiled");
    EXPECT_EQ(doc.grd.text(2, 0), "1");
    EXPECT_TRUE(doc.DocModified);
    EXPECT_EQ(at(), (std::pair(0, 1)));
}

TEST_F(Records, furtherRecordStandsBehindTheLast) {
    numbered(2);
    doc.CurrDB20.LastKey = 500;
    EXPECT_TRUE(RecordAdd(doc, t));
    EXPECT_EQ(doc.grd.rows(), 5);
    EXPECT_EQ(doc.NumDataRecs, 3);
    EXPECT_EQ(doc.NumFileRecs, 90);
    EXPECT_EQ(doc.CurrDB20.LastKey, 501);
    EXPECT_EQ(doc.RecKeys[2], 501);
    EXPECT_EQ(doc.RecKeys[1], 101);
    EXPECT_EQ(doc.grd.text(4, 0), "3");
    EXPECT_EQ(at(), (std::pair(2, 1)));
}

TEST_F(Records, newRecordStartsWithTheFieldsDefaults) {
    struct Row {
        FieldType type;
        std::string preset;
        std::string shown;
    };
    const Row rows[] = {
        {FieldType::Text, "Hello", "Hello"},  {FieldType::Integer, "5", "5"}, {FieldType::Long, "70000", "70000"},
        {FieldType::Float, "0.50", "0.50"},   {FieldType::Memo, "m", "m"},    {FieldType::Text, "", ""},
        {FieldType::Date, "A", "3/5/2003"},   {FieldType::Date, "U", ""},     {FieldType::Date, "", ""},
        {FieldType::Time, "A", "1:05:09 PM"}, {FieldType::Time, "U", ""},     {FieldType::List, "1", ""},
        {FieldType::Checkbox, "1", ""},       {FieldType::DBJoin, "5", ""},   {FieldType::Image, "x", ""},
        {FieldType::Expression, "x", ""},     {FieldType::NotUsed, "x", ""},  {FieldType::AddressBookJoin, "x", ""},
    };
    int slot = 1;
    for (const Row& row : rows)
        field(slot++, row.type).Default = row.preset;
    records(0);
    ASSERT_TRUE(RecordAdd(doc, t));
    slot = 1;
    for (const Row& row : rows) {
        EXPECT_EQ(cell(0, slot), row.shown) << model::fieldTypeName(row.type) << " " << row.preset;
        EXPECT_EQ(picture(0, slot), row.type == FieldType::Checkbox ? Picture::CheckOff : Picture::None);
        EXPECT_EQ(doc.CellLongs.get(0, slot), 0);
        ++slot;
    }
}

TEST_F(Records, autoIncrementalTakesTheNextValueWhichGoesUp) {
    field(1, FieldType::AutoIncremental);
    records(0);
    doc.CurrDB20.AutoIncNext[1] = 7;
    RecordAdd(doc, t);
    RecordAdd(doc, t);
    EXPECT_EQ(cell(0, 1), "7");
    EXPECT_EQ(cell(1, 1), "8");
    EXPECT_EQ(doc.CurrDB20.AutoIncNext.at(1), 9);
}

TEST_F(Records, typedValueAboveTheNextIsRepeatedByTheNextRecord) {
    field(1, FieldType::AutoIncremental);
    records(1);
    doc.CurrDB20.AutoIncNext[1] = 7;
    type(0, 1, "20");
    RecordAdd(doc, t);
    EXPECT_EQ(cell(1, 1), "20");
    EXPECT_EQ(doc.CurrDB20.AutoIncNext.at(1), 21);
}

TEST_F(Records, radioStartsOnTheOptionOfItsDefault) {
    const std::tuple<const char*, const char*, int> rows[] = {{"1", "yes", 3}, {"2", "no", 7}, {"3", "", 0},
                                                              {"0", "", 0},    {"", "", 0},    {"-1", "", 0}};
    field(1, FieldType::RadioButton);
    items(1, {{3, "yes"}, {7, "no"}});
    for (const auto& [preset, text, id] : rows) {
        field(1, FieldType::RadioButton).Default = preset;
        records(0);
        RecordAdd(doc, t);
        EXPECT_EQ(cell(0, 1), text) << preset;
        EXPECT_EQ(doc.CellLongs.get(0, 1), id) << preset;
    }
}

TEST_F(Records, keyColumnShowsTheNewKey) {
    field(1, FieldType::Key);
    records(0);
    doc.CurrDB20.LastKey = 41;
    RecordAdd(doc, t);
    EXPECT_EQ(cell(0, 1), "42");
}

TEST_F(Records, addingCommitsTheOpenEditAndLeavesAView) {
    numbered(1);
    edit(0, 1);
    doc.editor.text = "typed";
    RecordAdd(doc, t);
    EXPECT_EQ(cell(0, 1), "typed");
    EXPECT_FALSE(doc.editor.open());
    doc.CurrentView = "Prices";
    doc.ViewShown = true;
    RecordAdd(doc, t);
    EXPECT_EQ(doc.CurrentView, "");
}

TEST_F(Records, withoutUserFieldsTheCategoryIsTheFirstField) {
    records(0);
    RecordAdd(doc, t);
    EXPECT_EQ(at(), (std::pair(0, 0)));
}

TEST_F(Records, fullDatabaseIsRefused) {
    records(65448);
    EXPECT_FALSE(RecordAdd(doc, t));
    EXPECT_EQ(lastMessage().text, "A Tallybook cannot hold more than 65448 records.");
    EXPECT_EQ(doc.NumDataRecs, 65448);
    EXPECT_EQ(doc.CurrDB20.LastKey, 0);
}

TEST_F(Records, lastKeyGoesOverItsEndWithoutHarm) {
    records(0);
    doc.CurrDB20.LastKey = 2147483647;
    EXPECT_TRUE(RecordAdd(doc, t));
    EXPECT_EQ(doc.RecKeys[0], -2147483647 - 1);
}

TEST_F(Records, addRowMakesItsOwnRowWhenAsked) {
    field(1, FieldType::Checkbox);
    records(1);
    addRow(doc, AddRow::MakeNew);
    EXPECT_EQ(doc.NumDataRecs, 2);
    EXPECT_EQ(cell(1, 0), "Unfiled");
    EXPECT_EQ(picture(1, 1), Picture::CheckOff);
    EXPECT_TRUE(doc.DocModified);
}

// Deleting

TEST_F(Records, readOnlyDatabaseKeepsItsRecords) {
    numbered(2);
    doc.CurrDB20.ReadOnly = 1;
    EXPECT_FALSE(deleteRecord(doc, t));
    EXPECT_FALSE(deleteAllRecords(doc, t));
    EXPECT_EQ(t.user.texts(), (std::vector<std::string>{kReadOnly, kReadOnly}));
    EXPECT_EQ(doc.NumDataRecs, 2);
}

TEST_F(Records, emptyDatabaseHasNothingToDelete) {
    numbered(0);
    EXPECT_FALSE(deleteRecord(doc, t));
    EXPECT_FALSE(deleteAllRecords(doc, t));
    EXPECT_EQ(t.user.texts(), (std::vector<std::string>{kNothing, kNothing}));
}

TEST_F(Records, aHiddenRecordGivesWayToOneThatCanBeSeen) {
    numbered(3);
    doc.grd.setRowHeight(3, 0);
    go(1, 1);
    t.user.answers = {Answer::No, Answer::Yes};
    EXPECT_FALSE(deleteRecord(doc, t));
    EXPECT_EQ(at(), (std::pair(2, 1))); // what the question is about is on show
    go(1, 1);
    EXPECT_TRUE(deleteRecord(doc, t));
    EXPECT_EQ(firstCells(), (std::vector<std::string>{"r0", "r1"}));
}

TEST_F(Records, hiddenRecordsAreNotDeletedUnseen) {
    numbered(2);
    doc.grd.showOnly({});
    go(0, 1);
    EXPECT_FALSE(deleteRecord(doc, t));
    EXPECT_EQ(t.user.texts(), std::vector<std::string>{kNothing});
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(deleteAllRecords(doc, t)); // a filter's look does not count for all of them
    EXPECT_EQ(doc.NumDataRecs, 0);
}

TEST_F(Records, deletionAsksFirst) {
    numbered(2);
    t.user.answers = {Answer::No, Answer::No};
    EXPECT_FALSE(deleteRecord(doc, t));
    EXPECT_EQ(lastMessage().text, kDelete);
    EXPECT_EQ(lastMessage().buttons, Buttons::YesNo);
    EXPECT_EQ(lastMessage().icon, Icon::Warning);
    EXPECT_EQ(lastMessage().preferred, Answer::No);
    EXPECT_FALSE(deleteAllRecords(doc, t));
    EXPECT_EQ(lastMessage().text, kDeleteAll);
    EXPECT_EQ(lastMessage().buttons, Buttons::YesNo);
    EXPECT_EQ(lastMessage().preferred, Answer::No);
    EXPECT_EQ(doc.NumDataRecs, 2);
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(Records, deletionNeedsTheRecordUpdatePassword) {
    numbered(2);
    protect(model::PasswordKind::Modify, "secret");
    t.user.answers = {Answer::Yes, Answer::Yes};
    t.user.passwords = {std::nullopt, std::nullopt};
    EXPECT_FALSE(deleteRecord(doc, t));
    EXPECT_FALSE(deleteAllRecords(doc, t));
    EXPECT_EQ(doc.NumDataRecs, 2);
    t.user.answers = {Answer::Yes};
    t.user.passwords = {"secret"};
    EXPECT_TRUE(deleteRecord(doc, t));
}

TEST_F(Records, recordBehindTakesThePlaceOfADeletedOne) {
    numbered(4);
    field(2, FieldType::Image);
    field(3, FieldType::DBJoin);
    items(0, {{1, "Home"}});
    for (int record = 0; record < 4; ++record) {
        doc.CellLongs.set(record, 2, 1000 + record);
        doc.CellLongs.set(record, 0, record);
        doc.CellVals.set(record, 3, "v" + std::to_string(record));
    }
    go(1, 1);
    doc.grd.setTopRow(3);
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(deleteRecord(doc, t));
    EXPECT_EQ(firstCells(), (std::vector<std::string>{"r0", "r2", "r3"}));
    EXPECT_EQ(doc.NumDataRecs, 3);
    EXPECT_EQ(doc.NumFileRecs, 90);
    std::string scratch;
    const int old[] = {0, 2, 3};
    for (int record = 0; record < 3; ++record) {
        EXPECT_EQ(doc.RecKeys[record], 100 + old[record]);
        EXPECT_EQ(doc.CellLongs.get(record, 2), 1000 + old[record]);
        EXPECT_EQ(doc.CellLongs.get(record, 0), old[record]);
        EXPECT_EQ(doc.CellVals.get(record, 3, scratch), "v" + std::to_string(old[record]));
        EXPECT_EQ(doc.grd.text(record + 2, 0), std::to_string(record + 1));
    }
    EXPECT_EQ(at(), (std::pair(1, 1)));
    EXPECT_EQ(doc.grd.topRow(), 3);
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(doc.GridReady);
    EXPECT_TRUE(t.user.atRest());
    EXPECT_EQ(t.user.waits, 1);
    EXPECT_EQ(t.user.freezes, 1);
}

TEST_F(Records, deletingTheLastOfSeveralMovesTheCursorUp) {
    numbered(3);
    go(2, 1);
    t.user.answers = {Answer::Yes};
    deleteRecord(doc, t);
    EXPECT_EQ(at(), (std::pair(1, 1)));
    EXPECT_EQ(firstCells(), (std::vector<std::string>{"r0", "r1"}));
}

TEST_F(Records, deletingTheOnlyRecordLeavesThePlaceholder) {
    numbered(1);
    go(0, 1);
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(deleteRecord(doc, t));
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.rowHeight(2), 0);
    EXPECT_EQ(doc.grd.text(2, 2), "");
    EXPECT_EQ(doc.NumDataRecs, 0);
    EXPECT_TRUE(RecordAdd(doc, t)); // and it can be filled again
    EXPECT_EQ(doc.grd.rows(), 3);
}

TEST_F(Records, afterADeletionAShownRowIsCurrent) {
    numbered(4);
    doc.grd.setRowHeight(4, 0);
    go(1, 1);
    t.user.answers = {Answer::Yes};
    deleteRecord(doc, t);
    EXPECT_EQ(at(), (std::pair(2, 1))); // "r3", as "r2" is hidden
    t.user.answers = {Answer::Yes};
    deleteRecord(doc, t);
    EXPECT_EQ(at(), (std::pair(0, 1))); // only the hidden one is left behind it
}

TEST_F(Records, deletionCommitsTheOpenEditFirst) {
    numbered(2);
    edit(0, 1);
    doc.editor.text = "typed";
    t.user.answers = {Answer::No};
    deleteRecord(doc, t);
    EXPECT_EQ(cell(0, 1), "typed");
}

// The old value is back in its cell, so nothing stands in the way of what was asked for.
TEST_F(Records, aRefusedEditDoesNotHoldADeletionUp) {
    numbered(2);
    field(2, FieldType::Integer);
    edit(0, 2);
    doc.editor.text = "x";
    t.user.answers = {platform::Answer::Yes};
    EXPECT_TRUE(deleteRecord(doc, t));
    EXPECT_EQ(t.user.texts(),
              (std::vector<std::string>{"Only Integer value allowed", "Delete current record.  Are you sure?"}));
    EXPECT_EQ(doc.NumDataRecs, 1);
}

TEST_F(Records, deletingAllLeavesAnEmptyDatabaseWithItsColumns) {
    numbered(300);
    doc.grd.setColumnWidth(2, 1234);
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(deleteAllRecords(doc, t));
    EXPECT_EQ(doc.NumDataRecs, 0);
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.rowHeight(2), 0);
    EXPECT_EQ(doc.grd.text(2, 2), "");
    EXPECT_EQ(doc.grd.text(0, 2), "Field");
    EXPECT_EQ(doc.grd.columnWidth(2), 1234);
    EXPECT_EQ(at(), (std::pair(0, 0)));
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(t.user.atRest());
    EXPECT_TRUE(RecordAdd(doc, t));
    EXPECT_EQ(doc.RecKeys[0], doc.CurrDB20.LastKey);
    EXPECT_EQ(cell(0, 1), "");
}

// Convert to Keys

TEST_F(Records, convertingToKeysAsksInFull) {
    field(1, FieldType::Long);
    records(2);
    setCell(0, 1, "7");
    setCell(1, 1, "9");
    go(0, 1);
    t.user.answers = {Answer::No};
    EXPECT_FALSE(convertColumnToKeys(doc, t));
    EXPECT_EQ(lastMessage().text,
              "Warning: This action will convert the values in this column into key values for the existing "
              "records.  This cannot be undone.\n\nYou are responsible for invalid/duplicate key number in this "
              "column.  The program will not check for this.\n\n Continue?");
    EXPECT_EQ(doc.RecKeys[0], 0);
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(convertColumnToKeys(doc, t));
    EXPECT_EQ(doc.RecKeys[0], 7);
    EXPECT_EQ(doc.RecKeys[1], 9);
    EXPECT_EQ(doc.CurrDB20.LastKey, 9);
    EXPECT_TRUE(doc.DocModified);
}

} // namespace
} // namespace tallybook::document
