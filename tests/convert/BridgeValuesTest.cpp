#include "core/convert/BridgeValues.h"

#include "core/convert/ColumnSurvey.h"
#include "support/Regions.h"

#include <gtest/gtest.h>

namespace tallybook::convert {
namespace {

using model::FieldType;

struct Values {
    explicit Values(BridgeFlags given = {}) : flags(given), regional(bridgeRegional(test::us(), flags)) {}

    std::string date(std::string_view text) const {
        const auto read = values.date(text);
        return read ? std::to_string(read->year) + '-' + std::to_string(read->month) + '-' + std::to_string(read->day)
                    : "none";
    }
    std::string time(std::string_view text) const {
        const auto read = values.time(text);
        return read ? std::to_string(read->hour) + ':' + std::to_string(read->minute) + ':' +
                          std::to_string(read->second)
                    : "none";
    }
    std::string number(std::string_view text) const {
        const auto read = values.number(text);
        return read ? (read->negative ? "-" : "") + std::to_string(read->magnitude) + "e-" +
                          std::to_string(read->places)
                    : "none";
    }

    BridgeFlags flags;
    platform::Regional regional;
    BridgeValues values{regional, flags, 2003};
};

TEST(BridgeValuesTest, readsDatesInTheOrderOfTheCallAlone) {
    struct Case {
        const char* text;
        const char* monthFirst;
        const char* dayFirst;
    };
    const Case cases[] = {
        {"03/05/2003", "2003-3-5", "2003-5-3"},
        {"3/5/03", "2003-3-5", "2003-5-3"},
        {"3-5-99", "1999-3-5", "1999-5-3"},
        {"3.5.2029", "2029-3-5", "2029-5-3"},
        {"1/1/30", "1930-1-1", "1930-1-1"},
        {"13/1/2003", "none", "2003-1-13"},
        {"1/13/2003", "2003-1-13", "none"},
        {"31/02/2003", "none", "none"},
        {"02/31/2003", "none", "none"},
        {"2/29/2004", "2004-2-29", "none"},
        {"2/29/2003", "none", "none"},
        {"2003-03-05", "2003-3-5", "2003-3-5"},
        {"2003-03-05 13:05:09", "2003-3-5", "2003-3-5"},
        {"2003-03-05T13:05:09", "2003-3-5", "2003-3-5"},
        {"03/05/2003 1:05 PM", "2003-3-5", "2003-5-3"},
        {"03/05/2003 25:00", "none", "none"},
        {"5 March 2003", "2003-3-5", "2003-3-5"},
        {"5-Mar-03", "2003-3-5", "2003-3-5"},
        {" 03/05/2003 ", "2003-3-5", "2003-5-3"},
        {"3/5", "none", "none"},
        {"20030305", "none", "none"},
        {"12:30", "none", "none"},
        {"7 PM", "none", "none"},
        {"", "none", "none"},
        {"1/1/0099", "none", "none"},
        {"abc", "none", "none"},
    };
    const Values month;
    const Values day({.DateFlag = 1});
    for (const Case& one : cases) {
        EXPECT_EQ(month.date(one.text), one.monthFirst) << one.text;
        EXPECT_EQ(day.date(one.text), one.dayFirst) << one.text;
    }
}

TEST(BridgeValuesTest, readsTimesOfEitherForm) {
    const std::pair<const char*, const char*> cases[] = {
        {"01:05:09 PM", "13:5:9"}, {"1:05 PM", "13:5:0"},  {"12:00 AM", "0:0:0"},
        {"12:30 pm", "12:30:0"},   {"13:05:09", "13:5:9"}, {"0:00", "0:0:0"},
        {"23:59:59", "23:59:59"},  {"24:00", "none"},      {"12:60", "none"},
        {"1:2:60", "none"},        {"13:05 PM", "none"},   {"0:30 PM", "none"},
        {"1:05 XM", "none"},       {"1", "none"},          {"1:", "none"},
        {"noon", "none"},          {"1:05PM", "13:5:0"},   {"1/2/2003 7:05", "7:5:0"},
    };
    const Values us;
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(us.time(text), expected) << text;
}

TEST(BridgeValuesTest, readsNumbersWithGroupsWhereTheRegionPutsThem) {
    struct Case {
        const char* text;
        const char* point;
        const char* comma;
    };
    const Case cases[] = {
        {"12", "12e-0", "12e-0"},
        {"-12.50", "-1250e-2", "none"},
        {"-12,50", "none", "-1250e-2"},
        {"1,234", "1234e-0", "1234e-3"},
        {"1.234", "1234e-3", "1234e-0"},
        {"1,234,567.5", "12345675e-1", "none"},
        {"1,23", "none", "123e-2"},
        {"12,34,567", "none", "none"},
        {"1234,567", "none", "1234567e-3"},
        {",5", "none", "5e-1"},
        {".5", "5e-1", "none"},
        {"5.", "5e-0", "none"},
        {"", "none", "none"},
        {"-", "none", "none"},
        {"1 000", "none", "none"},
        {"12a", "none", "none"},
        {"1,000,", "none", "none"},
        {"+7", "7e-0", "7e-0"},
        {"1234567890123456789", "none", "none"},
    };
    const Values point;
    const Values comma({.DecimalFlag = 1});
    for (const Case& one : cases) {
        EXPECT_EQ(point.number(one.text), one.point) << one.text;
        EXPECT_EQ(comma.number(one.text), one.comma) << one.text;
    }
}

TEST(BridgeValuesTest, writesDatesAndTimesInTheFormsOfTheCall) {
    const auto written = [](BridgeFlags flags) {
        const Values forms(flags);
        std::string text;
        forms.values.appendDate({2003, 3, 5}, text);
        for (const calc::TimeOfDay time :
             {calc::TimeOfDay{13, 5, 9}, calc::TimeOfDay{0, 5, 9}, calc::TimeOfDay{12}}) {
            text += '|';
            forms.values.appendTime(time, text);
        }
        return text;
    };
    EXPECT_EQ(written({.HasSeconds = 1}), "03/05/2003|01:05:09 PM|12:05:09 AM|12:00:00 PM");
    EXPECT_EQ(written({.DateFlag = 1}), "05/03/2003|01:05 PM|12:05 AM|12:00 PM");
    EXPECT_EQ(written({.HasSeconds = 1, .TimeFlag = 1}), "03/05/2003|13:05:09|00:05:09|12:00:00");
    EXPECT_EQ(written({.TimeFlag = 1}), "03/05/2003|13:05|00:05|12:00");
}

TEST(BridgeValuesTest, refusesArgumentsThatAreNone) {
    EXPECT_TRUE(areValid({}));
    for (std::int16_t BridgeFlags::*flag :
         {&BridgeFlags::HasSeconds, &BridgeFlags::WithCategories, &BridgeFlags::ListsAsIndex, &BridgeFlags::TimeFlag,
          &BridgeFlags::WithTypeRow, &BridgeFlags::DateFlag, &BridgeFlags::WithNameRow, &BridgeFlags::DecimalFlag})
        for (const std::int16_t value : {std::int16_t{2}, std::int16_t{-1}}) {
            BridgeFlags flags;
            flags.*flag = value;
            EXPECT_FALSE(areValid(flags));
        }
    EXPECT_TRUE(areValid({.Delimiter = 2}));
    EXPECT_FALSE(areValid({.Delimiter = 3}));
    EXPECT_FALSE(areValid({.Delimiter = -1}));
}

TEST(BridgeValuesTest, knowsTheWordsOfTypes) {
    EXPECT_EQ(typeOfWord("radio"), FieldType::RadioButton);
    EXPECT_EQ(typeOfWord(" Auto "), FieldType::AutoIncremental);
    EXPECT_EQ(typeOfWord("expression"), std::nullopt);
    EXPECT_EQ(typeOfWord(""), std::nullopt);
    EXPECT_EQ(typeWord(FieldType::Key), "key");
    EXPECT_EQ(typeWord(FieldType::Image), "");
}

FieldType surveyed(const std::vector<std::string>& column, int* decimals = nullptr) {
    const Values us;
    ColumnSurvey survey;
    for (const std::string& value : column)
        survey.add(value, us.values);
    if (decimals != nullptr)
        *decimals = survey.decimals();
    return survey.type();
}

TEST(ColumnSurveyTest, findsTheNarrowestTypeThatTakesEveryValue) {
    struct Case {
        std::vector<std::string> column;
        FieldType type;
    };
    const std::vector<Case> cases = {
        {{}, FieldType::Text},
        {{"", ""}, FieldType::Text},
        {{"Y", "n", ""}, FieldType::Checkbox},
        {{"true", "FALSE"}, FieldType::Checkbox},
        {{"1", "0"}, FieldType::Integer},
        {{"Y", "1"}, FieldType::Text},
        {{"32767", "-32768"}, FieldType::Integer},
        {{"32768"}, FieldType::Long},
        {{"2147483647", "-2147483648"}, FieldType::Long},
        {{"2147483648"}, FieldType::Text}, // a Float would show it otherwise
        {{"1", "2.5"}, FieldType::Float},
        {{"12345.678"}, FieldType::Text},
        {{"8388.607"}, FieldType::Float},
        {{"0.1234"}, FieldType::Text}, // a Float has three digits at most
        {{"007"}, FieldType::Text},
        {{"0", "0.5"}, FieldType::Float},
        {{"1,000"}, FieldType::Text},
        {{"+49"}, FieldType::Text},
        {{"1/2/2003", "2003-05-04"}, FieldType::Date},
        {{"1/2/2003", "13/2/2003"}, FieldType::Text},
        {{"12:30", "1:05 PM"}, FieldType::Time},
        {{"12:30", "later"}, FieldType::Text},
        {{std::string(254, 'x')}, FieldType::Text},
        {{std::string(255, 'x')}, FieldType::Memo},
        {{"one\ntwo"}, FieldType::Memo},
    };
    for (const Case& one : cases)
        EXPECT_EQ(surveyed(one.column), one.type) << testing::PrintToString(one.column);
}

TEST(ColumnSurveyTest, countsTheDigitsThatAColumnShows) {
    int decimals = 0;
    surveyed({"1", "2.50", "3.5"}, &decimals);
    EXPECT_EQ(decimals, 2);
}

} // namespace
} // namespace tallybook::convert
