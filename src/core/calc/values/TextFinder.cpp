#include "core/calc/values/TextFinder.h"

#include <algorithm>
#include <cstring>
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
    if (!m_needle.empty()) {
        m_first = bytesOf(m_needle.front());
        m_last = bytesOf(m_needle.back());
        findBorders();
    }
}

TextFinder::Pair TextFinder::bytesOf(char key) const {
    Pair pair{key, key};
    for (std::size_t byte = 0; byte < kBytes; ++byte)
        if (m_key[byte] == byteOf(key) && static_cast<char>(byte) != key)
            pair.other = static_cast<char>(byte);
    return pair;
}

// The needle's front of each length, with the longest shorter front that it ends with: where a comparison has come to
// naught, that one has been compared already.
void TextFinder::findBorders() {
    m_borders.assign(m_needle.size() + 1, 0);
    std::size_t border = 0;
    for (std::size_t i = 1; i < m_needle.size(); ++i) {
        while (border > 0 && m_needle[i] != m_needle[border])
            border = m_borders[border];
        border += m_needle[i] == m_needle[border] ? 1 : 0;
        m_borders[i + 1] = border;
    }
}

// A long text is gone through in chunks, of which most are seen not to hold the needle's first and last byte at their
// distance. A text that was made to be almost the needle everywhere is gone through byte by byte instead.
std::size_t TextFinder::find(std::string_view text, std::size_t from) const {
    if (m_needle.empty())
        return from <= text.size() ? from : std::string_view::npos;
    Marks marks;
    Vain vain{.start = from};
    for (; from + kChunk + m_needle.size() <= text.size(); from += kChunk) {
        if (!markIn(text.data() + from, marks))
            continue;
        if (tooMuch(vain, from))
            return findByBorders(text, from);
        const std::size_t at = findInChunk(text.data() + from, marks, vain);
        if (at < kChunk)
            return from + at;
    }
    return findBySkipping(text, from, vain);
}

bool TextFinder::tooMuch(const Vain& vain, std::size_t at) const {
    constexpr std::size_t kWorth = 4; // comparisons for each byte
    return vain.compared > kWorth * (at - vain.start + m_needle.size() + kChunk);
}

// Every place is looked at, without a branch: compilers make it a few operations on many bytes at once. False when
// the needle begins nowhere in the chunk.
bool TextFinder::markIn(const char* chunk, Marks& marks) const {
    const Pair first = m_first;
    const Pair last = m_last;
    const char* end = chunk + m_needle.size() - 1;
    std::uint8_t any = 0;
    for (std::size_t i = 0; i < kChunk; ++i) {
        marks[i] = static_cast<std::uint8_t>(int{first.is(chunk[i])} & int{last.is(end[i])});
        any |= marks[i];
    }
    return any != 0;
}

// kChunk when the needle begins nowhere in the chunk. Marks are few: eight places are passed over at once.
std::size_t TextFinder::findInChunk(const char* chunk, const Marks& marks, Vain& vain) const {
    for (std::size_t at = 0; at < kChunk; at += sizeof(std::uint64_t)) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, marks.data() + at, sizeof eight);
        for (std::size_t i = at; eight != 0 && i < at + sizeof eight; ++i)
            if (marks[i] != 0 && isAt(chunk + i, vain))
                return i;
    }
    return kChunk;
}

// Looks at the byte under the needle's last place first: most bytes do not occur in the needle, and the needle moves
// on by its whole length.
std::size_t TextFinder::findBySkipping(std::string_view text, std::size_t from, Vain vain) const {
    const std::size_t last = m_needle.size() - 1;
    const std::uint8_t lastKey = byteOf(m_needle[last]);
    for (std::size_t end = from + last; end < text.size();) {
        const std::uint8_t byte = byteOf(text[end]);
        if (m_key[byte] == lastKey) {
            if (isAt(text.data() + end - last, vain))
                return end - last;
            if (tooMuch(vain, end))
                return findByBorders(text, end - last);
        }
        end += m_skip[byte];
    }
    return std::string_view::npos;
}

// Looks at each byte once.
std::size_t TextFinder::findByBorders(std::string_view text, std::size_t from) const {
    std::size_t matched = 0;
    for (std::size_t at = from; at < text.size(); ++at) {
        const auto key = static_cast<char>(m_key[byteOf(text[at])]);
        while (matched > 0 && m_needle[matched] != key)
            matched = m_borders[matched];
        matched += m_needle[matched] == key ? 1 : 0;
        if (matched == m_needle.size())
            return at + 1 - matched;
    }
    return std::string_view::npos;
}

bool TextFinder::isAt(const char* place, Vain& vain) const {
    for (std::size_t i = 0; i < m_needle.size(); ++i)
        if (m_key[byteOf(place[i])] != byteOf(m_needle[i])) {
            vain.compared += i;
            return false;
        }
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
