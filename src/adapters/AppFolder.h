// What the system tells the rule of the program's folders.
#pragma once

#include "core/platform/AppFolders.h"

#include <filesystem>

namespace tallybook::adapters {

// The folder of the running executable, the user's home and the folders that the environment names. A home that
// the environment does not name is taken from the system's list of users.
platform::Surroundings surroundings();

} // namespace tallybook::adapters
