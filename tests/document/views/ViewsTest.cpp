#include "core/document/views/Views.h"

#include "core/calc/conditions/EvalCond.h"
#include "core/document/edit/Records.h"
#include "core/document/file/OpenSave.h"
#include "core/document/views/Sort.h"
#include "document/FileFixture.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tallybook::document {
namespace {

using model::FieldType;
using model::GridModel;
using model::kFirstDataRow;
using model::Picture;
using Strings = std::vector<std::string>;
using Rows = std::vector<int>;

constexpr std::uint8_t kCode(char c) {
    return static_cast<std::uint8_t>(c);
}

// Six books with a title, a price, a tick and a day; two views and two filters.
class GridViews : public test::FileFixture {
protected:
    GridViews() {
        field(1, FieldType::Text, "Title");
        field(2, FieldType::Long, "Price");
        field(3, FieldType::Checkbox, "Read");
        field(4, FieldType::Date, "Bought");
        doc.CurrDB20.NumFields = 5;
        filter(0, "Cheap", 2, '<', "50");
        filter(2, "With e", 1, 'h', "E");
        view(0, "Prices", {2, 1}).SortFields[0] = 2;
        view(3, "Titles", {1}).SortFields[0] = 1;
        makeRecords();
    }

    void makeRecords() {
        const Strings titles = {"delta", "Echo", "alpha", "Bravo", "foxtrot", "Charlie"};
        const Strings prices = {"40", "90", "10", "30", "60", "20"};
        records(static_cast<int>(titles.size()));
        for (int record = 0; record < doc.NumDataRecs; ++record) {
            const auto at = static_cast<std::size_t>(record);
            setCell(record, 1, titles[at]);
            setCell(record, 2, prices[at]);
            doc.grd.setPicture(record + kFirstDataRow, 4, record % 2 == 0 ? Picture::CheckOn : Picture::CheckOff);
            doc.RecKeys.set(record, 100 + record);
        }
    }

    model::FilterDef& filter(std::size_t slot, const std::string& name, std::uint8_t field, char code,
                             const std::string& constant) {
        model::FilterDef& made = doc.CurrDB20.Filters[slot];
        made.Name = name;
        made.CondFields[0] = field;
        made.CondOps[0] = kCode(code);
        made.CondValues[0] = constant;
        return made;
    }

    model::ViewDef& view(std::size_t slot, const std::string& name, const std::vector<std::uint8_t>& fields) {
        model::ViewDef& made = doc.CurrDB20.Views[slot];
        made.Name = name;
        made.NumCols = static_cast<std::uint8_t>(fields.size());
        for (std::size_t i = 0; i < fields.size(); ++i)
            made.Columns[i].Field = fields[i];
        return made;
    }

    // The titles of the visible rows of grd, and a column of ViewGrd's visible rows.
    Strings titles() const { return visible(doc.grd, 2); }
    Strings viewColumn(int column) const { return visible(doc.ViewGrd, column); }
    static Strings visible(const GridModel& grid, int column) {
        Strings texts;
        for (int at = 0; at < grid.visibleRows(); ++at)
            texts.push_back(grid.text(grid.visibleRow(at), column));
        return texts;
    }

    // A choice by the entry's text.
    Choice pickView(const std::string& name) { return chooseView(doc, t, entry(viewEntries(doc.CurrDB20), name)); }
    Choice pickFilter(const std::string& name) {
        return chooseFilter(doc, t, entry(filterEntries(doc.CurrDB20), name));
    }
    static int entry(const Strings& entries, const std::string& name) {
        return static_cast<int>(std::find(entries.begin(), entries.end(), name) - entries.begin());
    }
    std::string viewChosen() const { return viewEntries(doc.CurrDB20)[static_cast<std::size_t>(chosenView(doc))]; }
    std::string filterChosen() const {
        return filterEntries(doc.CurrDB20)[static_cast<std::size_t>(chosenFilter(doc))];
    }
};

// Masks and filters ----------------------------------------------------------------------------------------

TEST(DefaultFilter, isTheSlotOfASingleBit) {
    EXPECT_EQ(GetDefaultFilter(0), kNoFilter);
    for (int slot = 0; slot < model::MaxFilters; ++slot)
        EXPECT_EQ(GetDefaultFilter(static_cast<std::uint16_t>(1 << slot)), slot);
    EXPECT_EQ(GetDefaultFilter(0x0003), kSeveralFilters);
    EXPECT_EQ(GetDefaultFilter(0x0FFF), kSeveralFilters);
    EXPECT_EQ(GetDefaultFilter(0xF000), kNoFilter); // bits 12 to 15 are no filters
    EXPECT_EQ(GetDefaultFilter(0xF004), 2);
}

TEST_F(GridViews, filterHidesTheRowsThatFail) {
    EXPECT_EQ(pickFilter("Cheap"), Choice::Done);
    EXPECT_EQ(titles(), (Strings{"delta", "alpha", "Bravo", "Charlie"}));
    EXPECT_EQ(doc.grd.rowHeight(3), 0);
    EXPECT_EQ(doc.grd.rowHeight(4), model::kDefaultSize);
    EXPECT_EQ(doc.CurrentFilter, 1);
    EXPECT_EQ(doc.NumDataRecs, 6);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_TRUE(t.user.atRest());
}

TEST_F(GridViews, filterIsFoundBehindFreeSlots) {
    pickFilter("With e");
    EXPECT_EQ(titles(), (Strings{"delta", "Echo", "Charlie"}));
    EXPECT_EQ(doc.CurrentFilter, 3); // slot 2
    EXPECT_EQ(chosenFilter(doc), 2); // "No Filter", "Cheap", "With e"
    EXPECT_EQ(filterChosen(), "With e");
}

TEST_F(GridViews, noFilterShowsEveryRowAgain) {
    pickFilter("Cheap");
    pickFilter("No Filter");
    EXPECT_EQ(doc.grd.visibleRows(), 6);
    EXPECT_EQ(doc.CurrentFilter, 0);
    EXPECT_EQ(filterChosen(), "No Filter");
}

TEST_F(GridViews, severalFiltersHoldTogether) {
    EXPECT_EQ(pickFilter("Multiple"), Choice::MultipleFilter);
    EXPECT_EQ(doc.CurrentFilter, 0); // until the dialog's OK
    std::bitset<model::MaxFilters> slots;
    slots.set(0).set(2);
    acceptMultipleFilter(doc, t, slots);
    EXPECT_EQ(titles(), (Strings{"delta", "Charlie"}));
    EXPECT_EQ(doc.MultiFilterSel, slots);
    EXPECT_EQ(doc.CurrDB20.DefaultFilterMask, 0b101);
    EXPECT_TRUE(doc.DocModified);
    EXPECT_EQ(filterChosen(), "Multiple");
}

TEST_F(GridViews, multipleNeedsAFilter) {
    doc.CurrDB20.Filters = {};
    EXPECT_EQ(pickFilter("Multiple"), Choice::Done);
    EXPECT_EQ(lastMessage().text, "You must first create a filter");
    EXPECT_EQ(doc.CurrentFilter, 0);
}

TEST_F(GridViews, aHiddenCurrentRecordGivesWayToTheNextShown) {
    doc.grd.setCell(3, 2); // Echo costs 90
    pickFilter("Cheap");
    EXPECT_EQ(doc.grd.place(), (model::GridPlace{4, 2, 4, 2}));
}

TEST_F(GridViews, aFreeFilterSlotHidesNothing) {
    SetViewFilter(doc, t, "", 7);
    EXPECT_EQ(doc.grd.visibleRows(), 6);
    doc.MultiFilterSel.set(7);
    SetViewFilter(doc, t, "", kSeveralFilters);
    EXPECT_EQ(doc.grd.visibleRows(), 6);
}

TEST_F(GridViews, damagedFiltersDoNoHarm) {
    filter(4, "Free field", 40, '=', "x");
    filter(5, "No operator", 1, '?', "x");
    filter(6, "Beyond", 200, '=', "x");
    SetViewFilter(doc, t, "", 4);
    EXPECT_EQ(doc.grd.visibleRows(), 0); // an unused field's cells are empty
    SetViewFilter(doc, t, "", 5);
    EXPECT_EQ(doc.grd.visibleRows(), 0);
    SetViewFilter(doc, t, "", 6);
    EXPECT_EQ(doc.grd.visibleRows(), 6);
    SetViewFilter(doc, t, "", 99);
    EXPECT_EQ(doc.grd.visibleRows(), 6);
}

TEST_F(GridViews, withoutRecordsNoFilterIsTested) {
    records(0);
    pickFilter("Cheap");
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.visibleRows(), 0);
    pickView("Prices");
    EXPECT_EQ(doc.ViewGrd.rows(), 3);
    EXPECT_EQ(doc.ViewGrd.visibleRows(), 0);
    EXPECT_TRUE(ModifyRecord(doc, t));
}

TEST_F(GridViews, progressNamesTheRows) {
    t.user.progresses.clear();
    pickFilter("Cheap");
    using Progress = test::ScriptedUser::Progress;
    EXPECT_EQ(t.user.progresses, (std::vector<Progress>{{"Filtering...", 0, 7}, {"", 0, 0}}));
}

// Views ----------------------------------------------------------------------------------------------------

TEST_F(GridViews, viewShowsItsColumnsInTheOrderOfItsFirstKey) {
    EXPECT_EQ(pickView("Prices"), Choice::Done);
    EXPECT_TRUE(isViewShown(doc));
    EXPECT_EQ(&shownGrid(doc), &doc.ViewGrd);
    EXPECT_EQ(doc.CurrentView, "Prices");
    EXPECT_EQ(viewChosen(), "Prices");
    EXPECT_EQ(doc.ViewGrd.cols(), 3);
    EXPECT_EQ(doc.ViewGrd.rows(), 8);
    EXPECT_EQ(doc.ViewGrd.text(0, 1), "Price");
    EXPECT_EQ(doc.ViewGrd.text(1, 1), "Long");
    EXPECT_EQ(doc.ViewGrd.text(0, 2), "Title");
    EXPECT_EQ(viewColumn(1), (Strings{"10", "20", "30", "40", "60", "90"}));
    EXPECT_EQ(viewColumn(2), (Strings{"alpha", "Charlie", "Bravo", "delta", "foxtrot", "Echo"}));
    EXPECT_EQ(viewColumn(0), (Strings{"1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(titles(), viewColumn(2)); // the records are sorted, not only the copy
    EXPECT_EQ(doc.RecKeys[0], 102);     // and their keys with them
    EXPECT_FALSE(doc.DocModified);
    EXPECT_EQ(doc.ViewFields, (std::vector<std::uint8_t>{2, 1}));
}

TEST_F(GridViews, onlyTheFirstKeySorts) {
    model::ViewDef& prices = doc.CurrDB20.Views[0];
    prices.SortFields = {3, 2, 0}; // the tick, then the price
    pickView("Prices");
    EXPECT_EQ(viewColumn(1), (Strings{"90", "30", "20", "40", "10", "60"}));
}

TEST_F(GridViews, descendingKeySortsDown) {
    doc.CurrDB20.Views[0].SortDirs[0] = 1;
    pickView("Prices");
    EXPECT_EQ(viewColumn(1), (Strings{"90", "60", "40", "30", "20", "10"}));
}

TEST_F(GridViews, viewWithoutAKeySortsOnTheCategories) {
    doc.CurrDB20.Views[0].SortFields[0] = 0;
    setCell(4, 0, "Art");
    pickView("Prices");
    EXPECT_EQ(viewColumn(2).front(), "foxtrot");
}

TEST_F(GridViews, textKeyIsCaseSensitive) {
    pickView("Titles");
    EXPECT_EQ(viewColumn(1), (Strings{"Bravo", "Charlie", "Echo", "alpha", "delta", "foxtrot"}));
}

TEST_F(GridViews, aKeyWithoutOrderLeavesTheRecordsAsTheyAre) {
    field(5, FieldType::Image, "Cover");
    doc.CurrDB20.Views[0].SortFields[0] = 5;
    pickView("Prices");
    EXPECT_EQ(lastMessage().text, "Sort utility is not available for the field : Cover");
    EXPECT_EQ(viewColumn(1), (Strings{"40", "90", "10", "30", "60", "20"}));
}

TEST_F(GridViews, rowsHiddenByTheFilterAreNotCopied) {
    pickFilter("Cheap");
    doc.CurrDB20.Views[0].FilterMask = 1;
    pickView("Prices");
    EXPECT_EQ(viewColumn(1), (Strings{"10", "20", "30", "40"}));
    EXPECT_EQ(doc.ViewGrd.rows(), 8);
    for (int row = kFirstDataRow; row < doc.ViewGrd.rows(); ++row) {
        EXPECT_EQ(doc.ViewGrd.rowHeight(row), doc.grd.rowHeight(row));
        EXPECT_EQ(doc.ViewGrd.text(row, 1).empty(), doc.grd.rowHeight(row) == 0);
    }
}

TEST_F(GridViews, coloursAndPicturesAreCopied) {
    view(1, "Ticks", {3, 1});
    doc.grd.setColour(4, 2, 255);
    pickView("Ticks");
    EXPECT_EQ(doc.ViewGrd.picture(2, 1), Picture::CheckOn);
    EXPECT_EQ(doc.ViewGrd.picture(3, 1), Picture::CheckOff);
    EXPECT_EQ(doc.ViewGrd.colour(4, 2), 255u);
    EXPECT_EQ(doc.ViewGrd.colour(4, 1), 0u);
}

TEST_F(GridViews, widthsHeightsAndAlignmentsAreThoseOfGrd) {
    doc.grd.setColumnWidth(3, 777);
    doc.grd.setRowHeight(1, 0);
    doc.grd.setAlignment(3, model::Alignment::RightCentre);
    pickView("Prices");
    EXPECT_EQ(doc.ViewGrd.columnWidth(0), model::kNumberColumnWidth);
    EXPECT_EQ(doc.ViewGrd.columnWidth(1), 777);
    EXPECT_EQ(doc.ViewGrd.alignment(1), model::Alignment::RightCentre);
    EXPECT_EQ(doc.ViewGrd.rowHeight(1), 0);
    doc.grd.setColumnWidth(3, 888);
    doc.grd.setColumnWidth(0, 600);
    takeColumnLook(doc);
    EXPECT_EQ(doc.ViewGrd.columnWidth(1), 888);
    EXPECT_EQ(doc.ViewGrd.columnWidth(0), 600);
    FormatGrid(doc, {.notUsedFields = true, .fieldTypes = true});
    EXPECT_EQ(doc.ViewGrd.rowHeight(1), model::kDefaultSize);
}

TEST_F(GridViews, viewIsASnapshot) {
    pickView("Prices");
    setCell(0, 1, "changed");
    setCell(1, 2, "77");
    EXPECT_EQ(viewColumn(2).front(), "alpha");
    EXPECT_EQ(viewColumn(1)[1], "20");
    pickView("Prices");
    EXPECT_EQ(viewColumn(2).front(), "changed");
}

TEST_F(GridViews, showAllFieldsKeepsTheFilter) {
    pickFilter("Cheap");
    doc.CurrDB20.Views[0].FilterMask = 1;
    pickView("Prices");
    EXPECT_EQ(pickView("Show All Fields"), Choice::Done);
    EXPECT_FALSE(isViewShown(doc));
    EXPECT_EQ(doc.CurrentView, "");
    EXPECT_EQ(viewChosen(), "Show All Fields");
    EXPECT_EQ(doc.grd.visibleRows(), 4);
    EXPECT_EQ(filterChosen(), "Cheap");
}

TEST_F(GridViews, viewBringsItsOwnFilter) {
    doc.CurrDB20.Views[0].FilterMask = 0b100;
    pickFilter("Cheap");
    pickView("Prices");
    EXPECT_EQ(viewColumn(2), (Strings{"Charlie", "delta", "Echo"}));
    EXPECT_EQ(filterChosen(), "With e");
    pickView("Titles"); // which has none
    EXPECT_EQ(viewColumn(1).size(), 6u);
    EXPECT_EQ(filterChosen(), "No Filter");
}

// The mask says "Multiple", but only the dialog says which.
TEST_F(GridViews, severalFiltersOfAViewWaitForTheDialog) {
    doc.CurrDB20.Views[0].FilterMask = 0b101;
    pickView("Prices");
    EXPECT_EQ(filterChosen(), "Multiple");
    EXPECT_EQ(viewColumn(1).size(), 6u);
    acceptMultipleFilter(doc, t, 0b001);
    EXPECT_EQ(viewColumn(1).size(), 4u);
}

TEST_F(GridViews, filterChosenInAViewMakesItAnew) {
    pickView("Prices");
    pickFilter("Cheap");
    EXPECT_TRUE(isViewShown(doc));
    EXPECT_EQ(viewColumn(1), (Strings{"10", "20", "30", "40"}));
}

TEST_F(GridViews, unknownViewHasTheNumbersAlone) {
    SetViewFilter(doc, t, "Nowhere", kNoFilter);
    EXPECT_EQ(doc.ViewGrd.cols(), 1);
    EXPECT_EQ(doc.ViewGrd.text(2, 0), "1");
    EXPECT_TRUE(isViewShown(doc));
    EXPECT_EQ(titles().front(), "delta"); // not sorted
    EXPECT_EQ(chosenView(doc), 0);
    EXPECT_TRUE(ModifyRecord(doc, t));
    EXPECT_FALSE(isViewShown(doc));
}

TEST_F(GridViews, nameOfAViewIsComparedExactly) {
    SetViewFilter(doc, t, "prices", kNoFilter);
    EXPECT_EQ(doc.ViewGrd.cols(), 1);
    view(12, "Carried", {1}); // the last slot is not offered
    SetViewFilter(doc, t, "Carried", kNoFilter);
    EXPECT_EQ(doc.ViewGrd.cols(), 1);
}

TEST_F(GridViews, damagedViewsDoNoHarm) {
    view(1, "Gone", {40, 81, 255, 1, 0}).SortFields[0] = 200;
    doc.CurrDB20.Views[1].NumCols = 255;
    pickView("Gone");
    // A free field is an empty column; fields beyond the last are left out; the rest are the categories, field 0.
    EXPECT_EQ(doc.ViewGrd.cols(), 1 + 81 - 2);
    EXPECT_EQ(doc.ViewGrd.text(0, 1), "Fld40");
    EXPECT_EQ(viewColumn(1).front(), "");
    EXPECT_EQ(doc.ViewGrd.text(0, 2), "Title");
    EXPECT_EQ(doc.ViewGrd.text(0, 3), "Categories");
    EXPECT_EQ(titles().front(), "delta");
}

TEST_F(GridViews, chosenEntriesFollowTheState) {
    EXPECT_EQ(chosenView(doc), 0);
    EXPECT_EQ(chosenFilter(doc), 0);
    doc.CurrentFilter = 2; // a slot that has no name any more
    EXPECT_EQ(chosenFilter(doc), 0);
}

TEST_F(GridViews, nothingIsChosenWhileTheProgramFillsTheCombos) {
    doc.ComboGuard = true;
    EXPECT_EQ(pickView("Prices"), Choice::Done);
    EXPECT_EQ(pickFilter("Cheap"), Choice::Done);
    EXPECT_EQ(pickFilter("Edit Filters..."), Choice::Done);
    EXPECT_FALSE(isViewShown(doc));
    EXPECT_EQ(doc.grd.visibleRows(), 6);
    doc.ComboGuard = false;
    pickView("Prices");
    EXPECT_FALSE(doc.ComboGuard);
}

TEST_F(GridViews, choosingCommitsTheOpenEdit) {
    edit(0, 1);
    doc.editor.text = "zulu";
    pickView("Prices");
    EXPECT_EQ(viewColumn(2)[3], "zulu");
    EXPECT_TRUE(doc.DocModified);
    pickView("Show All Fields");
    edit(0, 2);
    doc.editor.text = "99";
    pickFilter("Cheap");
    EXPECT_EQ(doc.grd.visibleRows(), 3);
}

TEST_F(GridViews, choosingAViewCountsTheFieldsAndKeepsTheWidths) {
    doc.CurrDB20.NumFields = 0;
    doc.grd.setColumnWidth(2, 1234);
    pickView("Show All Fields");
    EXPECT_EQ(doc.CurrDB20.NumFields, 5);
    EXPECT_EQ(doc.ViewColWidths[2], 1234);
}

// The designers' entries -----------------------------------------------------------------------------------

TEST_F(GridViews, designersOpenWhenNothingForbids) {
    EXPECT_EQ(pickView("Edit Views..."), Choice::EditViews);
    EXPECT_EQ(pickFilter("Edit Filters..."), Choice::EditFilters);
}

TEST_F(GridViews, designersAreRefusedInAReadOnlyDatabase) {
    doc.CurrDB20.ReadOnly = 1;
    EXPECT_EQ(pickView("Edit Views..."), Choice::Done);
    EXPECT_EQ(lastMessage().text, "Tallybook is readonly.");
    EXPECT_EQ(lastMessage().icon, platform::Icon::Critical);
    EXPECT_EQ(pickFilter("Edit Filters..."), Choice::Done);
    EXPECT_EQ(t.user.messages.size(), 2u);
    EXPECT_EQ(pickView("Prices"), Choice::Done); // views may be looked at
    EXPECT_TRUE(isViewShown(doc));
}

TEST_F(GridViews, designersAskForTheViewPassword) {
    protect(model::PasswordKind::View, "secret");
    pickFilter("Cheap");
    t.user.passwords = {std::nullopt, std::nullopt, "secret"};
    EXPECT_EQ(pickView("Edit Views..."), Choice::Done);
    EXPECT_EQ(pickFilter("Edit Filters..."), Choice::Done);
    EXPECT_EQ(t.user.passwordQuestions.back().first, "View");
    EXPECT_EQ(filterChosen(), "Cheap"); // what was in force
    EXPECT_EQ(pickView("Edit Views..."), Choice::EditViews);
    EXPECT_EQ(pickFilter("Edit Filters..."), Choice::EditFilters); // asked once
}

TEST_F(GridViews, viewDesignerNeedsAField) {
    for (std::size_t slot = 1; slot <= 4; ++slot)
        doc.CurrDB20.Fields[slot].Type = FieldType::NotUsed;
    EXPECT_EQ(pickView("Edit Views..."), Choice::Done);
    EXPECT_EQ(lastMessage().text, "No fields defined, Define fields and then edit the view");
    EXPECT_EQ(lastMessage().icon, platform::Icon::Critical);
    EXPECT_EQ(doc.CurrDB20.NumFields, 1);
}

TEST_F(GridViews, filterStaysAfterTheDesignerWhileItIsThere) {
    pickFilter("Cheap");
    doc.CurrDB20.Filters[0].CondValues[0] = "15";
    filtersEdited(doc, t);
    EXPECT_EQ(titles(), (Strings{"alpha"}));
    doc.CurrDB20.Filters[0] = {};
    filtersEdited(doc, t);
    EXPECT_EQ(doc.CurrentFilter, 0);
    EXPECT_EQ(doc.grd.visibleRows(), 6);
    acceptMultipleFilter(doc, t, 0b100);
    filtersEdited(doc, t);
    EXPECT_EQ(filterChosen(), "Multiple");
    doc.CurrDB20.Filters = {};
    filtersEdited(doc, t);
    EXPECT_EQ(filterChosen(), "No Filter");
    EXPECT_EQ(doc.grd.visibleRows(), 6);
}

// Editing a record of a view -------------------------------------------------------------------------------

TEST_F(GridViews, buttonSaysEditInAViewAndDoneBehindIt) {
    EXPECT_FALSE(editButton(doc).enabled);
    pickView("Prices");
    EXPECT_EQ(editButton(doc), (EditButton{true, "&Edit"}));
    ModifyRecord(doc, t);
    EXPECT_EQ(editButton(doc), (EditButton{true, "&Done"}));
    doneEditing(doc, t);
    EXPECT_EQ(editButton(doc), (EditButton{true, "&Edit"}));
    pickView("Show All Fields");
    EXPECT_FALSE(editButton(doc).enabled);
}

TEST_F(GridViews, recordOfAViewOpensInTheColumnOfItsHeader) {
    pickView("Prices");
    doc.ViewGrd.setCell(4, 2); // Bravo, column "Title"
    EXPECT_TRUE(ModifyRecord(doc, t));
    EXPECT_FALSE(isViewShown(doc));
    EXPECT_EQ(&shownGrid(doc), &doc.grd);
    EXPECT_EQ(doc.grd.place(), (model::GridPlace{4, 2, 4, 2}));
    EXPECT_EQ(doc.grd.text(4, 2), "Bravo");
    EXPECT_EQ(doc.LastRowInView, 4);
    EXPECT_EQ(doc.CurrentView, "Prices");
    EXPECT_EQ(viewChosen(), "Show All Fields");
}

TEST_F(GridViews, columnStaysWhenNoHeaderIsTheSame) {
    pickView("Prices");
    doc.grd.setCell(2, 5);
    doc.ViewGrd.setText(0, 1, "Other");
    doc.ViewGrd.setCell(3, 1);
    ModifyRecord(doc, t);
    EXPECT_EQ(doc.grd.row(), 3);
    EXPECT_EQ(doc.grd.col(), 5);
}

TEST_F(GridViews, recordOfAViewCanBeEditedAndIsShownWhenDone) {
    pickView("Prices");
    doc.ViewGrd.setCell(2, 1);
    GridEdit(doc, t, kKeyBlank);
    EXPECT_FALSE(doc.editor.open()); // not in the view itself
    ModifyRecord(doc, t);
    GridEdit(doc, t, kKeyBlank);
    ASSERT_TRUE(doc.editor.open());
    doc.editor.text = "35";
    doneEditing(doc, t);
    EXPECT_TRUE(isViewShown(doc));
    EXPECT_EQ(viewColumn(1), (Strings{"20", "30", "35", "40", "60", "90"}));
    EXPECT_EQ(doc.ViewGrd.row(), 2); // the row that was left
}

TEST_F(GridViews, doneKeepsTheFilterInForce) {
    pickView("Prices");
    pickFilter("Cheap");
    doc.ViewGrd.setCell(2, 1);
    ModifyRecord(doc, t);
    doc.grd.setText(2, 3, "500");
    doneEditing(doc, t);
    EXPECT_EQ(viewColumn(1), (Strings{"20", "30", "40"}));
}

TEST_F(GridViews, doneIsNothingWithoutARecordBeingEdited) {
    doneEditing(doc, t);
    EXPECT_FALSE(isViewShown(doc));
    pickView("Prices");
    setCell(0, 2, "1");
    doneEditing(doc, t);
    EXPECT_EQ(viewColumn(1).front(), "10");
}

TEST_F(GridViews, changingARecordOfAViewAsksForThePassword) {
    protect(model::PasswordKind::Modify, "secret");
    pickView("Prices");
    t.user.passwords = {std::nullopt};
    EXPECT_FALSE(ModifyRecord(doc, t));
    EXPECT_TRUE(isViewShown(doc));
}

TEST_F(GridViews, clickOnARecordOfAViewOpensIt) {
    pickView("Prices");
    clickView(doc, t, {.row = 50, .col = 1});
    clickView(doc, t, {.row = 3, .col = 9});
    EXPECT_TRUE(isViewShown(doc));
    clickView(doc, t, {.row = 3, .col = 1});
    EXPECT_FALSE(isViewShown(doc));
    EXPECT_EQ(doc.grd.place(), (model::GridPlace{3, 3, 3, 3}));
    clickView(doc, t, {.row = 4, .col = 1}); // no view is shown any more
    EXPECT_EQ(doc.grd.row(), 3);
}

TEST_F(GridViews, recordThatIsHiddenWhenDoneGivesWayToTheNext) {
    pickView("Prices");
    pickFilter("Cheap"); // 10, 20, 30, 40; hidden: 60, 90
    doc.ViewGrd.setCell(5, 1);
    ModifyRecord(doc, t);
    doc.grd.setText(5, 3, "55");
    doneEditing(doc, t);
    EXPECT_EQ(viewColumn(1), (Strings{"10", "20", "30"}));
    EXPECT_EQ(doc.ViewGrd.row(), 4); // there is none behind it: the last one
}

TEST_F(GridViews, headersAndNumbersOfAViewSelect) {
    struct Row {
        MousePlace place;
        model::GridPlace selected;
    };
    const Row rows[] = {
        {{0, 0}, {2, 1, 7, 2}},                         // the corner: all
        {{1, 0}, {2, 1, 7, 2}}, {{0, 2}, {2, 2, 7, 2}}, // a column
        {{1, 1}, {2, 1, 7, 1}}, {{4, 0}, {4, 1, 4, 2}}, // a record
    };
    pickView("Prices");
    for (const Row& row : rows) {
        clickView(doc, t, row.place);
        EXPECT_EQ(doc.ViewGrd.place(), row.selected) << row.place.row << "," << row.place.col;
        EXPECT_TRUE(isViewShown(doc));
        EXPECT_TRUE(hasBlock(doc));
    }
}

TEST_F(GridViews, columnOfAFilteredViewBeginsAtItsFirstRecord) {
    pickView("Titles");
    pickFilter("Cheap");                         // Bravo, Charlie, alpha, delta; hidden: Echo, foxtrot
    doc.CurrDB20.Filters[2].CondValues[0] = "L"; // Charlie, alpha, delta
    pickFilter("With e");
    clickView(doc, t, {.row = 0, .col = 1});
    EXPECT_EQ(doc.ViewGrd.place(), (model::GridPlace{3, 1, 7, 1}));
}

TEST_F(GridViews, viewWithoutRecordsOrFieldsHasNothingToSelect) {
    SetViewFilter(doc, t, "Nowhere", kNoFilter);
    const model::GridPlace before = doc.ViewGrd.place();
    for (const MousePlace place : {MousePlace{0, 0}, MousePlace{3, 0}})
        clickView(doc, t, place);
    EXPECT_EQ(doc.ViewGrd.place(), before);
    pickView("Prices");
    doc.CurrDB20.Filters[0].CondValues[0] = "1";
    pickFilter("Cheap");
    clickView(doc, t, {.row = 0, .col = 1});
    EXPECT_FALSE(hasBlock(doc));
    EXPECT_TRUE(isViewShown(doc));
}

TEST_F(GridViews, clickOnAViewAsksForTheRightToChange) {
    protect(model::PasswordKind::Modify, "secret");
    pickView("Prices");
    t.user.passwords = {std::nullopt};
    clickView(doc, t, {.row = 0, .col = 1});
    EXPECT_FALSE(hasBlock(doc));
    t.user.passwords = {"secret"};
    clickView(doc, t, {.row = 0, .col = 1});
    EXPECT_TRUE(hasBlock(doc));
}

TEST_F(GridViews, blockOfTheViewIsCopiedWithoutTheHiddenRecords) {
    view(1, "Ticks", {3, 1}).SortFields[0] = 1;
    doc.grd.setPlace({2, 1, 7, 4}); // what is selected in grd is not shown
    pickView("Ticks");
    EXPECT_FALSE(hasBlock(doc));
    EXPECT_FALSE(refuseBlock(doc, t));
    clickView(doc, t, {.row = 0, .col = 0});
    EXPECT_EQ(CopyGridCells(doc, t), "N\tBravo\nN\tCharlie\nN\tEcho\nY\talpha\nY\tdelta\nY\tfoxtrot");
    EXPECT_TRUE(refuseBlock(doc, t));
    pickFilter("Cheap");
    clickView(doc, t, {.row = 0, .col = 0});
    EXPECT_EQ(CopyGridCells(doc, t), "N\tBravo\nN\tCharlie\nY\talpha\nY\tdelta");
    doc.ViewGrd.setPlace({0, 1, 1, 2}); // headers are texts, whatever stands below them
    EXPECT_EQ(CopyGridCells(doc, t), "Read\tTitle\nCheckbox\tText");
}

TEST_F(GridViews, columnsOfTheShownGridKnowTheirFields) {
    EXPECT_EQ(shownSlot(doc, 0), -1);
    EXPECT_EQ(shownSlot(doc, 1), 0);
    EXPECT_EQ(shownSlot(doc, 81), 80);
    EXPECT_EQ(shownSlot(doc, model::kScratchColumn), -1);
    pickView("Prices");
    EXPECT_EQ(shownSlot(doc, 0), -1);
    EXPECT_EQ(shownSlot(doc, 1), 2);
    EXPECT_EQ(shownSlot(doc, 2), 1);
    for (const int column : {3, 4, 81, 82, 83, -1})
        EXPECT_EQ(shownSlot(doc, column), -1) << column; // the view has two
}

TEST_F(GridViews, filterChosenWhileEditingGoesBackToTheView) {
    pickView("Prices");
    ModifyRecord(doc, t);
    pickFilter("Cheap");
    EXPECT_TRUE(isViewShown(doc));
    EXPECT_EQ(viewChosen(), "Prices");
    EXPECT_EQ(editButton(doc), (EditButton{true, "&Edit"}));
}

// Records while a view or a filter is there ----------------------------------------------------------------

TEST_F(GridViews, addingARecordLeavesTheView) {
    pickView("Prices");
    EXPECT_TRUE(RecordAdd(doc, t));
    EXPECT_FALSE(isViewShown(doc));
    EXPECT_EQ(doc.CurrentView, "");
    EXPECT_EQ(doc.grd.row(), 8);
}

TEST_F(GridViews, newRecordsAreShownUnderAFilter) {
    pickFilter("With e");
    RecordAdd(doc, t);
    EXPECT_EQ(doc.grd.visibleRows(), 4);
    EXPECT_EQ(doc.grd.rowHeight(8), model::kDefaultSize);
    pickFilter("With e"); // the next run tests it too
    EXPECT_EQ(doc.grd.visibleRows(), 3);
}

TEST_F(GridViews, deletingTakesTheRecordThatTheViewShows) {
    pickView("Prices");
    doc.ViewGrd.setCell(3, 1); // Charlie, 20
    t.user.answers = {platform::Answer::Yes};
    EXPECT_TRUE(deleteRecord(doc, t));
    EXPECT_EQ(titles(), (Strings{"alpha", "Bravo", "delta", "foxtrot", "Echo"}));
    EXPECT_EQ(editButton(doc), (EditButton{true, "&Done"}));
    doneEditing(doc, t);
    EXPECT_EQ(viewColumn(1), (Strings{"10", "30", "40", "60", "90"}));
}

TEST_F(GridViews, deletingAllInAViewEmptiesItToo) {
    pickView("Prices");
    t.user.answers = {platform::Answer::Yes};
    EXPECT_TRUE(deleteAllRecords(doc, t));
    doneEditing(doc, t);
    EXPECT_EQ(doc.ViewGrd.visibleRows(), 0);
    EXPECT_EQ(doc.ViewGrd.rows(), 3);
}

// The start ------------------------------------------------------------------------------------------------

class StartView : public GridViews {
protected:
    void save() {
        doc.CurrDB20.DBName = "MS2_Books";
        doc.CurrDB20.NumViews = 4;
        ASSERT_EQ(savePDBFile20(doc, t, "/home/MS2_Books.pdb"), Outcome::Done);
    }
    void reopen() { ASSERT_EQ(open("/home/MS2_Books.pdb"), Outcome::Done); }
};

TEST_F(StartView, openingAppliesTheStartViewAndFilter) {
    doc.CurrDB20.HdrByte2 = 3;
    doc.CurrDB20.HdrWord1 = 0b001;
    save();
    reopen();
    EXPECT_EQ(opened->CurrentView, "Titles");
    EXPECT_TRUE(isViewShown(*opened));
    EXPECT_EQ(opened->CurrentFilter, 1);
    EXPECT_EQ(visible(opened->ViewGrd, 1), (Strings{"Bravo", "Charlie", "alpha", "delta"}));
    EXPECT_FALSE(opened->DocModified);
    EXPECT_TRUE(opened->GridReady);
}

TEST_F(StartView, savingWritesTheOrderOfTheStartView) {
    doc.CurrDB20.HdrByte2 = 3;
    save();
    reopen();
    ASSERT_EQ(savePDBFile20(*opened, t, "/home/MS2_Again.pdb"), Outcome::Done);
    model::Document again;
    ASSERT_EQ(readPDBFile20(again, t, "/home/MS2_Again.pdb", ReadMode::Quiet), Outcome::Done);
    EXPECT_EQ(visible(again.grd, 2), (Strings{"Bravo", "Charlie", "Echo", "alpha", "delta", "foxtrot"}));
    EXPECT_EQ(again.RecKeys[0], 103);
}

TEST_F(StartView, filtersOfTheHeaderApplyToAllFields) {
    doc.CurrDB20.HdrByte2 = 5; // a free view
    doc.CurrDB20.HdrWord1 = 0b100;
    save();
    reopen();
    EXPECT_FALSE(isViewShown(*opened));
    EXPECT_EQ(visible(opened->grd, 2), (Strings{"delta", "Echo", "Charlie"}));
    EXPECT_EQ(opened->CurrentFilter, 3);
}

TEST_F(StartView, aViewWithoutColumnsOrOutOfRangeIsAllFields) {
    view(4, "Empty", {});
    for (const int slot : {4, 5, 12, 13, 255}) {
        doc.CurrDB20.HdrByte2 = static_cast<std::uint8_t>(slot);
        doc.CurrentView.clear();
        AddViewFilterInfo(doc, t);
        EXPECT_FALSE(isViewShown(doc)) << slot;
        EXPECT_EQ(titles().front(), "delta") << slot;
    }
}

TEST_F(StartView, theCurrentViewComesBeforeTheStartView) {
    doc.CurrDB20.HdrByte2 = 3;
    doc.CurrentView = "Prices";
    AddViewFilterInfo(doc, t);
    EXPECT_EQ(viewChosen(), "Prices");
}

TEST_F(StartView, severalFiltersOfTheHeaderWaitForTheDialog) {
    doc.CurrDB20.HdrByte2 = 5;
    doc.CurrDB20.HdrWord1 = 0b101;
    AddViewFilterInfo(doc, t);
    EXPECT_EQ(filterChosen(), "Multiple");
    EXPECT_EQ(doc.grd.visibleRows(), 6);
    doc.grd.setColumnWidth(2, 321);
    doc.MultiFilterSel = 0b101;
    AddViewFilterInfo(doc, t);
    EXPECT_EQ(doc.grd.visibleRows(), 2);
    EXPECT_EQ(doc.ViewColWidths[2], 321);
}

TEST_F(StartView, resetChoosesTheFirstEntriesAndLeavesTheRows) {
    pickView("Prices");
    pickFilter("Cheap");
    AddViewFilterInfo(doc, t, Reset::Yes);
    EXPECT_EQ(viewChosen(), "Show All Fields");
    EXPECT_EQ(filterChosen(), "No Filter");
    EXPECT_FALSE(isViewShown(doc));
    EXPECT_EQ(doc.grd.visibleRows(), 4);
}

// Some thousand records of texts, numbers, items and days, of which some are gone again.
class ManyRecords : public GridViews {
protected:
    ManyRecords() {
        field(5, FieldType::List, "Shelf");
        records(3000);
        for (int record = 0; record < doc.NumDataRecs; ++record) {
            setCell(record, 0, below(5) == 0 ? "" : "Shelf " + std::to_string(below(7)));
            setCell(record, 1, word() + ' ' + word());
            if (below(3) != 0)
                setCell(record, 2, std::to_string(below(100)));
            doc.grd.setPicture(record + kFirstDataRow, 4, below(2) == 0 ? Picture::CheckOn : Picture::CheckOff);
            if (record < 256 || below(9) == 0) // a block without gaps, and thin ones
                setCell(record, 4, std::to_string(1 + below(12)) + "/1/2003");
            setCell(record, 5, word());
        }
        for (int gone = 0; gone < 400; ++gone)
            model::removeRecord(doc, kFirstDataRow + below(doc.NumDataRecs));
        filter(1, "Dear", 2, '>', "20");
        filter(4, "Summer", 4, 'L', "7/1/2003");
        filter(5, "First", 5, '!', "one");
    }

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    std::string word() {
        static const char* const kWords[] = {"one", "two", "three", "four", "five"};
        return kWords[below(5)];
    }

    // Asked one by one.
    bool passesAll(int row, const std::vector<int>& slots) {
        return std::all_of(slots.begin(), slots.end(), [&](int slot) {
            return calc::EvalCondition(doc, t.services, doc.CurrDB20.Filters[static_cast<std::size_t>(slot)],
                                       row - 1);
        });
    }

    std::mt19937 m_random{9};
};

TEST_F(ManyRecords, areShownWhenTheySatisfyEveryFilter) {
    view(1, "All", {1, 2, 3, 4, 5});
    for (const std::vector<int>& slots : {std::vector<int>{}, {2}, {1, 4}, {0, 2, 5}, {0, 1}, {1, 2, 4, 5}}) {
        doc.MultiFilterSel.reset();
        for (const int slot : slots)
            doc.MultiFilterSel.set(static_cast<std::size_t>(slot));
        SetViewFilter(doc, t, "All", kSeveralFilters);
        for (int row = kFirstDataRow; row < doc.grd.rows(); ++row) {
            const bool shown = doc.grd.rowHeight(row) != 0;
            ASSERT_EQ(shown, passesAll(row, slots)) << row;
            ASSERT_EQ(doc.ViewGrd.rowHeight(row), doc.grd.rowHeight(row)) << row;
            for (int slot = 1; slot <= 5; ++slot) {
                ASSERT_EQ(doc.ViewGrd.text(row, slot), shown ? doc.grd.text(row, slot + 1) : "") << row;
                ASSERT_EQ(doc.ViewGrd.picture(row, slot), shown ? doc.grd.picture(row, slot + 1) : Picture::None);
            }
            if (row > kFirstDataRow) {
                ASSERT_LE(cell(row - kFirstDataRow - 1, 0), cell(row - kFirstDataRow, 0)) << row; // by category
            }
        }
    }
}

} // namespace
} // namespace tallybook::document
