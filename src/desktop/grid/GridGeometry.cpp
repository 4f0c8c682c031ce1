#include "desktop/grid/GridGeometry.h"

#include "desktop/platform/Twips.h"

#include <algorithm>
#include <cstdlib>

namespace tallybook::desktop {

namespace {

constexpr int kMarkerWidth = 12; // room for the current row's marker
constexpr int kEdgeReach = 4;    // how far from a column's edge the mouse still holds it

std::size_t index(int value) {
    return static_cast<std::size_t>(value);
}

int digitsOf(int number) {
    int digits = 1;
    while (number >= 10) {
        number /= 10;
        ++digits;
    }
    return digits;
}

} // namespace

void GridGeometry::update(const model::GridModel& grid, const Measures& measures) {
    m_measures = measures;
    for (int row = 0; row < model::kHeaderRows; ++row)
        m_headerHeights[index(row)] = grid.rowHeight(row) == 0 ? 0 : measures.rowHeight;
    m_headerHeight = m_headerHeights[0] + m_headerHeights[1];
    for (int column = 0; column < model::kGridColumns; ++column) {
        const int twips = column < grid.cols() ? grid.columnWidth(column) : 0;
        m_widths[index(column)] =
            twips == model::kDefaultSize ? measures.defaultWidth : std::max(0, pixelsOf(twips, measures.dpi));
    }
    // 480 twips hold three digits beside the marker; a long file needs more.
    const int needed = kMarkerWidth + (digitsOf(grid.dataRows()) + 1) * measures.digitWidth;
    m_numberWidth = std::max(m_widths[model::kNumberColumn], needed);
    m_widths[model::kNumberColumn] = m_numberWidth;
    m_lefts[0] = 0;
    m_lefts[1] = 0;
    for (int column = 1; column < model::kGridColumns; ++column)
        m_lefts[index(column) + 1] = m_lefts[index(column)] + m_widths[index(column)];
    m_bodyHeight = grid.visibleRows() * measures.rowHeight;
}

int GridGeometry::left(int column) const {
    return column == model::kNumberColumn ? 0 : m_numberWidth + m_lefts[index(column)] - m_scroll.x();
}

int GridGeometry::top(const model::GridModel& grid, int row) const {
    if (row < model::kHeaderRows)
        return headerTop(row);
    return m_headerHeight + grid.visiblePosition(row) * rowHeight() - m_scroll.y();
}

QRect GridGeometry::cellRect(const model::GridModel& grid, int row, int column) const {
    const int height = row < model::kHeaderRows ? headerRowHeight(row) : rowHeight();
    return {left(column), top(grid, row), columnWidth(column), height};
}

int GridGeometry::firstPosition(int y) const {
    return std::max(0, (y - m_headerHeight + m_scroll.y()) / rowHeight());
}

int GridGeometry::lastPosition(const model::GridModel& grid, int y) const {
    return std::min(grid.visibleRows(), (y - m_headerHeight + m_scroll.y()) / rowHeight() + 1);
}

int GridGeometry::columnAt(int x) const {
    const int place = x - m_numberWidth + m_scroll.x();
    const auto past = std::upper_bound(m_lefts.begin() + 1, m_lefts.end(), place);
    return std::min(static_cast<int>(past - m_lefts.begin()) - 1, model::kScratchColumn);
}

document::MousePlace GridGeometry::placeAt(const model::GridModel& grid, QPoint point) const {
    document::MousePlace place;
    place.col = point.x() < m_numberWidth ? model::kNumberColumn : columnAt(point.x());
    if (point.y() < m_headerHeight) {
        place.row = point.y() < m_headerHeights[0] ? 0 : 1;
        return place;
    }
    const int position = firstPosition(point.y());
    place.row = position < grid.visibleRows() ? grid.visibleRow(position) : grid.rows();
    return place;
}

int GridGeometry::edgeAt(QPoint point) const {
    if (point.y() >= m_headerHeight || point.x() < m_numberWidth)
        return -1;
    for (int column = model::kScratchColumn - 1; column >= 1; --column) {
        const int edge = left(column) + columnWidth(column);
        if (columnWidth(column) > 0 && std::abs(point.x() - edge) <= kEdgeReach)
            return column;
    }
    return -1;
}

} // namespace tallybook::desktop
