// Keys and mouse for a dialog's controls, which are found by their names.
#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

namespace tallybook::test {

// The control of a name; `place` counts those that share it, from 0.
template <class T> T* child(const QWidget& window, const char* name, int place = 0) {
    T* found = window.findChildren<T*>(QString::fromLatin1(name)).value(place);
    EXPECT_NE(found, nullptr) << name;
    return found;
}

inline void clickOn(QWidget& window, const char* button, int place = 0) {
    auto* found = child<QAbstractButton>(window, button, place);
    // The middle of a check box or an option may lie behind its text, where a click is for nobody.
    const bool marked = qobject_cast<QRadioButton*>(found) != nullptr || qobject_cast<QCheckBox*>(found) != nullptr;
    QTest::mouseClick(found, Qt::LeftButton, {}, marked ? QPoint(8, found->height() / 2) : QPoint());
}

// A key for what has the focus in a window, which nobody makes active again when a box above it has closed.
inline void press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QApplication::setActiveWindow(&window);
    QWidget* focus = window.focusWidget();
    ASSERT_NE(focus, nullptr);
    QTest::keyClick(focus, key, modifiers);
}

// Walks to an entry of an open list with the keys.
inline void walkTo(QAbstractItemView* list, int entry) {
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < list->model()->rowCount() && list->currentIndex().row() != entry; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(list->currentIndex().row(), entry);
}

// Replaces the text of a box by one from the clipboard, as is done with a long one.
inline void pasteOver(QWidget* box, const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
}

// Picks an entry of a combo box with the mouse and Return.
inline void pick(QWidget& window, const char* combo, const char* entry) {
    auto* box = child<QComboBox>(window, combo);
    ASSERT_TRUE(box->isEnabled()) << combo;
    const int index = box->findText(QString::fromLatin1(entry));
    ASSERT_GE(index, 0) << entry;
    QTest::mouseClick(box, Qt::LeftButton);
    QAbstractItemView* list = box->view();
    walkTo(list, index);
    QTest::keyClick(list, Qt::Key_Return);
    QApplication::setActiveWindow(&window);
}

// Types over what a line holds. Characters without a key of their own are put in as an input method does.
inline void typeInto(QWidget& window, const char* line, const QString& text) {
    auto* box = child<QLineEdit>(window, line);
    ASSERT_TRUE(box->isEnabled()) << line;
    QApplication::setActiveWindow(&window);
    box->setFocus();
    box->selectAll();
    if (text.isEmpty())
        QTest::keyClick(box, Qt::Key_Delete);
    for (const QChar one : text)
        if (one.unicode() < 0x80)
            QTest::keyClick(box, one.toLatin1());
        else
            box->insert(one);
}

inline std::string textOf(QWidget& window, const char* line) {
    return child<QLineEdit>(window, line)->text().toStdString();
}

inline std::string chosenIn(QWidget& window, const char* combo) {
    return child<QComboBox>(window, combo)->currentText().toStdString();
}

inline bool isEnabled(QWidget& window, const char* widget) {
    return child<QWidget>(window, widget)->isEnabled();
}

} // namespace tallybook::test
