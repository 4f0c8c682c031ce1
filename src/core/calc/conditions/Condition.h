// One condition of a set, judged for many records at a time.
#pragma once

#include "core/calc/conditions/ConditionOperands.h"
#include "core/calc/values/TextFinder.h"
#include "core/model/WordColumn.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tallybook::calc {

// A condition that compares a field with a constant is decided by the cell alone. What an empty cell gives, which
// numbers, dates or times satisfy it and which items of a list do is then found out once, and most cells are judged
// by looking at their word. Everything else goes through CheckCondition, record by record. The context and what the
// operands look into must outlive it.
class Condition {
public:
    Condition(std::uint8_t code, const FieldOperand& left, const FieldOperand& right, const CondContext& context);
    Condition(std::uint8_t code, const FieldOperand& left, const CondOperand& constant, const CondContext& context);

    // Whether the record of a stored row satisfies it.
    bool holds(std::uint32_t row);

    // Those of the rows of a block of 256 that satisfy it.
    model::RowBits holding(std::uint32_t block, const model::RowBits& rows);

    // Costs next to nothing, so that it is best asked ahead of others.
    bool isQuick() const { return m_cells != nullptr && (m_words == Words::Range || m_words == Words::Items); }

private:
    enum class Words : std::uint8_t { Range, Items, Each };
    enum class Known : std::uint8_t { Unknown, No, Yes };

    // The keys of words from `first` to `last`, or all others.
    struct KeyRange {
        std::uint32_t first = 1;
        std::uint32_t last = 0;
        bool others = false;

        bool has(std::uint32_t key) const { return ((key >= first) & (key <= last)) != others; }
    };

    void settleTexts();
    void settleWords();
    KeyRange rangeOfWords() const;
    std::uint64_t firstPlace(std::uint8_t code) const;
    KeyRange keysBetween(std::uint64_t begin, std::uint64_t end, bool others) const;

    model::RowBits rowByRow(std::uint32_t block, const model::RowBits& rows);
    model::RowBits wordByWord(std::uint32_t block, const model::RowBits& asked);
    model::RowBits cellByCell(std::uint32_t block, const model::RowBits& asked);
    bool textHolds(const model::StoredCell& cell);
    bool wordHolds(const model::StoredCell& cell);
    bool cellHolds(const model::StoredCell& cell);
    bool itemHolds(const model::StoredCell& cell);

    std::uint8_t m_code;
    FieldOperand m_left;
    std::optional<FieldOperand> m_right; // none: the constant
    CondOperand m_constant;
    const CondContext& m_context;

    const model::TextColumn* m_cells = nullptr; // of a condition that each cell decides alone
    bool m_emptyHolds = false;
    std::optional<TextFinder> m_finder; // of "contains" where texts are compared as they are
    Words m_words = Words::Each;
    model::WordForm m_form = model::WordForm::Other;
    KeyRange m_range;
    std::vector<Known> m_items; // by word
    std::vector<model::StoredCell> m_asked;

    std::string m_leftText; // where texts that a column keeps as words are made
    std::string m_rightText;
};

} // namespace tallybook::calc
