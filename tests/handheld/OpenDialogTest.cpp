#include "core/handheld/OpenDialog.h"

#include "document/FileFixture.h"
#include "support/OlderFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::handheld {
namespace {

using platform::Answer;
using platform::Bytes;
using platform::Icon;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kAnn = "/palm/Ann/Backup";
const std::string kBob = "/palm/Bob/Backup";

class OpenDialogTest : public test::FileFixture {
protected:
    OpenDialogTest() {
        t.files.addFolder(kAnn);
        t.files.addFolder(kBob);
        users = {{"Ann", "Bob"}, {kAnn, kBob}, "", "/palm"};
    }

    void makeOlder(const std::filesystem::path& path) {
        test::OlderFile older;
        older.name = path.stem().string();
        t.files.put(path, older.bytes());
    }
    // The same, cut in its properties.
    void makeCut(const std::filesystem::path& path) {
        test::RawFile raw = test::OlderFile().raw();
        raw.records.front().bytes.resize(4);
        t.files.put(path, raw.bytes());
    }
    OpenDialog dialog() {
        return OpenDialog(t, users, [this](const std::string& user) { saved.push_back(user); });
    }
    static std::vector<std::string> names(const OpenDialog& shown) {
        std::vector<std::string> all;
        for (const DatabaseRow& row : shown.ListView1())
            all.push_back(row.file.string());
        return all;
    }
    std::vector<std::string> said() const {
        std::vector<std::string> texts;
        for (const platform::Message& message : t.user.messages)
            texts.push_back(message.text);
        return texts;
    }

    UserList users;
    std::vector<std::string> saved;
};

TEST_F(OpenDialogTest, showsTheCurrentUserOrTheFirst) {
    makeBooks(2, kAnn + "/MS2_A.pdb");
    makeFile(kBob + "/MS2_B.pdb");
    const struct {
        const char* current;
        int position;
        const char* file;
    } cases[] = {{"", 0, "MS2_A.pdb"}, {"Bob", 1, "MS2_B.pdb"}, {"Nobody", 0, "MS2_A.pdb"}};
    for (const auto& [current, position, file] : cases) {
        users.CurrentUser = current;
        const OpenDialog shown = dialog();
        EXPECT_THAT(shown.cmbUser(), ElementsAre("Ann", "Bob"));
        EXPECT_EQ(shown.userPosition(), position) << current;
        EXPECT_THAT(names(shown), ElementsAre(file)) << current;
        EXPECT_EQ(users.CurrentUser, current);
    }
    EXPECT_THAT(saved, IsEmpty());
}

TEST_F(OpenDialogTest, isEmptyWithoutUsers) {
    users = {};
    OpenDialog shown = dialog();
    EXPECT_EQ(shown.userPosition(), -1);
    EXPECT_THAT(names(shown), IsEmpty());
    EXPECT_FALSE(shown.OKButton());
    EXPECT_THAT(said(), ElementsAre("Select a database first"));
}

TEST_F(OpenDialogTest, aChangeOfUserIsSavedAndFillsTheList) {
    makeBooks(2, kBob + "/MS2_B.pdb");
    OpenDialog shown = dialog();
    EXPECT_THAT(names(shown), IsEmpty());
    shown.chooseUser(1);
    EXPECT_EQ(users.CurrentUser, "Bob");
    EXPECT_THAT(saved, ElementsAre("Bob"));
    EXPECT_THAT(names(shown), ElementsAre("MS2_B.pdb"));
    shown.select(0);
    shown.chooseUser(0);
    EXPECT_EQ(shown.selection(), -1);
    EXPECT_THAT(names(shown), IsEmpty());
}

TEST_F(OpenDialogTest, aFolderThatVanishedIsSaidAndShowsNothing) {
    users.UserFolders[1] = "/palm/Gone/Backup";
    OpenDialog shown = dialog();
    shown.chooseUser(1);
    EXPECT_THAT(names(shown), IsEmpty());
    ASSERT_EQ(t.user.messages.size(), 1U);
    EXPECT_THAT(said().front(), testing::HasSubstr("/palm/Gone/Backup"));
    EXPECT_EQ(t.user.messages.front().icon, Icon::Critical);
}

TEST_F(OpenDialogTest, buttonsFollowTheSelection) {
    makeBooks(1, kAnn + "/MS2_Books.pdb");
    makeOlder(kAnn + "/MSA_Old.pdb");
    OpenDialog shown = dialog();
    ASSERT_THAT(names(shown), ElementsAre("MS2_Books.pdb", "MSA_Old.pdb"));
    const struct {
        int row;
        bool ok, convert, del;
    } cases[] = {{-1, true, false, false}, {0, true, false, true}, {1, false, true, true}, {2, true, false, false}};
    for (const auto& [row, ok, convert, del] : cases) {
        shown.select(row);
        EXPECT_EQ(shown.OKButtonEnabled(), ok) << row;
        EXPECT_EQ(shown.CmdConvertEnabled(), convert) << row;
        EXPECT_EQ(shown.CmdDelEnabled(), del) << row;
    }
}

TEST_F(OpenDialogTest, okGivesTheFileOfTheRow) {
    makeBooks(1, kBob + "/MS2_Books.pdb");
    users.CurrentUser = "Bob";
    OpenDialog shown = dialog();
    shown.select(0);
    EXPECT_EQ(shown.OKButton(), (ChosenFile{kBob + "/MS2_Books.pdb", kBob, "MS2_Books.pdb"}));
    EXPECT_EQ(users.CurrentUser, "Bob");
    EXPECT_THAT(saved, IsEmpty());
}

TEST_F(OpenDialogTest, okTakesTheShownUser) {
    makeBooks(1, kAnn + "/MS2_Books.pdb");
    OpenDialog shown = dialog();
    shown.select(0);
    EXPECT_TRUE(shown.OKButton());
    EXPECT_EQ(users.CurrentUser, "Ann");
}

TEST_F(OpenDialogTest, okOfAnOlderFileDoesNothing) {
    makeOlder(kAnn + "/MSA_Old.pdb");
    OpenDialog shown = dialog();
    shown.select(0);
    EXPECT_FALSE(shown.OKButton());
    EXPECT_THAT(said(), IsEmpty());
}

TEST_F(OpenDialogTest, deletingAsksAndMovesToTheTrash) {
    makeBooks(1, kAnn + "/MS2_Books.pdb");
    OpenDialog shown = dialog();
    shown.CmdDel(); // nothing is selected
    EXPECT_THAT(said(), IsEmpty());
    shown.select(0);
    t.user.answers = {Answer::No, Answer::Yes};
    shown.CmdDel();
    EXPECT_TRUE(t.files.has(kAnn + "/MS2_Books.pdb"));
    EXPECT_EQ(shown.selection(), 0);
    shown.CmdDel();
    EXPECT_THAT(said(), ElementsAre("Are you sure that you want to delete file",
                                    "Are you sure that you want to delete file"));
    EXPECT_EQ(t.user.messages.back().buttons, platform::Buttons::YesNo);
    EXPECT_THAT(t.files.trash(), ElementsAre(kAnn + "/MS2_Books.pdb"));
    EXPECT_THAT(names(shown), IsEmpty());
    EXPECT_FALSE(shown.CmdDelEnabled());
}

TEST_F(OpenDialogTest, withoutATrashDeletingForGoodIsAskedFor) {
    makeBooks(1, kAnn + "/MS2_Books.pdb");
    OpenDialog shown = dialog();
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        shown.select(0);
        t.user.messages.clear();
        t.user.answers = {Answer::Yes, answer};
        t.files.failAt(1, 18); // the trash is on another disk
        shown.CmdDel();
        ASSERT_EQ(t.user.messages.size(), 2U);
        EXPECT_THAT(said().back(), testing::HasSubstr("Do you want to delete the file for good?"));
        EXPECT_EQ(t.user.messages.back().preferred, Answer::No);
        EXPECT_EQ(t.files.has(kAnn + "/MS2_Books.pdb"), answer == Answer::No);
    }
    EXPECT_THAT(t.files.trash(), IsEmpty());
}

TEST_F(OpenDialogTest, convertNeedsASelection) {
    OpenDialog shown = dialog();
    shown.CmdConvert();
    EXPECT_THAT(said(), ElementsAre("Select a database first"));
}

TEST_F(OpenDialogTest, convertWritesThePresentFormatBesideTheOlderFile) {
    makeOlder(kAnn + "/msa_Old List.pdb");
    const Bytes before = t.files.bytes(kAnn + "/msa_Old List.pdb");
    OpenDialog shown = dialog();
    shown.select(0);
    shown.CmdConvert();
    EXPECT_THAT(said(), ElementsAre("The Tallybook was converted to \"" + kAnn + "/MS2_Old_List.pdb\"."));
    EXPECT_THAT(names(shown), testing::UnorderedElementsAre("msa_Old List.pdb", "MS2_Old_List.pdb"));
    EXPECT_EQ(t.files.bytes(kAnn + "/msa_Old List.pdb"), before);
    ASSERT_GE(shown.selection(), 0); // what it made can be opened at once
    EXPECT_EQ(shown.OKButton(), (ChosenFile{kAnn + "/MS2_Old_List.pdb", kAnn, "MS2_Old_List.pdb"}));
}

TEST_F(OpenDialogTest, convertAsksBeforeItOverwrites) {
    makeOlder(kAnn + "/MSA_Old.pdb");
    t.files.put(kAnn + "/ms2_old.pdb", {1, 2});
    OpenDialog shown = dialog();
    shown.select(0);
    t.user.answers = {Answer::No};
    shown.CmdConvert();
    EXPECT_THAT(said(), ElementsAre("File already exist, do you want to overwrite it?"));
    EXPECT_EQ(t.files.bytes(kAnn + "/ms2_old.pdb"), (Bytes{1, 2}));
    t.user.answers = {Answer::Yes};
    shown.CmdConvert();
    EXPECT_GT(t.files.bytes(kAnn + "/ms2_old.pdb").size(), 700U);
    EXPECT_FALSE(t.files.has(kAnn + "/MS2_Old.pdb"));
}

TEST_F(OpenDialogTest, convertOfAFileThatCannotBeReadWritesNothing) {
    makeCut(kAnn + "/MSA_Old.pdb");
    OpenDialog shown = dialog();
    shown.select(0);
    shown.CmdConvert();
    EXPECT_THAT(said(), ElementsAre("Failed to load PDB File"));
    EXPECT_FALSE(t.files.has(kAnn + "/MS2_Old.pdb"));
}

TEST_F(OpenDialogTest, browsingGoesByTheName) {
    OpenDialog shown = dialog();
    const struct {
        const char* path;
        bool opens;
        std::vector<std::string> said;
    } cases[] = {
        {"/home/MS2_Books.pdb", true, {}},
        {"/home/ms2_books.pdb", true, {}},
        {"/home/Books.pdb", false, {"No the Valid file for Tallybook Pocket."}},
        {"/MS2_folder/Books.pdb", false, {"No the Valid file for Tallybook Pocket."}},
        {"/home/MS2", false, {"No the Valid file for Tallybook Pocket."}},
        {"/home/MSA_Old.pdb", false, {"Failed to open PDB file"}},
    };
    makeCut("/home/MSA_Old.pdb");
    for (const auto& [path, opens, texts] : cases) {
        t.user.messages.clear();
        const auto chosen = shown.cmdBrowse(path);
        EXPECT_EQ(chosen.has_value(), opens) << path;
        EXPECT_EQ(said(), texts) << path;
    }
    EXPECT_EQ(shown.cmdBrowse("/home/MS2_Books.pdb"), (ChosenFile{"/home/MS2_Books.pdb", "/home", "MS2_Books.pdb"}));
}

TEST_F(OpenDialogTest, browsingToAnOlderFileConvertsItWhereItLies) {
    makeOlder("/home/MSA_Old.pdb");
    OpenDialog shown = dialog();
    EXPECT_FALSE(shown.cmdBrowse("/home/MSA_Old.pdb"));
    EXPECT_TRUE(t.files.has("/home/MS2_Old.pdb"));
    EXPECT_THAT(said(), ElementsAre("The Tallybook was converted to \"/home/MS2_Old.pdb\"."));
}

TEST_F(OpenDialogTest, installIsForOneUserOrForAll) {
    users.CurrentUser = "Bob";
    InstallDialog one(users);
    EXPECT_EQ(one.userPosition, 1);
    EXPECT_EQ(one.InstallTarget(), 65535);
    one.userPosition = 0;
    one.OKButton();
    EXPECT_EQ(one.InstallTarget(), 0);
    EXPECT_EQ(users.CurrentUser, "Ann");

    InstallDialog all(users);
    all.OptAll = true;
    all.userPosition = 1;
    all.OKButton();
    EXPECT_EQ(all.InstallTarget(), 100);
    EXPECT_EQ(users.CurrentUser, "Bob");

    InstallDialog none(users);
    none.userPosition = 0;
    none.CancelButton();
    EXPECT_EQ(none.InstallTarget(), 65535);
    EXPECT_EQ(users.CurrentUser, "Bob");
}

} // namespace
} // namespace tallybook::handheld
