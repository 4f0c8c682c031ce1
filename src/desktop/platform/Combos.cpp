#include "desktop/platform/Combos.h"

#include <QAbstractItemView>

namespace tallybook::desktop {

namespace {

QStringList entriesOf(const QComboBox& combo) {
    QStringList list;
    for (int i = 0; i < combo.count(); ++i)
        list += combo.itemText(i);
    return list;
}

} // namespace

void fillCombo(QComboBox& combo, const QStringList& entries, int chosen) {
    const QSignalBlocker quiet(&combo);
    if (entries != entriesOf(combo)) {
        combo.clear();
        combo.addItems(entries);
        combo.view()->setMinimumWidth(combo.view()->sizeHintForColumn(0));
    }
    combo.setCurrentIndex(chosen);
    combo.setToolTip(plainTip(combo.currentText()));
}

} // namespace tallybook::desktop
