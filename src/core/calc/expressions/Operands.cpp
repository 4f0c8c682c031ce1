#include "core/calc/expressions/Operands.h"

#include "core/calc/expressions/ExpressionTokens.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"

#include <cmath>
#include <string>
#include <string_view>

namespace tallybook::calc {

namespace {

using model::FieldType;

OperandReading readingOfResult(std::uint8_t resultType) {
    switch (resultType) {
    case result::kDateAndDays:
    case result::kDateAndMonths:
    case result::kDateAndYears:
        return OperandReading::DateResult;
    case result::kTime:
        return OperandReading::TimeResult;
    case result::kHoursMinutesSeconds:
        return OperandReading::HoursMinutesSeconds;
    case result::kHoursMinutes:
        return OperandReading::HoursMinutes;
    case result::kText:
        return OperandReading::Zero;
    default:
        return OperandReading::Number;
    }
}

double wholeDay(double serial) {
    return dayNumber(dateOf(serial));
}

double timeAlone(double serial) {
    return serialOf(Date{}, timeOf(serial));
}

// The number in front of the next colon, which is taken off the text.
double takePart(std::string_view& text) {
    const std::string_view part = text.substr(0, text.find(':'));
    text.remove_prefix(std::min(text.size(), part.size() + 1));
    return val(part);
}

// The numbers between the colons count as they stand, whatever time of day the text reads as.
double secondsOfDuration(const CellReader& cells, std::uint32_t row, OperandReading reading) {
    if (!cells.date(row))
        return 0;
    std::string scratch;
    std::string_view text = cells.text(row, scratch);
    double seconds = takePart(text) * 3600;
    seconds += takePart(text) * 60;
    return reading == OperandReading::HoursMinutesSeconds ? seconds + takePart(text) : seconds;
}

} // namespace

OperandReading readingOf(const model::DatabaseModel& db, int slot, int ownField) {
    switch (db.Fields[static_cast<std::size_t>(slot)].Type) {
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::DBLookup:
    case FieldType::AutoIncremental:
    case FieldType::List:
    case FieldType::RadioButton:
        return OperandReading::Number;
    case FieldType::Checkbox:
        return OperandReading::Checked;
    case FieldType::Date:
        return OperandReading::DateField;
    case FieldType::Time:
        return OperandReading::TimeField;
    case FieldType::ConditionalExpression:
        return OperandReading::Condition;
    case FieldType::Expression:
    case FieldType::AdvExpression:
        return readingOfResult(db.Expressions.at(ownField - 1).ResultType);
    default:
        return OperandReading::Nothing;
    }
}

void RetFldVal20(OperandReading reading, const CellReader& cells, std::uint32_t row, std::size_t position,
                 Operands& operands) {
    const std::size_t number = position / 2;
    switch (reading) {
    case OperandReading::Nothing:
        operands.set(number, OperandKind::None, 0);
        break;
    case OperandReading::Number:
        operands.set(number, OperandKind::Number, cells.number(row).value_or(0));
        break;
    case OperandReading::Checked:
        operands.set(number, OperandKind::Number, cells.isChecked(row) ? 1 : 0);
        break;
    case OperandReading::DateField:
        operands.set(number, OperandKind::Date, wholeDay(cells.toDate(row).value_or(0)));
        break;
    case OperandReading::TimeField:
        if (const auto time = cells.date(row))
            operands.set(number, OperandKind::Time, timeAlone(*time));
        else
            operands.set(number, OperandKind::NoTime, 0);
        break;
    case OperandReading::Condition:
        if (const auto value = cells.number(row))
            operands.set(number, OperandKind::Number, *value);
        else if (const auto date = cells.date(row))
            operands.set(number, OperandKind::Date, wholeDay(*date));
        else
            operands.set(number, OperandKind::Number, 0);
        break;
    case OperandReading::DateResult:
        operands.set(number, OperandKind::Date, cells.toDate(row).value_or(0));
        break;
    case OperandReading::TimeResult:
        operands.set(number, OperandKind::Time, timeAlone(cells.toDate(row).value_or(0)));
        break;
    case OperandReading::HoursMinutesSeconds:
    case OperandReading::HoursMinutes:
        operands.set(number, OperandKind::Number, secondsOfDuration(cells, row, reading));
        break;
    case OperandReading::Zero:
        operands.set(number, OperandKind::Number, 0);
        break;
    }
}

} // namespace tallybook::calc
