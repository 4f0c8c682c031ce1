// The verb expr.
#include "cli/CommandRunner.h"
#include "cli/TestBooks.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

CommandResult check(const std::vector<std::string>& arguments) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    std::vector<std::string> all = {"expr", "check", "MS2_Small.pdb"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return test.run(all);
}

TEST(ExprTest, printsTokensAndDisplay) {
    const CommandResult result = check({"if(Price>=1.50,{Red}'d\xC3\xA9j\xC3\xA0',Prev( Title ))"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "0\t94\t1\tIf (\n"
                          "1\t4\t\tPrice\n"
                          "2\t98\t3\t >= \n"
                          "3\t86\t1.50\t1.50\n"
                          "4\t97\t\t, \n"
                          "5\t89\t1\t{red}\n"
                          "6\t88\td\xC3\xA9j\xC3\xA0\t'd\xC3\xA9j\xC3\xA0'\n"
                          "7\t97\t\t, \n"
                          "8\t101\t\tPrev(Title)\n"
                          "9\t96\t\t)\n"
                          "If (Price >= 1.50, {red}'d\xC3\xA9j\xC3\xA0', Prev(Title))\n");
}

TEST(ExprTest, putsACaretUnderTheError) {
    const CommandResult result = check({"'\xC3\xA9' + Foo * 2"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "'\xC3\xA9' + Foo * 2\n"
                          "      ^\n" +
                              said("MS2_Small.pdb", "There is no field, constant or function \"Foo\"."));
}

TEST(ExprTest, putsTheCaretBehindATextThatEndsTooSoon) {
    EXPECT_EQ(check({"Price\t+"}).err, "Price +\n"
                                       "       ^\n" +
                                           said("MS2_Small.pdb", "A value is missing here."));
}

// What compiles may still have no value: storing it would be refused.
TEST(ExprTest, triesTheExpressionOut) {
    const CommandResult result = check({"Price / 0"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, said("MS2_Small.pdb", "Division by zero."));
    EXPECT_EQ(check({"'abc'"}).code, 0);
    const CommandResult date = check({"'abc'", "--format", "Date"});
    EXPECT_EQ(date.code, 1);
    EXPECT_EQ(date.err, said("MS2_Small.pdb", "The text is no date."));
    EXPECT_EQ(check({"Price", "--format", "Colour"}).code, 2);
}

TEST(ExprTest, takesATextThatBeginsWithAMinus) {
    const CommandResult result = check({"--", "-Price"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "0\t91\t\t-\n1\t4\t\tPrice\n-Price\n");
}

TEST(ExprTest, needsItsOwnVerbAndAText) {
    const CommandTest test;
    test.put("MS2_Small.pdb", smallDatabase());
    EXPECT_EQ(test.run({"expr"}).code, 2);
    EXPECT_EQ(test.run({"expr", "check", "MS2_Small.pdb"}).code, 2);
}

} // namespace
} // namespace tallybook::cli
