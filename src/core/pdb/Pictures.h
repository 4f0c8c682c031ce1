// Where a save takes the bytes of pictures from: the temporary copy of the opened file for those that are unchanged,
// a file of its own for each new one.
#pragma once

#include "core/platform/Files.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

namespace tallybook::pdb {

// The temporary copy. It is read once, when the first picture is asked for, and kept as long as the save goes on.
class PictureCopy {
public:
    PictureCopy(platform::Files& files, std::filesystem::path path) : m_files(files), m_path(std::move(path)) {}

    // What stands behind the type and slot of the cell at a place counted from 1: the length word and the bytes that
    // it announces. Fails, with the path, when the file cannot be read or has no picture cell there.
    platform::Result<platform::ByteSpan> cellBody(std::int32_t position);

private:
    platform::Files& m_files;
    std::filesystem::path m_path;
    std::optional<platform::Bytes> m_bytes;
};

// Name of the temporary file of a new picture: "rlw_", ten digits, ".rle".
std::string pictureFileName(std::int32_t number);

// The bytes of a new picture. Fails, with the path, when there is no such file or when it is too large for a cell.
platform::Result<platform::Bytes> readNewPicture(platform::Files& files, const std::filesystem::path& path);

} // namespace tallybook::pdb
