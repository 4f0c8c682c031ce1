#include "desktop/grid/TextBatch.h"

#include <QColor>
#include <QFontMetricsF>
#include <QGlyphRun>

#include <cmath>

namespace tallybook::desktop {

namespace {

constexpr unsigned char kEllipsis = 0x85;

// How many characters fit into a width, and how wide they are.
struct Fit {
    std::size_t count = 0;
    double width = 0;
    bool whole = true; // all of them
    bool plain = true; // each of those looked at has a glyph
};

Fit fitInto(const GridFont& font, std::string_view text, double room) {
    Fit fit;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        fit.plain = fit.plain && font.has(byte);
        if (fit.width + font.advance(byte) > room) {
            fit.whole = false;
            break;
        }
        fit.width += font.advance(byte);
        ++fit.count;
    }
    return fit;
}

void makeRoomForEllipsis(const GridFont& font, std::string_view text, double room, Fit& fit) {
    while (fit.count > 0 && fit.width + font.advance(kEllipsis) > room) {
        --fit.count;
        fit.width -= font.advance(static_cast<unsigned char>(text[fit.count]));
    }
}

QString paintedText(std::string_view text) {
    QString painted;
    painted.reserve(static_cast<qsizetype>(text.size()));
    for (const char c : text)
        painted += QChar(static_cast<char16_t>(paintedCharacter(static_cast<unsigned char>(c))));
    return painted;
}

} // namespace

TextBatch::Run& TextBatch::runFor(QRgb colour) {
    if (m_last < m_runs.size() && m_runs[m_last].colour == colour)
        return m_runs[m_last];
    for (m_last = 0; m_last < m_runs.size(); ++m_last)
        if (m_runs[m_last].colour == colour)
            return m_runs[m_last];
    m_runs.push_back({colour, {}, {}});
    return m_runs.back();
}

void TextBatch::add(const GridFont& font, std::string_view text, const QRect& cell, bool rightAligned, QRgb colour) {
    const double room = cell.width() - 2.0 * kMargin;
    if (text.empty() || room <= 0)
        return;
    Fit fit = fitInto(font, text, room);
    if (!fit.plain) {
        m_odd.push_back({colour, paintedText(text), cell, rightAligned});
        return;
    }
    if (!fit.whole)
        makeRoomForEllipsis(font, text, room, fit);
    Run& run = runFor(colour);
    double x = cell.left() + kMargin;
    if (rightAligned && fit.whole)
        x = cell.left() + cell.width() - kMargin - fit.width;
    const double y = std::round(cell.top() + (cell.height() - font.lineHeight()) / 2.0 + font.ascent());
    for (std::size_t i = 0; i < fit.count; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        run.glyphs.push_back(font.glyph(byte));
        run.positions.emplace_back(x, y);
        x += font.advance(byte);
    }
    if (!fit.whole && font.has(kEllipsis)) {
        run.glyphs.push_back(font.glyph(kEllipsis));
        run.positions.emplace_back(x, y);
    }
}

void TextBatch::draw(QPainter& painter, const GridFont& font) {
    for (Run& run : m_runs) {
        if (run.glyphs.empty())
            continue;
        QGlyphRun glyphs;
        glyphs.setRawFont(font.rawFont());
        glyphs.setRawData(run.glyphs.data(), run.positions.data(), static_cast<int>(run.glyphs.size()));
        painter.setPen(QColor::fromRgb(run.colour));
        painter.drawGlyphRun(QPointF(), glyphs);
        run.glyphs.clear();
        run.positions.clear();
    }
    painter.setFont(font.font());
    const QFontMetricsF metrics(font.font());
    for (const Odd& odd : m_odd) {
        const QRect inner = odd.cell.adjusted(kMargin, 0, -kMargin, 0);
        painter.setPen(QColor::fromRgb(odd.colour));
        painter.drawText(inner,
                         static_cast<int>(Qt::AlignVCenter | (odd.rightAligned ? Qt::AlignRight : Qt::AlignLeft)),
                         metrics.elidedText(odd.text, Qt::ElideRight, inner.width()));
    }
    m_odd.clear();
    if (m_runs.size() > 64) // many colours have gone by
        m_runs.clear();
}

} // namespace tallybook::desktop
