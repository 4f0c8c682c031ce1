#include "cli/inspect/FileMap.h"

#include <gtest/gtest.h>
#include <vector>

namespace tallybook::cli {
namespace {

using platform::Bytes;

// A header with a count of records, a list of these offsets, and zeros up to the size.
Bytes fileWith(int declared, const std::vector<std::uint32_t>& offsets, std::size_t size) {
    Bytes file(78);
    file[76] = static_cast<std::uint8_t>(declared >> 8);
    file[77] = static_cast<std::uint8_t>(declared);
    for (const std::uint32_t offset : offsets) {
        for (int shift = 24; shift >= 0; shift -= 8)
            file.push_back(static_cast<std::uint8_t>(offset >> shift));
        file.insert(file.end(), {0x40, 1, 2, 3});
    }
    file.resize(size);
    return file;
}

std::vector<ByteRange> ranges(const FileMap& map) {
    std::vector<ByteRange> all;
    for (const ListEntry& entry : map.entries)
        all.push_back(entry.bytes);
    return all;
}

TEST(FileMapTest, givesEachRecordTheBytesUpToTheNextOne) {
    const FileMap map = mapFile(fileWith(2, {96, 100}, 110));
    EXPECT_EQ(ranges(map), (std::vector<ByteRange>{{96, 100}, {100, 110}}));
    EXPECT_EQ(map.gaps, (std::vector<ByteRange>{{94, 96}}));
    EXPECT_EQ(map.entries[1].attributes, 0x40);
    EXPECT_EQ(map.entries[1].uniqueId, 0x010203U);
    EXPECT_EQ(map.entries[1].position, 86U);
}

TEST(FileMapTest, skipsOffsetsThatDoNotRise) {
    // The second record starts ahead of the first one, so the first ends with the third.
    const FileMap map = mapFile(fileWith(3, {110, 104, 120}, 130));
    EXPECT_EQ(ranges(map), (std::vector<ByteRange>{{110, 120}, {104, 120}, {120, 130}}));
    EXPECT_EQ(map.gaps, (std::vector<ByteRange>{{102, 104}}));
}

TEST(FileMapTest, givesTwoRecordsOfOneOffsetTheSameBytes) {
    const FileMap map = mapFile(fileWith(2, {96, 96}, 100));
    EXPECT_EQ(ranges(map), (std::vector<ByteRange>{{96, 100}, {96, 100}}));
}

TEST(FileMapTest, givesARecordBeyondTheEndNoBytes) {
    const FileMap map = mapFile(fileWith(2, {96, 4000000000}, 100));
    EXPECT_EQ(ranges(map), (std::vector<ByteRange>{{96, 100}, {100, 100}}));
}

TEST(FileMapTest, listsWhatTheFileHasRoomFor) {
    const FileMap map = mapFile(fileWith(65535, {96}, 96));
    EXPECT_EQ(map.declared, 65535);
    EXPECT_EQ(map.entries.size(), 2U); // 18 bytes behind the header
    EXPECT_EQ(map.entries[1].position, 86U);
}

TEST(FileMapTest, countsADeletedEntryFrom86OnAsNoRecord) {
    std::vector<std::uint32_t> offsets(90, 900);
    Bytes file = fileWith(90, offsets, 910);
    file[78 + 5 * 8 + 4] = 0x80;  // ahead of 86: a record all the same
    file[78 + 87 * 8 + 4] = 0xC0; // dropped
    const FileMap map = mapFile(file);
    EXPECT_EQ(map.entries[5].record, 5);
    EXPECT_EQ(map.entries[86].record, 86);
    EXPECT_EQ(map.entries[87].record, -1);
    EXPECT_EQ(map.entries[88].record, 87);
}

TEST(FileMapTest, takesAFileShorterThanItsHeader) {
    const FileMap map = mapFile(Bytes(77));
    EXPECT_EQ(map.header, (ByteRange{0, 77}));
    EXPECT_TRUE(map.entries.empty());
    EXPECT_TRUE(map.gaps.empty());
}

TEST(FileMapTest, takesAnEmptyFile) {
    EXPECT_TRUE(mapFile({}).gaps.empty());
}

} // namespace
} // namespace tallybook::cli
