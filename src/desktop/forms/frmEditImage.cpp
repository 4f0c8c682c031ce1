#include "desktop/forms/frmEditImage.h"

#include "adapters/PngFile.h"
#include "core/forms/Bmp.h"
#include "core/forms/ImageConverter.h"
#include "core/forms/ImageError.h"
#include "core/forms/Tags.h"
#include "core/platform/Operation.h"
#include "core/platform/PictureTexts.h"
#include "desktop/forms/OutsideEditor.h"
#include "desktop/forms/PictureBox.h"
#include "desktop/forms/dlgImportPicture.h"
#include "desktop/forms/dlgPixelEditor.h"
#include "desktop/platform/Text.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QGuiApplication>
#include <QImageReader>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

namespace tallybook::desktop {

namespace {

namespace tags = forms::tags;

QPushButton* button(const QString& text, const char* name, QWidget* parent) {
    auto* made = new QPushButton(text, parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setAutoDefault(false);
    return made;
}

// Patterns of all pictures that Qt reads.
QString picturePatterns() {
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        patterns.append(QStringLiteral("*.") + QString::fromLatin1(format));
    return patterns.join(u' ');
}

} // namespace

frmEditImage::frmEditImage(model::Document& doc, platform::Services& services, int row, int slot, QWidget* parent)
    : QDialog(parent), m_services(services), m_edit(doc, services, forms::systemRandom(), row, slot),
      m_outside(new OutsideEditor(this)) {
    setObjectName(QStringLiteral("frmEditImage"));
    setWindowTitle(tr("Picture: %1").arg(toQt(doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Name)));
    auto* middle = new QHBoxLayout;
    middle->addWidget(makePicture(), 1);
    middle->addWidget(makeCommands());
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(middle, 1);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    layout->addWidget(m_status);
    connectCommands();
    resize(620, 480);
}

QWidget* frmEditImage::makePicture() {
    m_area = new QScrollArea(this);
    m_area->setObjectName(QStringLiteral("pictureArea"));
    m_area->setAlignment(Qt::AlignCenter);
    m_area->setBackgroundRole(QPalette::Mid);
    m_box = new PictureBox(nullptr);
    m_area->setWidget(m_box);
    return m_area;
}

QWidget* frmEditImage::makeCommands() {
    auto* box = new QWidget(this);
    m_zoom = new QComboBox(box);
    m_zoom->setObjectName(QStringLiteral("cmbZoom"));
    m_zoom->setAccessibleName(tr("Zoom"));
    m_zoom->addItem(tr("Whole picture"), 0);
    for (int percent = 100; percent <= 800; percent += 100)
        m_zoom->addItem(QStringLiteral("%1 %").arg(percent), percent);
    m_zoom->setCurrentIndex(2);
    m_editButton = button(tr("&Edit"), "cmdEdit", box);
    m_import = button(tr("&Import..."), "cmdImport", box);
    m_importAny = button(tr("Import &Picture..."), "cmdImportPicture", box);
    m_saveAs = button(tr("Save Picture &As..."), "cmdSavePictureAs", box);
    m_copy = button(tr("&Copy"), "cmdCopy", box);
    m_paste = button(tr("Pas&te"), "cmdPaste", box);
    m_save = button(tr("&Save"), "cmdSave", box);
    auto* cancel = button(tr("Cancel"), "cmdCancel", box);
    m_save->setDefault(true);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{m_zoom, m_editButton, m_import, m_importAny, m_saveAs, m_copy, m_paste})
        layout->addWidget(widget);
    layout->addStretch();
    layout->addWidget(m_save);
    layout->addWidget(cancel);
    connect(cancel, &QPushButton::clicked, this, &frmEditImage::reject);
    return box;
}

void frmEditImage::connectCommands() {
    connect(m_zoom, &QComboBox::currentIndexChanged, this, [this] { showPicture(); });
    connect(m_editButton, &QPushButton::clicked, this, [this] { perform(tags::kImageEdit, [this] { edit(); }); });
    connect(m_outside, &OutsideEditor::saved, this,
            [this] { perform(tags::kImageUpdate, [this] { takeUpdate(); }); });
    connect(m_import, &QPushButton::clicked, this,
            [this] { perform(tags::kImageImport, [this] { importBitmap(); }); });
    connect(m_importAny, &QPushButton::clicked, this,
            [this] { perform(tags::kImageImport, [this] { importPicture(); }); });
    connect(m_saveAs, &QPushButton::clicked, this, [this] { perform(tags::kImageSave, [this] { saveAs(); }); });
    connect(m_copy, &QPushButton::clicked, this, [this] {
        if (m_edit.bitmap())
            QGuiApplication::clipboard()->setImage(imageOf(*m_edit.bitmap(), Ink::NotWhereClear));
    });
    connect(m_paste, &QPushButton::clicked, this,
            [this] { perform(tags::kImageImport, [this] { takePicture(QGuiApplication::clipboard()->image()); }); });
    connect(m_save, &QPushButton::clicked, this, &frmEditImage::accept);
    const std::pair<QKeySequence::StandardKey, QPushButton*> keys[] = {{QKeySequence::Copy, m_copy},
                                                                       {QKeySequence::Paste, m_paste}};
    for (const auto& [key, command] : keys)
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, command, &QPushButton::click);
}

// Loading may have something to say, which belongs above the dialog.
void frmEditImage::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (std::exchange(m_loaded, true))
        return;
    perform(tags::kImageLoad, [this] { m_edit.load(); });
}

void frmEditImage::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    showPicture();
}

void frmEditImage::perform(std::string_view tag, const std::function<void()>& operation) {
    platform::runOperation(m_services.ui, tag, operation);
    showPicture();
}

void frmEditImage::showPicture() {
    const bool has = m_edit.bitmap().has_value();
    m_box->setPicture(has ? imageOf(*m_edit.bitmap(), Ink::Everywhere) : QImage());
    m_box->setZoom(m_zoom->currentData().toInt());
    m_status->setText(toQt(m_edit.status()));
    m_save->setEnabled(m_edit.canSave());
    const bool mayChange = m_loaded && !m_edit.isReadOnly() && !m_edit.workingFile().empty();
    m_editButton->setEnabled(mayChange && has);
    m_import->setEnabled(mayChange);
    m_importAny->setEnabled(mayChange);
    m_paste->setEnabled(mayChange);
    m_copy->setEnabled(has);
    m_saveAs->setEnabled(has);
}

void frmEditImage::edit() {
    const QStringList program = pictureProgram();
    if (program.isEmpty())
        return editPixels();
    if (!m_outside->open(program, pathToQt(m_edit.workingFile())))
        m_services.ui.message({.text = platform::texts::cannotStart(fromQt(program.first())),
                               .icon = platform::Icon::Information,
                               .title = {}});
}

void frmEditImage::editPixels() {
    dlgPixelEditor editor(*m_edit.bitmap(), this);
    if (editor.exec() == QDialog::Accepted && editor.changed())
        m_edit.setBitmap(editor.bitmap());
}

void frmEditImage::takeUpdate() {
    m_edit.update();
}

void frmEditImage::importBitmap() {
    const QString file = QFileDialog::getOpenFileName(this, tr("Import"), {}, tr("Bitmap (*.bmp)"));
    if (!file.isEmpty())
        m_edit.importFile(pathFromQt(file));
}

void frmEditImage::importPicture() {
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Import Picture"), {}, tr("Pictures (%1)").arg(picturePatterns()));
    if (file.isEmpty())
        return;
    QImageReader reader(file);
    reader.setAutoTransform(true);
    takePicture(reader.read());
}

void frmEditImage::takePicture(const QImage& image) {
    if (image.isNull()) {
        m_services.ui.message(
            {.text = std::string(platform::texts::kNoPicture), .icon = platform::Icon::Information, .title = {}});
        return;
    }
    dlgImportPicture dialog(image, this);
    if (dialog.exec() == QDialog::Accepted)
        m_edit.setBitmap(dialog.bitmap());
}

void frmEditImage::saveAs() {
    QString chosen;
    QString file = QFileDialog::getSaveFileName(this, tr("Save Picture As"), QStringLiteral("picture.png"),
                                                tr("PNG picture (*.png);;Bitmap (*.bmp)"), &chosen);
    if (file.isEmpty())
        return;
    const bool bmp = file.endsWith(QStringLiteral(".bmp"), Qt::CaseInsensitive);
    if (!bmp && !file.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive))
        file += chosen.contains(QStringLiteral("bmp")) ? QStringLiteral(".bmp") : QStringLiteral(".png");
    const bool asBmp = file.endsWith(QStringLiteral(".bmp"), Qt::CaseInsensitive);
    const auto bytes = asBmp ? platform::Result<platform::Bytes>(forms::writeBmp(*m_edit.bitmap()))
                             : adapters::writePng(*m_edit.bitmap());
    const auto written = bytes ? forms::writePictureFile(m_services.files, pathFromQt(file), bytes.value())
                               : platform::Status(bytes.error());
    if (!written)
        m_services.ui.message({.text = forms::imageErrorMessage(written.error().number),
                               .icon = platform::Icon::Critical,
                               .title = {}});
}

// The last save of the other program may not have been told of yet.
void frmEditImage::accept() {
    bool saved = false;
    platform::runOperation(m_services.ui, tags::kImageSave, [&] {
        if (m_outside->hasNews())
            m_edit.update();
        saved = m_edit.save();
    });
    if (saved)
        QDialog::accept();
    else
        showPicture();
}

} // namespace tallybook::desktop
