// The list of files opened last, newest first.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallybook::platform {
class Settings;
}

namespace tallybook::shell {

struct RecentFile {
    std::string name;   // UTF-8, as the settings keep it
    std::string folder; // without the separator at its end

    // The whole path, UTF-8.
    std::string path() const { return folder + '/' + name; }
    bool operator==(const RecentFile&) const = default;
};
using RecentList = std::vector<RecentFile>;

inline constexpr int kRecentFiles = 9;

// The list of the settings; empty for a count of 0. Entries that the settings do not hold are left out.
RecentList GetLatestList(const platform::Settings& settings);

// The path (UTF-8, whole) first, then the old entries in their order less any of the same folder and name (without
// regard to case), nine at most.
RecentList BuildUsableFileList(std::string_view path, const RecentList& list);

// Puts the list into the settings; their own save() stores it.
void SaveMRUListToRegistry(const RecentList& list, platform::Settings& settings);

// What the File menu shows: number from 1, a blank, folder and name.
std::vector<std::string> UpdateMenuList(const RecentList& list);

} // namespace tallybook::shell
