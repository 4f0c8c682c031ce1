// Windows bitmap files of 1, 4 or 8 bits a pixel. Numbers are little-endian.
//
//    0  "BM", size of the file 4, zeros 4, offset of the rows 4
//   14  size of the header 4 (40 and more), width 4, height 4 (negative: the top row first), planes 2, bits 2,
//       compression 4 (0 none, 1 runs of 8 bits, 2 runs of 4 bits), size of the rows 4, two resolutions 4 each,
//       colours used 4 (0: all that the bits allow), zeros 4
//       then the colours: blue, green, red, zero
#pragma once

#include "core/forms/Bitmap.h"
#include "core/forms/ImageError.h"
#include "core/platform/Result.h"

#include <optional>

namespace tallybook::forms {

// Fails with the codes of ImageError: true colour is InvalidBitDepth, a file that is cut or no bitmap BadBitmapFile,
// damaged runs and indices without a colour InvalidData, more than a cell could ever hold DimensionTooLarge.
platform::Result<Bitmap> readBmp(platform::ByteSpan bytes);

// What is wrong with the headers, of a file of which only the first bytes are there; nothing when they are sound.
std::optional<ImageError> faultOfBmpHeader(platform::ByteSpan bytes);

// A header of 40 bytes, all colours that the depth allows, plain rows from the bottom.
platform::Bytes writeBmp(const Bitmap& bitmap);

} // namespace tallybook::forms
