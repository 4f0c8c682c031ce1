#include "core/forms/ColourReduction.h"

#include <algorithm>
#include <array>
#include <map>

namespace tallybook::forms {

namespace {

using model::Colour;

std::uint32_t numberOf(const Colour& colour) {
    return std::uint32_t{colour.red} << 16 | std::uint32_t{colour.green} << 8 | colour.blue;
}

std::uint8_t partOf(const Colour& colour, int part) {
    return part == 0 ? colour.red : part == 1 ? colour.green : colour.blue;
}

// A colour and how many pixels have it.
struct Count {
    Colour colour;
    std::size_t pixels = 0;
};

std::vector<Count> countsOf(const TrueColours& picture) {
    std::map<std::uint32_t, Count> counts;
    for (const Colour& colour : picture.pixels) {
        Count& count = counts[numberOf(colour)];
        count.colour = colour;
        ++count.pixels;
    }
    std::vector<Count> all;
    for (const auto& [number, count] : counts)
        all.push_back(count);
    return all;
}

using Cut = std::span<Count>;

// The part of the colours that reaches farthest, and how far.
std::pair<int, int> widestPart(Cut cut) {
    std::pair<int, int> widest{0, -1};
    for (int part = 0; part < 3; ++part) {
        const auto [low, high] = std::minmax_element(cut.begin(), cut.end(), [part](const Count& a, const Count& b) {
            return partOf(a.colour, part) < partOf(b.colour, part);
        });
        const int reach = partOf(high->colour, part) - partOf(low->colour, part);
        if (reach > widest.second)
            widest = {part, reach};
    }
    return widest;
}

// Two halves with about as many pixels each, parted along the widest part.
std::pair<Cut, Cut> halves(Cut cut) {
    const int part = widestPart(cut).first;
    std::sort(cut.begin(), cut.end(),
              [part](const Count& a, const Count& b) { return partOf(a.colour, part) < partOf(b.colour, part); });
    std::size_t all = 0;
    for (const Count& count : cut)
        all += count.pixels;
    std::size_t taken = 0;
    std::size_t middle = 0;
    while (middle + 1 < cut.size() && (middle == 0 || taken + cut[middle].pixels <= all / 2))
        taken += cut[middle++].pixels;
    return {cut.first(middle), cut.subspan(middle)};
}

Colour meanOf(Cut cut) {
    std::array<std::size_t, 3> sums{};
    std::size_t pixels = 0;
    for (const Count& count : cut) {
        for (int part = 0; part < 3; ++part)
            sums[static_cast<std::size_t>(part)] += count.pixels * partOf(count.colour, part);
        pixels += count.pixels;
    }
    const auto mean = [&](std::size_t part) { return static_cast<std::uint8_t>((sums[part] + pixels / 2) / pixels); };
    return {mean(0), mean(1), mean(2)};
}

std::vector<Colour> cutPalette(std::vector<Count> counts, std::size_t colours) {
    std::vector<Cut> cuts{counts};
    while (cuts.size() < colours) {
        const auto widest = std::max_element(
            cuts.begin(), cuts.end(), [](Cut a, Cut b) { return widestPart(a).second < widestPart(b).second; });
        if (widest->size() < 2)
            break;
        const auto [low, high] = halves(*widest);
        *widest = low;
        cuts.push_back(high);
    }
    std::vector<Colour> palette;
    for (const Cut cut : cuts)
        palette.push_back(meanOf(cut));
    return palette;
}

std::vector<Colour> paletteFor(const TrueColours& picture, int depth) {
    if (depth == 1)
        return {{255, 255, 255}, {}};
    std::vector<Count> counts = countsOf(picture);
    const std::size_t colours = std::size_t{1} << depth;
    if (counts.size() > colours)
        return cutPalette(std::move(counts), colours);
    std::vector<Colour> palette;
    for (const Count& count : counts)
        palette.push_back(count.colour);
    return palette;
}

using Parts = std::array<int, 3>;

std::size_t nearest(const std::vector<Colour>& palette, const Parts& wanted) {
    std::size_t best = 0;
    int least = -1;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const int red = palette[i].red - wanted[0];
        const int green = palette[i].green - wanted[1];
        const int blue = palette[i].blue - wanted[2];
        const int far = 3 * red * red + 6 * green * green + blue * blue; // the eye sees green best
        if (least < 0 || far < least) {
            least = far;
            best = i;
        }
    }
    return best;
}

// Gives each pixel the colour nearest to it. With dithering, what it loses goes to the pixels behind and below, in
// sixteenths.
class Painter {
public:
    Painter(const TrueColours& picture, Bitmap& bitmap, Dithering dithering)
        : m_picture(picture), m_bitmap(bitmap), m_dithers(dithering == Dithering::On),
          m_here(static_cast<std::size_t>(picture.width) + 2), m_below(m_here.size()) {}

    void paint() {
        for (int y = 0; y < m_bitmap.height; ++y) {
            for (int x = 0; x < m_bitmap.width; ++x)
                paintPixel(x, y);
            m_here = m_below;
            std::fill(m_below.begin(), m_below.end(), Parts{});
        }
    }

private:
    void paintPixel(int x, int y) {
        const auto at =
            static_cast<std::size_t>(y) * static_cast<std::size_t>(m_picture.width) + static_cast<std::size_t>(x);
        const Colour& colour = m_picture.pixels[at];
        Parts wanted{colour.red, colour.green, colour.blue};
        const auto place = static_cast<std::size_t>(x) + 1;
        for (std::size_t part = 0; part < 3; ++part)
            wanted[part] = std::clamp(wanted[part] + m_here[place][part] / 16, 0, 255);
        const std::size_t index = nearest(m_bitmap.palette, wanted);
        m_bitmap.setPixel(x, y, static_cast<std::uint8_t>(index));
        if (m_dithers)
            spread(place, wanted, m_bitmap.palette[index]);
    }

    void spread(std::size_t place, const Parts& wanted, const Colour& taken) {
        const Parts got{taken.red, taken.green, taken.blue};
        for (std::size_t part = 0; part < 3; ++part) {
            const int lost = wanted[part] - got[part];
            m_here[place + 1][part] += lost * 7;
            m_below[place - 1][part] += lost * 3;
            m_below[place][part] += lost * 5;
            m_below[place + 1][part] += lost;
        }
    }

    const TrueColours& m_picture;
    Bitmap& m_bitmap;
    bool m_dithers;
    std::vector<Parts> m_here; // a place more at each end
    std::vector<Parts> m_below;
};

} // namespace

Bitmap reduceColours(const TrueColours& picture, int depth, Dithering dithering) {
    Bitmap bitmap = blankBitmap(picture.width, picture.height, depth);
    bitmap.palette = paletteFor(picture, depth);
    Painter(picture, bitmap, dithering).paint();
    return bitmap;
}

TrueColours trueColours(const Bitmap& bitmap) {
    TrueColours picture{.width = bitmap.width, .height = bitmap.height, .pixels = {}};
    picture.pixels.reserve(static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.height));
    for (int y = 0; y < bitmap.height; ++y)
        for (int x = 0; x < bitmap.width; ++x)
            picture.pixels.push_back(bitmap.colourAt(x, y));
    return picture;
}

} // namespace tallybook::forms
