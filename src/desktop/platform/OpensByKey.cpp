#include "desktop/platform/OpensByKey.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>

namespace tallybook::desktop {

namespace {

bool choosesAnEntry(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        return true;
    default:
        break;
    }
    const Qt::KeyboardModifiers command = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return (event.modifiers() & command) == 0 && !event.text().isEmpty() && event.text().at(0).isPrint();
}

} // namespace

OpensByKey::OpensByKey(QComboBox& box) : QObject(&box), m_box(box) {
    box.installEventFilter(this);
}

bool OpensByKey::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Wheel)
        return true;
    if (event->type() != QEvent::KeyPress || !choosesAnEntry(*static_cast<QKeyEvent*>(event)))
        return false;
    m_box.showPopup();
    QApplication::sendEvent(m_box.view(), event); // a letter goes to its entry
    return true;
}

} // namespace tallybook::desktop
