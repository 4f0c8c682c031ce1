#include "core/platform/Ansi.h"

#include "core/platform/AnsiTables.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace tallybook::platform::ansi {

namespace {

constexpr std::uint8_t kNoByte = '?';
constexpr char32_t kNarrowNoBreakSpace = 0x202F; // newer regional data puts it into times

std::optional<std::uint8_t> exactByte(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF))
        return static_cast<std::uint8_t>(codePoint);
    const auto found = std::find(std::begin(kUpperControls), std::end(kUpperControls), codePoint);
    if (found == std::end(kUpperControls))
        return std::nullopt;
    return static_cast<std::uint8_t>(0x80 + (found - std::begin(kUpperControls)));
}

std::uint8_t bestFit(char32_t codePoint) {
    if (codePoint >= 0xFF01 && codePoint <= 0xFF5E)
        return static_cast<std::uint8_t>(codePoint - 0xFF01 + 0x21);
    if (codePoint == kNarrowNoBreakSpace)
        return ' ';
    const auto behind = std::upper_bound(std::begin(kBestFits), std::end(kBestFits), codePoint,
                                         [](char32_t point, const BestFit& fit) { return point < fit.first; });
    if (behind == std::begin(kBestFits))
        return kNoByte;
    const BestFit& fit = *std::prev(behind);
    return codePoint <= fit.last ? fit.byte : kNoByte;
}

// The composed code point of a letter and a mark, 0 for none.
char32_t compose(char32_t letter, char32_t mark) {
    if (mark < kCompositions[0].mark)
        return 0;
    const auto key = std::pair(mark, letter);
    const auto found =
        std::lower_bound(std::begin(kCompositions), std::end(kCompositions), key, [](const Composition& c, auto k) {
            return std::pair<char32_t, char32_t>(c.mark, c.letter) < k;
        });
    const bool there = found != std::end(kCompositions) && found->mark == mark && found->letter == letter;
    return there ? found->composed : 0;
}

// Bytes of a sequence by its first byte, 0 when none begins so.
std::size_t sequenceLength(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first < 0xC2 || first > 0xF4)
        return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

bool isScalar(char32_t codePoint, std::size_t length) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return codePoint >= kSmallest[length] && codePoint <= 0x10FFFF && !surrogate;
}

// Takes one code point off the front; nothing, and one byte less, when it is malformed.
std::optional<char32_t> takeCodePoint(std::string_view& utf8) {
    const auto first = static_cast<unsigned char>(utf8[0]);
    const std::size_t length = sequenceLength(first);
    std::optional<char32_t> result;
    if (length == 1) {
        result = first;
    } else if (length != 0 && length <= utf8.size()) {
        char32_t codePoint = first & (0x7Fu >> length);
        bool whole = true;
        for (const char c : utf8.substr(1, length - 1)) {
            whole = whole && (static_cast<unsigned char>(c) & 0xC0) == 0x80;
            codePoint = codePoint << 6 | (static_cast<unsigned char>(c) & 0x3F);
        }
        if (whole && isScalar(codePoint, length))
            result = codePoint;
    }
    utf8.remove_prefix(result ? length : 1);
    return result;
}

void appendUtf8(char32_t codePoint, std::string& out) { // code points of bytes are below U+FFFF
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        out += static_cast<char>(0xC0 | codePoint >> 6);
    } else {
        out += static_cast<char>(0xE0 | codePoint >> 12);
        out += static_cast<char>(0x80 | (codePoint >> 6 & 0x3F));
    }
    out += static_cast<char>(0x80 | (codePoint & 0x3F));
}

// Each character of a text, a letter and the mark that joins it as one; U+FFFD for a malformed byte.
template <class Visit> void forEachCharacter(std::string_view utf8, Visit visit) {
    constexpr char32_t kReplacement = 0xFFFD;
    char32_t held = 0; // not visited yet, as a mark may follow
    bool holds = false;
    while (!utf8.empty()) {
        const char32_t codePoint = takeCodePoint(utf8).value_or(kReplacement);
        const char32_t composed = holds && held != 0 ? compose(held, codePoint) : 0;
        if (holds && composed == 0)
            visit(held);
        held = composed != 0 ? composed : codePoint;
        holds = true;
    }
    if (holds)
        visit(held);
}

// "U+4E2D": four digits at least.
std::string codePointName(char32_t codePoint) {
    std::string digits;
    for (; codePoint != 0 || digits.size() < 4; codePoint >>= 4)
        digits.insert(digits.begin(), "0123456789ABCDEF"[codePoint & 0xF]);
    return "U+" + digits;
}

} // namespace

char32_t toUnicode(std::uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80] : byte;
}

std::uint8_t fromUnicode(char32_t codePoint) {
    const auto exact = exactByte(codePoint);
    return exact ? *exact : bestFit(codePoint);
}

bool isExact(char32_t codePoint) {
    return exactByte(codePoint).has_value();
}

std::string toUtf8(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    for (const char c : bytes)
        appendUtf8(toUnicode(static_cast<std::uint8_t>(c)), utf8);
    return utf8;
}

std::string fromUtf8(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    char32_t last = 0; // what the last byte stands for, 0 when no mark may join it
    while (!utf8.empty()) {
        const auto codePoint = takeCodePoint(utf8);
        const char32_t composed = codePoint && last != 0 ? compose(last, *codePoint) : 0;
        if (composed != 0)
            bytes.pop_back();
        last = composed != 0 ? composed : codePoint.value_or(0);
        bytes += static_cast<char>(codePoint ? fromUnicode(last) : kNoByte);
    }
    return bytes;
}

std::string foreignCharacter(std::string_view utf8) {
    const std::optional<Foreign> foreign = firstForeign(utf8);
    return foreign ? foreign->name : std::string();
}

std::optional<Foreign> firstForeign(std::string_view utf8) {
    std::optional<Foreign> first;
    std::size_t position = 0;
    forEachCharacter(utf8, [&](char32_t codePoint) {
        if (!first && !isExact(codePoint))
            first = {codePointName(codePoint), position};
        ++position;
    });
    return first;
}

Replacements replacements(std::string_view utf8) {
    Replacements all;
    forEachCharacter(utf8, [&](char32_t codePoint) {
        if (!isExact(codePoint))
            ++(fromUnicode(codePoint) == kNoByte ? all.questionMarks : all.bestFits);
    });
    return all;
}

} // namespace tallybook::platform::ansi
