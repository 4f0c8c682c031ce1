#include "core/handheld/SaveInstall.h"

#include "document/FileFixture.h"
#include "handheld/FakeDesktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::handheld {
namespace {

using document::Outcome;
using platform::Answer;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kAnn = "/palm/Ann/Backup";
const std::string kBob = "/palm/Bob/Backup";

class SaveInstall : public test::FileFixture {
protected:
    SaveInstall() {
        t.files.addFolder(kAnn);
        t.files.addFolder(kBob);
        users = {{"Ann", "Bob"}, {kAnn, kBob}, "Ann", "/palm"};
    }

    // A file of the fixture's records, open and changed.
    void openChanged(const std::string& path) {
        makeBooks(2, path);
        ASSERT_EQ(open(path), Outcome::Done);
        opened->grd.setText(2, model::columnOfSlot(1), "new");
        opened->DocModified = true;
        t.user.messages.clear();
    }
    SaveInstallEnd run(std::uint16_t answer = kInstallCancelled) {
        return saveAndInstall(*opened, t, desktop, users, [this, answer] {
            ++asked;
            return answer;
        });
    }
    std::vector<std::string> said() const {
        std::vector<std::string> texts;
        for (const platform::Message& message : t.user.messages)
            texts.push_back(message.text);
        return texts;
    }

    UserList users;
    test::FakeDesktop desktop;
    int asked = 0;
};

TEST_F(SaveInstall, savesAsksForWhomAndQueues) {
    openChanged(kAnn + "/MS2_Books.pdb");
    EXPECT_EQ(run(1), SaveInstallEnd::Installed);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(opened->DocModified);
    EXPECT_THAT(desktop.calls, ElementsAre("install Bob /palm/Ann/Backup/MS2_Books.pdb",
                                           "install Bob /palm/Ann/Backup/MS2_Books.pdb"));
    EXPECT_EQ(t.files.bytes(kBob + "/MS2_Books.pdb"), t.files.bytes(kAnn + "/MS2_Books.pdb"));
    EXPECT_THAT(said(), ElementsAre("MS2_Books.pdb will be installed during next HotSync for username(s) Bob."));
}

TEST_F(SaveInstall, namesAllUsers) {
    openChanged(kAnn + "/MS2_Books.pdb");
    EXPECT_EQ(run(kInstallToAll), SaveInstallEnd::Installed);
    EXPECT_THAT(said(), ElementsAre("MS2_Books.pdb will be installed during next HotSync for username(s) Ann, Bob."));
}

TEST_F(SaveInstall, doesNotAskWhenThereIsOneUser) {
    users = {{"Ann"}, {kAnn}, "Ann", "/palm"};
    openChanged(kAnn + "/MS2_Books.pdb");
    EXPECT_EQ(run(), SaveInstallEnd::Installed);
    EXPECT_EQ(asked, 0);
    EXPECT_THAT(said(), ElementsAre("MS2_Books.pdb will be installed during next HotSync for username(s) Ann."));
}

TEST_F(SaveInstall, aCancelKeepsTheSavedFile) {
    openChanged(kAnn + "/MS2_Books.pdb");
    EXPECT_EQ(run(kInstallCancelled), SaveInstallEnd::NotInstalled);
    EXPECT_THAT(desktop.calls, IsEmpty());
    EXPECT_FALSE(opened->DocModified);
    EXPECT_THAT(said(), ElementsAre("File will not be installed"));
}

TEST_F(SaveInstall, aReadOnlyDatabaseIsNeitherSavedNorInstalled) {
    openChanged(kAnn + "/MS2_Books.pdb");
    opened->CurrDB20.ReadOnly = 1;
    opened->ReadOnlyInFile = true;
    EXPECT_EQ(run(0), SaveInstallEnd::NotSaved);
    EXPECT_EQ(asked, 0);
    EXPECT_THAT(desktop.calls, IsEmpty());
    EXPECT_THAT(said(), ElementsAre("Tallybook is readonly."));
}

TEST_F(SaveInstall, aNewDatabaseThatGetsNoNameIsNotInstalled) {
    opened = std::make_unique<model::Document>();
    document::CreateNewDatabase(*opened, t);
    t.user.saveNames = {std::nullopt};
    EXPECT_EQ(run(0), SaveInstallEnd::NotSaved);
    EXPECT_THAT(desktop.calls, IsEmpty());
}

TEST_F(SaveInstall, aFailedSaveInstallsNothing) {
    openChanged(kAnn + "/MS2_Books.pdb");
    users.UserFolders[0] = "/palm/Gone/Backup";
    t.user.errorAnswers = {platform::ErrorAnswer::Leave};
    EXPECT_EQ(run(0), SaveInstallEnd::NotSaved);
    EXPECT_TRUE(opened->DocModified);
    EXPECT_THAT(desktop.calls, IsEmpty());
    EXPECT_EQ(opened->CurrFilePath, kAnn + "/MS2_Books.pdb");
}

TEST_F(SaveInstall, whenNobodyGotItOnlyTheReasonIsSaid) {
    openChanged(kAnn + "/MS2_Books.pdb");
    desktop.installs = {test::refusal("busy"), test::refusal("A sync is running.")};
    EXPECT_EQ(run(0), SaveInstallEnd::NotInstalled);
    EXPECT_THAT(said(), ElementsAre("A sync is running."));
}

// Saving into the user's folder.

TEST_F(SaveInstall, aFileFromElsewhereIsSavedIntoTheUsersFolder) {
    openChanged("/home/MS2_Books.pdb");
    const platform::Bytes before = t.files.bytes("/home/MS2_Books.pdb");
    EXPECT_EQ(document::saveDocument(*opened, t, users.currentFolder()), Outcome::Done);
    EXPECT_EQ(opened->CurrFilePath, kAnn + "/MS2_Books.pdb");
    EXPECT_EQ(opened->CurrFolder, kAnn);
    EXPECT_EQ(t.files.bytes("/home/MS2_Books.pdb"), before);
    EXPECT_NE(t.files.bytes(kAnn + "/MS2_Books.pdb"), before);
    // From now on that is the file: nobody is asked.
    opened->DocModified = true;
    EXPECT_EQ(document::saveDocument(*opened, t, users.currentFolder()), Outcome::Done);
    EXPECT_THAT(said(), IsEmpty());
}

TEST_F(SaveInstall, anotherFileOfTheNameIsAskedAbout) {
    openChanged("/home/MS2_Books.pdb");
    t.files.put(kAnn + "/ms2_books.PDB", {1});
    t.user.answers = {Answer::No, Answer::Yes};
    EXPECT_EQ(document::saveDocument(*opened, t, users.currentFolder()), Outcome::Refused);
    EXPECT_EQ(t.files.bytes(kAnn + "/ms2_books.PDB"), platform::Bytes{1});
    EXPECT_TRUE(opened->DocModified);
    EXPECT_EQ(t.user.messages.back().preferred, Answer::No);
    EXPECT_EQ(document::saveDocument(*opened, t, users.currentFolder()), Outcome::Done);
    EXPECT_GT(t.files.bytes(kAnn + "/ms2_books.PDB").size(), 700U);
    EXPECT_THAT(said(), testing::Each("\"" + kAnn + "/ms2_books.PDB\" exists already.  Do you want to replace it?"));
}

TEST_F(SaveInstall, closingSavesIntoTheUsersFolderToo) {
    openChanged("/home/MS2_Books.pdb");
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(document::CheckSaveChanges(*opened, t, users.currentFolder()));
    EXPECT_TRUE(t.files.has(kAnn + "/MS2_Books.pdb"));
}

TEST_F(SaveInstall, withoutAUserTheFileStaysWhereItIs) {
    openChanged("/home/MS2_Books.pdb");
    users.CurrentUser = "Nobody";
    EXPECT_EQ(document::saveDocument(*opened, t, users.currentFolder()), Outcome::Done);
    EXPECT_EQ(opened->CurrFilePath, "/home/MS2_Books.pdb");
}

} // namespace
} // namespace tallybook::handheld
