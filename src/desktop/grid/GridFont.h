// A font prepared for the grid: for each of the 256 characters its glyph and how far it moves the pen.
#pragma once

#include <QFont>
#include <QRawFont>

#include <array>
#include <cstdint>
#include <string_view>

namespace tallybook::desktop {

// Text in the grid is one byte a character and is drawn without kerning, so that the width of a text is the sum of
// its characters' widths and a page of cells is a handful of calls of the font engine.
class GridFont {
public:
    explicit GridFont(const QFont& font);

    const QFont& font() const { return m_font; }
    const QRawFont& rawFont() const { return m_raw; }
    int lineHeight() const { return m_lineHeight; } // logical pixels
    double ascent() const { return m_ascent; }

    std::uint32_t glyph(unsigned char byte) const { return m_glyphs[byte]; }
    double advance(unsigned char byte) const { return m_advances[byte]; } // logical pixels
    // False for the few characters that the font lacks: a cell that holds one is drawn the long way round.
    bool has(unsigned char byte) const { return m_glyphs[byte] != 0; }

    // Logical pixels of a text.
    double width(std::string_view text) const;

private:
    QFont m_font;
    QRawFont m_raw;
    int m_lineHeight = 0;
    double m_ascent = 0;
    std::array<std::uint32_t, 256> m_glyphs{};
    std::array<double, 256> m_advances{};
};

// What the grid paints for a byte: control characters as U+FFFD, a line feed as a return arrow, a tab as a blank.
char32_t paintedCharacter(unsigned char byte);

} // namespace tallybook::desktop
