// The grid for assistive technology: a table of the visible records with their field names as headers.
#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>

namespace tallybook::desktop {

class GridView;

// Rows are the visible records from 0, columns the visible fields from 0. Cells are made when asked for.
class GridAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit GridAccessible(GridView* view);
    ~GridAccessible() override;

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessibleInterface* focusChild() const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

    GridView& view() const { return *m_view; }
    int gridRow(int row) const;
    int gridColumn(int column) const; // -1 when there is none

private:
    GridView* m_view;
    mutable QHash<qint64, QAccessible::Id> m_cells; // by row * columns of the grid + column, both of the grid
};

// Makes Qt ask this file about grids. To be called once.
void installGridAccessible();

} // namespace tallybook::desktop
