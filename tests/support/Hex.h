// Bytes written out in hex, with texts between single quotes: "57 00 'Book' 00". A repeated byte is "00*12".
#pragma once

#include "core/platform/Files.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace tallybook::test {

// Blanks and line ends stand where they like. A character that has no place there fails the test.
inline platform::Bytes hex(std::string_view text) {
    platform::Bytes bytes;
    std::size_t i = 0;
    while (i < text.size()) {
        if (std::isspace(static_cast<unsigned char>(text[i])) != 0) {
            ++i;
        } else if (text[i] == '\'') {
            for (++i; i < text.size() && text[i] != '\''; ++i)
                bytes.push_back(static_cast<std::uint8_t>(text[i]));
            ++i;
        } else if (text[i] == '*' && !bytes.empty()) {
            std::size_t end = ++i;
            while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])) != 0)
                ++end;
            const auto count = std::strtoul(std::string(text.substr(i, end - i)).c_str(), nullptr, 10);
            bytes.insert(bytes.end(), count - 1, std::uint8_t{bytes.back()});
            i = end;
        } else if (std::isxdigit(static_cast<unsigned char>(text[i])) != 0 && i + 1 < text.size()) {
            bytes.push_back(
                static_cast<std::uint8_t>(std::strtoul(std::string(text.substr(i, 2)).c_str(), nullptr, 16)));
            i += 2;
        } else {
            ADD_FAILURE() << "no hex: " << text.substr(i, 10);
            return bytes;
        }
    }
    return bytes;
}

// The bytes as hex pairs, for comparing and for failure messages.
inline std::string toHex(platform::ByteSpan bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty())
            text += ' ';
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

// Where two runs of bytes first differ, with what follows there; empty when they are the same. For runs too long
// to be shown whole.
inline std::string difference(platform::ByteSpan have, platform::ByteSpan expected) {
    constexpr std::size_t kShown = 16;
    const auto both = std::min(have.size(), expected.size());
    std::size_t place = 0;
    while (place < both && have[place] == expected[place])
        ++place;
    if (place == have.size() && place == expected.size())
        return {};
    const auto shown = [&](platform::ByteSpan bytes) {
        return toHex(bytes.subspan(place, std::min(kShown, bytes.size() - place)));
    };
    return "byte " + std::to_string(place) + ": " + shown(have) + ", expected " + shown(expected) + "; " +
           std::to_string(have.size()) + " bytes, expected " + std::to_string(expected.size());
}

// All 255 characters that a text can hold, in order.
inline std::string allCharacters() {
    std::string text;
    for (int c = 1; c < 256; ++c)
        text += static_cast<char>(c);
    return text;
}

} // namespace tallybook::test
