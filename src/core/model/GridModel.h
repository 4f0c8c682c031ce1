// The grid: the store of every cell's text, picture and colour, with the shape that the windows draw.
#pragma once

#include "core/model/Limits.h"
#include "core/model/RowOrder.h"
#include "core/model/TextColumn.h"
#include "core/model/WordColumn.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::model {

enum class Picture : std::uint8_t { None = 0, CheckOn = 1, CheckOff = 2 };
enum class Alignment : std::uint8_t { LeftCentre, RightCentre };

inline constexpr int kDefaultSize = -1;        // a height or width that the window chooses
inline constexpr int kNumberColumnWidth = 480; // twips
inline constexpr int kHeaderRows = 2;

// The current cell and the other corner of the selection.
struct GridPlace {
    int Row = 0;
    int Col = 0;
    int RowSel = 0;
    int ColSel = 0;

    bool operator==(const GridPlace&) const = default;
};

// Rows 0 and 1 are headers (names and types), row r + 2 is data record r; column 0 is the record's number,
// column s + 1 is field slot s. There is always at least one data row: a database without records keeps a
// placeholder of height 0. Rows and columns given to the members must exist. Texts are Windows-1252.
class GridModel {
public:
    GridModel();

    int rows() const { return kHeaderRows + m_order.count(); }
    int dataRows() const { return m_order.count(); }
    int cols() const { return m_cols; }
    int fixedRows() const { return kHeaderRows; }

    // Shape. reset() empties every cell, height, width and alignment and leaves the given number of data rows
    // (at least 1), each of the default height.
    void reset(int dataRows);
    std::uint32_t appendRow(); // an empty row at the end; gives its id
    void removeRow(int row);   // a data row, not the last one left
    void clearRow(int row);    // texts, pictures and colours of a data row
    // Puts data row order[i] at place i, both from 0. Heights travel with their rows.
    void permuteRows(const std::vector<std::uint32_t>& order);

    // Becomes a snapshot of a source's columns (at most kGridColumns - 1), which stand from column 1 on in the order
    // given, with their headers, widths and alignments. Rows, heights and column 0 are the source's; texts, colours
    // and pictures come from its visible rows alone.
    void copyVisible(const GridModel& source, const std::vector<int>& columns);

    // Cells. Column 0 of a data row always reads as the record's number from 1 and takes no text.
    std::string_view text(int row, int column, std::string& scratch) const;
    std::string text(int row, int column) const;
    void setText(int row, int column, std::string_view text);
    Picture picture(int row, int column) const;
    void setPicture(int row, int column, Picture picture);
    std::uint32_t colour(int row, int column) const; // red + 256 green + 65536 blue
    void setColour(int row, int column, std::uint32_t colour);

    // The store of a column for bulk work, by row id. Call touch() after changing it.
    TextColumn& column(int column) { return m_texts[static_cast<std::size_t>(column)]; }
    const TextColumn& column(int column) const { return m_texts[static_cast<std::size_t>(column)]; }
    WordColumn& pictures(int column) { return m_pictures[static_cast<std::size_t>(column)]; }
    const WordColumn& pictures(int column) const { return m_pictures[static_cast<std::size_t>(column)]; }
    WordColumn& colours(int column) { return m_colours[static_cast<std::size_t>(column)]; }
    const WordColumn& colours(int column) const { return m_colours[static_cast<std::size_t>(column)]; }
    const RowOrder& order() const { return m_order; }
    std::uint32_t rowId(int row) const { return m_order.id(row - kHeaderRows); }

    // Measures: 0 hides, -1 is the default; otherwise twips.
    int rowHeight(int row) const;
    void setRowHeight(int row, int height);
    // Gives the listed data rows, in rising order, the default height and hides all others.
    void showOnly(std::vector<int> rows);
    int columnWidth(int column) const { return m_widths[static_cast<std::size_t>(column)]; }
    void setColumnWidth(int column, int width);
    Alignment alignment(int column) const { return m_alignments[static_cast<std::size_t>(column)]; }
    void setAlignment(int column, Alignment alignment);

    // Rows of a height other than 0, headers left out, in order.
    int visibleRows() const;
    int visibleRow(int position) const; // the grid row at a position from 0
    int visiblePosition(int row) const; // the position of a row, or of the next visible one; may be visibleRows()

    // Current cell. setCell puts both corners of the selection on one cell.
    const GridPlace& place() const { return m_place; }
    int row() const { return m_place.Row; }
    int col() const { return m_place.Col; }
    void setCell(int row, int column);
    void select(int rowSel, int colSel);
    void setPlace(const GridPlace& place);
    int topRow() const { return m_topRow; }
    void setTopRow(int row) { m_topRow = row; }

    // Counts every change, so that whoever draws the grid knows when to draw it again.
    std::uint64_t revision() const { return m_revision; }
    void touch() { ++m_revision; }

private:
    void rowsChanged();
    const std::vector<int>& visibleIndex() const;

    std::uint32_t highestId() const;
    void copyColumn(const GridModel& source, int sourceColumn, int column, std::span<const std::uint64_t> ids);
    std::vector<std::uint64_t> visibleIds() const; // bit n of number g for id g * 64 + n

    RowOrder m_order;
    int m_cols = kGridColumns;
    std::array<std::array<std::string, kGridColumns>, kHeaderRows> m_headers;
    std::array<TextColumn, kGridColumns> m_texts;
    std::array<WordColumn, kGridColumns> m_pictures;
    std::array<WordColumn, kGridColumns> m_colours;
    std::array<int, kHeaderRows> m_headerHeights{};
    std::vector<int> m_heights; // by row id; empty while every row has the default height
    std::array<int, kGridColumns> m_widths{};
    std::array<Alignment, kGridColumns> m_alignments{};
    GridPlace m_place;
    int m_topRow = kHeaderRows;
    std::uint64_t m_revision = 0;
    mutable std::vector<int> m_visible; // grid rows; made when asked for
    mutable bool m_visibleKnown = false;
};

} // namespace tallybook::model
