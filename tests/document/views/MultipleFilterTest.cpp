// Which filters the list of the multiple filter dialog shows and checks.
#include "core/document/views/MultipleFilter.h"

#include "document/DocumentFixture.h"

namespace tallybook::test {
namespace {

class MultipleFilter : public DocumentFixture {
protected:
    MultipleFilter() {
        doc.CurrDB20.Filters[0].Name = "Lent";
        doc.CurrDB20.Filters[9].Name = "Cheap";
        doc.CurrDB20.Filters[11].Name = "Old";
    }

    std::string checked() const {
        std::string slots;
        for (const document::FilterLine& line : document::multipleFilterLines(doc))
            if (line.checked)
                slots += std::to_string(line.slot) + ' ';
        return slots;
    }
};

TEST_F(MultipleFilter, listsTheNamedOnesWithTheirNumbers) {
    EXPECT_EQ(
        document::multipleFilterLines(doc),
        (std::vector<document::FilterLine>{{0, "01. Lent", false}, {9, "10. Cheap", false}, {11, "12. Old", false}}));
}

TEST_F(MultipleFilter, doesNotOfferTheSpareSlot) {
    doc.CurrDB20.Filters[12].Name = "Spare";
    EXPECT_EQ(document::multipleFilterLines(doc).size(), 3U);
}

TEST_F(MultipleFilter, checksTheDefaultSetAtFirst) {
    doc.CurrDB20.DefaultFilterMask = 0b1000'0000'0001;
    EXPECT_EQ(checked(), "0 11 ");
}

TEST_F(MultipleFilter, checksTheSetOfTheChosenView) {
    doc.CurrDB20.DefaultFilterMask = 1;
    doc.CurrDB20.Views[3].Name = "Prices";
    doc.CurrDB20.Views[3].FilterMask = 0b10'0000'0000;
    doc.CurrentView = "Prices";
    EXPECT_EQ(checked(), "9 ");
}

TEST_F(MultipleFilter, checksWhatItChoseWhileThatIsInForce) {
    doc.CurrDB20.DefaultFilterMask = 1;
    doc.MultiFilterSel.set(9);
    doc.CurrentFilter = model::kMultipleFilter;
    EXPECT_EQ(checked(), "9 ");
    doc.MultiFilterSel.reset(); // of a view with several filters, before the dialog was used
    EXPECT_EQ(checked(), "");
}

TEST_F(MultipleFilter, forgetsItsChoiceWhenAnotherFilterOrAViewIsChosen) {
    doc.MultiFilterSel.set(9);
    doc.CurrDB20.DefaultFilterMask = 1;
    doc.CurrentFilter = 0;
    EXPECT_EQ(checked(), "0 ");
    doc.CurrDB20.Views[3].Name = "Prices";
    doc.CurrDB20.Views[3].FilterMask = 0b1000'0000'0000;
    doc.CurrentView = "Prices";
    doc.CurrentFilter = 12;
    EXPECT_EQ(checked(), "11 ");
}

TEST_F(MultipleFilter, doesNotOpenWithoutAFilter) {
    EXPECT_TRUE(document::mayChooseFilters(doc, services));
    doc.CurrDB20.Filters = {};
    EXPECT_FALSE(document::mayChooseFilters(doc, services));
    ASSERT_EQ(t.user.messages.size(), 1U);
    EXPECT_EQ(t.user.messages[0].text, "No Filters Available.");
    EXPECT_EQ(t.user.messages[0].title, "Cannot edit/apply multiple filter");
}

} // namespace
} // namespace tallybook::test
