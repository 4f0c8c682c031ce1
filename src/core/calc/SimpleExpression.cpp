#include "core/calc/SimpleExpression.h"

#include "core/calc/Conversion.h"
#include "core/calc/DateSums.h"
#include "core/calc/Dates.h"
#include "core/calc/Numbers.h"

#include <cmath>
#include <string_view>

namespace tallybook::calc {

namespace {

using Form = CellResult::Form;

int secondsOfDay(double serial) {
    const TimeOfDay time = timeOf(serial);
    return time.hour * 3600 + time.minute * 60 + time.second;
}

// A constant goes through the form of a Float, whose digits are those of a single.
double constantOf(std::string_view text, const platform::Regional& regional, int thisYear) {
    const std::string checked = checkFormat(model::FieldType::Float, text, regional, thisYear);
    return parseNumber(checked, regional).value_or(0);
}

} // namespace

SimpleExpression::SimpleExpression(const model::Document& doc, int field, const platform::Regional& regional,
                                   const platform::LocalTime& now)
    : m_resultType(doc.CurrDB20.Expressions.at(field).ResultType),
      m_decimals(doc.CurrDB20.Fields[static_cast<std::size_t>(field)].Decimals) {
    const auto& tokens = doc.CurrDB20.Expressions.at(field).Tokens;
    for (std::size_t i = 0; i < kSimpleOperators; ++i)
        m_operators[i] = tokens[2 * i + 1];
    for (std::size_t position = 0; position < 2 * kSimpleOperands && tokens[position] != token::kEnd; position += 2)
        addOperand(doc, field, position, regional, now);
}

// Tokens of no meaning leave their operand without a value and without a kind.
void SimpleExpression::addOperand(const model::Document& doc, int field, std::size_t position,
                                  const platform::Regional& regional, const platform::LocalTime& now) {
    const model::ExprDef& expression = doc.CurrDB20.Expressions.at(field);
    const Token operand = expression.Tokens[position];
    const std::size_t number = position / 2;
    const auto addField = [&](int slot, int ownField, Record record) {
        m_fields.push_back({position, readingOf(doc.CurrDB20, slot, ownField), record,
                            CellReader(doc.grd, model::columnOfSlot(slot), regional, now.year)});
    };
    if (token::isField(operand)) {
        addField(static_cast<int>(operand), field, Record::Current);
    } else if (operand > token::kPreviousRecord) {
        m_operands.set(number, OperandKind::Number, 0); // stays for a slot that is beyond the last one
        const auto slot = static_cast<int>(operand - token::kPreviousRecord);
        if (token::isPreviousField(operand))
            addField(slot, slot, Record::Previous);
    } else if (operand == token::kNumber) {
        m_operands.set(number, OperandKind::Number, constantOf(expression.TokenTexts[position], regional, now.year));
    } else if (operand == token::kToday) {
        m_operands.set(number, OperandKind::Date, serialOf(now));
    } else if (operand == token::kNow) {
        m_operands.set(number, OperandKind::Time, serialOf(now));
    }
}

// What stands above the first record is the number 0, and so is a field above that gives no value.
void SimpleExpression::readOperands(const RecordRows& record) {
    for (const FieldOperand& operand : m_fields) {
        if (operand.record == Record::Current) {
            RetFldVal20(operand.reading, operand.cells, record.row, operand.position, m_operands);
        } else if (record.above && operand.reading != OperandReading::Nothing) {
            RetFldVal20(operand.reading, operand.cells, *record.above, operand.position, m_operands);
        } else {
            m_operands.set(operand.position / 2, OperandKind::Number, 0);
        }
    }
}

CellResult SimpleExpression::evaluate(const RecordRows& record) {
    readOperands(record);
    switch (m_resultType) {
    case result::kFloating:
        return floating();
    case result::kDateAndDays:
        return movedDate("d");
    case result::kDateAndMonths:
        return movedDate("m");
    case result::kDateAndYears:
        return movedDate("yyyy");
    case result::kDays:
        return dateDifference("d");
    case result::kMonths:
        return dateDifference("m");
    case result::kYears:
        return dateDifference("yyyy");
    case result::kTime:
        return movedTime();
    case result::kHours:
        return timeDifference("h");
    case result::kMinutes:
        return timeDifference("n");
    case result::kSeconds:
        return timeDifference("s");
    case result::kHoursMinutesSeconds:
        return duration(Form::HoursMinutesSeconds);
    case result::kHoursMinutes:
        return duration(Form::HoursMinutes);
    default:
        return kNumberZero;
    }
}

// No operator binds closer than another. A blank one drops its operand; a division by 0 is as good as not there.
CellResult SimpleExpression::floating() const {
    double sum = m_operands.NumVals[0];
    for (std::size_t i = 0; i < kSimpleOperators; ++i) {
        const double operand = m_operands.NumVals[i + 1];
        switch (m_operators[i]) {
        case token::kPlus:
            sum += operand;
            break;
        case token::kMinus:
            sum -= operand;
            break;
        case token::kTimes:
            sum *= operand;
            break;
        case token::kDivide:
            if (operand != 0)
                sum /= operand;
            break;
        default:
            break;
        }
    }
    if (m_decimals > 3 || !std::isfinite(sum))
        return kNumberZero;
    return {Form::Number, sum, m_decimals};
}

CellResult SimpleExpression::movedDate(std::string_view interval) const {
    if (m_operands.Kinds[0] != OperandKind::Date || m_operands.Kinds[1] != OperandKind::Number)
        return kNumberZero;
    return CalcTime20(m_operands.DateVals[0], m_operands.NumVals[1], interval, m_operators[0]);
}

CellResult SimpleExpression::dateDifference(std::string_view interval) const {
    if (m_operands.Kinds[0] != OperandKind::Date || m_operands.Kinds[1] != OperandKind::Date)
        return kNumberZero;
    const std::int32_t count = CalcDate20(m_operands.DateVals[0], m_operands.DateVals[1], interval);
    return {Form::Number, static_cast<double>(count)};
}

CellResult SimpleExpression::movedTime() const {
    if (m_operands.Kinds[0] != OperandKind::Time)
        return kNumberZero;
    if (m_operands.Kinds[1] == OperandKind::Time)
        return CalcTime20(m_operands.TimeVals[0], m_operands.TimeVals[1], "TT", m_operators[0]);
    if (m_operands.Kinds[1] == OperandKind::Number)
        return CalcTime20(m_operands.TimeVals[0], m_operands.NumVals[1], "TS", m_operators[0]);
    return kNumberZero;
}

CellResult SimpleExpression::timeDifference(std::string_view interval) const {
    if (m_operands.Kinds[0] != OperandKind::Time || m_operands.Kinds[1] != OperandKind::Time)
        return kNumberZero;
    return CalcTime20(m_operands.TimeVals[0], m_operands.TimeVals[1], interval, m_operators[0]);
}

CellResult SimpleExpression::duration(Form form) const {
    if (m_operands.Kinds[0] != OperandKind::Time || m_operands.Kinds[1] != OperandKind::Time)
        return {};
    const int seconds = secondsOfDay(m_operands.TimeVals[0]) - secondsOfDay(m_operands.TimeVals[1]);
    return seconds < 0 ? CellResult{} : CellResult{form, static_cast<double>(seconds)};
}

std::string calcExpression20(const model::Document& doc, const platform::Services& services, int field, int record) {
    SimpleExpression expression(doc, field, services.regional, services.clock.now());
    std::string text;
    appendResult(expression.evaluate(recordRows(doc.grd, record)), services.regional, text);
    return text;
}

} // namespace tallybook::calc
