// A small open database for the tests of editing. Fields are made one by one, records are empty.
#pragma once

#include "core/document/edit/CellEditing.h"
#include "core/document/grid/GridDisplay.h"
#include "core/model/Document.h"
#include "core/pdb/Passwords.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::test {

using document::EditAction;
using document::EditKey;
using model::EditorKind;
using model::FieldType;

class DocumentFixture : public testing::Test {
protected:
    DocumentFixture() {
        model::clearDocument(doc);
        field(0, FieldType::List, "Categories");
    }

    model::FieldDef& field(int slot, FieldType type, const std::string& name = "Field") {
        model::FieldDef& made = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
        made.Type = type;
        made.Name = name;
        return made;
    }

    void items(int slot, const std::vector<std::pair<int, std::string>>& all) {
        model::ListDef& list = doc.CurrDB20.Lists[slot];
        for (const auto& [id, text] : all) {
            list.ItemIds.push_back(static_cast<std::uint8_t>(id));
            list.Items.push_back(text);
        }
    }

    // Empty records, then the grid as after opening.
    void records(int count) {
        model::resetRows(doc, count);
        for (int row = model::kFirstDataRow; row < doc.grd.rows(); ++row)
            doc.grd.setText(row, 1, count > 0 ? "Unfiled" : "");
        document::gridLoadFieldNames20(doc, services.regional);
        doc.grd.setCell(model::kFirstDataRow, 1);
        doc.GridReady = true;
    }

    void protect(model::PasswordKind kind, const std::string& password) {
        doc.CurrDB20.Passwords[static_cast<std::size_t>(kind)] = pdb::ApplyPwd(password);
    }

    // Cells by record from 0 and slot.
    std::string cell(int record, int slot) const {
        return doc.grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot));
    }
    void setCell(int record, int slot, const std::string& text) {
        doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(slot), text);
    }
    model::Picture picture(int record, int slot) const {
        return doc.grd.picture(record + model::kFirstDataRow, model::columnOfSlot(slot));
    }
    void go(int record, int slot) { doc.grd.setCell(record + model::kFirstDataRow, model::columnOfSlot(slot)); }
    // The current cell as record and slot.
    std::pair<int, int> at() const {
        return {doc.grd.row() - model::kFirstDataRow, model::slotOfColumn(doc.grd.col())};
    }

    EditAction edit(int record, int slot, int key = document::kKeyBlank) {
        go(record, slot);
        return document::GridEdit(doc, t, key);
    }
    // Types a text into the editor of a cell and leaves the cell.
    void type(int record, int slot, const std::string& text) {
        edit(record, slot);
        doc.editor.text = text;
        document::saveCell(doc, t);
    }
    EditAction key(EditKey pressed) { return document::editorKey(doc, t, pressed); }

    const platform::Message& lastMessage() const {
        static const platform::Message kNone;
        return t.user.messages.empty() ? kNone : t.user.messages.back();
    }

    TestServices t;
    platform::Services& services = t.services;
    model::Document doc;
};

} // namespace tallybook::test
