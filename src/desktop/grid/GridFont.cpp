#include "desktop/grid/GridFont.h"

#include "core/platform/Ansi.h"

#include <QFontMetricsF>
#include <QString>

#include <cmath>

namespace tallybook::desktop {

char32_t paintedCharacter(unsigned char byte) {
    if (byte == '\n')
        return U'\u21B5';
    if (byte == '\t')
        return U' ';
    const char32_t character = platform::ansi::toUnicode(byte);
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    return control ? U'\uFFFD' : character;
}

GridFont::GridFont(const QFont& font) : m_font(font), m_raw(QRawFont::fromFont(font)) {
    const QFontMetricsF metrics(font);
    m_ascent = metrics.ascent();
    m_lineHeight = static_cast<int>(std::ceil(metrics.height()));
    for (int byte = 0; byte < 256; ++byte) {
        const auto place = static_cast<std::size_t>(byte);
        const QChar character(static_cast<char16_t>(paintedCharacter(static_cast<unsigned char>(byte))));
        const QList<quint32> glyphs = m_raw.glyphIndexesForString(QString(character));
        m_glyphs[place] = glyphs.size() == 1 ? glyphs.first() : 0;
        const QList<QPointF> advances = m_raw.advancesForGlyphIndexes(glyphs);
        m_advances[place] = m_glyphs[place] != 0 && advances.size() == 1 ? advances.first().x()
                                                                         : metrics.horizontalAdvance(character);
    }
}

double GridFont::width(std::string_view text) const {
    double sum = 0;
    for (const char c : text)
        sum += m_advances[static_cast<unsigned char>(c)];
    return sum;
}

} // namespace tallybook::desktop
