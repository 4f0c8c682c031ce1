// The text of an advanced expression and its tokens: Compile, displayText.
#include "calc/expressions/ExpressionBench.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::calc {
namespace {

using test::ExpressionBench;

struct Compiled {
    std::vector<Token> tokens; // up to the first 0
    std::vector<std::string> texts;
    bool operator==(const Compiled&) const = default;
};

void PrintTo(const Compiled& compiled, std::ostream* out) {
    for (std::size_t i = 0; i < compiled.tokens.size(); ++i)
        *out << compiled.tokens[i] << ":" << testing::PrintToString(compiled.texts[i]) << " ";
}

Compiled compiled(std::string_view text, const std::vector<std::string>& names = ExpressionBench().names) {
    TokenArray tokens{};
    TokenTextArray texts;
    CompileError error;
    Compiled result;
    if (Compile(text, names, tokens, texts, error) < 0) {
        ADD_FAILURE() << text << ": " << error.text << " at " << error.position;
        return result;
    }
    for (std::size_t i = 0; i < tokens.size() && tokens[i] != 0; ++i) {
        result.tokens.push_back(tokens[i]);
        result.texts.push_back(texts[i]);
    }
    return result;
}

std::string code(int value) {
    return std::string(1, static_cast<char>(value));
}

TEST(Compile, writesTheCodesOfTheTokens) {
    const struct {
        const char* text;
        Compiled expected;
    } cases[] = {
        {"Price", {{1}, {""}}},
        {"[Unit Price]", {{3}, {""}}},
        {"[Price]", {{1}, {""}}},
        {"Prev(Unit Price)", {{103}, {""}}},
        {"prev ( Price )", {{101}, {""}}},
        {"Prev([Unit Price])", {{103}, {""}}},
        {"Today", {{84}, {""}}},
        {"nOW", {{87}, {""}}},
        {"[Today]", {{17}, {""}}},
        {"PREVINDEX", {{99}, {""}}},
        {"PI", {{86}, {"3.14159265"}}},
        {"1.50", {{86}, {"1.50"}}},
        {".5", {{86}, {".5"}}},
        {"1234567890", {{86}, {"1234567890"}}},
        {"'it\\'s'", {{88}, {"it's"}}},
        {"'a\\\\b'", {{88}, {"a\\b"}}},
        {"''", {{88}, {""}}},
        {"{black}1", {{89, 86}, {"", "1"}}},
        {"{Red}1", {{89, 86}, {code(1), "1"}}},
        {"1{ yellow }", {{86, 89}, {"1", code(4)}}},
        {"1+2-3*4/5", {{86, 90, 86, 91, 86, 92, 86, 93, 86}, {"1", "", "2", "", "3", "", "4", "", "5"}}},
        {"-Price", {{91, 1}, {"", ""}}},
        {"(Price)", {{95, 1, 96}, {"", "", ""}}},
        {"Abs(Price)", {{94, 1, 96}, {code(4), "", ""}}},
        {"ABS (Price)", {{94, 1, 96}, {code(4), "", ""}}},
        {"Round(Price, 2)", {{94, 1, 97, 86, 96}, {code(8), "", "", "2", ""}}},
        {"1%2", {{86, 98, 86}, {"1", code(1), "2"}}},
        {"1<=2", {{86, 98, 86}, {"1", code(2), "2"}}},
        {"1>=2", {{86, 98, 86}, {"1", code(3), "2"}}},
        {"1<2", {{86, 98, 86}, {"1", code(4), "2"}}},
        {"1>2", {{86, 98, 86}, {"1", code(5), "2"}}},
        {"1=2", {{86, 98, 86}, {"1", code(6), "2"}}},
        {"1<>2", {{86, 98, 86}, {"1", code(7), "2"}}},
        {"1&2", {{86, 98, 86}, {"1", code(8), "2"}}},
        {"1|2", {{86, 98, 86}, {"1", code(9), "2"}}},
        {"1^2", {{86, 98, 86}, {"1", code(10), "2"}}},
        {"!1", {{98, 86}, {code(11), "1"}}},
        {"1**2", {{86, 98, 86}, {"1", code(12), "2"}}},
        {" \t\r\n\xA0Price ", {{1}, {""}}},
        {"Day", {{20}, {""}}}, // a function's name is one with a bracket behind it
        {"Day(Due)", {{94, 8, 96}, {code(11), "", ""}}},
        {"Name", {{6}, {""}}}, // the first of two
        {"[a]b]", {{19}, {""}}},
        {"Prev(Cost (net))", {{118}, {""}}},
        {"(Prev(Cost (net)))", {{95, 118, 96}, {"", "", ""}}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(compiled(c.text), c.expected) << c.text;
}

TEST(Compile, knowsEveryFunction) {
    const char* calls[] = {"If(1,2,3)", "Sel(1,2)", "Sqrt(1)",     "Abs(1)",      "Sign(1)",   "Ceil(1)",
                           "Floor(1)",  "Round(1)", "Date(1,2,3)", "Time(1,2,3)", "Day(1)",    "Month(1)",
                           "Year(1)",   "Hour(1)",  "Minute(1)",   "Second(1)",   "Weekday(1)"};
    int function = 1;
    for (const char* call : calls) {
        const Compiled result = compiled(call);
        EXPECT_EQ(result.tokens[0], 94u) << call;
        EXPECT_EQ(result.texts[0], code(function++)) << call;
    }
}

TEST(Compile, emptiesWhatLiesBehindTheEnd) {
    TokenArray tokens;
    tokens.fill(85);
    TokenTextArray texts;
    texts.fill("old");
    CompileError error;
    ASSERT_EQ(Compile("1", {}, tokens, texts, error), 0);
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        EXPECT_EQ(tokens[i], 0u);
        EXPECT_EQ(texts[i], "");
    }
}

TEST(Compile, leavesTheArraysAtAnError) {
    TokenArray tokens;
    tokens.fill(85);
    TokenTextArray texts;
    texts.fill("old");
    CompileError error;
    EXPECT_LT(Compile("1+", {}, tokens, texts, error), 0);
    EXPECT_EQ(tokens[0], 85u);
    EXPECT_EQ(texts[0], "old");
}

// 24 numbers and 23 signs between them, and a sign in front.
std::string fullExpression() {
    std::string text = "-1";
    for (int i = 0; i < 23; ++i)
        text += "+1";
    return text;
}

TEST(Compile, fillsAll48Tokens) {
    TokenArray tokens{};
    TokenTextArray texts;
    CompileError error;
    ASSERT_EQ(Compile(fullExpression(), {}, tokens, texts, error), 0);
    EXPECT_EQ(tokens.back(), 86u); // no end token is left
    EXPECT_EQ(displayText(tokens, texts, {}), fullExpression());
    const auto outcome = ExpressionBench().run(fullExpression());
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ(outcome.text, "22");
}

struct ErrorCase {
    const char* text;
    const char* expected; // the place, then the message
};

TEST(Compile, namesTheFirstErrorAndItsPlace) {
    const ErrorCase cases[] = {
        {"", "0: The expression is empty."},
        {"  ", "2: The expression is empty."},
        {"1+", "2: A value is missing here."},
        {"1+*2", "2: A value is missing here."},
        {"1**", "3: A value is missing here."},
        {"-", "1: A value is missing here."},
        {"{red}+", "6: A value is missing here."},
        {"()", "1: A value is missing here."},
        {"Abs()", "4: A value is missing here."},
        {"Round(1,)", "8: A value is missing here."},
        {"Round(,1)", "6: A value is missing here."},
        {"+1", "0: A value is missing here."},
        {"1 2", "2: An operator is missing here."},
        {"Price Qty", "6: An operator is missing here."},
        {"1!2", "1: An operator is missing here."},
        {"2(3)", "1: An operator is missing here."},
        {"5x", "1: There is no field, constant or function \"x\"."},
        {"Price(2)", "5: An operator is missing here."},
        {"Today(2)", "5: An operator is missing here."},
        {"(1+2", "0: The bracket is not closed."},
        {"1+Abs(2", "2: The bracket is not closed."},
        {"1)", "1: There is no open bracket to be closed."},
        {")", "0: There is no open bracket to be closed."},
        {"1,2", "1: A comma may stand between the values of a function only."},
        {",", "0: A comma may stand between the values of a function only."},
        {"Abs((1,2))", "6: A comma may stand between the values of a function only."},
        {"If(1,2)", "0: If takes 3 values."},
        {"1+Sel(1)", "2: Sel takes 2 or more values."},
        {"Round(1,2,3)", "0: Round takes 1 or 2 values."},
        {"Abs(1,2)", "0: Abs takes 1 value."},
        {"foo", "0: There is no field, constant or function \"foo\"."},
        {"1+price", "2: There is no field, constant or function \"price\". Did you mean Price?"},
        {"Unit Price*2", "0: There is no field, constant or function \"Unit\". Did you mean [Unit Price]?"},
        {"unit price*2", "0: There is no field, constant or function \"unit\". Did you mean [Unit Price]?"},
        {"Unit Prices", "0: There is no field, constant or function \"Unit\"."},
        {"cost (net)", "0: There is no field, constant or function \"cost\". Did you mean [Cost (net)]?"},
        {"[unit price]", "0: There is no field \"unit price\". Did you mean Unit Price?"},
        {"Prev( unit price )", "6: There is no field \"unit price \". Did you mean Unit Price?"},
        {"1 != 2", "2: \"!=\" means nothing here. Write \"<>\"."},
        {"1 == 2", "2: \"==\" means nothing here. Write \"=\"."},
        {"1 && 2", "2: \"&&\" means nothing here. Write \"&\"."},
        {"1 || 2", "2: \"||\" means nothing here. Write \"|\"."},
        {"1 => 2", "2: \"=>\" means nothing here. Write \">=\"."},
        {"1 =< 2", "2: \"=<\" means nothing here. Write \"<=\"."},
        {"foo(1)", "0: There is no function \"foo\"."},
        {"If", "0: \"If\" needs an opening bracket behind it."},
        {"Prev", "0: \"Prev\" needs an opening bracket behind it."},
        {"1+[foo]", "2: There is no field \"foo\"."},
        {"[]", "0: There is no field \"\"."},
        {"[Price", "0: The square bracket is not closed."},
        {"Prev(foo)", "5: There is no field \"foo\"."},
        {"Prev(Price", "0: Prev has no closing bracket."},
        {"1+'abc", "2: The text has no closing quote."},
        {"'abc\\'", "0: The text has no closing quote."},
        {"'12345678901'", "0: A text may have at most 10 characters."},
        {"1+12345678901", "2: A number may have at most 10 characters."},
        {"{pink}1", "0: There is no colour \"pink\". Colours are black, red, green, blue and yellow."},
        {"{red", "0: The brace is not closed."},
        {"1 # 2", "2: \"#\" means nothing here."},
        {".", "0: \".\" means nothing here."},
        {"5.", "1: \".\" means nothing here."},
        {"1+2)+#", "3: There is no open bracket to be closed."}, // the first of two
        {"(1+#", "3: \"#\" means nothing here."},
        {"If(1) #", "0: If takes 3 values."},
        {"'12345678901234567890123456789012345678901234567890'", "0: A text may have at most 10 characters."},
        {"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
         "0: There is no field, constant or function \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...\"."},
    };
    for (const ErrorCase& c : cases)
        EXPECT_EQ(ExpressionBench().errorOf(c.text), c.expected) << c.text;
}

TEST(Compile, refusesA49thToken) {
    EXPECT_EQ(ExpressionBench().errorOf(fullExpression() + " +1"), "49: An expression may have at most 48 parts.");
}

TEST(Compile, refusesToGoDeeperThan32) {
    const std::string signs(31, '-');
    EXPECT_EQ(ExpressionBench().errorOf(signs + "1"), "");
    EXPECT_EQ(ExpressionBench().errorOf(signs + "-1"), "32: The expression is nested too deeply.");
    EXPECT_EQ(ExpressionBench().errorOf(std::string(23, '(') + "1" + std::string(23, ')')), "");
    EXPECT_EQ(ExpressionBench().errorOf(std::string(100000, '(')), "32: The expression is nested too deeply.");
    EXPECT_EQ(ExpressionBench().errorOf("1" + std::string(100000, ')')), "1: There is no open bracket to be closed.");
}

TEST(Compile, refusesANulInAText) {
    EXPECT_EQ(ExpressionBench().errorOf(std::string_view("'a\0'", 4)), "2: \"\\0\" means nothing here.");
}

TEST(FieldNameRequiresBrackets, unlessTheNameIsAWord) {
    const struct {
        const char* name;
        bool requires_;
    } cases[] = {{"Price", false},
                 {"Price_2", false},
                 {"_", false},
                 {"z9", false},
                 {"Unit Price", true},
                 {"2nd", true},
                 {"", true},
                 {"a-b", true},
                 {"Gr\xF6\xDF"
                  "e",
                  true},
                 {"9", true}};
    for (const auto& c : cases)
        EXPECT_EQ(FieldNameRequiresBrackets(c.name), c.requires_) << c.name;
}

TEST(DisplayText, showsEveryToken) {
    const ExpressionBench bench;
    const struct {
        Token code;
        std::string text;
        const char* expected;
    } cases[] = {
        {1, "", "Price"},
        {3, "", "[Unit Price]"},
        {4, "", "Price_2"},
        {5, "", "[2nd]"},
        {21, "", "[]"},
        {81, "", "?"},
        {82, "", "?"},
        {83, "", "?"},
        {84, "", "Today"},
        {85, "", "?"},
        {86, "007.50", "007.50"},
        {87, "", "Now"},
        {88, "it's", "'it\\'s'"},
        {88, "\\", "'\\\\'"},
        {89, "", "{black}"},
        {89, code(0), "{black}"},
        {89, code(1), "{red}"},
        {89, code(2), "{green}"},
        {89, code(3), "{blue}"},
        {89, code(4), "{yellow}"},
        {89, code(5), "{?}"},
        {89, code(255), "{?}"},
        {90, "", "+"},
        {91, "", "-"},
        {92, "", "*"},
        {93, "", "/"},
        {94, code(1), "If ("},
        {94, code(2), "Sel ("},
        {94, code(3), "Sqrt ("},
        {94, code(4), "Abs ("},
        {94, code(5), "Sign ("},
        {94, code(6), "Ceil ("},
        {94, code(7), "Floor ("},
        {94, code(8), "Round ("},
        {94, code(9), "Date ("},
        {94, code(10), "Time ("},
        {94, code(11), "Day ("},
        {94, code(12), "Month ("},
        {94, code(13), "Year ("},
        {94, code(14), "Hour ("},
        {94, code(15), "Minute ("},
        {94, code(16), "Second ("},
        {94, code(17), "Weekday ("},
        {94, code(18), "func?("},
        {94, "", "func?("},
        {95, "", "("},
        {96, "", ")"},
        {97, "", ", "},
        {98, code(1), "%"},
        {98, code(2), " <= "},
        {98, code(3), " >= "},
        {98, code(4), " < "},
        {98, code(5), " > "},
        {98, code(6), " = "},
        {98, code(7), " <> "},
        {98, code(8), " & "},
        {98, code(9), " | "},
        {98, code(10), " ^ "},
        {98, code(11), " ! "},
        {98, code(12), " ** "},
        {98, code(13), " oper? "},
        {98, "", " oper? "},
        {99, "", "PrevIndex"},
        {100, "", "?"},
        {103, "", "Prev(Unit Price)"},
        {121, "", "Prev()"},
        {181, "", "?"},
        {255, "", "?"},
        {4294967295u, "", "?"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(displayText(std::vector{c.code}, std::vector{c.text}, bench.names), c.expected) << c.code;
}

TEST(DisplayText, stopsAtTheFirstZero) {
    const std::vector<Token> tokens = {1, 90, 2, 0, 1};
    EXPECT_EQ(displayText(tokens, std::vector<std::string>(5), ExpressionBench().names), "Price+Qty");
}

TEST(DisplayText, bracketsANameThatWouldBeAConstant) {
    EXPECT_EQ(ExpressionBench().displayed("[Today]+Today"), "[Today]+Today");
}

TEST(DisplayText, writesWhatCompilesToTheSameTokens) {
    const ExpressionBench bench;
    const char* texts[] = {
        "If(Price > 0 & !Done, {red}Round(Price*Qty, 2), {black}Prev(Unit Price)) + PrevIndex",
        "-2 ** -2 ** 2 % 3 - -1",
        "'it\\'s' + [2nd] + ' \\\\'",
        "Sel(Qty, 'a', 'b') <> Label | Today - Due >= 7 ^ PI < 4",
        "Date(Year(Due), Month(Due) + 1, 1) - [a]b] + Prev(a]b) + (Prev(Cost (net)))",
        "Day(Due) = Day & [Today] = 'x' {blue}",
    };
    for (const char* text : texts) {
        const std::string shown = bench.displayed(text);
        EXPECT_EQ(compiled(shown), compiled(text)) << shown;
        EXPECT_EQ(bench.displayed(shown), shown);
    }
}

// Letters beyond A to Z belong to a word, though no bare word may have one.
TEST(CompileErrors, nameWholeWords) {
    ExpressionBench bench;
    const std::string size = "Gr\xF6\xDF\x65";
    const std::string noWord = "0: There is no field, constant or function ";
    bench.names[21] = size;
    EXPECT_EQ(bench.errorOf(size + "*2"), noWord + '"' + size + "\". Did you mean [" + size + "]?");
    EXPECT_EQ(bench.errorOf("GR\xD6\xDF" + std::string("E*2")),
              noWord + "\"GR\xD6\xDF" + "E\". Did you mean [" + size + "]?");
    EXPECT_EQ(bench.errorOf("\xC4nderung"), noWord + "\"\xC4nderung\".");
    EXPECT_EQ(bench.errorOf("Price\xF6"), noWord + "\"Price\xF6\".");
    EXPECT_EQ(bench.errorOf('[' + size + "]*2"), "");
}

} // namespace
} // namespace tallybook::calc
