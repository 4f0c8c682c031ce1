// What every dialog is looked at for: its default button, tab order and access keys.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace tallybook::test {

// The object names that Tab reaches in order, from what has the focus on.
inline QStringList tabOrder(QWidget& window) {
    QStringList names;
    QWidget* start = QApplication::focusWidget();
    for (QWidget* now = start; now != nullptr;) {
        names += now->objectName();
        QTest::keyClick(now, Qt::Key_Tab);
        now = QApplication::focusWidget();
        if (now == start || names.size() > 30)
            break;
    }
    EXPECT_TRUE(start != nullptr && window.isAncestorOf(start));
    return names;
}

inline void showAndActivate(QWidget& window) {
    window.show();
    QApplication::setActiveWindow(&window);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
}

inline QString defaultButton(const QWidget& window) {
    for (const QPushButton* button : window.findChildren<QPushButton*>())
        if (button->isDefault() && button->isVisible())
            return button->objectName();
    return {};
}

inline void expectNoAccessKeyTwice(const QWidget& window) {
    QStringList keys;
    const auto note = [&](const QString& caption) {
        const auto mark = caption.indexOf(QLatin1Char('&'));
        if (mark < 0 || mark + 1 >= caption.size())
            return;
        const QString key = caption.at(mark + 1).toLower();
        EXPECT_FALSE(keys.contains(key)) << window.objectName().toStdString() << ": " << caption.toStdString();
        keys += key;
    };
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
        if (button->isVisible())
            note(button->text());
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->isVisible() && label->buddy() != nullptr)
            note(label->text());
}

} // namespace tallybook::test
