// Where the parts of a screen lie, in the pixels of the handheld: 160 wide, rows of 12 below a title.
//
//    0  title
//   16  rows of the base part, down to where the tab strip begins
//       the strip, and under it the twelve rows of the tab in view; without tabs, all rows of the base part
#pragma once

#include "core/forms/FormBuilder.h"
#include "core/forms/FormItems.h"

#include <optional>

namespace tallybook::forms {

inline constexpr int kScreenWidth = 160;
inline constexpr int kScreenHeight = 160;
inline constexpr int kTitleHeight = 16;
inline constexpr int kRowHeight = 12;
inline constexpr int kSplitterReach = 2; // pixels beside the splitter that take hold of it

struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool contains(int px, int py) const { return px >= x && px < x + width && py >= y && py < y + height; }
    bool operator==(const Box&) const = default;
};

// A row of the base part or of the tab in view.
struct RowPlace {
    bool onTab = false;
    int row = 0;

    bool operator==(const RowPlace&) const = default;
};

struct Hit {
    enum class What : std::uint8_t { Nothing, Label, Value, Splitter, Tab };
    What what = What::Nothing;
    RowPlace place{};
    int tab = 0; // from 1
};

class FormGeometry {
public:
    // Of a builder whose tab `tab` (from 1) is in view; 0 when there is none. The base part has its own splitter.
    FormGeometry(const FormBuilder& builder, int tab);

    int height() const; // of all that is drawn; what lies below kScreenHeight is not on the handheld's screen at once
    bool isShown(const RowPlace& place) const; // base rows under the strip are hidden
    Box row(const RowPlace& place) const;
    // A static text takes the whole row.
    Box label(const RowPlace& place, bool isStatic) const;
    Box value(const RowPlace& place) const;
    Box strip() const; // empty without tabs
    Box tab(int number) const;
    int splitter(bool onTab) const { return onTab ? m_tabSplitter : m_baseSplitter; }

    // What lies at a pixel. The splitter takes hold ahead of the rows.
    Hit hit(int x, int y) const;
    std::optional<RowPlace> rowAt(int x, int y) const; // whatever lies in it

    // How many rows of the base part are on show.
    int baseRows() const { return m_tabs > 0 ? m_startRow : kRows; }

private:
    int m_tabs;
    int m_startRow;
    int m_baseSplitter;
    int m_tabSplitter;
};

// The splitter's place: FormByte scaled to a width, and back, rounded and kept within 0 to 160.
int splitterPosition(std::uint8_t formByte, int width);
std::uint8_t formByteAt(int position, int width);

// A whole-number zoom of 2 to 4 at which the screen fits.
int zoomFor(int width, int height);

} // namespace tallybook::forms
