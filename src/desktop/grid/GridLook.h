// The grid's colours, taken from the theme.
#pragma once

#include <QColor>
#include <QPalette>
#include <QPixmap>

#include <cstdint>

class QWidget;

namespace tallybook::desktop {

struct GridLook {
    QColor ground;
    QColor text;
    QColor header;
    QColor headerText;
    QColor currentHeader; // of the current row and column
    QColor line;
    QColor headerLine;
    QColor selected;
    QColor selectedText;
    QColor frame;   // round the current cell
    QColor outside; // where there is no cell
    QPixmap checkon;
    QPixmap checkoff;
};

// The look of a widget's theme, with check pictures for its resolution.
GridLook lookOf(const QWidget& widget);

// The colour in which a cell's colour number (red + 256 green + 65536 blue) can be read on a ground: 0 is the theme's
// text colour, and a colour that is too close to the ground is moved away from it.
QColor readableColour(std::uint32_t number, const QColor& text, const QColor& ground);

// The same on a selected cell, whose ground is a colour itself: told apart as well as a text has to be.
QColor selectedColour(std::uint32_t number, const QColor& text, const QColor& selected);

// Contrast of two colours, 1 for none to 21 for black on white.
double contrast(const QColor& a, const QColor& b);

} // namespace tallybook::desktop
