// Opening the editor of a cell.
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/grid/Cells.h"
#include "core/document/views/Views.h"
#include "core/pdb/Passwords.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tallybook::document {

namespace {

using model::EditorKind;
using model::FieldType;
using platform::Icon;
using Open = EditAction::Open;

// The cell that an edit begins on.
struct Cell {
    model::Document& doc;
    platform::Services& services;
    const model::FieldDef& field;
    int slot;
    int row;
    int col;
    int key;

    std::string text() const { return doc.grd.text(row, col); }
    // A blank, a control character or F2 takes the cell's text along; another character replaces it.
    bool keepsText() const { return key <= kKeyBlank || key == kKeyF2; }
};

EditAction nothing(Cell&) {
    return {};
}

EditAction notEditable(Cell& cell, std::string_view text) {
    cell.services.screen.beep();
    cell.services.ui.message({.text = std::string(text), .icon = Icon::Information, .title = "Information."});
    return {};
}

EditAction refuseKey(Cell& cell) {
    return notEditable(cell,
                       "To change the key values, change the field type to 'Long' and then change back to 'Key'.");
}

EditAction refuseExpression(Cell& cell) {
    return notEditable(cell, "To recalculate expressions, select the '!' button on the toolbar.");
}

EditAction refuseOneToMany(Cell& cell) {
    return notEditable(cell, "One to many fields are only available on the handheld.");
}

EditAction refusePlugin(Cell& cell) {
    return notEditable(cell, "Plugins are only available on the handheld.");
}

EditAction refuseAddressBook(Cell& cell) {
    return notEditable(cell, "The data for this field can only be modified on the handheld.");
}

// The mark of change stays as it is: a flipped box alone is not asked about when the document closes.
EditAction flipCheckbox(Cell& cell) {
    const bool on = cell.doc.grd.picture(cell.row, cell.col) == model::Picture::CheckOn;
    cell.doc.grd.setPicture(cell.row, cell.col, on ? model::Picture::CheckOff : model::Picture::CheckOn);
    stampRow(cell.doc, cell.services, cell.row);
    return {};
}

EditAction openMemoWindow(Cell& cell, std::size_t limit) {
    std::string text = cell.text();
    if (text.size() > limit)
        cell.services.ui.message({.text = "Maximum Number of characters for this expression is limited to " +
                                          std::to_string(limit) + " only!",
                                  .title = {}});
    return {.open = Open::MemoWindow, .text = std::move(text), .showAutoWriter = cell.field.AutoWriter > 0};
}

// A memo without an auto-writer opens without a word, however long it is.
EditAction openMemo(Cell& cell) {
    return openMemoWindow(cell, cell.field.AutoWriter > 0 ? model::kMemoLength : std::string::npos);
}

EditAction openRadio(Cell& cell) {
    const auto& items = cell.doc.CurrDB20.Lists.at(cell.slot).Items;
    if (items.empty()) {
        cell.services.ui.message({.text =
                                      "The property setting of radio button field is imcomplete. \n"
                                      "Please setup the property of radio button field before editting the record!",
                                  .icon = Icon::Critical,
                                  .title = "Tallybook Pocket"});
        return {};
    }
    const auto found = std::find(items.begin(), items.end(), cell.text());
    const int selected = found == items.end() ? -1 : static_cast<int>(found - items.begin());
    return {.open = Open::RadioDialog, .text = {}, .selected = selected};
}

EditAction openImage(Cell&) {
    return {.open = Open::ImageDialog, .text = {}};
}

EditAction openEditor(Cell& cell, model::EditorState editor) {
    editor.row = cell.row;
    editor.col = cell.col;
    cell.doc.editor = std::move(editor);
    return {.open = Open::CellEditor, .text = {}};
}

EditAction openList(Cell& cell) {
    const bool categories = cell.slot == 0;
    model::EditorState editor;
    editor.kind = EditorKind::cmb1;
    editor.entries.push_back("none");
    for (const std::string& item : cell.doc.CurrDB20.Lists.at(cell.slot).Items)
        editor.entries.push_back(item);
    if (categories)
        editor.entries.push_back("Unfiled");
    editor.entries.push_back(categories ? "Edit Categories..." : "Edit Items...");
    const int item = calc::getListInd(cell.doc, cell.slot, cell.row - model::kFirstDataRow);
    const bool unfiled = categories && item < 0;
    editor.entry = unfiled ? static_cast<int>(editor.entries.size()) - 2 : item + 1;
    return openEditor(cell, std::move(editor));
}

// A cell that names no day begins with today's.
EditAction openDate(Cell& cell) {
    const platform::LocalTime now = cell.services.clock.now();
    const platform::Regional& regional = cell.services.regional;
    const calc::Date today{now.year, now.month, now.day};
    model::EditorState editor;
    editor.kind = EditorKind::DTPickerMS2;
    editor.allSelected = cell.keepsText();
    editor.text = cell.keepsText()
                      ? calc::shortDate(calc::readDay(cell.text(), regional, now.year).value_or(today), regional)
                      : std::string(1, static_cast<char>(cell.key));
    return openEditor(cell, std::move(editor));
}

EditAction openSpin(Cell& cell) {
    const WholeRange& range = rangeOf(cell.field.Type);
    model::EditorState editor;
    editor.kind = EditorKind::MebSpin;
    editor.text = cell.keepsText() ? cell.text() : std::string(1, static_cast<char>(cell.key));
    editor.allSelected = cell.keepsText();
    editor.rightAligned = true;
    editor.spinMin = range.lowest;
    editor.spinMax = range.highest;
    const double value = calc::parseNumber(editor.text, cell.services.regional).value_or(0);
    editor.spin = range.holds(value) ? static_cast<std::int32_t>(std::trunc(value)) : 0;
    return openEditor(cell, std::move(editor));
}

bool isNumberType(FieldType type) {
    return type == FieldType::Integer || type == FieldType::Long || type == FieldType::Float;
}

// A line of text would show line breaks as something else, and lose them with the first key.
bool hasLineBreak(const Cell& cell) {
    return cell.text().find_first_of("\r\n") != std::string::npos;
}

EditAction openText(Cell& cell) {
    if (hasLineBreak(cell))
        return openMemoWindow(cell, model::kTextLength);
    model::EditorState editor;
    editor.kind = EditorKind::Text1;
    editor.rightAligned = isNumberType(cell.field.Type);
    editor.text = cell.text();
    editor.allSelected = true;
    if (cell.keepsText())
        return openEditor(cell, std::move(editor));
    editor.text.clear();
    openEditor(cell, std::move(editor));
    textChanged(cell.doc, std::string(1, static_cast<char>(cell.key)));
    return {.open = Open::CellEditor, .text = {}};
}

EditAction openJoin(Cell& cell) {
    if (cell.doc.CurrDB20.Externals.at(cell.slot).MatchField > 0)
        return {.open = Open::ExternalPicker,
                .text = cell.keepsText() ? std::string() : std::string(1, static_cast<char>(cell.key))};
    cell.key = kKeyBlank;
    return openText(cell);
}

bool wantsMemoWindow(const Cell& cell) {
    if (cell.field.Type == FieldType::Text)
        return cell.field.AutoWriter > 0 || cell.key == kKeyF2;
    return (isNumberType(cell.field.Type) || cell.field.Type == FieldType::Time) && cell.field.AutoWriter > 0;
}

EditAction openValue(Cell& cell) {
    const bool whole = cell.field.Type == FieldType::Integer || cell.field.Type == FieldType::Long;
    if (whole && cell.field.IncDec == 1)
        return openSpin(cell);
    if (wantsMemoWindow(cell))
        return openMemoWindow(cell, model::kTextLength);
    return openText(cell);
}

struct EditRule {
    bool refusedInReadOnly;
    EditAction (*open)(Cell& cell);
};

// By type code.
constexpr std::array<EditRule, model::kFieldTypes> kRules = {{
    {false, nothing},          // Not Used
    {true, openValue},         // Text
    {true, openValue},         // Integer
    {true, openValue},         // Long
    {true, openValue},         // Float
    {true, openList},          // List, and the categories
    {true, flipCheckbox},      // Checkbox
    {true, openDate},          // Date
    {true, openValue},         // Time
    {true, refuseExpression},  // Expression
    {false, openMemo},         // Memo
    {true, refuseKey},         // Key
    {true, openJoin},          // DB Join
    {false, nothing},          // DB Lookup
    {true, refuseOneToMany},   // One to Many
    {true, refuseAddressBook}, // Address Book Join
    {true, refuseAddressBook}, // Address Book Lookup
    {true, openRadio},         // Radio Button
    {false, openImage},        // Image
    {true, refuseExpression},  // Conditional Expression
    {true, openText},          // Auto Incremental: never a spin box, whatever its IncDec
    {true, refusePlugin},      // Plugin
    {true, refuseExpression},  // Adv Expression
}};

bool mayBegin(const model::Document& doc) {
    const bool onCell = isFieldColumn(doc.grd.col()) && isShownRow(doc, doc.grd.row());
    return onCell && !model::hasNoRecords(doc) && !isViewShown(doc);
}

} // namespace

EditAction GridEdit(model::Document& doc, platform::Services& services, int key) {
    if (!mayBegin(doc) || !pdb::AuthorizeDB(doc, services, model::PasswordKind::Modify))
        return {};
    const int col = doc.grd.col();
    const int slot = model::slotOfColumn(col);
    doc.CurrField = static_cast<std::uint8_t>(slot);
    Cell cell{doc, services, fieldOfColumn(doc, col), slot, doc.grd.row(), col, key};
    const auto code = static_cast<std::size_t>(cell.field.Type);
    EditAction action;
    if (code < kRules.size() && (!kRules[code].refusedInReadOnly || doc.CurrDB20.ReadOnly == 0))
        action = kRules[code].open(cell);
    action.marksRow = true;
    return action;
}

EditAction keyOnGrid(model::Document& doc, platform::Services& services, int key) {
    const bool heard = doc.GridReady && doc.CurrDB20.ReadOnly == 0;
    return heard ? GridEdit(doc, services, key) : EditAction{};
}

} // namespace tallybook::document
