// Paths as the program meets them: shown in messages, and looked up in folders where case may differ.
#pragma once

#include "core/platform/Files.h"

#include <filesystem>
#include <string>

namespace tallybook::platform {

// How a path reads in a message, Windows-1252 with best fit. Never to be opened.
std::string shownPath(const std::filesystem::path& path);

// A file name in the form that names of equal letters share, whatever their case. Pairs are those of the letters
// of Windows-1252; the name is UTF-8, other bytes stay as they are.
std::string foldedName(const std::string& name);

// The file or folder of this path: the path itself when it exists; else that of its folder whose name differs in
// case alone, the first in byte order when there are several; else the path itself.
std::filesystem::path findIgnoringCase(Files& files, const std::filesystem::path& path);

} // namespace tallybook::platform
