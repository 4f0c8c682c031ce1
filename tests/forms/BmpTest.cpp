#include "core/forms/Bmp.h"

#include "forms/Pictures.h"
#include "support/Hex.h"

#include <gtest/gtest.h>

namespace tallybook::forms {
namespace {

using platform::Bytes;
using test::coloursOf;
using test::drawn;
using test::hex;
using test::indicesOf;
using test::kBlack;
using test::kWhite;
using test::toHex;

const std::string kChequers =
    "424D 4A000000 00000000 3E000000 28000000 05000000 03000000 0100 0100 00000000 0C000000 "
    "130B0000 130B0000 02000000 00000000 FFFFFF00 00000000 F8000000 50000000 A8000000";

// A file of so many bits with these colours (as blue, green, red, zero) and rows.
std::string bmp(const char* width, const char* height, const char* bits, const char* compression,
                const std::string& counted, const std::string& palette, const std::string& rows) {
    const std::size_t rowsAt = 54 + hex(palette).size();
    const auto little = [](std::size_t value) {
        return toHex(Bytes{static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8), 0, 0});
    };
    return std::string("424D 00000000 00000000 ") + little(rowsAt) + " 28000000 " + width + ' ' + height + " 0100 " +
           bits + ' ' + compression + " 00000000 00000000 00000000 " + counted + " 00000000 " + palette + ' ' + rows;
}

const std::string kTwo = "FFFFFF00 00000000";                    // white, black
const std::string kFour = "0000FF00 00FF0000 FF000000 FFFFFF00"; // red, green, blue, white

int codeOf(const std::string& bytes) {
    const auto read = readBmp(hex(bytes));
    return read ? 0 : read.error().number;
}

TEST(Bmp, chequersAreRead) {
    const auto read = readBmp(hex(kChequers));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value(), drawn(1, {kWhite, kBlack}, {"10101", "01010", "11111"}));
}

TEST(Bmp, chequersAreWritten) {
    EXPECT_EQ(toHex(writeBmp(drawn(1, {kWhite, kBlack}, {"10101", "01010", "11111"}))), toHex(hex(kChequers)));
}

TEST(Bmp, paletteIsFilledUpWhenWritten) {
    const Bytes bytes = writeBmp(drawn(4, {{255, 0, 0}}, {"000"}));
    ASSERT_EQ(bytes.size(), 54u + 16 * 4 + 4);
    EXPECT_EQ(toHex({bytes.data() + 46, 16}), "10 00 00 00 00 00 00 00 00 00 FF 00 00 00 00 00");
}

TEST(Bmp, topRowFirst) {
    const auto read =
        readBmp(hex(bmp("02000000", "FEFFFFFF", "0100", "00000000", "02000000", kTwo, "80000000 40000000")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(indicesOf(read.value(), 0), "10");
    EXPECT_EQ(indicesOf(read.value(), 1), "01");
}

// The palette gives the meaning, not the index.
TEST(Bmp, firstColourOfOneBitMayBeBlack) {
    const auto read =
        readBmp(hex(bmp("02000000", "01000000", "0100", "00000000", "00000000", "00000000 FFFFFF00", "40000000")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(coloursOf(read.value(), 0), "000000 FFFFFF");
}

TEST(Bmp, bitsBehindTheLastPixelAreCleared) {
    const auto read = readBmp(hex(bmp("03000000", "01000000", "0100", "00000000", "02000000", kTwo, "BFFFFFFF")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(toHex(read.value().rows), "A0 00 00 00");
}

TEST(Bmp, longerHeadersAreRead) {
    for (const int size : {52, 56, 108, 124}) {
        Bytes bytes = hex(kChequers);
        const auto extra = static_cast<std::size_t>(size - 40);
        bytes.insert(bytes.begin() + 54, extra, std::uint8_t{0});
        bytes[10] = static_cast<std::uint8_t>(0x3E + extra);
        bytes[14] = static_cast<std::uint8_t>(size);
        const auto read = readBmp(bytes);
        ASSERT_TRUE(read.ok()) << size;
        EXPECT_EQ(indicesOf(read.value(), 2), "11111") << size;
    }
}

TEST(Bmp, coloursThatTheFileLacksAreBlack) {
    const auto read =
        readBmp(hex(bmp("03000000", "01000000", "0400", "00000000", "03000000", "0000FF00 00FF0000", "01200000")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(coloursOf(read.value(), 0), "FF0000 00FF00 000000");
}

TEST(Bmp, indexPastTheCountedColoursIsInvalid) {
    EXPECT_EQ(codeOf(bmp("03000000", "01000000", "0400", "00000000", "03000000", "0000FF00 00FF0000", "01300000")),
              515);
}

TEST(Bmp, moreColoursThanTheBitsAllowAreCut) {
    const auto read =
        readBmp(hex(bmp("02000000", "01000000", "0100", "00000000", "FFFFFFFF", kTwo + " 0000FF00", "40000000")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().palette.size(), 2u);
}

// 03 00: three of colour 0; 00 02 01 01: one right, one up; 02 03: two of colour 3; end.
TEST(Bmp, runsOfEightBits) {
    const auto read =
        readBmp(hex(bmp("06000000", "02000000", "0800", "01000000", "04000000", kFour, "0300 00020101 0203 0001")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(indicesOf(read.value(), 1), "000000000000"); // the lower row
    EXPECT_EQ(indicesOf(read.value(), 0), "000000000303");
}

// 00 03 010203 00: three literals, filled up to four bytes; 00 00 the row's end.
TEST(Bmp, literalsOfEightBits) {
    const auto read = readBmp(hex(bmp("04000000", "02000000", "0800", "01000000", "04000000", kFour,
                                      "0003 01020300 0101 0000 0402 0000 0001")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(indicesOf(read.value(), 1), "01020301");
    EXPECT_EQ(indicesOf(read.value(), 0), "02020202");
}

// 05 12: 1 2 1 2 1; 00 03 3120: literals 3 1 2 in two bytes.
TEST(Bmp, runsOfFourBits) {
    const auto read =
        readBmp(hex(bmp("08000000", "01000000", "0400", "02000000", "04000000", kFour, "0512 0003 3120 0001")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(indicesOf(read.value(), 0), "12121312");
}

TEST(Bmp, endMarkMayBeMissingBehindTheLastRow) {
    EXPECT_EQ(codeOf(bmp("02000000", "01000000", "0800", "01000000", "04000000", kFour, "0201 0000")), 0);
}

struct Damage {
    const char* name;
    std::string bytes;
    int code;
};

class DamagedBmp : public ::testing::TestWithParam<Damage> {};

TEST_P(DamagedBmp, isRefused) {
    EXPECT_EQ(codeOf(GetParam().bytes), GetParam().code);
}

const std::string kPlain = "00000000";

INSTANTIATE_TEST_SUITE_P(
    Bmp, DamagedBmp,
    ::testing::Values(
        Damage{"empty", "", 522}, Damage{"noBitmap", "89504E47 00*60", 522},
        Damage{"cutHeader", "424D 4A000000 00000000 3E000000 28000000 05000000", 522},
        Damage{"cutRows", kChequers.substr(0, kChequers.size() - 2), 522},
        Damage{"oldHeader", "424D 00*8 1A000000 0C000000 0100 0100 0100 0100 00*40", 522},
        Damage{"trueColour", bmp("01000000", "01000000", "1800", "00000000", kPlain, "", "00000000"), 521},
        Damage{"trueColourOf32", bmp("01000000", "01000000", "2000", "00000000", kPlain, "", "00000000"), 521},
        Damage{"highColour", bmp("01000000", "01000000", "1000", "03000000", kPlain, "", "00000000"), 521},
        Damage{"runsOfAnotherDepth", bmp("01000000", "01000000", "0400", "01000000", kPlain, kFour, "0101"), 521},
        Damage{"unknownCompression", bmp("01000000", "01000000", "0800", "04000000", kPlain, kFour, "0101"), 521},
        Damage{"negativeWidth", bmp("FFFFFFFF", "01000000", "0100", "00000000", kPlain, kTwo, "00000000"), 522},
        Damage{"noWidth", bmp("00000000", "01000000", "0100", "00000000", kPlain, kTwo, "00000000"), 522},
        Damage{"noHeight", bmp("01000000", "00000000", "0100", "00000000", kPlain, kTwo, "00000000"), 522},
        Damage{"lowestHeight", bmp("01000000", "00000080", "0100", "00000000", kPlain, kTwo, "00000000"), 514},
        Damage{"hugeSides", bmp("00000040", "00000040", "0100", "00000000", kPlain, kTwo, "00000000"), 514},
        Damage{"moreThanAnyCellHolds", bmp("00FF0000", "00FF0000", "0800", "01000000", kPlain, kFour, "0001"), 514},
        Damage{"runsFromTheTop", bmp("01000000", "FFFFFFFF", "0800", "01000000", kPlain, kFour, "01010001"), 522},
        Damage{"runAcrossTheRow", bmp("02000000", "01000000", "0800", "01000000", kPlain, kFour, "03010001"), 515},
        Damage{"literalsAcrossTheRow",
               bmp("02000000", "01000000", "0800", "01000000", kPlain, kFour, "0003010101000001"), 515},
        Damage{"moveOutside", bmp("02000000", "01000000", "0800", "01000000", kPlain, kFour, "00020301 0001"), 515},
        Damage{"runsCut", bmp("02000000", "01000000", "0800", "01000000", kPlain, kFour, "01"), 515},
        Damage{"literalsCut", bmp("04000000", "01000000", "0800", "01000000", kPlain, kFour, "000401"), 515},
        Damage{
            "rowsAheadOfTheirPlace",
            "424D 00000000 00000000 20000000 28000000 01000000 01000000 0100 0100 00*24 FFFFFF00 00000000 00000000",
            522}),
    [](const auto& test) { return test.param.name; });

TEST(Bmp, everyPrefixIsRefused) {
    const Bytes whole = hex(kChequers);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto read = readBmp({whole.data(), length});
        ASSERT_FALSE(read.ok()) << length;
        EXPECT_EQ(read.error().number, 522) << length;
    }
}

} // namespace
} // namespace tallybook::forms
