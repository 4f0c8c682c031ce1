#include "adapters/PngFile.h"

#include "core/forms/ImageError.h"

#include <png.h>

namespace tallybook::adapters {

namespace {

using forms::imageError;
using forms::ImageError;
using platform::Bytes;
using platform::Result;

constexpr std::size_t kChannels = 4;
// Pixels of a picture that is read; what no cell could hold has more.
constexpr std::size_t kMostPixels = std::size_t{4096} * 4096;

// libpng's picture, which has to be freed.
struct Picture {
    png_image image{};

    Picture() { image.version = PNG_IMAGE_VERSION; }
    ~Picture() { png_image_free(&image); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
};

Bytes paletteOf(const forms::Bitmap& bitmap) {
    Bytes map;
    for (std::size_t i = 0; i < bitmap.palette.size(); ++i) {
        const model::Colour& colour = bitmap.palette[i];
        const bool clear = bitmap.clear && *bitmap.clear == i;
        for (const std::uint8_t part :
             {colour.red, colour.green, colour.blue, static_cast<std::uint8_t>(clear ? 0 : 255)})
            map.push_back(part);
    }
    return map;
}

Bytes indicesOf(const forms::Bitmap& bitmap) {
    Bytes indices;
    indices.reserve(static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.height));
    for (int y = 0; y < bitmap.height; ++y)
        for (int x = 0; x < bitmap.width; ++x)
            indices.push_back(bitmap.pixel(x, y));
    return indices;
}

} // namespace

Result<Bytes> writePng(const forms::Bitmap& bitmap) {
    Picture picture;
    picture.image.width = static_cast<png_uint_32>(bitmap.width);
    picture.image.height = static_cast<png_uint_32>(bitmap.height);
    picture.image.format = PNG_FORMAT_RGBA_COLORMAP;
    picture.image.colormap_entries = static_cast<png_uint_32>(bitmap.palette.size());
    const Bytes map = paletteOf(bitmap);
    const Bytes indices = indicesOf(bitmap);
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(picture.image);
    Bytes bytes(size);
    if (png_image_write_to_memory(&picture.image, bytes.data(), &size, 0, indices.data(), 0, map.data()) == 0)
        return imageError(ImageError::OutOfMemory);
    bytes.resize(size);
    return bytes;
}

Result<forms::TrueColours> readPng(platform::ByteSpan bytes) {
    Picture picture;
    if (png_image_begin_read_from_memory(&picture.image, bytes.data(), bytes.size()) == 0)
        return imageError(ImageError::BadBitmapFile);
    const std::size_t pixels = std::size_t{picture.image.width} * picture.image.height;
    if (pixels > kMostPixels || picture.image.width > forms::kMostPixels || picture.image.height > forms::kMostPixels)
        return imageError(ImageError::DimensionTooLarge);
    picture.image.format = PNG_FORMAT_RGBA;
    Bytes rgba(pixels * kChannels);
    if (png_image_finish_read(&picture.image, nullptr, rgba.data(), 0, nullptr) == 0)
        return imageError(ImageError::BadBitmapFile);
    forms::TrueColours colours{.width = static_cast<int>(picture.image.width),
                               .height = static_cast<int>(picture.image.height),
                               .pixels = {}};
    colours.pixels.reserve(pixels);
    const auto onWhite = [](unsigned part, unsigned ink) {
        return static_cast<std::uint8_t>((part * ink + 255 * (255 - ink) + 127) / 255);
    };
    for (std::size_t at = 0; at < rgba.size(); at += kChannels) {
        const unsigned ink = rgba[at + 3];
        colours.pixels.push_back({onWhite(rgba[at], ink), onWhite(rgba[at + 1], ink), onWhite(rgba[at + 2], ink)});
    }
    return colours;
}

} // namespace tallybook::adapters
