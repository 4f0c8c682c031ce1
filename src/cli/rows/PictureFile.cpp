#include "cli/rows/PictureFile.h"

#include "adapters/PngFile.h"
#include "core/calc/values/Text.h"
#include "core/forms/Bmp.h"
#include "core/forms/ColourReduction.h"
#include "core/forms/ImageConverter.h"
#include "core/forms/ImageError.h"

namespace tallybook::cli {

namespace {

using forms::imageError;
using forms::ImageError;
using platform::Result;
using platform::Status;

bool ends(const std::filesystem::path& path, std::string_view ending) {
    return calc::equalText(path.extension().string(), ending, calc::TextCase::Folded);
}

// The least depth that keeps every colour; a bitmap of more than 256 has none.
Result<forms::Bitmap> withoutLoss(const forms::TrueColours& picture) {
    for (const int depth : {1, 4, 8}) {
        forms::Bitmap bitmap = forms::reduceColours(picture, depth, forms::Dithering::Off);
        if (forms::trueColours(bitmap).pixels == picture.pixels)
            return bitmap;
    }
    return imageError(ImageError::InvalidBitDepth);
}

} // namespace

Result<forms::Bitmap> readPicture(platform::Files& files, const std::filesystem::path& path) {
    const auto bytes = forms::readPictureFile(files, path);
    if (!bytes)
        return bytes.error();
    if (ends(path, ".bmp"))
        return forms::readBmp(bytes.value());
    if (!ends(path, ".png"))
        return imageError(ImageError::BadBitmapFile);
    const auto picture = adapters::readPng(bytes.value());
    return picture ? withoutLoss(picture.value()) : Result<forms::Bitmap>(picture.error());
}

Status writePicture(platform::Files& files, const std::filesystem::path& path, const forms::Bitmap& bitmap) {
    if (!ends(path, ".png"))
        return forms::writePictureFile(files, path, forms::writeBmp(bitmap));
    const auto bytes = adapters::writePng(bitmap);
    return bytes ? forms::writePictureFile(files, path, bytes.value()) : Status(bytes.error());
}

} // namespace tallybook::cli
