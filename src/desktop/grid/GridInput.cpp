// What the mouse and the keys do in the grid.
#include "core/platform/Ansi.h"
#include "desktop/grid/GridView.h"
#include "desktop/platform/Text.h"
#include "desktop/platform/Twips.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace tallybook::desktop {

namespace {

constexpr int kLeastWidth = 8; // pixels: a column dragged smaller could not be taken hold of again

} // namespace

void GridView::startColumnDrag(int column, QPoint point) {
    emit leavingCell();
    m_pressed.reset();
    m_dragColumn = column;
    m_dragGrip = point.x() - (m_geometry.left(column) + m_geometry.columnWidth(column));
}

void GridView::mousePressEvent(QMouseEvent* event) {
    if (m_grid == nullptr)
        return;
    const QPoint point = event->position().toPoint();
    if (event->button() != Qt::LeftButton)
        return;
    m_pressTime = event->timestamp();
    const int edge = m_geometry.edgeAt(point);
    if (edge >= 0) {
        startColumnDrag(edge, point);
        return;
    }
    emit leavingCell();
    m_pressed = placeAt(point);
    m_blockDragged = false;
    const bool onCell = m_pressed->row >= model::kFirstDataRow && m_pressed->row < m_grid->rows() &&
                        m_pressed->col >= 1 && m_pressed->col <= lastColumn();
    if (onCell && event->modifiers().testFlag(Qt::ShiftModifier)) {
        m_blockDragged = true;
        extendTo(*m_pressed);
    } else if (onCell) {
        goTo(m_pressed->row, m_pressed->col, Extend::No);
    }
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
    if (m_grid == nullptr)
        return;
    const QPoint point = event->position().toPoint();
    if (!event->buttons().testFlag(Qt::LeftButton))
        m_dragColumn = -1; // it was let go of where nobody told us
    if (m_dragColumn >= 0) {
        const int width = std::max(kLeastWidth, point.x() - m_dragGrip - m_geometry.left(m_dragColumn));
        emit columnResized(m_dragColumn, static_cast<int>(twipsOf(width, logicalDpiX())));
        return;
    }
    updateCursorShape(point);
    if (m_pressed && event->buttons().testFlag(Qt::LeftButton))
        extendTo(placeAt(point));
}

void GridView::updateCursorShape(QPoint point) {
    if (m_geometry.edgeAt(point) >= 0)
        viewport()->setCursor(Qt::SplitHCursor);
    else
        viewport()->unsetCursor();
}

// The mouse is over another cell with the button down: the block grows or shrinks.
void GridView::extendTo(const document::MousePlace& place) {
    const bool startedOnCell = m_pressed->row >= model::kFirstDataRow && m_pressed->row < m_grid->rows() &&
                               m_pressed->col >= 1 && m_pressed->col <= lastColumn();
    if (!startedOnCell || m_grid->row() < model::kFirstDataRow)
        return;
    const int row = std::clamp(place.row, model::kFirstDataRow, m_grid->rows() - 1);
    const int column = std::clamp(place.col, 1, lastColumn());
    if (row == m_grid->place().RowSel && column == m_grid->place().ColSel)
        return;
    m_blockDragged = true;
    m_grid->select(row, column);
    showCell(row, column);
    viewport()->update();
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (m_dragColumn >= 0) {
        m_dragColumn = -1;
        return;
    }
    if (!m_pressed)
        return;
    const document::MousePlace place = *m_pressed;
    m_pressed.reset();
    if (!m_blockDragged) // a block is for the clipboard: it changes nothing and opens nothing
        emit clicked(place);
}

// The first click may have closed a window above this grid, or put this grid where another one was: its second half
// is not meant for what lies here.
bool GridView::isPairOf(const QMouseEvent& second) {
    const std::optional<quint64> first = std::exchange(m_pressTime, std::nullopt);
    return first && second.timestamp() - *first <= static_cast<quint64>(QApplication::doubleClickInterval());
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (m_grid == nullptr || event->button() != Qt::LeftButton || !isPairOf(*event))
        return;
    const int edge = m_geometry.edgeAt(event->position().toPoint());
    if (edge < 0) {
        mousePressEvent(event);
        return;
    }
    m_dragColumn = -1;
    emit bestFitRequested(edge);
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
    if (m_grid == nullptr)
        return;
    if (event->reason() == QContextMenuEvent::Mouse) {
        emit rightPressed(placeAt(event->pos()), event->globalPos());
        return;
    }
    const QRect current = currentCellRect().isEmpty() ? cellRect(0, m_grid->col()) : currentCellRect();
    emit menuAsked(viewport()->mapToGlobal(current.bottomLeft()));
}

// A wheel moves by whole rows, a touch pad by pixels.
void GridView::wheelEvent(QWheelEvent* event) {
    if (!event->pixelDelta().isNull()) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - event->pixelDelta().x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() - event->pixelDelta().y());
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

bool GridView::focusNextPrevChild(bool) {
    return false; // Tab moves in the grid; the window's Ctrl+Tab leaves it
}

std::optional<GridView::Step> GridView::stepOf(const QKeyEvent& event) {
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    switch (event.key()) {
    case Qt::Key_Left:
        return control ? Step::Home : Step::Left;
    case Qt::Key_Right:
        return control ? Step::End : Step::Right;
    case Qt::Key_Up:
        return Step::Up;
    case Qt::Key_Down:
        return Step::Down;
    case Qt::Key_PageUp:
        return Step::PageUp;
    case Qt::Key_PageDown:
        return Step::PageDown;
    case Qt::Key_Home:
        return control ? Step::First : Step::Home;
    case Qt::Key_End:
        return control ? Step::Last : Step::End;
    default:
        return std::nullopt;
    }
}

bool GridView::moveByKey(const QKeyEvent& event) {
    const auto step = stepOf(event);
    if (!step)
        return false;
    move(*step, event.modifiers().testFlag(Qt::ShiftModifier) ? Extend::Yes : Extend::No);
    return true;
}

// As in spreadsheets: Ctrl+A all, Shift+Space the row, Ctrl+Space the column.
bool GridView::selectByKey(const QKeyEvent& event) {
    const bool space = event.key() == Qt::Key_Space;
    const bool all = event.matches(QKeySequence::SelectAll);
    const bool row = space && event.modifiers() == Qt::ShiftModifier && hasRecords();
    const bool column = space && event.modifiers() == Qt::ControlModifier;
    if (!all && !row && !column)
        return false;
    emit leavingCell();
    if (all)
        document::selectAll(*m_grid);
    else if (row)
        document::selectRow(*m_grid, m_grid->row());
    else
        document::selectColumn(*m_grid, m_grid->col());
    refresh();
    emit currentCellChanged();
    return true;
}

// The keys that begin an edit, and the one that empties the cell.
bool GridView::editByKey(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_F2:
        emit keyTyped(document::kKeyF2, {});
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit keyTyped('\r', {});
        return true;
    case Qt::Key_Backspace:
        emit keyTyped('\b', {});
        return true;
    case Qt::Key_Delete:
        if (event.modifiers() != Qt::NoModifier && event.modifiers() != Qt::KeypadModifier)
            return false;
        emit deletePressed();
        return true;
    default:
        return typeByKey(event);
    }
}

bool GridView::typeByKey(const QKeyEvent& event) {
    const Qt::KeyboardModifiers command = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const bool text = !event.text().isEmpty() && event.text().at(0).isPrint() &&
                      ((event.modifiers() & command) == 0 || event.modifiers() == command);
    if (text)
        typeText(event.text());
    return text;
}

void GridView::tabByKey(const QKeyEvent& event) {
    if (event.modifiers().testFlag(Qt::ControlModifier))
        QAbstractScrollArea::focusNextPrevChild(event.key() == Qt::Key_Tab);
    else
        emit tabPressed(event.key() == Qt::Key_Backtab || event.modifiers().testFlag(Qt::ShiftModifier));
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (m_grid == nullptr) {
        event->ignore();
        return;
    }
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        tabByKey(*event);
        return;
    }
    const bool taken = selectByKey(*event) || moveByKey(*event) || (hasRecords() && editByKey(*event));
    event->setAccepted(taken);
}

void GridView::typeText(const QString& text) {
    const std::string bytes = fromQt(text);
    if (!bytes.empty())
        emit keyTyped(static_cast<unsigned char>(bytes.front()), toQt(std::string_view(bytes).substr(1)));
}

void GridView::inputMethodEvent(QInputMethodEvent* event) {
    if (hasRecords() && !event->commitString().isEmpty())
        typeText(event->commitString());
    event->accept();
}

QVariant GridView::inputMethodQuery(Qt::InputMethodQuery query) const {
    if (query == Qt::ImEnabled)
        return true;
    if (query == Qt::ImCursorRectangle && hasRecords())
        return cellRect(m_grid->row(), m_grid->col());
    return QAbstractScrollArea::inputMethodQuery(query);
}

int GridView::rowAfter(int row, int positions) const {
    const int last = m_grid->visibleRows() - 1;
    if (last < 0)
        return model::kFirstDataRow; // the placeholder, or a record that is hidden
    const int position = row < model::kFirstDataRow ? 0 : m_grid->visiblePosition(row);
    return m_grid->visibleRow(std::clamp(position + positions, 0, last));
}

// The scratch column behind a full grid's fields is nobody's to reach.
int GridView::lastColumn() const {
    return std::min(m_grid->cols(), model::kScratchColumn) - 1;
}

void GridView::moveSideways(bool back) {
    if (m_grid != nullptr)
        move(back ? Step::Left : Step::Right, Extend::No);
}

// The next column with a width in a direction, or the same one when there is none.
int GridView::columnAfter(int column, int direction) const {
    for (int next = column + direction; next >= 1 && next <= lastColumn(); next += direction)
        if (m_geometry.columnWidth(next) > 0)
            return next;
    return column;
}

int GridView::edgeColumn(int direction) const {
    return direction > 0 ? columnAfter(lastColumn() + 1, -1) : columnAfter(0, 1);
}

// A view may have none, or those of unused fields alone while they are hidden.
bool GridView::hasColumns() const {
    return edgeColumn(-1) != model::kNumberColumn;
}

void GridView::move(Step step, Extend extend) {
    if (!hasColumns())
        return;
    const model::GridPlace& place = m_grid->place();
    const int row = extend == Extend::Yes ? place.RowSel : place.Row;
    const int from = extend == Extend::Yes ? place.ColSel : place.Col;
    const int column = from > model::kNumberColumn ? from : edgeColumn(-1);
    const int page = std::max(1, (viewport()->height() - m_geometry.headerHeight()) / m_geometry.rowHeight() - 1);
    switch (step) {
    case Step::Left:
        return goTo(rowAfter(row, 0), columnAfter(column, -1), extend);
    case Step::Right:
        return goTo(rowAfter(row, 0), columnAfter(column, 1), extend);
    case Step::Up:
        return goTo(rowAfter(row, -1), column, extend);
    case Step::Down:
        return goTo(rowAfter(row, row < model::kFirstDataRow ? 0 : 1), column, extend);
    case Step::PageUp:
        return goTo(rowAfter(row, -page), column, extend);
    case Step::PageDown:
        return goTo(rowAfter(row, page), column, extend);
    case Step::Home:
        return goTo(rowAfter(row, 0), edgeColumn(-1), extend);
    case Step::End:
        return goTo(rowAfter(row, 0), edgeColumn(1), extend);
    case Step::First:
        return goTo(document::firstRow(*m_grid), edgeColumn(-1), extend);
    case Step::Last:
        return goTo(rowAfter(m_grid->rows() - 1, 0), edgeColumn(1), extend);
    }
}

void GridView::goTo(int row, int column, Extend extend) {
    const bool moves = row != m_grid->row() || column != m_grid->col();
    if (moves)
        emit leavingCell();
    if (extend == Extend::Yes && m_grid->row() >= model::kFirstDataRow)
        m_grid->select(row, column);
    else
        m_grid->setCell(row, column);
    showCell(row, column);
    refresh();
    if (extend == Extend::No)
        emit currentCellChanged();
}

} // namespace tallybook::desktop
