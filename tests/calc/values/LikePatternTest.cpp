#include "core/calc/values/LikePattern.h"

#include "core/calc/values/Text.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace tallybook::calc {
namespace {

constexpr auto kBinary = TextCase::Binary;
constexpr auto kFolded = TextCase::Folded;

struct LikeCase {
    const char* text;
    const char* pattern;
    bool binary;
    bool folded;
};

TEST(LikePattern, matchesWholeTextsWithPatterns) {
    const LikeCase cases[] = {
        {"aBBBa", "a*a", true, true},
        {"F", "[A-Z]", true, true},
        {"F", "[!A-Z]", false, false},
        {"a2a", "a#a", true, true},
        {"aM5b", "a[L-P]#[!c-e]", true, true},
        {"BAT123khg", "B?T*", true, true},
        {"CAT123khg", "B?T*", false, false},
        {"a*b", "a[*]b", true, true},
        {"axb", "a[*]b", false, false},
        {"f", "[A-Z]", false, true},
        {"", "*", true, true},
        {"", "[]", true, true},
        {"", "?", false, false},
        {"", "", true, true},
        {"a", "", false, false},
        {"a-b", "a[-x]b", true, true},
        {"a-b", "a[x-]b", true, true},
        {"a-b", "a[!-x]b", false, false},
        {"a]b", "a]b", true, true},
        {"a!b", "a!b", true, true},
        {"a!b", "a[x!]b", true, true},
        {"ab", "a[]b", true, true},
        {"a[b", "a[[]b", true, true},
        {"a?b", "a[?]b", true, true},
        {"a#b", "a[#]b", true, true},
        {"a5b", "a[#]b", false, false},
        {"a[b", "a[b", false, false},   // never closed
        {"b", "[z-a]", false, false},   // descending
        {"x", "*[z-a]*", false, false}, // descending, though nothing else stands against it
        {"abcabd", "*ab?", true, true},
        {"mississippi", "m*iss*ip*i", true, true},
        {"mississippi", "m*iss*ix*i", false, false},
        {"abc", "a*b", false, false},
        {"abc", "***c", true, true},
        {"\xE9", "\xC9", false, true},
        {"k", "[a-cJ-L]", false, true},
        {"two\nlines", "two?lines", true, true},
    };
    for (const LikeCase& c : cases) {
        EXPECT_EQ(like(c.text, c.pattern, kBinary), c.binary) << c.text << " like " << c.pattern;
        EXPECT_EQ(like(c.text, c.pattern, kFolded), c.folded) << c.text << " like " << c.pattern << ", folded";
    }
}

// The same rules one element at a time, trying everything.
bool matchesSlowly(std::string_view text, std::string_view pattern) {
    if (pattern.empty())
        return text.empty();
    if (pattern[0] == '*')
        return matchesSlowly(text, pattern.substr(1)) || (!text.empty() && matchesSlowly(text.substr(1), pattern));
    if (text.empty())
        return false;
    const bool one = pattern[0] == '?' || (pattern[0] == '#' && text[0] >= '0' && text[0] <= '9') ||
                     (pattern[0] == '@' && text[0] != 'a') || pattern[0] == text[0];
    return one && matchesSlowly(text.substr(1), pattern.substr(1));
}

TEST(LikePattern, matchesWhatTryingEverythingMatches) {
    std::mt19937 random(37);
    const auto any = [&](std::string_view characters, std::size_t length) {
        std::string text(random() % (length + 1), ' ');
        for (char& c : text)
            c = characters[random() % characters.size()];
        return text;
    };
    int matched = 0;
    for (int i = 0; i < 40000; ++i) {
        const std::string text = any("ab1", 12);
        const std::string slow = any("**ab?#@", 8);
        std::string pattern;
        for (const char c : slow)
            pattern += c == '@' ? "[!a]" : std::string(1, c);
        const bool expected = matchesSlowly(text, slow);
        ASSERT_EQ(like(text, pattern, kBinary), expected) << text << " like " << pattern;
        ASSERT_EQ(like(upper(text), pattern, kFolded), expected) << text << " like " << pattern << ", folded";
        matched += expected ? 1 : 0;
    }
    EXPECT_GT(matched, 4000);
}

// Elements that fill more than one word of bits.
TEST(LikePattern, findsRunsOfAnyLength) {
    for (const std::size_t length : {1U, 63U, 64U, 65U, 127U, 128U, 129U, 300U}) {
        const std::string run = std::string(length, '?') + "b" + std::string(length, '#');
        const std::string there = std::string(length, 'b') + "b" + std::string(length, '7');
        EXPECT_TRUE(like("xx" + there + "yy", "*" + run + "*", kBinary)) << length;
        EXPECT_TRUE(like("xx" + there + "yy" + there, "*" + run + "*" + run, kBinary)) << length;
        EXPECT_FALSE(like("xx" + there.substr(1), "*" + run + "x*", kBinary)) << length;
        EXPECT_FALSE(like(there.substr(1) + std::string(length, 'b'), "*" + run + "*", kBinary)) << length;
    }
}

// Had each place of the text to be compared with the pattern anew, these would take hours.
TEST(LikePattern, costsNoMoreWhereTheTextIsAlmostThePatternEverywhere) {
    const std::string half(50'000, 'a');
    const std::string text(4'000'000, 'a');
    EXPECT_FALSE(like(text, "*" + half + "b" + half + "*", kBinary));
    EXPECT_FALSE(like(text, "*" + half + "B*", kFolded));
    EXPECT_FALSE(like(text, "*b" + half + "*", kBinary));
    EXPECT_TRUE(like(text + "b" + half, "*" + half + "b" + half + "*", kBinary));
    EXPECT_FALSE(like(text, "*" + std::string(2'000, '?') + "b" + half + "*", kBinary)); // fixed parts first
}

TEST(LikePattern, matchesManyStarsInBoundedTime) {
    const std::string text(2000, 'a');
    EXPECT_FALSE(like(text, "*a*a*a*a*a*a*a*a*b", kBinary));
}

TEST(LikePattern, tellsWhereItCannotMatch) {
    const LikePattern pattern("a?long part*b#", kFolded);
    EXPECT_TRUE(pattern.mayMatchIn("one, a LONG PART, two"));
    EXPECT_FALSE(pattern.mayMatchIn("a long b1"));
    EXPECT_TRUE(LikePattern("*#?[a-c]*", kBinary).mayMatchIn("x"));
    EXPECT_FALSE(LikePattern("[z-a]", kBinary).mayMatchIn("z-a"));
    std::bitset<256> digits;
    for (const char c : std::string_view("0123456789-"))
        digits.set(static_cast<unsigned char>(c));
    EXPECT_TRUE(LikePattern("*5?[a-z]-*", kBinary).mayMatchOf(digits));
    EXPECT_FALSE(LikePattern("*5x*", kBinary).mayMatchOf(digits));
    EXPECT_FALSE(LikePattern("5[", kBinary).mayMatchOf(digits));
}

} // namespace
} // namespace tallybook::calc
