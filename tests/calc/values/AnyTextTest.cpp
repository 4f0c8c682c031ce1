// Cells hold any bytes, so whatever reads them must take any bytes.
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/LikePattern.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "support/Regions.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace tallybook::calc {
namespace {

// Mostly what numbers, dates and patterns are made of, now and then any byte.
std::string anyText(std::mt19937& random) {
    static constexpr std::string_view kPieces[] = {"1", "0",  "99", "2003", ".", ",", "-", "+",  "/",  ":", " ",
                                                   "e", "E5", "&H", "&",    "(", ")", "$", "AM", "pm", "F", "Jan",
                                                   "[", "]",  "!",  "*",    "?", "#", "a", "z",  "\n", "\""};
    std::string text;
    for (auto count = random() % 12; count > 0; --count) {
        if (random() % 10 == 0)
            text += static_cast<char>(random());
        else
            text += kPieces[random() % std::size(kPieces)];
    }
    return text;
}

TEST(AnyText, readsAsAFiniteNumberOrAsNone) {
    std::mt19937 random(17);
    for (int i = 0; i < 40000; ++i) {
        const std::string text = anyText(random);
        const auto number = parseNumber(text, test::german());
        ASSERT_TRUE(!number || std::isfinite(*number)) << text;
        ASSERT_EQ(number.has_value(), isNumeric(text, test::german())) << text;
        ASSERT_TRUE(std::isfinite(val(text))) << text;
        const auto whole = toInt32(text, test::german());
        if (whole) {
            ASSERT_LE(std::abs(*number - *whole), 0.5) << text;
        }
    }
}

TEST(AnyText, readsAsADateOfItsYearsOrAsNone) {
    std::mt19937 random(19);
    for (int i = 0; i < 40000; ++i) {
        const std::string text = anyText(random);
        const auto serial = toDate(text, test::us(), 2003);
        ASSERT_TRUE(!serial || isRealDate(dateOf(*serial))) << text;
    }
}

TEST(AnyText, matchesItself) {
    std::mt19937 random(23);
    for (int i = 0; i < 40000; ++i) {
        const std::string text = anyText(random);
        ASSERT_TRUE(like(text, "*", TextCase::Binary));
        ASSERT_EQ(findText(text, text, TextCase::Folded), 1u);
        ASSERT_TRUE(equalText(upper(text), lower(text), TextCase::Folded));
        (void)like(anyText(random), text, TextCase::Folded);
    }
}

// What a type's form is stays as it is when it is brought to that form again.
TEST(AnyText, keepsAFormThatItHas) {
    using model::FieldType;
    std::mt19937 random(29);
    for (int i = 0; i < 40000; ++i) {
        const std::string text = anyText(random);
        for (const FieldType type : {FieldType::Integer, FieldType::Long, FieldType::Float, FieldType::Checkbox,
                                     FieldType::Date, FieldType::Text}) {
            const std::string once = checkFormat(type, text, test::us(), 2003);
            ASSERT_EQ(checkFormat(type, once, test::us(), 2003),
                      type == FieldType::Checkbox && once == "0" ? "False" : once)
                << text;
        }
    }
}

} // namespace
} // namespace tallybook::calc
