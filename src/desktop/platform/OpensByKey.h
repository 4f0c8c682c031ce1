// A combo box whose entries do something when they are chosen.
#pragma once

#include <QComboBox>
#include <QObject>

namespace tallybook::desktop {

// While the box's list is closed, the arrows and letters that would choose the next entry open the list instead, and
// the wheel does nothing: an entry is chosen in the open list only, with Enter or the mouse. Owned by the box.
class OpensByKey : public QObject {
    Q_OBJECT

public:
    explicit OpensByKey(QComboBox& box);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox& m_box;
};

} // namespace tallybook::desktop
