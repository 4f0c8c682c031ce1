#include "core/calc/expressions/DateSums.h"

#include "core/calc/values/Dates.h"

#include <gtest/gtest.h>
#include <string>

namespace tallybook::calc {
namespace {

double day(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return serialOf(Date{year, month, day}, TimeOfDay{hour, minute, second});
}

double clock(int hour, int minute = 0, int second = 0) {
    return serialOf(Date{}, TimeOfDay{hour, minute, second});
}

std::string textOf(const CellResult& result) {
    std::string text;
    appendResult(result, platform::Regional{}, text);
    return text;
}

TEST(CalcDate20, countsBordersFromTheSecondDateToTheFirst) {
    struct Case {
        double first;
        double second;
        const char* interval;
        int expected;
    };
    const Case cases[] = {
        {day(2003, 3, 1), day(2003, 2, 1), "d", 28},       {day(2003, 2, 1), day(2003, 3, 1), "d", -28},
        {day(2003, 2, 1), day(2003, 1, 31), "m", 1},       {day(2003, 1, 31), day(2003, 1, 1), "m", 0},
        {day(2002, 11, 30), day(2003, 1, 1), "m", -2},     {day(2004, 1, 1), day(2003, 12, 31), "yyyy", 1},
        {day(2003, 12, 31), day(2003, 1, 1), "yyyy", 0},   {day(2003, 1, 2, 0, 1), day(2003, 1, 1, 23, 59), "d", 1},
        {day(9999, 12, 31), day(100, 1, 1), "d", 3615899}, // 2958465 + 657434
        {day(2003, 3, 1), day(2003, 2, 1), "q", 0},        {day(2003, 3, 1), day(2003, 2, 1), "", 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CalcDate20(c.first, c.second, c.interval), c.expected)
            << c.first << " " << c.second << " " << c.interval;
}

TEST(CalcTime20, followsTheTableOfIntervals) {
    struct Case {
        const char* name;
        double first;
        double second;
        const char* interval;
        Token operatorToken;
        const char* expected;
    };
    const Case cases[] = {
        {"two times have no sum", clock(1), clock(2), "TT", token::kPlus, "0"},
        {"nor a difference", clock(1), clock(2), "TT", token::kMinus, "0"},
        {"seconds are added", clock(13, 59, 50), 15, "TS", token::kPlus, "2:00:05 PM"},
        {"any T but TT adds seconds", clock(1), 60, "T", token::kPlus, "1:01:00 AM"},
        {"seconds are taken away", clock(13), 1, "TS", token::kMinus, "12:59:59 PM"},
        {"the clock goes round backward", clock(0, 0, 5), 10, "TS", token::kMinus, "11:59:55 PM"},
        {"the clock goes round forward", clock(23), 7200, "TS", token::kPlus, "1:00:00 AM"},
        {"a day of seconds comes back", clock(6), 86400, "TS", token::kPlus, "6:00:00 AM"},
        {"a second and a half rounds up", clock(6), 1.5, "TS", token::kPlus, "6:00:02 AM"},
        {"the day of a moment does not show", day(2003, 3, 5, 13, 5, 9), 1, "TS", token::kPlus, "1:05:10 PM"},
        {"days are added", day(2003, 2, 28), 1, "d", token::kPlus, "3/1/2003"},
        {"days are taken away", day(2003, 3, 1), 1, "d", token::kMinus, "2/28/2003"},
        {"a blank operator adds", day(2003, 2, 28), 1, "d", 0, "3/1/2003"},
        {"times and divided by add", day(2003, 2, 28), 1, "d", token::kTimes, "3/1/2003"},
        {"half a day more than one is two", day(2003, 12, 31), 1.5, "d", token::kPlus, "1/2/2004"},
        {"two and a half are two", day(2003, 12, 31), 2.5, "d", token::kPlus, "1/2/2004"},
        {"two and a half taken away are two", day(2003, 12, 31), 2.5, "d", token::kMinus, "12/29/2003"},
        {"the time of day stays", day(2003, 3, 5, 13, 5, 9), 1, "d", token::kPlus, "3/6/2003 1:05:09 PM"},
        {"a month's end that is not there", day(2003, 1, 31), 1, "m", token::kPlus, "2/28/2003"},
        {"a month's end in a leap year", day(2004, 1, 31), 1, "m", token::kPlus, "2/29/2004"},
        {"months back", day(2003, 3, 31), 1, "m", token::kMinus, "2/28/2003"},
        {"half a month is none", day(2003, 5, 10), 0.5, "m", token::kPlus, "5/10/2003"},
        {"a leap day a year on", day(2004, 2, 29), 1, "yyyy", token::kPlus, "2/28/2005"},
        {"four years on", day(2004, 2, 29), 4, "yyyy", token::kPlus, "2/29/2008"},
        {"the first letter says years", day(2004, 2, 29), 4, "y", token::kMinus, "2/29/2000"},
        {"beyond the calendar", day(9999, 12, 31), 1, "d", token::kPlus, "0"},
        {"before the calendar", day(100, 1, 1), 1, "m", token::kMinus, "0"},
        {"far beyond every calendar", day(2003, 1, 1), 1e300, "yyyy", token::kPlus, "0"},
        {"hours begun", clock(2), clock(1, 59, 59), "h", token::kMinus, "1"},
        {"hours within one", clock(1, 59, 59), clock(1), "h", token::kMinus, "0"},
        {"hours back", clock(1), clock(3), "h", token::kPlus, "-2"},
        {"minutes begun", clock(1, 1), clock(1, 0, 59), "n", token::kMinus, "1"},
        {"seconds back", clock(1), clock(1, 0, 9), "s", token::kMinus, "-9"},
        {"days have no part in hours", day(2003, 3, 5, 13), clock(12), "h", token::kMinus, "1"},
        {"an unknown interval", day(2003, 3, 5), 1, "w", token::kPlus, ""},
        {"no interval", day(2003, 3, 5), 1, "", token::kPlus, ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(textOf(CalcTime20(c.first, c.second, c.interval, c.operatorToken)), c.expected) << c.name;
}

} // namespace
} // namespace tallybook::calc
