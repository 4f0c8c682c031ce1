// The tools of the tests, tried out themselves.
#include "support/TestServices.h"

#include <cerrno>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

using platform::Answer;
using platform::Buttons;
using platform::Message;

TEST(ScriptedUser, answersInTheOrderOfTheScript) {
    ScriptedUser user;
    user.answers = {Answer::Yes, Answer::Cancel};
    EXPECT_EQ(user.message({.text = "one", .buttons = Buttons::YesNo}), Answer::Yes);
    EXPECT_EQ(user.message({.text = "two"}), Answer::Ok);
    EXPECT_EQ(user.message({.text = "three", .buttons = Buttons::YesNoCancel}), Answer::Cancel);
    EXPECT_EQ(user.texts(), (std::vector<std::string>{"one", "two", "three"}));
}

TEST(ScriptedUser, failsTheTestOnAnUnscriptedQuestion) {
    EXPECT_NONFATAL_FAILURE(ScriptedUser().message({.text = "sure?", .buttons = Buttons::YesNo}), "sure?");
    EXPECT_NONFATAL_FAILURE(ScriptedUser().askPassword("Modify", "books"), "Modify");
}

TEST(ScriptedUser, failsTheTestOnAnAnswerThatNobodyAskedFor) {
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedUser user;
            user.answers = {Answer::Yes};
        },
        "not asked for");
}

TEST(MemoryFiles, holdsWhatWasWritten) {
    MemoryFiles files;
    files.addFolder("/home/ann");
    auto file = files.create("/home/ann/a", {});
    ASSERT_TRUE(file);
    files.setLargestWrite(2);
    const platform::Bytes bytes{1, 2, 3};
    EXPECT_EQ(file.value()->write(bytes).value(), 2u);
    EXPECT_EQ(files.bytes("/home/ann/a"), (platform::Bytes{1, 2}));
    EXPECT_TRUE(files.rename("/home/ann/a", "/home/ann/b"));
    EXPECT_EQ(files.readPart("/home/ann/b", 1, 5).value(), platform::Bytes{2});
    EXPECT_EQ(files.list("/home").value(), std::vector<std::filesystem::path>{"ann"});
    EXPECT_EQ(files.read("/home/ann/a").error().number, ENOENT);
    EXPECT_TRUE(files.remove("/home/ann/b"));
    EXPECT_EQ(files.count(), 0u);
}

TEST(MemoryFiles, failsAtTheCallThatIsTold) {
    MemoryFiles files;
    files.put("/a", {1});
    files.failAt(2, EIO);
    EXPECT_TRUE(files.read("/a"));
    const auto failed = files.read("/a");
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().number, EIO);
    EXPECT_NE(failed.error().text.find("/a"), std::string::npos);
    EXPECT_TRUE(files.read("/a"));
}

} // namespace
} // namespace tallybook::test
