#include "core/forms/PixelEditor.h"

#include "forms/Pictures.h"

#include <gtest/gtest.h>

namespace tallybook::forms {
namespace {

using test::drawn;
using test::indicesOf;
using test::kBlack;
using test::kWhite;

std::string shape(const PixelEditor& editor) {
    std::string rows;
    for (int y = 0; y < editor.bitmap().height; ++y)
        rows += (y == 0 ? "" : " ") + indicesOf(editor.bitmap(), y);
    return rows;
}

void stroke(PixelEditor& editor, Tool tool, Pixel from, Pixel to) {
    editor.begin(tool, from);
    editor.moveTo(to);
    editor.end();
}

class PixelEditorTest : public testing::Test {
protected:
    PixelEditor m_editor{drawn(1, {kWhite, kBlack}, {"00000", "00000", "00000", "00000"})};
};

TEST_F(PixelEditorTest, drawsWithTheDarkestColourAtFirst) {
    EXPECT_EQ(m_editor.ink(), 1);
    m_editor.setInk(2); // which the palette lacks
    EXPECT_EQ(m_editor.ink(), 1);
}

TEST_F(PixelEditorTest, pencilLeavesNoGaps) {
    m_editor.begin(Tool::Pencil, {0, 0});
    m_editor.moveTo({4, 0});
    m_editor.moveTo({4, 2});
    m_editor.end();
    EXPECT_EQ(shape(m_editor), "11111 00001 00001 00000");
}

TEST_F(PixelEditorTest, lineIsDrawnAnewWithEachMove) {
    m_editor.begin(Tool::Line, {0, 0});
    m_editor.moveTo({4, 0});
    m_editor.moveTo({3, 3});
    m_editor.end();
    EXPECT_EQ(shape(m_editor), "10000 01000 00100 00010");
}

TEST_F(PixelEditorTest, rectanglesInAnyDirection) {
    stroke(m_editor, Tool::Rectangle, {3, 3}, {1, 0});
    EXPECT_EQ(shape(m_editor), "01110 01010 01010 01110");
    stroke(m_editor, Tool::FilledRectangle, {1, 1}, {3, 2});
    EXPECT_EQ(shape(m_editor), "01110 01110 01110 01110");
}

TEST_F(PixelEditorTest, strokesOutsideAreCut) {
    stroke(m_editor, Tool::Line, {-3, 1}, {9, 1});
    EXPECT_EQ(shape(m_editor), "00000 11111 00000 00000");
    stroke(m_editor, Tool::FilledRectangle, {-1000000, 3}, {1000000, 1000000});
    EXPECT_EQ(shape(m_editor), "00000 11111 00000 11111");
    stroke(m_editor, Tool::Fill, {50, 50}, {50, 50});
    EXPECT_EQ(shape(m_editor), "00000 11111 00000 11111");
}

TEST_F(PixelEditorTest, fillStopsAtOtherColours) {
    stroke(m_editor, Tool::Line, {2, 0}, {2, 3});
    stroke(m_editor, Tool::Fill, {0, 0}, {0, 0});
    EXPECT_EQ(shape(m_editor), "11100 11100 11100 11100");
}

TEST_F(PixelEditorTest, pickTakesTheColourUnderIt) {
    stroke(m_editor, Tool::Pick, {0, 0}, {0, 0});
    EXPECT_EQ(m_editor.ink(), 0);
    EXPECT_FALSE(m_editor.canUndo());
}

TEST_F(PixelEditorTest, stepsAreTakenBackAndDoneAgain) {
    stroke(m_editor, Tool::Line, {0, 0}, {4, 0});
    stroke(m_editor, Tool::Line, {0, 1}, {4, 1});
    m_editor.undo();
    EXPECT_EQ(shape(m_editor), "11111 00000 00000 00000");
    m_editor.redo();
    EXPECT_EQ(shape(m_editor), "11111 11111 00000 00000");
    m_editor.undo();
    m_editor.undo();
    EXPECT_FALSE(m_editor.changed());
    EXPECT_FALSE(m_editor.canUndo());
    stroke(m_editor, Tool::Line, {0, 3}, {4, 3});
    EXPECT_FALSE(m_editor.canRedo()); // another way was taken
    stroke(m_editor, Tool::Line, {0, 3}, {4, 3});
    m_editor.undo();
    EXPECT_FALSE(m_editor.canUndo()); // a stroke that changed nothing is no step
}

TEST_F(PixelEditorTest, canvasIsCutAndEnlarged) {
    stroke(m_editor, Tool::Line, {0, 0}, {4, 0});
    m_editor.resize(6, 2);
    EXPECT_EQ(shape(m_editor), "111110 000000");
    m_editor.resize(2, 1);
    EXPECT_EQ(shape(m_editor), "11");
    m_editor.undo();
    m_editor.undo();
    EXPECT_EQ(shape(m_editor), "11111 00000 00000 00000");
    m_editor.resize(0, 9999);
    EXPECT_EQ(m_editor.bitmap().width, 1);
    EXPECT_EQ(m_editor.bitmap().height, 640);
}

} // namespace
} // namespace tallybook::forms
