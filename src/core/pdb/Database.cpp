#include "core/pdb/Database.h"

#include "core/pdb/ByteReader.h"
#include "core/pdb/Container.h"
#include "core/pdb/Layout.h"
#include "core/pdb/Names.h"
#include "core/pdb/Properties.h"
#include "core/pdb/RecordBuilder.h"
#include "core/pdb/RecordLoader.h"
#include "core/pdb/Screens.h"

#include <algorithm>

namespace tallybook::pdb {

namespace {

using platform::ByteSpan;
using platform::Error;
using platform::ErrorKind;
using platform::Result;
using platform::Status;

constexpr std::string_view kReadTag = "Load_DB : readPDBFile20";
constexpr std::string_view kVerifyTag = "Load_DB : verifyPDB";
constexpr std::string_view kCountTag = "getNumberRecs";
constexpr std::string_view kSaveTag = "Save_DB : savePDBFile20";
constexpr int kRecordsAStep = 10; // between two calls of onRecord

// Header and record list of a file, and a reader that stands behind them.
struct OpenFile {
    ByteReader in;
    FileHeader header;
    RecordList list;
};

// The list of a file that is not ours is left alone.
Result<OpenFile> openFile(ByteSpan file) {
    ByteReader in(file);
    auto header = readheader20(in);
    if (!header.ok())
        return header.error();
    if (header.value().creator != layout::kCreator)
        return OpenFile{std::move(in), std::move(header).value(), RecordList(file.size())};
    auto list = readRecordList(in, header.value());
    if (!list.ok())
        return list.error();
    return OpenFile{std::move(in), std::move(header).value(), std::move(list).value()};
}

// A file that may be read: ours, and with all its fixed records.
Result<OpenFile> openTallybook(ByteSpan file, const std::string& fileName) {
    auto opened = openFile(file);
    if (!opened.ok())
        return opened;
    if (opened.value().header.creator != layout::kCreator)
        return Error{ErrorKind::Format, std::string(kReadTag),
                     "The selected file " + fileName + " is not a Tallybook"};
    const int records = opened.value().list.count();
    if (records < model::kFixedRecords)
        return Error{ErrorKind::Format, std::string(kReadTag),
                     platform::texts::fewerThan(records, "records", model::kFixedRecords)};
    return opened;
}

// Where the filters' record ends ahead of the first data record, or 0 when there is none. A deleted record between
// the two is no part of it.
std::uint32_t endOfFilters(const RecordList& list) {
    if (list.count() <= layout::kFirstData)
        return 0;
    const std::size_t end = std::min<std::size_t>(list.end(layout::kFilters), list.offset(layout::kFirstData));
    return static_cast<std::uint32_t>(end);
}

// Parses a fixed record, the reader standing behind its number.
Status readFixedRecord(ByteReader& in, const RecordList& list, int record, NextValueLayout nextValue,
                       model::DatabaseModel& db) {
    switch (record) {
    case layout::kHeaderValues:
        return loadDBProps120(in, db);
    case layout::kFieldTable:
        return loadDBProps220(in, db);
    case layout::kLastKey:
        return getLastKey(in, db, list.count());
    case layout::kForms:
        return LoadFormProp20(in, db);
    case layout::kViews:
        return LoadViewProp20(in, db);
    case layout::kFilters:
        return LoadFilterProp20(in, db, endOfFilters(list));
    default:
        return readAttribute(in, db, record - layout::kFirstAttribute, {list.length(record), nextValue});
    }
}

// Moves to a fixed record and parses it, unless its offset has been passed.
Status visitFixedRecord(OpenFile& file, int record, NextValueLayout nextValue, model::DatabaseModel& db) {
    if (!file.list.moveTo(file.in, record))
        return file.in.status(kReadTag);
    file.in.skipBytes(1);
    return readFixedRecord(file.in, file.list, record, nextValue, db);
}

// What must be so after the field table, whatever it held or when it was passed over.
void forceCategoryList(model::DatabaseModel& db) {
    db.Fields[0].Type = model::FieldType::List;
}

Status readProperties(OpenFile& file, model::Document& doc, const ReadSteps& steps) {
    for (int record = 0; record < model::kFixedRecords; ++record) {
        if (Status read = visitFixedRecord(file, record, NextValueLayout::Present, doc.CurrDB20); !read.ok())
            return read;
        if (record == layout::kHeaderValues && steps.afterHeaderValues && !steps.afterHeaderValues(doc))
            return Error{ErrorKind::Refused, std::string(kReadTag), {}};
        if (record == layout::kFieldTable) {
            forceCategoryList(doc.CurrDB20);
            if (steps.afterFieldTable)
                steps.afterFieldTable(doc);
        }
    }
    return {};
}

Status readRecords(OpenFile& file, ByteSpan bytes, model::Document& doc, const platform::Regional& regional,
                   const ReadSteps& steps) {
    RecordLoader loader(doc, regional,
                        steps.onlyFields ? std::optional(steps.onlyFields(doc.CurrDB20)) : std::nullopt);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        const int number = layout::kFirstData + record;
        if (steps.onRecord && record % kRecordsAStep == 0)
            steps.onRecord(record, doc.NumDataRecs);
        if (file.list.moveTo(file.in, number)) {
            ByteReader in(bytes, file.in.position(), file.list.end(number));
            in.setRecord(number);
            if (Status loaded = loader.loadRecord20(in, record); !loaded.ok())
                return loaded;
            file.in.skipBytes(in.position() - file.in.position());
        }
        if (!file.in.ok())
            return file.in.error(kReadTag);
    }
    loader.finish();
    return {};
}

std::string stemOf(const std::string& fileName) {
    return fileName.substr(0, fileName.size() - std::min(fileName.size(), kExtension.size()));
}

} // namespace

Status readDatabase(model::Document& doc, ByteSpan file, const std::string& fileName,
                    const platform::Regional& regional, const ReadSteps& steps) {
    auto opened = openTallybook(file, fileName);
    if (!opened.ok())
        return opened.error();
    OpenFile& open = opened.value();
    model::resetRows(doc, open.list.count() - model::kFixedRecords);
    doc.CurrDB20.DBName = open.header.name;
    if (Status read = readProperties(open, doc, steps); !read.ok())
        return read;
    Status read = readRecords(open, file, doc, regional, steps);
    doc.grd.touch();
    return read;
}

Status readStructure(model::DatabaseModel& db, ByteSpan file, const std::string& fileName) {
    auto opened = openTallybook(file, fileName);
    if (!opened.ok())
        return opened.error();
    db.DBName = opened.value().header.name;
    for (int record = 0; record < model::kFixedRecords; ++record) {
        if (Status read = visitFixedRecord(opened.value(), record, NextValueLayout::Older, db); !read.ok())
            return read;
        if (record == layout::kFieldTable)
            forceCategoryList(db);
    }
    return {};
}

Result<int> countDataRecords(ByteSpan file, FileFormat format) {
    const bool older = format == FileFormat::Older;
    ByteReader in(file);
    const auto header = readheader20(in);
    if (!header.ok())
        return header.error();
    if (header.value().creator != (older ? layout::kOlderCreator : layout::kCreator))
        return Error{ErrorKind::Format, std::string(kCountTag), std::string(platform::texts::kNoTallybook)};
    const int fixed = older ? layout::kOlderFixedRecords : model::kFixedRecords;
    const auto list = readRecordList(in, header.value(), older ? fixed : layout::kFirstDroppedEntry);
    if (!list.ok())
        return list.error();
    const int records = list.value().count();
    if (records < fixed)
        return Error{ErrorKind::Format, std::string(kCountTag),
                     platform::texts::fewerThan(records, "records", fixed)};
    return records - fixed;
}

// Looks at one byte for each record in turn, up to the first data record that stands where the list says. A record
// whose offset has been passed is looked for where the reader stands.
Result<Verdict> verifyRecords(ByteSpan file) {
    auto opened = openFile(file);
    if (!opened.ok())
        return opened.error();
    auto& [in, header, list] = opened.value();
    if (header.creator != layout::kCreator)
        return Verdict::WrongCreator;
    for (int record = 0; record < list.count(); ++record) {
        if (list.moveTo(in, record) && record >= layout::kFirstData)
            return Verdict::Good;
        const int number = in.getByte();
        if (!in.ok())
            return in.error(kVerifyTag);
        if (number != record)
            return Verdict::OutOfOrder;
    }
    const bool fixedOneDeleted = list.count() < model::kFixedRecords && header.records >= model::kFixedRecords;
    return fixedOneDeleted ? Verdict::OutOfOrder : Verdict::Good;
}

Result<BuiltFile> buildDatabase(model::Document& doc, platform::Services& services, const BuildSteps& steps) {
    if (doc.NumDataRecs > model::kMaxDataRecords)
        return Error{ErrorKind::Internal, std::string(kSaveTag), std::string(platform::texts::kTooManyRecords)};
    const std::string name = headerName(doc.CurrDB20.DBName, stemOf(doc.CurrFileName));
    OutRecords out(name, services.clock.now(), model::kFixedRecords + doc.NumDataRecs,
                   services.files.buffer(expectedSize(doc)));
    buildDBProps20(doc.CurrDB20, out);
    RecordBuilder builder(doc, services, out);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        if (steps.onBuild)
            steps.onBuild(record, doc.NumDataRecs);
        if (Status built = builder.buildRecord20(record); !built.ok())
            return built.error();
    }
    auto bytes = out.finish();
    if (!bytes.ok())
        return bytes.error();
    return BuiltFile{std::move(bytes).value(), builder.takeImages(), builder.takeUsedPictures()};
}

} // namespace tallybook::pdb
