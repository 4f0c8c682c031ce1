// The user's regional settings as the core wants them.
#pragma once

#include "core/platform/Regional.h"

class QLocale;

namespace tallybook::desktop {

// Short dates with four-digit years and digits alone, long times with ":" between and no zone; texts in
// Windows-1252, the English ones where a character has no byte. A pattern that the core cannot read back gives the
// default of US English.
platform::Regional regionalFrom(const QLocale& locale);

} // namespace tallybook::desktop
