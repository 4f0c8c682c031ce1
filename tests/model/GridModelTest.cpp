#include "core/model/GridModel.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tallybook::model {
namespace {

using Texts = std::vector<std::string>;

Texts columnOf(const GridModel& grid, int column) {
    Texts texts;
    for (int row = kHeaderRows; row < grid.rows(); ++row)
        texts.push_back(grid.text(row, column));
    return texts;
}

// Five data rows named a to e in column 2.
void fillFive(GridModel& grid) {
    grid.reset(5);
    for (int i = 0; i < 5; ++i)
        grid.setText(kHeaderRows + i, 2, std::string(1, static_cast<char>('a' + i)));
}

TEST(GridModel, beginsWithTwoHeaderRowsAndOneDataRow) {
    const GridModel grid;
    EXPECT_EQ(grid.rows(), 3);
    EXPECT_EQ(grid.fixedRows(), 2);
    EXPECT_EQ(grid.cols(), 83);
    EXPECT_EQ(grid.dataRows(), 1);
    EXPECT_EQ(grid.rowHeight(2), kDefaultSize);
    EXPECT_EQ(grid.columnWidth(5), kDefaultSize);
    EXPECT_EQ(grid.alignment(5), Alignment::LeftCentre);
}

TEST(GridModel, numbersItsDataRowsInColumn0) {
    GridModel grid;
    fillFive(grid);
    EXPECT_EQ(columnOf(grid, kNumberColumn), (Texts{"1", "2", "3", "4", "5"}));
    grid.setText(3, kNumberColumn, "x");
    EXPECT_EQ(grid.text(3, kNumberColumn), "2");
    grid.setText(0, kNumberColumn, "No.");
    EXPECT_EQ(grid.text(0, kNumberColumn), "No.");
    grid.permuteRows({4, 3, 2, 1, 0});
    EXPECT_EQ(columnOf(grid, kNumberColumn), (Texts{"1", "2", "3", "4", "5"}));
}

TEST(GridModel, keepsHeadersApartFromData) {
    GridModel grid;
    grid.setText(0, 2, "Name");
    grid.setText(1, 2, "Text");
    grid.setText(2, 2, "Ann");
    EXPECT_EQ(grid.text(0, 2), "Name");
    EXPECT_EQ(grid.text(1, 2), "Text");
    EXPECT_EQ(grid.text(2, 2), "Ann");
    EXPECT_EQ(grid.picture(0, 2), Picture::None);
    EXPECT_EQ(grid.colour(1, 2), 0u);
}

TEST(GridModel, keepsPicturesAndColours) {
    GridModel grid;
    grid.setPicture(2, 3, Picture::CheckOn);
    grid.setColour(2, 3, 65280);
    EXPECT_EQ(grid.picture(2, 3), Picture::CheckOn);
    EXPECT_EQ(grid.colour(2, 3), 65280u);
    EXPECT_EQ(grid.picture(2, 4), Picture::None);
    grid.setPicture(2, 3, Picture::None);
    grid.setColour(2, 3, 0);
    EXPECT_TRUE(grid.pictures(3).empty());
    EXPECT_TRUE(grid.colours(3).empty());
}

TEST(GridModel, forgetsEverythingAtReset) {
    GridModel grid;
    fillFive(grid);
    grid.setText(0, 2, "Name");
    grid.setPicture(3, 3, Picture::CheckOn);
    grid.setColour(3, 3, 255);
    grid.setRowHeight(0, 100);
    grid.setRowHeight(4, 0);
    grid.setColumnWidth(2, 1440);
    grid.setAlignment(2, Alignment::RightCentre);
    grid.setCell(4, 2);
    grid.setTopRow(4);
    grid.reset(5);
    EXPECT_EQ(columnOf(grid, 2), Texts(5));
    EXPECT_EQ(grid.text(0, 2), "");
    EXPECT_EQ(grid.picture(3, 3), Picture::None);
    EXPECT_EQ(grid.colour(3, 3), 0u);
    EXPECT_EQ(grid.rowHeight(0), kDefaultSize);
    EXPECT_EQ(grid.rowHeight(4), kDefaultSize);
    EXPECT_EQ(grid.columnWidth(2), kDefaultSize);
    EXPECT_EQ(grid.alignment(2), Alignment::LeftCentre);
    EXPECT_EQ(grid.place(), GridPlace{});
    EXPECT_EQ(grid.topRow(), kHeaderRows);
    EXPECT_EQ(grid.visibleRows(), 5);
}

TEST(GridModel, addsRowsThatAreEmptyWhateverStoodThereBefore) {
    GridModel grid;
    fillFive(grid);
    grid.setPicture(4, 3, Picture::CheckOn);
    grid.setColour(4, 3, 255);
    grid.setRowHeight(4, 0);
    grid.removeRow(4);
    EXPECT_EQ(columnOf(grid, 2), (Texts{"a", "b", "d", "e"}));
    grid.appendRow();
    EXPECT_EQ(columnOf(grid, 2), (Texts{"a", "b", "d", "e", ""}));
    EXPECT_EQ(grid.picture(6, 3), Picture::None);
    EXPECT_EQ(grid.colour(6, 3), 0u);
    EXPECT_EQ(grid.rowHeight(6), kDefaultSize);
    grid.appendRow();
    EXPECT_EQ(grid.rowHeight(7), kDefaultSize);
    EXPECT_EQ(grid.visibleRows(), 6);
}

TEST(GridModel, clearsOneRow) {
    GridModel grid;
    fillFive(grid);
    grid.setColour(3, 2, 255);
    grid.clearRow(3);
    EXPECT_EQ(columnOf(grid, 2), (Texts{"a", "", "c", "d", "e"}));
    EXPECT_EQ(grid.colour(3, 2), 0u);
}

TEST(GridModel, carriesARowsHeightAndColourAlongWhenItMoves) {
    GridModel grid;
    fillFive(grid);
    grid.setRowHeight(2, 300);
    grid.setColour(2, 2, 255);
    grid.permuteRows({1, 2, 3, 4, 0});
    EXPECT_EQ(columnOf(grid, 2), (Texts{"b", "c", "d", "e", "a"}));
    EXPECT_EQ(grid.rowHeight(6), 300);
    EXPECT_EQ(grid.rowHeight(2), kDefaultSize);
    EXPECT_EQ(grid.colour(6, 2), 255u);
}

TEST(GridModel, hidesRowsOfHeight0) {
    GridModel grid;
    fillFive(grid);
    EXPECT_EQ(grid.visibleRows(), 5);
    EXPECT_EQ(grid.visibleRow(4), 6);
    EXPECT_EQ(grid.visiblePosition(6), 4);
    grid.setRowHeight(3, 0);
    grid.setRowHeight(6, 0);
    EXPECT_EQ(grid.visibleRows(), 3);
    EXPECT_EQ(grid.visibleRow(0), 2);
    EXPECT_EQ(grid.visibleRow(1), 4);
    EXPECT_EQ(grid.visiblePosition(4), 1);
    EXPECT_EQ(grid.visiblePosition(3), 1); // the next visible one
    EXPECT_EQ(grid.visiblePosition(6), 3); // none any more
    EXPECT_EQ(grid.dataRows(), 5);         // they are hidden, not gone
    EXPECT_EQ(grid.text(4, kNumberColumn), "3");
    grid.setRowHeight(3, kDefaultSize);
    EXPECT_EQ(grid.visibleRow(1), 3);
}

TEST(GridModel, hidesAHeaderRowWithoutCountingIt) {
    GridModel grid;
    grid.setRowHeight(1, 0);
    EXPECT_EQ(grid.rowHeight(1), 0);
    EXPECT_EQ(grid.rowHeight(0), kDefaultSize);
    EXPECT_EQ(grid.visibleRows(), 1);
}

TEST(GridModel, keepsACurrentCellAndASelection) {
    GridModel grid;
    fillFive(grid);
    grid.setCell(3, 4);
    EXPECT_EQ(grid.place(), (GridPlace{3, 4, 3, 4}));
    grid.select(6, 82);
    EXPECT_EQ(grid.place(), (GridPlace{3, 4, 6, 82}));
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(grid.col(), 4);
    grid.setPlace({2, 1, 5, 5});
    EXPECT_EQ(grid.place(), (GridPlace{2, 1, 5, 5}));
}

TEST(GridModel, countsEveryChange) {
    GridModel grid;
    fillFive(grid);
    using Change = void (*)(GridModel&);
    const Change changes[] = {
        [](GridModel& g) { g.setText(2, 2, "x"); },
        [](GridModel& g) { g.setPicture(2, 2, Picture::CheckOn); },
        [](GridModel& g) { g.setColour(2, 2, 255); },
        [](GridModel& g) { g.setRowHeight(2, 0); },
        [](GridModel& g) { g.setRowHeight(0, 0); },
        [](GridModel& g) { g.setColumnWidth(2, 0); },
        [](GridModel& g) { g.setAlignment(2, Alignment::RightCentre); },
        [](GridModel& g) { g.setCell(2, 2); },
        [](GridModel& g) { g.select(3, 3); },
        [](GridModel& g) { g.appendRow(); },
        [](GridModel& g) { g.removeRow(2); },
        [](GridModel& g) { g.clearRow(2); },
        [](GridModel& g) {
            g.permuteRows({1, 0, 2, 3, 4});
        },
        [](GridModel& g) { g.touch(); },
        [](GridModel& g) { g.reset(5); },
    };
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        const std::uint64_t before = grid.revision();
        changes[i](grid);
        EXPECT_GT(grid.revision(), before) << "change " << i;
    }
}

// A grid as plain as can be.
struct PlainRow {
    Texts texts = Texts(kGridColumns);
    std::vector<Picture> pictures = std::vector<Picture>(kGridColumns, Picture::None);
    std::vector<std::uint32_t> colours = std::vector<std::uint32_t>(kGridColumns);
    int height = kDefaultSize;
};

class PlainGrid {
public:
    std::vector<PlainRow> rows = std::vector<PlainRow>(1);

    PlainRow& at(int row) { return rows[static_cast<std::size_t>(row - kHeaderRows)]; }
    void permute(const std::vector<std::uint32_t>& order) {
        std::vector<PlainRow> moved;
        moved.reserve(order.size());
        for (const std::uint32_t from : order)
            moved.push_back(rows[from]);
        rows = std::move(moved);
    }
    std::vector<int> visible() {
        std::vector<int> result;
        for (int row = kHeaderRows; row < kHeaderRows + static_cast<int>(rows.size()); ++row)
            if (at(row).height != 0)
                result.push_back(row);
        return result;
    }
};

void expectSame(const GridModel& grid, PlainGrid& plain) {
    ASSERT_EQ(grid.dataRows(), static_cast<int>(plain.rows.size()));
    for (int row = kHeaderRows; row < grid.rows(); ++row) {
        ASSERT_EQ(grid.rowHeight(row), plain.at(row).height);
        for (int column = 1; column < 6; ++column) {
            const auto index = static_cast<std::size_t>(column);
            ASSERT_EQ(grid.text(row, column), plain.at(row).texts[index]) << row << ' ' << column;
            ASSERT_EQ(grid.picture(row, column), plain.at(row).pictures[index]);
            ASSERT_EQ(grid.colour(row, column), plain.at(row).colours[index]);
        }
    }
    const std::vector<int> visible = plain.visible();
    ASSERT_EQ(grid.visibleRows(), static_cast<int>(visible.size()));
    for (std::size_t position = 0; position < visible.size(); ++position) {
        ASSERT_EQ(grid.visibleRow(static_cast<int>(position)), visible[position]);
        ASSERT_EQ(grid.visiblePosition(visible[position]), static_cast<int>(position));
    }
}

void changeBoth(GridModel& grid, PlainGrid& plain, std::mt19937& random) {
    const int row = kHeaderRows + static_cast<int>(random() % plain.rows.size());
    const int column = 1 + static_cast<int>(random() % 5);
    const auto index = static_cast<std::size_t>(column);
    switch (random() % 16) {
    case 0:
        if (plain.rows.size() > 1) {
            grid.removeRow(row);
            plain.rows.erase(plain.rows.begin() + (row - kHeaderRows));
        }
        break;
    case 1:
        grid.clearRow(row);
        plain.at(row) = {.height = plain.at(row).height};
        break;
    case 2: {
        std::vector<std::uint32_t> order(plain.rows.size());
        std::iota(order.begin(), order.end(), 0u);
        std::shuffle(order.begin(), order.end(), random);
        grid.permuteRows(order);
        plain.permute(order);
        break;
    }
    case 3:
    case 4:
        grid.appendRow();
        plain.rows.emplace_back();
        break;
    case 5:
    case 6: {
        const int height = static_cast<int>(random() % 3) * 100 - (random() % 2 ? 0 : 1);
        const int used = height < 0 ? kDefaultSize : height;
        grid.setRowHeight(row, used);
        plain.at(row).height = used;
        break;
    }
    case 7: {
        const auto picture = static_cast<Picture>(random() % 3);
        grid.setPicture(row, column, picture);
        plain.at(row).pictures[index] = picture;
        break;
    }
    case 8: {
        const auto colour = static_cast<std::uint32_t>(random() % 3 * 255);
        grid.setColour(row, column, colour);
        plain.at(row).colours[index] = colour;
        break;
    }
    default: {
        const std::string text = random() % 4 == 0 ? "" : std::to_string(random());
        grid.setText(row, column, text);
        plain.at(row).texts[index] = text;
    }
    }
}

TEST(GridModel, agreesWithAPlainGridThroughRandomChanges) {
    std::mt19937 random(9);
    GridModel grid;
    PlainGrid plain;
    for (int step = 0; step < 4000; ++step) {
        changeBoth(grid, plain, random);
        if (step % 10 == 0)
            expectSame(grid, plain);
        if (testing::Test::HasFatalFailure())
            FAIL() << "step " << step;
    }
}

} // namespace
} // namespace tallybook::model
