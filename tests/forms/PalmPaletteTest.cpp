#include "core/forms/PalmPalette.h"

#include <gtest/gtest.h>
#include <set>
#include <tuple>

namespace tallybook::forms {
namespace {

using model::Colour;

TEST(PalmPalette, greysGoFromWhiteToBlack) {
    const std::vector<Colour> two = {{255, 255, 255}, {0, 0, 0}};
    EXPECT_EQ(systemPalette(1), two);
    const std::vector<Colour> four = {{255, 255, 255}, {170, 170, 170}, {85, 85, 85}, {0, 0, 0}};
    EXPECT_EQ(systemPalette(2), four);
    const std::vector<Colour> sixteen = systemPalette(4);
    ASSERT_EQ(sixteen.size(), 16u);
    EXPECT_EQ(sixteen[0], (Colour{255, 255, 255}));
    EXPECT_EQ(sixteen[1], (Colour{238, 238, 238}));
    EXPECT_EQ(sixteen[15], (Colour{0, 0, 0}));
}

// By the rule of the cube: red V[q / 18], green V[q mod 6], blue V[3 * (i / 108) + (q mod 18) / 6], with q = i mod
// 108.
TEST(PalmPalette, coloursOfTheSystem) {
    const std::vector<Colour> palette = systemPalette(8);
    ASSERT_EQ(palette.size(), 256u);
    EXPECT_EQ(palette[0], (Colour{255, 255, 255}));
    EXPECT_EQ(palette[1], (Colour{255, 204, 255}));   // green one step down
    EXPECT_EQ(palette[6], (Colour{255, 255, 204}));   // blue one step down
    EXPECT_EQ(palette[18], (Colour{204, 255, 255}));  // red one step down
    EXPECT_EQ(palette[107], (Colour{0, 0, 153}));     // the last of the first half: V[5], V[5], V[2]
    EXPECT_EQ(palette[108], (Colour{255, 255, 102})); // the first of the second: V[0], V[0], V[3]
    EXPECT_EQ(palette[125], (Colour{255, 0, 0}));     // q 17: V[0], V[5], V[5]
    EXPECT_EQ(palette[214], (Colour{0, 51, 0}));      // q 106: V[5], V[4], V[5]
    EXPECT_EQ(palette[215], (Colour{0x11, 0x11, 0x11}));
    EXPECT_EQ(palette[224], (Colour{0xEE, 0xEE, 0xEE}));
    EXPECT_EQ(palette[225], (Colour{0xC0, 0xC0, 0xC0}));
    EXPECT_EQ(palette[226], (Colour{0x80, 0, 0}));
    EXPECT_EQ(palette[229], (Colour{0, 0x80, 0x80}));
    EXPECT_EQ(palette[230], (Colour{0, 0, 0}));
    EXPECT_EQ(palette[255], (Colour{0, 0, 0}));
}

TEST(PalmPalette, noColourStandsTwiceAheadOfTheBlackOnes) {
    const std::vector<Colour> palette = systemPalette(8);
    std::set<std::tuple<int, int, int>> seen;
    for (std::size_t i = 0; i < 230; ++i)
        EXPECT_TRUE(seen.insert({palette[i].red, palette[i].green, palette[i].blue}).second) << i;
}

} // namespace
} // namespace tallybook::forms
