// What the system tells the rule of the program's folders.
#pragma once

#include "core/platform/AppFolders.h"

#include <filesystem>
#include <string>

namespace tallybook::adapters {

// The folder of the running executable, the user's home and the folders that the environment names. A home that
// the environment does not name is taken from the system's list of users.
platform::Surroundings surroundings();

// The folder of the user's data, of all programs.
std::filesystem::path dataFolder(const platform::Surroundings& surroundings);

// The name of the user's account; never empty.
std::string accountName();

} // namespace tallybook::adapters
