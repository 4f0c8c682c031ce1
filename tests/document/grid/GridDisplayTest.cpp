#include "core/document/grid/GridDisplay.h"

#include "core/document/views/Views.h"
#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

using model::Alignment;
using model::FieldType;

struct GridDisplay : test::DocumentFixture {};

TEST_F(GridDisplay, headersHoldNamesAndTypeNames) {
    field(1, FieldType::Text, "Title");
    field(3, FieldType::ConditionalExpression, "Cond");
    field(5, FieldType::NotUsed, "Kept name");
    records(1);
    EXPECT_EQ(doc.grd.text(0, 1), "Categories");
    EXPECT_EQ(doc.grd.text(1, 1), "List");
    EXPECT_EQ(doc.grd.text(0, 2), "Title");
    EXPECT_EQ(doc.grd.text(1, 2), "Text");
    EXPECT_EQ(doc.grd.text(1, 4), "Conditional Expression");
    EXPECT_EQ(doc.grd.text(0, 6), "Kept name");
    EXPECT_EQ(doc.grd.text(1, 6), "Not Used");
}

TEST_F(GridDisplay, slotsWithoutANameAreNumberedWithTwoDigits) {
    records(1);
    EXPECT_EQ(doc.grd.text(0, model::columnOfSlot(1)), "Fld01");
    EXPECT_EQ(doc.grd.text(0, model::columnOfSlot(9)), "Fld09");
    EXPECT_EQ(doc.grd.text(0, model::columnOfSlot(10)), "Fld10");
    EXPECT_EQ(doc.grd.text(0, model::columnOfSlot(80)), "Fld80");
    EXPECT_EQ(doc.grd.text(0, model::kScratchColumn), "");
}

TEST_F(GridDisplay, newNamesLeaveTheCellsAlone) {
    field(1, FieldType::Date, "When");
    records(2);
    setCell(0, 1, "1/2/2003");
    setCell(1, 1, "soon");
    field(1, FieldType::Text, "What");
    gridLoadFieldNames20(doc, services.regional);
    EXPECT_EQ(doc.grd.text(0, 2), "What");
    EXPECT_EQ(cell(0, 1), "1/2/2003");
    EXPECT_EQ(cell(1, 1), "soon");
}

TEST_F(GridDisplay, unusedColumnsAndTypeRowFollowTheChoices) {
    field(1, FieldType::Text);
    records(1);
    doc.grd.setColumnWidth(2, 2000);
    struct Row {
        DisplayChoices choices;
        int unusedWidth;
        int typeRowHeight;
    };
    const Row rows[] = {
        {{false, false}, 0, 0},
        {{true, true}, model::kDefaultSize, model::kDefaultSize},
        {{false, true}, 0, model::kDefaultSize},
        {{true, false}, model::kDefaultSize, 0},
    };
    for (const Row& row : rows) {
        FormatGrid(doc, row.choices);
        for (int slot = 2; slot <= 80; ++slot)
            EXPECT_EQ(doc.grd.columnWidth(model::columnOfSlot(slot)), row.unusedWidth) << slot;
        EXPECT_EQ(doc.grd.rowHeight(1), row.typeRowHeight);
        EXPECT_EQ(doc.grd.columnWidth(2), 2000);
        EXPECT_EQ(doc.grd.columnWidth(model::kNumberColumn), 480);
        EXPECT_EQ(doc.grd.columnWidth(model::kScratchColumn), 0);
    }
}

TEST_F(GridDisplay, columnThatComesIntoUseIsShown) {
    records(1);
    FormatGrid(doc, {.notUsedFields = false});
    field(1, FieldType::Text);
    FormatGrid(doc, {.notUsedFields = false});
    EXPECT_EQ(doc.grd.columnWidth(2), model::kDefaultSize);
}

TEST_F(GridDisplay, typedNumbersAreAlignedRight) {
    for (int code = 0; code < model::kFieldTypes; ++code)
        field(code + 1, static_cast<FieldType>(code));
    records(1);
    FormatGrid(doc, {});
    for (int code = 0; code < model::kFieldTypes; ++code) {
        const bool number = code == 2 || code == 3 || code == 4; // not the values that a record is given
        EXPECT_EQ(doc.grd.alignment(model::columnOfSlot(code + 1)),
                  number ? Alignment::RightCentre : Alignment::LeftCentre)
            << code;
    }
}

TEST_F(GridDisplay, newWindowSizeLosesThePlaceAndTheEdit) {
    field(1, FieldType::Text);
    records(3);
    edit(2, 1);
    doc.editor.text = "typed";
    gridResized(doc);
    EXPECT_EQ(at(), (std::pair(0, 0)));
    EXPECT_FALSE(doc.editor.open());
    EXPECT_EQ(cell(2, 1), "");
}

// Clipboard

TEST_F(GridDisplay, blockIsCopiedWithTabsAndLineBreaks) {
    field(1, FieldType::Text);
    field(2, FieldType::Checkbox);
    field(3, FieldType::Memo);
    records(2);
    setCell(0, 1, "a");
    setCell(1, 1, "b,c");
    doc.grd.setPicture(2, 3, model::Picture::CheckOn);
    doc.grd.setPicture(3, 3, model::Picture::CheckOff);
    setCell(0, 3, "one\ntwo");
    setCell(1, 3, "say \"x\"");
    const model::GridPlace corners[] = {{2, 2, 3, 4}, {3, 4, 2, 2}, {2, 4, 3, 2}, {3, 2, 2, 4}};
    for (const auto& place : corners) {
        doc.grd.setPlace(place);
        EXPECT_EQ(CopyGridCells(doc, t), "a\tY\t\"one\ntwo\"\nb,c\tN\t\"say \"x\"\"");
        EXPECT_EQ(doc.grd.place(), place);
    }
    EXPECT_TRUE(doc.GridReady);
    EXPECT_TRUE(t.user.atRest());
    EXPECT_EQ(t.user.waits, 4);
}

TEST_F(GridDisplay, hiddenRowsAreCopiedToo) {
    field(1, FieldType::Text);
    records(3);
    for (int record = 0; record < 3; ++record)
        setCell(record, 1, std::to_string(record));
    doc.grd.setRowHeight(3, 0);
    doc.grd.setPlace({2, 2, 4, 2});
    EXPECT_EQ(CopyGridCells(doc, t), "0\n1\n2");
}

TEST_F(GridDisplay, checkboxWithoutAPictureReadsAsN) {
    field(1, FieldType::Checkbox);
    records(1);
    doc.grd.setPlace({2, 1, 2, 2});
    EXPECT_EQ(CopyGridCells(doc, t), "Unfiled\tN");
}

TEST_F(GridDisplay, cutAndPasteKnowOneCellOnly) {
    records(2);
    doc.grd.setCell(2, 1);
    EXPECT_FALSE(hasBlock(doc));
    EXPECT_FALSE(refuseBlock(doc, t));
    EXPECT_TRUE(t.user.messages.empty());
    doc.grd.setPlace({2, 1, 3, 1});
    EXPECT_TRUE(hasBlock(doc));
    doc.grd.setPlace({2, 1, 2, 2});
    EXPECT_TRUE(refuseBlock(doc, t));
    EXPECT_EQ(lastMessage().text, "Cut and Paste is not supported for multiple cells");
}

// Combos

TEST_F(GridDisplay, viewsAreOfferedInSlotOrder) {
    EXPECT_EQ(viewEntries(doc.CurrDB20), (std::vector<std::string>{"Show All Fields", "Edit Views..."}));
    doc.CurrDB20.Views[11].Name = "Last";
    doc.CurrDB20.Views[2].Name = "Prices";
    doc.CurrDB20.Views[12].Name = "Carried";
    EXPECT_EQ(viewEntries(doc.CurrDB20),
              (std::vector<std::string>{"Show All Fields", "Prices", "Last", "Edit Views..."}));
}

TEST_F(GridDisplay, filtersAreOfferedInSlotOrder) {
    EXPECT_EQ(filterEntries(doc.CurrDB20), (std::vector<std::string>{"No Filter", "Multiple", "Edit Filters..."}));
    doc.CurrDB20.Filters[11].Name = "Last";
    doc.CurrDB20.Filters[0].Name = "Cheap";
    doc.CurrDB20.Filters[12].Name = "Carried";
    EXPECT_EQ(filterEntries(doc.CurrDB20),
              (std::vector<std::string>{"No Filter", "Cheap", "Last", "Multiple", "Edit Filters..."}));
}

} // namespace
} // namespace tallybook::document
