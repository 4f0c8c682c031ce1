// A picture of true colours as one of few.
#pragma once

#include "core/forms/Bitmap.h"

#include <span>
#include <vector>

namespace tallybook::forms {

// Pixels row by row from the top.
struct TrueColours {
    int width = 0;
    int height = 0;
    std::vector<model::Colour> pixels;
};

enum class Dithering : std::uint8_t { Off, On };

// A bitmap of depth 1 (black and white), 4 or 8. A picture that has no more colours than the depth holds keeps each
// of them; otherwise the palette is cut out of its colours, and dithering spreads what is lost over the neighbours.
// Sides are 1 to 65535 pixels, and the rows no longer than kMostRowBytes.
Bitmap reduceColours(const TrueColours& picture, int depth, Dithering dithering);

// A bitmap's colours, of every pixel.
TrueColours trueColours(const Bitmap& bitmap);

} // namespace tallybook::forms
