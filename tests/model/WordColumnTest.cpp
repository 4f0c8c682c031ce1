#include "core/model/WordColumn.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <vector>

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

TEST(WordColumn, copiesTheRowsThatAreAskedForAlone) {
    std::mt19937 random(4);
    WordColumn source;
    for (std::uint32_t row = 0; row < 800; ++row)
        if (random() % 4 != 0)
            source.set(row, row * 3);
    const std::uint64_t all = ~std::uint64_t{0};
    const std::vector<std::uint64_t> rows = {all, all, all, all, 1, 0, all, 0x8000000000000001};
    WordColumn copy;
    copy.set(5000, 1);
    copy.copyRows(source, rows);
    for (std::uint32_t row = 0; row < 6000; ++row) {
        const bool asked = row / 64 < rows.size() && (rows[row / 64] >> row % 64 & 1) != 0;
        ASSERT_EQ(copy.get(row), asked ? source.get(row) : std::nullopt) << row;
    }
    copy.copyRows(source, {});
    EXPECT_TRUE(copy.empty());
}

} // namespace
} // namespace tallybook::model
