// Menus, tool bars, the life of the document, what is remembered.
#include "core/pdb/Database.h"
#include "core/pdb/Passwords.h"
#include "core/shell/Commands.h"
#include "core/shell/ProgramSettings.h"
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/document/frmDocument.h"
#include "desktop/platform/Twips.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>

#include <map>
#include <stdexcept>

namespace tallybook::test {
namespace {

using model::columnOfSlot;

class MainWindow : public WindowTest {
protected:
    std::vector<QString> recentItems() {
        std::vector<QString> texts;
        for (const QAction* one : find<QMenu>("mnuFile")->actions())
            if (one->objectName() == QStringLiteral("mnuMRUList"))
                texts.push_back(one->text());
        return texts;
    }
    void rename(const char* title) {
        click(0, kTitle);
        type(title);
        key(Qt::Key_Return);
    }
};

const QString kQuestion = QStringLiteral("Do you want to save the changes you made to MS2_Books.pdb ?");

TEST_F(MainWindow, startsWithoutADocument) {
    show();
    EXPECT_EQ(window().DocState(), 0);
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Tallybook Pocket Desktop"));
    EXPECT_FALSE(window().documentWindow().isVisible());
    EXPECT_TRUE(visible("lblNothingOpen"));
    EXPECT_FALSE(find<QToolBar>("PrintToolBar")->isVisible());
    EXPECT_TRUE(find<QToolBar>("tbToolBar")->isVisible());
}

TEST_F(MainWindow, enablesItsCommandsByTheTable) {
    openSample();
    const auto check = [this](int state) {
        for (const shell::Command& command : shell::commands()) {
            const auto name = QString::fromLatin1((command.name.empty() ? command.key : command.name).data());
            if (name == QStringLiteral("mnuMRUList"))
                continue;
            const auto* one = window().findChild<QAction*>(name);
            ASSERT_NE(one, nullptr) << name.toStdString();
            EXPECT_EQ(one->isEnabled(), shell::isEnabled(command, state, 1)) << name.toStdString() << " " << state;
        }
    };
    check(1);
    trigger("mnuFileClose");
    check(0);
    EXPECT_FALSE(action("mnuFileSave")->isEnabled());
    EXPECT_TRUE(action("mnuFileOpen")->isEnabled());
}

// Number of the button, tool tip. Numbers that are missing are separators.
TEST_F(MainWindow, showsTheButtonsInTheirPlaces) {
    show();
    const std::map<int, const char*> expected = {
        {1, "New"},
        {2, "Open"},
        {3, "Save"},
        {5, "Save & Install"},
        {7, "Print Preview"},
        {8, "Print this file "},
        {10, "Cut"},
        {11, "Copy"},
        {12, "Paste"},
        {14, "Add Record"},
        {15, "Delete Record"},
        {17, "Sort Ascending"},
        {18, "Sort Descending"},
        {19, "Recalculate Expressions"},
        {20, "Best Fit"},
        {22, "Export to External File"},
        {23, "Import from External File"},
        {25, "Tallybook Properties"},
        {26, "Form Designer"},
        {28, "Help"},
    };
    std::vector<QString> texts;
    int before = 0;
    for (const auto& [position, toolTip] : expected) {
        if (position > before + 1)
            texts.push_back(QStringLiteral("|"));
        texts.push_back(QString::fromLatin1(toolTip));
        before = position;
    }
    std::vector<QString> shown;
    for (const QAction* one : find<QToolBar>("tbToolBar")->actions()) {
        shown.push_back(one->isSeparator() ? QStringLiteral("|") : one->toolTip());
        EXPECT_TRUE(one->isSeparator() || !one->icon().isNull()) << one->toolTip().toStdString();
    }
    EXPECT_EQ(shown, texts);
}

TEST_F(MainWindow, hasItsMenusInOrderWithAccessKeys) {
    show();
    QStringList titles;
    for (const QAction* one : window().menuBar()->actions())
        titles += one->text();
    EXPECT_EQ(titles.join(QLatin1Char(' ')), QStringLiteral("&File &Edit &Search &Record &View &Tools &Help"));
}

TEST_F(MainWindow, hasTheStandardShortcuts) {
    show();
    const std::map<const char*, const char*> expected = {
        {"mnuFileNew", "Ctrl+N"},
        {"mnuFileOpen", "Ctrl+O"},
        {"mnuFileSave", "Ctrl+S"},
        {"mnuFind", "Ctrl+F"},
        {"mnuFilePrint", "Ctrl+P"},
        {"mnuEditCut", "Ctrl+X"},
        {"mnuEditCopy", "Ctrl+C"},
        {"mnuEditPaste", "Ctrl+V"},
        {"mnuRecordDelete", "Ctrl+Del"},
        {"mnuHelpContents", "F1"},
        {"sorta", "F7"},
        {"sortd", "Shift+F7"},
        {"bestfit", "F8"},
    };
    for (const auto& [name, keys] : expected)
        EXPECT_EQ(action(name)->shortcut().toString().toStdString(), keys) << name;
}

TEST_F(MainWindow, noMenuHasTheSameAccessKeyTwice) {
    show();
    for (const QMenu* menu : window().findChildren<QMenu*>()) {
        std::map<QChar, QString> keys;
        for (const QAction* one : menu->actions()) {
            const int mark = static_cast<int>(one->text().remove(QStringLiteral("&&")).indexOf(QLatin1Char('&')));
            if (mark < 0)
                continue;
            const QChar letter = one->text().remove(QStringLiteral("&&")).at(mark + 1).toLower();
            EXPECT_TRUE(keys.emplace(letter, one->text()).second)
                << menu->objectName().toStdString() << ": " << one->text().toStdString();
        }
    }
}

TEST_F(MainWindow, opensAFileAndNamesItInTitleAndStatusBar) {
    openSample();
    EXPECT_EQ(window().DocState(), 1);
    EXPECT_EQ(window().windowTitle(), QStringLiteral("MS2_Books.pdb[*] - Tallybook Pocket Desktop"));
    EXPECT_EQ(find<QLabel>("lblPath")->text(), QStringLiteral("/data/MS2_Books.pdb"));
    EXPECT_EQ(find<QLabel>("lblRecord")->text(), QStringLiteral("Record 1 of 3"));
    EXPECT_TRUE(window().documentWindow().isVisible());
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_TRUE(files.has("/app/Backup/MS2_Books.pdb"));
    rename("Changed");
    EXPECT_TRUE(window().isWindowModified());
}

TEST_F(MainWindow, refusesAFileOfAnotherName) {
    show();
    script.expectMessage(QStringLiteral("No the Valid file for Tallybook Pocket."));
    window().openFile("/data/Books.pdb");
    EXPECT_EQ(window().document(), nullptr);
}

TEST_F(MainWindow, answersTheOlderFormat) {
    show();
    files.put("/data/MSA_Old.pdb", {1, 2, 3});
    script.expectMessage(QStringLiteral("Old Format"));
    script.expectMessage(QStringLiteral("Failed to load PDB File"));
    window().openFile("/data/MSA_Old.pdb");
    EXPECT_EQ(window().DocState(), 0);
}

TEST_F(MainWindow, aFileThatCannotBeReadLeavesTheOpenOneAlone) {
    openSample();
    rename("Kept");
    files.put("/data/MS2_Bad.pdb", {1, 2, 3});
    script.expectMessage(kQuestion, QStringLiteral("No"));
    script.expect([](QWidget& window) { window.close(); });
    window().openFile("/data/MS2_Bad.pdb");
    ASSERT_NE(window().document(), nullptr);
    EXPECT_EQ(text(0, kTitle), "Kept");
    EXPECT_TRUE(doc().DocModified);
    EXPECT_EQ(recentItems().size(), 1U);
}

TEST_F(MainWindow, asksForTheLoginPasswordAtOpening) {
    putSample([](model::Document& sample) { sample.CurrDB20.Passwords[0] = pdb::ApplyPwd("open"); });
    show();
    script.expect([](QWidget& prompt) {
        EXPECT_EQ(prompt.objectName(), QStringLiteral("frmLogin"));
        EXPECT_EQ(prompt.windowTitle(), QStringLiteral("Login"));
        EXPECT_EQ(prompt.findChild<QLineEdit*>(QStringLiteral("txtDatabase"))->text(),
                  QStringLiteral("MS2_Books.pdb"));
        auto* password = prompt.findChild<QLineEdit*>(QStringLiteral("txtPassword"));
        EXPECT_TRUE(password->hasFocus());
        QTest::keyClicks(password, QStringLiteral("wrong"));
        QTest::keyClick(password, Qt::Key_Return);
    });
    script.expectMessage(QStringLiteral("Incorrect password"));
    script.expect([](QWidget& prompt) {
        auto* password = prompt.findChild<QLineEdit*>(QStringLiteral("txtPassword"));
        EXPECT_EQ(password->text(), QString());
        QTest::keyClicks(password, QStringLiteral("open"));
        QTest::keyClick(password, Qt::Key_Return);
    });
    window().openFile(kSamplePath);
    EXPECT_EQ(window().DocState(), 1);
}

TEST_F(MainWindow, aRefusedLoginOpensNothing) {
    putSample([](model::Document& sample) { sample.CurrDB20.Passwords[0] = pdb::ApplyPwd("open"); });
    show();
    script.expect([](QWidget& prompt) { pressButton(prompt, QStringLiteral("Cancel")); });
    window().openFile(kSamplePath);
    EXPECT_EQ(window().DocState(), 0);
    EXPECT_EQ(window().document(), nullptr);
}

TEST_F(MainWindow, aRefusedLoginLeavesNothingOpen) {
    openSample();
    model::Document locked;
    makeSample(locked, regional);
    locked.CurrDB20.Passwords[0] = pdb::ApplyPwd("open");
    files.put("/data/MS2_Locked.pdb", pdb::buildDatabase(locked, services).value().bytes);
    script.expect([](QWidget& prompt) { pressButton(prompt, QStringLiteral("Cancel")); });
    window().openFile("/data/MS2_Locked.pdb");
    EXPECT_EQ(window().DocState(), 0);
    EXPECT_EQ(window().document(), nullptr);
    EXPECT_FALSE(files.has("/app/Backup/MS2_Locked.pdb"));
}

TEST_F(MainWindow, aRecordPasswordIsAskedForAtTheFirstClickOnly) {
    openSample([](model::Document& sample) { sample.CurrDB20.Passwords[1] = pdb::ApplyPwd("edit"); });
    script.expect([](QWidget& prompt) {
        EXPECT_EQ(prompt.windowTitle(), QStringLiteral("Modify"));
        QTest::keyClicks(prompt.findChild<QLineEdit*>(QStringLiteral("txtPassword")), QStringLiteral("edit"));
        pressButton(prompt, QStringLiteral("OK"));
    });
    click(0, kTitle);
    EXPECT_TRUE(doc().editor.open());
    click(1, kTitle);
    EXPECT_TRUE(doc().editor.open());
}

TEST_F(MainWindow, aRefusedRecordPasswordOpensNoEditor) {
    openSample([](model::Document& sample) { sample.CurrDB20.Passwords[1] = pdb::ApplyPwd("edit"); });
    script.expect([](QWidget& prompt) { pressButton(prompt, QStringLiteral("Cancel")); });
    click(0, kTitle);
    EXPECT_FALSE(doc().editor.open());
}

TEST_F(MainWindow, newMakesAnEmptyDatabase) {
    show();
    trigger("mnuFileNew");
    EXPECT_EQ(window().DocState(), 1);
    EXPECT_EQ(window().windowTitle(), QStringLiteral("New Database[*] - Tallybook Pocket Desktop"));
    EXPECT_EQ(find<QLabel>("lblRecord")->text(), QStringLiteral("No records"));
    EXPECT_EQ(doc().grd.rows(), 3);
    EXPECT_EQ(doc().grd.rowHeight(2), 0);
}

TEST_F(MainWindow, closingAsksAndCancelKeepsTheDocument) {
    openSample();
    rename("Kept");
    script.expectMessage(kQuestion, QStringLiteral("Cancel"));
    trigger("mnuFileClose");
    EXPECT_EQ(window().DocState(), 1);
    script.expectMessage(kQuestion, QStringLiteral("No"));
    trigger("mnuFileClose");
    EXPECT_EQ(window().DocState(), 0);
    EXPECT_EQ(savedFile()->grd.text(2, columnOfSlot(kTitle)), "Sea Charts");
}

TEST_F(MainWindow, closingWithYesSaves) {
    openSample();
    rename("Kept");
    script.expectMessage(kQuestion, QStringLiteral("Yes"));
    trigger("mnuFileClose");
    EXPECT_EQ(window().DocState(), 0);
    EXPECT_EQ(savedFile()->grd.text(2, columnOfSlot(kTitle)), "Kept");
}

TEST_F(MainWindow, closingTakesWhatIsStillInTheEditor) {
    openSample();
    click(0, kTitle);
    type("Pending");
    script.expectMessage(kQuestion, QStringLiteral("Yes"));
    trigger("mnuFileClose");
    EXPECT_EQ(savedFile()->grd.text(2, columnOfSlot(kTitle)), "Pending");
}

TEST_F(MainWindow, aRefusedEditDoesNotHoldNewUp) {
    openSample();
    click(0, kPages);
    type("x");
    script.expect([](QWidget& box) { pressButton(box, QStringLiteral("OK")); });
    trigger("mnuFileNew");
    EXPECT_EQ(doc().CurrFileName, "MSA_New.pdb");
}

TEST_F(MainWindow, aDatabaseSavedAtClosingIsARecentFile) {
    show();
    files.addFolder("/tmp");
    trigger("mnuFileNew");
    trigger("mnuRecordAdd");
    script.expectMessage(QStringLiteral("Do you want to save the changes you made to New Database ?"),
                         QStringLiteral("Yes"));
    script.expect([](QWidget& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        pasteOver(name, QStringLiteral("/tmp/MS2_Fresh.pdb"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    trigger("mnuFileClose");
    EXPECT_EQ(window().DocState(), 0);
    EXPECT_EQ(recentItems(), std::vector<QString>{QStringLiteral("&1 /tmp/MS2_Fresh.pdb")});
}

// Opened by a name with blanks it is the file with underscores, which a save names too.
TEST_F(MainWindow, aRecentFileIsNamedAsOnTheDisk) {
    putSample();
    files.put("/data/MS2_My_Books.pdb", files.bytes(kSamplePath));
    show();
    window().openFile("/data/MS2_My Books.pdb");
    EXPECT_EQ(recentItems(), std::vector<QString>{QStringLiteral("&1 /data/MS2_My_Books.pdb")});
}

TEST_F(MainWindow, closingTheWindowAsksToo) {
    openSample();
    rename("Kept");
    script.expectMessage(kQuestion, QStringLiteral("Cancel"));
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().isVisible());
    script.expectMessage(kQuestion, QStringLiteral("No"));
    EXPECT_TRUE(window().close());
}

TEST_F(MainWindow, theQuestionsDefaultIsYes) {
    openSample();
    rename("Kept");
    script.expect([](QWidget& box) {
        EXPECT_EQ(qobject_cast<QMessageBox*>(&box)->defaultButton()->text().remove(QLatin1Char('&')),
                  QStringLiteral("Yes"));
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    trigger("mnuFileClose");
    EXPECT_EQ(window().DocState(), 1);
}

TEST_F(MainWindow, saveAsAsksForANameAndFollowsIt) {
    openSample();
    script.expect([](QWidget& window) {
        auto* dialog = qobject_cast<QFileDialog*>(&window);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Save As Tallybook"));
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        pasteOver(name, QStringLiteral("/tmp/MS2_Other.pdb"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    script.expectMessage(QStringLiteral("A backup copy of the Tallybook has been created successfully."));
    script.expectMessage(QStringLiteral("Note: If you want to install this Tallybook on the device please select the "
                                        "button 'Save & Install' on the toolbar."));
    files.addFolder("/tmp");
    trigger("mnuFileSaveAs");
    EXPECT_TRUE(files.has("/tmp/MS2_Other.pdb"));
    EXPECT_EQ(recentItems().front(), QStringLiteral("&1 /tmp/MS2_Other.pdb"));
    EXPECT_EQ(find<QLabel>("lblPath")->text(), QStringLiteral("/tmp/MS2_Other.pdb"));
}

TEST_F(MainWindow, saysInTheStatusBarThatADatabaseIsReadOnly) {
    openSample([](model::Document& sample) { sample.CurrDB20.ReadOnly = 1; });
    EXPECT_TRUE(visible("lblReadOnly"));
    EXPECT_EQ(find<QLabel>("lblReadOnly")->text(), QStringLiteral("Read-only"));
    doc().CurrDB20.ReadOnly = 0; // as Tallybook Properties sets it
    window().documentWindow().showDocument();
    EXPECT_FALSE(visible("lblReadOnly"));
    doc().CurrDB20.ReadOnly = 1;
    window().documentWindow().showDocument();
    trigger("mnuFileClose");
    EXPECT_FALSE(visible("lblReadOnly"));
}

TEST_F(MainWindow, refusesToSaveAReadOnlyDatabase) {
    openSample([](model::Document& sample) { sample.CurrDB20.ReadOnly = 1; });
    script.expectMessage(QStringLiteral("Tallybook is readonly."));
    trigger("mnuFileSave");
}

TEST_F(MainWindow, recentFilesMoveToTheTopWithoutADuplicate) {
    openSample();
    files.put("/data/MS2_More.pdb", files.bytes(kSamplePath));
    window().openFile("/data/MS2_More.pdb");
    EXPECT_EQ(recentItems(), (std::vector<QString>{QStringLiteral("&1 /data/MS2_More.pdb"),
                                                   QStringLiteral("&2 /data/MS2_Books.pdb")}));
    for (QAction* one : find<QMenu>("mnuFile")->actions())
        if (one->text() == QStringLiteral("&2 /data/MS2_Books.pdb")) {
            one->trigger();
            break;
        }
    EXPECT_EQ(doc().CurrFileName, "MS2_Books.pdb");
    EXPECT_EQ(recentItems(), (std::vector<QString>{QStringLiteral("&1 /data/MS2_Books.pdb"),
                                                   QStringLiteral("&2 /data/MS2_More.pdb")}));
}

TEST_F(MainWindow, recentFilesSurviveTheProgram) {
    openSample();
    show();
    EXPECT_EQ(recentItems(), std::vector<QString>{QStringLiteral("&1 /data/MS2_Books.pdb")});
}

TEST_F(MainWindow, theFirstStartPlacesTheWindowInTwips) {
    desktop::frmMain first(services, user, settings);
    for (const QAction* one : first.findChild<QMenu*>(QStringLiteral("mnuFile"))->actions())
        EXPECT_NE(one->objectName(), QStringLiteral("mnuMRUList"));
    const double dpi = first.logicalDpiX();
    EXPECT_EQ(first.geometry(), QRect(desktop::pixelsOf(1000, dpi), desktop::pixelsOf(1000, dpi),
                                      desktop::pixelsOf(6500, dpi), desktop::pixelsOf(6500, dpi)));
}

TEST_F(MainWindow, thePlacementIsRememberedInTwips) {
    show();
    window().setGeometry(30, 40, 700, 500);
    QCoreApplication::processEvents();
    EXPECT_TRUE(window().close());
    const auto placement = shell::loadPlacement(settings);
    const double dpi = window().logicalDpiX();
    EXPECT_EQ(desktop::pixelsOf(placement.left, dpi), 30);
    EXPECT_EQ(desktop::pixelsOf(placement.top, dpi), 40);
    EXPECT_EQ(desktop::pixelsOf(placement.width, dpi), 700);
    EXPECT_EQ(desktop::pixelsOf(placement.height, dpi), 500);
    show();
}

TEST_F(MainWindow, aMaximisedOrMinimisedWindowLeavesThePlacement) {
    for (const Qt::WindowState state : {Qt::WindowMaximized, Qt::WindowMinimized}) {
        show();
        window().setGeometry(30, 40, 700, 500);
        EXPECT_TRUE(window().close());
        const auto before = shell::loadPlacement(settings);
        show();
        window().setWindowState(state);
        EXPECT_TRUE(window().close());
        EXPECT_EQ(shell::loadPlacement(settings), before);
    }
}

TEST_F(MainWindow, aPlaceThatNoScreenShowsIsMovedBack) {
    shell::savePlacement({-100000, 500000, 6500, 6500}, shell::WindowState::Normal, settings);
    desktop::frmMain lost(services, user, settings);
    EXPECT_TRUE(lost.screen()->virtualGeometry().intersects(lost.geometry()));
}

TEST_F(MainWindow, theViewMenusChoicesAreRemembered) {
    openSample();
    EXPECT_TRUE(action("mnuViewNotUsedFields")->isChecked());
    trigger("mnuViewNotUsedFields");
    EXPECT_FALSE(shell::loadDisplayChoices(settings).notUsedFields);
    EXPECT_EQ(doc().grd.columnWidth(columnOfSlot(40)), 0);
    trigger("mnuViewNotUsedFields");
    EXPECT_NE(doc().grd.columnWidth(columnOfSlot(40)), 0);
}

TEST_F(MainWindow, theBarsCanBeHidden) {
    show();
    trigger("mnuViewToolbar");
    trigger("mnuViewStatusBar");
    EXPECT_FALSE(find<QToolBar>("tbToolBar")->isVisible());
    EXPECT_FALSE(window().statusBar()->isVisible());
    trigger("mnuViewToolbar");
    EXPECT_TRUE(find<QToolBar>("tbToolBar")->isVisible());
}

TEST_F(MainWindow, addsARecordAndGoesToIt) {
    openSample();
    trigger("mnuRecordAdd");
    EXPECT_EQ(doc().NumDataRecs, 4);
    EXPECT_EQ(doc().grd.row(), 5);
    EXPECT_EQ(doc().grd.col(), columnOfSlot(kTitle));
    EXPECT_EQ(text(3, kCategory), "Unfiled");
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(find<QLabel>("lblRecord")->text(), QStringLiteral("Record 4 of 4"));
    type("Fresh");
    key(Qt::Key_Return);
    trigger("mnuFileSave");
    EXPECT_EQ(savedFile()->grd.text(5, columnOfSlot(kTitle)), "Fresh");
}

TEST_F(MainWindow, deletesTheCurrentRecord) {
    openSample();
    go(1, kTitle);
    script.expectMessage(QStringLiteral("Delete current record.  Are you sure?"), QStringLiteral("No"));
    trigger("mnuRecordDelete");
    EXPECT_EQ(doc().NumDataRecs, 3);
    script.expectMessage(QStringLiteral("Delete current record.  Are you sure?"), QStringLiteral("Yes"));
    trigger("mnuRecordDelete");
    EXPECT_EQ(doc().NumDataRecs, 2);
    trigger("mnuFileSave");
    EXPECT_EQ(savedFile()->grd.text(3, columnOfSlot(kTitle)), "Old Clocks");
}

TEST_F(MainWindow, enterAndEscapeKeepTheRecord) {
    openSample();
    for (const Qt::Key answer : {Qt::Key_Return, Qt::Key_Escape})
        for (const char* command : {"mnuRecordDelete", "mnuRecordDeleteAll"}) {
            script.expect([answer](QWidget& box) { QTest::keyClick(&box, answer); });
            trigger(command);
        }
    EXPECT_EQ(doc().NumDataRecs, 3);
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(MainWindow, deletingTheLastRecordMovesTheCursorUp) {
    openSample();
    go(2, kTitle);
    script.expectMessage(QStringLiteral("Delete current record.  Are you sure?"), QStringLiteral("Yes"));
    trigger("mnuRecordDelete");
    EXPECT_EQ(doc().grd.row(), 3);
}

TEST_F(MainWindow, deletesAllRecordsAndSavesNone) {
    openSample();
    script.expectMessage(QStringLiteral("WARNING: Delete all records in this Tallybook. Are you sure?"),
                         QStringLiteral("Yes"));
    trigger("mnuRecordDeleteAll");
    EXPECT_EQ(doc().NumDataRecs, 0);
    EXPECT_EQ(find<QLabel>("lblRecord")->text(), QStringLiteral("No records"));
    trigger("mnuFileSave");
    EXPECT_EQ(savedFile()->NumDataRecs, 0);
    script.expectMessage(QStringLiteral("No records for deletion."));
    trigger("mnuRecordDelete");
}

TEST_F(MainWindow, copiesABlockWithCheckBoxesAsLetters) {
    openSample();
    go(0, kShelf);
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    trigger("mnuEditCopy");
    EXPECT_EQ(QGuiApplication::clipboard()->text().replace(QStringLiteral("\r\n"), QStringLiteral("\n")).trimmed(),
              QStringLiteral("Middle\tY\nMiddle\tN"));
}

TEST_F(MainWindow, cutAndPasteRefuseABlock) {
    openSample();
    key(Qt::Key_Right, Qt::ShiftModifier);
    for (const char* command : {"mnuEditCut", "mnuEditPaste"}) {
        script.expectMessage(QStringLiteral("Cut and Paste is not supported for multiple cells"));
        trigger(command);
    }
}

TEST_F(MainWindow, cutsCopiesAndPastesInTheCell) {
    openSample();
    click(0, kTitle);
    trigger("mnuEditCut");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Sea Charts"));
    EXPECT_EQ(find<QLineEdit>("Text1")->text(), QString());
    click(1, kTitle);
    trigger("mnuEditPaste");
    EXPECT_EQ(find<QLineEdit>("Text1")->text(), QStringLiteral("Sea Charts"));
    trigger("mnuEditCopy");
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kTitle), "");
    EXPECT_EQ(text(1, kTitle), "Sea Charts");
}

TEST_F(MainWindow, pastingLinesIntoACellMakesThemOne) {
    openSample();
    QGuiApplication::clipboard()->setText(QStringLiteral("One\nTwo"));
    click(0, kTitle);
    trigger("mnuEditPaste");
    key(Qt::Key_Return);
    EXPECT_EQ(text(0, kTitle), "One Two");
}

TEST_F(MainWindow, convertsAColumnToKeysWhenTheUserAgrees) {
    openSample();
    script.expectMenu(QStringLiteral("mnuColumn"), QStringLiteral("mnuColumnConvertToKeys"));
    script.expectMessage(
        QStringLiteral("Warning: This action will convert the values in this column into key values for the existing "
                       "records.  This cannot be undone.\n\nYou are responsible for invalid/duplicate key number in "
                       "this column.  The program will not check for this.\n\n Continue?"),
        QStringLiteral("Yes"));
    clickAt(grid().cellRect(0, columnOfSlot(kPages)).center(), Qt::RightButton);
    EXPECT_EQ(doc().RecKeys[0], 120);
    EXPECT_EQ(doc().RecKeys[2], 310);
}

TEST_F(MainWindow, openShowsTheFileDroppedOnIt) {
    putSample();
    show();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/data/MS2_Books.pdb"))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &drop);
    QCoreApplication::processEvents();
    EXPECT_EQ(window().DocState(), 1);
}

TEST_F(MainWindow, whatIsNotAFileCannotBeDropped) {
    show();
    QMimeData data;
    data.setText(QStringLiteral("hello"));
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(&window(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(MainWindow, saysThatThereIsNoHelp) {
    show();
    for (const char* command : {"mnuHelpContents", "mnuHelpSearchForHelpOn"}) {
        script.expectMessage(
            QStringLiteral("Unable to display Help Contents. There is no Help associated with this project."));
        trigger(command);
        EXPECT_EQ(action(command)->statusTip(), QStringLiteral("This version has no handbook yet"));
    }
}

TEST_F(MainWindow, showsItsVersion) {
    show();
    script.expect([](QWidget& box) {
        EXPECT_EQ(box.objectName(), QStringLiteral("frmAbout"));
        EXPECT_TRUE(box.findChild<QLabel*>(QStringLiteral("lblVersion"))
                        ->text()
                        .startsWith(QStringLiteral("Version 1.0 (0")));
        QTest::keyClick(&box, Qt::Key_Return);
    });
    trigger("mnuHelpAbout");
}

TEST_F(MainWindow, allControlsOfTheDocumentBearTheirNames) {
    openSample();
    for (const char* name : {"grd", "ViewGrd", "CmbView", "CmbFilter", "cmdEdit", "Text1", "cmb1", "cmb2", "MebSpin",
                             "UpDown1", "DTPickerMS2", "cursor", "sbStatusBar", "tbToolBar", "PrintToolBar"})
        find<QWidget>(name);
}

struct BrokenSettings : MemorySettings {
    platform::Status save() override { throw std::runtime_error("the store is gone"); }
};

TEST_F(MainWindow, anUnexpectedErrorIsShownUnderItsCommand) {
    show(); // the guards of the fixture's window
    BrokenSettings broken;
    desktop::frmMain frame(services, user, broken);
    frame.show();
    const auto run = [&frame](const char* command) {
        frame.findChild<QAction*>(QString::fromLatin1(command))->trigger();
    };
    run("mnuFileNew");
    script.expect([](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("dlgError"));
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("LblProcName"))->text(),
                  QStringLiteral("Tallybook Pocket : Field Types"));
        EXPECT_TRUE(dialog.findChild<QPlainTextEdit*>(QStringLiteral("Text1"))
                        ->toPlainText()
                        .endsWith(QStringLiteral("Description : the store is gone")));
        pressButton(dialog, QStringLiteral("Cancel"));
    });
    run("mnuViewFieldTypes");
    EXPECT_EQ(frame.DocState(), 1); // and the program goes on
}

TEST_F(MainWindow, thePreviewsButtonsBearTheirKeys) {
    show();
    QStringList keys;
    for (const QAction* one : find<QToolBar>("PrintToolBar")->actions())
        keys += one->objectName();
    EXPECT_EQ(keys.join(QLatin1Char(' ')),
              QStringLiteral("printfirst printprevious printnext printlast printzoomin printzoomout printclose "
                             "pgsetup print"));
}

TEST_F(MainWindow, theErrorDialogsAbortEndsWithoutAQuestion) {
    openSample();
    rename("Lost");
    script.expect([](QWidget& dialog) { pressButton(dialog, QStringLiteral("Abort")); });
    EXPECT_EQ(user.showError({.tag = "Tag : Op", .text = "Why"}), platform::ErrorAnswer::Abort);
    EXPECT_TRUE(window().close()); // no question comes
    // The abort has ended every event loop to come, as it should; the next test wants its own.
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    QApplication::exec();
    EXPECT_EQ(savedFile()->grd.text(2, columnOfSlot(kTitle)), "Sea Charts");
}

} // namespace
} // namespace tallybook::test
