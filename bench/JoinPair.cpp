#include "JoinPair.h"

#include "core/platform/Ansi.h"

#include <array>
#include <stdexcept>

namespace tallybook::bench {

namespace {

using model::columnOfSlot;
using model::Document;
using model::FieldType;

constexpr int kFields = 6; // two joins, each with its lookups behind it

// What the fields show of the other table: texts but for the lookups of the first join, a Float and a Date.
constexpr std::array<std::uint8_t, kFields> kShown = {1, 6, 7, 2, 4, 8};

// Numbers of 16 bits in another order.
std::uint32_t spread(std::uint32_t number) {
    return number * 40503 & 0xFFFF;
}

std::string numberOf(int record) {
    return std::to_string(spread(static_cast<std::uint32_t>(record)) + 100000);
}

std::string codeOf(int record) {
    return "article " + numberOf(record);
}

int matchOf(const Document& doc, int record) {
    return static_cast<int>((std::int64_t{record} * 7919 + 13) % doc.NumDataRecs);
}

model::FieldDef& field(Document& doc, int slot) {
    return doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
}

void addKeyField(Document& doc, int slot, FieldType type, std::string (*text)(int)) {
    field(doc, slot).Type = type;
    field(doc, slot).Name = "Key " + std::to_string(slot);
    for (int record = 0; record < doc.NumDataRecs; ++record)
        doc.grd.setText(record + model::kFirstDataRow, columnOfSlot(slot), text(record));
}

// The cells of a join as values that SQLite can take, before the field becomes a join.
void addKeys(Document& doc, int slot, FieldType type, std::string (*text)(int)) {
    addKeyField(doc, slot, type, text);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        const std::string key = text(matchOf(doc, record));
        doc.grd.setText(record + model::kFirstDataRow, columnOfSlot(slot), key);
        doc.CellVals.set(record, slot, key);
    }
}

model::ExternalDef& external(Document& doc, const std::string& source, int slot, int place) {
    model::ExternalDef& made = doc.CurrDB20.Externals[slot + place];
    made.Source = source;
    made.MatchField = kShown[static_cast<std::size_t>(place)];
    return made;
}

void makeJoin(Document& doc, const std::string& source, int first, int place, int keyField, FieldType keyType) {
    field(doc, first + place).Type = FieldType::DBJoin;
    model::ExternalDef& join = external(doc, source, first, place);
    join.SourceField = static_cast<std::uint8_t>(keyField);
    join.KeyType = static_cast<std::uint8_t>(keyType);
    for (int lookup = place + 1; lookup < place + kFields / 2; ++lookup) {
        field(doc, first + lookup).Type = FieldType::DBLookup;
        field(doc, first + lookup).Name = "Lookup " + std::to_string(lookup);
        external(doc, source, first, lookup).SourceField = static_cast<std::uint8_t>(first + place);
    }
}

std::filesystem::path fileNamed(const std::filesystem::path& table, const std::string& name) {
    return table.parent_path() / ("MS2_" + name + '_' + table.stem().string() + ".pdb");
}

std::string f(int slot) {
    return "f" + std::to_string(slot);
}

} // namespace

JoinPair::JoinPair(Workbench& bench, const std::filesystem::path& table)
    : m_bench(bench), m_joined(fileNamed(table, "joined")), m_unjoined(fileNamed(table, "unjoined")),
      m_other(fileNamed(table, "other")), m_sqlite(":memory:") {
    makeOther(table);
    makeJoined(table);
    m_tables = " FROM t LEFT JOIN o a ON a." + f(m_firstSlot) + "=t." + f(m_firstSlot) + " LEFT JOIN o b ON b." +
               f(m_firstSlot + 1) + "=t." + f(m_firstSlot + kFields / 2);
    compare();
}

void JoinPair::makeOther(const std::filesystem::path& table) {
    const auto other = m_bench.open(table);
    m_firstSlot = model::highestField(other->CurrDB20);
    addKeyField(*other, m_firstSlot, FieldType::Long, numberOf);
    addKeyField(*other, m_firstSlot + 1, FieldType::Text, codeOf);
    m_bench.save(*other, m_other);
    m_sqlite.createAndInsert(SqliteValues(*other));
    m_sqlite.run("ALTER TABLE t RENAME TO o");
    m_sqlite.run("CREATE INDEX numbers ON o(" + f(m_firstSlot) + ")");
    m_sqlite.run("CREATE INDEX codes ON o(" + f(m_firstSlot + 1) + ")");
}

void JoinPair::makeJoined(const std::filesystem::path& table) {
    const auto doc = m_bench.open(table);
    m_bench.save(*doc, m_unjoined);
    addKeys(*doc, m_firstSlot, FieldType::Long, numberOf);
    addKeys(*doc, m_firstSlot + kFields / 2, FieldType::Text, codeOf);
    m_sqlite.createAndInsert(SqliteValues(*doc));
    const std::string source = m_other.stem().string();
    makeJoin(*doc, source, m_firstSlot, 0, m_firstSlot, FieldType::Long);
    makeJoin(*doc, source, m_firstSlot, kFields / 2, m_firstSlot + 1, FieldType::Text);
    m_bench.save(*doc, m_joined);
}

Nanoseconds JoinPair::openJoined() {
    std::unique_ptr<Document> doc;
    return timed([&] { doc = m_bench.open(m_joined); });
}

Nanoseconds JoinPair::openUnjoined() {
    std::unique_ptr<Document> doc;
    return timed([&] { doc = m_bench.open(m_unjoined); });
}

Nanoseconds JoinPair::sqlite() {
    return timed([&] { m_sqlite.ids("SELECT t.*, a.f1, a.f6, a.f7, b.f2, b.f4, b.f8" + m_tables); });
}

// By the lengths of the texts alone, as SQLite writes numbers in another form.
void JoinPair::compare() {
    const auto doc = m_bench.open(m_joined);
    std::uint64_t ours = 0;
    for (const int place : {0, 3, 4, 5})
        doc->grd.column(columnOfSlot(m_firstSlot + place)).eachText([&](std::uint32_t, std::string_view text) {
            ours += platform::ansi::toUtf8(text).size();
        });
    if (ours == 0 || ours != m_sqlite.texts("SELECT a.f1, b.f2, b.f4, b.f8" + m_tables))
        throw std::runtime_error("the joins differ");
}

} // namespace tallybook::bench
