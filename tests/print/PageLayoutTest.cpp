// Pages of small grids, worked out by hand: a letter sheet is 612 x 792 points, half an inch of margin leaves
// 540 x 720, a row is 13 points high (a line of 10 and 3 to spare), a character 5 wide.
#include "core/print/PageLayout.h"

#include "print/EvenFont.h"
#include "support/ScriptedUser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

using print::Align;
using print::Box;
using print::FontRole;
using print::LayoutFault;
using print::Page;
using print::PageLayout;
using print::TextItem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr platform::LocalTime kNow{2003, 3, 5, 13, 5, 9};

struct PageLayoutTest : testing::Test {
    void SetUp() override {
        setup.paper = 1;
        for (int column = 1; column < model::kGridColumns; ++column)
            grid.setColumnWidth(column, 0);
        grid.setColumnWidth(model::kNumberColumn, 480); // 24 points
        grid.setRowHeight(1, 0);                        // no row of types
    }

    // `rows` records with their number as text in each of the given columns, `points` wide each.
    void fill(int rows, std::initializer_list<int> points) {
        grid.reset(rows);
        SetUp();
        int column = 1;
        for (const int width : points) {
            grid.setText(0, column, "Field " + std::to_string(column));
            grid.setColumnWidth(column, width * 20);
            for (int row = 2; row < rows + 2; ++row)
                grid.setText(row, column, std::to_string(column) + "." + std::to_string(row - 1));
            ++column;
        }
    }

    PageLayout layOut() { return PageLayout(grid, setup, evenFontOf, screen); }
    static Page page(const PageLayout& layout, int number) { return layout.page(number, "MS2_Books.pdb", kNow, {}); }
    static std::vector<std::string> texts(const Page& page, FontRole role = FontRole::Cell) {
        std::vector<std::string> all;
        for (const TextItem& item : page.texts)
            if (item.font == role)
                all.push_back(item.text);
        return all;
    }

    model::GridModel grid;
    print::PageSetup setup;
    ScriptedUser screen;
};

TEST_F(PageLayoutTest, rowsThatJustFitTakeOnePage) {
    // 720 / 13 = 55.4: a header row and 54 records.
    fill(54, {100});
    const PageLayout layout = layOut();
    EXPECT_EQ(layout.totalPages(), 1);
    EXPECT_EQ(texts(page(layout, 1)).size(), 54U);
    EXPECT_EQ(texts(page(layout, 1)).back(), "1.54");
    EXPECT_THAT(texts(page(layout, 1), FontRole::Header), ElementsAre("Field 1"));
}

TEST_F(PageLayoutTest, oneRowMoreTakesAnotherPageWithTheHeadersAgain) {
    fill(55, {100});
    const PageLayout layout = layOut();
    EXPECT_EQ(layout.totalPages(), 2);
    EXPECT_THAT(texts(page(layout, 2)), ElementsAre("1.55"));
    EXPECT_THAT(texts(page(layout, 2), FontRole::Header), ElementsAre("Field 1"));
    EXPECT_EQ(page(layout, 2).firstRecord, 55);
}

TEST_F(PageLayoutTest, landscapeSwapsTheSides) {
    setup.portrait = false;
    fill(54, {100});
    const PageLayout layout = layOut();
    EXPECT_DOUBLE_EQ(layout.paperWidth(), 792);
    EXPECT_DOUBLE_EQ(layout.paperHeight(), 612);
    EXPECT_EQ(layout.totalPages(), 2); // 540 / 13 = 41.5: 40 records a page
    EXPECT_EQ(texts(page(layout, 1)).size(), 40U);
}

TEST_F(PageLayoutTest, cellsStandWhereTheyBelong) {
    fill(2, {100, 60});
    grid.setAlignment(2, model::Alignment::RightCentre);
    grid.setColour(3, 2, 255);
    const Page first = page(layOut(), 1);
    ASSERT_EQ(first.texts.size(), 6U);
    EXPECT_EQ(first.texts[0].box, (Box{38, 36, 96, 13})); // header: margin 36, padding 2 at both sides
    EXPECT_EQ(first.texts[5].text, "2.2");
    EXPECT_EQ(first.texts[5].box, (Box{138, 62, 56, 13}));
    EXPECT_EQ(first.texts[5].align, Align::Right);
    EXPECT_EQ(first.texts[5].colour, 255U);
    EXPECT_EQ(first.texts[4].align, Align::Left);
    EXPECT_EQ(first.texts[4].colour, 0U);
}

TEST_F(PageLayoutTest, columnsThatJustFitStayTogether) {
    fill(1, {270, 270});
    EXPECT_EQ(layOut().totalPages(), 1);
    fill(1, {270, 271});
    const PageLayout layout = layOut();
    EXPECT_EQ(layout.totalPages(), 2);
    EXPECT_THAT(texts(page(layout, 1)), ElementsAre("1.1"));
    EXPECT_THAT(texts(page(layout, 2)), ElementsAre("2.1"));
}

TEST_F(PageLayoutTest, pagesGoDownFirstAndThenRight) {
    fill(55, {270, 271});
    setup.pageNumber = true;
    const PageLayout layout = layOut();
    // The page number takes 16 points at the bottom: 704 / 13 = 54.1, 53 records a page.
    EXPECT_EQ(layout.totalPages(), 4);
    EXPECT_EQ(texts(page(layout, 1)).front(), "1.1");
    EXPECT_EQ(texts(page(layout, 2)).front(), "1.54");
    EXPECT_EQ(texts(page(layout, 3)).front(), "2.1");
    EXPECT_EQ(texts(page(layout, 4)).front(), "2.54");
    EXPECT_THAT(texts(page(layout, 3), FontRole::Margin), ElementsAre("3 of 4"));
}

TEST_F(PageLayoutTest, recordNumbersAreRepeatedOnEachColumnOfPages) {
    setup.recordNumber = true;
    fill(1, {490, 27});
    const PageLayout layout = layOut(); // 24 + 490 + 27 = 541
    EXPECT_EQ(layout.totalPages(), 2);
    EXPECT_THAT(texts(page(layout, 1)), ElementsAre("1", "1.1"));
    EXPECT_THAT(texts(page(layout, 2)), ElementsAre("1", "2.1"));
    grid.setColumnWidth(2, 26 * 20);
    EXPECT_EQ(layOut().totalPages(), 1);
}

TEST_F(PageLayoutTest, aColumnWiderThanThePaperIsCutAtItsEdge) {
    fill(1, {1000, 50});
    const PageLayout layout = layOut();
    EXPECT_EQ(layout.totalPages(), 2);
    EXPECT_EQ(page(layout, 1).texts[1].box, (Box{38, 49, 536, 13}));
}

TEST_F(PageLayoutTest, longTextsEndInAnEllipsis) {
    fill(1, {54, 50});
    grid.setText(2, 1, "eleven char"); // 55 points in 50
    EXPECT_EQ(texts(page(layOut(), 1)).front(), "eleven ch\x85");
}

TEST_F(PageLayoutTest, longTextsGoOverSeveralLinesInMemoMode) {
    setup.memo = true;
    fill(2, {50, 50, 54});
    grid.setText(2, 3, "one two three\nfour"); // 65 points in 50 and a break: 1 + 2 + 1 lines
    const PageLayout layout = layOut();
    const Page first = page(layout, 1);
    EXPECT_THAT(texts(first), ElementsAre("1.1", "2.1", "one two", "three", "four", "1.2", "2.2", "3.2"));
    // The second record begins four lines further down.
    EXPECT_DOUBLE_EQ(first.texts[8].box.top, 36 + 13 + 4 * 13);
}

TEST_F(PageLayoutTest, aMemoKeepsTheDefaultHeightOutsideMemoMode) {
    fill(2, {50, 50, 100});
    grid.setText(2, 3, "one\ntwo\nthree");
    const Page first = page(layOut(), 1);
    EXPECT_THAT(texts(first), ElementsAre("1.1", "2.1", "one two three", "1.2", "2.2", "3.2"));
    EXPECT_DOUBLE_EQ(first.texts[6].box.top, 36 + 13 + 13);
}

TEST_F(PageLayoutTest, aRowHigherThanAPageIsCutBetweenTwoLinesAndGoesOn) {
    setup.memo = true;
    fill(2, {50, 50, 100});
    std::string memo = "1";
    for (int line = 2; line <= 60; ++line)
        memo += "\n" + std::to_string(line);
    grid.setText(2, 3, memo); // 59 breaks: 61 lines, 54 on the first page, 7 on the next
    const PageLayout layout = layOut();
    EXPECT_EQ(layout.totalPages(), 2);
    const std::vector<std::string> first = texts(page(layout, 1));
    EXPECT_EQ(first.size(), 2U + 54U);
    EXPECT_EQ(first.back(), "54");
    EXPECT_THAT(texts(page(layout, 2)), ElementsAre("55", "56", "57", "58", "59", "60", "1.2", "2.2", "3.2"));
    EXPECT_EQ(page(layout, 2).firstRecord, 1);
}

TEST_F(PageLayoutTest, aRowThatFitsOnAPageIsNotCut) {
    setup.memo = true;
    fill(54, {50, 50, 100});
    grid.setText(55, 3, "one\ntwo"); // the last one: 3 lines where 1 is left
    const PageLayout layout = layOut();
    EXPECT_EQ(layout.totalPages(), 2);
    EXPECT_THAT(texts(page(layout, 2)), ElementsAre("1.54", "2.54", "one", "two"));
}

TEST_F(PageLayoutTest, fitScalesTheColumnsToOnePage) {
    setup.fit = true;
    fill(1, {400, 275}); // 675 points into 540: 0.8
    const PageLayout layout = layOut();
    EXPECT_EQ(layout.totalPages(), 1);
    EXPECT_DOUBLE_EQ(layout.cellFontPoints(), 7.2);
    EXPECT_DOUBLE_EQ(page(layout, 1).texts[1].box.left, 36 + 320 + 2);
}

TEST_F(PageLayoutTest, fitStopsAtSixPoints) {
    setup.fit = true;
    fill(1, {400, 410}); // 810: two thirds, 6 points
    EXPECT_EQ(layOut().fault(), LayoutFault::None);
    fill(1, {400, 411});
    EXPECT_EQ(layOut().fault(), LayoutFault::TooNarrow);
    EXPECT_EQ(layOut().totalPages(), 0);
}

TEST_F(PageLayoutTest, fitMakesNothingLarger) {
    setup.fit = true;
    fill(1, {100});
    EXPECT_DOUBLE_EQ(layOut().cellFontPoints(), 9);
}

TEST_F(PageLayoutTest, hiddenRowsAndColumnsAreLeftOut) {
    fill(3, {100, 0, 100});
    grid.showOnly({3});
    const PageLayout layout = layOut();
    EXPECT_EQ(layout.totalPages(), 1);
    EXPECT_THAT(texts(page(layout, 1)), ElementsAre("1.2", "3.2"));
}

TEST_F(PageLayoutTest, noVisibleRowIsNoPage) {
    fill(2, {100});
    grid.showOnly({});
    EXPECT_EQ(layOut().totalPages(), 0);
    EXPECT_EQ(layOut().fault(), LayoutFault::None);
}

TEST_F(PageLayoutTest, marginsThatLeaveNoRoomAreTold) {
    // Landscape legal is 612 high; 4 inches at both ends leave 36 points: the title takes 22, a header row and a
    // record 26.
    setup.paper = 2;
    setup.portrait = false;
    setup.margins.top = setup.margins.bottom = 4;
    fill(1, {100});
    EXPECT_EQ(layOut().fault(), LayoutFault::None);
    setup.title = "Books";
    EXPECT_EQ(layOut().fault(), LayoutFault::NoRoom);
    EXPECT_EQ(layOut().totalPages(), 0);
}

TEST_F(PageLayoutTest, titleAndFooterStandInsideTheMargins) {
    setup.title = "Books";
    setup.date = setup.pageNumber = true;
    fill(1, {100});
    const Page first = page(layOut(), 1);
    EXPECT_EQ(first.texts[0].text, "Books");
    EXPECT_EQ(first.texts[0].align, Align::Centre);
    EXPECT_DOUBLE_EQ(first.texts[0].box.top, 36);
    EXPECT_EQ(first.texts[1].text, "05/Mar/2003");
    EXPECT_EQ(first.texts[2].text, "1 of 1");
    EXPECT_EQ(first.texts[2].align, Align::Right);
    EXPECT_NEAR(first.texts[2].box.top + first.texts[2].box.height, 792 - 36, 1e-9);
}

TEST_F(PageLayoutTest, checkBoxesAreDrawnAndNoTextBesideThem) {
    fill(1, {100});
    grid.setText(2, 1, "");
    grid.setPicture(2, 1, model::Picture::CheckOn);
    const Page first = page(layOut(), 1);
    ASSERT_EQ(first.checks.size(), 1U);
    EXPECT_TRUE(first.checks[0].checked);
    EXPECT_NEAR(first.checks[0].box.width, 7.8, 1e-9);
    EXPECT_NEAR(first.checks[0].box.left, 36 + (100 - 7.8) / 2, 1e-9);
    EXPECT_THAT(texts(first), IsEmpty());
}

TEST_F(PageLayoutTest, gridLinesGoRoundEveryCellWhenWanted) {
    fill(2, {100, 60});
    EXPECT_THAT(page(layOut(), 1).lines, IsEmpty());
    setup.gridLines = true;
    const Page first = page(layOut(), 1);
    EXPECT_EQ(first.lines.size(), 4U + 3U); // above, below the header and each row; left and right of each column
    EXPECT_DOUBLE_EQ(first.lines[0].x2, 36 + 160);
    EXPECT_DOUBLE_EQ(first.lines[3].y1, 36 + 3 * 13);
    EXPECT_DOUBLE_EQ(first.lines[6].x1, 36 + 160);
    EXPECT_DOUBLE_EQ(first.lines[6].y2, 36 + 3 * 13);
}

} // namespace
} // namespace tallybook::test
