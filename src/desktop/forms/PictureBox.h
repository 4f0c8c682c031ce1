// Shows a bitmap, whole or enlarged by whole pixels.
#pragma once

#include "core/forms/Bitmap.h"
#include "core/forms/ColourReduction.h"

#include <QImage>
#include <QWidget>

namespace tallybook::desktop {

// The pixels as Qt paints them; what has no ink is transparent when asked for.
enum class Ink : std::uint8_t { Everywhere, NotWhereClear };
QImage imageOf(const forms::Bitmap& bitmap, Ink ink);
// Any picture on white.
forms::TrueColours trueColoursOf(const QImage& image);

class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent);

    void setPicture(const QImage& image);
    void setZoom(int percent); // 0: the whole picture, as large as there is room, but no larger than it is
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSize shownSize() const;
    void fit();

    QImage m_image;
    int m_percent = 0;
};

} // namespace tallybook::desktop
