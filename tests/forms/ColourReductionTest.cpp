#include "core/forms/ColourReduction.h"

#include "forms/Pictures.h"

#include <gtest/gtest.h>
#include <set>

namespace tallybook::forms {
namespace {

using model::Colour;
using test::coloursOf;

TrueColours ramp(int width, int height) {
    TrueColours picture{.width = width, .height = height, .pixels = {}};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const auto grey = static_cast<std::uint8_t>(x * 255 / (width - 1));
            picture.pixels.push_back({grey, grey, grey});
        }
    return picture;
}

TEST(ColourReduction, fewColoursAreKept) {
    const TrueColours picture{.width = 3, .height = 1, .pixels = {{255, 0, 0}, {0, 0, 255}, {255, 0, 0}}};
    for (const int depth : {4, 8})
        EXPECT_EQ(coloursOf(reduceColours(picture, depth, Dithering::On), 0), "FF0000 0000FF FF0000");
}

TEST(ColourReduction, oneBitIsBlackOrWhite) {
    const TrueColours picture{.width = 2, .height = 1, .pixels = {{40, 40, 40}, {220, 220, 220}}};
    EXPECT_EQ(coloursOf(reduceColours(picture, 1, Dithering::Off), 0), "000000 FFFFFF");
}

TEST(ColourReduction, paletteHasNoMoreColoursThanTheDepth) {
    EXPECT_EQ(reduceColours(ramp(256, 1), 4, Dithering::Off).palette.size(), 16u);
    EXPECT_EQ(reduceColours(ramp(256, 2), 8, Dithering::Off).palette.size(), 256u);
}

// Half grey becomes as many black pixels as white ones.
TEST(ColourReduction, ditheringKeepsTheBrightness) {
    TrueColours grey{.width = 40, .height = 40, .pixels = std::vector<Colour>(1600, Colour{128, 128, 128})};
    const Bitmap bitmap = reduceColours(grey, 1, Dithering::On);
    int white = 0;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
            white += bitmap.colourAt(x, y).red == 255 ? 1 : 0;
    EXPECT_NEAR(white, 800, 40);
    const Bitmap plain = reduceColours(grey, 1, Dithering::Off);
    EXPECT_EQ(plain.colourAt(0, 0), plain.colourAt(39, 39));
}

// Each grey is at most half a cut away from its own: 256 greys in 16 cuts.
TEST(ColourReduction, coloursStayNear) {
    const TrueColours picture = ramp(256, 1);
    const Bitmap bitmap = reduceColours(picture, 4, Dithering::Off);
    for (int x = 0; x < 256; ++x)
        EXPECT_NEAR(bitmap.colourAt(x, 0).red, x, 16) << x;
}

TEST(ColourReduction, colourOfEveryPixel) {
    const Bitmap bitmap = test::drawn(1, {{1, 2, 3}, {4, 5, 6}}, {"01", "10"});
    const TrueColours picture = trueColours(bitmap);
    EXPECT_EQ(picture.pixels, (std::vector<Colour>{{1, 2, 3}, {4, 5, 6}, {4, 5, 6}, {1, 2, 3}}));
}

} // namespace
} // namespace tallybook::forms
