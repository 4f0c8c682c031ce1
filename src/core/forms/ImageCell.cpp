#include "core/forms/ImageCell.h"

#include "core/document/grid/Cells.h"
#include "core/forms/ImageConverter.h"
#include "core/forms/ImageError.h"
#include "core/forms/PalmBitmap.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/Pictures.h"
#include "core/platform/AppFolders.h"

#include <algorithm>
#include <memory>
#include <random>

namespace tallybook::forms {

namespace {

using platform::Bytes;
using platform::Files;
using platform::Result;
using platform::Services;
using platform::Status;
using Path = std::filesystem::path;

constexpr std::uint32_t kMostNumber = 0x7FFFFFFF;

bool isMissing(Files& files, const Path& path) {
    const auto state = files.state(path);
    return state && state.value().kind == platform::FileKind::Missing;
}

Path temporaryFolder(Services& services) {
    return platform::applicationPath(services, platform::kTempFolder);
}

// | 18 | slot | 2 | L | 1 | 0 | L - 1 | picture | 1 | 0 |
Result<Bytes> storedPicture(Files& files, const Path& path, std::int32_t position) {
    constexpr std::size_t kHead = 5;
    const std::uint64_t start = static_cast<std::uint32_t>(position) - std::uint64_t{1};
    const auto head = position == 0 ? Result<Bytes>(Bytes{}) : files.readPart(path, start, kHead);
    if (!head)
        return imageError(codeOfReading(head.error()));
    pdb::ByteReader in(head.value());
    const bool isPicture = in.getByte() == static_cast<std::uint8_t>(model::FieldType::Image);
    in.skipBytes(1);
    const std::size_t length = in.getWord();
    if (!isPicture || !in.ok() || length == 0)
        return imageError(ImageError::InvalidData);
    auto bytes = files.readPart(path, start + kHead, length - 1);
    return bytes ? std::move(bytes) : imageError(codeOfReading(bytes.error()));
}

std::int32_t numberOf(const model::Tallybook& book, int row, int slot) {
    return book.CellLongs.get(row - model::kFirstDataRow, slot);
}

// "rlw_", ten digits, and one of the two endings.
bool isTemporaryPicture(const Path& path) {
    const std::string name = path.filename().string();
    const Path ending = path.extension();
    const bool named = name.size() == 18 && name.starts_with("rlw_");
    return named && (ending == ".rle" || ending == ".bmp") &&
           std::all_of(name.begin() + 4, name.begin() + 14, [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

CellPicture cellPicture(const model::Tallybook& book, int row, int slot) {
    const std::string text = book.grd.text(row, model::columnOfSlot(slot));
    if (text == pdb::kPictureMark)
        return CellPicture::Stored;
    return text == kChangedPicture ? CellPicture::Changed : CellPicture::None;
}

Result<Bytes> pictureBytes(const model::Document& doc, Services& services, int row, int slot) {
    const std::int32_t number = numberOf(doc, row, slot);
    if (cellPicture(doc, row, slot) == CellPicture::Stored)
        return storedPicture(services.files, doc.TempCopyPath, number);
    return readPictureFile(services.files, temporaryPicture(services, number).rle);
}

RandomNumber systemRandom() {
    return [device = std::make_shared<std::random_device>()] { return static_cast<std::uint32_t>((*device)()); };
}

TemporaryPicture temporaryPicture(Services& services, std::int32_t number) {
    const Path rle = temporaryFolder(services) / pdb::pictureFileName(number);
    return {.number = number, .rle = rle, .bmp = Path(rle).replace_extension(".bmp")};
}

Result<TemporaryPicture> GenerateTemporaryFileName(Services& services, const RandomNumber& random) {
    constexpr int kMostTries = 1000;
    for (int tries = 0; tries < kMostTries; ++tries) {
        const std::uint32_t number = random() & kMostNumber;
        const TemporaryPicture picture = temporaryPicture(services, static_cast<std::int32_t>(number));
        if (number > 0 && isMissing(services.files, picture.rle) && isMissing(services.files, picture.bmp))
            return picture;
    }
    return imageError(ImageError::FileCreateFailed);
}

void putPicture(model::Document& doc, Services& services, int row, int slot, std::int32_t number) {
    if (cellPicture(doc, row, slot) == CellPicture::Changed)
        (void)services.files.remove(temporaryPicture(services, numberOf(doc, row, slot)).rle);
    doc.grd.setText(row, model::columnOfSlot(slot), kChangedPicture);
    doc.CellLongs.set(row - model::kFirstDataRow, slot, number);
    doc.DocModified = true;
    document::stampRow(doc, services, row);
}

Status setPicture(model::Document& doc, Services& services, int row, int slot, platform::ByteSpan bytes,
                  const RandomNumber& random) {
    if (const auto read = readPalmBitmap(bytes); !read)
        return read.error();
    const auto file = GenerateTemporaryFileName(services, random);
    if (!file)
        return file.error();
    const Status written = writePictureFile(services.files, file.value().rle, bytes);
    if (written)
        putPicture(doc, services, row, slot, file.value().number);
    return written;
}

void dropPictures(const model::Document& doc, Services& services) {
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        if (doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type != model::FieldType::Image)
            continue;
        for (int row = model::kFirstDataRow; row < model::kFirstDataRow + doc.NumDataRecs; ++row)
            if (cellPicture(doc, row, slot) == CellPicture::Changed)
                (void)services.files.remove(temporaryPicture(services, numberOf(doc, row, slot)).rle);
    }
}

void dropStrayPictures(Services& services) {
    const Path folder = temporaryFolder(services);
    const auto names = services.files.list(folder);
    if (!names)
        return;
    for (const Path& name : names.value())
        if (isTemporaryPicture(name))
            (void)services.files.remove(folder / name.filename());
}

} // namespace tallybook::forms
