#include "core/document/views/Views.h"

#include "core/calc/conditions/EvalCond.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/grid/Progress.h"
#include "core/document/views/Sort.h"
#include "core/document/views/ViewPlace.h"
#include "core/pdb/Passwords.h"
#include "core/platform/Guards.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace tallybook::document {

namespace {

using model::kBlockRows;
using model::kFirstDataRow;
using model::RowBits;

constexpr std::uint32_t kBlocksAStep = 4; // between two looks at the progress bar

// The last slot is carried, not offered.
const model::ViewDef* findView(const model::DatabaseModel& db, std::string_view name) {
    const auto last = db.Views.end() - 1;
    const auto found = std::find_if(db.Views.begin(), last, [&](const auto& view) { return view.Name == name; });
    return name.empty() || found == last ? nullptr : &*found;
}

// The fields of a view's columns. One beyond the last slot, which only a damaged file names, is left out.
std::vector<std::uint8_t> fieldsOf(const model::ViewDef& view) {
    const std::size_t columns = std::min<std::size_t>(view.NumCols, view.Columns.size());
    std::vector<std::uint8_t> fields;
    for (std::size_t i = 0; i < columns; ++i)
        if (view.Columns[i].Field <= model::MaxUserFields)
            fields.push_back(view.Columns[i].Field);
    return fields;
}

// The second and third keys are the handheld's.
void sortByView(model::Document& doc, platform::Services& services, const model::ViewDef& view) {
    SortGrid(doc, services, view.SortFields[0],
             view.SortDirs[0] == 1 ? SortDirection::Descending : SortDirection::Ascending);
}

// A slot that neither has a name nor compares a field.
bool isFree(const model::FilterDef& filter) {
    return filter.Name.empty() && filter.CondFields[0] == 0;
}

std::vector<calc::ConditionSet> filtersInForce(const model::Document& doc, const platform::Services& services,
                                               int filterSlot) {
    std::vector<calc::ConditionSet> filters;
    for (int slot = 0; slot < model::MaxFilters; ++slot) {
        const auto at = static_cast<std::size_t>(slot);
        const bool wanted = filterSlot == kSeveralFilters ? doc.MultiFilterSel[at] : slot == filterSlot;
        if (wanted && !isFree(doc.CurrDB20.Filters[at]))
            filters.emplace_back(doc, services, doc.CurrDB20.Filters[at]);
    }
    return filters;
}

// The ids that records have, block by block.
std::vector<RowBits> usedRows(const model::RowOrder& order) {
    std::vector<RowBits> used;
    for (int record = 0; record < order.count(); ++record) {
        const std::uint32_t id = order.id(record);
        if (id / kBlockRows >= used.size())
            used.resize(id / kBlockRows + 1);
        model::setBit(used[id / kBlockRows], id % kBlockRows);
    }
    return used;
}

// Those that pass. The store is gone through in its own order: in the order that a sort has made, each cell would
// have to be fetched from far away.
std::vector<RowBits> passingRows(const model::Document& doc, ProgressBar& bar,
                                 const std::vector<calc::ConditionSet>& filters) {
    std::vector<RowBits> rows = usedRows(doc.grd.order());
    const int last = doc.grd.rows() - 1;
    for (std::uint32_t block = 0; block < rows.size(); ++block) {
        const int row = static_cast<int>(block * kBlockRows);
        if (block % kBlocksAStep == 0 && row > 0 && row < last)
            bar.step(row, last - 1, last);
        for (const calc::ConditionSet& filter : filters)
            rows[block] = filter.holding(block, rows[block]);
    }
    return rows;
}

void hideRows(model::Document& doc, platform::Services& services, const std::vector<calc::ConditionSet>& filters) {
    const int rows = doc.grd.rows();
    ProgressBar bar(services.screen, "Filtering record ");
    bar.show("Filtering...", 0, rows - 1);
    if (model::hasNoRecords(doc))
        return;
    const std::vector<RowBits> passing = passingRows(doc, bar, filters);
    std::vector<int> shown;
    shown.reserve(static_cast<std::size_t>(doc.NumDataRecs));
    for (int row = kFirstDataRow; row < rows; ++row) {
        const std::uint32_t id = doc.grd.rowId(row);
        if (model::bitOf(passing[id / kBlockRows], id % kBlockRows))
            shown.push_back(row);
    }
    doc.grd.showOnly(std::move(shown));
    leaveHiddenRow(doc.grd);
}

void fillView(model::Document& doc, const model::ViewDef* view) {
    doc.ViewFields = view ? fieldsOf(*view) : std::vector<std::uint8_t>{};
    std::vector<int> columns;
    for (const int slot : doc.ViewFields)
        columns.push_back(model::columnOfSlot(slot));
    doc.ViewGrd.copyVisible(doc.grd, columns);
    const int first = doc.ViewGrd.visibleRows() > 0 ? doc.ViewGrd.visibleRow(0) : kFirstDataRow;
    doc.ViewGrd.setCell(first, columns.empty() ? model::kNumberColumn : 1);
}

// The view that opens first.
std::string startView(const model::DatabaseModel& db) {
    if (db.HdrByte2 + 1 >= model::MaxViews)
        return {};
    const model::ViewDef& view = db.Views[db.HdrByte2];
    return fieldsOf(view).empty() ? std::string{} : view.Name;
}

// The column of grd with a header, from column 1 on; 0 when none has it.
int columnHeaded(const model::GridModel& grid, std::string_view header) {
    std::string scratch;
    for (int column = 1; column < model::kScratchColumn; ++column)
        if (grid.text(0, column, scratch) == header)
            return column;
    return 0;
}

// What CurrentFilter stands for.
int filterSlotOf(const model::Document& doc) {
    return doc.CurrentFilter == model::kMultipleFilter ? kSeveralFilters : doc.CurrentFilter - 1;
}

std::uint8_t filterOfSlot(int slot) {
    return slot == kSeveralFilters ? model::kMultipleFilter : static_cast<std::uint8_t>(slot + 1);
}

} // namespace

int GetDefaultFilter(std::uint16_t mask) {
    const unsigned slots = mask & ((1u << model::MaxFilters) - 1);
    if (slots == 0)
        return kNoFilter;
    return std::has_single_bit(slots) ? std::countr_zero(slots) : kSeveralFilters;
}

void SetViewFilter(model::Document& doc, platform::Services& services, std::string_view viewName, int filterSlot) {
    const model::ViewDef* view = findView(doc.CurrDB20, viewName);
    if (view)
        sortByView(doc, services, *view);
    const platform::Freeze freeze(services.screen, doc);
    hideRows(doc, services, filtersInForce(doc, services, filterSlot));
    fillView(doc, view);
    doc.ViewShown = !viewName.empty();
    doc.RecordOfView = false;
}

void AddViewFilterInfo(model::Document& doc, platform::Services& services, Reset reset) {
    if (reset == Reset::Yes) {
        showAllFields(doc);
        doc.CurrentFilter = 0;
    } else {
        if (doc.CurrentView.empty())
            doc.CurrentView = startView(doc.CurrDB20);
        const int filter = GetDefaultFilter(doc.CurrDB20.HdrWord1);
        doc.CurrentFilter = filterOfSlot(filter);
        SetViewFilter(doc, services, doc.CurrentView, filter);
    }
    rememberWidths(doc);
}

void rememberWidths(model::Document& doc) {
    for (int column = 0; column < model::kGridColumns; ++column)
        doc.ViewColWidths[static_cast<std::size_t>(column)] = static_cast<std::int16_t>(doc.grd.columnWidth(column));
}

bool isViewShown(const model::Document& doc) {
    return doc.ViewShown;
}

void showAllFields(model::Document& doc) {
    doc.ViewShown = false;
    doc.RecordOfView = false;
    doc.CurrentView.clear();
}

model::GridModel& shownGrid(model::Document& doc) {
    return doc.ViewShown ? doc.ViewGrd : doc.grd;
}

const model::GridModel& shownGrid(const model::Document& doc) {
    return doc.ViewShown ? doc.ViewGrd : doc.grd;
}

int shownSlot(const model::Document& doc, int column) {
    const int columns = doc.ViewShown ? static_cast<int>(doc.ViewFields.size()) : model::kScratchColumn - 1;
    if (column <= model::kNumberColumn || column > columns)
        return -1;
    return doc.ViewShown ? doc.ViewFields[static_cast<std::size_t>(column - 1)] : model::slotOfColumn(column);
}

void takeColumnLook(model::Document& doc) {
    if (!doc.ViewShown)
        return;
    int column = model::kNumberColumn;
    doc.ViewGrd.setColumnWidth(column, doc.grd.columnWidth(column));
    for (const int slot : doc.ViewFields) {
        doc.ViewGrd.setColumnWidth(++column, doc.grd.columnWidth(model::columnOfSlot(slot)));
        doc.ViewGrd.setAlignment(column, doc.grd.alignment(model::columnOfSlot(slot)));
    }
}

EditButton editButton(const model::Document& doc) {
    return {doc.ViewShown || doc.RecordOfView, doc.RecordOfView ? "&Done" : "&Edit"};
}

bool ModifyRecord(model::Document& doc, platform::Services& services) {
    if (!pdb::AuthorizeDB(doc, services, model::PasswordKind::Modify))
        return false;
    if (!doc.ViewShown)
        return true;
    const int row = std::min(doc.ViewGrd.row(), doc.grd.rows() - 1);
    const int column = columnHeaded(doc.grd, doc.ViewGrd.text(0, doc.ViewGrd.col()));
    doc.LastRowInView = row;
    doc.grd.setCell(row, column > 0 ? column : doc.grd.col());
    doc.ViewShown = false;
    doc.RecordOfView = true;
    return true;
}

void doneEditing(model::Document& doc, platform::Services& services) {
    if (!doc.RecordOfView)
        return;
    saveCell(doc, services);
    const int row = doc.LastRowInView;
    const int column = doc.ViewGrd.col();
    SetViewFilter(doc, services, doc.CurrentView, filterSlotOf(doc));
    doc.ViewGrd.setCell(std::min(row, doc.ViewGrd.rows() - 1), std::min(column, doc.ViewGrd.cols() - 1));
    leaveHiddenRow(doc.ViewGrd);
}

} // namespace tallybook::document
