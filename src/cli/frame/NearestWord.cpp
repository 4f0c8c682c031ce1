#include "cli/frame/NearestWord.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace tallybook::cli {

namespace {

// One row of the table of distances at a time, each cell from those above, before and diagonally before it.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t above = row[j + 1];
            row[j + 1] = std::min({above + 1, row[j] + 1, diagonal + (a[i] == b[j] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row.back();
}

} // namespace

std::string nearestWord(std::string_view word, const std::vector<std::string>& words) {
    std::string nearest;
    std::size_t least = std::max<std::size_t>(word.size() / 3, 1) + 1;
    for (const std::string& candidate : words)
        if (const std::size_t keys = distance(word, candidate); keys < least) {
            least = keys;
            nearest = candidate;
        }
    return nearest;
}

} // namespace tallybook::cli
