// From a text to a database.
#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Text.h"
#include "core/convert/CellImporter.h"
#include "core/convert/ColumnSurvey.h"
#include "core/convert/TextBridge.h"
#include "core/document/file/OpenSave.h"
#include "core/pdb/Database.h"
#include "core/pdb/Names.h"
#include "core/pdb/OldDB.h"
#include "core/pdb/Passwords.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <algorithm>
#include <charconv>
#include <memory>

namespace tallybook::convert {

namespace {

using model::FieldType;
using platform::Status;
namespace texts = platform::texts;
using Path = std::filesystem::path;

constexpr std::uint64_t kRecordsAStep = 256;
constexpr std::size_t kMostFieldName = 254; // bytes

bool isOneOf(ImportMode mode) {
    return mode == ImportMode::Create || mode == ImportMode::Append || mode == ImportMode::Replace;
}

bool sameName(std::string_view a, std::string_view b) {
    return calc::equalText(trimmed(a), trimmed(b), calc::TextCase::Folded);
}

// What a column of the text is and where it goes.
struct TextColumnPlan {
    std::string name;              // of its heading
    std::optional<FieldType> type; // of its heading; none: as its values are
    bool isFree = false;           // its type is left empty: it belongs to no field
    int slot = -1;                 // -1: nowhere
    bool isRefused = true;         // a value in a column that goes nowhere ends the conversion
    ColumnSurvey survey{};         // of its values
    std::unique_ptr<CellImporter> importer{};
};

class TextImporter {
public:
    TextImporter(BridgeCall& call, const Path& csv, const Path& pdb, const ImportOptions& options)
        : m_call(call), m_csv(csv), m_pdb(pdb), m_options(options),
          m_regional(bridgeRegional(call.services.regional, options.flags)),
          m_values(m_regional, options.flags, call.services.clock.now().year) {}

    BridgeCode run() {
        for (const auto step :
             {&TextImporter::checkArguments, &TextImporter::openDatabase, &TextImporter::lookThrough,
              &TextImporter::makeFields, &TextImporter::storeRecords, &TextImporter::save})
            if (const BridgeCode code = (this->*step)(); code != BridgeCode::Good)
                return code;
        return BridgeCode::Good;
    }

private:
    BridgeCode checkArguments();
    BridgeCode openDatabase();
    BridgeCode checkTarget();
    BridgeCode lookThrough();
    BridgeCode readHeadings(DelimitedReader& reader);
    BridgeCode readTypes(DelimitedReader& reader);
    BridgeCode checkCategories() const;
    BridgeCode survey(DelimitedReader& reader);
    BridgeCode checkWhole(const DelimitedReader& reader);
    BridgeCode planBySlots();
    BridgeCode planByNames();
    BridgeCode planChoices();
    int columnCalled(std::string_view name) const;
    BridgeCode makeFields();
    BridgeCode makeNewFields();
    void makeField(TextColumnPlan& column, int slot);
    BridgeCode storeRecords();
    BridgeCode storeRecord(DelimitedReader& reader, std::uint32_t row, std::uint64_t record);
    void makeRows();
    void giveKeys();
    BridgeCode save();
    BridgeCode fail(BridgeCode code, const std::string& why) {
        m_call.log.note(why);
        return code;
    }
    bool goesOn(std::uint64_t record, std::uint64_t total);

    bool isNew() const { return m_options.mode == ImportMode::Create; }
    bool withCategories() const { return m_options.flags.WithCategories == 1; }
    int firstSlot() const { return withCategories() ? 0 : 1; }

    BridgeCall& m_call;
    const Path& m_csv;
    const Path& m_pdb;
    const ImportOptions& m_options;
    platform::Regional m_regional;
    BridgeValues m_values;
    model::Document m_doc;
    std::vector<TextColumnPlan> m_columns;
    std::uint64_t m_records = 0;  // in the text
    std::uint32_t m_firstRow = 0; // id of the first new record; those of the others follow
};

BridgeCode TextImporter::checkArguments() {
    return areValid(m_options.flags) && isOneOf(m_options.mode) ? BridgeCode::Good : BridgeCode::InvalidArgument;
}

BridgeCode TextImporter::openDatabase() {
    if (!isNew()) {
        const BridgeCode code = openForBridge(m_call, m_doc, m_pdb, m_regional);
        return code == BridgeCode::Good ? checkTarget() : code;
    }
    const auto state = m_call.services.files.state(document::savedPath(m_pdb));
    if (!state)
        return fail(BridgeCode::CannotOpen, state.error().text);
    if (state.value().kind != platform::FileKind::Missing)
        return BridgeCode::OutputExists;
    model::clearDocument(m_doc);
    pdb::initDB(m_doc.CurrDB20);
    m_doc.CurrDB20.DBName = platform::shownPath(m_pdb.stem());
    m_doc.CurrFilePath = document::savedPath(m_pdb);
    m_doc.CurrFileName = platform::shownPath(m_pdb.filename());
    return BridgeCode::Good;
}

BridgeCode TextImporter::checkTarget() {
    for (const model::FieldDef& field : m_doc.CurrDB20.Fields)
        if (field.Type == FieldType::DBJoin || field.Type == FieldType::DBLookup)
            return BridgeCode::HasJoins;
    if (m_doc.CurrDB20.ReadOnly != 0) {
        m_call.services.ui.message({.text = "Tallybook is readonly.", .icon = platform::Icon::Critical, .title = {}});
        m_call.isTurnedDown = true;
        return BridgeCode::CannotOpen;
    }
    if (!pdb::AuthorizeDB(m_doc, m_call.services, model::PasswordKind::Modify)) {
        m_call.isTurnedDown = true;
        return BridgeCode::CannotOpen;
    }
    return BridgeCode::Good;
}

// The first way through the text: headings, how many records there are, and what the values of a new database's
// columns are.
BridgeCode TextImporter::lookThrough() {
    FileSource source(m_call.services.files, m_csv);
    DelimitedReader reader(source, delimiterOf(m_options.flags));
    if (const BridgeCode code = readHeadings(reader); code != BridgeCode::Good)
        return code;
    return survey(reader);
}

BridgeCode TextImporter::readHeadings(DelimitedReader& reader) {
    if (m_options.flags.WithNameRow == 1 && reader.next()) {
        std::string scratch;
        for (std::size_t item = 0; item < std::min(reader.items(), DelimitedReader::kMostItems); ++item)
            m_columns.push_back({.name = std::string(reader.item(item, scratch)), .type = {}});
    }
    if (m_options.flags.WithTypeRow == 1)
        if (const BridgeCode code = readTypes(reader); code != BridgeCode::Good)
            return code;
    if (m_columns.size() > static_cast<std::size_t>(model::MaxUserFields) + (withCategories() ? 1 : 0) &&
        !m_options.byNames)
        return BridgeCode::TooManyFields;
    return checkCategories();
}

BridgeCode TextImporter::readTypes(DelimitedReader& reader) {
    if (!reader.next())
        return BridgeCode::Good;
    const std::size_t items = std::min(reader.items(), DelimitedReader::kMostItems);
    if (m_options.flags.WithNameRow == 1 && items > m_columns.size())
        return fail(BridgeCode::WrongFieldCount, texts::recordHasMore(0, items, m_columns.size()));
    std::string scratch;
    m_columns.resize(std::max(m_columns.size(), items));
    for (std::size_t item = 0; item < m_columns.size(); ++item) {
        const std::string_view word = item < items ? reader.item(item, scratch) : std::string_view();
        m_columns[item].type = typeOfWord(word);
        m_columns[item].isFree = trimmed(word).empty();
        if (!m_columns[item].type && !m_columns[item].isFree)
            return fail(BridgeCode::InvalidType, texts::unknownTypeWord(word));
    }
    return BridgeCode::Good;
}

BridgeCode TextImporter::checkCategories() const {
    if (!withCategories() || m_options.byNames)
        return BridgeCode::Good;
    const bool hasName = !m_columns.empty() && sameName(m_columns[0].name, kCategoriesName);
    if (m_options.flags.WithNameRow == 1 && !hasName)
        return BridgeCode::NoCategoriesName;
    const bool isList = !m_columns.empty() && m_columns[0].type == FieldType::List;
    return m_options.flags.WithTypeRow == 1 && !isList ? BridgeCode::CategoriesNoList : BridgeCode::Good;
}

BridgeCode TextImporter::survey(DelimitedReader& reader) {
    std::string scratch;
    while (reader.next()) {
        if (reader.records() % kRecordsAStep == 0 && !goesOn(0, 1))
            return BridgeCode::Unspecified;
        if (++m_records + (m_options.mode == ImportMode::Append ? static_cast<std::uint64_t>(m_doc.NumDataRecs) : 0) >
            model::kMaxDataRecords) {
            m_call.isOverLimit = true;
            return fail(BridgeCode::Unspecified, std::string(texts::kTooManyRecords));
        }
        if (reader.isUnclosed())
            m_call.log.note(texts::unclosedRecord(m_records));
        if (!isNew())
            continue;
        const std::size_t items = std::min(reader.items(), DelimitedReader::kMostItems);
        if (items > m_columns.size() && m_options.flags.WithNameRow == 0 && m_options.flags.WithTypeRow == 0)
            m_columns.resize(items);
        for (std::size_t item = 0; item < std::min(items, m_columns.size()); ++item) {
            TextColumnPlan& column = m_columns[item];
            if (!column.type || *column.type == FieldType::Float)
                column.survey.add(reader.item(item, scratch), m_values);
        }
    }
    return checkWhole(reader);
}

BridgeCode TextImporter::checkWhole(const DelimitedReader& reader) {
    if (reader.isTooLarge())
        return fail(BridgeCode::WrongFieldCount,
                    texts::recordTooLarge(m_records + 1, DelimitedReader::kLargestRecord));
    if (!reader.status())
        return fail(BridgeCode::CannotOpen, reader.status().error().text);
    if (reader.hasNul())
        return fail(BridgeCode::CannotOpen, texts::noText(platform::shownPath(m_csv)));
    const std::size_t most = static_cast<std::size_t>(model::MaxUserFields) + (withCategories() ? 1 : 0);
    return isNew() && m_columns.size() > most && !m_options.byNames ? BridgeCode::TooManyFields : BridgeCode::Good;
}

BridgeCode TextImporter::makeFields() {
    if (m_options.byNames && !m_options.choices.empty()) {
        if (const BridgeCode code = planChoices(); code != BridgeCode::Good)
            return code;
    } else if (isNew()) {
        if (const BridgeCode code = makeNewFields(); code != BridgeCode::Good)
            return code;
    } else if (const BridgeCode code = m_options.byNames ? planByNames() : planBySlots(); code != BridgeCode::Good) {
        return code;
    }
    makeRows();
    for (TextColumnPlan& column : m_columns) {
        if (column.slot < 0)
            continue;
        const model::FieldDef& field = m_doc.CurrDB20.Fields[static_cast<std::size_t>(column.slot)];
        const std::string name = columnName(m_doc.CurrDB20, column.slot);
        if (column.slot > 0 && !travelsIn(field.Type)) {
            m_call.log.note(texts::columnsPassedOver(name, model::fieldTypeName(field.Type)));
            column.slot = -1;
            column.isRefused = false;
            continue;
        }
        column.importer = std::make_unique<CellImporter>(m_doc, column.slot, name, m_values,
                                                         m_options.flags.ListsAsIndex == 1, m_call.log);
    }
    return BridgeCode::Good;
}

// Columns in the order of the slots, free ones included.
BridgeCode TextImporter::planBySlots() {
    const int slots = std::max(0, model::highestField(m_doc.CurrDB20) - firstSlot());
    m_columns.resize(std::max(m_columns.size(), static_cast<std::size_t>(slots)));
    for (int place = 0; place < slots; ++place) {
        const int slot = firstSlot() + place;
        if (slot == 0 || m_doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed)
            m_columns[static_cast<std::size_t>(place)].slot = slot;
    }
    return BridgeCode::Good;
}

BridgeCode TextImporter::planByNames() {
    int matches = 0;
    for (TextColumnPlan& column : m_columns) {
        column.isRefused = false;
        for (const int slot : exportedSlots(m_doc.CurrDB20, withCategories()))
            if (column.slot < 0 && sameName(column.name, columnName(m_doc.CurrDB20, slot)))
                column.slot = slot;
        matches += column.slot >= 0 ? 1 : 0;
        if (column.slot < 0)
            m_call.log.note(texts::columnIgnored(column.name));
    }
    return matches > 0 ? BridgeCode::Good : fail(BridgeCode::WrongFieldCount, std::string(texts::kNoColumnMatches));
}

int TextImporter::columnCalled(std::string_view name) const {
    for (std::size_t column = 0; column < m_columns.size(); ++column)
        if (sameName(m_columns[column].name, name))
            return static_cast<int>(column);
    int number = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), number);
    const bool isNumber = read.ec == std::errc() && read.ptr == name.data() + name.size();
    return isNumber && number >= 1 && number <= static_cast<int>(m_columns.size()) ? number - 1 : -1;
}

BridgeCode TextImporter::planChoices() {
    for (TextColumnPlan& column : m_columns)
        column.isRefused = false;
    int nextSlot = 1;
    for (const ColumnChoice& choice : m_options.choices) {
        const int place = columnCalled(choice.column);
        if (place < 0)
            return fail(BridgeCode::WrongFieldCount, texts::noSuchColumn(choice.column));
        TextColumnPlan& column = m_columns[static_cast<std::size_t>(place)];
        if (withCategories() && sameName(choice.field, kCategoriesName)) {
            column.slot = 0;
        } else if (isNew()) {
            if (nextSlot > model::MaxUserFields)
                return BridgeCode::TooManyFields;
            column.name = choice.field;
            makeField(column, nextSlot++);
        } else {
            for (const int slot : exportedSlots(m_doc.CurrDB20, false))
                if (column.slot < 0 && sameName(choice.field, columnName(m_doc.CurrDB20, slot)))
                    column.slot = slot;
            if (column.slot < 0)
                return fail(BridgeCode::WrongFieldCount, texts::noSuchField(choice.field));
        }
    }
    return BridgeCode::Good;
}

BridgeCode TextImporter::makeNewFields() {
    int slot = firstSlot();
    for (TextColumnPlan& column : m_columns) {
        if (slot > model::MaxUserFields)
            return BridgeCode::TooManyFields;
        if (slot == 0)
            column.slot = 0;
        else if (!column.isFree)
            makeField(column, slot);
        ++slot;
    }
    return BridgeCode::Good;
}

void TextImporter::makeField(TextColumnPlan& column, int slot) {
    model::DatabaseModel& db = m_doc.CurrDB20;
    model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    field.Type = column.type.value_or(column.survey.type());
    if (const std::string_view name = trimmed(column.name); !name.empty())
        field.Name = name.substr(0, kMostFieldName);
    if (field.Type == FieldType::Float)
        field.Decimals = static_cast<std::uint8_t>(column.survey.decimals());
    column.slot = slot;
}

// The second way through the text.
BridgeCode TextImporter::storeRecords() {
    FileSource source(m_call.services.files, m_csv);
    DelimitedReader reader(source, delimiterOf(m_options.flags));
    const int headings = m_options.flags.WithNameRow + m_options.flags.WithTypeRow;
    for (int line = 0; line < headings; ++line)
        (void)reader.next();
    std::uint64_t record = 0;
    while (record < m_records && reader.next()) {
        if (record % kRecordsAStep == 0 && !goesOn(record, m_records))
            return BridgeCode::Unspecified;
        const auto row = static_cast<std::uint32_t>(m_firstRow + record);
        if (const BridgeCode code = storeRecord(reader, row, ++record); code != BridgeCode::Good)
            return code;
    }
    if (!reader.status() || record != m_records)
        return fail(BridgeCode::CannotOpen,
                    reader.status() ? texts::noText(platform::shownPath(m_csv)) : reader.status().error().text);
    giveKeys();
    m_call.records = m_records;
    return BridgeCode::Good;
}

BridgeCode TextImporter::storeRecord(DelimitedReader& reader, std::uint32_t row, std::uint64_t record) {
    std::string scratch;
    const std::size_t kept = std::min(reader.items(), DelimitedReader::kMostItems);
    const std::size_t items = std::min(kept, m_columns.size());
    for (std::size_t item = 0; item < items; ++item) {
        const std::string_view value = reader.item(item, scratch);
        if (value.empty())
            continue;
        const TextColumnPlan& column = m_columns[item];
        if (column.importer) {
            if (const BridgeCode code = column.importer->store(value, row, record); code != BridgeCode::Good)
                return code;
        } else if (column.isRefused) {
            return fail(BridgeCode::DataWithoutField, texts::dataWithoutField(record, item + 1));
        }
    }
    for (std::size_t item = items; item < kept; ++item)
        if (!reader.raw(item).empty())
            return fail(BridgeCode::WrongFieldCount, texts::recordHasMore(record, reader.items(), m_columns.size()));
    if (reader.items() > kept)
        return fail(BridgeCode::WrongFieldCount, texts::recordHasMore(record, reader.items(), m_columns.size()));
    return BridgeCode::Good;
}

// Room for the records. Columns that are emptied lose their coders.
void TextImporter::makeRows() {
    const int added = static_cast<int>(m_records);
    if (m_options.mode != ImportMode::Append || model::hasNoRecords(m_doc)) {
        model::resetRows(m_doc, added);
        for (int slot = 0; slot <= model::MaxUserFields; ++slot)
            m_doc.grd.column(model::columnOfSlot(slot))
                .setCoder(calc::coderForField(m_doc.CurrDB20, slot, m_regional));
        return;
    }
    m_firstRow = static_cast<std::uint32_t>(m_doc.NumDataRecs);
    for (int record = 0; record < added; ++record)
        m_doc.grd.appendRow();
    m_doc.NumDataRecs += added;
    m_doc.NumFileRecs += added;
}

// The keys of records that no column gave one.
void TextImporter::giveKeys() {
    std::int32_t& last = m_doc.CurrDB20.LastKey;
    const int first = m_doc.NumDataRecs - static_cast<int>(m_records);
    for (int record = first; record < m_doc.NumDataRecs; ++record)
        if (m_doc.RecKeys[record] == 0 && last < INT32_MAX)
            m_doc.RecKeys.set(record, ++last);
}

BridgeCode TextImporter::save() {
    if (!m_options.writes)
        return BridgeCode::Good;
    if (!goesOn(m_records, m_records))
        return BridgeCode::Unspecified;
    const auto built = pdb::buildDatabase(m_doc, m_call.services);
    if (!built)
        return fail(BridgeCode::Unspecified, built.error().description());
    const Status written = platform::writeWholeFile(
        m_call.services.files, m_options.out.empty() ? m_doc.CurrFilePath : m_options.out, built.value().bytes);
    if (written)
        return BridgeCode::Good;
    const bool refused = written.error().number == static_cast<int>(std::errc::permission_denied);
    return fail(refused ? BridgeCode::CannotOpen : BridgeCode::Unspecified, written.error().text);
}

bool TextImporter::goesOn(std::uint64_t record, std::uint64_t total) {
    if (m_call.watcher == nullptr || m_call.watcher->step(texts::importingRecord(std::min(record + 1, total), total),
                                                          static_cast<int>(record), static_cast<int>(total)))
        return true;
    m_call.isStopped = true;
    return false;
}

std::string summaryOf(const BridgeCall& call, BridgeCode code) {
    if (code == BridgeCode::Good)
        return call.log.countText(call.records, "imported");
    if (call.isStopped)
        return std::string(texts::kStopped);
    return texts::nothingChanged(call.isOverLimit ? texts::kTooManyRecords : bridgeText(numberOf(code)));
}

} // namespace

BridgeCode importText(BridgeCall& call, const Path& csvPath, const Path& pdbPath, const ImportOptions& options) {
    const BridgeCode code = TextImporter(call, csvPath, pdbPath, options).run();
    call.log.setSummary(summaryOf(call, code));
    writeLog(call);
    return code;
}

BridgeCode Text2Tiny(BridgeCall& call, const Path& csvPath, const Path& pdbPath, std::int16_t Mode,
                     const BridgeFlags& flags) {
    const ImportOptions options{.mode = static_cast<ImportMode>(Mode), .flags = flags};
    return importText(call, csvPath, pdbPath, options);
}

} // namespace tallybook::convert
