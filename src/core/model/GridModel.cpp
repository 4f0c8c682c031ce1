#include "core/model/GridModel.h"

#include <algorithm>
#include <charconv>

namespace tallybook::model {

namespace {

std::size_t index(int value) {
    return static_cast<std::size_t>(value);
}

} // namespace

GridModel::GridModel() {
    reset(1);
}

void GridModel::reset(int dataRows) {
    m_order.reset(dataRows);
    m_cols = kGridColumns;
    for (auto& row : m_headers)
        row.fill({});
    for (int c = 0; c < kGridColumns; ++c) {
        m_texts[index(c)].clear();
        m_texts[index(c)].setCoder(nullptr);
        m_pictures[index(c)].clear();
        m_colours[index(c)].clear();
    }
    m_headerHeights.fill(kDefaultSize);
    m_heights.clear();
    m_widths.fill(kDefaultSize);
    m_alignments.fill(Alignment::LeftCentre);
    m_place = {};
    m_topRow = kHeaderRows;
    rowsChanged();
}

std::uint32_t GridModel::appendRow() {
    const std::uint32_t id = m_order.append();
    rowsChanged();
    clearRow(rows() - 1);
    if (!m_heights.empty()) {
        m_heights.resize(std::max(m_heights.size(), static_cast<std::size_t>(id) + 1), kDefaultSize);
        m_heights[id] = kDefaultSize;
    }
    return id;
}

void GridModel::removeRow(int row) {
    m_order.remove(row - kHeaderRows);
    rowsChanged();
}

void GridModel::clearRow(int row) {
    const std::uint32_t id = rowId(row);
    for (int c = 0; c < kGridColumns; ++c) {
        m_texts[index(c)].erase(id);
        m_pictures[index(c)].erase(id);
        m_colours[index(c)].erase(id);
    }
    touch();
}

void GridModel::permuteRows(const std::vector<std::uint32_t>& order) {
    m_order.permute(order);
    rowsChanged();
}

std::string_view GridModel::text(int row, int column, std::string& scratch) const {
    if (row < kHeaderRows)
        return m_headers[index(row)][index(column)];
    if (column != kNumberColumn)
        return m_texts[index(column)].text(rowId(row), scratch);
    char digits[12];
    const auto end = std::to_chars(digits, digits + sizeof digits, row - kHeaderRows + 1).ptr;
    scratch.assign(digits, end);
    return scratch;
}

std::string GridModel::text(int row, int column) const {
    std::string scratch;
    return std::string(text(row, column, scratch));
}

void GridModel::setText(int row, int column, std::string_view text) {
    touch();
    if (row < kHeaderRows)
        m_headers[index(row)][index(column)] = text;
    else if (column != kNumberColumn)
        m_texts[index(column)].setText(rowId(row), text);
}

Picture GridModel::picture(int row, int column) const {
    if (row < kHeaderRows)
        return Picture::None;
    return static_cast<Picture>(m_pictures[index(column)].get(rowId(row)).value_or(0));
}

void GridModel::setPicture(int row, int column, Picture picture) {
    touch();
    if (picture == Picture::None)
        m_pictures[index(column)].erase(rowId(row));
    else
        m_pictures[index(column)].set(rowId(row), static_cast<std::uint32_t>(picture));
}

std::uint32_t GridModel::colour(int row, int column) const {
    if (row < kHeaderRows)
        return 0;
    return m_colours[index(column)].get(rowId(row)).value_or(0);
}

void GridModel::setColour(int row, int column, std::uint32_t colour) {
    touch();
    if (colour == 0)
        m_colours[index(column)].erase(rowId(row));
    else
        m_colours[index(column)].set(rowId(row), colour);
}

int GridModel::rowHeight(int row) const {
    if (row < kHeaderRows)
        return m_headerHeights[index(row)];
    return m_heights.empty() ? kDefaultSize : m_heights[rowId(row)];
}

void GridModel::setRowHeight(int row, int height) {
    if (row < kHeaderRows) {
        m_headerHeights[index(row)] = height;
        touch();
        return;
    }
    if (m_heights.empty()) {
        if (height == kDefaultSize)
            return;
        m_heights.assign(highestId() + 1, kDefaultSize);
    }
    m_heights[rowId(row)] = height;
    rowsChanged();
}

std::uint32_t GridModel::highestId() const {
    std::uint32_t highest = 0;
    for (int place = 0; place < m_order.count(); ++place)
        highest = std::max(highest, m_order.id(place));
    return highest;
}

void GridModel::showOnly(std::vector<int> rows) {
    rowsChanged();
    m_heights.clear();
    if (static_cast<int>(rows.size()) == dataRows())
        return;
    m_heights.assign(highestId() + 1, 0);
    for (const int row : rows)
        m_heights[rowId(row)] = kDefaultSize;
    m_visible = std::move(rows);
    m_visibleKnown = true;
}

std::vector<std::uint64_t> GridModel::visibleIds() const {
    std::vector<std::uint64_t> ids(highestId() / kGroupRows + 1);
    for (int position = 0; position < visibleRows(); ++position) {
        const std::uint32_t id = rowId(visibleRow(position));
        ids[id / kGroupRows] |= std::uint64_t{1} << (id % kGroupRows);
    }
    return ids;
}

void GridModel::copyVisible(const GridModel& source, const std::vector<int>& columns) {
    reset(1);
    m_order = source.m_order;
    m_cols = static_cast<int>(columns.size()) + 1;
    m_heights = source.m_heights;
    m_headerHeights = source.m_headerHeights;
    const std::vector<std::uint64_t> ids = source.visibleIds();
    copyColumn(source, kNumberColumn, kNumberColumn, {});
    int column = kNumberColumn;
    for (const int sourceColumn : columns)
        copyColumn(source, sourceColumn, ++column, ids);
    rowsChanged();
}

void GridModel::copyColumn(const GridModel& source, int sourceColumn, int column,
                           std::span<const std::uint64_t> ids) {
    const std::size_t from = index(sourceColumn);
    const std::size_t to = index(column);
    for (auto row = m_headers.begin(); const auto& header : source.m_headers)
        (*row++)[to] = header[from];
    m_widths[to] = source.m_widths[from];
    m_alignments[to] = source.m_alignments[from];
    m_texts[to].copyRows(source.m_texts[from], ids);
    m_pictures[to].copyRows(source.m_pictures[from], ids);
    m_colours[to].copyRows(source.m_colours[from], ids);
}

void GridModel::setColumnWidth(int column, int width) {
    m_widths[index(column)] = width;
    touch();
}

void GridModel::setAlignment(int column, Alignment alignment) {
    m_alignments[index(column)] = alignment;
    touch();
}

void GridModel::rowsChanged() {
    m_visibleKnown = false;
    touch();
}

const std::vector<int>& GridModel::visibleIndex() const {
    if (!m_visibleKnown) {
        m_visible.clear();
        for (int row = kHeaderRows; row < rows(); ++row)
            if (m_heights[rowId(row)] != 0)
                m_visible.push_back(row);
        m_visibleKnown = true;
    }
    return m_visible;
}

int GridModel::visibleRows() const {
    return m_heights.empty() ? dataRows() : static_cast<int>(visibleIndex().size());
}

int GridModel::visibleRow(int position) const {
    return m_heights.empty() ? kHeaderRows + position : visibleIndex()[index(position)];
}

int GridModel::visiblePosition(int row) const {
    if (m_heights.empty())
        return row - kHeaderRows;
    const auto& visible = visibleIndex();
    return static_cast<int>(std::lower_bound(visible.begin(), visible.end(), row) - visible.begin());
}

void GridModel::setCell(int row, int column) {
    setPlace({row, column, row, column});
}

void GridModel::select(int rowSel, int colSel) {
    m_place.RowSel = rowSel;
    m_place.ColSel = colSel;
    touch();
}

void GridModel::setPlace(const GridPlace& place) {
    m_place = place;
    touch();
}

} // namespace tallybook::model
