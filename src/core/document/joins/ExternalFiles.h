// Where the other database of a join lies, and how many records it has.
#pragma once

#include "core/platform/Files.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::document {

// Whether a name without a prefix may stand for a file of the older format when there is none of the present one.
enum class OlderFiles { No, Yes };

// The name of the other database's file as messages show it: with ".pdb", its blanks as underscores, and the prefix
// of the present format when it has none.
std::string externalFileName(std::string_view source);

// The file that a source names, in the folder of the open database and nowhere else: nothing for a source that holds
// a path, or when there is no regular file of the name. Letter case does not count; the name with its blanks serves
// where the one with underscores is not there.
std::optional<std::filesystem::path> findExternalFile(platform::Files& files, const std::filesystem::path& folder,
                                                      std::string_view source, OlderFiles older);

inline constexpr int kInvalidDatabase = -100;

// Data records of the other database, of either format: 0 when it is missing, kInvalidDatabase when its header cannot
// be read. Reads the header and the record list alone.
int getNumberRecs(platform::Files& files, const std::filesystem::path& folder, std::string_view source);

// The same for a file.
int numberOfRecords(platform::Files& files, const std::filesystem::path& file);

} // namespace tallybook::document
