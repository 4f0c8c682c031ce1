#include "core/calc/expressions/ExpressionValue.h"

#include "core/calc/values/Decimal.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tallybook::calc {

namespace {

constexpr double kShownDifference = 1e-14;
constexpr int kDoubleDigits = 15;

// Below the limit at most one number with so many decimals lies among those that a single stands for. If one does, it
// is the shortest form.
struct ShortForm {
    float limit;
    double power;
};
constexpr ShortForm kShortForms[] = {{8192, 1000}, {65536, 100}, {524288, 10}};

std::optional<double> shortForm(float value) {
    const float magnitude = std::fabs(value);
    if (std::trunc(value) == value && magnitude <= 16777216)
        return value;
    for (const ShortForm& form : kShortForms) {
        if (magnitude >= form.limit)
            continue;
        const double candidate = std::nearbyint(static_cast<double>(value) * form.power) / form.power;
        if (static_cast<float>(candidate) == value)
            return candidate;
    }
    return std::nullopt;
}

// The whole number that a value shows, if it is one.
std::optional<double> shownWhole(double value) {
    const double whole = std::nearbyint(value);
    if (std::fabs(value - whole) <= std::fabs(value) * kShownDifference)
        return whole;
    return std::nullopt;
}

// Rounding by arithmetic, where the product is far enough from a half for its error not to matter. Both numbers of
// the quotient are exact then, which makes it the nearest to the decimal number.
std::optional<double> roundQuickly(double value, int digits) {
    constexpr double kPowers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
    if (digits < 0 || digits >= static_cast<int>(std::size(kPowers)))
        return std::nullopt;
    const double scaled = std::fabs(value) * kPowers[digits];
    if (!(scaled < 1e12))
        return std::nullopt;
    const double whole = std::floor(scaled);
    const double fromHalf = scaled - whole - 0.5;
    if (std::fabs(fromHalf) < 0.01)
        return std::nullopt;
    const double rounded = (whole + (fromHalf > 0 ? 1 : 0)) / kPowers[digits];
    return value < 0 ? 0 - rounded : rounded;
}

// Parts of dates and times beyond this are no parts of any.
constexpr double kMostCounted = 1e9;

std::optional<double> wholePart(double value) {
    const double whole = std::nearbyint(value);
    if (!(std::fabs(whole) <= kMostCounted))
        return std::nullopt;
    return whole;
}

double positiveRemainder(double value, double divisor) {
    return value - std::floor(value / divisor) * divisor;
}

std::optional<double> inCalendar(double day) {
    if (day < kFirstSerial || day > kLastSerial)
        return std::nullopt;
    return day;
}

} // namespace

double shownNumber(float value) {
    if (const auto quick = shortForm(value))
        return *quick;
    return nearestDouble(shortestDigits(value)).value_or(value);
}

double roundShown(double value, int digits) {
    if (digits >= kDoubleDigits && std::fabs(value) >= 1)
        return value; // all of its digits stand ahead of that place
    if (const auto quick = roundQuickly(value, digits))
        return *quick;
    Decimal number = significantDigits(value, kDoubleDigits);
    roundToPlaces(number, digits);
    return nearestDouble(number).value_or(value);
}

double floorShown(double value) {
    return shownWhole(value).value_or(std::floor(value));
}

double ceilShown(double value) {
    return shownWhole(value).value_or(std::ceil(value));
}

std::optional<double> dateFromParts(double year, double month, double day) {
    const auto years = wholePart(year);
    const auto months = wholePart(month);
    const auto days = wholePart(day);
    if (!years || !months || !days)
        return std::nullopt;
    constexpr double kMonths = 12;
    const Date first{static_cast<int>(*years + std::floor((*months - 1) / kMonths)),
                     static_cast<int>(positiveRemainder(*months - 1, kMonths)) + 1, 1};
    if (!isRealDate(first))
        return std::nullopt;
    return inCalendar(dayNumber(first) + *days - 1);
}

std::optional<double> timeFromParts(double hour, double minute, double second) {
    const auto hours = wholePart(hour);
    const auto minutes = wholePart(minute);
    const auto seconds = wholePart(second);
    if (!hours || !minutes || !seconds)
        return std::nullopt;
    return positiveRemainder(*hours * 3600 + *minutes * 60 + *seconds, kSecondsOfDay);
}

std::optional<double> daysLater(double day, double days) {
    const auto whole = wholePart(days);
    return whole ? inCalendar(day + *whole) : std::nullopt;
}

std::optional<double> secondsLater(double time, double seconds) {
    constexpr double kMostSeconds = 1e15; // whole seconds are exact up to here
    const double sum = time + std::nearbyint(seconds);
    if (!(std::fabs(sum) <= kMostSeconds))
        return std::nullopt;
    return positiveRemainder(sum, kSecondsOfDay);
}

std::optional<double> unpackDate(std::int32_t packed) {
    if (packed == 0)
        return 0;
    const auto bits = static_cast<std::uint32_t>(packed);
    const Date date{static_cast<int>(bits >> 16), static_cast<int>(bits >> 8 & 0xFF), static_cast<int>(bits & 0xFF)};
    if (!isRealDate(date))
        return std::nullopt;
    return dayNumber(date);
}

std::optional<double> unpackTime(std::int32_t packed) {
    const auto bits = static_cast<std::uint32_t>(packed);
    const auto hour = bits >> 16;
    const auto minute = bits >> 8 & 0xFF;
    const auto second = bits & 0xFF;
    if (hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return hour * 3600.0 + minute * 60.0 + second;
}

} // namespace tallybook::calc
