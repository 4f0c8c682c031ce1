#include "core/design/ViewDesign.h"

#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::design {
namespace {

using model::FieldType;
using platform::Answer;
using test::TestServices;
using Texts = std::vector<std::string>;
using Row = ViewDesign::Row;
using Rows = std::vector<Row>;

// Entries of CmbFields.
constexpr int kNone = 0;
constexpr int kAllFields = 1;
constexpr int kTitle = 2;
constexpr int kPages = 3;
constexpr int kBought = 4;

// Used slots: 1 "Title", 3 "Pages", 4 "Bought". View slot 0 is "Short" with Pages and Title, slot 3 is "Long".
class ViewDesigner : public testing::Test {
protected:
    ViewDesigner() {
        field(1, FieldType::Text, "Title");
        field(3, FieldType::Integer, "Pages");
        field(4, FieldType::Date, "Bought");
        model::ViewDef& shortView = view(0);
        shortView.Name = "Short";
        shortView.Columns[0] = {3, 100, {7, 8, 9}};
        shortView.Columns[1] = {1, 80, {}};
        shortView.SortFields = {1, 3, 0};
        shortView.SortDirs = {1, 0, 0};
        shortView.FrozenCols = 2;
        shortView.ViewByte = 5;
        view(3).Name = "Long";
        doc.CurrDB20.NumViews = 4;
    }
    void field(std::size_t slot, FieldType type, const std::string& name) {
        doc.CurrDB20.Fields[slot].Type = type;
        doc.CurrDB20.Fields[slot].Name = name;
    }
    model::ViewDef& view(std::size_t slot) { return doc.CurrDB20.Views[slot]; }
    ViewDesign open() { return {doc, t}; }

    TestServices t;
    model::Document doc;
};

TEST_F(ViewDesigner, listsNamesAndEmptySlots) {
    const ViewDesign dialog = open();
    const Texts views = dialog.CmbView();
    EXPECT_EQ(views, (Texts{"Short", "Long", "View1", "View2", "View4", "View5", "View6", "View7", "View8", "View9",
                            "View10", "View11"}));
    EXPECT_EQ(dialog.CmbFields(), (Texts{"none", "All Fields", "Title", "Pages", "Bought"}));
    const auto sorts = ViewDesign::CmbSort();
    EXPECT_EQ((Texts{sorts.begin(), sorts.end()}),
              (Texts{"none", "Primary,Ascending", "Primary,Descending", "Secondary,Ascending", "Secondary,Descending",
                     "Tertiary,Ascending", "Tertiary,Descending"}));
    const auto cols = ViewDesign::CmbCols();
    EXPECT_EQ((Texts{cols.begin(), cols.end()}), (Texts{"0", "1", "2", "3"}));
    doc.CurrDB20.Filters[4].Name = "New ones";
    EXPECT_EQ(dialog.CmbFilter(), (Texts{"No Filter", "New ones", "Multiple"}));
    EXPECT_EQ(dialog.NumFields(), 5);
}

TEST_F(ViewDesigner, showsAViewAsItIs) {
    const ViewDesign dialog = open();
    EXPECT_EQ(dialog.TxtView, "Short");
    EXPECT_EQ(dialog.viewPosition(), 0);
    EXPECT_EQ(dialog.Grid(), (Rows{{"Pages", "Sec Ascending"}, {"Title", "Pri Descending"}, {"", ""}}));
    EXPECT_EQ(dialog.cols, 2);
    EXPECT_EQ(dialog.filter, 0);
}

TEST_F(ViewDesigner, opensOnTheViewThatIsShown) {
    doc.CurrentView = "Long";
    EXPECT_EQ(open().TxtView, "Long");
    doc.CurrentView = "no such view";
    EXPECT_EQ(open().TxtView, "Short");
    view(0).Name.clear();
    view(3).Name.clear();
    doc.CurrentView.clear();
    EXPECT_EQ(open().TxtView, "View0"); // the first new name
}

TEST_F(ViewDesigner, showsTheFiltersOfAView) {
    doc.CurrDB20.Filters[1].Name = "One";
    doc.CurrDB20.Filters[4].Name = "Two";
    doc.CurrDB20.DefaultFilterMask = 0x0012;
    view(0).FilterMask = 0x0010;
    ViewDesign dialog = open();
    EXPECT_EQ(dialog.filter, 2);
    view(0).FilterMask = 0x0012;
    dialog.chooseView(0);
    EXPECT_EQ(dialog.filter, 3);

    dialog.filter = 1;
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(0).FilterMask, 0x0002);
    dialog.filter = 3;
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(0).FilterMask, 0x0012);
    dialog.filter = 0;
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(0).FilterMask, 0);
}

TEST_F(ViewDesigner, choosesFields) {
    ViewDesign dialog = open();
    dialog.chooseView(1);
    EXPECT_EQ(dialog.Grid(), (Rows{{"", ""}}));
    dialog.chooseField(kPages);
    EXPECT_EQ(dialog.GetFieldNo(), 3);
    dialog.CmdAdd();
    EXPECT_EQ(dialog.currentRow(), 1);
    dialog.chooseField(kAllFields);
    EXPECT_EQ(dialog.Grid(), (Rows{{"Pages", ""}, {"Title", ""}, {"Pages", ""}, {"Bought", ""}, {"", ""}}));
    dialog.selectRow(1);
    dialog.chooseField(kNone);
    EXPECT_EQ(dialog.Grid(), (Rows{{"Pages", ""}, {"Pages", ""}, {"Bought", ""}, {"", ""}}));
    dialog.CmdRemove();
    EXPECT_EQ(dialog.Grid(), (Rows{{"Pages", ""}, {"Bought", ""}, {"", ""}}));
}

TEST_F(ViewDesigner, takesNoMoreColumnsThanAFile) {
    ViewDesign dialog = open();
    dialog.chooseView(1);
    for (int i = 0; i < 27; ++i)
        dialog.chooseField(kAllFields);
    EXPECT_EQ(dialog.Grid().size(), 81u);
    EXPECT_EQ(dialog.Grid().back().Fields, "Bought");
    dialog.chooseField(kAllFields);
    EXPECT_EQ(dialog.Grid().size(), 81u);
    EXPECT_EQ(t.user.texts(), (Texts{"A view can have at most 81 columns."}));
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(3).NumCols, 81);
}

TEST_F(ViewDesigner, aMarkStandsAtOneRow) {
    ViewDesign dialog = open();
    dialog.selectRow(0);  // Pages, secondary
    dialog.chooseSort(1); // primary, ascending: Title was it
    EXPECT_EQ(dialog.Grid()[0].Sort, "Pri Ascending");
    EXPECT_EQ(dialog.Grid()[1].Sort, "");
    EXPECT_EQ(dialog.sortKeys()[0], (ViewDesign::SortKey{3, 0}));
    dialog.selectRow(1);
    dialog.chooseSort(6);
    EXPECT_EQ(dialog.Grid()[1].Sort, "Ter Descending");
    EXPECT_EQ(dialog.sortKeys()[2], (ViewDesign::SortKey{1, 1}));
}

TEST_F(ViewDesigner, noneTakesEveryKeyOfTheField) {
    ViewDesign dialog = open();
    dialog.selectRow(0);
    dialog.chooseSort(1);
    dialog.chooseSort(0);
    EXPECT_EQ(dialog.Grid()[0].Sort, "");
    EXPECT_EQ(dialog.sortKeys(), (std::array<ViewDesign::SortKey, 3>{}));
}

TEST_F(ViewDesigner, aRowWithoutAFieldHasNoSort) {
    ViewDesign dialog = open();
    dialog.selectRow(0);
    EXPECT_TRUE(dialog.opensSort());
    dialog.selectRow(2);
    EXPECT_FALSE(dialog.opensSort());
    dialog.chooseSort(1);
    EXPECT_EQ(dialog.sortKeys()[0], (ViewDesign::SortKey{1, 1}));
}

TEST_F(ViewDesigner, rowsMoveWithTheirMarks) {
    ViewDesign dialog = open();
    dialog.cmdUp();
    EXPECT_EQ(dialog.currentRow(), 0);
    dialog.cmdDown();
    EXPECT_EQ(dialog.currentRow(), 1);
    EXPECT_EQ(dialog.Grid(), (Rows{{"Title", "Pri Descending"}, {"Pages", "Sec Ascending"}, {"", ""}}));
    EXPECT_EQ(dialog.sortKeys()[0], (ViewDesign::SortKey{1, 1}));
    dialog.cmdUp();
    EXPECT_EQ(dialog.currentRow(), 0);
    EXPECT_EQ(dialog.Grid()[0].Fields, "Pages");
}

TEST_F(ViewDesigner, clearsAllRowsAfterAQuestion) {
    ViewDesign dialog = open();
    t.user.answers = {Answer::No, Answer::Yes};
    dialog.cmdClear();
    EXPECT_EQ(dialog.Grid().size(), 3u);
    dialog.cmdClear();
    EXPECT_EQ(dialog.Grid(), (Rows{{"", ""}}));
    EXPECT_EQ(t.user.texts()[0], "Delete all the columns in this view.\nAre you sure?");
}

TEST_F(ViewDesigner, savesWithAWidthOf60) {
    ViewDesign dialog = open();
    dialog.TxtView = "Brief";
    dialog.cols = 3;
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(0).Name, "Brief");
    EXPECT_EQ(doc.CurrentView, "Brief");
    EXPECT_EQ(view(0).NumCols, 2);
    EXPECT_EQ(view(0).Columns[0].Field, 3);
    EXPECT_EQ(view(0).Columns[0].Width, 60);
    EXPECT_EQ(view(0).Columns[1].Field, 1);
    EXPECT_EQ(view(0).Columns[1].Width, 60);
    EXPECT_EQ(view(0).SortFields, (std::array<std::uint8_t, 3>{1, 3, 0}));
    EXPECT_EQ(view(0).SortDirs, (std::array<std::uint8_t, 3>{1, 0, 0}));
    EXPECT_EQ(view(0).FrozenCols, 3);
    EXPECT_EQ(view(0).ViewByte, 5);
    EXPECT_EQ(doc.CurrDB20.NumViews, 4);
    EXPECT_TRUE(doc.DocModified);
    EXPECT_EQ(dialog.CmbView().front(), "Brief");
}

TEST_F(ViewDesigner, fewerColumnsLeaveNoneBehind) {
    ViewDesign dialog = open();
    dialog.chooseField(kNone);
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(model::highestColumn(view(0)), 1);
    EXPECT_EQ(view(0).Columns[0].Field, 1);
}

TEST_F(ViewDesigner, aNewViewTakesItsSlot) {
    ViewDesign dialog = open();
    dialog.chooseView(11);
    EXPECT_EQ(dialog.TxtView, "View11");
    EXPECT_EQ(dialog.viewSlot(), 11);
    dialog.chooseField(kBought);
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(11).Name, "View11");
    EXPECT_EQ(doc.CurrDB20.NumViews, 12);
    EXPECT_EQ(dialog.viewPosition(), 2); // among the named ones now
}

TEST_F(ViewDesigner, aViewWithoutColumnsGoes) {
    ViewDesign dialog = open();
    doc.CurrentView = "Long";
    dialog.chooseView(1);
    t.user.answers = {Answer::No};
    EXPECT_FALSE(dialog.cmdOK());
    EXPECT_EQ(view(3).Name, "Long");
    EXPECT_EQ(t.user.messages.back().title, "View Designer : No columns to show");
    EXPECT_EQ(t.user.messages.back().text,
              "View should have atleast one column to Show.\nSelecting no columns will remove the view.\nContinue?");
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(3).Name, "");
    EXPECT_EQ(doc.CurrentView, "");
    EXPECT_EQ(doc.CurrDB20.NumViews, 1);
}

TEST_F(ViewDesigner, keepingAViewWithoutColumnsKeepsItsNameToo) {
    ViewDesign dialog = open();
    dialog.TxtView = "Renamed";
    dialog.CmdRemove();
    dialog.CmdRemove();
    t.user.answers = {Answer::No};
    EXPECT_FALSE(dialog.cmdOK());
    EXPECT_EQ(view(0).Name, "Short");
    EXPECT_EQ(view(0).NumCols, 0); // as the test's view has it
    EXPECT_EQ(view(0).Columns[0].Field, 3);
    EXPECT_FALSE(doc.DocModified);
    dialog.chooseView(2); // a free slot is none the richer by a name
    t.user.answers = {Answer::No};
    EXPECT_FALSE(dialog.cmdOK());
    EXPECT_EQ(view(1).Name, "");
}

TEST_F(ViewDesigner, aViewThatWentLeavesAFreeSlot) {
    ViewDesign dialog = open();
    dialog.chooseView(1);
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(dialog.TxtView, "View3");
    EXPECT_EQ(dialog.viewSlot(), 3);
    EXPECT_EQ(dialog.leave(), Leaving::Leave);
}

TEST_F(ViewDesigner, asksBeforeAChangedViewIsLeft) {
    ViewDesign dialog = open();
    EXPECT_EQ(dialog.leave(), Leaving::Leave);
    EXPECT_TRUE(t.user.messages.empty());
    const std::vector<std::function<void()>> changes = {
        [&] { dialog.TxtView = "Other"; }, [&] { dialog.cols = 1; },    [&] { dialog.filter = 1; },
        [&] { dialog.chooseSort(0); },     [&] { dialog.CmdRemove(); },
    };
    for (const auto& change : changes) {
        dialog.chooseView(0);
        change();
        t.user.answers = {Answer::Cancel, Answer::No, Answer::Yes};
        EXPECT_EQ(dialog.leave(), Leaving::Stay);
        EXPECT_EQ(dialog.leave(), Leaving::Leave);
        EXPECT_EQ(dialog.leave(), Leaving::SaveFirst);
        EXPECT_EQ(t.user.texts().back(), "The view was changed. Do you want to save its changes?");
    }
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(dialog.leave(), Leaving::Leave);
}

TEST_F(ViewDesigner, anotherFieldTakesNoMarkOver) {
    ViewDesign dialog = open();
    dialog.selectRow(1);
    dialog.chooseField(kTitle); // the same
    EXPECT_EQ(dialog.Grid()[1].Sort, "Pri Descending");
    dialog.chooseField(kBought);
    EXPECT_EQ(dialog.Grid()[1], (Row{"Bought", ""}));
    EXPECT_EQ(dialog.sortKeys()[0], (ViewDesign::SortKey{1, 1})); // stays with its field
}

TEST_F(ViewDesigner, theListsOpenOnWhatTheRowHolds) {
    ViewDesign dialog = open();
    EXPECT_EQ(dialog.fieldEntry(), kPages);
    EXPECT_EQ(dialog.sortEntry(), 3); // "Secondary,Ascending"
    dialog.selectRow(1);
    EXPECT_EQ(dialog.fieldEntry(), kTitle);
    EXPECT_EQ(dialog.sortEntry(), 2);
    dialog.selectRow(2);
    EXPECT_EQ(dialog.fieldEntry(), kNone);
    EXPECT_EQ(dialog.sortEntry(), 0);
}

TEST_F(ViewDesigner, refusesReservedNames) {
    ViewDesign dialog = open();
    for (const char* name : {"Show All Fields", "SHOW ALL FIELDS", "show all fields", "Edit Views..."}) {
        dialog.TxtView = name;
        EXPECT_FALSE(dialog.cmdOK());
        EXPECT_EQ(t.user.texts().back(), std::string(name) + " is not a vaild view name.");
    }
    EXPECT_EQ(view(0).Name, "Short");
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(ViewDesigner, refusesTheNameOfAnotherView) {
    ViewDesign dialog = open();
    dialog.TxtView = "LONG";
    EXPECT_FALSE(dialog.cmdOK());
    EXPECT_EQ(t.user.texts().back(), "The name already exist in the list choose new name");
    dialog.TxtView = "SHORT"; // its own
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(0).Name, "SHORT");
}

TEST_F(ViewDesigner, refusesANameThatAFileWouldCut) {
    ViewDesign dialog = open();
    dialog.TxtView = std::string(21, 'v');
    EXPECT_FALSE(dialog.cmdOK());
    EXPECT_EQ(t.user.texts().back(), "A view's name may have at most 20 characters.");
    dialog.TxtView.pop_back();
    EXPECT_TRUE(dialog.cmdOK());
}

TEST_F(ViewDesigner, anEmptyNameLeavesTheSlotFree) {
    ViewDesign dialog = open();
    dialog.chooseView(2);
    dialog.chooseField(kTitle);
    dialog.TxtView = " ";
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(1).Name, "");
    EXPECT_EQ(doc.CurrentView, "");
}

// What a file has in a view stays there, whatever it stands for.
TEST_F(ViewDesigner, keepsEveryColumn) {
    field(0, FieldType::List, "Categories");
    field(5, FieldType::Text, "Title"); // a second one
    field(6, FieldType::Text, "");
    model::ViewDef& odd = view(0);
    const std::array<std::uint8_t, 8> fields = {0, 5, 1, 6, 9, 200, 0, 3};
    for (std::size_t i = 0; i < fields.size(); ++i)
        odd.Columns[i] = {fields[i], 60, {static_cast<std::uint8_t>(i), 1, 2}};
    odd.NumCols = 8;
    odd.FrozenCols = 9;
    odd.FilterMask = 0x8421;
    odd.SortDirs = {7, 0, 1};
    const model::ViewDef before = odd;
    ViewDesign dialog = open();
    EXPECT_EQ(dialog.Grid(), (Rows{{"Categories", ""},
                                   {"Title", ""},
                                   {"Title", "Pri Descending"},
                                   {"Fld06", ""},
                                   {"Fld09", ""},
                                   {"Fld200", ""},
                                   {"Categories", ""},
                                   {"Pages", "Sec Ascending"},
                                   {"", ""}}));
    doc.CurrentView = "Short";
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(odd, before);
    EXPECT_FALSE(doc.DocModified);
    dialog.selectRow(1);
    dialog.cmdDown(); // the two of one name
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(odd.Columns[1], before.Columns[2]); // with what the handheld has in it
    EXPECT_EQ(odd.Columns[2], before.Columns[1]);
}

TEST_F(ViewDesigner, offersWhatTheViewShows) {
    field(0, FieldType::List, "Categories");
    view(0).Columns[0].Field = 0;
    ViewDesign dialog = open();
    EXPECT_EQ(dialog.CmbFields(), (Texts{"none", "All Fields", "Title", "Pages", "Bought", "Categories"}));
    EXPECT_EQ(dialog.fieldEntry(), 5);
    dialog.chooseField(5);
    EXPECT_EQ(dialog.Grid()[0].Fields, "Categories");
    dialog.chooseView(1);
    EXPECT_EQ(dialog.CmbFields().size(), 5u);
}

TEST_F(ViewDesigner, allFieldsStandBehindAGap) {
    ViewDesign dialog = open();
    dialog.selectRow(1);
    dialog.cmdDown(); // the free row is between the two now
    EXPECT_EQ(dialog.Grid(), (Rows{{"Pages", "Sec Ascending"}, {"", ""}, {"Title", "Pri Descending"}, {"", ""}}));
    dialog.chooseField(kAllFields);
    Texts names;
    for (const Row& row : dialog.Grid())
        names.push_back(row.Fields);
    EXPECT_EQ(names, (Texts{"Pages", "Title", "Title", "Pages", "Bought", ""}));
}

TEST_F(ViewDesigner, aFieldThatComesBackHasItsKey) {
    ViewDesign dialog = open();
    dialog.selectRow(1); // Title, primary
    dialog.chooseField(kBought);
    dialog.chooseField(kTitle);
    EXPECT_EQ(dialog.Grid()[1], (Row{"Title", "Pri Descending"}));
}

TEST_F(ViewDesigner, aSetOfFiltersStaysUntilItIsChosenAnew) {
    doc.CurrDB20.Filters[1].Name = "One";
    doc.CurrDB20.Filters[4].Name = "Two";
    doc.CurrDB20.DefaultFilterMask = 0x0012;
    view(0).FilterMask = 0x0003;
    ViewDesign dialog = open();
    dialog.TxtView = "Other";
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(0).FilterMask, 0x0003);
    EXPECT_EQ(dialog.leave(), Leaving::Leave);
    dialog.chooseFilter(dialog.filter);
    t.user.answers = {Answer::No};
    EXPECT_EQ(dialog.leave(), Leaving::Leave);
    EXPECT_TRUE(dialog.cmdOK());
    EXPECT_EQ(view(0).FilterMask, 0x0012);
}

} // namespace
} // namespace tallybook::design
