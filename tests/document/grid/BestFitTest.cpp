#include "document/DocumentFixture.h"

namespace tallybook::document {
namespace {

using model::FieldType;

// Every character is 100 twips wide, "|" 40, and "AV" move together by 30.
class PlainMeasure : public TextMeasure {
public:
    int textWidth(std::string_view text) const override {
        ++measured;
        int width = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            width += characterWidth(static_cast<unsigned char>(text[i]));
            if (i > 0 && text[i - 1] == 'A' && text[i] == 'V')
                width -= 30;
        }
        return width;
    }
    int characterWidth(unsigned char character) const override { return character == '|' ? 40 : 100; }
    int screenWidth() const override { return screen; }

    mutable int measured = 0;
    int screen = 20000;
};

struct BestFit : test::DocumentFixture {
    int fit(int slot) {
        bestFit1(doc, t, measure);
        return doc.grd.columnWidth(model::columnOfSlot(slot));
    }
    PlainMeasure measure;
};

TEST_F(BestFit, widestTextDecidesAndTheNameCounts) {
    field(1, FieldType::Text, "Name");
    records(3);
    EXPECT_EQ(fit(1), 400 + 150);
    setCell(1, 1, "seven c");
    EXPECT_EQ(fit(1), 700 + 150);
    setCell(2, 1, "||||||||||");
    EXPECT_EQ(fit(1), 700 + 150);
}

TEST_F(BestFit, typeNameDoesNotCount) {
    field(1, FieldType::ConditionalExpression, "C");
    records(1);
    EXPECT_EQ(fit(1), 100 + 150);
}

TEST_F(BestFit, narrowColumnHasAHundredTwips) {
    field(1, FieldType::Text, "|");
    records(1);
    EXPECT_EQ(fit(1), 100 + 150);
}

TEST_F(BestFit, listsAndJoinsHaveRoomForTheirButton) {
    field(1, FieldType::List, "Name");
    field(2, FieldType::DBJoin, "Name");
    field(3, FieldType::DBLookup, "Name");
    records(1);
    EXPECT_EQ(fit(1), 400 + 400);
    EXPECT_EQ(fit(2), 400 + 400);
    EXPECT_EQ(fit(3), 400 + 150);
    EXPECT_EQ(fit(0), 1000 + 400); // "Categories"
}

TEST_F(BestFit, quarterOfTheScreenIsTheLimit) {
    field(1, FieldType::Text, "Name");
    records(1);
    setCell(0, 1, std::string(200, 'x'));
    EXPECT_EQ(fit(1), 5000);
    measure.screen = 1000;
    EXPECT_EQ(fit(1), 250);
}

TEST_F(BestFit, hiddenRowsCount) {
    field(1, FieldType::Text, "N");
    records(2);
    setCell(1, 1, "wide text");
    doc.grd.setRowHeight(3, 0);
    EXPECT_EQ(fit(1), 900 + 150);
}

TEST_F(BestFit, onlyTheWidestAreMeasuredAsTheFontDrawsThem) {
    field(1, FieldType::Text, "N");
    records(1000);
    for (int record = 0; record < 1000; ++record)
        setCell(record, 1, "text " + std::to_string(record));
    setCell(500, 1, "AVAVAVAVAV");
    EXPECT_EQ(fit(1), 1000 - 150 + 150);
    EXPECT_LT(measure.measured, 20);
}

TEST_F(BestFit, neighboursThatMoveTogetherLetTheNextWidestWin) {
    field(1, FieldType::Text, "N");
    records(2);
    setCell(0, 1, "AVAVAVAVAV"); // 1000 by its characters, 850 as drawn
    setCell(1, 1, "ninewide9");
    EXPECT_EQ(fit(1), 900 + 150);
}

TEST_F(BestFit, unusedColumnsKeepTheirWidth) {
    records(1);
    doc.grd.setColumnWidth(model::columnOfSlot(5), 0);
    EXPECT_EQ(fit(0), 1400);
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        EXPECT_EQ(doc.grd.columnWidth(model::columnOfSlot(slot)), slot == 5 ? 0 : model::kDefaultSize) << slot;
    EXPECT_EQ(doc.grd.columnWidth(model::kNumberColumn), model::kNumberColumnWidth);
    EXPECT_EQ(doc.grd.columnWidth(model::kScratchColumn), 0);
}

TEST_F(BestFit, commitsTheOpenEditAndGoesToTheFirstCell) {
    field(1, FieldType::Text, "N");
    records(3);
    edit(2, 1);
    doc.editor.text = "twelve chars";
    EXPECT_EQ(fit(1), 1200 + 150);
    EXPECT_EQ(cell(2, 1), "twelve chars");
    EXPECT_EQ(at(), (std::pair(0, 0)));
    EXPECT_TRUE(doc.GridReady);
    EXPECT_TRUE(t.user.atRest());
}

} // namespace
} // namespace tallybook::document
