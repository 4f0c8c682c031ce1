#include "core/calc/expressions/ExpressionEvaluator.h"

#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/platform/OwnTexts.h"

#include <cmath>
#include <utility>

namespace tallybook::calc {

namespace {

namespace own = platform::texts;
using Kind = ExpressionValue::Kind;
using Value = ExpressionValue;

} // namespace

// A calculated number comes as a single and as a long: where a single has no room for all of its digits, the long
// has.
double calculatedNumber(const FieldValues& values) {
    constexpr float kWholeSingles = 16777216;
    if (std::fabs(values.singleValue) >= kWholeSingles && static_cast<float>(values.longValue) == values.singleValue)
        return values.longValue;
    return shownNumber(values.singleValue);
}

Value ExpressionEvaluator::wrong(std::string_view reason) {
    m_fault = reason;
    return {};
}

Value ExpressionEvaluator::failed(const Node& node, std::string_view reason, Value instead) {
    if (isTrialOf(node))
        return instead;
    return wrong(reason);
}

Value ExpressionEvaluator::finite(const Node& node, double value) {
    if (!std::isfinite(value))
        return failed(node, own::kNumberTooLarge, kSomeNumber);
    return numberValue(value);
}

Value ExpressionEvaluator::evaluate(int place) {
    const Node& node = at(place);
    switch (node.kind) {
    case Node::Kind::Number:
        return numberValue(node.number);
    case Node::Kind::Text:
        return textValue(node.text);
    case Node::Kind::Today:
        return dateValue(node.number);
    case Node::Kind::Now:
        return timeValue(node.number);
    case Node::Kind::PrevIndex:
        return numberValue(static_cast<double>(m_record) - 1);
    case Node::Kind::Field:
        return field(node);
    case Node::Kind::ColourAhead:
    case Node::Kind::ColourBehind:
        return coloured(node);
    case Node::Kind::ColourAlone:
        m_colour = node.colour;
        return chosenText({});
    case Node::Kind::Negate:
        return negate(node);
    case Node::Kind::Not:
        return invert(node);
    case Node::Kind::Add:
        return add(node);
    case Node::Kind::Subtract:
        return subtract(node);
    case Node::Kind::Multiply:
        return multiply(node);
    case Node::Kind::Divide:
        return divide(node);
    case Node::Kind::Binary:
        return binary(node);
    case Node::Kind::Function:
        return call(node);
    }
    return {};
}

// Fields ------------------------------------------------------------------------------------------------------

Value ExpressionEvaluator::field(const Node& node) {
    const FieldValues& values = m_values[node.slot][node.record];
    switch (node.form) {
    case FieldForm::Free:
        return wrong(own::kFreeSlotInExpression);
    case FieldForm::Whole:
        return numberValue(values.longValue);
    case FieldForm::Check:
        return truthValue(values.longValue != 0);
    case FieldForm::Number:
        if (!std::isfinite(values.singleValue))
            return failed(node, own::kNumberTooLarge, kSomeNumber);
        return numberValue(calculatedNumber(values));
    case FieldForm::Date:
        return dateField(values.longValue);
    case FieldForm::Time:
        if (const auto seconds = unpackTime(values.longValue))
            return timeValue(*seconds);
        return failed(node, own::kTextIsNoTime, kSomeTime);
    case FieldForm::DayTime:
        return timeValue(*secondsLater(values.longValue, 0));
    case FieldForm::Text:
        return textValue(values.textValue);
    case FieldForm::Chosen:
        return chosenText(values.textValue);
    case FieldForm::Conditional:
        return conditional(values);
    }
    return {};
}

Value ExpressionEvaluator::dateField(std::int32_t packed) {
    if (packed == 0) {
        m_blankDate = true;
        return blankDate();
    }
    if (const auto day = unpackDate(packed))
        return dateValue(*day);
    return isTrial() ? kSomeDate : wrong(own::kDateOutOfRange);
}

// The text of a Conditional Expression is what its conditions chose: a number, a date or any text.
Value ExpressionEvaluator::conditional(const FieldValues& values) {
    if (const auto numeric = parseNumber(values.textValue, m_settings.regional))
        return numberValue(*numeric);
    if (values.longValue != 0)
        if (const auto day = unpackDate(values.longValue))
            return dateValue(*day);
    return textValue(values.textValue);
}

// Operators ---------------------------------------------------------------------------------------------------

Value ExpressionEvaluator::coloured(const Node& node) {
    if (node.kind == Node::Kind::ColourAhead)
        m_colour = node.colour;
    const Value value = evaluate(node.first);
    if (node.kind == Node::Kind::ColourBehind)
        m_colour = node.colour;
    return value;
}

Value ExpressionEvaluator::negate(const Node& node) {
    double value = 0;
    return numberAt(node.first, value) ? numberValue(0 - value) : Value{};
}

Value ExpressionEvaluator::invert(const Node& node) {
    bool holds = false;
    return toTruth(node.first, holds) ? truthValue(!holds) : Value{};
}

Value ExpressionEvaluator::join(const Value& left, const Value& right) {
    const std::string_view ahead = textOf(left);
    const std::string_view behind = textOf(right);
    std::string& made = m_texts.emplace_front();
    made.reserve(ahead.size() + behind.size());
    made.append(ahead).append(behind);
    return textValue(made);
}

// What was chosen for a field is a number beside a number, as it is where only numbers can stand.
void ExpressionEvaluator::countBeside(Value& value, const Value& other) const {
    if (value.kind != Kind::Text || !value.chosen || other.kind == Kind::Text)
        return;
    if (isBlankText(value.text))
        value = numberValue(0);
    else if (const auto numeric = parseNumber(value.text, m_settings.regional))
        value = numberValue(*numeric);
}

Value ExpressionEvaluator::add(const Node& node) {
    Value left = evaluate(node.first);
    if (left.kind == Kind::Fault)
        return left;
    Value right = evaluate(at(node.first).next);
    if (right.kind == Kind::Fault)
        return right;
    countBeside(left, right);
    countBeside(right, left);
    if (left.kind == Kind::Number && right.kind == Kind::Number)
        return finite(node, left.number + right.number);
    if (left.kind == Kind::Text || right.kind == Kind::Text)
        return join(left, right);
    if (left.kind == Kind::Number)
        std::swap(left, right);
    if (right.kind != Kind::Number)
        return wrong(own::kNumberWanted);
    return later(node, left, right.number);
}

// A text on one side counts as what makes sense beside the other: taken from a date it is a number of days, or else
// a date; a date taken from it makes it one.
bool ExpressionEvaluator::fitForDifference(const Node& node, Value& left, Value& right) {
    const auto isMoment = [](const Value& value) { return value.kind == Kind::Date || value.kind == Kind::Time; };
    const auto fit = [this](int place, Value& value, Kind kind) {
        return kind == Kind::Date ? toDate(place, value) : toTime(place, value);
    };
    const int first = node.first;
    const int second = at(first).next;
    if (left.kind == Kind::Text && isMoment(right))
        return fit(first, left, right.kind);
    if (isMoment(left) && right.kind == Kind::Text && !isBlankText(right.text) &&
        !parseNumber(right.text, m_settings.regional) && isDate(right.text, m_settings.regional, m_settings.thisYear))
        return fit(second, right, left.kind);
    if (left.kind == right.kind && isMoment(left))
        return true;
    return (isMoment(left) || toNumber(first, left)) && toNumber(second, right);
}

Value ExpressionEvaluator::subtract(const Node& node) {
    Value left = evaluate(node.first);
    if (left.kind == Kind::Fault)
        return left;
    Value right = evaluate(at(node.first).next);
    if (right.kind == Kind::Fault || !fitForDifference(node, left, right))
        return {};
    if (left.kind == right.kind)
        return finite(node, left.number - right.number);
    return later(node, left, -right.number);
}

// A date so many days later, or a time so many seconds.
Value ExpressionEvaluator::later(const Node& node, const Value& moment, double amount) {
    if (moment.kind == Kind::Date) {
        const auto day = daysLater(moment.number, amount);
        if (!day)
            return failed(node, own::kDateOutOfRange, kSomeDate);
        Value date = dateValue(*day);
        date.fromBlank = moment.fromBlank;
        return date;
    }
    const auto seconds = secondsLater(moment.number, amount);
    return seconds ? timeValue(*seconds) : failed(node, own::kNumberTooLarge, kSomeTime);
}

Value ExpressionEvaluator::multiply(const Node& node) {
    double left = 0;
    double right = 0;
    if (!numberAt(node.first, left) || !numberAt(at(node.first).next, right))
        return {};
    return finite(node, left * right);
}

Value ExpressionEvaluator::divide(const Node& node) {
    double left = 0;
    double right = 0;
    if (!numberAt(node.first, left) || !numberAt(at(node.first).next, right))
        return {};
    if (right == 0)
        return failed(at(at(node.first).next), own::kDivisionByZero, kSomeNumber);
    return finite(node, left / right);
}

Value ExpressionEvaluator::binary(const Node& node) {
    switch (node.operation) {
    case Operator::Modulo:
    case Operator::Power:
        return arithmetic(node);
    case Operator::And:
    case Operator::Or:
    case Operator::Xor:
        return logical(node);
    default:
        return compare(node);
    }
}

Value ExpressionEvaluator::arithmetic(const Node& node) {
    double left = 0;
    double right = 0;
    if (!numberAt(node.first, left) || !numberAt(at(node.first).next, right))
        return {};
    if (node.operation == Operator::Power) {
        if (left == 0 && right < 0)
            return failed(node, own::kDivisionByZero, kSomeNumber);
        const double power = std::pow(left, right);
        return std::isnan(power) ? failed(node, own::kRootOfNegative, kSomeNumber) : finite(node, power);
    }
    if (right == 0)
        return failed(at(at(node.first).next), own::kDivisionByZero, kSomeNumber);
    return numberValue(std::fmod(left, right));
}

// Both sides are always looked at, so that a colour in either counts.
Value ExpressionEvaluator::logical(const Node& node) {
    bool left = false;
    bool right = false;
    if (!toTruth(node.first, left) || !toTruth(at(node.first).next, right))
        return {};
    switch (node.operation) {
    case Operator::And:
        return truthValue(left && right);
    case Operator::Or:
        return truthValue(left || right);
    default:
        return truthValue(left != right);
    }
}

namespace {

Value outcome(Operator operation, int order) {
    switch (operation) {
    case Operator::Less:
        return truthValue(order < 0);
    case Operator::LessEqual:
        return truthValue(order <= 0);
    case Operator::Greater:
        return truthValue(order > 0);
    case Operator::GreaterEqual:
        return truthValue(order >= 0);
    case Operator::Equal:
        return truthValue(order == 0);
    default:
        return truthValue(order != 0);
    }
}

} // namespace

Value ExpressionEvaluator::compare(const Node& node) {
    const Value left = evaluate(node.first);
    if (left.kind == Kind::Fault)
        return left;
    const Value right = evaluate(at(node.first).next);
    if (right.kind == Kind::Fault)
        return right;
    if (left.kind == Kind::Text || right.kind == Kind::Text)
        return compareTextWith(node, left, right);
    // A number against a date or a time is its day or second: Due = 0 tells a blank date.
    if (left.kind != right.kind && left.kind != Kind::Number && right.kind != Kind::Number)
        return wrong(own::kNotComparable);
    return outcome(node.operation, compareShown(left.number, right.number));
}

// Two texts compare as texts. One text against another kind counts as that kind when it reads so, else both do.
Value ExpressionEvaluator::compareTextWith(const Node& node, const Value& left, const Value& right) {
    const bool textIsLeft = left.kind == Kind::Text;
    const Value& other = textIsLeft ? right : left;
    const std::string_view characters = textIsLeft ? left.text : right.text;
    std::optional<double> read;
    if (other.kind == Kind::Number) {
        read = isBlankText(characters) ? 0 : parseNumber(characters, m_settings.regional);
    } else if (other.kind == Kind::Date || other.kind == Kind::Time) {
        const auto serial = isBlankText(characters) ? std::optional(0.0)
                                                    : readDate(characters, m_settings.regional, m_settings.thisYear);
        if (serial && other.kind == Kind::Date)
            read = dayNumber(dateOf(*serial));
        else if (serial)
            read = std::round(std::fabs(*serial - std::trunc(*serial)) * kSecondsOfDay);
    }
    if (!read)
        return outcome(node.operation, compareText(textOf(left), textOf(right), TextCase::Binary));
    const int order = compareShown(*read, other.number);
    return outcome(node.operation, textIsLeft ? order : -order);
}

} // namespace tallybook::calc
