// Sorting from the column's menu and from the tool bar.
#include "desktop/WindowTest.h"

namespace tallybook::test {
namespace {

using model::columnOfSlot;

class Sorting : public WindowTest {
protected:
    // Chooses an item of the menu that a right click on a field's name pops up.
    void chooseInColumnMenu(int slot, const char* item) {
        const int column = columnOfSlot(slot);
        grid().showCell(model::kFirstDataRow, column);
        script.expectMenu(QStringLiteral("mnuColumn"), QString::fromLatin1(item));
        clickAt({grid().cellRect(model::kFirstDataRow, column).center().x(), 5}, Qt::RightButton);
    }
    std::string titles() { return text(0, kTitle) + ", " + text(1, kTitle) + ", " + text(2, kTitle); }
};

TEST_F(Sorting, theColumnsMenuSortsOnItsColumn) {
    openSample();
    chooseInColumnMenu(kTitle, "mnuColumnSorta");
    EXPECT_EQ(titles(), "Garden Year, Old Clocks, Sea Charts");
    chooseInColumnMenu(kPages, "mnuColumnSortd");
    EXPECT_EQ(titles(), "Old Clocks, Sea Charts, Garden Year");
    EXPECT_EQ(doc().grd.row(), model::kFirstDataRow);
    EXPECT_EQ(doc().grd.col(), columnOfSlot(kPages));
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Sorting, theButtonsSortOnTheCurrentColumn) {
    openSample();
    go(0, kPrice);
    trigger("sorta");
    EXPECT_EQ(titles(), "Garden Year, Sea Charts, Old Clocks");
    trigger("sortd");
    EXPECT_EQ(titles(), "Old Clocks, Sea Charts, Garden Year");
}

TEST_F(Sorting, theOpenEditIsCommittedFirst) {
    openSample();
    click(0, kTitle);
    type("Atlas");
    trigger("sorta");
    EXPECT_EQ(titles(), "Atlas, Garden Year, Old Clocks");
    EXPECT_FALSE(visible("Text1"));
}

TEST_F(Sorting, aColumnWithoutAnOrderIsRefused) {
    openSample();
    go(0, kPicture);
    script.expectMessage(QStringLiteral("Sort utility is not available for the field : Picture"));
    trigger("sorta");
    EXPECT_EQ(titles(), "Sea Charts, Garden Year, Old Clocks");
}

TEST_F(Sorting, theNewOrderIsSaved) {
    openSample();
    go(0, kTitle);
    trigger("sorta");
    trigger("mnuFileSave");
    const auto saved = savedFile();
    EXPECT_EQ(saved->grd.text(2, columnOfSlot(kTitle)), "Garden Year");
    EXPECT_EQ(saved->CellLongs.get(0, kCategory), 2); // its category has come along
    EXPECT_EQ(saved->RecKeys[0], 2);
    EXPECT_EQ(saved->grd.text(4, columnOfSlot(kTitle)), "Sea Charts");
}

} // namespace
} // namespace tallybook::test
