#include "desktop/platform/ListInCell.h"

namespace tallybook::desktop {

ListInCell::ListInCell(QTableWidget& table) : QComboBox(table.viewport()), m_table(table) {
    setMaxVisibleItems(14);
    // A list under the cell in every style, never one that covers it.
    setStyleSheet(QStringLiteral("QComboBox { combobox-popup: 0; }"));
    hide();
}

void ListInCell::openAt(int row, int column) {
    m_table.scrollTo(m_table.model()->index(row, column));
    setGeometry(m_table.visualRect(m_table.model()->index(row, column)));
    show();
    setFocus();
    showPopup();
}

void ListInCell::hidePopup() {
    QComboBox::hidePopup();
    if (!isVisible())
        return;
    m_table.setFocus(); // before it hides, or the focus would wander along the window's tab order
    hide();
}

} // namespace tallybook::desktop
