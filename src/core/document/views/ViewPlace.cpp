#include "core/document/views/ViewPlace.h"

#include "core/document/views/Views.h"

#include <algorithm>

namespace tallybook::document {

namespace {

// The column of the view that shows a column of grd, 0 for none.
int viewColumn(const model::Document& doc, int column) {
    const auto& fields = doc.ViewFields;
    const auto found = std::find(fields.begin(), fields.end(), model::slotOfColumn(column));
    return found == fields.end() ? 0 : static_cast<int>(found - fields.begin()) + 1;
}

} // namespace

void leaveHiddenRow(model::GridModel& grid) {
    const int row = grid.row();
    if (row < model::kFirstDataRow || row >= grid.rows() || grid.rowHeight(row) != 0 || grid.visibleRows() == 0)
        return;
    grid.setCell(grid.visibleRow(std::min(grid.visiblePosition(row), grid.visibleRows() - 1)), grid.col());
}

void leaveHiddenRows(model::Document& doc) {
    if (doc.editor.open())
        return;
    leaveHiddenRow(doc.grd);
    leaveHiddenRow(doc.ViewGrd);
}

void takePlaceFromView(model::Document& doc) {
    const model::GridModel& view = doc.ViewGrd;
    const int slot = shownSlot(doc, view.col());
    if (!isViewShown(doc) || slot < 0)
        return;
    if (view.row() == doc.grd.row() && viewColumn(doc, doc.grd.col()) == 0)
        return;
    doc.grd.setCell(view.row(), model::columnOfSlot(slot));
}

void givePlaceToView(model::Document& doc) {
    if (!isViewShown(doc))
        return;
    const int column = viewColumn(doc, doc.grd.col());
    doc.ViewGrd.setCell(doc.grd.row(), column > 0 ? column : doc.ViewGrd.col());
}

} // namespace tallybook::document
