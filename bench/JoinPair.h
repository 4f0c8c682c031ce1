// The same joins on both sides.
#pragma once

#include "SqliteTable.h"
#include "Workbench.h"

#include <filesystem>
#include <string>

namespace tallybook::bench {

// A table with two joins of two lookups each into another table of as many records: one by a whole number, one by a
// text. Every record has a match, far from that of the record before it. The same tables lie in the memory of SQLite,
// the other one with an index on either key.
class JoinPair {
public:
    // Puts files beside that of a table with at most 70 fields. Throws when the two sides show different texts.
    JoinPair(Workbench& bench, const std::filesystem::path& table);

    Nanoseconds openJoined();   // reads both files
    Nanoseconds openUnjoined(); // the same file without the six fields
    Nanoseconds sqlite();       // a LEFT JOIN that steps through all rows

private:
    void makeOther(const std::filesystem::path& table);
    void makeJoined(const std::filesystem::path& table);
    void compare();

    Workbench& m_bench;
    std::filesystem::path m_joined;
    std::filesystem::path m_unjoined;
    std::filesystem::path m_other;
    int m_firstSlot = 0; // of the fields that are added, in both tables
    SqliteTable m_sqlite;
    std::string m_tables; // behind the columns of a SELECT
};

} // namespace tallybook::bench
