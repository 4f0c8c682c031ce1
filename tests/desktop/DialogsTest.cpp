// The small dialogs by themselves: what they show, their default buttons, tab order and access keys.
#include "core/pdb/Passwords.h"
#include "desktop/DialogChecks.h"
#include "desktop/ModalScript.h"
#include "desktop/dialogs/QtUserInterface.h"
#include "desktop/dialogs/dlgError.h"
#include "desktop/dialogs/dlgMulFilter.h"
#include "desktop/dialogs/dlgRadio.h"
#include "desktop/dialogs/frmAbout.h"
#include "desktop/dialogs/frmFindForm.h"
#include "desktop/dialogs/frmLogin.h"
#include "desktop/dialogs/frmMemoAw.h"
#include "desktop/dialogs/frmPwd.h"
#include "desktop/dialogs/frmSplash.h"
#include "support/MemoryFiles.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QGroupBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

using desktop::frmMemoAw;

TEST(Login, startsInThePasswordAndOkIsTheDefault) {
    desktop::frmLogin prompt(QStringLiteral("Modify"), QStringLiteral("MS2_Books.pdb"), nullptr);
    showAndActivate(prompt);
    EXPECT_EQ(prompt.windowTitle(), QStringLiteral("Modify"));
    EXPECT_EQ(defaultButton(prompt), QStringLiteral("cmdOK"));
    EXPECT_EQ(tabOrder(prompt), QStringList({QStringLiteral("txtPassword"), QStringLiteral("cmdOK"),
                                             QStringLiteral("cmdCancel"), QStringLiteral("txtDatabase")}));
    EXPECT_EQ(prompt.findChild<QLineEdit*>(QStringLiteral("txtPassword"))->echoMode(), QLineEdit::Password);
    EXPECT_EQ(prompt.findChild<QLineEdit*>(QStringLiteral("txtPassword"))->maxLength(), 9);
    EXPECT_TRUE(prompt.findChild<QLineEdit*>(QStringLiteral("txtDatabase"))->isReadOnly());
    expectNoAccessKeyTwice(prompt);
}

class ErrorDialog : public testing::Test {
protected:
    platform::Error error{.kind = platform::ErrorKind::Format,
                          .tag = "Load_DBProps : readLists",
                          .text = "200 views, at most 13",
                          .record = 85,
                          .number = 5};
};

TEST_F(ErrorDialog, showsTagAndLines) {
    desktop::dlgError dialog(error, {}, nullptr);
    showAndActivate(dialog);
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("LblProcName"))->text(),
              QStringLiteral("Load_DBProps : readLists"));
    EXPECT_EQ(dialog.findChild<QPlainTextEdit*>(QStringLiteral("Text1"))->toPlainText(),
              QStringLiteral("Source  : Tallybook Pocket Desktop\nError No: 5\n------------- \n"
                             "Description : Record 85: 200 views, at most 13"));
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("OKButton"));
    EXPECT_FALSE(dialog.findChild<QLabel*>(QStringLiteral("lblMail"))->isVisible());
    EXPECT_EQ(tabOrder(dialog), QStringList({QStringLiteral("OKButton"), QStringLiteral("cmdCancel"),
                                             QStringLiteral("CmdAbort"), QStringLiteral("Text1")}));
    expectNoAccessKeyTwice(dialog);
}

TEST_F(ErrorDialog, hasAHeadingWithoutATag) {
    error.tag.clear();
    desktop::dlgError dialog(error, {}, nullptr);
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("LblProcName"))->text(),
              QStringLiteral("Tallybook Pocket Error"));
}

TEST_F(ErrorDialog, itsButtonsAnswer) {
    const std::pair<const char*, platform::ErrorAnswer> cases[] = {
        {"OKButton", platform::ErrorAnswer::GoOn},
        {"cmdCancel", platform::ErrorAnswer::Leave},
        {"CmdAbort", platform::ErrorAnswer::Abort},
    };
    for (const auto& [button, answer] : cases) {
        desktop::dlgError dialog(error, {}, nullptr);
        dialog.show();
        QTest::mouseClick(dialog.findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
        EXPECT_EQ(dialog.answer(), answer) << button;
    }
    desktop::dlgError closed(error, {}, nullptr);
    closed.reject();
    EXPECT_EQ(closed.answer(), platform::ErrorAnswer::Leave);
}

class FindForm : public testing::Test {
protected:
    document::FindMemory memory{.settings = {.text = "sea", .chkWholeWord = true, .optForward = false},
                                .texts = {"Sea Charts", "sea"}};
};

TEST_F(FindForm, startsInTheTextAndOkIsTheDefault) {
    desktop::frmFindForm form(memory, nullptr);
    showAndActivate(form);
    EXPECT_EQ(defaultButton(form), QStringLiteral("cmdOK"));
    EXPECT_EQ(tabOrder(form),
              QStringList({QStringLiteral("cmbFindText"), QStringLiteral("chkCase"), QStringLiteral("chkWholeWord"),
                           QStringLiteral("chkExpression"), QStringLiteral("optBackward"), QStringLiteral("cmdOK"),
                           QStringLiteral("cmdCancel")}));
    expectNoAccessKeyTwice(form);
}

TEST_F(FindForm, showsWhatWasLookedForLast) {
    desktop::frmFindForm form(memory, nullptr);
    const auto* text = form.findChild<QComboBox*>(QStringLiteral("cmbFindText"));
    EXPECT_EQ(text->currentText(), QStringLiteral("sea"));
    EXPECT_EQ(text->lineEdit()->selectedText(), QStringLiteral("sea"));
    ASSERT_EQ(text->count(), 2);
    EXPECT_EQ(text->itemText(0), QStringLiteral("Sea Charts"));
    EXPECT_FALSE(form.findChild<QCheckBox*>(QStringLiteral("chkCase"))->isChecked());
    EXPECT_TRUE(form.findChild<QCheckBox*>(QStringLiteral("chkWholeWord"))->isChecked());
    EXPECT_FALSE(form.findChild<QCheckBox*>(QStringLiteral("chkExpression"))->isChecked());
    EXPECT_FALSE(form.findChild<QRadioButton*>(QStringLiteral("optForward"))->isChecked());
    EXPECT_TRUE(form.findChild<QRadioButton*>(QStringLiteral("optBackward"))->isChecked());
}

TEST_F(FindForm, whatIsTypedIsNotCompletedFromOlderTexts) {
    desktop::frmFindForm form(memory, nullptr);
    showAndActivate(form);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("se"));
    EXPECT_EQ(form.settings().text, "se");
}

TEST_F(FindForm, staysOpenWithItsTextSelectedWhenNothingIsFound) {
    desktop::frmFindForm form(memory, nullptr);
    document::FindSettings asked;
    bool finds = false;
    form.setAcceptor([&](const document::FindSettings& settings) {
        asked = settings;
        return finds;
    });
    showAndActivate(form);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::AltModifier);
    const auto* matchCase = form.findChild<QCheckBox*>(QStringLiteral("chkCase"));
    EXPECT_TRUE(
        QTest::qWaitFor([matchCase] { return matchCase->isChecked(); })); // the box shows itself pressed first
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_N, Qt::AltModifier);
    form.findChild<QComboBox*>(QStringLiteral("cmbFindText"))->lineEdit()->insert(QStringLiteral("caf\u00E9"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(asked.text, "caf\xE9");
    EXPECT_TRUE(asked.chkCase);
    EXPECT_TRUE(asked.chkWholeWord);
    EXPECT_FALSE(asked.chkExpression);
    EXPECT_FALSE(asked.optForward);
    EXPECT_EQ(form.findChild<QComboBox*>(QStringLiteral("cmbFindText"))->lineEdit()->selectedText(),
              QStringLiteral("caf\u00E9"));
    finds = true;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.result(), QDialog::Accepted);
}

TEST_F(FindForm, aPastedLineEndIsTheOneOfAMemo) {
    memory.settings.text = "harbour\nSecond";
    const desktop::frmFindForm form(memory, nullptr);
    EXPECT_EQ(form.settings().text, "harbour\nSecond");
}

TEST(MulFilter, listsTheFiltersWithTheirBoxes) {
    desktop::dlgMulFilter dialog({{0, "01. Lent", false}, {3, "04. Cheap", true}}, nullptr);
    showAndActivate(dialog);
    const auto* list = dialog.findChild<QListWidget*>(QStringLiteral("ListFilters"));
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("01. Lent"));
    EXPECT_EQ(list->item(0)->checkState(), Qt::Unchecked);
    EXPECT_EQ(list->item(1)->text(), QStringLiteral("04. Cheap"));
    EXPECT_EQ(list->item(1)->checkState(), Qt::Checked);
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("OKButton"));
    EXPECT_EQ(tabOrder(dialog), QStringList({QStringLiteral("ListFilters"), QStringLiteral("OKButton"),
                                             QStringLiteral("CancelButton")}));
    expectNoAccessKeyTwice(dialog);
}

TEST(MulFilter, spaceChecksALineAndReturnAccepts) {
    desktop::dlgMulFilter dialog({{0, "01. Lent", false}, {3, "04. Cheap", true}}, nullptr);
    showAndActivate(dialog);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(dialog.slotsChecked(), std::bitset<model::MaxFilters>("1001"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(dialog.slotsChecked(), std::bitset<model::MaxFilters>("0001"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

class UrlCatcher : public QObject {
    Q_OBJECT
public slots:
    void open(const QUrl& url) { opened = url; }

public:
    QUrl opened;
};

TEST_F(ErrorDialog, theSupportLinkOpensTheConfiguredPage) {
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler(QStringLiteral("https"), &catcher, "open");
    desktop::dlgError dialog(error, QStringLiteral("https://support.example/tallybook"), nullptr);
    showAndActivate(dialog);
    auto* link = dialog.findChild<QLabel*>(QStringLiteral("lblMail"));
    EXPECT_TRUE(link->isVisible());
    emit link->linkActivated(QStringLiteral("https://support.example/tallybook"));
    EXPECT_EQ(catcher.opened, QUrl(QStringLiteral("https://support.example/tallybook")));
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
}

TEST(Radio, hasItsOptionsInTabOrder) {
    desktop::dlgRadio dialog(QStringLiteral("Cover"), {QStringLiteral("Hard & fast"), QStringLiteral("Soft")}, 1,
                             nullptr);
    showAndActivate(dialog);
    EXPECT_EQ(dialog.selected(), 1);
    EXPECT_EQ(dialog.findChildren<QWidget*>(QStringLiteral("Option1")).size(), 2);
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("OKButton"));
    EXPECT_EQ(tabOrder(dialog),
              QStringList({QStringLiteral("Option1"), QStringLiteral("OKButton"), QStringLiteral("CancelButton")}));
}

TEST(Memo, showsANumberInTheSmallBox) {
    frmMemoAw window({.fieldName = QStringLiteral("Pages"),
                      .text = QStringLiteral("12"),
                      .screen = frmMemoAw::Screen::Number,
                      .longest = 254,
                      .autoWriter = true},
                     nullptr);
    showAndActivate(window);
    EXPECT_TRUE(window.findChild<QWidget*>(QStringLiteral("MaskEdBox1"))->isVisible());
    EXPECT_FALSE(window.findChild<QWidget*>(QStringLiteral("txtMemo"))->isVisible());
    EXPECT_TRUE(window.findChild<QWidget*>(QStringLiteral("CmdAw"))->isVisible());
    EXPECT_EQ(window.text(), QStringLiteral("12"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(window.result(), QDialog::Accepted);
}

TEST(Memo, enterMakesALineAndControlEnterIsOk) {
    frmMemoAw window({.fieldName = QStringLiteral("Notes"), .text = QStringLiteral("a")}, nullptr);
    showAndActivate(window);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("b"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.text(), QStringLiteral("a\nb"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.result(), QDialog::Accepted);
}

TEST(Memo, tabLeavesTheText) {
    frmMemoAw window({.fieldName = QStringLiteral("Notes"), .text = {}, .autoWriter = true}, nullptr);
    showAndActivate(window);
    EXPECT_EQ(tabOrder(window), QStringList({QStringLiteral("txtMemo"), QStringLiteral("CmdAw"),
                                             QStringLiteral("OKButton"), QStringLiteral("CancelButton")}));
    expectNoAccessKeyTwice(window);
}

class SecuritySettingDialog : public testing::Test {
protected:
    SecuritySettingDialog() { model::clearDocument(doc); }

    desktop::frmPwd& show() {
        dialog = std::make_unique<desktop::frmPwd>(doc, services, nullptr);
        showAndActivate(*dialog);
        return *dialog;
    }
    void choose(int kind) {
        auto* list = dialog->findChild<QTreeWidget*>(QStringLiteral("lstPwd"));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->topLevelItem(kind)).center());
    }
    QString state(int kind) {
        return dialog->findChild<QTreeWidget*>(QStringLiteral("lstPwd"))->topLevelItem(kind)->text(1);
    }
    bool visible(const char* name) { return dialog->findChild<QWidget*>(QString::fromLatin1(name))->isVisible(); }
    void enter(const char* field, const char* text) {
        auto* line = dialog->findChild<QLineEdit*>(QString::fromLatin1(field));
        ASSERT_TRUE(line->isVisible()) << field;
        line->clear();
        QTest::keyClicks(line, QString::fromLatin1(text));
    }
    QString hint() { return dialog->findChild<QLabel*>(QStringLiteral("lblHint"))->text(); }
    void press(const char* name) {
        QTest::mouseClick(dialog->findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
    }

    model::Document doc;
    MemoryFiles files;
    platform::FixedClock clock{{2003, 3, 5, 13, 5, 9}};
    platform::Regional regional;
    desktop::QtUserInterface user;
    platform::Services services{user, user, files, clock, regional, "/app"};
    std::unique_ptr<desktop::frmPwd> dialog;
    ModalScript script;
};

TEST_F(SecuritySettingDialog, listsTheSixKinds) {
    doc.CurrDB20.Passwords[4] = pdb::ApplyPwd("ray");
    show();
    auto* list = dialog->findChild<QTreeWidget*>(QStringLiteral("lstPwd"));
    QStringList labels;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        labels += list->topLevelItem(i)->text(0);
    EXPECT_EQ(labels.join(QLatin1Char('|')),
              QStringLiteral("Tallybook Password:|Record Update Password:|Design Change Password:|View Change "
                             "Password:|Beam Password:|Copy Password:"));
    EXPECT_EQ(state(3), QStringLiteral("Not set"));
    EXPECT_EQ(state(4), QStringLiteral("Set"));
    EXPECT_FALSE(visible("txtNew"));
    EXPECT_FALSE(visible("TxtExist"));
}

TEST_F(SecuritySettingDialog, setsANewPassword) {
    show();
    choose(1);
    EXPECT_EQ(dialog->findChild<QGroupBox*>(QStringLiteral("FrmPassword"))->title(),
              QStringLiteral("Record Update Password:"));
    EXPECT_EQ(hint(), QStringLiteral("Enter New Password and Confirm Password and then Click OK"));
    EXPECT_EQ(defaultButton(*dialog), QStringLiteral("cmdOK"));
    enter("txtNew", "secret");
    enter("txtConfirm", "secret");
    script.expectMessage(QStringLiteral("The Tallybook is now protected with password :secret WARNING: If you forget "
                                        "this password the Tallybook will no longer be accessible"));
    press("cmdOK");
    EXPECT_EQ(doc.CurrDB20.Passwords[1], pdb::ApplyPwd("secret"));
    EXPECT_EQ(state(1), QStringLiteral("Set"));
    EXPECT_FALSE(doc.DocModified);
}

// Two passwords of six foreign letters would be stored as the same six question marks.
TEST_F(SecuritySettingDialog, refusesAPasswordThatCannotBeStored) {
    show();
    choose(1);
    for (const char* field : {"txtNew", "txtConfirm"}) {
        QInputMethodEvent typed;
        typed.setCommitString(QStringLiteral("\u0441\u0435\u043A\u0440\u0435\u0442"));
        QApplication::sendEvent(dialog->findChild<QLineEdit*>(QString::fromLatin1(field)), &typed);
    }
    script.expectMessage(QStringLiteral("The character U+0441 cannot be stored in a Tallybook."));
    press("cmdOK");
    EXPECT_EQ(state(1), QStringLiteral("Not set"));
    EXPECT_EQ(dialog->focusWidget()->objectName(), QStringLiteral("txtNew"));
}

TEST_F(SecuritySettingDialog, aForeignTextIsNotTheOldPassword) {
    doc.CurrDB20.Passwords[2] = pdb::ApplyPwd("??????");
    show();
    choose(2);
    press("cmdDelete");
    QInputMethodEvent typed;
    typed.setCommitString(QStringLiteral("\u043F\u0430\u0440\u043E\u043B\u044C"));
    QApplication::sendEvent(dialog->findChild<QLineEdit*>(QStringLiteral("TxtExist")), &typed);
    script.expectMessage(QStringLiteral("The character U+043F cannot be stored in a Tallybook."));
    press("CmdVerify");
    EXPECT_EQ(state(2), QStringLiteral("Set"));
}

TEST_F(SecuritySettingDialog, aMismatchSelectsTheConfirmation) {
    show();
    choose(0);
    enter("txtNew", "secret");
    enter("txtConfirm", "other");
    script.expectMessage(QStringLiteral("New Password and Confirm Password does not match"));
    press("cmdOK");
    auto* confirm = dialog->findChild<QLineEdit*>(QStringLiteral("txtConfirm"));
    EXPECT_EQ(dialog->focusWidget(), confirm);
    EXPECT_TRUE(confirm->hasSelectedText());
}

TEST_F(SecuritySettingDialog, changesAPasswordAfterVerifyingTheOld) {
    doc.CurrDB20.Passwords[2] = pdb::ApplyPwd("old");
    show();
    choose(2);
    press("cmdChange");
    EXPECT_EQ(hint(), QStringLiteral("Enter existing password and then Click Verify"));
    EXPECT_EQ(defaultButton(*dialog), QStringLiteral("CmdVerify"));
    enter("TxtExist", "wrong");
    script.expectMessage(QStringLiteral("Incorrect password"));
    press("CmdVerify");
    EXPECT_TRUE(dialog->findChild<QLineEdit*>(QStringLiteral("TxtExist"))->hasSelectedText());
    enter("TxtExist", "old");
    press("CmdVerify");
    EXPECT_EQ(hint(), QStringLiteral("Enter New Password and confirm Password and then Click OK"));
    EXPECT_EQ(dialog->focusWidget()->objectName(), QStringLiteral("txtNew"));
    expectNoAccessKeyTwice(*dialog);
}

TEST_F(SecuritySettingDialog, deletesAPassword) {
    doc.CurrDB20.Passwords[2] = pdb::ApplyPwd("old");
    show();
    choose(2);
    press("cmdDelete");
    EXPECT_EQ(hint(), QStringLiteral("Enter existing password and then Click Delete "));
    EXPECT_EQ(dialog->findChild<QPushButton*>(QStringLiteral("CmdVerify"))->text(), QStringLiteral("&Delete"));
    enter("TxtExist", "old");
    script.expectMessage(QStringLiteral("Password deleted"));
    press("CmdVerify");
    EXPECT_EQ(state(2), QStringLiteral("Not set"));
}

TEST_F(SecuritySettingDialog, hasNoPasswordToChangeWhereNoneIsSet) {
    show();
    choose(5);
    script.expectMessage(QStringLiteral("No existing password to change"));
    press("cmdChange");
    EXPECT_EQ(dialog->findChild<QGroupBox*>(QStringLiteral("FrmPassword"))->title(),
              QStringLiteral("Copy Password:"));
    EXPECT_EQ(hint(), QStringLiteral("Enter New Password and Confirm Password and then Click OK"));
    EXPECT_TRUE(visible("txtNew"));
}

TEST_F(SecuritySettingDialog, cancelLeavesTheChoiceAndCloseTheDialog) {
    show();
    choose(0);
    press("cmdCancel");
    EXPECT_FALSE(visible("txtNew"));
    press("cmdClose");
    EXPECT_FALSE(dialog->isVisible());
}

TEST(Splash, showsTheVersionOnTopAndGoesAwayByItself) {
    desktop::frmSplash splash;
    EXPECT_TRUE(splash.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(
        splash.findChild<QLabel*>(QStringLiteral("lblVersion"))->text().startsWith(QStringLiteral("Version 1.0 (0")));
    splash.showFor(0);
    EXPECT_TRUE(splash.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !splash.isVisible(); }));
}

} // namespace
} // namespace tallybook::test

#include "DialogsTest.moc"
