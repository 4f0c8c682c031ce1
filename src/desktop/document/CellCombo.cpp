#include "desktop/document/CellCombo.h"

#include <QAbstractItemView>
#include <QScreen>

#include <algorithm>

namespace tallybook::desktop {

namespace {

constexpr int kMostEntries = 10;

// The lowest pixel of the screen that the list may cover.
int floorFor(const QWidget& combo) {
    const QWidget* bar = combo.window()->findChild<QWidget*>(QStringLiteral("sbStatusBar"));
    if (bar != nullptr && bar->isVisible())
        return bar->mapToGlobal(QPoint()).y();
    return combo.screen()->availableGeometry().bottom();
}

} // namespace

CellCombo::CellCombo(QWidget* parent) : QComboBox(parent) {
    setMaxVisibleItems(kMostEntries);
    // A list under the cell in every style, never one that covers it.
    setStyleSheet(QStringLiteral("QComboBox { combobox-popup: 0; }"));
}

void CellCombo::showPopup() {
    QComboBox::showPopup();
    QWidget* list = view()->window();
    const QRect cell(mapToGlobal(QPoint()), size());
    const bool below = cell.bottom() + list->height() <= floorFor(*this);
    const int top = below ? cell.bottom() + 1 : std::max(0, cell.top() - list->height());
    list->move(cell.left(), top);
}

} // namespace tallybook::desktop
