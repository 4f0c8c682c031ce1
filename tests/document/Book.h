// Databases of a test that lie beside each other, made field by field and written as files.
#pragma once

#include "core/document/file/OpenSave.h"
#include "core/model/Document.h"
#include "core/pdb/Database.h"
#include "support/TestServices.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace tallybook::test {

class Book {
public:
    explicit Book(int count = 0) {
        model::clearDocument(doc);
        field(0, model::FieldType::List, "Categories");
        model::resetRows(doc, count);
        for (int record = 0; record < count; ++record)
            doc.RecKeys.set(record, 100 + record);
    }

    model::FieldDef& field(int slot, model::FieldType type, const std::string& name) {
        model::FieldDef& made = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
        made.Type = type;
        made.Name = name;
        return made;
    }
    // A join on a field of another database, and a lookup that follows it.
    model::ExternalDef& join(int slot, const std::string& name, const std::string& source, int keyField,
                             int displayField, model::FieldType keyType = model::FieldType::Key) {
        field(slot, model::FieldType::DBJoin, name);
        model::ExternalDef& external = doc.CurrDB20.Externals[slot];
        external.Source = source;
        external.SourceField = static_cast<std::uint8_t>(keyField);
        external.MatchField = static_cast<std::uint8_t>(displayField);
        external.KeyType = static_cast<std::uint8_t>(keyType);
        return external;
    }
    void lookup(int slot, const std::string& name, const std::string& source, int join, int displayField) {
        field(slot, model::FieldType::DBLookup, name);
        model::ExternalDef& external = doc.CurrDB20.Externals[slot];
        external.Source = source;
        external.SourceField = static_cast<std::uint8_t>(join);
        external.MatchField = static_cast<std::uint8_t>(displayField);
    }
    void item(int slot, int id, const std::string& text) {
        doc.CurrDB20.Lists[slot].ItemIds.push_back(static_cast<std::uint8_t>(id));
        doc.CurrDB20.Lists[slot].Items.push_back(text);
    }
    void view(std::size_t number, const std::string& name, std::initializer_list<std::pair<int, int>> columns) {
        model::ViewDef& made = doc.CurrDB20.Views[number];
        made.Name = name;
        for (const auto& [slot, width] : columns) {
            made.Columns[made.NumCols].Field = static_cast<std::uint8_t>(slot);
            made.Columns[made.NumCols].Width = static_cast<std::uint8_t>(width);
            ++made.NumCols;
        }
        doc.CurrDB20.NumViews = static_cast<std::uint8_t>(std::max<std::size_t>(doc.CurrDB20.NumViews, number + 1));
    }

    // Cells by record from 0 and slot.
    void set(int record, int slot, const std::string& text) {
        doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(slot), text);
    }
    void setItem(int record, int slot, int id) {
        doc.CellLongs.set(record, slot, id);
        set(record, slot, "an item");
    }
    void check(int record, int slot) {
        doc.grd.setPicture(record + model::kFirstDataRow, model::columnOfSlot(slot), model::Picture::CheckOn);
    }
    void key(int record, int slot, const std::string& key) { doc.CellVals.set(record, slot, key); }

    platform::Bytes bytes(platform::Services& services) {
        auto built = pdb::buildDatabase(doc, services);
        EXPECT_TRUE(built);
        return built ? std::move(built).value().bytes : platform::Bytes{};
    }
    void write(TestServices& t, const std::filesystem::path& path) {
        doc.CurrDB20.DBName = path.stem().string();
        t.files.put(path, bytes(t));
    }

    model::Document doc;
};

} // namespace tallybook::test
