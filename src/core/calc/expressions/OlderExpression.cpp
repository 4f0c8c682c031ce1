#include "core/calc/expressions/OlderExpression.h"

#include "core/calc/cells/CellResult.h"
#include "core/calc/expressions/OperandList.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"

#include <algorithm>
#include <cmath>

namespace tallybook::calc {

namespace {

using Form = CellResult::Form;

// What has been joined so far. A sum is a date as soon as a date takes part, and a time as soon as a time does.
struct Sum {
    OperandKind kind = OperandKind::None;
    float number = 0;
    double date = 0;
    double time = 0;
};

Sum operandAt(const Operands& operands, std::size_t number) {
    return {operands.Kinds[number], static_cast<float>(operands.NumVals[number]), operands.DateVals[number],
            operands.TimeVals[number]};
}

double asDate(const Sum& sum) {
    return sum.kind == OperandKind::Date ? sum.date : sum.number;
}

void add(Sum& sum, const Sum& operand, int sign) {
    if (sum.kind == OperandKind::Date || operand.kind == OperandKind::Date) {
        sum.date = asDate(sum) + sign * asDate(operand);
        sum.kind = OperandKind::Date;
    } else if (sum.kind == OperandKind::Time || operand.kind == OperandKind::Time) {
        sum.time += sign * operand.time;
        sum.kind = OperandKind::Time;
    } else {
        sum.number += static_cast<float>(sign) * operand.number;
    }
}

// Dates and times have no products. A division by 0 is as good as not there.
void join(Sum& sum, Token operatorToken, const Sum& operand) {
    switch (operatorToken) {
    case token::kOldPlus:
        add(sum, operand, 1);
        break;
    case token::kOldMinus:
        add(sum, operand, -1);
        break;
    case token::kOldTimes:
        sum.number *= operand.number;
        break;
    case token::kOldDivide:
        if (operand.number != 0)
            sum.number /= operand.number;
        break;
    default:
        break;
    }
}

Sum joined(const Operands& operands, const model::ExprDef& expression) {
    Sum sum = operandAt(operands, 0);
    for (std::size_t i = 0; i < kSimpleOperators; ++i)
        join(sum, expression.Tokens[2 * i + 1], operandAt(operands, i + 1));
    return sum;
}

std::string numberZero(const platform::Regional& regional) {
    std::string text;
    appendResult(kNumberZero, regional, text);
    return text;
}

std::string dateText(double date, const platform::Regional& regional) {
    const bool isInCalendar = date >= kFirstSerial && date < kLastSerial + 1;
    return isInCalendar ? shortDate(dateOf(date), regional) : numberZero(regional);
}

// The time of day, also of a sum of several days or below none.
std::string timeText(double time) {
    const TimeOfDay shown = timeOf(time - std::floor(time));
    return std::to_string(shown.hour) + ":" + zeroPadded(static_cast<std::uint64_t>(shown.minute), 2) + ":" +
           zeroPadded(static_cast<std::uint64_t>(shown.second), 2);
}

std::string numberText(float number, int decimals, const platform::Regional& regional) {
    if (decimals > 3)
        return {};
    return std::isfinite(number) ? formatDecimals(number, decimals, regional) : numberZero(regional);
}

bool has(const Operands& operands, OperandKind kind) {
    return std::find(operands.Kinds.begin(), operands.Kinds.end(), kind) != operands.Kinds.end();
}

} // namespace

std::string calcExpression(const model::Tallybook& doc, const platform::Services& services, int field, int record) {
    OperandList list(doc, field, ExpressionAge::Old, services.regional, services.clock.now());
    const Operands& operands = list.read(recordRows(doc.grd, record));
    const Sum sum = joined(operands, doc.CurrDB20.Expressions.at(field));
    if (has(operands, OperandKind::Date))
        return dateText(sum.date, services.regional);
    if (has(operands, OperandKind::Time))
        return timeText(sum.time);
    return numberText(sum.number, doc.CurrDB20.Fields[static_cast<std::size_t>(field)].Decimals, services.regional);
}

} // namespace tallybook::calc
