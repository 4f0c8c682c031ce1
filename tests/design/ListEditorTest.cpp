#include "core/design/ListEditor.h"

#include "core/design/AutoWriter.h"
#include "core/pdb/Names.h"
#include "document/DocumentFixture.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::design {
namespace {

using model::FieldType;
using platform::Answer;
using platform::Icon;
using Texts = std::vector<std::string>;
using Ids = std::vector<std::uint8_t>;

constexpr int kSlot = 2;

class ListEditing : public test::DocumentFixture {
protected:
    ListEditing() {
        field(1, FieldType::Text, "Title");
        field(kSlot, FieldType::List, "Kind");
        items(kSlot, {{1, "b"}, {2, "A"}, {3, "c"}});
        records(3);
        for (int record = 0; record < 3; ++record) {
            doc.CellLongs.set(record, kSlot, record + 1);
            setCell(record, kSlot, list().Items[static_cast<std::size_t>(record)]);
        }
    }
    const model::ListDef& list() const { return doc.CurrDB20.Lists.at(kSlot); }
    ListEditor editor() { return {doc, t, kSlot}; }
    Texts column() const { return {cell(0, kSlot), cell(1, kSlot), cell(2, kSlot)}; }
    int add(ListEditor& open, std::optional<std::string> text) {
        t.user.typedTexts = {std::move(text)};
        return open.CmdAdd();
    }
};

TEST_F(ListEditing, offersTheCategoriesAndTheLists) {
    field(5, FieldType::RadioButton, "Size");
    field(6, FieldType::List, "Place");
    ListEditor open = editor();
    EXPECT_EQ(open.cmbList(), (Texts{"Categories", "Kind", "Place"}));
    EXPECT_EQ(open.listPosition(), 1);
    EXPECT_EQ(open.lst(), (Texts{"b", "A", "c"}));
    open.chooseList(2);
    EXPECT_EQ(open.slot(), 6);
    EXPECT_EQ(ListEditor(doc, t, 1).cmbList(), (Texts{"Categories", "Title", "Kind", "Place"}));
}

// A field may be called otherwise while its dialog is open, and a file may have one without a name.
TEST_F(ListEditing, callsTheFieldAsItsDialogDoes) {
    field(5, FieldType::List, "");
    EXPECT_EQ(ListEditor(doc, t, kSlot, "Sort").cmbList(), (Texts{"Categories", "Sort", "Fld05"}));
    EXPECT_EQ(doc.CurrDB20.Fields[kSlot].Name, "Kind");
}

TEST_F(ListEditing, takesNoItemOfBlanks) {
    ListEditor open = editor();
    EXPECT_EQ(add(open, "  "), -1);
    t.user.typedTexts = {" "};
    EXPECT_EQ(open.cmdEdit(0), 0);
    EXPECT_EQ(open.lst(), (Texts{"b", "A", "c"}));
    EXPECT_FALSE(open.OKButton());
}

TEST_F(ListEditing, addsUnderTheLowestFreeId) {
    ListEditor open = editor();
    EXPECT_EQ(add(open, "d"), 3);
    EXPECT_EQ(t.user.textQuestions.back(), (test::ScriptedUser::TextQuestion{"List Editor", "Enter new item", ""}));
    EXPECT_EQ(list().ItemIds, (Ids{1, 2, 3, 4}));
    EXPECT_EQ(add(open, ""), -1);
    EXPECT_EQ(add(open, std::nullopt), -1);
    EXPECT_EQ(list().Count(), 4);
    EXPECT_EQ(add(open, std::string(255, 'x')), -1);
    EXPECT_EQ(lastMessage().text, "An item may have at most 254 characters.");
}

TEST_F(ListEditing, aFreedIdIsGivenAnewAndItsRecordsShowTheNewItem) {
    ListEditor open = editor();
    t.user.answers = {Answer::Yes};
    EXPECT_EQ(open.cmdDelete(1), 1);
    EXPECT_EQ(lastMessage().text, "Are you sure you want to delete the item A ?");
    EXPECT_EQ(list().ItemIds, (Ids{1, 3}));
    EXPECT_EQ(add(open, "new"), 2);
    EXPECT_EQ(list().ItemIds, (Ids{1, 3, 2}));
    EXPECT_TRUE(open.OKButton());
    EXPECT_EQ(column(), (Texts{"b", "new", "c"}));
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(ListEditing, aDeletedItemShowsNothing) {
    ListEditor open = editor();
    t.user.answers = {Answer::No, Answer::Yes};
    EXPECT_EQ(open.cmdDelete(2), 2);
    EXPECT_EQ(list().Count(), 3);
    EXPECT_EQ(open.cmdDelete(2), 1);
    EXPECT_TRUE(open.OKButton());
    EXPECT_EQ(column(), (Texts{"b", "A", ""}));
    EXPECT_EQ(doc.CellLongs.get(2, kSlot), 3);
}

TEST_F(ListEditing, theSixtyFirstItemIsRefusedWhateverIdsAreFree) {
    model::ListDef& many = doc.CurrDB20.Lists[kSlot];
    many = {};
    for (int i = 0; i < 60; ++i) {
        many.ItemIds.push_back(static_cast<std::uint8_t>(i + 100));
        many.Items.push_back(std::to_string(i));
    }
    ListEditor open = editor();
    EXPECT_EQ(open.CmdAdd(), -1);
    EXPECT_EQ(lastMessage().text, "List fields cannot have more than 60 items");
    EXPECT_EQ(lastMessage().icon, Icon::Critical);
    EXPECT_TRUE(t.user.textQuestions.empty());
}

TEST_F(ListEditing, noIdBelow255AddsNothing) {
    // Only a foreign file has so many ids; the count is kept under the limit by leaving the items out of the test.
    model::ListDef& odd = doc.CurrDB20.Lists[kSlot];
    odd = {};
    for (int id = 1; id < 255; ++id)
        odd.ItemIds.push_back(static_cast<std::uint8_t>(id));
    ListEditor open = editor();
    EXPECT_EQ(add(open, "one more"), -1);
    EXPECT_EQ(odd.Count(), 0);
}

TEST_F(ListEditing, editsKeepTheId) {
    ListEditor open = editor();
    t.user.typedTexts = {"B2"};
    EXPECT_EQ(open.cmdEdit(0), 0);
    EXPECT_EQ(t.user.textQuestions.back(), (test::ScriptedUser::TextQuestion{"List Editor", "Edit Item", "b"}));
    EXPECT_EQ(list().Items[0], "B2");
    EXPECT_EQ(list().ItemIds[0], 1);
    EXPECT_EQ(cell(0, kSlot), "b");
    EXPECT_TRUE(open.OKButton());
    EXPECT_EQ(cell(0, kSlot), "B2");
}

TEST_F(ListEditing, nothingSelectedIsSaid) {
    ListEditor open = editor();
    open.cmdEdit(-1);
    open.cmdDelete(-1);
    open.cmdUp(-1);
    open.cmdDown(-1);
    EXPECT_EQ(t.user.texts(), (Texts(4, "Select an item first")));
    EXPECT_FALSE(open.OKButton());
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(ListEditing, sortingChangesNoRecord) {
    ListEditor open = editor();
    open.cmdSort();
    EXPECT_EQ(list().Items, (Texts{"A", "b", "c"}));
    EXPECT_EQ(list().ItemIds, (Ids{2, 1, 3}));
    EXPECT_TRUE(open.OKButton());
    EXPECT_EQ(column(), (Texts{"b", "A", "c"}));
}

TEST_F(ListEditing, movesItemsWithTheirIds) {
    ListEditor open = editor();
    EXPECT_EQ(open.cmdUp(0), 0);
    EXPECT_EQ(open.cmdDown(2), 2);
    EXPECT_FALSE(open.OKButton());
    EXPECT_EQ(open.cmdUp(2), 1);
    EXPECT_EQ(open.cmdDown(0), 1);
    EXPECT_EQ(list().Items, (Texts{"c", "b", "A"}));
    EXPECT_EQ(list().ItemIds, (Ids{3, 1, 2}));
}

TEST_F(ListEditing, categoriesWithoutAnItemAreUnfiled) {
    items(0, {{1, "Home"}});
    doc.CellLongs.set(1, 0, 1);
    ListEditor open(doc, t, 0);
    t.user.typedTexts = {"House"};
    open.cmdEdit(0);
    EXPECT_TRUE(open.OKButton());
    EXPECT_EQ(cell(0, 0), "Unfiled");
    EXPECT_EQ(cell(1, 0), "House");
}

class AutoWriting : public test::DocumentFixture {
protected:
    AutoWriting() {
        field(kSlot, FieldType::Text, "Title").AutoWriter = 1;
        items(kSlot, {{1, "a"}, {2, "b"}, {3, "c"}});
    }
    std::string write(const std::vector<int>& selected, OptAction action, const std::string& text) {
        return autoWriterOk(doc.CurrDB20, kSlot, selected, action, text);
    }
};

TEST_F(AutoWriting, separatesByTheFieldsSign) {
    const char* const signs[] = {"", ",", " ", ";", "/", "\\", "-", "", ""};
    for (std::uint8_t number = 0; number < 9; ++number)
        EXPECT_EQ(autoWriterSeparator(number), signs[number]) << int{number};
}

TEST_F(AutoWriting, joinsTheSelectedItems) {
    EXPECT_EQ(autoWriterItems(doc.CurrDB20, kSlot), (Texts{"a", "b", "c"}));
    EXPECT_EQ(write({0, 2}, OptAction::Replace, "old"), "a,c");
    EXPECT_EQ(write({0, 2}, OptAction::Append, "old"), "old,a,c");
    EXPECT_EQ(write({1}, OptAction::Append, ""), "b");
    EXPECT_EQ(write({}, OptAction::Replace, "old"), "old");
    field(kSlot, FieldType::Memo, "Title").AutoWriter = 7;
    EXPECT_EQ(write({0, 2}, OptAction::Replace, "old"), "ac");
}

TEST_F(AutoWriting, aNumberTakesTheLastItem) {
    for (const FieldType type : {FieldType::Integer, FieldType::Long, FieldType::Float}) {
        field(kSlot, type, "Pages").AutoWriter = 1;
        EXPECT_EQ(write({0, 2}, OptAction::Append, "5"), "c");
        EXPECT_EQ(write({}, OptAction::Append, "5"), "5");
        EXPECT_EQ(memoScreen(doc.CurrDB20, kSlot), (MemoScreen{true, true}));
    }
}

TEST_F(AutoWriting, theLongEditorEndsLinesItsOwnWay) {
    EXPECT_EQ(memoScreen(doc.CurrDB20, kSlot), (MemoScreen{false, true}));
    field(kSlot, FieldType::Memo, "Title").AutoWriter = 0;
    EXPECT_EQ(memoScreen(doc.CurrDB20, kSlot), (MemoScreen{false, false}));
    EXPECT_EQ(textForMemo("a\nb"), "a\r\nb");
    EXPECT_EQ(textFromMemo("a\r\nb"), "a\nb");
}

TEST_F(ListEditing, anItemOfBlanksIsNone) {
    ListEditor open = editor();
    const auto before = open.lst();
    EXPECT_EQ(add(open, " "), -1);
    EXPECT_EQ(add(open, "   "), -1);
    EXPECT_EQ(add(open, "An item"), static_cast<int>(before.size()));
    t.user.typedTexts = {"  "};
    open.cmdEdit(static_cast<int>(before.size()));
    EXPECT_EQ(open.lst().back(), "An item");
}

TEST_F(ListEditing, aFieldThatIsBeingRenamedHasItsNewName) {
    ListEditor open(doc, t, kSlot, "Renamed");
    EXPECT_EQ(open.cmbList()[static_cast<std::size_t>(open.listPosition())], "Renamed");
    doc.CurrDB20.Fields[kSlot].Name.clear();
    ListEditor nameless(doc, t, kSlot);
    EXPECT_EQ(nameless.cmbList()[static_cast<std::size_t>(nameless.listPosition())], pdb::freeFieldName(kSlot));
}

} // namespace
} // namespace tallybook::design
