#include "core/pdb/ByteReader.h"

#include "support/Hex.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using platform::Bytes;
using test::hex;

TEST(ByteReader, readsNumbersHighByteFirst) {
    const Bytes bytes = hex("FE 0102 FFFE FFFE 80000001 FFFFFFFF 3FC00000");
    ByteReader in(bytes);
    EXPECT_EQ(in.getByte(), 0xFE);
    EXPECT_EQ(in.getWord(), 0x0102);
    EXPECT_EQ(in.getInt(), -2);
    EXPECT_EQ(in.getWord(), 65534); // the same bytes, unsigned
    EXPECT_EQ(in.getLong(), -2147483647);
    EXPECT_EQ(in.getUnsignedLong(), 4294967295u);
    EXPECT_EQ(in.getFloat(), 1.5f);
    EXPECT_EQ(in.left(), 0u);
    EXPECT_TRUE(in.ok());
}

TEST(ByteReader, readsTextUpToItsNul) {
    const Bytes bytes = hex("'Book' 00 00 'x' 00");
    ByteReader in(bytes);
    EXPECT_EQ(in.getText(), "Book");
    EXPECT_EQ(in.position(), 5u);
    EXPECT_EQ(in.getText(), "");
    EXPECT_EQ(in.getText(), "x");
    EXPECT_TRUE(in.ok());
}

TEST(ByteReader, refusesTextWithoutNul) {
    const Bytes bytes = hex("'Book'");
    ByteReader in(bytes);
    EXPECT_EQ(in.getText(), "");
    EXPECT_FALSE(in.ok());
    EXPECT_EQ(in.position(), 0u);
    EXPECT_EQ(in.error("T").text, "the file ends inside a text");
}

TEST(ByteReader, openTextRunsToNulOrEnd) {
    const Bytes bytes = hex("'Bo' 00 'ok'");
    ByteReader in(bytes);
    EXPECT_EQ(in.getOpenText(), "Bo");
    EXPECT_EQ(in.position(), 3u);
    EXPECT_EQ(in.getOpenText(), "ok");
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(in.getOpenText(), "");
    EXPECT_TRUE(in.ok());
}

TEST(ByteReader, paddedTextLosesWhatStandsBehindItsNul) {
    const Bytes bytes = hex("'ab' 00 'cd'  'fghij'  00*5 'z'");
    ByteReader in(bytes);
    EXPECT_EQ(in.getPaddedText(5), "ab");
    EXPECT_EQ(in.getPaddedText(5), "fghij"); // the whole width without a NUL
    EXPECT_EQ(in.getPaddedText(5), "");
    EXPECT_EQ(in.getByte(), 'z');
}

TEST(ByteReader, paddedTextPastTheEndFails) {
    const Bytes bytes = hex("'abc'");
    ByteReader in(bytes);
    EXPECT_EQ(in.getPaddedText(4), "");
    EXPECT_FALSE(in.ok());
}

TEST(ByteReader, skipsAndRefusesToSkipPastTheEnd) {
    const Bytes bytes = hex("01 02 03");
    ByteReader in(bytes);
    in.skipBytes(2);
    EXPECT_EQ(in.position(), 2u);
    in.skipBytes(static_cast<std::size_t>(-1)); // a lie that must not wrap around
    EXPECT_FALSE(in.ok());
    EXPECT_EQ(in.position(), 2u);
}

TEST(ByteReader, firstFailureSticks) {
    const Bytes bytes = hex("01 02 03 04 05");
    ByteReader in(bytes);
    in.setRecord(7);
    EXPECT_EQ(in.getByte(), 1);
    in.fail("first reason");
    in.fail("second reason");
    EXPECT_EQ(in.getByte(), 0);
    EXPECT_EQ(in.getLong(), 0);
    EXPECT_EQ(in.getText(), "");
    EXPECT_EQ(in.getPaddedText(1), "");
    EXPECT_EQ(in.position(), 1u);

    const platform::Result<int> result = in.give("Area : operation", 5);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().kind, platform::ErrorKind::Format);
    EXPECT_EQ(result.error().tag, "Area : operation");
    EXPECT_EQ(result.error().description(), "Record 7: first reason");
    EXPECT_EQ(result.error().offset, 1u);
}

TEST(ByteReader, eachReadPastTheEndFails) {
    const std::array<void (*)(ByteReader&), 5> reads = {
        [](ByteReader& in) { in.getByte(); },
        [](ByteReader& in) { in.getWord(); },
        [](ByteReader& in) { in.getLong(); },
        [](ByteReader& in) { in.getFloat(); },
        [](ByteReader& in) {
            std::array<std::uint8_t, 3> three{};
            in.getBytes(three);
        },
    };
    for (const auto& read : reads) {
        ByteReader in(platform::ByteSpan{});
        read(in);
        EXPECT_FALSE(in.ok());
        EXPECT_EQ(in.error("T").text, "the file ends inside it");
        EXPECT_FALSE(in.error("T").record.has_value());
    }
}

TEST(ByteReader, givesTheValueWhenNothingFailed) {
    ByteReader in(platform::ByteSpan{});
    const platform::Result<int> result = in.give("T", 5);
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 5);
    EXPECT_TRUE(in.status("T").ok());
}

TEST(ByteReader, staysWithinItsPartOfTheFile) {
    const Bytes bytes = hex("'aa' 'bc' 'dd'");
    ByteReader in(bytes, 2, 4);
    EXPECT_EQ(in.position(), 2u);
    EXPECT_EQ(in.getOpenText(), "bc");
    EXPECT_EQ(in.getByte(), 0);
    EXPECT_FALSE(in.ok());
}

} // namespace
} // namespace tallybook::pdb
