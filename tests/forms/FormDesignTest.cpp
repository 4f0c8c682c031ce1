#include "core/forms/FormDesign.h"

#include "support/TestServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::forms {
namespace {

using model::FieldType;
using platform::Answer;
using testing::ElementsAre;

constexpr RowPlace kFirst{false, 0};
constexpr RowPlace kSecond{false, 1};

class FormDesignTest : public testing::Test {
protected:
    FormDesignTest() {
        model::clearDocument(m_doc);
        addField(1, FieldType::Text, "Title");
        addField(2, FieldType::Checkbox, "Read");
        addField(3, FieldType::List, "Kind");
    }
    void addField(std::size_t slot, FieldType type, const char* name) {
        m_doc.CurrDB20.Fields[slot].Type = type;
        m_doc.CurrDB20.Fields[slot].Name = name;
    }
    void addTabs(int tabs, std::uint8_t start) {
        m_doc.CurrDB20.NumForms = static_cast<std::uint8_t>(tabs + 1);
        m_doc.CurrDB20.StartForm = start;
    }
    FormDesign open() { return {m_doc, m_test}; }

    static std::vector<int> fieldsOf(const FormDesign& design, int part) {
        std::vector<int> fields;
        for (const model::FormItem& row : design.builder().part(part).rows)
            fields.push_back(row.Field);
        while (!fields.empty() && fields.back() == 0)
            fields.pop_back();
        return fields;
    }

    model::Document m_doc;
    test::TestServices m_test;
};

TEST_F(FormDesignTest, opensWithNothingSelected) {
    const FormDesign design = open();
    EXPECT_EQ(design.tabInView(), 0);
    EXPECT_FALSE(design.selection());
    EXPECT_EQ(design.limits(), FormLimits());
    EXPECT_FALSE(design.changed());
}

TEST_F(FormDesignTest, firstTabIsInView) {
    addTabs(3, 5);
    const FormDesign design = open();
    EXPECT_EQ(design.tabInView(), 1);
    EXPECT_EQ(design.slider(), 5);
}

TEST_F(FormDesignTest, clickOnAFreeRowTellsWhatToDo) {
    FormDesign design = open();
    design.click(kSecond, Side::Value);
    ASSERT_EQ(m_test.user.messages.size(), 1u);
    EXPECT_EQ(m_test.user.messages[0].text, "Drag a field from the list and drop at the position required");
    EXPECT_EQ(m_test.user.messages[0].title, "Attention");
    EXPECT_EQ(design.selection()->place, kSecond);
    EXPECT_FALSE(design.hasItem());
}

TEST_F(FormDesignTest, fieldIsPutIntoARow) {
    FormDesign design = open();
    design.AddValue(kSecond, 1);
    EXPECT_EQ(design.item(kSecond).Caption, "Title");
    EXPECT_TRUE(design.hasItem());
    EXPECT_TRUE(design.changed());
    EXPECT_EQ(m_doc.CurrDB20.Forms[0].NumItems, 0); // not before it is saved
    EXPECT_FALSE(m_doc.DocModified);
}

TEST_F(FormDesignTest, fieldMayStandInSeveralRows) {
    FormDesign design = open();
    design.AddValue(kFirst, 1);
    design.AddValue(kSecond, 1);
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre(1, 1));
}

TEST_F(FormDesignTest, fieldsFollowEachOtherByTheKeyboard) {
    FormDesign design = open();
    EXPECT_TRUE(design.addToSelected(1));
    EXPECT_TRUE(design.addToSelected(255));
    EXPECT_TRUE(design.addToSelected(2));
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre(1, 255, 2));
}

TEST_F(FormDesignTest, rowIsTakenOut) {
    FormDesign design = open();
    design.AddValue(kFirst, 1);
    EXPECT_TRUE(design.ClearFld());
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre());
    EXPECT_TRUE(m_test.user.messages.empty());
    EXPECT_FALSE(design.ClearFld());
    ASSERT_EQ(m_test.user.messages.size(), 1u);
    EXPECT_EQ(m_test.user.messages[0].text, "You must click on a field in the Palm screen to remove it.");
    EXPECT_EQ(m_test.user.messages[0].title, "Tallybook Pocket");
}

TEST_F(FormDesignTest, rowIsMovedAndTheOthersCloseUp) {
    FormDesign design = open();
    for (const std::uint8_t field : {1, 2, 3})
        design.addToSelected(field);
    design.moveRow({false, 0}, {false, 2});
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre(2, 3, 1));
    design.moveRow({false, 2}, {false, 0});
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre(1, 2, 3));
    EXPECT_EQ(design.selection()->place, kFirst);
    design.moveRow({false, 7}, {false, 0}); // a free row goes nowhere
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre(1, 2, 3));
}

TEST_F(FormDesignTest, rowGoesToATabAndBack) {
    addTabs(1, 4);
    FormDesign design = open();
    design.AddValue(kFirst, 1);
    design.moveRow(kFirst, {true, 2});
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre());
    EXPECT_EQ(design.builder().row(1, 2).Field, 1);
}

TEST_F(FormDesignTest, neighboursChangePlaces) {
    FormDesign design = open();
    design.AddValue(kFirst, 1);
    design.AddValue(kSecond, 2);
    EXPECT_TRUE(design.exchange(-1));
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre(2, 1));
    EXPECT_FALSE(design.exchange(-1)); // it is the first
    EXPECT_EQ(design.selection()->place, kFirst);
}

TEST_F(FormDesignTest, arrowsWalkOverTheStrip) {
    addTabs(1, 2); // one base row
    FormDesign design = open();
    design.walk(1);
    EXPECT_EQ(design.selection()->place, kFirst);
    design.walk(1);
    EXPECT_EQ(design.selection()->place, (RowPlace{true, 0}));
    design.walk(-1);
    design.walk(-1);
    EXPECT_EQ(design.selection()->place, kFirst);
}

TEST_F(FormDesignTest, settingsGoToTheSelectedSide) {
    FormDesign design = open();
    design.AddValue(kFirst, 1);
    ItemSettings settings = design.settings();
    settings.text = "Name";
    settings.font = 2;
    EXPECT_TRUE(design.setValue(settings));
    design.selectSide(Side::Value);
    settings = design.settings();
    settings.locked = true;
    EXPECT_TRUE(design.setValue(settings));
    EXPECT_EQ(design.item(kFirst).Caption, "Name");
    EXPECT_EQ(design.item(kFirst).ItemKind, 2);
    EXPECT_EQ(design.item(kFirst).ItemByte2, kLocked);
}

TEST_F(FormDesignTest, textWithNulIsRefused) {
    FormDesign design = open();
    design.AddValue(kFirst, 1);
    ItemSettings settings = design.settings();
    settings.text = std::string("a\0b", 3);
    EXPECT_FALSE(design.setValue(settings));
    EXPECT_EQ(m_test.user.messages.size(), 1u);
    EXPECT_EQ(design.item(kFirst).Caption, "Title");
}

TEST_F(FormDesignTest, helpBelongsToARowWithAField) {
    FormDesign design = open();
    EXPECT_FALSE(design.setHelp("nothing selected"));
    design.AddValue(kFirst, 1);
    EXPECT_TRUE(design.setHelp("The title\nas printed"));
    EXPECT_EQ(design.help(), "The title\nas printed");
}

TEST_F(FormDesignTest, sliderSnapsBackFromEleven) {
    addTabs(1, 3);
    FormDesign design = open();
    EXPECT_EQ(design.setSlider(11), 10);
    EXPECT_EQ(design.stepSlider(1), 10);
    EXPECT_EQ(design.setSlider(1), 1);
    EXPECT_EQ(design.stepSlider(-1), 1);
    EXPECT_EQ(design.builder().startRow, 0);
}

TEST_F(FormDesignTest, tabsComeAndGo) {
    FormDesign design = open();
    design.setTabs(2);
    EXPECT_EQ(design.tabInView(), 1);
    design.selectTab(2);
    EXPECT_TRUE(design.setTabName("Notes"));
    design.setTabs(1);
    EXPECT_EQ(design.tabInView(), 1);
    design.setTabs(2);
    EXPECT_EQ(tabCaption(design.builder(), 2), "Notes"); // it comes back with its name
    design.setTabs(0);
    EXPECT_EQ(design.tabInView(), 0);
    EXPECT_FALSE(design.changed());
    design.setTabs(99);
    EXPECT_EQ(design.builder().tabs, 14);
}

TEST_F(FormDesignTest, selectionLeavesWithItsTab) {
    addTabs(1, 1);
    FormDesign design = open();
    design.AddValue({true, 3}, 1);
    design.setTabs(0);
    EXPECT_FALSE(design.selection());
}

TEST_F(FormDesignTest, splitterBelongsToItsPart) {
    addTabs(1, 3);
    FormDesign design = open();
    design.setSplitter(true, 240, 480);
    design.setSplitter(false, 999, 480);
    EXPECT_EQ(design.formByte(true), 80);
    EXPECT_EQ(design.formByte(false), 160);
    design.moveSplitter(-1); // nothing is selected: that of the tab
    EXPECT_EQ(design.formByte(true), 79);
    design.EditValue(kFirst, Side::Label);
    design.moveSplitter(5);
    EXPECT_EQ(design.formByte(false), 160);
}

TEST_F(FormDesignTest, clearingAsks) {
    FormDesign design = open();
    design.AddValue(kFirst, 1);
    m_test.user.answers = {Answer::No};
    EXPECT_FALSE(design.clearForm());
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre(1));
    m_test.user.answers = {Answer::Yes};
    EXPECT_TRUE(design.clearForm());
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre());
    EXPECT_EQ(m_test.user.messages[0].text,
              "Clearing the form will remove all the Fields from the form.\nDo you want to clear the form?");
    EXPECT_EQ(m_test.user.messages[0].title, "Are you sure");
}

TEST_F(FormDesignTest, savingPacksAndMarksTheDocument) {
    FormDesign design = open();
    design.AddValue({false, 4}, 1);
    design.save();
    EXPECT_TRUE(m_doc.DocModified);
    EXPECT_EQ(m_doc.CurrDB20.Forms[0].NumItems, 1);
    EXPECT_THAT(fieldsOf(design, 0), ElementsAre(1));
    EXPECT_FALSE(design.changed());
}

TEST_F(FormDesignTest, leavingAsksOnlyWhenSomethingChanged) {
    FormDesign design = open();
    EXPECT_TRUE(design.mayLeave());
    design.AddValue(kFirst, 1);
    m_test.user.answers = {Answer::Cancel, Answer::No, Answer::Yes};
    EXPECT_FALSE(design.mayLeave());
    EXPECT_TRUE(design.mayLeave());
    EXPECT_FALSE(m_doc.DocModified);
    EXPECT_EQ(m_doc.CurrDB20.Forms[0], model::FormDef());
    EXPECT_TRUE(design.mayLeave());
    EXPECT_TRUE(m_doc.DocModified);
    EXPECT_EQ(m_doc.CurrDB20.Forms[0].Items[0].Field, 1);
    EXPECT_EQ(m_test.user.messages[0].text, "Do you want to save the changes you made to the form?");
}

TEST_F(FormDesignTest, valuesOfARecordAreShown) {
    for (int record = 0; record < 2; ++record) {
        const int row = model::appendRecord(m_doc);
        m_doc.grd.setText(row, model::columnOfSlot(1), record == 0 ? "Emma" : "Ulysses");
        m_doc.grd.setPicture(row, model::columnOfSlot(2),
                             record == 0 ? model::Picture::CheckOff : model::Picture::CheckOn);
    }
    m_doc.grd.setCell(2, 1);
    FormDesign design = open();
    design.AddValue(kFirst, 1);
    design.AddValue(kSecond, 2);
    EXPECT_EQ(design.shownValue(kFirst).text, "Text"); // its type, while no values are shown
    design.showValues(true);
    EXPECT_EQ(design.shownValue(kFirst).text, "Emma");
    EXPECT_EQ(design.shownValue(kSecond).mark, ShownValue::Mark::CheckOff);
    design.stepRecord(1);
    EXPECT_EQ(design.shownValue(kFirst).text, "Ulysses");
    EXPECT_EQ(design.shownValue(kSecond).mark, ShownValue::Mark::CheckOn);
    design.stepRecord(1);
    EXPECT_EQ(design.record(), 1); // there is no further one
}

TEST_F(FormDesignTest, withoutRecordsThereAreNoValues) {
    FormDesign design = open();
    design.showValues(true);
    EXPECT_FALSE(design.showsValues());
}

} // namespace
} // namespace tallybook::forms
