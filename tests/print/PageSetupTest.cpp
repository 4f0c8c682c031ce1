#include "core/print/PageSetup.h"

#include "support/Regions.h"

#include <gtest/gtest.h>

namespace tallybook::test {
namespace {

using print::Side;

struct MarginCase {
    Side side;
    const char* text;
    double inches;
    const char* message;
};

TEST(Margins, takeTheLimitThatWasBroken) {
    const MarginCase cases[] = {
        {Side::Top, "0.5", 0.5, ""},
        {Side::Top, "4", 4, ""},
        {Side::Top, "0.49", 0.5, "The top margin can not be less than 0.50 inches."},
        {Side::Top, "4.01", 4, "The top margin can not be more than 4 inches."},
        {Side::Top, "abc", 0.5, ""},
        {Side::Top, "", 0.5, ""},
        {Side::Top, "1e5", 4, "The top margin can not be more than 4 inches."},
        {Side::Bottom, "0.5", 0.5, ""},
        {Side::Bottom, "4", 4, ""},
        {Side::Bottom, "-1", 0.5, "The bottom margin can not be less than 0.50 inches."},
        {Side::Bottom, "40", 4, "The bottom margin can not be more than 4 inches."},
        {Side::Left, "0.25", 0.25, ""},
        {Side::Left, "3", 3, ""},
        {Side::Left, "0.24", 0.25, "The left margin can not be less than 0.25 inches."},
        {Side::Left, "3.5", 3, "The left margin can not be more than 3 inches."},
        {Side::Left, "a", 0.5, ""},
        {Side::Right, "0.25", 0.25, ""},
        {Side::Right, "0", 0.25, "The right margin can not be less than 0.25 inches."},
        {Side::Right, "3.01", 3, "The right margin can not be more than 3 inches."},
        {Side::Right, "1.234", 1.234, ""},
    };
    for (const MarginCase& row : cases) {
        SCOPED_TRACE(row.text);
        const print::CheckedMargin checked = print::checkMargin(row.side, row.text, {});
        EXPECT_DOUBLE_EQ(checked.inches, row.inches);
        EXPECT_EQ(checked.message, row.message);
    }
}

TEST(Margins, areReadAndShownInTheRegionsWay) {
    platform::Regional german;
    german.decimal = ',';
    german.group = '.';
    EXPECT_DOUBLE_EQ(print::checkMargin(Side::Top, "1,25", german).inches, 1.25);
    EXPECT_EQ(print::marginText(1.25, german), "1,25");
    EXPECT_EQ(print::marginText(0.5, {}), "0.50");
}

TEST(PageSetup, goesThroughItsRememberedForm) {
    print::PageSetup setup;
    setup.paper = 2;
    setup.portrait = false;
    setup.margins = {1, 2, 0.25, 3};
    setup.title = "All of them";
    setup.fileName = setup.memo = setup.gridLines = true;
    print::PrintSpec spec;
    print::storeSetup(setup, spec, {});
    EXPECT_EQ(spec.Paper, "2");
    EXPECT_EQ(spec.Portrait, "0");
    EXPECT_EQ(spec.TopMargin, "1.00");
    EXPECT_EQ(spec.RightMargin, "3.00");
    EXPECT_EQ(spec.FileName, "1");
    EXPECT_EQ(spec.Date, "0");
    EXPECT_EQ(print::setupOf(spec, {}), setup);
}

TEST(PageSetup, anEmptyElementGivesTheDefaults) {
    const print::PageSetup setup = print::setupOf({}, {});
    EXPECT_EQ(setup, print::PageSetup{});
    EXPECT_TRUE(setup.portrait);
    EXPECT_DOUBLE_EQ(setup.margins.left, 0.5);
}

TEST(PageSetup, valuesThatMakeNoSenseAreTheDefaults) {
    print::PrintSpec spec;
    spec.Paper = "3";
    spec.TopMargin = "9";
    spec.LeftMargin = "wide";
    EXPECT_EQ(print::setupOf(spec, {}), print::PageSetup{});
    spec.Paper = "-1";
    EXPECT_EQ(print::setupOf(spec, {}).paper, 0);
}

TEST(PageSetup, aMarginStoredInAnotherRegionIsRead) {
    platform::Regional german;
    german.decimal = ',';
    german.group = '.';
    print::PrintSpec spec;
    spec.TopMargin = "0.75";
    EXPECT_DOUBLE_EQ(print::setupOf(spec, {}).margins.top, 0.75);
    spec.TopMargin = "0,75";
    EXPECT_DOUBLE_EQ(print::setupOf(spec, german).margins.top, 0.75);
}

TEST(PageSetup, listsPapersWithTheirCodesAndSizes) {
    EXPECT_EQ(print::kPapers[0].text, "A4 8.27\" by 11.29\"");
    EXPECT_EQ(print::kPapers[0].code, 9);
    EXPECT_NEAR(print::kPapers[0].width, 595.28, 0.01);
    EXPECT_NEAR(print::kPapers[0].height, 841.89, 0.01);
    EXPECT_EQ(print::kPapers[1].code, 1);
    EXPECT_DOUBLE_EQ(print::kPapers[1].width, 612);
    EXPECT_EQ(print::kPapers[2].code, 5);
    EXPECT_DOUBLE_EQ(print::kPapers[2].height, 1008);
    EXPECT_EQ(print::kZooms[print::kFirstZoom].text, "100%");
    EXPECT_EQ(print::kZooms[0].text, " 25%");
}

} // namespace
} // namespace tallybook::test
