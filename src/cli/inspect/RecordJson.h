// One record of a file, as its reader understands it.
#pragma once

#include "cli/inspect/FileMap.h"
#include "cli/rows/ModelJson.h"
#include "core/model/DatabaseModel.h"
#include "core/platform/Files.h"

namespace tallybook::cli {

// A fixed record that has been read, or a data record. What cannot be read is an object with the member "error".
Json fixedRecordJson(const model::DatabaseModel& db, int record);
Json dataRecordJson(platform::ByteSpan file, const ByteRange& record, const model::DatabaseModel& db);

} // namespace tallybook::cli
