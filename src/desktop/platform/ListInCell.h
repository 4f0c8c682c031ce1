// A list that stands over a cell of a table while one of its entries is picked.
#pragma once

#include <QComboBox>
#include <QTableWidget>

namespace tallybook::desktop {

// Hidden until it is opened. It goes with its list: after an entry was picked (`activated` tells), or when nothing
// was. The table has the focus again then.
class ListInCell : public QComboBox {
public:
    explicit ListInCell(QTableWidget& table);

    // Opens the list over the cell.
    void openAt(int row, int column);
    void hidePopup() override;

private:
    QTableWidget& m_table;
};

} // namespace tallybook::desktop
