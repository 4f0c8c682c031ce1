// Nothing that a terminal obeys gets to it from a file.
#include "cli/frame/VisibleText.h"

#include "SampleBuilder.h"
#include "cli/CommandRunner.h"
#include "cli/frame/NearestWord.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::cli {
namespace {

using model::FieldType;

TEST(VisibleTextTest, writesControlCharactersOut) {
    EXPECT_EQ(visibleText("caf\xC3\xA9 \xE2\x82\xAC"), "caf\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(visibleText("a\x1B[2Jb\x7F"), "a\\x1b[2Jb\\x7f");
    EXPECT_EQ(visibleText("a\nb\rc\td"), "a\\nb\\rc\\td");
    EXPECT_EQ(visibleText("\xC2\x9B"
                          "2J"),
              "\\x9b2J");                                                 // one character that begins a command
    EXPECT_EQ(visibleText("a\x9B\xFF\xE2\x82"), "a\\x9b\\xff\\xe2\\x82"); // no UTF-8
    EXPECT_EQ(visibleText("gpj.\xE2\x80\xAE"
                          "exe"),
              "gpj.\\u202eexe"); // read from right to left
    EXPECT_EQ(visibleText(std::string("a\0b", 3)), "a\\x00b");
}

TEST(VisibleTextTest, keepsAMessageOnOneLine) {
    EXPECT_EQ(visibleLine("Are you sure?\r\n\r\nThis \x1B[1mcannot be undone.\n"),
              "Are you sure? This \\x1b[1mcannot be undone.");
    EXPECT_EQ(visibleLine(""), "");
}

TEST(VisibleTextTest, keepsTheLinesOfABlock) {
    EXPECT_EQ(visibleBlock("a\tb\nc\x1B\n"), "a\tb\nc\\x1b\n");
}

TEST(VisibleTextTest, escapesInJson) {
    EXPECT_EQ(visibleJson("{\n  \"a\": \"\x7F\xC2\x9B\xC3\xA9\"\n}"), "{\n  \"a\": \"\\u007f\\u009b\xC3\xA9\"\n}");
}

TEST(NearestWordTest, isAFewKeysAway) {
    const std::vector<std::string> verbs = {"info", "cells", "check", "convert"};
    EXPECT_EQ(nearestWord("cels", verbs), "cells");
    EXPECT_EQ(nearestWord("chekc", verbs), ""); // two letters that changed places are two keys
    EXPECT_EQ(nearestWord("convrte", verbs), "convert");
    EXPECT_EQ(nearestWord("frobnicate", verbs), "");
}

// A database whose texts do what they can.
platform::Bytes hostile() {
    const std::string bad = "x\x1B]0;title\x07\nrecord 87, byte 1: forged\r\x7F\xC2\x9D";
    samples::SampleBuilder sample("MS2_Hostile");
    sample.addField(FieldType::Text, bad);
    sample.addField(FieldType::List, bad);
    sample.addField(FieldType::Text, bad); // the same name again, which check tells
    sample.addItems(2, {bad.c_str()});
    sample.field(1).Default = bad.substr(0, 9);
    sample.addRecord();
    sample.set(1, bad);
    sample.addView("v\x1B[1m", {1}, 1);
    sample.addFilter("f\x1B[1m", {{1, 'h', "x"}});
    sample.database().Views[0].FilterMask = 0x0800; // a filter that is not there
    sample.database().DBName = "MS2_Hos\x1B[31mtile\nx";
    return sample.build();
}

bool isHarmless(const std::string& text) {
    return std::none_of(text.begin(), text.end(),
                        [](char c) {
                            const auto code = static_cast<unsigned char>(c);
                            return (code < 0x20 && c != '\n' && c != '\t' && c != '\r') || code == 0x7F;
                        }) &&
           text.find("\xC2\x9D") == std::string::npos;
}

TEST(VisibleTextTest, holdsForEveryVerb) {
    const CommandTest test;
    test.put("MS2_Hostile.pdb", hostile());
    const std::vector<std::vector<std::string>> calls = {
        {"info", "MS2_Hostile.pdb"},
        {"info", "MS2_Hostile.pdb", "--json"},
        {"cells", "MS2_Hostile.pdb", "--tsv", "--view", "Show All Fields"},
        {"cells", "MS2_Hostile.pdb", "--json"},
        {"cells", "MS2_Hostile.pdb", "--view", "n\x1B[1m"},
        {"cells", "MS2_Hostile.pdb", "--sort", "n\x1B[1m"},
        {"cells", "MS2_Ho\x1B[31m.pdb"},
        {"find", "MS2_Hostile.pdb", "title"},
        {"check", "MS2_Hostile.pdb"},
        {"dump", "MS2_Hostile.pdb"},
        {"schema", "MS2_Hostile.pdb"},
        {"expr", "check", "MS2_Hostile.pdb", "'\x1B' + \x1B"},
        {"edit", "MS2_Hostile.pdb", "--script", "s\x1B"},
        {"frob\x1Bnicate"},
    };
    for (const auto& call : calls) {
        const CommandResult result = test.run(call);
        EXPECT_TRUE(isHarmless(result.out)) << call[0] << result.out;
        EXPECT_TRUE(isHarmless(result.err)) << call[0] << result.err;
        EXPECT_NE(result.out + result.err, "") << call[0];
    }
}

TEST(VisibleTextTest, aNameForgesNoLineOfCheck) {
    const CommandTest test;
    test.put("MS2_Hostile.pdb", hostile());
    const std::string lines = '\n' + test.run({"check", "MS2_Hostile.pdb"}).out;
    EXPECT_NE(lines.find("has the name of field 1"), std::string::npos) << lines;
    EXPECT_EQ(lines.find("\nrecord 87, byte 1: forged"), std::string::npos) << lines;
}

TEST(VisibleTextTest, holdsForCsvAtATerminal) {
    const CommandTest test;
    test.put("MS2_Hostile.pdb", hostile());
    const std::vector<std::string> call = {"cells", "MS2_Hostile.pdb", "--csv", "--view", "Show All Fields"};
    EXPECT_NE(test.run(call).out.find('\x1B'), std::string::npos); // a program gets the very text
    const std::string shown = test.runAtTerminal(call, "?", "").out;
    EXPECT_TRUE(isHarmless(shown)) << shown;
    EXPECT_NE(shown.find("x\\x1b]0;title\\x07"), std::string::npos) << shown;
    const std::vector<std::string> edit = {"edit", "MS2_Hostile.pdb", "--script", "script"};
    test.put("script", std::string("view \"Show All Fields\"\ngoto 1 @1\ncopy\nshow\n"));
    EXPECT_TRUE(isHarmless(test.runAtTerminal(edit, "?", "").out));
}

} // namespace
} // namespace tallybook::cli
