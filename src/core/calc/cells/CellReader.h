// The cells of one column as the values that expressions, conditions and sorts read from their texts.
#pragma once

#include "core/model/GridModel.h"
#include "core/platform/Regional.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tallybook::calc {

// A number for each row of a block of 256.
using NumberLanes = std::array<double, model::kBlockRows>;

// Every answer is the one that the cell's text gives. Where the column keeps the text as a word, the value is taken
// from the word: a pass over all records makes no texts. Rows are named by their id (GridModel::rowId), which saves
// a pass that goes by the store's own order the look into the order of the rows. The grid must outlive the reader,
// and its column must keep its coder meanwhile.
class CellReader {
public:
    // `thisYear` completes dates that are written without one.
    CellReader(const model::GridModel& grid, int column, const platform::Regional& regional, int thisYear);

    // The text; it lies in the column or in `scratch`, and lasts until either changes.
    std::string_view text(std::uint32_t row, std::string& scratch) const { return m_texts->text(row, scratch); }

    // The text without blanks at both ends is empty.
    bool isBlank(std::uint32_t row) const;

    // As parseNumber reads the text: nothing when it is not numeric, an empty one included.
    std::optional<double> number(std::uint32_t row) const;

    // number() of all rows from block * 256 on, 0 where there is none.
    void numbers(std::uint32_t block, NumberLanes& lanes) const;

    // The serial of a text that reads as a date, a time or both, as readDate.
    std::optional<double> date(std::uint32_t row) const { return date(m_texts->stored(row)); }

    // The same, and otherwise a numeric text within the range is the serial itself, as toDate.
    std::optional<double> toDate(std::uint32_t row) const;

    // The same of a cell that was taken from the column.
    std::string_view text(const model::StoredCell& cell, std::string& scratch) const;
    std::optional<double> number(const model::StoredCell& cell) const;
    std::optional<double> date(const model::StoredCell& cell) const;

    // The cell shows the checked picture.
    bool isChecked(std::uint32_t row) const;

    const model::TextColumn& texts() const { return *m_texts; }
    const model::CellForm& form() const { return m_form; }

private:
    void numbersOfWords(std::span<const std::uint32_t> words, double* numbers) const;

    const model::TextColumn* m_texts;
    const model::WordColumn* m_pictures;
    const platform::Regional* m_regional;
    int m_thisYear;
    model::CellForm m_form; // of the column's words
};

} // namespace tallybook::calc
