#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

using model::EditorKind;
using model::FieldType;
using platform::Icon;
using Open = EditAction::Open;

struct GridEditing : test::DocumentFixture {};

TEST_F(GridEditing, eachTypeOpensItsEditor) {
    struct Row {
        FieldType type;
        Open open;
        EditorKind editor;
    };
    const Row rows[] = {
        {FieldType::NotUsed, Open::Nothing, EditorKind::None},
        {FieldType::Text, Open::CellEditor, EditorKind::Text1},
        {FieldType::Integer, Open::CellEditor, EditorKind::Text1},
        {FieldType::Long, Open::CellEditor, EditorKind::Text1},
        {FieldType::Float, Open::CellEditor, EditorKind::Text1},
        {FieldType::List, Open::CellEditor, EditorKind::cmb1},
        {FieldType::Checkbox, Open::Nothing, EditorKind::None},
        {FieldType::Date, Open::CellEditor, EditorKind::DTPickerMS2},
        {FieldType::Time, Open::CellEditor, EditorKind::Text1},
        {FieldType::Memo, Open::MemoWindow, EditorKind::None},
        {FieldType::DBJoin, Open::CellEditor, EditorKind::Text1},
        {FieldType::DBLookup, Open::Nothing, EditorKind::None},
        {FieldType::RadioButton, Open::RadioDialog, EditorKind::None},
        {FieldType::Image, Open::ImageDialog, EditorKind::None},
        {FieldType::AutoIncremental, Open::CellEditor, EditorKind::Text1},
    };
    items(1, {{1, "one"}});
    for (const Row& row : rows) {
        field(1, row.type);
        records(1);
        doc.editor = {};
        EXPECT_EQ(edit(0, 1).open, row.open) << model::fieldTypeName(row.type);
        EXPECT_EQ(doc.editor.kind, row.editor) << model::fieldTypeName(row.type);
        EXPECT_EQ(doc.CurrField, 1);
    }
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(GridEditing, typesThatCannotBeEditedBeepAndSayWhy) {
    constexpr const char* kRecalculate = "To recalculate expressions, select the '!' button on the toolbar.";
    constexpr const char* kAddress = "The data for this field can only be modified on the handheld.";
    const std::pair<FieldType, const char*> rows[] = {
        {FieldType::Key, "To change the key values, change the field type to 'Long' and then change back to 'Key'."},
        {FieldType::Expression, kRecalculate},
        {FieldType::AdvExpression, kRecalculate},
        {FieldType::ConditionalExpression, kRecalculate},
        {FieldType::OneToMany, "One to many fields are only available on the handheld."},
        {FieldType::Plugin, "Plugins are only available on the handheld."},
        {FieldType::AddressBookJoin, kAddress},
        {FieldType::AddressBookLookup, kAddress},
    };
    int beeps = 0;
    for (const auto& [type, text] : rows) {
        field(1, type);
        records(1);
        EXPECT_EQ(edit(0, 1).open, Open::Nothing);
        EXPECT_EQ(lastMessage().text, text);
        EXPECT_EQ(lastMessage().title, "Information.");
        EXPECT_EQ(t.user.beeps, ++beeps);
    }
}

TEST_F(GridEditing, readOnlyDatabaseRefusesSilentlyAllButMemoAndImage) {
    items(1, {{1, "one"}});
    doc.CurrDB20.ReadOnly = 1;
    for (int code = 0; code < model::kFieldTypes; ++code) {
        const auto type = static_cast<FieldType>(code);
        field(1, type);
        records(1);
        const EditAction action = edit(0, 1);
        const bool opens = type == FieldType::Memo || type == FieldType::Image;
        EXPECT_EQ(action.open != Open::Nothing, opens) << model::fieldTypeName(type);
        EXPECT_FALSE(doc.editor.open()) << model::fieldTypeName(type);
        EXPECT_EQ(picture(0, 1), model::Picture::None);
    }
    EXPECT_TRUE(t.user.messages.empty());
    EXPECT_EQ(t.user.beeps, 0);
}

TEST_F(GridEditing, keysDoNothingInAReadOnlyDatabase) {
    field(1, FieldType::Memo);
    field(2, FieldType::Checkbox);
    records(1);
    doc.CurrDB20.ReadOnly = 1;
    for (const int slot : {1, 2})
        for (const int key : {int{'x'}, kKeyF2, kKeyBlank, int{'\r'}}) {
            go(0, slot);
            EXPECT_EQ(keyOnGrid(doc, t, key).open, Open::Nothing) << slot << ", " << key;
        }
    EXPECT_EQ(picture(0, 2), model::Picture::None);
    EXPECT_EQ(edit(0, 1).open, Open::MemoWindow); // a click shows what is there
}

TEST_F(GridEditing, keysOpenWhatAClickOpens) {
    field(1, FieldType::Text);
    records(1);
    setCell(0, 1, "old");
    go(0, 1);
    EXPECT_EQ(keyOnGrid(doc, t, 'x').open, Open::CellEditor);
    EXPECT_EQ(doc.editor.text, "X");
    HideGridControls(doc);
    EXPECT_EQ(keyOnGrid(doc, t, kKeyBlank).open, Open::CellEditor);
    EXPECT_EQ(doc.editor.text, "old");
    HideGridControls(doc);
    EXPECT_EQ(keyOnGrid(doc, t, kKeyF2).open, Open::MemoWindow);
}

TEST_F(GridEditing, keysDoNothingWhileABulkChangeRuns) {
    field(1, FieldType::Text);
    records(1);
    doc.GridReady = false;
    go(0, 1);
    EXPECT_EQ(keyOnGrid(doc, t, 'x').open, Open::Nothing);
}

TEST_F(GridEditing, nothingOpensWhereNoCellIs) {
    field(1, FieldType::Text);
    records(0);
    EXPECT_EQ(edit(0, 1, 'x').open, Open::Nothing); // the placeholder of an empty database
    records(2);
    doc.grd.setCell(2, model::kNumberColumn);
    EXPECT_EQ(GridEdit(doc, t, kKeyBlank).open, Open::Nothing);
    doc.grd.setCell(2, model::kScratchColumn);
    EXPECT_EQ(GridEdit(doc, t, kKeyBlank).open, Open::Nothing);
    doc.grd.setCell(0, 2);
    EXPECT_EQ(GridEdit(doc, t, kKeyBlank).open, Open::Nothing);
    doc.grd.setRowHeight(2, 0); // hidden by a filter
    EXPECT_EQ(edit(0, 1).open, Open::Nothing);
    EXPECT_EQ(edit(1, 1).open, Open::CellEditor);
}

TEST_F(GridEditing, nothingOpensWhileAViewIsShown) {
    field(1, FieldType::Text);
    records(1);
    doc.CurrentView = "Prices";
    doc.ViewShown = true;
    EXPECT_EQ(edit(0, 1).open, Open::Nothing);
}

TEST_F(GridEditing, recordUpdatePasswordIsAskedOnce) {
    field(1, FieldType::Text);
    records(1);
    doc.CurrFileName = "MS2_a.pdb";
    protect(model::PasswordKind::Modify, "secret");
    t.user.passwords = {std::nullopt};
    EXPECT_EQ(edit(0, 1, 'x').open, Open::Nothing);
    t.user.passwords = {"secret"};
    EXPECT_EQ(edit(0, 1, 'x').open, Open::CellEditor);
    EXPECT_EQ(edit(0, 1, 'x').open, Open::CellEditor);
    EXPECT_EQ(t.user.passwordQuestions.back(), (std::pair<std::string, std::string>("Modify", "MS2_a.pdb")));
    EXPECT_EQ(t.user.passwordQuestions.size(), 2U);
}

TEST_F(GridEditing, codeOfNoTypeOpensNothing) {
    field(1, static_cast<FieldType>(99));
    records(1);
    EXPECT_EQ(edit(0, 1).open, Open::Nothing);
}

// Text1

TEST_F(GridEditing, keyDecidesWhatTheTextStartsWith) {
    struct Row {
        int key;
        std::string text;
        bool selected;
    };
    const Row rows[] = {
        {kKeyBlank, "old", true}, {kKeyF2, "old", true}, {'\r', "old", true},
        {'\b', "old", true},      {'x', "X", false}, // the automatic capital
        {'7', "7", false},        {0xE9, "\xC9", false}, {'X', "X", false},
    };
    for (const Row& row : rows) {
        field(1, FieldType::AutoIncremental); // on Text1 whatever the key
        records(1);
        setCell(0, 1, "old");
        edit(0, 1, row.key);
        EXPECT_EQ(doc.editor.kind, EditorKind::Text1) << row.key;
        EXPECT_EQ(doc.editor.text, row.text) << row.key;
        EXPECT_EQ(doc.editor.allSelected, row.selected) << row.key;
        EXPECT_EQ(doc.editor.row, 2);
        EXPECT_EQ(doc.editor.col, 2);
    }
}

TEST_F(GridEditing, numbersStandOnTheRight) {
    const std::pair<FieldType, bool> rows[] = {
        {FieldType::Integer, true}, {FieldType::Long, true},  {FieldType::Float, true},
        {FieldType::Text, false},   {FieldType::Time, false}, {FieldType::AutoIncremental, false},
        {FieldType::DBJoin, false},
    };
    for (const auto& [type, right] : rows) {
        field(1, type);
        records(1);
        edit(0, 1);
        EXPECT_EQ(doc.editor.rightAligned, right) << model::fieldTypeName(type);
    }
}

TEST_F(GridEditing, firstLetterBecomesACapitalUnlessTheFieldSaysNo) {
    field(1, FieldType::Text);
    field(2, FieldType::Text).Decimals = 1;
    field(3, FieldType::Text).Decimals = 2;
    records(1);
    edit(0, 1);
    EXPECT_EQ(textChanged(doc, "a"), "A");
    EXPECT_EQ(textChanged(doc, "Ab"), "Ab");
    EXPECT_EQ(textChanged(doc, "A"), "A");
    edit(0, 2, 'a');
    EXPECT_EQ(doc.editor.text, "a");
    EXPECT_EQ(textChanged(doc, "b"), "b");
    edit(0, 3, 'a');
    EXPECT_EQ(doc.editor.text, "A");
}

TEST_F(GridEditing, deletingDownToOneLetterLeavesItAsItIs) {
    field(1, FieldType::Text);
    records(1);
    setCell(0, 1, "ab");
    edit(0, 1);
    doc.editor.allSelected = false; // the caret was moved
    EXPECT_EQ(textChanged(doc, "a"), "a");
    setCell(0, 1, "ab");
    edit(0, 1);
    EXPECT_EQ(textChanged(doc, "a"), "A"); // typed over the selection
}

TEST_F(GridEditing, textBoxHoldsNoMoreThanACell) {
    field(1, FieldType::Text);
    records(1);
    edit(0, 1);
    EXPECT_EQ(textChanged(doc, std::string(300, 'x')).size(), 254U);
}

// The long editor

TEST_F(GridEditing, longEditorServesAutoWritersAndF2) {
    struct Row {
        FieldType type;
        int autoWriter;
        int key;
        Open open;
    };
    const Row rows[] = {
        {FieldType::Text, 0, kKeyBlank, Open::CellEditor},
        {FieldType::Text, 0, kKeyF2, Open::MemoWindow},
        {FieldType::Text, 1, kKeyBlank, Open::MemoWindow},
        {FieldType::Text, 1, 'x', Open::MemoWindow},
        {FieldType::Float, 1, kKeyBlank, Open::MemoWindow},
        {FieldType::Time, 7, kKeyBlank, Open::MemoWindow},
        {FieldType::Integer, 1, kKeyBlank, Open::MemoWindow},
        {FieldType::Long, 1, kKeyBlank, Open::MemoWindow},
        {FieldType::Float, 0, kKeyF2, Open::CellEditor},
        {FieldType::Integer, 0, kKeyF2, Open::CellEditor},
        {FieldType::AutoIncremental, 1, kKeyBlank, Open::CellEditor},
    };
    for (const Row& row : rows) {
        field(1, row.type).AutoWriter = static_cast<std::uint8_t>(row.autoWriter);
        records(1);
        setCell(0, 1, "5");
        const EditAction action = edit(0, 1, row.key);
        EXPECT_EQ(action.open, row.open) << model::fieldTypeName(row.type) << row.key;
        if (row.open == Open::MemoWindow) {
            EXPECT_EQ(action.text, "5");
            EXPECT_EQ(action.showAutoWriter, row.autoWriter > 0);
        }
    }
}

TEST_F(GridEditing, tooLongATextIsSaidBeforeTheLongEditorOpens) {
    struct Row {
        FieldType type;
        int autoWriter;
        std::size_t length;
        const char* message;
    };
    constexpr const char* k254 = "Maximum Number of characters for this expression is limited to 254 only!";
    constexpr const char* k4096 = "Maximum Number of characters for this expression is limited to 4096 only!";
    const Row rows[] = {
        {FieldType::Text, 0, 254, nullptr},  {FieldType::Text, 0, 255, k254},   {FieldType::Text, 1, 255, k254},
        {FieldType::Memo, 1, 4096, nullptr}, {FieldType::Memo, 1, 4097, k4096}, {FieldType::Memo, 0, 4097, nullptr},
    };
    for (const Row& row : rows) {
        field(1, row.type).AutoWriter = static_cast<std::uint8_t>(row.autoWriter);
        records(1);
        setCell(0, 1, std::string(row.length, 'x'));
        t.user.messages.clear();
        const EditAction action = edit(0, 1, kKeyF2);
        EXPECT_EQ(action.open, Open::MemoWindow);
        EXPECT_EQ(action.text.size(), row.length);
        if (row.message == nullptr)
            EXPECT_TRUE(t.user.messages.empty()) << row.length;
        else
            EXPECT_EQ(t.user.texts(), std::vector<std::string>{row.message});
    }
}

// MebSpin

TEST_F(GridEditing, spinBoxHasTheRangeOfItsType) {
    field(1, FieldType::Integer).IncDec = 1;
    field(2, FieldType::Long).IncDec = 1;
    records(1);
    setCell(0, 1, "12");
    edit(0, 1);
    EXPECT_EQ(doc.editor.kind, EditorKind::MebSpin);
    EXPECT_EQ(doc.editor.text, "12");
    EXPECT_TRUE(doc.editor.allSelected);
    EXPECT_TRUE(doc.editor.rightAligned);
    EXPECT_EQ(doc.editor.spin, 12);
    EXPECT_EQ(doc.editor.spinMin, -32768);
    EXPECT_EQ(doc.editor.spinMax, 32767);
    edit(0, 2, '5');
    EXPECT_EQ(doc.editor.text, "5");
    EXPECT_FALSE(doc.editor.allSelected);
    EXPECT_EQ(doc.editor.spinMin, -2147483647 - 1);
    EXPECT_EQ(doc.editor.spinMax, 2147483647);
}

TEST_F(GridEditing, spinBoxGoesBeforeTheAutoWriterAndIsForWholeNumbersOnly) {
    field(1, FieldType::Integer).IncDec = 1;
    field(1, FieldType::Integer).AutoWriter = 1;
    field(2, FieldType::AutoIncremental).IncDec = 1;
    field(3, FieldType::Float).IncDec = 1;
    records(1);
    edit(0, 1);
    EXPECT_EQ(doc.editor.kind, EditorKind::MebSpin);
    edit(0, 2);
    EXPECT_EQ(doc.editor.kind, EditorKind::Text1);
    edit(0, 3);
    EXPECT_EQ(doc.editor.kind, EditorKind::Text1);
}

// cmb1

TEST_F(GridEditing, listOffersNoneItsItemsAndTheEditor) {
    field(1, FieldType::List);
    items(1, {{4, "red"}, {2, "blue"}});
    records(3);
    doc.CellLongs.set(1, 1, 2);
    doc.CellLongs.set(2, 1, 9); // an id that no item has
    edit(0, 1);
    EXPECT_EQ(doc.editor.entries, (std::vector<std::string>{"none", "red", "blue", "Edit Items..."}));
    EXPECT_EQ(doc.editor.entry, 0);
    edit(1, 1);
    EXPECT_EQ(doc.editor.entry, 2);
    edit(2, 1);
    EXPECT_EQ(doc.editor.entry, 0);
}

TEST_F(GridEditing, categoriesOfferUnfiledToo) {
    items(0, {{1, "Home"}, {2, "Work"}});
    records(2);
    doc.CellLongs.set(1, 0, 1);
    edit(0, 0);
    EXPECT_EQ(doc.editor.entries,
              (std::vector<std::string>{"none", "Home", "Work", "Unfiled", "Edit Categories..."}));
    EXPECT_EQ(doc.editor.entry, 3);
    edit(1, 0);
    EXPECT_EQ(doc.editor.entry, 1);
}

TEST_F(GridEditing, categoriesWithoutItemsShowUnfiled) {
    records(1);
    edit(0, 0);
    EXPECT_EQ(doc.editor.entries, (std::vector<std::string>{"none", "Unfiled", "Edit Categories..."}));
    EXPECT_EQ(doc.editor.entry, 1);
}

// Date

TEST_F(GridEditing, datePickerHoldsTheCellsDateOrToday) {
    field(1, FieldType::Date);
    records(1);
    edit(0, 1);
    EXPECT_EQ(doc.editor.text, "3/5/2003");
    EXPECT_TRUE(doc.editor.allSelected);
    setCell(0, 1, "1/2/2003");
    edit(0, 1);
    EXPECT_EQ(doc.editor.text, "1/2/2003");
    setCell(0, 1, "tomorrow");
    edit(0, 1);
    EXPECT_EQ(doc.editor.text, "3/5/2003");
}

TEST_F(GridEditing, aKeyBecomesTheTextOfTheDatePicker) {
    field(1, FieldType::Date);
    records(1);
    setCell(0, 1, "1/2/2003");
    edit(0, 1, '5');
    EXPECT_EQ(doc.editor.text, "5");
    EXPECT_FALSE(doc.editor.allSelected);
}

// A line shows a line break as a sign of its own, and what is typed into it has blanks instead.
TEST_F(GridEditing, aTextWithLineBreaksOpensTheLongEditor) {
    for (const FieldType type : {FieldType::Text, FieldType::AutoIncremental, FieldType::DBJoin})
        for (const char* text : {"a\nb", "a\r\nb", "a\rb"})
            for (const int key : {kKeyBlank, static_cast<int>('x'), kKeyF2}) {
                field(1, type);
                records(1);
                setCell(0, 1, text);
                const EditAction action = edit(0, 1, key);
                EXPECT_EQ(action.open, Open::MemoWindow) << model::fieldTypeName(type) << key;
                EXPECT_EQ(action.text, text);
                EXPECT_FALSE(doc.editor.open());
                EXPECT_EQ(cell(0, 1), text);
            }
}

// Radio Button, join, Checkbox

TEST_F(GridEditing, radioButtonWithoutOptionsIsIncomplete) {
    field(1, FieldType::RadioButton);
    records(1);
    EXPECT_EQ(edit(0, 1).open, Open::Nothing);
    EXPECT_EQ(lastMessage().text, "The property setting of radio button field is imcomplete. \n"
                                  "Please setup the property of radio button field before editting the record!");
    EXPECT_EQ(lastMessage().icon, Icon::Critical);
    EXPECT_EQ(lastMessage().title, "Tallybook Pocket");
}

TEST_F(GridEditing, radioDialogStartsOnTheOptionOfTheCell) {
    field(1, FieldType::RadioButton);
    items(1, {{1, "yes"}, {2, "no"}});
    records(1);
    EXPECT_EQ(edit(0, 1).selected, -1);
    setCell(0, 1, "no");
    EXPECT_EQ(edit(0, 1).selected, 1);
}

TEST_F(GridEditing, joinWithADisplayFieldOpensThePicker) {
    field(1, FieldType::DBJoin);
    records(1);
    setCell(0, 1, "17");
    EXPECT_EQ(edit(0, 1, 'x').open, Open::CellEditor);
    EXPECT_EQ(doc.editor.text, "17"); // the key is kept whatever was typed
    EXPECT_TRUE(doc.editor.allSelected);
    doc.editor = {};
    doc.CurrDB20.Externals[1].MatchField = 3;
    EXPECT_EQ(edit(0, 1).open, Open::ExternalPicker);
    EXPECT_FALSE(doc.editor.open());
    EXPECT_EQ(edit(0, 1, 'x').text, "x"); // the picker begins with it
    for (const int key : {int{kKeyBlank}, int{kKeyF2}, int{'\r'}, int{'\b'}})
        EXPECT_EQ(edit(0, 1, key).text, "") << key;
}

TEST_F(GridEditing, checkboxFlipsAndStampsButMarksNoChange) {
    field(1, FieldType::Checkbox);
    field(2, FieldType::Date).Default = "U";
    field(3, FieldType::Time).Default = "U";
    field(4, FieldType::Date).Default = "A";
    records(1);
    EXPECT_EQ(edit(0, 1).open, Open::Nothing);
    EXPECT_EQ(picture(0, 1), model::Picture::CheckOn);
    EXPECT_EQ(cell(0, 2), "3/5/2003");
    EXPECT_EQ(cell(0, 3), "1:05:09 PM");
    EXPECT_EQ(cell(0, 4), "");
    EXPECT_FALSE(doc.DocModified);
    edit(0, 1);
    EXPECT_EQ(picture(0, 1), model::Picture::CheckOff);
}

} // namespace
} // namespace tallybook::document
