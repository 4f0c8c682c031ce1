#include "core/print/PageLayout.h"

#include <algorithm>

namespace tallybook::print {

namespace {

constexpr double kCellPadding = 2;  // points between a cell's edge and its text, at its sides
constexpr double kLinePadding = 3;  // points that a row is higher than its line
constexpr double kAroundGap = 6;    // points between the body and the texts around it
constexpr double kCheckShare = 0.6; // of a row's height
constexpr double kTolerance = 1e-6; // points; sums of widths are not exact

bool fits(double used, double room) {
    return used <= room + kTolerance;
}

Align alignOf(model::Alignment alignment) {
    return alignment == model::Alignment::RightCentre ? Align::Right : Align::Left;
}

Box insideOf(const Box& cell) {
    return {cell.left + kCellPadding, cell.top, std::max(cell.width - 2 * kCellPadding, 0.0), cell.height};
}

Box checkIn(const Box& cell) {
    const double side = std::min(cell.height * kCheckShare, cell.width);
    return {cell.left + (cell.width - side) / 2, cell.top + (cell.height - side) / 2, side, side};
}

} // namespace

PageLayout::PageLayout(const model::GridModel& grid, const PageSetup& setup, const FontSource& fonts,
                       platform::Screen& screen)
    : m_grid(grid), m_setup(setup) {
    const FontMeasure title = fonts(FontRole::Title, kTitleFont);
    const FontMeasure margin = fonts(FontRole::Margin, kMarginFont);
    m_titleHeight = setup.title.empty() && !setup.fileName ? 0 : title.lineHeight + kAroundGap;
    m_footerHeight = setup.date || setup.pageNumber ? margin.lineHeight + kAroundGap : 0;
    for (int row = 0; row < model::kHeaderRows; ++row)
        if (grid.rowHeight(row) != 0)
            m_headerRows.push_back(row);
    measureBody();
    chooseColumns(fonts);
    if (m_fault == LayoutFault::None && setup.memo)
        m_lines = CalculateHeightOfEachRow(grid, textWidths(), m_font, screen);
    if (m_fault == LayoutFault::None)
        breakRows();
}

void PageLayout::measureBody() {
    const Paper& paper = kPapers[static_cast<std::size_t>(m_setup.paper)];
    m_paper.width = m_setup.portrait ? paper.width : paper.height;
    m_paper.height = m_setup.portrait ? paper.height : paper.width;
    const Margins& margins = m_setup.margins;
    m_body.left = margins.left * kPointsAnInch;
    m_body.top = margins.top * kPointsAnInch + m_titleHeight;
    m_body.width = m_paper.width - m_body.left - margins.right * kPointsAnInch;
    m_body.height = m_paper.height - m_body.top - margins.bottom * kPointsAnInch - m_footerHeight;
}

// Settles scale, fonts, and which columns stand on which column of pages.
void PageLayout::chooseColumns(const FontSource& fonts) {
    std::vector<Column> columns;
    double total = 0;
    for (int column = 1; column < std::min(m_grid.cols(), model::kScratchColumn); ++column) {
        if (const double width = columnPoints(m_grid, column); width > 0) {
            columns.push_back({column, width});
            total += width;
        }
    }
    if (m_setup.recordNumber)
        m_numbers = Column{model::kNumberColumn, columnPoints(m_grid, model::kNumberColumn)};
    const double fixed = m_numbers ? m_numbers->width : 0;
    if (m_setup.fit && !fits(fixed + total, m_body.width))
        m_scale = m_body.width / (fixed + total);
    m_cellPoints = kCellFont * m_scale;
    if (m_cellPoints < kLeastFont - kTolerance)
        m_fault = LayoutFault::TooNarrow;
    m_font = fonts(FontRole::Cell, m_cellPoints);
    m_headerFont = fonts(FontRole::Header, m_cellPoints);
    m_rowHeight = m_font.lineHeight + kLinePadding * m_scale;

    if (m_numbers)
        m_numbers->width = std::min(m_numbers->width * m_scale, m_body.width);
    const double room = m_body.width - (m_numbers ? m_numbers->width : 0);
    double used = 0;
    for (Column column : columns) {
        column.width = std::min(column.width * m_scale, room);
        if (m_groups.empty() || !fits(used + column.width, room)) {
            m_groups.emplace_back();
            used = 0;
        }
        m_groups.back().push_back(column);
        used += column.width;
    }
    if (m_groups.empty() && m_numbers)
        m_groups.emplace_back();
}

std::vector<TextColumnWidth> PageLayout::textWidths() const {
    std::vector<TextColumnWidth> widths;
    for (const std::vector<Column>& group : m_groups)
        for (const Column& column : group)
            widths.push_back({column.column, insideOf({0, 0, column.width, 0}).width});
    return widths;
}

void PageLayout::breakRows() {
    const double headers = m_rowHeight * static_cast<double>(m_headerRows.size());
    const int linesAPage = static_cast<int>((m_body.height - headers + kTolerance) / m_rowHeight);
    if (linesAPage < 1 || m_body.width <= 0) {
        m_fault = LayoutFault::NoRoom;
        return;
    }
    const int rows = m_grid.visibleRows();
    int left = 0; // lines that are still free on the page
    for (int position = 0; position < rows; ++position) {
        const int lines = linesAt(position);
        if (lines <= left) {
            left -= lines;
            continue;
        }
        // A row that would fit on a page of its own is never cut.
        for (int line = 0; line < lines; line += linesAPage) {
            m_starts.push_back({position, line});
            left = linesAPage - std::min(lines - line, linesAPage);
        }
    }
}

int PageLayout::totalPages() const {
    return static_cast<int>(m_starts.size() * m_groups.size());
}

std::vector<PageLayout::Column> PageLayout::columnsOf(int across) const {
    std::vector<Column> columns;
    if (m_numbers)
        columns.push_back(*m_numbers);
    const std::vector<Column>& group = m_groups[static_cast<std::size_t>(across)];
    columns.insert(columns.end(), group.begin(), group.end());
    return columns;
}

std::vector<PageLayout::Stretch> PageLayout::stretchesOf(int down) const {
    const auto at = static_cast<std::size_t>(down);
    const Start start = m_starts[at];
    const Start end = at + 1 < m_starts.size() ? m_starts[at + 1] : Start{m_grid.visibleRows(), 0};
    std::vector<Stretch> stretches;
    double top = m_body.top + m_rowHeight * static_cast<double>(m_headerRows.size());
    for (int position = start.position; position < end.position || (position == end.position && end.line > 0);
         ++position) {
        const int first = position == start.position ? start.line : 0;
        const int last = position == end.position ? end.line : linesAt(position);
        if (first >= last)
            break;
        stretches.push_back({m_grid.visibleRow(position), first, last - first, last == linesAt(position), top});
        top += m_rowHeight * (last - first);
    }
    return stretches;
}

Page PageLayout::page(int number, const std::string& fileName, const platform::LocalTime& now,
                      const platform::Regional& regional) const {
    Page page;
    const int downs = static_cast<int>(m_starts.size());
    const std::vector<Column> columns = columnsOf((number - 1) / downs);
    const std::vector<Stretch> rows = stretchesOf((number - 1) % downs);
    page.firstRecord = rows.empty() ? 0 : rows.front().row - model::kHeaderRows + 1;
    addAround(page, SetHeaderFooter(m_setup, fileName, now, regional, number, totalPages()));
    addHeaders(page, columns);
    for (const Stretch& stretch : rows)
        addCells(page, columns, stretch);
    if (m_setup.gridLines)
        addGridLines(page, columns, rows);
    return page;
}

void PageLayout::addAround(Page& page, const HeaderFooter& texts) const {
    if (m_titleHeight > 0)
        page.texts.push_back({{m_body.left, m_body.top - m_titleHeight, m_body.width, m_titleHeight - kAroundGap},
                              texts.title,
                              FontRole::Title,
                              Align::Centre});
    const Box footer{m_body.left, m_body.top + m_body.height + kAroundGap, m_body.width, m_footerHeight - kAroundGap};
    if (!texts.date.empty())
        page.texts.push_back({footer, texts.date, FontRole::Margin, Align::Left});
    if (!texts.pageNumber.empty())
        page.texts.push_back({footer, texts.pageNumber, FontRole::Margin, Align::Right});
}

void PageLayout::addHeaders(Page& page, const std::vector<Column>& columns) const {
    double top = m_body.top;
    for (const int row : m_headerRows) {
        double left = m_body.left;
        for (const Column& column : columns) {
            const Box cell{left, top, column.width, m_rowHeight};
            page.shades.push_back(cell);
            const Box inside = insideOf(cell);
            page.texts.push_back({inside, elideText(m_grid.text(row, column.column), inside.width, m_headerFont),
                                  FontRole::Header, alignOf(m_grid.alignment(column.column))});
            left += column.width;
        }
        top += m_rowHeight;
    }
}

void PageLayout::addCells(Page& page, const std::vector<Column>& columns, const Stretch& stretch) const {
    double left = m_body.left;
    for (const Column& column : columns) {
        addCell(page, stretch, column, left);
        left += column.width;
    }
}

void PageLayout::addCell(Page& page, const Stretch& stretch, const Column& column, double left) const {
    const Box cell{left, stretch.top, column.width, m_rowHeight};
    if (const model::Picture picture = m_grid.picture(stretch.row, column.column); picture != model::Picture::None) {
        if (stretch.line == 0)
            page.checks.push_back({checkIn(cell), picture == model::Picture::CheckOn});
        return;
    }
    std::string scratch;
    const std::string_view text = m_grid.text(stretch.row, column.column, scratch);
    if (text.empty())
        return;
    TextItem item{insideOf(cell),
                  {},
                  FontRole::Cell,
                  alignOf(m_grid.alignment(column.column)),
                  m_grid.colour(stretch.row, column.column)};
    if (!m_setup.memo) {
        item.text = elideText(text, item.box.width, m_font);
        page.texts.push_back(std::move(item));
        return;
    }
    addWrapped(page, stretch, std::move(item), text);
}

// The lines of a stretch. Where the row ends before the text does, its last line ends in an ellipsis.
void PageLayout::addWrapped(Page& page, const Stretch& stretch, TextItem item, std::string_view text) const {
    const std::vector<std::string_view> lines = wrapText(text, item.box.width, m_font);
    const int count = static_cast<int>(lines.size());
    const int end = std::min(stretch.line + stretch.lines, count);
    for (int line = stretch.line; line < end; ++line) {
        std::string_view shown = lines[static_cast<std::size_t>(line)];
        if (stretch.ends && line + 1 == end && end < count)
            shown = text.substr(static_cast<std::size_t>(shown.data() - text.data()));
        item.text = elideText(shown, item.box.width, m_font);
        item.box.top = stretch.top + m_rowHeight * (line - stretch.line);
        page.texts.push_back(item);
    }
}

void PageLayout::addGridLines(Page& page, const std::vector<Column>& columns,
                              const std::vector<Stretch>& rows) const {
    double right = m_body.left;
    for (const Column& column : columns)
        right += column.width;
    std::vector<double> levels;
    for (std::size_t i = 0; i <= m_headerRows.size(); ++i)
        levels.push_back(m_body.top + m_rowHeight * static_cast<double>(i));
    for (const Stretch& row : rows)
        levels.push_back(row.top + m_rowHeight * row.lines);
    for (const double y : levels)
        page.lines.push_back({m_body.left, y, right, y});
    double x = m_body.left;
    page.lines.push_back({x, m_body.top, x, levels.back()});
    for (const Column& column : columns) {
        x += column.width;
        page.lines.push_back({x, m_body.top, x, levels.back()});
    }
}

} // namespace tallybook::print
