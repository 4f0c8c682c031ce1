// The file of a conversion spec: quoted lines of a key and a value, in a fixed order.
//
//   "VRS:1.0" "EXT:" "INT:" "URL:" "TYP:" "DTF:" "OBJ:" "FRS:Y,N, 0, 0, 0" "USR:" "ITO:" "ITA:" "SAV:"
//   "APP:" "CAT:" "LST:" "FLD:" "Pdb:", then 81 times "F00:00,00" "OFD:" "OTP:" "EFD:"
//
// Keys are not compared when a file is read: each line gives its value by its place.
#pragma once

#include "core/convert/ConversionSpec.h"
#include "core/platform/Result.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::convert {

enum class SpecFields : std::uint8_t { Without, With };

// Reads the text of a file into the spec. Without its fields the rows stay what they are. Takes any bytes; on an
// error the spec is what it was. A file without the line DTF: is an older one.
platform::Status parseSpecs(std::string_view text, ConversionSpec& spec, SpecFields fields);

// The text of a file. MapCategories is stored as 1 exactly when row 0 is mapped. An error for what the format cannot
// carry: a double quote in a value, numbers of more than two digits in a row.
platform::Result<std::string> formSpecs(const ConversionSpec& spec);

// The folder of a direction, and the file of a spec in it. The name is Windows-1252, without ending.
std::filesystem::path specsFolder(platform::Services& services, SpecDirection direction);
std::filesystem::path specPath(platform::Services& services, SpecDirection direction, std::string_view name);

// Why a spec may not have this name; empty when it may.
std::string faultOfSpecName(std::string_view name);

// Reads a spec's file. False when that fails, which has been shown then; the spec is what it was. A missing file that
// was asked for by its path is told with a message of its own.
enum class SpecPlace : std::uint8_t { ByName, ByPath };
bool readSpecs(platform::Services& services, ConversionSpec& spec, const std::filesystem::path& path,
               SpecPlace place = SpecPlace::ByPath, SpecFields fields = SpecFields::With);

// Writes a spec's file, whole or not at all, for its owner's eyes only, as a connection string may hold a password.
// Puts MapCategories right in the spec. False when that fails, which has been shown then.
bool writeSpecs(platform::Services& services, ConversionSpec& spec, const std::filesystem::path& path);

// The same without a word: nothing is shown.
platform::Status loadSpecs(platform::Files& files, ConversionSpec& spec, const std::filesystem::path& path,
                           SpecFields fields);

// The files of the specs of a direction, in the order of the folder, and the name of one as it is shown. A folder
// that is not there has none.
platform::Result<std::vector<std::filesystem::path>> specFiles(platform::Services& services, SpecDirection direction);
std::string specName(const std::filesystem::path& file);

inline constexpr std::string_view kSpecEnding = ".mcs";

} // namespace tallybook::convert
