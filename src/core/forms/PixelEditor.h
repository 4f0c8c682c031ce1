// Draws on a bitmap, pixel by pixel, and takes it back.
#pragma once

#include "core/forms/Bitmap.h"

#include <vector>

namespace tallybook::forms {

enum class Tool : std::uint8_t { Pencil, Line, Rectangle, FilledRectangle, Fill, Pick };

struct Pixel {
    int x = 0;
    int y = 0;

    bool operator==(const Pixel&) const = default;
};

class PixelEditor {
public:
    explicit PixelEditor(Bitmap bitmap);

    const Bitmap& bitmap() const { return m_bitmap; }
    std::uint8_t ink() const { return m_ink; } // the index that is drawn with
    void setInk(std::uint8_t index);           // one that the palette has

    // A stroke from where the tool was set down: what it has drawn so far changes with each move, and becomes one
    // step of undoing when it ends. Places outside the picture are drawn as far as they lie inside.
    void begin(Tool tool, Pixel at);
    void moveTo(Pixel at);
    void end();

    // Cuts or enlarges the canvas at its right and lower edge; new pixels have the brightest colour. Sides are 1 to
    // 640.
    void resize(int width, int height);

    bool canUndo() const { return !m_undone.empty(); }
    bool canRedo() const { return !m_redone.empty(); }
    void undo();
    void redo();
    bool changed() const { return m_bitmap != m_first; }

private:
    bool contains(Pixel at) const;
    void put(Pixel at);
    void line(Pixel from, Pixel to);
    void rectangle(Pixel from, Pixel to, bool filled);
    void fill(Pixel at);
    void keep();

    Bitmap m_bitmap;
    Bitmap m_first;
    std::vector<Bitmap> m_undone; // states before each step, at most kMostSteps
    std::vector<Bitmap> m_redone;
    std::uint8_t m_ink = 0;
    Bitmap m_before; // the stroke
    bool m_drawing = false;
    Tool m_tool = Tool::Pencil;
    Pixel m_start;
    Pixel m_last;
};

inline constexpr std::size_t kMostSteps = 50;
inline constexpr int kMostCanvas = 640; // pixels of a side

// The index of a palette's brightest colour, and of its darkest.
std::uint8_t brightest(const std::vector<model::Colour>& palette);
std::uint8_t darkest(const std::vector<model::Colour>& palette);

} // namespace tallybook::forms
