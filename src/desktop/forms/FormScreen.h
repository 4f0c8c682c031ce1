// The handheld's screen in the form designer, at a whole-number zoom: labels and values where they will stand, the
// strip of tabs, the splitter. It keeps the handheld's colours whatever the theme.
#pragma once

#include "core/forms/FormDesign.h"

#include <QFrame>

#include <array>
#include <functional>

class QLabel;
class QTabBar;
class QToolButton;

namespace tallybook::desktop {

// What is dragged: a field of the list, by its slot, or a row of the screen.
inline constexpr char kFieldMime[] = "application/x-tallybook-field";
inline constexpr char kRowMime[] = "application/x-tallybook-row";

// The font of a number, 0 to 3, for a zoom: standard, bold, large, large bold.
QFont handheldFont(int number, int zoom);

class FormScreen : public QFrame {
    Q_OBJECT

public:
    // Its name is BoxControl. The design outlives it.
    FormScreen(forms::FormDesign& design, QWidget* parent);

    void setZoom(int zoom);
    int zoom() const { return m_zoom; }
    // Shows the design as it is now (SetFormStructure, ShowValues).
    void showDesign();
    QRect rectOf(const forms::Box& box) const; // in its own pixels

signals:
    void clicked(forms::RowPlace place, forms::Side side);
    void fieldDropped(forms::RowPlace place, int field);
    void rowDropped(forms::RowPlace from, forms::RowPlace to);
    void splitterMoved(bool onTab, int position, int width);
    void tabChosen(int tab);
    void helpWanted();
    void clearWanted();
    void designKey(QKeyEvent* event);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Cell {
        QLabel* label = nullptr;
        QLabel* value = nullptr;
    };

    QLabel* makeCell(const QString& name);
    QFrame* makeFrame(const QString& style);
    QToolButton* makeHelp(const QString& name);
    void PutValue(const forms::RowPlace& place); // draws one row
    void showTabs();
    void showSelection();
    void showHelp();
    QPoint screenPixel(const QPoint& point) const;
    Cell& cell(const forms::RowPlace& place) {
        return (place.onTab ? m_tab : m_base)[static_cast<std::size_t>(place.row)];
    }
    std::optional<forms::RowPlace> placeFor(const QDropEvent& event) const;
    void markDrop(std::optional<forms::RowPlace> place);
    void startDrag();

    forms::FormDesign& m_design;
    int m_zoom = 2;
    std::array<Cell, forms::kRows> m_base;
    std::array<Cell, forms::kRows> m_tab;
    QFrame* m_splitter; // Frame1
    QFrame* m_tabArea;  // FrmTab
    QTabBar* m_strip;   // TabStrip1
    QFrame* m_selected;
    QFrame* m_side;
    QFrame* m_landing;
    QToolButton* m_helpBase;
    QToolButton* m_helpTab;
    std::optional<forms::RowPlace> m_drop; // where a drop will land
    std::optional<QPoint> m_pressed;
    bool m_splits = false; // the splitter is being dragged
    bool m_splitsTab = false;
};

} // namespace tallybook::desktop
