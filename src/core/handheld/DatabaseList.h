// The databases in a user's folder.
#pragma once

#include "core/platform/Clock.h"
#include "core/platform/Files.h"
#include "core/platform/Regional.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::handheld {

inline constexpr std::string_view kNewDatabaseEntry = "** New database **";

enum class NewEntry { Without, With };

// An entry of a choice of databases.
struct DatabaseEntry {
    std::string name;           // as shown, Windows-1252
    std::filesystem::path file; // its name in the folder; empty for a new database

    bool operator==(const DatabaseEntry&) const = default;
};

// The format 2.x databases of a folder, sorted by name without regard to case; the entry for a new one stands first.
// An error when the folder cannot be listed.
platform::Result<std::vector<DatabaseEntry>> getDBList20(platform::Files& files, const std::filesystem::path& folder,
                                                         NewEntry withNew);

inline constexpr std::string_view kFormat1x = "1.x";
inline constexpr std::string_view kFormat2x = "2.0";

// A row of the Open dialog.
struct DatabaseRow {
    std::string name; // of the file's header, without its prefix; Windows-1252
    std::string_view format;
    int records = 0;
    std::int64_t modified = 0; // as FileState tells it
    std::filesystem::path file;

    bool operator==(const DatabaseRow&) const = default;
};

// The databases of a folder in both formats, sorted the same way. A file that is no database is left out.
platform::Result<std::vector<DatabaseRow>> getDBList(platform::Files& files, const std::filesystem::path& folder);

// How the moment of the last change is shown.
std::string lastModifiedText(const platform::LocalTime& time, const platform::Regional& regional);

} // namespace tallybook::handheld
