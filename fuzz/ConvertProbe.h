// The readers of conversions, tried with any bytes.
#pragma once

#include "core/platform/Files.h"

#include <string>

namespace tallybook::fuzz {

// A conversion spec: what was read and can be stored is read again as it was.
std::string probeSpecs(platform::ByteSpan input);

// A delimited text; the first byte chooses its separator and the size of the pieces that it comes in. It is read the
// same whatever the pieces are, and what is written of it is read again as it was.
std::string probeDelimited(platform::ByteSpan input);

// A delimited text brought into a database, new or with a field of every type; the first two bytes choose how. What
// was brought in is brought out, and that text back in gives the same text again.
std::string probeImport(platform::ByteSpan input);

} // namespace tallybook::fuzz
