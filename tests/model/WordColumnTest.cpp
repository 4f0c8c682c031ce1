#include "core/model/WordColumn.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace tallybook::model {
namespace {

TEST(WordColumn, isEmptyAtFirst) {
    const WordColumn column;
    EXPECT_TRUE(column.empty());
    EXPECT_FALSE(column.has(0));
    EXPECT_EQ(column.get(100000), std::nullopt);
}

TEST(WordColumn, keepsZeroApartFromNothing) {
    WordColumn column;
    column.set(5, 0);
    EXPECT_EQ(column.get(5), 0u);
    EXPECT_FALSE(column.empty());
    column.erase(5);
    EXPECT_EQ(column.get(5), std::nullopt);
    EXPECT_TRUE(column.empty());
}

TEST(WordColumn, keepsRowsOnBothSidesOfABlockApart) {
    WordColumn column;
    for (const std::uint32_t row : {511u, 256u, 255u, 0u, 64u, 63u})
        column.set(row, row + 1);
    for (const std::uint32_t row : {511u, 256u, 255u, 0u, 64u, 63u})
        EXPECT_EQ(column.get(row), row + 1);
    column.erase(255);
    EXPECT_EQ(column.get(255), std::nullopt);
    EXPECT_EQ(column.get(256), 257u);
    column.erase(9999); // a row that was never there
    column.clear();
    EXPECT_TRUE(column.empty());
}

TEST(WordColumn, agreesWithAMapThroughRandomChanges) {
    std::mt19937 random(3);
    WordColumn column;
    std::map<std::uint32_t, std::uint32_t> expected;
    for (int step = 0; step < 50000; ++step) {
        const auto row = static_cast<std::uint32_t>(random() % 1500);
        if (random() % 3 == 0) {
            column.erase(row);
            expected.erase(row);
        } else {
            const auto value = static_cast<std::uint32_t>(random());
            column.set(row, value);
            expected[row] = value;
        }
        const auto asked = static_cast<std::uint32_t>(random() % 1500);
        const auto found = expected.find(asked);
        ASSERT_EQ(column.has(asked), found != expected.end());
        ASSERT_EQ(column.get(asked), found == expected.end() ? std::nullopt : std::optional(found->second));
        ASSERT_EQ(column.empty(), expected.empty());
    }
}

} // namespace
} // namespace tallybook::model
