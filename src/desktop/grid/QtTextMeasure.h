// Widths of texts as the grid draws them, in twips.
#pragma once

#include "core/document/grid/GridDisplay.h"
#include "desktop/grid/GridView.h"

namespace tallybook::desktop {

// The grid draws without kerning, so a text is exactly as wide as its characters together.
class QtTextMeasure : public document::TextMeasure {
public:
    // The view must outlive this object.
    explicit QtTextMeasure(const GridView& view) : m_view(view) {}

    int textWidth(std::string_view text) const override;
    int characterWidth(unsigned char character) const override;
    int screenWidth() const override;

private:
    const GridView& m_view;
};

} // namespace tallybook::desktop
