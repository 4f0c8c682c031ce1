// Records 84, 85 and 86: the handheld's forms, the views and the filters. The readers start behind the record's
// number, the writers too. Counts that pass what the model holds fail the read.
#pragma once

#include "core/model/DatabaseModel.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/ByteWriter.h"

#include <cstdint>

namespace tallybook::pdb {

platform::Status LoadFormProp20(ByteReader& in, model::DatabaseModel& db);
void buildForms(const model::DatabaseModel& db, ByteWriter& out);

platform::Status LoadViewProp20(ByteReader& in, model::DatabaseModel& db);
void buildViews(const model::DatabaseModel& db, ByteWriter& out);

// The two spare filters are taken when all their 192 bytes stand ahead of `end`: where the record ends, or 0 in a
// file without data records.
platform::Status LoadFilterProp20(ByteReader& in, model::DatabaseModel& db, std::uint32_t end);
void buildFilters(const model::DatabaseModel& db, ByteWriter& out); // NumFilters filters and both spare ones

} // namespace tallybook::pdb
