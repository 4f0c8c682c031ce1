// A picture in memory, between its two forms on the disk.
#pragma once

#include "core/model/Definitions.h"
#include "core/platform/Files.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tallybook::forms {

// No picture has more bytes of rows: what a cell can hold unpacks to less than this.
inline constexpr std::size_t kMostRowBytes = std::size_t{8} * 1024 * 1024;
inline constexpr int kMostPixels = 65535; // of a side; a word holds them
inline constexpr int kScreenPixels = 160; // a side of the handheld's screen

// Pixels are indices into the palette, 1, 4 or 8 bits each, packed from the high bits of a byte; rows from the top,
// each filled up with zero bits to 4 bytes.
struct Bitmap {
    int width = 0;
    int height = 0;
    int depth = 1;                       // bits of a pixel
    std::vector<model::Colour> palette;  // at most 2^depth; every pixel's index lies in it
    std::optional<std::uint8_t> clear{}; // the index that has no ink
    platform::Bytes rows;

    std::size_t rowBytes() const { return rowBytesOf(width, depth); }
    std::uint8_t* row(int y) { return rows.data() + static_cast<std::size_t>(y) * rowBytes(); }
    const std::uint8_t* row(int y) const { return rows.data() + static_cast<std::size_t>(y) * rowBytes(); }
    std::uint8_t pixel(int x, int y) const;
    void setPixel(int x, int y, std::uint8_t index);
    model::Colour colourAt(int x, int y) const { return palette[pixel(x, y)]; }

    static constexpr std::size_t rowBytesOf(int width, int depth) {
        return (static_cast<std::size_t>(width) * static_cast<std::size_t>(depth) + 31) / 32 * 4;
    }
    bool operator==(const Bitmap&) const = default;
};

// A bitmap of index 0 everywhere with an empty palette.
Bitmap blankBitmap(int width, int height, int depth);

// The highest index that a pixel has; 0 for a bitmap of one colour at 0.
int highestIndex(const Bitmap& bitmap);

// Sets the bits behind the last pixel of each row to 0.
void clearPadding(Bitmap& bitmap);

// How bright a colour is, 0 to 255000.
constexpr int brightness(const model::Colour& colour) {
    return 299 * colour.red + 587 * colour.green + 114 * colour.blue;
}

} // namespace tallybook::forms
