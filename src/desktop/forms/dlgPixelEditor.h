// A small editor for a picture's pixels, where the desktop has no program for bitmaps.
#pragma once

#include "core/forms/PixelEditor.h"

#include <QDialog>

class QAction;
class QLabel;
class QSpinBox;
class QToolButton;

namespace tallybook::desktop {

// The pixels, enlarged, with a grid between them; the mouse draws.
class PixelCanvas : public QWidget {
    Q_OBJECT

public:
    PixelCanvas(forms::PixelEditor& editor, QWidget* parent);

    void setTool(forms::Tool tool) { m_tool = tool; }
    void setScale(int pixels);
    void showPicture();

signals:
    void drawn();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    forms::Pixel pixelAt(const QMouseEvent& event) const;

    forms::PixelEditor& m_editor;
    forms::Tool m_tool = forms::Tool::Pencil;
    int m_scale = 4;
};

class dlgPixelEditor : public QDialog {
    Q_OBJECT

public:
    dlgPixelEditor(const forms::Bitmap& bitmap, QWidget* parent);

    const forms::Bitmap& bitmap() const { return m_editor.bitmap(); }
    bool changed() const { return m_editor.changed(); }

private:
    QWidget* makeTools();
    QWidget* makeColours();
    QWidget* makeCanvasSize();
    void showState();

    forms::PixelEditor m_editor;
    PixelCanvas* m_canvas = nullptr;
    QToolButton* m_undo = nullptr;
    QToolButton* m_redo = nullptr;
    QSpinBox* m_width = nullptr;
    QSpinBox* m_height = nullptr;
    QLabel* m_ink = nullptr;
};

} // namespace tallybook::desktop
