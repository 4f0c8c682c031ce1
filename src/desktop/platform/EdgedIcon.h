// An icon that stands out from whatever ground the pointer brings up behind it.
#pragma once

#include <QIcon>
#include <QIconEngine>

namespace tallybook::desktop {

// Draws a plain icon as it is, brighter on the ground of a dark theme, and with a light edge where the item or button
// that bears it is highlighted: our drawings are made for the ground of a light window, on a dark one they look as if
// they were disabled, and a menu's highlight is often as blue as they are.
class EdgedIcon : public QIconEngine {
public:
    explicit EdgedIcon(const QIcon& plain) : m_plain(plain) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override; // size in device pixels
    QIconEngine* clone() const override { return new EdgedIcon(*this); }

private:
    QIcon m_plain;
};

} // namespace tallybook::desktop
