#include "core/model/TextColumn.h"

#include <algorithm>

namespace tallybook::model {

namespace {

constexpr std::uint32_t kCompactFrom = 4096; // unused bytes of a block before it is worth packing

} // namespace

void TextColumn::beginBlock(std::uint32_t index) {
    if (index >= m_blocks.size())
        m_blocks.resize(index + 1);
    if (index == 0)
        return;
    Block& before = m_blocks[index - 1];
    before.words.trim();
    before.texts.trim();
    const std::size_t texts = before.texts.size();
    m_blocks[index].words.reserveLike(before.words);
    if (texts > 0)
        m_blocks[index].texts.setRoom(texts + texts / 8);
}

void TextColumn::forgetPlainText(Block& block, std::uint32_t place) {
    block.unused += static_cast<std::uint32_t>(TextRun::storedSize(block.texts.at(block.words.value(place)).size()));
    clearBit(block.plain, place);
}

void TextColumn::compact(Block& block) {
    TextRun packed;
    packed.setRoom(block.texts.size() - block.unused);
    for (std::uint32_t place = 0; place < kBlockRows; ++place)
        if (bitOf(block.plain, place))
            block.words.set(place, packed.append(block.texts.at(block.words.value(place))));
    block.texts = std::move(packed);
    block.unused = 0;
}

std::size_t TextColumn::cells() const {
    std::size_t count = 0;
    for (const Block& block : m_blocks)
        count += block.words.count();
    return count;
}

std::size_t TextColumn::textBytes() const {
    std::size_t bytes = 0;
    for (const Block& block : m_blocks)
        bytes += block.texts.size() - block.unused;
    return bytes;
}

void TextColumn::setText(std::uint32_t row, std::string_view text) {
    if (text.empty()) {
        erase(row);
        return;
    }
    if (m_coder) {
        if (const auto word = m_coder->encode(text)) {
            setWord(row, *word);
            return;
        }
    }
    setPlainText(row, text);
}

void TextColumn::setPlainText(std::uint32_t row, std::string_view text) {
    const std::uint32_t place = row % kBlockRows;
    Block& block = blockFor(row);
    const std::uint32_t position = block.texts.append(text);
    forgetText(block, place);
    block.words.set(place, position);
    setBit(block.plain, place);
    if (block.unused > kCompactFrom && block.unused > block.texts.size() / 2)
        compact(block);
}

void TextColumn::setBlock(std::uint32_t block, const TextStage& stage) {
    if (block >= m_blocks.size()) {
        if (stage.empty())
            return;
        m_blocks.resize(block + 1);
    }
    Block& to = m_blocks[block];
    to.words.assign(stage.m_words.filled(), stage.m_words.values());
    to.plain = stage.m_plain;
    to.texts = stage.m_texts.copy();
    to.unused = 0;
}

void TextColumn::erase(std::uint32_t row) {
    if (!has(row))
        return;
    Block& block = m_blocks[row / kBlockRows];
    forgetText(block, row % kBlockRows);
    block.words.erase(row % kBlockRows);
}

void TextColumn::setCoder(std::unique_ptr<CellCoder> coder) {
    TextColumn changed;
    changed.m_coder = std::move(coder);
    std::string scratch;
    for (std::uint32_t row = 0; row < m_blocks.size() * kBlockRows; ++row)
        if (has(row))
            changed.setText(row, text(row, scratch));
    *this = std::move(changed);
}

void TextColumn::copyRows(const TextColumn& source, std::span<const std::uint64_t> rows) {
    clear();
    m_coder = source.m_coder;
    m_blocks.resize(std::min(source.m_blocks.size(), blocksOf(rows)));
    for (std::size_t index = 0; index < m_blocks.size(); ++index)
        copyBlock(m_blocks[index], source.m_blocks[index], bitsOfBlock(rows, index));
}

// A block whose cells are all wanted is copied as it is.
void TextColumn::copyBlock(Block& to, const Block& from, const RowBits& rows) {
    const RowBits kept = commonBits(from.words.filled(), rows);
    if (kept == from.words.filled()) {
        to = {from.words, from.plain, from.texts.copy(), from.unused};
        return;
    }
    to.words.reserve(countBits(kept));
    std::size_t room = 0; // making it exactly also has the texts fetched together, not each one when it is copied
    eachBit(commonBits(kept, from.plain),
            [&](std::uint32_t place) { room += TextRun::storedSize(from.texts.at(from.words.value(place)).size()); });
    if (room > 0)
        to.texts.setRoom(room);
    eachBit(kept, [&](std::uint32_t place) {
        const std::uint32_t word = from.words.value(place);
        if (bitOf(from.plain, place)) {
            to.words.set(place, to.texts.append(from.texts.at(word)));
            setBit(to.plain, place);
        } else {
            to.words.set(place, word);
        }
    });
}

} // namespace tallybook::model
