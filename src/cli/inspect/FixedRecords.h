// The fixed records of a file, also of a damaged one.
#pragma once

#include "cli/inspect/FileMap.h"
#include "core/model/DatabaseModel.h"
#include "core/platform/Files.h"
#include "core/platform/Result.h"

namespace tallybook::cli {

// Reads the fixed records of a file one by one, each on its own, so that one that is damaged hides none behind it.
class FixedRecords {
public:
    FixedRecords(platform::ByteSpan file, const FileMap& map);

    // Reads a record below 87 into the model. Its number is not looked at.
    platform::Status read(const ListEntry& entry);

    const model::DatabaseModel& database() const { return m_db; }
    int records() const { return m_records; }
    std::size_t end() const { return m_end; } // where the last record read ended, or failed

private:
    platform::ByteSpan m_file;
    int m_records = 0; // as the reader counts them, deleted ones left out
    std::uint32_t m_firstDataOffset = 0;
    model::DatabaseModel m_db;
    std::size_t m_end = 0;
};

} // namespace tallybook::cli
