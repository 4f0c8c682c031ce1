// Collects the texts of many cells and hands them to the font engine in one call for each colour.
#pragma once

#include "desktop/grid/GridFont.h"

#include <QPainter>
#include <QPointF>
#include <QRect>
#include <QRgb>
#include <QString>

#include <string_view>
#include <vector>

namespace tallybook::desktop {

class TextBatch {
public:
    // A text on one line in a cell, with a margin at both sides. One that is too wide ends in "...".
    void add(const GridFont& font, std::string_view text, const QRect& cell, bool rightAligned, QRgb colour);

    // Draws what was collected, and forgets it.
    void draw(QPainter& painter, const GridFont& font);

    static constexpr int kMargin = 4; // logical pixels between a text and its cell's edges

private:
    struct Run {
        QRgb colour = 0;
        std::vector<quint32> glyphs;
        std::vector<QPointF> positions;
    };
    struct Odd { // a text with a character that the font lacks
        QRgb colour = 0;
        QString text;
        QRect cell;
        bool rightAligned = false;
    };

    Run& runFor(QRgb colour);

    std::vector<Run> m_runs;
    std::size_t m_last = 0; // run used last
    std::vector<Odd> m_odd;
};

} // namespace tallybook::desktop
