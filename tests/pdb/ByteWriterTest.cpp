#include "core/pdb/ByteWriter.h"

#include "core/pdb/ByteReader.h"
#include "support/Hex.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using test::hex;
using test::toHex;

// What `write` puts out, as hex.
template <class Write> std::string written(Write write) {
    ByteWriter out;
    write(out);
    return toHex(out.take());
}

TEST(ByteWriter, writesNumbersHighByteFirst) {
    EXPECT_EQ(written([](ByteWriter& out) { out.outByte(0xFE); }), "FE");
    EXPECT_EQ(written([](ByteWriter& out) { out.outWord(0x0102); }), "01 02");
    EXPECT_EQ(written([](ByteWriter& out) { out.outWord(static_cast<std::uint16_t>(-2)); }), "FF FE");
    EXPECT_EQ(written([](ByteWriter& out) { out.outLong(0x01020304); }), "01 02 03 04");
    EXPECT_EQ(written([](ByteWriter& out) { out.outLong(static_cast<std::uint32_t>(-1)); }), "FF FF FF FF");
    EXPECT_EQ(written([](ByteWriter& out) { out.outFloat(1.5f); }), "3F C0 00 00");
}

TEST(ByteWriter, negativeWordComesBackSignedOrPlus65536) {
    ByteWriter out;
    out.outWord(static_cast<std::uint16_t>(-300));
    const platform::Bytes bytes = out.take();
    EXPECT_EQ(ByteReader(bytes).getInt(), -300);
    EXPECT_EQ(ByteReader(bytes).getWord(), 65236);
}

TEST(ByteWriter, writesDatesTimesAndColours) {
    EXPECT_EQ(written([](ByteWriter& out) { out.outDate({2003, 1, 2}); }), "07 D3 01 02");
    EXPECT_EQ(written([](ByteWriter& out) { out.outTime({13, 5, 9}); }), "00 0D 05 09");
    EXPECT_EQ(written([](ByteWriter& out) { out.outColour({1, 2, 3}); }), "00 01 02 03");
}

TEST(ByteWriter, writesTexts) {
    EXPECT_EQ(written([](ByteWriter& out) { out.outText("ab"); }), "61 62");
    EXPECT_EQ(written([](ByteWriter& out) { out.outZeroText("ab"); }), "61 62 00");
    EXPECT_EQ(written([](ByteWriter& out) { out.outZeroText(""); }), "00");
    EXPECT_EQ(written([](ByteWriter& out) { out.zeros(3); }), "00 00 00");
    EXPECT_EQ(written([](ByteWriter& out) { out.outBytes(hex("01 02")); }), "01 02");
}

TEST(ByteWriter, zeroTextEndsAtANulInIt) {
    EXPECT_EQ(written([](ByteWriter& out) { out.outZeroText(std::string_view("a\0b", 3)); }), "61 00");
}

TEST(ByteWriter, paddedTextIsNeverCut) {
    EXPECT_EQ(written([](ByteWriter& out) { out.outPaddedText("ab", 4); }), "61 62 00 00");
    EXPECT_EQ(written([](ByteWriter& out) { out.outPaddedText("abcd", 4); }), "61 62 63 64");
    EXPECT_EQ(written([](ByteWriter& out) { out.outPaddedText("abcde", 4); }), "61 62 63 64 65");
}

TEST(ByteWriter, areaIsExactlyItsWidth) {
    EXPECT_EQ(written([](ByteWriter& out) { out.outArea("ab", 4); }), "61 62 00 00");
    EXPECT_EQ(written([](ByteWriter& out) { out.outArea("abcd", 4); }), "61 62 63 64");
    EXPECT_EQ(written([](ByteWriter& out) { out.outArea("abcde", 4); }), "61 62 63 64");
    EXPECT_EQ(written([](ByteWriter& out) { out.outArea(std::string_view("a\0b", 3), 4); }), "61 00 00 00");
}

TEST(ByteWriter, replacesALongInPlace) {
    EXPECT_EQ(written([](ByteWriter& out) {
                  out.zeros(6);
                  out.setLong(1, 0x01020304);
              }),
              "00 01 02 03 04 00");
}

TEST(StoredPart, cutsAtTheLengthAndAtANul) {
    EXPECT_EQ(storedPart("abc", 3), "abc");
    EXPECT_EQ(storedPart("abcd", 3), "abc");
    EXPECT_EQ(storedPart("", 3), "");
    EXPECT_EQ(storedPart(std::string_view("a\0c", 3), 3), "a");
    EXPECT_EQ(storedPart(std::string_view("abcd\0", 5), 3), "abc");
}

TEST(ByteWriter, everyCharacterSurvives) {
    ByteWriter out;
    out.outZeroText(test::allCharacters());
    const platform::Bytes bytes = out.take();
    EXPECT_EQ(ByteReader(bytes).getText(), test::allCharacters());
}

} // namespace
} // namespace tallybook::pdb
