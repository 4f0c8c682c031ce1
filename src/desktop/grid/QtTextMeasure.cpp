#include "desktop/grid/QtTextMeasure.h"

#include "desktop/platform/Twips.h"

#include <QScreen>

#include <cmath>

namespace tallybook::desktop {

int QtTextMeasure::textWidth(std::string_view text) const {
    return static_cast<int>(std::ceil(twipsOf(m_view.gridFont().width(text), m_view.logicalDpiX())));
}

int QtTextMeasure::characterWidth(unsigned char character) const {
    return static_cast<int>(std::ceil(twipsOf(m_view.gridFont().advance(character), m_view.logicalDpiX())));
}

int QtTextMeasure::screenWidth() const {
    return static_cast<int>(twipsOf(m_view.screen()->size().width(), m_view.logicalDpiX()));
}

} // namespace tallybook::desktop
