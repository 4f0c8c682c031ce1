#include "core/calc/expressions/DateSums.h"

#include "core/calc/values/Dates.h"
#include "core/calc/values/Decimal.h"

#include <cmath>
#include <optional>

namespace tallybook::calc {

namespace {

using Form = CellResult::Form;

constexpr int kDaySeconds = 86400;
constexpr int kNumberDigits = 15; // of a number that is written as text

std::optional<DateUnit> unitOf(std::string_view interval) {
    switch (interval.empty() ? '\0' : interval.front()) {
    case 'd':
        return DateUnit::Day;
    case 'm':
        return DateUnit::Month;
    case 'y':
        return DateUnit::Year;
    case 'h':
        return DateUnit::Hour;
    case 'n':
        return DateUnit::Minute;
    case 's':
        return DateUnit::Second;
    default:
        return std::nullopt;
    }
}

double secondsOfDay(double serial) {
    const TimeOfDay time = timeOf(serial);
    return time.hour * 3600 + time.minute * 60 + time.second;
}

// The amount travels as text, so a half is a half when its 15 digits say so.
double wholeAmount(double amount) {
    if (amount == std::trunc(amount) || !std::isfinite(amount))
        return amount;
    const auto whole = nearestWhole(significantDigits(amount, kNumberDigits));
    return whole ? static_cast<double>(*whole) : amount;
}

// The clock goes round: ten seconds before 00:00:05 it is 23:59:55.
CellResult addSeconds(double time, double seconds) {
    const double sum = std::fmod(std::floor(secondsOfDay(time) + std::fmod(seconds, kDaySeconds) + 0.5), kDaySeconds);
    if (!std::isfinite(sum))
        return kNumberZero;
    return {Form::TimeOfDay, (sum < 0 ? sum + kDaySeconds : sum) / kDaySeconds};
}

CellResult addUnits(double date, double amount, DateUnit unit) {
    const auto moved = addToDate(date, unit, wholeAmount(amount));
    return moved ? CellResult{Form::Moment, *moved} : kNumberZero;
}

} // namespace

std::int32_t CalcDate20(double firstDate, double secondDate, std::string_view interval) {
    const auto unit = unitOf(interval);
    return unit ? static_cast<std::int32_t>(countBetween(secondDate, firstDate, *unit)) : 0;
}

CellResult CalcTime20(double first, double second, std::string_view interval, Token operatorToken) {
    if (interval == "TT")
        return kNumberZero;
    const double amount = operatorToken == token::kMinus ? -second : second;
    if (interval.starts_with('T'))
        return addSeconds(first, amount);
    const auto unit = unitOf(interval);
    if (!unit)
        return {};
    if (*unit == DateUnit::Day || *unit == DateUnit::Month || *unit == DateUnit::Year)
        return addUnits(first, amount, *unit);
    // Both on the same day: whole days have no part in it.
    const long long count =
        countBetween(secondsOfDay(second) / kDaySeconds, secondsOfDay(first) / kDaySeconds, *unit);
    return {Form::Number, static_cast<double>(count)};
}

} // namespace tallybook::calc
