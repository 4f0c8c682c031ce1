// A sparse column of 32-bit values by row id, which costs memory and time only for the cells that are set.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tallybook::model {

inline constexpr std::uint32_t kBlockRows = 256;
inline constexpr std::uint32_t kGroupRows = 64; // whose bits fit into one number

class TextRun;

using RowBits = std::array<std::uint64_t, kBlockRows / kGroupRows>;

inline bool bitOf(const RowBits& bits, std::uint32_t place) {
    return (bits[place >> 6] >> (place & 63) & 1) != 0;
}
inline bool anyBit(const RowBits& bits) {
    return std::any_of(bits.begin(), bits.end(), [](std::uint64_t group) { return group != 0; });
}
inline void setBit(RowBits& bits, std::uint32_t place) {
    bits[place >> 6] |= std::uint64_t{1} << (place & 63);
}
inline void clearBit(RowBits& bits, std::uint32_t place) {
    bits[place >> 6] &= ~(std::uint64_t{1} << (place & 63));
}

inline RowBits commonBits(RowBits bits, const RowBits& others) {
    for (std::size_t group = 0; group < bits.size(); ++group)
        bits[group] &= others[group];
    return bits;
}
std::uint32_t countBits(const RowBits& bits);
std::uint32_t countBitsBefore(const RowBits& bits, std::uint32_t place); // of the rows ahead of one

// The bits of a block's 256 rows out of those of all rows, where bit n of number g is row g * 64 + n; rows behind the
// last number have none. And the number of blocks that the rows lie in.
RowBits bitsOfBlock(std::span<const std::uint64_t> rows, std::size_t block);
inline std::size_t blocksOf(std::span<const std::uint64_t> rows) {
    return (rows.size() + RowBits{}.size() - 1) / RowBits{}.size();
}

// Calls visit(place) for each bit that is set, in rising order.
template <class Visit> void eachBit(const RowBits& bits, Visit&& visit) {
    for (std::uint32_t group = 0; group < bits.size(); ++group)
        for (std::uint64_t left = bits[group]; left != 0; left &= left - 1)
            visit(group * kGroupRows + static_cast<std::uint32_t>(std::countr_zero(left)));
}

// The values of up to 256 rows: a bit for each row that has one, and the values packed in row order, so that
// setting, erasing and reading take bounded time. Rows that are set in order, as a file is read, only append.
class WordBlock {
public:
    bool has(std::uint32_t place) const { return bitOf(m_filled, place); }
    bool empty() const { return m_values.empty(); }
    std::size_t count() const { return m_values.size(); }
    void reserve(std::size_t count) { m_values.reserve(count); }
    // Makes room for about as many values as another block has: neighbours are most likely to be filled alike.
    void reserveLike(const WordBlock& other) {
        const std::size_t count = other.count();
        m_values.reserve(std::min<std::size_t>(kBlockRows, count + count / 8 + 1));
    }

    // Gives back the room of a block that has outgrown what was made for it, and doubled.
    void trim() {
        if (m_values.capacity() > m_values.size() + m_values.size() / 2)
            m_values.shrink_to_fit();
    }

    // The rows that have a value, a bit each: of a group of 64, and of all.
    std::uint64_t filled(std::uint32_t group) const { return m_filled[group]; }
    const RowBits& filled() const { return m_filled; }

    // The values alone, in the order of their rows.
    std::span<const std::uint32_t> values() const { return m_values; }

    // Becomes these values, of the rows that have a bit in `filled`.
    void assign(const RowBits& filled, std::span<const std::uint32_t> values);

    // Calls visit(place, value) for each row that has a value, in the order of the rows.
    template <class Visit> void each(Visit&& visit) const {
        const std::uint32_t* value = m_values.data();
        eachBit(m_filled, [&](std::uint32_t place) { visit(place, *value++); });
    }

    // The value of a row that has one.
    std::uint32_t value(std::uint32_t place) const { return m_values[rank(place)]; }

    // How many rows ahead of one have values. Without a gap it is the place itself.
    std::uint32_t rank(std::uint32_t place) const {
        return m_values.size() == m_end ? place : countBitsBefore(m_filled, place);
    }

    void set(std::uint32_t place, std::uint32_t value) {
        if (place >= m_end) {
            m_values.push_back(value);
            setBit(m_filled, place);
            m_end = place + 1;
        } else {
            setInside(place, value);
        }
    }

    void erase(std::uint32_t place); // a row that has a value

private:
    void setInside(std::uint32_t place, std::uint32_t value);

    RowBits m_filled{};
    std::uint32_t m_end = 0; // the last row with a value, plus 1
    std::vector<std::uint32_t> m_values;
};

// Values for a block of 256 rows that is made anew, given in the order of the rows. Its room serves for one block
// after the other, so that a column takes no more than what its values need.
class WordStage {
public:
    bool empty() const { return m_count == 0; }
    // True when the place is behind all that have a value.
    bool isBehind(std::uint32_t place) const { return place >= m_end; }
    void add(std::uint32_t place, std::uint32_t value) { // a place behind the others
        m_values[m_count++] = value;
        setBit(m_filled, place);
        m_end = place + 1;
    }
    void clear() {
        m_filled = {};
        m_count = 0;
        m_end = 0;
    }
    const RowBits& filled() const { return m_filled; }
    std::span<const std::uint32_t> values() const { return std::span(m_values).first(m_count); }

private:
    std::array<std::uint32_t, kBlockRows> m_values;
    RowBits m_filled{};
    std::uint32_t m_count = 0;
    std::uint32_t m_end = 0;
};

// A block of 256 rows as it lies in its column, for a pass that goes through many: the rows that have a cell and, in
// a column of texts, those of them that have a text of their own, a bit each; the words of the first in the order of
// the rows, which for the others are the places of their texts. Lasts until the column changes.
struct StoredBlock {
    RowBits filled{};
    RowBits plain{};
    std::span<const std::uint32_t> words{};
    const TextRun* texts = nullptr;
};

// The blocks of all rows.
class WordColumn {
public:
    bool has(std::uint32_t row) const {
        const std::uint32_t block = row / kBlockRows;
        return block < m_blocks.size() && m_blocks[block].has(row % kBlockRows);
    }
    std::optional<std::uint32_t> get(std::uint32_t row) const {
        if (!has(row))
            return std::nullopt;
        return m_blocks[row / kBlockRows].value(row % kBlockRows);
    }
    // The rows from group * 64 on that have a value, a bit each.
    std::uint64_t filled(std::uint32_t group) const {
        const std::uint32_t block = group / (kBlockRows / kGroupRows);
        return block < m_blocks.size() ? m_blocks[block].filled(group % (kBlockRows / kGroupRows)) : 0;
    }
    // A block as it lies; empty for one that has never had a value.
    StoredBlock storedBlock(std::uint32_t block) const {
        if (block >= m_blocks.size())
            return {};
        return {.filled = m_blocks[block].filled(), .words = m_blocks[block].values()};
    }

    // The rows from block * 256 on get the values that were staged, and no others.
    void setBlock(std::uint32_t block, const WordStage& stage);

    void set(std::uint32_t row, std::uint32_t value) {
        const std::uint32_t index = row / kBlockRows;
        if (index >= m_blocks.size() || m_blocks[index].empty())
            beginBlock(index);
        m_blocks[index].set(row % kBlockRows, value);
    }
    void erase(std::uint32_t row);
    void clear() { m_blocks.clear(); }
    bool empty() const; // no row has a value

    // Becomes a copy of the rows that have a bit in `rows`; bit n of number g is row g * 64 + n.
    void copyRows(const WordColumn& source, std::span<const std::uint64_t> rows);

private:
    void beginBlock(std::uint32_t index);
    static void copyBlock(WordBlock& to, const WordBlock& from, const RowBits& rows);

    std::vector<WordBlock> m_blocks;
};

} // namespace tallybook::model
