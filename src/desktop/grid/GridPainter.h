// Draws the part of the grid that is visible, and nothing else.
#pragma once

#include "core/model/GridModel.h"
#include "desktop/grid/GridFont.h"
#include "desktop/grid/GridGeometry.h"
#include "desktop/grid/GridLook.h"
#include "desktop/grid/TextBatch.h"

#include <QPainter>
#include <QRect>

#include <string>

namespace tallybook::desktop {

// Lives as long as one repaint. The batch is lent, so that its storage is used again.
class GridPainter {
public:
    GridPainter(QPainter& painter, const model::GridModel& grid, const GridGeometry& geometry, const GridFont& font,
                const GridLook& look, TextBatch& batch, QSize viewport);

    void setFrame(const QRect& cell) { m_frame = cell; } // round the current cell; none when empty
    void paint();
    // A text where the cells would be, over what was painted.
    void paintHint(const QString& text);

private:
    struct Block { // of cells: columns and visible positions, each from..one past the last
        int firstColumn = 1;
        int lastColumn = 1;
        int firstPosition = 0;
        int lastPosition = 0;
    };

    void paintBody();
    void paintRow(int position);
    void paintCell(int row, int column, const QRect& cell, bool selected);
    void paintPicture(model::Picture picture, const QRect& cell);
    void paintLines();
    void paintFrame();
    void paintNumbers();
    void paintHeaders();
    void paintHeaderRow(int row);
    bool isSelected(int row, int column) const;
    bool isCurrentColumn(int column) const;
    bool isCurrentRow(int row) const;
    QRgb colourOf(int row, int column, bool selected);

    QPainter& m_painter;
    const model::GridModel& m_grid;
    const GridGeometry& m_geometry;
    const GridFont& m_font;
    const GridLook& m_look;
    TextBatch& m_batch;
    QSize m_viewport;
    Block m_shown;
    QRect m_frame;
    bool m_hasBlock = false;          // more than the current cell is selected
    std::uint32_t m_colourNumber = 0; // of the coloured cell painted last, on plain ground
    QRgb m_colour = 0;
    std::string m_scratch;
};

} // namespace tallybook::desktop
