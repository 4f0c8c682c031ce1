#include "core/calc/values/Dates.h"

#include "core/calc/values/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tallybook::calc {

namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr std::int64_t kDaySeconds = 86400;
constexpr std::int64_t kFirstSecond = static_cast<std::int64_t>(kFirstSerial) * kDaySeconds;
constexpr std::int64_t kLastSecond = (static_cast<std::int64_t>(kLastSerial) + 1) * kDaySeconds - 1;
constexpr int kDaysToSerial0 = 693899; // from 0000-03-01 to 1899-12-30

bool isLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysOfMonth(int year, int month) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : kDays[month - 1];
}

std::int64_t floorDiv(std::int64_t value, std::int64_t divisor) {
    const std::int64_t quotient = value / divisor;
    return value % divisor < 0 ? quotient - 1 : quotient;
}

// Whole seconds from 1899-12-30 00:00. The fraction of a negative serial counts forward from its day's midnight.
std::int64_t secondsOf(double serial) {
    const double day = std::trunc(serial);
    return static_cast<std::int64_t>(day) * kDaySeconds +
           std::llround(std::fabs(serial - day) * static_cast<double>(kDaySeconds));
}

double serialOfSeconds(std::int64_t seconds) {
    const std::int64_t day = floorDiv(seconds, kDaySeconds);
    const double fraction = static_cast<double>(seconds - day * kDaySeconds) / static_cast<double>(kDaySeconds);
    return day < 0 ? static_cast<double>(day) - fraction : static_cast<double>(day) + fraction;
}

std::int64_t dayOf(double serial) {
    return floorDiv(secondsOf(serial), kDaySeconds);
}

// The serial of a moment, when it lies in the years 100 to 9999.
std::optional<double> within(std::int64_t seconds) {
    const bool inside = seconds >= kFirstSecond && seconds <= kLastSecond;
    return inside ? std::optional(serialOfSeconds(seconds)) : std::nullopt;
}

int monthsOf(const Date& date) {
    return date.year * 12 + date.month - 1;
}

int secondsOfUnit(DateUnit unit) {
    switch (unit) {
    case DateUnit::Day:
        return kDaySeconds;
    case DateUnit::Hour:
        return 3600;
    case DateUnit::Minute:
        return 60;
    default:
        return 1;
    }
}

// The same day so many months on, or the month's last when it has none of that number.
std::optional<double> addMonths(double serial, std::int64_t months) {
    Date date = dateOf(serial);
    const std::int64_t count = monthsOf(date) + months;
    if (count < kFirstYear * 12 || count >= (kLastYear + 1) * 12)
        return std::nullopt;
    date.year = static_cast<int>(count / 12);
    date.month = static_cast<int>(count % 12) + 1;
    date.day = std::min(date.day, daysOfMonth(date.year, date.month));
    return serialOf(date, timeOf(serial));
}

} // namespace

bool isRealDate(const Date& date) {
    return date.year >= kFirstYear && date.year <= kLastYear && date.month >= 1 && date.month <= 12 &&
           date.day >= 1 && (date.day <= 28 || date.day <= daysOfMonth(date.year, date.month));
}

// Counts in years that begin with March, so that the leap day is a year's last; 400 years have 146,097 days.
int dayNumber(const Date& date) {
    const int year = date.month > 2 ? date.year : date.year - 1;
    const int month = date.month > 2 ? date.month - 3 : date.month + 9;
    const int dayOfYear = (153 * month + 2) / 5 + date.day - 1;
    return year * 365 + year / 4 - year / 100 + year / 400 + dayOfYear - kDaysToSerial0;
}

Date dateOfDay(int dayNumber) {
    const int days = dayNumber + kDaysToSerial0;
    const int era = days / 146097;
    const int dayOfEra = days % 146097;
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int month = (5 * dayOfYear + 2) / 153;
    Date date;
    date.day = dayOfYear - (153 * month + 2) / 5 + 1;
    date.month = month < 10 ? month + 3 : month - 9;
    date.year = era * 400 + yearOfEra + (date.month <= 2 ? 1 : 0);
    return date;
}

double serialOf(const Date& date, const TimeOfDay& time) {
    return serialOfSeconds(dayNumber(date) * kDaySeconds + time.hour * 3600 + time.minute * 60 + time.second);
}

double serialOf(const LocalTime& now) {
    return serialOf(Date{now.year, now.month, now.day}, TimeOfDay{now.hour, now.minute, now.second});
}

Date dateOf(double serial) {
    return dateOfDay(static_cast<int>(dayOf(serial)));
}

TimeOfDay timeOf(double serial) {
    const std::int64_t seconds = secondsOf(serial);
    const auto second = static_cast<int>(seconds - floorDiv(seconds, kDaySeconds) * kDaySeconds);
    return {second / 3600, second / 60 % 60, second % 60};
}

std::optional<double> toDate(std::string_view text, const Regional& regional, int thisYear) {
    if (const auto date = readDate(text, regional, thisYear))
        return date;
    const auto number = parseNumber(text, regional);
    if (!number || *number < kFirstSerial - 1 || *number > kLastSerial + 1)
        return std::nullopt;
    return within(secondsOf(*number)) ? number : std::nullopt;
}

std::optional<double> addToDate(double serial, DateUnit unit, double amount) {
    constexpr double kBeyondEveryDate = 1e12; // seconds; also keeps the sums within 64 bits
    const double whole = std::nearbyint(amount);
    if (!(std::fabs(whole) < kBeyondEveryDate))
        return std::nullopt;
    const auto count = static_cast<std::int64_t>(whole);
    if (unit == DateUnit::Month)
        return addMonths(serial, count);
    if (unit == DateUnit::Year)
        return addMonths(serial, count * 12);
    return within(secondsOf(serial) + count * secondsOfUnit(unit));
}

long long countBetween(double from, double to, DateUnit unit) {
    if (unit == DateUnit::Month)
        return monthsOf(dateOf(to)) - monthsOf(dateOf(from));
    if (unit == DateUnit::Year)
        return dateOf(to).year - dateOf(from).year;
    const int seconds = secondsOfUnit(unit);
    return floorDiv(secondsOf(to), seconds) - floorDiv(secondsOf(from), seconds);
}

int weekday(double serial) {
    const std::int64_t day = dayOf(serial) + 6; // 1899-12-30 was a Saturday
    return static_cast<int>(day - floorDiv(day, 7) * 7) + 1;
}

} // namespace tallybook::calc
