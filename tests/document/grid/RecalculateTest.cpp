#include "core/document/grid/Recalculate.h"

#include "core/calc/expressions/AdvancedField.h"
#include "core/calc/expressions/ExpressionEngine.h"
#include "core/calc/expressions/SimpleExpression.h"
#include "support/CalculatedFields.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

namespace tallybook::document {
namespace {

using model::FieldType;
using test::CalculatedFields;

constexpr calc::Token kPrevious = calc::token::kPreviousRecord;

TEST(RecalcExpressions, goesThroughTheFieldsInSlotOrder) {
    CalculatedFields table;
    table.field(1, FieldType::Integer);
    table.expression(2, FieldType::Expression, 0, {1, 90, 4}); // the old text of the field behind
    table.expression(3, FieldType::Expression, 0, {2, 92, 2}); // the new text of the field ahead
    table.expression(4, FieldType::Expression, 0, {3, 90, 1});
    table.set(0, 1, "2");
    table.set(0, 4, "100");
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 2), "102");
    EXPECT_EQ(table.cell(0, 3), "10404");
    EXPECT_EQ(table.cell(0, 4), "10406");
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 2), "10408");
}

TEST(RecalcExpressions, readsItsOwnColumnAsItGrows) {
    CalculatedFields table(4);
    table.field(1, FieldType::Float, 2);
    table.expression(2, FieldType::Expression, 0, {1, 90, kPrevious + 2}, 2);
    for (int record = 0; record < 4; ++record)
        table.set(record, 1, "1.25");
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 2), "1.25"); // a running total
    EXPECT_EQ(table.cell(1, 2), "2.50");
    EXPECT_EQ(table.cell(2, 2), "3.75");
    EXPECT_EQ(table.cell(3, 2), "5.00");
}

TEST(RecalcExpressions, takesTheRecordAboveInTheOrderOfTheGrid) {
    CalculatedFields table(3);
    table.field(1, FieldType::Integer);
    table.expression(2, FieldType::Expression, 0, {kPrevious + 1});
    for (int record = 0; record < 3; ++record)
        table.set(record, 1, std::to_string(record + 1));
    table.doc.grd.permuteRows({2, 0, 1});
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 2), "0");
    EXPECT_EQ(table.cell(1, 2), "3");
    EXPECT_EQ(table.cell(2, 2), "1");
}

TEST(RecalcExpressions, showsItsProgress) {
    CalculatedFields table(600);
    table.field(1, FieldType::Integer);
    table.expression(2, FieldType::Expression, 0, {1});
    table.doc.CurrDB20.Fields[2].Name = "Total";
    recalcExpressions(table.doc, table.t.services);
    const auto& shown = table.t.user.progresses;
    ASSERT_GE(shown.size(), 4U);
    EXPECT_EQ(shown[0], (test::ScriptedUser::Progress{"Calculating...", 0, 600}));
    EXPECT_EQ(shown[1], (test::ScriptedUser::Progress{"Calculating Total ...", 0, 600}));
    EXPECT_EQ(shown[shown.size() - 2], (test::ScriptedUser::Progress{"Calculating Total ...", 599, 600}));
    EXPECT_TRUE(std::is_sorted(shown.begin() + 1, shown.end() - 1,
                               [](const auto& a, const auto& b) { return a.value < b.value; }));
    EXPECT_EQ(table.t.user.waits, 1);
    EXPECT_EQ(table.t.user.freezes, 1);
    EXPECT_TRUE(table.t.user.atRest());
}

TEST(RecalcExpressions, leavesEverythingElseAsItIs) {
    CalculatedFields table(3);
    table.field(1, FieldType::Integer);
    table.field(3, FieldType::Text);
    table.expression(2, FieldType::Expression, 0, {1});
    table.set(1, 1, "4");
    table.set(1, 3, "kept");
    const model::GridPlace place{3, 4, 4, 2};
    table.doc.grd.setPlace(place);
    const auto revision = table.doc.grd.revision();
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.doc.grd.place(), place);
    EXPECT_EQ(table.cell(1, 3), "kept");
    EXPECT_FALSE(table.doc.DocModified);
    EXPECT_TRUE(table.doc.GridReady);
    EXPECT_GT(table.doc.grd.revision(), revision);
}

TEST(RecalcExpressions, keepsTheDocumentModifiedWhenItWas) {
    CalculatedFields table;
    table.expression(2, FieldType::Expression, 0, {});
    table.doc.DocModified = true;
    recalcExpressions(table.doc, table.t.services);
    EXPECT_TRUE(table.doc.DocModified);
}

TEST(RecalcExpressions, doesNothingWithoutRecords) {
    CalculatedFields table(0);
    table.expression(2, FieldType::Expression, 0, {86});
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 2), ""); // of the placeholder
    EXPECT_TRUE(table.t.user.progresses.empty());
    EXPECT_EQ(table.t.user.waits, 0);
}

TEST(RecalcExpressions, takesTheFirstAndTheLastSlot) {
    CalculatedFields table;
    table.expression(1, FieldType::Expression, 0, {80});
    table.expression(80, FieldType::Expression, 0, {86});
    table.constant(80, 0, "7");
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 1), "0");
    EXPECT_EQ(table.cell(0, 80), "7");
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 1), "7");
}

TEST(RecalcExpressions, storesUsualResultsAsWords) {
    CalculatedFields table;
    table.field(1, FieldType::Float, 2);
    table.expression(2, FieldType::Expression, 0, {1}, 2);
    table.set(0, 1, "1.50");
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 2), "1.50");
    EXPECT_EQ(table.doc.grd.column(3).stored(table.doc.grd.order().id(0)).kind, model::StoredCell::Kind::Word);
}

TEST(RecalcExpressions, fillsAdvancedAndConditionalFieldsToo) {
    CalculatedFields table(2);
    table.field(1, FieldType::Integer);
    table.expression(2, FieldType::AdvExpression, 0, {89, 1, 92, 1});
    table.constant(2, 0, "\x03");
    table.doc.CurrDB20.CondExprs[3].CondFields = {2, 0, 0};
    table.doc.CurrDB20.CondExprs[3].CondOps = {'>', 0, 0};
    table.doc.CurrDB20.CondExprs[3].CondValues = {"10", "", ""};
    table.doc.CurrDB20.CondExprs[3].TrueText = "much";
    table.doc.CurrDB20.CondExprs[3].TrueKind = 1;
    table.doc.CurrDB20.CondExprs[3].FalseText = "little";
    table.field(3, FieldType::ConditionalExpression);
    table.set(0, 1, "3");
    table.set(1, 1, "4");
    recalcExpressions(table.doc, table.t.services);
    EXPECT_EQ(table.cell(0, 2), "9");
    EXPECT_EQ(table.cell(1, 2), "16");
    EXPECT_EQ(table.doc.grd.colour(2, 3), 16711680U);
    EXPECT_EQ(table.cell(0, 3), "little"); // goes by the new result
    EXPECT_EQ(table.cell(1, 3), "much");
    EXPECT_EQ(table.doc.grd.colour(3, 4), 255U);
    EXPECT_TRUE(table.t.user.atRest());
}

// Cells of every look, in three blocks of rows: absent, usual, of many digits, and texts that are no numbers.
void fillWithNumbers(CalculatedFields& table, int slot, unsigned seed) {
    const std::vector<std::string> odd = {"",       "1,234.50", "abc",    "-0.01",  "16777217.25", "99999999.99",
                                          "(5.00)", "1e3",      " 7.25 ", "8192.5", "65536.01"};
    std::mt19937 random(seed);
    for (int record = 0; record < table.doc.NumDataRecs; ++record) {
        const unsigned kind = random() % 8;
        if (kind == 0)
            table.set(record, slot, odd[random() % odd.size()]);
        else if (kind == 1)
            table.set(record, slot, std::to_string(static_cast<int>(random() % 100) - 50));
        else if (kind > 2)
            table.set(record, slot, std::to_string(random() % 30000) + '.' + std::to_string(10 + random() % 90));
    }
}

// A table of more than two blocks, its records in another order and some of them gone.
void makeNumbers(CalculatedFields& table) {
    table.field(1, FieldType::Float, 2);
    table.field(2, FieldType::Integer);
    table.field(3, FieldType::Long);
    table.field(4, FieldType::Text);
    table.field(5, FieldType::Float, 3);
    for (int slot = 1; slot <= 5; ++slot)
        fillWithNumbers(table, slot, static_cast<unsigned>(slot));
    std::vector<std::uint32_t> order(static_cast<std::size_t>(table.doc.grd.dataRows()));
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = static_cast<std::uint32_t>((i * 379 + 5) % order.size());
    table.doc.grd.permuteRows(order);
    for (const int row : {10, 300, 500})
        model::removeRecord(table.doc, row);
}

std::vector<std::string> columnOf(const CalculatedFields& table, int slot) {
    std::vector<std::string> texts;
    for (int record = 0; record < table.doc.NumDataRecs; ++record)
        texts.push_back(table.cell(record, slot));
    return texts;
}

TEST(RecalcExpressions, givesABlockOfRecordsWhatEachOfThemGives) {
    constexpr calc::Token kPlus = 90;
    constexpr calc::Token kMinus = 91;
    constexpr calc::Token kTimes = 92;
    constexpr calc::Token kDivide = 93;
    const std::initializer_list<calc::Token> expressions[] = {{1, kPlus, 2, kTimes, 3},
                                                              {1, kDivide, 2, kDivide, 5},
                                                              {5},
                                                              {1, kMinus, 86, kTimes, 5},
                                                              {2, 0, 1, kPlus, 3},
                                                              {3, kTimes, 3, kTimes, 3},
                                                              {86, kMinus, 5}};
    for (int decimals = 0; decimals <= 3; ++decimals) {
        for (const auto& tokens : expressions) {
            CalculatedFields table(700);
            makeNumbers(table);
            table.expression(6, FieldType::Expression, 0, tokens, decimals);
            table.constant(6, 0, "2.5");
            table.constant(6, 2, "1.25");
            std::vector<std::string> expected;
            for (int record = 0; record < table.doc.NumDataRecs; ++record)
                expected.push_back(calc::calcExpression20(table.doc, table.t.services, 6, record));
            recalcExpressions(table.doc, table.t.services);
            EXPECT_EQ(columnOf(table, 6), expected);
        }
    }
}

TEST(RecalcExpressions, givesABlockOfRecordsWhatTheAdvancedFormGivesEach) {
    const std::array<std::string, 6> names = {"", "a", "b", "c", "t", "e"};
    for (const char* text :
         {"If(b > c, Round(a * 2), Abs(b - c) / 2)", "a / b", "If(b = 0, 0, a / b)", "Sqrt(a - 5000)",
          "Floor(a) + Ceil(e) - Sign(c)", "Round(a / 7, 2) * -1", "a * 1000000 * c * c * c", "!(a > b) + (b <= c)",
          "(a <= 100 & b <> 3) | (c >= 7 ^ e < 4)", "If(a, b, c) = b", "Round(e, b)", "If(b, a / 0, 3)"}) {
        CalculatedFields table(700);
        makeNumbers(table);
        table.expression(6, FieldType::AdvExpression, 0, {}, 2);
        model::ExprDef& def = table.doc.CurrDB20.Expressions[6];
        calc::CompileError error;
        if (calc::Compile(text, names, def.Tokens, def.TokenTexts, error) != 0) {
            ADD_FAILURE() << text << ": " << error.text;
            continue;
        }
        std::vector<std::string> expected;
        for (int record = 0; record < table.doc.NumDataRecs; ++record)
            expected.push_back(calc::calcNewExpression25(table.doc, table.t.services, 6, record));
        table.doc.grd.setColour(5, 7, 255); // of results before
        recalcExpressions(table.doc, table.t.services);
        EXPECT_EQ(columnOf(table, 6), expected) << text;
        EXPECT_EQ(table.doc.grd.colour(5, 7), 0U) << text;
    }
}

} // namespace
} // namespace tallybook::document
