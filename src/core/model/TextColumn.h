// The texts of one column, by row id.
#pragma once

#include "core/model/CellCoder.h"
#include "core/model/TextRun.h"
#include "core/model/WordColumn.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::model {

// A cell as its column keeps it: nothing, a word of the column's coder, or a text.
struct StoredCell {
    enum class Kind : std::uint8_t { Empty, Word, Text };
    Kind kind = Kind::Empty;
    std::uint32_t word = 0;
    std::string_view text; // lies in the column, until it changes
};

// Cells for a block of 256 rows that is made anew, given in the order of the rows, as WordStage.
class TextStage {
public:
    bool empty() const { return m_words.empty(); }
    bool isBehind(std::uint32_t place) const { return m_words.isBehind(place); }
    void addWord(std::uint32_t place, std::uint32_t word) { m_words.add(place, word); }
    void addText(std::uint32_t place, std::string_view text) { // not empty
        m_words.add(place, m_texts.append(text));
        setBit(m_plain, place);
    }
    void clear() {
        m_words.clear();
        m_plain = {};
        m_texts.clear();
    }

private:
    friend class TextColumn;
    WordStage m_words;
    RowBits m_plain{};
    TextRun m_texts;
};

// Rows are kept in blocks of 256 as in WordColumn. The word of a cell is either what the column's coder makes
// of its text, or, when the row's `plain` bit is set, the place of the text in the block's own run of texts. An
// empty text is an absent cell. No cell is a heap block of its own, and every change takes bounded time.
class TextColumn {
public:
    // The text of the row is not empty.
    bool has(std::uint32_t row) const {
        const std::uint32_t index = row / kBlockRows;
        return index < m_blocks.size() && m_blocks[index].words.has(row % kBlockRows);
    }
    // The rows from group * 64 on that have a text, a bit each.
    std::uint64_t filled(std::uint32_t group) const {
        const std::uint32_t block = group / (kBlockRows / kGroupRows);
        return block < m_blocks.size() ? m_blocks[block].words.filled(group % (kBlockRows / kGroupRows)) : 0;
    }

    // The text of a row. The view lies in the column or somewhere in `scratch`, and lasts until either changes.
    std::string_view text(std::uint32_t row, std::string& scratch) const {
        const StoredCell cell = stored(row);
        return cell.kind == StoredCell::Kind::Word ? m_coder->text(cell.word, scratch) : cell.text;
    }

    // Calls visit(row, text) for each row that has a text, in the order of their numbers. Half the work of asking row
    // by row, as nothing has to be looked up. The text lasts until `visit` returns; the column must not change.
    template <class Visit> void eachText(Visit&& visit) const {
        std::string scratch;
        for (std::uint32_t index = 0; index < m_blocks.size(); ++index) {
            const Block& block = m_blocks[index];
            block.words.each([&](std::uint32_t place, std::uint32_t word) {
                const bool isPlain = bitOf(block.plain, place);
                visit(index * kBlockRows + place, isPlain ? block.texts.at(word) : m_coder->text(word, scratch));
            });
        }
    }

    // Calls visit(place, cell) for each row block * 256 + place that has a text, in the order of the rows. As
    // eachText, but words are not made texts.
    template <class Visit> void eachStored(std::uint32_t block, Visit&& visit) const {
        if (block >= m_blocks.size())
            return;
        const Block& stored = m_blocks[block];
        stored.words.each([&](std::uint32_t place, std::uint32_t word) {
            if (bitOf(stored.plain, place))
                visit(place, StoredCell{StoredCell::Kind::Text, 0, stored.texts.at(word)});
            else
                visit(place, StoredCell{StoredCell::Kind::Word, word, {}});
        });
    }

    // The rows of a block of 256 that have a text, a bit each.
    RowBits filledInBlock(std::uint32_t block) const {
        return block < m_blocks.size() ? m_blocks[block].words.filled() : RowBits{};
    }

    StoredCell stored(std::uint32_t row) const {
        if (!has(row))
            return {};
        const Block& block = m_blocks[row / kBlockRows];
        const std::uint32_t place = row % kBlockRows;
        const std::uint32_t word = block.words.value(place);
        if (bitOf(block.plain, place))
            return {StoredCell::Kind::Text, 0, block.texts.at(word)};
        return {StoredCell::Kind::Word, word, {}};
    }

    // A block as it lies; empty for one that has never had a cell.
    StoredBlock storedBlock(std::uint32_t block) const {
        if (block >= m_blocks.size())
            return {};
        const Block& stored = m_blocks[block];
        return {stored.words.filled(), stored.plain, stored.words.values(), &stored.texts};
    }

    // The rows from block * 256 on get the cells that were staged, and no others. Staged words are words of the
    // column's coder, and staged texts have none.
    void setBlock(std::uint32_t block, const TextStage& stage);

    // The bytes among which the plain texts of the rows from block * 256 on lie, other bytes between them. What is
    // not found in there is in none of these texts.
    std::string_view plainTexts(std::uint32_t block) const {
        return block < m_blocks.size() ? m_blocks[block].texts.bytes() : std::string_view();
    }

    // The word of a row, when its text has the coder's form.
    std::optional<std::uint32_t> word(std::uint32_t row) const {
        const StoredCell cell = stored(row);
        return cell.kind == StoredCell::Kind::Word ? std::optional(cell.word) : std::nullopt;
    }

    // Sets a text. It must not be a view into this very column.
    void setText(std::uint32_t row, std::string_view text);

    // Sets a text that the coder is known to have no word for, which saves asking it. As setText otherwise; the text
    // must not be empty.
    void setPlainText(std::uint32_t row, std::string_view text);

    // Sets a word of the coder. The word must stand for a text that is not empty.
    void setWord(std::uint32_t row, std::uint32_t word) {
        Block& block = blockFor(row);
        forgetText(block, row % kBlockRows);
        block.words.set(row % kBlockRows, word);
    }

    void erase(std::uint32_t row);
    void clear() { m_blocks.clear(); }

    // Cells that have a text, and the bytes that plain texts take.
    std::size_t cells() const;
    std::size_t textBytes() const;

    // Gives the column another coder, or none. The texts stay what they are.
    void setCoder(std::unique_ptr<CellCoder> coder);
    CellCoder* coder() const { return m_coder.get(); }

    // Becomes a copy of the rows that have a bit in `rows`; bit n of number g is row g * 64 + n. The coder is shared:
    // what its words stand for never changes.
    void copyRows(const TextColumn& source, std::span<const std::uint64_t> rows);

private:
    struct Block {
        WordBlock words;
        RowBits plain{};
        TextRun texts;
        std::uint32_t unused = 0; // bytes of texts that no row uses any more
    };

    Block& blockFor(std::uint32_t row) {
        const std::uint32_t index = row / kBlockRows;
        if (index >= m_blocks.size() || m_blocks[index].words.empty())
            beginBlock(index);
        return m_blocks[index];
    }
    void beginBlock(std::uint32_t index);
    static void forgetText(Block& block, std::uint32_t place) {
        if (bitOf(block.plain, place))
            forgetPlainText(block, place);
    }
    static void forgetPlainText(Block& block, std::uint32_t place);
    static void compact(Block& block);
    static void copyBlock(Block& to, const Block& from, const RowBits& rows);

    std::vector<Block> m_blocks;
    std::shared_ptr<CellCoder> m_coder;
};

} // namespace tallybook::model
