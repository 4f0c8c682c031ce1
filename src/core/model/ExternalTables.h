// What is read of other databases for the joins into them and their lookups.
#pragma once

#include "core/model/CellCoder.h"
#include "core/model/Limits.h"
#include "core/model/SlotTable.h"
#include "core/model/TextColumn.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tallybook::model {

// The records of another database: the texts of the fields that were asked for, by its own slots. Once it has been
// read it never changes, so that cells keep what they show when the other file is read again or is gone.
struct ExternalRecords {
    std::uint32_t count = 0;
    std::array<TextColumn, MaxFieldSlots> fields; // rows are the records, from 0

    // Empty for a record or a slot that there is not. The view lasts as long as the records and `scratch` do.
    std::string_view text(int slot, std::uint32_t record, std::string& scratch) const;
};

// The tables of one join or lookup: the three columns are views of the records that were read.
struct ExternalSlot {
    std::shared_ptr<const ExternalRecords> records; // none: the other database was not found, or not asked for
    int keyField = 0;                               // slots of the other database, 0 for none
    int displayField = 0;

    std::uint32_t rows() const { return records ? records->count : 0; }
    std::string_view ExtDisplay(std::uint32_t row, std::string& scratch) const;
    std::string_view ExtKeys(std::uint32_t row, std::string& scratch) const;
};

// By the slots of the open database.
using ExternalTables = SlotTable<ExternalSlot>;

// The coder of a column whose cells show a field of another database: a word is the number of the record there, so
// that a join copies no texts. A text that is set is kept as it is.
class ExternalCoder : public CellCoder {
public:
    ExternalCoder(std::shared_ptr<const ExternalRecords> records, int field);

    std::optional<std::uint32_t> encode(std::string_view text) override;
    std::string_view text(std::uint32_t word, std::string& scratch) const override;

private:
    std::shared_ptr<const ExternalRecords> m_records;
    int m_field;
};

} // namespace tallybook::model
