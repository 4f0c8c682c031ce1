// Why a file that was named cannot be opened, before anybody tries.
#pragma once

#include <filesystem>
#include <string>

namespace tallybook::cli {

// A sentence when the file is not there, is no file or may not be read; empty otherwise. UTF-8.
std::string faultOfAccess(const std::filesystem::path& file);

// The same of a Tallybook: a sentence also when its name lacks the prefix that tells its format. A name
// with blanks stands for the one with underscores too.
std::string faultOfFile(const std::filesystem::path& file);

} // namespace tallybook::cli
