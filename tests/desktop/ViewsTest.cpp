// Views and filters: the two lists, the button beside them, the grid of a view.
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/document/frmDocument.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>

namespace tallybook::test {
namespace {

using model::columnOfSlot;

void makeFilter(model::Document& sample, std::size_t slot, const char* name, int field, char operation,
                const char* constant) {
    model::FilterDef& filter = sample.CurrDB20.Filters[slot];
    filter.Name = name;
    filter.CondFields[0] = static_cast<std::uint8_t>(field);
    filter.CondOps[0] = static_cast<std::uint8_t>(operation);
    filter.CondValues[0] = constant;
}

// The view "Prices" of title, loan and price, the dearest first; the filters "Thin" and "Cheap".
void addViews(model::Document& sample) {
    makeFilter(sample, 0, "Thin", kPages, '<', "200");
    makeFilter(sample, 2, "Cheap", kPrice, '<', "5");
    sample.CurrDB20.NumFilters = 3;
    model::ViewDef& view = sample.CurrDB20.Views[1];
    view.Name = "Prices";
    view.SortFields[0] = kPrice;
    view.SortDirs[0] = 1;
    view.NumCols = 3;
    view.Columns[0].Field = kTitle;
    view.Columns[1].Field = kLent;
    view.Columns[2].Field = kPrice;
    sample.CurrDB20.NumViews = 2;
    sample.CurrDB20.HdrByte2 = 0; // a free slot: all fields at first
}

class Views : public WindowTest {
protected:
    desktop::GridView& view() { return window().documentWindow().viewGrid(); }
    // Picks an entry with the mouse.
    void pick(const char* combo, const char* entry) {
        auto* box = find<QComboBox>(combo);
        const int index = box->findText(QString::fromLatin1(entry));
        ASSERT_GE(index, 0) << entry;
        QTest::mouseClick(box, Qt::LeftButton);
        QAbstractItemView* list = box->view();
        walkTo(list, index);
        QTest::keyClick(list, Qt::Key_Return);
        QApplication::setActiveWindow(&window());
    }
    std::string shown(const char* combo) { return find<QComboBox>(combo)->currentText().toStdString(); }
    std::string caption() { return find<QPushButton>("cmdEdit")->text().toStdString(); }
    std::string visibleTitles() {
        std::string titles;
        for (int i = 0; i < doc().grd.visibleRows(); ++i)
            titles += doc().grd.text(doc().grd.visibleRow(i), columnOfSlot(kTitle)) + "; ";
        return titles;
    }
    void clickInView(int record, int column) {
        QTest::mouseClick(view().viewport(), Qt::LeftButton, {},
                          view().cellRect(record + model::kFirstDataRow, column).center());
    }
};

TEST_F(Views, theListsHaveTheirEntries) {
    openSample(addViews);
    EXPECT_EQ(find<QComboBox>("CmbView")->count(), 3);
    EXPECT_EQ(shown("CmbView"), "Show All Fields");
    EXPECT_EQ(find<QComboBox>("CmbFilter")->count(), 5);
    EXPECT_EQ(shown("CmbFilter"), "No Filter");
    EXPECT_FALSE(find<QPushButton>("cmdEdit")->isEnabled());
    EXPECT_EQ(caption(), "&Edit");
    EXPECT_TRUE(visible("grd"));
    EXPECT_FALSE(visible("ViewGrd"));
}

TEST_F(Views, aFilterHidesTheOtherRecords) {
    openSample(addViews);
    go(2, kTitle);
    pick("CmbFilter", "Thin");
    EXPECT_EQ(visibleTitles(), "Sea Charts; Garden Year; ");
    EXPECT_EQ(shown("CmbFilter"), "Thin");
    EXPECT_NE(doc().grd.rowHeight(doc().grd.row()), 0); // the current record is one that can be seen
    EXPECT_EQ(find<QLabel>("lblRecord")->text(), QStringLiteral("Record 2 of 3, 2 shown"));
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(grid().cellRect(3, 1).top(), grid().cellRect(2, 1).bottom() + 1);
    pick("CmbFilter", "No Filter");
    EXPECT_EQ(visibleTitles(), "Sea Charts; Garden Year; Old Clocks; ");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Views, theArrowsGoThroughTheFilters) {
    openSample(addViews);
    find<QComboBox>("CmbFilter")->setFocus();
    key(Qt::Key_Down);
    EXPECT_EQ(shown("CmbFilter"), "Thin");
    key(Qt::Key_Down);
    EXPECT_EQ(shown("CmbFilter"), "Cheap");
    EXPECT_EQ(visibleTitles(), "Garden Year; ");
    EXPECT_TRUE(find<QComboBox>("CmbFilter")->hasFocus());
}

TEST_F(Views, aViewShowsItsColumnsSorted) {
    openSample(addViews);
    pick("CmbView", "Prices");
    EXPECT_TRUE(visible("ViewGrd"));
    EXPECT_FALSE(visible("grd"));
    EXPECT_TRUE(view().hasFocus());
    EXPECT_EQ(doc().ViewGrd.cols(), 4);
    EXPECT_EQ(doc().ViewGrd.text(0, 3), "Price");
    EXPECT_EQ(doc().ViewGrd.text(2, 1), "Old Clocks");
    EXPECT_EQ(doc().ViewGrd.text(4, 1), "Garden Year");
    EXPECT_EQ(view().geometry().columnWidth(1), grid().geometry().columnWidth(columnOfSlot(kTitle)));
    EXPECT_TRUE(find<QPushButton>("cmdEdit")->isEnabled());
    key(Qt::Key_End);
    EXPECT_EQ(doc().ViewGrd.col(), 3);
    key(Qt::Key_Tab);
    EXPECT_EQ(doc().ViewGrd.col(), 3);
    key(Qt::Key_Down);
    key(Qt::Key_Backtab);
    EXPECT_EQ(doc().ViewGrd.place(), (model::GridPlace{3, 2, 3, 2}));
    EXPECT_EQ(find<QLabel>("lblRecord")->text(), QStringLiteral("Record 2 of 3"));
    pick("CmbView", "Show All Fields");
    EXPECT_TRUE(visible("grd"));
    EXPECT_FALSE(find<QPushButton>("cmdEdit")->isEnabled());
}

TEST_F(Views, aRecordIsEditedAndTheViewMadeAnew) {
    openSample(addViews);
    pick("CmbView", "Prices");
    clickInView(1, 3); // the price of "Sea Charts"
    EXPECT_TRUE(visible("grd"));
    EXPECT_EQ(shown("CmbView"), "Show All Fields");
    EXPECT_EQ(caption(), "&Done");
    EXPECT_EQ(doc().grd.row(), 3);
    EXPECT_EQ(doc().grd.col(), columnOfSlot(kPrice));
    type("99");
    clickOn(window(), "cmdEdit");
    EXPECT_TRUE(visible("ViewGrd"));
    EXPECT_EQ(shown("CmbView"), "Prices");
    EXPECT_EQ(caption(), "&Edit");
    EXPECT_EQ(doc().ViewGrd.text(2, 1), "Sea Charts"); // the dearest now
    EXPECT_TRUE(view().hasFocus());
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(Views, theWheelOverTheListsChoosesNothing) {
    openSample(addViews);
    grid().setFocus();
    for (const char* combo : {"CmbView", "CmbFilter"}) {
        auto* box = find<QComboBox>(combo);
        const std::string before = shown(combo);
        const QPointF middle = QRectF(box->rect()).center();
        QWheelEvent wheel(middle, box->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(box, &wheel);
        EXPECT_EQ(shown(combo), before) << combo;
    }
}

TEST_F(Views, enterAndTheButtonOpenTheRecord) {
    openSample(addViews);
    for (const bool byKey : {true, false}) {
        pick("CmbView", "Prices");
        key(Qt::Key_Down);
        type("x"); // nothing can be typed into a view
        EXPECT_TRUE(visible("ViewGrd"));
        if (byKey)
            key(Qt::Key_Return);
        else
            clickOn(window(), "cmdEdit");
        EXPECT_EQ(caption(), "&Done");
        EXPECT_EQ(doc().grd.row(), 3);
        EXPECT_TRUE(grid().hasFocus());
    }
}

TEST_F(Views, aColumnOfAViewIsSelectedAndCopied) {
    openSample(addViews);
    go(2, kTitle);
    key(Qt::Key_Up, Qt::ShiftModifier); // a block that the view puts out of sight
    pick("CmbView", "Prices");
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    trigger("mnuEditCopy");
    trigger("mnuEditCut");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, view().cellRect(0, 1).center());
    EXPECT_TRUE(visible("ViewGrd"));
    trigger("mnuEditCopy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Old Clocks\nSea Charts\nGarden Year"));
    script.expectMessage(QStringLiteral("Cut and Paste is not supported for multiple cells"));
    trigger("mnuEditPaste");
    QApplication::setActiveWindow(&window());
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_Right, Qt::ShiftModifier);
    trigger("mnuEditCopy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Old Clocks\tN"));
}

// The button and the menu share their letter: the first press goes to the button, the next to the menu.
TEST_F(Views, altEReachesTheButtonAndTheMenu) {
    openSample(addViews);
    auto* menu = find<QMenu>("mnuEdit");
    key(Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(menu->isVisible()); // the button is disabled
    menu->close();
    pick("CmbView", "Prices");
    key(Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(find<QPushButton>("cmdEdit")->hasFocus());
    key(Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
    find<QPushButton>("cmdEdit")->setFocus();
    key(Qt::Key_Space);
    EXPECT_EQ(caption(), "&Done");
}

TEST_F(Views, severalFiltersApplyTogether) {
    openSample(addViews);
    script.expect([](QWidget& dialog) {
        auto* list = dialog.findChild<QListWidget*>(QStringLiteral("ListFilters"));
        ASSERT_EQ(list->count(), 2);
        EXPECT_EQ(list->item(1)->text(), QStringLiteral("03. Cheap"));
        QTest::keyClick(list, Qt::Key_Space);
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Space);
        QTest::keyClick(list, Qt::Key_Return);
    });
    pick("CmbFilter", "Multiple");
    EXPECT_EQ(visibleTitles(), "Garden Year; ");
    EXPECT_EQ(shown("CmbFilter"), "Multiple");
    EXPECT_EQ(doc().CurrDB20.DefaultFilterMask, 0b101);
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(Views, cancellingSeveralFiltersKeepsTheOneInForce) {
    openSample(addViews);
    pick("CmbFilter", "Thin");
    script.expect([](QWidget& dialog) { dialog.close(); });
    pick("CmbFilter", "Multiple");
    EXPECT_EQ(shown("CmbFilter"), "Thin");
    EXPECT_EQ(visibleTitles(), "Sea Charts; Garden Year; ");
}

TEST_F(Views, theSortButtonsRefuseInAView) {
    openSample(addViews);
    pick("CmbView", "Prices");
    script.expectMessage(QStringLiteral("Sort not available in the Views."));
    trigger("sorta");
    EXPECT_EQ(doc().ViewGrd.text(2, 1), "Old Clocks");
}

TEST_F(Views, aSearchMovesInTheView) {
    openSample(addViews);
    pick("CmbView", "Prices");
    script.expect([](QWidget&) {
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("garden"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(doc().ViewGrd.place(), (model::GridPlace{4, 1, 4, 1}));
    EXPECT_TRUE(visible("ViewGrd"));
}

TEST_F(Views, aColumnDraggedInAViewKeepsItsWidth) {
    openSample(addViews);
    pick("CmbView", "Prices");
    emit view().columnResized(1, 3000);
    EXPECT_EQ(doc().ViewGrd.columnWidth(1), 3000);
    EXPECT_EQ(doc().grd.columnWidth(columnOfSlot(kTitle)), 3000);
}

// The view has no column, so there is none to go to, to sort or to define.
TEST_F(Views, inAViewWithoutColumnsNothingMoves) {
    openSample([](model::Document& sample) {
        addViews(sample);
        sample.CurrDB20.Views[2].Name = "Bare";
        sample.CurrDB20.NumViews = 3;
    });
    go(1, kTitle);
    pick("CmbView", "Bare");
    EXPECT_TRUE(view().hasFocus());
    const model::GridPlace before = doc().ViewGrd.place();
    EXPECT_EQ(before.Col, 0);
    for (const int code : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Home, Qt::Key_End, Qt::Key_Down, Qt::Key_PageDown,
                           Qt::Key_Tab, Qt::Key_Backtab})
        for (const Qt::KeyboardModifiers with : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
            view().setFocus();
            key(code, with);
            EXPECT_EQ(doc().ViewGrd.place(), before) << code;
        }
    view().setFocus();
    for (const Qt::KeyboardModifiers with : {Qt::ShiftModifier, Qt::ControlModifier})
        key(Qt::Key_Space, with);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, QPoint(view().viewport()->width() / 2, 5));
    EXPECT_EQ(doc().ViewGrd.place(), before);
    for (const char* command : {"mnuViewFieldProp", "mnuEditCopy", "bestfit", "mnuFieldProps"})
        trigger(command);
    EXPECT_EQ(doc().ViewGrd.place(), before);
    EXPECT_TRUE(visible("ViewGrd"));
    EXPECT_EQ(view().accessibleDescription(),
              QStringLiteral("This view has no columns.  \"Edit Views...\" in the list of views gives it some."));
}

// The columns of a view go out of sight with the unused fields: what is left to move in is nothing.
TEST_F(Views, aViewOfHiddenColumnsIsOneWithoutColumns) {
    openSample([](model::Document& sample) {
        addViews(sample);
        model::ViewDef& unused = sample.CurrDB20.Views[2];
        unused.Name = "Unused";
        unused.NumCols = 2;
        unused.Columns[0].Field = 70;
        unused.Columns[1].Field = 71;
        sample.CurrDB20.NumViews = 3;
    });
    trigger("mnuViewNotUsedFields");
    pick("CmbView", "Unused");
    for (const int code : {Qt::Key_Right, Qt::Key_End, Qt::Key_Home, Qt::Key_Left, Qt::Key_Down, Qt::Key_End}) {
        key(code);
        EXPECT_LE(doc().ViewGrd.col(), 2);
        EXPECT_EQ(doc().ViewGrd.row(), 2);
    }
}

// The first half opens the record in the full grid; whatever lies there under the pointer is not meant by the second.
TEST_F(Views, aDoubleClickOpensTheRecordAndNothingMore) {
    openSample(addViews);
    pick("CmbView", "Prices");
    const QPoint inWindow = grid().viewport()->mapTo(&window(), QPoint());
    const QRect below = grid().cellRect(2, 1); // in the full grid, under the view
    const QRect first(view().cellRect(2, 1));
    ASSERT_TRUE(first.intersects(below));
    QTest::mouseDClick(window().windowHandle(), Qt::LeftButton, {}, inWindow + first.intersected(below).center());
    EXPECT_TRUE(visible("grd"));
    EXPECT_EQ(doc().grd.row(), 2);
    EXPECT_FALSE(doc().editor.open());
    // A pair of its own is a click, and another.
    QTest::mouseDClick(window().windowHandle(), Qt::LeftButton, {}, inWindow + middleOf(1, kPages));
    EXPECT_TRUE(doc().editor.open());
    EXPECT_EQ(doc().editor.row, 3);
}

TEST_F(Views, aDoubleClickFlipsNoCheckBoxOfTheFullGrid) {
    openSample([](model::Document& sample) {
        addViews(sample);
        sample.CurrDB20.Fields[kTitle].Type = model::FieldType::Checkbox;
        sample.grd.column(columnOfSlot(kTitle)).clear();
    });
    pick("CmbView", "Prices");
    const QPoint inWindow = grid().viewport()->mapTo(&window(), QPoint());
    const QRect box = grid().cellRect(2, columnOfSlot(kTitle));
    const model::Picture before = doc().grd.picture(2, columnOfSlot(kTitle));
    QTest::mouseDClick(window().windowHandle(), Qt::LeftButton, {}, inWindow + box.center());
    EXPECT_TRUE(visible("grd"));
    EXPECT_EQ(doc().grd.picture(2, columnOfSlot(kTitle)), before);
}

TEST_F(Views, aFilterThatHidesAllSaysSo) {
    openSample([](model::Document& sample) {
        addViews(sample);
        sample.CurrDB20.Filters[0].CondValues[0] = "1";
    });
    go(1, kTitle);
    pick("CmbFilter", "Thin");
    EXPECT_EQ(doc().grd.visibleRows(), 0);
    EXPECT_EQ(grid().accessibleDescription(), QStringLiteral("The filter hides all records."));
    for (const int code : {Qt::Key_Right, Qt::Key_Down, Qt::Key_End, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_Return})
        key(code);
    script.expectMessage(QStringLiteral("No records for deletion."));
    trigger("mnuRecordDelete");
    QApplication::setActiveWindow(&window());
    pick("CmbFilter", "No Filter");
    EXPECT_EQ(grid().accessibleDescription(), QString());
}

// A search may stop in a record that the filter hides. What is emptied has to be seen.
TEST_F(Views, delEmptiesNothingOutOfSight) {
    openSample(addViews);
    pick("CmbFilter", "Cheap"); // the second of three
    doc().grd.setCell(4, columnOfSlot(kTitle));
    key(Qt::Key_Delete);
    EXPECT_EQ(text(2, kTitle), "Old Clocks");
    EXPECT_EQ(text(1, kTitle), "Garden Year");
    EXPECT_EQ(doc().grd.row(), 4);
}

TEST_F(Views, deleteAsksAboutARecordThatCanBeSeen) {
    openSample(addViews);
    pick("CmbFilter", "Cheap"); // the second of three
    doc().grd.setCell(4, 2);    // as a search leaves it
    script.expect([this](QWidget& box) {
        EXPECT_EQ(doc().grd.row(), 3);
        EXPECT_EQ(find<QLabel>("lblRecord")->text(), QStringLiteral("Record 2 of 3, 1 shown"));
        pressButton(box, QStringLiteral("Yes"));
    });
    trigger("mnuRecordDelete");
    EXPECT_EQ(doc().NumDataRecs, 2);
    EXPECT_EQ(text(1, kTitle), "Old Clocks");
}

TEST_F(Views, theOpeningViewIsShownAtOnce) {
    openSample([](model::Document& sample) {
        addViews(sample);
        sample.CurrDB20.HdrByte2 = 1;
    });
    EXPECT_TRUE(visible("ViewGrd"));
    EXPECT_EQ(shown("CmbView"), "Prices");
    EXPECT_EQ(view().geometry().columnWidth(1), grid().geometry().columnWidth(columnOfSlot(kTitle)));
    EXPECT_TRUE(view().hasFocus());
}

} // namespace
} // namespace tallybook::test
