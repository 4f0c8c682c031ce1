#include "core/document/views/ViewPlace.h"

#include "core/document/views/Views.h"
#include "document/DocumentFixture.h"

#include <gtest/gtest.h>

namespace tallybook::document {
namespace {

using model::FieldType;
using model::GridPlace;

// Five records of three fields, and a view of the third and the first.
struct ViewPlace : test::DocumentFixture {
    ViewPlace() {
        field(1, FieldType::Text, "Title");
        field(2, FieldType::Long, "Price");
        field(3, FieldType::Text, "Shelf");
        records(5);
    }

    void showView() {
        doc.ViewFields = {3, 1};
        doc.ViewGrd.copyVisible(doc.grd, {4, 2});
        doc.ViewShown = true;
    }
    void hide(const std::vector<int>& rows) {
        for (const int row : rows)
            doc.grd.setRowHeight(row, 0);
    }
};

// Leaving a hidden row

TEST_F(ViewPlace, hiddenRowGivesWayToTheNextShownOrTheLast) {
    struct Row {
        std::vector<int> hidden;
        int current;
        int expected;
    };
    const Row rows[] = {
        {{3}, 3, 4},       {{2, 3}, 2, 4}, {{3, 4, 5}, 4, 6},       {{6}, 6, 5},
        {{4, 5, 6}, 5, 3}, {{3}, 2, 2},    {{2, 3, 4, 5, 6}, 4, 4}, // nowhere to go
    };
    for (const Row& row : rows) {
        records(5);
        hide(row.hidden);
        doc.grd.setCell(row.current, 3);
        leaveHiddenRow(doc.grd);
        EXPECT_EQ(doc.grd.place(), (GridPlace{row.expected, 3, row.expected, 3})) << row.current;
    }
}

TEST_F(ViewPlace, headersAndBlocksOfShownRowsStay) {
    hide({4});
    doc.grd.setCell(0, 2);
    leaveHiddenRow(doc.grd);
    EXPECT_EQ(doc.grd.row(), 0);
    doc.grd.setPlace({3, 1, 5, 2});
    leaveHiddenRow(doc.grd);
    EXPECT_EQ(doc.grd.place(), (GridPlace{3, 1, 5, 2}));
}

TEST_F(ViewPlace, emptyDatabaseKeepsItsPlace) {
    records(0);
    doc.grd.setCell(2, 1);
    leaveHiddenRow(doc.grd);
    EXPECT_EQ(doc.grd.row(), 2);
}

// A search in a view

TEST_F(ViewPlace, searchBeginsAtTheCellOfTheView) {
    showView();
    doc.grd.setCell(2, 1);
    doc.ViewGrd.setCell(4, 1);
    takePlaceFromView(doc);
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 4, 4, 4})); // the third field stands in column 4
    doc.ViewGrd.setCell(5, 2);
    takePlaceFromView(doc);
    EXPECT_EQ(doc.grd.place(), (GridPlace{5, 2, 5, 2}));
}

TEST_F(ViewPlace, searchGoesOnBehindAFieldThatTheViewDoesNotShow) {
    showView();
    doc.grd.setCell(4, 3);
    doc.ViewGrd.setCell(4, 1);
    takePlaceFromView(doc);
    EXPECT_EQ(doc.grd.col(), 3); // the last hit, in the price
    doc.ViewGrd.setCell(3, 1);   // the user has gone on
    takePlaceFromView(doc);
    EXPECT_EQ(doc.grd.place(), (GridPlace{3, 4, 3, 4}));
}

TEST_F(ViewPlace, hitIsShownInTheView) {
    showView();
    doc.ViewGrd.setCell(2, 1);
    doc.grd.setCell(5, 2);
    givePlaceToView(doc);
    EXPECT_EQ(doc.ViewGrd.place(), (GridPlace{5, 2, 5, 2}));
    doc.grd.setCell(6, 3); // a field that it does not show: the record alone
    givePlaceToView(doc);
    EXPECT_EQ(doc.ViewGrd.place(), (GridPlace{6, 2, 6, 2}));
}

TEST_F(ViewPlace, withoutAViewNothingMoves) {
    showView();
    doc.ViewShown = false;
    doc.grd.setCell(5, 2);
    const GridPlace before = doc.ViewGrd.place();
    givePlaceToView(doc);
    EXPECT_EQ(doc.ViewGrd.place(), before);
    takePlaceFromView(doc);
    EXPECT_EQ(doc.grd.place(), (GridPlace{5, 2, 5, 2}));
}

TEST_F(ViewPlace, viewWithoutFieldsGivesNoPlace) {
    doc.ViewGrd.copyVisible(doc.grd, {});
    doc.ViewGrd.setCell(4, 0);
    doc.ViewShown = true;
    doc.grd.setCell(5, 2);
    takePlaceFromView(doc);
    EXPECT_EQ(doc.grd.row(), 5);
    givePlaceToView(doc);
    EXPECT_EQ(doc.ViewGrd.place(), (GridPlace{5, 0, 5, 0}));
}

} // namespace
} // namespace tallybook::document
