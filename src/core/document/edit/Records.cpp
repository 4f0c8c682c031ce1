#include "core/document/edit/Records.h"

#include "core/calc/values/Conversion.h"
#include "core/calc/values/Numbers.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/grid/Cells.h"
#include "core/document/views/ViewPlace.h"
#include "core/document/views/Views.h"
#include "core/platform/Guards.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>

namespace tallybook::document {

namespace {

using model::FieldType;
using platform::Answer;
using platform::Buttons;
using platform::Icon;

constexpr std::string_view kNothingToDelete = "No records for deletion.";

// What a new record starts with in one field.
std::string startText(const model::FieldDef& field, platform::Services& services) {
    switch (field.Type) {
    case FieldType::Text:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::Memo:
        return field.Default;
    case FieldType::Date:
        return field.Default == "A" ? todayText(services) : std::string{};
    case FieldType::Time:
        return field.Default == "A" ? nowText(services) : std::string{};
    default:
        return {};
    }
}

std::int32_t oneMore(std::int32_t number) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number) + 1);
}

// The option that Default numbers from 1, with its id.
void startRadio(model::Document& doc, platform::Services& services, int row, int slot) {
    const model::ListDef& list = doc.CurrDB20.Lists.at(slot);
    const std::string& preset = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Default;
    const int option = calc::toInt16(preset, services.regional).value_or(0);
    if (option < 1 || option > list.Count())
        return;
    const auto index = static_cast<std::size_t>(option) - 1;
    doc.grd.setText(row, model::columnOfSlot(slot), list.Items[index]);
    doc.CellLongs.set(row - model::kFirstDataRow, slot, list.ItemIds[index]);
}

void startNextValue(model::Document& doc, int row, int slot) {
    std::int32_t& next = doc.CurrDB20.AutoIncNext[slot];
    doc.grd.setText(row, model::columnOfSlot(slot), std::to_string(next));
    next = oneMore(next);
}

void setStartValues(model::Document& doc, platform::Services& services, int row) {
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const model::FieldDef& field = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
        if (field.Type == FieldType::RadioButton)
            startRadio(doc, services, row, slot);
        else if (field.Type == FieldType::AutoIncremental)
            startNextValue(doc, row, slot);
        else if (const std::string text = startText(field, services); !text.empty())
            doc.grd.setText(row, model::columnOfSlot(slot), text);
    }
}

void setSpecialCells(model::Document& doc, int row) {
    for (int slot = 0; slot <= model::MaxUserFields; ++slot) {
        const FieldType type = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type;
        const int column = model::columnOfSlot(slot);
        if (type == FieldType::Checkbox)
            doc.grd.setPicture(row, column, model::Picture::CheckOff);
        else if (type == FieldType::Key)
            doc.grd.setText(row, column, std::to_string(doc.RecKeys[row - model::kFirstDataRow]));
    }
    doc.grd.setText(row, model::columnOfSlot(0), "Unfiled");
    doc.DocModified = true;
}

int firstUserColumn(const model::Document& doc) {
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        if (doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed)
            return model::columnOfSlot(slot);
    return model::columnOfSlot(0);
}

bool refuseFull(const model::Document& doc, platform::Services& services) {
    if (doc.NumDataRecs < model::kMaxDataRecords)
        return false;
    showCritical(services, platform::texts::kTooManyRecords);
    return true;
}

void sayNothingToDelete(platform::Services& services) {
    services.ui.message({.text = std::string(kNothingToDelete), .icon = Icon::Information, .title = {}});
}

bool confirms(platform::Services& services, std::string_view question) {
    return services.ui.message({.text = std::string(question),
                                .icon = Icon::Warning,
                                .buttons = Buttons::YesNo,
                                .title = {},
                                .preferred = Answer::No}) == Answer::Yes;
}

// The row stays the current one, so that the record behind takes its place; behind the last there is none.
void removeCurrentRow(model::Document& doc) {
    const int row = doc.grd.row();
    const int column = doc.grd.col();
    const int top = doc.grd.topRow();
    model::removeRecord(doc, row);
    const int last = doc.grd.rows() - 1;
    const int place = std::min(row, last);
    const bool hidden = !model::hasNoRecords(doc) && !isShownRow(doc, place);
    const int shown = hidden ? nextRow(doc, place).value_or(previousRow(doc, place).value_or(place)) : place;
    doc.grd.setCell(shown, column);
    doc.grd.setTopRow(std::min(top, last));
}

} // namespace

void addRow(model::Document& doc, AddRow mode) {
    if (mode == AddRow::MakeNew)
        model::appendRecord(doc);
    setSpecialCells(doc, doc.grd.rows() - 1);
}

bool RecordAdd(model::Document& doc, platform::Services& services) {
    if (refuseReadOnly(doc, services))
        return false;
    saveCell(doc, services);
    if (refuseFull(doc, services))
        return false;
    doc.CurrDB20.LastKey = oneMore(doc.CurrDB20.LastKey);
    if (isViewShown(doc))
        showAllFields(doc);
    const int row = model::appendRecord(doc);
    doc.RecKeys.set(row - model::kFirstDataRow, doc.CurrDB20.LastKey);
    addRow(doc, AddRow::InPlace);
    setStartValues(doc, services, row);
    doc.grd.setCell(row, firstUserColumn(doc));
    return true;
}

bool deleteRecord(model::Document& doc, platform::Services& services) {
    if (refuseReadOnly(doc, services))
        return false;
    saveCell(doc, services);
    leaveHiddenRows(doc);
    if (model::hasNoRecords(doc) || !isShownRow(doc, shownGrid(doc).row())) {
        sayNothingToDelete(services);
        return false;
    }
    if (!confirms(services, "Delete current record.  Are you sure?") || !ModifyRecord(doc, services))
        return false;
    const platform::HourGlass wait(services.screen);
    const platform::Freeze freeze(services.screen, doc);
    removeCurrentRow(doc);
    doc.DocModified = true;
    return true;
}

bool deleteAllRecords(model::Document& doc, platform::Services& services) {
    saveCell(doc, services);
    if (refuseReadOnly(doc, services))
        return false;
    if (model::hasNoRecords(doc)) {
        sayNothingToDelete(services);
        return false;
    }
    if (!confirms(services, "WARNING: Delete all records in this Tallybook. Are you sure?") ||
        !ModifyRecord(doc, services))
        return false;
    const platform::HourGlass wait(services.screen);
    const platform::Freeze freeze(services.screen, doc);
    while (!model::hasNoRecords(doc)) // from the end, where taking out a row moves no other
        model::removeRecord(doc, doc.grd.rows() - 1);
    doc.grd.setCell(model::kFirstDataRow, 1);
    doc.grd.setTopRow(model::kFirstDataRow);
    doc.DocModified = true;
    return true;
}

bool convertColumnToKeys(model::Document& doc, platform::Services& services) {
    const std::string question =
        "Warning: This action will convert the values in this column into key values for the existing records.  "
        "This cannot be undone.\n\n"
        "You are responsible for invalid/duplicate key number in this column.  The program will not check for "
        "this.\n\n Continue?";
    if (!isFieldColumn(doc.grd.col()) || refuseReadOnly(doc, services))
        return false;
    if (!confirms(services, question) || !ModifyRecord(doc, services))
        return false;
    const int slot = model::slotOfColumn(doc.grd.col());
    if (!calc::CreateKeys(doc, services, slot, calc::KeepPosition::No))
        return false;
    doc.DocModified = true;
    return true;
}

} // namespace tallybook::document
