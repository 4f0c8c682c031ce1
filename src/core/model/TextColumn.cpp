#include "core/model/TextColumn.h"

#include <cstring>

namespace tallybook::model {

namespace {

constexpr std::size_t kShortLength = 255;    // the length byte that says that four bytes of length follow
constexpr std::uint32_t kCompactFrom = 4096; // unused bytes of a block before it is worth packing

std::size_t storedSize(std::size_t length) {
    return length + (length < kShortLength ? 1 : 1 + sizeof(std::uint32_t));
}

} // namespace

TextColumn::Block& TextColumn::blockFor(std::uint32_t row) {
    const std::uint32_t index = row / kBlockRows;
    if (index >= m_blocks.size())
        m_blocks.resize(index + 1);
    Block& block = m_blocks[index];
    if (block.words.empty() && block.texts.empty() && index > 0) {
        // a block is most likely to be filled like the one before it
        const Block& before = m_blocks[index - 1];
        block.words.reserve(before.words.size());
        block.texts.reserve(before.texts.size());
    }
    return block;
}

void TextColumn::putWord(Block& block, std::uint32_t place, std::uint32_t word) {
    const std::uint32_t rank = bitsBefore(block.filled, place);
    if (bitOf(block.filled, place)) {
        block.words[rank] = word;
        return;
    }
    block.words.insert(block.words.begin() + rank, word);
    setBit(block.filled, place);
}

std::uint32_t TextColumn::appendText(Block& block, std::string_view text) {
    const auto position = static_cast<std::uint32_t>(block.texts.size());
    if (text.size() < kShortLength) {
        block.texts.push_back(static_cast<char>(text.size()));
    } else {
        const auto length = static_cast<std::uint32_t>(text.size());
        char bytes[sizeof length];
        std::memcpy(bytes, &length, sizeof length);
        block.texts.push_back(static_cast<char>(kShortLength));
        block.texts.append(bytes, sizeof length);
    }
    block.texts.append(text);
    return position;
}

std::string_view TextColumn::textAt(const Block& block, std::uint32_t position) {
    const char* start = block.texts.data() + position;
    const std::size_t length = static_cast<unsigned char>(*start);
    if (length < kShortLength)
        return {start + 1, length};
    std::uint32_t longLength = 0;
    std::memcpy(&longLength, start + 1, sizeof longLength);
    return {start + 1 + sizeof longLength, longLength};
}

void TextColumn::forgetText(Block& block, std::uint32_t place) {
    if (!bitOf(block.plain, place))
        return;
    const std::string_view old = textAt(block, block.words[bitsBefore(block.filled, place)]);
    block.unused += static_cast<std::uint32_t>(storedSize(old.size()));
    clearBit(block.plain, place);
}

void TextColumn::compact(Block& block) {
    Block packed;
    packed.texts.reserve(block.texts.size() - block.unused);
    std::size_t rank = 0;
    for (std::uint32_t place = 0; place < kBlockRows; ++place) {
        if (!bitOf(block.filled, place))
            continue;
        if (bitOf(block.plain, place))
            block.words[rank] = appendText(packed, textAt(block, block.words[rank]));
        ++rank;
    }
    block.texts = std::move(packed.texts);
    block.unused = 0;
}

bool TextColumn::has(std::uint32_t row) const {
    const std::uint32_t index = row / kBlockRows;
    return index < m_blocks.size() && bitOf(m_blocks[index].filled, row % kBlockRows);
}

std::string_view TextColumn::text(std::uint32_t row, std::string& scratch) const {
    if (!has(row))
        return {};
    const Block& block = m_blocks[row / kBlockRows];
    const std::uint32_t place = row % kBlockRows;
    const std::uint32_t word = block.words[bitsBefore(block.filled, place)];
    if (bitOf(block.plain, place))
        return textAt(block, word);
    scratch.clear();
    m_coder->append(word, scratch);
    return scratch;
}

std::optional<std::uint32_t> TextColumn::word(std::uint32_t row) const {
    if (!has(row))
        return std::nullopt;
    const Block& block = m_blocks[row / kBlockRows];
    const std::uint32_t place = row % kBlockRows;
    if (bitOf(block.plain, place))
        return std::nullopt;
    return block.words[bitsBefore(block.filled, place)];
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
    const std::uint32_t place = row % kBlockRows;
    Block& block = blockFor(row);
    const std::uint32_t position = appendText(block, text);
    forgetText(block, place);
    putWord(block, place, position);
    setBit(block.plain, place);
    if (block.unused > kCompactFrom && block.unused > block.texts.size() / 2)
        compact(block);
}

void TextColumn::setWord(std::uint32_t row, std::uint32_t word) {
    Block& block = blockFor(row);
    forgetText(block, row % kBlockRows);
    putWord(block, row % kBlockRows, word);
}

void TextColumn::erase(std::uint32_t row) {
    if (!has(row))
        return;
    Block& block = m_blocks[row / kBlockRows];
    const std::uint32_t place = row % kBlockRows;
    forgetText(block, place);
    block.words.erase(block.words.begin() + bitsBefore(block.filled, place));
    clearBit(block.filled, place);
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

} // namespace tallybook::model
