#include "core/forms/ImageError.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace tallybook::forms {

namespace {

constexpr std::array<std::pair<ImageError, std::string_view>, 11> kTexts = {{
    {ImageError::FileNotFound, "File not found"},
    {ImageError::PathNotFound, "Path not found"},
    {ImageError::TooManyOpenFiles, "Too many files open"},
    {ImageError::AccessDenied, "Access denied"},
    {ImageError::OutOfMemory, "Out of memory"},
    {ImageError::DimensionTooLarge, "Dimension too large"},
    {ImageError::InvalidData, "Invalid data"},
    {ImageError::InvalidBitDepth,
     "Invalid Bit Depth. Bitmap must be either black and white, 16 colors, or 256 colors."},
    {ImageError::BadBitmapFile, "Bad bitmap file"},
    {ImageError::NoSuchFile, "File not found"},
    {ImageError::FileCreateFailed, "File create failed"},
}};

bool is(const platform::Error& error, std::errc number) {
    return error.number == static_cast<int>(number);
}

} // namespace

std::string_view imageErrorText(int code) {
    const auto found = std::find_if(kTexts.begin(), kTexts.end(),
                                    [code](const auto& entry) { return static_cast<int>(entry.first) == code; });
    return found == kTexts.end() ? "Unknown error!" : found->second;
}

std::string imageErrorMessage(int code) {
    return "Image conversion failed with following error: " + std::string(imageErrorText(code));
}

platform::Error imageError(ImageError code) {
    const int number = static_cast<int>(code);
    return {.kind = platform::ErrorKind::Format,
            .tag = "Form Image",
            .text = std::string(imageErrorText(number)),
            .number = number};
}

ImageError codeOfReading(const platform::Error& error) {
    if (is(error, std::errc::no_such_file_or_directory))
        return ImageError::FileNotFound;
    if (is(error, std::errc::not_a_directory))
        return ImageError::PathNotFound;
    if (is(error, std::errc::too_many_files_open) || is(error, std::errc::too_many_files_open_in_system))
        return ImageError::TooManyOpenFiles;
    if (is(error, std::errc::not_enough_memory))
        return ImageError::OutOfMemory;
    return ImageError::AccessDenied;
}

ImageError codeOfMaking(const platform::Error& error) {
    if (is(error, std::errc::no_such_file_or_directory) || is(error, std::errc::not_a_directory))
        return ImageError::PathNotFound;
    if (is(error, std::errc::permission_denied))
        return ImageError::AccessDenied;
    if (is(error, std::errc::too_many_files_open) || is(error, std::errc::too_many_files_open_in_system))
        return ImageError::TooManyOpenFiles;
    return ImageError::FileCreateFailed;
}

} // namespace tallybook::forms
