// users, list, install.
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"
#include "support/TempFolder.h"
#include "support/Variable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace tallybook::cli {
namespace {

using test::getFile;
using test::Variable;
using testing::HasSubstr;
using testing::MatchesRegex;
namespace fs = std::filesystem;

class HandheldVerbs : public testing::Test {
protected:
    HandheldVerbs() {
        for (const char* name : {"palm/Ann/Backup", "palm/Zo\xC3\xAB/Backup", "app", "config"})
            fs::create_directories(t.path(name));
        t.put("MS2_My Books.pdb", smallDatabase());
    }
    CommandResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--handheld", "palm", "--application-folder", "app"});
        return t.run(arguments);
    }
    std::string file(const std::string& name) const { return getFile(t.path(name)); }
    void set(const std::string& settings) const {
        fs::create_directories(t.path("config/tallybook-pocket-desktop"));
        t.put("config/tallybook-pocket-desktop/settings.ini", settings);
    }

    const CommandTest t;
    const Variable home{"HOME", t.path("").c_str()};
    const Variable config{"XDG_CONFIG_HOME", t.path("config").c_str()};
    const Variable wine{"WINEPREFIX", nullptr};
    const Variable jpilot{"JPILOT_HOME", nullptr};
};

TEST_F(HandheldVerbs, usersPrintsNamesAndFolders) {
    const CommandResult result = run({"users"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "Ann\t" + t.path("palm/Ann/Backup").string() + "\nZo\xC3\xAB\t" +
                              t.path("palm/Zo\xC3\xAB/Backup").string() + "\n");
}

TEST_F(HandheldVerbs, aFreshMachineHasAUserOfItsOwn) {
    const CommandResult result = t.run({"users", "--application-folder", "app"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(result.out, MatchesRegex("[^\t\n]+\t" + t.path("app/Handheld").string() + "/[^/]+/Backup\n"));
}

TEST_F(HandheldVerbs, theSettingOfTheWindowCounts) {
    set("[Handheld]\nFolder=" + t.path("palm").string() + "\n");
    EXPECT_THAT(t.run({"users", "--application-folder", "app"}).out, HasSubstr("Ann\t"));
    EXPECT_THAT(t.run({"users", "--application-folder", "app", "--handheld", "own"}).out,
                HasSubstr(t.path("app/Handheld").string()));
}

TEST_F(HandheldVerbs, noUsersIsSaidInTheWordsOfTheWindow) {
    fs::remove_all(t.path("palm"));
    fs::create_directory(t.path("palm"));
    for (const auto& verb : {std::vector<std::string>{"users"}, {"list"}, {"install", "MS2_My Books.pdb"}}) {
        const CommandResult result = run(verb);
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.err, said(verb.size() > 1 ? verb[1] : "",
                                   "You must first HotSync with the Palm Desktop to create a user account before "
                                   "using this application."));
    }
}

TEST_F(HandheldVerbs, aFolderThatIsNotThereIsSaid) {
    const CommandResult result = t.run({"users", "--handheld", "gone", "--application-folder", "app"});
    EXPECT_EQ(result.code, 3);
    EXPECT_THAT(result.err, HasSubstr(t.path("gone").string()));
}

TEST_F(HandheldVerbs, listPrintsTheRowsOfTheOpenDialog) {
    t.put("palm/Ann/Backup/MS2_Small.pdb", smallDatabase());
    t.put("palm/Ann/Backup/other.pdb", smallDatabase());
    const CommandResult ann = run({"list", "--user", "Ann"});
    EXPECT_EQ(ann.code, 0) << ann.err;
    EXPECT_THAT(ann.out, MatchesRegex("MS2_Small.pdb\t[^\t]+\t2.0\t[0-9]+\t[0-9]+/[0-9]+/[0-9]{4} "
                                      "[0-9]+:[0-9]{2}:[0-9]{2} [AP]M\n"));
    EXPECT_THAT(run({"list", "--user", "Ann", "--region", "se"}).out,
                HasSubstr("-")); // 2003-01-02
    EXPECT_EQ(run({"list", "--user", "Zo\xC3\xAB"}).out, "");
    EXPECT_EQ(run({"list"}).out, ann.out); // the first one
    set("[Settings]\nUserID=Zo\xC3\xAB\n");
    EXPECT_EQ(run({"list"}).out, "");
}

TEST_F(HandheldVerbs, anUnknownUserIsRefused) {
    for (const auto& verb : {std::vector<std::string>{"list"}, {"install", "MS2_My Books.pdb"}}) {
        auto arguments = verb;
        arguments.insert(arguments.end(), {"--user", "ann"});
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.err, said(verb.size() > 1 ? verb[1] : "", "There is no user \"ann\"."));
    }
}

TEST_F(HandheldVerbs, installQueuesAndCopies) {
    const CommandResult result = run({"install", "MS2_My Books.pdb", "--user", "Zo\xC3\xAB"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "MS2_My Books.pdb will be installed during next HotSync for username(s) Zo\xC3\xAB.\n");
    EXPECT_EQ(file("palm/Zo\xC3\xAB/Install/MS2_My Books.pdb"), file("MS2_My Books.pdb"));
    EXPECT_EQ(file("palm/Zo\xC3\xAB/Backup/MS2_My_Books.pdb"), file("MS2_My Books.pdb"));
    EXPECT_FALSE(fs::exists(t.path("palm/Ann/Install")));
}

TEST_F(HandheldVerbs, installForAllAsksNobody) {
    const CommandResult result = run({"install", "MS2_My Books.pdb", "--all"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("for username(s) Ann, Zo\xC3\xAB."));
}

TEST_F(HandheldVerbs, installNeedsToKnowForWhom) {
    EXPECT_EQ(run({"install", "MS2_My Books.pdb"}).err,
              said("MS2_My Books.pdb", "There are several users: say --user NAME or --all."));
    EXPECT_EQ(run({"install", "MS2_My Books.pdb", "--all", "--user", "Ann"}).code, 2);
    set("[Settings]\nUserID=Ann\n");
    EXPECT_THAT(run({"install", "MS2_My Books.pdb"}).out, HasSubstr("for username(s) Ann."));
    fs::remove_all(t.path("palm/Ann"));
    EXPECT_THAT(run({"install", "MS2_My Books.pdb"}).out, HasSubstr("for username(s) Zo\xC3\xAB."));
}

TEST_F(HandheldVerbs, installRefusesWhatIsNoTallybook) {
    t.put("Books.pdb", smallDatabase());
    const CommandResult name = run({"install", "Books.pdb", "--all"});
    EXPECT_EQ(name.code, 3);
    EXPECT_EQ(name.err, said("Books.pdb", "No the Valid file for Tallybook Pocket."));
    const CommandResult missing = run({"install", "MS2_None.pdb", "--user", "Ann"});
    EXPECT_EQ(missing.code, 3);
    EXPECT_THAT(missing.err, HasSubstr("MS2_None.pdb"));
    EXPECT_EQ(missing.out, "");
}

TEST_F(HandheldVerbs, installSaysWhomItFailedFor) {
    t.put("palm/Ann/Install", std::string("a file"));
    const CommandResult result = run({"install", "MS2_My Books.pdb", "--all"});
    EXPECT_EQ(result.code, 3);
    EXPECT_THAT(result.err, HasSubstr("palm/Ann/Install"));
    EXPECT_THAT(result.out, HasSubstr("for username(s) Zo\xC3\xAB."));
}

} // namespace
} // namespace tallybook::cli
