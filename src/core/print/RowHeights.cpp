#include "core/print/RowHeights.h"

#include <algorithm>
#include <string>

namespace tallybook::print {

namespace {

constexpr double kTwipsAPoint = 20;
constexpr double kDefaultColumnWidth = 48; // points: 64 pixels of a screen of 96 dots an inch
constexpr int kFirstMeasuredColumn = 3;
constexpr int kRowsAStep = 256; // between two looks at the progress bar

// The line breaks of a text (CR LF, LF or CR) and the points of its widest line.
struct TextExtent {
    int enters = 0;
    double widest = 0;
};

TextExtent extentOf(std::string_view text, const FontMeasure& font) {
    TextExtent extent;
    double width = 0;
    char before = 0;
    for (const char c : text) {
        if (c != '\r' && c != '\n') {
            width += font.widths[static_cast<unsigned char>(c)];
        } else {
            extent.widest = std::max(extent.widest, width);
            width = 0;
            extent.enters += c == '\n' && before == '\r' ? 0 : 1;
        }
        before = c;
    }
    extent.widest = std::max(extent.widest, width);
    return extent;
}

} // namespace

double FontMeasure::width(std::string_view text) const {
    double sum = 0;
    for (const char c : text)
        sum += widths[static_cast<unsigned char>(c)];
    return sum;
}

int GetNoOfEnter(std::string_view text, int enters, double columnWidth, const FontMeasure& font) {
    if (columnWidth <= 0)
        return 1;
    const TextExtent extent = extentOf(text, font);
    if (enters == kCountEnters)
        enters = extent.enters;
    if (extent.widest > columnWidth)
        return static_cast<int>(extent.widest / columnWidth) + (enters > 0 ? 2 : 3) + enters;
    return enters > 0 ? enters + 2 : 1;
}

double columnPoints(const model::GridModel& grid, int column) {
    const int twips = grid.columnWidth(column);
    return twips == model::kDefaultSize ? kDefaultColumnWidth : twips / kTwipsAPoint;
}

std::vector<int> CalculateHeightOfEachRow(const model::GridModel& grid, std::span<const TextColumnWidth> columns,
                                          const FontMeasure& font, platform::Screen& screen) {
    const int rows = grid.visibleRows();
    std::vector<int> lines(static_cast<std::size_t>(rows), 1);
    screen.progress("Setting preview records...", 0, rows);
    std::string scratch;
    for (int position = 0; position < rows; ++position) {
        const int row = grid.visibleRow(position);
        int& most = lines[static_cast<std::size_t>(position)];
        for (const TextColumnWidth& shown : columns)
            if (shown.column >= kFirstMeasuredColumn)
                most = std::max(most,
                                GetNoOfEnter(grid.text(row, shown.column, scratch), kCountEnters, shown.width, font));
        if ((position + 1) % kRowsAStep == 0 || position + 1 == rows)
            screen.progress("Setting record " + std::to_string(position + 1) + " of " + std::to_string(rows),
                            position + 1, rows);
    }
    screen.progress({}, 0, 0);
    return lines;
}

} // namespace tallybook::print
