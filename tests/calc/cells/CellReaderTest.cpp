#include "core/calc/cells/CellReader.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "support/Regions.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace tallybook::calc {
namespace {

using model::GridModel;
using platform::Regional;

constexpr int kThisYear = 2003;
constexpr int kColumn = 2;

// A grid of one column of texts behind a coder, and its reader.
struct Cells {
    Cells(std::unique_ptr<model::CellCoder> coder, const std::vector<std::string>& texts, const Regional& regional)
        : region(regional) {
        grid.reset(static_cast<int>(texts.size()));
        grid.column(kColumn).setCoder(std::move(coder));
        for (std::uint32_t row = 0; row < texts.size(); ++row)
            grid.column(kColumn).setText(row, texts[row]);
    }
    CellReader reader() const { return {grid, kColumn, region, kThisYear}; }

    Regional region;
    GridModel grid;
};

TEST(CellReader, readsNumbersFromWordsAndTexts) {
    const Cells cells(makeWholeCoder(), {"12", "-7", "1,250", "abc", "", "12.5"}, {});
    const CellReader reader = cells.reader();
    EXPECT_EQ(reader.number(0), 12);
    EXPECT_EQ(reader.number(1), -7);
    EXPECT_EQ(reader.number(2), 1250);
    EXPECT_EQ(reader.number(3), std::nullopt);
    EXPECT_EQ(reader.number(4), std::nullopt);
    EXPECT_EQ(reader.number(5), 12.5);
}

TEST(CellReader, readsAFloatAsItIsShown) {
    Cells cells(makeDecimalCoder(2, {}), {"0.10", "2.50", "-0.01"}, {});
    cells.grid.column(kColumn).setWord(0, std::bit_cast<std::uint32_t>(0.104F)); // shown as 0.10
    const CellReader reader = cells.reader();
    EXPECT_EQ(reader.number(0), 0.1);
    EXPECT_EQ(reader.number(1), 2.5);
    EXPECT_EQ(reader.number(2), -0.01);
}

TEST(CellReader, readsDatesAndTimes) {
    const Cells dates(makeDateCoder({}), {"1/2/2003", "January 2, 2003", "soon", "", "1/2/2003 12:00:00 PM"}, {});
    EXPECT_EQ(dates.reader().date(0), 37623);
    EXPECT_EQ(dates.reader().date(1), 37623);
    EXPECT_EQ(dates.reader().date(2), std::nullopt);
    EXPECT_EQ(dates.reader().date(3), std::nullopt);
    EXPECT_EQ(dates.reader().date(4), 37623.5);
    EXPECT_EQ(dates.reader().number(0), std::nullopt);

    const Cells times(makeTimeCoder({}), {"6:00:00 AM", "6 PM"}, {});
    EXPECT_EQ(times.reader().date(0), 0.25);
    EXPECT_EQ(times.reader().date(1), 0.75);
}

TEST(CellReader, tellsBlankCells) {
    const Cells cells(makeItemCoder(), {"", "  ", " a", "Rent"}, {});
    EXPECT_TRUE(cells.reader().isBlank(0));
    EXPECT_TRUE(cells.reader().isBlank(1));
    EXPECT_FALSE(cells.reader().isBlank(2));
    EXPECT_FALSE(cells.reader().isBlank(3));
}

TEST(CellReader, tellsCheckedCells) {
    GridModel grid;
    grid.reset(3);
    grid.setPicture(2, kColumn, model::Picture::CheckOn);
    grid.setPicture(3, kColumn, model::Picture::CheckOff);
    const CellReader reader(grid, kColumn, {}, kThisYear);
    EXPECT_TRUE(reader.isChecked(0));
    EXPECT_FALSE(reader.isChecked(1));
    EXPECT_FALSE(reader.isChecked(2));
}

// Whatever word a column keeps, the value is the one that its text gives, in every region.
TEST(CellReader, takesFromAWordWhatItsTextGives) {
    std::mt19937 random(7);
    for (const Regional& regional : {test::us(), test::uk(), test::german(), test::swedish()}) {
        std::vector<std::unique_ptr<model::CellCoder>> coders;
        coders.push_back(makeWholeCoder());
        for (int decimals = 0; decimals <= 3; ++decimals)
            coders.push_back(makeDecimalCoder(decimals, regional));
        coders.push_back(makeDateCoder(regional));
        coders.push_back(makeTimeCoder(regional));
        for (auto& coder : coders) {
            const model::WordForm form = coder->form().words;
            Cells cells(std::move(coder), std::vector<std::string>(500), regional);
            for (std::uint32_t row = 0; row < 500; ++row) {
                std::uint32_t word = random();
                if (form == model::WordForm::Decimal && !std::isfinite(std::bit_cast<float>(word)))
                    word = 0; // stands for no text
                if (form == model::WordForm::Date)
                    word = packDate(100 + static_cast<int>(random() % 9900), 1 + static_cast<int>(random() % 12),
                                    1 + static_cast<int>(random() % 28));
                else if (form == model::WordForm::Time)
                    word = packTime(static_cast<int>(random() % 24), static_cast<int>(random() % 60),
                                    static_cast<int>(random() % 60));
                cells.grid.column(kColumn).setWord(row, word);
            }
            const CellReader reader = cells.reader();
            std::string scratch;
            for (std::uint32_t row = 0; row < 500; ++row) {
                const std::string text(reader.text(row, scratch));
                EXPECT_EQ(reader.number(row), parseNumber(text, regional)) << text;
                EXPECT_EQ(reader.date(row), readDate(text, regional, kThisYear)) << text;
                EXPECT_EQ(reader.isBlank(row), text.find_first_not_of(' ') == std::string::npos) << text;
            }
        }
    }
}

} // namespace
} // namespace tallybook::calc
