#include "core/calc/values/Numbers.h"

#include "core/calc/values/Decimal.h"
#include "support/Regions.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <utility>

namespace tallybook::calc {
namespace {

constexpr auto kNo = std::nullopt;

struct NumberCase {
    const char* text;
    std::optional<double> number;
    std::optional<std::int16_t> int16;
    std::optional<std::int32_t> int32;
};

TEST(Numbers, readsNumericText) {
    const NumberCase cases[] = {
        {"", kNo, kNo, kNo},
        {"  ", kNo, kNo, kNo},
        {" 5 ", 5, 5, 5},
        {"\t5\r\n\v\f\xA0", 5, 5, 5},
        {"5-", -5, -5, -5},
        {"- 5", -5, -5, -5},
        {"+5", 5, 5, 5},
        {"5+", 5, 5, 5},
        {"--5", kNo, kNo, kNo},
        {"-5-", kNo, kNo, kNo},
        {"5--", kNo, kNo, kNo},
        {"(5)", -5, -5, -5},
        {"( 5 )", -5, -5, -5},
        {"(5", kNo, kNo, kNo},
        {"5)", kNo, kNo, kNo},
        {"(-5)", kNo, kNo, kNo},
        {"-(5)", kNo, kNo, kNo},
        {"(5)-", kNo, kNo, kNo},
        {"((5))", kNo, kNo, kNo},
        {"($5)", -5, -5, -5},
        {"1,000", 1000, 1000, 1000},
        {"1,00,0,", 1000, 1000, 1000},
        {",1", kNo, kNo, kNo},
        {".5", 0.5, 0, 0},
        {"5.", 5, 5, 5},
        {".", kNo, kNo, kNo},
        {"-", kNo, kNo, kNo},
        {"+", kNo, kNo, kNo},
        {"-.", kNo, kNo, kNo},
        {"1.2.3", kNo, kNo, kNo},
        {"1 000", kNo, kNo, kNo},
        {"1e5", 100000, kNo, 100000},
        {"1D5", 100000, kNo, 100000},
        {"1E+5", 100000, kNo, 100000},
        {"1e", kNo, kNo, kNo},
        {"e5", kNo, kNo, kNo},
        {"1 e5", kNo, kNo, kNo},
        {"1e5.5", kNo, kNo, kNo},
        {"1e-5", 0.00001, 0, 0},
        {"1e400", kNo, kNo, kNo},
        {"1e99999999999", kNo, kNo, kNo},
        {"1e-400", 0, 0, 0},
        {"-1e-99999999999", 0, 0, 0},
        {"0e999", 0, 0, 0},
        {"$5", 5, 5, 5},
        {"$ 5", 5, 5, 5},
        {"-$5", -5, -5, -5},
        {"$-5", -5, -5, -5},
        {"5$", 5, 5, 5},
        {"5$$", 5, 5, 5},
        {"5 $", 5, 5, 5},
        {"$$5", kNo, kNo, kNo},
        {"5%", kNo, kNo, kNo},
        {"0x10", kNo, kNo, kNo},
        {"&HFF", 255, 255, 255},
        {"&hff", 255, 255, 255},
        {" &HFF ", 255, 255, 255},
        {"&H80000000", -2147483648.0, kNo, std::numeric_limits<std::int32_t>::min()},
        {"&HFFFFFFFF", -1, -1, -1},
        {"&H123456789", kNo, kNo, kNo},
        {"&O17", 15, 15, 15},
        {"&17", 15, 15, 15},
        {"&O37777777777", -1, -1, -1},
        {"&O40000000000", kNo, kNo, kNo},
        {"&8", kNo, kNo, kNo},
        {"&", kNo, kNo, kNo},
        {"&H", kNo, kNo, kNo},
        {"-&HFF", kNo, kNo, kNo},
        {"&HFF-", kNo, kNo, kNo},
        {"2.5", 2.5, 2, 2},
        {"3.5", 3.5, 4, 4},
        {"-2.5", -2.5, -2, -2},
        {"2.5000000000000000000000000001", 2.5, 3, 3},
        {"-32768.5", -32768.5, -32768, -32768},
        {"-32768.6", -32768.6, kNo, -32769},
        {"32767.5", 32767.5, kNo, 32768},
        {"70000", 70000, kNo, 70000},
        {"2147483647.4", 2147483647.4, kNo, 2147483647},
        {"2147483647.5", 2147483647.5, kNo, kNo},
        {"-2147483648", -2147483648.0, kNo, std::numeric_limits<std::int32_t>::min()},
        {"99999999999999999999", 1e20, kNo, kNo},
        {"True", kNo, kNo, kNo},
        {"12:30", kNo, kNo, kNo},
        {"1/2", kNo, kNo, kNo},
        {"1.5,5", 1.55, 2, 2},
        {"007", 7, 7, 7},
        {"-0", 0, 0, 0},
        {"0.5", 0.5, 0, 0},
        {"1.5", 1.5, 2, 2},
    };
    for (const NumberCase& c : cases) {
        EXPECT_EQ(parseNumber(c.text, test::us()), c.number) << c.text;
        EXPECT_EQ(isNumeric(c.text, test::us()), c.number.has_value()) << c.text;
        EXPECT_EQ(toInt16(c.text, test::us()), c.int16) << c.text;
        EXPECT_EQ(toInt32(c.text, test::us()), c.int32) << c.text;
    }
}

TEST(Numbers, goesByTheRegionsSeparators) {
    EXPECT_EQ(parseNumber("1,5", test::german()), 1.5);
    EXPECT_EQ(parseNumber("1.000", test::german()), 1000);
    EXPECT_EQ(parseNumber("1.5", test::german()), 15);
    EXPECT_EQ(parseNumber("5 \x80", test::german()), 5);
    EXPECT_EQ(parseNumber("$5", test::german()), kNo);
    EXPECT_EQ(parseNumber("5 kr", test::swedish()), 5);
}

TEST(Numbers, hasNoCurrencyWhereTheRegionHasNone) {
    platform::Regional region;
    region.currency.clear();
    EXPECT_EQ(parseNumber("5", region), 5);
    EXPECT_EQ(parseNumber("$5", region), kNo);
}

TEST(Numbers, bringsTextToAByteInItsRange) {
    const std::pair<const char*, std::optional<std::uint8_t>> cases[] = {
        {"0", 0},    {"255", 255}, {"255.4", 255}, {"255.5", kNo}, {"-0.5", 0},
        {"-1", kNo}, {"256", kNo}, {"abc", kNo},   {"", kNo},
    };
    for (const auto& [text, byte] : cases)
        EXPECT_EQ(toByte(text, test::us()), byte) << text;
}

TEST(Numbers, takesTheNearestSingle) {
    const std::pair<const char*, std::optional<float>> cases[] = {
        {"0.1", 0.1f},
        {"3.402823E+38", 3.402823e38f},
        {"3.5E+38", kNo},
        {"-3.5E+38", kNo},
        {"1e-50", 0.0f},
        {"16777217", 16777216.0f},
        // halfway between two singles as a double, above it as a text
        {"1.00000005960464477540000000000001", std::bit_cast<float>(0x3F800001u)},
        {"abc", kNo},
    };
    for (const auto& [text, single] : cases)
        EXPECT_EQ(toSingle(text, test::us()), single) << text;
}

TEST(Numbers, readsTruthFromText) {
    const std::pair<const char*, std::optional<bool>> cases[] = {
        {"TRUE", true}, {"true", true}, {"False", false}, {"#TRUE#", true}, {"#false#", false}, {"1", true},
        {"-1", true},   {"0.5", true},  {"$3", true},     {"0", false},     {"0.00", false},    {"1e-400", false},
        {"Y", kNo},     {"Yes", kNo},   {"Tru", kNo},     {"", kNo},        {"On", kNo},
    };
    for (const auto& [text, truth] : cases)
        EXPECT_EQ(toBoolean(text, test::us()), truth) << text;
}

TEST(Numbers, readsTheNumberThatATextBeginsWith) {
    const std::pair<const char*, double> cases[] = {
        {" 0", 0},
        {"24 and 57", 24},
        {" 2 45 7", 2457},
        {"1,234", 1},
        {"1e3x", 1000},
        {"12e", 12},
        {"- 5", -5},
        {"5-", 5},
        {"$5", 0},
        {"", 0},
        {"abc", 0},
        {".5", 0.5},
        {"&HFFFF", -1},
        {"1615 198th", 1615198},
        {"&H10000", 65536},
        {"&O17x", 15},
        {"+7", 7},
        {"1d2", 100},
        {"1.5.5", 1.5},
        {"-", 0},
        {"\t1\n2", 12},
        {"1\r2", 1},
        {".", 0},
        {"&H", 0},
        {"-.5e1", -5},
        {"1e400", std::numeric_limits<double>::max()},
        {"-1e400", -std::numeric_limits<double>::max()},
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(val(text), value) << text;
}

TEST(Numbers, writesADoubleWithFifteenDigits) {
    const std::pair<double, const char*> cases[] = {
        {0.1, "0.1"},
        {0.1 + 0.2, "0.3"},
        {1.0 / 3, "0.333333333333333"},
        {1.0 / 12, "8.33333333333333E-02"},
        {0.00001, "0.00001"},
        {1e-15, "0.000000000000001"},
        {1e-16, "1E-16"},
        {999999999999999, "999999999999999"},
        {1e15, "1E+15"},
        {1234567890123456, "1.23456789012346E+15"},
        {-0.0, "0"},
        {459, "459"},
        {-459.65, "-459.65"},
        {0.5, "0.5"},
        {-1.5e-20, "-1.5E-20"},
        {1e100, "1E+100"},
        {999999999999999.9, "1E+15"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(decimalText(value, test::us()), text) << value;
}

// Seven digits where they give the single back, else eight or nine, so that a Float cell loses nothing.
TEST(Numbers, writesASingleWithTheDigitsThatGiveItBack) {
    const std::pair<float, const char*> cases[] = {
        {0.1f, "0.1"},
        {1.0f / 3, "0.33333334"},
        {1.0f / 12, "8.3333336E-02"},
        {0.0000001f, "0.0000001"},
        {1e-8f, "1E-08"},
        {9999999.0f, "9999999"},
        {1e7f, "1E+07"},
        {12345678.0f, "12345678"},
        {16777216.0f, "16777216"},
        {6500.0f, "6500"},
        {-0.0f, "0"},
        {-2.5f, "-2.5"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(decimalText(value, test::us()), text) << value;
}

TEST(Numbers, writesABlankInFrontWhereASignWouldStand) {
    const std::pair<double, const char*> cases[] = {
        {0, " 0"},     {459, " 459"},   {-459.65, "-459.65"}, {0.5, " .5"},
        {-0.5, "-.5"}, {10.5, " 10.5"}, {1e15, " 1E+15"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(spacedText(value), text) << value;
}

TEST(Numbers, padsWithZeros) {
    EXPECT_EQ(zeroPadded(42, 10), "0000000042");
    EXPECT_EQ(zeroPadded(23, 3), "023");
    EXPECT_EQ(zeroPadded(7, 2), "07");
    EXPECT_EQ(zeroPadded(123, 2), "123");
    EXPECT_EQ(zeroPadded(0, 2), "00");
}

TEST(Numbers, writesTheRegionsPoint) {
    EXPECT_EQ(decimalText(0.5, test::german()), "0,5");
    EXPECT_EQ(decimalText(0.5f, test::german()), "0,5");
    EXPECT_EQ(decimalText(1.5e-20, test::german()), "1,5E-20");
    EXPECT_EQ(formatDecimals(1234.5, 2, test::german()), "1234,50");
    EXPECT_EQ(formatDecimals(1234.5f, 2, test::german()), "1234,50");
}

TEST(Numbers, readsEverySingleBackThatItWrites) {
    std::mt19937 random(11);
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (value - value != 0)
            continue; // infinite, or no number
        const std::string text = decimalText(value, test::german());
        ASSERT_EQ(toSingle(text, test::german()), value) << text;
    }
}

struct FormatCase {
    double value;
    int decimals;
    const char* text;
};

TEST(Numbers, formatsWithHalvesAwayFromZero) {
    const FormatCase cases[] = {
        {0.5, 0, "1"},
        {1.5, 0, "2"},
        {2.5, 0, "3"},
        {-0.5, 0, "-1"},
        {-2.5, 0, "-3"},
        {0.125, 2, "0.13"},
        {1.005, 2, "1.01"},
        {2.675, 2, "2.68"},
        {-0.04, 1, "0.0"},
        {-0.001, 2, "0.00"},
        {999.9995, 3, "1000.000"},
        {1234.5, 2, "1234.50"},
        {1e20, 0, "100000000000000000000"},
        {0, 3, "0.000"},
        {16777216, 1, "16777216.0"},
        {0.1, 3, "0.100"},
    };
    for (const FormatCase& c : cases) {
        EXPECT_EQ(formatDecimals(c.value, c.decimals, test::us()), c.text) << c.value;
        if (c.value != 1e20) { // a single near it shows its own digits
            EXPECT_EQ(formatDecimals(static_cast<float>(c.value), c.decimals, test::us()), c.text) << c.value;
        }
    }
}

TEST(Numbers, formatsNumericTextAndLeavesOtherTextAlone) {
    EXPECT_EQ(formatDecimals("1,234.5", 2, test::us()), "1234.50");
    EXPECT_EQ(formatDecimals("(5)", 1, test::us()), "-5.0");
    EXPECT_EQ(formatDecimals("abc", 2, test::us()), "abc");
    EXPECT_EQ(formatDecimals("", 2, test::us()), "");
}

// The format on the 15 significant digits, without a way round them.
std::string formatByDigits(double value, int decimals) {
    Decimal number = significantDigits(value, 15);
    roundToPlaces(number, decimals);
    std::string text;
    appendPlain(number, decimals, '.', text);
    return text;
}

// Halves, numbers a few bits beside halves, and any others, of every size.
double numberByChance(std::mt19937_64& random) {
    const double size = std::pow(10.0, static_cast<double>(random() % 22) - 4);
    double value = static_cast<double>(random()) / 18446744073709551616.0 * size;
    if (random() % 2 == 0)
        value = (std::floor(value * 2000) + 1) / 2000;
    for (std::uint64_t steps = random() % 8; steps > 0; --steps)
        value = std::nextafter(value, random() % 2 == 0 ? 0 : 1e300);
    return random() % 4 == 0 ? -value : value;
}

TEST(Numbers, formatsDoublesByTheirFifteenDigits) {
    std::mt19937_64 random(11);
    int quick = 0;
    constexpr int kNumbers = 40000;
    for (int i = 0; i < kNumbers; ++i) {
        const double value = numberByChance(random);
        const int decimals = static_cast<int>(random() % 4);
        quick += scaledMagnitude(value, decimals).has_value() ? 1 : 0;
        ASSERT_EQ(formatDecimals(value, decimals, {}), formatByDigits(value, decimals))
            << std::bit_cast<std::uint64_t>(value) << " with " << decimals;
    }
    EXPECT_GT(quick, kNumbers / 2);
}

TEST(Numbers, leavesLongDoublesToTheirDigits) {
    EXPECT_EQ(scaledMagnitude(12.5, 2), 1250U);
    EXPECT_EQ(scaledMagnitude(-12.5, 0), 13U);
    EXPECT_EQ(scaledMagnitude(1.005, 2), 101U);
    EXPECT_EQ(scaledMagnitude(0, 3), 0U);
    EXPECT_EQ(scaledMagnitude(99999999999999, 0), 99999999999999U);
    EXPECT_EQ(scaledMagnitude(100000000000000, 0), kNo);
    EXPECT_EQ(scaledMagnitude(std::numeric_limits<double>::infinity(), 0), kNo);
    EXPECT_EQ(scaledMagnitude(std::numeric_limits<double>::quiet_NaN(), 0), kNo);
}

} // namespace
} // namespace tallybook::calc
