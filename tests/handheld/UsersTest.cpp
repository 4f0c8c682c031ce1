#include "core/handheld/Users.h"

#include "handheld/FakeDesktop.h"
#include "support/TestServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::handheld {
namespace {

using test::refusal;
using testing::ElementsAre;
using testing::IsEmpty;

class Users : public testing::Test {
protected:
    Users() {
        for (const char* folder : {"/palm/AnnS/Backup", "/palm/BobT/BACKUP"})
            t.files.addFolder(folder);
        desktop.users = {{"Ann Smith", "AnnS"}, {"Bob", "BobT"}};
    }

    std::vector<std::string> said() const {
        std::vector<std::string> texts;
        for (const platform::Message& message : t.user.messages)
            texts.push_back(message.text);
        return texts;
    }
    // The two users, their folders known.
    void learn() { ASSERT_TRUE(GetUserIDs(t, desktop, users)); }

    test::TestServices t;
    test::FakeDesktop desktop;
    UserList users;
};

TEST_F(Users, haveTheirDatabasesInBackupBelowTheirFolder) {
    users.CurrentUser = "Bob";
    ASSERT_TRUE(GetUserIDs(t, desktop, users));
    EXPECT_EQ(users.UserCount(), 2);
    EXPECT_THAT(users.UserNames, ElementsAre("Ann Smith", "Bob"));
    // In whatever case it is written.
    EXPECT_THAT(users.UserFolders, ElementsAre("/palm/AnnS/Backup", "/palm/BobT/BACKUP"));
    EXPECT_EQ(users.CorePath, "/palm");
    EXPECT_EQ(users.CurrentUser, "Bob");
    EXPECT_THAT(said(), IsEmpty());
}

TEST_F(Users, areReadAnewAndNotAdded) {
    learn();
    desktop.users.pop_back();
    learn();
    EXPECT_THAT(users.UserNames, ElementsAre("Ann Smith"));
    EXPECT_EQ(users.UserFolders.size(), 1U);
}

TEST_F(Users, noneEndsWithTheHintToSync) {
    desktop.users.clear();
    EXPECT_FALSE(GetUserIDs(t, desktop, users));
    EXPECT_THAT(said(), ElementsAre("You must first HotSync with the Palm Desktop to create a user account before "
                                    "using this application."));
}

TEST_F(Users, aCountBelowZeroFails) {
    desktop.count = -1;
    EXPECT_FALSE(GetUserIDs(t, desktop, users));
    EXPECT_THAT(said(), IsEmpty());
    EXPECT_EQ(users.UserCount(), 0);
}

TEST_F(Users, thatCannotBeCountedFailWithTheReason) {
    desktop.fault = refusal("Cannot list the folder \"/palm\": permission denied.");
    EXPECT_FALSE(GetUserIDs(t, desktop, users));
    EXPECT_THAT(said(), ElementsAre("Cannot list the folder \"/palm\": permission denied."));
}

TEST_F(Users, halfAListIsNone) {
    learn();
    desktop.lost = refusal("gone");
    EXPECT_FALSE(GetUserIDs(t, desktop, users));
    EXPECT_EQ(users.UserCount(), 0);
    EXPECT_THAT(users.UserFolders, IsEmpty());
    EXPECT_THAT(said(), ElementsAre("gone"));
}

TEST_F(Users, aNameIsCutByItsBuffer) {
    const struct {
        const char* what;
        std::string name;
        std::string cut;
    } cases[] = {
        {"30 characters", "123456789012345678901234567890", "123456789012345678901234567890"},
        {"31 characters", "1234567890123456789012345678901", "123456789012345678901234567890"},
        {"a terminator", std::string("Ann\0Smith", 9), "Ann"},
        {"blanks at its end", "Ann  ", "Ann  "},
        {"nothing", "", ""},
    };
    for (const auto& [what, name, cut] : cases) {
        desktop.users = {{name, "AnnS"}};
        learn();
        EXPECT_THAT(users.UserNames, ElementsAre(cut)) << what;
    }
}

TEST_F(Users, aLongDirectoryIsNeverCut) {
    const std::string directory(40, 'd');
    desktop.users = {{"Ann", directory}};
    learn();
    EXPECT_THAT(users.UserFolders, ElementsAre("/palm/" + directory + "/Backup"));
}

TEST_F(Users, theCurrentOneHasAPositionAndAFolder) {
    learn();
    EXPECT_EQ(users.currentPosition(), -1);
    EXPECT_EQ(users.currentFolder(), "");
    users.CurrentUser = "Bob";
    EXPECT_EQ(users.currentPosition(), 1);
    EXPECT_EQ(users.currentFolder(), "/palm/BobT/BACKUP");
    users.CurrentUser = "bob";
    EXPECT_EQ(users.currentPosition(), -1);
}

TEST_F(Users, anInstallNeedsAUser) {
    EXPECT_FALSE(InstallFile(t, desktop, "/home/MS2_A.pdb", ""));
    EXPECT_THAT(said(), ElementsAre("User ID not specified.  File not installed"));
    EXPECT_THAT(desktop.calls, IsEmpty());
}

TEST_F(Users, anInstallCallsTwiceInAnyCase) {
    const std::string install = "install Ann /home/MS2_A.pdb";
    const std::string remove = "remove Ann /home/MS2_A.pdb";
    const struct {
        const char* what;
        std::deque<platform::Result<int>> installs;
        std::vector<std::string> calls;
        bool result;
        std::vector<std::string> said;
    } cases[] = {
        {"free", {kQueued, kAlreadyQueued}, {install, install}, true, {}},
        {"queued already", {kAlreadyQueued, kQueued}, {install, remove, install}, true, {}},
        {"another number", {7, 7}, {install, install}, true, {}},
        {"refused once", {refusal("busy"), kQueued}, {install, install}, true, {}},
        {"refused", {refusal("busy"), refusal("still busy")}, {install, install}, false, {"still busy"}},
        {"not queued again", {kAlreadyQueued, refusal("full")}, {install, remove, install}, false, {"full"}},
    };
    for (const auto& [what, installs, calls, result, texts] : cases) {
        t.user.messages.clear();
        desktop.calls.clear();
        desktop.installs = installs;
        EXPECT_EQ(InstallFile(t, desktop, "/home/MS2_A.pdb", "Ann"), result) << what;
        EXPECT_EQ(desktop.calls, calls) << what;
        EXPECT_EQ(said(), texts) << what;
    }
}

TEST_F(Users, whatCannotBeTakenOutOfTheQueueStaysThere) {
    desktop.installs = {kAlreadyQueued};
    desktop.removal = refusal("locked");
    EXPECT_FALSE(InstallFile(t, desktop, "/home/MS2_A.pdb", "Ann"));
    EXPECT_EQ(desktop.calls.size(), 2U);
    EXPECT_THAT(said(), ElementsAre("locked"));
}

TEST_F(Users, installToUserQueuesForOneAndCopiesIntoTheFolder) {
    learn();
    t.files.put("/home/MS2_My Books.pdb", {1, 2, 3});
    EXPECT_EQ(installToUser(t, desktop, users, "/home/MS2_My Books.pdb", "MS2_My Books.pdb", 1), "Bob");
    EXPECT_THAT(desktop.calls,
                ElementsAre("install Bob /home/MS2_My Books.pdb", "install Bob /home/MS2_My Books.pdb"));
    EXPECT_EQ(t.files.bytes("/palm/BobT/BACKUP/MS2_My_Books.pdb"), (platform::Bytes{1, 2, 3}));
    EXPECT_EQ(t.files.count(), 2U);
}

TEST_F(Users, installToUserCopiesForAllButOntoItself) {
    learn();
    t.files.put("/palm/AnnS/Backup/MS2_A.pdb", {1});
    t.files.put("/palm/BobT/BACKUP/ms2_a.PDB", {2});
    EXPECT_EQ(installToUser(t, desktop, users, "/palm/AnnS/Backup/MS2_A.pdb", "MS2_A.pdb", 100, ForUsers::All),
              "Ann Smith, Bob");
    EXPECT_EQ(t.files.bytes("/palm/AnnS/Backup/MS2_A.pdb"), platform::Bytes{1});
    // The file of the name in other letters is the same one.
    EXPECT_EQ(t.files.bytes("/palm/BobT/BACKUP/ms2_a.PDB"), platform::Bytes{1});
    EXPECT_EQ(t.files.count(), 2U);
}

TEST_F(Users, installToUserTakesNoFolderFromTheName) {
    learn();
    t.files.put("/home/MS2_A.pdb", {1});
    installToUser(t, desktop, users, "/home/MS2_A.pdb", "../../MS2_A.pdb", 0);
    EXPECT_TRUE(t.files.has("/palm/AnnS/Backup/MS2_A.pdb"));
    EXPECT_EQ(t.files.count(), 2U);
}

TEST_F(Users, installToUserNamesThoseWhoGotIt) {
    learn();
    t.files.put("/home/MS2_A.pdb", {1});
    desktop.installs = {refusal("x"), refusal("no room")}; // for the first of them
    EXPECT_EQ(installToUser(t, desktop, users, "/home/MS2_A.pdb", "MS2_A.pdb", 0, ForUsers::All), "Bob");
    EXPECT_FALSE(t.files.has("/palm/AnnS/Backup/MS2_A.pdb"));
    EXPECT_TRUE(t.files.has("/palm/BobT/BACKUP/MS2_A.pdb"));
    EXPECT_THAT(said(), ElementsAre("no room"));
}

TEST_F(Users, installToUserSaysWhichCopyFailed) {
    learn();
    users.UserFolders[0] = "/palm/Gone/Backup";
    t.files.put("/home/MS2_A.pdb", {1});
    EXPECT_EQ(installToUser(t, desktop, users, "/home/MS2_A.pdb", "MS2_A.pdb", 0), "Ann Smith");
    ASSERT_EQ(said().size(), 1U);
    EXPECT_THAT(said().front(), testing::HasSubstr("/palm/Gone/Backup/MS2_A.pdb"));
}

TEST_F(Users, installToUserOfNobodyDoesNothing) {
    learn();
    EXPECT_EQ(installToUser(t, desktop, users, "/home/MS2_A.pdb", "MS2_A.pdb", 2), "");
    EXPECT_THAT(desktop.calls, IsEmpty());
}

} // namespace
} // namespace tallybook::handheld
