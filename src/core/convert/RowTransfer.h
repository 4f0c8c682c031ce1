// What lies between the bridge and the outside: the text that an import reads becomes the temporary text that the
// bridge reads, its columns in the order of the fields; and an exported text is given what the bridge cannot know and
// loses what the spec does not want.
#pragma once

#include "core/convert/ConversionSpec.h"
#include "core/convert/TextBridge.h"
#include "core/model/DatabaseModel.h"
#include "core/platform/Services.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::convert {

inline constexpr std::string_view kImportFile = "_MS2_import.csv";
inline constexpr std::string_view kExportFile = "_MS2_export.csv";

// The value in double quotes, each of its own doubled.
std::string AddQuots(std::string_view value);

// The word for a line of types: "radio", "auto", or the name itself.
std::string MaptoType(std::string_view typeName);

// True when a line read so far is a whole record: it has an even number of double quotes.
bool GetWholeRecord(std::string_view line);

// Item `number` (from 1) of a line, without the double quotes at its ends; those inside stay as they are. Empty when
// there is none.
std::string_view nthItem(std::string_view line, int number, char delimiter);

// Takes column `number` (from 1) out of a line; a line without it stays.
std::string EraseField(std::string_view line, int number, char delimiter);

// Puts a value in double quotes into column `number` (from 1) of a line, in place of what is there.
std::string InsertLookupField(std::string_view line, int number, std::string_view value, char delimiter);

struct TransferState {
    platform::Services& services;
    const ConversionSpec& spec;
    const model::DatabaseModel& db;
    BridgeFlags flags;
    bool writesNames = false; // into the temporary text
    bool writesTypes = false;
    RunWatcher* watcher = nullptr;
    bool isStopped = false;
};

// Writes the temporary text of an import from a text file. False when there is nothing to read or it cannot be done,
// or when the user has stopped it; what has to be said has been said, but for the message of the import itself.
bool ImportFromDBNew(TransferState& state, const std::filesystem::path& target);

// Takes the columns out of an exported text that the spec does not map.
bool EraseExtraColumn(TransferState& state, const std::filesystem::path& path);

// Fills the lookup columns of an exported text from the databases that its joins lead into. `pdb` is the database.
bool WriteExternalField(TransferState& state, const std::filesystem::path& path, const std::filesystem::path& pdb);

} // namespace tallybook::convert
