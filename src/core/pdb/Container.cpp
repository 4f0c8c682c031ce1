#include "core/pdb/Container.h"

#include "core/pdb/Layout.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tallybook::pdb {

namespace {

constexpr std::string_view kHeaderTag = "Load_DB : readheader20";
constexpr std::string_view kListTag = "Load_DB : readRecordList";
constexpr std::string_view kWriteTag = "Save_DB : writeData20";

} // namespace

platform::Result<FileHeader> readheader20(ByteReader& in) {
    if (in.left() < layout::kHeaderSize) {
        in.fail(platform::texts::fewerThan(static_cast<std::int64_t>(in.left()), "bytes", layout::kHeaderSize));
        return in.error(kHeaderTag);
    }
    FileHeader header;
    header.name = in.getPaddedText(layout::kNameWidth);
    in.skipBytes(2 + 2);     // attributes, version
    in.skipBytes(4 + 4 + 4); // dates of creation, modification and backup
    in.skipBytes(4 + 4 + 4); // modification number, application info, sort info
    in.skipBytes(4);         // type
    for (int i = 0; i < 4; ++i)
        header.creator.push_back(static_cast<char>(in.getByte()));
    in.skipBytes(4 + 4); // id seed, next list
    header.records = in.getWord();
    return in.give(kHeaderTag, std::move(header));
}

platform::Result<RecordList> readRecordList(ByteReader& in, const FileHeader& header, int firstDropped) {
    const std::size_t fileSize = in.position() + in.left();
    const auto room = static_cast<std::int64_t>(in.left() / layout::kEntrySize);
    if (header.records > room) {
        in.fail(platform::texts::moreThan(header.records, "records in the header", room));
        return in.error(kListTag);
    }
    RecordList list(fileSize);
    for (int i = 0; i < header.records; ++i) {
        const std::uint32_t offset = in.getUnsignedLong();
        const std::uint8_t attributes = in.getByte();
        in.skipBytes(3); // id
        const bool mayBeDropped = list.count() >= firstDropped;
        list.add(offset, mayBeDropped && (attributes & layout::kDeletedEntry) != 0);
    }
    return list;
}

std::int64_t RecordList::length(int record) const {
    const std::size_t next = entry(record) + 1;
    const std::size_t end = next == m_offsets.size() ? m_fileSize : m_offsets[next];
    return static_cast<std::int64_t>(end) - std::int64_t{offset(record)};
}

std::size_t RecordList::end(int record) const {
    const auto next = std::find_if(m_offsets.begin() + static_cast<std::ptrdiff_t>(entry(record)), m_offsets.end(),
                                   [start = offset(record)](std::uint32_t offset) { return offset > start; });
    return next == m_offsets.end() ? m_fileSize : std::min<std::size_t>(*next, m_fileSize);
}

bool RecordList::moveTo(ByteReader& in, int record) const {
    in.setRecord(record);
    const std::size_t start = offset(record);
    if (start > m_fileSize)
        in.fail(platform::texts::startsBeyondEnd(start, m_fileSize));
    if (!in.ok() || in.position() > start)
        return false;
    in.skipBytes(start - in.position());
    return true;
}

std::uint32_t secondsSince1904(const platform::LocalTime& time) {
    const std::int64_t days = calc::dayNumber({time.year, time.month, time.day}) - calc::dayNumber({1904, 1, 1});
    const std::int64_t seconds = ((days * 24 + time.hour) * 60 + time.minute) * 60 + time.second;
    return static_cast<std::uint32_t>(seconds);
}

void writeHeader20(ByteWriter& out, std::string_view name, const platform::LocalTime& now, int records) {
    const std::uint32_t seconds = secondsSince1904(now);
    out.outArea(name.substr(0, layout::kNameWidth - 1), layout::kNameWidth);
    out.outWord(layout::kFileAttributes);
    out.outWord(layout::kFileVersion);
    out.outLong(seconds); // creation
    out.outLong(seconds); // modification
    out.zeros(4);         // last backup
    out.outLong(layout::kModificationNumber);
    out.zeros(4 + 4); // application info, sort info
    out.outText(layout::kType);
    out.outText(layout::kCreator);
    out.zeros(4 + 4); // id seed, next list
    out.outWord(static_cast<std::uint16_t>(records));
}

OutRecords::OutRecords(std::string_view name, const platform::LocalTime& now, int records, platform::Bytes buffer)
    : m_out(std::move(buffer)) {
    writeHeader20(m_out, name, now, records);
    for (int i = 0; i < records; ++i) {
        m_out.zeros(4); // the offset, once it is known
        m_out.outByte(layout::kEntryAttributes);
        m_out.zeros(3);
    }
    m_out.zeros(layout::kListPadding);
}

ByteWriter& OutRecords::begin() {
    m_tooLarge = m_tooLarge || position() > std::numeric_limits<std::uint32_t>::max();
    m_out.setLong(layout::kHeaderSize + m_begun * layout::kEntrySize, static_cast<std::uint32_t>(position()));
    ++m_begun;
    return m_out;
}

platform::Result<platform::Bytes> OutRecords::finish() {
    if (m_tooLarge)
        return platform::Error{platform::ErrorKind::Internal, std::string(kWriteTag),
                               std::string(platform::texts::kPositionsTooLarge)};
    return m_out.take();
}

} // namespace tallybook::pdb
