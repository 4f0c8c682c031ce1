#include "core/calc/expressions/SimpleExpression.h"

#include "core/calc/expressions/DateSums.h"
#include "core/calc/values/Dates.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tallybook::calc {

namespace {

using Form = CellResult::Form;

int secondsOfDay(double serial) {
    const TimeOfDay time = timeOf(serial);
    return time.hour * 3600 + time.minute * 60 + time.second;
}

constexpr int kMostDecimals = 3;

// What floating() does, for each row. Loops without a branch, which compilers have done for several rows at once.
void apply(Token operation, const NumberLanes& operands, NumberLanes& sums) {
    const auto each = [&](auto&& combine) {
        std::transform(sums.begin(), sums.end(), operands.begin(), sums.begin(), combine);
    };
    switch (operation) {
    case token::kPlus:
        each([](double sum, double operand) { return sum + operand; });
        break;
    case token::kMinus:
        each([](double sum, double operand) { return sum - operand; });
        break;
    case token::kTimes:
        each([](double sum, double operand) { return sum * operand; });
        break;
    case token::kDivide:
        each([](double sum, double operand) { return operand != 0 ? sum / operand : sum; });
        break;
    default:
        break;
    }
}

bool isOperation(Token code) {
    return code == token::kPlus || code == token::kMinus || code == token::kTimes || code == token::kDivide;
}

} // namespace

SimpleExpression::SimpleExpression(const model::Tallybook& doc, int field, const platform::Regional& regional,
                                   const platform::LocalTime& now)
    : m_resultType(doc.CurrDB20.Expressions.at(field).ResultType),
      m_decimals(doc.CurrDB20.Fields[static_cast<std::size_t>(field)].Decimals),
      m_list(doc, field, ExpressionAge::Present, regional, now) {
    const auto& tokens = doc.CurrDB20.Expressions.at(field).Tokens;
    for (std::size_t i = 0; i < kSimpleOperators; ++i)
        m_operators[i] = tokens[2 * i + 1];
}

CellResult SimpleExpression::evaluate(const RecordRows& record) {
    const Operands& operands = m_list.read(record);
    switch (m_resultType) {
    case result::kFloating:
        return floating(operands);
    case result::kDateAndDays:
        return movedDate(operands, "d");
    case result::kDateAndMonths:
        return movedDate(operands, "m");
    case result::kDateAndYears:
        return movedDate(operands, "yyyy");
    case result::kDays:
        return dateDifference(operands, "d");
    case result::kMonths:
        return dateDifference(operands, "m");
    case result::kYears:
        return dateDifference(operands, "yyyy");
    case result::kTime:
        return movedTime(operands);
    case result::kHours:
        return timeDifference(operands, "h");
    case result::kMinutes:
        return timeDifference(operands, "n");
    case result::kSeconds:
        return timeDifference(operands, "s");
    case result::kHoursMinutesSeconds:
        return duration(operands, Form::HoursMinutesSeconds);
    case result::kHoursMinutes:
        return duration(operands, Form::HoursMinutes);
    default:
        return kNumberZero;
    }
}

bool SimpleExpression::hasBlocks() const {
    return m_resultType == result::kFloating && m_decimals <= kMostDecimals && m_list.isOfNumbers();
}

void SimpleExpression::evaluateBlock(std::uint32_t block, NumberLanes& results) const {
    m_list.numbers(0, block, results);
    NumberLanes operands;
    for (std::size_t i = 0; i < kSimpleOperators; ++i) {
        if (!isOperation(m_operators[i]))
            continue;
        m_list.numbers(i + 1, block, operands);
        apply(m_operators[i], operands, results);
    }
}

// No operator binds closer than another. A blank one drops its operand; a division by 0 is as good as not there.
CellResult SimpleExpression::floating(const Operands& operands) const {
    double sum = operands.NumVals[0];
    for (std::size_t i = 0; i < kSimpleOperators; ++i) {
        const double operand = operands.NumVals[i + 1];
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
    if (m_decimals > kMostDecimals || !std::isfinite(sum))
        return kNumberZero;
    return {Form::Number, sum, m_decimals};
}

CellResult SimpleExpression::movedDate(const Operands& operands, std::string_view interval) const {
    if (operands.Kinds[0] != OperandKind::Date || operands.Kinds[1] != OperandKind::Number)
        return kNumberZero;
    return CalcTime20(operands.DateVals[0], operands.NumVals[1], interval, m_operators[0]);
}

CellResult SimpleExpression::dateDifference(const Operands& operands, std::string_view interval) const {
    if (operands.Kinds[0] != OperandKind::Date || operands.Kinds[1] != OperandKind::Date)
        return kNumberZero;
    const std::int32_t count = CalcDate20(operands.DateVals[0], operands.DateVals[1], interval);
    return {Form::Number, static_cast<double>(count)};
}

CellResult SimpleExpression::movedTime(const Operands& operands) const {
    if (operands.Kinds[0] != OperandKind::Time)
        return kNumberZero;
    if (operands.Kinds[1] == OperandKind::Time)
        return CalcTime20(operands.TimeVals[0], operands.TimeVals[1], "TT", m_operators[0]);
    if (operands.Kinds[1] == OperandKind::Number)
        return CalcTime20(operands.TimeVals[0], operands.NumVals[1], "TS", m_operators[0]);
    return kNumberZero;
}

CellResult SimpleExpression::timeDifference(const Operands& operands, std::string_view interval) const {
    if (operands.Kinds[0] != OperandKind::Time || operands.Kinds[1] != OperandKind::Time)
        return kNumberZero;
    return CalcTime20(operands.TimeVals[0], operands.TimeVals[1], interval, m_operators[0]);
}

CellResult SimpleExpression::duration(const Operands& operands, Form form) const {
    if (operands.Kinds[0] != OperandKind::Time || operands.Kinds[1] != OperandKind::Time)
        return {};
    const int seconds = secondsOfDay(operands.TimeVals[0]) - secondsOfDay(operands.TimeVals[1]);
    return seconds < 0 ? CellResult{} : CellResult{form, static_cast<double>(seconds)};
}

std::string calcExpression20(const model::Tallybook& doc, const platform::Services& services, int field, int record) {
    SimpleExpression expression(doc, field, services.regional, services.clock.now());
    std::string text;
    appendResult(expression.evaluate(recordRows(doc.grd, record)), services.regional, text);
    return text;
}

} // namespace tallybook::calc
