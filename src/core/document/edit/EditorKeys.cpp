// The keys that move on from a cell.
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/edit/TimeFormats.h"
#include "core/document/grid/Cells.h"

#include <algorithm>
#include <cmath>

namespace tallybook::document {

namespace {

using model::EditorKind;
using model::FieldType;

// At the keys a time must be whole already; leaving the cell in another way completes a short one.
constexpr std::string_view kNotATime = "Please specify the valid Time Input (e.g. 10:10:10 AM).";

bool isPlace(const model::Document& doc, int column) {
    return fieldOfColumn(doc, column).Type != FieldType::NotUsed && doc.grd.columnWidth(column) != 0;
}

// The next used column, else the first one of the next record; at the very end the cell stays current.
void moveOn(model::Document& doc) {
    for (int column = doc.grd.col() + 1; column < model::kScratchColumn; ++column)
        if (isPlace(doc, column))
            return doc.grd.setCell(doc.grd.row(), column);
    if (const auto row = nextRow(doc, doc.grd.row()))
        doc.grd.setCell(*row, 1);
}

void moveBack(model::Document& doc) {
    for (int column = doc.grd.col() - 1; column > model::kNumberColumn; --column)
        if (isPlace(doc, column))
            return doc.grd.setCell(doc.grd.row(), column);
}

void moveTo(model::Document& doc, std::optional<int> row) {
    if (row)
        doc.grd.setCell(*row, doc.grd.col());
}

void formatFloat(model::Document& doc, platform::Services& services) {
    if (doc.editor.kind == EditorKind::Text1)
        FormatFloatEdit(doc, services);
}

// False when the picker has to stay open, with the message.
bool mayLeaveDate(model::Document& doc, platform::Services& services) {
    const std::string refusal = ValidateDate(doc, services);
    if (!refusal.empty())
        showCritical(services, refusal);
    return refusal.empty();
}

// False when the editor has to stay open, with the message.
bool mayLeave(model::Document& doc, platform::Services& services) {
    if (doc.editor.kind == EditorKind::DTPickerMS2)
        return mayLeaveDate(doc, services);
    if (doc.editor.kind != EditorKind::Text1)
        return true;
    FormatFloatEdit(doc, services);
    const bool time = fieldOfColumn(doc, doc.editor.col).Type == FieldType::Time;
    if (!time || doc.editor.text.empty() || readsBackAsTime(doc.editor.text, services))
        return true;
    showCritical(services, kNotATime);
    return false;
}

bool commit(model::Document& doc, platform::Services& services) {
    if (!mayLeave(doc, services))
        return false;
    saveCell(doc, services);
    return true;
}

// Committing first keeps the mark of change: what was typed so far is an edit of its own.
EditAction toLongEditor(model::Document& doc, platform::Services& services) {
    const bool text =
        doc.editor.kind == EditorKind::Text1 && fieldOfColumn(doc, doc.editor.col).Type == FieldType::Text;
    if (!text)
        return {};
    saveCell(doc, services);
    return GridEdit(doc, services, kKeyF2);
}

// A day that does not exist, or a text that names none, stays as it is.
void stepDay(model::Document& doc, platform::Services& services, int days) {
    const auto day = calc::readDay(doc.editor.text, services.regional, services.clock.now().year);
    const auto moved = day ? calc::addToDate(calc::dayNumber(*day), calc::DateUnit::Day, days) : std::nullopt;
    if (moved)
        pickDay(doc, services, static_cast<int>(*moved));
}

void keyUp(model::Document& doc, platform::Services& services) {
    if (doc.editor.kind == EditorKind::MebSpin)
        spinBy(doc, services, 1);
    else if (doc.editor.kind == EditorKind::DTPickerMS2)
        stepDay(doc, services, 1);
    else if (commit(doc, services))
        moveTo(doc, previousRow(doc, doc.grd.row()));
}

void keyDown(model::Document& doc, platform::Services& services) {
    model::EditorState& editor = doc.editor;
    if (editor.kind == EditorKind::MebSpin)
        spinBy(doc, services, -1);
    else if (editor.kind == EditorKind::cmb1)
        editor.entry = std::min(editor.entry + 1, static_cast<int>(editor.entries.size()) - 1);
    else if (editor.kind == EditorKind::DTPickerMS2)
        stepDay(doc, services, -1);
    else if (commit(doc, services))
        moveTo(doc, nextRow(doc, doc.grd.row()));
}

} // namespace

EditAction editorKey(model::Document& doc, platform::Services& services, EditKey key) {
    if (!doc.editor.open())
        return {};
    switch (key) {
    case EditKey::Escape:
        HideGridControls(doc);
        break;
    case EditKey::F2:
        return toLongEditor(doc, services);
    case EditKey::Enter:
        commit(doc, services);
        break;
    case EditKey::Tab:
        formatFloat(doc, services);
        saveCell(doc, services);
        moveOn(doc);
        break;
    case EditKey::BackTab:
        formatFloat(doc, services);
        saveCell(doc, services);
        moveBack(doc);
        break;
    case EditKey::Up:
        keyUp(doc, services);
        break;
    case EditKey::Down:
        keyDown(doc, services);
        break;
    }
    return {};
}

int calendarDay(const model::Document& doc, platform::Services& services) {
    const platform::LocalTime now = services.clock.now();
    const auto day = calc::readDay(doc.editor.text, services.regional, now.year);
    return calc::dayNumber(day.value_or(calc::Date{now.year, now.month, now.day}));
}

void pickDay(model::Document& doc, platform::Services& services, int day) {
    if (doc.editor.kind != EditorKind::DTPickerMS2)
        return;
    doc.editor.text = calc::shortDate(calc::dateOfDay(day), services.regional);
    doc.editor.allSelected = true;
}

void spinBy(model::Document& doc, platform::Services& services, int step) {
    model::EditorState& editor = doc.editor;
    if (editor.kind != EditorKind::MebSpin)
        return;
    const std::string tested = withoutGroups(editor.text, separatorsOf(services.regional));
    const double value = calc::parseNumber(tested, services.regional).value_or(0);
    const WholeRange& range = rangeOf(fieldOfColumn(doc, editor.col).Type);
    if (!range.holds(value)) {
        showCritical(services, range.message);
        editor.text.pop_back();
        return;
    }
    const double moved = std::trunc(value) + step;
    editor.spin = static_cast<std::int32_t>(std::clamp<double>(moved, range.lowest, range.highest));
    editor.text = std::to_string(editor.spin);
}

void moveRight(model::Document& doc) {
    for (int column = doc.grd.col() + 1; column < model::kScratchColumn; ++column)
        if (doc.grd.columnWidth(column) != 0)
            return doc.grd.setCell(doc.grd.row(), column);
}

void moveLeft(model::Document& doc) {
    for (int column = doc.grd.col() - 1; column > model::kNumberColumn; --column)
        if (doc.grd.columnWidth(column) != 0)
            return doc.grd.setCell(doc.grd.row(), column);
}

} // namespace tallybook::document
