// The usual cells of data records, taken to the columns a block of 256 rows at a time.
#pragma once

#include "core/model/FieldType.h"
#include "core/model/GridModel.h"
#include "core/model/TextColumn.h"
#include "core/model/WordColumn.h"
#include "core/pdb/CellForms.h"
#include "core/platform/Files.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace tallybook::pdb {

// Nearly all cells of a file are of their field's own type and become a word or a text of its column as they lie
// there. Such cells are read here without asking again what each of them is, gathered for the block of rows that is
// being read, and put into the columns together, in the room that they need. Every other cell is left to the caller,
// who first has the slot closed: what was gathered then is in its columns, and so is all that comes until the next
// block.
class QuickCells {
public:
    // What a slot's cells become. Columns must be empty, and stay the caller's.
    struct Target {
        model::FieldType type = model::FieldType::NotUsed; // of the field
        model::CellForm form;                              // of its column's words
        int decimals = 0;                                  // of the field
        model::TextColumn* texts = nullptr;
        model::WordColumn* words = nullptr;               // pictures of a Checkbox, items of a List
        const std::vector<std::int64_t>* items = nullptr; // the column's word of each item's id; negative for none
    };

    // Has a slot's cells taken, if they are of a type and form that can be. Slot 0 is for categories.
    void add(int slot, const Target& target);

    // The rows are entered in rising order; one that is not, and its block, is left to the caller.
    void enter(std::uint32_t row);

    // Takes cells off the front of what is left of a record, up to the first one that the caller must see to. Gives
    // how many bytes they took.
    std::size_t take(platform::ByteSpan cells);

    // The category of the row. False when the caller must see to it.
    bool takeCategory(std::uint8_t item);

    // Ahead of a change of the slot's columns by others.
    void close(int slot);

    // Puts what lies ready into the columns.
    void finish();

private:
    enum class Kind : std::uint8_t { None, Text, Memo, Integer, Long, Single, Date, Time, Item, Check };
    struct Stage {
        Target target;
        Kind kind = Kind::None;
        model::TextStage texts;
        model::WordStage words;
    };
    // What is looked at for each cell. Without a stage the kind is None.
    struct Quick {
        std::uint8_t type = 0;
        Kind kind = Kind::None;
        Stage* stage = nullptr;
    };

    static Kind kindOf(const Target& target);
    std::size_t takeCell(const Quick& quick, const std::uint8_t* body, std::size_t left);
    std::size_t takeText(Stage& stage, const std::uint8_t* body, std::size_t left, std::size_t lengthBytes);
    bool takeItem(Stage& stage, std::uint8_t item);
    void write(Stage& stage);

    static constexpr std::int64_t kNoBlock = -1;

    std::array<Quick, 256> m_quick{}; // by the slot byte of a cell
    Quick m_category;
    std::array<std::unique_ptr<Stage>, model::MaxFieldSlots> m_stages;
    std::int64_t m_block = kNoBlock; // that is being read
    std::uint32_t m_place = 0;       // of the row in it
};

} // namespace tallybook::pdb
