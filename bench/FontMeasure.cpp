#include "FontMeasure.h"

#include "Workbench.h"

namespace tallybook::bench {

namespace {

constexpr std::chrono::nanoseconds kShapingTime{2200};

int pairCorrection(unsigned char left, unsigned char right) {
    return left == 'V' && right == 'a' ? -15 : 0;
}

} // namespace

FontMeasure::FontMeasure() {
    for (int c = 0; c < 256; ++c)
        m_widths[static_cast<std::size_t>(c)] = 60 + 15 * (c % 7); // 4 to 10 pixels of 15 twips
}

int FontMeasure::textWidth(std::string_view text) const {
    const auto start = std::chrono::steady_clock::now();
    int width = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        width += characterWidth(static_cast<unsigned char>(text[i]));
        if (i > 0)
            width += pairCorrection(static_cast<unsigned char>(text[i - 1]), static_cast<unsigned char>(text[i]));
    }
    while (std::chrono::steady_clock::now() - start < kShapingTime) {
    }
    return width;
}

} // namespace tallybook::bench
