// The medians of a run, and what they say beside the goals.
#pragma once

#include "FreshProcess.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tallybook::bench {

// Median microseconds by name, as "open/texts".
using Medians = std::map<std::string, double>;

// The usual report, remembering the medians.
class MedianReporter : public benchmark::ConsoleReporter {
public:
    MedianReporter() : ConsoleReporter(OO_Tabular) {}
    void ReportRuns(const std::vector<Run>& runs) override;
    const Medians& medians() const { return m_medians; }

private:
    Medians m_medians;
};

struct TableFacts {
    std::string name;
    int records = 0;
    std::uint64_t cells = 0; // filled ones
    std::uint64_t fileBytes = 0;
    OpenedMemory memory;
};

// Prints ratios and times with their goals, the cost of a filled cell by size, and the memory of opened files. What
// was not measured (a filter on the command line) is left out.
void printComparison(const Medians& medians, const std::vector<TableFacts>& facts);

} // namespace tallybook::bench
