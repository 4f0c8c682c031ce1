// A saved recipe for moving records between a Tallybook and one place outside of it.
#pragma once

#include "core/model/FieldType.h"
#include "core/model/Limits.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace tallybook::convert {

enum class SpecDirection : std::uint8_t { Import, Export };

// One row of the mapping. Row 0 is that of the categories, rows 1 to 80 stand for a mapped field each.
struct ConversionSpecEntry {
    std::uint8_t SlotPlusOne = 0;  // the field's slot plus 1; 0 for a row that maps nothing
    std::uint8_t TypeCode = 0;     // of the field, 0 for none
    std::string OwnFieldName;      // of the Tallybook's field
    std::string OwnTypeName;       // display name of its type; "Not Used" keeps the row out of a run
    std::string ExternalFieldName; // of the column outside; empty when the row is not mapped

    bool operator==(const ConversionSpecEntry&) const = default;
};

inline constexpr int kSpecRows = 81; // rows that a file has; the array's last one is never stored

inline constexpr std::string_view kKindText = "TEXT";
inline constexpr std::string_view kKindAccess = "ACCESS";
inline constexpr std::string_view kKindOdbc = "ODBC";
inline constexpr std::string_view kPromptPath = "(prompt)"; // an export that asks for its file at each run
inline constexpr std::string_view kNoObject = "none";       // ObjectName of a text file
inline constexpr std::string_view kNotUsed = model::FieldTypeNames[0];

// In the order of the file. All texts are Windows-1252 and come from a file that anybody may have written: numbers of
// rows and slots can lie past the ends, see lastRow() and slotOfRow().
struct ConversionSpec {
    std::string ExternalKind;       // one of the three kinds
    std::string TallybookName;      // without prefix and ending
    std::string ExternalPath;       // the file, or the connection string
    std::string SourceKind;         // text: "C" comma, "S" semicolon, anything else tab; else "T" table, "Q" query
    std::int16_t DateFormat = 0;    // 1 day first, 0 month first
    std::string ObjectName;         // table or query
    std::string FirstRowNames;      // "Y" or "N"
    std::string SecondRowTypes;     // "Y" or "N"
    std::int16_t TimeFormat = 0;    // 0 AM/PM, 1 24 hours
    std::int16_t HasSeconds = 0;    // 1 when times have seconds
    std::string HotSyncUser;        // in whose folder the Tallybook lies
    std::string InstallToUser;      // empty for nobody
    std::string InstallToAll;       // "Y" or "N"
    std::string SaveCopyFolder;     // empty for none; without a separator at its end
    std::uint8_t AppendRecords = 0; // 0 empties the target first
    std::uint8_t MapCategories = 0;
    std::uint8_t ListsAsIndex = 0;
    std::uint8_t LastEntry = 0; // the last filled row
    std::uint8_t NewDatabase = 0;
    std::array<ConversionSpecEntry, model::MaxFieldSlots> Entries{};

    bool operator==(const ConversionSpec&) const = default;
};

// LastEntry as far as there are rows.
int lastRow(const ConversionSpec& spec);

// The field slot 0 to 81 of a row, -1 for one that maps nothing or names a slot that there is not.
int slotOfRow(const ConversionSpecEntry& row);

// The character between the columns of a text file.
char delimiterOf(const ConversionSpec& spec);

// True for a text of "Y".
inline bool isYes(std::string_view choice) {
    return choice == "Y";
}

// A path as a spec has it, with either separator, as one of this system. One that does not say where it begins is
// taken from `folder`.
std::filesystem::path storedPath(std::string_view path, const std::filesystem::path& folder);

// The value behind a key as "DSN=" in a connection string, up to the next ";"; empty when the key is not there.
std::string GetStrVal(std::string_view source, std::string_view key);

} // namespace tallybook::convert
