#include "core/calc/TextFinder.h"

#include <algorithm>
#include <limits>

namespace tallybook::calc {

namespace {

constexpr std::size_t kBytes = 256;

std::uint8_t byteOf(char c) {
    return static_cast<std::uint8_t>(c);
}

} // namespace

TextFinder::TextFinder(std::string_view needle, TextCase mode) : m_needle(needle) {
    for (std::size_t byte = 0; byte < kBytes; ++byte) {
        const char c = static_cast<char>(byte);
        m_key[byte] = byteOf(mode == TextCase::Folded ? upper(c) : c);
    }
    for (char& c : m_needle)
        c = static_cast<char>(m_key[byteOf(c)]);
    constexpr std::size_t kFarthest = std::numeric_limits<std::uint8_t>::max();
    const auto skip = [&](std::size_t distance) { return static_cast<std::uint8_t>(std::min(distance, kFarthest)); };
    std::array<std::uint8_t, kBytes> byKey{};
    byKey.fill(skip(m_needle.size()));
    for (std::size_t i = 0; i + 1 < m_needle.size(); ++i)
        byKey[byteOf(m_needle[i])] = skip(m_needle.size() - 1 - i);
    for (std::size_t byte = 0; byte < kBytes; ++byte)
        m_skip[byte] = byKey[m_key[byte]];
}

// Looks at the byte under the needle's last place first: most bytes do not occur in the needle, and the needle moves
// on by its whole length.
std::size_t TextFinder::find(std::string_view text, std::size_t from) const {
    if (m_needle.empty())
        return from <= text.size() ? from : std::string_view::npos;
    const std::size_t last = m_needle.size() - 1;
    const std::uint8_t lastKey = byteOf(m_needle[last]);
    for (std::size_t end = from + last; end < text.size();) {
        const std::uint8_t byte = byteOf(text[end]);
        if (m_key[byte] == lastKey && isAt(text.data() + end - last))
            return end - last;
        end += m_skip[byte];
    }
    return std::string_view::npos;
}

bool TextFinder::isAt(const char* place) const {
    for (std::size_t i = 0; i < m_needle.size(); ++i)
        if (m_key[byteOf(place[i])] != byteOf(m_needle[i]))
            return false;
    return true;
}

bool TextFinder::isMadeOf(const std::bitset<256>& alphabet) const {
    std::bitset<kBytes> keys;
    for (std::size_t byte = 0; byte < kBytes; ++byte)
        if (alphabet[byte])
            keys.set(m_key[byte]);
    return std::all_of(m_needle.begin(), m_needle.end(), [&](char c) { return keys[byteOf(c)]; });
}

} // namespace tallybook::calc
