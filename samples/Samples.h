// The databases that come with the program.
#pragma once

#include "core/platform/Files.h"

#include <span>
#include <string_view>

namespace tallybook::samples {

// Each gives the bytes of a file, the same ones every time.
platform::Bytes books();
platform::Bytes expenses();
platform::Bytes inventory();
platform::Bytes loans(); // joined to the books
platform::Bytes members();
platform::Bytes empty(); // fields, no record

struct Sample {
    std::string_view fileName;
    platform::Bytes (*make)();
};
std::span<const Sample> samples();

// A table for measuring: field types repeat in groups of twenty.
struct LargeTable {
    int records = 65448;
    int fields = 20;  // 1 to 80
    int filled = 100; // of a hundred cells; a memo is filled in a tenth of these
};
platform::Bytes large(const LargeTable& table);

} // namespace tallybook::samples
