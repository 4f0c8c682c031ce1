// The same calculation on both sides.
#pragma once

#include "Calculation.h"
#include "SqliteTable.h"
#include "Workbench.h"

#include <filesystem>
#include <memory>
#include <string>

namespace tallybook::bench {

// A calculated field over one table, and the same table in the memory of SQLite with a column for its results.
class CalculationPair {
public:
    // Calculates once on both sides, and throws when the results differ.
    CalculationPair(Workbench& bench, const std::filesystem::path& file, CalculationForm form);

    // All results are stored anew: nothing is there to be found equal.
    Nanoseconds ours();
    Nanoseconds sqlite();

private:
    void compare();

    platform::Services& m_services;
    std::unique_ptr<model::Document> m_doc;
    SqliteTable m_sqlite;
    Calculation m_calculation;
    std::string m_update;
};

} // namespace tallybook::bench
