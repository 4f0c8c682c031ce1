#include "desktop/main/Program.h"

#include "desktop/ModalScript.h"
#include "desktop/dialogs/QtUserInterface.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

TEST(Program, refusesASecondInstance) {
    const QTemporaryDir folder;
    desktop::QtUserInterface user;
    ModalScript script;
    const desktop::Instance first(folder.path().toStdString(), user);
    EXPECT_TRUE(first.mayRun());
    script.expectMessage(QStringLiteral("Tallybook Pocket Desktop is already running"));
    const desktop::Instance second(folder.path().toStdString(), user);
    EXPECT_FALSE(second.mayRun());
}

TEST(Program, startsWhereNoLockCanBeHad) {
    desktop::QtUserInterface user;
    const desktop::Instance only("/no/such/folder", user);
    EXPECT_TRUE(only.mayRun());
}

TEST(Program, startsAgainAfterTheFirstHasEnded) {
    const QTemporaryDir folder;
    desktop::QtUserInterface user;
    { const desktop::Instance first(folder.path().toStdString(), user); }
    const desktop::Instance again(folder.path().toStdString(), user);
    EXPECT_TRUE(again.mayRun());
}

} // namespace
} // namespace tallybook::test
