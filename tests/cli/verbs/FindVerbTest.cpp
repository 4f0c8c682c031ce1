// tallybook find: the cells that match, one a line.
#include "Samples.h"
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

struct FindCase {
    const char* name;
    std::vector<std::string> options; // TEXT among them
    std::string out;
};

class FindVerbTest : public testing::TestWithParam<FindCase> {};

TEST_P(FindVerbTest, printsRecordFieldAndText) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    std::vector<std::string> arguments = {"find", "MS2_Small.pdb"};
    arguments.insert(arguments.end(), GetParam().options.begin(), GetParam().options.end());
    const CommandResult result = test.run(arguments);
    EXPECT_EQ(result.out, GetParam().out);
    EXPECT_EQ(result.code, GetParam().out.empty() ? 1 : 0);
    EXPECT_EQ(result.err, GetParam().out.empty() ? said("MS2_Small.pdb", "Search string not found.") : "");
}

constexpr const char* kNotes = "1\tNotes\tfirst line\\nsecond\\tline \\\\ end\n";

INSTANTIATE_TEST_SUITE_P(
    Searches, FindVerbTest,
    testing::Values(FindCase{"everyHitInOrder", {"second"}, std::string(kNotes) + "2\tTitle\tSecond\n"},
                    FindCase{"backward", {"second", "--backward"}, "2\tTitle\tSecond\n" + std::string(kNotes)},
                    FindCase{"letterCase", {"Second", "--case"}, "2\tTitle\tSecond\n"},
                    FindCase{"accents", {"\xC3\xA9lan"}, "1\tTitle\t\xC3\x89lan, \"quoted\"\n"},
                    FindCase{"wholeWord", {"end", "--whole-word"}, kNotes},
                    FindCase{"expression", {"T*+home", "--expression"}, "3\tCategories\thome\n3\tTitle\tThird\n"},
                    FindCase{"numbersAsShown", {"3.50"}, "1\tPrice\t3.50\n"},
                    FindCase{"checkBoxesHaveNoText", {"Y", "--case"}, ""}, FindCase{"nothing", {"absent"}, ""}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(FindVerb, followsTheRegion) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    EXPECT_EQ(test.run({"find", "MS2_Small.pdb", "3,5", "--region", "de"}).out, "1\tPrice\t3,50\n");
}

TEST(FindVerb, asksForAText) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"find", "MS2_Small.pdb", ""});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, said("", "Please input a search text."));
}

// A question mark stands in many texts, and is no ideograph.
TEST(FindVerb, looksForTheVeryCharacters) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    const CommandResult result = test.run({"find", "MS2_Small.pdb", "日"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, said("", "Character 1, U+65E5, cannot be stored in a Tallybook."));
}

TEST(FindVerb, findsNothingInAnEmptyDatabase) {
    const CommandTest test;
    test.put("MS2_Empty.pdb", samples::empty());
    const CommandResult result = test.run({"find", "MS2_Empty.pdb", "*", "--expression"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, said("MS2_Empty.pdb", "Search string not found."));
}

} // namespace
} // namespace tallybook::cli
