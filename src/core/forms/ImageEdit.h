// The picture dialog without its widgets: one cell's picture brought out as a bitmap file, changed there by whoever
// likes, and taken back.
#pragma once

#include "core/forms/Bitmap.h"
#include "core/forms/ImageCell.h"

#include <optional>
#include <string>

namespace tallybook::forms {

class ImageEdit {
public:
    // On the cell of an Image field. Its working files go with this.
    ImageEdit(model::Document& doc, platform::Services& services, RandomNumber random, int row, int slot);
    ~ImageEdit();
    ImageEdit(const ImageEdit&) = delete;
    ImageEdit& operator=(const ImageEdit&) = delete;

    // Brings the picture out, or makes a new one. Whatever cannot be done is said; a damaged picture leaves no
    // bitmap, another can be imported in its place.
    void load();

    const std::optional<Bitmap>& bitmap() const { return m_bitmap; }
    const std::filesystem::path& workingFile() const { return m_files.bmp; }
    bool changed() const { return m_changed; }
    bool canSave() const { return m_canSave; } // cmdSave
    std::string status() const;                // "16 x 16, 16 colours, 94 bytes", or what is wrong with the file
    bool isReadOnly() const { return m_doc.CurrDB20.ReadOnly != 0; }

    // Another program has saved the working file: it is taken as it is. True when it can be shown.
    bool update();
    // Puts a bitmap into the working file: of the editor, the clipboard, an imported picture.
    bool setBitmap(const Bitmap& bitmap);
    // cmdImport: copies a bitmap file over the working file.
    bool importFile(const std::filesystem::path& file);

    // cmdSave: converts the working file and gives the cell its new picture. False when that failed, which was said:
    // the dialog stays, with cmdSave off. A picture that nobody changed stays as it is.
    bool save();

private:
    void loadNewImage();
    void loadUnmodifiedImage();
    void loadModifiedImage();
    bool bringOut(const std::filesystem::path& rle);
    platform::Result<Bitmap> readWorkingFile();
    bool refuse(const platform::Error& error);
    void say(const std::string& text);
    void describe();

    model::Document& m_doc;
    platform::Services& m_services;
    RandomNumber m_random;
    int m_row;
    int m_slot;
    TemporaryPicture m_files;
    std::optional<Bitmap> m_bitmap;
    std::string m_status;
    bool m_changed = false;
    bool m_canSave = false;
};

} // namespace tallybook::forms
