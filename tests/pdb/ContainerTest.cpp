#include "core/pdb/Container.h"

#include "support/Hex.h"

#include <gtest/gtest.h>
#include <vector>

namespace tallybook::pdb {
namespace {

using platform::Bytes;
using test::hex;
using test::toHex;

const platform::LocalTime kNow{2000, 1, 1, 0, 0, 0}; // 3029529600 seconds from 1904: B4 92 F4 00

// A header as other programs may write it: no field but name, creator and count is looked at.
Bytes foreignHeader(const std::string& name, const std::string& creator, const std::string& count) {
    Bytes bytes = hex("'" + name + "'");
    bytes.resize(32);
    const Bytes rest = hex("1234 5678 11111111 22222222 33333333 44444444 55555555 66666666 'junk' '" + creator +
                           "' 77777777 88888888 " + count);
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    return bytes;
}

TEST(Header, isReadFromItsPlaces) {
    const Bytes bytes = foreignHeader("MS2_My Books", "MOSS", "0058");
    ByteReader in(bytes);
    const auto header = readheader20(in);
    ASSERT_TRUE(header.ok());
    EXPECT_EQ(header.value().name, "MS2_My Books");
    EXPECT_EQ(header.value().creator, "MOSS");
    EXPECT_EQ(header.value().records, 88);
    EXPECT_EQ(in.position(), 78u);
}

TEST(Header, nameMayFillAll32Bytes) {
    const std::string name = "MS2_0123456789012345678901234567";
    const Bytes bytes = foreignHeader(name, "MOSS", "0057");
    ByteReader in(bytes);
    EXPECT_EQ(readheader20(in).value().name, name);
}

TEST(Header, otherCreatorIsToldNotJudged) {
    const Bytes bytes = foreignHeader("x", "ABCD", "0000");
    ByteReader in(bytes);
    EXPECT_EQ(readheader20(in).value().creator, "ABCD");
}

TEST(Header, shorterThan78BytesIsRefused) {
    Bytes bytes = foreignHeader("x", "MOSS", "0057");
    bytes.resize(77);
    ByteReader in(bytes);
    const auto header = readheader20(in);
    ASSERT_FALSE(header.ok());
    EXPECT_EQ(header.error().kind, platform::ErrorKind::Format);
    EXPECT_EQ(header.error().tag, "Load_DB : readheader20");
}

TEST(Header, isWrittenAfresh) {
    ByteWriter out;
    writeHeader20(out, "MS2_My Books", kNow, 0x0102);
    EXPECT_EQ(toHex(out.take()), toHex(hex("'MS2_My Books' 00*20 8000 0001 B492F400 B492F400 00000000 00000001"
                                           "00000000 00000000 'data' 'MOSS' 00000000 00000000 0102")));
}

TEST(Header, nameIsCutToLeaveRoomForItsNul) {
    ByteWriter out;
    writeHeader20(out, "0123456789012345678901234567890123", kNow, 0);
    const Bytes bytes = out.take();
    ByteReader in(bytes);
    EXPECT_EQ(readheader20(in).value().name, "0123456789012345678901234567890");
    EXPECT_EQ(bytes[31], 0);
}

TEST(TimeStamp, countsSecondsFrom1904) {
    EXPECT_EQ(secondsSince1904({1904, 1, 1, 0, 0, 0}), 0u);
    EXPECT_EQ(secondsSince1904({1904, 1, 2, 1, 1, 1}), 86400u + 3661u);
    EXPECT_EQ(secondsSince1904({2000, 1, 1, 0, 0, 0}), 3029529600u);
    EXPECT_EQ(secondsSince1904({2040, 2, 6, 6, 28, 15}), 4294967295u);
    EXPECT_EQ(secondsSince1904({2040, 2, 6, 6, 28, 16}), 0u); // 32 bits are used up
}

struct Entry {
    std::uint32_t offset;
    std::uint8_t attributes = 0x40;
};

// The record list of a file with these entries, read back.
platform::Result<RecordList> listOf(const std::vector<Entry>& entries, int count, std::size_t bytesBehind = 2) {
    ByteWriter out;
    for (const Entry& entry : entries) {
        out.outLong(entry.offset);
        out.outByte(entry.attributes);
        out.outBytes(hex("AA BB CC")); // an id, of no meaning
    }
    out.zeros(bytesBehind);
    const Bytes bytes = out.take();
    ByteReader in(bytes);
    return readRecordList(in, {"x", "MOSS", count});
}

std::vector<Entry> entries(int count) {
    std::vector<Entry> list;
    for (int i = 0; i < count; ++i)
        list.push_back({static_cast<std::uint32_t>(1000 + 2 * i)});
    return list;
}

TEST(RecordList, keepsOffsetsAndIgnoresIds) {
    const auto list = listOf(entries(3), 3);
    ASSERT_TRUE(list.ok());
    EXPECT_EQ(list.value().count(), 3);
    EXPECT_EQ(list.value().offset(2), 1004u);
}

TEST(RecordList, dropsDeletedEntriesFrom86On) {
    std::vector<Entry> list = entries(91);
    list[85].attributes = 0xC0; // a fixed record, whatever its mark
    list[86].attributes = 0x80;
    list[88].attributes = 0xFF;
    list[90].attributes = 0x80; // the last one
    const auto read = listOf(list, 91);
    ASSERT_TRUE(read.ok());
    ASSERT_EQ(read.value().count(), 88);
    EXPECT_EQ(read.value().offset(85), 1170u);
    EXPECT_EQ(read.value().offset(86), 1174u); // of entry 87
    EXPECT_EQ(read.value().offset(87), 1178u); // of entry 89
}

TEST(RecordList, otherMarksDoNotDelete) {
    std::vector<Entry> list = entries(88);
    list[87].attributes = 0x7F;
    EXPECT_EQ(listOf(list, 88).value().count(), 88);
}

TEST(RecordList, refusesMoreEntriesThanTheFileHolds) {
    const auto list = listOf(entries(3), 65535);
    ASSERT_FALSE(list.ok());
    EXPECT_EQ(list.error().tag, "Load_DB : readRecordList");
    EXPECT_EQ(list.error().text, "65535 records in the header, at most 3");
    EXPECT_FALSE(listOf(entries(3), 4, 7).ok()); // one byte too few
    EXPECT_TRUE(listOf(entries(3), 4, 8).ok());
}

TEST(RecordList, countIsUnsigned) {
    EXPECT_EQ(listOf(entries(40000), 40000).value().count(), 40000);
}

RecordList listOfOffsets(const std::vector<std::uint32_t>& offsets, std::size_t fileSize) {
    RecordList list(fileSize);
    for (const std::uint32_t offset : offsets)
        list.add(offset, false);
    return list;
}

TEST(RecordList, lengthMayBeNegative) {
    const RecordList list = listOfOffsets({100, 90, 200}, 250);
    EXPECT_EQ(list.length(0), -10);
    EXPECT_EQ(list.length(1), 110);
    EXPECT_EQ(list.length(2), 50);
}

TEST(RecordList, bytesOfARecordEndAtTheNextOffsetBehindIt) {
    const RecordList list = listOfOffsets({100, 90, 100, 200, 900}, 250);
    EXPECT_EQ(list.end(0), 200u);
    EXPECT_EQ(list.end(1), 100u);
    EXPECT_EQ(list.end(2), 200u);
    EXPECT_EQ(list.end(3), 250u); // the next one starts beyond the file
    EXPECT_EQ(list.end(4), 250u);
}

TEST(RecordList, deletedRecordsBoundTheirNeighbours) {
    RecordList list(250);
    list.add(100, false);
    list.add(120, true);
    list.add(150, false);
    list.add(200, true);
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.end(0), 120u);
    EXPECT_EQ(list.length(0), 20);
    EXPECT_EQ(list.offset(1), 150u);
    EXPECT_EQ(list.end(1), 200u);
}

TEST(RecordList, movesForwardsOnly) {
    const Bytes bytes(20);
    const RecordList list = listOfOffsets({5, 3, 12}, 20);
    ByteReader in(bytes);
    EXPECT_TRUE(list.moveTo(in, 0));
    EXPECT_EQ(in.position(), 5u);
    EXPECT_FALSE(list.moveTo(in, 1)); // passed: left alone, without an error
    EXPECT_EQ(in.position(), 5u);
    EXPECT_TRUE(list.moveTo(in, 2));
    EXPECT_EQ(in.position(), 12u);
    EXPECT_TRUE(in.ok());
}

TEST(RecordList, refusesARecordBeyondTheEnd) {
    const Bytes bytes(20);
    const RecordList list = listOfOffsets({21, 0xFFFFFFFF}, 20);
    ByteReader in(bytes);
    EXPECT_FALSE(list.moveTo(in, 0));
    ASSERT_FALSE(in.ok());
    EXPECT_EQ(in.error("T").description(), "Record 0: it starts at byte 21, the file has 20 bytes");
}

TEST(OutRecords, putsHeaderAndOffsetsAhead) {
    OutRecords out("MS2_x", kNow, 2);
    EXPECT_EQ(out.position(), 78u + 16 + 2);
    out.begin().outBytes(hex("01 02 03"));
    out.begin().outBytes(hex("04"));
    const auto bytes = out.finish();
    ASSERT_TRUE(bytes.ok());
    const platform::ByteSpan file = bytes.value();
    EXPECT_EQ(file.size(), 78u + 16 + 2 + 4);
    EXPECT_EQ(toHex(file.subspan(76)), toHex(hex("0002  00000060 40 000000  00000063 40 000000  0000  010203 04")));
}

TEST(OutRecords, firstRecordStartsAt80Plus8TimesTheirNumber) {
    OutRecords out("MS2_x", kNow, 87);
    EXPECT_EQ(out.position(), 80u + 8 * 87);
}

} // namespace
} // namespace tallybook::pdb
