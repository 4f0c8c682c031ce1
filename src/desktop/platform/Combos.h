// Filling combo boxes from the core's lists.
#pragma once

#include "desktop/platform/Text.h"

#include <QComboBox>

namespace tallybook::desktop {

// Gives the box these entries and this choice, -1 for none, without a signal. A name that is cut in the box is whole
// in its list and in the tool tip. Entries that are there already stay.
void fillCombo(QComboBox& combo, const QStringList& entries, int chosen);

// The same for texts of the core.
template <class Texts> void fillCombo(QComboBox& combo, const Texts& entries, int chosen) {
    QStringList list;
    for (const auto& entry : entries)
        list += toQt(entry);
    fillCombo(combo, list, chosen);
}

} // namespace tallybook::desktop
