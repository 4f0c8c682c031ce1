#include "desktop/platform/EdgedIcon.h"

#include <QPainter>

#include <algorithm>

namespace tallybook::desktop {

namespace {

constexpr int kSidePerPixel = 20; // an icon of this side has an edge one pixel wide

QPixmap inWhite(QPixmap drawing) {
    QPainter painter(&drawing);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(drawing.rect(), Qt::white);
    return drawing;
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
    return m_plain.pixmap(size, 1.0, mode, state);
}

} // namespace tallybook::desktop
