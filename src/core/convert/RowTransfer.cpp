#include "core/convert/RowTransfer.h"

#include "core/calc/values/Text.h"
#include "core/document/joins/Joins.h"
#include "core/pdb/Database.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <algorithm>
#include <map>
#include <optional>

namespace tallybook::convert {

namespace {

using model::FieldType;
using platform::Status;
namespace texts = platform::texts;
using Path = std::filesystem::path;

constexpr std::string_view kImportTag = "Import Export : Import From Database Procedure";
constexpr std::size_t kPiece = 128 * 1024;
constexpr int kRecordsAStep = 10;

bool report(platform::Services& services, const platform::Error& error, std::string_view tag) {
    platform::Error shown = error;
    shown.tag = tag;
    services.ui.showError(shown);
    return false;
}

// Where the items of a line begin and end. Separators count outside of double quotes alone.
struct Span {
    std::size_t start = 0;
    std::size_t end = 0;
};
std::optional<Span> spanOf(std::string_view line, int number, char delimiter) {
    if (number < 1)
        return std::nullopt;
    Span span;
    int item = 1;
    bool inside = false;
    for (std::size_t place = 0; place < line.size(); ++place) {
        if (line[place] == '"')
            inside = !inside;
        if (line[place] != delimiter || inside)
            continue;
        if (item++ == number) {
            span.end = place;
            return span;
        }
        span.start = place + 1;
    }
    span.end = line.size();
    return item == number ? std::optional(span) : std::nullopt;
}

std::string_view withoutOuterQuotes(std::string_view item) {
    if (item.empty() || item.front() != '"' || item.back() != '"')
        return item;
    return item.size() <= 2 ? std::string_view() : item.substr(1, item.size() - 2);
}

// Lines to a file that takes its place when all are there.
class LineFile {
public:
    LineFile(platform::Files& files, const Path& path, platform::Privacy privacy)
        : m_file(platform::GrowingFile::begin(files, path, privacy)) {}

    void add(std::string_view text) {
        m_buffer += text;
        if (m_buffer.size() >= kPiece)
            flush();
    }
    void endLine() { add("\r\n"); }

    Status commit() {
        flush();
        if (!m_file)
            return m_file.error();
        return m_failure ? *m_failure : m_file.value()->commit();
    }

private:
    void flush() {
        if (!m_file || m_failure || m_buffer.empty())
            return;
        const Status written =
            m_file.value()->write({reinterpret_cast<const std::uint8_t*>(m_buffer.data()), m_buffer.size()});
        if (!written)
            m_failure = written;
        m_buffer.clear();
    }

    platform::Result<std::unique_ptr<platform::GrowingFile>> m_file;
    std::optional<Status> m_failure;
    std::string m_buffer;
};

int highestSlot(const model::DatabaseModel& db) {
    for (int slot = model::MaxFieldSlots - 1; slot >= 0; --slot)
        if (db.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed)
            return slot;
    return -1;
}

int firstSlot(const ConversionSpec& spec) {
    return spec.MapCategories != 0 ? 0 : 1;
}

// The first row of a slot with both names, -1 for none.
int rowOfSlot(const ConversionSpec& spec, int slot) {
    for (int row = 0; row <= lastRow(spec); ++row) {
        const ConversionSpecEntry& entry = spec.Entries[static_cast<std::size_t>(row)];
        if (slotOfRow(entry) == slot && !entry.OwnFieldName.empty() && !entry.ExternalFieldName.empty())
            return row;
    }
    return -1;
}

// What the temporary text has for each column: the row that it is taken by, and its headings.
struct ColumnPlan {
    int row = -1;
    std::string name;
    std::string type;
};

std::vector<ColumnPlan> columnsOf(const TransferState& state) {
    std::vector<ColumnPlan> columns;
    const int last = highestSlot(state.db);
    for (int slot = firstSlot(state.spec); slot <= last; ++slot) {
        ColumnPlan& column = columns.emplace_back();
        column.row = rowOfSlot(state.spec, slot);
        if (column.row < 0) {
            column.name = columnName(state.db, slot);
            continue;
        }
        const ConversionSpecEntry& entry = state.spec.Entries[static_cast<std::size_t>(column.row)];
        column.name = entry.OwnFieldName;
        if (entry.OwnTypeName != kNotUsed)
            column.type = calc::lower(MaptoType(entry.OwnTypeName));
    }
    return columns;
}

void writeHeadings(const TransferState& state, const std::vector<ColumnPlan>& columns, LineFile& out) {
    const char delimiter = delimiterOf(state.flags);
    const auto writeLine = [&](std::string ColumnPlan::*heading) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            const std::string& text = columns[column].*heading;
            if (column > 0)
                out.add(std::string_view(&delimiter, 1));
            const bool needsQuotes = text.find_first_of(std::string("\"\r\n") + delimiter) != std::string::npos;
            out.add(needsQuotes ? AddQuots(text) : text);
        }
        out.endLine();
    };
    if (state.writesNames)
        writeLine(&ColumnPlan::name);
    if (state.writesTypes)
        writeLine(&ColumnPlan::type);
}

// The records of the source behind its headings; nothing when these cannot be taken.
std::optional<std::uint64_t> countRecords(TransferState& state, const Path& source) {
    FileSource bytes(state.services.files, source);
    DelimitedReader reader(bytes, delimiterOf(state.spec));
    std::size_t names = 0;
    if (isYes(state.spec.FirstRowNames)) {
        if (!reader.next())
            return std::nullopt;
        names = reader.items();
    }
    if (isYes(state.spec.SecondRowTypes)) {
        if (!reader.next())
            return std::nullopt;
        std::string scratch;
        for (std::size_t item = 0; item < std::min(reader.items(), DelimitedReader::kMostItems); ++item)
            if (const auto word = reader.item(item, scratch); !trimmed(word).empty() && !typeOfWord(word))
                return std::nullopt;
    }
    static_cast<void>(names); // a line of types that is longer or shorter is tolerated
    const std::uint64_t headings = reader.records();
    while (reader.next())
        continue;
    if (reader.isTooLarge() || !reader.status())
        return std::nullopt;
    return reader.records() - headings;
}

bool goesOn(TransferState& state, std::uint64_t record, std::uint64_t total, std::string_view verb) {
    if (state.watcher == nullptr || record % kRecordsAStep != 0)
        return true;
    const std::string caption = std::string(verb) + std::to_string(record) + " of " + std::to_string(total);
    if (state.watcher->step(caption, static_cast<int>(record), static_cast<int>(total)))
        return true;
    state.isStopped = true;
    return false;
}

// Line ends inside an item are dropped, as the lines of a record are joined with nothing between them.
std::string_view withoutLineEnds(std::string_view item, std::string& scratch) {
    if (item.find_first_of("\r\n") == std::string_view::npos)
        return item;
    scratch.assign(item);
    std::erase_if(scratch, [](char c) { return c == '\r' || c == '\n'; });
    return scratch;
}

bool copyRecords(TransferState& state, const std::vector<ColumnPlan>& columns, const Path& source,
                 std::uint64_t total, LineFile& out) {
    FileSource bytes(state.services.files, source);
    DelimitedReader reader(bytes, delimiterOf(state.spec));
    for (const std::string& heading : {state.spec.FirstRowNames, state.spec.SecondRowTypes})
        if (isYes(heading))
            (void)reader.next();
    const char delimiter = delimiterOf(state.flags);
    std::string scratch;
    for (std::uint64_t record = 1; reader.next(); ++record) {
        if (!goesOn(state, record, total, "Importing record "))
            return false;
        for (std::size_t column = 0; column < columns.size(); ++column) {
            if (column > 0)
                out.add(std::string_view(&delimiter, 1));
            if (columns[column].row < 0)
                continue;
            const int item = columns[column].row + (state.spec.MapCategories != 0 ? 1 : 0) - 1;
            if (item < 0)
                continue;
            const std::string_view value =
                withoutOuterQuotes(withoutLineEnds(reader.raw(static_cast<std::size_t>(item)), scratch));
            out.add(calc::QuoteDelimited(value, delimiter));
        }
        out.endLine();
    }
    return true;
}

// Copies a text record by record through change(line, record from 0), which gives the new line.
bool rewrite(TransferState& state, const Path& path, std::string_view tag,
             const std::function<std::string(std::string_view line, std::uint64_t record)>& change) {
    FileSource bytes(state.services.files, path);
    DelimitedReader reader(bytes, delimiterOf(state.flags));
    LineFile out(state.services.files, path, platform::Privacy::Usual);
    for (std::uint64_t record = 0; reader.next(); ++record) {
        if (!goesOn(state, record, record, "Exporting record "))
            return false;
        out.add(change(reader.line(), record));
        out.endLine();
    }
    if (!reader.status())
        return report(state.services, reader.status().error(), tag);
    const Status committed = out.commit();
    return committed || report(state.services, committed.error(), tag);
}

// A lookup column to fill: its place in the exported text and what each key shows.
struct LookupFill {
    int keyColumn = 0; // from 1
    int column = 0;
    std::map<std::string, std::string, std::less<>> values;
};

void addLookups(const model::Document& doc, const std::vector<int>& slots, int join, std::vector<LookupFill>& fills) {
    const auto placeOf = [&](int slot) {
        const auto found = std::find(slots.begin(), slots.end(), slot);
        return found == slots.end() ? 0 : static_cast<int>(found - slots.begin()) + 1;
    };
    const model::ExternalSlot& keys = doc.External.at(join);
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const bool belongs = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type == FieldType::DBLookup &&
                             doc.CurrDB20.Externals.at(slot).SourceField == join;
        if (!belongs)
            continue;
        LookupFill& fill = fills.emplace_back();
        fill.keyColumn = placeOf(join);
        fill.column = placeOf(slot);
        const model::ExternalSlot& shown = doc.External.at(slot);
        std::string keyScratch;
        std::string textScratch;
        for (std::uint32_t row = 0; row < std::min(keys.rows(), shown.rows()); ++row)
            fill.values.emplace(keys.ExtKeys(row, keyScratch), shown.ExtDisplay(row, textScratch));
    }
}

} // namespace

std::string AddQuots(std::string_view value) {
    std::string quoted = "\"";
    for (const char c : value)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string MaptoType(std::string_view typeName) {
    if (typeName == model::fieldTypeName(FieldType::RadioButton))
        return "radio";
    return std::string(typeName == model::fieldTypeName(FieldType::AutoIncremental) ? "auto" : typeName);
}

bool GetWholeRecord(std::string_view line) {
    return std::count(line.begin(), line.end(), '"') % 2 == 0;
}

std::string_view nthItem(std::string_view line, int number, char delimiter) {
    const auto span = spanOf(line, number, delimiter);
    return span ? withoutOuterQuotes(line.substr(span->start, span->end - span->start)) : std::string_view();
}

std::string EraseField(std::string_view line, int number, char delimiter) {
    const auto span = spanOf(line, number, delimiter);
    if (!span)
        return std::string(line);
    if (number > 1)
        return std::string(line.substr(0, span->start - 1)) + std::string(line.substr(span->end));
    return std::string(span->end < line.size() ? line.substr(span->end + 1) : line);
}

std::string InsertLookupField(std::string_view line, int number, std::string_view value, char delimiter) {
    const auto span = spanOf(line, number, delimiter);
    if (!span)
        return std::string(line);
    return std::string(line.substr(0, span->start)) + AddQuots(value) + std::string(line.substr(span->end));
}

bool ImportFromDBNew(TransferState& state, const Path& target) {
    const Path source = storedPath(state.spec.ExternalPath, state.services.applicationFolder);
    const auto found = state.services.files.state(source);
    if (!found || found.value().kind != platform::FileKind::Regular)
        return false;
    const auto records = countRecords(state, source);
    if (!records)
        return false;
    const std::vector<ColumnPlan> columns = columnsOf(state);
    if (*records == 0) {
        state.services.ui.message(
            {.text = "Source database does not contain records", .icon = platform::Icon::Information, .title = {}});
        return false;
    }
    LineFile out(state.services.files, target, platform::Privacy::OwnerOnly);
    writeHeadings(state, columns, out);
    if (!copyRecords(state, columns, source, *records, out))
        return false;
    const Status committed = out.commit();
    return committed || report(state.services, committed.error(), kImportTag);
}

// Downwards, so that the numbers of the columns ahead stay what they are.
bool EraseExtraColumn(TransferState& state, const Path& path) {
    const ConversionSpec& spec = state.spec;
    const int categories = spec.Entries[0].ExternalFieldName.empty() ? 0 : 1;
    std::vector<int> erased;
    for (int row = kSpecRows - 1; row >= 0; --row) {
        const ConversionSpecEntry& entry = spec.Entries[static_cast<std::size_t>(row)];
        if (entry.OwnTypeName != kNotUsed && entry.ExternalFieldName.empty() && row + categories > 0)
            erased.push_back(row + categories);
    }
    return rewrite(state, path, "EraseExtraColumn", [&](std::string_view line, std::uint64_t) {
        std::string left(line);
        for (const int column : erased)
            left = EraseField(left, column, delimiterOf(state.flags));
        return left;
    });
}

bool WriteExternalField(TransferState& state, const Path& path, const Path& pdb) {
    model::Document doc;
    model::clearDocument(doc);
    doc.CurrDB20 = state.db;
    doc.CurrFilePath = pdb;
    doc.CurrFolder = pdb.parent_path();
    std::vector<int> joins;
    for (int row = 0; row <= lastRow(state.spec); ++row) {
        const ConversionSpecEntry& entry = state.spec.Entries[static_cast<std::size_t>(row)];
        const int slot = slotOfRow(entry);
        if (slot > 0 && !entry.ExternalFieldName.empty() &&
            state.db.Fields[static_cast<std::size_t>(slot)].Type == FieldType::DBJoin)
            joins.push_back(slot);
    }
    if (joins.empty())
        return true;
    document::loadExternalData(doc, state.services);
    std::vector<LookupFill> fills;
    const std::vector<int> slots = exportedSlots(state.db, state.flags.WithCategories == 1);
    for (const int join : joins)
        addLookups(doc, slots, join, fills);
    const std::uint64_t headings =
        static_cast<std::uint64_t>(state.flags.WithNameRow) + static_cast<std::uint64_t>(state.flags.WithTypeRow);
    return rewrite(state, path, "WriteExternalField", [&](std::string_view line, std::uint64_t record) {
        std::string filled(line);
        if (record < headings)
            return filled;
        for (const LookupFill& fill : fills) {
            const auto found = fill.values.find(nthItem(line, fill.keyColumn, delimiterOf(state.flags)));
            if (found != fill.values.end())
                filled = InsertLookupField(filled, fill.column, found->second, delimiterOf(state.flags));
        }
        return filled;
    });
}

} // namespace tallybook::convert
