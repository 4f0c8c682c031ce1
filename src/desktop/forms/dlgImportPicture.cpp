#include "desktop/forms/dlgImportPicture.h"

#include "core/forms/PalmBitmap.h"
#include "desktop/forms/PictureBox.h"
#include "desktop/platform/Text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QVBoxLayout>

namespace tallybook::desktop {

namespace {

constexpr int kMostSide = 640; // pixels; what is larger is seldom of use on the handheld

} // namespace

dlgImportPicture::dlgImportPicture(const QImage& picture, QWidget* parent)
    : QDialog(parent), m_picture(picture), m_side(new QSpinBox(this)), m_colours(new QComboBox(this)),
      m_dither(new QCheckBox(tr("&Dither"), this)), m_box(new PictureBox(nullptr)), m_status(new QLabel(this)) {
    setObjectName(QStringLiteral("dlgImportPicture"));
    setWindowTitle(tr("Import Picture"));
    m_side->setObjectName(QStringLiteral("spnSide"));
    m_side->setRange(1, kMostSide);
    m_side->setValue(forms::kScreenPixels);
    m_side->setSuffix(tr(" pixels"));
    m_colours->setObjectName(QStringLiteral("cmbColours"));
    m_colours->addItem(tr("Black and white"), 1);
    m_colours->addItem(tr("16 colours"), 4);
    m_colours->addItem(tr("256 colours"), 8);
    m_colours->setCurrentIndex(2);
    m_dither->setObjectName(QStringLiteral("chkDither"));
    m_dither->setChecked(true);
    auto* area = new QScrollArea(this);
    area->setWidget(m_box);
    area->setAlignment(Qt::AlignCenter);
    m_box->setZoom(200);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_take = buttons->button(QDialogButtonBox::Ok);
    m_take->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    auto* form = new QFormLayout;
    form->addRow(tr("Longest &side:"), m_side);
    form->addRow(tr("&Colours:"), m_colours);
    form->addRow(m_dither);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(area, 1);
    layout->addLayout(form);
    layout->addWidget(m_status);
    layout->addWidget(buttons);
    resize(420, 520);
    connect(buttons, &QDialogButtonBox::accepted, this, &dlgImportPicture::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &dlgImportPicture::reject);
    connect(m_side, &QSpinBox::valueChanged, this, &dlgImportPicture::reduce);
    connect(m_colours, &QComboBox::currentIndexChanged, this, &dlgImportPicture::reduce);
    connect(m_dither, &QCheckBox::toggled, this, &dlgImportPicture::reduce);
    reduce();
}

void dlgImportPicture::reduce() {
    const int side = m_side->value();
    const bool isLarger = m_picture.width() > side || m_picture.height() > side;
    const QImage scaled =
        isLarger ? m_picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation) : m_picture;
    const auto dithering = m_dither->isChecked() ? forms::Dithering::On : forms::Dithering::Off;
    m_bitmap = forms::reduceColours(trueColoursOf(scaled), m_colours->currentData().toInt(), dithering);
    m_box->setPicture(imageOf(m_bitmap, Ink::Everywhere));
    const auto bytes = forms::writePalmBitmap(m_bitmap);
    m_take->setEnabled(bytes.ok());
    const QString size = tr("%1 x %2, ").arg(m_bitmap.width).arg(m_bitmap.height);
    m_status->setText(size + (bytes ? tr("%n byte(s)", nullptr, static_cast<int>(bytes.value().size()))
                                    : toQt(bytes.error().text)));
}

} // namespace tallybook::desktop
