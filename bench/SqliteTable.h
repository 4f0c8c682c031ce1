// The same table in SQLite, used as fast as one thread can use it: what our files are measured against.
#pragma once

#include "core/model/Document.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace tallybook::bench {

// The values of a table as SQLite takes them, made beforehand so that only its own work is measured.
class SqliteValues {
public:
    // Dates as the cells show them, or as SQLite has them (2003-01-31), so that they can be sorted.
    enum class Dates : std::uint8_t { AsShown, Iso };
    explicit SqliteValues(const model::Document& doc, Dates dates = Dates::AsShown);

    struct Column {
        enum class Kind : std::uint8_t { Text, Whole, Real } kind = Kind::Text;
        std::vector<std::string> texts; // empty: NULL
        std::vector<std::int64_t> wholes;
        std::vector<double> reals;
        std::vector<bool> present;
    };
    const std::vector<Column>& columns() const { return m_columns; }
    std::size_t rows() const { return m_rows; }

private:
    std::vector<Column> m_columns;
    std::size_t m_rows = 0;
};

// An open database. Every failure throws.
class SqliteTable {
public:
    // Mapped, with a cache that holds all. ":memory:" is a table without a file.
    explicit SqliteTable(const std::filesystem::path& file);
    ~SqliteTable();
    SqliteTable(const SqliteTable&) = delete;
    SqliteTable& operator=(const SqliteTable&) = delete;

    // Creates the table and inserts every row, one transaction, synced.
    void createAndInsert(const SqliteValues& values);

    // Runs a statement that gives no rows, and all the numbers of a query of one column.
    void run(const std::string& sql);
    std::vector<double> numbers(const std::string& sql);

    // Adds two columns without a type of their own, and puts a text into the second one of each row.
    void addColumns(const std::string& first, const std::string& second, const std::vector<std::string>& texts);

    // Reads every column of every row as text and gives the sum of the lengths.
    std::uint64_t scan();

    // Runs a SELECT of row ids, with a text for its parameter if it has one, and gives the check value of the ids in
    // their order. The statement is prepared once and kept.
    std::uint64_t ids(const std::string& select, const std::string& text = {});

    // Runs a SELECT, reads every column of its rows as text, and gives the sum of the lengths.
    std::uint64_t texts(const std::string& select);

    // One transaction with an UPDATE by row id for each of the rows. The column takes the texts in turn.
    void beginUpdates(int column);
    void update(std::int64_t row, const std::string& text);
    void endUpdates();

private:
    sqlite3_stmt* prepare(const std::string& sql);

    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_scan = nullptr;
    sqlite3_stmt* m_update = nullptr;
    std::map<std::string, sqlite3_stmt*> m_selects;
};

} // namespace tallybook::bench
