// What advanced expressions come to.
#include "calc/expressions/ExpressionBench.h"
#include "core/calc/cells/CellCoders.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::calc {
namespace {

using test::ExpressionBench;

struct ResultCase {
    const char* text;
    const char* expected;
};

void expectResults(std::span<const ResultCase> cases, std::uint8_t resultType, std::uint8_t decimals = 0) {
    const ExpressionBench bench;
    for (const ResultCase& c : cases) {
        const auto outcome = bench.run(c.text, resultType, decimals);
        EXPECT_EQ(outcome.text, c.expected) << c.text;
        EXPECT_TRUE(outcome.done) << c.text;
    }
}

void expectFaults(std::span<const ResultCase> cases, std::uint8_t resultType) {
    const ExpressionBench bench;
    for (const ResultCase& c : cases) {
        const auto outcome = bench.run(c.text, resultType);
        EXPECT_EQ(outcome.text, c.expected) << c.text;
        EXPECT_FALSE(outcome.done) << c.text;
        EXPECT_EQ(outcome.colour, 0) << c.text;
    }
}

TEST(Precedence, isTheUsualOne) {
    const ResultCase cases[] = {
        {"1+2*3", "7"},   {"(1+2)*3", "9"}, {"10-4-3", "3"},    {"24/4/2", "3"}, {"2**3**2", "512"}, {"-2**2", "-4"},
        {"(-2)**2", "4"}, {"2**-1*4", "2"}, {"2*3**2", "18"},   {"7%4*2", "6"},  {"1+7%4", "4"},     {"1+1<3", "1"},
        {"3>2=1", "1"},   {"1|0&0", "1"},   {"(1|0)&0", "0"},   {"1^1|1", "1"},  {"1^1&0", "1"},     {"!0+1", "2"},
        {"!1=0", "1"},    {"!(1=0)", "1"},  {"-3+5", "2"},      {"2--3", "5"},   {"--4", "4"},       {"!!5", "1"},
        {"1<2&2<3", "1"}, {"2=2<3", "1"},   {"1 | 1 ^ 1", "1"},
    };
    expectResults(cases, 0);
}

TEST(Numbers, areWhatPeopleSee) {
    const ResultCase cases[] = {
        {"Price*Qty", "10.000"},
        {"[Unit Price]*3", "0.300"},
        {"[Unit Price]+0.2 = 0.3", "1.000"}, // though no binary number is 0.1
        {"Floor([Unit Price]*30)", "3.000"},
        {"Ceil([Unit Price]*30)", "3.000"},
        {"Price_2", "16777217.000"}, // a single has no room for it
        {"1/3", "0.333"},
        {"2/3", "0.667"},
        {"Number+1", "78.000"},
        {"Done*2", "2.000"},
        {"Prev(Done)", "0.000"},
        {"7%4", "3.000"},
        {"-7%4", "-3.000"},
        {"7.5%2", "1.500"},
        {"2**0.5", "1.414"},
        {"0**0", "1.000"},
        {"PI", "3.142"},
        {"Total*2", "2.500"},
        {"Length", "3661.000"},
    };
    expectResults(cases, 0, 3);
}

TEST(Functions, work) {
    const ResultCase cases[] = {
        {"If(1, 2, 3)", "2.00"},
        {"If(0, 2, 3)", "3.00"},
        {"If(1, 2, 1/0)", "2.00"}, // the other branch is not looked at
        {"If(Name = 'Ann', 1, 2)", "1.00"},
        {"Sel(1, 5, 6)", "5.00"},
        {"Sel(2, 5, 6)", "6.00"},
        {"Sel(2, 1/0, 6)", "6.00"},
        {"Sqrt(16)", "4.00"},
        {"Abs(-2.5)", "2.50"},
        {"Sign(-3)", "-1.00"},
        {"Sign(0)", "0.00"},
        {"Sign(0.1)", "1.00"},
        {"Ceil(1.2)", "2.00"},
        {"Ceil(-1.2)", "-1.00"},
        {"Floor(1.8)", "1.00"},
        {"Floor(-1.2)", "-2.00"},
        {"Round(2.5)", "3.00"},
        {"Round(-2.5)", "-3.00"},
        {"Round(1.005, 2)", "1.01"},
        {"Round(2.675, 2)", "2.68"},
        {"Round(-1.005, 2)", "-1.01"},
        {"Round(1234, -2)", "1200.00"},
        {"Round(1250, -2)", "1300.00"},
        {"Round(49, -2)", "0.00"},
        {"Round(0.4)", "0.00"},
        {"Round(1.25, 20)", "1.25"},
        {"Day(Due)", "10.00"},
        {"Month(Due)", "3.00"},
        {"Year(Due)", "2003.00"},
        {"Weekday(Due)", "2.00"}, // a Monday
        {"Weekday(Date(2003, 3, 9))", "1.00"},
        {"Weekday(Date(2003, 3, 8))", "7.00"},
        {"Hour(Start)", "9.00"},
        {"Minute(Start)", "30.00"},
        {"Second(Start)", "15.00"},
        {"Hour(7200)", "2.00"},
        {"Hour('3:15 PM')", "15.00"},
        {"Year('2/1/2003')", "2003.00"},
    };
    expectResults(cases, 0, 2);
}

TEST(Dates, countDays) {
    const ResultCase cases[] = {
        {"Due", "3/10/2003"},
        {"Due+1", "3/11/2003"},
        {"1+Due", "3/11/2003"},
        {"Due-10", "2/28/2003"},
        {"Due+0.5", "3/10/2003"},
        {"Due+1.5", "3/12/2003"},
        {"Today", "3/5/2003"},
        {"Today-(Today-Due)", "3/10/2003"},
        {"Date(2003, 1, 31)", "1/31/2003"},
        {"Date(2003, 13, 1)", "1/1/2004"},
        {"Date(2003, 0, 1)", "12/1/2002"},
        {"Date(2003, 2, 31)", "3/3/2003"},
        {"Date(2003, 3, 0)", "2/28/2003"},
        {"Date(Year(Due), Month(Due)+1, 1)", "4/1/2003"},
        {"Finish", "3/1/2003"},
        // No day that anybody meant, whatever was made of it; but what is asked about it goes into no date.
        {"Blank", ""},
        {"Prev(Due)", ""},
        {"Blank+30", ""},
        {"7+Blank", ""},
        {"If(Blank = 0, Blank+1, Today)", ""},
        {"Date(Year(Blank), Month(Blank)+1, 1)", ""},
        {"''", ""},
        {"If(Blank = 0, Today, Blank)", "3/5/2003"},
        {"Date(If(Year(Blank) < 1900, 2003, 2004), 3, 5)", "3/5/2003"},
        {"Sel(1 + (Blank = 0), Blank, Date(2003, 3, 5))", "3/5/2003"},
        {"'1/2/2003'", "1/2/2003"},
        {"If(1, Due, Today)", "3/10/2003"},
    };
    expectResults(cases, 1);
    const ResultCase numbers[] = {
        {"Due-Today", "5"},         {"Today-Due", "-5"},       {"Due > Today", "1"},    {"Due = Today+5", "1"},
        {"Blank = 0", "1"},         {"Due = 0", "0"},          {"Due-'3/1/2003'", "9"}, {"'3/11/2003'-Due", "1"},
        {"Due = '3/10/2003'", "1"}, {"'3/9/2003' < Due", "1"},
    };
    // A text taken from a date counts as days unless it is no number.
    const ExpressionBench bench;
    EXPECT_EQ(bench.run("Due-'2'", 1).text, "3/8/2003");
    expectResults(numbers, 0);
}

TEST(Times, countSeconds) {
    const ResultCase cases[] = {
        {"Start", "9:30:15 AM"},         {"Start+60", "9:31:15 AM"},       {"60+Start", "9:31:15 AM"},
        {"Now", "1:05:09 PM"},           {"Now+86400", "1:05:09 PM"},      {"Now-50000", "11:11:49 PM"},
        {"Time(1, 2, 3)", "1:02:03 AM"}, {"Time(25, 0, 0)", "1:00:00 AM"}, {"Time(0, -1, 0)", "11:59:00 PM"},
        {"Clock", "1:00:01 PM"},         {"3661", "1:01:01 AM"},           {"'14:30'", "2:30:00 PM"},
        {"Prev(Start)", "12:00:00 AM"},
    };
    expectResults(cases, 7);
    const ResultCase numbers[] = {
        {"Now-Start", "12894"},           {"Start-Now", "-12894"},    {"Start < Now", "1"},
        {"Start = Time(9, 30, 15)", "1"}, {"Start = '9:30:15'", "1"}, {"Start = 34215", "1"},
    };
    expectResults(numbers, 0);
}

TEST(Formats, showTheValueByResultType) {
    const ExpressionBench bench;
    const struct {
        const char* text;
        int resultType;
        int decimals;
        const char* expected;
    } cases[] = {
        {"2.345", 0, 0, "2"},
        {"2.345", 0, 1, "2.3"},
        {"2.345", 0, 2, "2.35"},
        {"2.3455", 0, 3, "2.346"},
        {"2.345", 0, 4, "0"},
        {"2.345", 0, 255, "0"},
        {"2.345", 4, 1, "2.3"},
        {"2.345", 5, 1, "2.3"},
        {"2.345", 6, 1, "2.3"},
        {"Due", 2, 0, "3/10/2003"},
        {"Due", 3, 0, "3/10/2003"},
        {"7199", 8, 0, "1"},
        {"-7199", 8, 0, "-1"},
        {"Now-Start", 8, 2, "3"},
        {"Now-Start", 9, 0, "214"},
        {"Now-Start", 10, 0, "12894"},
        {"Start", 8, 0, "9"},
        {"1.9", 10, 0, "1"},
        {"Now-Start", 11, 0, "03:34:54"},
        {"Now-Start", 12, 0, "03:34:54"},
        {"Start", 11, 0, "09:30:15"},
        {"0", 11, 0, "00:00:00"},
        {"86399", 11, 0, "23:59:59"},
        {"'a'+1", 13, 0, "a1"},
        {"1.5+'a'", 13, 0, "1.5a"},
        {"Due", 13, 0, "3/10/2003"},
        {"Start", 13, 0, "9:30:15 AM"},
        {"1/3", 13, 0, "0.333333333333333"},
        {"Name", 13, 0, "Ann"},
        {"Due+' '+Start", 13, 0, "3/10/2003 9:30:15 AM"},
        {"Kind+1", 13, 0, "13"},
        {"''", 13, 0, ""},
        {"5", 200, 1, "5.0"},
    };
    for (const auto& c : cases) {
        const auto outcome =
            bench.run(c.text, static_cast<std::uint8_t>(c.resultType), static_cast<std::uint8_t>(c.decimals));
        EXPECT_TRUE(outcome.done) << c.text;
        EXPECT_EQ(outcome.text, c.expected) << c.text << " as " << c.resultType;
    }
}

TEST(Texts, countAsNumbersWhereOneIsNeeded) {
    const ResultCase cases[] = {
        {"Kind*2", "24"},       {"[2nd]-1", "6"},
        {"Prev(Kind)*2", "0"},  {"Chosen+1", "6"},
        {"Kind = 12", "1"},     {"12 = Kind", "1"},
        {"Kind > 9", "1"},      {"Kind > '9'", "0"}, // two texts
        {"Name = 'ann'", "0"},  {"Name < 'Bob'", "1"},
        {"Name <> 5", "1"},     {"If('True', 1, 2)", "1"},
        {"If('0', 1, 2)", "2"}, {"If(Prev(Kind), 1, 2)", "2"},
        {"'5'", "5"},           {"Prev(Kind) = 0", "1"},
        {"!'false'", "1"},      {"-Kind", "-12"},
    };
    expectResults(cases, 0);
}

TEST(Conditional, isANumberADateOrAText) {
    ExpressionBench bench;
    bench.values[11][0] = {static_cast<std::int32_t>(packDate(2003, 3, 1)), 0, "3/1/2003"};
    EXPECT_EQ(bench.run("Due-Chosen").text, "9");
    bench.values[11][0] = {0, 0, "late"};
    EXPECT_EQ(bench.run("Chosen+1", 13).text, "late1");
    bench.values[11][0] = {5, 5, "5"};
    EXPECT_EQ(bench.run("Chosen+1", 13).text, "6");
}

TEST(Evaluate, hasNoValueForWhatMakesNoSense) {
    const ResultCase cases[] = {
        {"1/0", "Division by zero."},
        {"1%0", "Division by zero."},
        {"0**-1", "Division by zero."},
        {"Sqrt(-1)", "There is no square root of a negative number."},
        {"(-8)**0.5", "There is no square root of a negative number."},
        {"10**400", "The number is too large."},
        {"10**300*10**300", "The number is too large."},
        {"Sel(0, 1)", "Sel has no value of this number."},
        {"Sel(2, 1)", "Sel has no value of this number."},
        {"Sel(1.5, 1, 2)", "Sel has no value of this number."},
        {"Sel(10**300, 1, 2)", "Sel has no value of this number."},
        {"Name*2", "The text is no number."},
        {"Name", "The text is no number."},
        {"Year('soon')", "The text is no date."},
        {"Hour('soon')", "The text is no time."},
        {"If('soon', 1, 2)", "The text is neither a number nor True or False."},
        {"Due*2", "A date or a time stands where a number belongs."},
        {"-Start", "A date or a time stands where a number belongs."},
        {"Due+Today", "A date or a time stands where a number belongs."},
        {"Due-Start", "A date or a time stands where a number belongs."},
        {"5-Due", "A date or a time stands where a number belongs."},
        {"If(Due, 1, 2)", "A date or a time stands where a number belongs."},
        {"Year(5)", "A number or a time stands where a date belongs."},
        {"Hour(Due)", "A date stands where a time or a number of seconds belongs."},
        {"Due = Start", "A date and a time cannot be compared."},
        {"Date(99, 1, 1)-Today", "The date does not exist, or its year is not in 100 to 9999."},
        {"Date(10000, 1, 1)-Today", "The date does not exist, or its year is not in 100 to 9999."},
        {"Due+10**7", "The date does not exist, or its year is not in 100 to 9999."},
        {"Due-10**300", "The date does not exist, or its year is not in 100 to 9999."},
        {"Start+10**300", "The number is too large."},
        {"{red}1/0", "Division by zero."},
    };
    expectFaults(cases, 0);
    const ResultCase asDate[] = {{"5", "A number or a time stands where a date belongs."},
                                 {"Start", "A number or a time stands where a date belongs."},
                                 {"Name", "The text is no date."}};
    expectFaults(asDate, 1);
    const ResultCase asDuration[] = {
        {"-1", "A time of less than 0 seconds, or of a day and more, cannot be shown."},
        {"86400", "A time of less than 0 seconds, or of a day and more, cannot be shown."},
        {"Due", "A date stands where a time or a number of seconds belongs."}};
    expectFaults(asDuration, 11);
}

TEST(Colours, areThoseOfTheChosenBranch) {
    const ExpressionBench bench;
    const struct {
        const char* text;
        int colour;
    } cases[] = {
        {"1", 0},
        {"{red}1", 1},
        {"1{yellow}", 4},
        {"{red}1+{blue}2", 3}, // the last one
        {"{red}{black}1", 0},
        {"1{red}{green}", 2},
        {"If(Price > 0, {red}Price, {green}Price)", 1},
        {"If(Price < 0, {red}Price, {green}Price)", 2},
        {"If({blue}1, 2, 3)", 3},
        {"{blue}If(1, {red}2, 3)", 1},
        {"If(1, {red}2, 3){blue}", 3},
        {"{red}(1+{green}2)", 2},
        {"-{red}1", 1},
        {"2**{red}1", 1},
        {"0 & {red}1", 1}, // both sides are looked at
    };
    for (const auto& c : cases) {
        const auto outcome = bench.run(c.text);
        EXPECT_TRUE(outcome.done) << c.text;
        EXPECT_EQ(outcome.colour, c.colour) << c.text;
    }
}

// What was chosen in a list stands where a number belongs, so it is one beside a number.
TEST(ChosenTexts, countAsNumbersBesideNumbers) {
    for (const std::uint8_t type : {5, 13, 15, 16, 17}) {
        ExpressionBench bench;
        bench.kinds.fieldTypes[10] = type;
        EXPECT_EQ(bench.run("Qty+Kind", 0, 2).text, "16.00") << int{type};
        EXPECT_EQ(bench.run("Kind+Qty", 0, 2).text, "16.00");
        EXPECT_EQ(bench.run("Kind+Qty", 13).text, "16");
        EXPECT_EQ(bench.run("Qty+Prev(Kind)", 0, 2).text, "4.00"); // a blank one
        EXPECT_EQ(bench.run("If(1, Kind, 0)+Qty", 0).text, "16");
        EXPECT_EQ(bench.run("Due+Kind", 1).text, "3/22/2003");
        EXPECT_EQ(bench.run("Kind+Kind", 13).text, "1212"); // two texts
        EXPECT_EQ(bench.run("Kind+' pcs'", 13).text, "12 pcs");
        bench.values[10][kCurrentRecord].textValue = "dozen";
        EXPECT_EQ(bench.run("Qty+' '+Kind", 13).text, "4 dozen");
        EXPECT_EQ(bench.run("Qty+Kind", 13).text, "4dozen");
    }
    ExpressionBench bench;
    for (const std::uint8_t type : {1, 10, 12}) { // typed, and the key or text of a join
        bench.kinds.fieldTypes[10] = type;
        EXPECT_EQ(bench.run("Qty+Kind", 13).text, "412") << int{type};
    }
}

TEST(Colours, standAlone) {
    const ExpressionBench bench;
    const struct {
        const char* text;
        int resultType;
        const char* expected;
        int colour;
    } cases[] = {
        {"{red}", 13, "", 1},
        {"{red}", 0, "0", 1},
        {"{red}{blue}", 13, "", 3},
        {"Qty+{red}", 0, "4", 1},
        {"{red}*2", 0, "0", 1},
        {"({green})+1", 0, "1", 2},
        {"If(Qty > 3, {red}, {blue})+Name", 13, "Ann", 1},
        {"If(Qty > 9, {red}, {blue})+Qty", 0, "4", 3},
        {"Sel(2, {red}, {yellow}, 5)", 13, "", 4},
        {"{red}-1", 0, "-1", 1},
    };
    for (const auto& c : cases) {
        const auto outcome = bench.run(c.text, static_cast<std::uint8_t>(c.resultType));
        EXPECT_EQ(outcome.text, c.expected) << c.text;
        EXPECT_EQ(outcome.colour, c.colour) << c.text;
    }
    EXPECT_EQ(bench.displayed("If(Qty>3,{red},{blue})+Qty"), "If (Qty > 3, {red}, {blue})+Qty");
    EXPECT_EQ(bench.errorOf("{red}+"), "6: A value is missing here.");
    EXPECT_EQ(bench.errorOf("{red})"), "5: There is no open bracket to be closed.");
}

TEST(PrevIndex, isTheNumberOfTheRecordBefore) {
    const ExpressionBench bench;
    EXPECT_EQ(bench.run("PrevIndex", 0, 0, 1).text, "0");
    EXPECT_EQ(bench.run("PrevIndex", 0, 0, 65448).text, "65447");
}

TEST(FirstRecord, hasABlankOneBefore) {
    ExpressionBench bench;
    for (auto& slot : bench.values)
        slot[kPreviousRecord] = {};
    EXPECT_EQ(bench.run("Price+Prev(Price)", 0, 1, 1).text, "2.5");
    EXPECT_EQ(bench.run("'<'+Prev(Name)+'>'", 13, 0, 1).text, "<>");
    EXPECT_EQ(bench.run("If(Prev(Due) = 0, 'none', 'some')", 13, 0, 1).text, "none");
}

TEST(Evaluate, stopsBehindToken47) {
    std::vector<Token> tokens(60, 90);
    std::vector<std::string> texts(60);
    tokens[0] = 91;
    for (std::size_t i = 1; i < 60; i += 2) {
        tokens[i] = 86;
        texts[i] = "1";
    }
    const ExpressionBench bench;
    std::string result;
    std::uint8_t colour = 9;
    const platform::Regional regional;
    EXPECT_TRUE(Evaluate(1, bench.kinds, bench.values, tokens, texts, 0, 0, {regional, {}}, result, colour));
    EXPECT_EQ(result, "22");
    EXPECT_EQ(colour, 0);
}

TEST(Evaluate, failsForTokensThatNobodyCompiles) {
    const struct {
        std::vector<Token> tokens;
        std::vector<std::string> texts;
        const char* expected;
    } cases[] = {
        {{}, {}, "The expression is empty."},
        {{85}, {""}, "The expression has a part that is not known (code 85)."},
        {{100}, {""}, "The expression has a part that is not known (code 100)."},
        {{181}, {""}, "The expression has a part that is not known (code 181)."},
        {{1, 90, 4000000000u}, {}, "The expression has a part that is not known (code 4000000000)."},
        {{94, 1, 96}, {"\x12", "", ""}, "The expression has a part that is not known (code 94)."},
        {{1, 98, 1}, {"", "", ""}, "The expression has a part that is not known (code 98)."},
        {{89, 1}, {"\x05", ""}, "The expression has a part that is not known (code 89)."},
        {{1, 1}, {"", ""}, "An operator is missing here."},
        {{96, 1}, {"", ""}, "There is no open bracket to be closed."},
        {{86}, {"abc"}, "\"abc\" is no number."},
        {{86}, {""}, "\"\" is no number."},
        {{86}, {"inf"}, "\"inf\" is no number."},
        {{86}, {"1E999"}, "\"1E999\" is no number."},
        {{21}, {""}, "The expression names a field that is not there."},
        {{80}, {""}, "The expression names a field that is not there."},
        {{180}, {""}, "The expression names a field that is not there."},
    };
    const ExpressionBench bench;
    for (const auto& c : cases) {
        TokenArray tokens{};
        TokenTextArray texts;
        std::copy(c.tokens.begin(), c.tokens.end(), tokens.begin());
        std::copy(c.texts.begin(), c.texts.end(), texts.begin());
        const auto outcome = bench.run(tokens, texts);
        EXPECT_FALSE(outcome.done) << c.expected;
        EXPECT_EQ(outcome.text, c.expected);
    }
}

TEST(Evaluate, takesConstantsOfOtherCompilers) {
    TokenArray tokens{86};
    TokenTextArray texts;
    texts[0] = "-1.5E+2";
    EXPECT_EQ(ExpressionBench().run(tokens, texts).text, "-150");
}

// The values of a trial are made up: only what is wrong with the expression itself fails it.
class TrialTest : public testing::Test {
protected:
    TrialTest() {
        for (auto& slot : m_bench.values)
            slot = {FieldValues{-1, -1, "True"}, FieldValues{}};
    }
    ExpressionBench::Outcome tryOut(const char* text, std::uint8_t resultType = 0) const {
        return m_bench.run(text, resultType, 0, kTrialRecord);
    }
    ExpressionBench m_bench;
};

TEST_F(TrialTest, letsPassWhatDependsOnTheRecord) {
    const struct {
        const char* text;
        std::uint8_t resultType;
    } cases[] = {
        {"Sqrt(Price)", 0},
        {"1/(Qty+1)", 0},
        {"Price/Prev(Price)", 0},
        {"Qty % Prev(Qty)", 0},
        {"Qty**0.5", 0},
        {"Sel(Qty, 1, 2)", 0},
        {"Due", 1},
        {"Due+Qty", 1},
        {"Today-Due", 0},
        {"Year(Due)", 0},
        {"Due-Prev(Due)", 0},
        {"Start-Now", 11},
        {"Start+60", 7},
        {"Clock", 7},
        {"Finish", 1},
        {"Kind*2", 0},
        {"Name+'x'", 13},
        {"Date(Qty, Qty, Qty)", 1},
        {"Time(Qty, 0, 0)", 7},
        {"Year(Name)", 0},
        {"Hour(Name)", 0},
        {"Name", 1},
        {"Name", 7},
        {"Name", 11},
        {"If(Name, 1, 2)", 0},
        {"(Name+'x')*2", 0},
        {"Chosen+1", 13},
        {"Today-Chosen", 1},
        {"Length", 11},
        {"1/PrevIndex", 0},
        {"10**(-400*Qty)", 0},
        {"Due+10**7*Qty", 1},
        {"If(Name+'x', 1, 2)", 0},
        {"Sel(Qty, Due, Today)", 1},
    };
    for (const auto& c : cases) {
        const auto outcome = tryOut(c.text, c.resultType);
        EXPECT_TRUE(outcome.done) << c.text << ": " << outcome.text;
    }
}

TEST_F(TrialTest, findsWhatIsWrongInAnyRecord) {
    const struct {
        const char* text;
        std::uint8_t resultType;
        const char* expected;
    } cases[] = {
        {"Price/0", 0, "Division by zero."},
        {"Qty + 1/(2-2)", 0, "Division by zero."},
        {"Due*2", 0, "A date or a time stands where a number belongs."},
        {"Qty+1", 1, "A number or a time stands where a date belongs."},
        {"Due", 0, "A date or a time stands where a number belongs."},
        {"'abc'", 0, "The text is no number."},
        {"Year(Qty)", 0, "A number or a time stands where a date belongs."},
        {"Sel(3, Qty, Price)", 0, "Sel has no value of this number."},
    };
    for (const auto& c : cases) {
        const auto outcome = tryOut(c.text, c.resultType);
        EXPECT_FALSE(outcome.done) << c.text;
        EXPECT_EQ(outcome.text, c.expected) << c.text;
    }
}

TEST(AdvancedExpression, namesTheFieldsThatItReads) {
    using Use = AdvancedExpression::FieldUse;
    using Needs = AdvancedExpression::Needs;
    const ExpressionBench bench;
    TokenArray tokens{};
    TokenTextArray texts;
    CompileError error;
    ASSERT_EQ(Compile("Price*Qty+Price+Prev(Price)+Name+Chosen", bench.names, tokens, texts, error), 0);
    const platform::Regional regional;
    const AdvancedExpression expression(tokens, texts, bench.kinds, {regional, {}});
    const std::vector<Use> expected = {{1, 0, Needs::Numbers},
                                       {2, 0, Needs::Numbers},
                                       {1, 1, Needs::Numbers},
                                       {6, 0, Needs::Text},
                                       {11, 0, Needs::All}};
    EXPECT_EQ(std::vector<Use>(expression.uses().begin(), expression.uses().end()), expected);
}

TEST(AdvancedExpression, givesResultsAsValues) {
    const ExpressionBench bench;
    TokenArray tokens{8};
    const TokenTextArray texts;
    const platform::Regional regional;
    const AdvancedExpression expression(tokens, texts, bench.kinds, {regional, {}});
    ExpressionResult result;
    ASSERT_TRUE(expression.compute(bench.values, 1, 1, 0, result));
    EXPECT_EQ(result.form, ExpressionResult::Form::Date);
    EXPECT_EQ(result.value, 37690); // 2003-03-10
    EXPECT_FALSE(expression.compute(bench.values, 1, 0, 0, result));
    EXPECT_EQ(result.text, "A date or a time stands where a number belongs.");
}

} // namespace
} // namespace tallybook::calc
