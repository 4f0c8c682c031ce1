// The lists of the simple form and what they store.
#include "core/design/ExpressionStore.h"
#include "support/Regions.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace tallybook::design {
namespace {

using model::DatabaseModel;
using model::ExprDef;
using model::FieldType;

DatabaseModel books() {
    DatabaseModel db;
    db.Fields[1].Type = FieldType::Float;
    db.Fields[1].Name = "Price";
    db.Fields[2].Name = "Fld02"; // free
    db.Fields[80].Type = FieldType::Date;
    db.Fields[80].Name = "Last";
    return db;
}

TEST(SimpleForm, listsTheResultFormatsByCode) {
    const std::vector<std::string_view> expected = {"Floating",        "Date +/- Days ", "Date +/- Months  ",
                                                    "Date +/- Years ", "Days",           "Months",
                                                    "Years",           "Time",           "Hours",
                                                    "Minutes",         "Seconds",        "Hours-Minutes-Seconds",
                                                    "Hours-Minutes"};
    const auto formats = expressionFormats();
    EXPECT_EQ(std::vector<std::string_view>(formats.begin(), formats.end()), expected);
}

TEST(SimpleForm, listsTheOperandsByPosition) {
    const auto entries = operandEntries(books());
    ASSERT_EQ(entries.size(), 163u);
    EXPECT_EQ(entries[0], " ");
    EXPECT_EQ(entries[1], "Price");
    EXPECT_EQ(entries[2], "Fld02");
    EXPECT_EQ(entries[79], "Fld79");
    EXPECT_EQ(entries[80], "Last");
    EXPECT_EQ(entries[81], "Today");
    EXPECT_EQ(entries[82], "Now");
    EXPECT_EQ(entries[83], "Prev (Price)");
    EXPECT_EQ(entries[84], "Prev (Fld02)");
    EXPECT_EQ(entries[162], "Prev (Last)");
}

TEST(SimpleForm, listsTheOperatorsOfAFormat) {
    using Entries = std::vector<std::string_view>;
    const auto at = [](int format, int list) {
        const auto entries = operatorEntries(format, list);
        return Entries(entries.begin(), entries.end());
    };
    for (int list = 0; list < kOperators; ++list)
        EXPECT_EQ(at(0, list), (Entries{" ", "+", "-", "*", "/"}));
    for (const int format : {1, 2, 3, 7})
        EXPECT_EQ(at(format, 0), (Entries{" ", "-", "+"})) << format;
    for (const int format : {4, 5, 6, 8, 9, 10, 11, 12})
        EXPECT_EQ(at(format, 0), (Entries{" ", "-"})) << format;
    EXPECT_EQ(at(7, 1), Entries{" "});
}

TEST(StoreExpression20, writesTheTokensOfThePositions) {
    test::TestServices services;
    SimpleChoices choices;
    choices.operands[0].position = 1;
    choices.operands[1].position = 80;
    choices.operands[2].position = 81;
    choices.operands[3].position = 82;
    choices.operands[4].position = 83;
    choices.operands[5].position = 162;
    choices.operands[6] = {kTypedNumber, "2.50"};
    choices.operands[7].position = 0;
    choices.operators = {1, 2, 3, 4, 0, 1, 0};
    ExprDef expression;
    expression.ResultType = 7;
    expression.Tokens[9] = 90;
    expression.Tokens[14] = 5;
    ASSERT_TRUE(StoreExpression20(choices, services.services, expression));
    EXPECT_EQ(expression.ResultType, 0);
    const std::array<std::uint32_t, 16> expected = {1, 90, 80, 91, 84, 92, 79, 93, 101, 0, 180, 90, 86, 0, 0, 0};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(expression.Tokens[i], expected[i]) << i;
    EXPECT_EQ(expression.TokenTexts[12], "2.5");
    EXPECT_EQ(choicesOf(expression).operands[3].position, 82); // Now, though it is also slot 79
}

TEST(StoreExpression20, readsOneOperatorBesideDatesAndTimes) {
    const struct {
        int position;
        std::uint32_t before, after;
    } cases[] = {{1, 0, 91}, {2, 0, 90}, {0, 0, 0}, {0, 90, 90}, {1, 90, 91}};
    for (const auto& c : cases) {
        test::TestServices services;
        SimpleChoices choices;
        choices.format = 1;
        choices.operators = {c.position, 3, 3, 3, 3, 3, 3};
        ExprDef expression;
        expression.Tokens[1] = c.before;
        expression.Tokens[3] = 77;
        ASSERT_TRUE(StoreExpression20(choices, services.services, expression));
        EXPECT_EQ(expression.Tokens[1], c.after);
        EXPECT_EQ(expression.Tokens[3], 77u); // the others are not read
    }
}

TEST(StoreExpression20, writesTypedNumbersAsDecimalText) {
    const struct {
        const char* typed;
        const char* stored;
    } cases[] = {{"", "0"},         {"abc", "0"},
                 {"5", "5"},        {" 5 ", "5"},
                 {"007.10", "7.1"}, {".5", "0.5"},
                 {"1e3", "1000"},   {"$1,000", "1000"},
                 {"-2", "-2"},      {"1234567890", "1234567890"},
                 {"1e400", "0"},    {"12345678.900000", "12345678.9"}};
    for (const auto& c : cases) {
        test::TestServices services;
        SimpleChoices choices;
        choices.operands[0] = {kTypedNumber, c.typed};
        ExprDef expression;
        ASSERT_TRUE(StoreExpression20(choices, services.services, expression)) << c.typed;
        EXPECT_EQ(expression.Tokens[0], 86u);
        EXPECT_EQ(expression.TokenTexts[0], c.stored) << c.typed;
    }
}

// A file is read in every region.
TEST(StoreExpression20, writesThePointWhateverTheRegion) {
    const struct {
        const char* typed;
        const char* stored;
    } cases[] = {{"2,5", "2.5"}, {"2.5", "2.5"},   {"1.000", "1000"},    {"0,125", "0.1250"},
                 {"-7", "-7"},   {"1,25", "1.25"}, {"1.234,5", "1234.5"}};
    for (const auto& c : cases) {
        test::TestServices services;
        services.regional = test::german();
        SimpleChoices choices;
        choices.operands[0] = {kTypedNumber, c.typed};
        ExprDef expression;
        ASSERT_TRUE(StoreExpression20(choices, services.services, expression)) << c.typed;
        EXPECT_EQ(expression.TokenTexts[0], c.stored) << c.typed;
    }
}

TEST(StoreExpression20, keepsWhatWasNotChanged) {
    test::TestServices services;
    ExprDef expression;
    expression.ResultType = 0;
    expression.Tokens = {87, 90, 79, 43, 86, 92, 200, 0, 85, 0, 0, 0, 0, 0, 0, 17};
    expression.TokenTexts[4] = "007";
    expression.TokenTexts[5] = "left";
    const ExprDef before = expression;
    SimpleChoices choices = choicesOf(expression);
    ASSERT_TRUE(StoreExpression20(choices, services.services, expression));
    EXPECT_EQ(expression, before);
    choices.operands[1].position = 3;
    choices.operators[2] = 4;
    ASSERT_TRUE(StoreExpression20(choices, services.services, expression));
    ExprDef expected = before;
    expected.Tokens[2] = 3;
    expected.Tokens[5] = 93;
    EXPECT_EQ(expression, expected);
}

TEST(StoreExpression20, refusesANumberOfElevenCharacters) {
    test::TestServices services;
    SimpleChoices choices;
    choices.format = 3;
    choices.operands[0].position = 1;
    choices.operands[1] = {kTypedNumber, "12345678901"};
    ExprDef expression;
    EXPECT_FALSE(StoreExpression20(choices, services.services, expression));
    EXPECT_EQ(expression, ExprDef{});
    EXPECT_EQ(services.user.texts(), std::vector<std::string>{"A number may have at most 10 characters."});
}

TEST(SimpleForm, showsWhatIsStored) {
    ExprDef expression;
    expression.ResultType = 0;
    expression.Tokens = {86, 90, 79, 91, 87, 92, 84, 93, 180, 42, 199, 0, 101};
    expression.TokenTexts[0] = "2.5";
    const SimpleChoices choices = choicesOf(expression);
    EXPECT_EQ(choices.format, 0);
    EXPECT_EQ(choices.operands[0], (OperandChoice{kTypedNumber, "2.5"}));
    const int positions[] = {-1, 82, 82, 81, 162, 0, 83, 0};
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(choices.operands[i].position, positions[i]) << i;
    EXPECT_EQ(choices.operators, (std::array<int, 7>{1, 2, 3, 4, 0, 0, 0}));
}

TEST(SimpleForm, showsTheOperatorOfDatesAndTimesByItsShorterList) {
    const struct {
        std::uint8_t resultType;
        std::uint32_t token;
        int position;
    } cases[] = {{1, 91, 1}, {1, 90, 2}, {7, 90, 2}, {4, 91, 1}, {4, 90, 0}, {1, 92, 0}};
    for (const auto& c : cases) {
        ExprDef expression;
        expression.ResultType = c.resultType;
        expression.Tokens[1] = c.token;
        EXPECT_EQ(choicesOf(expression).operators[0], c.position);
    }
    ExprDef advanced;
    advanced.ResultType = 13;
    EXPECT_EQ(choicesOf(advanced).format, -1);
}

} // namespace
} // namespace tallybook::design
