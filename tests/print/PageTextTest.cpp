#include "core/print/PageText.h"

#include "print/EvenFont.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

using print::HeaderFooter;
using testing::ElementsAre;

constexpr platform::LocalTime kNow{2003, 3, 5, 13, 5, 9};

TEST(TextsAroundAPage, standOnlyWhereTheyAreWanted) {
    print::PageSetup setup;
    EXPECT_EQ(print::SetHeaderFooter(setup, "MS2_Books.pdb", kNow, {}, 2, 17), HeaderFooter{});
    setup.title = "My books";
    setup.date = setup.pageNumber = true;
    EXPECT_EQ(print::SetHeaderFooter(setup, "MS2_Books.pdb", kNow, {}, 2, 17),
              (HeaderFooter{"My books", "05/Mar/2003", "2 of 17"}));
    setup.fileName = true;
    EXPECT_EQ(print::SetHeaderFooter(setup, "MS2_Books.pdb", kNow, {}, 2, 17).title, "MS2_Books.pdb - My books");
    setup.title.clear();
    EXPECT_EQ(print::SetHeaderFooter(setup, "MS2_Books.pdb", kNow, {}, 2, 17).title, "MS2_Books.pdb");
}

TEST(WrappedText, breaksAtBlanksAndInsideLongWords) {
    EXPECT_THAT(print::wrapText("", 50, evenFont()), ElementsAre(""));
    EXPECT_THAT(print::wrapText("ten chars.", 50, evenFont()), ElementsAre("ten chars."));
    EXPECT_THAT(print::wrapText("ten chars. more", 50, evenFont()), ElementsAre("ten chars.", "more"));
    EXPECT_THAT(print::wrapText("one two three", 40, evenFont()), ElementsAre("one two", "three"));
    EXPECT_THAT(print::wrapText("abcdefghijklm", 25, evenFont()), ElementsAre("abcde", "fghij", "klm"));
    EXPECT_THAT(print::wrapText("a\r\n\nb\n", 25, evenFont()), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(print::wrapText("ab", 1, evenFont()), ElementsAre("a", "b"));
}

TEST(ElidedText, endsInAnEllipsisWhereItDoesNotFit) {
    EXPECT_EQ(print::elideText("ten chars.", 50, evenFont()), "ten chars.");
    EXPECT_EQ(print::elideText("eleven chrs", 50, evenFont()), "eleven ch\x85");
    EXPECT_EQ(print::elideText("one\r\ntwo", 50, evenFont()), "one two");
    EXPECT_EQ(print::elideText("abc", 7, evenFont()), "\x85");
    EXPECT_EQ(print::elideText("", 0, evenFont()), "");
}

} // namespace
} // namespace tallybook::test
