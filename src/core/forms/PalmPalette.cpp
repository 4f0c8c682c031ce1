#include "core/forms/PalmPalette.h"

#include <array>

namespace tallybook::forms {

namespace {

using model::Colour;

constexpr std::array<std::uint8_t, 6> kSteps = {255, 204, 153, 102, 51, 0};
constexpr std::array<std::uint8_t, 10> kGreys = {0x11, 0x22, 0x44, 0x55, 0x77, 0x88, 0xAA, 0xBB, 0xDD, 0xEE};
constexpr std::array<Colour, 5> kDark = {
    {{0xC0, 0xC0, 0xC0}, {0x80, 0, 0}, {0x80, 0, 0x80}, {0, 0x80, 0}, {0, 0x80, 0x80}}};
constexpr std::size_t kCube = 215; // the 216th colour, black, stands at the end
constexpr std::size_t kHalf = 108; // the cube is stored in two halves

// The cube of six steps each: the first half has the three brightest blues, the second the others.
Colour cubeColour(std::size_t index) {
    const std::size_t place = index % kHalf;
    return {kSteps[place / 18], kSteps[place % 6], kSteps[3 * (index / kHalf) + place % 18 / 6]};
}

Colour systemColour(std::size_t index) {
    if (index < kCube)
        return cubeColour(index);
    std::size_t place = index - kCube;
    if (place < kGreys.size())
        return {kGreys[place], kGreys[place], kGreys[place]};
    place -= kGreys.size();
    return place < kDark.size() ? kDark[place] : Colour{};
}

} // namespace

std::vector<Colour> systemPalette(int depth) {
    const std::size_t count = std::size_t{1} << depth;
    std::vector<Colour> palette;
    palette.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        const auto grey = static_cast<std::uint8_t>(255 - 255 * index / (count - 1));
        palette.push_back(depth == 8 ? systemColour(index) : Colour{grey, grey, grey});
    }
    return palette;
}

} // namespace tallybook::forms
