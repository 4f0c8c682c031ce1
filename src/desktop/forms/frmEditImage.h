// The picture of a cell: looked at, changed in another program, imported, copied, saved.
#pragma once

#include "core/forms/ImageEdit.h"

#include <QDialog>

#include <functional>
#include <string_view>

class QComboBox;
class QLabel;
class QPushButton;
class QScrollArea;

namespace tallybook::desktop {

class OutsideEditor;
class PictureBox;

class frmEditImage : public QDialog {
    Q_OBJECT

public:
    // On the cell of an Image field. Save gives the cell its new picture.
    frmEditImage(model::Document& doc, platform::Services& services, int row, int slot, QWidget* parent);

    void accept() override;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makePicture();
    QWidget* makeCommands();
    void connectCommands();
    void perform(std::string_view tag, const std::function<void()>& operation);
    void showPicture();
    void edit();
    void editPixels();
    void takeUpdate();
    void importBitmap();
    void importPicture();
    void takePicture(const QImage& image);
    void saveAs();

    platform::Services& m_services;
    forms::ImageEdit m_edit;
    OutsideEditor* m_outside;
    PictureBox* m_box = nullptr;
    QScrollArea* m_area = nullptr;
    QComboBox* m_zoom = nullptr;         // cmbZoom
    QLabel* m_status = nullptr;          // lblStatus
    QPushButton* m_editButton = nullptr; // cmdEdit
    QPushButton* m_import = nullptr;     // cmdImport
    QPushButton* m_importAny = nullptr;  // cmdImportPicture
    QPushButton* m_saveAs = nullptr;     // cmdSavePictureAs
    QPushButton* m_copy = nullptr;       // cmdCopy
    QPushButton* m_paste = nullptr;      // cmdPaste
    QPushButton* m_save = nullptr;       // cmdSave
    bool m_loaded = false;
};

} // namespace tallybook::desktop
