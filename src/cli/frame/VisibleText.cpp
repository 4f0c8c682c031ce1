#include "cli/frame/VisibleText.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tallybook::cli {

namespace {

constexpr std::string_view kHex = "0123456789abcdef";
constexpr char32_t kDelete = 0x7F;

enum class Keep : std::uint8_t { Nothing, LinesAndTabs };

bool turnsDirection(char32_t c) {
    return c == 0x200E || c == 0x200F || c == 0x061C || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

bool isObeyed(char32_t c) {
    return c < 0x20 || (c >= kDelete && c < 0xA0) || turnsDirection(c);
}

void appendHex(char32_t value, int digits, std::string& out) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        out += kHex[value >> shift & 15];
}

void appendWrittenOut(char32_t c, std::string& out) {
    switch (c) {
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        out += c < 0x100 ? "\\x" : "\\u";
        appendHex(c, c < 0x100 ? 2 : 4, out);
    }
}

// Bytes of a character by its first one; 1 for a byte that begins none.
std::size_t lengthOf(unsigned char first) {
    if (first < 0xC2 || first > 0xF4)
        return 1;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// The code point of two to four bytes; nothing when they are no UTF-8.
std::optional<char32_t> decoded(std::string_view bytes) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    char32_t codePoint = static_cast<unsigned char>(bytes.front()) & (0x7Fu >> bytes.size());
    for (const char c : bytes.substr(1)) {
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80)
            return std::nullopt;
        codePoint = codePoint << 6 | (static_cast<unsigned char>(c) & 0x3F);
    }
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < kSmallest[bytes.size()] || codePoint > 0x10FFFF || surrogate)
        return std::nullopt;
    return codePoint;
}

// Takes the bytes of a character off the front: its code point, or nothing for a byte that is no UTF-8.
std::optional<char32_t> takeCharacter(std::string_view& text, std::string_view& bytes) {
    const auto first = static_cast<unsigned char>(text.front());
    std::optional<char32_t> codePoint;
    bytes = text.substr(0, lengthOf(first));
    if (first < 0x80)
        codePoint = first;
    else if (bytes.size() == lengthOf(first) && bytes.size() > 1)
        codePoint = decoded(bytes);
    if (!codePoint)
        bytes = text.substr(0, 1);
    text.remove_prefix(bytes.size());
    return codePoint;
}

std::string visible(std::string_view utf8, Keep keep) {
    std::string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        std::string_view bytes;
        const std::optional<char32_t> c = takeCharacter(utf8, bytes);
        const bool stays = keep == Keep::LinesAndTabs && (c == U'\n' || c == U'\t');
        if (!c)
            appendWrittenOut(static_cast<unsigned char>(bytes.front()), out);
        else if (isObeyed(*c) && !stays)
            appendWrittenOut(*c, out);
        else
            out += bytes;
    }
    return out;
}

} // namespace

std::string visibleText(std::string_view utf8) {
    return visible(utf8, Keep::Nothing);
}

std::string visibleLine(std::string_view utf8) {
    std::string line;
    bool ended = false;
    for (const char c : utf8) {
        if (c == '\n' || c == '\r') {
            ended = true;
            continue;
        }
        if (ended && !line.empty() && line.back() != ' ')
            line += ' ';
        ended = false;
        line += c;
    }
    return visible(line, Keep::Nothing);
}

std::string visibleBlock(std::string_view utf8) {
    return visible(utf8, Keep::LinesAndTabs);
}

std::string visibleJson(std::string_view json) {
    std::string out;
    out.reserve(json.size());
    while (!json.empty()) {
        std::string_view bytes;
        const std::optional<char32_t> c = takeCharacter(json, bytes);
        if (c && *c != U'\n' && isObeyed(*c)) { // a writer of JSON has escaped those below a blank
            out += "\\u";
            appendHex(*c, 4, out);
        } else {
            out += bytes;
        }
    }
    return out;
}

} // namespace tallybook::cli
