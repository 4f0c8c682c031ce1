// What check says about the file around its records.
#include "cli/inspect/Findings.h"
#include "core/calc/values/Ansi.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/Layout.h"
#include "core/pdb/Names.h"

#include <algorithm>
#include <string_view>

namespace tallybook::cli {

namespace {

namespace layout = pdb::layout;
using platform::ByteSpan;

// Places in the header.
constexpr std::size_t kApplicationInfo = 52;
constexpr std::size_t kSortInfo = 56;
constexpr std::size_t kTypePosition = 60;
constexpr std::size_t kCreatorPosition = 64;
constexpr std::size_t kNextListPosition = 72;
constexpr std::size_t kCountPosition = 76;

std::string quoted(std::string_view bytes) {
    return '"' + calc::ansi::toUtf8(bytes) + '"';
}

std::string_view textAt(ByteSpan file, std::size_t position, std::size_t width) {
    return pdb::ByteReader(file, position, file.size()).getPaddedText(width);
}

void checkHeaderNames(ByteSpan file, Findings& findings) {
    const std::string_view name = textAt(file, 0, layout::kNameWidth);
    if (name.size() == layout::kNameWidth)
        findings.push_back({{}, 0, "the name has no NUL: its last character is lost when saved"});
    if (!pdb::has2xPrefix(name))
        findings.push_back({{}, 0, "the name " + quoted(name) + " has no MS2_: a save puts it in front"});
    const std::string_view type = textAt(file, kTypePosition, 4);
    if (type != layout::kType)
        findings.push_back({{}, kTypePosition, "the type is " + quoted(type) + ", not \"data\""});
    const std::string_view creator = textAt(file, kCreatorPosition, 4);
    if (creator != layout::kCreator)
        findings.push_back(
            {{}, kCreatorPosition, "the creator is " + quoted(creator) + ", not \"MOSS\": this is no Tallybook"});
}

void checkHeaderNumbers(ByteSpan file, const FileMap& map, Findings& findings) {
    const auto longAt = [&](std::size_t position) {
        return pdb::ByteReader(file, position, file.size()).getUnsignedLong();
    };
    if (longAt(kApplicationInfo) != 0)
        findings.push_back({{}, kApplicationInfo, "there is application info: a save leaves it out"});
    if (longAt(kSortInfo) != 0)
        findings.push_back({{}, kSortInfo, "there is sort info: a save leaves it out"});
    if (longAt(kNextListPosition) != 0)
        findings.push_back({{}, kNextListPosition, "there is a second record list, which is not read"});
    if (static_cast<int>(map.entries.size()) < map.declared)
        findings.push_back({{},
                            kCountPosition,
                            std::to_string(map.declared) + " records in the header, the file has room for " +
                                std::to_string(map.entries.size()) + " entries"});
}

void checkEntry(const ListEntry& entry, const ListEntry* before, std::size_t fileSize, std::size_t listEnd,
                Findings& findings) {
    const auto add = [&](const std::string& text) { findings.push_back({entry.record, entry.position, text}); };
    if (entry.offset >= fileSize)
        add("it starts at byte " + std::to_string(entry.offset) + ", the file has " + std::to_string(fileSize));
    else if (entry.offset < listEnd)
        add("it starts at byte " + std::to_string(entry.offset) + ", inside the record list");
    if (before != nullptr && entry.offset <= before->offset)
        add("its offset " + std::to_string(entry.offset) + " is not behind that of the record before it");
}

void checkList(ByteSpan file, const FileMap& map, Findings& findings) {
    const std::size_t listEnd = layout::kHeaderSize + map.entries.size() * layout::kEntrySize;
    const ListEntry* before = nullptr;
    int records = 0;
    for (const ListEntry& entry : map.entries) {
        if (entry.record < 0) {
            findings.push_back({{},
                                entry.position,
                                "entry " + std::to_string(entry.entry) + " is marked deleted: a save leaves it out"});
            continue;
        }
        if ((entry.attributes & layout::kDeletedEntry) != 0)
            findings.push_back({entry.record, entry.position,
                                "it is marked deleted: it is read all the same, a save takes that away"});
        checkEntry(entry, before, file.size(), listEnd, findings);
        before = &entry;
        ++records;
    }
    if (records < model::kFixedRecords)
        findings.push_back({{},
                            layout::kHeaderSize,
                            std::to_string(records) + " records, at least " + std::to_string(model::kFixedRecords)});
}

// The two zeros behind the list are the one gap that belongs there.
void checkGaps(ByteSpan file, const FileMap& map, Findings& findings) {
    const std::size_t listEnd = layout::kHeaderSize + map.entries.size() * layout::kEntrySize;
    for (const ByteRange& gap : map.gaps) {
        const ByteSpan bytes = gap.of(file);
        const bool zeros = std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
        if (gap.start == listEnd && gap.size() == layout::kListPadding && zeros)
            continue;
        findings.push_back({{}, gap.start, byteCount(gap.size()) + " of no record: a save leaves them out"});
    }
}

void checkLeadingBytes(ByteSpan file, const FileMap& map, Findings& findings) {
    for (const ListEntry& entry : map.entries) {
        if (entry.record < 0 || entry.offset > file.size()) // the latter has been told
            continue;
        const int expected = std::min(entry.record, model::kFixedRecords);
        if (entry.bytes.size() == 0)
            findings.push_back({entry.record, entry.bytes.start, "it has no bytes"});
        else if (file[entry.bytes.start] != expected)
            findings.push_back(
                {entry.record, entry.bytes.start,
                 "it begins with " + std::to_string(file[entry.bytes.start]) + ", not " + std::to_string(expected)});
    }
}

} // namespace

void checkContainer(ByteSpan file, const FileMap& map, Findings& findings) {
    if (file.size() < layout::kHeaderSize) {
        findings.push_back({{},
                            file.size(),
                            "the file has " + std::to_string(file.size()) + " bytes, its header alone needs " +
                                std::to_string(layout::kHeaderSize)});
        return;
    }
    checkHeaderNames(file, findings);
    checkHeaderNumbers(file, map, findings);
    checkList(file, map, findings);
    checkGaps(file, map, findings);
    checkLeadingBytes(file, map, findings);
}

} // namespace tallybook::cli
