// The user's trash as desktops keep it (freedesktop.org Trash specification 1.0).
#pragma once

#include "core/platform/Result.h"

#include <filesystem>

namespace tallybook::adapters {

// Moves a file, or a link itself, to the trash from where desktops restore it: into `dataHome`/Trash, or for a file
// on another volume into that volume's own trash. Folders that are missing are made, mode 0700. An error leaves the
// file where it is.
platform::Status moveToTrash(const std::filesystem::path& path, const std::filesystem::path& dataHome);

} // namespace tallybook::adapters
