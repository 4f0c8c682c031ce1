#include "desktop/ModalScript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

namespace tallybook::test {

namespace {

QString withoutAccessKey(QString caption) {
    return caption.remove(QLatin1Char('&'));
}

} // namespace

void pressButton(QWidget& window, const QString& caption) {
    const auto buttons = window.findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons)
        if (button->isVisible() && withoutAccessKey(button->text()) == withoutAccessKey(caption)) {
            EXPECT_TRUE(button->isEnabled()) << caption.toStdString();
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    ADD_FAILURE() << "no button " << caption.toStdString();
    window.close();
}

ModalScript::ModalScript() {
    qApp->installEventFilter(this);
}

ModalScript::~ModalScript() {
    EXPECT_TRUE(m_steps.empty()) << m_steps.size() << " expected dialogs did not come";
}

void ModalScript::expectMessage(const QString& text, const QString& button) {
    expect([text, button](QWidget& window) {
        auto* box = qobject_cast<QMessageBox*>(&window);
        EXPECT_NE(box, nullptr) << "not a message but " << window.windowTitle().toStdString();
        if (box == nullptr) {
            window.close();
            return;
        }
        EXPECT_EQ(box->text().toStdString(), text.toStdString());
        pressButton(window, button);
    });
}

void ModalScript::expectMenu(const QString& menu, const QString& item) {
    expect([menu, item](QWidget& window) {
        EXPECT_EQ(window.objectName().toStdString(), menu.toStdString());
        auto* popUp = qobject_cast<QMenu*>(&window);
        const auto actions = popUp != nullptr ? popUp->actions() : QList<QAction*>();
        for (QAction* action : actions)
            if (action->objectName() == item) {
                window.close();
                action->trigger();
                return;
            }
        ADD_FAILURE() << "no item " << item.toStdString();
        window.close();
    });
}

bool ModalScript::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Show || !watched->isWidgetType())
        return false;
    auto* window = static_cast<QWidget*>(watched);
    const bool asks =
        (qobject_cast<QDialog*>(window) != nullptr && window->isModal()) || qobject_cast<QMenu*>(window) != nullptr;
    if (asks && window->isWindow())
        QMetaObject::invokeMethod(
            this, [this, guard = QPointer<QWidget>(window)] { run(guard); }, Qt::QueuedConnection);
    return false;
}

void ModalScript::run(QWidget* window) {
    if (window == nullptr)
        return;
    if (m_steps.empty()) {
        const auto* box = qobject_cast<QMessageBox*>(window);
        ADD_FAILURE() << "unexpected window: " << window->windowTitle().toStdString() << " "
                      << (box != nullptr ? box->text().toStdString() : "");
        window->close();
        return;
    }
    QApplication::setActiveWindow(window); // nobody else does where there is no window manager
    const Step step = std::move(m_steps.front());
    m_steps.pop_front();
    step(*window);
}

} // namespace tallybook::test
