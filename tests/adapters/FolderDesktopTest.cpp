#include "adapters/FolderDesktop.h"

#include "adapters/PosixFiles.h"
#include "core/handheld/Users.h"
#include "support/TempFolder.h"
#include "support/TestServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::adapters {
namespace {

using handheld::kAlreadyQueued;
using handheld::kQueued;
using platform::Bytes;
using test::getFile;
using test::namesIn;
using test::putFile;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

class FolderDesktopTest : public testing::Test {
protected:
    FolderDesktopTest() {
        for (const char* name : {"Ann/Backup", "Ann/Install", "Bob/BACKUP", "Empty", "NoBackup/Install"})
            fs::create_directories(folder / name);
        putFile(folder / "users.dat", "x");
        fs::create_directories(folder / "File");
        putFile(folder / "File/Backup", "x");
        putFile(elsewhere / "MS2_A.pdb", "first");
    }
    std::vector<std::string> names() {
        std::vector<std::string> all;
        const int count = desktop.UmGetUserCount().value();
        for (int index = 0; index < count; ++index)
            all.push_back(desktop.UmGetUserName(desktop.UmGetUserID(index).value()).value());
        return all;
    }

    test::TempFolder folder;
    test::TempFolder elsewhere;
    PosixFiles files;
    FolderDesktop desktop{files, folder.path()};
};

TEST_F(FolderDesktopTest, usersAreTheFoldersWithABackup) {
    EXPECT_THAT(names(), ElementsAre("Ann", "Bob"));
    EXPECT_EQ(desktop.CmGetCorePath().value(), folder.path());
    EXPECT_EQ(desktop.UmGetUserDirectory(desktop.UmGetUserID(1).value()).value(), "Bob");
}

TEST_F(FolderDesktopTest, namesAreInTheCodePageOfDatabases) {
    fs::create_directories(folder / "Zo\xC3\xAB/Backup");
    EXPECT_THAT(names(), ElementsAre("Ann", "Bob", "Zo\xEB"));
}

TEST_F(FolderDesktopTest, aMissingFolderIsAFaultOrHasNoUsers) {
    FolderDesktop set(files, folder / "gone");
    const auto count = set.UmGetUserCount();
    ASSERT_FALSE(count);
    EXPECT_THAT(count.error().text, HasSubstr("gone"));
    FolderDesktop own(files, folder / "gone", FolderDesktop::Absent::HasNoUsers);
    EXPECT_EQ(own.UmGetUserCount().value(), 0);
    EXPECT_EQ(FolderDesktop(files, folder / "Empty").UmGetUserCount().value(), 0);
}

TEST_F(FolderDesktopTest, installingPutsACopyIntoTheUsersFolder) {
    EXPECT_EQ(desktop.PltInstallFile("Ann", elsewhere / "MS2_A.pdb").value(), kQueued);
    EXPECT_EQ(getFile(folder / "Ann/Install/MS2_A.pdb"), "first");
    EXPECT_EQ(namesIn(folder / "Ann/Install"), "MS2_A.pdb");
    // What waits there stays, whatever becomes of the file.
    putFile(elsewhere / "MS2_A.pdb", "second");
    EXPECT_EQ(desktop.PltInstallFile("Ann", elsewhere / "MS2_A.pdb").value(), kAlreadyQueued);
    EXPECT_EQ(getFile(folder / "Ann/Install/MS2_A.pdb"), "first");
    EXPECT_TRUE(desktop.PltRemoveInstallFile("Ann", elsewhere / "MS2_A.pdb"));
    EXPECT_EQ(namesIn(folder / "Ann/Install"), "");
    EXPECT_TRUE(desktop.PltRemoveInstallFile("Ann", elsewhere / "MS2_A.pdb"));
    EXPECT_EQ(desktop.PltInstallFile("Ann", elsewhere / "MS2_A.pdb").value(), kQueued);
    EXPECT_EQ(getFile(folder / "Ann/Install/MS2_A.pdb"), "second");
    EXPECT_EQ(getFile(elsewhere / "MS2_A.pdb"), "second");
}

TEST_F(FolderDesktopTest, theNameInOtherLettersWaitsAlready) {
    putFile(folder / "Ann/Install/ms2_a.PDB", "older");
    EXPECT_EQ(desktop.PltInstallFile("Ann", elsewhere / "MS2_A.pdb").value(), kAlreadyQueued);
    EXPECT_TRUE(desktop.PltRemoveInstallFile("Ann", elsewhere / "MS2_A.pdb"));
    EXPECT_EQ(namesIn(folder / "Ann/Install"), "");
}

TEST_F(FolderDesktopTest, makesTheInstallFolder) {
    EXPECT_EQ(desktop.PltInstallFile("Bob", elsewhere / "MS2_A.pdb").value(), kQueued);
    EXPECT_EQ(getFile(folder / "Bob/Install/MS2_A.pdb"), "first");
}

TEST_F(FolderDesktopTest, aUserWhoVanishedIsNamed) {
    const auto result = desktop.PltInstallFile("Carl", elsewhere / "MS2_A.pdb");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().text, "The folder of the user \"Carl\" is not there any more.");
    EXPECT_FALSE(desktop.PltRemoveInstallFile("Carl", elsewhere / "MS2_A.pdb"));
}

TEST_F(FolderDesktopTest, usersWhoseCutNamesAreEqualGetNothing) {
    const std::string stem(30, 'n');
    fs::create_directories(folder / (stem + "1") / "Backup");
    EXPECT_EQ(desktop.PltInstallFile(stem, elsewhere / "MS2_A.pdb").value(), kQueued); // found by its cut name
    fs::create_directories(folder / (stem + "2") / "Backup");
    const auto result = desktop.PltInstallFile(stem, elsewhere / "MS2_A.pdb");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().text, "More than one user is called \"" + stem + "\".");
}

TEST_F(FolderDesktopTest, anInstallFolderThatIsAFileIsSaid) {
    putFile(folder / "Bob/Install", "x");
    const auto result = desktop.PltInstallFile("Bob", elsewhere / "MS2_A.pdb");
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("Bob/Install"));
    EXPECT_EQ(getFile(folder / "Bob/Install"), "x");
}

TEST_F(FolderDesktopTest, aMissingFileIsSaidAndNothingIsQueued) {
    EXPECT_FALSE(desktop.PltInstallFile("Ann", elsewhere / "MS2_None.pdb"));
    EXPECT_EQ(namesIn(folder / "Ann/Install"), "");
}

TEST_F(FolderDesktopTest, aLinkInTheQueueLeadsNowhere) {
    for (const char* target : {"victim", "missing"}) {
        putFile(elsewhere / "victim", "precious");
        fs::create_symlink(elsewhere / target, folder / "Ann/Install/MS2_A.pdb");
        EXPECT_EQ(desktop.PltInstallFile("Ann", elsewhere / "MS2_A.pdb").value(), kAlreadyQueued) << target;
        EXPECT_TRUE(desktop.PltRemoveInstallFile("Ann", elsewhere / "MS2_A.pdb")) << target;
        EXPECT_EQ(desktop.PltInstallFile("Ann", elsewhere / "MS2_A.pdb").value(), kQueued) << target;
        EXPECT_FALSE(fs::is_symlink(folder / "Ann/Install/MS2_A.pdb"));
        EXPECT_EQ(getFile(elsewhere / "victim"), "precious");
        EXPECT_FALSE(fs::exists(elsewhere / "missing"));
        EXPECT_TRUE(desktop.PltRemoveInstallFile("Ann", elsewhere / "MS2_A.pdb"));
    }
}

// Each call of the system fails once: what waited before is there whole, or gone, and what is new is whole.
TEST(FolderDesktopFaults, neverLeaveHalfAFileInTheQueue) {
    bool failed = true;
    for (int nth = 1; failed; ++nth) {
        test::MemoryFiles files;
        files.addFolder("/core/Ann/Backup");
        files.addFolder("/core/Ann/Install");
        files.put("/home/MS2_A.pdb", {1, 2, 3});
        FolderDesktop desktop(files, "/core");
        const int before = files.calls();
        files.failAt(nth, 28); // no room
        const auto result = desktop.PltInstallFile("Ann", "/home/MS2_A.pdb");
        failed = files.calls() - before >= nth;
        if (files.has("/core/Ann/Install/MS2_A.pdb")) {
            EXPECT_EQ(files.bytes("/core/Ann/Install/MS2_A.pdb"), (Bytes{1, 2, 3})) << nth;
        } else {
            EXPECT_FALSE(result && result.value() == kQueued) << nth;
        }
        EXPECT_EQ(files.bytes("/home/MS2_A.pdb"), (Bytes{1, 2, 3})) << nth;
    }
}

TEST_F(FolderDesktopTest, theInstallOfADatabaseGoesThroughAllOfIt) {
    test::TestServices t;
    platform::Services services{t.user, t.user, files, t.clock, t.regional, folder.path()};
    handheld::UserList users;
    ASSERT_TRUE(handheld::GetUserIDs(services, desktop, users));
    putFile(folder / "Ann/Install/MS2_A.pdb", "waited");
    EXPECT_EQ(handheld::installToUser(services, desktop, users, elsewhere / "MS2_A.pdb", "MS2_A.pdb", 0,
                                      handheld::ForUsers::All),
              "Ann, Bob");
    for (const char* place : {"Ann/Install", "Ann/Backup", "Bob/Install", "Bob/BACKUP"})
        EXPECT_EQ(getFile(folder / place / "MS2_A.pdb"), "first") << place;
    EXPECT_TRUE(t.user.messages.empty());
}

// The user's copy of the name is a link to somewhere else.
TEST_F(FolderDesktopTest, nothingIsWrittenThroughALinkInTheUsersFolder) {
    test::TestServices t;
    platform::Services services{t.user, t.user, files, t.clock, t.regional, folder.path()};
    handheld::UserList users;
    ASSERT_TRUE(handheld::GetUserIDs(services, desktop, users));
    putFile(elsewhere / "victim", "precious");
    fs::create_symlink(elsewhere / "victim", folder / "Ann/Backup/MS2_A.pdb");
    EXPECT_EQ(handheld::installToUser(services, desktop, users, elsewhere / "MS2_A.pdb", "MS2_A.pdb", 0), "Ann");
    EXPECT_EQ(getFile(elsewhere / "victim"), "precious");
    ASSERT_EQ(t.user.messages.size(), 1U);
    EXPECT_THAT(t.user.messages.front().text, HasSubstr("is a link that leads out of its folder"));
}

} // namespace
} // namespace tallybook::adapters
