#include "core/forms/ImageEdit.h"

#include "core/forms/Bmp.h"
#include "core/forms/ImageConverter.h"
#include "core/forms/ImageError.h"
#include "core/forms/PalmBitmap.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <utility>

namespace tallybook::forms {

namespace {

using platform::Services;
using platform::Status;
using Path = std::filesystem::path;

bool isFileFault(const platform::Error& error) {
    return error.number != static_cast<int>(ImageError::InvalidData);
}

Bitmap newImage() {
    Bitmap bitmap = blankBitmap(kScreenPixels, kScreenPixels, 1);
    bitmap.palette = {{255, 255, 255}, {}};
    return bitmap;
}

} // namespace

ImageEdit::ImageEdit(model::Document& doc, Services& services, RandomNumber random, int row, int slot)
    : m_doc(doc), m_services(services), m_random(std::move(random)), m_row(row), m_slot(slot) {}

ImageEdit::~ImageEdit() {
    if (m_files.number == 0)
        return;
    (void)m_services.files.remove(m_files.bmp);
    (void)m_services.files.remove(m_files.rle);
}

void ImageEdit::say(const std::string& text) {
    m_services.ui.message({.text = text, .icon = platform::Icon::Critical, .title = {}});
}

bool ImageEdit::refuse(const platform::Error& error) {
    m_status = error.text;
    m_canSave = false;
    say(imageErrorMessage(error.number));
    return false;
}

void ImageEdit::load() {
    const auto files = GenerateTemporaryFileName(m_services, m_random);
    if (!files)
        return say("Failed to create output file");
    m_files = files.value();
    switch (cellPicture(m_doc, m_row, m_slot)) {
    case CellPicture::Stored:
        return loadUnmodifiedImage();
    case CellPicture::Changed:
        return loadModifiedImage();
    case CellPicture::None:
        return loadNewImage();
    }
}

void ImageEdit::loadNewImage() {
    const Bitmap bitmap = newImage();
    if (!writePictureFile(m_services.files, m_files.bmp, writeBmp(bitmap)))
        return say("Cannot create a new image");
    m_bitmap = bitmap;
    m_canSave = !isReadOnly();
    m_changed = m_canSave; // there was none before
    describe();
}

void ImageEdit::loadUnmodifiedImage() {
    const auto bytes = pictureBytes(m_doc, m_services, m_row, m_slot);
    if (!bytes && isFileFault(bytes.error()))
        return say("Cannot find image file " + platform::shownPath(m_doc.TempCopyPath) +
                   ". External references for field \"" +
                   m_doc.CurrDB20.Fields[static_cast<std::size_t>(m_slot)].Name + "\" will not be displayed");
    if (!bytes) {
        (void)refuse(bytes.error());
        return;
    }
    if (!platform::writeWholeFile(m_services.files, m_files.rle, bytes.value()))
        return say("Failed to create output file");
    (void)bringOut(m_files.rle);
}

void ImageEdit::loadModifiedImage() {
    const std::int32_t number = m_doc.CellLongs.get(m_row - model::kFirstDataRow, m_slot);
    (void)bringOut(temporaryPicture(m_services, number).rle);
}

bool ImageEdit::bringOut(const Path& rle) {
    if (const Status brought = handheldToBitmap(m_services.files, rle, m_files.bmp); !brought)
        return refuse(brought.error());
    auto bitmap = readWorkingFile();
    if (!bitmap)
        return refuse(bitmap.error());
    m_bitmap = std::move(bitmap).value();
    m_canSave = !isReadOnly();
    describe();
    return true;
}

void ImageEdit::describe() {
    const auto bytes = writePalmBitmap(*m_bitmap);
    const std::string colours = m_bitmap->depth == 1 ? std::string("2") : std::to_string(1 << m_bitmap->depth);
    m_status = std::to_string(m_bitmap->width) + " x " + std::to_string(m_bitmap->height) + ", " + colours +
               " colours, " +
               (bytes ? std::to_string(bytes.value().size()) + " bytes" : std::string(bytes.error().text));
}

std::string ImageEdit::status() const {
    return m_status;
}

platform::Result<Bitmap> ImageEdit::readWorkingFile() {
    const auto bytes = readPictureFile(m_services.files, m_files.bmp);
    return bytes ? readBmp(bytes.value()) : platform::Result<Bitmap>(bytes.error());
}

bool ImageEdit::update() {
    auto bitmap = readWorkingFile();
    m_canSave = !isReadOnly();
    m_changed = true;
    if (!bitmap) {
        m_status = bitmap.error().text; // said when it is saved: the program may not be done with it
        return false;
    }
    m_bitmap = std::move(bitmap).value();
    describe();
    return true;
}

bool ImageEdit::setBitmap(const Bitmap& bitmap) {
    if (const Status written = writePictureFile(m_services.files, m_files.bmp, writeBmp(bitmap)); !written)
        return refuse(written.error());
    return update();
}

bool ImageEdit::importFile(const Path& file) {
    const auto bytes = readPictureFile(m_services.files, file);
    if (!bytes)
        return refuse(bytes.error());
    if (const auto read = readBmp(bytes.value()); !read) {
        say(imageErrorMessage(read.error().number)); // the working file stays
        return false;
    }
    if (const Status copied = writePictureFile(m_services.files, m_files.bmp, bytes.value()); !copied)
        return refuse(copied.error());
    return update();
}

bool ImageEdit::save() {
    if (!m_changed)
        return true;
    const auto target = GenerateTemporaryFileName(m_services, m_random);
    if (!target)
        return refuse(target.error());
    if (const Status made = bitmapToHandheld(m_services.files, m_files.bmp, target.value().rle); !made)
        return refuse(made.error());
    putPicture(m_doc, m_services, m_row, m_slot, target.value().number);
    m_changed = false;
    return true;
}

} // namespace tallybook::forms
