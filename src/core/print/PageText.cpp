#include "core/print/PageText.h"

#include "core/calc/values/Dates.h"

#include <algorithm>

namespace tallybook::print {

namespace {

constexpr char kEllipsis = '\x85';

double widthOf(char c, const FontMeasure& font) {
    return font.widths[static_cast<unsigned char>(c)];
}

// How many characters of a line without breaks fit into the width, at least one of a line that has any.
std::size_t fitting(std::string_view line, double width, const FontMeasure& font) {
    double used = 0;
    std::size_t count = 0;
    while (count < line.size() && (used += widthOf(line[count], font)) <= width)
        ++count;
    return line.empty() ? 0 : std::max<std::size_t>(count, 1);
}

void wrapLine(std::string_view line, double width, const FontMeasure& font, std::vector<std::string_view>& lines) {
    while (true) {
        const std::size_t count = fitting(line, width, font);
        if (count == line.size())
            break;
        // The blank behind the last word that fits may itself be the first character that does not.
        const std::size_t blank = line.rfind(' ', count);
        const bool atBlank = blank != std::string_view::npos && blank > 0;
        lines.push_back(line.substr(0, atBlank ? blank : count));
        line.remove_prefix(atBlank ? blank + 1 : count);
    }
    lines.push_back(line);
}

} // namespace

HeaderFooter SetHeaderFooter(const PageSetup& setup, const std::string& fileName, const platform::LocalTime& now,
                             const platform::Regional& regional, int page, int pages) {
    HeaderFooter texts;
    texts.title = setup.title;
    if (setup.fileName)
        texts.title = setup.title.empty() ? fileName : fileName + " - " + setup.title;
    if (setup.date)
        texts.date = calc::formatDate(calc::serialOf(now), "DD/MMM/YYYY", regional);
    if (setup.pageNumber)
        texts.pageNumber = std::to_string(page) + " of " + std::to_string(pages);
    return texts;
}

std::vector<std::string_view> wrapText(std::string_view text, double width, const FontMeasure& font) {
    std::vector<std::string_view> lines;
    while (true) {
        const std::size_t end = text.find_first_of("\r\n");
        wrapLine(text.substr(0, end), width, font, lines);
        if (end == std::string_view::npos)
            return lines;
        text.remove_prefix(end);
        text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    }
}

std::string elideText(std::string_view text, double width, const FontMeasure& font) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || text.substr(i, 2) != "\r\n")
            line += text[i] == '\r' || text[i] == '\n' ? ' ' : text[i];
    if (font.width(line) <= width)
        return line;
    const double room = width - widthOf(kEllipsis, font);
    line.resize(room > 0 && widthOf(line[0], font) <= room ? fitting(line, room, font) : 0);
    return line + kEllipsis;
}

} // namespace tallybook::print
