#include "desktop/WindowTest.h"
#include "desktop/document/frmDocument.h"

#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QToolBar>
#include <QToolButton>

namespace tallybook::test {
namespace {

using model::columnOfSlot;

class Accessibility : public WindowTest {
protected:
    QAccessibleInterface* gridInterface() { return QAccessible::queryAccessibleInterface(&grid()); }
    QAccessibleTableInterface* table() { return gridInterface()->tableInterface(); }
    QString cell(int row, int column) { return table()->cellAt(row, column)->text(QAccessible::Name); }
};

TEST_F(Accessibility, theGridIsATableOfTheVisibleRecords) {
    openSample();
    ASSERT_NE(gridInterface(), nullptr);
    EXPECT_EQ(gridInterface()->role(), QAccessible::Table);
    EXPECT_EQ(gridInterface()->text(QAccessible::Name), QStringLiteral("Records"));
    EXPECT_EQ(table()->rowCount(), 3);
    EXPECT_EQ(table()->columnDescription(kTitle), QStringLiteral("Title"));
    EXPECT_EQ(table()->rowDescription(2), QStringLiteral("3"));
    EXPECT_EQ(cell(0, kTitle), QStringLiteral("Sea Charts"));
    EXPECT_EQ(cell(0, kLent), QStringLiteral("checked"));
    EXPECT_EQ(cell(1, kLent), QStringLiteral("not checked"));
    EXPECT_EQ(table()->cellAt(3, 0), nullptr);
}

TEST_F(Accessibility, hiddenRowsAndColumnsAreNotThere) {
    openSample();
    doc().grd.setRowHeight(2, 0);
    doc().grd.setColumnWidth(columnOfSlot(kCategory), 0);
    grid().refresh();
    EXPECT_EQ(table()->rowCount(), 2);
    EXPECT_EQ(cell(0, 0), QStringLiteral("Garden Year"));
}

TEST_F(Accessibility, theFocusIsOnTheCurrentCell) {
    openSample();
    go(1, kTitle);
    QAccessibleInterface* focus = gridInterface()->focusChild();
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->text(QAccessible::Name), QStringLiteral("Garden Year"));
    EXPECT_TRUE(focus->state().focused);
    EXPECT_EQ(focus->tableCellInterface()->rowIndex(), 1);
    EXPECT_EQ(focus->tableCellInterface()->columnIndex(), kTitle);
    EXPECT_EQ(focus->role(), QAccessible::Cell);
}

TEST_F(Accessibility, aCellIsFoundByItsPlaceOnTheScreen) {
    openSample();
    const QPoint place = grid().viewport()->mapToGlobal(middleOf(2, kTitle));
    QAccessibleInterface* hit = gridInterface()->childAt(place.x(), place.y());
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->text(QAccessible::Name), QStringLiteral("Old Clocks"));
    EXPECT_TRUE(hit->rect().contains(place));
    EXPECT_EQ(gridInterface()->child(gridInterface()->indexOfChild(hit)), hit);
}

TEST_F(Accessibility, anEmptyGridHasNoCells) {
    show();
    trigger("mnuFileNew");
    EXPECT_EQ(table()->rowCount(), 0);
    EXPECT_EQ(gridInterface()->focusChild(), nullptr);
}

TEST_F(Accessibility, everyControlHasAName) {
    openSample();
    for (const char* name :
         {"CmbView", "CmbFilter", "cmdEdit", "Text1", "MebSpin", "cmb1", "DTPickerMS2", "grd", "ViewGrd"}) {
        QAccessibleInterface* control = QAccessible::queryAccessibleInterface(find<QWidget>(name));
        ASSERT_NE(control, nullptr) << name;
        EXPECT_FALSE(control->text(QAccessible::Name).isEmpty()) << name;
    }
    for (QToolButton* button : find<QToolBar>("tbToolBar")->findChildren<QToolButton*>())
        EXPECT_FALSE(button->isVisible() && button->accessibleName().isEmpty());
}

} // namespace
} // namespace tallybook::test
