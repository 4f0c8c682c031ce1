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

int lastFieldColumn(const model::GridModel& grid) {
    return std::min(grid.cols(), model::kScratchColumn) - 1;
}

// On the corner, a field's header or a record's number: selects all, the column or the row. False on a cell.
bool selectByHeader(model::GridModel& grid, MousePlace place) {
    const bool header = place.row < model::kFirstDataRow;
    if (header && place.col == model::kNumberColumn)
        selectAll(grid);
    else if (header)
        selectColumn(grid, place.col);
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

int firstRow(const model::GridModel& grid) {
    return grid.visibleRows() > 0 ? grid.visibleRow(0) : model::kFirstDataRow;
}

void selectAll(model::GridModel& grid) {
    if (lastFieldColumn(grid) > model::kNumberColumn)
        grid.setPlace({firstRow(grid), 1, grid.rows() - 1, lastFieldColumn(grid)});
}

void selectColumn(model::GridModel& grid, int column) {
    if (column > model::kNumberColumn && column <= lastFieldColumn(grid))
        grid.setPlace({firstRow(grid), column, grid.rows() - 1, column});
}

void selectRow(model::GridModel& grid, int row) {
    if (lastFieldColumn(grid) > model::kNumberColumn)
        grid.setPlace({row, 1, row, lastFieldColumn(grid)});
}

bool isRowSelected(const model::GridModel& grid) {
    const model::GridPlace& place = grid.place();
    const auto [left, right] = std::minmax(place.Col, place.ColSel);
    return place.Row >= model::kFirstDataRow && place.Row == place.RowSel && left == 1 && left < right &&
           right == lastFieldColumn(grid);
}

EditAction leftClick(model::Document& doc, platform::Services& services, MousePlace place) {
    if (!mayChange(doc, services))
        return {};
    saveCell(doc, services);
    if (beyondCells(doc, place))
        return {};
    if (model::hasNoRecords(doc)) {
        if (place.row < model::kFirstDataRow)
            selectColumn(doc.grd, place.col);
        return {};
    }
    if (selectByHeader(doc.grd, place))
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
    if (selectByHeader(view, place))
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
        selectColumn(doc.grd, place.col);
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

PopUp menuKey(model::Document& doc, platform::Services& services) {
    if (isViewShown(doc) || !mayChange(doc, services))
        return PopUp::None;
    saveCell(doc, services);
    if (isRowSelected(doc.grd) && !model::hasNoRecords(doc))
        return PopUp::mnuRow;
    return doc.grd.col() > model::kNumberColumn ? PopUp::mnuColumn : PopUp::None;
}

void rightClickDone(model::Document& doc, platform::Services& services, PopUp shown) {
    if (shown == PopUp::mnuColumn)
        doc.grd.setCell(firstRow(doc.grd), doc.grd.col());
    else if (shown == PopUp::mnuRow)
        doc.grd.setCell(doc.grd.row(), 1);
    saveCell(doc, services);
}

} // namespace tallybook::document
