// The core's questions, asked with real windows.
#include "core/pdb/Passwords.h"
#include "desktop/ModalScript.h"
#include "desktop/dialogs/QtUserInterface.h"
#include "desktop/grid/GridView.h"
#include "desktop/grid/QtTextMeasure.h"
#include "desktop/platform/CProgressBar.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;

class Interface : public testing::Test {
protected:
    desktop::QtUserInterface user;
    ModalScript script;
};

struct MessageCase {
    Buttons buttons;
    const char* button;
    Answer answer;
};
constexpr MessageCase kMessageCases[] = {
    {Buttons::Ok, "OK", Answer::Ok},
    {Buttons::OkCancel, "OK", Answer::Ok},
    {Buttons::OkCancel, "Cancel", Answer::Cancel},
    {Buttons::YesNo, "Yes", Answer::Yes},
    {Buttons::YesNo, "No", Answer::No},
    {Buttons::YesNoCancel, "Yes", Answer::Yes},
    {Buttons::YesNoCancel, "No", Answer::No},
    {Buttons::YesNoCancel, "Cancel", Answer::Cancel},
};

TEST_F(Interface, givesTheButtonThatWasPressed) {
    for (const MessageCase& one : kMessageCases) {
        script.expectMessage(QStringLiteral("Sure?"), QString::fromLatin1(one.button));
        EXPECT_EQ(user.message({.text = "Sure?", .icon = Icon::Question, .buttons = one.buttons, .title = {}}),
                  one.answer);
    }
}

TEST_F(Interface, escapeIsTheHarmlessAnswer) {
    const std::pair<Buttons, Answer> cases[] = {{Buttons::Ok, Answer::Ok},
                                                {Buttons::OkCancel, Answer::Cancel},
                                                {Buttons::YesNo, Answer::No},
                                                {Buttons::YesNoCancel, Answer::Cancel}};
    for (const auto& [buttons, answer] : cases) {
        script.expect([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); });
        EXPECT_EQ(user.message({.text = "Sure?", .buttons = buttons, .title = {}}), answer);
    }
}

TEST_F(Interface, showsIconTitleAndDefaultButton) {
    script.expect([](QWidget& window) {
        auto* box = qobject_cast<QMessageBox*>(&window);
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        EXPECT_EQ(box->windowTitle(), QStringLiteral("Clear Date"));
        EXPECT_EQ(box->defaultButton()->text().remove(QLatin1Char('&')), QStringLiteral("No"));
        EXPECT_EQ(box->text(), QStringLiteral("<b>\u20AC</b>"));
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        box->reject();
    });
    user.message({.text = "<b>\x80</b>",
                  .icon = Icon::Warning,
                  .buttons = Buttons::YesNo,
                  .title = "Clear Date",
                  .preferred = Answer::No});
}

TEST_F(Interface, titlesAMessageWithTheProgramsName) {
    script.expect([](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), QStringLiteral("Tallybook Pocket Desktop"));
        window.close();
    });
    user.message({.text = "Hello", .title = {}});
}

TEST_F(Interface, putsTheSplashAwayBeforeItAsks) {
    int calls = 0;
    user.setBeforeAsking([&] { ++calls; });
    script.expectMessage(QStringLiteral("Hello"));
    user.message({.text = "Hello", .title = {}});
    EXPECT_EQ(calls, 1);
}

TEST_F(Interface, theWaitPointerIsOffWhileSomethingIsAsked) {
    user.setPointer(platform::Screen::Pointer::Wait);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    script.expect([](QWidget& window) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        window.close();
    });
    user.message({.text = "Hello", .title = {}});
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    user.setPointer(platform::Screen::Pointer::Default);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Interface, asksForANewNameWithTheSuggestedOne) {
    script.expect([](QWidget& window) {
        auto* dialog = qobject_cast<QFileDialog*>(&window);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Save As Tallybook"));
        EXPECT_EQ(dialog->nameFilters(), QStringList{QStringLiteral("PDB file (*.pdb)")});
        EXPECT_EQ(dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(),
                  QStringLiteral("MS2_New.pdb"));
        QTest::keyClick(dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });
    const auto name = user.askSaveName("Save As Tallybook", "PDB file (*.pdb)|*.pdb", "/tmp/MS2_New.pdb");
    EXPECT_EQ(name, std::filesystem::path("/tmp/MS2_New.pdb"));
}

TEST_F(Interface, aCancelledNameIsNothing) {
    script.expect([](QWidget& window) { window.close(); });
    EXPECT_FALSE(user.askSaveName("Save As Tallybook", "PDB file (*.pdb)|*.pdb", "/tmp"));
}

TEST_F(Interface, aCancelledPasswordIsNothing) {
    script.expect([](QWidget& window) { window.close(); });
    EXPECT_FALSE(user.askPassword("Login", "MS2_Books.pdb"));
}

TEST_F(Interface, aForeignTextIsNobodysPassword) {
    script.expect([](QWidget& login) {
        QInputMethodEvent typed;
        typed.setCommitString(QStringLiteral("\u0441\u0435\u043A\u0440\u0435\u0442"));
        QApplication::sendEvent(login.focusWidget(), &typed);
        QTest::keyClick(login.focusWidget(), Qt::Key_Return);
    });
    const auto typed = user.askPassword("Login", "MS2_Books.pdb");
    ASSERT_TRUE(typed);
    EXPECT_FALSE(pdb::matchPassword20(*typed, pdb::ApplyPwd("??????")));
}

TEST_F(Interface, aFolderThatIsGoneIsNotOffered) {
    const auto folder = [](const char* expected) {
        return [expected](QWidget& window) {
            EXPECT_EQ(qobject_cast<QFileDialog*>(&window)->directory().absolutePath(), QString::fromUtf8(expected));
            window.close();
        };
    };
    const std::string home = QDir::homePath().toStdString();
    script.expect(folder("/usr"));
    user.askOpenName("Browse", "PDB file (*.pdb)|*.pdb", "/usr/is not/there");
    script.expect(folder(home.c_str()));
    user.askOpenName("Browse", "PDB file (*.pdb)|*.pdb", "/is not/there");
    script.expect(folder(home.c_str()));
    user.askOpenName("Browse", "PDB file (*.pdb)|*.pdb", {});
    script.expect(folder("/usr"));
    user.askSaveName("Save As Tallybook", "PDB file (*.pdb)|*.pdb", "/usr/is not/MS2_there.pdb");
}

TEST_F(Interface, progressComesAndGoes) {
    desktop::CProgressBar bar;
    user.setProgressBar(&bar);
    user.progress("Reading record 10 of 40", 10, 41);
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.maximum(), 41);
    EXPECT_EQ(bar.value(), 10);
    EXPECT_EQ(bar.text(), QStringLiteral("Reading record 10 of 40"));
    user.progress("", 0, 0);
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(Interface, progressIsPaintedNowAndThenOnly) {
    desktop::CProgressBar bar;
    user.setProgressBar(&bar);
    for (int value = 0; value < 1000; ++value)
        user.progress("Building record", value, 1000);
    EXPECT_LT(bar.value(), 999); // the last ones came too fast to be shown
}

TEST_F(Interface, theGridStandsStillWhileItIsFrozen) {
    desktop::GridView grid;
    user.setGrid(&grid);
    user.setGridRepainting(false);
    EXPECT_FALSE(grid.viewport()->updatesEnabled());
    user.setGridRepainting(true);
    EXPECT_TRUE(grid.viewport()->updatesEnabled());
}

TEST(TextMeasure, aTextIsAsWideAsItsCharacters) {
    const desktop::GridView grid;
    const desktop::QtTextMeasure measure(grid);
    EXPECT_EQ(measure.textWidth(""), 0);
    EXPECT_GT(measure.textWidth("W"), measure.textWidth("i"));
    EXPECT_LE(measure.textWidth("Waves"), 5 * measure.characterWidth('W'));
    int sum = 0;
    for (const char c : {'W', 'a', 'v', 'e', 's'})
        sum += measure.characterWidth(static_cast<unsigned char>(c));
    EXPECT_LE(measure.textWidth("Waves"), sum);
    EXPECT_GT(measure.screenWidth(), 1440);
}

} // namespace
} // namespace tallybook::test
