#include "core/document/edit/DeleteKey.h"

#include "core/document/edit/CellEditing.h"
#include "core/document/edit/Records.h"
#include "core/document/grid/Cells.h"
#include "core/document/grid/GridDisplay.h"
#include "core/document/views/Views.h"
#include "core/pdb/Passwords.h"
#include "core/platform/OwnTexts.h"

#include <string>
#include <utility>

namespace tallybook::document {

namespace {

using model::EditorKind;
using model::FieldType;

enum class Emptying {
    TakesNone,  // the field has no empty value, or its own dialog
    LeavesText, // an editor that is left without a text
    LeavesItem, // the list's entry "none"
    LeavesDate,
    Explains, // the field's message says why its cells cannot be changed
};

Emptying emptyingOf(FieldType type) {
    switch (type) {
    case FieldType::Text:
    case FieldType::Memo:
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::Time:
    case FieldType::AutoIncremental:
    case FieldType::DBJoin:
        return Emptying::LeavesText;
    case FieldType::List:
        return Emptying::LeavesItem;
    case FieldType::Date:
        return Emptying::LeavesDate;
    case FieldType::Key:
    case FieldType::Expression:
    case FieldType::AdvExpression:
    case FieldType::ConditionalExpression:
    case FieldType::OneToMany:
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
    case FieldType::Plugin:
        return Emptying::Explains;
    default:
        return Emptying::TakesNone;
    }
}

// The current cell as an editor of the kind that has been emptied.
model::EditorState emptied(const model::Document& doc, EditorKind kind) {
    model::EditorState editor;
    editor.kind = kind;
    editor.row = doc.grd.row();
    editor.col = doc.grd.col();
    return editor;
}

// "none" of a field's list, "Unfiled" of the categories; the entry behind them is no value.
model::EditorState withoutItem(const model::Document& doc) {
    model::EditorState editor = emptied(doc, EditorKind::cmb1);
    editor.entries = {"none", "Unfiled", {}};
    editor.entry = model::slotOfColumn(editor.col) == 0 ? 1 : 0;
    return editor;
}

void emptyDate(model::Document& doc, platform::Services& services) {
    doc.grd.setText(doc.grd.row(), doc.grd.col(), {});
    doc.DocModified = true;
    stampRow(doc, services, doc.grd.row());
}

bool holdsSomething(const model::Document& doc) {
    const int slot = model::slotOfColumn(doc.grd.col());
    const int record = doc.grd.row() - model::kFirstDataRow;
    const FieldType type = fieldOfColumn(doc, doc.grd.col()).Type;
    if (type == FieldType::List && doc.CellLongs.get(record, slot) != 0)
        return true;
    std::string scratch;
    if (type == FieldType::DBJoin && !doc.CellVals.get(record, slot, scratch).empty())
        return true;
    return doc.grd.text(doc.grd.row(), doc.grd.col()) != (slot == 0 ? "Unfiled" : "");
}

void emptyCell(model::Document& doc, platform::Services& services) {
    const Emptying way = emptyingOf(fieldOfColumn(doc, doc.grd.col()).Type);
    if (way == Emptying::Explains)
        GridEdit(doc, services, kKeyBlank);
    if (way == Emptying::Explains || way == Emptying::TakesNone || !holdsSomething(doc) ||
        !pdb::AuthorizeDB(doc, services, model::PasswordKind::Modify))
        return;
    if (way == Emptying::LeavesDate)
        return emptyDate(doc, services);
    doc.editor = way == Emptying::LeavesItem ? withoutItem(doc) : emptied(doc, EditorKind::Text1);
    saveCell(doc, services);
}

bool isOnCell(const model::Document& doc) {
    return !isViewShown(doc) && !model::hasNoRecords(doc) && isFieldColumn(doc.grd.col()) &&
           isShownRow(doc, doc.grd.row());
}

} // namespace

void deleteKey(model::Document& doc, platform::Services& services) {
    if (!doc.GridReady)
        return;
    if (isRowSelected(shownGrid(doc))) {
        deleteRecord(doc, services);
        return;
    }
    if (doc.CurrDB20.ReadOnly != 0 || !isOnCell(doc))
        return;
    saveCell(doc, services);
    if (hasBlock(doc))
        services.ui.message({.text = std::string(platform::texts::kOneCellAtATime),
                             .icon = platform::Icon::Information,
                             .title = {}});
    else
        emptyCell(doc, services);
}

} // namespace tallybook::document
