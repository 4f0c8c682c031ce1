// The formats in which a typed time is taken as it stands.
#pragma once

#include "core/platform/Services.h"

#include <string_view>

namespace tallybook::document {

// True when the text reads as a time and comes back the same, letter case aside, through "hh:mm:ss",
// "h:mm:ss AM/PM" or "hh:mm:ss AM/PM".
bool readsBackAsTime(std::string_view text, platform::Services& services);

} // namespace tallybook::document
