// Whether a path stays where it says it is.
#pragma once

#include "core/platform/Files.h"

namespace tallybook::platform {

// Good when the file of this path lies in the folder of this path, or would when it is made. An error when the path's
// last name is a link to somewhere else. Links on the way to the folder are the user's own arrangement.
Status staysInFolder(Files& files, const std::filesystem::path& path);

} // namespace tallybook::platform
