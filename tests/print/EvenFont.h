// A font whose characters are all equally wide, so that widths can be counted in the head.
#pragma once

#include "core/print/PageLayout.h"

namespace tallybook::test {

// `width` points a character, lines of `height` points.
inline print::FontMeasure evenFont(double width = 5, double height = 10) {
    print::FontMeasure font;
    font.widths.fill(width);
    font.lineHeight = height;
    return font;
}

// Scales with its size: at 9 points it is evenFont().
inline print::FontMeasure evenFontOf(print::FontRole, double points) {
    return evenFont(5 * points / 9, 10 * points / 9);
}

} // namespace tallybook::test
