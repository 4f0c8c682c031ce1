// Sorting rows by a number or a text of each, on compact arrays: no call and no allocation for each comparison.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tallybook::document {

// A row's place before the sort, with what it is sorted by.
struct RowKey {
    std::uint64_t key = 0;
    std::uint32_t place = 0;
};

enum class KeyOrder : bool { Rising, Falling };

// A number that is compared as the double is: the greater the double, the greater the key.
std::uint64_t keyOfDouble(double value);

// Sorts by key. The rows stand in the order of their places, and those with equal keys stay in it.
void sortByKey(std::span<RowKey> rows, KeyOrder order);

// Sorts by the text of each row, byte by byte and a prefix first; `texts` is indexed by place. The keys given do not
// matter. The rows stand in the order of their places, and those with equal texts stay in it.
void sortByText(std::span<RowKey> rows, const std::vector<std::string_view>& texts, KeyOrder order);

} // namespace tallybook::document
