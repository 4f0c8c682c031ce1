#include "document/DocumentFixture.h"
#include "support/Regions.h"

namespace tallybook::document {
namespace {

using model::EditorKind;
using model::FieldType;
using platform::Answer;
using platform::Icon;

// Slot 9 is a time stamp: it tells whether an edit was stamped.
struct SaveCell : test::DocumentFixture {
    void stamped(int count) {
        field(9, FieldType::Date).Default = "U";
        records(count);
    }
    bool wasStamped(int record = 0) const { return cell(record, 9) == "3/5/2003"; }
};

TEST_F(SaveCell, isHarmlessWithoutAnEditor) {
    stamped(1);
    saveCell(doc, t);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_FALSE(wasStamped());
}

TEST_F(SaveCell, textThatChangedIsWrittenMarkedAndStamped) {
    field(1, FieldType::Text);
    stamped(2);
    type(1, 1, "Hello");
    EXPECT_EQ(cell(1, 1), "Hello");
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(wasStamped(1));
    EXPECT_FALSE(wasStamped(0));
    EXPECT_FALSE(doc.editor.open());
}

TEST_F(SaveCell, textThatDidNotChangeIsNoEdit) {
    field(1, FieldType::Text);
    stamped(1);
    setCell(0, 1, "Hello");
    type(0, 1, "Hello");
    EXPECT_FALSE(doc.DocModified);
    EXPECT_FALSE(wasStamped());
}

TEST_F(SaveCell, acceptedNumberCountsAsAChangeEvenWhenItIsTheSame) {
    for (const FieldType type : {FieldType::Integer, FieldType::Long, FieldType::Float, FieldType::Time}) {
        field(1, type).Decimals = 2;
        stamped(1);
        doc.DocModified = false;
        setCell(0, 1, "12");
        this->type(0, 1, "12");
        EXPECT_TRUE(doc.DocModified) << model::fieldTypeName(type);
        EXPECT_TRUE(wasStamped()) << model::fieldTypeName(type);
    }
}

TEST_F(SaveCell, refusedValueKeepsTheOldTextAndClosesTheEditor) {
    struct Row {
        FieldType type;
        std::string typed, message;
    };
    const Row rows[] = {
        {FieldType::Integer, "12.9", "Only Integer value allowed"},
        {FieldType::Integer, "40000", "Integer value allowed -32768 to 32767"},
        {FieldType::Long, "x", "Only Long value allowed"},
        {FieldType::Float, "x", "Only Floating value allowed"},
        {FieldType::Float, "1.234", "Only 2 decimals are allowed"},
        {FieldType::Time, "7pm", "Please specify the valid Time Input (e.g. 10:10:10 PM or 22:10:10)."},
    };
    for (const Row& row : rows) {
        field(1, row.type).Decimals = 2;
        stamped(1);
        setCell(0, 1, "3");
        type(0, 1, row.typed);
        EXPECT_EQ(lastMessage().text, row.message);
        EXPECT_EQ(lastMessage().icon, Icon::Critical);
        EXPECT_EQ(cell(0, 1), "3") << row.typed;
        EXPECT_FALSE(doc.editor.open());
        EXPECT_FALSE(doc.DocModified);
        EXPECT_FALSE(wasStamped());
    }
    EXPECT_EQ(t.user.messages.size(), std::size(rows));
}

TEST_F(SaveCell, loneMinusIsWrittenAsItStands) {
    field(1, FieldType::Integer);
    stamped(1);
    type(0, 1, "-");
    EXPECT_EQ(cell(0, 1), "-");
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(SaveCell, shortTimesAreCompleted) {
    field(1, FieldType::Time);
    stamped(1);
    const std::pair<const char*, const char*> rows[] = {
        {"7", "07:00"}, {"930", "9:30"}, {"1234", "12:34"}, {"12.30", "12:30"}, {"", ""}};
    for (const auto& [typed, shown] : rows) {
        type(0, 1, typed);
        EXPECT_EQ(cell(0, 1), shown);
    }
}

TEST_F(SaveCell, floatGetsItsZeroInFront) {
    field(1, FieldType::Float).Decimals = 2;
    stamped(1);
    type(0, 1, ".5");
    EXPECT_EQ(cell(0, 1), "0.5");
}

TEST_F(SaveCell, autoIncrementalAboveTheNextValueBecomesIt) {
    field(1, FieldType::AutoIncremental);
    stamped(1);
    doc.CurrDB20.AutoIncNext[1] = 10;
    const std::pair<const char*, int> rows[] = {{"9", 10},   {"10", 10}, {"12", 12},         {"", 12},
                                                {"abc", 12}, {"-5", 12}, {"99999999999", 12}};
    for (const auto& [typed, next] : rows) {
        type(0, 1, typed);
        EXPECT_EQ(cell(0, 1), typed);
        EXPECT_EQ(doc.CurrDB20.AutoIncNext.at(1), next) << typed;
    }
    EXPECT_TRUE(t.user.messages.empty()); // what stands there is not validated
}

// MebSpin

struct SpinRow {
    FieldType type;
    std::string typed;
    std::string shown;
    std::string message;
    bool modified;
    bool stamped;
};

TEST_F(SaveCell, spinBoxValues) {
    constexpr const char* kNotAccepted = "Value not accepted for this field.";
    const SpinRow rows[] = {
        {FieldType::Integer, "12", "12", "", true, true},
        {FieldType::Integer, "12.9", "12", "", true, true},
        {FieldType::Integer, "-12.9", "-12", "", true, true},
        {FieldType::Integer, "1,000", "1000", "", true, true},
        {FieldType::Integer, "", "", "", true, true},
        {FieldType::Integer, "abc", "0", kNotAccepted, true, true},
        {FieldType::Integer, "-", "0", kNotAccepted, true, true},
        {FieldType::Integer, "32767", "32767", "", true, true},
        {FieldType::Integer, "32767.9", "0", "Integer value allowed -32768 to 32767", false, false},
        {FieldType::Integer, "32768", "0", "Integer value allowed -32768 to 32767", false, false},
        {FieldType::Integer, "-32769", "0", "Integer value allowed -32768 to 32767", false, false},
        {FieldType::Long, "2,147,483,647", "2147483647", "", true, true},
        {FieldType::Long, "-2147483648", "-2147483648", "", true, true},
        {FieldType::Long, "2147483648", "0", "Long value allowed -2147483648 to 2147483647", false, false},
    };
    for (const SpinRow& row : rows) {
        field(1, row.type).IncDec = 1;
        stamped(1);
        setCell(0, 1, "5");
        doc.DocModified = false;
        t.user.messages.clear();
        type(0, 1, row.typed);
        EXPECT_EQ(cell(0, 1), row.shown) << row.typed;
        EXPECT_EQ(doc.DocModified, row.modified) << row.typed;
        EXPECT_EQ(wasStamped(), row.stamped) << row.typed;
        EXPECT_EQ(lastMessage().text, row.message) << row.typed;
        EXPECT_FALSE(doc.editor.open());
    }
}

TEST_F(SaveCell, spinBoxRefusalsBearTheErrorSign) {
    field(1, FieldType::Integer).IncDec = 1;
    stamped(1);
    type(0, 1, "abc");
    EXPECT_EQ(lastMessage().icon, Icon::Critical);
}

// DTPickerMS2

TEST_F(SaveCell, pickedDateIsWrittenInTheShortForm) {
    field(1, FieldType::Date);
    stamped(1);
    edit(0, 1);
    EXPECT_EQ(calendarDay(doc, t), 37685); // today
    pickDay(doc, t, 37623);
    EXPECT_EQ(calendarDay(doc, t), 37623);
    EXPECT_EQ(cell(0, 1), "");
    saveCell(doc, t);
    EXPECT_EQ(cell(0, 1), "1/2/2003");
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(wasStamped());
}

TEST_F(SaveCell, typedTextIsReadAsADate) {
    struct Row {
        platform::Regional region;
        std::string typed;
        std::string written;
    };
    const Row rows[] = {
        {test::us(), "12/24/2020", "12/24/2020"},
        {test::us(), "1/2/20", "1/2/2020"},
        {test::us(), "1/2/30", "1/2/1930"},
        {test::us(), "24/12/2020", "12/24/2020"},
        {test::us(), "7/4", "7/4/2003"},
        {test::us(), "2020-12-24", "12/24/2020"},
        {test::us(), "Dec 24, 2020", "12/24/2020"},
        {test::us(), " 1/2/2003 7 PM ", "1/2/2003"},
        {test::us(), "12/30/1899", "12/30/1899"},
        {test::uk(), "24/12/2020", "24/12/2020"},
        {test::uk(), "1/2/20", "01/02/2020"},
        {test::german(), "5.6.2024", "05.06.2024"},
        {test::german(), "5.6.24", "05.06.2024"},
        {test::german(), "24.12", "24.12.2003"},
        {test::swedish(), "20-12-24", "2020-12-24"},
        {test::swedish(), "2020-12-24", "2020-12-24"},
    };
    field(1, FieldType::Date);
    for (const Row& row : rows) {
        t.regional = row.region;
        records(1);
        type(0, 1, row.typed);
        EXPECT_EQ(cell(0, 1), row.written) << row.typed;
    }
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(SaveCell, whatNamesNoDayIsRefused) {
    field(1, FieldType::Date);
    stamped(1);
    for (const char* typed : {"12/24/", "2/30/2003", "7 PM", "12:30", "1.2.03", "36526", "0", "-", "?", "Sunday"}) {
        setCell(0, 1, "1/2/2003");
        type(0, 1, typed);
        EXPECT_EQ(cell(0, 1), "1/2/2003") << typed;
        EXPECT_EQ(lastMessage().text, "Please specify a valid date (e.g. 12/31/2003).") << typed;
        EXPECT_EQ(lastMessage().icon, Icon::Critical);
        t.user.messages.clear();
    }
    EXPECT_FALSE(doc.DocModified);
    EXPECT_FALSE(wasStamped());
}

TEST_F(SaveCell, aRefusedDateNamesAnExampleOfTheRegion) {
    t.regional = test::german();
    field(1, FieldType::Date);
    records(1);
    type(0, 1, "morgen");
    EXPECT_EQ(lastMessage().text, "Please specify a valid date (e.g. 31.12.2003).");
}

TEST_F(SaveCell, typingNothingEmptiesADate) {
    field(1, FieldType::Date);
    stamped(1);
    setCell(0, 1, "1/2/2003");
    type(0, 1, "");
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(wasStamped());
}

TEST_F(SaveCell, clearingADateAsksAndMarksNothing) {
    field(1, FieldType::Date);
    stamped(1);
    setCell(0, 1, "1/2/2003");
    edit(0, 1);
    t.user.answers = {Answer::Cancel};
    clearDate(doc, t);
    EXPECT_EQ(cell(0, 1), "1/2/2003");
    EXPECT_TRUE(doc.editor.open());
    EXPECT_EQ(lastMessage().text, "Are you sure to clear the DATE VALUE for the selected Field?");
    EXPECT_EQ(lastMessage().title, "Clear Date");
    EXPECT_EQ(lastMessage().buttons, platform::Buttons::OkCancel);
    t.user.answers = {Answer::Ok};
    clearDate(doc, t);
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_FALSE(doc.editor.open());
    EXPECT_FALSE(doc.DocModified);
    EXPECT_FALSE(wasStamped());
}

// cmb1

TEST_F(SaveCell, chosenItemStoresItsIdAndText) {
    field(1, FieldType::List);
    items(1, {{4, "red"}, {2, "blue"}});
    stamped(1);
    edit(0, 1);
    doc.editor.entry = 2;
    saveCell(doc, t);
    EXPECT_EQ(cell(0, 1), "blue");
    EXPECT_EQ(doc.CellLongs.get(0, 1), 2);
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(wasStamped());
}

TEST_F(SaveCell, noneEmptiesTheCell) {
    field(1, FieldType::List);
    items(1, {{4, "red"}});
    stamped(1);
    setCell(0, 1, "red");
    doc.CellLongs.set(0, 1, 4);
    edit(0, 1);
    doc.editor.entry = 0;
    saveCell(doc, t);
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_EQ(doc.CellLongs.get(0, 1), 0);
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(wasStamped());
}

TEST_F(SaveCell, lastEntryIsNoValue) {
    field(1, FieldType::List);
    items(1, {{4, "red"}});
    stamped(1);
    setCell(0, 1, "red");
    doc.CellLongs.set(0, 1, 4);
    edit(0, 1);
    doc.editor.entry = 2;
    saveCell(doc, t);
    EXPECT_EQ(cell(0, 1), "red");
    EXPECT_EQ(doc.CellLongs.get(0, 1), 4);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_FALSE(doc.editor.open());
}

TEST_F(SaveCell, categoriesKnowUnfiledAndNone) {
    items(0, {{1, "Home"}});
    stamped(1);
    edit(0, 0);
    doc.editor.entry = 1;
    saveCell(doc, t);
    EXPECT_EQ(cell(0, 0), "Home");
    EXPECT_EQ(doc.CellLongs.get(0, 0), 1);
    edit(0, 0);
    doc.editor.entry = 2;
    saveCell(doc, t);
    EXPECT_EQ(cell(0, 0), "Unfiled");
    EXPECT_EQ(doc.CellLongs.get(0, 0), 0);
    edit(0, 0);
    doc.editor.entry = 0;
    saveCell(doc, t);
    EXPECT_EQ(cell(0, 0), "");
    EXPECT_EQ(doc.CellLongs.get(0, 0), 0);
}

TEST_F(SaveCell, itemOfAUserListNextToTheEditorIsNoUnfiled) {
    field(1, FieldType::List);
    items(1, {{4, "red"}, {5, "green"}});
    stamped(1);
    edit(0, 1);
    doc.editor.entry = 2; // the entry before the last
    saveCell(doc, t);
    EXPECT_EQ(cell(0, 1), "green");
    EXPECT_EQ(doc.CellLongs.get(0, 1), 5);
}

TEST_F(SaveCell, choosingTheEditorNeedsTheDesignPassword) {
    field(1, FieldType::List);
    items(1, {{4, "red"}});
    stamped(1);
    protect(model::PasswordKind::Design, "secret");
    edit(0, 1);
    EXPECT_FALSE(chooseEntry(doc, t, 1));
    EXPECT_EQ(cell(0, 1), "red");
    EXPECT_TRUE(t.user.passwordQuestions.empty());
    t.user.passwords = {std::nullopt};
    edit(0, 1);
    EXPECT_FALSE(chooseEntry(doc, t, 2));
    t.user.passwords = {"secret"};
    edit(0, 1);
    EXPECT_TRUE(chooseEntry(doc, t, 2));
    EXPECT_EQ(t.user.passwordQuestions.back().first, "Design");
    EXPECT_FALSE(doc.editor.open());
}

// DB Join

TEST_F(SaveCell, typedJoinStoresTheTextAsItsKey) {
    field(1, FieldType::DBJoin);
    stamped(1);
    doc.CellLongs.set(0, 1, 7);
    type(0, 1, "17");
    std::string scratch;
    EXPECT_EQ(cell(0, 1), "17");
    EXPECT_EQ(doc.CellVals.get(0, 1, scratch), "17");
    EXPECT_EQ(doc.CellLongs.get(0, 1), 0);
    EXPECT_TRUE(doc.DocModified);
    EXPECT_FALSE(wasStamped());
    type(0, 1, "");
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_EQ(doc.CellVals.get(0, 1, scratch), "");
}

// The modal editors

TEST_F(SaveCell, memoIsWrittenMarkedAndStampedWhenItChanged) {
    field(1, FieldType::Memo);
    stamped(1);
    edit(0, 1);
    acceptMemo(doc, t, "");
    EXPECT_FALSE(doc.DocModified);
    acceptMemo(doc, t, "one\ntwo");
    EXPECT_EQ(cell(0, 1), "one\ntwo");
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(wasStamped());
}

TEST_F(SaveCell, longEditorCutsToWhatTheFieldHolds) {
    field(1, FieldType::Memo);
    field(2, FieldType::Text);
    stamped(1);
    go(0, 1);
    acceptMemo(doc, t, std::string(5000, 'm'));
    EXPECT_EQ(cell(0, 1).size(), 4096U);
    go(0, 2);
    acceptMemo(doc, t, std::string(5000, 't'));
    EXPECT_EQ(cell(0, 2).size(), 254U);
}

TEST_F(SaveCell, numberOfTheLongEditorIsValidated) {
    field(1, FieldType::Integer).AutoWriter = 1;
    stamped(1);
    setCell(0, 1, "3");
    go(0, 1);
    acceptMemo(doc, t, "three");
    EXPECT_EQ(cell(0, 1), "3");
    EXPECT_EQ(lastMessage().text, "Only Integer value allowed");
    acceptMemo(doc, t, "4");
    EXPECT_EQ(cell(0, 1), "4");
}

TEST_F(SaveCell, readOnlyMemoStaysAsItIs) {
    field(1, FieldType::Memo);
    stamped(1);
    doc.CurrDB20.ReadOnly = 1;
    go(0, 1);
    acceptMemo(doc, t, "changed");
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(SaveCell, radioStoresTheItemsId) {
    field(1, FieldType::RadioButton);
    items(1, {{3, "yes"}, {7, "no"}});
    stamped(1);
    go(0, 1);
    EXPECT_TRUE(acceptRadio(doc, t, 1));
    EXPECT_EQ(cell(0, 1), "no");
    EXPECT_EQ(doc.CellLongs.get(0, 1), 7);
    EXPECT_TRUE(doc.DocModified);
    EXPECT_TRUE(wasStamped());
    doc.DocModified = false;
    EXPECT_TRUE(acceptRadio(doc, t, 1));
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(SaveCell, radioWithoutAnOptionStaysOpen) {
    field(1, FieldType::RadioButton);
    items(1, {{3, "yes"}, {7, "no"}});
    stamped(1);
    go(0, 1);
    for (const int option : {-1, 2}) {
        EXPECT_FALSE(acceptRadio(doc, t, option));
        EXPECT_EQ(lastMessage().text, "It is compulsory to select an option. Select an option and click OK");
        EXPECT_EQ(lastMessage().title, "No option selected");
    }
    EXPECT_EQ(cell(0, 1), "");
}

// Stamps

TEST_F(SaveCell, stampFillsUpdatedDatesAndTimesOfTheRow) {
    field(1, FieldType::Date).Default = "U";
    field(2, FieldType::Time).Default = "U";
    field(3, FieldType::Date).Default = "A";
    field(4, FieldType::Time);
    field(5, FieldType::Text).Default = "U";
    field(80, FieldType::Date).Default = "U";
    records(2);
    go(1, 3);
    doTimeStamp(doc, t);
    EXPECT_EQ(cell(1, 1), "3/5/2003");
    EXPECT_EQ(cell(1, 2), "1:05:09 PM");
    EXPECT_EQ(cell(1, 80), "3/5/2003");
    for (const int slot : {3, 4, 5})
        EXPECT_EQ(cell(1, slot), "") << slot;
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_EQ(at(), (std::pair(1, 3)));
}

} // namespace
} // namespace tallybook::document
