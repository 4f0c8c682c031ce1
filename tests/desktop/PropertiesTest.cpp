// What holds for a whole Tallybook, opened from the menu Tools, and the name of a new one.
#include "core/document/file/OpenSave.h"
#include "core/pdb/Passwords.h"
#include "desktop/DialogChecks.h"
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/dialogs/frmPDBProps.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QListWidget>
#include <QPlainTextEdit>

namespace tallybook::test {
namespace {

using desktop::frmPDBProps;

constexpr const char* kForbidden = "Tallybook name cannot have the following characters:\n\\ / : *  ? < > !";

class TallybookProperties : public WindowTest {
protected:
    void edit(const ModalScript::Step& step) {
        script.expect([step](QWidget& dialog) {
            ASSERT_EQ(dialog.objectName(), QStringLiteral("frmPDBProps"));
            step(dialog);
            EXPECT_FALSE(dialog.isVisible());
            dialog.close();
        });
        trigger("mnuToolsPDBPorps");
    }
    void expectText(const char* text, const char* button = "OK") {
        script.expectMessage(QString::fromLatin1(text), QString::fromLatin1(button));
    }
};

void check(QWidget& dialog, const char* box) {
    QTest::keyClick(child<QCheckBox>(dialog, box), Qt::Key_Space);
}

TEST_F(TallybookProperties, theValuesAreSetAndSaved) {
    openSample([](model::Document& sample) { sample.CurrDB20.SearchFlags = 0x05; });
    edit([](QWidget& dialog) {
        EXPECT_EQ(textOf(dialog, "txtPDBname"), "Books");
        EXPECT_TRUE(child<QLineEdit>(dialog, "txtPDBname")->hasFocus());
        EXPECT_FALSE(child<QCheckBox>(dialog, "ChkReadOnly")->isChecked());
        EXPECT_FALSE(isEnabled(dialog, "cmbUser")); // nobody is known
        typeInto(dialog, "txtPDBname", QStringLiteral("My books"));
        check(dialog, "ChkNoBackup");
        check(dialog, "ChkSearch");
        press(dialog, Qt::Key_Return);
    });
    EXPECT_TRUE(doc().DocModified);
    trigger("mnuFileSave");
    const auto saved = savedFile();
    EXPECT_EQ(saved->CurrDB20.DBName, "MS2_My books"); // the file keeps its name
    EXPECT_EQ(saved->CurrDB20.NoBackup, 1);
    EXPECT_EQ(saved->CurrDB20.SearchFlags, 0x85);
}

TEST_F(TallybookProperties, anOkWithoutAChangeIsNone) {
    openSample();
    edit([](QWidget& dialog) { clickOn(dialog, "cmdOK"); });
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(TallybookProperties, theToolBarOpensIt) {
    openSample();
    script.expect([](QWidget& dialog) { press(dialog, Qt::Key_Escape); });
    trigger("mnuToolsPDBPorps");
    EXPECT_EQ(action("mnuToolsPDBPorps")->toolTip(), QStringLiteral("Tallybook Properties"));
}

TEST_F(TallybookProperties, refusesNames) {
    openSample();
    edit([this](QWidget& dialog) {
        typeInto(dialog, "txtPDBname", {});
        expectText("Enter Tallybook Name.");
        clickOn(dialog, "cmdOK");
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("txtPDBname"));
        for (const char* name : {"a|b", "a\\", "/a", "a:", "*", "?", "<a", "a>", "a\"b"}) {
            typeInto(dialog, "txtPDBname", QString::fromLatin1(name));
            expectText(kForbidden);
            clickOn(dialog, "cmdOK");
            EXPECT_EQ(textOf(dialog, "txtPDBname"), "") << name;
        }
        typeInto(dialog, "txtPDBname", QString(300, QLatin1Char('n')));
        expectText("The name of a Tallybook may have at most 27 characters.");
        clickOn(dialog, "cmdOK");
        EXPECT_EQ(textOf(dialog, "txtPDBname").size(), 300u); // to be shortened
        typeInto(dialog, "txtPDBname", QStringLiteral("\u4E2D"));
        expectText("The character U+4E2D cannot be stored in a Tallybook.");
        clickOn(dialog, "cmdOK");
        typeInto(dialog, "txtPDBname", QStringLiteral("Fine!")); // named by the message, and allowed
        clickOn(dialog, "cmdOK");
    });
    EXPECT_EQ(doc().CurrDB20.DBName, "MS2_Fine!");
}

TEST_F(TallybookProperties, searchedFieldsAreSelected) {
    openSample([](model::Document& sample) { sample.CurrDB20.Fields[kPages].SearchField = 1; });
    edit([](QWidget& dialog) {
        clickOn(dialog, "CmdSearch");
        auto* list = child<QListWidget>(dialog, "LstFields");
        EXPECT_TRUE(list->isVisible());
        EXPECT_FALSE(child<QPushButton>(dialog, "cmdOK")->isVisible());
        ASSERT_EQ(list->count(), 17);
        EXPECT_EQ(list->item(0)->text(), QStringLiteral("Title"));
        EXPECT_TRUE(list->item(1)->isSelected());
        press(dialog, Qt::Key_Space);
        clickOn(dialog, "CmdLstCancel");
        clickOn(dialog, "CmdSearch");
        EXPECT_FALSE(list->item(0)->isSelected());
        press(dialog, Qt::Key_Space);
        press(dialog, Qt::Key_Down);
        press(dialog, Qt::Key_Space);
        press(dialog, Qt::Key_Return); // CmdLstOK
        EXPECT_TRUE(child<QPushButton>(dialog, "cmdOK")->isVisible());
        clickOn(dialog, "cmdOK");
    });
    EXPECT_EQ(doc().CurrDB20.Fields[kTitle].SearchField, 1);
    EXPECT_EQ(doc().CurrDB20.Fields[kPages].SearchField, 0);
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(TallybookProperties, theStartupTextHasTheHandheldsLineEnds) {
    openSample();
    edit([this](QWidget& dialog) {
        clickOn(dialog, "CmdStartup");
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("TxtStartup"));
        auto* text = child<QPlainTextEdit>(dialog, "TxtStartup");
        QTest::keyClicks(text, QStringLiteral("Hello"));
        QTest::keyClick(text, Qt::Key_Return);
        QTest::keyClicks(text, QStringLiteral("all"));
        text->insertPlainText(QStringLiteral("\u4E2D"));
        expectText("The character U+4E2D cannot be stored in a Tallybook.");
        clickOn(dialog, "CmdDone");
        EXPECT_TRUE(text->isVisible());
        QTest::keyClick(text, Qt::Key_Backspace);
        check(dialog, "ChkStartup");
        clickOn(dialog, "CmdDone");
        clickOn(dialog, "cmdOK");
    });
    EXPECT_EQ(doc().CurrDB20.StartupText, "Hello\nall");
    EXPECT_EQ(doc().CurrDB20.ShowStartup, 1);
    trigger("mnuFileSave");
    EXPECT_EQ(savedFile()->CurrDB20.StartupText, "Hello\nall");
}

TEST_F(TallybookProperties, aStartupTextThatIsTooLongIsRefused) {
    openSample();
    edit([this](QWidget& dialog) {
        clickOn(dialog, "CmdStartup");
        auto* text = child<QPlainTextEdit>(dialog, "TxtStartup");
        pasteOver(text, QString(65001, QLatin1Char('x')));
        expectText("A start-up text may have at most 65000 characters.");
        clickOn(dialog, "CmdDone");
        EXPECT_TRUE(text->isVisible());
        press(dialog, Qt::Key_Escape); // back to the main panel, without the text
        EXPECT_TRUE(dialog.isVisible());
        clickOn(dialog, "CmdStartup");
        EXPECT_EQ(text->toPlainText(), QString());
        clickOn(dialog, "CmdDone");
        clickOn(dialog, "cmdOK");
    });
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(TallybookProperties, aTextThatNobodyTouchedKeepsItsLineEnds) {
    openSample([](model::Document& sample) { sample.CurrDB20.StartupText = "as\r\nread\n"; });
    edit([](QWidget& dialog) {
        clickOn(dialog, "CmdStartup");
        clickOn(dialog, "CmdDone");
        clickOn(dialog, "cmdOK");
    });
    EXPECT_EQ(doc().CurrDB20.StartupText, "as\r\nread\n");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(TallybookProperties, cancelKeepsTheUserAlone) {
    model::Document sample;
    makeSample(sample, regional);
    design::UserList users{{"Ann", "B\xF6rge"}, {"/data", "/app"}, "Ann", {}};
    std::string kept;
    frmPDBProps dialog(
        sample, services, users, [&](const std::string& chosen) { kept = chosen; }, nullptr);
    showAndActivate(dialog);
    EXPECT_EQ(chosenIn(dialog, "cmbUser"), "Ann");
    clickOn(dialog, "CmdStartup");
    QTest::keyClicks(child<QPlainTextEdit>(dialog, "TxtStartup"), QStringLiteral("Hello"));
    clickOn(dialog, "CmdDone");
    clickOn(dialog, "CmdSearch");
    press(dialog, Qt::Key_Space);
    clickOn(dialog, "CmdLstOK");
    EXPECT_EQ(sample.CurrDB20.Fields[kTitle].SearchField, 1);
    pick(dialog, "cmbUser", "B\xF6rge");
    EXPECT_EQ(kept, "B\xF6rge");
    clickOn(dialog, "cmdCancel");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(sample.CurrDB20.StartupText, "");
    EXPECT_EQ(sample.CurrDB20.Fields[kTitle].SearchField, 0);
    EXPECT_FALSE(sample.DocModified);
    EXPECT_EQ(users.CurrentUser, "B\xF6rge");
}

TEST_F(TallybookProperties, needsTheDesignPassword) {
    openSample([](model::Document& sample) {
        sample.CurrDB20.Passwords[static_cast<std::size_t>(model::PasswordKind::Design)] = pdb::ApplyPwd("key");
    });
    script.expect([](QWidget& login) {
        EXPECT_EQ(login.objectName(), QStringLiteral("frmLogin"));
        login.close();
    });
    trigger("mnuToolsPDBPorps");
}

TEST_F(TallybookProperties, theExpressionsAreCalculatedAfterwards) {
    openSample();
    doc().grd.setText(model::kFirstDataRow, model::columnOfSlot(kValue), "stale");
    edit([](QWidget& dialog) { clickOn(dialog, "cmdOK"); });
    EXPECT_NE(text(0, kValue), "stale");
}

// The name is given here; the first save offers it, and its blanks go into the header.
TEST_F(TallybookProperties, aNewDatabaseIsNamedAndSaved) {
    show();
    trigger("mnuFileNew");
    edit([](QWidget& dialog) {
        EXPECT_EQ(textOf(dialog, "txtPDBname"), "");
        typeInto(dialog, "txtPDBname", QStringLiteral("My new books"));
        clickOn(dialog, "cmdOK");
    });
    EXPECT_EQ(doc().CurrFileName, "MS2_My new books.pdb");
    EXPECT_TRUE(doc().CurrFilePath.empty()); // nobody is known in whose folder it belongs
    script.expect([](QWidget& question) {
        auto* dialog = qobject_cast<QFileDialog*>(&question);
        ASSERT_NE(dialog, nullptr);
        auto* name = child<QLineEdit>(*dialog, "fileNameEdit");
        EXPECT_EQ(name->text(), QStringLiteral("MS2_My new books.pdb"));
        pasteOver(name, QStringLiteral("/data/MS2_My new books.pdb"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    trigger("mnuFileSave");
    EXPECT_TRUE(files.has("/data/MS2_My_new_books.pdb"));
    EXPECT_EQ(doc().CurrDB20.DBName, "MS2_My new books");
    EXPECT_EQ(savedFile("/data/MS2_My_new_books.pdb")->CurrDB20.DBName, "MS2_My new books");
}

TEST_F(TallybookProperties, aNewDatabaseGoesToItsUsersFolder) {
    model::Document fresh;
    document::CreateNewDatabase(fresh, services);
    files.put("/data/MS2_Books.pdb", {1});
    design::UserList users{{"Ann", "Bob"}, {"/app", "/data"}, "Bob", {}};
    frmPDBProps dialog(fresh, services, users, {}, nullptr);
    showAndActivate(dialog);
    typeInto(dialog, "txtPDBname", QStringLiteral("Books"));
    expectText("The file already exist\nOverwrite it ?", "No");
    clickOn(dialog, "cmdOK");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(fresh.CurrFilePath.empty());
    expectText("The file already exist\nOverwrite it ?", "Yes");
    clickOn(dialog, "cmdOK");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(fresh.CurrFilePath, "/data/MS2_Books.pdb");
}

TEST_F(TallybookProperties, itsControlsAreInOrder) {
    model::Document sample;
    makeSample(sample, regional);
    design::UserList users{{"Ann"}, {"/data"}, "Ann", {}};
    frmPDBProps dialog(sample, services, users, {}, nullptr);
    showAndActivate(dialog);
    const auto words = [](const char* spaced) { return QString::fromLatin1(spaced).split(QLatin1Char(' ')); };
    EXPECT_EQ(tabOrder(dialog), words("txtPDBname cmbUser ChkReadOnly ChkNoBackup ChkSearch CmdSearch CmdStartup "
                                      "cmdOK cmdCancel"));
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("cmdOK"));
    expectNoAccessKeyTwice(dialog);
    clickOn(dialog, "CmdSearch");
    EXPECT_EQ(tabOrder(dialog), words("LstFields CmdLstOK CmdLstCancel"));
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("CmdLstOK"));
    expectNoAccessKeyTwice(dialog);
    press(dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("CmdSearch"));
    clickOn(dialog, "CmdStartup");
    child<QCheckBox>(dialog, "ChkStartup")->setFocus();
    EXPECT_EQ(tabOrder(dialog), words("ChkStartup TxtStartup CmdDone"));
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("CmdDone"));
    expectNoAccessKeyTwice(dialog);
}

} // namespace
} // namespace tallybook::test
