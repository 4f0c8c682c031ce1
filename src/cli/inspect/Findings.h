// What check finds wrong with a file.
#pragma once

#include "cli/inspect/FileMap.h"
#include "core/model/DatabaseModel.h"
#include "core/platform/Files.h"
#include "core/platform/Regional.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tallybook::cli {

struct Finding {
    std::optional<int> record;       // of the file, from 0
    std::optional<std::size_t> byte; // of the file, from 0
    std::string text;                // UTF-8

    bool operator==(const Finding&) const = default;
};

// "record 85, byte 1234: 200 views, at most 13"
std::string findingLine(const Finding& finding);

using Findings = std::vector<Finding>;

// "1 byte", "2 bytes"
std::string byteCount(std::size_t count);

// Everything, in the order of the file. Takes any bytes. Dates, numbers and what a save would make of them follow
// `regional`.
Findings checkFile(platform::ByteSpan file, const platform::Regional& regional);

// The parts of it. --------------------------------------------------------------------------------------------

// Header, record list, gaps, and what the records begin with.
void checkContainer(platform::ByteSpan file, const FileMap& map, Findings& findings);

// One fixed record that has been read into the model.
void checkFixedRecord(const model::DatabaseModel& db, const ListEntry& entry, Findings& findings);

// What only shows when all fixed records are read: names of fields, filters and lists that do not exist.
void checkReferences(const model::DatabaseModel& db, const FileMap& map, Findings& findings);

// The data records.
void checkDataRecords(platform::ByteSpan file, const FileMap& map, const model::DatabaseModel& db,
                      const platform::Regional& regional, Findings& findings);

} // namespace tallybook::cli
