#include "core/calc/cells/CellResult.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Digits.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/SingleText.h"

#include <cmath>

namespace tallybook::calc {

namespace {

using Form = CellResult::Form;
using model::StoredCell;
using model::WordForm;

constexpr Date kNoDate; // of serial 0: a time alone

void appendNumber(const CellResult& result, const platform::Regional& regional, std::string& out) {
    char room[kSingleRoom];
    if (const auto scaled = scaledMagnitude(result.value, result.decimals))
        out += formScaled(result.value < 0, *scaled, result.decimals, regional.decimal, room);
    else
        out += formatDecimals(result.value, result.decimals, regional);
}

void appendWhole(int value, std::string& out) {
    char room[kWholeRoom];
    out += formWhole(value, room);
}

// The text is a short date and nothing else.
bool isDateAlone(const CellResult& result) {
    if (result.form == Form::ShortDate)
        return true;
    return result.form == Form::Moment && timeOf(result.value) == TimeOfDay{} && dateOf(result.value) != kNoDate;
}

void appendDuration(const CellResult& result, std::string& out) {
    const int seconds = static_cast<int>(result.value);
    appendWhole(seconds / 3600, out);
    out += ':';
    appendWhole(seconds / 60 % 60, out);
    if (result.form == Form::HoursMinutes)
        return;
    out += ':';
    appendWhole(seconds % 60, out);
}

} // namespace

void appendResult(const CellResult& result, const platform::Regional& regional, std::string& out) {
    switch (result.form) {
    case Form::Nothing:
        break;
    case Form::Number:
        appendNumber(result, regional, out);
        break;
    case Form::Moment:
        out += generalDate(result.value, regional);
        break;
    case Form::ShortDate:
        out += shortDate(dateOf(result.value), regional);
        break;
    case Form::TimeOfDay:
        out += longTime(timeOf(result.value), regional);
        break;
    case Form::HoursMinutesSeconds:
    case Form::HoursMinutes:
        appendDuration(result, out);
        break;
    case Form::PlainText:
        out += result.text;
        break;
    }
}

ResultColumn::ResultColumn(model::TextColumn& texts, const platform::Regional& regional)
    : m_texts(texts), m_regional(regional) {
    if (const model::CellCoder* coder = texts.coder())
        m_form = coder->form();
}

// A word only where the text of the result is the one that the coder writes for it.
std::optional<std::uint32_t> ResultColumn::wordOf(const CellResult& result) const {
    if (m_form.words == WordForm::Date && isDateAlone(result)) {
        const Date date = dateOf(result.value);
        return packDate(date.year, date.month, date.day);
    }
    if (result.form == Form::TimeOfDay && m_form.words == WordForm::Time) {
        const TimeOfDay time = timeOf(result.value);
        return packTime(time.hour, time.minute, time.second);
    }
    return std::nullopt;
}

// The digits are formed once: they are the word, or else the text.
void ResultColumn::setDecimal(std::uint32_t row, const CellResult& result, std::uint64_t magnitude) {
    const bool negative = result.value < 0;
    if (const auto word = decimalWord(negative, magnitude, result.decimals)) {
        m_texts.setWord(row, *word);
        return;
    }
    char room[kSingleRoom];
    const std::string_view text = formScaled(negative, magnitude, result.decimals, m_regional.decimal, room);
    if (!hasNoDecimalWord(magnitude, result.decimals))
        setText(row, text);
    else if (!isThere(row, text))
        m_texts.setPlainText(row, text);
}

void ResultColumn::set(std::uint32_t row, const CellResult& result) {
    if (result.form == Form::Number && m_form.words == WordForm::Decimal && m_form.decimals == result.decimals) {
        if (const auto magnitude = scaledMagnitude(result.value, result.decimals)) {
            setDecimal(row, result, *magnitude);
            return;
        }
    }
    if (const auto word = wordOf(result)) {
        m_texts.setWord(row, *word);
        return;
    }
    if (result.form == Form::PlainText) {
        setText(row, result.text);
        return;
    }
    m_text.clear();
    appendResult(result, m_regional, m_text);
    setText(row, m_text);
}

void ResultColumn::setBlock(std::uint32_t block, const model::RowBits& rows, const NumberLanes& numbers,
                            int decimals) {
    if (m_form.words != WordForm::Decimal || m_form.decimals != decimals) {
        model::eachBit(rows, [&](std::uint32_t place) {
            const double number = numbers[place];
            set(block * model::kBlockRows + place,
                std::isfinite(number) ? CellResult{Form::Number, number, decimals} : kNumberZero);
        });
        return;
    }
    m_stage.clear();
    model::eachBit(rows, [&](std::uint32_t place) { stageNumber(place, numbers[place], decimals); });
    m_texts.setBlock(block, m_stage);
}

void ResultColumn::stageNumber(std::uint32_t place, double number, int decimals) {
    const bool negative = number < 0;
    const auto magnitude = scaledMagnitude(number, decimals); // nothing for what is not finite
    if (!magnitude) {
        m_text.clear();
        appendResult(std::isfinite(number) ? CellResult{Form::Number, number, decimals} : kNumberZero, m_regional,
                     m_text);
        stageText(place, m_text);
        return;
    }
    if (const auto word = decimalWord(negative, *magnitude, decimals)) {
        m_stage.addWord(place, *word);
        return;
    }
    char room[kSingleRoom];
    const std::string_view text = formScaled(negative, *magnitude, decimals, m_regional.decimal, room);
    if (hasNoDecimalWord(*magnitude, decimals))
        m_stage.addText(place, text);
    else
        stageText(place, text);
}

void ResultColumn::stageText(std::uint32_t place, std::string_view text) {
    if (const auto word = m_texts.coder()->encode(text))
        m_stage.addWord(place, *word);
    else
        m_stage.addText(place, text);
}

// Most results are the ones that are there already; a text that is not written again leaves no gap behind.
bool ResultColumn::isThere(std::uint32_t row, std::string_view text) const {
    const StoredCell before = m_texts.stored(row);
    return before.kind == StoredCell::Kind::Text && before.text == text;
}

void ResultColumn::setText(std::uint32_t row, std::string_view text) {
    if (!isThere(row, text))
        m_texts.setText(row, text);
}

} // namespace tallybook::calc
