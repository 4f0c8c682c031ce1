// A picture of any kind on its way to the handheld: how large and in how many colours it will be, shown before it is
// taken.
#pragma once

#include "core/forms/ColourReduction.h"

#include <QDialog>
#include <QImage>

class QCheckBox;
class QComboBox;
class QLabel;
class QSpinBox;

namespace tallybook::desktop {

class PictureBox;

class dlgImportPicture : public QDialog {
    Q_OBJECT

public:
    dlgImportPicture(const QImage& picture, QWidget* parent);

    const forms::Bitmap& bitmap() const { return m_bitmap; }

private:
    void reduce();

    QImage m_picture;
    forms::Bitmap m_bitmap;
    QSpinBox* m_side;
    QComboBox* m_colours;
    QCheckBox* m_dither;
    PictureBox* m_box;
    QLabel* m_status;
    class QPushButton* m_take;
};

} // namespace tallybook::desktop
