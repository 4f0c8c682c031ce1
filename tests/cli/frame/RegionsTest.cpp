#include "cli/frame/Regions.h"

#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"

#include <gtest/gtest.h>
#include <string>

namespace tallybook::cli {
namespace {

struct RegionCase {
    std::string name;
    std::string date;   // 2003-01-02
    std::string time;   // 13:05:09
    std::string number; // 1234.5
};

class RegionsTest : public testing::TestWithParam<RegionCase> {};

TEST_P(RegionsTest, writesDatesTimesAndNumbers) {
    const auto region = regionNamed(GetParam().name);
    ASSERT_TRUE(region);
    EXPECT_EQ(calc::shortDate({2003, 1, 2}, *region), GetParam().date);
    EXPECT_EQ(calc::longTime({13, 5, 9}, *region), GetParam().time);
    EXPECT_EQ(calc::formatDecimals(1234.5, 2, *region), GetParam().number);
}

TEST_P(RegionsTest, readsItsOwnDates) {
    const auto region = regionNamed(GetParam().name);
    ASSERT_TRUE(region);
    EXPECT_EQ(calc::readDate(GetParam().date, *region, 2003), calc::dayNumber({2003, 1, 2}));
}

INSTANTIATE_TEST_SUITE_P(All, RegionsTest,
                         testing::Values(RegionCase{"us", "1/2/2003", "1:05:09 PM", "1234.50"},
                                         RegionCase{"uk", "02/01/2003", "13:05:09", "1234.50"},
                                         RegionCase{"de", "02.01.2003", "13:05:09", "1234,50"},
                                         RegionCase{"se", "2003-01-02", "13:05:09", "1234,50"},
                                         RegionCase{"iso", "2003-01-02", "13:05:09", "1234.50"}),
                         [](const auto& tested) { return tested.param.name; });

TEST(RegionsTest, knowsNoOtherNames) {
    EXPECT_FALSE(regionNamed(""));
    EXPECT_FALSE(regionNamed("US"));
    EXPECT_FALSE(regionNamed("fr"));
}

} // namespace
} // namespace tallybook::cli
