#include "core/calc/expressions/AdvancedField.h"

#include "support/CalculatedFields.h"

#include <gtest/gtest.h>
#include <vector>

namespace tallybook::calc {
namespace {

using model::FieldType;
using test::CalculatedFields;
using Needs = AdvancedExpression::Needs;

constexpr int kField = 10; // the field that is calculated

FieldValues read(const CalculatedFields& table, int slot, std::string& scratch, Needs needs = Needs::All) {
    const CellReader cells(table.doc.grd, model::columnOfSlot(slot), table.t.regional, 2003);
    FieldValues values;
    values.longValue = 77; // of the record before
    values.singleValue = 77;
    GetFldVals25(valueReadingOf(table.doc.CurrDB20, slot), cells, 0, needs, scratch, values);
    return values;
}

constexpr std::int32_t packed(int high, int middle, int low) {
    return high * 65536 + middle * 256 + low;
}

TEST(GetFldVals25, readsEachTypeOfField) {
    struct Case {
        FieldType type;
        int resultType;
        const char* text;
        std::int32_t longValue;
        float singleValue;
    };
    const std::int32_t kDay = packed(2003, 1, 2);
    const auto kDaySingle = static_cast<float>(kDay);
    const Case cases[] = {
        {FieldType::Integer, 0, "-12", -12, -12},
        {FieldType::Integer, 0, "", 0, 0},
        {FieldType::Float, 0, "2.50", 2, 2.5F},
        {FieldType::Float, 0, "3.50", 4, 3.5F},
        {FieldType::Text, 0, "12.75", 13, 12.75F},
        {FieldType::Text, 0, "abc", 0, 0},
        {FieldType::Text, 0, "2147483647", 2147483647, 2147483648.0F},
        {FieldType::Text, 0, "2147483648", 0, 2147483648.0F},
        {FieldType::Text, 0, "-2147483647", -2147483647, -2147483648.0F},
        {FieldType::Text, 0, "-2147483648", 0, -2147483648.0F},
        {FieldType::Text, 0, "2147483647.5", 0, 2147483648.0F},
        {FieldType::Text, 0, "1e39", 0, 0}, // no single
        {FieldType::Text, 0, "16777217", 16777217, 16777216.0F},
        {FieldType::List, 0, "3", 3, 3},
        {FieldType::Checkbox, 0, "", 0, 0},
        {FieldType::Date, 0, "1/2/2003", kDay, kDaySingle},
        {FieldType::Date, 0, "", 0, 0},
        {FieldType::Date, 0, "37623", 37623, 37623}, // no text of a date, so it stays the number
        {FieldType::ConditionalExpression, 0, "1/2/2003", kDay, kDaySingle},
        {FieldType::ConditionalExpression, 0, "12", 12, 12},
        {FieldType::Time, 0, "1:05:09 PM", packed(13, 5, 9), static_cast<float>(packed(13, 5, 9))},
        {FieldType::Time, 0, "", 0, 0},
        {FieldType::Expression, 0, "1/2/2003", 0, 0},
        {FieldType::Expression, 0, "12.5", 12, 12.5F},
        {FieldType::Expression, 1, "1/2/2003", kDay, kDaySingle},
        {FieldType::AdvExpression, 2, "1/2/2003", kDay, kDaySingle},
        {FieldType::Expression, 3, "1/2/2003 6:00", kDay, kDaySingle},
        {FieldType::Expression, 4, "12", 12, 12},
        {FieldType::AdvExpression, 7, "1:05:09 PM", 47109, 47109},
        {FieldType::Expression, 7, "1/2/2003 1:05:09 PM", 47109, 47109},
        {FieldType::Expression, 7, "", 0, 0},
        {FieldType::Expression, 11, "1:2:3", 3723, 3723},
        {FieldType::Expression, 11, "30", 30, 30},
        {FieldType::AdvExpression, 12, "1:2:3", 3720, 3720},
        {FieldType::Expression, 13, "12", 12, 12},
    };
    for (const Case& c : cases) {
        CalculatedFields table;
        table.expression(1, c.type, c.resultType, {}, c.type == FieldType::Float ? 2 : 0);
        table.set(0, 1, c.text);
        std::string scratch;
        const FieldValues values = read(table, 1, scratch);
        EXPECT_EQ(values.longValue, c.longValue) << fieldTypeName(c.type) << " " << c.resultType << " " << c.text;
        EXPECT_EQ(values.singleValue, c.singleValue) << fieldTypeName(c.type) << " " << c.resultType << " " << c.text;
        EXPECT_EQ(values.textValue, c.text);
    }
}

TEST(GetFldVals25, countsACheckBoxByItsPicture) {
    CalculatedFields table;
    std::string scratch;
    table.field(1, FieldType::Checkbox);
    EXPECT_EQ(read(table, 1, scratch).longValue, 0);
    table.check(0, 1, model::Picture::CheckOn);
    EXPECT_EQ(read(table, 1, scratch).longValue, 1);
    EXPECT_EQ(read(table, 1, scratch).singleValue, 1);
    table.check(0, 1, model::Picture::CheckOff);
    EXPECT_EQ(read(table, 1, scratch).longValue, 0);
}

TEST(GetFldVals25, readsNoMoreThanIsNeeded) {
    CalculatedFields table;
    std::string scratch;
    table.field(1, FieldType::Integer);
    table.set(0, 1, "12");
    EXPECT_EQ(read(table, 1, scratch, Needs::Text).textValue, "12");
    EXPECT_EQ(read(table, 1, scratch, Needs::Text).longValue, 77);
    EXPECT_EQ(read(table, 1, scratch, Needs::Numbers).longValue, 12);
    EXPECT_EQ(read(table, 1, scratch, Needs::Numbers).textValue, "");
}

// Compiles a text over fields named a to i in slots 1 to 9.
struct Table : CalculatedFields {
    explicit Table(int records = 1) : CalculatedFields(records) {}

    void formula(const std::string& text, int resultType, int decimals = 0) {
        std::array<std::string, kFieldEntries> names;
        for (std::size_t slot = 1; slot <= 9; ++slot)
            names[slot] = std::string(1, static_cast<char>('a' + slot - 1));
        CompileError error;
        model::ExprDef& made = doc.CurrDB20.Expressions[kField];
        EXPECT_EQ(Compile(text, names, made.Tokens, made.TokenTexts, error), 0) << text << ": " << error.text;
        made.ResultType = static_cast<std::uint8_t>(resultType);
        field(kField, FieldType::AdvExpression, decimals);
    }
    std::string result(int record = 0) { return calcNewExpression25(doc, t.services, kField, record); }
    std::uint32_t colour(int record = 0) const {
        return doc.grd.colour(record + model::kFirstDataRow, model::columnOfSlot(kField));
    }
};

TEST(CalcNewExpression25, writesTheResultInItsFormat) {
    struct Case {
        const char* text;
        int resultType;
        int decimals;
        const char* expected; // with a: 5, b: 2.50, c: 1/2/2003, d: 1:05:09 PM, e: "it"
    };
    const Case cases[] = {
        {"a + b * 2", 0, 2, "10.00"}, {"a / 2", 0, 0, "3"},      {"a", 0, 5, "0"},
        {"c + 1", 1, 0, "1/3/2003"},  {"d", 7, 0, "1:05:09 PM"}, {"d", 11, 0, "13:5:9"},
        {"d", 12, 0, "13:5"},         {"e + a", 13, 0, "it5"},   {"d", 8, 0, "13"},
    };
    for (const Case& c : cases) {
        Table table;
        table.field(1, FieldType::Integer);
        table.field(2, FieldType::Float, 2);
        table.field(3, FieldType::Date);
        table.field(4, FieldType::Time);
        table.field(5, FieldType::Text);
        table.set(0, 1, "5");
        table.set(0, 2, "2.50");
        table.set(0, 3, "1/2/2003");
        table.set(0, 4, "1:05:09 PM");
        table.set(0, 5, "it");
        table.formula(c.text, c.resultType, c.decimals);
        EXPECT_EQ(table.result(), c.expected) << c.text << " as " << c.resultType;
    }
}

TEST(CalcNewExpression25, showsAFailureAsZeroInBlack) {
    Table table;
    table.field(1, FieldType::Integer);
    table.set(0, 1, "0");
    table.formula("{red} 1 / a", 0, 2);
    table.doc.grd.setColour(2, model::columnOfSlot(kField), 255);
    EXPECT_EQ(table.result(), "0");
    EXPECT_EQ(table.colour(), 0U);
    table.set(0, 1, "2");
    EXPECT_EQ(table.result(), "0.50");
    EXPECT_EQ(table.colour(), 255U);
}

TEST(CalcNewExpression25, showsZeroForTokensThatNobodyWrites) {
    Table table;
    table.expression(kField, FieldType::AdvExpression, 0, {90, 90, 200, 85}, 2);
    EXPECT_EQ(table.result(), "0");
    table.expression(kField, FieldType::AdvExpression, 0, {0, 0, 0, 0}, 2);
    EXPECT_EQ(table.result(), "0");
}

TEST(CalcNewExpression25, knowsTheRecordAbove) {
    Table table(3);
    table.field(1, FieldType::Integer);
    table.field(2, FieldType::Text);
    for (int record = 0; record < 3; ++record) {
        table.set(record, 1, std::to_string(10 * (record + 1)));
        table.set(record, 2, std::string(1, static_cast<char>('x' + record)));
    }
    table.formula("a - Prev(a)", 0);
    EXPECT_EQ(table.result(0), "10"); // nothing is above the first one
    EXPECT_EQ(table.result(1), "10");
    table.formula("b + Prev(b)", 13);
    EXPECT_EQ(table.result(0), "x");
    EXPECT_EQ(table.result(2), "zy");
}

TEST(SetResultColour, leavesTheColourAtUnknownCodes) {
    model::WordColumn colours;
    const std::uint32_t expected[] = {0, 255, 65280, 16711680, 65535};
    for (std::uint8_t code = 0; code < 5; ++code) {
        setResultColour(colours, 0, code);
        EXPECT_EQ(colours.get(0).value_or(0), expected[code]);
    }
    setResultColour(colours, 0, 5);
    EXPECT_EQ(colours.get(0), 65535U);
}

} // namespace
} // namespace tallybook::calc
