#include "core/document/views/RowKeys.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace tallybook::document {

namespace {

constexpr std::size_t kKeyBytes = sizeof(std::uint64_t);
constexpr std::size_t kByteValues = 256;
constexpr std::size_t kFewRows = 512; // so few are sorted sooner by comparing them

std::size_t byteOf(std::uint64_t key, std::size_t byte) {
    return key >> (8 * byte) & 0xFF;
}

bool isBefore(const RowKey& a, const RowKey& b) {
    return a.key != b.key ? a.key < b.key : a.place < b.place;
}

// The bytes that are not the same in all keys, from the lowest up.
std::vector<std::size_t> differingBytes(std::span<const RowKey> rows) {
    std::uint64_t differences = 0;
    for (const RowKey& row : rows)
        differences |= row.key ^ rows[0].key;
    std::vector<std::size_t> bytes;
    for (std::size_t byte = 0; byte < kKeyBytes; ++byte)
        if (byteOf(differences, byte) != 0)
            bytes.push_back(byte);
    return bytes;
}

// Puts the rows in the order of one byte of their keys; those where it is the same keep theirs.
void sortByByte(std::span<const RowKey> from, std::span<RowKey> to, std::size_t byte) {
    std::array<std::uint32_t, kByteValues> places{};
    for (const RowKey& row : from)
        ++places[byteOf(row.key, byte)];
    std::uint32_t next = 0;
    for (std::uint32_t& place : places)
        next += std::exchange(place, next);
    for (const RowKey& row : from)
        to[places[byteOf(row.key, byte)]++] = row;
}

// Most bytes of a date's or an item's keys are the same in all rows, and take no pass.
void sortByBytes(std::span<RowKey> rows, std::vector<RowKey>& spare) {
    spare.resize(std::max(spare.size(), rows.size()));
    std::span<RowKey> from = rows;
    std::span<RowKey> to(spare.data(), rows.size());
    for (const std::size_t byte : differingBytes(rows)) {
        sortByByte(from, to, byte);
        std::swap(from, to);
    }
    if (from.data() != rows.data())
        std::copy(from.begin(), from.end(), rows.begin());
}

void sortRising(std::span<RowKey> rows, std::vector<RowKey>& spare) {
    if (rows.size() <= kFewRows)
        std::sort(rows.begin(), rows.end(), isBefore);
    else
        sortByBytes(rows, spare);
}

// Sorts eight bytes of the texts at a time: one pass of numbers settles most rows, and the groups that are left are
// looked at eight bytes further on.
class TextSorter {
public:
    TextSorter(const std::vector<std::string_view>& texts, KeyOrder order)
        : m_texts(texts), m_flip(order == KeyOrder::Falling ? ~std::uint64_t{0} : 0) {}

    // All rows are the same in their first `depth` bytes.
    void sortFrom(std::span<RowKey> rows, std::size_t depth) {
        for (RowKey& row : rows)
            row.key = bytesAt(m_texts[row.place], depth) ^ m_flip;
        sortRising(rows, m_spare);
        for (auto group = rows.begin(); group != rows.end();) {
            const auto end =
                std::find_if(group, rows.end(), [&](const RowKey& row) { return row.key != group->key; });
            sortGroup({group, end}, depth + kKeyBytes);
            group = end;
        }
    }

private:
    // The bytes as a number, missing ones as 0.
    static std::uint64_t bytesAt(std::string_view text, std::size_t depth) {
        std::uint64_t key = 0;
        const std::size_t count = text.size() > depth ? std::min(text.size() - depth, kKeyBytes) : 0;
        for (std::size_t i = 0; i < count; ++i)
            key |= std::uint64_t{static_cast<std::uint8_t>(text[depth + i])} << (8 * (kKeyBytes - 1 - i));
        return key;
    }

    void sortGroup(std::span<RowKey> group, std::size_t depth) {
        if (group.size() < 2 || areEqual(group))
            return;
        const bool allGoOn = std::all_of(group.begin(), group.end(),
                                         [&](const RowKey& row) { return m_texts[row.place].size() > depth; });
        if (allGoOn && group.size() > kFewRows)
            sortFrom(group, depth);
        else
            std::sort(group.begin(), group.end(),
                      [&](const RowKey& a, const RowKey& b) { return isTextBefore(a.place, b.place); });
    }

    bool areEqual(std::span<const RowKey> group) const {
        return std::all_of(group.begin(), group.end(),
                           [&](const RowKey& row) { return m_texts[row.place] == m_texts[group[0].place]; });
    }

    bool isTextBefore(std::uint32_t a, std::uint32_t b) const {
        const int difference = m_texts[a].compare(m_texts[b]); // as unsigned bytes
        if (difference == 0)
            return a < b;
        return (difference < 0) == (m_flip == 0);
    }

    const std::vector<std::string_view>& m_texts;
    std::uint64_t m_flip; // all ones to sort the greatest first
    std::vector<RowKey> m_spare;
};

} // namespace

std::uint64_t keyOfDouble(double value) {
    constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
    const auto bits = std::bit_cast<std::uint64_t>(value + 0.0); // the two zeros are one
    return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

void sortByKey(std::span<RowKey> rows, KeyOrder order) {
    if (order == KeyOrder::Falling)
        for (RowKey& row : rows)
            row.key = ~row.key;
    std::vector<RowKey> spare;
    sortRising(rows, spare);
}

void sortByText(std::span<RowKey> rows, const std::vector<std::string_view>& texts, KeyOrder order) {
    TextSorter(texts, order).sortFrom(rows, 0);
}

} // namespace tallybook::document
