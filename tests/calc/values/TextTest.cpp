#include "core/calc/values/Text.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace tallybook::calc {
namespace {

constexpr auto kBinary = TextCase::Binary;
constexpr auto kFolded = TextCase::Folded;

int sign(int value) {
    return (value > 0) - (value < 0);
}

TEST(Text, changesTheCaseOfLettersThatHaveAPartner) {
    EXPECT_EQ(upper("abc xyz 09"), "ABC XYZ 09");
    EXPECT_EQ(lower("ABC XYZ 09"), "abc xyz 09");
    const std::pair<unsigned char, unsigned char> pairs[] = {
        {0x9A, 0x8A}, {0x9C, 0x8C}, {0x9E, 0x8E}, {0xFF, 0x9F},
        {0xE0, 0xC0}, {0xF6, 0xD6}, {0xF8, 0xD8}, {0xFE, 0xDE},
    };
    for (const auto& [small, large] : pairs) {
        EXPECT_EQ(upper(static_cast<char>(small)), static_cast<char>(large));
        EXPECT_EQ(lower(static_cast<char>(large)), static_cast<char>(small));
    }
}

TEST(Text, leavesLettersWithoutAPartnerAlone) {
    for (const unsigned char c : {0xDF, 0xB5, 0x83, 0xAA, 0xBA, 0xD7, 0xF7, 0x20, 0x40, 0x5B, 0x60, 0x7B, 0x80}) {
        EXPECT_EQ(upper(static_cast<char>(c)), static_cast<char>(c)) << int{c};
        EXPECT_EQ(lower(static_cast<char>(c)), static_cast<char>(c)) << int{c};
    }
}

struct CompareCase {
    const char* a;
    const char* b;
    int binary;
    int folded;
};

TEST(Text, comparesByBytesOrByUpperCase) {
    const CompareCase cases[] = {
        {"abc", "ABC", 1, 0},  {"Zebra", "apple", -1, 1}, {"\xE9", "\xC9", 1, 0},
        {"e", "\xE9", -1, -1}, {"a", "ab", -1, -1},       {"", "a", -1, -1},
        {"", "", 0, 0},        {"\xFF", "a", 1, 1},       {"ab", "AC", 1, -1},
    };
    for (const CompareCase& c : cases) {
        EXPECT_EQ(sign(compareText(c.a, c.b, kBinary)), c.binary) << c.a << " " << c.b;
        EXPECT_EQ(sign(compareText(c.b, c.a, kBinary)), -c.binary) << c.a << " " << c.b;
        EXPECT_EQ(sign(compareText(c.a, c.b, kFolded)), c.folded) << c.a << " " << c.b;
        EXPECT_EQ(sign(compareText(c.b, c.a, kFolded)), -c.folded) << c.a << " " << c.b;
        EXPECT_EQ(equalText(c.a, c.b, kBinary), c.binary == 0);
        EXPECT_EQ(equalText(c.a, c.b, kFolded), c.folded == 0);
    }
}

struct FindCase {
    const char* text;
    const char* needle;
    std::size_t binary;
    std::size_t folded;
};

TEST(Text, findsTheFirstPlaceFromOne) {
    const FindCase cases[] = {
        {"abc", "B", 0, 2},    {"abcabc", "c", 3, 3},        {"abc", "", 1, 1},   {"", "", 1, 1}, {"", "a", 0, 0},
        {"abc", "abcd", 0, 0}, {"\xE9t\xE9", "\xC9T", 0, 1}, {"aXb", "xB", 0, 2},
    };
    for (const FindCase& c : cases) {
        EXPECT_EQ(findText(c.text, c.needle, kBinary), c.binary) << c.text << " " << c.needle;
        EXPECT_EQ(findText(c.text, c.needle, kFolded), c.folded) << c.text << " " << c.needle;
    }
}

TEST(Text, changesLineEnds) {
    EXPECT_EQ(LfToCrLf("one\ntwo\n"), "one\r\ntwo\r\n");
    EXPECT_EQ(LfToCrLf("one\r\ntwo"), "one\r\r\ntwo");
    EXPECT_EQ(CrLfToLf("one\r\ntwo\r\n"), "one\ntwo\n");
    EXPECT_EQ(CrLfToLf("one\rtwo\n"), "one\rtwo\n");
    EXPECT_EQ(CrToCrLf("one\rtwo"), "one\r\ntwo");
    EXPECT_EQ(LfToCrLf(""), "");
    EXPECT_EQ(CrLfToLf(LfToCrLf("a\n\nb")), "a\n\nb");
}

struct QuoteCase {
    const char* text;
    char separator;
    const char* quoted;
};

TEST(Text, quotesWhatADelimitedLineWouldMistake) {
    const QuoteCase cases[] = {
        {"a,b", '\t', "a,b"},
        {"a,b", ',', "\"a,b\""},
        {"a\nb", '\t', "\"a\nb\""},
        {"a\nb", ';', "\"a\nb\""},
        {"a\"b", '\t', "\"a\"b\""},
        {"a\"b", ',', "\"a\"b\""},
        {"", ',', ""},
        {"plain", ',', "plain"},
        {"a\tb", '\t', "a\tb"},
        {"a;b", ';', "a;b"},
    };
    for (const QuoteCase& c : cases)
        EXPECT_EQ(QuoteDelimited(c.text, c.separator), c.quoted) << c.text;
}

} // namespace
} // namespace tallybook::calc
