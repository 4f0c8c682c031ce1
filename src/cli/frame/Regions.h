// The regional settings that the command can be told to use.
#pragma once

#include "core/platform/Regional.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tallybook::cli {

// What a script prints must not depend on the machine it runs on, so the system's own settings are never asked:
// US English holds unless the option says otherwise. Names: "us", "uk", "de", "se".
std::optional<platform::Regional> regionNamed(std::string_view name);

std::vector<std::string_view> regionNames();

} // namespace tallybook::cli
