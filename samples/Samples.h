// The databases that come with the program.
#pragma once

#include "core/platform/Files.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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

// What the tables for measuring are filled with. Whatever the kind, fields 1, 4, 8 and 11 are texts, 3 is an Integer,
// 5 a Long, 6 a Float, 7 a Date and 9 a List, so that the same questions can be asked of all of them.
enum class LargeKind : std::uint8_t {
    Mixed,   // each kind of field, short texts of few words
    Numbers, // numbers, dates and times, and four short codes
    Texts,   // names, titles, comments and memos made of a list of words
};

// A table for measuring: field types repeat in groups of twenty.
struct LargeTable {
    int records = 65448;
    int fields = 20;  // 1 to 80
    int filled = 100; // of a hundred cells; a memo is filled in a tenth of these
    LargeKind kind = LargeKind::Mixed;
    std::span<const std::string> words = {}; // UTF-8; of Texts alone, which needs some hundreds
};

// The same table gives the same bytes. Throws std::runtime_error for texts without words.
platform::Bytes large(const LargeTable& table);

// The words of files with one a line, in UTF-8. Throws std::runtime_error when a file cannot be read.
std::vector<std::string> readWords(std::span<const std::string> files);

} // namespace tallybook::samples
