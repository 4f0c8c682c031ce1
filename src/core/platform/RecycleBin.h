// Deleting a user's file so that it can be had back.
#pragma once

#include "core/platform/Services.h"

#include <filesystem>

namespace tallybook::platform {

// Moves a file to the recycle bin. Where that fails the user is asked, with No as the preset answer, whether it is to
// be deleted for good; a failure of that is shown. True when the file is gone.
bool MoveToRecycleBin(Services& services, const std::filesystem::path& path);

} // namespace tallybook::platform
