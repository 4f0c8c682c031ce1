#include "PictureProbe.h"

#include "core/forms/Bmp.h"
#include "core/forms/ImageError.h"
#include "core/forms/PalmBitmap.h"

namespace tallybook::fuzz {

namespace {

using forms::Bitmap;
using platform::Result;

bool sameColours(const Bitmap& a, const Bitmap& b) {
    if (a.width != b.width || a.height != b.height)
        return false;
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x)
            if (a.colourAt(x, y) != b.colourAt(x, y))
                return false;
    return true;
}

bool isKnown(int code) {
    return forms::imageErrorText(code) != forms::imageErrorText(0);
}

std::string complaintAbout(const Result<Bitmap>& read) {
    if (!read)
        return isKnown(read.error().number) ? "" : "a refusal without a code";
    const Bitmap& bitmap = read.value();
    constexpr int kMostCompared = 1 << 16; // larger pictures are read alone: the search is to go on
    if (std::int64_t{bitmap.width} * bitmap.height > kMostCompared)
        return "";
    const auto asBmp = forms::readBmp(forms::writeBmp(bitmap));
    if (!asBmp || !sameColours(asBmp.value(), bitmap))
        return "the Windows bitmap differs";
    const auto palm = forms::writePalmBitmap(bitmap);
    if (!palm)
        return palm.error().number == static_cast<int>(forms::ImageError::DimensionTooLarge) ? ""
                                                                                             : "it cannot be written";
    const auto again = forms::readPalmBitmap(palm.value());
    return again && sameColours(again.value(), bitmap) ? "" : "the handheld's bitmap differs";
}

} // namespace

std::string probePalmBitmap(platform::ByteSpan input) {
    return complaintAbout(forms::readPalmBitmap(input));
}

std::string probeBmp(platform::ByteSpan input) {
    return complaintAbout(forms::readBmp(input));
}

} // namespace tallybook::fuzz
