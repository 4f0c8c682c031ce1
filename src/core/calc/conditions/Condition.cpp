#include "core/calc/conditions/Condition.h"

#include "core/calc/cells/WordOrder.h"
#include "core/calc/conditions/RowSets.h"

namespace tallybook::calc {

namespace {

using model::RowBits;
using model::StoredCell;

constexpr std::uint32_t kMostItems = 4096; // cells with words above are judged one by one

constexpr std::uint32_t kFewRows = 48; // of a block: so few are found sooner than all words are looked at

bool isOrdering(std::uint8_t code) {
    return code == '=' || code == '!' || code == '<' || code == 'L' || code == '>' || code == 'J';
}

void addBit(RowBits& bits, std::uint32_t place, bool value) {
    bits[place >> 6] |= std::uint64_t{value} << (place & 63); // without a branch, which would be guessed wrong
}

} // namespace

Condition::Condition(std::uint8_t code, const FieldOperand& left, const FieldOperand& right,
                     const CondContext& context)
    : m_code(code), m_left(left), m_right(right), m_context(context) {}

Condition::Condition(std::uint8_t code, const FieldOperand& left, const CondOperand& constant,
                     const CondContext& context)
    : m_code(code), m_left(left), m_constant(constant), m_context(context), m_cells(left.cells()) {
    if (m_cells == nullptr)
        return;
    m_emptyHolds = cellHolds({});
    settleTexts();
    settleWords();
}

// Beside a text that is no number a text is compared as it is.
void Condition::settleTexts() {
    const CondValue& constant = m_constant.value;
    const bool asTheyAre =
        m_left.isText() && constant.kind == CondValue::Kind::Text && constant.numeric == CondValue::Numeric::No;
    if (asTheyAre && (m_code == 'h' || m_code == 'H'))
        m_finder.emplace(constant.text, m_code == 'h' ? TextCase::Folded : TextCase::Binary);
}

void Condition::settleWords() {
    if (m_cells->coder() == nullptr)
        return;
    m_form = m_left.wordForm();
    if (m_form == model::WordForm::Other) {
        m_words = Words::Items;
    } else if (m_left.hasOrderedWords() && isOrdering(m_code)) {
        m_words = Words::Range;
        m_range = rangeOfWords();
    }
}

// Comparing goes by the value that a word stands for, so that those equal to the constant lie side by side, the
// lesser ahead of them and the greater behind.
Condition::KeyRange Condition::rangeOfWords() const {
    const std::uint64_t equal = firstPlace('J');
    const std::uint64_t greater = firstPlace('>');
    switch (m_code) {
    case '<':
        return keysBetween(0, equal, false);
    case 'L':
        return keysBetween(0, greater, false);
    case '>':
        return keysBetween(0, greater, true);
    case 'J':
        return keysBetween(0, equal, true);
    default:
        return keysBetween(equal, greater, m_code == '!');
    }
}

// The place of the first word that satisfies a comparison which all greater ones satisfy too.
std::uint64_t Condition::firstPlace(std::uint8_t code) const {
    std::string scratch;
    const auto holdsAt = [&](std::uint64_t place) {
        const StoredCell cell{StoredCell::Kind::Word, wordAt(m_form, place), {}};
        return CheckCondition(code, m_left.read(cell, scratch), m_constant, m_context);
    };
    std::uint64_t begin = 0;
    std::uint64_t end = countOfWords(m_form);
    while (begin < end) {
        const std::uint64_t middle = begin + (end - begin) / 2;
        if (holdsAt(middle))
            end = middle;
        else
            begin = middle + 1;
    }
    return begin;
}

Condition::KeyRange Condition::keysBetween(std::uint64_t begin, std::uint64_t end, bool others) const {
    KeyRange range{.others = others};
    if (begin < end) {
        range.first = keyOfWord(m_form, wordAt(m_form, begin));
        range.last = keyOfWord(m_form, wordAt(m_form, end - 1));
    }
    return range;
}

bool Condition::holds(std::uint32_t row) {
    const CondOperand left = m_left.read(row, m_leftText);
    if (m_right)
        return CheckCondition(m_code, left, m_right->read(row, m_rightText), m_context);
    return CheckCondition(m_code, left, m_constant, m_context);
}

RowBits Condition::holding(std::uint32_t block, const RowBits& rows) {
    if (m_cells == nullptr)
        return rowByRow(block, rows);
    const RowBits filled = m_cells->filledInBlock(block);
    const RowBits asked = model::commonBits(rows, filled);
    const bool many = model::countBits(asked) > kFewRows;
    const RowBits held = isQuick() && many ? wordByWord(block, asked) : cellByCell(block, asked);
    return m_emptyHolds ? rowsOfBoth(held, rowsWithout(rows, filled)) : held;
}

RowBits Condition::rowByRow(std::uint32_t block, const RowBits& rows) {
    RowBits held{};
    model::eachBit(rows, [&](std::uint32_t place) { addBit(held, place, holds(block * model::kBlockRows + place)); });
    return held;
}

// All words of the block are looked at, as that costs less than finding the ones that are asked for.
RowBits Condition::wordByWord(std::uint32_t block, const RowBits& asked) {
    RowBits held{};
    m_cells->eachStored(block, [&](std::uint32_t place, const StoredCell& cell) {
        if (cell.kind == StoredCell::Kind::Text)
            addBit(held, place, model::bitOf(asked, place) && textHolds(cell));
        else
            addBit(held, place, wordHolds(cell));
    });
    return model::commonBits(held, asked);
}

// The cells are taken together ahead of looking at them: memory then delivers them side by side, and not each one
// only when the one before has been judged.
RowBits Condition::cellByCell(std::uint32_t block, const RowBits& asked) {
    m_asked.clear();
    model::eachBit(
        asked, [&](std::uint32_t place) { m_asked.push_back(m_cells->stored(block * model::kBlockRows + place)); });
    RowBits held{};
    auto cell = m_asked.begin();
    model::eachBit(asked, [&](std::uint32_t place) {
        addBit(held, place, cell->kind == StoredCell::Kind::Text ? textHolds(*cell) : wordHolds(*cell));
        ++cell;
    });
    return held;
}

bool Condition::textHolds(const StoredCell& cell) {
    return m_finder ? m_finder->find(cell.text) != std::string_view::npos : cellHolds(cell);
}

bool Condition::wordHolds(const StoredCell& cell) {
    switch (m_words) {
    case Words::Range:
        return m_range.has(keyOfWord(m_form, cell.word));
    case Words::Items:
        return itemHolds(cell);
    default:
        return cellHolds(cell);
    }
}

bool Condition::cellHolds(const StoredCell& cell) {
    return CheckCondition(m_code, m_left.read(cell, m_leftText), m_constant, m_context);
}

// An item of a list is judged once, however many records have it.
bool Condition::itemHolds(const StoredCell& cell) {
    if (cell.word >= kMostItems)
        return cellHolds(cell);
    if (cell.word >= m_items.size())
        m_items.resize(cell.word + 1);
    Known& known = m_items[cell.word];
    if (known == Known::Unknown)
        known = cellHolds(cell) ? Known::Yes : Known::No;
    return known == Known::Yes;
}

} // namespace tallybook::calc
