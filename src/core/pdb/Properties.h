// Records 0 to 83, the properties of a database, and the building of all 87 fixed records. The readers start behind
// the record's number, which every fixed record has as its first byte.
#pragma once

#include "core/model/DatabaseModel.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/Container.h"

#include <cstdint>

namespace tallybook::pdb {

// Record 0: values of the database header, passwords, start-up text.
platform::Status loadDBProps120(ByteReader& in, model::DatabaseModel& db);

// Record 1: the field table. Slot 0 becomes the category list whatever the table says.
platform::Status loadDBProps220(ByteReader& in, model::DatabaseModel& db);

// Records 2 to 82: the attribute of a slot, by the slot's type.
enum class NextValueLayout : std::uint8_t {
    Present, // of an Auto Incremental field: the value in 32 bits
    Older,   // a byte, and if it is 1 a text, which goes to Default; an empty or missing one means 1
};
struct AttributeRead {
    std::int64_t blockLength = 0; // of the whole record
    NextValueLayout nextValue = NextValueLayout::Present;
};
platform::Status readAttribute(ByteReader& in, model::DatabaseModel& db, int slot, const AttributeRead& how);

// Writes the attribute of a slot behind the record's number.
void buildAttribute(const model::DatabaseModel& db, int slot, ByteWriter& out);

// Record 83: the last key given out. `fileRecords` decides: a file of 87 records has none, and LastKey is 1.
platform::Status getLastKey(ByteReader& in, model::DatabaseModel& db, int fileRecords);
void buildNewKey(const model::DatabaseModel& db, ByteWriter& out);

// Builds records 0 to 86. Puts what a save recomputes into the model: FormatVersion, NumFields, NumFilters and each
// view's NumCols.
void buildDBProps20(model::DatabaseModel& db, OutRecords& out);

} // namespace tallybook::pdb
