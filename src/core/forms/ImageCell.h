// Pictures in the cells of a database: where each one is, and the temporary files that new ones wait in.
#pragma once

#include "core/model/Document.h"
#include "core/pdb/Database.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace tallybook::forms {

inline constexpr std::string_view kChangedPicture = "*{Image}"; // a cell whose picture waits in a temporary file

enum class CellPicture : std::uint8_t {
    None,
    Stored,  // in the file that was read; CellLongs has its place there
    Changed, // in a temporary file; CellLongs has its number
};
CellPicture cellPicture(const model::Tallybook& book, int row, int slot);

// The bytes of a cell's picture in the handheld's form. Of the database's file, only that picture is read. Fails,
// with the codes of ImageError, when the file has gone or there is no picture in that place; one that ends early is
// given as far as it goes. The slot is that of an Image field, and the cell has a picture.
platform::Result<platform::Bytes> pictureBytes(const model::Document& doc, platform::Services& services, int row,
                                               int slot);

// Any number; asked again for as long as it is not free.
using RandomNumber = std::function<std::uint32_t()>;
RandomNumber systemRandom();

// A number whose temporary files ("rlw_", ten digits) do not exist yet, and those files.
struct TemporaryPicture {
    std::int32_t number = 0; // from 1
    std::filesystem::path rle;
    std::filesystem::path bmp;
};
platform::Result<TemporaryPicture> GenerateTemporaryFileName(platform::Services& services,
                                                             const RandomNumber& random);

// The files of a number.
TemporaryPicture temporaryPicture(platform::Services& services, std::int32_t number);

// Gives a cell the picture of a temporary file; marks the change and stamps the record. The temporary file of the
// picture that the cell had goes.
void putPicture(model::Document& doc, platform::Services& services, int row, int slot, std::int32_t number);

// The same with the bytes of a picture, which must be one. Nothing changes when it fails.
platform::Status setPicture(model::Document& doc, platform::Services& services, int row, int slot,
                            platform::ByteSpan bytes, const RandomNumber& random);

// Removes the temporary files of the pictures that a document has not saved, as it is about to be closed.
void dropPictures(const model::Document& doc, platform::Services& services);

// Removes all temporary files of pictures. For the start of the program, which alone uses its folder: what lies there
// belongs to a run that did not end well.
void dropStrayPictures(platform::Services& services);

} // namespace tallybook::forms
