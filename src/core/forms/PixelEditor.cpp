#include "core/forms/PixelEditor.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tallybook::forms {

namespace {

bool isDarker(const model::Colour& a, const model::Colour& b) {
    return brightness(a) < brightness(b);
}

} // namespace

std::uint8_t brightest(const std::vector<model::Colour>& palette) {
    return static_cast<std::uint8_t>(std::max_element(palette.begin(), palette.end(), isDarker) - palette.begin());
}

std::uint8_t darkest(const std::vector<model::Colour>& palette) {
    return static_cast<std::uint8_t>(std::min_element(palette.begin(), palette.end(), isDarker) - palette.begin());
}

PixelEditor::PixelEditor(Bitmap bitmap)
    : m_bitmap(std::move(bitmap)), m_first(m_bitmap), m_ink(darkest(m_bitmap.palette)) {}

void PixelEditor::setInk(std::uint8_t index) {
    if (index < m_bitmap.palette.size())
        m_ink = index;
}

bool PixelEditor::contains(Pixel at) const {
    return at.x >= 0 && at.x < m_bitmap.width && at.y >= 0 && at.y < m_bitmap.height;
}

void PixelEditor::put(Pixel at) {
    if (contains(at))
        m_bitmap.setPixel(at.x, at.y, m_ink);
}

// By whole steps along the longer side; the error of the shorter one decides when it goes on.
void PixelEditor::line(Pixel from, Pixel to) {
    const int width = std::abs(to.x - from.x);
    const int height = std::abs(to.y - from.y);
    const int right = from.x < to.x ? 1 : -1;
    const int down = from.y < to.y ? 1 : -1;
    int error = width - height;
    for (Pixel at = from;;) {
        put(at);
        if (at == to)
            break;
        const int twice = 2 * error;
        if (twice > -height) {
            error -= height;
            at.x += right;
        }
        if (twice < width) {
            error += width;
            at.y += down;
        }
    }
}

void PixelEditor::rectangle(Pixel from, Pixel to, bool filled) {
    const Pixel low{std::max(std::min(from.x, to.x), -1), std::max(std::min(from.y, to.y), -1)};
    const Pixel high{std::min(std::max(from.x, to.x), m_bitmap.width),
                     std::min(std::max(from.y, to.y), m_bitmap.height)};
    for (int y = low.y; y <= high.y; ++y)
        for (int x = low.x; x <= high.x; ++x)
            if (filled || y == low.y || y == high.y || x == low.x || x == high.x)
                put({x, y});
}

// All pixels of one colour that hang together by their sides.
void PixelEditor::fill(Pixel at) {
    if (!contains(at))
        return;
    const std::uint8_t before = m_bitmap.pixel(at.x, at.y);
    if (before == m_ink)
        return;
    std::vector<Pixel> open{at};
    while (!open.empty()) {
        const Pixel next = open.back();
        open.pop_back();
        if (!contains(next) || m_bitmap.pixel(next.x, next.y) != before)
            continue;
        put(next);
        open.push_back({next.x + 1, next.y});
        open.push_back({next.x - 1, next.y});
        open.push_back({next.x, next.y + 1});
        open.push_back({next.x, next.y - 1});
    }
}

void PixelEditor::begin(Tool tool, Pixel at) {
    m_tool = tool;
    m_start = at;
    m_last = at;
    if (tool == Tool::Pick) {
        if (contains(at))
            m_ink = m_bitmap.pixel(at.x, at.y);
        return;
    }
    m_before = m_bitmap;
    m_drawing = true;
    if (tool == Tool::Fill)
        fill(at);
    else
        moveTo(at);
}

void PixelEditor::moveTo(Pixel at) {
    if (!m_drawing || m_tool == Tool::Fill)
        return;
    if (m_tool == Tool::Pencil) {
        line(m_last, at);
        m_last = at;
        return;
    }
    m_bitmap = m_before; // the stroke is drawn anew
    if (m_tool == Tool::Line)
        line(m_start, at);
    else
        rectangle(m_start, at, m_tool == Tool::FilledRectangle);
}

void PixelEditor::end() {
    if (!std::exchange(m_drawing, false) || m_bitmap == m_before)
        return;
    std::swap(m_bitmap, m_before);
    keep();
    std::swap(m_bitmap, m_before);
}

// The state as it is, as a step to go back to.
void PixelEditor::keep() {
    m_redone.clear();
    m_undone.push_back(m_bitmap);
    if (m_undone.size() > kMostSteps)
        m_undone.erase(m_undone.begin());
}

void PixelEditor::resize(int width, int height) {
    width = std::clamp(width, 1, kMostCanvas);
    height = std::clamp(height, 1, kMostCanvas);
    if (width == m_bitmap.width && height == m_bitmap.height)
        return;
    keep();
    Bitmap canvas = blankBitmap(width, height, m_bitmap.depth);
    canvas.palette = m_bitmap.palette;
    const std::uint8_t paper = brightest(canvas.palette);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            canvas.setPixel(x, y, contains({x, y}) ? m_bitmap.pixel(x, y) : paper);
    m_bitmap = std::move(canvas);
}

void PixelEditor::undo() {
    if (m_undone.empty())
        return;
    m_redone.push_back(std::move(m_bitmap));
    m_bitmap = std::move(m_undone.back());
    m_undone.pop_back();
}

void PixelEditor::redo() {
    if (m_redone.empty())
        return;
    m_undone.push_back(std::move(m_bitmap));
    m_bitmap = std::move(m_redone.back());
    m_redone.pop_back();
}

} // namespace tallybook::forms
