#include "support/OlderFile.h"

#include "core/pdb/AttributeBlocks.h"
#include "core/pdb/Conditions.h"
#include "core/pdb/Passwords.h"

namespace tallybook::test {

namespace {

namespace layout = pdb::layout;
namespace older = pdb::older;
using model::FieldType;
using pdb::ByteWriter;
using platform::Bytes;

void outView(const pdb::OldView& view, ByteWriter& out) {
    out.outArea(view.Name, 21);
    for (const model::ViewColumn& column : view.Columns) {
        out.outByte(column.Field);
        out.outByte(column.Width);
    }
    out.outByte(view.ViewByte);
    out.zeros(4);
}

void outFilter(const model::FilterDef& filter, ByteWriter& out) {
    pdb::buildConditions(filter, out);
    out.outBytes(filter.CondLinks);
    out.zeros(4);
}

void outTexts(const pdb::OldDB& db, std::size_t count, ByteWriter& out) {
    out.outArea(db.Password, 10);
    for (std::size_t i = 0; i < count; ++i)
        out.outZeroText(db.Texts[i]);
}

std::size_t textsOf(const pdb::OldDB& db) {
    return db.HdrBytes[3] == 2 ? 8 : (db.HdrBytes[3] == 3 ? 14 : 3);
}

Bytes headerValues(const pdb::OldDB& db) {
    ByteWriter out;
    out.outByte(0);
    out.outByte(db.NumFields);
    out.outByte(db.NumViews);
    out.outByte(db.Version);
    const bool is10 = db.Version >= 100;
    for (std::size_t slot = 0; is10 && slot < db.Views.size(); ++slot)
        outView(db.Views[slot], out);
    for (std::size_t slot = 0; is10 && slot < db.Filters.size(); ++slot)
        outFilter(db.Filters[slot], out);
    out.outByte(db.FormFlag);
    out.outBytes(db.Splitters);
    out.outBytes(platform::ByteSpan(db.HdrBytes).first(is10 ? 5 : 2));
    out.zeros(is10 ? 15 : 0);
    outTexts(db, is10 ? textsOf(db) : 3, out);
    for (std::size_t slot = 0; !is10 && slot < 5; ++slot)
        outView(db.Views[slot], out);
    return out.take();
}

Bytes fieldTable(const pdb::OldDB& db) {
    ByteWriter out;
    out.outByte(1);
    for (std::size_t slot = 0; slot < std::min<std::size_t>(db.NumFields, db.Fields.size()); ++slot) {
        const model::FieldDef& field = db.Fields[slot];
        out.outByte(static_cast<std::uint8_t>(slot));
        out.outByte(static_cast<std::uint8_t>(slot == 0 ? FieldType::NotUsed : field.Type));
        out.outByte(field.HandheldByte);
        out.outByte(field.Decimals);
        out.outZeroText(field.Name);
    }
    return out.take();
}

void outExpression(const model::ExprDef& expression, std::size_t tokens, ByteWriter& out) {
    for (std::size_t i = 0; i < tokens; ++i)
        out.outByte(static_cast<std::uint8_t>(expression.Tokens[i]));
    for (std::size_t i = 0; i < tokens; ++i)
        out.outArea(expression.TokenTexts[i], 11);
    out.outByte(0);
}

void outExternal(const model::ExternalDef& external, ByteWriter& out) {
    const bool isOfAddressBook = external.ABField1 != 0 || external.Extra != 0;
    out.outZeroText(external.Source);
    out.outByte(external.SourceField);
    out.outByte(external.MatchField);
    out.outByte(isOfAddressBook ? 1 : 0);
    if (isOfAddressBook) {
        out.outByte(external.ABField1);
        out.outByte(external.Extra);
    }
}

Bytes attribute(const pdb::OldDB& db, int slot, std::size_t tokens) {
    ByteWriter out;
    out.outByte(static_cast<std::uint8_t>(older::kFirstAttribute + slot));
    switch (db.Fields[static_cast<std::size_t>(slot)].Type) {
    case FieldType::List:
    case FieldType::RadioButton:
        pdb::buildList(db.Lists.at(slot), out);
        break;
    case FieldType::Expression:
        outExpression(db.Expressions.at(slot), tokens, out);
        break;
    case FieldType::DBJoin:
    case FieldType::DBLookup:
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        outExternal(db.Externals.at(slot), out);
        break;
    default:
        out.outByte(1);
        break;
    }
    return out.take();
}

Bytes lastKey(const pdb::OldDB& db) {
    ByteWriter out;
    out.outByte(older::kLastKey);
    out.outLong(static_cast<std::uint32_t>(db.LastKey));
    return out.take();
}

void addFields(OlderFile& file) {
    file.items(0, {{1, "home"}, {2, "work"}});
    file.field(1, FieldType::Text, "Title");
    file.field(2, FieldType::Integer, "Count");
    file.field(3, FieldType::Long, "Total");
    file.field(4, FieldType::Float, "Price").Decimals = 2;
    file.field(5, FieldType::List, "Kind");
    file.items(5, {{1, "red"}, {7, "green"}});
    file.field(6, FieldType::Checkbox, "Done");
    file.field(7, FieldType::Date, "Day");
    file.field(8, FieldType::Time, "Hour");
    file.field(9, FieldType::Expression, "Twice");
    file.expression(9, {2, '*', 86});
    file.db.Expressions[9].TokenTexts[2] = "2";
    file.field(10, FieldType::Memo, "Notes");
    file.field(11, FieldType::Key, "Key");
    file.field(12, FieldType::DBJoin, "Author");
    file.db.Externals[12] = {.Source = "MSA_Authors", .SourceField = 1, .MatchField = 2};
    file.field(13, FieldType::DBLookup, "Born");
    file.db.Externals[13] = {.Source = "MSA_Authors", .SourceField = 12, .MatchField = 3};
    file.field(15, FieldType::AddressBookJoin, "Lent to");
    file.db.Externals[15] = {.Source = "", .ABField1 = 2, .Extra = 9};
    file.field(16, FieldType::AddressBookLookup, "Phone");
    file.field(17, FieldType::RadioButton, "Size");
    file.items(17, {{1, "small"}, {2, "large"}});
}

void addRecords(OlderFile& file) {
    file.record(2, 7,
                "01 01 03 'Ada' 00"          // Text
                "02 02 000C"                 // Integer 12
                "03 03 000186A0"             // Long 100000
                "04 04 40600000"             // Float 3.5
                "05 05 07"                   // List "green"
                "06 06 01"                   // Checkbox
                "07 07 07D3 02 01"           // 1 February 2003
                "08 08 000D 05 09"           // 13:05:09
                "09 09 3F800000"             // an older result
                "0A 0A 0004 'note' 00"       // Memo
                "0C 0C 0B 00000005"          // join by the key 5
                "0F 0F 0000002A 03 'Bob' 00" // Address Book Join
                "10 10 03 '555' 00"          // Address Book Lookup
                "11 11 02");                 // Radio Button "large"
    file.record(0, 8, "01 01 06 'Second' 00 02 02 FFFB 06 06 00");
    file.record(1, 9, "");
}

} // namespace

OlderFile::OlderFile() {
    db.Version = 100;
    db.NumFields = 1;
    db.Fields[0].Type = FieldType::List;
    db.Fields[0].Name = "Categories";
}

model::FieldDef& OlderFile::field(int slot, FieldType type, const std::string& fieldName) {
    model::FieldDef& made = db.Fields[static_cast<std::size_t>(slot)];
    made.Type = type;
    made.Name = fieldName;
    db.NumFields = std::max(db.NumFields, static_cast<std::uint8_t>(slot + 1));
    return made;
}

void OlderFile::items(int slot, const std::vector<std::pair<int, std::string>>& all) {
    for (const auto& [id, text] : all) {
        db.Lists[slot].ItemIds.push_back(static_cast<std::uint8_t>(id));
        db.Lists[slot].Items.push_back(text);
    }
}

void OlderFile::expression(int slot, std::initializer_list<std::uint32_t> tokens) {
    std::copy(tokens.begin(), tokens.end(), db.Expressions[slot].Tokens.begin());
}

void OlderFile::protect(const std::string& password) {
    db.Password = pdb::ApplyPwd(password);
}

void OlderFile::record(int category, std::int32_t key, std::string_view cells) {
    ByteWriter out;
    out.outByte(older::kFixedRecords);
    out.outByte(static_cast<std::uint8_t>(category));
    out.outLong(static_cast<std::uint32_t>(key));
    out.outBytes(hex(cells));
    out.zeros(2);
    m_records.push_back(out.take());
}

RawFile OlderFile::raw() const {
    RawFile file;
    file.name = name;
    file.creator = "MOSA";
    file.records = {{headerValues(db)}, {fieldTable(db)}};
    for (int slot = 0; slot < older::kFieldSlots; ++slot)
        file.records.push_back({attribute(db, slot, static_cast<std::size_t>(expressionTokens))});
    file.records.push_back({lastKey(db)});
    for (const Bytes& record : m_records)
        file.records.push_back({record});
    return file;
}

OlderFile smallOlder(bool withPassword) {
    OlderFile file;
    file.name = "MSA_Small";
    addFields(file);
    addRecords(file);
    file.db.NumViews = 2;
    file.db.Views[0].Name = "All";
    file.db.Views[0].Columns[0] = {.Field = 2, .Width = 60};
    file.db.Views[0].Columns[35] = {.Field = 1, .Width = 40};
    file.db.Views[1].Name = "Short";
    file.db.Views[1].Columns[0] = {.Field = 1, .Width = 80};
    file.db.Filters[0].Name = "Done";
    file.db.Filters[0].CondFields[0] = 6;
    file.db.Filters[0].CondOps[0] = '=';
    file.db.Filters[0].CondValues[0] = "1";
    file.db.HdrBytes = {1, 0, 0, 2, 5};
    file.db.Texts = {"one", "two", "three", "4", "5", "6", "7", "8"};
    file.db.LastKey = 9;
    if (withPassword)
        file.protect("secret");
    return file;
}

OlderFile smallOldest() {
    OlderFile file = smallOlder();
    file.db.Version = 1;
    file.db.Views = {};
    file.expressionTokens = 7;
    return file;
}

} // namespace tallybook::test
