#include "cli/script/Script.h"

#include <gtest/gtest.h>
#include <string>
#include <variant>
#include <vector>

namespace tallybook::cli {
namespace {

Script parsed(std::string_view text) {
    const auto result = parseScript(text);
    if (const auto* error = std::get_if<ScriptError>(&result)) {
        ADD_FAILURE() << "line " << error->line << ": " << error->text;
        return {};
    }
    return std::get<Script>(result);
}

struct LineCase {
    const char* name;
    std::string text;
    Script script;
};

class ScriptParseTest : public testing::TestWithParam<LineCase> {};

TEST_P(ScriptParseTest, takesTheWords) {
    EXPECT_EQ(parsed(GetParam().text), GetParam().script);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptParseTest,
    testing::Values(LineCase{"nothing", "", {}}, LineCase{"blankLines", "\n  \n\t\n", {}},
                    LineCase{"comment", "# add\n   # add", {}},
                    LineCase{"bareWords", "goto 3 Title", {{1, "goto", {{"3", false}, {"Title", false}}}}},
                    LineCase{
                        "quotedWord", "goto last \"Paid by\"", {{1, "goto", {{"last", false}, {"Paid by", true}}}}},
                    LineCase{"emptyText", "type \"\"", {{1, "type", {{"", true}}}}},
                    LineCase{"escapes", R"(memo "a\nb\t\"c\" \\d")", {{1, "memo", {{"a\nb\t\"c\" \\d", true}}}}},
                    LineCase{"hashInAText", "type \"# 3\"", {{1, "type", {{"# 3", true}}}}},
                    LineCase{"hashInsideAWord", "type a#b", {{1, "type", {{"a#b", false}}}}},
                    LineCase{"commentBehindWords", "add # one more", {{1, "add", {}}}},
                    LineCase{"carriageReturns", "add\r\nsave\r\n", {{1, "add", {}}, {2, "save", {}}}},
                    LineCase{"byteOrderMark",
                             "\xEF\xBB\xBF"
                             "add",
                             {{1, "add", {}}}},
                    LineCase{"countsAllLines", "\n# x\nadd\n\nsave", {{3, "add", {}}, {5, "save", {}}}}),
    [](const auto& tested) { return tested.param.name; });

struct ErrorCase {
    const char* name;
    std::string text;
    int line;
    std::string error;
};

class ScriptErrorTest : public testing::TestWithParam<ErrorCase> {};

TEST_P(ScriptErrorTest, namesTheLine) {
    const auto result = parseScript(GetParam().text);
    const auto* error = std::get_if<ScriptError>(&result);
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->line, GetParam().line);
    EXPECT_EQ(error->text, GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptErrorTest,
    testing::Values(
        ErrorCase{"openText", "add\ntype \"abc", 2, "a text without its closing double quote"},
        ErrorCase{"textAtLineEnd", "type \"a\\", 1, "unknown escape: only \\\" \\\\ \\n \\t stand in a text"},
        ErrorCase{"unknownEscape", R"(type "\q")", 1, "unknown escape: only \\\" \\\\ \\n \\t stand in a text"},
        ErrorCase{"quoteInsideWord", "type a\"b\"", 1, "a double quote in the middle of a word"},
        ErrorCase{"wordBehindText", "type \"a\"b", 1, "a blank is missing behind a text"},
        ErrorCase{"commandAsText", "\"add\"", 1, "a line begins with a command, not with a text"}),
    [](const auto& tested) { return tested.param.name; });

struct CommandCase {
    const char* name;
    std::string text;
    std::string error; // empty: accepted
};

class ScriptCommandTest : public testing::TestWithParam<CommandCase> {};

TEST_P(ScriptCommandTest, checksNameAndArguments) {
    const auto error = checkCommands(parsed(GetParam().text));
    EXPECT_EQ(error ? error->text : "", GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ScriptCommandTest,
    testing::Values(CommandCase{"gotoRow", "goto 1", ""}, CommandCase{"gotoCell", "goto 1 Title", ""},
                    CommandCase{"unknown", "frobnicate", "unknown command: frobnicate"},
                    CommandCase{"caseMatters", "Add", "unknown command: Add"},
                    CommandCase{"tooFew", "type", "usage: type \"TEXT\""},
                    CommandCase{"tooMany", "add 3", "usage: add"},
                    CommandCase{"expectCell", "expect-cell 1 A", "usage: expect-cell ROW FIELD \"TEXT\""}),
    [](const auto& tested) { return tested.param.name; });

TEST(ScriptCommandTest, namesTheLineOfAnUnknownCommand) {
    const auto error = checkCommands(parsed("add\n\nsav\n"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->line, 3);
}

} // namespace
} // namespace tallybook::cli
