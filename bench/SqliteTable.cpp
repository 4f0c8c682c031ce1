#include "SqliteTable.h"

#include "Queries.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/platform/Ansi.h"

#include <stdexcept>

namespace tallybook::bench {

namespace {

using Kind = SqliteValues::Column::Kind;

void check(bool good, sqlite3* db) {
    if (!good)
        throw std::runtime_error(sqlite3_errmsg(db));
}

Kind kindOf(model::FieldType type) {
    switch (type) {
    case model::FieldType::Integer:
    case model::FieldType::Long:
    case model::FieldType::Checkbox:
        return Kind::Whole;
    case model::FieldType::Float:
        return Kind::Real;
    default:
        return Kind::Text; // SQLite has no dates, times or lists of its own
    }
}

const char* sqlType(Kind kind) {
    return kind == Kind::Whole ? " INTEGER" : kind == Kind::Real ? " REAL" : " TEXT";
}

void bind(sqlite3_stmt* insert, int place, const SqliteValues::Column& column, std::size_t row) {
    if (!column.present[row])
        sqlite3_bind_null(insert, place);
    else if (column.kind == Kind::Whole)
        sqlite3_bind_int64(insert, place, column.wholes[row]);
    else if (column.kind == Kind::Real)
        sqlite3_bind_double(insert, place, column.reals[row]);
    else
        sqlite3_bind_text(insert, place, column.texts[row].data(), static_cast<int>(column.texts[row].size()),
                          SQLITE_STATIC);
}

// A date of the measured tables in SQLite's own form.
std::string isoDate(const std::string& shown) {
    const auto serial = calc::readDate(shown, platform::Regional{}, 2003);
    if (!serial)
        return {};
    const calc::Date date = calc::dateOf(*serial);
    const auto digits = [](int number, std::size_t count) {
        return calc::zeroPadded(static_cast<std::uint64_t>(number), count);
    };
    return digits(date.year, 4) + '-' + digits(date.month, 2) + '-' + digits(date.day, 2);
}

} // namespace

SqliteValues::SqliteValues(const model::Document& doc, Dates dates)
    : m_rows(static_cast<std::size_t>(doc.NumDataRecs)) {
    const int used = model::highestField(doc.CurrDB20);
    for (int slot = 1; slot < used; ++slot) {
        Column& column = m_columns.emplace_back();
        const model::FieldType type = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type;
        column.kind = kindOf(type);
        for (int record = 0; record < doc.NumDataRecs; ++record) {
            const int row = record + model::kFirstDataRow;
            std::string text = doc.grd.text(row, model::columnOfSlot(slot));
            if (doc.grd.picture(row, model::columnOfSlot(slot)) == model::Picture::CheckOn)
                text = "1";
            if (dates == Dates::Iso && type == model::FieldType::Date)
                text = isoDate(text);
            column.present.push_back(!text.empty());
            if (column.kind == Kind::Whole)
                column.wholes.push_back(text.empty() ? 0 : std::stoll(text));
            else if (column.kind == Kind::Real)
                column.reals.push_back(text.empty() ? 0 : std::stod(text));
            else
                column.texts.push_back(platform::ansi::toUtf8(text)); // SQLite takes texts for nothing else
        }
    }
}

SqliteTable::SqliteTable(const std::filesystem::path& file) {
    check(sqlite3_open(file.c_str(), &m_db) == SQLITE_OK, m_db);
    run("PRAGMA mmap_size=1073741824");
    run("PRAGMA cache_size=-1048576");
    run("PRAGMA synchronous=FULL");
    // A file that is being made has nothing old to save: a journal in memory is SQLite's best here.
    run("PRAGMA journal_mode=MEMORY");
}

SqliteTable::~SqliteTable() {
    sqlite3_finalize(m_scan);
    sqlite3_finalize(m_update);
    for (const auto& [select, statement] : m_selects)
        sqlite3_finalize(statement);
    sqlite3_close(m_db);
}

void SqliteTable::run(const std::string& sql) {
    check(sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, m_db);
}

sqlite3_stmt* SqliteTable::prepare(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v3(m_db, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) == SQLITE_OK,
          m_db);
    return statement;
}

void SqliteTable::createAndInsert(const SqliteValues& values) {
    std::string create = "CREATE TABLE t(id INTEGER PRIMARY KEY";
    std::string insert = "INSERT INTO t VALUES(NULL";
    for (std::size_t c = 0; c < values.columns().size(); ++c) {
        create += ", f" + std::to_string(c + 1) + sqlType(values.columns()[c].kind);
        insert += ",?";
    }
    run("BEGIN");
    run(create + ")");
    sqlite3_stmt* statement = prepare(insert + ")");
    for (std::size_t row = 0; row < values.rows(); ++row) {
        int place = 0;
        for (const SqliteValues::Column& column : values.columns())
            bind(statement, ++place, column, row);
        check(sqlite3_step(statement) == SQLITE_DONE, m_db);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
    run("COMMIT");
}

std::uint64_t SqliteTable::scan() {
    if (!m_scan)
        m_scan = prepare("SELECT * FROM t");
    std::uint64_t length = 0;
    const int columns = sqlite3_column_count(m_scan);
    while (sqlite3_step(m_scan) == SQLITE_ROW) {
        for (int c = 1; c < columns; ++c)
            if (sqlite3_column_text(m_scan, c))
                length += static_cast<std::uint64_t>(sqlite3_column_bytes(m_scan, c));
    }
    check(sqlite3_reset(m_scan) == SQLITE_OK, m_db);
    return length;
}

void SqliteTable::addColumns(const std::string& first, const std::string& second,
                             const std::vector<std::string>& texts) {
    run("ALTER TABLE t ADD COLUMN " + first);
    run("ALTER TABLE t ADD COLUMN " + second);
    sqlite3_stmt* statement = prepare("UPDATE t SET " + second + "=? WHERE id=?");
    for (std::size_t row = 0; row < texts.size(); ++row) {
        sqlite3_bind_text(statement, 1, texts[row].data(), static_cast<int>(texts[row].size()), SQLITE_STATIC);
        sqlite3_bind_int64(statement, 2, static_cast<std::int64_t>(row) + 1);
        check(sqlite3_step(statement) == SQLITE_DONE, m_db);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}

std::vector<double> SqliteTable::numbers(const std::string& sql) {
    std::vector<double> all;
    sqlite3_stmt* statement = prepare(sql);
    while (sqlite3_step(statement) == SQLITE_ROW)
        all.push_back(sqlite3_column_double(statement, 0));
    sqlite3_finalize(statement);
    return all;
}

std::uint64_t SqliteTable::ids(const std::string& select, const std::string& text) {
    sqlite3_stmt*& statement = m_selects[select];
    if (statement == nullptr)
        statement = prepare(select);
    if (sqlite3_bind_parameter_count(statement) > 0)
        sqlite3_bind_text(statement, 1, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    ResultCheck result;
    while (sqlite3_step(statement) == SQLITE_ROW)
        result.add(static_cast<std::uint64_t>(sqlite3_column_int64(statement, 0)));
    check(sqlite3_reset(statement) == SQLITE_OK, m_db);
    return result.value();
}

std::uint64_t SqliteTable::texts(const std::string& select) {
    sqlite3_stmt*& statement = m_selects[select];
    if (statement == nullptr)
        statement = prepare(select);
    std::uint64_t length = 0;
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW)
        for (int c = 0; c < columns; ++c)
            if (sqlite3_column_text(statement, c))
                length += static_cast<std::uint64_t>(sqlite3_column_bytes(statement, c));
    check(sqlite3_reset(statement) == SQLITE_OK, m_db);
    return length;
}

void SqliteTable::beginUpdates(int column) {
    m_update = prepare("UPDATE t SET f" + std::to_string(column) + "=? WHERE id=?");
    run("BEGIN");
}

void SqliteTable::update(std::int64_t row, const std::string& text) {
    sqlite3_bind_text(m_update, 1, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    sqlite3_bind_int64(m_update, 2, row);
    check(sqlite3_step(m_update) == SQLITE_DONE, m_db);
    sqlite3_reset(m_update);
}

void SqliteTable::endUpdates() {
    run("ROLLBACK");
    sqlite3_finalize(m_update);
    m_update = nullptr;
}

} // namespace tallybook::bench
