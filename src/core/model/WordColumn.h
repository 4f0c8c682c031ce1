// A sparse column of 32-bit values by row id, which costs memory and time only for the cells that are set.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tallybook::model {

// Rows are kept in blocks of 256, a bit for each row that has a value and the values packed in row order, so
// that setting, erasing and reading take bounded time whatever the number of rows.
class WordColumn {
public:
    bool has(std::uint32_t row) const;
    std::optional<std::uint32_t> get(std::uint32_t row) const;
    void set(std::uint32_t row, std::uint32_t value);
    void erase(std::uint32_t row);
    void clear() { m_blocks.clear(); }
    bool empty() const; // no row has a value

private:
    struct Block {
        std::array<std::uint64_t, 4> filled{};
        std::vector<std::uint32_t> values;
    };
    std::vector<Block> m_blocks;
};

// The four words of bits of a block, and the number of bits set before a place in them.
inline constexpr std::uint32_t kBlockRows = 256;

inline bool bitOf(const std::array<std::uint64_t, 4>& bits, std::uint32_t place) {
    return (bits[place >> 6] >> (place & 63) & 1) != 0;
}
inline void setBit(std::array<std::uint64_t, 4>& bits, std::uint32_t place) {
    bits[place >> 6] |= std::uint64_t{1} << (place & 63);
}
inline void clearBit(std::array<std::uint64_t, 4>& bits, std::uint32_t place) {
    bits[place >> 6] &= ~(std::uint64_t{1} << (place & 63));
}
inline std::uint32_t bitsBefore(const std::array<std::uint64_t, 4>& bits, std::uint32_t place) {
    std::uint32_t count = 0;
    for (std::uint32_t word = 0; word < place >> 6; ++word)
        count += static_cast<std::uint32_t>(__builtin_popcountll(bits[word]));
    const std::uint64_t below = (std::uint64_t{1} << (place & 63)) - 1;
    return count + static_cast<std::uint32_t>(__builtin_popcountll(bits[place >> 6] & below));
}

} // namespace tallybook::model
