// What programs of ours left behind when they were killed, or when the computer stopped.
#pragma once

#include <filesystem>
#include <string_view>

namespace tallybook::adapters {

// How long a left-over stays: it may be all that there is of a save.
inline constexpr int kDaysOfLeftOvers = 1;

// Removes unfinished files of saves from a folder: those whose name says so, of this user, unchanged for longer than
// a day, and that no living program holds. What cannot be removed stays.
void sweepFiles(const std::filesystem::path& folder);

// The same for folders of TemporaryFolder, which begin with `stem`, with all that is in them.
void sweepTemporaryFolders(const std::filesystem::path& parent, std::string_view stem);

// Marks an open file or folder as held by this program, until it is closed or the program ends.
void holdAsOwner(int descriptor);

} // namespace tallybook::adapters
