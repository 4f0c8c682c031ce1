#include "core/calc/expressions/OlderExpression.h"

#include "support/CalculatedFields.h"

#include <gtest/gtest.h>

namespace tallybook::calc {
namespace {

using model::FieldType;
using test::CalculatedFields;

constexpr int kField = 10; // the field that is calculated

// Numbers in slots 1 to 4, dates in 5 and 6, times in 7 and 8; what a case does not say is empty.
struct Table : CalculatedFields {
    explicit Table(std::initializer_list<Token> tokens, int decimals = 0, int records = 1)
        : CalculatedFields(records) {
        for (int slot = 1; slot <= 4; ++slot)
            field(slot, FieldType::Float, 2);
        for (const int slot : {5, 6})
            field(slot, FieldType::Date);
        for (const int slot : {7, 8})
            field(slot, FieldType::Time);
        expression(kField, FieldType::Expression, 0, tokens, decimals);
    }
    std::string result(int record = 0) { return calcExpression(doc, t.services, kField, record); }
};

TEST(CalcExpression, takesTheSignsThemselvesAsOperators) {
    struct Case {
        const char* name;
        std::initializer_list<Token> tokens;
        const char* expected; // with 1: 5, 2: 3, 3: 2, 4: 0
    };
    const Case cases[] = {
        {"no operator binds closer", {1, 43, 2, 42, 3}, "16"},
        {"minus and divided by", {1, 45, 2, 47, 3}, "1"},
        {"a division by zero is skipped", {1, 47, 4, 43, 2}, "8"},
        {"a blank operator drops its operand", {1, 0, 2, 43, 3}, "7"},
        {"today's codes mean nothing", {1, 90, 2, 91, 2, 92, 2, 93, 2}, "5"},
        {"eight operands", {1, 43, 1, 43, 1, 43, 1, 43, 1, 43, 1, 43, 1, 43, 1}, "40"},
        {"no operand at all", {}, "0"},
    };
    for (const Case& c : cases) {
        Table table(c.tokens);
        table.set(0, 1, "5");
        table.set(0, 2, "3");
        table.set(0, 3, "2");
        table.set(0, 4, "0");
        EXPECT_EQ(table.result(), c.expected) << c.name;
    }
}

TEST(CalcExpression, calculatesInSinglePrecision) {
    struct Case {
        const char* first;
        const char* second;
        const char* expected;
    };
    const Case cases[] = {
        {"16777217", "0", "16777216"}, // more bits than a single has
        {"16777216", "1", "16777216"}, // in the sum too
        {"16777216", "2", "16777218"},
        {"1E+39", "1", "0"}, // no single is as large
    };
    for (const Case& c : cases) {
        Table table({1, 43, 2});
        table.set(0, 1, c.first);
        table.set(0, 2, c.second);
        EXPECT_EQ(table.result(), c.expected) << c.first << " + " << c.second;
    }
}

TEST(CalcExpression, writesAsManyDigitsAsTheFieldHas) {
    struct Case {
        int decimals;
        const char* expected;
    };
    const Case cases[] = {{0, "3"}, {1, "2.5"}, {2, "2.50"}, {3, "2.500"}, {4, ""}, {255, ""}};
    for (const Case& c : cases) {
        Table table({1, 47, 2}, c.decimals);
        table.set(0, 1, "5");
        table.set(0, 2, "2");
        EXPECT_EQ(table.result(), c.expected) << c.decimals;
    }
}

TEST(CalcExpression, knowsThePresentByItsOwnCodes) {
    struct Case {
        std::initializer_list<Token> tokens;
        const char* expected;
    };
    const Case cases[] = {
        {{79}, "13:05:09"}, // and not the field in slot 79
        {{84}, "3/5/2003"},
        {{87}, "0"},
        {{84, 43, 1}, "3/6/2003"},
    };
    for (const Case& c : cases) {
        Table table(c.tokens);
        table.field(79, FieldType::Float, 2);
        table.set(0, 79, "4");
        table.set(0, 1, "1");
        EXPECT_EQ(table.result(), c.expected);
    }
}

TEST(CalcExpression, takesTheKindOfTheResultFromTheOperands) {
    struct Case {
        const char* name;
        std::initializer_list<Token> tokens; // 1: 1, 2: 3, 5: 1/31/2003 (37652), 6: 1/30/2003, 7: 6:00:00, 8: 1:30:05
        const char* expected;
    };
    const Case cases[] = {
        {"date plus number", {5, 43, 1}, "2/1/2003"},
        {"date minus number", {5, 45, 1}, "1/30/2003"},
        {"number plus date", {1, 43, 5}, "2/1/2003"},
        {"number minus date", {1, 45, 5}, "11/28/1796"}, // day -37651
        {"date plus date", {5, 43, 6}, "3/3/2106"},      // day 75303
        {"date minus date", {5, 45, 6}, "12/31/1899"},   // day 1
        {"a date alone", {5}, "1/31/2003"},
        {"a product, then a date", {1, 42, 2, 43, 5}, "2/3/2003"},
        {"a date has no product", {5, 42, 2}, "1/31/2003"},
        {"nor a quotient", {5, 47, 2}, "1/31/2003"},
        {"a date that is only multiplied with", {1, 42, 5}, "12/30/1899"},
        {"a date behind a blank operator", {1, 0, 5}, "12/30/1899"},
        {"date plus time", {5, 43, 7}, "1/31/2003"},
        {"time plus date", {7, 43, 5}, "1/31/2003"},
        {"a date beyond the calendar", {5, 43, 3}, "0"}, // 3: 9999999
        {"time plus time", {7, 43, 8}, "7:30:05"},
        {"time minus time", {7, 45, 8}, "4:29:55"},
        {"a time below midnight", {8, 45, 7}, "19:30:05"},
        {"a time behind the day", {7, 43, 7, 43, 7, 43, 7, 43, 8}, "1:30:05"},
        {"time plus number", {7, 43, 2}, "6:00:00"},
        {"number plus time", {2, 43, 7}, "6:00:00"},
        {"a time has no product", {7, 42, 2}, "6:00:00"},
        {"number plus number", {1, 43, 2}, "4"},
    };
    for (const Case& c : cases) {
        Table table(c.tokens);
        table.set(0, 1, "1");
        table.set(0, 2, "3");
        table.set(0, 3, "9999999");
        table.set(0, 5, "1/31/2003");
        table.set(0, 6, "1/30/2003");
        table.set(0, 7, "6:00:00 AM");
        table.set(0, 8, "1:30:05 AM");
        EXPECT_EQ(table.result(), c.expected) << c.name;
    }
}

TEST(CalcExpression, goesByTheKindOfEmptyCells) {
    struct Case {
        const char* name;
        std::initializer_list<Token> tokens; // 1: 1
        const char* expected;
    };
    const Case cases[] = {
        {"an empty date is day 0", {6}, "12/30/1899"},
        {"an empty time is no time", {8, 43, 1}, "1"},
        {"an empty number is 0", {2, 43, 1}, "1"},
    };
    for (const Case& c : cases) {
        Table table(c.tokens);
        table.set(0, 1, "1");
        EXPECT_EQ(table.result(), c.expected) << c.name;
    }
}

TEST(CalcExpression, takesACheckBoxByItsStoredValue) {
    Table table({9, 43, 1});
    table.field(9, FieldType::Checkbox);
    table.set(0, 1, "4");
    table.check(0, 9, model::Picture::CheckOn);
    EXPECT_EQ(table.result(), "4");
    table.doc.CellLongs.set(0, 9, 1);
    EXPECT_EQ(table.result(), "5");
}

// The format of the slot ahead of the calculated field decides, as it does today.
TEST(CalcExpression, takesHoursMinutesAndSecondsAsATime) {
    Table table({20, 43, 7});
    table.field(20, FieldType::Expression);
    table.doc.CurrDB20.Expressions[kField - 1].ResultType = result::kHoursMinutesSeconds;
    table.set(0, 20, "1:5:9");
    table.set(0, 7, "6:00:00 AM");
    EXPECT_EQ(table.result(), "7:05:09");
}

TEST(CalcExpression, readsTheRecordAbove) {
    Table table({101, 43, 1}, 0, 2);
    table.set(0, 1, "5");
    table.set(1, 1, "2");
    EXPECT_EQ(table.result(0), "5"); // nothing stands above the first
    EXPECT_EQ(table.result(1), "7");
}

TEST(CalcExpression, takesNoDateFromAboveTheFirstRecord) {
    Table table({105, 43, 1}, 0, 2);
    table.set(0, 5, "1/31/2003");
    table.set(0, 1, "1");
    table.set(1, 1, "1");
    EXPECT_EQ(table.result(0), "1");
    EXPECT_EQ(table.result(1), "2/1/2003");
}

} // namespace
} // namespace tallybook::calc
