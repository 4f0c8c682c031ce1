#include "core/forms/FormGeometry.h"

#include <gtest/gtest.h>

namespace tallybook::forms {
namespace {

using What = Hit::What;

FormBuilder withTabs(int tabs, int startRow) {
    FormBuilder builder;
    builder.tabs = tabs;
    builder.startRow = startRow;
    return builder;
}

TEST(FormGeometry, withoutTabsTwelveRowsFillTheScreen) {
    const FormGeometry geometry(withTabs(0, 3), 0);
    EXPECT_EQ(geometry.height(), 160);
    EXPECT_EQ(geometry.baseRows(), 12);
    EXPECT_EQ(geometry.row({false, 0}), (Box{0, 16, 160, 12}));
    EXPECT_EQ(geometry.row({false, 11}), (Box{0, 148, 160, 12}));
    EXPECT_EQ(geometry.strip(), Box());
    EXPECT_FALSE(geometry.isShown({true, 0}));
}

// A strip at row 3 (from 0) hides base rows 3 to 11; its own rows stand under it.
TEST(FormGeometry, stripHidesTheRowsUnderIt) {
    const FormGeometry geometry(withTabs(4, 3), 1);
    EXPECT_TRUE(geometry.isShown({false, 2}));
    EXPECT_FALSE(geometry.isShown({false, 3}));
    EXPECT_EQ(geometry.strip(), (Box{0, 52, 160, 12}));
    EXPECT_EQ(geometry.tab(2), (Box{40, 52, 40, 12}));
    EXPECT_EQ(geometry.row({true, 0}), (Box{0, 64, 160, 12}));
    EXPECT_EQ(geometry.height(), 16 + (3 + 1 + 12) * 12);
}

TEST(FormGeometry, stripMayBeginAtTheFirstRow) {
    const FormGeometry geometry(withTabs(1, 0), 1);
    EXPECT_EQ(geometry.baseRows(), 0);
    EXPECT_EQ(geometry.strip().y, 16);
}

TEST(FormGeometry, eachPartHasItsSplitter) {
    FormBuilder builder = withTabs(1, 2);
    builder.part(0).FormByte = 60;
    builder.part(1).FormByte = 80;
    const FormGeometry geometry(builder, 1);
    EXPECT_EQ(geometry.label({false, 0}, false), (Box{0, 16, 60, 12}));
    EXPECT_EQ(geometry.value({false, 0}), (Box{60, 16, 100, 12}));
    EXPECT_EQ(geometry.value({true, 0}).x, 80);
    EXPECT_EQ(geometry.label({true, 0}, true).width, 160);
}

TEST(FormGeometry, splitterBeyondTheScreenStandsAtItsEdge) {
    FormBuilder builder;
    builder.part(0).FormByte = 250;
    EXPECT_EQ(FormGeometry(builder, 0).splitter(false), 160);
}

TEST(FormGeometry, hitsWhatLiesThere) {
    const FormGeometry geometry(withTabs(2, 1), 2);     // splitters at 40
    EXPECT_EQ(geometry.hit(10, 5).what, What::Nothing); // the title
    EXPECT_EQ(geometry.hit(10, 20).what, What::Label);
    EXPECT_EQ(geometry.hit(40, 20).what, What::Splitter);
    EXPECT_EQ(geometry.hit(41, 20).what, What::Splitter);
    EXPECT_EQ(geometry.hit(42, 20).what, What::Value);
    EXPECT_EQ(geometry.hit(10, 30).what, What::Tab);
    EXPECT_EQ(geometry.hit(10, 30).tab, 1);
    EXPECT_EQ(geometry.hit(80, 30).tab, 2);
    const Hit below = geometry.hit(159, 40);
    EXPECT_EQ(below.what, What::Value);
    EXPECT_EQ(below.place, (RowPlace{true, 0}));
    EXPECT_EQ(geometry.hit(160, 20).what, What::Nothing);
    EXPECT_EQ(geometry.hit(-1, 20).what, What::Nothing);
    EXPECT_EQ(geometry.hit(5, geometry.height()).what, What::Nothing);
}

TEST(FormGeometry, splitterGoesThereAndBack) {
    EXPECT_EQ(splitterPosition(40, 320), 80);
    EXPECT_EQ(splitterPosition(160, 480), 480);
    EXPECT_EQ(splitterPosition(255, 480), 480);
    EXPECT_EQ(formByteAt(80, 320), 40);
    EXPECT_EQ(formByteAt(81, 320), 41); // 40.5 rounds away from zero
    EXPECT_EQ(formByteAt(-20, 320), 0);
    EXPECT_EQ(formByteAt(900, 320), 160);
    EXPECT_EQ(formByteAt(10, 0), 40);
    for (int zoom = 2; zoom <= 4; ++zoom)
        for (int byte = 0; byte <= 160; ++byte)
            EXPECT_EQ(formByteAt(splitterPosition(static_cast<std::uint8_t>(byte), 160 * zoom), 160 * zoom), byte);
}

TEST(FormGeometry, zoomIsAWholeNumberOfTwoToFour) {
    EXPECT_EQ(zoomFor(100, 100), 2);
    EXPECT_EQ(zoomFor(479, 700), 2);
    EXPECT_EQ(zoomFor(480, 480), 3);
    EXPECT_EQ(zoomFor(2000, 640), 4);
    EXPECT_EQ(zoomFor(2000, 2000), 4);
}

} // namespace
} // namespace tallybook::forms
