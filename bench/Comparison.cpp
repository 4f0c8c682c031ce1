#include "Comparison.h"

#include <array>
#include <cstdio>
#include <optional>

namespace tallybook::bench {

namespace {

// One operation against its peer, as a ratio, or alone, in microseconds.
struct Goal {
    const char* operation;
    const char* peer; // empty: the operation alone
    double atMost;
    bool onlyLarge; // the goal holds for 65,448 records alone
};

constexpr std::array<Goal, 24> kGoals = {{{"open_text", "sqlite_scan", 0.30, true},
                                          {"fresh_open_text", "fresh_sqlite_scan", 0.40, true},
                                          {"open", "sqlite_scan", 0.20, true},
                                          {"fresh_open", "fresh_sqlite_scan", 0.40, true},
                                          {"save", "sqlite_insert", 0.25, true},
                                          {"save_after_edit", "sqlite_insert", 0.30, true},
                                          {"fresh_save", "fresh_sqlite_insert", 0.35, true},
                                          {"cell_edit", "sqlite_update", 0.20, false},
                                          {"add_record", "", 50, false},
                                          {"delete_in_middle", "", 50, false},
                                          {"best_fit", "", 25000, true},
                                          {"sort_text", "sqlite_sort_text", 0.50, true},
                                          {"sort_date", "sqlite_sort_date", 0.35, true},
                                          {"find", "sqlite_find", 0.10, true},
                                          {"find_digits", "sqlite_find_digits", 0.35, true},
                                          {"filter", "sqlite_filter", 0.35, true},
                                          {"filter_view", "sqlite_view", 0.50, true},
                                          {"recalc", "sqlite_calculate", 0.08, true},
                                          {"recalc_adv", "sqlite_calculate_adv", 0.12, true},
                                          {"open_joined", "open_unjoined", 3.0, true},
                                          {"open_joined", "sqlite_left_join", 0.60, true},
                                          {"retype_long", "sqlite_update_long", 0.50, true},
                                          {"retype_list", "sqlite_update_list", 0.50, true},
                                          {"retype_key", "sqlite_update_key", 0.50, true}}};

constexpr int kLargeTable = 65448;

std::optional<double> find(const Medians& medians, const std::string& name) {
    const auto found = medians.find(name);
    return found == medians.end() ? std::nullopt : std::optional(found->second);
}

void printGoal(const Medians& medians, const Goal& goal, const TableFacts& table) {
    const auto time = find(medians, std::string(goal.operation) + "/" + table.name);
    const bool alone = *goal.peer == '\0';
    const auto peer = alone ? std::optional(1.0) : find(medians, std::string(goal.peer) + "/" + table.name);
    if (!time || !peer)
        return;
    const double figure = *time / *peer;
    std::printf("%-10s %-16s %12.2f", table.name.c_str(), goal.operation, *time);
    if (alone)
        std::printf(" %-20s %12s %12.2f us", "", "", figure);
    else
        std::printf(" %-20s %12.2f %12.3f   ", goal.peer, *peer, figure);
    if (goal.onlyLarge && table.records < kLargeTable)
        std::printf("\n");
    else
        std::printf(" %10.2f  %s\n", goal.atMost, figure <= goal.atMost ? "within" : "OVER");
}

void printCellCosts(const Medians& medians, const std::vector<TableFacts>& facts) {
    std::printf("\nNanoseconds for each filled cell\n%-10s %12s %12s %12s %12s\n", "table", "cells", "open",
                "open_text", "save");
    for (const TableFacts& table : facts) {
        std::printf("%-10s %12llu", table.name.c_str(), static_cast<unsigned long long>(table.cells));
        for (const char* operation : {"open/", "open_text/", "save/"})
            std::printf(" %12.1f",
                        find(medians, operation + table.name).value_or(0) * 1000 / static_cast<double>(table.cells));
        std::printf("\n");
    }
}

void printMemory(const std::vector<TableFacts>& facts) {
    std::printf("\nMemory of an opened file, bytes (at most 1.5 x file + 24 a record + 1 MiB)\n");
    std::printf("%-10s %12s %12s %12s %12s\n", "table", "file", "heap", "resident", "at most");
    for (const TableFacts& table : facts) {
        const auto file = static_cast<std::int64_t>(table.fileBytes);
        const std::int64_t atMost = file * 3 / 2 + 24LL * table.records + (1 << 20);
        std::printf("%-10s %12lld %12lld %12lld %12lld  %s\n", table.name.c_str(), static_cast<long long>(file),
                    static_cast<long long>(table.memory.heap), static_cast<long long>(table.memory.resident),
                    static_cast<long long>(atMost),
                    table.memory.heap <= atMost && table.memory.resident <= atMost ? "within" : "OVER");
    }
}

} // namespace

void MedianReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs)
        if (run.aggregate_name == "median")
            m_medians[run.run_name.function_name] = run.GetAdjustedRealTime();
}

void printComparison(const Medians& medians, const std::vector<TableFacts>& facts) {
    std::printf("\nMedians beside their goals, microseconds\n%-10s %-16s %12s %-20s %12s %12s    %10s\n", "table",
                "operation", "time", "against", "time", "figure", "at most");
    for (const TableFacts& table : facts)
        for (const Goal& goal : kGoals)
            printGoal(medians, goal, table);
    printCellCosts(medians, facts);
    printMemory(facts);
}

} // namespace tallybook::bench
