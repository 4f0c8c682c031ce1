// What can be wrong with a picture: the codes that its messages name.
#pragma once

#include "core/platform/Result.h"

#include <string>
#include <string_view>

namespace tallybook::forms {

enum class ImageError : int {
    FileNotFound = 2,
    PathNotFound = 3,
    TooManyOpenFiles = 4,
    AccessDenied = 5,
    OutOfMemory = 511,
    DimensionTooLarge = 514,
    InvalidData = 515,
    InvalidBitDepth = 521,
    BadBitmapFile = 522,
    NoSuchFile = 523,
    FileCreateFailed = 524,
};

// The text of a code; "Unknown error!" for one that there is none for.
std::string_view imageErrorText(int code);

// The message of a conversion that failed.
std::string imageErrorMessage(int code);

// The error of a picture: its number is the code, its text the code's.
platform::Error imageError(ImageError code);

// The code for an error of the system about a file that was to be read, or to be made.
ImageError codeOfReading(const platform::Error& error);
ImageError codeOfMaking(const platform::Error& error);

} // namespace tallybook::forms
