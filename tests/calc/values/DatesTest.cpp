#include "core/calc/values/Dates.h"

#include "support/Regions.h"

#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <utility>

namespace tallybook::calc {
namespace {

constexpr int kThisYear = 2003;

struct SerialCase {
    double serial;
    Date date;
    TimeOfDay time;
};

TEST(Dates, countsDaysFromTheEndOf1899) {
    const SerialCase cases[] = {
        {0, {1899, 12, 30}, {}},
        {2, {1900, 1, 1}, {}},
        {-1.25, {1899, 12, 29}, {6, 0, 0}},
        {-0.25, {1899, 12, 30}, {6, 0, 0}},
        {0.25, {1899, 12, 30}, {6, 0, 0}},
        {-657434, {100, 1, 1}, {}},
        {2958465, {9999, 12, 31}, {}},
        {1462, {1904, 1, 1}, {}},
        {25569, {1970, 1, 1}, {}},
        {37623.5, {2003, 1, 2}, {12, 0, 0}},
        {37623.9999999, {2003, 1, 3}, {}}, // the last half second belongs to the next day
    };
    for (const SerialCase& c : cases) {
        EXPECT_EQ(dateOf(c.serial), c.date) << c.serial;
        EXPECT_EQ(timeOf(c.serial), c.time) << c.serial;
    }
    EXPECT_EQ(serialOf({1899, 12, 29}, {6, 0, 0}), -1.25);
    EXPECT_EQ(serialOf({2003, 1, 2}, {12, 0, 0}), 37623.5);
    EXPECT_EQ(serialOf(platform::LocalTime{2003, 1, 2, 12, 0, 0}), 37623.5);
}

TEST(Dates, bringsEveryDayThereAndBack) {
    Date before = dateOfDay(-657434);
    for (int day = -657433; day <= 2958465; ++day) {
        const Date date = dateOfDay(day);
        ASSERT_TRUE(isRealDate(date)) << day;
        ASSERT_EQ(dayNumber(date), day);
        ASSERT_LT(std::tie(before.year, before.month, before.day), std::tie(date.year, date.month, date.day)) << day;
        before = date;
    }
}

TEST(Dates, knowsTheCalendar) {
    EXPECT_TRUE(isRealDate({2004, 2, 29}));
    EXPECT_TRUE(isRealDate({2000, 2, 29}));
    for (const Date& date :
         {Date{2003, 2, 29}, Date{1900, 2, 29}, Date{2003, 4, 31}, Date{2003, 1, 0}, Date{2003, 1, 32},
          Date{2003, 0, 1}, Date{2003, 13, 1}, Date{99, 1, 1}, Date{10000, 1, 1}})
        EXPECT_FALSE(isRealDate(date)) << date.year << ' ' << date.month << ' ' << date.day;
}

// A date with its time as general text in one form, or "no".
std::string read(const char* text, const Regional& regional) {
    const auto serial = readDate(text, regional, kThisYear);
    EXPECT_EQ(isDate(text, regional, kThisYear), serial.has_value());
    return serial ? formatDate(*serial, "yyyy-mm-dd hh:mm:ss", regional) : "no";
}

std::string day(const char* text) {
    return std::string(text) == "no" ? text : std::string(text) + " 00:00:00";
}

struct RegionCase {
    const char* text;
    const char* american;
    const char* british;
    const char* continental;
};

TEST(Dates, readsNumbersInTheOrderOfTheRegion) {
    const RegionCase cases[] = {
        {"1/2/2003", "2003-01-02", "2003-02-01", "2003-02-01"},
        {"01-02-2003", "2003-01-02", "2003-02-01", "2003-02-01"},
        {"1 2 03", "2003-01-02", "2003-02-01", "2003-02-01"},
        {"13/1/2003", "2003-01-13", "2003-01-13", "2003-01-13"},
        {"13/1/03", "2003-01-13", "2003-01-13", "2003-01-13"},
        {"31/12/99", "1999-12-31", "1999-12-31", "1999-12-31"},
        {"12/31/99", "1999-12-31", "1999-12-31", "1999-12-31"},
        {"2003-01-02", "2003-01-02", "2003-01-02", "2003-01-02"},
        {"2003/1/2", "2003-01-02", "2003-01-02", "2003-01-02"},
        {"35/1/2", "1935-01-02", "1935-01-02", "1935-01-02"},
        {"2-Jan-03", "2003-01-02", "2003-01-02", "2003-01-02"},
        {"1.2.2003", "no", "no", "2003-02-01"},
        {"1.2.2003 0:00", "no", "no", "2003-02-01"},
        {"1/1/29", "2029-01-01", "2029-01-01", "2029-01-01"},
        {"1/1/30", "1930-01-01", "1930-01-01", "1930-01-01"},
        {"5/6", "2003-05-06", "2003-06-05", "2003-06-05"},
        {"20/6", "2003-06-20", "2003-06-20", "2003-06-20"},
        {"2/2005", "2005-02-01", "2005-02-01", "2005-02-01"},
        {"2005/2", "2005-02-01", "2005-02-01", "2005-02-01"},
        {"2/35", "1935-02-01", "1935-02-01", "1935-02-01"},
        {"2/30", "no", "no", "no"},
    };
    for (const RegionCase& c : cases) {
        EXPECT_EQ(read(c.text, test::us()), day(c.american)) << c.text;
        EXPECT_EQ(read(c.text, test::uk()), day(c.british)) << c.text;
        EXPECT_EQ(read(c.text, test::german()), day(c.continental)) << c.text;
    }
}

TEST(Dates, takesAPointForTimesUnlessTheRegionsDatesHaveIt) {
    const RegionCase cases[] = {
        {"1.2.03", "1899-12-30 01:02:03", "1899-12-30 01:02:03", "2003-02-01 00:00:00"},
        {"12.30", "1899-12-30 12:30:00", "1899-12-30 12:30:00", "2003-12-30 00:00:00"},
        {"2.5", "1899-12-30 02:05:00", "1899-12-30 02:05:00", "2003-05-02 00:00:00"},
    };
    for (const RegionCase& c : cases) {
        EXPECT_EQ(read(c.text, test::us()), c.american) << c.text;
        EXPECT_EQ(read(c.text, test::uk()), c.british) << c.text;
        EXPECT_EQ(read(c.text, test::german()), c.continental) << c.text;
    }
}

TEST(Dates, triesYearFirstWhereTheRegionHasIt) {
    EXPECT_EQ(read("3-4-5", test::swedish()), day("2003-04-05"));
    EXPECT_EQ(read("3/14/05", test::swedish()), day("2005-03-14"));
    EXPECT_EQ(read("14/13/05", test::swedish()), "no");
    EXPECT_EQ(read("13/14/05", test::swedish()), "no");
    EXPECT_EQ(read("30/4/2005", test::swedish()), day("2005-04-30"));
    EXPECT_EQ(read("5-6", test::swedish()), day("2003-05-06"));
}

struct MomentCase {
    const char* text;
    const char* moment;
};

TEST(Dates, readsTheSameInEveryRegion) {
    const MomentCase cases[] = {
        {"January 2, 2003", "2003-01-02 00:00:00"},
        {"2/Jan/2003", "2003-01-02 00:00:00"},
        {"2 jan. 2003", "2003-01-02 00:00:00"},
        {"2JAN2003", "2003-01-02 00:00:00"},
        {"2003 Jan 2", "2003-01-02 00:00:00"},
        {"Jan 2 03", "2003-01-02 00:00:00"},
        {"Jan 2003", "2003-01-01 00:00:00"},
        {"Jan 35", "1935-01-01 00:00:00"},
        {"Jan 31", "2003-01-31 00:00:00"},
        {"2 May", "2003-05-02 00:00:00"},
        {"2/29/2004", "2004-02-29 00:00:00"},
        {" 2/29/2004 ", "2004-02-29 00:00:00"},
        {"2 / 29 / 2004", "2004-02-29 00:00:00"},
        {"2/29/2003", "no"},
        {"02/29/03", "no"},
        {"31 Feb 2003", "no"},
        {"Feb 29", "no"},
        {"7 PM", "1899-12-30 19:00:00"},
        {"7pm", "1899-12-30 19:00:00"},
        {"7 p", "1899-12-30 19:00:00"},
        {"7 a", "1899-12-30 07:00:00"},
        {"12:00 AM", "1899-12-30 00:00:00"},
        {"12:30 PM", "1899-12-30 12:30:00"},
        {"0:30 PM", "1899-12-30 12:30:00"},
        {"13:00 PM", "1899-12-30 13:00:00"},
        {"13:00 AM", "1899-12-30 13:00:00"},
        {"7:5:3", "1899-12-30 07:05:03"},
        {"7 : 5 : 3", "1899-12-30 07:05:03"},
        {"23:59:59", "1899-12-30 23:59:59"},
        {"7 PM 2003-01-02", "2003-01-02 19:00:00"},
        {"2003-01-02 7 PM", "2003-01-02 19:00:00"},
        {"12:30 Jan 2, 2003", "2003-01-02 12:30:00"},
        {"Jan 2, 2003 12:30:05 AM", "2003-01-02 00:30:05"},
        {"1/2/2003 12", "no"},
        {"24:00", "no"},
        {"12:60", "no"},
        {"12:30:60", "no"},
        {"1:2:3:4", "no"},
        {"123:30", "no"},
        {"7", "no"},
        {"0", "no"},
        {"36526", "no"},
        {"-1", "no"},
        {"1,000", "no"},
        {"20030102", "no"},
        {"1/2/", "no"},
        {"1//2/2003", "no"},
        {"/1/2", "no"},
        {"1/0/2003", "no"},
        {"1/2,2003", "no"},
        {"1/2/3/4", "no"},
        {"Sun 2 Jan 2000", "no"},
        {"Jan", "no"},
        {"Jan Feb 2", "no"},
        {"Jan,, 2", "no"},
        {"Januar1 2", "no"},
        {"True", "no"},
        {"PM", "no"},
        {"2003-01-02T12:30", "no"},
        {"12:30:15.5", "no"},
        {"7 PM 1/2/2003 8 PM", "no"},
        {"1/1/10000", "no"},
        {"1/1/099", "no"},
        {"001/1/2003", "no"},
        {"1/2/2003;", "no"},
        {"(1/2/2003)", "no"},
        {"", "no"},
        {"  ", "no"},
    };
    for (const MomentCase& c : cases)
        for (const auto& region : {test::us(), test::uk(), test::german()})
            EXPECT_EQ(read(c.text, region), c.moment) << c.text << " in " << region.shortDate;
}

TEST(Dates, readsADateAndATimeAsOneSerial) {
    EXPECT_NEAR(*readDate("1/2/2003 7 PM", test::us(), kThisYear), 37623.79166667, 1e-8);
    EXPECT_NEAR(*readDate("7 PM 1/2/2003", test::us(), kThisYear), 37623.79166667, 1e-8);
}

TEST(Dates, readsTheRegionsOwnWords) {
    platform::Regional region = test::uk();
    region.monthNames[2] = "M\xE4rz";
    region.monthAbbrevs[2] = "M\xE4r.";
    region.am = "a.m.";
    region.pm = "p. m.";
    EXPECT_EQ(read("5 m\xC4rz 2003", region), day("2003-03-05"));
    EXPECT_EQ(read("5 M\xE4r. 2003", region), day("2003-03-05"));
    EXPECT_EQ(read("5 March 2003", region), day("2003-03-05"));
    EXPECT_EQ(read("7:30 a.m.", region), "1899-12-30 07:30:00");
    EXPECT_EQ(read("7:30 P. M.", region), "1899-12-30 19:30:00");
    EXPECT_EQ(read("7:30 pm", region), "1899-12-30 19:30:00");
    EXPECT_EQ(read("7:30 p", region), "1899-12-30 19:30:00");
}

TEST(Dates, readsWhatItWrites) {
    platform::Regional blank = test::us();
    blank.shortDate = "d MM yyyy";
    blank.dateOrder = platform::DateOrder::DMY;
    blank.dateSeparator = ' ';
    for (const auto& region : {test::us(), test::uk(), test::german(), test::swedish(), blank})
        for (int number = -657434; number < 2958465; number += 997) {
            const Date date = dateOfDay(number);
            const TimeOfDay time{(number & 0xFFF) % 24, (number & 0xFFFF) % 60, (number & 0xFF) % 60};
            ASSERT_EQ(readDate(shortDate(date, region), region, kThisYear), number) << shortDate(date, region);
            ASSERT_EQ(timeOf(*readDate(longTime(time, region), region, kThisYear)), time) << longTime(time, region);
            const double serial = serialOf(date, time);
            ASSERT_EQ(readDate(generalDate(serial, region), region, kThisYear), serial)
                << generalDate(serial, region);
        }
}

TEST(Dates, takesANumberForASerialWhereADateIsWanted) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"36526", "1/1/2000", "12:00:00 AM"},       {"0", "12/30/1899", "12:00:00 AM"},
        {"12:30", "12/30/1899", "12:30:00 PM"},     {"0.25", "12/30/1899", "12:25:00 AM"},
        {"1/2/2003", "1/2/2003", "12:00:00 AM"},    {"930", "7/18/1902", "12:00:00 AM"},
        {"-1", "12/29/1899", "12:00:00 AM"},        {"37623.5", "1/2/2003", "12:00:00 PM"},
        {"2958465.5", "12/31/9999", "12:00:00 PM"},
    };
    for (const auto& [text, date, time] : cases) {
        const auto serial = toDate(text, test::us(), kThisYear);
        ASSERT_TRUE(serial) << text;
        EXPECT_EQ(shortDate(dateOf(*serial), test::us()), date) << text;
        EXPECT_EQ(longTime(timeOf(*serial), test::us()), time) << text;
    }
    for (const char* text : {"abc", "", "2958466", "-657435", "1e300", "-1e300", "2958465.9999999", "13/32/2003"})
        EXPECT_EQ(toDate(text, test::us(), kThisYear), std::nullopt) << text;
}

struct OutputCase {
    double serial;
    const char* date;
    const char* time;
    const char* general;
};

TEST(Dates, writesTheThreeForms) {
    const OutputCase cases[] = {
        {37623.5, "1/2/2003", "12:00:00 PM", "1/2/2003 12:00:00 PM"},
        {37623, "1/2/2003", "12:00:00 AM", "1/2/2003"},
        {0.5, "12/30/1899", "12:00:00 PM", "12:00:00 PM"},
        {0, "12/30/1899", "12:00:00 AM", "12:00:00 AM"},
        {-1.25, "12/29/1899", "6:00:00 AM", "12/29/1899 6:00:00 AM"},
    };
    for (const OutputCase& c : cases) {
        EXPECT_EQ(shortDate(dateOf(c.serial), test::us()), c.date);
        EXPECT_EQ(longTime(timeOf(c.serial), test::us()), c.time);
        EXPECT_EQ(generalDate(c.serial, test::us()), c.general);
    }
    EXPECT_EQ(generalDate(37623.5, test::german()), "02.01.2003 12:00:00");
    EXPECT_EQ(generalDate(37623.5, test::swedish()), "2003-01-02 12:00:00");
}

TEST(Dates, writesByPictures) {
    const double afternoon = serialOf({2003, 3, 5}, {13, 5, 9});
    const double night = serialOf({}, {0, 5, 9});
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"mm/dd/yyyy", "03/05/2003", "12/30/1899"},     {"DD/MMM/YYYY", "05/Mar/2003", "30/Dec/1899"},
        {"hh:mm:ss", "13:05:09", "00:05:09"},           {"hh:mm:ss AM/PM", "01:05:09 PM", "12:05:09 AM"},
        {"h:mm:ss AM/PM", "1:05:09 PM", "12:05:09 AM"}, {"hhmmss", "130509", "000509"},
        {"d mmmm yy", "5 March 03", "30 December 99"},  {"m n s", "3 5 9", "12 5 9"},
        {"hh-nn mm", "13-05 03", "00-05 12"},           {"h:m", "13:5", "0:5"},
        {"yyyymmdd", "20030305", "18991230"},
    };
    for (const auto& [picture, day, early] : cases) {
        EXPECT_EQ(formatDate(afternoon, picture, test::us()), day) << picture;
        EXPECT_EQ(formatDate(night, picture, test::us()), early) << picture;
        EXPECT_EQ(formatDate(afternoon, picture, test::german()), day) << picture;
    }
}

struct AddCase {
    Date from;
    double amount;
    DateUnit unit;
    Date gives;
};

TEST(Dates, addsDaysMonthsAndYears) {
    const AddCase cases[] = {
        {{2003, 1, 31}, 1, DateUnit::Month, {2003, 2, 28}},    {{2004, 1, 31}, 1, DateUnit::Month, {2004, 2, 29}},
        {{2003, 3, 31}, -1, DateUnit::Month, {2003, 2, 28}},   {{2004, 2, 29}, 1, DateUnit::Year, {2005, 2, 28}},
        {{2004, 2, 29}, 4, DateUnit::Year, {2008, 2, 29}},     {{2003, 12, 31}, 1.5, DateUnit::Day, {2004, 1, 2}},
        {{2003, 12, 31}, 2.5, DateUnit::Day, {2004, 1, 2}},    {{2003, 5, 10}, 0.5, DateUnit::Month, {2003, 5, 10}},
        {{2003, 1, 15}, -13, DateUnit::Month, {2001, 12, 15}}, {{1900, 1, 1}, -3, DateUnit::Day, {1899, 12, 29}},
    };
    for (const AddCase& c : cases) {
        const TimeOfDay time{13, 5, 9};
        EXPECT_EQ(addToDate(serialOf(c.from, time), c.unit, c.amount), serialOf(c.gives, time))
            << c.from.year << '-' << c.from.month << '-' << c.from.day << " and " << c.amount;
    }
    EXPECT_EQ(addToDate(serialOf({}, {0, 0, 5}), DateUnit::Second, -10), serialOf({1899, 12, 29}, {23, 59, 55}));
}

TEST(Dates, refusesToLeaveTheYearsThatItKnows) {
    const double first = serialOf({100, 1, 1}, {});
    const double last = serialOf({9999, 12, 31}, {23, 59, 59});
    for (const DateUnit unit :
         {DateUnit::Second, DateUnit::Minute, DateUnit::Hour, DateUnit::Day, DateUnit::Month, DateUnit::Year}) {
        EXPECT_EQ(addToDate(first, unit, -1), std::nullopt);
        EXPECT_EQ(addToDate(last, unit, 1), std::nullopt);
        EXPECT_EQ(addToDate(first, unit, 1e300), std::nullopt);
        EXPECT_EQ(addToDate(first, unit, -1e300), std::nullopt);
        EXPECT_EQ(addToDate(last, unit, 0), last);
    }
}

struct CountCase {
    Date fromDate;
    TimeOfDay fromTime;
    Date toDate;
    TimeOfDay toTime;
    DateUnit unit;
    long long count;
};

TEST(Dates, countsBoundariesCrossed) {
    const CountCase cases[] = {
        {{2003, 1, 31}, {}, {2003, 2, 1}, {}, DateUnit::Month, 1},
        {{2003, 1, 1}, {}, {2003, 1, 31}, {}, DateUnit::Month, 0},
        {{2003, 12, 31}, {}, {2004, 1, 1}, {}, DateUnit::Year, 1},
        {{2004, 1, 1}, {}, {2003, 12, 31}, {}, DateUnit::Year, -1},
        {{2003, 1, 1}, {23, 59, 0}, {2003, 1, 2}, {0, 1, 0}, DateUnit::Day, 1},
        {{}, {1, 59, 59}, {}, {2, 0, 0}, DateUnit::Hour, 1},
        {{}, {1, 0, 0}, {}, {1, 59, 59}, DateUnit::Hour, 0},
        {{}, {1, 0, 59}, {}, {1, 1, 0}, DateUnit::Minute, 1},
        {{}, {1, 1, 0}, {}, {1, 0, 59}, DateUnit::Second, -1},
        {{1899, 12, 29}, {23, 0, 0}, {}, {1, 0, 0}, DateUnit::Hour, 2},
        {{1899, 12, 29}, {23, 0, 0}, {}, {1, 0, 0}, DateUnit::Day, 1},
    };
    for (const CountCase& c : cases)
        EXPECT_EQ(countBetween(serialOf(c.fromDate, c.fromTime), serialOf(c.toDate, c.toTime), c.unit), c.count);
}

TEST(Dates, numbersWeekdaysFromSunday) {
    EXPECT_EQ(weekday(serialOf({2003, 3, 5}, {13, 5, 9})), 4); // a Wednesday
    EXPECT_EQ(weekday(serialOf({2000, 1, 2}, {})), 1);         // a Sunday
    EXPECT_EQ(weekday(serialOf({2000, 1, 1}, {})), 7);         // a Saturday
    EXPECT_EQ(weekday(0), 7);
    EXPECT_EQ(weekday(serialOf({1899, 12, 24}, {1, 0, 0})), 1); // a Sunday before the first day
}

TEST(ReadDay, takesADayWithOrWithoutATime) {
    const auto day = [](std::string_view text) { return readDay(text, test::us(), kThisYear); };
    EXPECT_EQ(day("1/2/2003"), (Date{2003, 1, 2}));
    EXPECT_EQ(day("1/2/2003 7 PM"), (Date{2003, 1, 2}));
    EXPECT_EQ(day("7 PM 1/2/2003"), (Date{2003, 1, 2}));
    EXPECT_EQ(day("12/30/1899"), (Date{1899, 12, 30})); // the day of a time alone
    for (const char* none : {"7 PM", "12:30", "1.2.03", "36526", "0", "", " ", "tomorrow", "2/30/2003"})
        EXPECT_EQ(day(none), std::nullopt) << none;
}

} // namespace
} // namespace tallybook::calc
