#include "core/design/ExpressionBuilder.h"

#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::design {
namespace {

using model::FieldType;
using test::TestServices;
using Texts = std::vector<std::string>;

constexpr int kToday = 81;
constexpr int kNow = 82;
constexpr int kPrevious = 82; // plus the slot

// An operand list: the position of an entry, or a typed text.
struct Operand {
    Operand(int position) : choice{position, ""} {}
    Operand(const std::string& text) : choice{kTypedNumber, text} {}
    OperandChoice choice;
};

// Slots: 1 Integer, 2 Float, 3 Date, 4 Time, 5 Text, 6 Radio Button, 7 Adv Expression "Net price".
class ExpressionBuilder : public testing::Test {
protected:
    ExpressionBuilder() {
        field(1, FieldType::Integer, "Count");
        field(2, FieldType::Float, "Price");
        field(3, FieldType::Date, "Bought");
        field(4, FieldType::Time, "At");
        field(5, FieldType::Text, "Note");
        field(6, FieldType::RadioButton, "Size");
        field(7, FieldType::AdvExpression, "Net price");
        field(20, FieldType::NotUsed, "Fld20");
    }
    void field(std::size_t slot, FieldType type, const std::string& name) {
        db.Fields[slot].Type = type;
        db.Fields[slot].Name = name;
    }
    static Operand number(const std::string& text) { return {text}; }

    // The message that a form gives, empty when it passes.
    std::string verify(int format, const std::vector<Operand>& operands, const std::vector<int>& operators) {
        SimpleChoices choices;
        choices.format = format;
        for (std::size_t i = 0; i < operands.size(); ++i)
            choices.operands[i] = operands[i].choice;
        std::copy(operators.begin(), operators.end(), choices.operators.begin());
        t.user.messages.clear();
        const bool passes = VerifyExpression(choices, db, t);
        EXPECT_EQ(passes, t.user.messages.empty());
        if (passes)
            return {};
        EXPECT_EQ(t.user.messages.front().icon, platform::Icon::Information);
        return t.user.messages.front().title + ": " + t.user.messages.front().text;
    }

    TestServices t;
    model::DatabaseModel db;
};

TEST_F(ExpressionBuilder, wantsAReturnType) {
    EXPECT_EQ(verify(-1, {}, {}), "Incomplete Information: Select the return type for the Expression");
}

TEST_F(ExpressionBuilder, wantsOneOperandMoreThanOperators) {
    const std::string incomplete = "Invalid Expression: Complete the Expression";
    EXPECT_EQ(verify(0, {}, {}), incomplete);
    EXPECT_EQ(verify(0, {{1}}, {}), "");
    EXPECT_EQ(verify(0, {{1}, {2}}, {1}), "");
    EXPECT_EQ(verify(0, {{1}, {2}}, {1, 1}), incomplete);
    EXPECT_EQ(verify(0, {{1}, {2}}, {}), incomplete);
    EXPECT_EQ(verify(0, {{1}, {0}, {2}}, {1, 1}), incomplete); // an operand missing in the middle
    EXPECT_EQ(verify(0, {{1}, {2}, {1}}, {0, 1}), incomplete); // an operator
    EXPECT_EQ(verify(0, {{1}, number("  ")}, {1}), incomplete);
}

TEST_F(ExpressionBuilder, refusesADivisionByZero) {
    const std::string zero = "Invalid Expression: The expression generates a Divide by zero. Correct the Expression";
    EXPECT_EQ(verify(0, {{1}, number("0")}, {4}), zero);
    EXPECT_EQ(verify(0, {{1}, number("0")}, {3}), "");
    EXPECT_EQ(verify(0, {{1}, number("0.0")}, {4}), ""); // the very text is looked at
    EXPECT_EQ(verify(0, {number("0"), {1}}, {4}), "");   // nothing stands before it
}

TEST_F(ExpressionBuilder, refusesAWordThatIsNoField) {
    EXPECT_EQ(verify(0, {{1}, number("Prize")}, {1}), "Invalid Field Name: Select the proper fields from the list");
}

TEST_F(ExpressionBuilder, wantsOperandsOfTheFormatsKind) {
    const std::string first = ": Value / Field type required at 1 should only be an Integer, Long, or Float";
    const std::string second = ": Value / Field type required at 2 should only be an Integer, Long or Float";
    const std::string firstDate = ": Value / Field type required at 1 should be only be a Date";
    const std::string secondDate = ": Value / Field type required at 2 should be only be a Date";
    const std::string firstTime = ": Value / Field type required at 1 should be only be a Time";
    const std::string secondTime = ": Value / Field type required at 2 should be only be a Time";
    EXPECT_EQ(verify(0, {{3}, {1}}, {1}), first);
    EXPECT_EQ(verify(0, {{1}, {5}}, {1}), second);
    EXPECT_EQ(verify(0, {{6}, {7}}, {1}), "");
    EXPECT_EQ(verify(0, {{1}, {kPrevious + 2}}, {1}), "");
    EXPECT_EQ(verify(0, {{1}, {kPrevious + 3}}, {1}), second);
    EXPECT_EQ(verify(0, {{20}}, {}), ": Value / Field type required at 1 should only be an Integer, Long, or Float")
        << "a free slot with a name is no number";
    for (const int format : {1, 2, 3}) {
        EXPECT_EQ(verify(format, {{3}, {1}}, {1}), "");
        EXPECT_EQ(verify(format, {{kToday}, {1}}, {1}), "");
        EXPECT_EQ(verify(format, {{1}, {1}}, {1}), firstDate);
        EXPECT_EQ(verify(format, {{3}, {3}}, {1}), second);
    }
    for (const int format : {4, 5, 6}) {
        EXPECT_EQ(verify(format, {{3}, {kToday}}, {1}), "");
        EXPECT_EQ(verify(format, {{4}, {3}}, {1}), firstDate);
        EXPECT_EQ(verify(format, {{3}, {4}}, {1}), secondDate);
        EXPECT_EQ(verify(format, {{3}, number("1/2/2003")}, {1}), ""); // reads as a date
    }
    EXPECT_EQ(verify(7, {{4}, {1}}, {1}), "");
    EXPECT_EQ(verify(7, {{3}, {1}}, {1}), firstTime);
    EXPECT_EQ(verify(7, {{4}, {4}}, {1}), second);
    for (const int format : {8, 9, 10, 11, 12}) {
        EXPECT_EQ(verify(format, {{4}, {kNow}}, {1}), "");
        EXPECT_EQ(verify(format, {{3}, {kNow}}, {1}), firstTime);
        EXPECT_EQ(verify(format, {{4}, {3}}, {1}), secondTime);
        EXPECT_EQ(verify(format, {{4}, number("5")}, {1}), ""); // a number is never refused by its kind
    }
}

TEST_F(ExpressionBuilder, wantsAWholeNumberBehindADate) {
    const std::string warning = "Warning: Please check the value entered. The second operand can only be of the type "
                                "Integer or Long";
    for (const int format : {1, 2, 3}) {
        EXPECT_EQ(verify(format, {{3}, number("1.5")}, {1}), warning);
        EXPECT_EQ(verify(format, {{3}, number("2147483647")}, {1}), warning);
        EXPECT_EQ(verify(format, {{3}, number("-2147483648")}, {1}), warning);
        EXPECT_EQ(verify(format, {{3}, number("2147483646")}, {1}), "");
        EXPECT_EQ(verify(format, {{3}, {2}}, {1}), ""); // a Float field
    }
    EXPECT_EQ(verify(7, {{4}, number("1.5")}, {2}), warning);
    EXPECT_EQ(verify(0, {{1}, number("1.5")}, {1}), "");
    EXPECT_EQ(verify(8, {{4}, number("1.5")}, {1}), "");
}

TEST_F(ExpressionBuilder, helpsByFormat) {
    const std::string numbers = "(Integer, Long, AutoIncremental, Float, Checkbox, Expression, Adv. Expression, "
                                "External Lookup, List, Radio Button)";
    EXPECT_EQ(ShowFormat(-1), "");
    EXPECT_EQ(ShowFormat(0), "Operation(s) with Checkbox, Integer, Long, Floating, Expression, External Lookup");
    EXPECT_EQ(ShowFormat(1), "Date +/- Days" + numbers);
    EXPECT_EQ(ShowFormat(2), "Date +/- Months" + numbers);
    EXPECT_EQ(ShowFormat(3), "Date +/- Years" + numbers);
    for (const int format : {4, 5, 6})
        EXPECT_EQ(ShowFormat(format), "Date - Date\n");
    EXPECT_EQ(ShowFormat(7), "Time +/- Seconds" + numbers);
    for (const int format : {8, 9, 10, 11, 12})
        EXPECT_EQ(ShowFormat(format), "Time - Time\n");
    EXPECT_EQ(ShowFormat(13), "");
}

TEST_F(ExpressionBuilder, resetKeepsTheFormat) {
    SimpleChoices choices;
    choices.format = 4;
    choices.operands[0] = {3, ""};
    choices.operators[0] = 1;
    SimpleChoices expected;
    expected.format = 4;
    EXPECT_EQ(ResetExpression(choices), expected);
}

TEST_F(ExpressionBuilder, anotherFormatKeepsTheSignsThatItHas) {
    SimpleChoices choices;
    choices.operators = {1, 2, 3}; // +, -, *
    choices.operands[1].position = 3;
    const SimpleChoices days = selectFormat(choices, 1); // the first list has "-" and "+"
    EXPECT_EQ(days.format, 1);
    EXPECT_EQ(days.operators, (std::array<int, kOperators>{2}));
    EXPECT_EQ(days.operands, choices.operands);
    EXPECT_EQ(selectFormat(days, 0).operators, (std::array<int, kOperators>{1}));
    EXPECT_EQ(selectFormat(days, 4).operators, (std::array<int, kOperators>{})); // "-" alone
    EXPECT_EQ(selectFormat(SimpleChoices{.format = -1, .operands = {}, .operators = {}}, 4).format, 4);
}

TEST_F(ExpressionBuilder, listsWhatCanBeInserted) {
    EXPECT_EQ(insertionEntries(InsertionList::cmbAdvField, db),
              (Texts{"(Fields)", "Count", "Price", "Bought", "At", "Note", "Size", "[Net price]"}));
    EXPECT_EQ(insertionEntries(InsertionList::cmbAdvPrev, db),
              (Texts{"(Prev. record)", "Prev(Count)", "Prev(Price)", "Prev(Bought)", "Prev(At)", "Prev(Note)",
                     "Prev(Size)", "Prev(Net price)"}));
    EXPECT_EQ(insertionEntries(InsertionList::cmbAdvFunc, db),
              (Texts{"(Functions)", "If( )", "Sel( )", "Sqrt( )", "Round( )", "Abs( )", "Sign( )", "Ceil( )",
                     "Floor( )", "Date( , , )", "Time( , , )", "Year( )", "Month( )", "Day( )", "Weekday( )",
                     "Hour( )", "Minute( )", "Second( )"}));
    EXPECT_EQ(insertionEntries(InsertionList::cmbAdvOper, db),
              (Texts{"(Operators)", " + ", " - ", " * ", " / ", " ** (power)", " % (mod)", " = ", " <> ", " < ",
                     " > ", " <= ", " >= ", " & (and)", " | (or)", " ^ (xor)", " ! (not)"}));
    EXPECT_EQ(insertionEntries(InsertionList::cmbAdvColor, db),
              (Texts{"(Colors)", "{black}", "{red}", "{green}", "{blue}", "{yellow}"}));
    EXPECT_EQ(insertionEntries(InsertionList::cmbAdvConst, db),
              (Texts{"(Constants)", "Today", "Now", "PI", "PrevIndex"}));
}

TEST_F(ExpressionBuilder, insertsAtTheCursorInPlaceOfTheSelection) {
    TextBox box{"Count+x", 6, 1};
    EXPECT_TRUE(insertEntry(InsertionList::cmbAdvField, 2, "Price", box));
    EXPECT_EQ(box, (TextBox{"Count+Price", 11, 0}));
    EXPECT_FALSE(insertEntry(InsertionList::cmbAdvField, 0, "(Fields)", box));
    EXPECT_FALSE(insertEntry(InsertionList::cmbAdvField, 1, "", box));
    EXPECT_EQ(box, (TextBox{"Count+Price", 11, 0}));
}

TEST_F(ExpressionBuilder, insertsAnOperatorWithoutItsExplanation) {
    const std::pair<const char*, const char*> cases[] = {
        {" + ", " + "},      {" ** (power)", " ** "}, {" % (mod)", " % "}, {" <> ", " <> "},
        {" ! (not)", " ! "}, {" & (and)", " & "},     {" ^ (xor)", " ^ "}};
    for (const auto& [entry, inserted] : cases) {
        TextBox box;
        EXPECT_TRUE(insertEntry(InsertionList::cmbAdvOper, 1, entry, box));
        EXPECT_EQ(box.text, inserted);
    }
}

TEST_F(ExpressionBuilder, asksBeforeItClears) {
    t.user.answers = {platform::Answer::No, platform::Answer::Yes};
    EXPECT_FALSE(ClearExpression(t));
    EXPECT_TRUE(ClearExpression(t));
    EXPECT_EQ(t.user.messages[0].text, "Clear the entire expression");
    EXPECT_EQ(t.user.messages[0].title, "Are you sure");
}

} // namespace
} // namespace tallybook::design
