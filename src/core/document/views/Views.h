// Views and filters on the grid. A filter hides rows of grd; a view is a copy of the visible rows with the view's
// columns in ViewGrd, which stays as it is until it is made again.
#pragma once

#include "core/document/grid/GridDisplay.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::document {

// The filter slots 0..11 of a mask: the slot when there is one, else none or several.
inline constexpr int kNoFilter = -1;
inline constexpr int kSeveralFilters = -2;
int GetDefaultFilter(std::uint16_t mask);

// Applies a view (empty: all fields) and one filter slot, no filter, or with kSeveralFilters all slots of
// MultiFilterSel. Sorts on the view's first key (a view without one on the categories), hides the rows of grd that
// fail, fills ViewGrd and shows the grid that belongs to the state. A hidden current record gives way as
// leaveHiddenRow says. A name that no view has shows ViewGrd without
// columns. A free filter slot hides nothing. Shows progress; DocModified stays as it is.
void SetViewFilter(model::Document& doc, platform::Services& services, std::string_view viewName, int filterSlot);

// After opening and after the designers. With Reset::Yes all fields and no filter are chosen and the rows stay as
// they are; otherwise the start state is applied: CurrentView, or else the view HdrByte2 when it has columns, and the
// filters of HdrWord1. Remembers the columns' widths.
enum class Reset : std::uint8_t { No, Yes };
void AddViewFilterInfo(model::Document& doc, platform::Services& services, Reset reset = Reset::No);

// The entries of CmbView and CmbFilter, and which of them is chosen, from 0.
std::vector<std::string> viewEntries(const model::DatabaseModel& db);
std::vector<std::string> filterEntries(const model::DatabaseModel& db);
int chosenView(const model::Document& doc);
int chosenFilter(const model::Document& doc);

// What is to be opened after a choice; everything that needs no window has been done.
enum class Choice : std::uint8_t { Done, EditViews, EditFilters, MultipleFilter };

// An entry chosen in CmbView or CmbFilter; the open edit is committed first. A refusal gives its message, if it has
// one, and leaves what was chosen before. Nothing happens while ComboGuard is set.
Choice chooseView(model::Document& doc, platform::Services& services, int entry);
Choice chooseFilter(model::Document& doc, platform::Services& services, int entry);

// The OK of the multiple filter dialog: the slots become the set in force and the database's default set, which is a
// change of the database.
void acceptMultipleFilter(model::Document& doc, platform::Services& services,
                          const std::bitset<model::MaxFilters>& slots);

// After the filter designer: the filter in force is applied anew, or none when it is there no more.
void filtersEdited(model::Document& doc, platform::Services& services);

// True while ViewGrd is shown instead of grd: nothing can be edited then.
bool isViewShown(const model::Document& doc);

// Leaves a view for grd, whose rows stay as they are.
void showAllFields(model::Document& doc);

// The grid that is shown.
model::GridModel& shownGrid(model::Document& doc);
const model::GridModel& shownGrid(const model::Document& doc);

// The field slot of a column of the grid that is shown; -1 for the records' numbers and for a column that it does not
// have, as a view without columns has none.
int shownSlot(const model::Document& doc, int column);

// Gives the columns of a view that is shown the widths and alignments of grd's.
void takeColumnLook(model::Document& doc);

// Keeps the widths of grd's columns in ViewColWidths.
void rememberWidths(model::Document& doc);

// The button cmdEdit.
struct EditButton {
    bool enabled = false;
    std::string_view caption; // "&Edit" or "&Done"

    bool operator==(const EditButton&) const = default;
};
EditButton editButton(const model::Document& doc);

// Asks for the right to change records: false when that was refused, and nothing has changed. While ViewGrd is
// shown, its current record is then opened in grd for editing, in the column with the same header if there is one.
bool ModifyRecord(model::Document& doc, platform::Services& services);

// "&Done": commits the open edit, makes the view anew and shows it on the row that was left, or the next one when
// that is hidden now. Nothing unless a record of a view is being edited.
void doneEditing(model::Document& doc, platform::Services& services);

} // namespace tallybook::document
