#include "desktop/platform/ScreenFit.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace tallybook::desktop {

namespace {

constexpr QSize kFrame(4, 34); // pixels: borders, and the bar of the title

// Below this a dialog may outgrow the screen when another of its parts is shown.
constexpr QSize kSmallScreen(640, 600);

// Qt's own dialogs look after themselves.
bool isOwn(const QDialog& dialog) {
    return dialog.objectName().startsWith(QLatin1String("frm")) ||
           dialog.objectName().startsWith(QLatin1String("dlg"));
}

bool fits(QSize size, QSize room) {
    return size.width() <= room.width() && size.height() <= room.height();
}

void putIntoScrollArea(QDialog& dialog) {
    const QMargins margins = dialog.layout()->contentsMargins();
    QWidget* focus = dialog.focusWidget();
    auto* contents = new QWidget;
    contents->setLayout(dialog.layout());
    contents->layout()->setContentsMargins(margins);
    auto* area = new QScrollArea(&dialog);
    area->setObjectName(QStringLiteral("scrollArea"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(contents);
    auto* outer = new QVBoxLayout(&dialog);
    outer->setContentsMargins({});
    outer->addWidget(area);
    area->show();      // the dialog is visible already
    outer->activate(); // or the least size of before would still hold
    if (focus != nullptr)
        focus->setFocus();
}

} // namespace

ScreenFit::ScreenFit(QObject* parent, QSize room) : QObject(parent), m_room(room) {
    qApp->installEventFilter(this);
}

QSize ScreenFit::roomOn(const QWidget& window) {
    return window.screen()->availableSize() - kFrame;
}

void ScreenFit::fit(QDialog& dialog) const {
    const QSize room = m_room.isEmpty() ? roomOn(dialog) : m_room;
    const QSize wanted = dialog.size().expandedTo(dialog.minimumSizeHint());
    const bool small = !fits(kSmallScreen, room) || !fits(dialog.minimumSizeHint(), room);
    if (small && isOwn(dialog) && dialog.layout() != nullptr && dialog.findChild<QScrollArea*>() == nullptr)
        putIntoScrollArea(dialog);
    if (!fits(wanted, room)) {
        dialog.setMinimumSize(dialog.minimumSize().boundedTo(room));
        dialog.resize(wanted.boundedTo(room));
    } else if (small) {
        dialog.resize(wanted);
    }
}

bool ScreenFit::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType())
        if (auto* dialog = qobject_cast<QDialog*>(watched); dialog != nullptr && dialog->isWindow())
            fit(*dialog);
    return false;
}

} // namespace tallybook::desktop
