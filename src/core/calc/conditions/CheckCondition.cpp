// One comparison of two values, whatever their types.
#include "core/calc/conditions/EvalCond.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"

#include <cmath>
#include <optional>

namespace tallybook::calc {

namespace {

using model::FieldType;
using Kind = CondValue::Kind;

constexpr double kFirstDay = 1462; // the serial of 1904-01-01, from which dates are counted as numbers

enum class Mode : std::uint8_t {
    Values, // as they are
    Text,   // as texts, in upper case
};

bool isNumber(FieldType type) {
    switch (type) {
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::Key:
    case FieldType::AutoIncremental:
        return true;
    default:
        return false;
    }
}

std::optional<double> numeric(const CondValue& value, const CondContext& context) {
    if (value.numeric == CondValue::Numeric::Yes)
        return value.number;
    if (value.kind != Kind::Text || value.numeric == CondValue::Numeric::No)
        return std::nullopt;
    return parseNumber(value.text, context.regional);
}

// The serial of a value that is a date or reads as one.
std::optional<double> serial(const CondValue& value, const CondContext& context) {
    if (value.kind == Kind::Date)
        return value.number;
    if (value.kind != Kind::Text)
        return std::nullopt;
    return readDate(value.text, context.regional, context.now.year);
}

CondValue toNumber(const CondValue& value, const CondContext& context) {
    return CondValue::ofNumber(numeric(value, context).value_or(0));
}

CondValue toDayNumber(const CondValue& value, const CondContext& context) {
    const auto date = serial(value, context);
    return CondValue::ofNumber(date ? std::nearbyint(*date - kFirstDay) : 0);
}

// A time rounds to 0 or 1, noon included in the later half.
CondValue toTimeNumber(const CondValue& value, const CondContext& context) {
    const auto time = serial(value, context);
    return CondValue::ofNumber(time && std::abs(*time - std::trunc(*time)) >= 0.5 ? 1 : 0);
}

Mode convertBesideNumber(CondOperand& right, const CondContext& context) {
    if (right.type == FieldType::Date)
        right.value = toDayNumber(right.value, context);
    else if (right.type == FieldType::Time)
        right.value = toTimeNumber(right.value, context);
    else if (!isNumber(right.type))
        right.value = toNumber(right.value, context);
    return Mode::Values;
}

// A date or a time on the left. Beside whole numbers it keeps its serial; the other numbers meet its count of days,
// or its half of the day.
Mode convertDate(CondOperand& left, CondOperand& right, const CondContext& context) {
    switch (right.type) {
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::AutoIncremental:
    case FieldType::Date:
    case FieldType::Time:
        return Mode::Values;
    default:
        break;
    }
    left.value = left.type == FieldType::Date ? toDayNumber(left.value, context) : toTimeNumber(left.value, context);
    if (right.type != FieldType::Float)
        right.value = toNumber(right.value, context);
    return Mode::Values;
}

Mode convertText(CondOperand& left, CondOperand& right, const CondContext& context) {
    if (right.type == FieldType::Date)
        return Mode::Text;
    if (right.type == FieldType::Time) {
        const auto date = serial(left.value, context);
        left.value = date ? CondValue::ofNumber(*date) : CondValue::ofText({});
        return Mode::Values;
    }
    const auto second = numeric(right.value, context); // first, as a constant's is known
    const auto first = second ? numeric(left.value, context) : std::nullopt;
    if (!first)
        return Mode::Text;
    left.value = CondValue::ofNumber(*first);
    right.value = CondValue::ofNumber(*second);
    return Mode::Values;
}

// Brings two operands together by their types.
Mode convert(CondOperand& left, CondOperand& right, const CondContext& context) {
    if (isNumber(left.type))
        return convertBesideNumber(right, context);
    if (left.type == FieldType::Date || left.type == FieldType::Time)
        return convertDate(left, right, context);
    return convertText(left, right, context);
}

// The text of a value; one that is made lies in `made`.
std::string_view textOf(const CondValue& value, const CondContext& context, std::string& made) {
    if (value.kind == Kind::Number)
        made = decimalText(value.number, context.regional);
    else if (value.kind == Kind::Date)
        made = generalDate(value.number, context.regional);
    else
        return value.text;
    return made;
}

bool isText(const CondValue& value) {
    return value.kind == Kind::Text || value.kind == Kind::Nothing;
}

int signOf(double difference) {
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

// Negative, 0 or positive; nothing when a number meets a text that is none.
std::optional<int> compareValues(const CondValue& left, const CondValue& right, const CondContext& context) {
    if (isText(left) && isText(right))
        return compareText(left.text, right.text, TextCase::Binary);
    const auto first = isText(left) ? numeric(left, context) : left.number;
    const auto second = isText(right) ? numeric(right, context) : right.number;
    return first && second ? std::optional(signOf(*first - *second)) : std::nullopt;
}

std::optional<int> compare(const CondValue& left, const CondValue& right, Mode mode, const CondContext& context) {
    if (mode == Mode::Values)
        return compareValues(left, right, context);
    std::string madeLeft;
    std::string madeRight;
    return compareText(textOf(left, context, madeLeft), textOf(right, context, madeRight), TextCase::Folded);
}

bool ordered(std::uint8_t code, int comparison) {
    switch (code) {
    case '=':
        return comparison == 0;
    case '!':
        return comparison != 0;
    case '<':
        return comparison < 0;
    case 'L':
        return comparison <= 0;
    case '>':
        return comparison > 0;
    default:
        return comparison >= 0; // J
    }
}

bool startsWith(std::string_view text, std::string_view start, TextCase letters) {
    return text.size() >= start.size() && equalText(text.substr(0, start.size()), start, letters);
}

// Only texts that were left as they are can be told apart by their letters' case.
bool holdsText(std::uint8_t code, const CondValue& left, const CondValue& right, Mode mode,
               const CondContext& context) {
    const bool caseSensitive = code == 'H' || code == 'S';
    const TextCase letters = caseSensitive && mode == Mode::Text ? TextCase::Binary : TextCase::Folded;
    std::string madeLeft;
    std::string madeRight;
    const std::string_view text = textOf(left, context, madeLeft);
    const std::string_view part = textOf(right, context, madeRight);
    return code == 'h' || code == 'H' ? findText(text, part, letters) != 0 : startsWith(text, part, letters);
}

} // namespace

bool CheckCondition(std::uint8_t code, const CondOperand& left, const CondOperand& right,
                    const CondContext& context) {
    CondOperand first = left;
    CondOperand second = right;
    const Mode mode = convert(first, second, context);
    switch (code) {
    case '=':
    case '!':
    case '<':
    case 'L':
    case '>':
    case 'J': {
        const auto comparison = compare(first.value, second.value, mode, context);
        return comparison && ordered(code, *comparison);
    }
    case 'h':
    case 'H':
    case 's':
    case 'S':
        return holdsText(code, first.value, second.value, mode, context);
    default:
        return false;
    }
}

} // namespace tallybook::calc
