#include "core/calc/values/Digits.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace tallybook::calc {
namespace {

// Each power of ten with its neighbours, and each power of two, up to a limit.
std::vector<std::uint64_t> borders(std::uint64_t limit) {
    std::vector<std::uint64_t> numbers = {0};
    for (std::uint64_t power = 1; power <= limit; power *= 10)
        numbers.insert(numbers.end(), {power - 1, power, power + 1});
    for (std::uint64_t power = 1; power <= limit; power *= 2)
        numbers.push_back(power);
    std::erase_if(numbers, [limit](std::uint64_t number) { return number > limit; });
    return numbers;
}

TEST(Digits, writesNumbersBelowAHundred) {
    for (std::uint32_t number = 0; number < 100; ++number) {
        std::string text(2, 'x');
        EXPECT_EQ(putTwoDigits(number, text.data()), text.data() + 2);
        EXPECT_EQ(text, (number < 10 ? "0" : "") + std::to_string(number));
        const char* end = putOneOrTwoDigits(number, text.data());
        EXPECT_EQ(text.substr(0, static_cast<std::size_t>(end - text.data())), std::to_string(number));
    }
}

TEST(Digits, writesEveryFourDigitsOnBothSides) {
    for (std::uint32_t number = 0; number < 10000; ++number) {
        const std::string four = std::to_string(10000 + number).substr(1);
        std::string text(8, 'x');
        putEightDigits(number * 10000 + 9999 - number, text.data());
        ASSERT_EQ(text, four + std::to_string(10000 + 9999 - number).substr(1));
    }
}

TEST(Digits, countsDigits) {
    for (const std::uint64_t number : borders(std::numeric_limits<std::uint32_t>::max()))
        EXPECT_EQ(digitCount(static_cast<std::uint32_t>(number)), static_cast<int>(std::to_string(number).size()))
            << number;
}

TEST(Digits, writesNumbersOfUpToSixteenDigitsAheadOfAPlace) {
    for (const std::uint64_t number : borders(9999999999999999)) {
        std::string text(kMostDigits, 'x');
        char* end = text.data() + text.size();
        const char* start = putWholeBefore(end, number);
        EXPECT_EQ(std::string_view(start, end), std::to_string(number));
    }
}

TEST(Digits, writesWholeNumbersWithTheirSign) {
    std::vector<std::int32_t> numbers = {
        0, -1, 9, -9, 10, -10, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()};
    std::mt19937 random(1);
    for (int i = 0; i < 40000; ++i)
        numbers.push_back(static_cast<std::int32_t>(random()) >> random() % 32);
    for (const std::int32_t number : numbers) {
        char room[kWholeRoom];
        ASSERT_EQ(formWhole(number, room), std::to_string(number));
    }
}

} // namespace
} // namespace tallybook::calc
