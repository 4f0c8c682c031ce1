// Pictures in files of BMP or PNG, by the name's end.
#pragma once

#include "core/forms/Bitmap.h"
#include "core/platform/Files.h"

#include <filesystem>

namespace tallybook::cli {

// Reads a picture of at most 256 colours, in any case of its ending. Errors are those of forms::ImageError; a file
// with another ending is a bad one.
platform::Result<forms::Bitmap> readPicture(platform::Files& files, const std::filesystem::path& path);

platform::Status writePicture(platform::Files& files, const std::filesystem::path& path, const forms::Bitmap& bitmap);

} // namespace tallybook::cli
