// The designer of the views, opened from the choice of views.
#include "desktop/DialogChecks.h"
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/dialogs/frmViewDesigner.h"
#include "desktop/document/frmDocument.h"

#include <QScrollBar>
#include <QTableWidget>

namespace tallybook::test {
namespace {

using desktop::frmViewDesigner;

constexpr const char* kKeepQuestion = "The view was changed. Do you want to save its changes?";
constexpr const char* kNoColumns = "View should have atleast one column to Show.\nSelecting no columns will remove "
                                   "the view.\nContinue?";
enum Column : int { kFieldsColumn, kSortColumn };

// The view "Prices" of title and price, the dearest first, in slot 1.
void addPrices(model::Document& sample) {
    model::ViewDef& view = sample.CurrDB20.Views[1];
    view.Name = "Prices";
    view.SortFields[0] = kPrice;
    view.SortDirs[0] = 1;
    view.NumCols = 2;
    view.Columns[0] = {kTitle, 90, {}};
    view.Columns[1] = {kPrice, 40, {}};
    view.FrozenCols = 1;
    sample.CurrDB20.NumViews = 2;
    sample.CurrDB20.HdrByte2 = 0; // a free slot: all fields at first
}

QTableWidget& gridOf(QWidget& dialog) {
    return *child<QTableWidget>(dialog, "Grid");
}

// The two columns, a row a line.
std::string rowsOf(QWidget& dialog) {
    const QTableWidget& grid = gridOf(dialog);
    std::string rows;
    for (int row = 0; row < grid.rowCount(); ++row)
        rows += grid.item(row, kFieldsColumn)->text().toStdString() + ": " +
                grid.item(row, kSortColumn)->text().toStdString() + "\n";
    return rows;
}

void clickCell(QWidget& dialog, int row, Column column) {
    QTableWidget& grid = gridOf(dialog);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(grid.model()->index(row, column)).center());
}

// Picks an entry of the list that stands over a cell.
void pickInCell(QWidget& dialog, const char* combo, const char* entry) {
    auto* box = child<QComboBox>(dialog, combo);
    ASSERT_TRUE(box->isVisible()) << combo;
    const int index = box->findText(QString::fromLatin1(entry));
    ASSERT_GE(index, 0) << entry;
    walkTo(box->view(), index);
    QTest::keyClick(box->view(), Qt::Key_Return);
    QApplication::setActiveWindow(&dialog);
    EXPECT_FALSE(box->isVisible());
}

void chooseField(QWidget& dialog, int row, const char* entry) {
    clickCell(dialog, row, kFieldsColumn);
    pickInCell(dialog, "CmbFields", entry);
}

void chooseSort(QWidget& dialog, int row, const char* entry) {
    clickCell(dialog, row, kSortColumn);
    pickInCell(dialog, "CmbSort", entry);
}

class ViewDesigner : public WindowTest {
protected:
    // Chooses "Edit Views..." and works in the dialog that comes.
    void edit(const ModalScript::Step& step) {
        script.expect([step](QWidget& dialog) {
            ASSERT_EQ(dialog.objectName(), QStringLiteral("frmViewDesigner"));
            step(dialog);
            EXPECT_FALSE(dialog.isVisible());
            dialog.close();
        });
        pick(window(), "CmbView", "Edit Views...");
    }
    void expectText(const char* text, const char* button = "OK") {
        script.expectMessage(QString::fromLatin1(text), QString::fromLatin1(button));
    }
    const model::ViewDef& stored(std::size_t slot) { return doc().CurrDB20.Views[slot]; }
};

TEST_F(ViewDesigner, aViewIsMadeSavedAndShown) {
    openSample();
    edit([](QWidget& dialog) {
        EXPECT_EQ(chosenIn(dialog, "CmbView"), "View0");
        EXPECT_EQ(textOf(dialog, "TxtView"), "View0");
        EXPECT_EQ(rowsOf(dialog), ": \n");
        EXPECT_TRUE(gridOf(dialog).hasFocus());
        typeInto(dialog, "TxtView", QStringLiteral("Thick ones"));
        chooseField(dialog, 0, "Pages");
        chooseField(dialog, 1, "Title");
        EXPECT_EQ(rowsOf(dialog), "Pages: \nTitle: \n: \n");
        chooseSort(dialog, 0, "Primary,Descending");
        EXPECT_EQ(rowsOf(dialog), "Pages: Pri Descending\nTitle: \n: \n");
        pick(dialog, "CmbCols", "2");
        clickOn(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible()); // for the next view
        EXPECT_EQ(chosenIn(dialog, "CmbView"), "Thick ones");
        clickOn(dialog, "cmdCancel");
    });
    EXPECT_EQ(stored(0).Name, "Thick ones");
    EXPECT_EQ(stored(0).NumCols, 2);
    EXPECT_EQ(stored(0).Columns[0].Field, kPages);
    EXPECT_EQ(stored(0).Columns[0].Width, 60);
    EXPECT_EQ(stored(0).Columns[1].Field, kTitle);
    EXPECT_EQ(stored(0).SortFields[0], kPages);
    EXPECT_EQ(stored(0).SortDirs[0], 1);
    EXPECT_EQ(stored(0).FrozenCols, 2);
    EXPECT_TRUE(doc().DocModified);
    EXPECT_EQ(chosenIn(window(), "CmbView"), "Thick ones"); // the document shows it
    EXPECT_TRUE(visible("ViewGrd"));
    EXPECT_EQ(doc().ViewGrd.text(2, 2), "Old Clocks");
    trigger("mnuFileSave");
    EXPECT_EQ(savedFile()->CurrDB20.Views[0].Name, "Thick ones");
}

TEST_F(ViewDesigner, showsTheViewInForce) {
    openSample([](model::Document& sample) {
        addPrices(sample);
        sample.CurrDB20.Filters[2].Name = "Cheap";
        sample.CurrDB20.Filters[2].CondFields[0] = kPrice;
        sample.CurrDB20.Filters[2].CondOps[0] = '>';
        sample.CurrDB20.NumFilters = 3;
        sample.CurrDB20.Views[1].FilterMask = 4;
    });
    pick(window(), "CmbView", "Prices");
    edit([](QWidget& dialog) {
        EXPECT_EQ(chosenIn(dialog, "CmbView"), "Prices");
        EXPECT_EQ(textOf(dialog, "TxtView"), "Prices");
        EXPECT_EQ(rowsOf(dialog), "Title: \nPrice: Pri Descending\n: \n");
        EXPECT_EQ(chosenIn(dialog, "CmbCols"), "1");
        EXPECT_EQ(chosenIn(dialog, "CmbFilter"), "Cheap");
        press(dialog, Qt::Key_Escape);
    });
    EXPECT_FALSE(doc().DocModified);
    EXPECT_EQ(chosenIn(window(), "CmbView"), "Prices");
}

TEST_F(ViewDesigner, aMarkStandsAtOneRow) {
    openSample(addPrices);
    edit([this](QWidget& dialog) {
        chooseSort(dialog, 0, "Primary,Ascending");
        EXPECT_EQ(rowsOf(dialog), "Title: Pri Ascending\nPrice: \n: \n");
        chooseSort(dialog, 1, "Secondary,Descending");
        chooseSort(dialog, 0, "none");
        EXPECT_EQ(rowsOf(dialog), "Title: \nPrice: Sec Descending\n: \n");
        clickCell(dialog, 2, kSortColumn); // a row without a field
        EXPECT_FALSE(child<QComboBox>(dialog, "CmbSort")->isVisible());
        clickOn(dialog, "cmdOK");
        clickOn(dialog, "cmdCancel");
    });
    EXPECT_EQ(stored(1).SortFields, (std::array<std::uint8_t, 3>{0, kPrice, 0}));
    EXPECT_EQ(stored(1).SortDirs, (std::array<std::uint8_t, 3>{0, 1, 0}));
    EXPECT_EQ(stored(1).Columns[0].Width, 60); // what the handheld set is lost by an edit here
}

TEST_F(ViewDesigner, theListsOpenOnWhatTheCellHolds) {
    openSample(addPrices);
    edit([](QWidget& dialog) {
        clickCell(dialog, 1, kFieldsColumn);
        EXPECT_EQ(chosenIn(dialog, "CmbFields"), "Price");
        QTest::keyClick(child<QComboBox>(dialog, "CmbFields")->view(), Qt::Key_Escape);
        EXPECT_FALSE(child<QComboBox>(dialog, "CmbFields")->isVisible());
        EXPECT_TRUE(gridOf(dialog).hasFocus());
        EXPECT_EQ(rowsOf(dialog), "Title: \nPrice: Pri Descending\n: \n");
        clickCell(dialog, 1, kSortColumn);
        EXPECT_EQ(chosenIn(dialog, "CmbSort"), "Primary,Descending");
        pickInCell(dialog, "CmbSort", "Primary,Descending");
        clickOn(dialog, "cmdCancel"); // nothing was changed: no question
    });
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(ViewDesigner, rowsAreAddedMovedAndRemovedByKeys) {
    openSample(addPrices);
    edit([](QWidget& dialog) {
        press(dialog, Qt::Key_Down, Qt::ControlModifier);
        EXPECT_EQ(rowsOf(dialog), "Price: Pri Descending\nTitle: \n: \n");
        EXPECT_EQ(gridOf(dialog).currentRow(), 1);
        press(dialog, Qt::Key_Up, Qt::ControlModifier);
        EXPECT_EQ(rowsOf(dialog), "Title: \nPrice: Pri Descending\n: \n");
        press(dialog, Qt::Key_Insert);
        EXPECT_EQ(gridOf(dialog).currentRow(), 2);
        pickInCell(dialog, "CmbFields", "Notes");
        EXPECT_EQ(rowsOf(dialog), "Title: \nPrice: Pri Descending\nNotes: \n: \n");
        press(dialog, Qt::Key_Up);
        press(dialog, Qt::Key_Up);
        press(dialog, Qt::Key_Delete);
        EXPECT_EQ(rowsOf(dialog), "Price: Pri Descending\nNotes: \n: \n");
        press(dialog, Qt::Key_Space);
        pickInCell(dialog, "CmbFields", "none");
        EXPECT_EQ(rowsOf(dialog), "Notes: \n: \n");
        press(dialog, Qt::Key_Right);
        press(dialog, Qt::Key_F2);
        pickInCell(dialog, "CmbSort", "Tertiary,Ascending");
        EXPECT_EQ(rowsOf(dialog), "Notes: Ter Ascending\n: \n");
        clickOn(dialog, "cmdOK");
        clickOn(dialog, "cmdCancel");
    });
    EXPECT_EQ(stored(1).NumCols, 1);
    EXPECT_EQ(stored(1).Columns[0].Field, kNotes);
    EXPECT_EQ(stored(1).SortFields[2], kNotes);
}

TEST_F(ViewDesigner, theButtonsDoWhatTheKeysDo) {
    openSample(addPrices);
    edit([this](QWidget& dialog) {
        clickOn(dialog, "cmdDown");
        EXPECT_EQ(rowsOf(dialog), "Price: Pri Descending\nTitle: \n: \n");
        clickOn(dialog, "cmdUp");
        EXPECT_EQ(rowsOf(dialog), "Title: \nPrice: Pri Descending\n: \n");
        clickOn(dialog, "CmdRemove");
        EXPECT_EQ(rowsOf(dialog), "Price: Pri Descending\n: \n");
        clickOn(dialog, "CmdAdd");
        pickInCell(dialog, "CmbFields", "All Fields");
        EXPECT_EQ(gridOf(dialog).rowCount(), 1 + 17 + 1); // each field once more, and the free row
        EXPECT_EQ(gridOf(dialog).item(1, kFieldsColumn)->text(), QStringLiteral("Title"));
        expectText("Delete all the columns in this view.\nAre you sure?", "No");
        clickOn(dialog, "cmdClear");
        EXPECT_EQ(gridOf(dialog).rowCount(), 19);
        expectText("Delete all the columns in this view.\nAre you sure?", "Yes");
        clickOn(dialog, "cmdClear");
        EXPECT_EQ(rowsOf(dialog), ": \n");
        expectText(kKeepQuestion, "No");
        clickOn(dialog, "cmdCancel");
    });
    EXPECT_EQ(stored(1).NumCols, 2);
}

TEST_F(ViewDesigner, scrollingTakesTheListAway) {
    openSample(addPrices);
    edit([this](QWidget& dialog) {
        chooseField(dialog, 2, "All Fields");
        chooseField(dialog, gridOf(dialog).rowCount() - 1, "All Fields");
        clickCell(dialog, gridOf(dialog).rowCount() - 1, kFieldsColumn);
        EXPECT_TRUE(child<QComboBox>(dialog, "CmbFields")->isVisible());
        gridOf(dialog).verticalScrollBar()->setValue(0);
        EXPECT_FALSE(child<QComboBox>(dialog, "CmbFields")->isVisible());
        expectText(kKeepQuestion, "No");
        clickOn(dialog, "cmdCancel");
    });
}

TEST_F(ViewDesigner, refusesNames) {
    openSample([](model::Document& sample) {
        addPrices(sample);
        sample.CurrDB20.Views[4] = sample.CurrDB20.Views[1];
        sample.CurrDB20.Views[4].Name = "Loans";
        sample.CurrDB20.NumViews = 5;
    });
    edit([this](QWidget& dialog) {
        const std::pair<QString, QString> cases[] = {
            {QStringLiteral("show ALL fields"), QStringLiteral("show ALL fields is not a vaild view name.")},
            {QStringLiteral("Edit Views..."), QStringLiteral("Edit Views... is not a vaild view name.")},
            {QStringLiteral("LOANS"), QStringLiteral("The name already exist in the list choose new name")},
            {QString(300, QLatin1Char('v')), QStringLiteral("A view's name may have at most 20 characters.")},
            {QStringLiteral("\u4E2D"), QStringLiteral("The character U+4E2D cannot be stored in a Tallybook.")},
        };
        for (const auto& [name, message] : cases) {
            typeInto(dialog, "TxtView", name);
            script.expectMessage(message);
            press(dialog, Qt::Key_Return);
            EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("TxtView"));
            EXPECT_EQ(textOf(dialog, "TxtView"), name.toStdString());
        }
        expectText(kKeepQuestion, "Cancel");
        clickOn(dialog, "cmdCancel");
        EXPECT_TRUE(dialog.isVisible());
        expectText(kKeepQuestion, "No");
        clickOn(dialog, "cmdCancel");
    });
    EXPECT_EQ(stored(1).Name, "Prices");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(ViewDesigner, aViewWithoutColumnsGoes) {
    openSample(addPrices);
    pick(window(), "CmbView", "Prices");
    edit([this](QWidget& dialog) {
        clickOn(dialog, "CmdRemove");
        clickOn(dialog, "CmdRemove");
        script.expect([](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("View Designer : No columns to show"));
            pressButton(box, QStringLiteral("No"));
        });
        clickOn(dialog, "cmdOK");
        EXPECT_EQ(stored(1).Name, "Prices");
        expectText(kNoColumns, "Yes");
        clickOn(dialog, "cmdOK");
        EXPECT_EQ(chosenIn(dialog, "CmbView"), "View1"); // a free slot again
        clickOn(dialog, "cmdCancel");
    });
    EXPECT_EQ(stored(1).Name, "");
    EXPECT_EQ(chosenIn(window(), "CmbView"), "Show All Fields");
    EXPECT_EQ(find<QComboBox>("CmbView")->count(), 2);
    EXPECT_TRUE(visible("grd"));
}

TEST_F(ViewDesigner, asksBeforeAnotherViewIsShown) {
    openSample(addPrices);
    edit([this](QWidget& dialog) {
        pick(dialog, "CmbView", "View2");
        EXPECT_EQ(rowsOf(dialog), ": \n");
        chooseField(dialog, 0, "Title");
        expectText(kKeepQuestion, "Cancel");
        pick(dialog, "CmbView", "View3");
        EXPECT_EQ(chosenIn(dialog, "CmbView"), "View2");
        expectText(kKeepQuestion, "Yes");
        pick(dialog, "CmbView", "View3"); // saving gives the views other places in the list
        EXPECT_EQ(chosenIn(dialog, "CmbView"), "View3");
        EXPECT_EQ(textOf(dialog, "TxtView"), "View3");
        pick(dialog, "CmbView", "Prices");
        EXPECT_EQ(rowsOf(dialog), "Title: \nPrice: Pri Descending\n: \n");
        clickOn(dialog, "cmdCancel");
    });
    EXPECT_EQ(stored(2).Name, "View2");
    EXPECT_EQ(stored(2).NumCols, 1);
    EXPECT_EQ(stored(3).Name, "");
}

TEST_F(ViewDesigner, takesNoMoreColumnsThanAFile) {
    openSample(addPrices);
    edit([this](QWidget& dialog) {
        for (int times = 0; times < 4; ++times)
            chooseField(dialog, gridOf(dialog).rowCount() - 1, "All Fields");
        EXPECT_EQ(gridOf(dialog).rowCount(), 2 + 4 * 17 + 1);
        expectText("A view can have at most 81 columns.");
        clickCell(dialog, gridOf(dialog).rowCount() - 1, kFieldsColumn);
        pickInCell(dialog, "CmbFields", "All Fields");
        EXPECT_EQ(gridOf(dialog).rowCount(), 71);
        clickOn(dialog, "cmdOK");
        clickOn(dialog, "cmdCancel");
    });
    EXPECT_EQ(stored(1).NumCols, 70);
}

TEST_F(ViewDesigner, needsAField) {
    show();
    trigger("mnuFileNew");
    expectText("No fields defined, Define fields and then edit the view");
    pick(window(), "CmbView", "Edit Views...");
}

TEST_F(ViewDesigner, aReadOnlyDatabaseIsRefused) {
    openSample([](model::Document& sample) { sample.CurrDB20.ReadOnly = 1; });
    expectText("Tallybook is readonly.");
    pick(window(), "CmbView", "Edit Views...");
    EXPECT_EQ(chosenIn(window(), "CmbView"), "Show All Fields");
}

TEST_F(ViewDesigner, itsControlsAreInOrder) {
    model::Document sample;
    makeSample(sample, regional);
    frmViewDesigner dialog(sample, services, nullptr);
    showAndActivate(dialog);
    child<QComboBox>(dialog, "CmbView")->setFocus();
    QStringList expected;
    for (const char* name : {"CmbView", "TxtView", "Grid", "CmdAdd", "CmdRemove", "cmdClear", "cmdUp", "cmdDown",
                             "CmbCols", "CmbFilter", "cmdOK", "cmdCancel"})
        expected += QString::fromLatin1(name);
    EXPECT_EQ(tabOrder(dialog), expected);
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("cmdOK"));
    expectNoAccessKeyTwice(dialog);
}

} // namespace
} // namespace tallybook::test
