#include "core/calc/conditions/EvalCond.h"

#include "core/calc/values/Dates.h"
#include "document/DocumentFixture.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::test {

namespace {

using calc::CondContext;
using calc::Conditions;
using calc::CondOperand;
using calc::CondValue;
using calc::OperandSource;
using model::CondExprDef;
using model::FilterDef;
using Kind = CondValue::Kind;

// 2003-01-02
constexpr double kJan2 = 37623;

// One condition of a set under construction: left field, operator, right field or constant.
struct Term {
    int left;
    char code;
    std::string constant;
    int right = 0;
};

template <class Def> Def setOf(const std::vector<Term>& terms, const std::string& links) {
    Def def;
    std::array<std::uint8_t, 6> slots{};
    for (std::size_t i = 0; i < terms.size(); ++i) {
        slots[2 * i] = static_cast<std::uint8_t>(terms[i].left);
        slots[2 * i + 1] = static_cast<std::uint8_t>(terms[i].right);
        def.CondValues[i] = terms[i].constant;
        def.CondOps[i] = static_cast<std::uint8_t>(terms[i].code);
    }
    std::copy_n(slots.begin(), 3, def.CondFields.begin());
    std::copy_n(slots.begin() + 3, 3, def.CondFields2.begin());
    for (std::size_t i = 0; i < links.size(); ++i)
        def.CondLinks[i] = static_cast<std::uint8_t>(links[i]);
    return def;
}

class EvalCondTest : public DocumentFixture {
protected:
    // Whether the first record satisfies the conditions.
    bool holds(const std::vector<Term>& terms, const std::string& links = "") {
        return calc::EvalCondition(doc, services, setOf<FilterDef>(terms, links), 1);
    }
    bool holds(const Term& term) { return holds(std::vector<Term>{term}); }

    // A document with one record and one field, slot 1.
    void one(FieldType type, const std::string& text) {
        field(1, type);
        records(1);
        setCell(0, 1, text);
    }

    CondContext context() { return {t.regional, t.clock.now()}; }
};

} // namespace

// Operands -------------------------------------------------------------------------------------------------

struct ConstantCase {
    FieldType type;
    int resultType;
    const char* text;
    Kind kind;
    double number;
    FieldType exit;
};

TEST_F(EvalCondTest, readsConstantsByTheTypeOfTheLeftField) {
    const double kToday = 37685; // 2003-03-05
    const std::vector<ConstantCase> cases = {
        {FieldType::Integer, 0, "12", Kind::Number, 12, FieldType::Long},
        {FieldType::Integer, 0, " 2.5 ", Kind::Number, 2, FieldType::Long},
        {FieldType::Long, 0, "70000", Kind::Number, 70000, FieldType::Long},
        {FieldType::Long, 0, "  ", Kind::Number, 0, FieldType::Long},
        {FieldType::Long, 0, "abc", Kind::Number, 0, FieldType::Long},
        {FieldType::Long, 0, "3000000000", Kind::Number, 0, FieldType::Long},
        {FieldType::Float, 0, "2.5", Kind::Number, 2.5, FieldType::Float},
        {FieldType::Float, 0, "", Kind::Number, 0, FieldType::Float},
        {FieldType::Float, 0, "x", Kind::Number, 0, FieldType::Float},
        {FieldType::Date, 0, "T", Kind::Date, kToday, FieldType::Date},
        {FieldType::Date, 0, "t", Kind::Date, 0, FieldType::Date},
        {FieldType::Date, 0, "1/2/2003", Kind::Date, kJan2, FieldType::Date},
        {FieldType::Date, 0, "3/5", Kind::Date, kToday, FieldType::Date},
        {FieldType::Date, 0, "", Kind::Date, 0, FieldType::Date},
        {FieldType::Date, 0, "37623", Kind::Date, 0, FieldType::Date},
        {FieldType::Time, 0, "6:00 PM", Kind::Date, 0.75, FieldType::Time},
        {FieldType::Time, 0, "1/2/2003 6:00 PM", Kind::Date, 0.75, FieldType::Time},
        {FieldType::Time, 0, "", Kind::Date, 0, FieldType::Time},
        {FieldType::Time, 0, "late", Kind::Date, 0, FieldType::Time},
        {FieldType::Expression, 0, "2.5", Kind::Number, 2.5, FieldType::Float},
        {FieldType::Expression, 0, "", Kind::Number, 0, FieldType::Float},
        {FieldType::AdvExpression, 4, "2.5", Kind::Number, 2, FieldType::Long},
        {FieldType::AdvExpression, 5, "7", Kind::Number, 7, FieldType::Long},
        {FieldType::AdvExpression, 6, "7", Kind::Number, 7, FieldType::Long},
        {FieldType::AdvExpression, 8, "7", Kind::Number, 7, FieldType::Long},
        {FieldType::AdvExpression, 9, "7", Kind::Number, 7, FieldType::Long},
        {FieldType::AdvExpression, 10, "x", Kind::Number, 0, FieldType::Long},
        {FieldType::Expression, 1, "1/2/2003", Kind::Date, kJan2, FieldType::Date},
        {FieldType::Expression, 2, "T", Kind::Date, 0, FieldType::Date},
        {FieldType::Expression, 3, "", Kind::Date, 0, FieldType::Date},
        {FieldType::Expression, 7, "6:00 PM", Kind::Date, 0.75, FieldType::Time},
        {FieldType::AdvExpression, 13, "12", Kind::Text, 12, FieldType::Text},
        {FieldType::Expression, 11, "12", Kind::Nothing, 0, FieldType::Expression},
        {FieldType::AdvExpression, 12, "12", Kind::Nothing, 0, FieldType::AdvExpression},
        {FieldType::Text, 0, "12", Kind::Text, 12, FieldType::Text},
        {FieldType::Text, 0, "", Kind::Text, 0, FieldType::Text},
        {FieldType::Checkbox, 0, "1", Kind::Text, 1, FieldType::Text},
        {FieldType::Key, 0, "5", Kind::Text, 5, FieldType::Text},
        {FieldType::AutoIncremental, 0, "5", Kind::Text, 5, FieldType::Text},
        {FieldType::List, 0, "abc", Kind::Text, 0, FieldType::Text},
        {FieldType::NotUsed, 0, "abc", Kind::Text, 0, FieldType::Text},
    };
    for (const ConstantCase& c : cases) {
        one(c.type, "");
        doc.CurrDB20.Expressions[1].ResultType = static_cast<std::uint8_t>(c.resultType);
        Conditions conditions;
        conditions.slots[0] = 1;
        conditions.constants[0] = c.text;
        std::string scratch;
        const CondOperand read =
            calc::GetCalcVal(doc, context(), conditions, 1, OperandSource::Constant, c.type, 2, scratch);
        const auto name =
            std::to_string(static_cast<int>(c.type)) + "/" + std::to_string(c.resultType) + " " + c.text;
        EXPECT_EQ(read.value.kind, c.kind) << name;
        EXPECT_DOUBLE_EQ(read.value.number, c.number) << name;
        EXPECT_EQ(read.type, c.exit) << name;
        if (c.kind == Kind::Text) {
            EXPECT_EQ(read.value.text, c.text) << name;
        }
    }
}

// The format of such a constant is that of operand slots 0, 1, 2, not of the left fields 0, 2, 4.
TEST_F(EvalCondTest, readsConstantsOfCalculatedFieldsByOperandSlots) {
    field(1, FieldType::Expression);
    field(2, FieldType::Expression);
    field(3, FieldType::Expression);
    records(1);
    doc.CurrDB20.Expressions[1].ResultType = 13;
    doc.CurrDB20.Expressions[2].ResultType = 4;
    doc.CurrDB20.Expressions[3].ResultType = 1;
    Conditions conditions;
    conditions.slots = {1, 2, 3, 0, 0, 0};
    conditions.constants = {"5", "5", "5"};
    const auto read = [&](int position) {
        std::string scratch;
        return calc::GetCalcVal(doc, context(), conditions, position, OperandSource::Constant, FieldType::Expression,
                                2, scratch);
    };
    EXPECT_EQ(read(1).type, FieldType::Text);
    EXPECT_EQ(read(3).type, FieldType::Long);
    EXPECT_EQ(read(3).value, CondValue::ofNumber(5));
    EXPECT_EQ(read(5).type, FieldType::Date);
    EXPECT_EQ(read(5).value, CondValue::ofDate(0));
}

struct FieldCase {
    FieldType type;
    int resultType;
    const char* text;
    Kind kind;
    double number;
    FieldType exit;
};

TEST_F(EvalCondTest, readsFieldsByTheirType) {
    const std::vector<FieldCase> cases = {
        {FieldType::Integer, 0, "12", Kind::Number, 12, FieldType::Integer},
        {FieldType::Integer, 0, "", Kind::Number, 0, FieldType::Integer},
        {FieldType::Long, 0, "-70000", Kind::Number, -70000, FieldType::Long},
        {FieldType::Long, 0, "3.5", Kind::Number, 4, FieldType::Long},
        {FieldType::Long, 0, "abc", Kind::Number, 0, FieldType::Long},
        {FieldType::Long, 0, "3000000000", Kind::Number, 0, FieldType::Long},
        {FieldType::Key, 0, "9", Kind::Number, 9, FieldType::Key},
        {FieldType::AutoIncremental, 0, "  ", Kind::Number, 0, FieldType::AutoIncremental},
        {FieldType::Float, 0, "2", Kind::Number, 2, FieldType::Float},
        {FieldType::Float, 0, "2.25", Kind::Number, 2.25, FieldType::Float},
        {FieldType::Float, 0, "", Kind::Number, 0, FieldType::Float},
        {FieldType::Date, 0, "1/2/2003", Kind::Date, kJan2, FieldType::Date},
        {FieldType::Date, 0, "", Kind::Date, 0, FieldType::Date},
        {FieldType::Date, 0, "soon", Kind::Date, 0, FieldType::Date},
        {FieldType::Time, 0, "6:00:00 PM", Kind::Date, 0.75, FieldType::Time},
        {FieldType::Time, 0, "6 PM", Kind::Date, 0.75, FieldType::Time},
        {FieldType::Time, 0, "1/2/2003 6:00 PM", Kind::Date, 0.75, FieldType::Time},
        {FieldType::Time, 0, "", Kind::Date, 0, FieldType::Time},
        {FieldType::Expression, 0, "3", Kind::Number, 3, FieldType::Float},
        {FieldType::Expression, 0, "", Kind::Number, 0, FieldType::Text},
        {FieldType::Expression, 0, "error", Kind::Number, 0, FieldType::Text},
        {FieldType::AdvExpression, 4, "3", Kind::Number, 3, FieldType::Long},
        {FieldType::AdvExpression, 5, "3", Kind::Number, 3, FieldType::Long},
        {FieldType::AdvExpression, 6, "3", Kind::Number, 3, FieldType::Long},
        {FieldType::AdvExpression, 8, "3.5", Kind::Number, 4, FieldType::Long},
        {FieldType::AdvExpression, 9, "3", Kind::Number, 3, FieldType::Long},
        {FieldType::AdvExpression, 10, "", Kind::Number, 0, FieldType::Text},
        {FieldType::Expression, 1, "1/2/2003", Kind::Date, kJan2, FieldType::Date},
        {FieldType::Expression, 2, "", Kind::Date, 0, FieldType::Text},
        {FieldType::Expression, 3, "3", Kind::Date, 0, FieldType::Text},
        {FieldType::Expression, 7, "6:00:00 PM", Kind::Date, 0.75, FieldType::Time},
        {FieldType::Expression, 7, "", Kind::Date, 0, FieldType::Text},
        {FieldType::AdvExpression, 13, "abc", Kind::Text, 0, FieldType::Text},
        {FieldType::Expression, 11, "1:2:3", Kind::Nothing, 0, FieldType::Text},
        {FieldType::AdvExpression, 12, "1:2", Kind::Nothing, 0, FieldType::Text},
        {FieldType::Text, 0, "12", Kind::Text, 0, FieldType::Text},
        {FieldType::Memo, 0, "", Kind::Text, 0, FieldType::Text},
        {FieldType::List, 0, "Red", Kind::Text, 0, FieldType::Text},
        {FieldType::RadioButton, 0, "Red", Kind::Text, 0, FieldType::Text},
        {FieldType::ConditionalExpression, 0, "Red", Kind::Text, 0, FieldType::Text},
        {FieldType::Image, 0, " {Image}", Kind::Text, 0, FieldType::Text},
        {FieldType::NotUsed, 0, "", Kind::Text, 0, FieldType::Text},
    };
    for (const FieldCase& c : cases) {
        doc.CurrDB20.Expressions[1].ResultType = static_cast<std::uint8_t>(c.resultType);
        one(c.type, c.text);
        Conditions conditions;
        conditions.slots[0] = 1;
        std::string scratch;
        const CondOperand read =
            calc::GetCalcVal(doc, context(), conditions, 0, OperandSource::Field, c.type, 2, scratch);
        const auto name =
            std::to_string(static_cast<int>(c.type)) + "/" + std::to_string(c.resultType) + " " + c.text;
        EXPECT_EQ(read.value.kind, c.kind) << name;
        EXPECT_DOUBLE_EQ(read.value.number, c.number) << name;
        EXPECT_EQ(read.type, c.exit) << name;
        if (c.kind == Kind::Text) {
            EXPECT_EQ(read.value.text, c.text) << name;
        }
    }
}

TEST_F(EvalCondTest, readsACheckBoxAsOneOrZeroOfTypeLong) {
    one(FieldType::Checkbox, "");
    Conditions conditions;
    conditions.slots[0] = 1;
    std::string scratch;
    for (const auto picture : {model::Picture::CheckOn, model::Picture::CheckOff, model::Picture::None}) {
        doc.grd.setPicture(2, 2, picture);
        const CondOperand read =
            calc::GetCalcVal(doc, context(), conditions, 0, OperandSource::Field, FieldType::Checkbox, 2, scratch);
        EXPECT_EQ(read.value, CondValue::ofNumber(picture == model::Picture::CheckOn ? 1 : 0));
        EXPECT_EQ(read.type, FieldType::Long);
    }
}

// Whole conditions -----------------------------------------------------------------------------------------

TEST_F(EvalCondTest, findsBlankNumbersAsZero) {
    one(FieldType::Integer, "");
    EXPECT_TRUE(holds({1, '=', "0"}));
    EXPECT_TRUE(holds({1, '<', "5"}));
    EXPECT_FALSE(holds({1, '>', "0"}));
}

TEST_F(EvalCondTest, ordersABlankDateBelowEveryDate) {
    one(FieldType::Date, "");
    EXPECT_TRUE(holds({1, '<', "1/1/1900"}));
    EXPECT_TRUE(holds({1, '=', ""}));
}

TEST_F(EvalCondTest, comparesTextsInAnyLetterCase) {
    one(FieldType::Text, "abc");
    EXPECT_TRUE(holds({1, '=', "ABC"}));
    EXPECT_FALSE(holds({1, 'H', "B"}));
    EXPECT_TRUE(holds({1, 'h', "B"}));
}

TEST_F(EvalCondTest, comparesNumericTextsAsNumbers) {
    one(FieldType::Text, "12");
    EXPECT_TRUE(holds({1, '=', "12.0"}));
    setCell(0, 1, "012");
    EXPECT_TRUE(holds({1, '=', "12"}));
}

TEST_F(EvalCondTest, comparesDatesWithTodayByWholeDays) {
    one(FieldType::Date, "3/5/2003");
    EXPECT_TRUE(holds({1, '=', "T"}));
    setCell(0, 1, "3/4/2003");
    EXPECT_FALSE(holds({1, '=', "T"}));
    EXPECT_TRUE(holds({1, '<', "T"}));
}

TEST_F(EvalCondTest, comparesTimesByTheTimeOfDay) {
    one(FieldType::Time, "6:00:00 PM");
    EXPECT_TRUE(holds({1, '=', "18:00"}));
    EXPECT_TRUE(holds({1, '>', "5:59 PM"}));
    EXPECT_TRUE(holds({1, '=', "1/2/2003 6 PM"}));
}

TEST_F(EvalCondTest, matchesACheckedCellWithOne) {
    one(FieldType::Checkbox, "");
    doc.grd.setPicture(2, 2, model::Picture::CheckOn);
    EXPECT_TRUE(holds({1, '=', "1"}));
    EXPECT_FALSE(holds({1, '=', "0"}));
    doc.grd.setPicture(2, 2, model::Picture::CheckOff);
    EXPECT_TRUE(holds({1, '=', "0"}));
    EXPECT_TRUE(holds({1, '=', "no"})); // what is no number counts as 0
}

TEST_F(EvalCondTest, findsAnEmptyTextEverywhere) {
    one(FieldType::Text, "");
    EXPECT_TRUE(holds({1, 'h', ""}));
    setCell(0, 1, "abc");
    EXPECT_TRUE(holds({1, 'h', ""}));
}

TEST_F(EvalCondTest, comparesADateWithLongsBySerialAndWithFloatsByDaysFrom1904) {
    field(1, FieldType::Date);
    field(2, FieldType::Long);
    field(3, FieldType::Float);
    records(1);
    setCell(0, 1, "1/2/2003");
    setCell(0, 2, "37623");
    setCell(0, 3, "36161");
    EXPECT_TRUE(holds({1, '=', "", 2}));
    EXPECT_TRUE(holds({1, '=', "", 3}));
}

TEST_F(EvalCondTest, joinsFromLeftToRight) {
    one(FieldType::Text, "a");
    const Term yes{1, '=', "a"};
    const Term no{1, '=', "b"};
    struct Chain {
        std::vector<Term> terms;
        std::string links;
        bool expected;
    };
    const std::vector<Chain> chains = {
        {{yes, no, no}, "", true},    // the first alone
        {{yes, no, yes}, "A", false}, // the first two
        {{no, yes}, "O", true},
        {{no, no, yes}, "AO", true},  // (1 and 2) or 3
        {{yes, no, no}, "OA", false}, // (1 or 2) and 3
        {{yes, yes, yes}, "AA", true},
        {{yes, yes, no}, "OO", true},
        {{yes, yes}, "X", false}, // an unknown link
        {{yes, yes, yes}, "XO", true},
        {{yes, yes, yes}, std::string("\0A", 2), true}, // the chain ends at the first empty link
    };
    for (const Chain& chain : chains)
        EXPECT_EQ(holds(chain.terms, chain.links), chain.expected) << chain.links;
}

// Whether the third condition compares with a field is told by the right slot of the second.
TEST_F(EvalCondTest, decidesTheThirdConditionByTheSlotOfTheSecond) {
    for (int slot = 1; slot <= 3; ++slot)
        field(slot, FieldType::Text);
    records(1);
    setCell(0, 1, "a");
    setCell(0, 2, "a");
    setCell(0, 3, "b");
    const Term first{1, '=', "a"};
    // The second has a field: the third takes its field and not its constant.
    EXPECT_TRUE(holds({first, {1, '=', "", 2}, {3, '!', "b", 2}}, "AA"));
    EXPECT_FALSE(holds({first, {1, '=', "", 2}, {3, '=', "b", 2}}, "AA"));
    // The second has a constant: so has the third.
    EXPECT_TRUE(holds({first, {1, '=', "a"}, {3, '=', "b", 2}}, "AA"));
    // The second has a field, the third none: slot 0 is the categories.
    setCell(0, 3, "Unfiled");
    EXPECT_TRUE(holds({first, {1, '=', "", 2}, {3, '=', "b"}}, "AA"));
}

TEST_F(EvalCondTest, readsFreeSlotsAsEmptyTexts) {
    one(FieldType::Text, "a");
    EXPECT_TRUE(holds({40, '=', ""}));
    EXPECT_FALSE(holds({40, '=', "a"}));
    EXPECT_FALSE(holds({1, '=', "a", 40}));
    EXPECT_FALSE(holds({40, 'q', ""}));
}

TEST_F(EvalCondTest, ignoresASetThatComparesFieldsBeyondTheLast) {
    one(FieldType::Text, "a");
    for (const int slot : {81, 82, 255}) {
        EXPECT_TRUE(holds({slot, '=', "x"})) << slot;
        EXPECT_TRUE(holds({1, '=', "", slot})) << slot;
        EXPECT_TRUE(holds({{1, '=', "b"}, {slot, '=', "x"}}, "A")) << slot;
        EXPECT_FALSE(holds({{1, '=', "b"}, {slot, '=', "x"}})) << slot; // a condition that does not count
    }
}

// The same answers for records that stand elsewhere than they are stored.
TEST_F(EvalCondTest, readsTheRecordOfARow) {
    field(1, FieldType::Long);
    records(3);
    for (int record = 0; record < 3; ++record)
        setCell(record, 1, std::to_string(record));
    doc.grd.permuteRows({2, 0, 1});
    const FilterDef filter = setOf<FilterDef>({{1, '=', "2"}}, "");
    EXPECT_TRUE(calc::EvalCondition(doc, services, filter, 1));
    EXPECT_FALSE(calc::EvalCondition(doc, services, filter, 2));
    EXPECT_FALSE(calc::EvalCondition(doc, services, filter, 3));
}

TEST_F(EvalCondTest, findsAFieldByItsExactName) {
    field(3, FieldType::Text, "Title");
    field(5, FieldType::Text, "Title");
    EXPECT_EQ(calc::GetDBFieldNo20(doc.CurrDB20, "Title"), 3);
    EXPECT_EQ(calc::GetDBFieldNo20(doc.CurrDB20, "title"), 0);
    EXPECT_EQ(calc::GetDBFieldNo20(doc.CurrDB20, "Categories"), 0); // slot 0 is no user field
}

// Conditional Expressions ----------------------------------------------------------------------------------

namespace {

class CondExpressionTest : public EvalCondTest {
protected:
    // Slot 1 is a number, slot 2 a text, slot 3 says something about them.
    CondExpressionTest() {
        field(1, FieldType::Long, "Number");
        field(2, FieldType::Text, "Text");
        field(3, FieldType::ConditionalExpression, "Verdict");
        CondExprDef& def = doc.CurrDB20.CondExprs[3];
        def = setOf<CondExprDef>({{1, '>', "5"}}, "");
        def.TrueText = "many";
        def.TrueKind = 1;
        def.FalseText = "few";
        records(2);
        setCell(0, 1, "9");
        setCell(1, 1, "3");
        setCell(0, 2, "nine");
        setCell(1, 2, "three");
    }
    CondExprDef& def() { return doc.CurrDB20.CondExprs[3]; }
    std::uint32_t colour(int record) const { return doc.grd.colour(record + 2, 4); }
};

} // namespace

TEST_F(CondExpressionTest, fillsTheColumnWithTextsAndColours) {
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "many");
    EXPECT_EQ(cell(1, 3), "few");
    EXPECT_EQ(colour(0), 255u);
    EXPECT_EQ(colour(1), 0u);
    ASSERT_FALSE(t.user.progresses.empty());
}

TEST_F(CondExpressionTest, takesTheTextOfAField) {
    def().TrueField = 2;
    def().FalseField = 1;
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "nine");
    EXPECT_EQ(cell(1, 3), "3");
}

TEST_F(CondExpressionTest, knowsFiveColoursAndLeavesTheCellsForOthers) {
    const std::uint32_t expected[] = {0, 255, 65280, 16711680, 65535};
    for (std::uint8_t code = 0; code < 5; ++code) {
        def().TrueKind = code;
        calc::SetCondValue(doc, true, 3, 2);
        EXPECT_EQ(colour(0), expected[code]) << int{code};
    }
    def().TrueKind = 5;
    calc::SetCondValue(doc, true, 3, 2);
    EXPECT_EQ(colour(0), 65535u);
    calc::SetCondValue(doc, false, 3, 2);
    EXPECT_EQ(cell(0, 3), "few");
    EXPECT_EQ(colour(0), 0u);
}

TEST_F(CondExpressionTest, showsNothingWithoutACondition) {
    calc::CalcCondExppression(doc, services, 3);
    def().CondFields[0] = 0;
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "");
    EXPECT_EQ(cell(1, 3), "");
}

// What a reader leaves: links 1 and 2 filled, link 0 empty.
TEST_F(CondExpressionTest, isDecidedByItsFirstConditionAfterALoad) {
    def() = setOf<CondExprDef>({{1, '>', "5"}, {2, '=', "no"}}, std::string("\0A", 2));
    def().TrueText = "many";
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "many");
    def().CondLinks = {'A', 0, 0}; // as the dialog stores it
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "");
}

TEST_F(CondExpressionTest, keepsWhatAConditionBeyondTheLastFieldCannotDecide) {
    calc::CalcCondExppression(doc, services, 3);
    def().CondFields[0] = 200;
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "many");
    EXPECT_EQ(cell(1, 3), "few");
}

TEST_F(CondExpressionTest, writesNothingForAResultFieldBeyondTheLast) {
    def().TrueField = 81;
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "");
}

TEST_F(CondExpressionTest, keepsItsTextWhenItNamesItself) {
    setCell(0, 3, "mine");
    def().TrueField = 3;
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "mine");
}

TEST_F(CondExpressionTest, doesNothingWithoutRecords) {
    records(0);
    calc::CalcCondExppression(doc, services, 3);
    EXPECT_EQ(cell(0, 3), "");
}

} // namespace tallybook::test
