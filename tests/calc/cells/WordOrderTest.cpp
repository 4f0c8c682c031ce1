#include "core/calc/cells/WordOrder.h"

#include "core/calc/cells/CellCoders.h"

#include <bit>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace tallybook::calc {
namespace {

using model::WordForm;

std::uint32_t singleWord(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

TEST(WordOrder, beginsAndEndsWithTheLeastAndTheGreatestValue) {
    struct Case {
        WordForm form;
        std::uint64_t count;
        std::uint32_t first;
        std::uint32_t last;
    };
    using Single = std::numeric_limits<float>;
    const Case cases[] = {
        {WordForm::Whole, std::uint64_t{1} << 32, 0x80000000, 0x7FFFFFFF},
        {WordForm::Decimal, 2 * std::uint64_t{0x7F800000}, singleWord(Single::lowest()), singleWord(Single::max())},
        {WordForm::Date, 3615900, packDate(100, 1, 1), packDate(9999, 12, 31)},
        {WordForm::Time, 86400, packTime(0, 0, 0), packTime(23, 59, 59)},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(countOfWords(c.form), c.count);
        EXPECT_EQ(wordAt(c.form, 0), c.first);
        EXPECT_EQ(wordAt(c.form, c.count - 1), c.last);
    }
}

TEST(WordOrder, risesWithTheValue) {
    std::mt19937 random(1);
    for (const WordForm form : {WordForm::Whole, WordForm::Decimal, WordForm::Date, WordForm::Time})
        for (int i = 0; i < 2000; ++i) {
            const std::uint64_t place = random() % (countOfWords(form) - 1);
            ASSERT_LT(keyOfWord(form, wordAt(form, place)), keyOfWord(form, wordAt(form, place + 1))) << place;
        }
    const auto key = [](float value) { return keyOfWord(WordForm::Decimal, singleWord(value)); };
    EXPECT_LT(key(-2.5F), key(-2.4F));
    EXPECT_LT(key(-0.001F), key(0.0F));
    EXPECT_LT(key(0.5F), key(1e30F));
    EXPECT_LT(keyOfWord(WordForm::Whole, static_cast<std::uint32_t>(-1)), keyOfWord(WordForm::Whole, 0));
}

} // namespace
} // namespace tallybook::calc
