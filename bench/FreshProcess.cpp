#include "FreshProcess.h"

#include "SqliteTable.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fstream>
#include <functional>
#include <malloc.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

namespace tallybook::bench {

namespace {

namespace fs = std::filesystem;

struct Closer {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};

std::string quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

std::string outputOf(const std::string& operation, const fs::path& folder, const std::string& table) {
    const fs::path self = fs::read_symlink("/proc/self/exe");
    const std::string command = quoted(self) + " --fresh " + operation + " " + quoted(folder) + " " + table;
    const std::unique_ptr<std::FILE, Closer> pipe(popen(command.c_str(), "r"));
    std::array<char, 200> line{};
    if (!pipe || !std::fgets(line.data(), static_cast<int>(line.size()), pipe.get()))
        throw std::runtime_error("no answer of: " + command);
    return line.data();
}

std::int64_t residentBytes() {
    std::ifstream statm("/proc/self/statm");
    std::int64_t pages = 0;
    std::int64_t resident = 0;
    statm >> pages >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

std::int64_t heapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

struct Place {
    fs::path folder;
    std::string table;
};

void printTime(Nanoseconds time) {
    std::printf("%lld\n", static_cast<long long>(time.count()));
}

void open(const Place& place) {
    Workbench bench(place.folder);
    std::unique_ptr<model::Document> doc;
    printTime(timed([&] { doc = bench.open(tallybookFile(place.folder, place.table)); }));
}

void openText(const Place& place) {
    Workbench bench(place.folder);
    std::unique_ptr<model::Document> doc;
    printTime(timed([&] {
        doc = bench.open(tallybookFile(place.folder, place.table));
        benchmark::DoNotOptimize(everyText(*doc));
    }));
}

void save(const Place& place) {
    Workbench bench(place.folder);
    const auto doc = bench.open(tallybookFile(place.folder, place.table));
    const fs::path target = place.folder / "MS2_fresh.pdb";
    fs::remove(target);
    printTime(timed([&] { bench.save(*doc, target); }));
}

void sqliteScan(const Place& place) {
    printTime(timed([&] {
        SqliteTable table(sqliteFile(place.folder, place.table));
        benchmark::DoNotOptimize(table.scan());
    }));
}

void sqliteInsert(const Place& place) {
    Workbench bench(place.folder);
    const SqliteValues values(*bench.open(tallybookFile(place.folder, place.table)));
    const fs::path target = place.folder / "fresh-insert.sqlite";
    fs::remove(target);
    printTime(timed([&] { SqliteTable(target).createAndInsert(values); }));
}

void memory(const Place& place) {
    Workbench bench(place.folder);
    const std::int64_t heap = heapBytes();
    const std::int64_t resident = residentBytes();
    const auto doc = bench.open(tallybookFile(place.folder, place.table));
    malloc_trim(0); // what was only needed while reading goes back
    std::printf("%lld %lld\n", static_cast<long long>(heapBytes() - heap),
                static_cast<long long>(residentBytes() - resident));
}

} // namespace

Nanoseconds freshTime(const std::string& operation, const fs::path& folder, const std::string& table) {
    return Nanoseconds(std::stoll(outputOf(operation, folder, table)));
}

OpenedMemory freshMemory(const fs::path& folder, const std::string& table) {
    const std::string line = outputOf("memory", folder, table);
    std::size_t end = 0;
    OpenedMemory memory;
    memory.heap = std::stoll(line, &end);
    memory.resident = std::stoll(line.substr(end));
    return memory;
}

bool runFresh(int argc, char** argv) {
    if (argc != 5 || std::string_view(argv[1]) != "--fresh")
        return false;
    const std::map<std::string_view, std::function<void(const Place&)>> operations = {
        {"open", open},     {"open-text", openText},     {"save", save},
        {"memory", memory}, {"sqlite-scan", sqliteScan}, {"sqlite-insert", sqliteInsert}};
    operations.at(argv[2])({argv[3], argv[4]});
    return true;
}

fs::path tallybookFile(const fs::path& folder, const std::string& table) {
    return folder / ("MS2_" + table + ".pdb");
}

fs::path sqliteFile(const fs::path& folder, const std::string& table) {
    return folder / (table + ".sqlite");
}

} // namespace tallybook::bench
