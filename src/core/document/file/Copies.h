// The copies of the open file that the program keeps for itself.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <filesystem>

namespace tallybook::document {

inline constexpr int kOlderBackups = 5;

// Puts the bytes of `file` into the temporary copy, which pictures are copied from at the next save. When that
// fails, they are copied from the file itself: TempCopyPath names whichever is whole. A database without an Image
// field has no picture to copy; then, and without an application folder, nothing is written, and TempCopyPath names
// the file.
void renewTempCopy(model::Document& doc, platform::Services& services, const std::filesystem::path& file,
                   platform::ByteSpan bytes);

// Both kinds of copies are for their owner alone, and replace what lies in their place, links included.

// Refreshes the copy in Backup under the file's name. One of other content is kept beside it first, with the date
// and time of now in its name; the five latest of these stay. The copy that was there is untouched when anything
// fails.
platform::Status refreshBackup(platform::Services& services, const std::filesystem::path& file,
                               platform::ByteSpan bytes);

// The error of an operation on a file that there is not enough memory for.
platform::Error noMemory(const std::filesystem::path& path);

// What a file on the disk is now; unknown when there is no regular file. An error when it cannot be looked at.
platform::Result<model::FileMark> markOf(platform::Files& files, const std::filesystem::path& file);
model::FileMark markOf(const platform::FileState& state);

} // namespace tallybook::document
