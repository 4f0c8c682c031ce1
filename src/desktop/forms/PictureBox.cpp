#include "desktop/forms/PictureBox.h"

#include <QPainter>

namespace tallybook::desktop {

QImage imageOf(const forms::Bitmap& bitmap, Ink ink) {
    QImage image(bitmap.width, bitmap.height, QImage::Format_Indexed8);
    QList<QRgb> colours;
    for (const model::Colour& colour : bitmap.palette)
        colours.append(qRgb(colour.red, colour.green, colour.blue));
    if (ink == Ink::NotWhereClear && bitmap.clear && *bitmap.clear < colours.size())
        colours[*bitmap.clear] = qRgba(0, 0, 0, 0);
    image.setColorTable(colours);
    for (int y = 0; y < bitmap.height; ++y) {
        uchar* line = image.scanLine(y);
        for (int x = 0; x < bitmap.width; ++x)
            line[x] = bitmap.pixel(x, y);
    }
    return image;
}

forms::TrueColours trueColoursOf(const QImage& image) {
    QImage paper(image.size(), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(0, 0, image);
    forms::TrueColours picture{.width = paper.width(), .height = paper.height(), .pixels = {}};
    picture.pixels.reserve(static_cast<std::size_t>(paper.width()) * static_cast<std::size_t>(paper.height()));
    for (int y = 0; y < paper.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(paper.constScanLine(y));
        for (int x = 0; x < paper.width(); ++x)
            picture.pixels.push_back({static_cast<std::uint8_t>(qRed(line[x])),
                                      static_cast<std::uint8_t>(qGreen(line[x])),
                                      static_cast<std::uint8_t>(qBlue(line[x]))});
    }
    return picture;
}

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Picture1"));
    setAccessibleName(tr("Picture"));
}

void PictureBox::setPicture(const QImage& image) {
    m_image = image;
    fit();
}

void PictureBox::setZoom(int percent) {
    m_percent = percent;
    fit();
}

QSize PictureBox::shownSize() const {
    if (m_percent > 0)
        return m_image.size() * (m_percent / 100.0);
    const QSize room = parentWidget() == nullptr ? m_image.size() : parentWidget()->size();
    const bool fits = m_image.width() <= room.width() && m_image.height() <= room.height();
    return fits ? m_image.size() : m_image.size().scaled(room, Qt::KeepAspectRatio);
}

QSize PictureBox::sizeHint() const {
    return shownSize();
}

void PictureBox::fit() {
    resize(shownSize().expandedTo({1, 1}));
    update();
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_percent == 0);
    painter.fillRect(rect(), Qt::white);
    if (!m_image.isNull())
        painter.drawImage(rect(), m_image);
}

} // namespace tallybook::desktop
