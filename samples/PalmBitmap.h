// Small grey pictures in the handheld's bitmap format.
#pragma once

#include "core/platform/Files.h"

#include <span>
#include <string_view>

namespace tallybook::samples {

// A bitmap of 16 greys from rows of characters: a blank is white, then ".:-=+*#%@" get darker up to black. Rows
// have equal lengths. Big-endian, version 2, run-length encoded:
//
//   0  width 2, height 2, bytes of a row 2, flags 2 (8000: compressed)
//   8  depth 1, version 1, next depth 2, transparent index 1, compression 1 (1: runs), zeros 2
//  16  size of what follows with these two bytes 2; then for each row pairs of count and byte
platform::Bytes greyBitmap(std::span<const std::string_view> rows);

} // namespace tallybook::samples
