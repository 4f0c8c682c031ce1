#include "core/calc/Dates.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tallybook::calc {

namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr std::int64_t kDaySeconds = 86400;

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
    constexpr int kDaysTo1899_12_30 = 693899; // from 0000-03-01
    return year * 365 + year / 4 - year / 100 + year / 400 + dayOfYear - kDaysTo1899_12_30;
}

Date dateOfDay(int dayNumber) {
    const int days = dayNumber + 693899;
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
    return dateOfDay(static_cast<int>(floorDiv(secondsOf(serial), kDaySeconds)));
}

TimeOfDay timeOf(double serial) {
    const std::int64_t seconds = secondsOf(serial);
    const auto second = static_cast<int>(seconds - floorDiv(seconds, kDaySeconds) * kDaySeconds);
    return {second / 3600, second / 60 % 60, second % 60};
}

} // namespace tallybook::calc
