// The functions of expressions.
#include "core/calc/expressions/ExpressionEvaluator.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tallybook::calc {

namespace {

namespace own = platform::texts;
using Kind = ExpressionValue::Kind;
using Value = ExpressionValue;

} // namespace

Value ExpressionEvaluator::call(const Node& node) {
    switch (node.function) {
    case Function::If: {
        bool holds = false;
        const bool blankBefore = m_blankDate; // what is asked goes into no date
        if (!toTruth(node.first, holds))
            return {};
        m_blankDate = blankBefore;
        const int then = at(node.first).next;
        return evaluate(holds ? then : at(then).next);
    }
    case Function::Sel:
        return choose(node);
    case Function::Sqrt:
        return squareRoot(node);
    case Function::Round:
        return round(node);
    case Function::Date:
    case Function::Time:
        return fromParts(node);
    case Function::Day:
    case Function::Month:
    case Function::Year:
    case Function::Weekday:
        return datePart(node);
    case Function::Hour:
    case Function::Minute:
    case Function::Second:
        return timePart(node);
    default:
        return numberFunction(node);
    }
}

Value ExpressionEvaluator::choose(const Node& node) {
    double index = 0;
    const bool blankBefore = m_blankDate;
    if (!numberAt(node.first, index))
        return {};
    m_blankDate = blankBefore;
    int chosen = at(node.first).next;
    for (double place = 1; place < index && chosen >= 0; ++place)
        chosen = at(chosen).next;
    const bool exists = index >= 1 && std::nearbyint(index) == index && chosen >= 0;
    if (exists)
        return evaluate(chosen);
    if (isTrialOf(at(node.first)))
        return evaluate(at(node.first).next);
    return wrong(own::kNoSuchChoice);
}

Value ExpressionEvaluator::numberFunction(const Node& node) {
    double value = 0;
    if (!numberAt(node.first, value))
        return {};
    switch (node.function) {
    case Function::Abs:
        return numberValue(std::fabs(value));
    case Function::Sign:
        return numberValue(value > 0 ? 1 : (value < 0 ? -1 : 0));
    case Function::Ceil:
        return numberValue(ceilShown(value));
    default:
        return numberValue(floorShown(value));
    }
}

Value ExpressionEvaluator::squareRoot(const Node& node) {
    double value = 0;
    if (!numberAt(node.first, value))
        return {};
    return value < 0 ? failed(node, own::kRootOfNegative, kSomeNumber) : numberValue(std::sqrt(value));
}

Value ExpressionEvaluator::round(const Node& node) {
    constexpr double kMostDigits = 400; // beyond every digit of a double
    double value = 0;
    double digits = 0;
    const int second = at(node.first).next;
    if (!numberAt(node.first, value) || (second >= 0 && !numberAt(second, digits)))
        return {};
    return finite(node, roundShown(value, static_cast<int>(std::clamp(digits, -kMostDigits, kMostDigits))));
}

Value ExpressionEvaluator::fromParts(const Node& node) {
    const int second = at(node.first).next;
    double a = 0;
    double b = 0;
    double c = 0;
    const bool blankBefore = std::exchange(m_blankDate, false);
    if (!numberAt(node.first, a) || !numberAt(second, b) || !numberAt(at(second).next, c))
        return {};
    const bool fromBlank = m_blankDate;
    m_blankDate = fromBlank || blankBefore;
    if (node.function == Function::Date) {
        const auto day = dateFromParts(a, b, c);
        if (!day)
            return failed(node, own::kDateOutOfRange, kSomeDate);
        Value date = dateValue(*day);
        date.fromBlank = fromBlank;
        return date;
    }
    const auto seconds = timeFromParts(a, b, c);
    return seconds ? timeValue(*seconds) : failed(node, own::kNumberTooLarge, kSomeTime);
}

Value ExpressionEvaluator::datePart(const Node& node) {
    Value value = evaluate(node.first);
    if (!toDate(node.first, value))
        return {};
    const Date parts = dateOfDay(static_cast<int>(value.number));
    switch (node.function) {
    case Function::Day:
        return numberValue(parts.day);
    case Function::Month:
        return numberValue(parts.month);
    case Function::Year:
        return numberValue(parts.year);
    default:
        return numberValue(weekday(value.number));
    }
}

Value ExpressionEvaluator::timePart(const Node& node) {
    Value value = evaluate(node.first);
    if (!toTime(node.first, value))
        return {};
    const auto seconds = static_cast<int>(value.number);
    int part = seconds % 60;
    if (node.function == Function::Hour)
        part = seconds / 3600;
    else if (node.function == Function::Minute)
        part = seconds / 60 % 60;
    return numberValue(part);
}

} // namespace tallybook::calc
