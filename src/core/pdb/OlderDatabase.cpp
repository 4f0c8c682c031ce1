#include "core/pdb/OlderDatabase.h"

#include "core/calc/values/Numbers.h"
#include "core/pdb/AttributeBlocks.h"
#include "core/pdb/Conditions.h"
#include "core/pdb/Names.h"
#include "core/pdb/RecordLoader.h"

#include <optional>
#include <utility>

namespace tallybook::pdb {

namespace {

using model::FieldType;
using platform::ByteSpan;
using platform::Error;
using platform::ErrorKind;
using platform::Status;

constexpr std::string_view kReadTag = "Load_DB : readPDBFile";
constexpr std::string_view kProps1Tag = "Load_DBProps : loadDBProps1";
constexpr std::string_view kProps2Tag = "Load_DBProps : loadDBProps2";
constexpr int kRecordsAStep = 10; // between two calls of onRecord

// A record that says something else than we expect mostly has another length, too.
void expectEnd(ByteReader& in) {
    if (in.ok() && in.left() > 0)
        in.fail(platform::texts::bytesLeftOver(in.left()));
}

// | 21 | name | 4 x 9 x 2 | column sets: field, width | 1 | ViewByte | 4 | skipped |
void readView(ByteReader& in, OldView& view) {
    if (const std::string_view name = in.getPaddedText(layout::kViewNameWidth); !name.empty())
        view.Name = name;
    for (model::ViewColumn& column : view.Columns) {
        column.Field = in.getByte();
        column.Width = in.getByte();
    }
    view.ViewByte = in.getByte();
    in.skipBytes(older::kViewGap);
}

// The conditions of Conditions.h, then | 2 | CondLinks | 4 | skipped |
void readFilter(ByteReader& in, model::FilterDef& filter) {
    readConditions(in, filter);
    in.getBytes(filter.CondLinks);
    in.skipBytes(older::kFilterGap);
}

// | 10 | password | then 3 zero texts and `more`
void readTexts(ByteReader& in, OldDB& old, std::size_t more) {
    old.Password = in.getPaddedText(model::kPasswordLength);
    for (std::size_t i = 0; i < older::kTexts + more; ++i)
        old.Texts[i] = in.getText();
}

void readFormValues(ByteReader& in, OldDB& old) {
    old.FormFlag = in.getByte();
    in.getBytes(old.Splitters);
}

// The fourth header byte says how many texts there are beside the first three.
std::size_t moreTexts(std::uint8_t headerByte) {
    switch (headerByte) {
    case 2:
        return 5;
    case 3:
        return 11;
    default:
        return 0;
    }
}

// | 12 x 98 | views | 12 x 96 | filters | 1 | FormFlag | 3 | splitters | 5 | header bytes | 15 | skipped | texts
void readFormat10(ByteReader& in, OldDB& old) {
    for (OldView& view : old.Views)
        readView(in, view);
    for (model::FilterDef& filter : old.Filters)
        readFilter(in, filter);
    readFormValues(in, old);
    in.getBytes(old.HdrBytes);
    in.skipBytes(older::kHeaderGap);
    readTexts(in, old, moreTexts(old.HdrBytes[3]));
}

void nameByNumber(OldDB& old) {
    for (std::size_t slot = 0; slot < old.Views.size(); ++slot)
        old.Views[slot].Name = "View" + calc::zeroPadded(slot, 2);
    for (std::size_t slot = 0; slot < old.Filters.size(); ++slot)
        old.Filters[slot].Name = "Filter" + calc::zeroPadded(slot, 2);
}

// | 1 | FormFlag | 3 | splitters | 2 | header bytes | texts | 5 x 98 | views |
void readFormat099(ByteReader& in, OldDB& old) {
    nameByNumber(old);
    readFormValues(in, old);
    for (int i = 0; i < older::kOldestHeaderBytes; ++i)
        old.HdrBytes[static_cast<std::size_t>(i)] = in.getByte();
    readTexts(in, old, 0);
    for (int slot = 0; slot < older::kOldestViews; ++slot)
        readView(in, old.Views[static_cast<std::size_t>(slot)]);
}

// | 1 | slot | 1 | Type | 1 | HandheldByte | 1 | Decimals | n+1 | Name |
void readField(ByteReader& in, OldDB& old) {
    const int slot = in.getByte();
    model::FieldDef field;
    field.Type = static_cast<FieldType>(in.getByte());
    field.HandheldByte = in.getByte();
    field.Decimals = in.getByte();
    field.Name = in.getText();
    if (!in.ok())
        return;
    if (slot >= older::kFieldSlots)
        in.fail(platform::texts::slotBeyond(slot, older::kFieldSlots - 1));
    else if (!older::hasType(field.Type))
        in.fail(platform::texts::unknownType(static_cast<int>(field.Type)));
    else
        old.Fields[static_cast<std::size_t>(slot)] = field;
}

template <class Value> Status keep(platform::Result<Value> read, Value& place) {
    if (!read.ok())
        return read.error();
    place = std::move(read).value();
    return {};
}

// The attribute of a slot by its type; that of most types is a byte that says nothing.
Status readAttribute(ByteReader& in, OldDB& old, int slot, std::int64_t blockLength) {
    switch (old.Fields[static_cast<std::size_t>(slot)].Type) {
    case FieldType::List:
    case FieldType::RadioButton:
        return keep(readLists(in), old.Lists[slot]);
    case FieldType::Expression:
        return keep(readExpression(in, {.tokens = model::kShortTokens,
                                        .blockLength = blockLength,
                                        .FormatVersion = layout::kNewOperators, // operators stay what they are
                                        .generation = FormatGeneration::Format1x}),
                    old.Expressions[slot]);
    case FieldType::DBJoin:
    case FieldType::DBLookup:
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        return keep(readExternal(in, FormatGeneration::Format1x), old.Externals[slot]);
    default:
        in.skipBytes(1);
        return in.status(kReadTag);
    }
}

// A file being read: one reader for all of it, and one for each record, which ends where the record ends.
class OlderFile {
public:
    OlderFile(ByteSpan bytes, ByteReader in, std::string name, RecordList list)
        : m_bytes(bytes), m_in(std::move(in)), m_name(std::move(name)), m_list(std::move(list)) {}

    const std::string& name() const { return m_name; }
    int dataRecords() const { return m_list.count() - older::kFixedRecords; }
    std::int64_t length(int record) const { return m_list.length(record); }
    Status status() const { return m_in.status(kReadTag); }

    // Calls read(reader) for a record; the reader stands at its first byte. False when the record starts where
    // another one has been read already, and when it starts behind the file's end, which is an error.
    template <class Read> bool visit(int record, Status& result, Read&& read) {
        if (!m_list.moveTo(m_in, record))
            return false;
        ByteReader in(m_bytes, m_in.position(), m_list.end(record));
        in.setRecord(record);
        result = read(in);
        m_in.skipBytes(in.position() - m_in.position());
        return true;
    }

    // The same for a record that a file cannot be without.
    template <class Read> Status visitFixed(int record, Read&& read) {
        Status result;
        const bool found = visit(record, result, [&](ByteReader& in) {
            in.skipBytes(1); // the record's number
            return read(in);
        });
        if (!found)
            m_in.fail(platform::texts::kInsideAnother);
        return found ? result : status();
    }

private:
    ByteSpan m_bytes;
    ByteReader m_in;
    std::string m_name;
    RecordList m_list;
};

// Header and record list of a file that has all its fixed records.
platform::Result<OlderFile> openOlder(ByteSpan bytes) {
    ByteReader in(bytes);
    auto header = readheader(in);
    if (!header.ok())
        return header.error();
    auto list = readRecordList(in, header.value(), older::kFixedRecords);
    if (!list.ok())
        return list.error();
    const int records = list.value().count();
    if (records < older::kFixedRecords)
        return Error{ErrorKind::Format, std::string(kReadTag),
                     platform::texts::fewerThan(records, "records", older::kFixedRecords)};
    return OlderFile(bytes, std::move(in), std::move(header.value().name), std::move(list).value());
}

// What the user is told and asked once record 0 has been read.
Status letIn(const OldDB& old, model::Document& doc, const ReadSteps& steps) {
    if (old.isFormat099 && steps.onFormat099)
        steps.onFormat099();
    doc.CurrDB20.Passwords[static_cast<std::size_t>(model::PasswordKind::Login)] = old.Password;
    if (steps.afterHeaderValues && !steps.afterHeaderValues(doc))
        return Error{ErrorKind::Refused, std::string(kReadTag), {}};
    return {};
}

Status readAttributes(OlderFile& file, OldDB& old) {
    for (int slot = 0; slot < older::kFieldSlots; ++slot) {
        const int record = older::kFirstAttribute + slot;
        Status read = file.visitFixed(
            record, [&](ByteReader& in) { return readAttribute(in, old, slot, file.length(record)); });
        if (!read.ok())
            return read;
    }
    return {};
}

Status readLastKey(ByteReader& in, OldDB& old, int dataRecords) {
    old.LastKey = dataRecords > 0 ? in.getLong() : layout::kOldestKey;
    return in.status("Load_DBProps : getLastKey");
}

Status readHeaderValues(OlderFile& file, OldDB& old) {
    return file.visitFixed(older::kHeaderValues, [&](ByteReader& in) { return loadDBProps1(in, old); });
}

// The fixed records behind the first.
Status readProperties(OlderFile& file, OldDB& old) {
    Status read = file.visitFixed(older::kFieldTable, [&](ByteReader& in) { return loadDBProps2(in, old); });
    if (read.ok())
        read = readAttributes(file, old);
    if (!read.ok())
        return read;
    return file.visitFixed(older::kLastKey, [&](ByteReader& in) { return readLastKey(in, old, file.dataRecords()); });
}

void convert(const OlderFile& file, const OldDB& old, model::DatabaseModel& db) {
    ConvertTo20(old, db);
    db.DBName = presentName(file.name());
}

// A data record that starts inside another one stays empty, as in files of the present format.
Status readRecords(OlderFile& file, model::Document& doc, const platform::Regional& regional,
                   const ReadSteps& steps) {
    RecordLoader loader(doc, regional,
                        steps.onlyFields ? std::optional(steps.onlyFields(doc.CurrDB20)) : std::nullopt);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        if (steps.onRecord && record % kRecordsAStep == 0)
            steps.onRecord(record, doc.NumDataRecs);
        Status loaded;
        file.visit(older::kFixedRecords + record, loaded,
                   [&](ByteReader& in) { return loader.loadRecord(in, record); });
        if (loaded.ok())
            loaded = file.status();
        if (!loaded.ok())
            return loaded;
    }
    loader.finish();
    return {};
}

} // namespace

platform::Result<FileHeader> readheader(ByteReader& in) {
    return readheader20(in);
}

platform::Result<Verdict> verifyOlder(ByteSpan file) {
    ByteReader in(file);
    const auto header = readheader(in);
    if (!header.ok())
        return header.error();
    return header.value().creator == layout::kOlderCreator ? Verdict::Good : Verdict::WrongCreator;
}

// | 1 | NumFields | 1 | NumViews | 1 | Version | then by Version
Status loadDBProps1(ByteReader& in, OldDB& old) {
    old.NumFields = in.getByte();
    old.NumViews = in.getByte();
    old.Version = in.getByte();
    old.isFormat099 = old.Version < older::kFormat10;
    if (old.NumFields > older::kFieldSlots)
        in.fail(platform::texts::moreThan(old.NumFields, "fields", older::kFieldSlots));
    if (old.NumViews > older::kViews)
        in.fail(platform::texts::moreThan(old.NumViews, "views", older::kViews));
    if (old.isFormat099)
        readFormat099(in, old);
    else
        readFormat10(in, old);
    old.Version = static_cast<std::uint8_t>(old.Version + (old.isFormat099 ? older::kFormat10 : 0));
    expectEnd(in);
    return in.status(kProps1Tag);
}

Status loadDBProps2(ByteReader& in, OldDB& old) {
    for (int entry = 0; entry < old.NumFields && in.ok(); ++entry)
        readField(in, old);
    old.Fields[0].Type = FieldType::List;
    expectEnd(in);
    return in.status(kProps2Tag);
}

// The records come behind the conversion: a cell is shown by its field, and the fields of the grid are the present
// format's.
Status readOlderDatabase(model::Document& doc, ByteSpan bytes, const platform::Regional& regional,
                         const ReadSteps& steps) {
    auto opened = openOlder(bytes);
    if (!opened.ok())
        return opened.error();
    OlderFile& file = opened.value();
    model::resetRows(doc, file.dataRecords());
    OldDB old;
    Status read = readHeaderValues(file, old);
    if (read.ok())
        read = letIn(old, doc, steps);
    if (read.ok())
        read = readProperties(file, old);
    if (!read.ok())
        return read;
    convert(file, old, doc.CurrDB20);
    if (steps.afterFieldTable)
        steps.afterFieldTable(doc);
    read = readRecords(file, doc, regional, steps);
    doc.grd.touch();
    return read;
}

Status readOlderStructure(model::DatabaseModel& db, ByteSpan bytes) {
    auto opened = openOlder(bytes);
    if (!opened.ok())
        return opened.error();
    OldDB old;
    Status read = readHeaderValues(opened.value(), old);
    if (read.ok())
        read = readProperties(opened.value(), old);
    if (read.ok())
        convert(opened.value(), old, db);
    return read;
}

} // namespace tallybook::pdb
