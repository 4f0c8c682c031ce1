#include "core/calc/values/SingleText.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace tallybook::calc {
namespace {

std::string shown(float value, int decimals) {
    std::string text;
    appendSingle(value, decimals, '.', text);
    return text;
}

std::string shownByDigits(float value, int decimals) {
    std::string text;
    appendSingleByDigits(value, decimals, '.', text);
    return text;
}

struct Case {
    float value;
    int decimals;
    const char* text;
};

TEST(SingleText, roundsHalvesOfTheShortestFormAwayFromZero) {
    const Case cases[] = {
        {0.5f, 0, "1"},
        {1.5f, 0, "2"},
        {2.5f, 0, "3"},
        {-0.5f, 0, "-1"},
        {-2.5f, 0, "-3"},
        {0.125f, 2, "0.13"},
        {1.005f, 2, "1.01"},
        {2.675f, 2, "2.68"},
        {1.0005f, 3, "1.001"},
        {999.9995f, 3, "1000.000"},
        {1234.5f, 2, "1234.50"},
        {0.1f, 3, "0.100"},
        {0.45f, 1, "0.5"},
        {0.05f, 1, "0.1"},
        {0.25f, 1, "0.3"},
        {8.5f, 0, "9"},
        {4194304.5f, 0, "4194305"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(shown(c.value, c.decimals), c.text) << c.value << " with " << c.decimals;
}

TEST(SingleText, leavesTheSignOffZero) {
    EXPECT_EQ(shown(-0.0f, 2), "0.00");
    EXPECT_EQ(shown(-0.04f, 1), "0.0");
    EXPECT_EQ(shown(-0.001f, 2), "0.00");
    EXPECT_EQ(shown(0.0f, 3), "0.000");
}

TEST(SingleText, writesLargeValuesDigitByDigit) {
    EXPECT_EQ(shown(16777216.0f, 1), "16777216.0");
    EXPECT_EQ(shown(std::numeric_limits<float>::max(), 0), "340282346638528859811704183484516925440");
    EXPECT_EQ(shown(std::numeric_limits<float>::max(), 3), "340282346638528859811704183484516925440.000");
}

TEST(SingleText, showsVerySmallValuesAsZero) {
    EXPECT_EQ(shown(std::numeric_limits<float>::denorm_min(), 3), "0.000");
    EXPECT_EQ(shown(std::numeric_limits<float>::min(), 3), "0.000");
}

TEST(SingleText, showsNothingForWhatIsNoNumber) {
    EXPECT_EQ(shown(std::numeric_limits<float>::infinity(), 2), "");
    EXPECT_EQ(shown(-std::numeric_limits<float>::infinity(), 2), "");
    EXPECT_EQ(shown(std::numeric_limits<float>::quiet_NaN(), 2), "");
}

TEST(SingleText, useTheRegionsPoint) {
    std::string text = "x";
    appendSingle(1.5f, 2, ',', text);
    EXPECT_EQ(text, "x1,50");
}

void expectBothAgree(std::uint32_t bits) {
    const float value = std::bit_cast<float>(bits);
    for (int decimals = 0; decimals <= 3; ++decimals)
        ASSERT_EQ(shown(value, decimals), shownByDigits(value, decimals)) << "bits " << bits;
}

TEST(SingleText, agreesWithTheDigitsForSinglesOfAllKinds) {
    std::mt19937 random(20030305);
    for (int i = 0; i < 40000; ++i)
        expectBothAgree(static_cast<std::uint32_t>(random()));
}

// Where rounding is decided: at and beside every kind of half, in every power of two that shows places.
TEST(SingleText, agreesWithTheDigitsBesideHalves) {
    std::mt19937 random(1952);
    for (int i = 0; i < 40000; ++i) {
        const double power = static_cast<double>(kPowersOfTen[random() % 4]);
        const double magnitude = std::exp2(static_cast<double>(random() % 26));
        const double half = std::floor(static_cast<double>(random()) / 4294967296.0 * magnitude) + 0.5;
        const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(half / power));
        for (std::uint32_t beside = bits - 2; beside != bits + 3; ++beside)
            expectBothAgree(beside);
    }
}

TEST(SingleText, agreesWithTheDigitsAtPowersOfTwo) {
    for (std::uint32_t exponent = 0; exponent < 256; ++exponent)
        for (std::uint32_t beside = 0; beside < 5; ++beside)
            expectBothAgree((exponent << 23) + beside - 2);
}

} // namespace
} // namespace tallybook::calc
