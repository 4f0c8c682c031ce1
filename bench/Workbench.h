// The operations that are measured, each with the time it took. They are the same calls that the programs make.
#pragma once

#include "adapters/PosixFiles.h"
#include "core/model/Document.h"
#include "core/platform/QuietUser.h"
#include "core/platform/Services.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tallybook::bench {

using Nanoseconds = std::chrono::nanoseconds;

// The time since some moment. Of the process's work alone, and not of its waiting, when the environment has
// TALLYBOOK_BENCH_CLOCK=cpu: what else a machine does then counts for less, and what a disk does for nothing.
Nanoseconds clockNow();

// How long `work` takes.
template <class Work> Nanoseconds timed(Work&& work) {
    const Nanoseconds start = clockNow();
    work();
    return clockNow() - start;
}

// What the operations need of the computer. The clock stands still, so that the same table is the same file.
class Workbench {
public:
    explicit Workbench(std::filesystem::path folder);

    platform::Services& services() { return m_services; }

    // Opens the file as the program does, into a new document. Throws when it does not open.
    std::unique_ptr<model::Document> open(const std::filesystem::path& file);

    // Saves the document as the program does: the file synced, then the temporary copy. Throws when that fails.
    void save(model::Document& doc, const std::filesystem::path& file);

private:
    // A measure of something that was refused is worth nothing.
    platform::QuietUser m_user{platform::QuietUser::Said::Thrown};
    platform::Screen m_screen;
    adapters::PosixFiles m_files;
    platform::FixedClock m_clock{{2003, 1, 17, 12, 0, 0}};
    platform::Regional m_regional;
    platform::Services m_services;
};

// Asks for the text of every cell of every used field, and gives the sum of their lengths.
std::uint64_t everyText(const model::Document& doc);

// A change of a single cell: which, and to what.
struct CellEdit {
    int row = 0;
    int column = 0;
    std::string text;
};
// Edits over all columns that have texts, in rows by chance, each to the text of another row of its column. The same
// document and seed give the same edits; none when there is no text.
std::vector<CellEdit> someEdits(const model::Document& doc, int count, unsigned seed);
void applyEdits(model::Document& doc, const std::vector<CellEdit>& edits);

// FNV-1a, 64 bits.
class Checksum {
public:
    void add(std::string_view bytes);
    std::uint64_t value() const { return m_value; }

private:
    std::uint64_t m_value = 14695981039346656037ULL;
};

// The checksum of a document's texts: row by row, slots 1 up to the highest used one, a NUL behind each; a ticked
// check box counts as "1".
std::uint64_t checksumOfTexts(const model::Document& doc);

// The checksum of a file's bytes.
std::uint64_t checksumOfFile(Workbench& bench, const std::filesystem::path& file);

} // namespace tallybook::bench
