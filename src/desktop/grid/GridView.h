// The grid on the screen: draws the model's visible cells, moves the current cell, tells what the mouse and the keys
// ask for. It decides nothing about the document.
#pragma once

#include "core/document/grid/GridDisplay.h"
#include "core/model/GridModel.h"
#include "desktop/grid/GridFont.h"
#include "desktop/grid/GridGeometry.h"
#include "desktop/grid/GridLook.h"
#include "desktop/grid/TextBatch.h"

#include <QAbstractScrollArea>

#include <memory>
#include <optional>

namespace tallybook::desktop {

class RowMarker;

class GridView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit GridView(QWidget* parent = nullptr);
    ~GridView() override;

    // The grid to show; it is not owned and must outlive its stay here. Nothing: an empty frame.
    void setModel(model::GridModel* grid);
    model::GridModel* model() const { return m_grid; }

    // To be called after every operation on the model: takes over its shape, current cell and texts.
    void refresh();

    // While off, refresh() and repaints wait until it is on again.
    void setRepainting(bool repaints);

    const GridFont& gridFont() const { return *m_font; }
    const GridGeometry& geometry() const { return m_geometry; }
    QRect cellRect(int row, int column) const;
    document::MousePlace placeAt(QPoint point) const;

    // Scrolls just so far that the cell can be seen.
    void showCell(int row, int column);

    // What a grid without cells says in their place; empty for nothing.
    void setHint(const QString& hint);

    // The text of the cell or header at a point of the viewport when it is cut there, as a tool tip; else empty.
    QString toolTipAt(QPoint point) const;

    // As the keys Left and Right do.
    void moveSideways(bool back);

    // Draws the current cell's frame round an editor that may be wider than its cell; nothing: round the cell.
    void setEditorFrame(std::optional<QRect> editor);

    // The marker at the left edge of the current row: where an edit placed it.
    void placeMarker();
    void hideMarker();

signals:
    // Before the current cell changes, and before the grid scrolls: what is being edited has to be committed.
    void leavingCell();
    void scrolling();
    void currentCellChanged();
    void clicked(document::MousePlace place);
    void rightPressed(document::MousePlace place, QPoint globalPosition);
    void menuAsked(QPoint globalPosition); // by the keyboard
    void deletePressed();
    // A character was typed on the current cell: its code, or kKeyF2. What follows in the same event comes with it.
    void keyTyped(int code, const QString& rest);
    void tabPressed(bool back);
    void columnResized(int column, int twips);
    void bestFitRequested(int column);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void scrollContentsBy(int dx, int dy) override;

private:
    enum class Extend { No, Yes };
    enum class Step { Left, Right, Up, Down, PageUp, PageDown, Home, End, First, Last };

    void takeTheme();
    void updateScrollBars();
    void updateCursorShape(QPoint point);
    bool hasRecords() const;
    QRect currentCellRect() const;
    bool isPairOf(const QMouseEvent& second);
    void startColumnDrag(int column, QPoint point);
    void extendTo(const document::MousePlace& place);
    bool moveByKey(const QKeyEvent& event);
    bool selectByKey(const QKeyEvent& event);
    bool editByKey(const QKeyEvent& event);
    bool typeByKey(const QKeyEvent& event);
    void tabByKey(const QKeyEvent& event);
    static std::optional<Step> stepOf(const QKeyEvent& event);
    void move(Step step, Extend extend);
    void goTo(int row, int column, Extend extend);
    int lastColumn() const;
    int rowAfter(int row, int positions) const;
    int columnAfter(int column, int direction) const;
    int edgeColumn(int direction) const;
    bool hasColumns() const;
    void typeText(const QString& text);
    void announceCurrent();

    model::GridModel* m_grid = nullptr;
    std::unique_ptr<GridFont> m_font;
    GridLook m_look;
    GridGeometry m_geometry;
    TextBatch m_batch;
    RowMarker* m_marker;
    std::optional<QRect> m_editorFrame; // in the viewport
    QString m_hint;
    bool m_repaints = true;
    bool m_scrollingOurselves = false;
    int m_dragColumn = -1; // whose edge is being dragged
    int m_dragGrip = 0;    // how far right of the edge it was taken, pixels
    std::optional<document::MousePlace> m_pressed;
    std::optional<quint64> m_pressTime; // of the last press, milliseconds
    bool m_blockDragged = false;
    int m_shownRow = -1; // current cell as the view showed it last
    int m_shownColumn = -1;
};

} // namespace tallybook::desktop
