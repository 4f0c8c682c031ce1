#include "core/calc/values/TextFinder.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace tallybook::calc {
namespace {

constexpr auto kNone = std::string_view::npos;
constexpr auto kBinary = TextCase::Binary;
constexpr auto kFolded = TextCase::Folded;

TEST(TextFinder, findsEachPlaceFromOneOnward) {
    const TextFinder finder("an", kFolded);
    EXPECT_EQ(finder.find("Banana, AN end"), 1U);
    EXPECT_EQ(finder.find("Banana, AN end", 2), 3U);
    EXPECT_EQ(finder.find("Banana, AN end", 4), 8U);
    EXPECT_EQ(finder.find("Banana, AN end", 9), kNone);
    EXPECT_EQ(finder.find("", 0), kNone);
    EXPECT_EQ(finder.find("an", 5), kNone);
}

TEST(TextFinder, findsAnEmptyNeedleWhereItLooks) {
    const TextFinder finder("", kBinary);
    EXPECT_EQ(finder.find(""), 0U);
    EXPECT_EQ(finder.find("abc", 3), 3U);
    EXPECT_EQ(finder.find("abc", 4), kNone);
}

TEST(TextFinder, findsANeedleThatIsLongerThanAByteCanCount) {
    const std::string needle = std::string(300, 'a') + "B" + std::string(300, 'c');
    const std::string text = std::string(1000, 'a') + "b" + std::string(500, 'c');
    EXPECT_EQ(TextFinder(needle, kFolded).find(text), 700U);
    EXPECT_EQ(TextFinder(needle, kBinary).find(text), kNone);
}

TEST(TextFinder, findsTheSamePlacesAsFindText) {
    std::mt19937 random(1);
    const auto anyText = [&](std::size_t length) {
        static constexpr std::string_view kCharacters = "abAB\xE9\xC9\x9F\xFF";
        std::string text(random() % (length + 1), ' ');
        for (char& c : text)
            c = kCharacters[random() % kCharacters.size()];
        return text;
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string needle = anyText(4);
        const std::string text = anyText(30);
        for (const TextCase mode : {kBinary, kFolded}) {
            const std::size_t found = TextFinder(needle, mode).find(text);
            ASSERT_EQ(found == kNone ? 0 : found + 1, findText(text, needle, mode)) << text << " / " << needle;
        }
    }
}

TEST(TextFinder, findsNeedlesAcrossTheChunksOfALongText) {
    const std::string needle = "Needle in the hay";
    const TextFinder folded("needle IN the hay", kFolded);
    const TextFinder binary(needle, kBinary);
    for (std::size_t place = 0; place < 200; ++place) {
        std::string text(300, 'n'); // many places begin as the needle does
        text.replace(place, needle.size(), needle);
        EXPECT_EQ(folded.find(text), place);
        EXPECT_EQ(binary.find(text), place);
        EXPECT_EQ(folded.find(text, place + 1), kNone);
        EXPECT_EQ(TextFinder("N", kBinary).find(text), place);
    }
    EXPECT_EQ(folded.find(std::string(1000, 'n')), kNone);
}

TEST(TextFinder, knowsWhetherAnAlphabetCanMakeTheNeedle) {
    std::bitset<256> alphabet;
    for (const char c : std::string_view("0123456789: APM"))
        alphabet.set(static_cast<unsigned char>(c));
    EXPECT_TRUE(TextFinder("5 pm", kFolded).isMadeOf(alphabet));
    EXPECT_FALSE(TextFinder("5 pm", kBinary).isMadeOf(alphabet));
    EXPECT_TRUE(TextFinder("5 PM", kBinary).isMadeOf(alphabet));
    EXPECT_FALSE(TextFinder("5 pt", kFolded).isMadeOf(alphabet));
    EXPECT_TRUE(TextFinder("", kFolded).isMadeOf(alphabet));
}

} // namespace
} // namespace tallybook::calc
