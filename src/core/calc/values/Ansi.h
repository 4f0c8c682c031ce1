// Windows-1252 and Unicode under the name that values know it by. It stands below them, since messages of the
// platform name paths.
#pragma once

#include "core/platform/Ansi.h"

namespace tallybook::calc {

namespace ansi = platform::ansi;

} // namespace tallybook::calc
