#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

using model::FieldType;
using model::GridPlace;
using Open = EditAction::Open;

constexpr int kLast = 81; // the last field's column

struct GridMouse : test::DocumentFixture {
    GridMouse() {
        field(1, FieldType::Text);
        field(2, FieldType::Integer);
    }
};

TEST_F(GridMouse, oneClickOnACellBeginsEditing) {
    records(3);
    setCell(1, 1, "old");
    EXPECT_EQ(leftClick(doc, t, {3, 2}).open, Open::CellEditor);
    EXPECT_EQ(doc.editor.text, "old");
    EXPECT_TRUE(doc.editor.allSelected);
    EXPECT_EQ(doc.grd.place(), (GridPlace{3, 2, 3, 2}));
}

TEST_F(GridMouse, headersAndNumbersSelect) {
    records(3);
    struct Row {
        MousePlace place;
        GridPlace selected;
    };
    const Row rows[] = {
        {{0, 0}, {2, 1, 4, kLast}},                             // the corner: all
        {{1, 0}, {2, 1, 4, kLast}}, {{0, 2}, {2, 2, 4, 2}},     // a column
        {{1, 3}, {2, 3, 4, 3}},     {{3, 0}, {3, 1, 3, kLast}}, // a record
    };
    for (const Row& row : rows) {
        EXPECT_EQ(leftClick(doc, t, row.place).open, Open::Nothing);
        EXPECT_EQ(doc.grd.place(), row.selected) << row.place.row << "," << row.place.col;
        EXPECT_FALSE(doc.editor.open());
    }
}

TEST_F(GridMouse, clickBesideTheCellsDoesNothing) {
    records(3);
    const GridPlace before = doc.grd.place();
    for (const MousePlace place : {MousePlace{5, 2}, MousePlace{5, 0}, MousePlace{0, 82}, MousePlace{3, 82}}) {
        EXPECT_EQ(leftClick(doc, t, place).open, Open::Nothing);
        EXPECT_EQ(doc.grd.place(), before);
    }
}

TEST_F(GridMouse, inAnEmptyDatabaseAHeaderMovesTheCurrentColumn) {
    records(0);
    const GridPlace before = doc.grd.place();
    for (const MousePlace place : {MousePlace{0, 0}, MousePlace{2, 2}, MousePlace{3, 2}, MousePlace{0, 82}})
        EXPECT_EQ(leftClick(doc, t, place).open, Open::Nothing);
    EXPECT_EQ(doc.grd.place(), before);
    for (const int row : {0, 1}) {
        EXPECT_EQ(leftClick(doc, t, {row, 5 + row}).open, Open::Nothing);
        EXPECT_EQ(doc.grd.place(), (GridPlace{2, 5 + row, 2, 5 + row}));
    }
}

// Of five records the first two and the last are hidden by a filter.
TEST_F(GridMouse, noHeaderLeadsIntoAHiddenRow) {
    records(5);
    doc.grd.showOnly({4, 5});
    leftClick(doc, t, {0, 3});
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 3, 6, 3}));
    leftClick(doc, t, {0, 0});
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 1, 6, kLast}));
    doc.grd.setCell(5, 1);
    EXPECT_EQ(rightClick(doc, t, {0, 2}), PopUp::mnuColumn);
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 2, 6, 2}));
    rightClickDone(doc, t, PopUp::mnuColumn);
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 2, 4, 2}));
    gridResized(doc);
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 1, 4, 1}));
}

TEST_F(GridMouse, clickCommitsTheOpenEditFirst) {
    records(2);
    edit(0, 1);
    doc.editor.text = "typed";
    leftClick(doc, t, {3, 3});
    EXPECT_EQ(cell(0, 1), "typed");
    EXPECT_EQ(doc.editor.row, 3);
    EXPECT_EQ(doc.editor.col, 3);
}

TEST_F(GridMouse, refusedPasswordOpensAndMovesNothing) {
    records(2);
    protect(model::PasswordKind::Modify, "secret");
    const GridPlace before = doc.grd.place();
    t.user.passwords = {std::nullopt, std::nullopt};
    EXPECT_EQ(leftClick(doc, t, {3, 2}).open, Open::Nothing);
    EXPECT_EQ(rightClick(doc, t, {0, 2}), PopUp::None);
    EXPECT_EQ(doc.grd.place(), before);
    EXPECT_EQ(t.user.passwordQuestions.front().first, "Modify");
    t.user.passwords = {"secret"};
    EXPECT_EQ(leftClick(doc, t, {3, 2}).open, Open::CellEditor);
}

TEST_F(GridMouse, nothingOpensWhileABulkChangeRuns) {
    records(2);
    doc.GridReady = false;
    EXPECT_EQ(leftClick(doc, t, {3, 2}).open, Open::Nothing);
}

TEST_F(GridMouse, rightButtonOnAHeaderOffersTheColumnsMenu) {
    records(3);
    EXPECT_EQ(rightClick(doc, t, {0, 3}), PopUp::mnuColumn);
    EXPECT_EQ(doc.grd.place(), (GridPlace{2, 3, 4, 3}));
    rightClickDone(doc, t, PopUp::mnuColumn);
    EXPECT_EQ(doc.grd.place(), (GridPlace{2, 3, 2, 3}));
}

TEST_F(GridMouse, rightButtonOnANumberOffersTheRowsMenu) {
    records(3);
    EXPECT_EQ(rightClick(doc, t, {4, 0}), PopUp::mnuRow);
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 1, 4, kLast}));
    rightClickDone(doc, t, PopUp::mnuRow);
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 1, 4, 1}));
}

TEST_F(GridMouse, rightButtonElsewhereOffersNothing) {
    records(3);
    for (const MousePlace place :
         {MousePlace{0, 82}, MousePlace{3, 82}, MousePlace{0, 0}, MousePlace{3, 2}, MousePlace{5, 0}})
        EXPECT_EQ(rightClick(doc, t, place), PopUp::None) << place.row << "," << place.col;
}

TEST_F(GridMouse, emptyDatabaseOffersTheColumnsMenuAlone) {
    records(0);
    EXPECT_EQ(rightClick(doc, t, {0, 2}), PopUp::mnuColumn);
    EXPECT_EQ(doc.grd.place(), (GridPlace{2, 2, 2, 2}));
    EXPECT_EQ(rightClick(doc, t, {2, 0}), PopUp::None);
}

TEST_F(GridMouse, rightButtonCommitsTheOpenEdit) {
    records(2);
    edit(0, 1);
    doc.editor.text = "typed";
    rightClick(doc, t, {0, 3});
    EXPECT_EQ(cell(0, 1), "typed");
    EXPECT_FALSE(doc.editor.open());
}

TEST_F(GridMouse, theMenuKeyOffersTheColumnsMenuWhereverTheCellIs) {
    records(3);
    go(2, 1);
    edit(2, 1);
    doc.editor.text = "typed";
    EXPECT_EQ(menuKey(doc, t), PopUp::mnuColumn);
    EXPECT_EQ(cell(2, 1), "typed");
    EXPECT_EQ(doc.grd.place(), (GridPlace{4, 2, 4, 2}));
    selectRow(doc.grd, 3);
    EXPECT_EQ(menuKey(doc, t), PopUp::mnuRow);
    EXPECT_EQ(doc.grd.place(), (GridPlace{3, 1, 3, kLast}));
    doc.ViewShown = true;
    EXPECT_EQ(menuKey(doc, t), PopUp::None);
}

TEST_F(GridMouse, theMenuKeyNeedsTheRightToChangeRecords) {
    records(0);
    EXPECT_EQ(menuKey(doc, t), PopUp::mnuColumn);
    protect(model::PasswordKind::Modify, "secret");
    t.user.passwords = {std::nullopt};
    EXPECT_EQ(menuKey(doc, t), PopUp::None);
}

TEST_F(GridMouse, viewPopsUpNoMenu) {
    records(2);
    doc.CurrentView = "Prices";
    doc.ViewShown = true;
    EXPECT_EQ(rightClick(doc, t, {0, 3}), PopUp::None);
    EXPECT_EQ(doc.grd.place(), (GridPlace{2, 3, 2, 3}));
    EXPECT_EQ(rightClick(doc, t, {3, 0}), PopUp::None);
    EXPECT_EQ(doc.grd.place(), (GridPlace{3, 1, 3, 1}));
}

} // namespace
} // namespace tallybook::document
