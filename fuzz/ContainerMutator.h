// Changes to a whole file that keep the container in order, so that what lies inside is reached.
#pragma once

#include "core/platform/Files.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <string_view>
#include <vector>

namespace tallybook::fuzz {

// A file taken apart: its header and the bytes of each record.
struct Container {
    platform::Bytes header; // the 78 bytes in front of the list
    std::vector<platform::Bytes> records;
    std::vector<std::uint8_t> attributes; // of each record
};

// What the records of a format are.
struct Shape {
    std::string_view creator;
    std::size_t fixedRecords;
    std::size_t fieldTableHead;  // bytes in front of the field table's entries
    std::size_t fieldEntryHead;  // slot, type and the like, in front of an entry's texts
    std::size_t fieldEntryTexts; // texts of an entry
};
inline constexpr Shape kPresentShape = {"MOSS", 87, 2, 12, 2};
inline constexpr Shape kOlderShape = {"MOSA", 40, 1, 4, 1};

// Takes a file apart as far as its list can be believed; the rest is left out. Nothing when it is shorter than a
// header.
std::optional<Container> takeApart(platform::ByteSpan file);

// The other way, with the count and the offsets made anew.
platform::Bytes putTogether(const Container& container);

// One change: a byte-wise one inside a record, one of its cells, or a record more, less or elsewhere. `mutateBytes`
// is the byte-wise change of the fuzzer. Record numbers in front of the fixed records are mostly repaired.
using MutateBytes = std::function<void(platform::Bytes&)>;
void mutate(Container& container, const Shape& shape, std::mt19937& random, const MutateBytes& mutateBytes);

} // namespace tallybook::fuzz
