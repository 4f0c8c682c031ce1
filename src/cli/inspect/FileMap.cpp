#include "cli/inspect/FileMap.h"

#include "core/pdb/ByteReader.h"
#include "core/pdb/Layout.h"

#include <algorithm>

namespace tallybook::cli {

namespace {

namespace layout = pdb::layout;

constexpr std::size_t kCountPosition = 76; // of the header's number of records

std::vector<ListEntry> readEntries(platform::ByteSpan file, int count) {
    std::vector<ListEntry> entries;
    pdb::ByteReader in(file, layout::kHeaderSize, file.size());
    int records = 0;
    for (int at = 0; at < count && in.left() >= layout::kEntrySize; ++at) {
        ListEntry entry;
        entry.entry = at;
        entry.position = in.position();
        entry.offset = in.getUnsignedLong();
        entry.attributes = in.getByte();
        entry.uniqueId = static_cast<std::uint32_t>(in.getByte() << 16);
        entry.uniqueId |= in.getWord();
        const bool dropped = records >= layout::kFirstDroppedEntry && (entry.attributes & layout::kDeletedEntry) != 0;
        entry.record = dropped ? -1 : records++;
        entries.push_back(entry);
    }
    return entries;
}

// Each record ends at the next greater offset behind it in the list. Going backwards, offsets that can still be
// the end of one are kept in rising order, so that a list of any kind takes one pass.
void setRanges(std::vector<ListEntry>& entries, std::size_t fileSize) {
    std::vector<std::size_t> ends;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        const std::size_t start = entry->offset;
        while (!ends.empty() && ends.back() <= start)
            ends.pop_back();
        const std::size_t end = ends.empty() ? fileSize : ends.back();
        entry->bytes = {std::min(start, fileSize), std::min(end, fileSize)};
        ends.push_back(start);
    }
}

// What is left are two rows of ranges, those of records and those of dropped entries, in each of which no byte stands
// twice, however wild the list is.
void markPassed(std::vector<ListEntry>& entries) {
    std::int64_t record = -1; // the greatest offsets so far
    std::int64_t any = -1;
    for (ListEntry& entry : entries) {
        entry.passed = entry.offset <= (entry.record < 0 ? any : record);
        any = std::max<std::int64_t>(any, entry.offset);
        if (entry.record >= 0)
            record = std::max<std::int64_t>(record, entry.offset);
    }
}

std::vector<ByteRange> uncovered(std::vector<ByteRange> covered, std::size_t fileSize) {
    std::sort(covered.begin(), covered.end(),
              [](const ByteRange& a, const ByteRange& b) { return a.start < b.start; });
    std::vector<ByteRange> gaps;
    std::size_t reached = 0;
    for (const ByteRange& range : covered) {
        if (range.start > reached)
            gaps.push_back({reached, range.start});
        reached = std::max(reached, range.end);
    }
    if (reached < fileSize)
        gaps.push_back({reached, fileSize});
    return gaps;
}

} // namespace

FileMap mapFile(platform::ByteSpan file) {
    FileMap map;
    map.header = {0, std::min(file.size(), layout::kHeaderSize)};
    if (file.size() < layout::kHeaderSize) {
        map.gaps = uncovered({map.header}, file.size());
        return map;
    }
    map.declared = pdb::ByteReader(file, kCountPosition, layout::kHeaderSize).getWord();
    map.entries = readEntries(file, map.declared);
    setRanges(map.entries, file.size());
    markPassed(map.entries);
    std::vector<ByteRange> covered = {map.header};
    for (const ListEntry& entry : map.entries) {
        covered.push_back({entry.position, entry.position + layout::kEntrySize});
        if (entry.bytes.size() > 0 && !entry.passed)
            covered.push_back(entry.bytes);
    }
    map.gaps = uncovered(std::move(covered), file.size());
    return map;
}

} // namespace tallybook::cli
