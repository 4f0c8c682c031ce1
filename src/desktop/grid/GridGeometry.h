// Where the grid's rows and columns lie, in logical pixels.
#pragma once

#include "core/document/grid/GridDisplay.h"
#include "core/model/GridModel.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <array>

namespace tallybook::desktop {

// The header rows stay at the top and the record numbers at the left; the body moves under them by `scroll`. Rows
// that are shown all have the same height, since a row is either hidden or of the default height.
class GridGeometry {
public:
    struct Measures {
        int rowHeight = 20;
        int defaultWidth = 64; // of a column whose width is the default
        int digitWidth = 8;
        double dpi = 96;
    };

    // Looks at the model's widths and rows. To be called again whenever they change.
    void update(const model::GridModel& grid, const Measures& measures);

    int rowHeight() const { return m_measures.rowHeight; }
    int headerHeight() const { return m_headerHeight; }
    int numberWidth() const { return m_numberWidth; }
    int columnWidth(int column) const { return m_widths[static_cast<std::size_t>(column)]; }
    int bodyWidth() const { return m_lefts.back(); } // of all columns but the record number
    int bodyHeight() const { return m_bodyHeight; }  // of all visible rows

    QPoint scroll() const { return m_scroll; }
    void setScroll(QPoint scroll) { m_scroll = scroll; }

    // Left edge of a column and top edge of a row in the viewport.
    int left(int column) const;
    int top(const model::GridModel& grid, int row) const;
    int headerTop(int row) const { return row == 0 ? 0 : m_headerHeights[0]; }
    int headerRowHeight(int row) const { return m_headerHeights[static_cast<std::size_t>(row)]; }
    QRect cellRect(const model::GridModel& grid, int row, int column) const;

    // The first and one past the last visible position (see GridModel::visibleRow) between two heights.
    int firstPosition(int y) const;
    int lastPosition(const model::GridModel& grid, int y) const;
    // The first column of the body that reaches past x, kScratchColumn for none.
    int columnAt(int x) const;

    document::MousePlace placeAt(const model::GridModel& grid, QPoint point) const;
    // The column whose right edge can be dragged at this point of the headers, -1 for none.
    int edgeAt(QPoint point) const;

private:
    Measures m_measures;
    std::array<int, model::kGridColumns> m_widths{};
    std::array<int, model::kGridColumns + 1> m_lefts{}; // of the body, before scrolling
    std::array<int, model::kHeaderRows> m_headerHeights{};
    int m_headerHeight = 0;
    int m_numberWidth = 0;
    int m_bodyHeight = 0;
    QPoint m_scroll;
};

} // namespace tallybook::desktop
