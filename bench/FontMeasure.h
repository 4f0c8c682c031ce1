// A stand-in for the font engine of a window.
#pragma once

#include "core/document/grid/GridDisplay.h"

#include <array>

namespace tallybook::bench {

// Widths come from a table of characters with a pair correction, as a proportional font has them. A font engine
// takes about 2.2 microseconds for a cell's text; textWidth works that long on purpose, so that a best fit that
// asks for every cell shows it.
class FontMeasure : public document::TextMeasure {
public:
    FontMeasure();
    int textWidth(std::string_view text) const override;
    int characterWidth(unsigned char character) const override { return m_widths[character]; }
    int screenWidth() const override { return 1920 * 15; }

private:
    std::array<int, 256> m_widths{};
};

} // namespace tallybook::bench
