#include "desktop/WindowTest.h"
#include "desktop/document/frmDocument.h"
#include "desktop/grid/GridLook.h"
#include "desktop/platform/Twips.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>
#include <QWheelEvent>

namespace tallybook::test {
namespace {

using model::columnOfSlot;
using model::kFirstDataRow;

class Grid : public WindowTest {
protected:
    model::GridPlace place() { return doc().grd.place(); }
    int width(int column) { return grid().geometry().columnWidth(column); }
    QPoint edgeOf(int column) {
        const QRect header = grid().cellRect(0, column);
        return {header.right() + 1, header.center().y()};
    }
    // The whole pair, as the system delivers it.
    void doubleClickAt(QPoint point) {
        QTest::mouseDClick(window().windowHandle(), Qt::LeftButton, {}, grid().viewport()->mapTo(&window(), point));
    }
    void menuByKey() {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), grid().mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&grid(), &event);
    }
    void addRecords(int count) {
        for (int i = 0; i < count; ++i)
            trigger("mnuRecordAdd");
    }
};

TEST_F(Grid, startsOnTheFirstCell) {
    openSample();
    EXPECT_EQ(place(), (model::GridPlace{kFirstDataRow, 1, kFirstDataRow, 1}));
    EXPECT_TRUE(grid().hasFocus());
}

TEST_F(Grid, movesWithTheArrows) {
    openSample();
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    EXPECT_EQ(place(), (model::GridPlace{3, 2, 3, 2}));
    key(Qt::Key_Up);
    key(Qt::Key_Left);
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 2, 1}));
}

TEST_F(Grid, staysInsideAtItsEdges) {
    openSample();
    key(Qt::Key_Up);
    key(Qt::Key_Left);
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 2, 1}));
    key(Qt::Key_End, Qt::ControlModifier);
    const model::GridPlace last = place();
    EXPECT_EQ(last.Row, 4);
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_EQ(place(), last);
}

TEST_F(Grid, jumpsWithHomeAndEnd) {
    openSample();
    key(Qt::Key_Down);
    key(Qt::Key_End);
    EXPECT_EQ(place().Row, 3);
    EXPECT_GE(place().Col, columnOfSlot(kJoin));
    key(Qt::Key_Home);
    EXPECT_EQ(place(), (model::GridPlace{3, 1, 3, 1}));
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(place().Row, 2);
}

TEST_F(Grid, movesByPages) {
    openSample();
    addRecords(100);
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_PageDown);
    const int page = place().Row - kFirstDataRow;
    EXPECT_GT(page, 5);
    EXPECT_LT(page, 100);
    key(Qt::Key_PageUp);
    EXPECT_EQ(place().Row, kFirstDataRow);
}

TEST_F(Grid, keepsTheCurrentCellInSight) {
    openSample();
    addRecords(100);
    key(Qt::Key_End, Qt::ControlModifier);
    const QRect cell = grid().cellRect(place().Row, place().Col);
    EXPECT_TRUE(grid().viewport()->rect().contains(cell.center()));
    EXPECT_GE(cell.top(), grid().geometry().headerHeight());
}

TEST_F(Grid, tabMovesRightAndShiftTabLeft) {
    openSample();
    key(Qt::Key_Tab);
    EXPECT_EQ(place().Col, 2);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(place().Col, 1);
    EXPECT_TRUE(grid().hasFocus());
}

TEST_F(Grid, controlTabLeavesIt) {
    openSample();
    key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_FALSE(grid().hasFocus());
}

TEST_F(Grid, skipsHiddenColumnsAndRows) {
    openSample([](model::Document& sample) { sample.CurrDB20.Fields[kPages].Type = model::FieldType::NotUsed; });
    trigger("mnuViewNotUsedFields"); // hides the unused ones
    ASSERT_EQ(doc().grd.columnWidth(columnOfSlot(kPages)), 0);
    go(0, kTitle);
    key(Qt::Key_Right);
    EXPECT_EQ(place().Col, columnOfSlot(kStock));
    doc().grd.setRowHeight(3, 0);
    grid().refresh();
    key(Qt::Key_Down);
    EXPECT_EQ(place().Row, 4);
}

TEST_F(Grid, shiftAndArrowsSelectABlock) {
    openSample();
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 3, 2}));
}

TEST_F(Grid, aDragSelectsABlockAndOpensNoEditor) {
    openSample();
    const QPoint from = middleOf(0, kTitle);
    const QPoint to = middleOf(2, kPages);
    QTest::mousePress(grid().viewport(), Qt::LeftButton, {}, from);
    QMouseEvent drag(QEvent::MouseMove, to, grid().viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(grid().viewport(), &drag);
    QTest::mouseRelease(grid().viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(place(), (model::GridPlace{2, columnOfSlot(kTitle), 4, columnOfSlot(kPages)}));
    EXPECT_FALSE(doc().editor.open());
}

TEST_F(Grid, aClickOnTheCornerSelectsAll) {
    openSample();
    clickAt({3, 3});
    EXPECT_EQ(place().RowSel, doc().grd.rows() - 1);
    EXPECT_GE(std::max(place().Col, place().ColSel), columnOfSlot(kJoin));
}

TEST_F(Grid, aClickOnAHeaderSelectsTheColumn) {
    openSample();
    clickAt(grid().cellRect(0, columnOfSlot(kTitle)).center());
    EXPECT_EQ(place().Col, columnOfSlot(kTitle));
    EXPECT_EQ(place().ColSel, columnOfSlot(kTitle));
    EXPECT_EQ(std::max(place().Row, place().RowSel), doc().grd.rows() - 1);
}

TEST_F(Grid, aClickOnANumberSelectsTheRow) {
    openSample();
    clickAt({3, grid().cellRect(3, 1).center().y()});
    EXPECT_EQ(place().Row, 3);
    EXPECT_EQ(place().RowSel, 3);
    EXPECT_NE(place().Col, place().ColSel);
}

TEST_F(Grid, aClickBelowTheRecordsDoesNothing) {
    openSample();
    clickAt({200, grid().viewport()->height() - 3});
    EXPECT_FALSE(doc().editor.open());
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 2, 1}));
}

TEST_F(Grid, theRightButtonOnAHeaderSelectsAndPopsUpTheColumnsMenu) {
    openSample();
    script.expect([this](QWidget& menu) {
        EXPECT_EQ(menu.objectName(), QStringLiteral("mnuColumn"));
        EXPECT_EQ(place().Col, columnOfSlot(kTitle));
        EXPECT_EQ(std::max(place().Row, place().RowSel), doc().grd.rows() - 1);
        menu.close();
    });
    clickAt(grid().cellRect(0, columnOfSlot(kTitle)).center(), Qt::RightButton);
    EXPECT_EQ(place(), (model::GridPlace{2, columnOfSlot(kTitle), 2, columnOfSlot(kTitle)}));
}

TEST_F(Grid, theRightButtonOnANumberDeletesThroughItsMenu) {
    openSample();
    script.expectMenu(QStringLiteral("mnuRow"), QStringLiteral("mnuRowDeleteRec"));
    script.expectMessage(QStringLiteral("Delete current record.  Are you sure?"), QStringLiteral("Yes"));
    clickAt({3, grid().cellRect(3, 1).center().y()}, Qt::RightButton);
    EXPECT_EQ(doc().NumDataRecs, 2);
    EXPECT_EQ(text(1, kTitle), "Old Clocks");
    EXPECT_EQ(place(), (model::GridPlace{3, 1, 3, 1}));
}

TEST_F(Grid, theRightButtonOnACellDoesNothing) {
    openSample();
    click(1, kTitle, Qt::RightButton);
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 2, 1}));
}

TEST_F(Grid, draggingAHeadersEdgeResizesTheColumn) {
    openSample();
    const int column = columnOfSlot(kTitle);
    const int before = width(column);
    const QPoint edge = edgeOf(column);
    QTest::mousePress(grid().viewport(), Qt::LeftButton, {}, edge);
    const QPoint to = edge + QPoint(45, 0);
    QMouseEvent drag(QEvent::MouseMove, to, grid().viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(grid().viewport(), &drag);
    QTest::mouseRelease(grid().viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(width(column), before + 45);
    EXPECT_NEAR(doc().grd.columnWidth(column), desktop::twipsOf(before + 45, grid().logicalDpiX()), 15);
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 2, 1})); // no column was selected
}

TEST_F(Grid, aColumnCannotBeDraggedOutOfSight) {
    openSample();
    const int column = columnOfSlot(kTitle);
    QTest::mousePress(grid().viewport(), Qt::LeftButton, {}, edgeOf(column));
    const QPoint to(0, 5);
    QMouseEvent drag(QEvent::MouseMove, to, grid().viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(grid().viewport(), &drag);
    QTest::mouseRelease(grid().viewport(), Qt::LeftButton, {}, to);
    EXPECT_GT(doc().grd.columnWidth(column), 0);
}

TEST_F(Grid, aDoubleClickOnAnEdgeFitsThatColumn) {
    openSample();
    const int column = columnOfSlot(kTitle);
    const int fitting = width(column);
    const int other = width(columnOfSlot(kNotes));
    doc().grd.setColumnWidth(column, 3000);
    doc().grd.setColumnWidth(columnOfSlot(kNotes), 1500);
    grid().refresh();
    doubleClickAt(edgeOf(column));
    EXPECT_EQ(width(column), fitting);
    EXPECT_NE(width(columnOfSlot(kNotes)), other);
}

TEST_F(Grid, theCursorShowsWhereAnEdgeCanBeTaken) {
    openSample();
    QTest::mouseMove(grid().viewport(), edgeOf(1));
    EXPECT_EQ(grid().viewport()->cursor().shape(), Qt::SplitHCursor);
    QTest::mouseMove(grid().viewport(), middleOf(1, kTitle));
    EXPECT_NE(grid().viewport()->cursor().shape(), Qt::SplitHCursor);
}

TEST_F(Grid, bestFitMakesRoomForTheWidestText) {
    openSample();
    const double needed = grid().gridFont().width("Garden Year");
    EXPECT_GE(width(columnOfSlot(kTitle)), needed + 8);
    EXPECT_LE(width(columnOfSlot(kTitle)), needed + 12);
}

TEST_F(Grid, scrollingCommitsTheOpenEditAndHidesTheMarker) {
    openSample();
    addRecords(100);
    click(50, kTitle);
    ASSERT_TRUE(visible("Text1"));
    EXPECT_TRUE(visible("cursor"));
    type("Scrolled");
    grid().verticalScrollBar()->setValue(0);
    EXPECT_FALSE(visible("Text1"));
    EXPECT_FALSE(visible("cursor"));
    EXPECT_EQ(text(50, kTitle), "Scrolled");
}

// The edit ends and the grid stays where the user has scrolled it to, with the first step.
TEST_F(Grid, theFirstScrollAwayFromAnEditorStays) {
    openSample();
    addRecords(100);
    for (const bool changed : {false, true}) {
        click(50, kTitle);
        if (changed)
            type("Scrolled");
        ASSERT_TRUE(visible("Text1"));
        QWheelEvent wheel(QPointF(100, 100), grid().viewport()->mapToGlobal(QPointF(100, 100)), {}, QPoint(0, 3600),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        const int before = grid().verticalScrollBar()->value();
        QApplication::sendEvent(grid().viewport(), &wheel);
        EXPECT_FALSE(visible("Text1"));
        EXPECT_LE(grid().verticalScrollBar()->value(), before - 5 * grid().geometry().rowHeight());
    }
    EXPECT_EQ(text(50, kTitle), "Scrolled");
}

TEST_F(Grid, theWheelScrollsByRows) {
    openSample();
    addRecords(100);
    grid().verticalScrollBar()->setValue(0);
    QWheelEvent wheel(QPointF(100, 100), grid().viewport()->mapToGlobal(QPointF(100, 100)), {}, QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(grid().viewport(), &wheel);
    EXPECT_GT(grid().verticalScrollBar()->value(), 0);
    EXPECT_EQ(grid().verticalScrollBar()->value() % grid().geometry().rowHeight(), 0);
}

TEST_F(Grid, anEmptyDatabaseTakesNoClickAndNoKey) {
    show();
    trigger("mnuFileNew");
    EXPECT_EQ(doc().grd.visibleRows(), 0);
    clickAt({100, 100});
    type("x");
    EXPECT_FALSE(doc().editor.open());
    EXPECT_FALSE(doc().DocModified);
    trigger("mnuRecordAdd");
    EXPECT_EQ(doc().grd.rows(), 3);
    go(0, kCategory);
    key(Qt::Key_Return);
    EXPECT_TRUE(doc().editor.open());
}

TEST_F(Grid, inANewDatabaseKeysAndClicksMoveTheCurrentColumn) {
    show();
    trigger("mnuFileNew");
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 2, 1}));
    key(Qt::Key_Right);
    EXPECT_EQ(place(), (model::GridPlace{2, 2, 2, 2}));
    key(Qt::Key_Tab);
    EXPECT_EQ(place().Col, 3);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(place().Col, 2);
    key(Qt::Key_End);
    EXPECT_EQ(place(), (model::GridPlace{2, 81, 2, 81}));
    EXPECT_LE(grid().cellRect(0, 81).right(), grid().viewport()->width()); // and it is in sight
    key(Qt::Key_Home);
    EXPECT_EQ(place().Col, 1);
    for (const int code : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Left})
        key(code);
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 2, 1}));
    clickAt(grid().cellRect(0, columnOfSlot(4)).center());
    EXPECT_EQ(place(), (model::GridPlace{2, 5, 2, 5}));
    script.expect([](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("frmFieldProp"));
        EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("txtFieldName"))->text(), QStringLiteral("Fld04"));
        dialog.close();
    });
    key(Qt::Key_Return, Qt::AltModifier);
    QApplication::setActiveWindow(&window());
    key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_FALSE(grid().hasFocus());
}

TEST_F(Grid, theHeaderOfTheCurrentColumnStandsOut) {
    show();
    trigger("mnuFileNew");
    key(Qt::Key_Right);
    const QImage picture = grid().viewport()->grab().toImage();
    const auto ground = [&](int column) {
        const QRect header = grid().cellRect(0, column);
        return picture.pixelColor(QPoint(header.left() + 2, header.top() + 2) * picture.devicePixelRatio());
    };
    EXPECT_NE(ground(2), ground(1));
    EXPECT_EQ(ground(3), ground(1));
}

TEST_F(Grid, anEmptyGridSaysWhatToDoFirst) {
    show();
    trigger("mnuFileNew");
    EXPECT_EQ(grid().accessibleDescription(),
              QStringLiteral("Go to a column with the arrow keys or a click on its name, and make it a field with "
                             "Alt+Enter.  Ins adds a record."));
    openSample();
    EXPECT_EQ(grid().accessibleDescription(), QString());
    script.expectMessage(QStringLiteral("WARNING: Delete all records in this Tallybook. Are you sure?"),
                         QStringLiteral("Yes"));
    trigger("mnuRecordDeleteAll");
    EXPECT_EQ(grid().accessibleDescription(), QStringLiteral("There are no records.  Ins adds one."));
    const QImage hint = grid().viewport()->grab().toImage();
    doc().CurrDB20.ReadOnly = 1;
    window().documentWindow().showDocument();
    EXPECT_EQ(grid().accessibleDescription(), QStringLiteral("There are no records."));
    EXPECT_NE(grid().viewport()->grab().toImage(), hint); // it is what is painted
}

TEST_F(Grid, controlASelectsAllAndSpaceSelectsTheRowOrColumn) {
    openSample();
    go(1, kPages);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 4, 81}));
    trigger("mnuEditCopy");
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\t')), 3 * 80);
    go(1, kPages);
    key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(place(), (model::GridPlace{3, 1, 3, 81}));
    go(1, kPages);
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(place(), (model::GridPlace{2, columnOfSlot(kPages), 4, columnOfSlot(kPages)}));
}

TEST_F(Grid, inAnEditorControlASelectsTheText) {
    openSample();
    click(0, kTitle);
    key(Qt::Key_End);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(find<QLineEdit>("Text1")->selectedText(), QStringLiteral("Sea Charts"));
    EXPECT_EQ(place(), (model::GridPlace{2, 2, 2, 2}));
}

TEST_F(Grid, delEmptiesTheCellAndControlDelAsksToDeleteTheRecord) {
    openSample();
    go(1, kTitle);
    key(Qt::Key_Delete);
    EXPECT_EQ(text(1, kTitle), "");
    EXPECT_TRUE(doc().DocModified);
    EXPECT_TRUE(window().isWindowModified());
    EXPECT_EQ(doc().NumDataRecs, 3);
    script.expectMessage(QStringLiteral("Delete current record.  Are you sure?"), QStringLiteral("Yes"));
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(doc().NumDataRecs, 2);
    QApplication::setActiveWindow(&window());
    go(0, kTitle);
    key(Qt::Key_Space, Qt::ShiftModifier);
    script.expectMessage(QStringLiteral("Delete current record.  Are you sure?"), QStringLiteral("No"));
    key(Qt::Key_Delete);
    EXPECT_EQ(doc().NumDataRecs, 2);
}

TEST_F(Grid, delInAnEditorIsTheEditorsOwn) {
    openSample();
    click(0, kTitle);
    key(Qt::Key_Home);
    key(Qt::Key_Delete);
    EXPECT_EQ(find<QLineEdit>("Text1")->text(), QStringLiteral("ea Charts"));
    key(Qt::Key_Delete, Qt::ControlModifier); // to the end of the word
    EXPECT_NE(find<QLineEdit>("Text1")->text(), QStringLiteral("ea Charts"));
    EXPECT_EQ(doc().NumDataRecs, 3);
}

TEST_F(Grid, theKeyboardReachesTheColumnsMenu) {
    openSample();
    go(2, kPages);
    script.expectMenu(QStringLiteral("mnuColumn"), QStringLiteral("mnuColumnSortd"));
    menuByKey();
    EXPECT_EQ(text(0, kTitle), "Old Clocks"); // 310 pages
    EXPECT_EQ(place(), (model::GridPlace{4, columnOfSlot(kPages), 4, columnOfSlot(kPages)}));
    QApplication::setActiveWindow(&window());
    key(Qt::Key_Space, Qt::ShiftModifier);
    script.expectMenu(QStringLiteral("mnuRow"), QStringLiteral("mnuRowCancel"));
    menuByKey();
}

TEST_F(Grid, theKeyboardSortsAndFits) {
    openSample();
    go(0, kPages);
    key(Qt::Key_F7);
    EXPECT_EQ(text(0, kTitle), "Garden Year"); // 96 pages
    key(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_EQ(text(0, kTitle), "Old Clocks");
    const int column = columnOfSlot(kTitle);
    const int fitting = width(column);
    doc().grd.setColumnWidth(column, 5000);
    grid().refresh();
    key(Qt::Key_F8);
    EXPECT_EQ(width(column), fitting);
}

// A message that comes while an edge is taken hold of swallows the button's release.
TEST_F(Grid, anEdgeIsLetGoOfWhenTheButtonIsUp) {
    openSample();
    click(0, kPages);
    type("x");
    script.expect([](QWidget& box) { pressButton(box, QStringLiteral("OK")); });
    QTest::mousePress(grid().viewport(), Qt::LeftButton, {}, edgeOf(columnOfSlot(kTitle)));
    const int before = width(columnOfSlot(kTitle));
    const QPoint to = edgeOf(columnOfSlot(kTitle)) + QPoint(60, 0);
    QMouseEvent move(QEvent::MouseMove, to, grid().viewport()->mapToGlobal(to), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(grid().viewport(), &move);
    EXPECT_EQ(width(columnOfSlot(kTitle)), before);
    QTest::mouseRelease(grid().viewport(), Qt::LeftButton, {}, to);
}

TEST_F(Grid, cutCellsAndHeadersHaveAToolTip) {
    openSample([](model::Document& sample) {
        sample.grd.setText(2, columnOfSlot(kTitle), "<b>Sea</b> Charts & more");
        sample.grd.setText(3, columnOfSlot(kTitle), std::string(400, 'x'));
    });
    doc().grd.setColumnWidth(columnOfSlot(kTitle), 700);
    grid().refresh();
    // All of the text, and nothing of it taken for markup.
    const auto shown = [](const QString& tip) {
        QTextDocument text;
        text.setHtml(tip);
        return text.toPlainText();
    };
    EXPECT_EQ(shown(grid().toolTipAt(middleOf(0, kTitle))), QStringLiteral("<b>Sea</b> Charts & more"));
    EXPECT_EQ(shown(grid().toolTipAt(middleOf(1, kTitle))), QString(254, QLatin1Char('x')));
    EXPECT_EQ(grid().toolTipAt(middleOf(0, kPages)), QString());
    const QPoint header = grid().cellRect(0, columnOfSlot(kTitle)).center();
    EXPECT_EQ(grid().toolTipAt(header), QString()); // "Title" fits
    doc().grd.setColumnWidth(columnOfSlot(kTitle), 250);
    grid().refresh();
    EXPECT_EQ(shown(grid().toolTipAt(grid().cellRect(0, columnOfSlot(kTitle)).center())), QStringLiteral("Title"));
    QHelpEvent event(QEvent::ToolTip, middleOf(0, kTitle), grid().viewport()->mapToGlobal(middleOf(0, kTitle)));
    QApplication::sendEvent(grid().viewport(), &event);
    EXPECT_TRUE(QToolTip::isVisible());
    QToolTip::hideText();
}

TEST_F(Grid, aFlippedBoxHasTheMarkerBesideIt) {
    openSample();
    EXPECT_FALSE(visible("cursor"));
    click(1, kLent);
    EXPECT_TRUE(visible("cursor"));
    const auto* marker = find<QWidget>("cursor");
    EXPECT_EQ(marker->geometry().center().y(), grid().cellRect(3, 1).center().y());
}

TEST_F(Grid, aResizedWindowLosesTheEditAndThePlace) {
    openSample();
    click(1, kTitle);
    type("Lost");
    window().resize(900, 500);
    QCoreApplication::processEvents();
    EXPECT_FALSE(visible("Text1"));
    EXPECT_EQ(place(), (model::GridPlace{2, 1, 2, 1}));
    EXPECT_EQ(text(1, kTitle), "Garden Year");
}

TEST_F(Grid, hidesTheTypesRowByTheViewMenu) {
    openSample();
    const int with = grid().geometry().headerHeight();
    trigger("mnuViewFieldTypes");
    EXPECT_LT(grid().geometry().headerHeight(), with);
}

// Green and yellow on white cannot be read as they are.
TEST(GridColours, stayReadable) {
    for (const QColor& ground : {QColor(Qt::white), QColor(30, 30, 34)})
        for (const std::uint32_t number : {255U, 65280U, 16711680U, 65535U, 16777215U, 1U})
            EXPECT_GE(desktop::contrast(desktop::readableColour(number, Qt::gray, ground), ground), 3.0)
                << number << " on " << ground.name().toStdString();
}

// What a text is drawn on while its cell is selected is a colour itself.
TEST(GridColours, areAsReadableOnTheSelectionAsTextsAre) {
    for (const QColor& selected :
         {QColor(48, 140, 198), QColor(47, 130, 208), QColor(20, 60, 120), QColor(255, 170, 0)})
        for (const std::uint32_t number : {255U, 65280U, 16711680U, 65535U})
            EXPECT_GE(desktop::contrast(desktop::selectedColour(number, Qt::white, selected), selected), 4.5)
                << number << " on " << selected.name().toStdString();
}

TEST(GridColours, theCurrentCellsFrameStandsOutInEveryTheme) {
    QWidget widget;
    for (const QColor& ground : {QColor(Qt::white), QColor(30, 31, 34), QColor(90, 90, 90)})
        for (const QColor& highlight : {QColor(48, 140, 198), QColor(20, 40, 80), QColor(200, 220, 255)}) {
            QPalette palette = widget.palette();
            palette.setColor(QPalette::Base, ground);
            palette.setColor(QPalette::Highlight, highlight);
            widget.setPalette(palette);
            EXPECT_GE(desktop::contrast(desktop::lookOf(widget).frame, ground), 3.0)
                << highlight.name().toStdString() << " on " << ground.name().toStdString();
        }
}

TEST(GridColours, zeroIsTheThemesTextColour) {
    EXPECT_EQ(desktop::readableColour(0, QColor(Qt::cyan), Qt::black), QColor(Qt::cyan));
}

TEST(GridColours, aReadableColourIsLeftAlone) {
    EXPECT_EQ(desktop::readableColour(16711680, Qt::black, Qt::white), QColor(0, 0, 255));
    EXPECT_EQ(desktop::readableColour(65535, Qt::white, Qt::black), QColor(255, 255, 0));
}

} // namespace
} // namespace tallybook::test
