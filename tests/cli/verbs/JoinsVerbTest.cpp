// Joins as the command shows and changes them: the loans of the samples, joined to the books.
#include "Samples.h"
#include "cli/CommandRunner.h"

#include <gtest/gtest.h>
#include <string>

namespace tallybook::cli {
namespace {

struct JoinsVerb : testing::Test {
    JoinsVerb() {
        test.put("MS2_Loans.pdb", samples::loans());
        test.put("MS2_Books.pdb", samples::books());
    }
    CommandResult edit(const std::string& script) {
        return test.run({"edit", "MS2_Loans.pdb", "--script", "-"}, script);
    }

    const CommandTest test;
};

TEST_F(JoinsVerb, cellsShowTheOtherDatabase) {
    const CommandResult result = test.run({"cells", "MS2_Loans.pdb"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find("Unfiled,Emma,Jane Austen,7.50,Hanna,5/4/2003,,"), std::string::npos) << result.out;
}

TEST_F(JoinsVerb, cellsShowTheKeysOfAMissingDatabase) {
    std::filesystem::remove(test.path("MS2_Books.pdb"));
    const CommandResult result = test.run({"cells", "MS2_Loans.pdb", "--sort", "Lent to"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err,
              said("MS2_Loans.pdb", "Cannot find external database MS2_Books.pdb. External references for "
                                    "field \"Book\" will not be displayed"));
    EXPECT_NE(result.out.find("Unfiled,2,,,Hanna,5/4/2003,,"), std::string::npos) << result.out;
}

TEST_F(JoinsVerb, invalidDatabaseIsKeptWhateverIsAnswered) {
    test.put("MS2_Books.pdb", std::string("no Tallybook"));
    const CommandResult result = test.run({"cells", "MS2_Loans.pdb", "--yes"});
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.err.find("is invalid.  Would you like to delete it?\n"), std::string::npos) << result.err;
    EXPECT_EQ(test.bytes("MS2_Books.pdb").size(), 12U);
    EXPECT_NE(result.out.find("Unfiled,2,,,Hanna"), std::string::npos);
}

TEST_F(JoinsVerb, scriptPicksARecord) {
    const CommandResult result = edit("goto 1 Book\n"
                                      "pick \"The Time Machine\"\n"
                                      "expect-cell 1 Book \"The Time Machine\"\n"
                                      "expect-cell 1 Author \"H. G. Wells\"\n"
                                      "expect-modified yes\n"
                                      "save\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_NE(test.run({"cells", "MS2_Loans.pdb"}).out.find("Unfiled,The Time Machine,H. G. Wells,4.10,Lotte"),
              std::string::npos);
    EXPECT_EQ(test.run({"check", "MS2_Loans.pdb"}).out, "");
}

TEST_F(JoinsVerb, scriptPicksNoRecord) {
    const CommandResult result = edit("goto 1 Book\n"
                                      "pick \"\"\n"
                                      "expect-cell 1 Book \"\"\n"
                                      "expect-cell 1 Author \"\"\n"
                                      "expect-modified yes\n"
                                      "save\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_NE(test.run({"cells", "MS2_Loans.pdb"}).out.find("Unfiled,,,,Lotte"), std::string::npos);
    EXPECT_EQ(test.run({"check", "MS2_Loans.pdb"}).out, "");
}

TEST_F(JoinsVerb, pickerThatWasClickedTakesAPick) {
    EXPECT_EQ(edit("click 1 Book\npick \"Emma\"\nexpect-cell 1 Author \"Jane Austen\"\nsave\n").code, 0);
    EXPECT_EQ(edit("click 1 Book\nkey escape\nexpect-modified no\n").code, 0);
    EXPECT_EQ(edit("click 1 Book\nadd\n").err,
              said("standard input:2", "the picker of the other database is open: give it a pick, or key escape"));
}

TEST_F(JoinsVerb, scriptSaysWhyNothingCanBePicked) {
    EXPECT_EQ(edit("goto 1 Book\npick \"No such book\"\n").err,
              said("standard input:2", "no such record: No such book"));
    std::filesystem::remove(test.path("MS2_Books.pdb"));
    const CommandResult result = edit("goto 1 Book\npick \"Emma\"\n");
    EXPECT_EQ(result.code, 3);
    EXPECT_NE(result.err.find("standard input:2: Cannot find external database MS2_Books.pdb. External references "
                              "will not be displayed\n"),
              std::string::npos)
        << result.err;
}

} // namespace
} // namespace tallybook::cli
