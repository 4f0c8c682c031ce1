// The texts of one column, by row id.
#pragma once

#include "core/model/CellCoder.h"
#include "core/model/WordColumn.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::model {

// Rows are kept in blocks of 256 as in WordColumn. The word of a cell is either what the column's coder makes
// of its text, or, when the row's `plain` bit is set, the place of the text in the block's own run of texts. An
// empty text is an absent cell. No cell is a heap block of its own, and every change takes bounded time.
class TextColumn {
public:
    bool has(std::uint32_t row) const; // the text is not empty

    // The text of a row. The view lies in the column or in `scratch` and lasts until either changes.
    std::string_view text(std::uint32_t row, std::string& scratch) const;

    // The word of a row, when its text has the coder's form.
    std::optional<std::uint32_t> word(std::uint32_t row) const;

    // Sets a text. It must not be a view into this very column.
    void setText(std::uint32_t row, std::string_view text);

    // Sets a word of the coder. The word must stand for a text that is not empty.
    void setWord(std::uint32_t row, std::uint32_t word);

    void erase(std::uint32_t row);
    void clear() { m_blocks.clear(); }

    // Gives the column another coder, or none. The texts stay what they are.
    void setCoder(std::unique_ptr<CellCoder> coder);
    CellCoder* coder() const { return m_coder.get(); }

private:
    struct Block {
        std::array<std::uint64_t, 4> filled{};
        std::array<std::uint64_t, 4> plain{};
        std::vector<std::uint32_t> words;
        std::string texts;        // each a length (1 byte, or 255 and 4 bytes) and its bytes
        std::uint32_t unused = 0; // bytes of texts that no row uses any more
    };

    Block& blockFor(std::uint32_t row);
    static void putWord(Block& block, std::uint32_t place, std::uint32_t word);
    static std::uint32_t appendText(Block& block, std::string_view text);
    static std::string_view textAt(const Block& block, std::uint32_t position);
    static void forgetText(Block& block, std::uint32_t place);
    static void compact(Block& block);

    std::vector<Block> m_blocks;
    std::unique_ptr<CellCoder> m_coder;
};

} // namespace tallybook::model
