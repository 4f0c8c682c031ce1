#include "desktop/grid/GridAccessible.h"

#include "desktop/grid/GridView.h"
#include "desktop/platform/Text.h"

namespace tallybook::desktop {

namespace {

constexpr int kMostCells = 4096; // kept at a time; more are forgotten and made again

class GridCellAccessible : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    GridCellAccessible(GridView& view, int row, int column) : m_view(&view), m_row(row), m_column(column) {}

    bool isValid() const override {
        return !m_view.isNull() && m_view->model() != nullptr && m_row < m_view->model()->rows();
    }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(static_cast<QObject*>(m_view.data()));
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text what) const override {
        if (!isValid() || (what != QAccessible::Name && what != QAccessible::Value))
            return {};
        const model::Picture picture = m_view->model()->picture(m_row, m_column);
        if (picture != model::Picture::None)
            return picture == model::Picture::CheckOn ? GridView::tr("checked") : GridView::tr("not checked");
        return toQt(m_view->model()->text(m_row, m_column));
    }
    QRect rect() const override {
        if (!isValid())
            return {};
        const QRect cell = m_view->cellRect(m_row, m_column);
        return {m_view->viewport()->mapToGlobal(cell.topLeft()), cell.size()};
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        state.selectable = true;
        state.focusable = true;
        state.editable = true;
        state.selected = isSelected();
        state.focused = isCurrent() && m_view->hasFocus();
        state.active = state.focused;
        state.offscreen = isValid() && !m_view->viewport()->rect().intersects(m_view->cellRect(m_row, m_column));
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this) : nullptr;
    }

    bool isSelected() const override { return isValid() && isCurrent(); }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override {
        int index = -1;
        for (int column = 1; isValid() && column <= m_column; ++column)
            index += m_view->geometry().columnWidth(column) > 0 ? 1 : 0;
        return index;
    }
    int rowIndex() const override { return isValid() ? m_view->model()->visiblePosition(m_row) : -1; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    bool isCurrent() const {
        return isValid() && m_view->model()->row() == m_row && m_view->model()->col() == m_column;
    }

    QPointer<GridView> m_view;
    int m_row;
    int m_column;
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    Q_UNUSED(className)
    auto* view = qobject_cast<GridView*>(object);
    return view != nullptr ? new GridAccessible(view) : nullptr;
}

} // namespace

GridAccessible::GridAccessible(GridView* view) : QAccessibleWidget(view, QAccessible::Table), m_view(view) {}

GridAccessible::~GridAccessible() {
    for (const QAccessible::Id id : std::as_const(m_cells))
        QAccessible::deleteAccessibleInterface(id);
}

void* GridAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

int GridAccessible::rowCount() const {
    return m_view->model() == nullptr ? 0 : m_view->model()->visibleRows();
}

int GridAccessible::columnCount() const {
    int count = 0;
    for (int column = 1; m_view->model() != nullptr && column < model::kScratchColumn; ++column)
        count += m_view->geometry().columnWidth(column) > 0 ? 1 : 0;
    return count;
}

int GridAccessible::gridRow(int row) const {
    return m_view->model()->visibleRow(row);
}

int GridAccessible::gridColumn(int column) const {
    for (int c = 1; c < model::kScratchColumn; ++c)
        if (m_view->geometry().columnWidth(c) > 0 && column-- == 0)
            return c;
    return -1;
}

QAccessibleInterface* GridAccessible::cellAt(int row, int column) const {
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return nullptr;
    const qint64 key = qint64{gridRow(row)} * model::kGridColumns + gridColumn(column);
    if (const auto known = m_cells.constFind(key); known != m_cells.constEnd())
        return QAccessible::accessibleInterface(*known);
    if (m_cells.size() >= kMostCells) {
        for (const QAccessible::Id id : std::as_const(m_cells))
            QAccessible::deleteAccessibleInterface(id);
        m_cells.clear();
    }
    QAccessibleInterface* cell = new GridCellAccessible(*m_view, gridRow(row), gridColumn(column));
    m_cells.insert(key, QAccessible::registerAccessibleInterface(cell));
    return cell;
}

int GridAccessible::childCount() const {
    return rowCount() * columnCount();
}

QAccessibleInterface* GridAccessible::child(int index) const {
    const int columns = columnCount();
    return columns == 0 || index < 0 ? nullptr : cellAt(index / columns, index % columns);
}

int GridAccessible::indexOfChild(const QAccessibleInterface* child) const {
    auto* cell = const_cast<QAccessibleInterface*>(child)->tableCellInterface();
    return cell == nullptr ? -1 : cell->rowIndex() * columnCount() + cell->columnIndex();
}

QAccessibleInterface* GridAccessible::childAt(int x, int y) const {
    if (m_view->model() == nullptr)
        return nullptr;
    const document::MousePlace place = m_view->placeAt(m_view->viewport()->mapFromGlobal(QPoint(x, y)));
    if (place.row < model::kFirstDataRow || place.row >= m_view->model()->rows() || place.col < 1 ||
        place.col >= model::kScratchColumn)
        return nullptr;
    int column = -1;
    for (int c = 1; c <= place.col; ++c)
        column += m_view->geometry().columnWidth(c) > 0 ? 1 : 0;
    return cellAt(m_view->model()->visiblePosition(place.row), column);
}

QAccessibleInterface* GridAccessible::focusChild() const {
    const model::GridModel* grid = m_view->model();
    if (grid == nullptr || grid->row() < model::kFirstDataRow || grid->col() < 1)
        return nullptr;
    int column = -1;
    for (int c = 1; c <= grid->col() && c < model::kScratchColumn; ++c)
        column += m_view->geometry().columnWidth(c) > 0 ? 1 : 0;
    return cellAt(grid->visiblePosition(grid->row()), column);
}

int GridAccessible::selectedCellCount() const {
    return focusChild() == nullptr ? 0 : 1;
}

QList<QAccessibleInterface*> GridAccessible::selectedCells() const {
    QAccessibleInterface* cell = focusChild();
    return cell == nullptr ? QList<QAccessibleInterface*>() : QList<QAccessibleInterface*>({cell});
}

QString GridAccessible::columnDescription(int column) const {
    const int field = m_view->model() == nullptr ? -1 : gridColumn(column);
    return field < 0 ? QString() : toQt(m_view->model()->text(0, field));
}

QString GridAccessible::rowDescription(int row) const {
    if (row < 0 || row >= rowCount())
        return {};
    return toQt(m_view->model()->text(gridRow(row), model::kNumberColumn));
}

void installGridAccessible() {
    QAccessible::installFactory(makeInterface);
}

} // namespace tallybook::desktop
