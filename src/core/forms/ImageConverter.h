// The conversion of picture files: a Windows bitmap to the handheld's form, and back. Each file is read whole and
// written whole; no input makes a conversion take more than 64 MiB.
#pragma once

#include "core/platform/Files.h"

namespace tallybook::forms {

// Both fail with a code of ImageError as the error's number; then there is no new target, and an old one is as it
// was.
platform::Status bitmapToHandheld(platform::Files& files, const std::filesystem::path& source,
                                  const std::filesystem::path& target);
platform::Status handheldToBitmap(platform::Files& files, const std::filesystem::path& source,
                                  const std::filesystem::path& target);

// The bytes of a picture file as far as they can matter: of one that no cell could hold, the first of them.
platform::Result<platform::Bytes> readPictureFile(platform::Files& files, const std::filesystem::path& source);

// Writes a picture file whole.
platform::Status writePictureFile(platform::Files& files, const std::filesystem::path& target,
                                  platform::ByteSpan bytes);

} // namespace tallybook::forms
