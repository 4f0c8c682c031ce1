#include "desktop/platform/EdgedIcon.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace tallybook::desktop {

namespace {

constexpr int kBrightening = 115; // of 255: how much white is laid over a drawing in a dark theme
constexpr int kSidePerPixel = 20; // an icon of this side has an edge one pixel wide

QPixmap painted(QPixmap drawing, QPainter::CompositionMode mode, const QColor& colour) {
    QPainter painter(&drawing);
    painter.setCompositionMode(mode);
    painter.fillRect(drawing.rect(), colour);
    return drawing;
}

QPixmap inWhite(const QPixmap& drawing) {
    return painted(drawing, QPainter::CompositionMode_SourceIn, Qt::white);
}

QPixmap brighter(const QPixmap& drawing) {
    return painted(drawing, QPainter::CompositionMode_SourceAtop, QColor(255, 255, 255, kBrightening));
}

bool isDarkTheme() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

QPixmap edged(const QPixmap& drawing) {
    const QPixmap white = inWhite(drawing);
    const int width = std::max(1, drawing.width() / kSidePerPixel);
    QPixmap result(drawing.size());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    for (int y = -width; y <= width; ++y)
        for (int x = -width; x <= width; ++x)
            painter.drawPixmap(x, y, white);
    painter.drawPixmap(0, 0, drawing);
    return result;
}

} // namespace

void EdgedIcon::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    const QSize size = (QSizeF(rect.size()) * painter->device()->devicePixelRatioF()).toSize();
    painter->drawPixmap(rect, pixmap(size, mode, state));
}

QPixmap EdgedIcon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    if (mode == QIcon::Active || mode == QIcon::Selected)
        return edged(m_plain.pixmap(size, 1.0, QIcon::Normal, state));
    const QPixmap plain = m_plain.pixmap(size, 1.0, mode, state);
    return mode == QIcon::Normal && isDarkTheme() ? brighter(plain) : plain;
}

} // namespace tallybook::desktop
