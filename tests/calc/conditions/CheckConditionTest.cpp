#include "core/calc/conditions/EvalCond.h"
#include "core/calc/values/Dates.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::test {

namespace {

using calc::CondContext;
using calc::CondOperand;
using calc::CondValue;
using model::FieldType;

constexpr FieldType kMemo = FieldType::Memo; // stands for the types without a row of their own

CondValue number(double value) {
    return CondValue::ofNumber(value);
}
CondValue text(std::string_view value) {
    return CondValue::ofText(value);
}
// A serial: 37623 is 2003-01-02, 0.25 is 6:00, 0.75 is 18:00.
CondValue date(double serial) {
    return CondValue::ofDate(serial);
}

class CheckConditionTest : public testing::Test {
protected:
    bool check(char code, const CondOperand& left, const CondOperand& right) const {
        return calc::CheckCondition(static_cast<std::uint8_t>(code), left, right, context);
    }

    platform::Regional regional;
    CondContext context{regional, {2003, 3, 5, 13, 5, 9}};
};

struct Case {
    const char* name;
    char code;
    CondOperand left;
    CondOperand right;
    bool expected;
};

} // namespace

// One row or more for each pair of types that is converted in its own way.
TEST_F(CheckConditionTest, convertsByThePairOfTypes) {
    const CondOperand jan2{date(37623), FieldType::Date};
    const CondOperand morning{date(0.25), FieldType::Time};
    const CondOperand noon{date(0.5), FieldType::Time};
    const CondOperand evening{date(0.75), FieldType::Time};
    const std::vector<Case> cases = {
        // number beside number: as they are
        {"integer and long", '=', {number(5), FieldType::Integer}, {number(5), FieldType::Long}, true},
        {"long and float", '<', {number(5), FieldType::Long}, {number(5.5), FieldType::Float}, true},
        {"float and key", '>', {number(5.5), FieldType::Float}, {number(5), FieldType::Key}, true},
        {"key and counter", 'L', {number(7), FieldType::Key}, {number(7), FieldType::AutoIncremental}, true},
        {"counter and integer", '!', {number(7), FieldType::AutoIncremental}, {number(7), FieldType::Integer}, false},
        // number beside date: the days from 1904, 37623 - 1462
        {"long and date", '=', {number(36161), FieldType::Long}, jan2, true},
        {"float and date as text", '=', {number(36161), FieldType::Float}, {text("1/2/2003"), FieldType::Date}, true},
        {"long and what is no date", '=', {number(0), FieldType::Long}, {text("soon"), FieldType::Date}, true},
        {"long and a number called a date", '=', {number(0), FieldType::Long}, {number(5), FieldType::Date}, true},
        // number beside time: 0 before noon, 1 from noon on
        {"long and morning", '=', {number(0), FieldType::Long}, morning, true},
        {"long and noon", '=', {number(1), FieldType::Long}, noon, true},
        {"long and evening", '=', {number(1), FieldType::Long}, evening, true},
        {"long and time as text", '=', {number(1), FieldType::Long}, {text("6:00 PM"), FieldType::Time}, true},
        {"long and what is no time", '=', {number(0), FieldType::Long}, {text("late"), FieldType::Time}, true},
        // number beside anything else: a number, or 0
        {"long and numeric text", '=', {number(1.5), FieldType::Float}, {text("1.5"), FieldType::Text}, true},
        {"long and text", '=', {number(0), FieldType::Long}, {text("abc"), FieldType::Text}, true},
        {"long and empty text", '=', {number(0), FieldType::Long}, {text(""), kMemo}, true},
        {"long and no value", '=', {number(0), FieldType::Long}, {{}, FieldType::AdvExpression}, true},
        // date beside whole numbers: its serial
        {"date and integer", '=', jan2, {number(37623), FieldType::Integer}, true},
        {"date and long", '=', jan2, {number(36161), FieldType::Long}, false},
        {"date and counter", '>', jan2, {number(37622), FieldType::AutoIncremental}, true},
        // date beside float: the days from 1904
        {"date and float", '=', jan2, {number(36161), FieldType::Float}, true},
        {"no date and float", '=', {text("soon"), FieldType::Date}, {number(0), FieldType::Float}, true},
        // date beside date and time: as they are
        {"date and date", '<', jan2, {date(37624), FieldType::Date}, true},
        {"date and time", '>', jan2, evening, true},
        // date beside anything else: days from 1904 and a number
        {"date and key", '=', jan2, {number(36161), FieldType::Key}, true},
        {"date and numeric text", '=', jan2, {text("36161"), FieldType::Text}, true},
        {"date and its own text", '=', jan2, {text("1/2/2003"), FieldType::Text}, false},
        {"1904-01-01 and text", '=', {date(1462), FieldType::Date}, {text("abc"), FieldType::Text}, true},
        // time beside whole numbers: its serial
        {"time and long", '=', {date(0), FieldType::Time}, {number(0), FieldType::Long}, true},
        {"evening and long", '=', evening, {number(1), FieldType::Long}, false},
        {"evening and integer", '>', evening, {number(0), FieldType::Integer}, true},
        // time beside float: 0 or 1
        {"evening and float", '=', evening, {number(1), FieldType::Float}, true},
        {"morning and float", '=', morning, {number(0), FieldType::Float}, true},
        {"no time and float", '=', {text("late"), FieldType::Time}, {number(0), FieldType::Float}, true},
        // time beside date and time: as they are
        {"time and time", '=', noon, {date(0.5), FieldType::Time}, true},
        {"time and date", '<', evening, jan2, true},
        // time beside anything else: 0 or 1 and a number
        {"evening and numeric text", '=', evening, {text("1"), FieldType::Text}, true},
        {"morning and text", '=', morning, {text("abc"), FieldType::Text}, true},
        // anything else beside date: as texts
        {"text and date", '=', {text("1/2/2003"), FieldType::Text}, jan2, true},
        {"text and date in order", '<', {text("1/1/2004"), FieldType::Text}, jan2, true},
        {"number as text and date", '=', {number(37623), FieldType::Text}, jan2, false},
        // anything else beside time: the date's serial
        {"text of a time and time", '=', {text("6:00 PM"), FieldType::Text}, evening, true},
        {"text of a date and time", '>', {text("1/2/2003"), FieldType::Text}, evening, true},
        {"date value and time", '=', {date(0.75), FieldType::Text}, evening, true},
        // anything else beside anything else: as numbers when both are
        {"numeric texts", '=', {text("12"), FieldType::Text}, {text("12.0"), FieldType::Text}, true},
        {"zeros ahead", '=', {text("012"), FieldType::Text}, {text("12"), FieldType::Text}, true},
        {"number and numeric text", '<', {number(9), FieldType::Text}, {text("10"), FieldType::Text}, true},
        {"numeric text and text", '<', {text("10"), FieldType::Text}, {text("9 lives"), FieldType::Text}, true},
        {"texts in any letter case", '=', {text("abc"), FieldType::Text}, {text("ABC"), kMemo}, true},
        {"accents", '=', {text("\xE9t\xE9"), FieldType::Text}, {text("\xC9T\xC9"), FieldType::Text}, true},
        {"text and key", '=', {text("7"), FieldType::Text}, {number(7), FieldType::Key}, true},
        {"a date without value is a text",
         '=',
         {date(0), FieldType::Text},
         {text("12:00:00 am"), FieldType::Text},
         true},
        {"no values", '=', {{}, FieldType::Text}, {{}, FieldType::AdvExpression}, true},
    };
    for (const Case& c : cases)
        EXPECT_EQ(check(c.code, c.left, c.right), c.expected) << c.name;
}

// A text that is no number beside a number or a date cannot be compared: no ordering holds, not even "not equal".
TEST_F(CheckConditionTest, countsAReadingFailureAsFalse) {
    const CondOperand empty{text(""), FieldType::Text};
    const CondOperand evening{date(0.75), FieldType::Time};
    for (const char code : {'=', '!', '<', 'L', '>', 'J'})
        EXPECT_FALSE(check(code, empty, evening)) << code;
    const CondOperand numericDate{text("37623"), FieldType::Date};
    EXPECT_TRUE(check('=', numericDate, {number(37623), FieldType::Long}));
}

TEST_F(CheckConditionTest, knowsTheSixOrders) {
    const CondOperand two{number(2), FieldType::Long};
    struct Order {
        char code;
        bool beside1, beside2, beside3;
    };
    for (const Order& order :
         {Order{'=', false, true, false}, Order{'!', true, false, true}, Order{'<', false, false, true},
          Order{'L', false, true, true}, Order{'>', true, false, false}, Order{'J', true, true, false}}) {
        EXPECT_EQ(check(order.code, two, {number(1), FieldType::Long}), order.beside1) << order.code;
        EXPECT_EQ(check(order.code, two, {number(2), FieldType::Long}), order.beside2) << order.code;
        EXPECT_EQ(check(order.code, two, {number(3), FieldType::Long}), order.beside3) << order.code;
    }
}

TEST_F(CheckConditionTest, looksForTextsInsideAndAtTheStart) {
    const CondOperand cell{text("The Abc"), FieldType::Text};
    struct Search {
        char code;
        const char* part;
        bool expected;
    };
    const std::vector<Search> searches = {
        {'h', "aBC", true},
        {'h', "abd", false},
        {'h', "", true},
        {'H', "Abc", true},
        {'H', "abc", false},
        {'H', "", true},
        {'s', "the a", true},
        {'s', "abc", false},
        {'s', "", true},
        {'S', "The", true},
        {'S', "the", false},
        {'S', "", true},
        {'h', "The Abc and more", false},
        {'s', "The Abc and more", false},
    };
    for (const Search& search : searches)
        EXPECT_EQ(check(search.code, cell, {text(search.part), FieldType::Text}), search.expected)
            << search.code << ' ' << search.part;
    EXPECT_TRUE(check('h', {text(""), FieldType::Text}, {text(""), FieldType::Text}));
    EXPECT_TRUE(check('S', {text(""), FieldType::Text}, {text(""), FieldType::Text}));
}

// Converted values are searched as the texts of their numbers, where letters' case cannot matter.
TEST_F(CheckConditionTest, searchesNumbersAsTheirText) {
    EXPECT_TRUE(check('h', {number(1250.5), FieldType::Float}, {text("50.5"), FieldType::Text}));
    EXPECT_TRUE(check('S', {number(125), FieldType::Long}, {text("12"), FieldType::Text}));
    EXPECT_FALSE(check('s', {number(125), FieldType::Long}, {text("25"), FieldType::Text}));
    EXPECT_TRUE(check('H', {number(1e20), FieldType::Float}, {text("100000000000000000000"), FieldType::Text}));
    // An empty text beside a number is the number 0.
    EXPECT_FALSE(check('h', {number(125), FieldType::Long}, {text(""), FieldType::Text}));
    EXPECT_TRUE(check('h', {number(120), FieldType::Long}, {text(""), FieldType::Text}));
    EXPECT_TRUE(check('h', {date(37623), FieldType::Date}, {date(37623), FieldType::Date}));
    EXPECT_TRUE(check('h', {text("on 1/2/2003"), FieldType::Text}, {date(37623), FieldType::Date}));
    // Both texts are numeric: "007" is the number 7.
    EXPECT_FALSE(check('s', {text("007"), FieldType::Text}, {text("00"), FieldType::Text}));
}

TEST_F(CheckConditionTest, isFalseForAnyOtherOperator) {
    for (const char code : {'\0', '\1', 'a', 'l', 'j', 'A', '\xFF'})
        EXPECT_FALSE(check(code, {text("a"), FieldType::Text}, {text("a"), FieldType::Text})) << int{code};
}

} // namespace tallybook::test
