// The same change of a type on both sides.
#pragma once

#include "SqliteTable.h"
#include "TypeChange.h"
#include "Workbench.h"

#include <filesystem>
#include <memory>

namespace tallybook::bench {

// Both sides over the same texts, SQLite's table in memory.
class TypeChangePair {
public:
    // Changes once on both sides, and throws when the columns differ.
    TypeChangePair(Workbench& bench, const std::filesystem::path& file, Retyping kind);

    Nanoseconds ours() { return m_change.run(); }
    Nanoseconds sqlite();

private:
    void compare();

    std::unique_ptr<model::Document> m_doc;
    TypeChange m_change;
    SqliteTable m_sqlite;
    Retyping m_kind;
};

} // namespace tallybook::bench
