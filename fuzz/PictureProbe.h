// What must hold of any bytes that are taken for a picture.
#pragma once

#include "core/platform/Files.h"

#include <string>

namespace tallybook::fuzz {

// Reads the bytes as one form of a picture, writes what was read in both forms and reads it again: each pixel keeps
// its colour, as far as a cell has room for it. Gives what is wrong, or nothing.
std::string probePalmBitmap(platform::ByteSpan input);
std::string probeBmp(platform::ByteSpan input);

} // namespace tallybook::fuzz
