#include "desktop/SampleDocument.h"

#include "core/document/grid/GridDisplay.h"

#include <array>
#include <string_view>
#include <utility>

namespace tallybook::test {

namespace {

using model::FieldType;

void setField(model::Document& doc, int slot, FieldType type, std::string_view name) {
    model::FieldDef& field = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
    field.Type = type;
    field.Name = name;
}

model::FieldDef& field(model::Document& doc, int slot) {
    return doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
}

void makeFields(model::Document& doc) {
    setField(doc, kCategory, FieldType::List, "Categories");
    setField(doc, kTitle, FieldType::Text, "Title");
    setField(doc, kPages, FieldType::Integer, "Pages");
    setField(doc, kStock, FieldType::Long, "Stock");
    setField(doc, kPrice, FieldType::Float, "Price");
    setField(doc, kShelf, FieldType::List, "Shelf");
    setField(doc, kLent, FieldType::Checkbox, "Lent");
    setField(doc, kBought, FieldType::Date, "Bought");
    setField(doc, kAt, FieldType::Time, "At");
    setField(doc, kNotes, FieldType::Memo, "Notes");
    setField(doc, kCover, FieldType::RadioButton, "Cover");
    setField(doc, kKey, FieldType::Key, "Key");
    setField(doc, kNumber, FieldType::AutoIncremental, "Number");
    setField(doc, kValue, FieldType::Expression, "Value");
    setField(doc, kKind, FieldType::Text, "Kind");
    setField(doc, kChanged, FieldType::Date, "Changed");
    setField(doc, kPicture, FieldType::Image, "Picture");
    setField(doc, kJoin, FieldType::DBJoin, "Publisher");
    field(doc, kStock).IncDec = 1;
    field(doc, kPrice).Decimals = 2;
    field(doc, kKind).AutoWriter = 1;
    field(doc, kChanged).Default = "U";
    doc.CurrDB20.Lists[kCategory] = {{1, 2}, {"Business", "Personal"}};
    doc.CurrDB20.Lists[kShelf] = {{1, 2, 3}, {"Upper", "Middle", "Lower"}};
    doc.CurrDB20.Lists[kCover] = {{1, 2}, {"Hard", "Soft"}};
    doc.CurrDB20.Lists[kKind] = {{1, 2}, {"Novel", "Essay"}};
    doc.CurrDB20.AutoIncNext[kNumber] = 4;
    doc.CurrDB20.Externals[kJoin].Source = "MS2_Publishers";
    doc.CurrDB20.Externals[kJoin].MatchField = 1;
}

void setCell(model::Document& doc, int record, int slot, std::string_view text) {
    doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(slot), text);
}

struct Book {
    std::string_view title, pages, stock, price, bought, at, notes;
};
constexpr std::array kBooks = {
    Book{"Sea Charts", "120", "3", "9.50", "1/2/2003", "7:05:00 AM", "Bought at the harbour\nSecond hand"},
    Book{"Garden Year", "96", "12", "4.25", "", "", ""},
    Book{"Old Clocks", "310", "-1", "27.00", "12/24/2002", "8:30:00 PM", "Caf\xE9 \x80 5"},
};

void makeRecord(model::Document& doc, int record) {
    const Book& book = kBooks[static_cast<std::size_t>(record)];
    setCell(doc, record, kCategory, record == 1 ? "Personal" : "Unfiled");
    doc.CellLongs.set(record, kCategory, record == 1 ? 2 : 0);
    setCell(doc, record, kTitle, book.title);
    setCell(doc, record, kPages, book.pages);
    setCell(doc, record, kStock, book.stock);
    setCell(doc, record, kPrice, book.price);
    setCell(doc, record, kShelf, record == 2 ? "" : "Middle");
    doc.CellLongs.set(record, kShelf, record == 2 ? 0 : 2);
    doc.grd.setPicture(record + model::kFirstDataRow, model::columnOfSlot(kLent),
                       record == 0 ? model::Picture::CheckOn : model::Picture::CheckOff);
    setCell(doc, record, kBought, book.bought);
    setCell(doc, record, kAt, book.at);
    setCell(doc, record, kNotes, book.notes);
    setCell(doc, record, kCover, "Hard");
    doc.CellLongs.set(record, kCover, 1);
    doc.RecKeys.set(record, record + 1);
    setCell(doc, record, kKey, std::to_string(record + 1));
    doc.CellLongs.set(record, kKey, record + 1);
    setCell(doc, record, kNumber, std::to_string(record + 1));
}

struct Publisher {
    std::string_view house, city, number, about;
};
constexpr std::array kPublishers = {
    Publisher{"Harbour Press", "Whitby", "10", "Charts\nand tide tables"},
    Publisher{"Old Mill", "Ludlow", "20", ""},
    Publisher{"Caf\xE9 Books", "York", "30", "Small, and 10 years old"},
};

} // namespace

void joinPublishers(model::Document& sample) {
    setField(sample, kTown, FieldType::DBLookup, "Town");
    model::ExternalDef& join = sample.CurrDB20.Externals[kJoin];
    join.SourceField = kPublisherNumber;
    join.MatchField = kHouse;
    join.ABField1 = kByCity;
    join.KeyType = static_cast<std::uint8_t>(FieldType::Integer);
    model::ExternalDef& lookup = sample.CurrDB20.Externals[kTown];
    lookup.Source = join.Source;
    lookup.SourceField = kJoin;
    lookup.MatchField = kCity;
    sample.CellVals.set(0, kJoin, "20");
}

void makePublishers(model::Document& doc, const platform::Regional& regional) {
    model::clearDocument(doc);
    model::resetRows(doc, static_cast<int>(kPublishers.size()));
    setField(doc, 0, FieldType::List, "Categories");
    setField(doc, kHouse, FieldType::Text, "House");
    setField(doc, kCity, FieldType::Text, "City");
    setField(doc, kPublisherNumber, FieldType::Integer, "Number");
    setField(doc, kAbout, FieldType::Memo, "About");
    doc.CurrDB20.DBName = "MS2_Publishers";
    doc.CurrDB20.NumViews = kByCity + 1;
    model::ViewDef& view = doc.CurrDB20.Views[kByCity];
    view.Name = "By city";
    for (const auto& [field, width] : {std::pair{kCity, 40}, {kHouse, 60}, {kPublisherNumber, 20}, {kAbout, 40}}) {
        view.Columns[view.NumCols].Field = static_cast<std::uint8_t>(field);
        view.Columns[view.NumCols++].Width = static_cast<std::uint8_t>(width);
    }
    document::gridLoadFieldNames20(doc, regional);
    for (int record = 0; record < static_cast<int>(kPublishers.size()); ++record) {
        const Publisher& publisher = kPublishers[static_cast<std::size_t>(record)];
        setCell(doc, record, kHouse, publisher.house);
        setCell(doc, record, kCity, publisher.city);
        setCell(doc, record, kPublisherNumber, publisher.number);
        setCell(doc, record, kAbout, publisher.about);
        doc.RecKeys.set(record, record + 1);
    }
}

void makeSample(model::Document& doc, const platform::Regional& regional) {
    model::clearDocument(doc);
    model::resetRows(doc, static_cast<int>(kBooks.size()));
    makeFields(doc);
    doc.CurrDB20.DBName = "MS2_Books";
    doc.CurrDB20.LastKey = 3;
    document::gridLoadFieldNames20(doc, regional);
    for (int record = 0; record < static_cast<int>(kBooks.size()); ++record)
        makeRecord(doc, record);
    doc.grd.setCell(model::kFirstDataRow, 1);
    doc.DocModified = false;
    doc.GridReady = true;
}

} // namespace tallybook::test
