#include "desktop/grid/RowMarker.h"

#include <QPainter>
#include <QPolygonF>

namespace tallybook::desktop {

RowMarker::RowMarker(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("cursor"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(tr("Current row"));
    hide();
}

void RowMarker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::ButtonText));
    const QPointF middle = QRectF(rect()).center();
    painter.drawPolygon(
        QPolygonF({middle + QPointF(-2.5, -4.5), middle + QPointF(2.5, 0), middle + QPointF(-2.5, 4.5)}));
}

} // namespace tallybook::desktop
