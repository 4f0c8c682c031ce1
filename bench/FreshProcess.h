// Operations timed in a process of their own, where every page of memory is touched for the first time.
#pragma once

#include "Workbench.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace tallybook::bench {

struct OpenedMemory {
    std::int64_t heap = 0;     // bytes that the allocator has given out for the document
    std::int64_t resident = 0; // bytes of memory that the process has more than before
};

// Starts this program again with `--fresh operation folder table` and gives the numbers that it prints. The
// start of the process itself is not counted.
Nanoseconds freshTime(const std::string& operation, const std::filesystem::path& folder, const std::string& table);
OpenedMemory freshMemory(const std::filesystem::path& folder, const std::string& table);

// The other side: true when the arguments asked for an operation, which has then been run and printed.
bool runFresh(int argc, char** argv);

// Where the files of a table lie.
std::filesystem::path tallybookFile(const std::filesystem::path& folder, const std::string& table);
std::filesystem::path sqliteFile(const std::filesystem::path& folder, const std::string& table);

} // namespace tallybook::bench
