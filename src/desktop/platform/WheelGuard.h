// The wheel over lists and numbers that nobody has entered.
#pragma once

#include <QObject>

namespace tallybook::desktop {

// A wheel that passes over a closed list or a number box scrolls what they stand in. It changes their value only when
// they have the focus. One object serves the whole program, as long as it lives.
class WheelGuard : public QObject {
    Q_OBJECT

public:
    explicit WheelGuard(QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tallybook::desktop
