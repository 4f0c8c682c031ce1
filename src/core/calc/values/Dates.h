// Dates and times: serials (days from 1899-12-30, the fraction is the time of day), text, calendar arithmetic.
// Proleptic Gregorian, years 100 to 9999.
#pragma once

#include "core/platform/Clock.h"
#include "core/platform/Regional.h"

#include <optional>
#include <string>
#include <string_view>

namespace tallybook::calc {

using platform::LocalTime;
using platform::Regional;

struct Date {
    int year = 1899;
    int month = 12; // 1..12
    int day = 30;   // 1..31
    bool operator==(const Date&) const = default;
};
struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool operator==(const TimeOfDay&) const = default;
};

inline constexpr double kFirstSerial = -657434; // 0100-01-01
inline constexpr double kLastSerial = 2958465;  // 9999-12-31

bool isRealDate(const Date& date); // years 100..9999
int dayNumber(const Date& date);   // whole serial of a real date
Date dateOfDay(int dayNumber);     // of a serial within the range
double serialOf(const Date& date, const TimeOfDay& time);
Date dateOf(double serial);
TimeOfDay timeOf(double serial); // seconds rounded to the nearest
double serialOf(const LocalTime& now);

// The serial of a text that reads as a date, a time or both; nothing otherwise. `thisYear` completes dates
// without one.
std::optional<double> readDate(std::string_view text, const Regional& regional, int thisYear);
// The day that such a text names, whatever time stands beside it; a time alone names none.
std::optional<Date> readDay(std::string_view text, const Regional& regional, int thisYear);
bool isDate(std::string_view text, const Regional& regional, int thisYear);

// As readDate, and otherwise a numeric text within the range is the serial itself.
std::optional<double> toDate(std::string_view text, const Regional& regional, int thisYear);

std::string shortDate(const Date& date, const Regional& regional);
std::string longTime(const TimeOfDay& time, const Regional& regional);
std::string generalDate(double serial, const Regional& regional);

// Picture formats as "hh:mm:ss AM/PM" or "mm/dd/yyyy"; separators stand for themselves.
std::string formatDate(double serial, std::string_view picture, const Regional& regional);

enum class DateUnit { Day, Month, Year, Hour, Minute, Second };

// Adds days, months or years (ties to even); nothing when the result leaves the years 100 to 9999.
std::optional<double> addToDate(double serial, DateUnit unit, double amount);
// Boundaries of the unit crossed from one moment to another; negative when the second is earlier.
long long countBetween(double from, double to, DateUnit unit);
int weekday(double serial); // Sunday 1 .. Saturday 7

} // namespace tallybook::calc
