// The container around the records: the file's header, the list of its records, and records one behind the other.
#pragma once

#include "core/pdb/ByteReader.h"
#include "core/pdb/ByteWriter.h"
#include "core/pdb/Layout.h"
#include "core/platform/Clock.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::pdb {

struct FileHeader {
    std::string name;    // without its padding; 32 bytes when the file fills them
    std::string creator; // four characters
    int records = 0;     // as the header says, deleted ones included
};

// Where each record starts, and where its bytes end. Deleted records have no number, but bound their neighbours.
class RecordList {
public:
    explicit RecordList(std::size_t fileSize) : m_fileSize(fileSize) {}

    // The next entry of the list.
    void add(std::uint32_t offset, bool deleted) {
        if (!deleted)
            m_kept.push_back(static_cast<std::uint32_t>(m_offsets.size()));
        m_offsets.push_back(offset);
    }

    int count() const { return static_cast<int>(m_kept.size()); }
    std::uint32_t offset(int record) const { return m_offsets[entry(record)]; }

    // The next entry's offset less this record's, which in a damaged file may be negative.
    std::int64_t length(int record) const;

    // Where the bytes of a record end: the next entry's offset that is behind its own, or the file's end.
    std::size_t end(int record) const;

    // Moves on to the record. False when the position is already behind its offset: the record is then left alone.
    // A record that starts beyond the file's end fails the reader.
    bool moveTo(ByteReader& in, int record) const;

private:
    std::size_t entry(int record) const { return m_kept[static_cast<std::size_t>(record)]; }

    std::vector<std::uint32_t> m_offsets; // of all entries
    std::vector<std::uint32_t> m_kept;    // entry of each record
    std::size_t m_fileSize;
};

// Reads the 78 bytes of the header. The creator is not judged.
platform::Result<FileHeader> readheader20(ByteReader& in);

// Reads the entries behind the header. From entry `firstDropped` on, those marked as deleted are dropped.
platform::Result<RecordList> readRecordList(ByteReader& in, const FileHeader& header,
                                            int firstDropped = layout::kFirstDroppedEntry);

// Writes the header. The name has at most 31 bytes; `now` is the creation and modification date.
void writeHeader20(ByteWriter& out, std::string_view name, const platform::LocalTime& now, int records);

// Seconds from 1904-01-01 00:00 to a local time, modulo 2^32.
std::uint32_t secondsSince1904(const platform::LocalTime& time);

// Records being built, one behind the other in one run of bytes, with the header and the list ahead.
class OutRecords {
public:
    // `records` is the exact number of those that will be begun; room in the empty buffer saves copying.
    OutRecords(std::string_view name, const platform::LocalTime& now, int records, platform::Bytes buffer = {});

    // Ends the record before and starts the next one.
    ByteWriter& begin();

    // Place of the next byte in the file, from 0.
    std::size_t position() const { return m_out.size(); }

    // The whole file. Fails when a record starts where its 32 bits cannot tell.
    platform::Result<platform::Bytes> finish();

private:
    ByteWriter m_out;
    std::size_t m_begun = 0;
    bool m_tooLarge = false;
};

} // namespace tallybook::pdb
