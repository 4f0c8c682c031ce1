// What is fuzzed: one target for the whole reader, one for each kind of record.
#pragma once

#include "core/platform/Files.h"

#include <span>
#include <string>
#include <string_view>

namespace tallybook::fuzz {

struct Target {
    std::string_view name;                        // of its folder in fuzz/corpus
    std::string (*run)(platform::ByteSpan input); // gives what is wrong, or nothing
};

std::span<const Target> targets();

// The target of a name; it must exist.
const Target& targetNamed(std::string_view name);

} // namespace tallybook::fuzz
