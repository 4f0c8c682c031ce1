// The cells of one data record as they stand in the file, for those who look at bytes and not at values.
#pragma once

#include "cli/inspect/FileMap.h"
#include "core/model/DatabaseModel.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tallybook::cli {

struct RecordCell {
    std::uint8_t type = 0;
    int slot = 0;
    ByteRange bytes;   // from the type byte to the end of the body
    bool known = true; // false: no such kind of cell, its type and slot were read and nothing else

    // By kind of cell; 0 or empty where the kind has none.
    std::uint32_t word = 0;   // whole number, single's bits, date, time, item id, check state, record id
    std::string_view text;    // of a text, in the file's bytes
    int storedLength = -1;    // the length that stands ahead of the text; -1 for none
    std::uint8_t colour = 0;  // index of a calculated text's colour
    std::uint8_t keyType = 0; // of a join
    ByteRange picture;        // an image's bytes
};

enum class RecordEnd : std::uint8_t {
    EndMark,    // a type byte of 0
    WrongSlot,  // a slot byte of 0 or above 81 behind a type
    RecordOver, // the bytes ended where a cell could have begun
    InsideCell, // the bytes ended inside a cell
};

struct RecordCells {
    bool hasHeader = false; // the six bytes ahead of the cells are there
    std::uint8_t number = 0;
    std::uint8_t category = 0;
    std::int32_t key = 0;
    std::vector<RecordCell> cells;
    RecordEnd end = RecordEnd::RecordOver;
    std::size_t endPosition = 0; // where the walk stopped: the first byte of the end mark, cell or nothing
    ByteRange unread;            // bytes of the record that stand behind its end
};

// Walks along a record as its reader does, by the types of the cells. The kinds of results
// come from `db`.
RecordCells walkRecord(platform::ByteSpan file, const ByteRange& record, const model::DatabaseModel& db);

} // namespace tallybook::cli
