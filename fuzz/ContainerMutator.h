// Changes to a whole file that keep the container in order, so that what lies inside is reached.
#pragma once

#include "core/platform/Files.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <vector>

namespace tallybook::fuzz {

// A file taken apart: its header and the bytes of each record.
struct Container {
    platform::Bytes header; // the 78 bytes in front of the list
    std::vector<platform::Bytes> records;
    std::vector<std::uint8_t> attributes; // of each record
};

// Takes a file apart as far as its list can be believed; the rest is left out. Nothing when it is shorter than a
// header.
std::optional<Container> takeApart(platform::ByteSpan file);

// The other way, with the count and the offsets made anew.
platform::Bytes putTogether(const Container& container);

// One change: a byte-wise one inside a record, one of its cells, or a record more, less or elsewhere. `mutateBytes`
// is the byte-wise change of the fuzzer. Record numbers in front of the fixed records are mostly repaired.
using MutateBytes = std::function<void(platform::Bytes&)>;
void mutate(Container& container, std::mt19937& random, const MutateBytes& mutateBytes);

} // namespace tallybook::fuzz
