#include "core/calc/values/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tallybook::calc {

namespace {

std::uint8_t byteOf(char c) {
    return static_cast<std::uint8_t>(c);
}

// Upper and lower case differ by 32 but for these four pairs; the multiplication and division signs stand where
// letters would.
constexpr std::uint8_t upperOf(std::uint8_t c) {
    const bool basic = c >= 'a' && c <= 'z';
    const bool accented = c >= 0xE0 && c <= 0xFE && c != 0xF7;
    if (basic || accented)
        return static_cast<std::uint8_t>(c - 0x20);
    if (c == 0x9A || c == 0x9C || c == 0x9E)
        return static_cast<std::uint8_t>(c - 0x10);
    return c == 0xFF ? 0x9F : c;
}

constexpr std::array<std::uint8_t, 256> makeUpper() {
    std::array<std::uint8_t, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c)
        table[c] = upperOf(static_cast<std::uint8_t>(c));
    return table;
}

constexpr std::array<std::uint8_t, 256> kUpper = makeUpper();

constexpr std::array<std::uint8_t, 256> makeLower() {
    std::array<std::uint8_t, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c)
        table[c] = static_cast<std::uint8_t>(c);
    for (std::size_t c = 0; c < table.size(); ++c)
        if (kUpper[c] != c)
            table[kUpper[c]] = static_cast<std::uint8_t>(c);
    return table;
}

constexpr std::array<std::uint8_t, 256> kLower = makeLower();

template <class Convert> std::string converted(std::string_view text, Convert convert) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), convert);
    return result;
}

bool equalFolded(const char* a, const char* b, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        if (kUpper[byteOf(a[i])] != kUpper[byteOf(b[i])])
            return false;
    return true;
}

// The first character is looked for alone: most places fail there.
std::size_t findFolded(std::string_view text, std::string_view needle) {
    if (needle.empty())
        return 1;
    const char first = upper(needle[0]);
    const char firstLower = lower(needle[0]);
    for (std::size_t at = 0; at + needle.size() <= text.size(); ++at)
        if ((text[at] == first || text[at] == firstLower) &&
            equalFolded(text.data() + at, needle.data(), needle.size()))
            return at + 1;
    return 0;
}

std::string replaced(std::string_view text, std::string_view what, std::string_view with) {
    std::string result;
    result.reserve(text.size());
    for (auto at = text.find(what); at != std::string_view::npos; at = text.find(what)) {
        result += text.substr(0, at);
        result += with;
        text.remove_prefix(at + what.size());
    }
    result += text;
    return result;
}

} // namespace

char upper(char c) {
    return static_cast<char>(kUpper[byteOf(c)]);
}

char lower(char c) {
    return static_cast<char>(kLower[byteOf(c)]);
}

std::string upper(std::string_view text) {
    return converted(text, [](char c) { return upper(c); });
}

std::string lower(std::string_view text) {
    return converted(text, [](char c) { return lower(c); });
}

int compareText(std::string_view a, std::string_view b, TextCase mode) {
    if (mode == TextCase::Binary)
        return a.compare(b); // characters compare as unsigned bytes
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i)
        if (const int difference = kUpper[byteOf(a[i])] - kUpper[byteOf(b[i])])
            return difference;
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

bool equalText(std::string_view a, std::string_view b, TextCase mode) {
    return a.size() == b.size() && compareText(a, b, mode) == 0;
}

std::size_t findText(std::string_view text, std::string_view needle, TextCase mode) {
    if (mode == TextCase::Binary) {
        const auto at = text.find(needle);
        return at == std::string_view::npos ? 0 : at + 1;
    }
    return findFolded(text, needle);
}

std::string LfToCrLf(std::string_view text) {
    return replaced(text, "\n", "\r\n");
}

std::string CrLfToLf(std::string_view text) {
    return replaced(text, "\r\n", "\n");
}

std::string CrToCrLf(std::string_view text) {
    return replaced(text, "\r", "\r\n");
}

std::string QuoteDelimited(std::string_view text, char separator) {
    const bool comma = separator == ',' && text.find(',') != std::string_view::npos;
    if (!comma && text.find_first_of("\"\n") == std::string_view::npos)
        return std::string(text);
    return '"' + std::string(text) + '"';
}

} // namespace tallybook::calc
