// Pictures that tests draw with characters, and the sign language to compare them.
#pragma once

#include "core/forms/Bitmap.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::test {

inline constexpr model::Colour kWhite{255, 255, 255};
inline constexpr model::Colour kBlack{};

// Rows of hex digits (depth 1 and 4) or of pairs of them (depth 8): the indices of the pixels.
inline forms::Bitmap drawn(int depth, std::vector<model::Colour> palette,
                           std::initializer_list<std::string_view> rows) {
    const std::size_t digits = depth == 8 ? 2 : 1;
    const int width = static_cast<int>(rows.begin()->size() / digits);
    forms::Bitmap bitmap = forms::blankBitmap(width, static_cast<int>(rows.size()), depth);
    bitmap.palette = std::move(palette);
    int y = 0;
    for (const std::string_view row : rows) {
        for (int x = 0; x < width; ++x) {
            const std::string pixel(row.substr(static_cast<std::size_t>(x) * digits, digits));
            bitmap.setPixel(x, y, static_cast<std::uint8_t>(std::stoul(pixel, nullptr, 16)));
        }
        ++y;
    }
    return bitmap;
}

// The colours of a row as "FF0000 0000FF".
inline std::string coloursOf(const forms::Bitmap& bitmap, int y) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (int x = 0; x < bitmap.width; ++x) {
        const model::Colour colour = bitmap.colourAt(x, y);
        text += x == 0 ? "" : " ";
        for (const std::uint8_t part : {colour.red, colour.green, colour.blue}) {
            text += kDigits[part >> 4];
            text += kDigits[part & 15];
        }
    }
    return text;
}

// The indices of a row, a hex digit each (two for depth 8).
inline std::string indicesOf(const forms::Bitmap& bitmap, int y) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (int x = 0; x < bitmap.width; ++x) {
        const std::uint8_t index = bitmap.pixel(x, y);
        if (bitmap.depth == 8)
            text += kDigits[index >> 4];
        text += kDigits[index & 15];
    }
    return text;
}

} // namespace tallybook::test
