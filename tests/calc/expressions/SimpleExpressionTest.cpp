#include "core/calc/expressions/SimpleExpression.h"

#include "support/CalculatedFields.h"

#include <gtest/gtest.h>
#include <vector>

namespace tallybook::calc {
namespace {

using model::FieldType;
using test::CalculatedFields;

constexpr int kField = 10; // the field that is calculated
constexpr Token kPrevious = token::kPreviousRecord;

// Numbers in slots 1 to 4, dates in 5 and 6, times in 7 and 8, of one record.
struct Table : CalculatedFields {
    Table() {
        for (int slot = 1; slot <= 4; ++slot)
            field(slot, FieldType::Float, 2);
        for (const int slot : {5, 6})
            field(slot, FieldType::Date);
        for (const int slot : {7, 8})
            field(slot, FieldType::Time);
    }
    Table(int resultType, std::initializer_list<Token> tokens, int decimals = 0) : Table() {
        expression(kField, FieldType::Expression, resultType, tokens, decimals);
    }
    std::string result(int record = 0) { return calcExpression20(doc, t.services, kField, record); }
};

TEST(CalcExpression20, joinsNumbersFromLeftToRight) {
    struct Case {
        const char* name;
        std::initializer_list<Token> tokens;
        const char* expected; // with 1: 5, 2: 3, 3: 2, 4: 0
    };
    const Case cases[] = {
        {"no operator binds closer", {1, 90, 2, 92, 3}, "16"},
        {"minus and divided by", {1, 91, 2, 93, 3}, "1"},
        {"a division by zero is skipped", {1, 93, 4, 90, 2}, "8"},
        {"a blank operator drops its operand", {1, 0, 2, 90, 3}, "7"},
        {"an operator of no meaning too", {1, 43, 2, 90, 3}, "7"},
        {"the first blank operand ends the reading", {1, 90, 0, 90, 3}, "5"},
        {"an operator without an operand takes 0", {1, 92}, "0"},
        {"a division without an operand is skipped", {1, 93}, "5"},
        {"eight operands", {1, 90, 1, 90, 1, 90, 1, 90, 1, 90, 1, 90, 1, 90, 1}, "40"},
        {"a ninth is not read", {1, 90, 1, 90, 1, 90, 1, 90, 1, 90, 1, 90, 1, 90, 1, 90, 1}, "40"},
        {"a date counts as 0", {1, 90, 5}, "5"},
        {"a time counts as 0", {1, 92, 7}, "0"},
        {"a text field counts as 0", {1, 90, 9}, "5"},
        {"a free slot counts as 0", {1, 90, 80}, "5"},
        {"today counts as 0", {1, 90, 84}, "5"},
        {"codes of no meaning count as 0", {1, 90, 85, 90, 99}, "5"},
        {"no operand at all", {}, "0"},
        {"a negative result", {3, 91, 1}, "-3"},
    };
    for (const Case& c : cases) {
        Table table(0, c.tokens);
        table.field(9, FieldType::Text);
        table.set(0, 1, "5");
        table.set(0, 2, "3");
        table.set(0, 3, "2");
        table.set(0, 4, "0");
        table.set(0, 5, "1/2/2003");
        table.set(0, 7, "6:00:00 AM");
        table.set(0, 9, "12");
        EXPECT_EQ(table.result(), c.expected) << c.name;
    }
}

TEST(CalcExpression20, goesOnBehindADivisionByZero) {
    Table table(0, {1, 93, 2, 90, 3});
    table.set(0, 1, "10");
    table.set(0, 2, "0");
    table.set(0, 3, "1");
    EXPECT_EQ(table.result(), "11");
}

TEST(CalcExpression20, writesAsManyDigitsAsTheFieldHas) {
    struct Case {
        int decimals;
        const char* value;
        const char* divisor;
        const char* expected;
    };
    const Case cases[] = {
        {0, "5", "2", "3"},       {1, "5", "2", "2.5"},  {2, "5", "2", "2.50"},  {3, "5", "2", "2.500"},
        {2, "-1", "8", "-0.13"},  {2, "1", "3", "0.33"}, {3, "2", "3", "0.667"}, {2, "-1", "1000", "0.00"},
        {2, "2.01", "2", "1.01"}, {4, "5", "2", "0"},    {5, "5", "2", "0"},     {255, "5", "2", "0"},
    };
    for (const Case& c : cases) {
        Table table(0, {1, 93, 2}, c.decimals);
        table.set(0, 1, c.value);
        table.set(0, 2, c.divisor);
        EXPECT_EQ(table.result(), c.expected) << c.value << " / " << c.divisor << " with " << c.decimals;
    }
}

TEST(CalcExpression20, takesConstantsThroughTheFormOfAFloat) {
    struct Case {
        const char* text;
        const char* expected;
    };
    const Case cases[] = {{"2.5", "2.500"},      {"0.1", "0.100"},
                          {"", "0.000"},         {"abc", "0.000"},
                          {"1,000", "1000.000"}, {"123456.789", "123456.790"}}; // the single's digits are 123456.79
    for (const Case& c : cases) {
        Table table(0, {86}, 3);
        table.constant(kField, 0, c.text);
        EXPECT_EQ(table.result(), c.expected) << c.text;
    }
}

TEST(CalcExpression20, addsToDates) {
    struct Case {
        int resultType;
        std::initializer_list<Token> tokens; // 1: 1, 5: 1/31/2003, 6 empty
        const char* expected;
    };
    const Case cases[] = {
        {1, {5, 90, 1}, "2/1/2003"},
        {1, {5, 91, 1}, "1/30/2003"},
        {1, {5, 0, 1}, "2/1/2003"},
        {2, {5, 90, 1}, "2/28/2003"},
        {3, {5, 91, 1}, "1/31/2002"},
        {1, {1, 90, 5}, "0"},                    // a number first
        {1, {5, 90, 5}, "0"},                    // two dates
        {1, {5}, "0"},                           // nothing to add
        {1, {7, 90, 1}, "0"},                    // a time
        {1, {6, 90, 1}, "12/31/1899"},           // an empty date is day 0
        {2, {84, 90, 1}, "4/5/2003 1:05:09 PM"}, // today with its time of day
        {1, {87, 90, 1}, "0"},                   // now is a time
        {1, {5, 90, 1, 90, 1}, "2/1/2003"},
    };
    for (const Case& c : cases) {
        Table table(c.resultType, c.tokens);
        table.set(0, 1, "1");
        table.set(0, 5, "1/31/2003");
        EXPECT_EQ(table.result(), c.expected) << c.resultType;
    }
}

TEST(CalcExpression20, countsBetweenDates) {
    struct Case {
        int resultType;
        const char* first;
        const char* second;
        const char* expected;
    };
    const Case cases[] = {
        {4, "1/1/2003", "1/31/2003", "-30"}, // the earlier date first
        {4, "1/31/2003", "1/1/2003", "30"},
        {5, "2/1/2003", "1/31/2003", "1"},
        {5, "1/31/2003", "2/1/2003", "-1"},
        {6, "1/1/2004", "12/31/2003", "1"},
        {4, "", "", "0"},
        {4, "1/1/1900", "", "2"}, // an empty date is date 0 and still a date
    };
    for (const Case& c : cases) {
        Table table(c.resultType, {5, 91, 6}, 2);
        table.set(0, 5, c.first);
        table.set(0, 6, c.second);
        EXPECT_EQ(table.result(), c.expected) << c.first << " " << c.second;
    }
}

TEST(CalcExpression20, countsNoDaysBetweenOtherThings) {
    for (const int resultType : {4, 5, 6}) {
        Table table(resultType, {5, 91, 1});
        table.set(0, 5, "1/31/2003");
        EXPECT_EQ(table.result(), "0") << resultType;
    }
}

TEST(CalcExpression20, addsSecondsToTimes) {
    struct Case {
        std::initializer_list<Token> tokens; // 1: 90, 7: 11:59:00 PM, 8 empty
        const char* expected;
    };
    const Case cases[] = {
        {{7, 90, 1}, "12:00:30 AM"},
        {{7, 91, 1}, "11:57:30 PM"},
        {{7, 0, 1}, "12:00:30 AM"},
        {{7, 90, 7}, "0"}, // two times have no sum
        {{7, 91, 7}, "0"},
        {{1, 90, 7}, "0"},
        {{8, 90, 1}, "0"}, // an empty time is no time
        {{7, 90, 8}, "0"},
        {{87, 90, 1}, "1:06:39 PM"}, // the present time
        {{79, 90, 1}, "0"},          // field 79, whatever the builder meant by it
        {{7}, "0"},
    };
    for (const Case& c : cases) {
        Table table(7, c.tokens);
        table.set(0, 1, "90");
        table.set(0, 7, "11:59:00 PM");
        EXPECT_EQ(table.result(), c.expected) << *c.tokens.begin();
    }
}

TEST(CalcExpression20, countsBetweenTimes) {
    struct Case {
        int resultType;
        const char* first;
        const char* second;
        const char* expected;
    };
    const Case cases[] = {
        {8, "3:00:00 PM", "1:59:59 PM", "2"},
        {8, "1:00:00 PM", "3:00:00 PM", "-2"},
        {9, "1:01:00 PM", "1:00:59 PM", "1"},
        {10, "1:00:00 PM", "1:00:30 PM", "-30"},
        {8, "", "1:00:00 PM", "0"},
        {9, "1:00:00 PM", "", "0"},
        {11, "3:05:09 PM", "1:04:00 PM", "2:1:9"},
        {11, "1:00:00 PM", "3:00:00 PM", ""},
        {11, "1:00:00 PM", "1:00:00 PM", "0:0:0"},
        {11, "", "1:00:00 PM", ""},
        {12, "3:05:09 PM", "1:04:00 PM", "2:1"},
        {12, "1:00:00 PM", "3:00:00 PM", ""},
        {12, "11:59:59 PM", "12:00:00 AM", "23:59"},
    };
    for (const Case& c : cases) {
        Table table(c.resultType, {7, 91, 8});
        table.set(0, 7, c.first);
        table.set(0, 8, c.second);
        EXPECT_EQ(table.result(), c.expected) << c.resultType << " " << c.first << " " << c.second;
    }
}

TEST(CalcExpression20, leavesOtherFormatsAtZero) {
    for (const int resultType : {13, 14, 200}) {
        Table table(resultType, {1, 90, 1}, 2);
        table.set(0, 1, "5");
        EXPECT_EQ(table.result(), "0") << resultType;
    }
}

TEST(CalcExpression20, readsPreviousRecords) {
    CalculatedFields table(3);
    table.field(1, FieldType::Integer);
    table.field(5, FieldType::Date);
    table.field(9, FieldType::Text);
    for (int record = 0; record < 3; ++record) {
        table.set(record, 1, std::to_string(record + 1));
        table.set(record, 5, "1/" + std::to_string(record + 1) + "/2003");
        table.set(record, 9, "7");
    }
    const auto results = [&](int resultType, std::initializer_list<Token> tokens) {
        table.doc.CurrDB20.Expressions.erase(kField);
        table.expression(kField, FieldType::Expression, resultType, tokens);
        std::vector<std::string> all;
        for (int record = 0; record < 3; ++record)
            all.push_back(calcExpression20(table.doc, table.t.services, kField, record));
        return all;
    };
    using Results = std::vector<std::string>;
    EXPECT_EQ(results(0, {kPrevious + 1}), (Results{"0", "1", "2"}));
    EXPECT_EQ(results(0, {1, 90, kPrevious + 1}), (Results{"1", "3", "5"}));
    EXPECT_EQ(results(4, {5, 91, kPrevious + 5}), (Results{"0", "1", "1"})); // the first has a number there, no date
    EXPECT_EQ(results(0, {kPrevious + 9}), (Results{"0", "0", "0"}));
    EXPECT_EQ(results(1, {5, 90, kPrevious + 9}), (Results{"1/1/2003", "1/2/2003", "1/3/2003"})); // 0 is a number
    EXPECT_EQ(results(0, {1, 90, kPrevious + 81}), (Results{"1", "2", "3"}));
    EXPECT_EQ(results(0, {1, 90, kPrevious + 155}), (Results{"1", "2", "3"}));
}

TEST(CalcExpression20, readsAPreviousCalculatedOperandByTheSlotAheadOfIt) {
    CalculatedFields table(2);
    table.expression(3, FieldType::Expression, 0, {});
    table.expression(2, FieldType::Expression, 1, {}); // says that slot 3 is a date when it is read from above
    table.expression(kField, FieldType::Expression, 1, {kPrevious + 3, 90, 86});
    table.constant(kField, 2, "1");
    table.set(0, 3, "1/2/2003");
    EXPECT_EQ(calcExpression20(table.doc, table.t.services, kField, 1), "1/3/2003");
}

TEST(CalcExpression20, tellsAnOverflowAsZero) {
    Table table(0, {1, 92, 1, 92, 1, 92, 1, 92, 1, 92, 1, 92, 1, 92, 1}, 2);
    table.field(1, FieldType::DBLookup);
    table.set(0, 1, "1e60");
    EXPECT_EQ(table.result(), "0");
}

} // namespace
} // namespace tallybook::calc
