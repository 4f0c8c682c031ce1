#include "core/forms/PalmBitmap.h"

#include "core/forms/ImageError.h"
#include "core/forms/PalmPalette.h"
#include "forms/Pictures.h"
#include "support/Hex.h"

#include <gtest/gtest.h>

namespace tallybook::forms {
namespace {

using model::Colour;
using platform::Bytes;
using test::coloursOf;
using test::drawn;
using test::hex;
using test::indicesOf;
using test::kBlack;
using test::kWhite;
using test::toHex;

constexpr Colour kRed{255, 0, 0};
constexpr Colour kBlue{0, 0, 255};

int codeOf(std::string_view bytes) {
    const auto read = readPalmBitmap(hex(bytes));
    return read ? 0 : read.error().number;
}

std::string written(const Bitmap& bitmap) {
    const auto bytes = writePalmBitmap(bitmap);
    return bytes ? toHex(bytes.value()) : bytes.error().text;
}

// The chequers of 5 x 3 pixels in all the forms that they may have.
class Chequers : public ::testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(Chequers, areRead) {
    const auto read = readPalmBitmap(hex(GetParam().second));
    ASSERT_TRUE(read.ok()) << read.error().text;
    const Bitmap& bitmap = read.value();
    EXPECT_EQ(bitmap.width, 5);
    EXPECT_EQ(bitmap.height, 3);
    EXPECT_EQ(bitmap.depth, 1);
    EXPECT_EQ(indicesOf(bitmap, 0), "10101");
    EXPECT_EQ(indicesOf(bitmap, 1), "01010");
    EXPECT_EQ(indicesOf(bitmap, 2), "11111");
    EXPECT_EQ(bitmap.palette, (std::vector<Colour>{kWhite, kBlack}));
    EXPECT_FALSE(bitmap.clear.has_value());
}

INSTANTIATE_TEST_SUITE_P(
    PalmBitmap, Chequers,
    ::testing::Values(
        std::pair{"runs", "0005 0003 0002 8000 01 02 0000 00 01 0000 000E 01A8 0100 0150 0100 01F8 0100"},
        std::pair{"plain", "0005 0003 0002 0000 01 02 0000 00 FF 0000 A800 5000 F800"},
        std::pair{"version0", "0005 0003 0002 0000 01 00 0000 00 00 0000 A800 5000 F800"},
        std::pair{"scanline", "0005 0003 0002 8000 01 02 0000 00 00 0000 0009 C0A800 8050 80F8"},
        std::pair{"packBits", "0005 0003 0002 8000 01 02 0000 00 02 0000 000B 01A800 015000 01F800"},
        std::pair{"packedByNothing", "0005 0003 0002 8000 01 02 0000 00 FF 0000 0008 A800 5000 F800"},
        std::pair{"version3", "0005 0003 0002 0000 01 03 18 00 00 00 0048 00000000 00000000 A800 5000 F800"},
        std::pair{"version3Runs",
                  "0005 0003 0002 8000 01 03 18 00 00 01 0048 00000000 00000000 00000010 01A801000150010001F80100"},
        std::pair{"wideRows", "0005 0003 0004 0000 01 02 0000 00 FF 0000 A8FFFFFF 57000000 FF000000"},
        std::pair{"bytesBehind", "0005 0003 0002 0000 01 02 0000 00 FF 0000 A800 5000 F800 1234"}),
    [](const auto& test) { return test.param.first; });

TEST(PalmBitmap, sixteenGreysNeedNoTable) {
    const auto read = readPalmBitmap(hex("0004 0002 0002 8000 04 02 0000 00 01 0000 0008 01FA 0150 0200"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().depth, 4);
    EXPECT_EQ(coloursOf(read.value(), 0), "000000 555555 AAAAAA FFFFFF");
    EXPECT_EQ(coloursOf(read.value(), 1), "FFFFFF FFFFFF FFFFFF FFFFFF");
}

TEST(PalmBitmap, coloursComeFromTheTable) {
    const auto read =
        readPalmBitmap(hex("0002 0001 0002 C000 08 02 0000 00 01 0000 0002 00FF0000 010000FF 0006 0100 0101"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().depth, 8);
    EXPECT_EQ(coloursOf(read.value(), 0), "FF0000 0000FF");
}

// Entries go by the index that they store, whatever their order.
TEST(PalmBitmap, tableGoesByItsIndices) {
    const auto read = readPalmBitmap(hex("0002 0001 0002 4000 08 02 0000 00 FF 0000 0002 C80000FF 00FF0000 00C8"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(coloursOf(read.value(), 0), "FF0000 0000FF");
}

TEST(PalmBitmap, entryThatTheTableLacksIsBlack) {
    const auto read = readPalmBitmap(hex("0002 0001 0002 4000 08 02 0000 00 FF 0000 0002 C80000FF 00FF0000 01C8"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(coloursOf(read.value(), 0), "000000 0000FF");
}

TEST(PalmBitmap, indexPastTheTableIsInvalid) {
    EXPECT_EQ(codeOf("0002 0001 0002 4000 08 02 0000 00 FF 0000 0002 00FF0000 010000FF 0102"), 515);
    EXPECT_EQ(codeOf("0002 0001 0002 4000 04 02 0000 00 FF 0000 0001 00FF0000 0100"), 515);
}

TEST(PalmBitmap, depthTwoBecomesFour) {
    const auto read = readPalmBitmap(hex("0005 0001 0002 0000 02 01 0000 00 00 0000 1B40"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().depth, 4);
    EXPECT_EQ(indicesOf(read.value(), 0), "01231");
    EXPECT_EQ(coloursOf(read.value(), 0), "FFFFFF AAAAAA 555555 000000 AAAAAA");
}

TEST(PalmBitmap, eightBitsWithoutTableHaveTheSystemsColours) {
    const auto read = readPalmBitmap(hex("0003 0001 0004 0000 08 01 0000 00 00 0000 00 7D E6 00"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(coloursOf(read.value(), 0), "FFFFFF FF0000 000000");
}

TEST(PalmBitmap, transparentPixelKeepsItsColour) {
    const auto read = readPalmBitmap(hex("0004 0001 0002 2000 04 02 0000 0F FF 0000 0F0F"));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().clear, std::uint8_t{15});
    EXPECT_EQ(coloursOf(read.value(), 0), "FFFFFF 000000 FFFFFF 000000");
}

TEST(PalmBitmap, indexThatIsNotSaidToBeTransparentIsNot) {
    const auto read = readPalmBitmap(hex("0004 0001 0002 0000 04 02 0000 0F FF 0000 0F0F"));
    ASSERT_TRUE(read.ok());
    EXPECT_FALSE(read.value().clear.has_value());
}

// Of depth 1 and 4 in the low density and 8 in a higher one, that of 4 is taken.
TEST(PalmBitmap, deepestRenditionOfTheLowestDensityIsShown) {
    const std::string one = "0001 0001 0002 0000 01 01 0005 00 00 0000 8000 0000 "; // 20 bytes: next after 5 * 4
    const std::string four = "0002 0001 0002 0000 04 01 0005 00 00 0000 0F00 0000 ";
    const std::string dense = "0004 0001 0004 0000 08 03 18 00 00 00 0090 00000000 00000000 00000000";
    const auto read = readPalmBitmap(hex(one + four + dense));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().width, 2);
    EXPECT_EQ(read.value().depth, 4);
    const auto info = describePalmBitmap(hex(one + four + dense));
    ASSERT_TRUE(info.ok());
    EXPECT_EQ(info.value().renditions, 3);
    EXPECT_EQ(info.value().depth, 4);
}

TEST(PalmBitmap, renditionOfDirectColoursIsPassedOver) {
    const std::string one = "0001 0001 0002 0000 01 01 0005 00 00 0000 8000 0000 ";
    const std::string direct = "0001 0001 0002 0400 10 02 0000 00 FF 0000 FFFF";
    const auto read = readPalmBitmap(hex(one + direct));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().depth, 1);
    EXPECT_EQ(codeOf(direct), 521);
}

struct Damage {
    const char* name;
    const char* bytes;
    int code;
};

class DamagedPalmBitmap : public ::testing::TestWithParam<Damage> {};

TEST_P(DamagedPalmBitmap, isRefused) {
    EXPECT_EQ(codeOf(GetParam().bytes), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(
    PalmBitmap, DamagedPalmBitmap,
    ::testing::Values(
        Damage{"nothing", "", 515}, Damage{"cutHeader", "0005 0003 0002 8000 01 02 0000 00 01 00", 515},
        Damage{"version4", "0005 0003 0002 0000 01 04 0000 00 FF 0000 A800 5000 F800", 515},
        Damage{"noWidth", "0000 0003 0002 0000 01 02 0000 00 FF 0000 A800 5000 F800", 515},
        Damage{"noHeight", "0005 0000 0002 0000 01 02 0000 00 FF 0000 A800", 515},
        Damage{"rowsTooShort", "0011 0001 0002 0000 01 02 0000 00 FF 0000 A800", 515},
        Damage{"depth3", "0005 0003 0002 0000 03 02 0000 00 FF 0000 A800 5000 F800", 515},
        Damage{"depth16", "0001 0001 0002 0000 10 02 0000 00 FF 0000 A800", 521},
        Damage{"pointerToData", "0005 0003 0002 1000 01 02 0000 00 FF 0000 A800 5000 F800", 515},
        Damage{"plainRowsCut", "0005 0003 0002 0000 01 02 0000 00 FF 0000 A800 5000 F8", 515},
        Damage{"unknownPacking", "0005 0003 0002 8000 01 02 0000 00 03 0000 0008 A800 5000 F800", 515},
        Damage{"packedDataCut", "0005 0003 0002 8000 01 02 0000 00 01 0000 000E 01A8 0100 0150 0100 01F8 01", 515},
        Damage{"sizeBelowItself", "0005 0003 0002 8000 01 02 0000 00 01 0000 0001 01A8 0100 0150 0100 01F8 01", 515},
        Damage{"runAcrossTheRowsEnd", "0005 0003 0002 8000 01 02 0000 00 01 0000 0008 03A8 0150 02F8", 515},
        Damage{"runOfNothing", "0005 0003 0002 8000 01 02 0000 00 01 0000 000E 00A8 0100 0150 0100 01F8 0100", 515},
        Damage{"literalsAcrossTheRowsEnd", "0005 0003 0002 8000 01 02 0000 00 02 0000 000A 02A80050 01F800 00", 515},
        Damage{"packBitsCut", "0005 0003 0002 8000 01 02 0000 00 02 0000 0009 01A800 015000 01", 515},
        Damage{"scanlineCut", "0005 0003 0002 8000 01 02 0000 00 00 0000 0007 C0A800 8050", 515},
        Damage{"tableCut", "0002 0001 0002 4000 08 02 0000 00 FF 0000 0100 00FF0000 0101", 515},
        Damage{"shortHeaderOfVersion3", "0005 0003 0002 0000 01 03 10 00 00 00 0048 00000000 00000000 A800 5000 F800",
               515},
        Damage{"moreThanAnyCellHolds", "FFFF FFFF FFFE 0000 08 02 0000 00 FF 0000 00", 515},
        Damage{"hugeRows", "FFFF FFFF FFFF 0000 08 02 0000 00 FF 0000 00", 514}),
    [](const auto& test) { return test.param.name; });

TEST(PalmBitmap, everyPrefixIsReadOrRefused) {
    const Bytes whole = hex("0002 0001 0002 C000 08 02 0000 00 01 0000 0002 00FF0000 010000FF 0006 0100 0101");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto read = readPalmBitmap({whole.data(), length});
        EXPECT_FALSE(read.ok()) << length;
    }
}

// Runs of three rows would take 14 bytes with their size, the rows themselves take 6.
TEST(PalmBitmap, shorterFormIsWritten) {
    EXPECT_EQ(written(drawn(1, {kWhite, kBlack}, {"10101", "01010", "11111"})),
              toHex(hex("0005 0003 0002 0000 01 02 0000 00 FF 0000 A800 5000 F800")));
}

TEST(PalmBitmap, runsAreWrittenWhenTheyAreShorter) {
    // Two rows of 80 pixels, 10 bytes each, all white: a run of 10 each.
    const std::string row(80, '0');
    EXPECT_EQ(written(drawn(1, {kWhite, kBlack}, {row, row})),
              toHex(hex("0050 0002 000A 8000 01 02 0000 00 01 0000 0006 0A00 0A00")));
}

TEST(PalmBitmap, darkerColourIsTheSetBit) {
    EXPECT_EQ(written(drawn(1, {kBlack, kWhite}, {"01010", "10101", "00000"})),
              toHex(hex("0005 0003 0002 0000 01 02 0000 00 FF 0000 A800 5000 F800")));
}

TEST(PalmBitmap, twoOtherColoursGetATable) {
    EXPECT_EQ(written(drawn(1, {kBlue, kWhite}, {"01"})),
              toHex(hex("0002 0001 0002 4000 01 02 0000 00 FF 0000 0002 00FFFFFF 010000FF 8000")));
}

TEST(PalmBitmap, greysAreWrittenWithoutTable) {
    // The bitmap's own order of the greys: 0 black, 1 white, 2 and 3 between.
    EXPECT_EQ(written(drawn(4, {kBlack, kWhite, {85, 85, 85}, {170, 170, 170}}, {"0231", "1111"})),
              toHex(hex("0004 0002 0002 0000 04 02 0000 00 FF 0000 FA50 0000")));
}

TEST(PalmBitmap, unusedColourDoesNotAskForATable) {
    EXPECT_EQ(written(drawn(4, {kBlack, kWhite, kRed}, {"0101"})),
              toHex(hex("0004 0001 0002 0000 04 02 0000 00 FF 0000 F0F0")));
}

TEST(PalmBitmap, sixteenColoursGetATableOfSixteen) {
    EXPECT_EQ(written(drawn(4, {kRed, kBlue}, {"0110"})),
              toHex(hex("0004 0001 0002 4000 04 02 0000 00 FF 0000 0010 00FF0000 010000FF 02000000 03000000 "
                        "04000000 05000000 06000000 07000000 08000000 09000000 0A000000 0B000000 0C000000 "
                        "0D000000 0E000000 0F000000 0110")));
}

TEST(PalmBitmap, tableOf256EndsWithTheLastUsedColour) {
    std::vector<Colour> palette(256, kBlack);
    palette[0] = kRed;
    palette[1] = kBlue;
    EXPECT_EQ(written(drawn(8, palette, {"0001"})),
              toHex(hex("0002 0001 0002 4000 08 02 0000 00 FF 0000 0002 00FF0000 010000FF 0001")));
}

TEST(PalmBitmap, tooManyBytesForACellAreRefused) {
    // 1024 x 64 pixels of noise are 65,536 bytes.
    Bitmap noise = blankBitmap(1024, 64, 8);
    noise.palette.assign(256, kWhite);
    std::uint32_t seed = 1;
    for (std::uint8_t& byte : noise.rows) {
        seed = seed * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(seed >> 24);
    }
    const auto bytes = writePalmBitmap(noise);
    ASSERT_FALSE(bytes.ok());
    EXPECT_EQ(bytes.error().number, 514);
}

// With a table of 256 colours 16 + 1026 bytes stand ahead of the rows, so that 64,492 are left.
TEST(PalmBitmap, lastByteOfACellCounts) {
    const auto ofRows = [](int width, int height) {
        Bitmap bitmap = blankBitmap(width, height, 8);
        bitmap.palette.assign(256, kBlack);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                bitmap.setPixel(x, y, static_cast<std::uint8_t>((x * 7 + y) % 256));
        return bitmap;
    };
    const auto most = writePalmBitmap(ofRows(32246, 2)); // 64,492
    ASSERT_TRUE(most.ok());
    EXPECT_EQ(most.value().size(), 65534u);
    const auto more = writePalmBitmap(ofRows(32248, 2));
    ASSERT_FALSE(more.ok());
    EXPECT_EQ(more.error().number, 514);
}

// Whatever the depth and an odd size, what was written comes back pixel for pixel.
TEST(PalmBitmap, comesBackPixelForPixel) {
    for (const int depth : {1, 4, 8})
        for (const auto& [width, height] : {std::pair{1, 1}, {159, 3}, {7, 5}, {160, 160}, {3, 1}, {1, 40}}) {
            Bitmap bitmap = blankBitmap(width, height, depth);
            for (int i = 0; i < 1 << depth; ++i)
                bitmap.palette.push_back({static_cast<std::uint8_t>(i * 37), static_cast<std::uint8_t>(255 - i),
                                          static_cast<std::uint8_t>(i * 91)});
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x)
                    bitmap.setPixel(x, y, static_cast<std::uint8_t>((x * x / 9 + y * 3) % (1 << depth)));
            const auto bytes = writePalmBitmap(bitmap);
            ASSERT_TRUE(bytes.ok());
            const auto again = readPalmBitmap(bytes.value());
            ASSERT_TRUE(again.ok()) << depth << ' ' << width << 'x' << height;
            ASSERT_EQ(again.value().width, width);
            ASSERT_EQ(again.value().height, height);
            for (int y = 0; y < height; ++y)
                ASSERT_EQ(coloursOf(again.value(), y), coloursOf(bitmap, y)) << depth << ' ' << width << ' ' << y;
        }
}

} // namespace
} // namespace tallybook::forms
