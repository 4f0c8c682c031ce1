// From a database to a text.
#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Dates.h"
#include "core/convert/TextBridge.h"
#include "core/document/grid/Recalculate.h"
#include "core/document/joins/Joins.h"
#include "core/pdb/CellForms.h"
#include "core/pdb/Database.h"
#include "core/pdb/Names.h"
#include "core/pdb/Passwords.h"
#include "core/platform/AppFolders.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <algorithm>

namespace tallybook::convert {

namespace {

using model::FieldType;
using platform::Services;
using platform::Status;
namespace texts = platform::texts;
using Path = std::filesystem::path;

constexpr int kRecordsAStep = 256;
constexpr std::uint8_t kHighestResult = 13;

bool isCalculated(FieldType type) {
    return type == FieldType::Expression || type == FieldType::AdvExpression ||
           type == FieldType::ConditionalExpression;
}

bool hasAny(const model::DatabaseModel& db, bool (*isOne)(FieldType)) {
    return std::any_of(db.Fields.begin(), db.Fields.end(),
                       [&](const model::FieldDef& field) { return isOne(field.Type); });
}

bool isExternal(FieldType type) {
    return type == FieldType::DBJoin || type == FieldType::DBLookup;
}

bool hasUnknownResult(const model::DatabaseModel& db) {
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const FieldType type = db.Fields[static_cast<std::size_t>(slot)].Type;
        const bool hasResult = type == FieldType::Expression || type == FieldType::AdvExpression;
        if (hasResult && db.Expressions.at(slot).ResultType > kHighestResult)
            return true;
    }
    return false;
}

// Bytes to a file that takes its place when all are there.
class FileSink : public ByteSink {
public:
    explicit FileSink(platform::GrowingFile& file) : m_file(file) {}
    Status write(std::string_view bytes) override {
        return m_file.write({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    }

private:
    platform::GrowingFile& m_file;
};

// The bytes that a file has already, ahead of those that are added. They end a line, or are given a line end.
Status copyBefore(platform::Files& files, const Path& path, platform::GrowingFile& file) {
    constexpr std::size_t kPiece = 128 * 1024;
    std::uint8_t last = '\n';
    for (std::uint64_t offset = 0;;) {
        const auto piece = files.readPart(path, offset, kPiece);
        if (!piece)
            return piece.error();
        if (piece.value().empty())
            break;
        if (Status written = file.write(piece.value()); !written)
            return written;
        last = piece.value().back();
        offset += piece.value().size();
    }
    constexpr std::uint8_t kLineEnd[] = {'\r', '\n'};
    return last == '\n' || last == '\r' ? Status() : file.write(kLineEnd);
}

BridgeCode fail(BridgeCall& call, BridgeCode code, const std::string& why) {
    call.log.note(why);
    return code;
}

bool exists(platform::Files& files, const Path& path) {
    const auto state = files.state(path);
    return state && state.value().kind != platform::FileKind::Missing;
}

BridgeCode writeRecords(BridgeCall& call, const model::Document& doc, RecordExporter& exporter,
                        DelimitedWriter& out) {
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        if (record % kRecordsAStep == 0 && call.watcher != nullptr &&
            !call.watcher->step(texts::exportingRecord(record + 1, doc.NumDataRecs), record, doc.NumDataRecs)) {
            call.isStopped = true;
            return BridgeCode::Unspecified;
        }
        exporter.writeRecord(record, out);
    }
    return BridgeCode::Good;
}

BridgeCode exportTo(BridgeCall& call, const model::Document& doc, RecordExporter& exporter, const Path& path,
                    bool appends, const BridgeFlags& flags) {
    platform::Files& files = call.services.files;
    const bool addsTo = appends && exists(files, path);
    auto file = platform::GrowingFile::begin(files, path);
    if (!file)
        return fail(call, BridgeCode::CannotOpen, file.error().text);
    if (addsTo)
        if (const Status copied = copyBefore(files, path, *file.value()); !copied)
            return fail(call, BridgeCode::CannotOpen, copied.error().text);
    FileSink sink(*file.value());
    DelimitedWriter out(sink, delimiterOf(flags));
    if (flags.WithNameRow == 1)
        exporter.writeNames(out);
    if (flags.WithTypeRow == 1)
        exporter.writeTypes(out);
    if (const BridgeCode code = writeRecords(call, doc, exporter, out); code != BridgeCode::Good)
        return code;
    if (const Status written = out.finish(); !written)
        return fail(call, BridgeCode::Unspecified, written.error().text);
    if (const Status committed = file.value()->commit(); !committed)
        return fail(call, BridgeCode::Unspecified, committed.error().text);
    return BridgeCode::Good;
}

BridgeCode exportDatabase(BridgeCall& call, const Path& pdbPath, const Path& csvPath, std::int16_t AppendOutput,
                          const BridgeFlags& flags) {
    if (!areValid(flags) || AppendOutput < 0 || AppendOutput > 1)
        return BridgeCode::InvalidArgument;
    const platform::Regional regional = bridgeRegional(call.services.regional, flags);
    model::Document doc;
    if (const BridgeCode code = openForBridge(call, doc, pdbPath, regional); code != BridgeCode::Good)
        return code;
    if (hasUnknownResult(doc.CurrDB20))
        return BridgeCode::UnresolvedExpression;
    RecordExporter exporter(doc, exportedSlots(doc.CurrDB20, flags.WithCategories == 1), flags, regional,
                            call.services.clock.now().year);
    const BridgeCode code = exportTo(call, doc, exporter, csvPath, AppendOutput == 1, flags);
    if (code == BridgeCode::Good)
        call.records = static_cast<std::uint64_t>(doc.NumDataRecs);
    return code;
}

// The database is the one of the name on the disk, with "_" for blanks, or else the one as named.
Path existingPath(platform::Files& files, const Path& path) {
    const Path onDisk = path.parent_path() / pdb::addUnderscore20(path.filename().string());
    return exists(files, onDisk) ? onDisk : path;
}

} // namespace

BridgeCode openForBridge(BridgeCall& call, model::Document& doc, const Path& pdbPath,
                         const platform::Regional& regional) {
    Services services{call.services.ui, call.services.screen,           call.services.files, call.services.clock,
                      regional,         call.services.applicationFolder};
    const Path path = existingPath(services.files, pdbPath);
    model::clearDocument(doc);
    const auto bytes = services.files.read(path);
    if (!bytes)
        return fail(call, BridgeCode::CannotOpen, bytes.error().text);
    const auto verdict = pdb::verifyRecords(bytes.value());
    if (!verdict || verdict.value() != pdb::Verdict::Good)
        return fail(call, BridgeCode::CannotOpen,
                    verdict ? std::string(texts::kNoTallybook) : verdict.error().description());
    doc.CurrFilePath = path;
    doc.CurrFolder = path.parent_path();
    doc.CurrFileName = platform::shownPath(path.filename());
    doc.TempCopyPath = path; // pictures of kept records are copied from the file itself
    pdb::ReadSteps steps;
    steps.afterHeaderValues = [&](model::Document& opened) {
        return pdb::AuthorizeDB(opened, services, model::PasswordKind::Login);
    };
    const Status read = pdb::readDatabase(doc, bytes.value(), doc.CurrFileName, regional, steps);
    if (!read && read.error().kind == platform::ErrorKind::Refused) {
        call.isTurnedDown = true;
        return BridgeCode::CannotOpen;
    }
    if (!read)
        return fail(call, BridgeCode::CannotOpen, read.error().description());
    if (hasAny(doc.CurrDB20, isCalculated)) {
        if (hasAny(doc.CurrDB20, isExternal))
            document::loadExternalData(doc, services);
        document::recalcExpressions(doc, services);
    }
    return BridgeCode::Good;
}

BridgeCode Tiny2Text(BridgeCall& call, const Path& pdbPath, const Path& csvPath, std::int16_t AppendOutput,
                     const BridgeFlags& flags) {
    const BridgeCode code = exportDatabase(call, pdbPath, csvPath, AppendOutput, flags);
    call.log.setSummary(code == BridgeCode::Good ? call.log.countText(call.records, "exported")
                        : call.isStopped         ? std::string(texts::kStopped)
                                                 : texts::nothingChanged(bridgeText(numberOf(code))));
    writeLog(call);
    return code;
}

std::vector<int> exportedSlots(const model::DatabaseModel& db, bool withCategories) {
    std::vector<int> slots;
    if (withCategories)
        slots.push_back(0);
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        if (db.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed)
            slots.push_back(slot);
    return slots;
}

std::string columnName(const model::DatabaseModel& db, int slot) {
    if (slot == 0)
        return std::string(kCategoriesName);
    const std::string& name = db.Fields[static_cast<std::size_t>(slot)].Name;
    return name.empty() ? pdb::freeFieldName(slot) : name;
}

RecordExporter::RecordExporter(const model::Document& doc, std::vector<int> slots, const BridgeFlags& flags,
                               const platform::Regional& regional, int thisYear)
    : m_doc(doc), m_flags(flags), m_values(regional, flags, thisYear), m_shownDecimal(regional.decimal) {
    for (const int slot : slots) {
        Column& column = m_columns.emplace_back();
        column.slot = slot;
        column.type = slot == 0 ? FieldType::List : doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type;
        column.texts = &doc.grd.column(model::columnOfSlot(slot));
        column.words = pdb::cellForm(*column.texts).words;
        column.longs = &doc.CellLongs.slotColumn(slot);
        column.pictures = &doc.grd.pictures(model::columnOfSlot(slot));
        if (column.type == FieldType::List || column.type == FieldType::RadioButton)
            fillItems(column);
        if (column.type == FieldType::DBJoin)
            column.texts = &doc.CellVals.slotColumn(slot);
    }
}

// By id: the text, or the position from 1.
void RecordExporter::fillItems(Column& column) const {
    column.items.resize(256);
    const model::ListDef& list = m_doc.CurrDB20.Lists.at(column.slot);
    for (std::size_t place = list.Items.size(); place-- > 0;)
        column.items[list.ItemIds[place]] = m_flags.ListsAsIndex == 1 ? std::to_string(place + 1) : list.Items[place];
    if (m_flags.ListsAsIndex == 1)
        column.items[0] = "0";
    else if (column.slot == 0 && std::find(list.Items.begin(), list.Items.end(), calc::kUnfiled) == list.Items.end())
        column.items[0] = calc::kUnfiled;
}

void RecordExporter::writeNames(DelimitedWriter& out) const {
    for (const Column& column : m_columns)
        out.add(columnName(m_doc.CurrDB20, column.slot));
    out.endRecord();
}

// What has no word of its own is a text to whoever reads it.
void RecordExporter::writeTypes(DelimitedWriter& out) const {
    for (const Column& column : m_columns) {
        const std::string_view word = typeWord(column.type);
        out.add(word.empty() ? typeWord(FieldType::Text) : word);
    }
    out.endRecord();
}

void RecordExporter::writeRecord(int record, DelimitedWriter& out) {
    const std::uint32_t row = m_doc.grd.order().id(record);
    for (const Column& column : m_columns)
        out.add(column.type == FieldType::Key ? std::string_view(m_value = std::to_string(m_doc.RecKeys[record]))
                                              : valueOf(column, row));
    out.endRecord();
}

std::string_view RecordExporter::valueOf(const Column& column, std::uint32_t row) {
    switch (column.type) {
    case FieldType::List:
    case FieldType::RadioButton: {
        const std::uint32_t id = column.longs->get(row).value_or(0);
        return id < column.items.size() ? std::string_view(column.items[id]) : std::string_view();
    }
    case FieldType::Checkbox:
        return static_cast<model::Picture>(column.pictures->get(row).value_or(0)) == model::Picture::CheckOn ? "1"
                                                                                                             : "0";
    case FieldType::Image:
    case FieldType::OneToMany:
    case FieldType::Plugin:
    case FieldType::DBLookup: // filled behind the bridge, see WriteExternalField
        return {};
    default:
        break;
    }
    const bool isDate = column.type == FieldType::Date && column.words == model::WordForm::Date;
    const bool isTime = column.type == FieldType::Time && column.words == model::WordForm::Time;
    if (isDate || isTime) {
        const auto word = column.texts->word(row);
        if (word)
            return isDate ? dateText(*word) : timeText(*word);
    }
    const std::string_view text = column.texts->text(row, m_scratch);
    const char decimal = m_flags.DecimalFlag == 1 ? ',' : '.';
    if (column.words != model::WordForm::Decimal || decimal == m_shownDecimal)
        return text;
    m_value = text;
    std::replace(m_value.begin(), m_value.end(), m_shownDecimal, decimal);
    return m_value;
}

std::string_view RecordExporter::dateText(std::uint32_t word) {
    m_value.clear();
    m_values.appendDate(
        {static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF), static_cast<int>(word & 0xFF)}, m_value);
    return m_value;
}

std::string_view RecordExporter::timeText(std::uint32_t word) {
    m_value.clear();
    m_values.appendTime(
        {static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF), static_cast<int>(word & 0xFF)}, m_value);
    return m_value;
}

void writeLog(BridgeCall& call) {
    if (!call.writesLog)
        return;
    const std::string text = call.log.text();
    (void)platform::writeWholeFile(call.services.files, platform::applicationPath(call.services, kLogName),
                                   {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()},
                                   platform::Privacy::OwnerOnly);
}

} // namespace tallybook::convert
