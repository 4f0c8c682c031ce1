// A drop-down list that keeps clear of the status bar.
#pragma once

#include <QComboBox>

namespace tallybook::desktop {

// Shows ten entries at most, and opens upward where they would not fit between the cell and the top of the status
// bar.
class CellCombo : public QComboBox {
public:
    explicit CellCombo(QWidget* parent);
    void showPopup() override;
};

} // namespace tallybook::desktop
