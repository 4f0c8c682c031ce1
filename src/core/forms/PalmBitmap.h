// The handheld's form of a picture. Numbers are big-endian.
//
//    0  width 2, height 2, bytes of a row 2, flags 2 (8000 packed, 4000 colour table, 2000 transparent,
//       1000 pointer to data, 0400 direct colour)
//    8  depth 1 (1, 2, 4, 8; 16 has direct colours), version 1 (0 to 3)
// versions 0 to 2:
//   10  next rendition in units of 4 bytes 2, transparent index 1, packing 1 (0 scanline, 1 runs, 2 PackBits), zeros
//   2
// version 3:
//   10  size of the header 1, pixel format 1, zero 1, packing 1, density 2, transparent value 4, next rendition 4
//
// then, by flags: a count of colours 2 and as many of index, red, green, blue; the size of the packed data with its
// own bytes 2 (version 3: 4); the rows, each a whole number of words.
#pragma once

#include "core/forms/Bitmap.h"
#include "core/platform/Result.h"

namespace tallybook::forms {

inline constexpr std::size_t kMostPalmBytes = 65534; // a cell's length is one more, and a word

// Reads the deepest rendition of the lowest density. Depth 2 becomes 4. Fails with the codes of ImageError: damaged
// data is InvalidData, direct colour InvalidBitDepth.
platform::Result<Bitmap> readPalmBitmap(platform::ByteSpan bytes);

// Writes version 2: packed in runs when that is shorter than the plain rows, one rendition, nothing transparent. A
// table of colours where the handheld's own do not serve. Fails with DimensionTooLarge when a cell cannot hold it.
platform::Result<platform::Bytes> writePalmBitmap(const Bitmap& bitmap);

// What a rendition is, for reports: of the one that readPalmBitmap takes.
struct PalmBitmapInfo {
    int width = 0;
    int height = 0;
    int depth = 0; // as stored
    int version = 0;
    int renditions = 1;
};
platform::Result<PalmBitmapInfo> describePalmBitmap(platform::ByteSpan bytes);

} // namespace tallybook::forms
