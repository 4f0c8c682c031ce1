// tallybook_benchmarks: every measured operation at every size, and the comparison with the goals at the end.
// Takes the options of Google Benchmark.

#include "CalculationPair.h"
#include "Comparison.h"
#include "FontMeasure.h"
#include "FreshProcess.h"
#include "JoinPair.h"
#include "Queries.h"
#include "Samples.h"
#include "SqliteTable.h"
#include "TypeChangePair.h"
#include "Workbench.h"
#include "adapters/Heap.h"
#include "adapters/PosixFiles.h"
#include "core/calc/values/TextFinder.h"
#include "core/document/edit/Records.h"
#include "core/document/grid/GridDisplay.h"
#include "core/model/Document.h"
#include "core/platform/WholeFile.h"

#include <array>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace tallybook;
using namespace tallybook::bench;
namespace fs = std::filesystem;

constexpr int kMostRecords = 65448;
constexpr int kFields = 20;

// A table to measure, and what its files and benchmarks are called.
struct Table {
    std::string name;
    samples::LargeTable shape;
};

// Long texts are made of the words of two languages, as people write them, but for those that hold the text that is
// sought and not to be found.
const std::vector<std::string>& realWords() {
    static const std::vector<std::string> all = [] {
        const std::array<std::string, 2> files = {"/usr/share/dict/american-english", "/usr/share/dict/ngerman"};
        std::vector<std::string> words = samples::readWords(files);
        const calc::TextFinder absent(kAbsentText, calc::TextCase::Folded);
        std::erase_if(words, [&](const std::string& word) { return absent.find(word) != std::string::npos; });
        return words;
    }();
    return all;
}

// Two small ones to see how costs grow, and four at the format's limit.
std::vector<Table> tables() {
    using samples::LargeKind;
    return {{"1000", {1000, kFields}},
            {"10000", {10000, kFields}},
            {"mixed", {kMostRecords, kFields}},
            {"numbers", {.records = kMostRecords, .kind = LargeKind::Numbers}},
            {"texts", {.records = kMostRecords, .kind = LargeKind::Texts, .words = realWords()}},
            {"sparse", {kMostRecords, 80, 10}}};
}

constexpr int kJoinedFields = 20; // joins need slots of their own
constexpr int kRepetitions = 9;
constexpr int kEdits = 1000; // single edits are too short for the clock: a run is so many of them

// Cells of data records that hold a text or a picture.
std::uint64_t filledCells(const model::Document& doc) {
    std::uint64_t filled = 0;
    for (int slot = 1; slot < model::highestField(doc.CurrDB20); ++slot) {
        const model::TextColumn& texts = doc.grd.column(model::columnOfSlot(slot));
        const model::WordColumn& pictures = doc.grd.pictures(model::columnOfSlot(slot));
        for (int record = 0; record < doc.NumDataRecs; ++record) {
            const std::uint32_t id = doc.grd.order().id(record);
            filled += texts.has(id) || pictures.has(id) ? 1 : 0;
        }
    }
    return filled;
}

// One table as a file of ours, as a file of SQLite, and open. Made once, before anything is measured.
struct Subject {
    Subject(const fs::path& folder, const Table& table) : bench(folder), name(table.name) {
        adapters::PosixFiles files;
        if (!platform::writeWholeFile(files, file(), samples::large(table.shape)))
            throw std::runtime_error("cannot write " + file().string());
        doc = bench.open(file());
        fs::remove(sqliteFile(folder, name));
        SqliteTable(sqliteFile(folder, name)).createAndInsert(SqliteValues(*doc));
        sqlite = std::make_unique<SqliteTable>(sqliteFile(folder, name));
        inMemory = std::make_unique<SqliteTable>(":memory:");
        inMemory->createAndInsert(SqliteValues(*doc, SqliteValues::Dates::Iso));
    }
    fs::path folder() { return bench.services().applicationFolder; }
    fs::path file() { return tallybookFile(folder(), name); }
    fs::path scratch() { return folder() / "MS2_written.pdb"; }

    // A document of its own for records that come and go, opened again before it is worn out.
    model::Document& wornDocument() {
        if (!worn || ++changes > worn->NumDataRecs / 10) {
            worn = bench.open(file());
            changes = 0;
        }
        return *worn;
    }

    Workbench bench;
    std::string name;
    std::unique_ptr<model::Document> doc;                         // its texts change with the edits, its records stay
    std::unique_ptr<SqliteTable> sqlite;                          // open already, with its cache warm: SQLite's best
    std::unique_ptr<SqliteTable> inMemory;                        // for questions, with dates that can be sorted
    std::array<std::unique_ptr<CalculationPair>, 2> calculations; // by form
    std::unique_ptr<JoinPair> joins;
    std::array<std::unique_ptr<TypeChangePair>, 3> typeChanges; // by kind
    unsigned edits = 0;                                         // how many times, so that they are others each time

private:
    std::unique_ptr<model::Document> worn;
    int changes = 0;
};

using Operation = std::function<Nanoseconds(Subject&)>;

Nanoseconds open(Subject& subject) {
    std::unique_ptr<model::Document> doc;
    return timed([&] { doc = subject.bench.open(subject.file()); });
}

Nanoseconds openText(Subject& subject) {
    std::unique_ptr<model::Document> doc;
    return timed([&] {
        doc = subject.bench.open(subject.file());
        benchmark::DoNotOptimize(everyText(*doc));
    });
}

// To a new file, as SQLite's; after an edit it takes the place of one that is there, as the Save command does.
Nanoseconds save(Subject& subject) {
    fs::remove(subject.scratch());
    return timed([&] { subject.bench.save(*subject.doc, subject.scratch()); });
}

Nanoseconds saveAfterEdit(Subject& subject) {
    const auto edits = someEdits(*subject.doc, 1, ++subject.edits);
    return timed([&] {
        applyEdits(*subject.doc, edits);
        subject.bench.save(*subject.doc, subject.scratch());
    });
}

Nanoseconds bestFit(Subject& subject) {
    const FontMeasure measure;
    return timed([&] { document::bestFit1(*subject.doc, subject.bench.services(), measure); });
}

Nanoseconds cellEdit(Subject& subject) {
    const auto edits = someEdits(*subject.doc, kEdits, ++subject.edits);
    return timed([&] { applyEdits(*subject.doc, edits); }) / kEdits;
}

// New records stand at the end. One goes into a full table too, since the limit is asked for by the command; it is
// taken out again outside the time.
Nanoseconds addRecord(Subject& subject) {
    model::Document& doc = subject.wornDocument();
    const auto time = timed([&] { document::addRow(doc, document::AddRow::MakeNew); });
    model::removeRecord(doc, doc.grd.rows() - 1);
    return time;
}

Nanoseconds deleteInMiddle(Subject& subject) {
    model::Document& doc = subject.wornDocument();
    const auto time = timed([&] { model::removeRecord(doc, model::kFirstDataRow + doc.NumDataRecs / 2); });
    model::appendRecord(doc);
    return time;
}

Nanoseconds sortText(Subject& subject) {
    return sortOn(subject.bench, *subject.doc, model::FieldType::Text).time;
}

Nanoseconds sortDate(Subject& subject) {
    return sortOn(subject.bench, *subject.doc, model::FieldType::Date).time;
}

Nanoseconds findAbsent(Subject& subject) {
    return findIn(*subject.doc, kAbsentText).time;
}

Nanoseconds findDigits(Subject& subject) {
    return findIn(*subject.doc, kDigits).time;
}

std::string columnOf(int slot) {
    return "f" + std::to_string(slot);
}

std::string orderBy(const Subject& subject, model::FieldType type) {
    return "SELECT id FROM t ORDER BY " + columnOf(slotsOf(subject.doc->CurrDB20, type).front());
}

std::string anyLike(const std::vector<int>& slots) {
    std::string select = "SELECT id FROM t WHERE ";
    for (const int slot : slots)
        select += (slot == slots.front() ? "" : " OR ") + columnOf(slot) + " LIKE ?1";
    return select;
}

std::vector<int> allSlots(const Subject& subject) {
    std::vector<int> slots;
    for (int slot = 1; slot < model::highestField(subject.doc->CurrDB20); ++slot)
        slots.push_back(slot);
    return slots;
}

std::string contains(const char* text) {
    return "%" + std::string(text) + "%";
}

Nanoseconds sqliteIds(Subject& subject, const std::string& select, const std::string& text = {}) {
    return timed([&] { benchmark::DoNotOptimize(subject.inMemory->ids(select, text)); });
}

Nanoseconds sqliteSortText(Subject& subject) {
    return sqliteIds(subject, orderBy(subject, model::FieldType::Text));
}

Nanoseconds sqliteSortDate(Subject& subject) {
    return sqliteIds(subject, orderBy(subject, model::FieldType::Date));
}

// Numbers cannot hold it, so that SQLite need not look at them.
Nanoseconds sqliteFind(Subject& subject) {
    std::vector<int> slots = slotsOf(subject.doc->CurrDB20, model::FieldType::Text);
    for (const int slot : slotsOf(subject.doc->CurrDB20, model::FieldType::Memo))
        slots.push_back(slot);
    return sqliteIds(subject, anyLike(slots), contains(kAbsentText));
}

Nanoseconds sqliteFindDigits(Subject& subject) {
    return sqliteIds(subject, anyLike(allSlots(subject)), contains(kDigits));
}

std::string whereFirst() {
    return "SELECT id FROM t WHERE " + std::string(measuredFilters()[0].where);
}

std::string whereAll(const std::string& columns) {
    std::string select = "SELECT " + columns + " FROM t WHERE ";
    for (const char* link = ""; const MeasuredFilter& filter : measuredFilters()) {
        select += std::string(link) + '(' + filter.where + ')';
        link = " AND ";
    }
    return select;
}

std::string viewColumns() {
    std::string columns = "id";
    for (int slot = 1; slot <= kViewColumns; ++slot)
        columns += ", " + columnOf(slot);
    return columns;
}

Nanoseconds filter(Subject& subject) {
    return filterOnce(subject.bench, *subject.doc).time;
}

Nanoseconds filterView(Subject& subject) {
    return filterIntoView(subject.bench, *subject.doc).time;
}

Nanoseconds sqliteFilter(Subject& subject) {
    return sqliteIds(subject, whereFirst());
}

Nanoseconds sqliteView(Subject& subject) {
    static const std::string select = whereAll(viewColumns());
    return timed([&] { benchmark::DoNotOptimize(subject.inMemory->texts(select)); });
}

// Both sides must find the same, or their times say nothing.
void compareResults(Subject& subject) {
    const auto same = [](const char* what, std::uint64_t ours, std::uint64_t theirs) {
        if (ours != theirs)
            throw std::runtime_error(std::string(what) + ": the results differ");
    };
    const auto ordered = [&](model::FieldType type) { return subject.inMemory->ids(orderBy(subject, type)); };
    same("sort by text", sortOn(subject.bench, *subject.doc, model::FieldType::Text).check,
         ordered(model::FieldType::Text));
    same("sort by date", sortOn(subject.bench, *subject.doc, model::FieldType::Date).check,
         ordered(model::FieldType::Date));
    same("filter", filterOnce(subject.bench, *subject.doc).check, subject.inMemory->ids(whereFirst()));
    same("view", filterIntoView(subject.bench, *subject.doc).check, subject.inMemory->ids(whereAll("id")));
    const std::string likeAll = anyLike(allSlots(subject));
    for (const char* text : {kAbsentText, kDigits})
        same(text, findIn(*subject.doc, text).check, subject.inMemory->ids(likeAll, contains(text)));
}

Nanoseconds sqliteScan(Subject& subject) {
    return timed([&] { benchmark::DoNotOptimize(subject.sqlite->scan()); });
}

Nanoseconds sqliteInsert(Subject& subject) {
    const SqliteValues values(*subject.doc);
    const fs::path target = subject.folder() / "written.sqlite";
    fs::remove(target);
    return timed([&] { SqliteTable(target).createAndInsert(values); });
}

// The first field is a text; the transaction is not part of the time.
Nanoseconds sqliteUpdate(Subject& subject) {
    const auto edits = someEdits(*subject.doc, kEdits, ++subject.edits);
    subject.sqlite->beginUpdates(1);
    const auto time = timed([&] {
        for (const CellEdit& edit : edits)
            subject.sqlite->update(edit.row - model::kFirstDataRow + 1, edit.text);
    });
    subject.sqlite->endUpdates();
    return time / kEdits;
}

Operation fresh(const std::string& operation) {
    return [operation](Subject& subject) { return freshTime(operation, subject.folder(), subject.name); };
}

// Both sides of a calculation are made when the first of them is measured.
Operation calculation(CalculationForm form, Nanoseconds (CalculationPair::*side)()) {
    return [form, side](Subject& subject) {
        auto& pair = subject.calculations[static_cast<std::size_t>(form)];
        if (!pair)
            pair = std::make_unique<CalculationPair>(subject.bench, subject.file(), form);
        return ((*pair).*side)();
    };
}

// The files and tables of the joins are made when one of them is measured.
Operation join(Nanoseconds (JoinPair::*side)()) {
    return [side](Subject& subject) {
        if (!subject.joins)
            subject.joins = std::make_unique<JoinPair>(subject.bench, subject.file());
        return ((*subject.joins).*side)();
    };
}

Operation typeChange(Retyping kind, Nanoseconds (TypeChangePair::*side)()) {
    return [kind, side](Subject& subject) {
        auto& pair = subject.typeChanges[static_cast<std::size_t>(kind)];
        if (!pair)
            pair = std::make_unique<TypeChangePair>(subject.bench, subject.file(), kind);
        return ((*pair).*side)();
    };
}

struct Measure {
    std::string name;
    Operation operation;
    int iterations;                        // runs of one repetition
    int mostFields = model::MaxUserFields; // tables of more are left out
};

const std::vector<Measure>& measures() {
    static const std::vector<Measure> all = {
        {"open", open, 1},
        {"open_text", openText, 1},
        {"sqlite_scan", sqliteScan, 1},
        {"fresh_open", fresh("open"), 1},
        {"fresh_open_text", fresh("open-text"), 1},
        {"fresh_sqlite_scan", fresh("sqlite-scan"), 1},
        {"save", save, 1},
        {"save_after_edit", saveAfterEdit, 1},
        {"sqlite_insert", sqliteInsert, 1},
        {"fresh_save", fresh("save"), 1},
        {"fresh_sqlite_insert", fresh("sqlite-insert"), 1},
        {"cell_edit", cellEdit, 20},
        {"sqlite_update", sqliteUpdate, 1},
        {"add_record", addRecord, 200},
        {"delete_in_middle", deleteInMiddle, 200},
        {"best_fit", bestFit, 1},
        {"sort_text", sortText, 1},
        {"sqlite_sort_text", sqliteSortText, 1},
        {"sort_date", sortDate, 1},
        {"sqlite_sort_date", sqliteSortDate, 1},
        {"find", findAbsent, 1},
        {"sqlite_find", sqliteFind, 1},
        {"find_digits", findDigits, 1},
        {"sqlite_find_digits", sqliteFindDigits, 1},
        {"filter", filter, 1},
        {"sqlite_filter", sqliteFilter, 1},
        {"filter_view", filterView, 1},
        {"sqlite_view", sqliteView, 1},
        {"recalc", calculation(CalculationForm::Simple, &CalculationPair::ours), 1},
        {"sqlite_calculate", calculation(CalculationForm::Simple, &CalculationPair::sqlite), 1},
        {"recalc_adv", calculation(CalculationForm::Advanced, &CalculationPair::ours), 1},
        {"sqlite_calculate_adv", calculation(CalculationForm::Advanced, &CalculationPair::sqlite), 1},
        {"open_joined", join(&JoinPair::openJoined), 1, kJoinedFields},
        {"open_unjoined", join(&JoinPair::openUnjoined), 1, kJoinedFields},
        {"sqlite_left_join", join(&JoinPair::sqlite), 1, kJoinedFields},
        {"retype_long", typeChange(Retyping::TextToLong, &TypeChangePair::ours), 1},
        {"sqlite_update_long", typeChange(Retyping::TextToLong, &TypeChangePair::sqlite), 1},
        {"retype_list", typeChange(Retyping::TextToList, &TypeChangePair::ours), 1},
        {"sqlite_update_list", typeChange(Retyping::TextToList, &TypeChangePair::sqlite), 1},
        {"retype_key", typeChange(Retyping::LongToKey, &TypeChangePair::ours), 1},
        {"sqlite_update_key", typeChange(Retyping::LongToKey, &TypeChangePair::sqlite), 1}};
    return all;
}

void registerMeasure(const Measure& measure, Subject& subject) {
    const auto run = [&measure, &subject](benchmark::State& state) {
        for (auto _ : state)
            state.SetIterationTime(std::chrono::duration<double>(measure.operation(subject)).count());
    };
    benchmark::RegisterBenchmark((measure.name + "/" + subject.name).c_str(), run)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->Iterations(measure.iterations)
        ->Repetitions(kRepetitions)
        ->ReportAggregatesOnly(true);
}

// The tables lie beside the program, on a real disk: saving to memory would flatter everybody.
fs::path dataFolder() {
    return fs::read_symlink("/proc/self/exe").parent_path() / "data";
}

} // namespace

int main(int argc, char** argv) {
    adapters::growHeapInLargeSteps();
    if (runFresh(argc, argv))
        return 0;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    std::vector<std::unique_ptr<Subject>> subjects;
    std::vector<TableFacts> facts;
    for (const Table& table : tables()) {
        Subject& subject = *subjects.emplace_back(std::make_unique<Subject>(dataFolder(), table));
        facts.push_back({subject.name, table.shape.records, filledCells(*subject.doc), fs::file_size(subject.file()),
                         freshMemory(dataFolder(), subject.name)});
        compareResults(subject);
        for (const Measure& measure : measures())
            if (table.shape.fields <= measure.mostFields)
                registerMeasure(measure, subject);
    }
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    printComparison(reporter.medians(), facts);
    benchmark::Shutdown();
    return 0;
}
