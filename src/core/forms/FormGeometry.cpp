#include "core/forms/FormGeometry.h"

#include <algorithm>
#include <cmath>

namespace tallybook::forms {

FormGeometry::FormGeometry(const FormBuilder& builder, int tab)
    : m_tabs(builder.tabs), m_startRow(builder.startRow),
      m_baseSplitter(std::min<int>(builder.part(0).FormByte, kScreenWidth)),
      m_tabSplitter(std::min<int>(builder.part(tab).FormByte, kScreenWidth)) {}

int FormGeometry::height() const {
    const int rows = m_tabs > 0 ? m_startRow + 1 + kRows : kRows;
    return kTitleHeight + rows * kRowHeight;
}

bool FormGeometry::isShown(const RowPlace& place) const {
    return place.onTab ? m_tabs > 0 : place.row < baseRows();
}

Box FormGeometry::row(const RowPlace& place) const {
    const int above = place.onTab ? m_startRow + 1 : 0;
    return {0, kTitleHeight + (above + place.row) * kRowHeight, kScreenWidth, kRowHeight};
}

Box FormGeometry::label(const RowPlace& place, bool isStatic) const {
    Box box = row(place);
    box.width = isStatic ? kScreenWidth : splitter(place.onTab);
    return box;
}

Box FormGeometry::value(const RowPlace& place) const {
    const Box box = row(place);
    const int left = splitter(place.onTab);
    return {left, box.y, kScreenWidth - left, box.height};
}

Box FormGeometry::strip() const {
    if (m_tabs == 0)
        return {};
    return {0, kTitleHeight + m_startRow * kRowHeight, kScreenWidth, kRowHeight};
}

Box FormGeometry::tab(int number) const {
    const Box whole = strip();
    const int left = (number - 1) * kScreenWidth / m_tabs;
    const int right = number * kScreenWidth / m_tabs;
    return {left, whole.y, right - left, whole.height};
}

std::optional<RowPlace> FormGeometry::rowAt(int x, int y) const {
    if (x < 0 || x >= kScreenWidth || y < kTitleHeight || y >= height())
        return std::nullopt;
    const int line = (y - kTitleHeight) / kRowHeight;
    if (line < baseRows())
        return RowPlace{false, line};
    if (m_tabs > 0 && line > m_startRow)
        return RowPlace{true, line - m_startRow - 1};
    return std::nullopt;
}

Hit FormGeometry::hit(int x, int y) const {
    const auto place = rowAt(x, y);
    if (place) {
        const int boundary = splitter(place->onTab);
        if (std::abs(x - boundary) < kSplitterReach)
            return {.what = Hit::What::Splitter, .place = *place};
        return {.what = x < boundary ? Hit::What::Label : Hit::What::Value, .place = *place};
    }
    for (int number = 1; number <= m_tabs; ++number)
        if (tab(number).contains(x, y))
            return {.what = Hit::What::Tab, .place = {}, .tab = number};
    return {};
}

int splitterPosition(std::uint8_t formByte, int width) {
    return std::min<int>(formByte, kScreenWidth) * width / kScreenWidth;
}

std::uint8_t formByteAt(int position, int width) {
    if (width < 1)
        return kNewSplitter;
    const long byte = std::lround(static_cast<double>(position) * kScreenWidth / width);
    return static_cast<std::uint8_t>(std::clamp(byte, 0L, static_cast<long>(kScreenWidth)));
}

int zoomFor(int width, int height) {
    constexpr int kLeast = 2;
    constexpr int kMost = 4;
    return std::clamp(std::min(width / kScreenWidth, height / kScreenHeight), kLeast, kMost);
}

} // namespace tallybook::forms
