#include "core/calc/cells/CellReader.h"

#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/SingleText.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace tallybook::calc {

namespace {

using model::StoredCell;
using model::WordForm;

Date dateOfWord(std::uint32_t word) {
    return {static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF), static_cast<int>(word & 0xFF)};
}

TimeOfDay timeOfWord(std::uint32_t word) {
    return {static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF), static_cast<int>(word & 0xFF)};
}

bool isRealTime(const TimeOfDay& time) {
    return time.hour <= 23 && time.minute <= 59 && time.second <= 59;
}

std::optional<double> serialOfWord(WordForm form, std::uint32_t word) {
    if (form == WordForm::Date) {
        const Date date = dateOfWord(word);
        return isRealDate(date) ? std::optional<double>(dayNumber(date)) : std::nullopt;
    }
    if (form == WordForm::Time) {
        const TimeOfDay time = timeOfWord(word);
        return isRealTime(time) ? std::optional(serialOf(Date{}, time)) : std::nullopt;
    }
    return std::nullopt;
}

// Below the limit at most one number with so many digits behind the point lies among those that a single stands for.
// If one does, it is the shortest form and the number shown.
constexpr float kUniqueBelow[] = {16777216, 524288, 65536, 8192};

// displayedValue of singles, 0 for nothing. The loop looks at all of them without a branch, so that compilers have it
// done for several at once; what is not so simple is done again.
void displayedValues(std::span<const std::uint32_t> words, int decimals, double* numbers) {
    constexpr double kNoFraction = 6755399441055744; // 1.5 * 2^52: a sum with it has no digits behind the point
    const double power = kPowersOfTen[decimals];
    const float limit = kUniqueBelow[decimals];
    unsigned odd = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto value = std::bit_cast<float>(words[i]);
        const double units = static_cast<double>(value) * power + kNoFraction - kNoFraction;
        numbers[i] = units / power;
        odd |= static_cast<unsigned>(static_cast<float>(numbers[i]) != value) |
               static_cast<unsigned>(!(std::fabs(value) < limit));
    }
    if (odd == 0)
        return;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto value = std::bit_cast<float>(words[i]);
        if (static_cast<float>(numbers[i]) != value || !(std::fabs(value) < limit))
            numbers[i] = displayedValue(value, decimals).value_or(0);
    }
}

bool hasOnlyBlanks(std::string_view text) {
    return text.find_first_not_of(' ') == std::string_view::npos;
}

} // namespace

CellReader::CellReader(const model::GridModel& grid, int column, const platform::Regional& regional, int thisYear)
    : m_texts(&grid.column(column)), m_pictures(&grid.pictures(column)), m_regional(&regional), m_thisYear(thisYear) {
    if (const model::CellCoder* coder = m_texts->coder())
        m_form = coder->form();
}

bool CellReader::isBlank(std::uint32_t row) const {
    const StoredCell cell = m_texts->stored(row);
    if (cell.kind != StoredCell::Kind::Word)
        return hasOnlyBlanks(cell.text);
    if (m_form.words != WordForm::Other)
        return false;
    std::string scratch;
    return hasOnlyBlanks(m_texts->text(row, scratch));
}

std::string_view CellReader::text(const StoredCell& cell, std::string& scratch) const {
    return cell.kind == StoredCell::Kind::Word ? m_texts->coder()->text(cell.word, scratch) : cell.text;
}

std::optional<double> CellReader::number(const StoredCell& cell) const {
    if (cell.kind == StoredCell::Kind::Empty)
        return std::nullopt;
    if (cell.kind == StoredCell::Kind::Text)
        return parseNumber(cell.text, *m_regional);
    if (m_form.words == WordForm::Whole)
        return static_cast<std::int32_t>(cell.word);
    if (m_form.words == WordForm::Decimal) // nothing for a single that stands for no text
        return displayedValue(std::bit_cast<float>(cell.word), m_form.decimals);
    std::string scratch;
    return parseNumber(text(cell, scratch), *m_regional);
}

std::optional<double> CellReader::date(const StoredCell& cell) const {
    if (cell.kind == StoredCell::Kind::Empty)
        return std::nullopt;
    if (cell.kind == StoredCell::Kind::Text)
        return readDate(cell.text, *m_regional, m_thisYear);
    if (const auto serial = serialOfWord(m_form.words, cell.word))
        return serial;
    std::string scratch;
    return readDate(text(cell, scratch), *m_regional, m_thisYear);
}

// Most cells that are asked for a number keep one as their word, and are not handed on through memory.
std::optional<double> CellReader::number(std::uint32_t row) const {
    const StoredCell cell = m_texts->stored(row);
    if (cell.kind == StoredCell::Kind::Word && m_form.words == WordForm::Whole)
        return static_cast<std::int32_t>(cell.word);
    if (cell.kind == StoredCell::Kind::Word && m_form.words == WordForm::Decimal)
        return displayedValue(std::bit_cast<float>(cell.word), m_form.decimals);
    return number(cell);
}

void CellReader::numbersOfWords(std::span<const std::uint32_t> words, double* numbers) const {
    if (m_form.words == WordForm::Decimal)
        displayedValues(words, m_form.decimals, numbers);
    else
        std::transform(words.begin(), words.end(), numbers,
                       [](std::uint32_t word) { return static_cast<std::int32_t>(word); });
}

void CellReader::numbers(std::uint32_t block, NumberLanes& lanes) const {
    const std::uint32_t begin = block * model::kBlockRows;
    const auto ask = [&](std::uint32_t place) { lanes[place] = number(begin + place).value_or(0); };
    const model::StoredBlock stored = m_texts->storedBlock(block);
    if (m_form.words != WordForm::Whole && m_form.words != WordForm::Decimal) {
        lanes.fill(0);
        model::eachBit(stored.filled, ask);
        return;
    }
    if (stored.words.size() == model::kBlockRows) {
        numbersOfWords(stored.words, lanes.data());
    } else {
        NumberLanes packed;
        numbersOfWords(stored.words, packed.data());
        lanes.fill(0);
        model::eachBit(stored.filled,
                       [&, next = packed.begin()](std::uint32_t place) mutable { lanes[place] = *next++; });
    }
    model::eachBit(stored.plain, ask);
}

std::optional<double> CellReader::toDate(std::uint32_t row) const {
    if (const auto serial = date(row))
        return serial;
    if (!m_texts->has(row))
        return std::nullopt;
    std::string scratch;
    return calc::toDate(m_texts->text(row, scratch), *m_regional, m_thisYear);
}

bool CellReader::isChecked(std::uint32_t row) const {
    return m_pictures->get(row) == static_cast<std::uint32_t>(model::Picture::CheckOn);
}

} // namespace tallybook::calc
