// PNG pictures, by libpng.
#pragma once

#include "core/forms/Bitmap.h"
#include "core/forms/ColourReduction.h"
#include "core/platform/Result.h"

namespace tallybook::adapters {

// A picture of at most 256 colours; a transparent index has no ink.
platform::Result<platform::Bytes> writePng(const forms::Bitmap& bitmap);

// Any PNG, laid on white where it is transparent. Fails with the codes of forms::ImageError.
platform::Result<forms::TrueColours> readPng(platform::ByteSpan bytes);

} // namespace tallybook::adapters
