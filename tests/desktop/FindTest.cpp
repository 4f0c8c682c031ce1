// Find, Find Next and Find Previous, by their keys.
#include "desktop/WindowTest.h"
#include "desktop/document/frmDocument.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QStatusBar>
#include <QTest>

namespace tallybook::test {
namespace {

using model::columnOfSlot;

class FindInWindow : public WindowTest {
protected:
    void search(QWidget& window, const char* text) {
        ASSERT_EQ(window.objectName().toStdString(), "frmFindForm");
        QApplication::setActiveWindow(&window); // again, after a message
        QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(text));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    // Answers the dialog to come: a text, then Return.
    void expectFind(const char* text) {
        script.expect([this, text](QWidget& window) { search(window, text); });
    }
    // Presses keys that may bring up a dialog. Where there is no window manager nobody makes the window behind a
    // dialog active again.
    void press(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        key(code, modifiers);
        QApplication::setActiveWindow(&window());
    }
    // Record from 0 and slot of the current cell.
    std::pair<int, int> place() {
        return {doc().grd.row() - model::kFirstDataRow, model::slotOfColumn(doc().grd.col())};
    }
    using Place = std::pair<int, int>;
};

TEST_F(FindInWindow, ctrlFAsksAndTheHitIsCurrent) {
    openSample();
    expectFind("clocks");
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(place(), Place(2, kTitle));
    EXPECT_TRUE(grid().viewport()->rect().contains(grid().cellRect(4, columnOfSlot(kTitle))));
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(FindInWindow, f3GoesOnAndShiftF3Returns) {
    openSample();
    expectFind("hard"); // the cover of all three records
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(place(), Place(0, kCover));
    press(Qt::Key_F3);
    EXPECT_EQ(place(), Place(1, kCover));
    press(Qt::Key_F3);
    EXPECT_EQ(place(), Place(2, kCover));
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(place(), Place(1, kCover));
}

TEST_F(FindInWindow, aHitFarAwayIsScrolledIntoView) {
    openSample();
    window().resize(300, 200);
    expectFind("harbour");
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(place(), Place(0, kNotes));
    EXPECT_TRUE(grid().viewport()->rect().intersects(grid().cellRect(2, columnOfSlot(kNotes))));
    EXPECT_GE(grid().cellRect(2, columnOfSlot(kNotes)).left(), grid().geometry().numberWidth());
}

TEST_F(FindInWindow, aMissIsToldAndTheDialogStays) {
    openSample();
    script.expect([this](QWidget& form) {
        script.expectMessage(QStringLiteral("Search string not found."));
        search(form, "clocksmith");
        EXPECT_TRUE(form.isVisible());
        search(form, "old clocks");
        EXPECT_FALSE(form.isVisible());
    });
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(place(), Place(2, kTitle));
}

TEST_F(FindInWindow, anEmptyTextIsAskedFor) {
    openSample();
    script.expect([this](QWidget& form) {
        script.expectMessage(QStringLiteral("Please input a search text."));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_TRUE(form.isVisible());
        form.close();
    });
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(place(), Place(0, kCategory));
}

TEST_F(FindInWindow, findNextAsksWhenNothingWasSoughtYet) {
    openSample();
    expectFind("garden");
    press(Qt::Key_F3);
    EXPECT_EQ(place(), Place(1, kTitle));
}

TEST_F(FindInWindow, findPreviousAsksForTheWayBack) {
    openSample();
    go(2, kTitle);
    script.expect([this](QWidget& form) {
        EXPECT_TRUE(form.findChild<QAbstractButton*>(QStringLiteral("optBackward"))->isChecked());
        search(form, "sea");
    });
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(place(), Place(0, kTitle));
}

TEST_F(FindInWindow, aMissAtF3IsTold) {
    openSample();
    expectFind("clocks");
    press(Qt::Key_F, Qt::ControlModifier);
    script.expectMessage(QStringLiteral("Search string not found."));
    press(Qt::Key_F3);
    EXPECT_EQ(place(), Place(2, kTitle));
}

TEST_F(FindInWindow, theTextsOfTheRunAreRemembered) {
    openSample();
    expectFind("clocks");
    press(Qt::Key_F, Qt::ControlModifier);
    go(0, kCategory);
    expectFind("garden");
    press(Qt::Key_F, Qt::ControlModifier);
    trigger("mnuFileClose");
    window().openFile(kSamplePath);
    script.expect([](QWidget& form) {
        auto* text = form.findChild<QComboBox*>(QStringLiteral("cmbFindText"));
        EXPECT_EQ(text->count(), 2);
        EXPECT_EQ(text->itemText(0), QStringLiteral("clocks"));
        EXPECT_EQ(text->itemText(1), QStringLiteral("garden"));
        EXPECT_EQ(text->currentText(), QStringLiteral("garden"));
        EXPECT_EQ(text->lineEdit()->selectedText(), QStringLiteral("garden"));
        form.close();
    });
    press(Qt::Key_F, Qt::ControlModifier);
}

TEST_F(FindInWindow, theOpenEditIsCommittedFirst) {
    openSample();
    click(1, kTitle);
    type("Atlas");
    expectFind("clocks");
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(text(1, kTitle), "Atlas");
    EXPECT_EQ(place(), Place(2, kTitle));
}

TEST_F(FindInWindow, aHitInAHiddenRecordIsTold) {
    openSample();
    doc().grd.setRowHeight(4, 0);
    grid().refresh();
    expectFind("clocks");
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(place(), Place(2, kTitle));
    EXPECT_EQ(window().statusBar()->currentMessage(), QStringLiteral("Found in record 3, which the filter hides."));
}

TEST_F(FindInWindow, anEmptyTallybookHasNothing) {
    show();
    trigger("mnuFileNew");
    script.expect([this](QWidget& form) {
        script.expectMessage(QStringLiteral("Search string not found."));
        search(form, "sea");
        form.close();
    });
    press(Qt::Key_F, Qt::ControlModifier);
}

} // namespace
} // namespace tallybook::test
