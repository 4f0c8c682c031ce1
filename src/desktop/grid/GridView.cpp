#include "desktop/grid/GridView.h"

#include "desktop/grid/GridPainter.h"
#include "desktop/grid/RowMarker.h"
#include "desktop/platform/Text.h"

#include <QAccessible>
#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace tallybook::desktop {

namespace {

constexpr int kRowPadding = 6;        // pixels above and below a row's text together
constexpr int kDefaultCharacters = 9; // digits that a column of the default width holds
constexpr int kMarkerWidth = 10;
constexpr std::size_t kMostInTip = 1000; // characters: a memo can be longer than the screen is high

} // namespace

GridView::GridView(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("grd"));
    setAccessibleName(tr("Records"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::StyledPanel);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setFocusProxy(this);
    setAttribute(Qt::WA_InputMethodEnabled);
    m_marker = new RowMarker(viewport());
    takeTheme();
}

GridView::~GridView() = default;

void GridView::setModel(model::GridModel* grid) {
    m_grid = grid;
    m_pressed.reset();
    m_dragColumn = -1;
    m_marker->hide();
    refresh();
}

void GridView::takeTheme() {
    m_font = std::make_unique<GridFont>(font());
    m_look = lookOf(*this);
    refresh();
}

void GridView::refresh() {
    if (!m_repaints)
        return;
    if (m_grid == nullptr) {
        updateScrollBars();
        viewport()->update();
        return;
    }
    GridGeometry::Measures measures;
    measures.rowHeight = m_font->lineHeight() + kRowPadding;
    measures.digitWidth = static_cast<int>(std::ceil(m_font->advance('0')));
    measures.defaultWidth = kDefaultCharacters * measures.digitWidth;
    measures.dpi = logicalDpiX();
    m_geometry.update(*m_grid, measures);
    updateScrollBars();
    if (m_marker->isVisible())
        placeMarker();
    announceCurrent();
    viewport()->update();
}

void GridView::setRepainting(bool repaints) {
    if (m_repaints == repaints)
        return;
    m_repaints = repaints;
    viewport()->setUpdatesEnabled(repaints);
    refresh();
}

void GridView::announceCurrent() {
    if (m_grid->row() == m_shownRow && m_grid->col() == m_shownColumn)
        return;
    m_shownRow = m_grid->row();
    m_shownColumn = m_grid->col();
    if (!QAccessible::isActive() || !hasFocus())
        return;
    QAccessibleInterface* self = QAccessible::queryAccessibleInterface(this);
    if (self == nullptr)
        return;
    QAccessibleInterface* cell = self->focusChild();
    if (cell != nullptr && cell != self) {
        QAccessibleEvent event(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void GridView::updateScrollBars() {
    const bool empty = m_grid == nullptr;
    const QSize room = viewport()->size() - QSize(m_geometry.numberWidth(), m_geometry.headerHeight());
    const int width = empty ? 0 : m_geometry.bodyWidth();
    const int height = empty ? 0 : m_geometry.bodyHeight();
    m_scrollingOurselves = true;
    horizontalScrollBar()->setPageStep(std::max(1, room.width()));
    horizontalScrollBar()->setRange(0, std::max(0, width - room.width()));
    horizontalScrollBar()->setSingleStep(std::max(1, m_geometry.rowHeight()));
    verticalScrollBar()->setPageStep(std::max(1, room.height()));
    verticalScrollBar()->setRange(0, std::max(0, height - room.height()));
    verticalScrollBar()->setSingleStep(std::max(1, m_geometry.rowHeight()));
    m_scrollingOurselves = false;
    m_geometry.setScroll({horizontalScrollBar()->value(), verticalScrollBar()->value()});
}

void GridView::setHint(const QString& hint) {
    if (hint == m_hint)
        return;
    m_hint = hint;
    setAccessibleDescription(hint);
    viewport()->update();
}

// Marked up as it is, so that it is not taken for markup: a text may hold anything.
QString GridView::toolTipAt(QPoint point) const {
    const document::MousePlace place = placeAt(point);
    if (m_grid == nullptr || place.col < 1 || place.col >= m_grid->cols() || place.col >= model::kScratchColumn ||
        place.row >= m_grid->rows())
        return {};
    const std::string text = m_grid->text(place.row, place.col).substr(0, kMostInTip);
    const QRect cell = cellRect(place.row, place.col) & viewport()->rect();
    if (m_font->width(text) <= cell.width() - 2 * TextBatch::kMargin)
        return {};
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(toQt(text).toHtmlEscaped());
}

bool GridView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString tip = toolTipAt(help->pos());
    const document::MousePlace place = placeAt(help->pos());
    if (tip.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), tip, viewport(), cellRect(place.row, place.col));
    return true;
}

void GridView::scrollContentsBy(int, int) {
    if (!m_scrollingOurselves) {
        emit scrolling();
        m_marker->hide();
    }
    m_geometry.setScroll({horizontalScrollBar()->value(), verticalScrollBar()->value()});
    if (m_grid != nullptr && m_grid->visibleRows() > 0) {
        const int position = std::min(m_geometry.firstPosition(m_geometry.headerHeight()), m_grid->visibleRows() - 1);
        m_grid->setTopRow(m_grid->visibleRow(position));
    }
    viewport()->update();
}

void GridView::paintEvent(QPaintEvent*) {
    // A screen of another resolution needs its own check pictures.
    if (m_look.checkon.devicePixelRatio() != viewport()->devicePixelRatioF())
        m_look = lookOf(*this);
    QPainter painter(viewport());
    if (m_grid == nullptr) {
        painter.fillRect(viewport()->rect(), m_look.outside);
        return;
    }
    GridPainter page(painter, *m_grid, m_geometry, *m_font, m_look, m_batch, viewport()->size());
    page.setFrame(m_editorFrame.value_or(currentCellRect()));
    page.paint();
    if (!m_hint.isEmpty())
        page.paintHint(m_hint);
}

void GridView::resizeEvent(QResizeEvent*) {
    updateScrollBars();
}

void GridView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    const QEvent::Type type = event->type();
    if (type == QEvent::FontChange || type == QEvent::PaletteChange || type == QEvent::StyleChange)
        takeTheme();
}

QRect GridView::cellRect(int row, int column) const {
    return m_grid == nullptr ? QRect() : m_geometry.cellRect(*m_grid, row, column);
}

document::MousePlace GridView::placeAt(QPoint point) const {
    return m_grid == nullptr ? document::MousePlace{} : m_geometry.placeAt(*m_grid, point);
}

// Empty when the current cell is none of a record that can be seen.
QRect GridView::currentCellRect() const {
    const int row = m_grid->row();
    const int column = m_grid->col();
    const bool shown = row >= model::kHeaderRows && row < m_grid->rows() && m_grid->rowHeight(row) != 0;
    return shown && column >= 1 && column < model::kScratchColumn ? cellRect(row, column) : QRect();
}

void GridView::setEditorFrame(std::optional<QRect> editor) {
    m_editorFrame = editor;
    viewport()->update();
}

bool GridView::hasRecords() const {
    return m_grid != nullptr && m_grid->visibleRows() > 0;
}

// Without records there is a column to be shown, and no row.
void GridView::showCell(int row, int column) {
    if (m_grid == nullptr || row < model::kHeaderRows)
        return;
    const QRect cell = m_geometry.cellRect(*m_grid, row, column);
    const QRect room(m_geometry.numberWidth(), m_geometry.headerHeight(),
                     viewport()->width() - m_geometry.numberWidth(),
                     viewport()->height() - m_geometry.headerHeight());
    QPoint by;
    if (hasRecords() && cell.bottom() > room.bottom())
        by.setY(cell.bottom() - room.bottom());
    if (hasRecords() && cell.top() - by.y() < room.top())
        by.setY(cell.top() - room.top());
    if (cell.right() > room.right())
        by.setX(cell.right() - room.right());
    if (cell.left() - by.x() < room.left())
        by.setX(cell.left() - room.left());
    m_scrollingOurselves = true;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + by.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + by.y());
    m_scrollingOurselves = false;
    if (m_marker->isVisible())
        placeMarker();
}

void GridView::placeMarker() {
    const bool onRecord = hasRecords() && m_grid->row() >= model::kFirstDataRow;
    const int top = onRecord ? m_geometry.top(*m_grid, m_grid->row()) : 0;
    m_marker->setGeometry(1, top, kMarkerWidth, m_geometry.rowHeight() - 1);
    m_marker->setVisible(onRecord && top >= m_geometry.headerHeight());
}

void GridView::hideMarker() {
    m_marker->hide();
}

} // namespace tallybook::desktop
