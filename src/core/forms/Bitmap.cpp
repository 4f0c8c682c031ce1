#include "core/forms/Bitmap.h"

#include <algorithm>

namespace tallybook::forms {

namespace {

constexpr int kByteBits = 8;

// Where a pixel lies in its byte: how far it is from the low end.
int shiftOf(int x, int depth) {
    const int perByte = kByteBits / depth;
    return (perByte - 1 - x % perByte) * depth;
}

std::size_t byteOf(int x, int depth) {
    return static_cast<std::size_t>(x) * static_cast<std::size_t>(depth) / kByteBits;
}

} // namespace

std::uint8_t Bitmap::pixel(int x, int y) const {
    const int mask = (1 << depth) - 1;
    return static_cast<std::uint8_t>(row(y)[byteOf(x, depth)] >> shiftOf(x, depth) & mask);
}

void Bitmap::setPixel(int x, int y, std::uint8_t index) {
    const int shift = shiftOf(x, depth);
    const int mask = ((1 << depth) - 1) << shift;
    std::uint8_t& byte = row(y)[byteOf(x, depth)];
    byte = static_cast<std::uint8_t>((byte & ~mask) | (index << shift & mask));
}

Bitmap blankBitmap(int width, int height, int depth) {
    Bitmap bitmap{.width = width, .height = height, .depth = depth, .palette = {}, .rows = {}};
    bitmap.rows.resize(bitmap.rowBytes() * static_cast<std::size_t>(height));
    return bitmap;
}

int highestIndex(const Bitmap& bitmap) {
    int highest = 0;
    for (int y = 0; y < bitmap.height; ++y) {
        if (bitmap.depth == kByteBits)
            highest = std::max<int>(highest, *std::max_element(bitmap.row(y), bitmap.row(y) + bitmap.width));
        for (int x = 0; bitmap.depth != kByteBits && x < bitmap.width; ++x)
            highest = std::max<int>(highest, bitmap.pixel(x, y));
    }
    return highest;
}

void clearPadding(Bitmap& bitmap) {
    const std::size_t bits = static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.depth);
    const std::size_t whole = bits / kByteBits;
    const auto kept = static_cast<std::uint8_t>(0xFF00 >> bits % kByteBits);
    for (int y = 0; y < bitmap.height; ++y) {
        std::uint8_t* row = bitmap.row(y);
        std::size_t at = whole;
        if (bits % kByteBits != 0)
            row[at++] &= kept;
        std::fill(row + at, row + bitmap.rowBytes(), std::uint8_t{0});
    }
}

} // namespace tallybook::forms
