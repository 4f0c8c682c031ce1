#include "desktop/grid/GridLook.h"

#include <QPainter>
#include <QPolygonF>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace tallybook::desktop {

namespace {

constexpr double kReadable = 3.0; // least contrast of a coloured text, and of a frame
constexpr double kReadableOnColour = 4.5;

QColor mix(const QColor& a, const QColor& b, double share) {
    const auto part = [share](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * share)); };
    return {part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue())};
}

double channelLight(double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double lightOf(const QColor& colour) {
    return 0.2126 * channelLight(colour.redF()) + 0.7152 * channelLight(colour.greenF()) +
           0.0722 * channelLight(colour.blueF());
}

// The colour, made darker or lighter until it has a contrast to the ground.
QColor awayFrom(const QColor& ground, const QColor& colour, double least) {
    const bool darker = contrast(ground, Qt::black) >= contrast(ground, Qt::white);
    const QColor away = darker ? Qt::black : Qt::white;
    QColor readable = colour;
    for (int step = 1; step <= 10 && contrast(readable, ground) < least; ++step)
        readable = mix(colour, away, step / 10.0);
    return readable;
}

QColor colourOf(std::uint32_t number) {
    return {static_cast<int>(number & 0xFF), static_cast<int>(number >> 8 & 0xFF),
            static_cast<int>(number >> 16 & 0xFF)};
}

// Drawn here, since the styles' own boxes can hardly be seen on a dark ground.
QPixmap checkPicture(const QWidget& widget, const GridLook& look, bool checked) {
    constexpr int kSide = 13;
    const qreal ratio = widget.devicePixelRatioF();
    QPixmap picture(QSize(kSide, kSide) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(mix(look.ground, look.text, 0.6), 1));
    painter.setBrush(look.ground);
    painter.drawRoundedRect(QRectF(0.5, 0.5, kSide - 1, kSide - 1), 2, 2);
    if (checked) {
        painter.setPen(QPen(look.text, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF({{3.2, 6.8}, {5.6, 9.4}, {9.8, 3.8}}));
    }
    return picture;
}

} // namespace

double contrast(const QColor& a, const QColor& b) {
    const double lightA = lightOf(a) + 0.05;
    const double lightB = lightOf(b) + 0.05;
    return std::max(lightA, lightB) / std::min(lightA, lightB);
}

QColor readableColour(std::uint32_t number, const QColor& text, const QColor& ground) {
    return number == 0 ? text : awayFrom(ground, colourOf(number), kReadable);
}

QColor selectedColour(std::uint32_t number, const QColor& text, const QColor& selected) {
    return number == 0 ? text : awayFrom(selected, colourOf(number), kReadableOnColour);
}

GridLook lookOf(const QWidget& widget) {
    const QPalette& palette = widget.palette();
    GridLook look;
    look.ground = palette.color(QPalette::Base);
    look.text = palette.color(QPalette::Text);
    look.header = palette.color(QPalette::Button);
    look.headerText = palette.color(QPalette::ButtonText);
    look.line = mix(look.ground, look.text, 0.15);
    look.headerLine = mix(look.header, look.headerText, 0.3);
    look.currentHeader = mix(look.header, palette.color(QPalette::Highlight), 0.3);
    look.selected = palette.color(QPalette::Highlight);
    look.selectedText = palette.color(QPalette::HighlightedText);
    look.frame = awayFrom(look.ground, palette.color(QPalette::Highlight), kReadable);
    look.outside = mix(look.ground, look.header, 0.6);
    look.checkon = checkPicture(widget, look, true);
    look.checkoff = checkPicture(widget, look, false);
    return look;
}

} // namespace tallybook::desktop
