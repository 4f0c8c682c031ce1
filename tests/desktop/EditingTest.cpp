// Each kind of editor, opened, typed into and left with real keys and clicks; read in the model and in the file.
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/document/frmDocument.h"
#include "desktop/platform/Text.h"
#include "support/Regions.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include <stdexcept>

namespace tallybook::test {
namespace {

using model::columnOfSlot;
using model::EditorKind;

class Editing : public WindowTest {
protected:
    std::string saved(int record, int slot) {
        trigger("mnuFileSave");
        return savedFile()->grd.text(record + model::kFirstDataRow, columnOfSlot(slot));
    }
    std::string editorText() { return desktop::fromQt(find<QLineEdit>("Text1")->text()); }
    QLineEdit* text1() { return find<QLineEdit>("Text1"); }
};

TEST_F(Editing, oneClickOpensTheCellWithItsTextSelected) {
    openSample();
    click(0, kTitle);
    EXPECT_EQ(doc().editor.kind, EditorKind::Text1);
    EXPECT_TRUE(text1()->hasFocus());
    EXPECT_EQ(text1()->selectedText(), QStringLiteral("Sea Charts"));
    EXPECT_TRUE(grid().cellRect(2, columnOfSlot(kTitle)).contains(text1()->geometry()));
}

TEST_F(Editing, aTypedTextReplacesTheCellAndReachesTheFile) {
    openSample();
    click(0, kTitle);
    type("Tide tables");
    key(Qt::Key_Return);
    EXPECT_FALSE(visible("Text1"));
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(text(0, kTitle), "Tide tables");
    EXPECT_TRUE(doc().DocModified);
    EXPECT_EQ(saved(0, kTitle), "Tide tables");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, aKeyOnTheGridBecomesTheWholeText) {
    openSample();
    go(1, kTitle);
    type("new");
    EXPECT_EQ(editorText(), "New"); // with the automatic capital
    EXPECT_EQ(text1()->cursorPosition(), 3);
    key(Qt::Key_Return);
    EXPECT_EQ(text(1, kTitle), "New");
}

TEST_F(Editing, theAutomaticCapitalCanBeTurnedOff) {
    openSample([](model::Document& sample) { sample.CurrDB20.Fields[kTitle].Decimals = 1; });
    go(1, kTitle);
    type("new");
    EXPECT_EQ(editorText(), "new");
}

TEST_F(Editing, enterOnTheGridBeginsAnEdit) {
    openSample();
    go(0, kTitle);
    key(Qt::Key_Return);
    EXPECT_EQ(text1()->selectedText(), QStringLiteral("Sea Charts"));
}

TEST_F(Editing, escapeGivesTheOldTextBackAndMarksNothing) {
    openSample();
    click(0, kTitle);
    type("Gone");
    key(Qt::Key_Escape);
    EXPECT_FALSE(visible("Text1"));
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(text(0, kTitle), "Sea Charts");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, aClickElsewhereCommits) {
    openSample();
    click(0, kTitle);
    type("Tide tables");
    click(1, kTitle);
    EXPECT_EQ(text(0, kTitle), "Tide tables");
    EXPECT_EQ(editorText(), "Garden Year");
}

TEST_F(Editing, aClickOnTheViewsCommits) {
    openSample();
    click(0, kTitle);
    type("Tide tables");
    QTest::mouseClick(find<QComboBox>("CmbView"), Qt::LeftButton);
    find<QComboBox>("CmbView")->hidePopup();
    EXPECT_EQ(text(0, kTitle), "Tide tables");
    EXPECT_FALSE(visible("Text1"));
}

TEST_F(Editing, tabCommitsAndMovesRight) {
    openSample();
    click(0, kTitle);
    type("Tide tables");
    key(Qt::Key_Tab);
    EXPECT_EQ(text(0, kTitle), "Tide tables");
    EXPECT_EQ(doc().grd.col(), columnOfSlot(kPages));
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_FALSE(doc().editor.open());
}

TEST_F(Editing, shiftTabCommitsAndMovesLeft) {
    openSample();
    click(0, kPages);
    type("7");
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(text(0, kPages), "7");
    EXPECT_EQ(doc().grd.col(), columnOfSlot(kTitle));
}

TEST_F(Editing, tabAtTheLastFieldGoesToTheNextRecord) {
    openSample([](model::Document& sample) {
        for (int slot = kPages; slot <= kJoin; ++slot)
            sample.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type = model::FieldType::NotUsed;
    });
    click(0, kTitle);
    key(Qt::Key_Tab);
    EXPECT_EQ(doc().grd.row(), 3);
    EXPECT_EQ(doc().grd.col(), 1);
}

TEST_F(Editing, downAndUpCommitAndChangeTheRecord) {
    openSample();
    click(0, kTitle);
    type("Low");
    key(Qt::Key_Down);
    EXPECT_EQ(text(0, kTitle), "Low");
    EXPECT_EQ(doc().grd.row(), 3);
    key(Qt::Key_Return);
    type("High");
    key(Qt::Key_Up);
    EXPECT_EQ(text(1, kTitle), "High");
    EXPECT_EQ(doc().grd.row(), 2);
    key(Qt::Key_Return);
    key(Qt::Key_Up);
    EXPECT_EQ(doc().grd.row(), 2); // not into the headers
}

TEST_F(Editing, aValueThatIsRefusedLeavesTheOldOne) {
    openSample();
    click(0, kPages);
    type("many");
    script.expectMessage(QStringLiteral("Only Integer value allowed"));
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kPages), "120");
    EXPECT_FALSE(visible("Text1"));
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, anIntegerOutOfRangeIsRefused) {
    openSample();
    click(0, kPages);
    type("32768");
    script.expectMessage(QStringLiteral("Integer value allowed -32768 to 32767"));
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kPages), "120");
}

TEST_F(Editing, anIntegerReachesTheFile) {
    openSample();
    click(0, kPages);
    type("-32768");
    key(Qt::Key_Return);
    EXPECT_EQ(saved(0, kPages), "-32768");
}

TEST_F(Editing, numbersAreAlignedAtTheRight) {
    openSample();
    click(0, kPages);
    EXPECT_TRUE(text1()->alignment().testFlag(Qt::AlignRight));
    click(0, kTitle);
    EXPECT_TRUE(text1()->alignment().testFlag(Qt::AlignLeft));
}

TEST_F(Editing, enterGivesAFloatItsDecimals) {
    openSample();
    click(0, kPrice);
    type("3.5");
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kPrice), "3.50");
    EXPECT_EQ(saved(0, kPrice), "3.50");
}

TEST_F(Editing, aTimeIsCompletedWhenTheCellIsLeft) {
    openSample();
    click(1, kAt);
    type("930");
    click(1, kTitle);
    EXPECT_EQ(text(1, kAt), "9:30");
    key(Qt::Key_Escape);
    EXPECT_EQ(saved(1, kAt), "9:30:00 AM");
}

TEST_F(Editing, enterKeepsATimeOpenThatDoesNotReadBack) {
    openSample();
    click(1, kAt);
    type("7pm");
    script.expectMessage(QStringLiteral("Please specify the valid Time Input (e.g. 10:10:10 AM)."));
    key(Qt::Key_Return);
    EXPECT_TRUE(visible("Text1"));
    EXPECT_EQ(text(1, kAt), "");
}

TEST_F(Editing, anEditStampsTheRecord) {
    openSample();
    click(1, kTitle);
    type("Stamped");
    key(Qt::Key_Return);
    EXPECT_EQ(text(1, kChanged), "3/5/2003");
}

struct StoppedClock : platform::Clock {
    bool stopped = false;
    platform::LocalTime now() const override {
        if (stopped)
            throw std::runtime_error("the clock has stopped");
        return {2003, 3, 5, 13, 5, 9};
    }
};

TEST_F(Editing, anUnexpectedErrorIsShownUnderItsOperation) {
    putSample();
    show();
    StoppedClock watch;
    platform::Services timeless{user, user, files, watch, regional, "/app"};
    desktop::frmMain frame(timeless, user, settings);
    frame.resize(1000, 600);
    frame.show();
    frame.openFile(kSamplePath); // which calculates by the clock
    watch.stopped = true;
    QApplication::setActiveWindow(&frame);
    desktop::GridView& cells = frame.documentWindow().grid();
    const auto clickOn = [&cells](int row) {
        QTest::mouseClick(cells.viewport(), Qt::LeftButton, {}, cells.cellRect(row, columnOfSlot(kTitle)).center());
    };
    clickOn(2);
    auto* editor = frame.findChild<QLineEdit*>(QStringLiteral("Text1"));
    QTest::keyClicks(editor, QStringLiteral("Late"));
    script.expect([](QWidget& dialog) {
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("LblProcName"))->text(),
                  QStringLiteral("Tallybook Form : Keyboard Action on Data Edit"));
        EXPECT_TRUE(dialog.findChild<QPlainTextEdit*>(QStringLiteral("Text1"))
                        ->toPlainText()
                        .endsWith(QStringLiteral("Description : the clock has stopped")));
        pressButton(dialog, QStringLiteral("Cancel"));
    });
    QTest::keyClick(editor, Qt::Key_Return); // the stamp of the record wants the time
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(frame.document()->grd.text(2, columnOfSlot(kTitle)), "Late");
    clickOn(3); // and the program goes on
    EXPECT_TRUE(editor->isVisible());
    cells.setFocus();
    QTest::keyClick(editor, Qt::Key_Escape);
    frame.document()->DocModified = false;
}

TEST_F(Editing, aClickFlipsACheckBoxAndMarksNothing) {
    openSample();
    click(1, kLent);
    EXPECT_EQ(doc().grd.picture(3, columnOfSlot(kLent)), model::Picture::CheckOn);
    EXPECT_EQ(text(1, kChanged), "3/5/2003");
    EXPECT_FALSE(doc().DocModified);
    trigger("mnuFileSave");
    EXPECT_EQ(savedFile()->grd.picture(3, columnOfSlot(kLent)), model::Picture::CheckOn);
}

TEST_F(Editing, theBlankKeyFlipsACheckBox) {
    openSample();
    go(0, kLent);
    key(Qt::Key_Space);
    EXPECT_EQ(doc().grd.picture(2, columnOfSlot(kLent)), model::Picture::CheckOff);
}

TEST_F(Editing, aListDropsDownWithNoneItemsAndTheEditor) {
    openSample();
    click(0, kShelf);
    auto* list = find<QComboBox>("cmb1");
    EXPECT_EQ(doc().editor.kind, EditorKind::cmb1);
    EXPECT_TRUE(list->view()->isVisible());
    QStringList entries;
    for (int i = 0; i < list->count(); ++i)
        entries += list->itemText(i);
    EXPECT_EQ(entries, QStringList({QStringLiteral("none"), QStringLiteral("Upper"), QStringLiteral("Middle"),
                                    QStringLiteral("Lower"), QStringLiteral("Edit Items...")}));
    EXPECT_EQ(list->currentText(), QStringLiteral("Middle"));
    EXPECT_EQ(list->maxVisibleItems(), 10);
}

TEST_F(Editing, anItemPickedWithTheMouseGoesToCellTableAndFile) {
    openSample();
    click(0, kShelf);
    auto* list = find<QComboBox>("cmb1");
    const QRect entry = list->view()->visualRect(list->model()->index(3, 0));
    QTest::mouseMove(list->view()->viewport(), entry.center());
    QTest::mouseClick(list->view()->viewport(), Qt::LeftButton, {}, entry.center(),
                      QApplication::doubleClickInterval());
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(text(0, kShelf), "Lower");
    EXPECT_EQ(doc().CellLongs.get(0, kShelf), 3);
    EXPECT_EQ(saved(0, kShelf), "Lower");
}

TEST_F(Editing, enterTakesTheListsEntry) {
    openSample();
    click(0, kShelf);
    auto* list = find<QComboBox>("cmb1");
    list->hidePopup();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_TRUE(list->isVisible());
    EXPECT_EQ(list->currentText(), QStringLiteral("Lower"));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(text(0, kShelf), "Lower");
    EXPECT_TRUE(grid().hasFocus());
}

TEST_F(Editing, upInTheListCommitsAndGoesUp) {
    openSample();
    click(1, kShelf);
    auto* list = find<QComboBox>("cmb1");
    list->hidePopup();
    QTest::keyClick(list, Qt::Key_Home); // "none"
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(text(1, kShelf), "");
    EXPECT_EQ(doc().CellLongs.get(1, kShelf), 0);
    EXPECT_EQ(doc().grd.row(), 2);
}

TEST_F(Editing, tabInTheListCommitsAndMovesRight) {
    openSample();
    click(1, kShelf);
    auto* list = find<QComboBox>("cmb1");
    QTest::keyClick(list->view(), Qt::Key_Tab);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(doc().grd.col(), columnOfSlot(kLent));
}

TEST_F(Editing, escapeInTheListDropsTheEdit) {
    openSample();
    click(1, kShelf);
    auto* list = find<QComboBox>("cmb1");
    QTest::keyClick(list->view(), Qt::Key_Up);
    QTest::keyClick(list->view(), Qt::Key_Escape);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(text(1, kShelf), "Middle");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, theListOpensUpwardAboveTheStatusBar) {
    openSample();
    for (int i = 0; i < 60; ++i)
        trigger("mnuRecordAdd");
    click(62, kShelf);
    auto* list = find<QComboBox>("cmb1");
    const int bar = find<QWidget>("sbStatusBar")->mapToGlobal(QPoint()).y();
    EXPECT_LE(list->view()->window()->geometry().bottom(), bar);
    EXPECT_LT(list->view()->window()->geometry().bottom(), list->mapToGlobal(QPoint(0, list->height())).y());
}

TEST_F(Editing, theCategoryHasUnfiledBehindItsItems) {
    openSample();
    click(1, kCategory);
    auto* list = find<QComboBox>("cmb1");
    EXPECT_EQ(list->itemText(list->count() - 2), QStringLiteral("Unfiled"));
    EXPECT_EQ(list->itemText(list->count() - 1), QStringLiteral("Edit Categories..."));
    list->hidePopup();
    QTest::keyClick(list, Qt::Key_U);
    EXPECT_EQ(list->currentText(), QStringLiteral("Unfiled"));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(text(1, kCategory), "Unfiled");
    EXPECT_EQ(doc().CellLongs.get(1, kCategory), 0);
}

TEST_F(Editing, aDateOpensOnItsDayAndIsWrittenShort) {
    openSample();
    click(0, kBought);
    auto* picker = find<QLineEdit>("DTPickerMS2");
    EXPECT_EQ(picker->text(), QStringLiteral("1/2/2003"));
    EXPECT_EQ(picker->selectedText(), QStringLiteral("1/2/2003"));
    type("2/29/04");
    key(Qt::Key_Return);
    EXPECT_FALSE(picker->isVisible());
    EXPECT_EQ(text(0, kBought), "2/29/2004");
    EXPECT_EQ(saved(0, kBought), "2/29/2004");
}

struct TypedDate {
    platform::Regional region;
    const char* typed;
    const char* shown; // in the cell and in the saved file
};

TEST_F(Editing, aTypedDateIsReadAsTheRegionWritesIt) {
    const TypedDate dates[] = {
        {us(), "12/24/2020", "12/24/2020"},     {us(), "1/2/20", "1/2/2020"},
        {us(), "1/2/30", "1/2/1930"},           {us(), "24/12/2020", "12/24/2020"},
        {us(), "dec 24 2020", "12/24/2020"},    {uk(), "24/12/2020", "24/12/2020"},
        {uk(), "1/2/20", "01/02/2020"},         {uk(), "5-6-2024", "05/06/2024"},
        {german(), "5.6.2024", "05.06.2024"},   {german(), "05.06.24", "05.06.2024"},
        {german(), "24.12.2020", "24.12.2020"}, {swedish(), "2020-12-24", "2020-12-24"},
    };
    for (const TypedDate& date : dates) {
        regional = date.region;
        for (const bool opened : {false, true}) {
            openSample();
            go(0, kBought);
            if (opened)
                key(Qt::Key_F2);
            type(date.typed);
            EXPECT_EQ(find<QLineEdit>("DTPickerMS2")->text(), QString::fromLatin1(date.typed));
            key(Qt::Key_Return);
            EXPECT_EQ(text(0, kBought), date.shown) << date.typed;
            EXPECT_EQ(saved(0, kBought), date.shown) << date.typed;
        }
    }
}

TEST_F(Editing, aTypedDateIsTakenHoweverItsCellIsLeft) {
    openSample();
    for (const auto& leave : std::vector<std::function<void()>>{
             [this] { key(Qt::Key_Return); }, [this] { key(Qt::Key_Tab); },
             [this] { key(Qt::Key_Backtab, Qt::ShiftModifier); }, [this] { clickAt(middleOf(1, kTitle)); },
             [this] { trigger("mnuFileSave"); }, [this] { trigger("mnuRecordAdd"); }}) {
        go(0, kBought);
        type("1/2/2003");
        key(Qt::Key_Return);
        go(0, kBought);
        type("12/24/20");
        leave();
        EXPECT_EQ(text(0, kBought), "12/24/2020");
        doc().editor = {};
        window().documentWindow().showDocument();
    }
}

TEST_F(Editing, whatNamesNoDayIsRefusedAndCanBeMended) {
    openSample();
    go(0, kBought);
    type("12/24/");
    script.expectMessage(QStringLiteral("Please specify a valid date (e.g. 12/31/2003)."));
    key(Qt::Key_Return);
    QApplication::setActiveWindow(&window()); // nobody else does where there is no window manager
    EXPECT_TRUE(visible("DTPickerMS2"));
    EXPECT_TRUE(find<QLineEdit>("DTPickerMS2")->hasFocus());
    EXPECT_EQ(find<QLineEdit>("DTPickerMS2")->text(), QStringLiteral("12/24/"));
    type("04");
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kBought), "12/24/2004");
}

TEST_F(Editing, aRefusedDateLeavesTheOldOne) {
    openSample();
    for (const char* typed : {"7 pm", "36526", "2/30/2003", "-", "x"}) {
        go(0, kBought);
        type(typed);
        script.expectMessage(QStringLiteral("Please specify a valid date (e.g. 12/31/2003)."));
        key(Qt::Key_Tab);
        QApplication::setActiveWindow(&window());
        EXPECT_EQ(text(0, kBought), "1/2/2003") << typed;
        EXPECT_FALSE(visible("DTPickerMS2"));
    }
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, aDateThatIsDeletedEmptiesItsCell) {
    openSample();
    click(0, kBought);
    key(Qt::Key_Backspace);
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kBought), "");
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(Editing, aPastedDateWithALineEndIsTaken) {
    openSample();
    click(0, kBought);
    QGuiApplication::clipboard()->setText(QStringLiteral("12/24/2020\n"));
    key(Qt::Key_V, Qt::ControlModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kBought), "12/24/2020");
}

TEST_F(Editing, anEmptyDateOpensOnToday) {
    openSample();
    click(1, kBought);
    EXPECT_EQ(find<QLineEdit>("DTPickerMS2")->text(), QStringLiteral("3/5/2003"));
    key(Qt::Key_Escape);
    EXPECT_EQ(text(1, kBought), "");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, theArrowsMoveADateByADay) {
    openSample();
    click(0, kBought);
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_Down);
    EXPECT_EQ(find<QLineEdit>("DTPickerMS2")->text(), QStringLiteral("1/3/2003"));
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kBought), "1/3/2003");
}

TEST_F(Editing, theCalendarOpensByItsKeysAndItsButton) {
    openSample();
    click(0, kBought);
    auto* picker = find<QLineEdit>("DTPickerMS2");
    const std::vector<std::function<void()>> ways = {
        [&] { QTest::keyClick(picker, Qt::Key_F4); },
        [&] { QTest::keyClick(picker, Qt::Key_Down, Qt::AltModifier); },
        [&] { QTest::mouseClick(find<QToolButton>("CmdCalendar"), Qt::LeftButton); },
    };
    for (const auto& open : ways) {
        open();
        auto* calendar = picker->findChild<QCalendarWidget*>();
        ASSERT_NE(calendar, nullptr);
        EXPECT_TRUE(calendar->isVisible());
        EXPECT_EQ(calendar->selectedDate(), QDate(2003, 1, 2));
        QWidget* days = QApplication::focusWidget();
        ASSERT_TRUE(days != nullptr && calendar->isAncestorOf(days));
        QTest::keyClick(days, Qt::Key_Escape);
        EXPECT_FALSE(calendar->isVisible());
        EXPECT_TRUE(picker->isVisible());
    }
    key(Qt::Key_Escape);
    EXPECT_EQ(text(0, kBought), "1/2/2003");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, aDayPickedInTheCalendarGoesIntoTheLine) {
    regional = german();
    openSample();
    go(0, kBought);
    type("24.12.20");
    auto* picker = find<QLineEdit>("DTPickerMS2");
    key(Qt::Key_F4);
    auto* calendar = picker->findChild<QCalendarWidget*>();
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(calendar->selectedDate(), QDate(2020, 12, 24)); // what was typed so far
    key(Qt::Key_Right);
    key(Qt::Key_Return);
    EXPECT_FALSE(calendar->isVisible());
    EXPECT_TRUE(picker->hasFocus());
    EXPECT_EQ(picker->text(), QStringLiteral("25.12.2020"));
    EXPECT_EQ(text(0, kBought), "01.02.2003"); // not before it is taken
    key(Qt::Key_Return);
    EXPECT_EQ(saved(0, kBought), "25.12.2020");
}

TEST_F(Editing, theCalendarOfATextThatIsNoDateOpensOnToday) {
    openSample();
    go(0, kBought);
    type("x");
    key(Qt::Key_F4);
    auto* calendar = find<QLineEdit>("DTPickerMS2")->findChild<QCalendarWidget*>();
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(calendar->selectedDate(), QDate(2003, 3, 5));
}

// A wheel over an editor is for the grid below it.
TEST_F(Editing, theWheelChangesNoOpenEditor) {
    openSample([](model::Document& sample) { sample.CurrDB20.Fields[kPages].IncDec = 1; });
    for (int i = 0; i < 60; ++i)
        trigger("mnuRecordAdd");
    key(Qt::Key_Escape);
    for (const int slot : {kTitle, kStock, kPrice, kShelf, kBought, kAt}) {
        const std::string before = text(0, slot);
        click(0, slot);
        ASSERT_TRUE(doc().editor.open()) << slot;
        QWidget* editor = QApplication::focusWidget();
        if (auto* list = find<QComboBox>("cmb1"); list->isVisible()) { // its open list has the focus
            list->hidePopup();
            editor = list;
        }
        const QPointF middle = QRectF(editor->rect()).center();
        QWheelEvent wheel(middle, editor->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        const int scrolled = grid().verticalScrollBar()->value();
        QApplication::sendEvent(editor, &wheel);
        EXPECT_GT(grid().verticalScrollBar()->value(), scrolled) << slot;
        if (doc().editor.open())
            key(Qt::Key_Return);
        EXPECT_EQ(text(0, slot), before) << slot;
        key(Qt::Key_Home, Qt::ControlModifier);
        doc().editor = {};
        window().documentWindow().showDocument();
    }
}

TEST_F(Editing, theRightButtonClearsADateWithoutAMark) {
    openSample();
    click(0, kBought);
    auto* picker = find<QLineEdit>("DTPickerMS2");
    script.expectMessage(QStringLiteral("Are you sure to clear the DATE VALUE for the selected Field?"));
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3), picker->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(picker, &event);
    EXPECT_EQ(text(0, kBought), "");
    EXPECT_FALSE(picker->isVisible());
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, theSpinBoxCountsWithKeysAndArrows) {
    openSample();
    click(0, kStock);
    auto* box = find<QLineEdit>("MebSpin");
    EXPECT_EQ(doc().editor.kind, EditorKind::MebSpin);
    EXPECT_EQ(box->selectedText(), QStringLiteral("3"));
    EXPECT_TRUE(visible("UpDown1"));
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    key(Qt::Key_Down);
    EXPECT_EQ(box->text(), QStringLiteral("4"));
    const auto arrows = find<QWidget>("UpDown1")->findChildren<QToolButton*>();
    ASSERT_EQ(arrows.size(), 2);
    QTest::mouseClick(arrows[1], Qt::LeftButton);
    QTest::mouseClick(arrows[1], Qt::LeftButton);
    EXPECT_EQ(box->text(), QStringLiteral("2"));
    key(Qt::Key_Return);
    EXPECT_FALSE(visible("UpDown1"));
    EXPECT_EQ(saved(0, kStock), "2");
}

TEST_F(Editing, theSpinBoxCutsAFraction) {
    openSample();
    click(0, kStock);
    type("12.9");
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kStock), "12");
}

TEST_F(Editing, theSpinBoxTurnsWhatIsNoNumberIntoZero) {
    openSample();
    click(0, kStock);
    type("x");
    script.expectMessage(QStringLiteral("Value not accepted for this field."));
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kStock), "0");
}

TEST_F(Editing, escapeLeavesTheSpinBox) {
    openSample();
    click(0, kStock);
    type("9");
    key(Qt::Key_Escape);
    EXPECT_FALSE(visible("MebSpin"));
    EXPECT_FALSE(visible("UpDown1"));
    EXPECT_EQ(text(0, kStock), "3");
}

TEST_F(Editing, aMemoOpensItsWindowAndTakesLines) {
    openSample();
    script.expect([](QWidget& memo) {
        EXPECT_EQ(memo.objectName(), QStringLiteral("frmMemoAw"));
        auto* text = memo.findChild<QPlainTextEdit*>(QStringLiteral("txtMemo"));
        EXPECT_EQ(text->toPlainText(), QStringLiteral("Bought at the harbour\nSecond hand"));
        EXPECT_FALSE(memo.findChild<QWidget*>(QStringLiteral("CmdAw"))->isVisible());
        text->selectAll();
        QTest::keyClicks(text, QStringLiteral("One"));
        QTest::keyClick(text, Qt::Key_Return);
        QTest::keyClicks(text, QStringLiteral("Two"));
        QTest::keyClick(text, Qt::Key_Return, Qt::ControlModifier);
    });
    click(0, kNotes);
    EXPECT_EQ(text(0, kNotes), "One\nTwo");
    EXPECT_EQ(saved(0, kNotes), "One\nTwo");
}

// Every character that a file can hold, the line feed and the no-break blank among them.
std::string allCharacters() {
    std::string text;
    for (int c = 1; c < 256; ++c)
        if (c != '\r') // the end of a line that only other systems write
            text += static_cast<char>(c);
    return text;
}

TEST_F(Editing, anyCharacterSurvivesAnEditThatChangesNothing) {
    openSample();
    for (const int slot : {kTitle, kNotes})
        doc().grd.setText(2, columnOfSlot(slot), allCharacters());
    for (const int slot : {kTitle, kNotes}) { // both hold line breaks, so both open the long editor
        script.expect([](QWidget& memo) { pressButton(memo, QStringLiteral("OK")); });
        click(0, slot);
        EXPECT_EQ(text(0, slot), allCharacters());
    }
    EXPECT_FALSE(doc().DocModified);
    script.expect([](QWidget& memo) {
        auto* box = memo.findChild<QPlainTextEdit*>(QStringLiteral("txtMemo"));
        QTest::keyClick(box, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(box, QStringLiteral("!"));
        QTest::keyClick(box, Qt::Key_Return, Qt::ControlModifier);
    });
    click(0, kNotes);
    EXPECT_EQ(text(0, kNotes), allCharacters() + '!');
}

TEST_F(Editing, aMemoThatIsOnlyLookedAtKeepsTheLineEndsOfOtherSystems) {
    openSample([](model::Document& sample) { sample.grd.setText(2, columnOfSlot(kNotes), "a\r\nb\rc"); });
    script.expect([](QWidget& memo) { pressButton(memo, QStringLiteral("OK")); });
    click(0, kNotes);
    EXPECT_EQ(text(0, kNotes), "a\r\nb\rc");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, cancelLeavesAMemoAsItWas) {
    openSample();
    script.expect([](QWidget& memo) {
        QTest::keyClicks(memo.focusWidget(), QStringLiteral("Gone"));
        pressButton(memo, QStringLiteral("Cancel"));
    });
    click(0, kNotes);
    EXPECT_EQ(text(0, kNotes), "Bought at the harbour\nSecond hand");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, aMemoThatIsTooLongWaitsForTheUser) {
    openSample();
    script.expect([](QWidget& memo) {
        auto* text = memo.findChild<QPlainTextEdit*>(QStringLiteral("txtMemo"));
        auto* ok = memo.findChild<QPushButton*>(QStringLiteral("OKButton"));
        pasteOver(text, QString(4097, QLatin1Char('a')));
        EXPECT_FALSE(ok->isEnabled());
        QTest::keyClick(text, Qt::Key_Backspace);
        EXPECT_TRUE(ok->isEnabled());
        pressButton(memo, QStringLiteral("OK"));
    });
    click(1, kNotes);
    EXPECT_EQ(text(1, kNotes).size(), 4096U);
}

TEST_F(Editing, f2OpensTheLongEditorOfAText) {
    openSample();
    go(0, kTitle);
    script.expect([](QWidget& memo) {
        auto* text = memo.findChild<QPlainTextEdit*>(QStringLiteral("txtMemo"));
        EXPECT_EQ(text->toPlainText(), QStringLiteral("Sea Charts"));
        QTest::keyClick(text, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(text, QStringLiteral("Longer"));
        pressButton(memo, QStringLiteral("OK"));
    });
    key(Qt::Key_F2);
    EXPECT_EQ(text(0, kTitle), "Longer");
}

TEST_F(Editing, f2InTheCellKeepsWhatWasTyped) {
    openSample();
    click(0, kTitle);
    type("Typed");
    script.expect([](QWidget& memo) {
        EXPECT_EQ(memo.findChild<QPlainTextEdit*>(QStringLiteral("txtMemo"))->toPlainText(), QStringLiteral("Typed"));
        pressButton(memo, QStringLiteral("Cancel"));
    });
    key(Qt::Key_F2);
    EXPECT_EQ(text(0, kTitle), "Typed");
    EXPECT_FALSE(visible("Text1"));
}

TEST_F(Editing, aTextWithLineBreaksKeepsThem) {
    openSample([](model::Document& sample) { sample.grd.setText(2, columnOfSlot(kTitle), "Two\nlines"); });
    const auto openings =
        std::vector<std::function<void()>>{[this] { click(0, kTitle); }, [this] { key(Qt::Key_Return); },
                                           [this] { type("x"); }, [this] { key(Qt::Key_F2); }};
    for (const auto& open : openings) {
        script.expect([](QWidget& memo) {
            auto* text = memo.findChild<QPlainTextEdit*>(QStringLiteral("txtMemo"));
            ASSERT_NE(text, nullptr);
            EXPECT_TRUE(text->isVisible());
            QTest::keyClick(text, Qt::Key_End, Qt::ControlModifier);
            QTest::keyClick(text, '!');
            QTest::keyClick(text, Qt::Key_Return, Qt::ControlModifier);
        });
        open();
        QApplication::setActiveWindow(&window());
        EXPECT_FALSE(visible("Text1"));
    }
    EXPECT_EQ(text(0, kTitle), "Two\nlines!!!!");
    EXPECT_EQ(saved(0, kTitle), "Two\nlines!!!!");
}

// A clipboard that no program owns has no contents at all, not even empty ones.
TEST_F(Editing, pastingFromNowhereChangesNothing) {
    openSample();
    QGuiApplication::clipboard()->clear();
    ASSERT_EQ(QGuiApplication::clipboard()->mimeData(), nullptr);
    const auto paste = [](QWidget& box) {
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_Insert, Qt::ShiftModifier);
    };
    script.expect([&](QWidget& memo) {
        auto* text = memo.findChild<QPlainTextEdit*>(QStringLiteral("txtMemo"));
        paste(*text);
        EXPECT_EQ(text->toPlainText(), QStringLiteral("Bought at the harbour\nSecond hand"));
        pressButton(memo, QStringLiteral("OK"));
    });
    click(0, kNotes);
    QApplication::setActiveWindow(&window());
    click(0, kTitle);
    paste(*text1());
    EXPECT_EQ(editorText(), "Sea Charts");
    trigger("mnuEditPaste");
    EXPECT_EQ(editorText(), "Sea Charts");
    key(Qt::Key_Escape);
    go(0, kTitle);
    trigger("mnuEditPaste");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Editing, aRadioButtonIsPickedInItsDialog) {
    openSample();
    script.expect([](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("dlgRadio"));
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("LblFld"))->text(), QStringLiteral("Cover:"));
        const auto options = dialog.findChildren<QRadioButton*>(QStringLiteral("Option1"));
        ASSERT_EQ(options.size(), 2);
        EXPECT_TRUE(options[0]->isChecked());
        EXPECT_TRUE(options[0]->hasFocus());
        QTest::keyClick(options[0], Qt::Key_Down);
        EXPECT_TRUE(options[1]->isChecked());
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    click(0, kCover);
    EXPECT_EQ(text(0, kCover), "Soft");
    EXPECT_EQ(doc().CellLongs.get(0, kCover), 2);
    EXPECT_EQ(saved(0, kCover), "Soft");
}

TEST_F(Editing, aRadioButtonWantsAnOption) {
    openSample([](model::Document& sample) {
        sample.grd.setText(2, columnOfSlot(kCover), "");
        sample.CellLongs.set(0, kCover, 0);
    });
    script.expect([this](QWidget& dialog) {
        script.expectMessage(QStringLiteral("It is compulsory to select an option. Select an option and click OK"));
        pressButton(dialog, QStringLiteral("OK"));
        EXPECT_TRUE(dialog.isVisible());
        pressButton(dialog, QStringLiteral("Cancel"));
    });
    click(0, kCover);
    EXPECT_EQ(text(0, kCover), "");
}

TEST_F(Editing, anAutoIncrementalTakesATypedValue) {
    openSample();
    click(0, kNumber);
    type("50");
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kNumber), "50");
    EXPECT_EQ(doc().CurrDB20.AutoIncNext.at(kNumber), 50);
}

struct Refusal {
    int slot;
    const char* message;
};
constexpr Refusal kRefusals[] = {
    {kKey, "To change the key values, change the field type to 'Long' and then change back to 'Key'."},
    {kValue, "To recalculate expressions, select the '!' button on the toolbar."},
};

TEST_F(Editing, fieldsThatCannotBeEditedSaySo) {
    openSample();
    for (const Refusal& refusal : kRefusals) {
        script.expectMessage(QString::fromLatin1(refusal.message));
        click(0, refusal.slot);
        EXPECT_FALSE(doc().editor.open()) << refusal.slot;
    }
}

TEST_F(Editing, aReadOnlyDatabaseOpensNoEditor) {
    openSample([](model::Document& sample) { sample.CurrDB20.ReadOnly = 1; });
    click(0, kTitle);
    EXPECT_FALSE(doc().editor.open());
    type("x");
    key(Qt::Key_F2);
    EXPECT_FALSE(doc().editor.open());
}

TEST_F(Editing, charactersOutsideTheCodePageShowTheirBestFitAtOnce) {
    openSample();
    click(0, kTitle);
    text1()->selectAll();
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("\u0141\u00F3d\u017A"));
    QApplication::sendEvent(text1(), &event);
    EXPECT_EQ(text1()->text(), QStringLiteral("L\u00F3dz"));
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kTitle), "L\xF3"
                               "dz");
}

TEST_F(Editing, aDeadKeyOnTheGridBeginsAnEdit) {
    openSample();
    go(0, kTitle);
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("\u00E9t"));
    QApplication::sendEvent(&grid(), &event);
    EXPECT_EQ(editorText(), "\xC9t"); // with the automatic capital
}

TEST_F(Editing, aTextTakesNoMoreThanItsCellHolds) {
    openSample();
    click(0, kTitle);
    EXPECT_EQ(text1()->maxLength(), 254);
}

} // namespace
} // namespace tallybook::test
