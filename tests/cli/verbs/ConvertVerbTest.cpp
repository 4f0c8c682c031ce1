// convert, and what the other verbs make of a file of the older format.
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"
#include "support/OlderFile.h"

#include <gtest/gtest.h>
#include <string>

namespace tallybook::cli {
namespace {

using test::OlderFile;

constexpr const char* kFailed = "Failed to load PDB File";
constexpr const char* kOldFormat = "tallybook: MSA_Books.pdb: Old Format\n";
constexpr const char* kRows = "Categories,Title,Count,Twice\r\nwork,Ada,12,24\r\nUnfiled,Bob,-5,-10\r\n";

OlderFile books() {
    OlderFile file;
    file.name = "MSA_Books";
    file.items(0, {{1, "work"}});
    file.field(1, model::FieldType::Text, "Title");
    file.field(2, model::FieldType::Integer, "Count");
    file.field(3, model::FieldType::Expression, "Twice");
    file.expression(3, {2, '+', 2});
    file.db.LastKey = 2;
    file.record(1, 1, "01 01 03 'Ada' 00 02 02 000C");
    file.record(0, 2, "01 01 03 'Bob' 00 02 02 FFFB");
    return file;
}

TEST(ConvertTest, writesTheDatabaseInThePresentFormat) {
    const CommandTest test;
    test.put("MSA_Books.pdb", books().bytes());
    const CommandResult result = test.run({"convert", "MSA_Books.pdb", "MS2_Books.pdb"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(test.bytes("MSA_Books.pdb"), books().bytes());
    EXPECT_EQ(test.run({"cells", "MS2_Books.pdb"}).out, kRows);
    EXPECT_EQ(test.run({"check", "MS2_Books.pdb"}).out, "");
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
}

TEST(ConvertTest, givesThePresentPrefixAndUnderscores) {
    const CommandTest test;
    test.put("MSA_Books.pdb", books().bytes());
    EXPECT_EQ(test.run({"convert", "MSA_Books.pdb", "MSA_My books.pdb"}).code, 0);
    EXPECT_TRUE(std::filesystem::exists(test.path("MS2_My_books.pdb")));
    EXPECT_FALSE(std::filesystem::exists(test.path("MSA_My books.pdb")));
}

TEST(ConvertTest, replacesAFileWhenToldToOnly) {
    const CommandTest test;
    test.put("MSA_Books.pdb", books().bytes());
    test.put("MS2_Books.pdb", std::string("old"));
    const std::vector<std::string> arguments = {"convert", "MSA_Books.pdb", "MS2_Books.pdb"};
    const CommandResult refused = test.run(arguments);
    EXPECT_EQ(refused.code, 3);
    EXPECT_EQ(refused.err,
              said("MSA_Books.pdb", "File already exist, do you want to overwrite it?") +
                  said("MSA_Books.pdb", "Nobody is there to answer: run the command at a terminal or use --yes."));
    EXPECT_EQ(test.text("MS2_Books.pdb"), "old");
    EXPECT_EQ(test.run({"convert", "MSA_Books.pdb", "MS2_Books.pdb", "--yes"}).code, 0);
    EXPECT_EQ(test.run({"cells", "MS2_Books.pdb"}).out, kRows);
    EXPECT_EQ(test.runAtTerminal(arguments, "(yes/no) ", "no\n").code, 3);
}

TEST(ConvertTest, wantsANameOfThePresentFormat) {
    const CommandTest test;
    test.put("MSA_Books.pdb", books().bytes());
    const CommandResult result = test.run({"convert", "MSA_Books.pdb", "Books.pdb"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, said("Books.pdb", "Filename not valid.  Tallybook file name must start with \"MS2_\"."));
    EXPECT_FALSE(std::filesystem::exists(test.path("Books.pdb")));
}

TEST(ConvertTest, saysWhyAFileIsNotConverted) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    test.put("MSA_Cut.pdb", platform::Bytes(60));
    struct Case {
        const char* older;
        std::string said;
    };
    const Case cases[] = {
        {"MS2_Small.pdb", said("MS2_Small.pdb", "The selected file MS2_Small.pdb is not a Tallybook") +
                              said("MS2_Small.pdb", kFailed)},
        {"MSA_None.pdb", said("MSA_None.pdb", "It cannot be opened: No such file or directory.")},
        {"MSA_Cut.pdb", said("MSA_Cut.pdb", kFailed)},
    };
    for (const Case& c : cases) {
        const CommandResult result = test.run({"convert", c.older, "MS2_Out.pdb"});
        EXPECT_EQ(result.code, 3) << c.older;
        EXPECT_EQ(result.err, c.said) << c.older;
        EXPECT_FALSE(std::filesystem::exists(test.path("MS2_Out.pdb"))) << c.older;
    }
}

TEST(ConvertTest, needsThePassword) {
    const CommandTest test;
    OlderFile file = books();
    file.protect("secret");
    test.put("MSA_Books.pdb", file.bytes());
    test.put("right", std::string("secret\n"));
    test.put("wrong", std::string("secre\n"));
    const CommandResult none = test.run({"convert", "MSA_Books.pdb", "MS2_Out.pdb"});
    EXPECT_EQ(none.code, 3);
    EXPECT_EQ(none.err,
              said("MSA_Books.pdb", "A password is needed: run the command at a terminal or use --password-file.") +
                  said("MSA_Books.pdb", kFailed));
    const CommandResult wrong = test.run({"convert", "MSA_Books.pdb", "MS2_Out.pdb", "--password-file", "wrong"});
    EXPECT_EQ(wrong.code, 3);
    EXPECT_EQ(wrong.err, said("MSA_Books.pdb", "Incorrect password") + said("MSA_Books.pdb", kFailed));
    EXPECT_EQ(test.run({"convert", "MSA_Books.pdb", "MS2_Out.pdb", "--password-file", "right"}).code, 0);
    // The new file has the password, too.
    EXPECT_EQ(test.run({"cells", "MS2_Out.pdb"}).code, 3);
    EXPECT_EQ(test.run({"cells", "MS2_Out.pdb", "--password-file", "right"}).out, kRows);
}

TEST(ConvertTest, warnsOfFormat099) {
    const CommandTest test;
    OlderFile file = books();
    file.db.Version = 7;
    test.put("MSA_Books.pdb", file.bytes());
    const CommandResult result = test.run({"convert", "MSA_Books.pdb", "MS2_Books.pdb"});
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.err.starts_with(
        "tallybook: MSA_Books.pdb: This Tallybook is saved in Tallybook Pocket 0.99 format. If you choose"))
        << result.err;
    EXPECT_EQ(test.run({"cells", "MS2_Books.pdb"}).out, kRows);
}

TEST(ConvertTest, theOtherVerbsOpenAnOlderFileAsItIs) {
    const CommandTest test;
    test.put("MSA_Books.pdb", books().bytes());
    const CommandResult cells = test.run({"cells", "MSA_Books.pdb"});
    EXPECT_EQ(cells.code, 0);
    EXPECT_EQ(cells.err, kOldFormat);
    EXPECT_EQ(cells.out, kRows);
    const CommandResult info = test.run({"info", "MSA_Books.pdb"});
    EXPECT_EQ(info.code, 0);
    EXPECT_EQ(info.err, kOldFormat);
    EXPECT_NE(info.out.find("Name: MS2_Books\nFormat version: 21\nRecords: 2\n"), std::string::npos) << info.out;
    EXPECT_EQ(test.run({"find", "MSA_Books.pdb", "Bob"}).out, "2\tTitle\tBob\n");
}

TEST(ConvertTest, anEditOfAnOlderFileIsSavedBesideIt) {
    const CommandTest test;
    test.put("MSA_Books.pdb", books().bytes());
    const CommandResult result =
        test.run({"edit", "MSA_Books.pdb", "--script", "-"}, "goto 1 Title\ntype \"Eve\"\nkey enter\nsave\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(test.bytes("MSA_Books.pdb"), books().bytes());
    EXPECT_NE(test.run({"cells", "MS2_Books.pdb"}).out.find("work,Eve,12,24"), std::string::npos);
}

} // namespace
} // namespace tallybook::cli
