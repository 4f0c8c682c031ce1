// The text of the advanced form, its formats, and what is stored.
#include "core/design/ExpressionStore.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace tallybook::design {
namespace {

using model::DatabaseModel;
using model::ExprDef;
using model::FieldType;

DatabaseModel books() {
    DatabaseModel db;
    const struct {
        FieldType type;
        const char* name;
    } fields[] = {{FieldType::Float, "Price"}, {FieldType::NotUsed, "Fld02"},     {FieldType::Date, "Due"},
                  {FieldType::Text, "Name"},   {FieldType::AdvExpression, "Sum"}, {FieldType::Time, "Start"}};
    for (std::size_t i = 0; i < std::size(fields); ++i) {
        db.Fields[i + 1].Type = fields[i].type;
        db.Fields[i + 1].Name = fields[i].name;
    }
    db.Expressions[5].ResultType = 13;
    return db;
}

TEST(AdvancedFormats, standForCodes) {
    const std::vector<std::string_view> expected = {
        "Floating", "Date", "Time", "Hours", "Minutes", "Seconds", "Hours-Minutes-Seconds", "Hours-Minutes", "Text"};
    const auto formats = advancedFormats();
    EXPECT_EQ(std::vector<std::string_view>(formats.begin(), formats.end()), expected);
    const int codes[] = {0, 1, 7, 8, 9, 10, 11, 12, 13};
    for (int position = 0; position < 9; ++position)
        EXPECT_EQ(resultTypeOfFormat(position), codes[position]);
    const int positions[] = {0, 1, 1, 1, 0, 0, 0, 2, 3, 4, 5, 6, 7, 8, 0};
    for (int code = 0; code < 15; ++code)
        EXPECT_EQ(formatOfResultType(static_cast<std::uint8_t>(code)), positions[code]) << code;
}

TEST(StoreExpression25, storesTokensAndFormat) {
    test::TestServices services;
    const DatabaseModel db = books();
    ExprDef expression;
    expression.Tokens.fill(85);
    expression.TokenTexts.fill("old");
    ASSERT_TRUE(StoreExpression25({"Price*2", 0}, db, {}, 2, services.services, expression));
    ExprDef expected;
    expected.Tokens = {1, 92, 86};
    expected.TokenTexts[2] = "2";
    EXPECT_EQ(expression, expected);
    EXPECT_EQ(DisplayExpression25(db, expression), (AdvancedChoices{"Price*2", 0}));
    ASSERT_TRUE(StoreExpression25({"'Dear '+Name", 8}, db, {}, 0, services.services, expression));
    EXPECT_EQ(expression.ResultType, 13);
}

TEST(StoreExpression25, keepsTheTokensOfAFailedText) {
    const struct {
        const char* text;
        const char* message;
        std::size_t place;
    } cases[] = {
        {"Price+", "A value is missing here.", 6},
        {"Fld02", "There is no field, constant or function \"Fld02\".", 0}, // a free slot
        {"Price/0", "Division by zero.", 99},
        {"Start", "A number or a time stands where a date belongs.", 99},
    };
    for (const auto& c : cases) {
        test::TestServices services;
        ExprDef expression;
        expression.Tokens[0] = 1;
        std::size_t place = 99;
        EXPECT_FALSE(StoreExpression25({c.text, 1}, books(), {}, 0, services.services, expression, &place)) << c.text;
        ExprDef expected;
        expected.ResultType = 1; // of the format chosen, all the same
        expected.Tokens[0] = 1;
        EXPECT_EQ(expression, expected) << c.text;
        EXPECT_EQ(place, c.place) << c.text;
        ASSERT_EQ(services.user.texts(), std::vector<std::string>{c.message});
        EXPECT_EQ(services.user.messages[0].title, "Error in the expression");
        EXPECT_EQ(services.user.messages[0].icon, platform::Icon::Critical);
    }
}

TEST(StoreExpression25, triesTheFormatThatIsChosenNow) {
    test::TestServices services;
    ExprDef expression; // so far a number
    EXPECT_TRUE(StoreExpression25({"'a'+Sum", 8}, books(), {}, 0, services.services, expression));
    EXPECT_TRUE(StoreExpression25({"Due+Price", 1}, books(), {}, 0, services.services, expression));
    EXPECT_TRUE(StoreExpression25({"Now-Start", 6}, books(), {}, 0, services.services, expression));
    EXPECT_TRUE(StoreExpression25({"Price/Prev(Price)", 0}, books(), {}, 0, services.services, expression));
}

TEST(DisplayExpression25, showsTheNameOfAFreeSlot) {
    ExprDef expression;
    expression.ResultType = 2;
    expression.Tokens = {2, 90, 102, 85};
    EXPECT_EQ(DisplayExpression25(books(), expression), (AdvancedChoices{"Fld02+Prev(Fld02)?", 1}));
}

TEST(FieldKinds, areTheTypesAndResultTypes) {
    const calc::FieldKinds kinds = fieldKinds(books());
    EXPECT_EQ(kinds.fieldTypes[1], 4);
    EXPECT_EQ(kinds.fieldTypes[2], 0);
    EXPECT_EQ(kinds.fieldTypes[5], 22);
    EXPECT_EQ(kinds.fieldResultTypes[5], 13);
    EXPECT_EQ(kinds.fieldResultTypes[1], 0);
}

} // namespace
} // namespace tallybook::design
