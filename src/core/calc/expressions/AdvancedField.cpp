#include "core/calc/expressions/AdvancedField.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Dates.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace tallybook::calc {

namespace {

using model::FieldType;
using Needs = AdvancedExpression::Needs;

constexpr double kDaySeconds = 86400;

ValueReading valueReadingOfResult(std::uint8_t resultType) {
    switch (resultType) {
    case result::kDateAndDays:
    case result::kDateAndMonths:
    case result::kDateAndYears:
        return ValueReading::PackedDate;
    case result::kTime:
        return ValueReading::SecondsOfDay;
    case result::kHoursMinutesSeconds:
        return ValueReading::HoursMinutesSeconds;
    case result::kHoursMinutes:
        return ValueReading::HoursMinutes;
    default:
        return ValueReading::Number;
    }
}

// The number that a moment is for the engine.
std::int32_t wholeOfMoment(ValueReading reading, double serial) {
    const Date date = dateOf(serial);
    const TimeOfDay time = timeOf(serial);
    switch (reading) {
    case ValueReading::PackedDate:
        return static_cast<std::int32_t>(packDate(date.year, date.month, date.day));
    case ValueReading::PackedTime:
        return static_cast<std::int32_t>(packTime(time.hour, time.minute, time.second));
    case ValueReading::SecondsOfDay: // before 1899-12-30 it counts down from midnight
        return static_cast<std::int32_t>(std::fmod(std::nearbyint(serial * kDaySeconds), kDaySeconds));
    case ValueReading::HoursMinutesSeconds:
        return time.hour * 3600 + time.minute * 60 + time.second;
    case ValueReading::HoursMinutes:
        return time.hour * 3600 + time.minute * 60;
    default:
        return 0;
    }
}

void setWhole(FieldValues& values, std::int32_t whole) {
    values.longValue = whole;
    values.singleValue = static_cast<float>(whole);
}

void readNumbers(ValueReading reading, const CellReader& cells, std::uint32_t row, FieldValues& values) {
    values.longValue = 0;
    values.singleValue = 0;
    if (reading == ValueReading::Checked && cells.isChecked(row)) {
        setWhole(values, 1);
        return;
    }
    if (reading != ValueReading::Number && reading != ValueReading::Checked) {
        if (const auto moment = cells.date(row)) {
            setWhole(values, wholeOfMoment(reading, *moment));
            return;
        }
    }
    if (const auto number = cells.number(row))
        setNumber(values, *number);
}

FieldKinds kindsOf(const model::DatabaseModel& db) {
    FieldKinds kinds;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const auto index = static_cast<std::size_t>(slot);
        kinds.fieldTypes[index] = static_cast<std::uint8_t>(db.Fields[index].Type);
        kinds.fieldResultTypes[index] = db.Expressions.at(slot).ResultType;
    }
    return kinds;
}

AdvancedExpression expressionOf(const model::DatabaseModel& db, int field, const EngineContext& context) {
    const model::ExprDef& def = db.Expressions.at(field);
    return {def.Tokens, def.TokenTexts, kindsOf(db), context};
}

// The text of a result lies in the engine's and lasts as long.
CellResult cellResultOf(const ExpressionResult& result, std::uint8_t resultType) {
    switch (result.form) {
    case ExpressionResult::Form::Number:
        return {CellResult::Form::Number, result.value, result.decimals};
    case ExpressionResult::Form::Date:
        return {CellResult::Form::ShortDate, result.value};
    case ExpressionResult::Form::Time:
        return {CellResult::Form::TimeOfDay, result.value / kDaySeconds};
    case ExpressionResult::Form::Duration:
        return {resultType == result::kHoursMinutes ? CellResult::Form::HoursMinutes
                                                    : CellResult::Form::HoursMinutesSeconds,
                result.value};
    case ExpressionResult::Form::PlainText:
        return {.form = CellResult::Form::PlainText, .text = result.text};
    }
    return kNumberZero;
}

} // namespace

void setNumber(FieldValues& values, double number) {
    if (std::fabs(number) <= static_cast<double>(std::numeric_limits<float>::max()))
        values.singleValue = static_cast<float>(number);
    const double whole = std::nearbyint(number);
    if (std::fabs(number) < 2147483648.0 && whole <= std::numeric_limits<std::int32_t>::max())
        values.longValue = static_cast<std::int32_t>(whole);
}

ValueReading valueReadingOf(const model::DatabaseModel& db, int slot) {
    switch (db.Fields[static_cast<std::size_t>(slot)].Type) {
    case FieldType::Checkbox:
        return ValueReading::Checked;
    case FieldType::Date:
    case FieldType::ConditionalExpression:
        return ValueReading::PackedDate;
    case FieldType::Time:
        return ValueReading::PackedTime;
    case FieldType::Expression:
    case FieldType::AdvExpression:
        return valueReadingOfResult(db.Expressions.at(slot).ResultType);
    default:
        return ValueReading::Number;
    }
}

void GetFldVals25(ValueReading reading, const CellReader& cells, std::uint32_t row, Needs needs, std::string& scratch,
                  FieldValues& values) {
    if (needs != Needs::Text)
        readNumbers(reading, cells, row, values);
    if (needs != Needs::Numbers)
        values.textValue = cells.text(row, scratch);
}

AdvancedField::AdvancedField(const model::Tallybook& doc, int field, const platform::Regional& regional,
                             const platform::LocalTime& now)
    : m_expression(expressionOf(doc.CurrDB20, field, {regional, now})),
      m_resultType(doc.CurrDB20.Expressions.at(field).ResultType),
      m_decimals(doc.CurrDB20.Fields[static_cast<std::size_t>(field)].Decimals) {
    for (const AdvancedExpression::FieldUse& use : m_expression.uses())
        m_sources.push_back({use,
                             valueReadingOf(doc.CurrDB20, use.slot),
                             CellReader(doc.grd, model::columnOfSlot(use.slot), regional, now.year),
                             {}});
}

// Above the first record there is nothing: 0 and no text.
AdvancedField::Outcome AdvancedField::evaluate(const RecordRows& record, int number) {
    for (Source& source : m_sources) {
        const auto place = static_cast<std::size_t>(source.use.record);
        FieldValues& values = m_values[static_cast<std::size_t>(source.use.slot)][place];
        if (source.use.record == kCurrentRecord)
            GetFldVals25(source.reading, source.cells, record.row, source.use.needs, source.scratch, values);
        else if (record.above)
            GetFldVals25(source.reading, source.cells, *record.above, source.use.needs, source.scratch, values);
        else
            values = {};
    }
    if (!m_expression.compute(m_values, number + 1, m_resultType, m_decimals, m_result))
        return {kNumberZero, 0};
    return {cellResultOf(m_result, m_resultType), m_result.colour};
}

bool AdvancedField::hasBlocks() const {
    constexpr int kMostDecimals = 3;
    return m_resultType == result::kFloating && m_decimals <= kMostDecimals && m_expression.isOfNumbers() &&
           std::all_of(m_sources.begin(), m_sources.end(),
                       [](const Source& source) { return source.reading == ValueReading::Number; });
}

void AdvancedField::evaluateBlock(std::uint32_t block, NumberLanes& results, model::RowBits& faults) {
    m_lanes.resize(m_sources.size());
    for (std::size_t i = 0; i < m_sources.size(); ++i)
        m_sources[i].cells.numbers(block, m_lanes[i]);
    m_expression.computeLanes(m_lanes, results, faults);
}

void setResultColour(model::WordColumn& colours, std::uint32_t row, std::uint8_t code) {
    if (code == 0)
        colours.erase(row);
    else if (code < kResultColourCount)
        colours.set(row, kResultColours[code]);
}

std::string calcNewExpression25(model::Tallybook& doc, const platform::Services& services, int field, int record) {
    AdvancedField advanced(doc, field, services.regional, services.clock.now());
    const RecordRows rows = recordRows(doc.grd, record);
    const AdvancedField::Outcome outcome = advanced.evaluate(rows, record);
    std::string text;
    appendResult(outcome.cell, services.regional, text);
    setResultColour(doc.grd.colours(model::columnOfSlot(field)), rows.row, outcome.colour);
    doc.grd.touch();
    return text;
}

} // namespace tallybook::calc
