// A text that is sought in many others.
#pragma once

#include "core/calc/values/Text.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::calc {

// Finds the same places as findText, but looks at few bytes of a long text, and at none of any text more than a few
// times. What it needs to know of the needle is settled once, so it is worth having from some dozen texts on.
class TextFinder {
public:
    TextFinder(std::string_view needle, TextCase mode);

    // The place from 0 of the first occurrence that begins at `from` or behind, npos for none. An empty needle is
    // found at `from` up to the end of the text.
    std::size_t find(std::string_view text, std::size_t from = 0) const;

    // True when every byte of the needle is one of `alphabet`, in the case mode: otherwise no text made of these
    // bytes alone can hold it.
    bool isMadeOf(const std::bitset<256>& alphabet) const;

    std::size_t size() const { return m_needle.size(); }

private:
    // The bytes that compare as one key: at most an upper and a lower case letter.
    struct Pair {
        char one = 0;
        char other = 0;

        bool is(char c) const { return (c == one) | (c == other); } // without a branch
    };
    Pair bytesOf(char key) const;

    // Of a chunk of text: 1 for each place where the needle may begin.
    static constexpr std::size_t kChunk = 64;
    using Marks = std::array<std::uint8_t, kChunk>;

    // Comparisons of one search that led to nothing, and when they are too many for what was passed over.
    struct Vain {
        std::size_t start = 0; // of the search
        std::size_t compared = 0;
    };

    bool tooMuch(const Vain& vain, std::size_t at) const;
    bool isAt(const char* place, Vain& vain) const;
    bool markIn(const char* chunk, Marks& marks) const;
    std::size_t findInChunk(const char* chunk, const Marks& marks, Vain& vain) const;
    std::size_t findBySkipping(std::string_view text, std::size_t from, Vain vain) const;
    std::size_t findByBorders(std::string_view text, std::size_t from) const;
    void findBorders();

    std::string m_needle;                 // as compared
    std::array<std::uint8_t, 256> m_key;  // what a byte is compared as
    std::array<std::uint8_t, 256> m_skip; // by the byte under the needle's last place: how far to go on at least
    std::vector<std::size_t> m_borders;   // by length of a front of the needle: the longest shorter one that ends it
    Pair m_first;                         // of the needle's first place
    Pair m_last;
};

} // namespace tallybook::calc
