#include "core/model/WordColumn.h"

#include <algorithm>
#include <numeric>

namespace tallybook::model {

namespace {

// Bits that are set, by adding neighbours; the processor's own instruction is not to be had on every machine.
std::uint32_t bitCount(std::uint64_t bits) {
    bits -= bits >> 1 & 0x5555555555555555;
    bits = (bits & 0x3333333333333333) + (bits >> 2 & 0x3333333333333333);
    bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0F;
    return static_cast<std::uint32_t>(bits * 0x0101010101010101 >> 56);
}

} // namespace

std::uint32_t countBits(const RowBits& bits) {
    return std::accumulate(bits.begin(), bits.end(), 0u,
                           [](std::uint32_t count, std::uint64_t group) { return count + bitCount(group); });
}

RowBits bitsOfBlock(std::span<const std::uint64_t> rows, std::size_t block) {
    constexpr std::size_t kGroups = RowBits{}.size();
    RowBits bits{};
    const auto ahead = rows.subspan(std::min(block * kGroups, rows.size()));
    std::copy_n(ahead.begin(), std::min(ahead.size(), kGroups), bits.begin());
    return bits;
}

std::uint32_t countBitsBefore(const RowBits& bits, std::uint32_t place) {
    std::uint32_t count = 0;
    for (std::uint32_t group = 0; group < place >> 6; ++group)
        count += bitCount(bits[group]);
    const std::uint64_t below = (std::uint64_t{1} << (place & 63)) - 1;
    return count + bitCount(bits[place >> 6] & below);
}

void WordBlock::assign(const RowBits& filled, std::span<const std::uint32_t> values) {
    m_filled = filled;
    m_values.assign(values.begin(), values.end());
    m_end = kBlockRows;
    while (m_end > 0 && !has(m_end - 1))
        --m_end;
}

void WordBlock::setInside(std::uint32_t place, std::uint32_t value) {
    const std::uint32_t index = rank(place);
    if (has(place)) {
        m_values[index] = value;
        return;
    }
    m_values.insert(m_values.begin() + index, value);
    setBit(m_filled, place);
}

void WordBlock::erase(std::uint32_t place) {
    m_values.erase(m_values.begin() + rank(place));
    clearBit(m_filled, place);
    while (m_end > 0 && !has(m_end - 1))
        --m_end;
}

void WordColumn::beginBlock(std::uint32_t index) {
    if (index >= m_blocks.size())
        m_blocks.resize(index + 1);
    if (index > 0)
        m_blocks[index].reserveLike(m_blocks[index - 1]);
}

void WordColumn::setBlock(std::uint32_t block, const WordStage& stage) {
    if (block >= m_blocks.size()) {
        if (stage.empty())
            return;
        m_blocks.resize(block + 1);
    }
    m_blocks[block].assign(stage.filled(), stage.values());
}

void WordColumn::erase(std::uint32_t row) {
    if (has(row))
        m_blocks[row / kBlockRows].erase(row % kBlockRows);
}

bool WordColumn::empty() const {
    return std::all_of(m_blocks.begin(), m_blocks.end(), [](const WordBlock& block) { return block.empty(); });
}

void WordColumn::copyRows(const WordColumn& source, std::span<const std::uint64_t> rows) {
    clear();
    m_blocks.resize(std::min(source.m_blocks.size(), blocksOf(rows)));
    for (std::size_t index = 0; index < m_blocks.size(); ++index)
        copyBlock(m_blocks[index], source.m_blocks[index], bitsOfBlock(rows, index));
}

void WordColumn::copyBlock(WordBlock& to, const WordBlock& from, const RowBits& rows) {
    const RowBits kept = commonBits(from.filled(), rows);
    if (kept == from.filled()) {
        to = from;
        return;
    }
    to.reserve(countBits(kept));
    eachBit(kept, [&](std::uint32_t place) { to.set(place, from.value(place)); });
}

} // namespace tallybook::model
