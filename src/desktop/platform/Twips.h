// Twips and the pixels of a screen.
#pragma once

#include <cmath>

namespace tallybook::desktop {

inline constexpr double kTwipsPerInch = 1440.0;

// Logical pixels of a length in twips at a resolution in dots per inch.
inline int pixelsOf(double twips, double dpi) {
    return static_cast<int>(std::lround(twips * dpi / kTwipsPerInch));
}

inline double twipsOf(double pixels, double dpi) {
    return pixels * kTwipsPerInch / dpi;
}

} // namespace tallybook::desktop
