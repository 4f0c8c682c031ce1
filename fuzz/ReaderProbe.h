// One run of everything that reads a file, with what must hold of any bytes whatever.
#pragma once

#include "core/platform/Files.h"

#include <string>

namespace tallybook::fuzz {

struct ProbeResult {
    bool opened = false;
    std::string message;   // of a refusal, with its place
    std::string complaint; // what is not as it must be; empty when all is well
};

// Checks the fixed records, reads the structure alone, and opens the file whole. A file that opens must have as
// many rows as it says, must be buildable, and what was built must open again with the same records, fields, views
// and filters. A refusal must name its operation and its reason.
ProbeResult probeReader(platform::ByteSpan file);

// The same for files of format 1.x, whose expressions are calculated, too. What was built is a file of the present
// format.
ProbeResult probeOlder(platform::ByteSpan file);

} // namespace tallybook::fuzz
