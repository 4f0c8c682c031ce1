// Where every byte of a file belongs, also of a damaged one.
#pragma once

#include "core/platform/Files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tallybook::cli {

// Bytes [start, end) of a file.
struct ByteRange {
    std::size_t start = 0;
    std::size_t end = 0;

    std::size_t size() const { return end - start; }
    platform::ByteSpan of(platform::ByteSpan file) const { return file.subspan(start, size()); }
    bool operator==(const ByteRange&) const = default;
};

// An entry of the record list.
struct ListEntry {
    int entry = 0;            // place in the list, from 0
    int record = -1;          // the record's number once deleted entries are dropped; -1 for one of those
    std::size_t position = 0; // of the entry itself
    std::uint32_t offset = 0;
    std::uint8_t attributes = 0;
    std::uint32_t uniqueId = 0;
    ByteRange bytes; // from the offset to the next greater one behind it in the list, or to the file's end
    // The offset does not lie behind those of all records before it: the reader, which goes through a file once, has
    // been there and passes the record over. Of a dropped entry: behind those of all entries. The bytes are others'
    // or nobody's.
    bool passed = false;
};

struct FileMap {
    ByteRange header;               // 78 bytes, fewer when the file is shorter
    int declared = 0;               // records that the header promises
    std::vector<ListEntry> entries; // those that the file has room for
    std::vector<ByteRange>
        gaps; // bytes that neither the header nor the list nor a record that is read holds, in order
};

// Takes any bytes.
FileMap mapFile(platform::ByteSpan file);

} // namespace tallybook::cli
