#include "SmallDatabase.h"

#include "core/pdb/Database.h"
#include "support/TestServices.h"

#include <array>
#include <stdexcept>
#include <string>

namespace tallybook::fuzz {

namespace {

using model::FieldType;

constexpr int kAutoWriterSlot = 23; // a second Text, with an auto-writer; slots 1 to 22 have the type of their number
constexpr int kPictureNumber = 7;

const std::array<const char*, 24> kCells = {
    "Books",      "A text", "-12",      "123456", "0.50",   "Second", "",     "1/17/2003",
    "1:02:03 PM", "2.25",   "A\nmemo",  "",       "Joined", "",       "",     "Palmer, Ann",
    "Ann",        "First",  "Pictures", "Cheap",  "41",     "",       "3.75", "one;two"};

void addList(model::ListDef& list, std::initializer_list<const char*> items) {
    for (const char* item : items) {
        list.ItemIds.push_back(static_cast<std::uint8_t>(list.Items.size() + 1));
        list.Items.emplace_back(item);
    }
}

void addFields(model::DatabaseModel& db) {
    for (int slot = 0; slot <= kAutoWriterSlot; ++slot) {
        model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
        field.Type = static_cast<FieldType>(slot);
        field.Name = "F" + std::to_string(slot);
        field.HandheldByte = static_cast<std::uint8_t>(slot);
    }
    db.Fields[0].Type = FieldType::List;
    db.Fields[4].Decimals = 2;
    db.Fields[7].Default = "U";
    db.Fields[9].Decimals = 2;
    db.Fields[22].Decimals = 2;
    db.Fields[kAutoWriterSlot].Type = FieldType::Text;
    db.Fields[kAutoWriterSlot].AutoWriter = 2;
}

void addAttributes(model::DatabaseModel& db) {
    addList(db.Lists[0], {"Books", "Caf\xE9"});
    addList(db.Lists[5], {"First", "Second"});
    addList(db.Lists[17], {"First", "Second", "Third"});
    addList(db.Lists[kAutoWriterSlot], {"one", "two"});
    for (const int slot : {9, 22}) {
        db.Expressions[slot].Tokens = {1, 91, 2};
        db.Expressions[slot].TokenTexts[0] = "12.5";
    }
    for (const int slot : {12, 13, 15, 16})
        db.Externals[slot] = {"MS2_Other", 11, 1, 1, 11, 2};
    db.Externals[12].KeyType = 1;
    db.OneToManys[14] = {"MS2_Other", {1, 0, 0}, {2, 0, 0}, "Left", "Right", {1, 2, 3}};
    db.Plugins[21] = {77, 1, {1, 2, 3}, {4, 5}, {{1, 2, "plug"}, {3, 4, ""}}};
    model::CondExprDef& condition = db.CondExprs[19];
    condition.Name = "Price";
    condition.CondFields = {4, 0, 0};
    condition.CondValues[0] = "1";
    condition.TrueKind = 1;
    condition.TrueText = "Dear";
    condition.FalseText = "Cheap";
    db.AutoIncNext[20] = 42;
}

model::FilterDef filterOf(const char* name, std::uint8_t field) {
    model::FilterDef filter;
    filter.Name = name;
    filter.CondFields = {field, 0, 0};
    filter.CondValues[0] = "x";
    filter.CondOps = {1, 0, 0};
    filter.CondTail = {1, 2, 3, 4};
    return filter;
}

void addViews(model::DatabaseModel& db) {
    for (std::size_t v = 0; v < 2; ++v) {
        model::ViewDef& view = db.Views[v];
        view.Name = v == 0 ? "All" : "Short";
        view.SortFields = {1, 0, 0};
        view.ViewTail = {1, 2, 3, 4, 5, 6};
        for (std::uint8_t c = 0; c < 3; ++c)
            view.Columns[c] = {static_cast<std::uint8_t>(c + 1), 60, {7, 8, 9}};
    }
    db.NumViews = 2;
    db.Filters[0] = filterOf("Dear ones", 4);
    db.Filters[1] = filterOf("Texts", 1);
    db.SpareFilters = {filterOf("Spare", 2), filterOf("Other", 3)};
}

void addForms(model::DatabaseModel& db) {
    db.NumForms = 2;
    for (std::size_t f = 0; f < 2; ++f) {
        model::FormDef& form = db.Forms[f];
        form.Name = "Form";
        form.NumItems = 2;
        for (std::uint8_t i = 0; i < 2; ++i) {
            form.Items[i].Field = static_cast<std::uint8_t>(i + 1);
            form.Items[i].Row = i;
            form.Items[i].LabelFore = {1, 2, 3};
            form.Items[i].Caption = "Caption";
        }
    }
}

void fillRecord(model::Document& doc, int record) {
    const int row = record + model::kFirstDataRow;
    doc.RecKeys.set(record, record + 1);
    doc.grd.setPicture(row, model::columnOfSlot(6), model::Picture::CheckOn);
    for (int slot = 0; slot <= kAutoWriterSlot; ++slot)
        doc.grd.setText(row, model::columnOfSlot(slot), kCells[static_cast<std::size_t>(slot)]);
    for (const auto& [slot, value] :
         {std::pair{0, 1}, {5, 2}, {11, record + 1}, {15, 9}, {17, 1}, {18, kPictureNumber}})
        doc.CellLongs.set(record, slot, value);
    doc.CellVals.set(record, 12, "Key");
    doc.grd.setColour(row, model::columnOfSlot(19), 0xFF);
}

} // namespace

void fillSmallDatabase(model::Document& doc) {
    model::clearDocument(doc);
    model::DatabaseModel& db = doc.CurrDB20;
    db.DBName = "MS2_Small";
    db.HdrByte1 = 1;
    db.OpaqueHeader9.fill(9);
    db.OpaqueHeader40.fill(40);
    db.Passwords[0] = "0123456789";
    db.StartupText = "Welcome";
    db.LastKey = 3;
    addFields(db);
    addAttributes(db);
    addViews(db);
    addForms(db);
    model::resetRows(doc, 3);
    fillRecord(doc, 0);
    doc.grd.setText(model::kFirstDataRow + 1, model::columnOfSlot(1), "Short");
}

platform::Bytes smallDatabase() {
    model::Document doc;
    fillSmallDatabase(doc);
    test::TestServices computer;
    computer.files.put("/app/Temp/rlw_0000000007.rle", {1, 2, 3, 4});
    auto built = pdb::buildDatabase(doc, computer);
    if (!built)
        throw std::logic_error(built.error().description());
    return std::move(built).value().bytes;
}

} // namespace tallybook::fuzz
