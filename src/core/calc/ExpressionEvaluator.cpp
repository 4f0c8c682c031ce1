#include "core/calc/ExpressionEvaluator.h"

#include "core/calc/Numbers.h"
#include "core/calc/Text.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tallybook::calc {

namespace {

namespace own = platform::texts;
using Kind = ExpressionValue::Kind;
using Value = ExpressionValue;

constexpr Value number(double value) {
    return {Kind::Number, value, {}};
}
constexpr Value truth(bool holds) {
    return number(holds ? 1 : 0);
}
constexpr Value date(double day) {
    return {Kind::Date, day, {}};
}
constexpr Value time(double seconds) {
    return {Kind::Time, seconds, {}};
}
constexpr Value text(std::string_view characters) {
    return {Kind::Text, 0, characters};
}

// What a trial goes on with where a made-up value has no meaning: 1 January 2000, noon.
constexpr Value kSomeNumber = number(1);
constexpr Value kSomeDate = date(36526);
constexpr Value kSomeTime = time(43200);

bool isBlank(std::string_view characters) {
    return characters.find_first_not_of(' ') == std::string_view::npos;
}

// A calculated number comes as a single and as a long: where a single has no room for all of its digits, the long
// has.
double calculatedNumber(const FieldValues& values) {
    constexpr float kWholeSingles = 16777216;
    if (std::fabs(values.singleValue) >= kWholeSingles && static_cast<float>(values.longValue) == values.singleValue)
        return values.longValue;
    return shownNumber(values.singleValue);
}

Date dateParts(double day) {
    return dateOfDay(static_cast<int>(day));
}

} // namespace

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
    return number(value);
}

Value ExpressionEvaluator::evaluate(int place) {
    const Node& node = at(place);
    switch (node.kind) {
    case Node::Kind::Number:
        return number(node.number);
    case Node::Kind::Text:
        return text(node.text);
    case Node::Kind::Today:
        return date(node.number);
    case Node::Kind::Now:
        return time(node.number);
    case Node::Kind::PrevIndex:
        return number(static_cast<double>(m_record) - 1);
    case Node::Kind::Field:
        return field(node);
    case Node::Kind::ColourAhead:
    case Node::Kind::ColourBehind:
        return coloured(node);
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
        return number(values.longValue);
    case FieldForm::Check:
        return truth(values.longValue != 0);
    case FieldForm::Number:
        if (!std::isfinite(values.singleValue))
            return failed(node, own::kNumberTooLarge, kSomeNumber);
        return number(calculatedNumber(values));
    case FieldForm::Date:
        return dateField(values.longValue);
    case FieldForm::Time:
        if (const auto seconds = unpackTime(values.longValue))
            return time(*seconds);
        return failed(node, own::kTextIsNoTime, kSomeTime);
    case FieldForm::DayTime:
        return time(*secondsLater(values.longValue, 0));
    case FieldForm::Text:
        return text(values.textValue);
    case FieldForm::Conditional:
        return conditional(values);
    }
    return {};
}

Value ExpressionEvaluator::dateField(std::int32_t packed) {
    if (const auto day = unpackDate(packed))
        return date(*day);
    return isTrial() ? kSomeDate : wrong(own::kDateOutOfRange);
}

// The text of a Conditional Expression is what its conditions chose: a number, a date or any text.
Value ExpressionEvaluator::conditional(const FieldValues& values) {
    if (const auto numeric = parseNumber(values.textValue, m_settings.regional))
        return number(*numeric);
    if (values.longValue != 0)
        if (const auto day = unpackDate(values.longValue))
            return date(*day);
    return text(values.textValue);
}

// Conversions -------------------------------------------------------------------------------------------------

// A blank text is 0, as every blank field is.
bool ExpressionEvaluator::toNumber(int place, Value& value) {
    if (value.kind == Kind::Number)
        return true;
    if (value.kind == Kind::Fault)
        return false;
    if (value.kind != Kind::Text)
        value = wrong(own::kNumberWanted);
    else if (isBlank(value.text))
        value = number(0);
    else if (const auto numeric = parseNumber(value.text, m_settings.regional))
        value = number(*numeric);
    else
        value = failed(at(place), own::kTextIsNoNumber, kSomeNumber);
    return value.kind != Kind::Fault;
}

bool ExpressionEvaluator::toDate(int place, Value& value) {
    if (value.kind == Kind::Date)
        return true;
    if (value.kind == Kind::Fault)
        return false;
    if (value.kind != Kind::Text)
        value = wrong(own::kDateWanted);
    else if (isBlank(value.text))
        value = date(0);
    else if (const auto serial = readDate(value.text, m_settings.regional, m_settings.thisYear))
        value = date(dayNumber(dateOf(*serial)));
    else
        value = failed(at(place), own::kTextIsNoDate, kSomeDate);
    return value.kind != Kind::Fault;
}

bool ExpressionEvaluator::toTime(int place, Value& value) {
    if (!toSeconds(place, value))
        return false;
    if (value.kind == Kind::Time)
        return true;
    const auto seconds = secondsLater(0, value.number);
    value = seconds ? time(*seconds) : failed(at(place), own::kNumberTooLarge, kSomeTime);
    return value.kind != Kind::Fault;
}

// A time, or a number that counts seconds.
bool ExpressionEvaluator::toSeconds(int place, Value& value) {
    if (value.kind == Kind::Time || value.kind == Kind::Number)
        return true;
    if (value.kind == Kind::Fault)
        return false;
    if (value.kind != Kind::Text) {
        value = wrong(own::kTimeWanted);
    } else if (isBlank(value.text)) {
        value = time(0);
    } else if (const auto numeric = parseNumber(value.text, m_settings.regional)) {
        value = number(*numeric);
    } else if (const auto serial = readDate(value.text, m_settings.regional, m_settings.thisYear)) {
        const TimeOfDay read = timeOf(*serial);
        value = time(*timeFromParts(read.hour, read.minute, read.second));
    } else {
        value = failed(at(place), own::kTextIsNoTime, kSomeTime);
    }
    return value.kind != Kind::Fault;
}

// Seconds that are shown as hours, minutes and seconds: files have no room for a day.
bool ExpressionEvaluator::toDuration(int place, Value& value) {
    if (!toSeconds(place, value))
        return false;
    const double seconds = std::nearbyint(value.number);
    value =
        seconds >= 0 && seconds < kSecondsOfDay ? number(seconds) : failed(at(place), own::kNoDuration, kSomeTime);
    return value.kind != Kind::Fault;
}

bool ExpressionEvaluator::toTruth(int place, bool& holds) {
    Value value = evaluate(place);
    if (value.kind == Kind::Text && !isBlank(value.text)) {
        if (const auto read = toBoolean(value.text, m_settings.regional)) {
            holds = *read;
            return true;
        }
        holds = true;
        return failed(at(place), own::kTextIsNoCondition, kSomeNumber).kind != Kind::Fault;
    }
    if (!toNumber(place, value))
        return false;
    holds = value.number != 0;
    return true;
}

bool ExpressionEvaluator::numberAt(int place, double& result) {
    Value value = evaluate(place);
    if (!toNumber(place, value))
        return false;
    result = value.number;
    return true;
}

std::string_view ExpressionEvaluator::textOf(const Value& value) {
    if (value.kind == Kind::Text)
        return value.text;
    std::string& made = m_texts.emplace_front();
    if (value.kind == Kind::Date)
        m_settings.datePattern.append(dateParts(value.number), made);
    else if (value.kind == Kind::Time)
        m_settings.timePattern.append(timeOf(value.number / kSecondsOfDay), made);
    else
        made = decimalText(value.number, m_settings.regional);
    return made;
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
    return numberAt(node.first, value) ? number(0 - value) : Value{};
}

Value ExpressionEvaluator::invert(const Node& node) {
    bool holds = false;
    return toTruth(node.first, holds) ? truth(!holds) : Value{};
}

Value ExpressionEvaluator::join(const Value& left, const Value& right) {
    const std::string_view ahead = textOf(left);
    const std::string_view behind = textOf(right);
    std::string& made = m_texts.emplace_front();
    made.reserve(ahead.size() + behind.size());
    made.append(ahead).append(behind);
    return text(made);
}

Value ExpressionEvaluator::add(const Node& node) {
    Value left = evaluate(node.first);
    if (left.kind == Kind::Fault)
        return left;
    Value right = evaluate(at(node.first).next);
    if (right.kind == Kind::Fault)
        return right;
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
    if (isMoment(left) && right.kind == Kind::Text && !isBlank(right.text) &&
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
        return day ? date(*day) : failed(node, own::kDateOutOfRange, kSomeDate);
    }
    const auto seconds = secondsLater(moment.number, amount);
    return seconds ? time(*seconds) : failed(node, own::kNumberTooLarge, kSomeTime);
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
    return number(std::fmod(left, right));
}

// Both sides are always looked at, so that a colour in either counts.
Value ExpressionEvaluator::logical(const Node& node) {
    bool left = false;
    bool right = false;
    if (!toTruth(node.first, left) || !toTruth(at(node.first).next, right))
        return {};
    switch (node.operation) {
    case Operator::And:
        return truth(left && right);
    case Operator::Or:
        return truth(left || right);
    default:
        return truth(left != right);
    }
}

namespace {

Value outcome(Operator operation, int order) {
    switch (operation) {
    case Operator::Less:
        return truth(order < 0);
    case Operator::LessEqual:
        return truth(order <= 0);
    case Operator::Greater:
        return truth(order > 0);
    case Operator::GreaterEqual:
        return truth(order >= 0);
    case Operator::Equal:
        return truth(order == 0);
    default:
        return truth(order != 0);
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
        read = isBlank(characters) ? 0 : parseNumber(characters, m_settings.regional);
    } else if (other.kind == Kind::Date || other.kind == Kind::Time) {
        const auto serial =
            isBlank(characters) ? std::optional(0.0) : readDate(characters, m_settings.regional, m_settings.thisYear);
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

// Functions ---------------------------------------------------------------------------------------------------

Value ExpressionEvaluator::call(const Node& node) {
    switch (node.function) {
    case Function::If: {
        bool holds = false;
        if (!toTruth(node.first, holds))
            return {};
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
    if (!numberAt(node.first, index))
        return {};
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
        return number(std::fabs(value));
    case Function::Sign:
        return number(value > 0 ? 1 : (value < 0 ? -1 : 0));
    case Function::Ceil:
        return number(ceilShown(value));
    default:
        return number(floorShown(value));
    }
}

Value ExpressionEvaluator::squareRoot(const Node& node) {
    double value = 0;
    if (!numberAt(node.first, value))
        return {};
    return value < 0 ? failed(node, own::kRootOfNegative, kSomeNumber) : number(std::sqrt(value));
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
    if (!numberAt(node.first, a) || !numberAt(second, b) || !numberAt(at(second).next, c))
        return {};
    if (node.function == Function::Date) {
        const auto day = dateFromParts(a, b, c);
        return day ? date(*day) : failed(node, own::kDateOutOfRange, kSomeDate);
    }
    const auto seconds = timeFromParts(a, b, c);
    return seconds ? time(*seconds) : failed(node, own::kNumberTooLarge, kSomeTime);
}

Value ExpressionEvaluator::datePart(const Node& node) {
    Value value = evaluate(node.first);
    if (!toDate(node.first, value))
        return {};
    const Date parts = dateParts(value.number);
    switch (node.function) {
    case Function::Day:
        return number(parts.day);
    case Function::Month:
        return number(parts.month);
    case Function::Year:
        return number(parts.year);
    default:
        return number(weekday(value.number));
    }
}

Value ExpressionEvaluator::timePart(const Node& node) {
    Value value = evaluate(node.first);
    if (!toTime(node.first, value))
        return {};
    const auto seconds = static_cast<int>(value.number);
    switch (node.function) {
    case Function::Hour:
        return number(seconds / 3600);
    case Function::Minute:
        return number(seconds / 60 % 60);
    default:
        return number(seconds % 60);
    }
}

// Results -----------------------------------------------------------------------------------------------------

bool ExpressionEvaluator::compute(std::uint8_t resultType, std::uint8_t decimals, ExpressionResult& result) {
    const Value value = evaluate(m_tree.root());
    if (value.kind == Kind::Fault || !finish(value, resultType, decimals, result))
        return false;
    result.colour = m_colour;
    return true;
}

namespace {

// Seconds in the unit of the formats for whole hours, minutes and seconds.
double secondsIn(std::uint8_t resultType) {
    if (resultType == result::kHours)
        return 3600;
    return resultType == result::kMinutes ? 60 : 1;
}

} // namespace

bool ExpressionEvaluator::finish(const Value& found, std::uint8_t resultType, std::uint8_t decimals,
                                 ExpressionResult& result) {
    using Form = ExpressionResult::Form;
    constexpr std::uint8_t kMostDecimals = 3;
    Value value = found;
    const int root = m_tree.root();
    result.decimals = 0;
    switch (resultType) {
    case result::kDateAndDays:
    case result::kDateAndMonths:
    case result::kDateAndYears:
        result.form = Form::Date;
        result.value = toDate(root, value) ? value.number : 0;
        break;
    case result::kTime:
        result.form = Form::Time;
        result.value = toTime(root, value) ? value.number : 0;
        break;
    case result::kHours:
    case result::kMinutes:
    case result::kSeconds:
        result.form = Form::Number;
        result.value = toSeconds(root, value) ? std::trunc(value.number / secondsIn(resultType)) : 0;
        break;
    case result::kHoursMinutesSeconds:
    case result::kHoursMinutes:
        result.form = Form::Duration;
        result.value = toDuration(root, value) ? value.number : 0;
        break;
    case result::kText:
        result.form = Form::PlainText;
        result.text = textOf(value);
        break;
    default:
        // More digits than the file's formats know leave nothing to be shown.
        result.form = Form::Number;
        result.decimals = decimals <= kMostDecimals ? decimals : 0;
        result.value = toNumber(root, value) && decimals <= kMostDecimals ? value.number : 0;
    }
    return value.kind != Kind::Fault;
}

} // namespace tallybook::calc
