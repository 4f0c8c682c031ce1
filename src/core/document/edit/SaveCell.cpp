// Committing the editor of a cell, and the closing of the modal editors.
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/grid/Cells.h"
#include "core/document/joins/Joins.h"
#include "core/pdb/Passwords.h"

#include <cmath>

namespace tallybook::document {

namespace {

using model::EditorKind;
using model::FieldType;
using platform::Icon;

// What a commit did to the record: only a change is stamped.
enum class Commit { Unchanged, Changed };

// An editor that has been taken off its cell.
struct Edit {
    model::Document& doc;
    platform::Services& services;
    model::EditorState editor;

    int slot() const { return model::slotOfColumn(editor.col); }
    int record() const { return editor.row - model::kFirstDataRow; }
    const model::FieldDef& field() const { return fieldOfColumn(doc, editor.col); }
    std::string cellText() const { return doc.grd.text(editor.row, editor.col); }
    void setCellText(std::string_view text) const { doc.grd.setText(editor.row, editor.col, text); }
    void setId(int id) const { doc.CellLongs.set(record(), slot(), id); }
};

Commit markChanged(model::Document& doc) {
    doc.DocModified = true;
    return Commit::Changed;
}

// The spin box takes what is no whole number too: its fraction is cut off. What is refused leaves "0" behind, and
// a number out of range leaves no other trace.
Commit commitSpin(const Edit& edit) {
    const std::string& text = edit.editor.text;
    if (text.empty()) {
        edit.setCellText("");
        return markChanged(edit.doc);
    }
    const platform::Regional& regional = edit.services.regional;
    const auto value = calc::parseNumber(withoutGroups(text, separatorsOf(regional)), regional);
    if (!value) {
        showCritical(edit.services, "Value not accepted for this field.");
        edit.setCellText("0");
        return markChanged(edit.doc);
    }
    const WholeRange& range = rangeOf(edit.field().Type);
    if (!range.holds(*value)) {
        showCritical(edit.services, range.message);
        edit.setCellText("0");
        return Commit::Unchanged;
    }
    edit.setCellText(std::to_string(static_cast<std::int32_t>(std::trunc(*value))));
    return markChanged(edit.doc);
}

Commit commitDate(const Edit& edit) {
    edit.setCellText(edit.editor.text);
    return markChanged(edit.doc);
}

bool isValidated(FieldType type) {
    return type == FieldType::Time || type == FieldType::Float || type == FieldType::Integer ||
           type == FieldType::Long;
}

// A value typed beyond the next one moves it there, so that the next new record repeats the value.
void raiseNextValue(const Edit& edit) {
    const auto value = calc::toInt32(edit.cellText(), edit.services.regional);
    std::int32_t& next = edit.doc.CurrDB20.AutoIncNext[edit.slot()];
    if (value && *value > next)
        next = *value;
}

Commit commitText(const Edit& edit) {
    const bool differs = edit.editor.text != edit.cellText();
    edit.setCellText(edit.editor.text);
    if (edit.field().Type == FieldType::AutoIncremental)
        raiseNextValue(edit);
    return differs ? markChanged(edit.doc) : Commit::Unchanged;
}

Commit commitValidated(const Edit& edit) {
    edit.setCellText(edit.editor.text);
    return markChanged(edit.doc);
}

Commit commitJoin(const Edit& edit) {
    typeJoinKey(edit.doc, edit.slot(), edit.record(), edit.editor.text);
    return Commit::Unchanged;
}

Commit commitEntry(const Edit& edit) {
    const int last = static_cast<int>(edit.editor.entries.size()) - 1;
    const int entry = edit.editor.entry;
    if (entry < 0 || entry >= last)
        return Commit::Unchanged; // "Edit Items..." is no value
    if (edit.slot() == 0 && entry == last - 1) {
        edit.setId(0);
        edit.setCellText("Unfiled");
    } else if (entry == 0) {
        edit.setId(0);
        edit.setCellText("");
    } else {
        const model::ListDef& list = edit.doc.CurrDB20.Lists.at(edit.slot());
        const int id = list.ItemIds[static_cast<std::size_t>(entry) - 1];
        edit.setId(id);
        edit.setCellText(calc::getListText(edit.doc.CurrDB20, edit.slot(), id));
    }
    return markChanged(edit.doc);
}

Commit commitEditor(const Edit& edit) {
    switch (edit.editor.kind) {
    case EditorKind::MebSpin:
        return commitSpin(edit);
    case EditorKind::DTPickerMS2:
        return commitDate(edit);
    case EditorKind::cmb1:
        return commitEntry(edit);
    case EditorKind::Text1:
        break;
    case EditorKind::None:
        return Commit::Unchanged;
    }
    if (edit.field().Type == FieldType::DBJoin)
        return commitJoin(edit);
    return isValidated(edit.field().Type) ? commitValidated(edit) : commitText(edit);
}

// Why the text of the open editor may not go to its cell; empty when it may.
std::string refusalOf(model::Document& doc, platform::Services& services) {
    if (doc.editor.kind == EditorKind::DTPickerMS2)
        return ValidateDate(doc, services);
    const bool tested = doc.editor.kind == EditorKind::Text1 && isValidated(fieldOfColumn(doc, doc.editor.col).Type);
    return tested ? ValidateData(doc, services) : std::string();
}

// True when the text may go to its cell; otherwise the user has been told.
bool textIsAccepted(model::Document& doc, platform::Services& services) {
    const std::string refusal = refusalOf(doc, services);
    if (!refusal.empty())
        showCritical(services, refusal);
    return refusal.empty();
}

std::size_t lengthLimit(FieldType type) {
    return type == FieldType::Memo ? model::kMemoLength : model::kTextLength;
}

// The current cell as if the text had been typed into Text1.
Edit currentCell(model::Document& doc, platform::Services& services, std::string_view text) {
    model::EditorState editor;
    editor.kind = EditorKind::Text1;
    editor.row = doc.grd.row();
    editor.col = doc.grd.col();
    editor.text = text;
    return {doc, services, std::move(editor)};
}

bool isWritable(const model::Document& doc) {
    return doc.CurrDB20.ReadOnly == 0 && isFieldColumn(doc.grd.col()) && isShownRow(doc, doc.grd.row());
}

} // namespace

void saveCell(model::Document& doc, platform::Services& services) {
    if (!doc.editor.open() || !isFieldColumn(doc.editor.col))
        return;
    const bool accepted = textIsAccepted(doc, services);
    const Edit edit{doc, services, std::move(doc.editor)};
    HideGridControls(doc);
    if (accepted && commitEditor(edit) == Commit::Changed)
        stampRow(doc, services, edit.editor.row);
}

void HideGridControls(model::Document& doc) {
    doc.editor = {};
}

// A number or a time that was composed there goes the way of one that was typed into Text1.
void acceptMemo(model::Document& doc, platform::Services& services, std::string_view text) {
    if (!isWritable(doc))
        return;
    const FieldType type = fieldOfColumn(doc, doc.grd.col()).Type;
    Edit edit = currentCell(doc, services, text.substr(0, lengthLimit(type)));
    if (edit.editor.text == edit.cellText())
        return;
    doc.editor = std::move(edit.editor);
    saveCell(doc, services);
}

bool acceptRadio(model::Document& doc, platform::Services& services, int option) {
    if (!isWritable(doc))
        return true;
    const int slot = model::slotOfColumn(doc.grd.col());
    const model::ListDef& list = doc.CurrDB20.Lists.at(slot);
    if (option < 0 || option >= list.Count()) {
        services.ui.message({.text = "It is compulsory to select an option. Select an option and click OK",
                             .icon = Icon::Warning,
                             .title = "No option selected"});
        return false;
    }
    const auto index = static_cast<std::size_t>(option);
    const Edit edit = currentCell(doc, services, list.Items[index]);
    const int id = list.ItemIds[index];
    if (doc.CellLongs.get(edit.record(), slot) == id && edit.cellText() == edit.editor.text)
        return true;
    edit.setId(id);
    edit.setCellText(edit.editor.text);
    markChanged(doc);
    stampRow(doc, services, edit.editor.row);
    return true;
}

void clearDate(model::Document& doc, platform::Services& services) {
    const auto answer = services.ui.message({.text = "Are you sure to clear the DATE VALUE for the selected Field?",
                                             .icon = Icon::Question,
                                             .buttons = platform::Buttons::OkCancel,
                                             .title = "Clear Date",
                                             .preferred = platform::Answer::Cancel});
    if (answer != platform::Answer::Ok || doc.editor.kind != EditorKind::DTPickerMS2)
        return;
    doc.grd.setText(doc.editor.row, doc.editor.col, "");
    HideGridControls(doc);
}

std::string textChanged(model::Document& doc, std::string_view text) {
    model::EditorState& editor = doc.editor;
    // A text of one character has grown to it when it was typed over a selection or an empty box, and not when the
    // ones behind it were deleted.
    const bool typed = editor.text.empty() || editor.allSelected || !editor.text.starts_with(text);
    const bool capital =
        editor.kind == EditorKind::Text1 && text.size() == 1 && typed && fieldOfColumn(doc, editor.col).Decimals != 1;
    editor.text = capital ? calc::upper(text) : std::string(text.substr(0, model::kTextLength));
    editor.allSelected = false;
    return editor.text;
}

bool chooseEntry(model::Document& doc, platform::Services& services, int entry) {
    if (doc.editor.kind != EditorKind::cmb1)
        return false;
    const bool last = entry == static_cast<int>(doc.editor.entries.size()) - 1;
    doc.editor.entry = entry;
    saveCell(doc, services);
    return last && pdb::AuthorizeDB(doc, services, model::PasswordKind::Design);
}

void doTimeStamp(model::Document& doc, platform::Services& services) {
    stampRow(doc, services, doc.grd.row());
}

} // namespace tallybook::document
