// recalc: the verb, and the command of the edit scripts.
#include "Samples.h"
#include "cli/CommandRunner.h"

#include <gtest/gtest.h>
#include <string>

namespace tallybook::cli {
namespace {

// The first expense: 1 times 645.00 for the rent.
std::string firstTotal(const CommandTest& test, const std::string& file) {
    const std::string cells = test.run({"cells", file, "--tsv"}).out;
    const std::size_t start = cells.find("\tRent\t");
    return start == std::string::npos ? cells : cells.substr(start, cells.find('\n', start) - start);
}

TEST(RecalcTest, savesTheResultsElsewhere) {
    const CommandTest test;
    test.put("MS2_Expenses.pdb", samples::expenses());
    const CommandResult result = test.run({"recalc", "MS2_Expenses.pdb", "--out", "MS2_Out.pdb"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(test.bytes("MS2_Expenses.pdb"), samples::expenses());
    EXPECT_EQ(firstTotal(test, "MS2_Out.pdb"), firstTotal(test, "MS2_Expenses.pdb"));
    EXPECT_TRUE(test.temporaryFolderIsEmpty());
}

TEST(RecalcTest, needsAPlaceForTheResult) {
    const CommandTest test;
    test.put("MS2_Expenses.pdb", samples::expenses());
    EXPECT_EQ(test.run({"recalc", "MS2_Expenses.pdb"}).code, 2);
    EXPECT_EQ(test.run({"recalc", "MS2_Missing.pdb", "--out", "MS2_Out.pdb"}).code, 3);
}

TEST(RecalcTest, aScriptKeepsTheOldResultUntilItRecalculates) {
    const CommandTest test;
    test.put("MS2_Expenses.pdb", samples::expenses());
    const CommandResult result = test.run({"edit", "MS2_Expenses.pdb", "--out", "MS2_Out.pdb", "--script", "-"},
                                          "expect-cell 1 What \"Rent\"\n"
                                          "goto 1 Quantity\n"
                                          "type \"3\"\n"
                                          "goto 1 Price\n"
                                          "expect-cell 1 Total \"645.00\"\n"
                                          "type \"100.50\"\n"
                                          "recalc\n"
                                          "expect-editor none\n"
                                          "expect-cell 1 Total \"301.50\"\n"
                                          "expect-at 1 Price\n");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_NE(firstTotal(test, "MS2_Out.pdb").find("301.50"), std::string::npos);
}

} // namespace
} // namespace tallybook::cli
