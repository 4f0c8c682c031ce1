#include "PalmBitmap.h"

#include <algorithm>
#include <cstdint>

namespace tallybook::samples {

namespace {

constexpr std::string_view kGreys = " .:-=+*#%@";

// The grey of a character: 0 white to 15 black.
std::uint8_t greyOf(char c) {
    const std::size_t step = std::min(kGreys.find(c), kGreys.size() - 1);
    return static_cast<std::uint8_t>(step * 15 / (kGreys.size() - 1));
}

void addWord(std::size_t value, platform::Bytes& out) {
    out.push_back(static_cast<std::uint8_t>(value >> 8));
    out.push_back(static_cast<std::uint8_t>(value));
}

// Two pixels a byte, the left one in the high half; an even number of bytes.
platform::Bytes packRow(std::string_view row) {
    platform::Bytes packed((row.size() + 3) / 4 * 2);
    for (std::size_t x = 0; x < row.size(); ++x)
        packed[x / 2] = static_cast<std::uint8_t>(packed[x / 2] | greyOf(row[x]) << (x % 2 == 0 ? 4 : 0));
    return packed;
}

// A run never crosses the end of a row.
void addRuns(const platform::Bytes& row, platform::Bytes& out) {
    for (std::size_t at = 0; at < row.size();) {
        std::size_t run = 1;
        while (at + run < row.size() && row[at + run] == row[at] && run < 255)
            ++run;
        out.push_back(static_cast<std::uint8_t>(run));
        out.push_back(row[at]);
        at += run;
    }
}

} // namespace

platform::Bytes greyBitmap(std::span<const std::string_view> rows) {
    platform::Bytes runs;
    for (const std::string_view row : rows)
        addRuns(packRow(row), runs);
    platform::Bytes out;
    addWord(rows.front().size(), out);
    addWord(rows.size(), out);
    addWord(packRow(rows.front()).size(), out);
    addWord(0x8000, out);
    out.insert(out.end(), {4, 2, 0, 0, 0, 1, 0, 0});
    addWord(runs.size() + 2, out);
    out.insert(out.end(), runs.begin(), runs.end());
    return out;
}

} // namespace tallybook::samples
