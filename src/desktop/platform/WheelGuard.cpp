#include "desktop/platform/WheelGuard.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>

namespace tallybook::desktop {

WheelGuard::WheelGuard(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
}

bool WheelGuard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Wheel || !watched->isWidgetType())
        return false;
    const auto* box = static_cast<QWidget*>(watched);
    const bool valued =
        qobject_cast<const QComboBox*>(box) != nullptr || qobject_cast<const QAbstractSpinBox*>(box) != nullptr;
    if (!valued || box->hasFocus())
        return false;
    event->ignore(); // for what it stands in
    return true;
}

} // namespace tallybook::desktop
