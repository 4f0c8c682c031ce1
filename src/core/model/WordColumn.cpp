#include "core/model/WordColumn.h"

#include <algorithm>

namespace tallybook::model {

bool WordColumn::has(std::uint32_t row) const {
    const std::uint32_t block = row / kBlockRows;
    return block < m_blocks.size() && bitOf(m_blocks[block].filled, row % kBlockRows);
}

std::optional<std::uint32_t> WordColumn::get(std::uint32_t row) const {
    if (!has(row))
        return std::nullopt;
    const Block& block = m_blocks[row / kBlockRows];
    return block.values[bitsBefore(block.filled, row % kBlockRows)];
}

void WordColumn::set(std::uint32_t row, std::uint32_t value) {
    const std::uint32_t index = row / kBlockRows;
    if (index >= m_blocks.size())
        m_blocks.resize(index + 1);
    Block& block = m_blocks[index];
    const std::uint32_t place = row % kBlockRows;
    const std::uint32_t rank = bitsBefore(block.filled, place);
    if (bitOf(block.filled, place)) {
        block.values[rank] = value;
        return;
    }
    if (block.values.empty() && index > 0) // a block is most likely to be filled like the one before it
        block.values.reserve(m_blocks[index - 1].values.size());
    block.values.insert(block.values.begin() + rank, value);
    setBit(block.filled, place);
}

void WordColumn::erase(std::uint32_t row) {
    if (!has(row))
        return;
    Block& block = m_blocks[row / kBlockRows];
    block.values.erase(block.values.begin() + bitsBefore(block.filled, row % kBlockRows));
    clearBit(block.filled, row % kBlockRows);
}

bool WordColumn::empty() const {
    return std::all_of(m_blocks.begin(), m_blocks.end(), [](const Block& block) { return block.values.empty(); });
}

} // namespace tallybook::model
