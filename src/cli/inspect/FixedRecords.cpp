#include "cli/inspect/FixedRecords.h"

#include "core/pdb/ByteReader.h"
#include "core/pdb/Layout.h"
#include "core/pdb/Properties.h"
#include "core/pdb/Screens.h"

namespace tallybook::cli {

namespace {

namespace layout = pdb::layout;

} // namespace

FixedRecords::FixedRecords(platform::ByteSpan file, const FileMap& map) : m_file(file) {
    for (const ListEntry& entry : map.entries) {
        if (entry.record >= 0)
            ++m_records;
        if (entry.record == model::kFixedRecords)
            m_firstDataOffset = entry.offset;
    }
}

platform::Status FixedRecords::read(const ListEntry& entry) {
    // As in a read of the whole file, a record may run on to the file's end.
    pdb::ByteReader in(m_file, entry.bytes.start, m_file.size());
    in.setRecord(entry.record);
    in.skipBytes(1);
    platform::Status status;
    switch (entry.record) {
    case layout::kHeaderValues:
        status = pdb::loadDBProps120(in, m_db);
        break;
    case layout::kFieldTable:
        status = pdb::loadDBProps220(in, m_db);
        break;
    case layout::kLastKey:
        status = pdb::getLastKey(in, m_db, m_records);
        break;
    case layout::kForms:
        status = pdb::LoadFormProp20(in, m_db);
        break;
    case layout::kViews:
        status = pdb::LoadViewProp20(in, m_db);
        break;
    case layout::kFilters:
        status = pdb::LoadFilterProp20(in, m_db, m_firstDataOffset);
        break;
    default:
        status = pdb::readAttribute(in, m_db, entry.record - layout::kFirstAttribute,
                                    {static_cast<std::int64_t>(entry.bytes.size())});
        break;
    }
    m_end = in.position();
    return status;
}

} // namespace tallybook::cli
