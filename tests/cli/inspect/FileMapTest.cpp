#include "cli/inspect/FileMap.h"

#include "cli/inspect/DumpFile.h"

#include <gtest/gtest.h>
#include <sstream>
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
    EXPECT_EQ(map.gaps, (std::vector<ByteRange>{{102, 110}})); // the second one is passed over
}

TEST(FileMapTest, tellsWhichRecordsAReadPassesOver) {
    const FileMap map = mapFile(fileWith(6, {140, 130, 135, 160, 160, 150}, 170));
    std::vector<bool> passed;
    for (const ListEntry& entry : map.entries)
        passed.push_back(entry.passed);
    EXPECT_EQ(passed, (std::vector<bool>{false, true, true, false, true, true}));
    EXPECT_EQ(map.gaps, (std::vector<ByteRange>{{126, 140}}));
}

// A list may lead to the same bytes again and again; what is shown of them stays in proportion to the file.
TEST(FileMapTest, showsNoByteMoreThanTwice) {
    const std::size_t size = 78 + 8 * 3000 + 2 + 3000;
    for (const int step : {-1, 0, 1})
        for (const std::uint8_t attributes : {0x40, 0xC0}) {
            std::vector<std::uint32_t> offsets;
            for (int i = 0; i < 3000; ++i)
                offsets.push_back(static_cast<std::uint32_t>(
                    step == 0 ? 78 + 8 * 3000 + 2 : static_cast<int>(size) - 1500 + step * i / 2));
            Bytes file = fileWith(3000, offsets, size);
            for (std::size_t entry = 100; entry < 3000; ++entry)
                file[78 + entry * 8 + 4] = attributes;
            std::size_t shown = 0;
            for (const ListEntry& entry : mapFile(file).entries)
                shown += entry.passed ? 0 : entry.bytes.size();
            EXPECT_LE(shown, 2 * size) << step << ' ' << int{attributes};
            std::ostringstream out;
            writeDump(file, "MS2_Wild.pdb", out);
            EXPECT_LT(out.str().size(), 3000 * 300 + 4 * size);
        }
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
