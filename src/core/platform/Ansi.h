// Windows-1252 and Unicode. Every byte survives the way there and back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::platform::ansi {

char32_t toUnicode(std::uint8_t byte);

// The byte of a code point: exact, else its best fit, else '?'. The narrow no-break space is a blank.
std::uint8_t fromUnicode(char32_t codePoint);

// True when the code point has a byte of its own, not a best fit.
bool isExact(char32_t codePoint);

std::string toUtf8(std::string_view bytes);

// From UTF-8: one byte per code point, '?' for each malformed byte. A letter with a combining mark behind it is
// taken as the composed letter when the code page has a place for that.
std::string fromUtf8(std::string_view utf8);

// The first character of a UTF-8 text that no byte stands for, as "U+4E2D"; empty when all can be stored. Best fits
// do not count: what a user types is refused and not replaced.
std::string foreignCharacter(std::string_view utf8);

// The same with its place.
struct Foreign {
    std::string name;         // "U+4E2D"; "U+FFFD" for a malformed byte
    std::size_t position = 0; // among the characters from 0, a letter and the mark that joins it counted as one
};
std::optional<Foreign> firstForeign(std::string_view utf8);

// How many characters fromUtf8 replaces: by their best fit, and by '?' where there is none.
struct Replacements {
    std::size_t bestFits = 0;
    std::size_t questionMarks = 0;
};
Replacements replacements(std::string_view utf8);

} // namespace tallybook::platform::ansi
