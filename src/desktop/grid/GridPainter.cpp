#include "desktop/grid/GridPainter.h"

#include <algorithm>

namespace tallybook::desktop {

namespace {

constexpr int kFrameWidth = 2;

} // namespace

GridPainter::GridPainter(QPainter& painter, const model::GridModel& grid, const GridGeometry& geometry,
                         const GridFont& font, const GridLook& look, TextBatch& batch, QSize viewport)
    : m_painter(painter), m_grid(grid), m_geometry(geometry), m_font(font), m_look(look), m_batch(batch),
      m_viewport(viewport) {
    const model::GridPlace& place = grid.place();
    m_hasBlock = place.Row != place.RowSel || place.Col != place.ColSel;
    m_shown.firstColumn = geometry.columnAt(geometry.numberWidth());
    m_shown.lastColumn = m_shown.firstColumn;
    while (m_shown.lastColumn < model::kScratchColumn && geometry.left(m_shown.lastColumn) < viewport.width())
        ++m_shown.lastColumn;
    m_shown.firstPosition = geometry.firstPosition(geometry.headerHeight());
    m_shown.lastPosition = std::max(m_shown.firstPosition, geometry.lastPosition(grid, viewport.height()));
}

void GridPainter::paint() {
    const int bodyRight = m_geometry.left(model::kScratchColumn);
    const int bodyBottom = m_geometry.headerHeight() + m_geometry.bodyHeight() - m_geometry.scroll().y();
    m_painter.fillRect(QRect(QPoint(), m_viewport), m_look.outside);
    m_painter.fillRect(QRect(m_geometry.numberWidth(), m_geometry.headerHeight(),
                             bodyRight - m_geometry.numberWidth(), bodyBottom - m_geometry.headerHeight()),
                       m_look.ground);
    paintBody();
    paintNumbers();
    paintHeaders();
}

void GridPainter::paintBody() {
    paintLines();
    const QRect body(m_geometry.numberWidth(), m_geometry.headerHeight(),
                     m_viewport.width() - m_geometry.numberWidth(), m_viewport.height() - m_geometry.headerHeight());
    m_painter.setClipRect(body);
    for (int position = m_shown.firstPosition; position < m_shown.lastPosition; ++position)
        paintRow(position);
    m_batch.draw(m_painter, m_font);
    paintFrame();
    m_painter.setClipping(false);
}

bool GridPainter::isCurrentColumn(int column) const {
    const auto [left, right] = std::minmax(m_grid.place().Col, m_grid.place().ColSel);
    return column >= left && column <= right;
}

bool GridPainter::isCurrentRow(int row) const {
    const auto [top, bottom] = std::minmax(m_grid.place().Row, m_grid.place().RowSel);
    return row >= top && row <= bottom;
}

bool GridPainter::isSelected(int row, int column) const {
    return isCurrentRow(row) && isCurrentColumn(column);
}

void GridPainter::paintRow(int position) {
    const int row = m_grid.visibleRow(position);
    QRect cell(0, m_geometry.headerHeight() + position * m_geometry.rowHeight() - m_geometry.scroll().y(), 0,
               m_geometry.rowHeight());
    for (int column = m_shown.firstColumn; column < m_shown.lastColumn; ++column) {
        if (m_geometry.columnWidth(column) == 0)
            continue;
        cell.setLeft(m_geometry.left(column));
        cell.setWidth(m_geometry.columnWidth(column));
        const bool current = row == m_grid.row() && column == m_grid.col();
        paintCell(row, column, cell, m_hasBlock && !current && isSelected(row, column));
    }
}

void GridPainter::paintCell(int row, int column, const QRect& cell, bool selected) {
    if (selected)
        m_painter.fillRect(cell, m_look.selected);
    const model::Picture picture = m_grid.picture(row, column);
    if (picture != model::Picture::None)
        paintPicture(picture, cell);
    const std::string_view text = m_grid.text(row, column, m_scratch);
    if (text.empty())
        return;
    m_batch.add(m_font, text, cell, m_grid.alignment(column) == model::Alignment::RightCentre,
                colourOf(row, column, selected));
}

// Coloured cells come in columns of few colours, so the one before mostly answers.
QRgb GridPainter::colourOf(int row, int column, bool selected) {
    const std::uint32_t number = m_grid.colour(row, column);
    if (number == 0)
        return (selected ? m_look.selectedText : m_look.text).rgb();
    if (selected)
        return selectedColour(number, m_look.selectedText, m_look.selected).rgb();
    if (number != m_colourNumber) {
        m_colourNumber = number;
        m_colour = readableColour(number, m_look.text, m_look.ground).rgb();
    }
    return m_colour;
}

void GridPainter::paintPicture(model::Picture picture, const QRect& cell) {
    const QPixmap& pixmap = picture == model::Picture::CheckOn ? m_look.checkon : m_look.checkoff;
    const QSize size = pixmap.deviceIndependentSize().toSize();
    m_painter.drawPixmap(cell.left() + (cell.width() - size.width()) / 2,
                         cell.top() + (cell.height() - size.height()) / 2, pixmap);
}

// The line of a cell is its last row and column of pixels.
void GridPainter::paintLines() {
    const int right = std::min(m_viewport.width(), m_geometry.left(model::kScratchColumn));
    const int bottom =
        std::min(m_viewport.height(), m_geometry.headerHeight() + m_geometry.bodyHeight() - m_geometry.scroll().y());
    for (int position = m_shown.firstPosition; position < m_shown.lastPosition; ++position) {
        const int y =
            m_geometry.headerHeight() + (position + 1) * m_geometry.rowHeight() - m_geometry.scroll().y() - 1;
        m_painter.fillRect(QRect(m_geometry.numberWidth(), y, right - m_geometry.numberWidth(), 1), m_look.line);
    }
    for (int column = m_shown.firstColumn; column < m_shown.lastColumn; ++column) {
        const int x = m_geometry.left(column) + m_geometry.columnWidth(column) - 1;
        m_painter.fillRect(QRect(x, m_geometry.headerHeight(), 1, bottom - m_geometry.headerHeight()), m_look.line);
    }
}

void GridPainter::paintFrame() {
    if (m_frame.isEmpty())
        return;
    const QRect cell = m_frame.adjusted(-1, -1, 0, 0);
    m_painter.fillRect(QRect(cell.left(), cell.top(), cell.width(), kFrameWidth), m_look.frame);
    m_painter.fillRect(QRect(cell.left(), cell.bottom() - 1, cell.width(), kFrameWidth), m_look.frame);
    m_painter.fillRect(QRect(cell.left(), cell.top(), kFrameWidth, cell.height()), m_look.frame);
    m_painter.fillRect(QRect(cell.right() - 1, cell.top(), kFrameWidth, cell.height()), m_look.frame);
}

void GridPainter::paintNumbers() {
    const int width = m_geometry.numberWidth();
    m_painter.setClipRect(
        QRect(0, m_geometry.headerHeight(), width, m_viewport.height() - m_geometry.headerHeight()));
    for (int position = m_shown.firstPosition; position < m_shown.lastPosition; ++position) {
        const int row = m_grid.visibleRow(position);
        const QRect cell(0, m_geometry.top(m_grid, row), width, m_geometry.rowHeight());
        m_painter.fillRect(cell, isCurrentRow(row) ? m_look.currentHeader : m_look.header);
        m_painter.fillRect(QRect(0, cell.bottom(), width, 1), m_look.headerLine);
        m_batch.add(m_font, m_grid.text(row, model::kNumberColumn, m_scratch), cell, true, m_look.headerText.rgb());
    }
    m_batch.draw(m_painter, m_font);
    const int bottom = m_geometry.headerHeight() + m_geometry.bodyHeight() - m_geometry.scroll().y();
    m_painter.fillRect(QRect(width - 1, 0, 1, bottom), m_look.headerLine);
    m_painter.setClipping(false);
}

void GridPainter::paintHeaders() {
    const int right = std::min(m_viewport.width(), m_geometry.left(model::kScratchColumn));
    m_painter.fillRect(QRect(0, 0, right, m_geometry.headerHeight()), m_look.header);
    m_painter.setClipRect(
        QRect(m_geometry.numberWidth(), 0, m_viewport.width() - m_geometry.numberWidth(), m_geometry.headerHeight()));
    for (int row = 0; row < model::kHeaderRows; ++row)
        if (m_geometry.headerRowHeight(row) > 0)
            paintHeaderRow(row);
    m_batch.draw(m_painter, m_font);
    m_painter.setClipping(false);
    m_painter.fillRect(QRect(m_geometry.numberWidth() - 1, 0, 1, m_geometry.headerHeight()), m_look.headerLine);
    m_painter.fillRect(QRect(0, m_geometry.headerHeight() - 1, right, 1), m_look.headerLine);
}

void GridPainter::paintHeaderRow(int row) {
    for (int column = m_shown.firstColumn; column < m_shown.lastColumn; ++column) {
        if (m_geometry.columnWidth(column) == 0)
            continue;
        const QRect cell(m_geometry.left(column), m_geometry.headerTop(row), m_geometry.columnWidth(column),
                         m_geometry.headerRowHeight(row));
        if (isCurrentColumn(column))
            m_painter.fillRect(cell, m_look.currentHeader);
        m_painter.fillRect(QRect(cell.right(), cell.top(), 1, cell.height()), m_look.headerLine);
        const bool right = m_grid.alignment(column) == model::Alignment::RightCentre;
        m_batch.add(m_font, m_grid.text(row, column, m_scratch), cell, right, m_look.headerText.rgb());
    }
}

void GridPainter::paintHint(const QString& text) {
    constexpr int kMargin = 24;
    const QRect room(m_geometry.numberWidth(), m_geometry.headerHeight(),
                     m_viewport.width() - m_geometry.numberWidth(), m_viewport.height() - m_geometry.headerHeight());
    m_painter.setFont(m_font.font());
    m_painter.setPen(m_look.text);
    m_painter.drawText(room.adjusted(kMargin, kMargin, -kMargin, -kMargin),
                       static_cast<int>(Qt::AlignHCenter | Qt::AlignTop) | Qt::TextWordWrap, text);
}

} // namespace tallybook::desktop
