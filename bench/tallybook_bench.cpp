// tallybook-bench OPERATION -n RUNS FILE: one operation on a file, one line of figures, so that any other program
// can be run beside it.

#include "Calculation.h"
#include "Queries.h"
#include "TypeChange.h"
#include "Workbench.h"
#include "adapters/Heap.h"
#include "core/document/grid/Recalculate.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace {

using namespace tallybook;
using namespace tallybook::bench;
namespace fs = std::filesystem;

constexpr int kEdits = 1000; // an edit is too short for the clock: a run is so many, and a time is one of them

// What is written lies on the disk of the measured file, in a folder that goes afterwards.
class WorkFolder {
public:
    explicit WorkFolder(const fs::path& parent) {
        std::string name = (parent / "tallybook-bench-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("cannot make a folder in " + parent.string());
        m_path = name;
    }
    ~WorkFolder() {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const fs::path& path() const { return m_path; }

private:
    fs::path m_path;
};

struct Outcome {
    int rows = 0;
    std::vector<Nanoseconds> times;
    std::uint64_t check = 0;
};

Outcome open(Workbench& bench, const fs::path& file, int runs) {
    Outcome outcome;
    std::unique_ptr<model::Document> doc;
    for (int run = 0; run < runs; ++run) {
        doc.reset(); // the one before is not part of this run's time
        outcome.times.push_back(timed([&] { doc = bench.open(file); }));
    }
    outcome.rows = doc->NumDataRecs;
    outcome.check = checksumOfTexts(*doc);
    return outcome;
}

Outcome openText(Workbench& bench, const fs::path& file, int runs) {
    Outcome outcome;
    std::unique_ptr<model::Document> doc;
    std::uint64_t length = 0;
    for (int run = 0; run < runs; ++run) {
        doc.reset();
        outcome.times.push_back(timed([&] {
            doc = bench.open(file);
            length += everyText(*doc);
        }));
    }
    if (length != everyText(*doc) * static_cast<std::uint64_t>(runs))
        throw std::runtime_error("the runs read different texts");
    outcome.rows = doc->NumDataRecs;
    outcome.check = checksumOfTexts(*doc);
    return outcome;
}

Outcome save(Workbench& bench, const fs::path& file, int runs) {
    Outcome outcome;
    const auto doc = bench.open(file);
    const fs::path target = bench.services().applicationFolder / "MS2_written.pdb";
    for (int run = 0; run < runs; ++run)
        outcome.times.push_back(timed([&] { bench.save(*doc, target); }));
    outcome.rows = doc->NumDataRecs;
    outcome.check = checksumOfFile(bench, target);
    return outcome;
}

Outcome edit(Workbench& bench, const fs::path& file, int runs) {
    Outcome outcome;
    const auto doc = bench.open(file);
    for (int run = 0; run < runs; ++run) {
        const auto edits = someEdits(*doc, kEdits, static_cast<unsigned>(run));
        if (edits.empty())
            throw std::runtime_error("the file has no texts to edit");
        outcome.times.push_back(timed([&] { applyEdits(*doc, edits); }) / kEdits);
    }
    outcome.rows = doc->NumDataRecs;
    outcome.check = checksumOfTexts(*doc);
    return outcome;
}

// Runs a question as often as asked; every answer must be the same.
template <class Ask> Outcome query(Workbench& bench, const fs::path& file, int runs, Ask ask) {
    Outcome outcome;
    const auto doc = bench.open(file);
    outcome.rows = doc->NumDataRecs;
    for (int run = 0; run < runs; ++run) {
        const Measured measured = ask(*doc);
        outcome.times.push_back(measured.time);
        if (run > 0 && measured.check != outcome.check)
            throw std::runtime_error("the runs gave different results");
        outcome.check = measured.check;
    }
    return outcome;
}

Outcome sortText(Workbench& bench, const fs::path& file, int runs) {
    return query(bench, file, runs, [&](model::Document& doc) { return sortOn(bench, doc, model::FieldType::Text); });
}

Outcome sortDate(Workbench& bench, const fs::path& file, int runs) {
    return query(bench, file, runs, [&](model::Document& doc) { return sortOn(bench, doc, model::FieldType::Date); });
}

Outcome find(Workbench& bench, const fs::path& file, int runs) {
    return query(bench, file, runs, [](model::Document& doc) { return findIn(doc, kAbsentText); });
}

Outcome findDigits(Workbench& bench, const fs::path& file, int runs) {
    return query(bench, file, runs, [](model::Document& doc) { return findIn(doc, kDigits); });
}

Outcome filter(Workbench& bench, const fs::path& file, int runs) {
    return query(bench, file, runs, [&](model::Document& doc) { return filterOnce(bench, doc); });
}

// A calculated field that the file does not have, its results stored anew by each run.
Outcome recalc(Workbench& bench, const fs::path& file, int runs, CalculationForm form) {
    Outcome outcome;
    const auto doc = bench.open(file);
    const Calculation calculation = addCalculation(*doc, bench.services(), form);
    for (int run = 0; run < runs; ++run) {
        clearResults(*doc, calculation);
        outcome.times.push_back(timed([&] { document::recalcExpressions(*doc, bench.services()); }));
    }
    outcome.rows = doc->NumDataRecs;
    outcome.check = checksumOfTexts(*doc);
    return outcome;
}

Outcome recalcSimple(Workbench& bench, const fs::path& file, int runs) {
    return recalc(bench, file, runs, CalculationForm::Simple);
}

Outcome recalcAdvanced(Workbench& bench, const fs::path& file, int runs) {
    return recalc(bench, file, runs, CalculationForm::Advanced);
}

// A column that the file does not have, of its old type again ahead of each run.
Outcome retype(Workbench& bench, const fs::path& file, int runs, Retyping kind) {
    Outcome outcome;
    const auto doc = bench.open(file);
    TypeChange change(bench, *doc, kind);
    for (int run = 0; run < runs; ++run)
        outcome.times.push_back(change.run());
    outcome.rows = doc->NumDataRecs;
    outcome.check = checksumOfTexts(*doc);
    return outcome;
}

Outcome retypeLong(Workbench& bench, const fs::path& file, int runs) {
    return retype(bench, file, runs, Retyping::TextToLong);
}

Outcome retypeList(Workbench& bench, const fs::path& file, int runs) {
    return retype(bench, file, runs, Retyping::TextToList);
}

Outcome retypeKey(Workbench& bench, const fs::path& file, int runs) {
    return retype(bench, file, runs, Retyping::LongToKey);
}

long peakKilobytes() {
    struct rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void print(const std::string& operation, Outcome outcome) {
    auto& times = outcome.times;
    std::sort(times.begin(), times.end());
    std::printf("tallybook.%s rows=%d runs=%zu min_ns=%lld med_ns=%lld max_ns=%lld peak_kb=%ld check=%016llx\n",
                operation.c_str(), outcome.rows, times.size(), static_cast<long long>(times.front().count()),
                static_cast<long long>(times[times.size() / 2].count()), static_cast<long long>(times.back().count()),
                peakKilobytes(), static_cast<unsigned long long>(outcome.check));
}

} // namespace

int main(int argc, char** argv) {
    adapters::growHeapInLargeSteps();
    using Operation = std::function<Outcome(Workbench&, const fs::path&, int)>;
    const std::map<std::string, Operation> operations = {{"open", open},
                                                         {"open-text", openText},
                                                         {"save", save},
                                                         {"edit", edit},
                                                         {"sort-text", sortText},
                                                         {"sort-date", sortDate},
                                                         {"find", find},
                                                         {"find-digits", findDigits},
                                                         {"filter", filter},
                                                         {"recalc", recalcSimple},
                                                         {"recalc-adv", recalcAdvanced},
                                                         {"retype-long", retypeLong},
                                                         {"retype-list", retypeList},
                                                         {"retype-key", retypeKey}};
    std::vector<std::string> names;
    for (const auto& [name, run] : operations)
        names.push_back(name);

    CLI::App app("Times one operation on a Tallybook file", "tallybook-bench");
    std::string operation;
    int runs = 9;
    std::string file;
    app.add_option("OPERATION", operation, "What is timed")->required()->check(CLI::IsMember(names));
    app.add_option("-n", runs, "How many times")->check(CLI::Range(1, 1000000))->capture_default_str();
    app.add_option("FILE", file, "A Tallybook file; it is not changed")->required();
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    try {
        const WorkFolder folder(fs::absolute(file).parent_path());
        Workbench bench(folder.path());
        print(operation, operations.at(operation)(bench, file, runs));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
