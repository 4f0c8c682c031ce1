#include "core/print/RowHeights.h"

#include "print/EvenFont.h"
#include "support/ScriptedUser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

using print::GetNoOfEnter;
using print::kCountEnters;
using testing::ElementsAre;

struct LineCase {
    const char* text;
    double width; // 5 points a character
    int lines;
};

TEST(LinesOfAText, followItsWidthAndItsBreaks) {
    const LineCase cases[] = {
        {"", 50, 1},
        {"ten chars.", 50, 1},              // just fits
        {"eleven chrs", 50, 1 + 3},         // 55 / 50 = 1, no break
        {"eleven chrs", 10, 5 + 3},         // 55 / 10 = 5
        {"one\ntwo", 50, 1 + 2},            // fits, one break
        {"one\r\ntwo", 50, 1 + 2},          // the pair is one break
        {"a\n\n\nb", 50, 3 + 2},            //
        {"twelve chars\nx", 50, 1 + 2 + 1}, // the widest line is 60 points
        {"anything at all", 0, 1},          // a hidden column
    };
    for (const LineCase& row : cases)
        EXPECT_EQ(GetNoOfEnter(row.text, kCountEnters, row.width, evenFont()), row.lines) << row.text;
}

TEST(LinesOfAText, takeTheBreaksThatTheyAreTold) {
    EXPECT_EQ(GetNoOfEnter("one two", 4, 50, evenFont()), 6);
    EXPECT_EQ(GetNoOfEnter("one\ntwo", 0, 50, evenFont()), 1);
}

TEST(RowHeights, areTheHighestOfTheColumnsFromTheThirdOn) {
    model::GridModel grid;
    grid.reset(3);
    grid.setText(2, 2, "one\ntwo"); // column 2 never makes a row higher
    grid.setText(3, 3, "one\ntwo");
    grid.setText(4, 3, "one");
    grid.setText(4, 4, "a\nb\nc");
    ScriptedUser screen;
    const print::TextColumnWidth columns[] = {{1, 50}, {2, 50}, {3, 50}, {4, 50}};
    EXPECT_THAT(print::CalculateHeightOfEachRow(grid, columns, evenFont(), screen), ElementsAre(1, 3, 4));
    EXPECT_EQ(screen.progresses.front(), (ScriptedUser::Progress{"Setting preview records...", 0, 3}));
    EXPECT_EQ(screen.progresses[1].caption, "Setting record 3 of 3");
    EXPECT_TRUE(screen.atRest());
}

TEST(RowHeights, countVisibleRowsAlone) {
    model::GridModel grid;
    grid.reset(3);
    grid.setText(3, 3, "one\ntwo");
    grid.showOnly({3});
    ScriptedUser screen;
    const print::TextColumnWidth columns[] = {{3, 50}};
    EXPECT_THAT(print::CalculateHeightOfEachRow(grid, columns, evenFont(), screen), ElementsAre(3));
}

} // namespace
} // namespace tallybook::test
