// What a click does on the grid.
#include "core/document/grid/Cells.h"
#include "core/document/grid/GridDisplay.h"
#include "core/document/views/Views.h"
#include "core/pdb/Passwords.h"

#include <algorithm>

namespace tallybook::document {

namespace {

bool beyondCells(const model::Document& doc, MousePlace place) {
    return place.row >= doc.grd.rows() || place.col >= model::kScratchColumn;
}

// The scratch column is nobody's to select.
int lastFieldColumn(const model::GridModel& grid) {
    return std::min(grid.cols(), model::kScratchColumn) - 1;
}

void selectColumns(model::GridModel& grid, int topRow, int first, int last) {
    grid.setPlace({topRow, first, grid.rows() - 1, last});
}

void selectRow(model::GridModel& grid, int row) {
    grid.setPlace({row, 1, row, lastFieldColumn(grid)});
}

// On the corner, a field's header or a record's number: selects all, the column or the row. False on a cell.
bool selectByHeader(model::GridModel& grid, int topRow, MousePlace place) {
    const bool header = place.row < model::kFirstDataRow;
    if (header && place.col == model::kNumberColumn)
        selectColumns(grid, topRow, 1, lastFieldColumn(grid));
    else if (header)
        selectColumns(grid, topRow, place.col, place.col);
    else if (place.col == model::kNumberColumn)
        selectRow(grid, place.row);
    else
        return false;
    return true;
}

EditAction clickCell(model::Document& doc, platform::Services& services, MousePlace place) {
    doc.grd.setCell(place.row, place.col);
    return doc.GridReady && !doc.editor.open() ? GridEdit(doc, services, kKeyBlank) : EditAction{};
}

bool mayChange(model::Document& doc, platform::Services& services) {
    return pdb::AuthorizeDB(doc, services, model::PasswordKind::Modify);
}

} // namespace

EditAction leftClick(model::Document& doc, platform::Services& services, MousePlace place) {
    if (!mayChange(doc, services))
        return {};
    saveCell(doc, services);
    if (model::hasNoRecords(doc) || beyondCells(doc, place))
        return {};
    if (selectByHeader(doc.grd, model::kFirstDataRow, place))
        return {};
    return clickCell(doc, services, place);
}

void clickView(model::Document& doc, platform::Services& services, MousePlace place) {
    model::GridModel& view = doc.ViewGrd;
    if (!isViewShown(doc) || !mayChange(doc, services))
        return;
    // Without a record to be seen, or a field, there is nothing to select or to open.
    if (view.visibleRows() == 0 || place.row >= view.rows() || place.col >= view.cols() || view.cols() == 1)
        return;
    if (selectByHeader(view, view.visibleRow(0), place))
        return;
    view.setCell(place.row, place.col);
    ModifyRecord(doc, services);
}

PopUp rightClick(model::Document& doc, platform::Services& services, MousePlace place) {
    if (!mayChange(doc, services))
        return PopUp::None;
    saveCell(doc, services);
    if (beyondCells(doc, place))
        return PopUp::None;
    const bool header = place.row < model::kFirstDataRow;
    if (header && place.col > model::kNumberColumn)
        selectColumns(doc.grd, model::kFirstDataRow, place.col, place.col);
    else if (!header && place.col == model::kNumberColumn && isShownRow(doc, place.row))
        selectRow(doc.grd, place.row);
    else
        return PopUp::None;
    const PopUp menu = header ? PopUp::mnuColumn : PopUp::mnuRow;
    if (!isViewShown(doc))
        return menu;
    rightClickDone(doc, services, menu);
    return PopUp::None;
}

void rightClickDone(model::Document& doc, platform::Services& services, PopUp shown) {
    if (shown == PopUp::mnuColumn)
        doc.grd.setCell(model::kFirstDataRow, doc.grd.col());
    else if (shown == PopUp::mnuRow)
        doc.grd.setCell(doc.grd.row(), 1);
    saveCell(doc, services);
}

} // namespace tallybook::document
