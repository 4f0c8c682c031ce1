#include "core/forms/ImageConverter.h"

#include "core/forms/Bmp.h"
#include "core/forms/ImageError.h"
#include "core/forms/PalmBitmap.h"
#include "core/platform/WholeFile.h"

namespace tallybook::forms {

namespace {

using platform::Bytes;
using platform::ByteSpan;
using platform::Files;
using platform::Result;
using platform::Status;
using Path = std::filesystem::path;

// Rows of the largest picture with what may stand around them.
constexpr std::uint64_t kMostFileBytes = kMostRowBytes + std::uint64_t{4} * 1024 * 1024;
constexpr std::size_t kHeadBytes = 4096; // enough to tell what is wrong with a larger file

ImageError codeOfMissing(Files& files, const Path& path) {
    const auto parent = files.state(path.parent_path());
    const bool isFolder = parent && parent.value().kind == platform::FileKind::Folder;
    return isFolder ? ImageError::FileNotFound : ImageError::PathNotFound;
}

// A bitmap file that is too large to be read is judged by its header: it may be none, or of true colour.
Result<Bitmap> readBitmapFile(Files& files, const Path& source) {
    const auto bytes = readPictureFile(files, source);
    if (!bytes)
        return bytes.error();
    const auto state = files.state(source);
    if (state && state.value().size > kMostFileBytes)
        return imageError(faultOfBmpHeader(bytes.value()).value_or(ImageError::DimensionTooLarge));
    return readBmp(bytes.value());
}

} // namespace

Result<Bytes> readPictureFile(Files& files, const Path& source) {
    const auto state = files.state(source);
    if (!state)
        return imageError(codeOfReading(state.error()));
    if (state.value().kind == platform::FileKind::Missing)
        return imageError(codeOfMissing(files, source));
    if (state.value().kind != platform::FileKind::Regular)
        return imageError(ImageError::AccessDenied);
    auto bytes = state.value().size > kMostFileBytes ? files.readPart(source, 0, kHeadBytes) : files.read(source);
    if (!bytes)
        return imageError(codeOfReading(bytes.error()));
    return bytes;
}

Status writePictureFile(Files& files, const Path& target, ByteSpan bytes) {
    const Status written = platform::writeWholeFile(files, target, bytes);
    return written ? Status() : Status(imageError(codeOfMaking(written.error())));
}

Status bitmapToHandheld(Files& files, const Path& source, const Path& target) {
    const auto bitmap = readBitmapFile(files, source);
    if (!bitmap)
        return bitmap.error();
    const auto bytes = writePalmBitmap(bitmap.value());
    return bytes ? writePictureFile(files, target, bytes.value()) : Status(bytes.error());
}

Status handheldToBitmap(Files& files, const Path& source, const Path& target) {
    const auto bytes = readPictureFile(files, source);
    if (!bytes)
        return bytes.error();
    const auto bitmap = readPalmBitmap(bytes.value());
    return bitmap ? writePictureFile(files, target, writeBmp(bitmap.value())) : Status(bitmap.error());
}

} // namespace tallybook::forms
