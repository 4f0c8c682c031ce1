// The dialogs that choose a database and the users who get it, over a handheld's folders in memory.
#include "adapters/FolderDesktop.h"
#include "core/platform/Ansi.h"
#include "desktop/DialogChecks.h"
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/dialogs/frmOpen.h"
#include "desktop/dialogs/frmUser.h"
#include "desktop/main/ElidedLabel.h"
#include "support/RawFile.h"

#include <QFileDialog>
#include <QRadioButton>
#include <QTreeWidget>

#include <gmock/gmock.h>

namespace tallybook::test {
namespace {

using testing::ElementsAre;

const std::filesystem::path kAnn = "/palm/Ann/Backup";
const std::filesystem::path kBob = "/palm/Bob/Backup";

QTreeWidget& listIn(const QWidget& window) {
    return *child<QTreeWidget>(window, "ListView1");
}

void choose(const QWidget& window, int row) {
    QTreeWidget& list = listIn(window);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.topLevelItem(row)).center());
}

QStringList words(const char* spaced) {
    return QString::fromLatin1(spaced).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// "name|format|records" of each row.
std::vector<std::string> rowsOf(const QWidget& window) {
    std::vector<std::string> rows;
    QTreeWidget& list = listIn(window);
    for (int row = 0; row < list.topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = list.topLevelItem(row);
        rows.push_back(item->text(0).toStdString() + '|' + item->text(1).toStdString() + '|' +
                       item->text(2).toStdString());
    }
    return rows;
}

class OpenWindow : public WindowTest {
protected:
    OpenWindow() {
        files.addFolder(kAnn);
        files.addFolder(kBob);
        // Without the join, whose other database would be missed in each folder.
        putSample([](model::Document& sample) { sample.CurrDB20.Fields[kJoin].Type = model::FieldType::NotUsed; });
    }

    void put(const std::filesystem::path& path) { files.put(path, files.bytes(kSamplePath)); }
    void putOlder(const std::filesystem::path& path) {
        RawFile raw;
        raw.name = path.stem().string();
        raw.creator = "MOSA";
        raw.records.resize(40);
        files.put(path, raw.bytes());
    }
    // The window with the users of the folders.
    void start(const std::string& current = {}) {
        show();
        handheld::UserList users;
        users.CurrentUser = current;
        ASSERT_TRUE(handheld::GetUserIDs(services, desktop, users));
        window().setHandheld(desktop, std::move(users));
    }
    // What is done in the dialog that Open brings up.
    void inDialog(const std::function<void(QWidget&)>& step) {
        script.expect([step](QWidget& dialog) {
            ASSERT_EQ(dialog.objectName(), QStringLiteral("frmOpen"));
            step(dialog);
        });
    }

    adapters::FolderDesktop desktop{files, "/palm"};
};

TEST_F(OpenWindow, opensTheRowOfADoubleClick) {
    put(kAnn / "MS2_Books.pdb");
    put(kAnn / "MS2_An_other.pdb");
    start();
    inDialog([](QWidget& dialog) {
        EXPECT_THAT(rowsOf(dialog), ElementsAre("Books|2.0|3", "Books|2.0|3")); // the name is the header's
        EXPECT_EQ(child<QComboBox>(dialog, "cmbUser")->currentText(), QStringLiteral("Ann"));
        QTreeWidget& list = listIn(dialog);
        const QPoint place = list.visualItemRect(list.topLevelItem(1)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    });
    trigger("mnuFileOpen");
    ASSERT_NE(window().document(), nullptr);
    EXPECT_EQ(doc().CurrFilePath, kAnn / "MS2_Books.pdb");
    EXPECT_EQ(window().users().CurrentUser, "Ann");
    EXPECT_FALSE(settings.value("Settings", "UserID"));
}

TEST_F(OpenWindow, opensWithTheKeysAlone) {
    put(kAnn / "MS2_Books.pdb");
    start();
    inDialog([](QWidget& dialog) {
        EXPECT_TRUE(listIn(dialog).hasFocus());
        QTest::keyClick(&listIn(dialog), Qt::Key_Down);
        QTest::keyClick(&listIn(dialog), Qt::Key_Return);
    });
    trigger("mnuFileOpen");
    ASSERT_NE(window().document(), nullptr);
    EXPECT_EQ(doc().CurrFilePath, kAnn / "MS2_Books.pdb");
}

TEST_F(OpenWindow, asksForASelection) {
    start();
    inDialog([this](QWidget& dialog) {
        EXPECT_TRUE(rowsOf(dialog).empty());
        script.expectMessage(QStringLiteral("Select a database first"));
        clickOn(dialog, "OKButton");
        EXPECT_TRUE(dialog.isVisible());
        clickOn(dialog, "CancelButton");
    });
    trigger("mnuFileOpen");
    EXPECT_EQ(window().document(), nullptr);
}

TEST_F(OpenWindow, closesWhatIsOpenFirst) {
    start();
    window().openFile(kSamplePath);
    doc().DocModified = true;
    const QString question = QStringLiteral("Do you want to save the changes you made to MS2_Books.pdb ?");
    script.expectMessage(question, QStringLiteral("Cancel"));
    trigger("mnuFileOpen"); // no dialog comes
    ASSERT_NE(window().document(), nullptr);
    script.expectMessage(question, QStringLiteral("No"));
    inDialog([this](QWidget& dialog) {
        EXPECT_EQ(window().document(), nullptr);
        clickOn(dialog, "CancelButton");
    });
    trigger("mnuFileOpen");
    EXPECT_EQ(window().document(), nullptr);
}

TEST_F(OpenWindow, aChangeOfUserIsKept) {
    put(kBob / "MS2_Books.pdb");
    start("Bob");
    inDialog([](QWidget& dialog) {
        EXPECT_EQ(child<QComboBox>(dialog, "cmbUser")->currentText(), QStringLiteral("Bob"));
        EXPECT_EQ(rowsOf(dialog).size(), 1U);
        pick(dialog, "cmbUser", "Ann");
        EXPECT_TRUE(rowsOf(dialog).empty());
        clickOn(dialog, "CancelButton");
    });
    trigger("mnuFileOpen");
    EXPECT_EQ(settings.value("Settings", "UserID"), "Ann");
    EXPECT_EQ(window().users().CurrentUser, "Ann");
}

TEST_F(OpenWindow, buttonsFollowTheSelection) {
    put(kAnn / "MS2_Books.pdb");
    putOlder(kAnn / "MSA_Old.pdb");
    start();
    inDialog([](QWidget& dialog) {
        EXPECT_THAT(rowsOf(dialog), ElementsAre("Books|2.0|3", "Old|1.x|0"));
        const struct {
            int row;
            bool ok, convert, del;
        } cases[] = {{-1, true, false, false}, {0, true, false, true}, {1, false, true, true}};
        for (const auto& [row, ok, convert, del] : cases) {
            if (row >= 0)
                choose(dialog, row);
            EXPECT_EQ(child<QPushButton>(dialog, "OKButton")->isEnabled(), ok) << row;
            EXPECT_EQ(child<QPushButton>(dialog, "CmdConvert")->isEnabled(), convert) << row;
            EXPECT_EQ(child<QPushButton>(dialog, "CmdDel")->isEnabled(), del) << row;
        }
        EXPECT_EQ(defaultButton(dialog), QStringLiteral("CmdConvert"));
        clickOn(dialog, "CancelButton");
    });
    trigger("mnuFileOpen");
}

TEST_F(OpenWindow, deletesAfterAsking) {
    put(kAnn / "MS2_Books.pdb");
    start();
    inDialog([this](QWidget& dialog) {
        choose(dialog, 0);
        script.expectMessage(QStringLiteral("Are you sure that you want to delete file"), QStringLiteral("No"));
        clickOn(dialog, "CmdDel");
        EXPECT_EQ(rowsOf(dialog).size(), 1U);
        choose(dialog, 0);
        script.expectMessage(QStringLiteral("Are you sure that you want to delete file"), QStringLiteral("Yes"));
        QApplication::setActiveWindow(&dialog);
        listIn(dialog).setFocus();
        QTest::keyClick(&listIn(dialog), Qt::Key_Delete);
        EXPECT_TRUE(rowsOf(dialog).empty());
        EXPECT_FALSE(child<QPushButton>(dialog, "CmdDel")->isEnabled());
        clickOn(dialog, "CancelButton");
    });
    trigger("mnuFileOpen");
    EXPECT_THAT(files.trash(), ElementsAre(kAnn / "MS2_Books.pdb"));
}

TEST_F(OpenWindow, anOlderFileThatCannotBeReadIsNotConverted) {
    putOlder(kAnn / "MSA_Old.pdb"); // its records are empty
    start();
    inDialog([this](QWidget& dialog) {
        choose(dialog, 0);
        script.expectMessage(QStringLiteral("Failed to load PDB File"));
        clickOn(dialog, "CmdConvert");
        EXPECT_EQ(rowsOf(dialog).size(), 1U);
        clickOn(dialog, "CancelButton");
    });
    trigger("mnuFileOpen");
    EXPECT_FALSE(files.has(kAnn / "MS2_Old.pdb"));
}

TEST_F(OpenWindow, makesANewDatabase) {
    start();
    inDialog([](QWidget& dialog) { clickOn(dialog, "cmdNew"); });
    trigger("mnuFileOpen");
    ASSERT_NE(window().document(), nullptr);
    EXPECT_EQ(doc().Caption, "New Database");
    EXPECT_EQ(doc().CurrFolder, kAnn); // where the save dialog begins
}

TEST_F(OpenWindow, browsesForFilesOfTheFormatsPrefixes) {
    start();
    inDialog([this](QWidget& dialog) {
        script.expect([](QWidget& shown) {
            auto* browser = qobject_cast<QFileDialog*>(&shown);
            ASSERT_NE(browser, nullptr);
            EXPECT_EQ(browser->windowTitle(), QStringLiteral("Open Tallybook"));
            EXPECT_TRUE(browser->nameFilters().first().startsWith(QStringLiteral("PDB file (*.pdb)")));
            EXPECT_TRUE(browser->nameFilters().first().endsWith(QStringLiteral("(MS2_*.pdb)")));
            browser->reject();
        });
        clickOn(dialog, "cmdBrowse");
        EXPECT_TRUE(dialog.isVisible());
        clickOn(dialog, "CancelButton");
    });
    trigger("mnuFileOpen");
    EXPECT_EQ(window().document(), nullptr);
}

TEST_F(OpenWindow, aFolderThatVanishedIsSaidBeforeTheEmptyList) {
    show();
    window().setHandheld(desktop, {{"Ann"}, {"/palm/Gone/Backup"}, "Ann"});
    script.expect([](QWidget& box) { pressButton(box, QStringLiteral("OK")); });
    inDialog([](QWidget& dialog) {
        EXPECT_TRUE(rowsOf(dialog).empty());
        clickOn(dialog, "CancelButton");
    });
    trigger("mnuFileOpen");
}

TEST_F(OpenWindow, saveGoesToTheFolderOfTheUser) {
    start("Bob");
    window().openFile(kSamplePath);
    doc().DocModified = true;
    trigger("mnuFileSave");
    EXPECT_EQ(doc().CurrFilePath, kBob / "MS2_Books.pdb");
    EXPECT_TRUE(files.has(kBob / "MS2_Books.pdb"));
    EXPECT_EQ(find<desktop::ElidedLabel>("lblPath")->toolTip(), QStringLiteral("/palm/Bob/Backup/MS2_Books.pdb"));
}

TEST_F(OpenWindow, saveAndInstallAsksForWhom) {
    put(kAnn / "MS2_Books.pdb");
    start("Ann");
    window().openFile(kAnn / "MS2_Books.pdb");
    doc().DocModified = true;
    script.expect([](QWidget& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("frmUser"));
        EXPECT_EQ(child<QComboBox>(dialog, "cmbUser")->currentText(), QStringLiteral("Ann"));
        EXPECT_TRUE(child<QRadioButton>(dialog, "optUser")->isChecked());
        pick(dialog, "cmbUser", "Bob");
        clickOn(dialog, "OKButton");
    });
    script.expectMessage(QStringLiteral("MS2_Books.pdb will be installed during next HotSync for username(s) Bob."));
    trigger("mnuFileSaveInstall");
    EXPECT_TRUE(files.has("/palm/Bob/Install/MS2_Books.pdb"));
    EXPECT_EQ(files.bytes(kBob / "MS2_Books.pdb"), files.bytes(kAnn / "MS2_Books.pdb"));
    EXPECT_FALSE(doc().DocModified);
    EXPECT_EQ(window().users().CurrentUser, "Bob");
}

TEST_F(OpenWindow, saveAndInstallForAll) {
    put(kAnn / "MS2_Books.pdb");
    start("Ann");
    window().openFile(kAnn / "MS2_Books.pdb");
    script.expect([](QWidget& dialog) {
        clickOn(dialog, "OptAll");
        EXPECT_FALSE(child<QComboBox>(dialog, "cmbUser")->isEnabled());
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    script.expectMessage(
        QStringLiteral("MS2_Books.pdb will be installed during next HotSync for username(s) Ann, Bob."));
    trigger("mnuFileSaveInstall");
    EXPECT_TRUE(files.has("/palm/Ann/Install/MS2_Books.pdb"));
    EXPECT_TRUE(files.has("/palm/Bob/Install/MS2_Books.pdb"));
}

TEST_F(OpenWindow, aCancelledInstallHasSavedAllTheSame) {
    put(kAnn / "MS2_Books.pdb");
    start("Ann");
    window().openFile(kAnn / "MS2_Books.pdb");
    doc().DocModified = true;
    script.expect([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    script.expectMessage(QStringLiteral("File will not be installed"));
    trigger("mnuFileSaveInstall");
    EXPECT_FALSE(doc().DocModified);
    EXPECT_FALSE(files.has("/palm/Ann/Install/MS2_Books.pdb"));
}

TEST_F(OpenWindow, dialogsAreDrivenByTheKeyboard) {
    put(kAnn / "MS2_Books.pdb");
    handheld::UserList users{{"Ann", "Bob"}, {kAnn, kBob}, "Ann"};
    desktop::frmOpen open(services, user, users, {}, "/data", nullptr);
    showAndActivate(open);
    choose(open, 0);
    EXPECT_EQ(defaultButton(open), QStringLiteral("OKButton"));
    EXPECT_EQ(tabOrder(open), words("ListView1 cmdNew cmdBrowse CmdDel OKButton CancelButton cmbUser"));
    expectNoAccessKeyTwice(open);
    open.close();
    desktop::frmUser install(users, nullptr);
    showAndActivate(install);
    EXPECT_EQ(defaultButton(install), QStringLiteral("OKButton"));
    EXPECT_EQ(tabOrder(install), words("optUser cmbUser OKButton CancelButton"));
    expectNoAccessKeyTwice(install);
}

} // namespace
} // namespace tallybook::test
