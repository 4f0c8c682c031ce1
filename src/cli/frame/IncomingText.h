// Texts that come in from outside: arguments, scripts, descriptions, passwords. What a database cannot hold is
// refused and never silently replaced by something like it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::cli {

// Why a text cannot be stored, as "Character 7, U+65E5, cannot be stored in a Tallybook."; empty when it can.
// Characters outside Windows-1252 and NUL, which ends a text in a file, cannot. UTF-8.
std::string faultOfText(std::string_view utf8);

// The text in Windows-1252, each character exact; nothing when it has a fault.
std::optional<std::string> storedText(std::string_view utf8);

// The text in Windows-1252 where a fault has been told already, or where none can be.
std::string checkedText(std::string_view utf8);

// A text with the nearest characters that can be stored, and how many were replaced.
struct NearestText {
    std::string utf8;
    std::size_t replaced = 0;      // "?" included
    std::size_t questionMarks = 0; // for characters that nothing is near to
};
NearestText nearestText(std::string_view utf8);

} // namespace tallybook::cli
