// What somebody may have meant who mistyped a word.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallybook::cli {

// The word that is the fewest keys away: a letter more, less, or another one. Empty when none is within a third of
// the word's length, one key at least.
std::string nearestWord(std::string_view word, const std::vector<std::string>& words);

} // namespace tallybook::cli
