// Names of databases on the disk and in the header.
#pragma once

#include <string>
#include <string_view>

namespace tallybook::pdb {

inline constexpr std::string_view kPrefix2x = "MS2_";
inline constexpr std::string_view kPrefix1x = "MSA_";
inline constexpr std::string_view kExtension = ".pdb";

// Blanks become "_" from the first "MSA_", else the first "MS2_", else the first character, to the end.
std::string addUnderscore20(std::string_view path);

// "_" becomes a blank behind the first "MS2_", else "MSA_".
std::string RemoveUnderscore(std::string_view name);

// The prefix anywhere in the name, without regard to case.
bool has2xPrefix(std::string_view name);
bool has1xPrefix(std::string_view name);

// What a field slot without a name is called: "Fld01" to "Fld80".
std::string freeFieldName(int slot);

// The name of a database with the prefix of the older format changed to the present one's.
std::string presentName(std::string_view name);

// The name for the header: `dbName` with the prefix put in front when it is missing, or the file's stem when it is
// empty; 31 bytes at most.
std::string headerName(std::string_view dbName, std::string_view fileStem);

} // namespace tallybook::pdb
