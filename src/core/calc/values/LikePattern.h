// A pattern that whole texts are compared with.
#pragma once

#include "core/calc/values/TextFinder.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tallybook::calc {

// Elements: ? any character, * any number of them, # a digit, [list] and [!list] a character that is, or is not,
// among characters and ranges; any other character is itself. An unclosed bracket or a descending range matches
// nothing.
//
// What it needs to know of the pattern is settled once. A text then costs what a search for the pattern's fixed parts
// costs, in proportion to the text alone; where ? # or a list stands between two stars beside other elements, 64
// elements more cost one pass more over the text.
class LikePattern {
public:
    LikePattern(std::string_view pattern, TextCase mode);

    // Whether the whole text matches.
    bool matches(std::string_view text) const;

    // False when no text that lies among these bytes can match, as seen by the longest fixed part.
    bool mayMatchIn(std::string_view bytes) const;
    // False when no text made of these characters alone can match.
    bool mayMatchOf(const std::bitset<256>& alphabet) const;

private:
    // What stands between two stars: elements of one character each.
    class Run {
    public:
        using Characters = std::bitset<256>; // that an element matches

        Run(const std::vector<Characters>& elements, std::optional<TextFinder> fixed);

        std::size_t size() const { return m_size; }
        bool isFixed() const { return m_fixed.has_value(); }
        bool isAt(std::string_view text, std::size_t place) const; // the text goes on for as long as the run
        std::size_t find(std::string_view text, std::size_t from) const;

    private:
        std::size_t m_size;
        std::optional<TextFinder> m_fixed; // when every element is a character that stands for itself
        std::size_t m_words;               // of 64 elements
        std::vector<std::uint64_t> m_bits; // otherwise, m_words for each byte: which elements match it
    };
    class Parser;

    bool hasFixedParts(std::string_view text) const;

    bool m_wellFormed = true;
    std::size_t m_least = 0;         // characters of the shortest text that matches
    bool m_allFixed = true;          // no run but fixed ones
    std::vector<Run> m_runs;         // one more than there are stars
    std::vector<TextFinder> m_fixed; // the longest stretches of characters that stand for themselves, in their order
};

// The same for a single text.
bool like(std::string_view text, std::string_view pattern, TextCase mode);

} // namespace tallybook::calc
