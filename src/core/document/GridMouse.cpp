// What a click does on the grid.
#include "core/document/Cells.h"
#include "core/document/GridDisplay.h"
#include "core/document/Views.h"
#include "core/pdb/Passwords.h"

namespace tallybook::document {

namespace {

constexpr int kLastFieldColumn = model::kScratchColumn - 1; // the scratch column is nobody's to select

bool beyondCells(const model::Document& doc, MousePlace place) {
    return place.row >= doc.grd.rows() || place.col >= model::kScratchColumn;
}

void selectColumns(model::Document& doc, int first, int last) {
    doc.grd.setPlace({model::kFirstDataRow, first, doc.grd.rows() - 1, last});
}

void selectRow(model::Document& doc, int row) {
    doc.grd.setPlace({row, 1, row, kLastFieldColumn});
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
    const bool header = place.row < model::kFirstDataRow;
    if (header && place.col == model::kNumberColumn)
        selectColumns(doc, 1, kLastFieldColumn);
    else if (header)
        selectColumns(doc, place.col, place.col);
    else if (place.col == model::kNumberColumn)
        selectRow(doc, place.row);
    else
        return clickCell(doc, services, place);
    return {};
}

PopUp rightClick(model::Document& doc, platform::Services& services, MousePlace place) {
    if (!mayChange(doc, services))
        return PopUp::None;
    saveCell(doc, services);
    if (beyondCells(doc, place))
        return PopUp::None;
    const bool header = place.row < model::kFirstDataRow;
    if (header && place.col > model::kNumberColumn)
        selectColumns(doc, place.col, place.col);
    else if (!header && place.col == model::kNumberColumn && isShownRow(doc, place.row))
        selectRow(doc, place.row);
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
