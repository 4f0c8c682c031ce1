#include "core/document/find/PatternList.h"

#include <algorithm>

namespace tallybook::document {

PatternList::PatternList(std::string_view patterns, calc::TextCase mode) {
    for (;;) {
        const std::size_t plus = patterns.find('+');
        m_patterns.emplace_back(patterns.substr(0, plus), mode);
        if (plus == std::string_view::npos)
            return;
        patterns.remove_prefix(plus + 1);
    }
}

bool PatternList::matches(std::string_view text) const {
    return std::ranges::any_of(m_patterns, [&](const calc::LikePattern& pattern) { return pattern.matches(text); });
}

bool PatternList::mayMatchIn(std::string_view bytes) const {
    return std::ranges::any_of(m_patterns,
                               [&](const calc::LikePattern& pattern) { return pattern.mayMatchIn(bytes); });
}

bool PatternList::mayMatchOf(const std::bitset<256>& alphabet) const {
    return std::ranges::any_of(m_patterns,
                               [&](const calc::LikePattern& pattern) { return pattern.mayMatchOf(alphabet); });
}

} // namespace tallybook::document
