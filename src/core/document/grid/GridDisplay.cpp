#include "core/document/grid/GridDisplay.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Text.h"
#include "core/document/grid/Cells.h"
#include "core/document/views/Views.h"
#include "core/pdb/Names.h"
#include "core/platform/Guards.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <utility>

namespace tallybook::document {

namespace {

using model::Alignment;
using model::FieldType;

std::string headerName(const model::FieldDef& field, int slot) {
    return field.Name.empty() ? pdb::freeFieldName(slot) : field.Name;
}

Alignment alignmentOf(FieldType type) {
    switch (type) {
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
        return Alignment::RightCentre;
    default:
        return Alignment::LeftCentre;
    }
}

bool isCheckbox(const model::Document& doc, int column) {
    const int slot = shownSlot(doc, column);
    return slot >= 0 && doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type == FieldType::Checkbox;
}

std::string clipboardText(const model::Document& doc, int row, int column) {
    const model::GridModel& grid = shownGrid(doc);
    if (row >= model::kFirstDataRow && isCheckbox(doc, column))
        return grid.picture(row, column) == model::Picture::CheckOn ? "Y" : "N";
    return calc::QuoteDelimited(grid.text(row, column), '\t');
}

// A view has no cells of the records that a filter hides; in grd they are there and count.
bool hasCells(const model::Document& doc, int row) {
    return !isViewShown(doc) || doc.ViewGrd.rowHeight(row) != 0;
}

} // namespace

void gridLoadField(model::Document& doc, const platform::Regional& regional, int slot) {
    const model::FieldDef& field = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
    const int column = model::columnOfSlot(slot);
    doc.grd.setText(0, column, headerName(field, slot));
    doc.grd.setText(1, column, model::fieldTypeName(field.Type));
    doc.grd.setAlignment(column, alignmentOf(field.Type));
    doc.grd.column(column).setCoder(calc::coderForField(doc.CurrDB20, slot, regional));
    doc.grd.touch();
}

void gridLoadFieldNames20(model::Document& doc, const platform::Regional& regional) {
    for (int slot = 0; slot <= model::MaxUserFields; ++slot)
        gridLoadField(doc, regional, slot);
}

void FormatGrid(model::Document& doc, const DisplayChoices& choices) {
    for (int slot = 0; slot <= model::MaxUserFields; ++slot) {
        const FieldType type = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type;
        const int column = model::columnOfSlot(slot);
        if (slot > 0 && type == FieldType::NotUsed)
            doc.grd.setColumnWidth(column, choices.notUsedFields ? model::kDefaultSize : 0);
        else if (doc.grd.columnWidth(column) == 0)
            doc.grd.setColumnWidth(column, model::kDefaultSize); // a slot that has come into use
        doc.grd.setAlignment(column, alignmentOf(type));
    }
    for (model::GridModel* grid : {&doc.grd, &doc.ViewGrd})
        grid->setRowHeight(1, choices.fieldTypes ? model::kDefaultSize : 0);
    takeColumnLook(doc);
}

void gridResized(model::Document& doc) {
    HideGridControls(doc);
    doc.grd.setCell(firstRow(doc.grd), 1);
}

std::string_view gridHint(const model::Document& doc) {
    namespace texts = platform::texts;
    if (isViewShown(doc) && doc.ViewFields.empty())
        return texts::kViewWithoutColumns;
    if (!model::hasNoRecords(doc))
        return shownGrid(doc).visibleRows() == 0 ? texts::kAllHidden : std::string_view{};
    if (doc.CurrDB20.ReadOnly != 0)
        return texts::kNoRecords;
    return model::highestField(doc.CurrDB20) <= 1 ? texts::kNoFields : texts::kFirstRecord;
}

std::string CopyGridCells(model::Document& doc, platform::Services& services) {
    const platform::HourGlass wait(services.screen);
    const platform::Freeze freeze(services.screen, doc);
    const model::GridPlace& place = shownGrid(doc).place();
    const auto [top, bottom] = std::minmax(place.Row, place.RowSel);
    const auto [left, right] = std::minmax(place.Col, place.ColSel);
    std::string text;
    bool first = true;
    for (int row = top; row <= bottom; ++row) {
        if (!hasCells(doc, row))
            continue;
        if (!std::exchange(first, false))
            text += '\n';
        for (int column = left; column <= right; ++column) {
            if (column > left)
                text += '\t';
            text += clipboardText(doc, row, column);
        }
    }
    return text;
}

bool hasBlock(const model::Document& doc) {
    const model::GridPlace& place = shownGrid(doc).place();
    return place.Row != place.RowSel || place.Col != place.ColSel;
}

bool refuseBlock(const model::Document& doc, platform::Services& services) {
    if (!hasBlock(doc))
        return false;
    services.ui.message({.text = "Cut and Paste is not supported for multiple cells",
                         .icon = platform::Icon::Information,
                         .title = {}});
    return true;
}

} // namespace tallybook::document
