#include "core/document/joins/Joins.h"

#include "core/document/grid/Cells.h"
#include "core/document/joins/ExternalFiles.h"
#include "core/document/joins/ExternalReader.h"
#include "core/document/joins/KeyIndex.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace tallybook::document {

namespace {

using model::DatabaseModel;
using model::Document;
using model::ExternalDef;
using model::ExternalSlot;
using model::FieldType;
using model::TextColumn;
using platform::Services;
using Path = std::filesystem::path;

constexpr char kPart = '\xFF';
constexpr std::uint32_t kNoRow = KeyIndex::kNone;
constexpr std::uint32_t kFirstRow = 0;

std::vector<int> slotsOf(const DatabaseModel& db, FieldType type) {
    std::vector<int> slots;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        if (db.Fields[static_cast<std::size_t>(slot)].Type == type)
            slots.push_back(slot);
    return slots;
}

std::vector<int> joinsOf(const DatabaseModel& db) {
    return slotsOf(db, FieldType::DBJoin);
}

std::vector<int> lookupsOf(const DatabaseModel& db, int join) {
    std::vector<int> lookups = slotsOf(db, FieldType::DBLookup);
    std::erase_if(lookups, [&](int lookup) {
        const ExternalDef& external = db.Externals.at(lookup);
        return external.SourceField != join || external.Source != db.Externals.at(join).Source;
    });
    return lookups;
}

// A file, the joins into it, and what they need of it.
struct SourceFile {
    Path path;
    std::vector<int> joins{};
    pdb::FieldSet fields{};
};

SourceFile& sourceAt(std::vector<SourceFile>& sources, const Path& path) {
    const auto known =
        std::find_if(sources.begin(), sources.end(), [&](const SourceFile& source) { return source.path == path; });
    return known == sources.end() ? sources.emplace_back(SourceFile{path}) : *known;
}

// Where the joins lead. One that names no database, or no key, leads nowhere.
std::vector<SourceFile> findSources(const Document& doc, Services& services) {
    const OlderFiles older = doc.Is2xFormat ? OlderFiles::No : OlderFiles::Yes;
    std::vector<SourceFile> sources;
    for (const int join : joinsOf(doc.CurrDB20)) {
        const ExternalDef& external = doc.CurrDB20.Externals.at(join);
        if (external.Source.empty())
            continue;
        const auto path = findExternalFile(services.files, doc.CurrFolder, external.Source, older);
        if (!path) {
            sayExternalMissing(services, external.Source, doc.CurrDB20.Fields[static_cast<std::size_t>(join)].Name);
        } else if (external.SourceField > 0) {
            SourceFile& source = sourceAt(sources, *path);
            source.joins.push_back(join);
            source.fields |= fieldsOfJoin(doc.CurrDB20, join);
        }
    }
    return sources;
}

void readSource(Document& doc, Services& services, const SourceFile& source) {
    const ExternalDatabase other =
        readExternalDatabase(services, source.path, [&](const DatabaseModel&) { return source.fields; });
    if (!other)
        return;
    for (const int join : source.joins)
        setJoinTables(doc, join, other.records);
}

// The row of the tables that each record has, or kNoRow.
std::vector<std::uint32_t> matchRecords(const Document& doc, const Services& services, int join) {
    const std::uint8_t keyType = doc.CurrDB20.Externals.at(join).KeyType;
    const TextColumn& cells = static_cast<FieldType>(keyType) == FieldType::Key
                                  ? doc.CellVals.slotColumn(join)
                                  : doc.grd.column(model::columnOfSlot(join));
    KeyIndex index(doc.External.at(join), keyType, services.regional);
    return index.find(cells, static_cast<std::uint32_t>(doc.NumDataRecs));
}

// The column of a join or a lookup with a word for each record that has a row. The other cells keep their texts.
void showRows(Document& doc, int slot, const std::vector<std::uint32_t>& rows) {
    const ExternalSlot& tables = doc.External.at(slot);
    const bool known = tables.displayField <= model::MaxUserFields; // otherwise all texts are empty
    const TextColumn* display =
        known ? &tables.records->fields[static_cast<std::size_t>(tables.displayField)] : nullptr;
    TextColumn& column = doc.grd.column(model::columnOfSlot(slot));
    TextColumn shown;
    shown.setCoder(std::make_unique<model::ExternalCoder>(tables.records, tables.displayField));
    std::string scratch;
    for (std::uint32_t record = 0; record < rows.size(); ++record) {
        if (rows[record] == kNoRow)
            shown.setText(record, column.text(record, scratch));
        else if (display != nullptr && display->has(rows[record]))
            shown.setWord(record, rows[record]);
    }
    column = std::move(shown);
}

void joinRecords(Document& doc, Services& services, int join) {
    const std::vector<std::uint32_t> rows = matchRecords(doc, services, join);
    if (doc.External.at(join).displayField > 0)
        showRows(doc, join, rows);
    for (const int lookup : lookupsOf(doc.CurrDB20, join))
        showRows(doc, lookup, rows);
}

} // namespace

pdb::FieldSet fieldsOfJoin(const DatabaseModel& db, int joinSlot) {
    pdb::FieldSet fields;
    const auto add = [&](int field) {
        if (field >= 1 && field <= model::MaxUserFields)
            fields.set(static_cast<std::size_t>(field));
    };
    add(db.Externals.at(joinSlot).SourceField);
    add(db.Externals.at(joinSlot).MatchField);
    for (const int lookup : lookupsOf(db, joinSlot))
        add(db.Externals.at(lookup).MatchField);
    return fields;
}

void setJoinTables(Document& doc, int joinSlot, const std::shared_ptr<const model::ExternalRecords>& records) {
    const DatabaseModel& db = doc.CurrDB20;
    const int keyField = db.Externals.at(joinSlot).SourceField;
    doc.External[joinSlot] = {records, keyField, db.Externals.at(joinSlot).MatchField};
    for (const int lookup : lookupsOf(db, joinSlot))
        doc.External[lookup] = {records, keyField, db.Externals.at(lookup).MatchField};
}

void loadExternalData(Document& doc, Services& services) {
    doc.External.clear();
    for (const SourceFile& source : findSources(doc, services))
        readSource(doc, services, source);
    for (const int join : joinsOf(doc.CurrDB20))
        if (doc.External.at(join).rows() > 0)
            joinRecords(doc, services, join);
    doc.grd.touch();
}

void getLookups(Document& doc, int joinSlot, std::uint32_t extRow, int record) {
    std::string scratch;
    for (const int lookup : lookupsOf(doc.CurrDB20, joinSlot))
        doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(lookup),
                        doc.External.at(lookup).ExtDisplay(extRow, scratch));
}

void eraseLookups(Document& doc, int joinSlot, int record) {
    for (const int lookup : lookupsOf(doc.CurrDB20, joinSlot))
        doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(lookup), {});
}

std::string_view shownPart(std::string_view display) {
    return display.substr(0, display.find(kPart));
}

std::optional<std::uint32_t> findDisplayText(const ExternalSlot& slot, std::string_view text) {
    std::string scratch;
    for (std::uint32_t row = 0; row < slot.rows(); ++row)
        if (shownPart(slot.ExtDisplay(row, scratch)) == text)
            return row;
    return std::nullopt;
}

void typeJoinKey(Document& doc, int joinSlot, int record, const std::string& text) {
    const ExternalSlot& tables = doc.External.at(joinSlot);
    const std::uint32_t row = text.empty() ? kNoRow : findDisplayText(tables, text).value_or(kNoRow);
    std::string scratch;
    doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(joinSlot), text);
    doc.CellVals.set(record, joinSlot, row == kNoRow ? std::string_view(text) : tables.ExtKeys(row, scratch));
    doc.DocModified = true;
    if (row != kNoRow && row != kFirstRow)
        return getLookups(doc, joinSlot, row, record);
    doc.CellLongs.set(record, joinSlot, 0);
    eraseLookups(doc, joinSlot, record);
}

void chooseJoinRow(Document& doc, int joinSlot, int record, std::uint32_t extRow) {
    const ExternalSlot& tables = doc.External.at(joinSlot);
    std::string scratch;
    doc.CellVals.set(record, joinSlot, tables.ExtKeys(extRow, scratch));
    doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(joinSlot),
                    shownPart(tables.ExtDisplay(extRow, scratch)));
    getLookups(doc, joinSlot, extRow, record);
    doc.DocModified = true;
}

} // namespace tallybook::document
