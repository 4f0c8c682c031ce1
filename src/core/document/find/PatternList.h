// The text of a search by expression: patterns of which any will do.
#pragma once

#include "core/calc/values/LikePattern.h"

#include <bitset>
#include <string_view>
#include <vector>

namespace tallybook::document {

// The patterns stand apart at each "+". Settled once for all cells.
class PatternList {
public:
    PatternList(std::string_view patterns, calc::TextCase mode);

    // Whether one of them matches the whole text.
    bool matches(std::string_view text) const;

    // False when no text that lies among these bytes, or that is made of these characters alone, can match.
    bool mayMatchIn(std::string_view bytes) const;
    bool mayMatchOf(const std::bitset<256>& alphabet) const;

private:
    std::vector<calc::LikePattern> m_patterns;
};

} // namespace tallybook::document
