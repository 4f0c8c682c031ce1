// How many lines each row of a printed grid takes.
#pragma once

#include "core/model/GridModel.h"
#include "core/platform/Screen.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace tallybook::print {

// How wide the characters of the code page are in the font of the cells, and how high its lines, in points. Text is
// drawn without kerning, so that the width of a text is the sum of its characters.
struct FontMeasure {
    std::array<double, 256> widths{};
    double lineHeight = 0;

    double width(std::string_view text) const;
};

inline constexpr int kCountEnters = -1;

// The lines that a text is given in a column of so many points. `enters` is the number of its line breaks, or
// kCountEnters to have them counted. A text whose widest line does not fit gets as many lines as the width goes into
// it, and some to spare, since words are not cut where the column ends; at least 1, and 1 in a column of no width.
int GetNoOfEnter(std::string_view text, int enters, double columnWidth, const FontMeasure& font);

// A column of the grid and the points that its texts have.
struct TextColumnWidth {
    int column = 0;
    double width = 0;
};

// The lines of each visible data row, by its position from 0, with texts of more than one line in full. Columns 1 and
// 2 never make a row higher. Shows progress.
std::vector<int> CalculateHeightOfEachRow(const model::GridModel& grid, std::span<const TextColumnWidth> columns,
                                          const FontMeasure& font, platform::Screen& screen);

// A column's width in points: the default for one that has none of its own, 0 for a hidden one.
double columnPoints(const model::GridModel& grid, int column);

} // namespace tallybook::print
