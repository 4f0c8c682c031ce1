// A file as JSON that carries its every byte; docs/commands.md says how.
#pragma once

#include "core/platform/Files.h"

#include <iosfwd>
#include <string>

namespace tallybook::cli {

// Takes any bytes. The name, in UTF-8, is only repeated.
void writeDump(platform::ByteSpan file, const std::string& name, std::ostream& out);

} // namespace tallybook::cli
