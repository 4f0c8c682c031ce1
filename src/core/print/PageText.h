// The texts around the cells of a page, and how a cell's text is cut into lines.
#pragma once

#include "core/platform/Clock.h"
#include "core/platform/Regional.h"
#include "core/print/PageSetup.h"
#include "core/print/RowHeights.h"

#include <string>
#include <string_view>
#include <vector>

namespace tallybook::print {

// Texts of a page that are wanted; an empty one is not printed. Windows-1252.
struct HeaderFooter {
    std::string title;
    std::string date;
    std::string pageNumber;

    bool operator==(const HeaderFooter&) const = default;
};

// The title, with the file's name in front when that is wanted too; today as "05/Mar/2003"; "2 of 17".
HeaderFooter SetHeaderFooter(const PageSetup& setup, const std::string& fileName, const platform::LocalTime& now,
                             const platform::Regional& regional, int page, int pages);

// A text in lines no wider than `width` points, broken at its line breaks, else at blanks, else inside a word; a
// blank that a line is broken at is dropped. An empty text is one empty line. The lines are parts of the text.
std::vector<std::string_view> wrapText(std::string_view text, double width, const FontMeasure& font);

// A text on one line no wider than `width`: its line breaks become blanks, and what does not fit ends in an ellipsis.
std::string elideText(std::string_view text, double width, const FontMeasure& font);

} // namespace tallybook::print
