#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

using model::EditorKind;
using model::FieldType;
using Open = EditAction::Open;
using Place = std::pair<int, int>;

constexpr const char* kTimeAtKeys = "Please specify the valid Time Input (e.g. 10:10:10 AM).";

struct EditorKeys : test::DocumentFixture {
    // Slots 1 and 4 are used, 2 and 3 are not.
    void gap() {
        field(1, FieldType::Text);
        field(4, FieldType::Text);
        records(3);
    }
};

TEST_F(EditorKeys, escapeDropsWhatWasTyped) {
    field(1, FieldType::Text);
    field(2, FieldType::List);
    field(3, FieldType::Integer).IncDec = 1;
    field(4, FieldType::Date);
    items(2, {{1, "red"}});
    records(1);
    for (int slot = 1; slot <= 4; ++slot) {
        edit(0, slot);
        doc.editor.text = "99";
        doc.editor.entry = 1;
        key(EditKey::Escape);
        EXPECT_FALSE(doc.editor.open());
        EXPECT_EQ(cell(0, slot), "");
    }
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(EditorKeys, nothingHappensWithoutAnEditor) {
    gap();
    go(1, 1);
    for (const EditKey pressed :
         {EditKey::Escape, EditKey::F2, EditKey::Enter, EditKey::Tab, EditKey::BackTab, EditKey::Up, EditKey::Down})
        EXPECT_EQ(key(pressed).open, Open::Nothing);
    EXPECT_EQ(at(), (Place{1, 1}));
}

TEST_F(EditorKeys, enterCommitsAndStays) {
    gap();
    edit(1, 1);
    doc.editor.text = "x";
    key(EditKey::Enter);
    EXPECT_EQ(cell(1, 1), "x");
    EXPECT_EQ(at(), (Place{1, 1}));
    EXPECT_FALSE(doc.editor.open());
}

TEST_F(EditorKeys, f2HandsATextOverToTheLongEditor) {
    gap();
    edit(0, 1);
    doc.editor.text = "typed";
    const EditAction action = key(EditKey::F2);
    EXPECT_EQ(action.open, Open::MemoWindow);
    EXPECT_EQ(action.text, "typed");
    EXPECT_EQ(cell(0, 1), "typed");
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(EditorKeys, f2DoesNothingInOtherFields) {
    field(1, FieldType::Float);
    field(2, FieldType::List);
    records(1);
    for (int slot = 1; slot <= 2; ++slot) {
        edit(0, slot);
        EXPECT_EQ(key(EditKey::F2).open, Open::Nothing);
        EXPECT_TRUE(doc.editor.open());
    }
}

TEST_F(EditorKeys, tabSkipsUnusedColumns) {
    gap();
    edit(0, 1);
    doc.editor.text = "x";
    key(EditKey::Tab);
    EXPECT_EQ(cell(0, 1), "x");
    EXPECT_EQ(at(), (Place{0, 4}));
    edit(0, 4);
    key(EditKey::BackTab);
    EXPECT_EQ(at(), (Place{0, 1}));
    edit(0, 1);
    key(EditKey::BackTab);
    EXPECT_EQ(at(), (Place{0, 0}));
    edit(0, 0);
    key(EditKey::BackTab);
    EXPECT_EQ(at(), (Place{0, 0}));
}

TEST_F(EditorKeys, tabAtTheRightEdgeGoesToTheNextRecord) {
    gap();
    edit(0, 4);
    key(EditKey::Tab);
    EXPECT_EQ(at(), (Place{1, 0}));
    edit(2, 4);
    key(EditKey::Tab);
    EXPECT_EQ(at(), (Place{2, 4})); // there is no next record
}

TEST_F(EditorKeys, tabReachesTheVeryLastField) {
    field(1, FieldType::Text);
    field(80, FieldType::Text);
    records(2);
    edit(0, 1);
    key(EditKey::Tab);
    EXPECT_EQ(at(), (Place{0, 80}));
    edit(0, 80);
    key(EditKey::Tab);
    EXPECT_EQ(at(), (Place{1, 0}));
}

TEST_F(EditorKeys, movesPassHiddenRowsAndColumns) {
    gap();
    field(2, FieldType::Text);
    doc.grd.setColumnWidth(model::columnOfSlot(2), 0);
    doc.grd.setRowHeight(3, 0);
    edit(0, 1);
    key(EditKey::Tab);
    EXPECT_EQ(at(), (Place{0, 4}));
    edit(0, 4);
    key(EditKey::Tab);
    EXPECT_EQ(at(), (Place{2, 0}));
    edit(2, 1);
    key(EditKey::Up);
    EXPECT_EQ(at(), (Place{0, 1}));
    edit(0, 1);
    key(EditKey::Down);
    EXPECT_EQ(at(), (Place{2, 1}));
}

TEST_F(EditorKeys, upAndDownCommitAndStopAtTheEnds) {
    gap();
    edit(0, 1);
    doc.editor.text = "a";
    key(EditKey::Up);
    EXPECT_EQ(at(), (Place{0, 1})); // not into the fixed rows
    EXPECT_EQ(cell(0, 1), "a");
    edit(0, 1);
    key(EditKey::Down);
    EXPECT_EQ(at(), (Place{1, 1}));
    edit(2, 1);
    doc.editor.text = "c";
    key(EditKey::Down);
    EXPECT_EQ(at(), (Place{2, 1}));
    EXPECT_EQ(cell(2, 1), "c");
    EXPECT_FALSE(doc.editor.open());
}

// Time and Float at the keys

TEST_F(EditorKeys, timeMustBeWholeAtEnterUpAndDown) {
    field(1, FieldType::Time);
    for (const EditKey pressed : {EditKey::Enter, EditKey::Up, EditKey::Down}) {
        for (const char* typed : {"7", "930", "12:30", "7pm", "25:00:00", "-"}) {
            records(3);
            edit(1, 1);
            doc.editor.text = typed;
            t.user.messages.clear();
            key(pressed);
            EXPECT_EQ(t.user.texts(), std::vector<std::string>{kTimeAtKeys}) << typed;
            EXPECT_EQ(lastMessage().icon, platform::Icon::Critical);
            EXPECT_EQ(doc.editor.text, typed);
            EXPECT_TRUE(doc.editor.open());
            EXPECT_EQ(at(), (Place{1, 1}));
        }
        for (const char* typed : {"", "07:05:03", "22:10:10", "7:05:03 AM", "07:05:03 pm"}) {
            records(3);
            edit(1, 1);
            doc.editor.text = typed;
            t.user.messages.clear();
            key(pressed);
            EXPECT_TRUE(t.user.messages.empty()) << typed;
            EXPECT_EQ(cell(1, 1), typed);
            EXPECT_FALSE(doc.editor.open());
        }
    }
}

TEST_F(EditorKeys, tabCompletesAShortTime) {
    field(1, FieldType::Time);
    records(1);
    edit(0, 1);
    doc.editor.text = "930";
    key(EditKey::Tab);
    EXPECT_EQ(cell(0, 1), "9:30");
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(EditorKeys, floatIsReformattedAtTheKeysThatLeaveIt) {
    field(1, FieldType::Float).Decimals = 2;
    for (const EditKey pressed : {EditKey::Enter, EditKey::Up, EditKey::Down, EditKey::Tab, EditKey::BackTab}) {
        records(1);
        edit(0, 1);
        doc.editor.text = "1.2345";
        key(pressed);
        EXPECT_EQ(cell(0, 1), "1.23");
    }
    EXPECT_TRUE(t.user.messages.empty());
    type(0, 1, "1.2345"); // left in another way it is not: the message, and the old text stays
    EXPECT_EQ(cell(0, 1), "1.23");
    EXPECT_EQ(t.user.texts(), std::vector<std::string>{"Only 2 decimals are allowed"});
}

// DTPickerMS2

TEST_F(EditorKeys, enterKeepsADateOpenThatIsNone) {
    field(1, FieldType::Date);
    records(1);
    edit(0, 1);
    doc.editor.text = "2/30/2003";
    key(EditKey::Enter);
    EXPECT_EQ(t.user.texts(), std::vector<std::string>{"Please specify a valid date (e.g. 12/31/2003)."});
    EXPECT_TRUE(doc.editor.open());
    doc.editor.text = "2/28/2003";
    key(EditKey::Enter);
    EXPECT_EQ(cell(0, 1), "2/28/2003");
    EXPECT_FALSE(doc.editor.open());
}

TEST_F(EditorKeys, arrowsMoveADateByADay) {
    struct Row {
        std::string typed;
        EditKey pressed;
        std::string shown;
    };
    const Row rows[] = {
        {"2/28/2004", EditKey::Up, "2/29/2004"},
        {"1/1/2003", EditKey::Down, "12/31/2002"},
        {"1/2/20", EditKey::Up, "1/3/2020"},
        {"12/31/9999", EditKey::Up, "12/31/9999"},
        {"1/1/0100", EditKey::Down, "1/1/0100"},
        {"tomorrow", EditKey::Up, "tomorrow"},
        {"", EditKey::Down, ""},
    };
    field(1, FieldType::Date);
    records(1);
    for (const Row& row : rows) {
        edit(0, 1);
        doc.editor.text = row.typed;
        key(row.pressed);
        EXPECT_EQ(doc.editor.text, row.shown) << row.typed;
        EXPECT_TRUE(doc.editor.open());
        HideGridControls(doc);
    }
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_FALSE(doc.DocModified);
}

// MebSpin

TEST_F(EditorKeys, spinBoxCommitsOnEnterAndMovesOnTab) {
    field(1, FieldType::Integer).IncDec = 1;
    field(2, FieldType::Text);
    records(1);
    edit(0, 1);
    doc.editor.text = "5";
    key(EditKey::Enter);
    EXPECT_EQ(cell(0, 1), "5");
    edit(0, 1);
    doc.editor.text = "6";
    key(EditKey::Tab);
    EXPECT_EQ(cell(0, 1), "6");
    EXPECT_EQ(at(), (Place{0, 2}));
}

TEST_F(EditorKeys, arrowsMoveTheSpinBoxByOne) {
    struct Row {
        FieldType type;
        std::string typed;
        EditKey pressed;
        std::string shown;
        std::string message;
    };
    const Row rows[] = {
        {FieldType::Integer, "5", EditKey::Up, "6", ""},
        {FieldType::Integer, "5", EditKey::Down, "4", ""},
        {FieldType::Integer, "", EditKey::Up, "1", ""},
        {FieldType::Integer, "12.9", EditKey::Up, "13", ""},
        {FieldType::Integer, "1,000", EditKey::Down, "999", ""},
        {FieldType::Integer, "32767", EditKey::Up, "32767", ""}, // the end of the range
        {FieldType::Integer, "-32768", EditKey::Down, "-32768", ""},
        {FieldType::Integer, "99999", EditKey::Up, "9999", "Integer value allowed -32768 to 32767"},
        {FieldType::Long, "2147483647", EditKey::Up, "2147483647", ""},
        {FieldType::Long, "-2147483648", EditKey::Down, "-2147483648", ""},
        {FieldType::Long, "3000000000", EditKey::Down, "300000000", "Long value allowed -2147483648 to 2147483647"},
    };
    for (const Row& row : rows) {
        field(1, row.type).IncDec = 1;
        records(1);
        edit(0, 1);
        doc.editor.text = row.typed;
        t.user.messages.clear();
        key(row.pressed);
        EXPECT_EQ(doc.editor.text, row.shown) << row.typed;
        EXPECT_EQ(lastMessage().text, row.message) << row.typed;
        EXPECT_TRUE(doc.editor.open());
    }
    EXPECT_FALSE(doc.DocModified);
}

// cmb1

TEST_F(EditorKeys, listCommitsOnEnterTabAndUpButDownStays) {
    field(1, FieldType::List);
    field(3, FieldType::Text);
    items(1, {{4, "red"}, {5, "blue"}});
    records(2);
    edit(1, 1);
    key(EditKey::Down);
    EXPECT_EQ(doc.editor.entry, 1);
    EXPECT_TRUE(doc.editor.open());
    key(EditKey::Enter);
    EXPECT_EQ(cell(1, 1), "red");
    EXPECT_EQ(at(), (Place{1, 1}));
    edit(1, 1);
    key(EditKey::Down);
    key(EditKey::Up);
    EXPECT_EQ(cell(1, 1), "blue");
    EXPECT_EQ(at(), (Place{0, 1}));
    edit(0, 1);
    doc.editor.entry = 1;
    key(EditKey::Up); // committed, but not into the fixed rows
    EXPECT_EQ(cell(0, 1), "red");
    EXPECT_EQ(at(), (Place{0, 1}));
    edit(0, 1);
    doc.editor.entry = 2;
    key(EditKey::Tab);
    EXPECT_EQ(cell(0, 1), "blue");
    EXPECT_EQ(at(), (Place{0, 3}));
}

TEST_F(EditorKeys, downStopsAtTheLastEntryOfAList) {
    field(1, FieldType::List);
    records(1);
    edit(0, 1); // none, Edit Items...
    key(EditKey::Down);
    key(EditKey::Down);
    EXPECT_EQ(doc.editor.entry, 1);
}

// The grid's own moves

TEST_F(EditorKeys, gridMovesByOneShownColumn) {
    field(1, FieldType::Text);
    records(1);
    go(0, 0);
    moveRight(doc);
    EXPECT_EQ(at(), (Place{0, 1}));
    moveRight(doc);
    EXPECT_EQ(at(), (Place{0, 2})); // an unused column that is shown
    doc.grd.setColumnWidth(model::columnOfSlot(3), 0);
    moveRight(doc);
    EXPECT_EQ(at(), (Place{0, 4}));
    moveLeft(doc);
    EXPECT_EQ(at(), (Place{0, 2}));
    go(0, 0);
    moveLeft(doc);
    EXPECT_EQ(at(), (Place{0, 0}));
    go(0, 80);
    moveRight(doc);
    EXPECT_EQ(at(), (Place{0, 80}));
}

} // namespace
} // namespace tallybook::document
