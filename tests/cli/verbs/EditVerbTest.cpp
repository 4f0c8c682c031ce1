// edit: the verb around the scripts, and the examples of its documentation.
#include "Samples.h"
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"
#include "cli/inspect/FileMap.h"
#include "cli/inspect/RecordCells.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

TEST(EditTest, savesTheResultToOut) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    test.put("script", std::string("goto 2 Count\ntype \"77\"\n"));
    const CommandResult result = test.run({"edit", "MS2_Small.pdb", "--out", "MS2_Out.pdb", "--script", "script"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(test.bytes("MS2_Small.pdb"), smallDatabase());
    const std::string cells = test.run({"cells", "MS2_Out.pdb"}).out;
    EXPECT_NE(cells.find("Unfiled,Second,77,"), std::string::npos) << cells;
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
}

TEST(EditTest, readsTheScriptFromStandardInput) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result =
        test.run({"edit", "MS2_Small.pdb", "--script", "-"}, "goto 2 Count\ntype \"77\"\nsave\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_NE(test.run({"cells", "MS2_Small.pdb"}).out.find("Unfiled,Second,77,"), std::string::npos);
}

// Twelve programs at once, each of which adds a record: what it says it has saved is there.
TEST(EditTest, losesNothingThatItSaysItHasSaved) {
    const CommandTest test;
    constexpr int kAtOnce = 12;
    test.put("MS2_Small.pdb", smallDatabase());
    test.put("script", std::string("add\nsave\n"));
    test.put("run", "cd '" + test.path("").string() + "'\nfor i in $(seq " + std::to_string(kAtOnce) + "); do\n  ('" +
                        CommandTest::command() +
                        "' edit MS2_Small.pdb --script script > err$i 2>&1; "
                        "echo $? > code$i) &\ndone\nwait\n");
    ASSERT_EQ(std::system(("sh '" + test.path("run").string() + "'").c_str()), 0);
    int saved = 0;
    for (int i = 1; i <= kAtOnce; ++i) {
        const std::string number = std::to_string(i);
        const std::string code = test.text("code" + number);
        EXPECT_TRUE(code == "0\n" || code == "3\n") << code << test.text("err" + number);
        EXPECT_EQ(test.text("err" + number).empty(), code == "0\n") << test.text("err" + number);
        saved += code == "0\n" ? 1 : 0;
    }
    EXPECT_GE(saved, 1);
    const std::string info = test.run({"info", "MS2_Small.pdb"}).out;
    EXPECT_NE(info.find("Records: " + std::to_string(3 + saved) + "\n"), std::string::npos) << saved << '\n' << info;
}

TEST(EditTest, writesTheFileOfTheVeryNameThatIsGiven) {
    const CommandTest test;
    test.put("MS2_My Data.pdb", smallDatabase());
    test.put("MS2_My_Data.pdb", smallDatabase());
    const CommandResult result =
        test.run({"edit", "MS2_My Data.pdb", "--script", "-"}, "goto 2 Count\ntype \"77\"\nsave\n");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_NE(test.run({"cells", "MS2_My Data.pdb"}).out.find("Unfiled,Second,77,"), std::string::npos);
    EXPECT_EQ(test.bytes("MS2_My_Data.pdb"), smallDatabase());
}

TEST(EditTest, tellsOfTheOtherFileThatItTook) {
    const CommandTest test;
    test.put("MS2_My_Data.pdb", smallDatabase());
    const CommandResult result = test.run({"edit", "MS2_My Data.pdb", "--script", "-"}, "add\nsave\n");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err,
              said("MS2_My Data.pdb", '"' + test.path("MS2_My Data.pdb").string() + "\" is not there; \"" +
                                          test.path("MS2_My_Data.pdb").string() + "\" was opened."));
    EXPECT_NE(test.bytes("MS2_My_Data.pdb"), smallDatabase());
    EXPECT_FALSE(std::filesystem::exists(test.path("MS2_My Data.pdb")));
}

// It is in the middle of its output then, with the working copy of its pictures in its temporary folder.
TEST(EditTest, takesItsFilesAwayWhenItIsAskedToEnd) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const CommandTest test;
        test.put("MS2_Inventory.pdb", samples::inventory());
        std::string script;
        for (int line = 0; line < 3000; ++line)
            script += "show all\n";
        const int ended = test.runUntilSignal({"edit", "MS2_Inventory.pdb", "--script", "-"}, script, signal,
                                              [&] { EXPECT_FALSE(test.temporaryFolderIsEmpty()); });
        EXPECT_EQ(ended, signal);
        EXPECT_TRUE(test.temporaryFolderIsEmpty()) << signal;
    }
}

TEST(EditTest, saysWhatWasNotSaved) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"edit", "MS2_Small.pdb", "--script", "-"}, "add\n");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("MS2_Small.pdb", "Changes were not saved."));
    EXPECT_EQ(test.bytes("MS2_Small.pdb"), smallDatabase());
}

TEST(EditTest, takesItsLinesFromTheCommandLine) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"edit", "MS2_Small.pdb", "-e", "goto where Title Third", "-e",
                                           "goto current Count", "-e", "type 8", "-e", "save"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_NE(test.run({"cells", "MS2_Small.pdb"}).out.find("home,Third,8,"), std::string::npos);
    EXPECT_EQ(test.run({"edit", "MS2_Small.pdb", "-e", "add", "-e", "frob"}).err,
              said("-e:2", "unknown command: frob"));
    const std::string both = said("edit", "It takes a script: --script FILE, or a line each with -e.");
    EXPECT_EQ(test.run({"edit", "MS2_Small.pdb", "--script", "-", "-e", "add"}).err, both);
    EXPECT_EQ(test.run({"edit", "MS2_Small.pdb"}).err, both);
}

TEST(EditTest, leavesChangesUnsavedWhenToldSo) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"edit", "MS2_Small.pdb", "--discard", "--script", "-"}, "add\n");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(test.bytes("MS2_Small.pdb"), smallDatabase());
}

TEST(EditTest, savesNothingWhenItsOutputCannotBeWritten) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const std::string change = "goto 2 Count\ntype \"77\"\nkey enter\nshow\n";
    const CommandResult saved = test.run({"edit", "MS2_Small.pdb", "--script", "-"}, change + "save\n", "/dev/full");
    EXPECT_EQ(saved.code, 3);
    EXPECT_EQ(saved.err, said("standard input:5", "The output could not be written."));
    const CommandResult out =
        test.run({"edit", "MS2_Small.pdb", "--out", "MS2_Out.pdb", "--script", "-"}, change, "/dev/full");
    EXPECT_EQ(out.code, 3);
    EXPECT_FALSE(std::filesystem::exists(test.path("MS2_Out.pdb")));
    const CommandResult elsewhere =
        test.run({"edit", "MS2_Small.pdb", "--script", "-"}, change + "save-as MS2_Out.pdb\n", "/dev/full");
    EXPECT_EQ(elsewhere.code, 3);
    EXPECT_FALSE(std::filesystem::exists(test.path("MS2_Out.pdb")));
    EXPECT_EQ(test.bytes("MS2_Small.pdb"), smallDatabase());
}

TEST(EditTest, countsAnEditThatIsStillOpen) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"edit", "MS2_Small.pdb", "--script", "-"}, "goto 1 Count\ntype 3\n");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("MS2_Small.pdb", "Changes were not saved."));
}

TEST(EditTest, namesScriptAndLineOfAFailure) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    test.put("my script", std::string("# nothing\nadd\ngoto 9 Title\n"));
    const CommandResult result = test.run({"edit", "MS2_Small.pdb", "--out", "MS2_Out.pdb", "--script", "my script"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("my script:3", "no such record: 9"));
    EXPECT_FALSE(std::filesystem::exists(test.path("MS2_Out.pdb")));
}

TEST(EditTest, refusesWhatCannotBeStoredWithLineAndCharacter) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult typed = test.run({"edit", "MS2_Small.pdb", "--script", "-"},
                                         "goto 1 Title\ntype \"J\xC3\xA1nos Ko\xC5\x91\"\nkey enter\nsave\n");
    EXPECT_EQ(typed.code, 2);
    EXPECT_EQ(typed.err, said("standard input:2", "Character 9, U+0151, cannot be stored in a Tallybook."));
    const CommandResult answer =
        test.run({"edit", "MS2_Small.pdb", "--script", "-"}, "answer yes \"\xE6\x97\xA5\"\n");
    EXPECT_EQ(answer.err, said("standard input:1", "text 2: Character 1, U+65E5, cannot be stored in a Tallybook."));
    EXPECT_EQ(test.bytes("MS2_Small.pdb"), smallDatabase());
}

TEST(EditTest, takesTheNearestCharactersWhenToldSoAndCountsThem) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run(
        {"edit", "MS2_Small.pdb", "--lossy", "--script", "-"},
        "goto 1 Title\ntype \"\xC5\x81ukasz \xE6\x97\xA5\"\nkey enter\ngoto 1 Notes\nmemo \"\xC5\x91\"\nsave\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.err, said("standard input", "3 characters in 2 lines were replaced by the nearest that a "
                                                 "Tallybook can hold, 1 of them by a question mark."));
    const std::string cells = test.run({"cells", "MS2_Small.pdb", "--tsv"}).out;
    EXPECT_NE(cells.find("\tLukasz ?\t"), std::string::npos) << cells;
    EXPECT_NE(cells.find("\to\t"), std::string::npos) << cells;
    EXPECT_EQ(test.run({"edit", "MS2_Small.pdb", "--lossy", "--script", "-"}, "goto 1 Title\n").err, "");
}

TEST(EditTest, refusesAMemoThatIsTooLong) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const std::string start = "goto 1 Notes\nmemo \"";
    const CommandResult tooLong =
        test.run({"edit", "MS2_Small.pdb", "--script", "-"}, start + std::string(4097, 'x') + "\"\nsave\n");
    EXPECT_EQ(tooLong.code, 3);
    EXPECT_EQ(tooLong.err, said("standard input:2", "A memo field may not have more than 4096 characters"));
    EXPECT_EQ(test.bytes("MS2_Small.pdb"), smallDatabase());
    const CommandResult longest =
        test.run({"edit", "MS2_Small.pdb", "--script", "-"}, start + std::string(4096, 'x') + "\"\nsave\n");
    EXPECT_EQ(longest.code, 0) << longest.err;
    const CommandResult cell = test.run({"edit", "MS2_Small.pdb", "--script", "-"},
                                        "goto 1 Title\nmemo \"" + std::string(255, 'x') + "\"\nsave\n");
    EXPECT_EQ(cell.err, said("standard input:2", "a cell takes at most 254 characters"));
}

TEST(EditTest, refusesAPasswordThatNoneCanBe) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    test.put("password", std::string("s\xE6\x97\xA5\n"));
    for (const std::vector<std::string>& verb :
         std::vector<std::vector<std::string>>{{"cells"}, {"edit", "--script", "-"}}) {
        std::vector<std::string> arguments = verb;
        arguments.insert(arguments.end(), {"MS2_Locked.pdb", "--password-file", "password"});
        const CommandResult result = test.run(arguments);
        EXPECT_NE(result.code, 0);
        EXPECT_EQ(result.err,
                  said("MS2_Locked.pdb", "The password: Character 2, U+65E5, cannot be stored in a Tallybook."));
    }
}

TEST(EditTest, runsNothingOfAScriptThatMakesNoSense) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult unknown = test.run({"edit", "MS2_Small.pdb", "--script", "-"}, "add\nsave\nfrobnicate\n");
    EXPECT_EQ(unknown.code, 2);
    EXPECT_EQ(unknown.err, said("standard input:3", "unknown command: frobnicate"));
    const CommandResult open = test.run({"edit", "MS2_Small.pdb", "--script", "-"}, "add\nsave\ntype \"abc\n");
    EXPECT_EQ(open.code, 2);
    EXPECT_EQ(open.err, said("standard input:3", "a text without its closing double quote"));
    EXPECT_EQ(test.bytes("MS2_Small.pdb"), smallDatabase());
}

TEST(EditTest, answersWithYesWhenToldSo) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    EXPECT_EQ(test.run({"edit", "MS2_Small.pdb", "--script", "-"}, "delete\n").code, 3);
    EXPECT_EQ(test.run({"edit", "MS2_Small.pdb", "--yes", "--script", "-"}, "delete\nexpect-records 2\nsave\n").code,
              0);
}

TEST(EditTest, usesThePasswordFileForChangesToo) {
    const CommandTest test;
    test.put("MS2_Locked.pdb", lockedDatabase());
    test.put("password", std::string("secret\n"));
    const std::vector<std::string> arguments = {"edit",     "MS2_Locked.pdb", "--password-file",
                                                "password", "--script",       "-"};
    const CommandResult refused = test.run(arguments, "click 1 Count\n");
    EXPECT_EQ(refused.code, 3);
    EXPECT_EQ(refused.err, said("standard input:1", "Incorrect password"));
    EXPECT_EQ(test.run(arguments, "password \"change\"\nclick 1 Count\nexpect-editor \"12\"\nkey escape\n").code, 0);
}

// The pictures of a file's records, in order.
std::vector<platform::Bytes> pictures(const platform::Bytes& file) {
    std::vector<platform::Bytes> all;
    for (const ListEntry& entry : mapFile(file).entries) {
        if (entry.record < model::kFixedRecords)
            continue;
        for (const RecordCell& cell : walkRecord(file, entry.bytes, {}).cells)
            if (cell.type == static_cast<std::uint8_t>(model::FieldType::Image)) {
                const platform::ByteSpan bytes = cell.picture.of(file);
                all.emplace_back(bytes.begin(), bytes.end());
            }
    }
    return all;
}

TEST(EditTest, keepsAPictureThroughTwoSaves) {
    const CommandTest test;
    test.put("MS2_Inventory.pdb", samples::inventory());
    const CommandResult result =
        test.run({"edit", "MS2_Inventory.pdb", "--script", "-"},
                 "answer yes\ndelete\nsave\nanswer yes\ndelete\nsave\nexpect-cell 2 Picture \" {Image}\"\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(test.run({"check", "MS2_Inventory.pdb"}).out, "");
    // The first two records, both with pictures, are gone; the others have theirs.
    std::vector<platform::Bytes> expected = pictures(samples::inventory());
    ASSERT_GT(expected.size(), 2U);
    expected.erase(expected.begin(), expected.begin() + 2);
    EXPECT_EQ(pictures(test.bytes("MS2_Inventory.pdb")), expected);
}

// The documentation ------------------------------------------------------------------------------------------

// What stands between "```script" and "```" in docs/edit-scripts.md, one text for each.
std::vector<std::string> documentedScripts() {
    std::ifstream file(std::string(TALLYBOOK_SOURCE_DIR) + "/docs/edit-scripts.md");
    std::vector<std::string> scripts;
    bool inside = false;
    for (std::string line; std::getline(file, line);) {
        if (inside && line == "```")
            inside = false;
        else if (inside)
            scripts.back() += line + '\n';
        else if (line == "```script") {
            inside = true;
            scripts.emplace_back();
        }
    }
    return scripts;
}

TEST(EditDocumentationTest, hasExamplesThatRun) {
    const std::vector<std::string> scripts = documentedScripts();
    EXPECT_GE(scripts.size(), 5U);
    for (const std::string& script : scripts) {
        const CommandTest test;
        test.put("MS2_Books.pdb", samples::books());
        const CommandResult result =
            test.run({"edit", "MS2_Books.pdb", "--out", "MS2_Out.pdb", "--script", "-"}, script);
        EXPECT_EQ(result.code, 0) << script << result.err;
        EXPECT_EQ(test.run({"check", "MS2_Out.pdb"}).out, "") << script;
    }
}

} // namespace
} // namespace tallybook::cli
