// What a part of an expression comes to, and the arithmetic of these values that knows nothing of records.
#pragma once

#include "core/calc/values/Dates.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tallybook::calc {

struct ExpressionValue {
    enum class Kind : std::uint8_t {
        Fault,  // there is none
        Number, // number
        Date,   // number: the whole serial; 0 is a blank date
        Time,   // number: seconds since midnight
        Text,   // text, which lies in the record, in the expression or in the evaluation's own texts
    };
    Kind kind = Kind::Fault;
    double number = 0;
    std::string_view text{};
    bool chosen = false;    // a text that counts as a number beside one
    bool fromBlank = false; // a date that a blank one went into
};

constexpr ExpressionValue numberValue(double value) {
    return {.kind = ExpressionValue::Kind::Number, .number = value};
}
constexpr ExpressionValue truthValue(bool holds) {
    return numberValue(holds ? 1 : 0);
}
constexpr ExpressionValue dateValue(double day) {
    return {.kind = ExpressionValue::Kind::Date, .number = day};
}
constexpr ExpressionValue timeValue(double seconds) {
    return {.kind = ExpressionValue::Kind::Time, .number = seconds};
}
constexpr ExpressionValue blankDate() {
    return {.kind = ExpressionValue::Kind::Date, .fromBlank = true};
}
constexpr ExpressionValue chosenText(std::string_view characters) {
    return {.kind = ExpressionValue::Kind::Text, .text = characters, .chosen = true};
}
constexpr ExpressionValue textValue(std::string_view characters) {
    return {.kind = ExpressionValue::Kind::Text, .text = characters};
}

// What a trial goes on with where a made-up value has no meaning: 1 January 2000, noon.
inline constexpr ExpressionValue kSomeNumber = numberValue(1);
inline constexpr ExpressionValue kSomeDate = dateValue(36526);
inline constexpr ExpressionValue kSomeTime = timeValue(43200);

// A text of blanks alone counts as 0, as every blank field does.
inline bool isBlankText(std::string_view characters) {
    return characters.find_first_not_of(' ') == std::string_view::npos;
}

inline constexpr double kSecondsOfDay = 86400;

// A single as the number that people see: the double of its shortest decimal form. The value is finite.
double shownNumber(float value);

// Rounds to digits behind the point (ahead of it for a negative count), halves away from zero. As everywhere, a
// number counts with its 15 significant digits.
double roundShown(double value, int digits);
double floorShown(double value);
double ceilShown(double value);

// Negative, 0 or positive. Numbers that differ by less than a part in 10^14 are equal: 0.1 + 0.2 is 0.3.
inline int compareShown(double a, double b) {
    constexpr double kShownDifference = 1e-14;
    const double larger = std::fabs(a) < std::fabs(b) ? std::fabs(b) : std::fabs(a);
    return std::fabs(a - b) <= larger * kShownDifference ? 0 : (a < b ? -1 : 1);
}

// Dates and times from their parts. What is beyond a part's range carries over: month 13 is
// January of the next year, day 0 the last of the month before, hour 25 is 1. Parts are rounded to whole numbers.
std::optional<double> dateFromParts(double year, double month, double day); // whole serial
std::optional<double> timeFromParts(double hour, double minute, double second);

// A date or time so much later. Nothing when the date leaves the years 100 to 9999, or the amount is beyond counting.
std::optional<double> daysLater(double day, double days);
std::optional<double> secondsLater(double time, double seconds);

// What a packed date is: 0 for a blank one; nothing for one that no calendar has.
std::optional<double> unpackDate(std::int32_t packed);
std::optional<double> unpackTime(std::int32_t packed);

} // namespace tallybook::calc
