// Joins in the grid: the picker of the other database's records, driven with keys and mouse over two files that lie
// beside each other, and the key that is typed where a join shows no field.
#include "desktop/FieldPropTest.h"
#include "desktop/dialogs/frmExtView.h"

#include <QAccessible>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLabel>
#include <QMessageBox>
#include <QTreeView>

namespace tallybook::test {
namespace {

void typeInto(QWidget& window, const char* text) {
    for (const char* c = text; *c != 0; ++c)
        QTest::keyClick(window.focusWidget(), *c);
}

QTreeView& list(const QWidget& window) {
    return *child<QTreeView>(window, "lstRecords");
}

QString typed(const QWidget& window) {
    return child<QLineEdit>(window, "txtFind")->text();
}

QString count(const QWidget& window) {
    return child<QLabel>(window, "lblCount")->text();
}

bool canBeAccepted(const QWidget& window) {
    return child<QPushButton>(window, "cmdOK")->isEnabled();
}

// The texts of a column from the top.
QStringList column(const QWidget& window, int column) {
    const QAbstractItemModel& records = *list(window).model();
    QStringList texts;
    for (int row = 0; row < records.rowCount(); ++row)
        texts += records.index(row, column).data().toString();
    return texts;
}

// The cities of the selected records.
QStringList selected(const QWidget& window) {
    QStringList texts;
    for (const QModelIndex& row : list(window).selectionModel()->selectedRows())
        texts += row.data().toString();
    return texts;
}

QStringList words(const char* spaced) {
    return QString::fromLatin1(spaced).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

class Picking : public FieldPropTest {
protected:
    // A join whose key is typed.
    static void joinByKey(model::Document& sample) {
        joinPublishers(sample);
        sample.CurrDB20.Externals[kJoin].MatchField = 0;
    }

    std::string storedKey(int record) {
        std::string scratch;
        return std::string(doc().CellVals.get(record, kJoin, scratch));
    }
    // What the record shows: house, town, and the key behind them.
    std::string joined(int record) {
        return text(record, kJoin) + '/' + text(record, kTown) + '/' + storedKey(record);
    }
    // Opens the picker by a click on the record's cell and does there what the step says.
    void pick(int record, const ModalScript::Step& step) {
        script.expect(step);
        click(record, kJoin);
    }
};

TEST_F(Picking, aClickOnAJoinOpensThePickerOnTheRecordOfTheCell) {
    openSample(joinPublishers);
    EXPECT_EQ(joined(0), "Old Mill/Ludlow/20");
    EXPECT_EQ(joined(1), "//");
    pick(0, [](QWidget& window) {
        EXPECT_EQ(window.objectName(), QStringLiteral("frmExtView"));
        EXPECT_EQ(child<QLabel>(window, "lblField")->text(), QStringLiteral("Publisher:"));
        EXPECT_EQ(column(window, 0), words("Whitby Ludlow York"));
        EXPECT_EQ(column(window, 2), words("10 20 30"));
        EXPECT_EQ(column(window, 3).first(), QStringLiteral("Charts\u21B5and tide tables"));
        EXPECT_EQ(list(window).model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("House"));
        EXPECT_EQ(selected(window), words("Ludlow"));
        EXPECT_EQ(count(window), QStringLiteral("3 records"));
        EXPECT_TRUE(child<QLineEdit>(window, "txtFind")->hasFocus());
        press(window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(joined(0), "Old Mill/Ludlow/20");
    EXPECT_FALSE(doc().DocModified);
    EXPECT_EQ(window().focusWidget(), &grid());
}

// The widths of the view in the units of a handheld's screen, 40 twips each.
TEST_F(Picking, columnsHaveTheWidthsOfTheView) {
    openSample(joinPublishers);
    pick(0, [](QWidget& window) {
        const double pixels = window.logicalDpiX() / 1440.0;
        EXPECT_EQ(list(window).header()->sectionSize(0), std::lround(40 * 40 * pixels));
        EXPECT_EQ(list(window).header()->sectionSize(1), std::lround(60 * 40 * pixels));
        press(window, Qt::Key_Escape);
    });
}

TEST_F(Picking, aTextThatIsTypedFindsRecordsAndEnterPicksTheFirst) {
    openSample(joinPublishers);
    pick(1, [](QWidget& window) {
        EXPECT_TRUE(selected(window).isEmpty());
        typeInto(window, "caf");
        EXPECT_EQ(column(window, 0), words("York"));
        EXPECT_EQ(selected(window), words("York"));
        EXPECT_EQ(count(window), QStringLiteral("1 of 3 records"));
        press(window, Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(joined(1), "Caf\xE9 Books/York/30");
    EXPECT_EQ(doc().grd.row(), 3);
    EXPECT_EQ(doc().grd.col(), model::columnOfSlot(kJoin));
    trigger("mnuFileSave");
    std::string scratch;
    EXPECT_EQ(savedFile()->CellVals.get(1, kJoin, scratch), "30");
}

TEST_F(Picking, letterCaseDoesNotCountAndEveryColumnIsLookedAt) {
    openSample(joinPublishers);
    pick(1, [](QWidget& window) {
        typeInto(window, "10");
        EXPECT_EQ(column(window, 0), words("Whitby York")); // a number, and a word of what is told about one
        auto* find = child<QLineEdit>(window, "txtFind");
        find->selectAll();
        QTest::keyClicks(find, QStringLiteral("CAF\u00C9"));
        EXPECT_EQ(column(window, 0), words("York"));
        press(window, Qt::Key_Escape);
    });
}

TEST_F(Picking, theFoundRecordStaysSelectedWhenTheTextIsTakenBack) {
    openSample(joinPublishers);
    pick(1, [](QWidget& window) {
        typeInto(window, "york");
        child<QLineEdit>(window, "txtFind")->clear();
        EXPECT_EQ(list(window).model()->rowCount(), 3);
        EXPECT_EQ(selected(window), words("York"));
        press(window, Qt::Key_Escape);
    });
}

TEST_F(Picking, whatIsFoundNowhereCannotBePicked) {
    openSample(joinPublishers);
    pick(0, [](QWidget& window) {
        typeInto(window, "zz");
        EXPECT_EQ(list(window).model()->rowCount(), 0);
        EXPECT_EQ(count(window), QStringLiteral("0 of 3 records"));
        EXPECT_FALSE(canBeAccepted(window));
        press(window, Qt::Key_Return);
        EXPECT_TRUE(window.isVisible());
        press(window, Qt::Key_Escape);
    });
    EXPECT_EQ(joined(0), "Old Mill/Ludlow/20");
}

TEST_F(Picking, arrowsMoveInTheListWhileTheTextHasTheFocus) {
    openSample(joinPublishers);
    pick(1, [](QWidget& window) {
        EXPECT_FALSE(canBeAccepted(window));
        press(window, Qt::Key_Down);
        EXPECT_EQ(selected(window), words("Whitby"));
        press(window, Qt::Key_Down);
        press(window, Qt::Key_Down);
        EXPECT_EQ(selected(window), words("York"));
        press(window, Qt::Key_Up);
        EXPECT_EQ(selected(window), words("Ludlow"));
        press(window, Qt::Key_PageUp);
        EXPECT_EQ(selected(window), words("Whitby"));
        EXPECT_TRUE(child<QLineEdit>(window, "txtFind")->hasFocus());
        press(window, Qt::Key_Return);
    });
    EXPECT_EQ(joined(1), "Harbour Press/Whitby/10"); // the very first record, too
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(Picking, lettersTypedOnTheListGoToTheText) {
    openSample(joinPublishers);
    pick(1, [](QWidget& window) {
        list(window).setFocus();
        typeInto(window, "d m");
        EXPECT_EQ(typed(window), QStringLiteral("d m"));
        EXPECT_TRUE(child<QLineEdit>(window, "txtFind")->hasFocus());
        list(window).setFocus();
        press(window, Qt::Key_Backspace);
        EXPECT_EQ(typed(window), QStringLiteral("d "));
        EXPECT_EQ(selected(window), words("Ludlow"));
        list(window).setFocus();
        press(window, Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(joined(1), "Old Mill/Ludlow/20");
}

TEST_F(Picking, aLetterOnTheGridBeginsTheSearch) {
    openSample(joinPublishers);
    script.expect([](QWidget& window) {
        EXPECT_EQ(typed(window), QStringLiteral("w"));
        EXPECT_EQ(selected(window), words("Whitby"));
        typeInto(window, "h");
        EXPECT_EQ(typed(window), QStringLiteral("wh"));
        press(window, Qt::Key_Return);
    });
    go(1, kJoin);
    type("w");
    EXPECT_EQ(joined(1), "Harbour Press/Whitby/10");
}

TEST_F(Picking, textThatIsComposedOnTheGridIsSoughtWhole) {
    openSample(joinPublishers);
    script.expect([](QWidget& window) {
        EXPECT_EQ(typed(window), QStringLiteral("York"));
        EXPECT_EQ(selected(window), words("York"));
        press(window, Qt::Key_Escape);
    });
    go(0, kJoin);
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("York"));
    QApplication::sendEvent(&grid(), &event);
}

TEST_F(Picking, enterOnTheGridOpensThePickerWithoutAText) {
    openSample(joinPublishers);
    script.expect([](QWidget& window) {
        EXPECT_EQ(typed(window), QString());
        EXPECT_EQ(selected(window), words("Ludlow"));
        press(window, Qt::Key_Escape);
    });
    go(0, kJoin);
    key(Qt::Key_Return);
}

TEST_F(Picking, aDoubleClickPicks) {
    openSample(joinPublishers);
    pick(0, [](QWidget& window) {
        QTreeView& records = list(window);
        const QPoint place = records.visualRect(records.model()->index(2, 1)).center();
        QTest::mouseClick(records.viewport(), Qt::LeftButton, {}, place);
        EXPECT_EQ(selected(window), words("York"));
        EXPECT_TRUE(window.isVisible());
        QTest::mouseDClick(records.viewport(), Qt::LeftButton, {}, place);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(joined(0), "Caf\xE9 Books/York/30");
}

TEST_F(Picking, theButtonsPickAndCancel) {
    openSample(joinPublishers);
    pick(0, [](QWidget& window) {
        press(window, Qt::Key_Down);
        pressButton(window, QStringLiteral("Cancel"));
    });
    EXPECT_EQ(joined(0), "Old Mill/Ludlow/20");
    pick(0, [](QWidget& window) {
        press(window, Qt::Key_Down);
        pressButton(window, QStringLiteral("OK"));
    });
    EXPECT_EQ(joined(0), "Caf\xE9 Books/York/30");
}

TEST_F(Picking, aCellCanReferToNoRecord) {
    openSample(joinPublishers);
    pick(0, [](QWidget& window) { QTest::keyClick(window.focusWidget(), Qt::Key_N, Qt::AltModifier); });
    EXPECT_EQ(joined(0), "//");
    EXPECT_TRUE(doc().DocModified);
    pick(0, [](QWidget& window) {
        EXPECT_FALSE(child<QPushButton>(window, "cmdNone")->isEnabled());
        press(window, Qt::Key_Escape);
    });
}

TEST_F(Picking, thePickerListsWhatTheFileHoldsNow) {
    openSample(joinPublishers);
    putPublishers(
        [](model::Document& publishers) { publishers.grd.setText(3, model::columnOfSlot(kHouse), "New Mill"); });
    pick(0, [](QWidget& window) {
        EXPECT_EQ(column(window, 1).at(1), QStringLiteral("New Mill"));
        press(window, Qt::Key_Escape);
    });
    EXPECT_EQ(text(0, kJoin), "Old Mill"); // as it was read when the file was opened
}

TEST_F(Picking, aMissingDatabaseIsToldAndItsListIsEmpty) {
    openSample(joinPublishers);
    ASSERT_TRUE(files.remove(kPublishersPath));
    script.expectMessage(QStringLiteral("Cannot find external database MS2_Publishers.pdb. External references will "
                                        "not be displayed"));
    pick(0, [](QWidget& window) {
        EXPECT_EQ(list(window).model()->rowCount(), 0);
        EXPECT_EQ(count(window), QStringLiteral("0 records"));
        EXPECT_FALSE(canBeAccepted(window));
        press(window, Qt::Key_Return);
        EXPECT_TRUE(window.isVisible());
        press(window, Qt::Key_Escape);
    });
    EXPECT_EQ(joined(0), "Old Mill/Ludlow/20");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Picking, anInvalidDatabaseIsAskedAboutAndKeptByDefault) {
    openSample(joinPublishers);
    files.put(kPublishersPath, platform::Bytes(10));
    const auto answer = [this](Qt::Key key) {
        script.expect([key](QWidget& box) {
            EXPECT_EQ(
                dynamic_cast<QMessageBox&>(box).text(),
                QStringLiteral("The Tallybook /data/MS2_Publishers.pdb is invalid.  Would you like to delete it?"));
            press(box, key);
        });
        pick(0, [](QWidget& window) { press(window, Qt::Key_Escape); });
    };
    answer(Qt::Key_Return);
    EXPECT_TRUE(files.has(kPublishersPath));
    answer(Qt::Key_Escape);
    EXPECT_TRUE(files.has(kPublishersPath));
    answer(Qt::Key_Y);
    EXPECT_FALSE(files.has(kPublishersPath));
    EXPECT_EQ(files.trash(), std::vector{kPublishersPath});
    EXPECT_EQ(joined(0), "Old Mill/Ludlow/20");
}

TEST_F(Picking, everyFieldStandsInForAViewThatIsGone) {
    openSample([](model::Document& sample) {
        joinPublishers(sample);
        sample.CurrDB20.Externals[kJoin].ABField1 = 12;
    });
    pick(0, [](QWidget& window) {
        EXPECT_EQ(list(window).model()->columnCount(), 4);
        EXPECT_EQ(column(window, 0).first(), QStringLiteral("Harbour Press"));
        press(window, Qt::Key_Escape);
    });
}

TEST_F(Picking, theWindowCanBeUsedByKeysAndByEar) {
    openSample(joinPublishers);
    pick(0, [](QWidget& window) {
        EXPECT_EQ(tabOrder(window), words("txtFind lstRecords cmdNone cmdOK cmdCancel"));
        EXPECT_EQ(defaultButton(window), QStringLiteral("cmdOK"));
        expectNoAccessKeyTwice(window);
        for (const char* name : {"txtFind", "lstRecords", "cmdNone", "cmdOK", "cmdCancel"}) {
            QAccessibleInterface* control = QAccessible::queryAccessibleInterface(child<QWidget>(window, name));
            ASSERT_NE(control, nullptr) << name;
            EXPECT_FALSE(control->text(QAccessible::Name).isEmpty()) << name;
        }
        press(window, Qt::Key_Escape);
    });
}

TEST_F(Picking, aLargerWindowShowsMoreRecords) {
    openSample(joinPublishers);
    pick(0, [](QWidget& window) {
        const QSize before = list(window).size();
        window.resize(window.width() + 200, window.height() + 100);
        QCoreApplication::processEvents();
        EXPECT_EQ(list(window).size(), before + QSize(200, 100));
        press(window, Qt::Key_Escape);
    });
}

TEST_F(Picking, theLongestDatabaseIsListedWhole) {
    putPublishers([](model::Document& publishers) {
        model::resetRows(publishers, model::kMaxDataRecords);
        for (int record = 0; record < model::kMaxDataRecords; ++record) {
            const std::string number = std::to_string(record);
            publishers.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(kHouse), "House " + number);
            publishers.RecKeys.set(record, record + 1);
        }
    });
    openSample(joinPublishers);
    pick(1, [](QWidget& window) {
        EXPECT_EQ(list(window).model()->rowCount(), 65448);
        typeInto(window, "e 65447");
        EXPECT_EQ(list(window).model()->rowCount(), 1);
        press(window, Qt::Key_Return);
    });
    EXPECT_EQ(text(1, kJoin), "House 65447");
}

TEST_F(Picking, aReadOnlyDatabaseOpensNoPicker) {
    openSample([](model::Document& sample) {
        joinPublishers(sample);
        sample.CurrDB20.ReadOnly = 1;
    });
    click(0, kJoin);
    EXPECT_EQ(joined(0), "Old Mill/Ludlow/20");
}

// Opening -------------------------------------------------------------------------------------------------

TEST_F(Picking, aDatabaseOpensWithoutTheOthersAndShowsItsKeys) {
    putSample(joinPublishers);
    ASSERT_TRUE(files.remove(kPublishersPath));
    script.expectMessage(QStringLiteral("Cannot find external database MS2_Publishers.pdb. External references for "
                                        "field \"Publisher\" will not be displayed"));
    show().openFile(kSamplePath);
    EXPECT_EQ(joined(0), "20//20");
    EXPECT_EQ(text(1, kTitle), "Garden Year");
}

TEST_F(Picking, anInvalidDatabaseIsKeptByDefaultWhenAFileIsOpened) {
    putSample(joinPublishers);
    files.put(kPublishersPath, platform::Bytes(10));
    script.expect([](QWidget& box) { press(box, Qt::Key_Return); });
    show().openFile(kSamplePath);
    EXPECT_TRUE(files.has(kPublishersPath));
    EXPECT_EQ(joined(0), "20//20");
}

// Designed ------------------------------------------------------------------------------------------------

TEST_F(Picking, aJoinThatWasDesignedJustNowIsPickedAndSaved) {
    constexpr int kPrinter = 18;
    constexpr int kPrintedIn = 19;
    openSample();
    open(kPrinter, [](QWidget& form) {
        enter(form, "txtFieldName", "Printer");
        choose(form, "cmbFieldType", "DB Join");
        choose(form, "cmbSource", "MS2_Publishers");
        choose(form, "CmbViewList", "By city");
        choose(form, "cmbDisplay", "House");
        choose(form, "cmbJoin", "Number");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    open(kPrintedIn, [](QWidget& form) {
        enter(form, "txtFieldName", "Printed in");
        choose(form, "cmbFieldType", "DB Lookup");
        choose(form, "cmbFollows", "Printer");
        choose(form, "cmbDisplay", "City");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    script.expect([](QWidget& window) {
        EXPECT_EQ(column(window, 0), words("Whitby Ludlow York"));
        typeInto(window, "york");
        press(window, Qt::Key_Return);
    });
    click(2, kPrinter);
    EXPECT_EQ(text(2, kPrinter), "Caf\xE9 Books");
    EXPECT_EQ(text(2, kPrintedIn), "York");
    trigger("mnuFileSave");
    window().openFile(kSamplePath);
    EXPECT_EQ(text(2, kPrinter), "Caf\xE9 Books");
    EXPECT_EQ(text(2, kPrintedIn), "York");
}

// A key that is typed -------------------------------------------------------------------------------------

TEST_F(Picking, aJoinWithoutADisplayFieldTakesATypedKey) {
    openSample(joinByKey);
    EXPECT_EQ(joined(0), "20/Ludlow/20");
    click(0, kJoin);
    EXPECT_TRUE(visible("Text1"));
    type("30");
    key(Qt::Key_Return);
    EXPECT_EQ(joined(0), "30//30"); // lookups follow a text that is shown there, and none is
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(Picking, anEmptiedJoinLosesItsKeyAndItsLookups) {
    openSample(joinByKey);
    click(0, kJoin);
    key(Qt::Key_Delete);
    key(Qt::Key_Return);
    EXPECT_EQ(joined(0), "//");
    EXPECT_TRUE(doc().DocModified);
    trigger("mnuFileSave");
    std::string scratch;
    EXPECT_EQ(savedFile()->CellVals.get(0, kJoin, scratch), "");
}

} // namespace
} // namespace tallybook::test
