// The bridge between delimited text and databases: all records that go in or out by a conversion pass here.
//
// The text has an optional line of names, an optional line of types, and a line for each record, its columns in the
// order of the field slots. DelimitedText.h has the rules of quotes, docs/conversions.md what becomes what.
#pragma once

#include "core/convert/BridgeCodes.h"
#include "core/convert/BridgeLog.h"
#include "core/convert/BridgeValues.h"
#include "core/convert/DelimitedText.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::convert {

// Told between two records how far a conversion has come; false stops it there, with everything as it was.
class RunWatcher {
public:
    virtual ~RunWatcher() = default;
    virtual bool step(const std::string& caption, int value, int maximum) = 0;
};

// What a call has beside its arguments, and what it leaves behind.
struct BridgeCall {
    platform::Services& services;
    RunWatcher* watcher = nullptr;
    bool writesLog = true; // to the file; the lines are kept in any case

    BridgeLog log{};
    std::uint64_t records = 0; // that went in or out
    bool isStopped = false;    // by the watcher
    bool isTurnedDown = false; // at a password, or as the database is read-only; what had to be said has been said
    bool isOverLimit = false;  // more records than a database can hold
};

enum class ImportMode : std::int16_t {
    Create = 0,  // a new database
    Append = 1,  // behind the records of an existing one
    Replace = 2, // instead of them
};

// Reads a text into a database. Writes the database only when the result is Good: whole, by the one safe writer.
// An existing database keeps everything else that it has.
BridgeCode Text2Tiny(BridgeCall& call, const std::filesystem::path& csvPath, const std::filesystem::path& pdbPath,
                     std::int16_t Mode, const BridgeFlags& flags);

// Writes the records of a database to a text, which is added to (AppendOutput 1) or made anew (0). Whole or not at
// all.
BridgeCode Tiny2Text(BridgeCall& call, const std::filesystem::path& pdbPath, const std::filesystem::path& csvPath,
                     std::int16_t AppendOutput, const BridgeFlags& flags);

// The parts of the two, for the command. ------------------------------------------------------------------------

// Which column goes into which field, where the order of the slots does not say it.
struct ColumnChoice {
    std::string field;  // its name; for a new database the name that it gets
    std::string column; // its name in the line of names, or its number from 1
};
struct ImportOptions {
    ImportMode mode = ImportMode::Create;
    BridgeFlags flags;
    bool byNames = false;                // columns go into the fields that are called like them
    std::vector<ColumnChoice> choices{}; // with byNames: these columns alone, into these fields
    std::filesystem::path out{};         // where the database is written; empty: where it was read
    bool writes = true;                  // false: everything but the writing of the database
};
BridgeCode importText(BridgeCall& call, const std::filesystem::path& csvPath, const std::filesystem::path& pdbPath,
                      const ImportOptions& options);

// Opens a database as a conversion does: with its passwords, the calculated fields as they are shown. The code says
// what went wrong.
BridgeCode openForBridge(BridgeCall& call, model::Document& doc, const std::filesystem::path& pdbPath,
                         const platform::Regional& regional);

// Writes records of a document as lines of a text.
class RecordExporter {
public:
    // The slots of the columns, 0 for the categories. `regional` is the one that the document was read by.
    RecordExporter(const model::Document& doc, std::vector<int> slots, const BridgeFlags& flags,
                   const platform::Regional& regional, int thisYear);

    void writeNames(DelimitedWriter& out) const;
    void writeTypes(DelimitedWriter& out) const;
    void writeRecord(int record, DelimitedWriter& out); // from 0

private:
    struct Column;
    std::string_view valueOf(const Column& column, std::uint32_t row);

    struct Column {
        int slot = 0;
        model::FieldType type = model::FieldType::NotUsed;
        model::WordForm words = model::WordForm::Other;
        const model::TextColumn* texts = nullptr;
        const model::WordColumn* longs = nullptr;
        const model::WordColumn* pictures = nullptr;
        std::vector<std::string> items; // what each id shows
    };
    void fillItems(Column& column) const;
    std::string_view dateText(std::uint32_t word);
    std::string_view timeText(std::uint32_t word);

    const model::Document& m_doc;
    BridgeFlags m_flags;
    BridgeValues m_values;
    char m_shownDecimal; // in the document's texts
    std::vector<Column> m_columns;
    std::string m_value;
    std::string m_scratch;
};

// The slots of the used fields in their order, slot 0 ahead when the categories are wanted.
std::vector<int> exportedSlots(const model::DatabaseModel& db, bool withCategories);

// What the columns of a slot is headed: the field's name, or "Fld01" and so on.
std::string columnName(const model::DatabaseModel& db, int slot);

inline constexpr std::string_view kCategoriesName = "Categories";

// Puts the log into its file. A file that cannot be written is done without.
void writeLog(BridgeCall& call);

} // namespace tallybook::convert
