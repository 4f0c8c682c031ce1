// Where a path leads: whether it stays where it says it is, and whether two lead to the same place.
#pragma once

#include "core/platform/Files.h"

namespace tallybook::platform {

// Good when the file of this path lies in the folder of this path, or would when it is made. An error when the path's
// last name is a link to somewhere else. Links on the way to the folder are the user's own arrangement.
Status staysInFolder(Files& files, const std::filesystem::path& path);

// True when both lead to the same file or folder, through whatever links and spellings. A place that is not there is
// the same as one of the same path alone.
bool isSamePlace(Files& files, const std::filesystem::path& a, const std::filesystem::path& b);

} // namespace tallybook::platform
