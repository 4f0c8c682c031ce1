// Values brought to the kind that a part of an expression, or its field's format, wants.
#include "core/calc/expressions/ExpressionEvaluator.h"
#include "core/calc/values/Numbers.h"
#include "core/platform/OwnTexts.h"

#include <cmath>

namespace tallybook::calc {

namespace {

namespace own = platform::texts;
using Kind = ExpressionValue::Kind;
using Value = ExpressionValue;

// Seconds in the unit of the formats for whole hours, minutes and seconds.
double secondsIn(std::uint8_t resultType) {
    if (resultType == result::kHours)
        return 3600;
    return resultType == result::kMinutes ? 60 : 1;
}

} // namespace

// A blank text is 0, as every blank field is.
bool ExpressionEvaluator::toNumber(int place, Value& value) {
    if (value.kind == Kind::Number)
        return true;
    if (value.kind == Kind::Fault)
        return false;
    if (value.kind != Kind::Text)
        value = wrong(own::kNumberWanted);
    else if (isBlankText(value.text))
        value = numberValue(0);
    else if (const auto numeric = parseNumber(value.text, m_settings.regional))
        value = numberValue(*numeric);
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
    else if (isBlankText(value.text))
        value = blankDate();
    else if (const auto serial = readDate(value.text, m_settings.regional, m_settings.thisYear))
        value = dateValue(dayNumber(dateOf(*serial)));
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
    value = seconds ? timeValue(*seconds) : failed(at(place), own::kNumberTooLarge, kSomeTime);
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
    } else if (isBlankText(value.text)) {
        value = timeValue(0);
    } else if (const auto numeric = parseNumber(value.text, m_settings.regional)) {
        value = numberValue(*numeric);
    } else if (const auto serial = readDate(value.text, m_settings.regional, m_settings.thisYear)) {
        const TimeOfDay read = timeOf(*serial);
        value = timeValue(*timeFromParts(read.hour, read.minute, read.second));
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
    value = seconds >= 0 && seconds < kSecondsOfDay ? numberValue(seconds)
                                                    : failed(at(place), own::kNoDuration, kSomeTime);
    return value.kind != Kind::Fault;
}

bool ExpressionEvaluator::toTruth(int place, bool& holds) {
    Value value = evaluate(place);
    if (value.kind == Kind::Text && !isBlankText(value.text)) {
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
        m_settings.datePattern.append(dateOfDay(static_cast<int>(value.number)), made);
    else if (value.kind == Kind::Time)
        m_settings.timePattern.append(timeOf(value.number / kSecondsOfDay), made);
    else
        made = decimalText(value.number, m_settings.regional);
    return made;
}

bool ExpressionEvaluator::compute(std::uint8_t resultType, std::uint8_t decimals, ExpressionResult& result) {
    const Value value = evaluate(m_tree.root());
    if (value.kind == Kind::Fault || !finish(value, resultType, decimals, result))
        return false;
    result.colour = m_colour;
    return true;
}

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
        if (value.fromBlank) { // no day that anybody meant
            result.form = Form::PlainText;
            result.text.clear();
        }
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
