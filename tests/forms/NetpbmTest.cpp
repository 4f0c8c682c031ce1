// Pictures that netpbm wrote are read, and it reads those that we write. Debian's package netpbm belongs to the
// tests.
#include "core/forms/Bmp.h"
#include "core/forms/PalmBitmap.h"
#include "core/forms/PalmPalette.h"
#include "forms/Pictures.h"
#include "support/TempFolder.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace tallybook::forms {
namespace {

using model::Colour;
using platform::Bytes;
using test::coloursOf;

struct Size {
    int width;
    int height;
};
constexpr std::array<Size, 6> kSizes = {{{1, 1}, {159, 3}, {16, 16}, {7, 5}, {160, 160}, {33, 2}}};

// A picture with all 2^depth colours: greys from black to white, or colours.
Bitmap sampleOf(Size size, int depth, bool coloured) {
    Bitmap bitmap = blankBitmap(size.width, size.height, depth);
    const int colours = 1 << depth;
    for (int i = 0; i < colours; ++i) {
        const auto grey = static_cast<std::uint8_t>(i * 255 / (colours - 1));
        const auto steps = static_cast<std::uint8_t>(i * 83);
        bitmap.palette.push_back(coloured ? Colour{grey, steps, static_cast<std::uint8_t>(255 - grey)}
                                          : Colour{grey, grey, grey});
    }
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            bitmap.setPixel(x, y, static_cast<std::uint8_t>((x / 3 + y * y) % colours));
    return bitmap;
}

class Netpbm : public ::testing::Test {
protected:
    std::string path(const char* name) const { return (m_folder.path() / name).string(); }

    void SetUp() override {
        ASSERT_EQ(std::system("command -v pnmtopalm palmtopnm bmptopnm ppmtobmp >/dev/null"), 0)
            << "netpbm is not installed: tools/setup test";
    }

    // Runs a filter from one file of the folder to another.
    void run(const std::string& filter, const char* from, const char* to) {
        const std::string command = filter + " < " + path(from) + " > " + path(to) + " 2> " + path("errors");
        ASSERT_EQ(std::system(command.c_str()), 0) << command << '\n' << text(path("errors"));
    }

    void put(const char* name, const Bytes& bytes) {
        std::ofstream(path(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    Bytes get(const char* name) {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static std::string text(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void putPpm(const char* name, const Bitmap& bitmap) {
        std::ofstream file(path(name), std::ios::binary);
        file << "P6\n" << bitmap.width << ' ' << bitmap.height << "\n255\n";
        for (int y = 0; y < bitmap.height; ++y)
            for (int x = 0; x < bitmap.width; ++x) {
                const Colour colour = bitmap.colourAt(x, y);
                for (const std::uint8_t part : {colour.red, colour.green, colour.blue})
                    file.put(static_cast<char>(part));
            }
    }

    // A number of a plain picture: a single digit in one of black and white, whose 1 is black.
    static int sampleIn(std::istream& in, char kind, int maximum) {
        if (kind == '1') {
            char digit = 0;
            in >> digit;
            return digit == '1' ? 0 : 255;
        }
        int value = 0;
        in >> value;
        return value * 255 / maximum;
    }

    // The same picture in netpbm's own plain form: "P3 width height maximum" and three numbers a pixel, one in "P2",
    // and a digit without a maximum in "P1".
    void expectSame(const char* name, const Bitmap& bitmap) {
        run("pnmtoplainpnm", name, "plain");
        std::istringstream in(text(path("plain")));
        std::string magic;
        int width = 0;
        int height = 0;
        int maximum = 1;
        in >> magic >> width >> height;
        ASSERT_EQ(magic.size(), 2u);
        if (magic[1] != '1')
            in >> maximum;
        ASSERT_EQ(width, bitmap.width);
        ASSERT_EQ(height, bitmap.height);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const int red = sampleIn(in, magic[1], maximum);
                const int green = magic == "P3" ? sampleIn(in, '3', maximum) : red;
                const int blue = magic == "P3" ? sampleIn(in, '3', maximum) : red;
                const Colour colour = bitmap.colourAt(x, y);
                ASSERT_EQ((std::array{red, green, blue}), (std::array<int, 3>{colour.red, colour.green, colour.blue}))
                    << x << ',' << y;
            }
    }

    void expectSame(const Bitmap& have, const Bitmap& expected) {
        ASSERT_EQ(have.width, expected.width);
        ASSERT_EQ(have.height, expected.height);
        for (int y = 0; y < have.height; ++y)
            ASSERT_EQ(coloursOf(have, y), coloursOf(expected, y)) << y;
    }

    test::TempFolder m_folder;
};

TEST_F(Netpbm, readsOurBitmapsForTheHandheld) {
    for (const Size size : kSizes)
        for (const int depth : {1, 4, 8})
            for (const bool coloured : {false, true}) {
                SCOPED_TRACE(std::to_string(size.width) + " wide, depth " + std::to_string(depth) +
                             (coloured ? ", coloured" : ""));
                const Bitmap bitmap = sampleOf(size, depth, coloured);
                const auto bytes = writePalmBitmap(bitmap);
                ASSERT_TRUE(bytes.ok());
                put("palm", bytes.value());
                run("palmtopnm", "palm", "pnm");
                expectSame("pnm", bitmap);
            }
}

constexpr std::array kPackings = {"", "-rle_compression", "-scanline_compression", "-packbits_compression"};

TEST_F(Netpbm, writesGreysForTheHandheldThatWeRead) {
    for (const Size size : kSizes)
        for (const int depth : {1, 2, 4})
            for (const char* packing : kPackings) {
                SCOPED_TRACE(std::to_string(size.width) + " wide, depth " + std::to_string(depth) + ' ' + packing);
                const Bitmap bitmap = sampleOf(size, depth == 2 ? 1 : depth, false);
                putPpm("ppm", bitmap);
                run("ppmtopgm", "ppm", "pgm");
                run("pnmtopalm -depth=" + std::to_string(depth) + ' ' + packing, "pgm", "palm");
                const auto read = readPalmBitmap(get("palm"));
                ASSERT_TRUE(read.ok()) << read.error().text;
                ASSERT_NO_FATAL_FAILURE(expectSame(read.value(), bitmap));
            }
}

// With a table of the picture's colours, and in those of the system without one.
TEST_F(Netpbm, writesColoursForTheHandheldThatWeRead) {
    for (const Size size : kSizes)
        for (const char* packing : kPackings)
            for (const bool table : {true, false}) {
                SCOPED_TRACE(std::to_string(size.width) + " wide " + packing + (table ? ", table" : ""));
                Bitmap bitmap = sampleOf(size, 8, true);
                if (!table)
                    bitmap.palette = systemPalette(8);
                putPpm("ppm", bitmap);
                run(std::string("pnmtopalm -depth=8 ") + (table ? "-colormap " : "") + packing, "ppm", "palm");
                const auto read = readPalmBitmap(get("palm"));
                ASSERT_TRUE(read.ok()) << read.error().text;
                ASSERT_NO_FATAL_FAILURE(expectSame(read.value(), bitmap));
            }
}

TEST_F(Netpbm, readsOurWindowsBitmaps) {
    for (const Size size : kSizes)
        for (const int depth : {1, 4, 8}) {
            SCOPED_TRACE(std::to_string(size.width) + " wide, depth " + std::to_string(depth));
            const Bitmap bitmap = sampleOf(size, depth, true);
            put("bmp", writeBmp(bitmap));
            run("bmptopnm", "bmp", "pnm");
            expectSame("pnm", bitmap);
        }
}

TEST_F(Netpbm, writesWindowsBitmapsThatWeRead) {
    for (const Size size : kSizes)
        for (const int depth : {1, 4, 8}) {
            SCOPED_TRACE(std::to_string(size.width) + " wide, depth " + std::to_string(depth));
            const Bitmap bitmap = sampleOf(size, depth, true);
            putPpm("ppm", bitmap);
            run("ppmtobmp -windows -bpp=" + std::to_string(depth), "ppm", "bmp");
            const auto read = readBmp(get("bmp"));
            ASSERT_TRUE(read.ok()) << read.error().text;
            expectSame(read.value(), bitmap);
        }
}

} // namespace
} // namespace tallybook::forms
