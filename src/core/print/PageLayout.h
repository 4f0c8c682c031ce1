// Where everything stands on the printed pages of a grid: pure numbers, for whoever paints them on a screen, a
// printer or a file. Points throughout, from the upper left corner of the sheet.
#pragma once

#include "core/model/GridModel.h"
#include "core/platform/Screen.h"
#include "core/print/PageSetup.h"
#include "core/print/PageText.h"
#include "core/print/RowHeights.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tallybook::print {

struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Box&) const = default;
};

enum class FontRole : std::uint8_t { Cell, Header, Title, Margin };
enum class Align : std::uint8_t { Left, Centre, Right };

// One line of text, centred in the height of its box.
struct TextItem {
    Box box;
    std::string text; // Windows-1252
    FontRole font = FontRole::Cell;
    Align align = Align::Left;
    std::uint32_t colour = 0; // red + 256 green + 65536 blue
};

struct CheckItem {
    Box box; // a square
    bool checked = false;
};

struct LineItem {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
};

// What stands on one page.
struct Page {
    std::vector<Box> shades; // behind the headers
    std::vector<LineItem> lines;
    std::vector<CheckItem> checks;
    std::vector<TextItem> texts;
    int firstRecord = 0; // number of the first record on it, from 1
};

inline constexpr double kCellFont = 9;   // points of the cells' font, when nothing is scaled
inline constexpr double kLeastFont = 6;  // the smallest that fitting to the page may come to
inline constexpr double kTitleFont = 14; // of the title
inline constexpr double kMarginFont = 8; // of date and page number

// Gives the measures of a font of so many points, on the device that the pages are for.
using FontSource = std::function<FontMeasure(FontRole role, double points)>;

enum class LayoutFault : std::uint8_t {
    None,
    NoRoom,    // the margins leave no room for a row below the headers
    TooNarrow, // the font that makes all columns fit would be smaller than kLeastFont
};

// The pages of a grid's visible rows and columns. The grid must stay as it is while this is used.
//
// Rows go down the pages first, with the header rows on each; a grid that is wider than a page goes on with further
// columns of pages to the right, the record numbers repeated. A row higher than a page is cut between two lines and
// goes on. A column wider than a page is cut at its edge.
class PageLayout {
public:
    PageLayout(const model::GridModel& grid, const PageSetup& setup, const FontSource& fonts,
               platform::Screen& screen);

    LayoutFault fault() const { return m_fault; }
    int totalPages() const; // 0 when there is a fault or no visible row
    double paperWidth() const { return m_paper.width; }
    double paperHeight() const { return m_paper.height; }
    double cellFontPoints() const { return m_cellPoints; }

    // Lays a page out, from 1. `fileName` and `now` are for the texts around the cells.
    Page page(int number, const std::string& fileName, const platform::LocalTime& now,
              const platform::Regional& regional) const;

private:
    struct Column {
        int column = 0;
        double width = 0;
    };
    // Where a page of rows begins: a row's position among the visible ones, and its first line.
    struct Start {
        int position = 0;
        int line = 0;
    };
    // A stretch of one row's lines on a page.
    struct Stretch {
        int row = 0;
        int line = 0;
        int lines = 0;
        bool ends = true; // no line of the row comes behind it
        double top = 0;
    };

    void measureBody();
    void chooseColumns(const FontSource& fonts);
    std::vector<TextColumnWidth> textWidths() const;
    void breakRows();
    int linesAt(int position) const { return m_lines.empty() ? 1 : m_lines[static_cast<std::size_t>(position)]; }
    std::vector<Stretch> stretchesOf(int down) const;
    void addAround(Page& page, const HeaderFooter& texts) const;
    void addHeaders(Page& page, const std::vector<Column>& columns) const;
    void addCells(Page& page, const std::vector<Column>& columns, const Stretch& stretch) const;
    void addWrapped(Page& page, const Stretch& stretch, TextItem item, std::string_view text) const;
    void addCell(Page& page, const Stretch& stretch, const Column& column, double left) const;
    void addGridLines(Page& page, const std::vector<Column>& columns, const std::vector<Stretch>& rows) const;
    std::vector<Column> columnsOf(int across) const;

    const model::GridModel& m_grid;
    PageSetup m_setup;
    LayoutFault m_fault = LayoutFault::None;
    Box m_paper;
    Box m_body; // between header and footer, the header rows included
    double m_cellPoints = kCellFont;
    double m_scale = 1;
    FontMeasure m_font;       // of the cells
    FontMeasure m_headerFont; // of the header rows
    double m_titleHeight = 0;
    double m_footerHeight = 0;
    double m_rowHeight = 0;
    std::vector<int> m_headerRows;
    std::vector<std::vector<Column>> m_groups; // columns of each column of pages, without the record number
    std::optional<Column> m_numbers;           // of the record numbers
    std::vector<int> m_lines;                  // by visible position; empty: 1 each
    std::vector<Start> m_starts;               // of each page of rows
};

} // namespace tallybook::print
