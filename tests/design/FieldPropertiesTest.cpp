#include "core/design/FieldProperties.h"

#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::design {
namespace {

using model::FieldType;
using test::TestServices;

constexpr int kSlot = 2;

TEST(FieldPanels, showThePanelsOfTheType) {
    const std::vector<std::pair<FieldType, std::vector<Panel>>> shown = {
        {FieldType::NotUsed, {}},
        {FieldType::Text,
         {Panel::AutoWriter, Panel::chkBarcodeScan, Panel::checkDisableAutoShift, Panel::txtDefault}},
        {FieldType::Integer, {Panel::AutoWriter, Panel::checkIncrementDecrement, Panel::txtDefault}},
        {FieldType::Long, {Panel::AutoWriter, Panel::checkIncrementDecrement, Panel::txtDefault}},
        {FieldType::Float, {Panel::cmbDecDigs, Panel::AutoWriter, Panel::txtDefault}},
        {FieldType::List, {Panel::ListItems}},
        {FieldType::Checkbox, {Panel::cmbDefault}},
        {FieldType::Date, {Panel::cmbDefault}},
        {FieldType::Time, {Panel::cmbDefault}},
        {FieldType::Expression, {Panel::frmExpr, Panel::cmbDecDigs}},
        {FieldType::Memo, {Panel::AutoWriter}},
        {FieldType::Key, {}},
        {FieldType::DBJoin, {Panel::frmExternal}},
        {FieldType::DBLookup, {Panel::frmExternal}},
        {FieldType::OneToMany, {Panel::frmMasterDetail}},
        {FieldType::AddressBookJoin, {Panel::FrmAddress}},
        {FieldType::AddressBookLookup, {Panel::FrmAddress}},
        {FieldType::RadioButton, {Panel::FrmRadio}},
        {FieldType::Image, {Panel::cmbDefault}},
        {FieldType::ConditionalExpression, {Panel::FrmCondExpression}},
        {FieldType::AutoIncremental, {Panel::cmbDefault}},
        {FieldType::Plugin, {}},
        {FieldType::AdvExpression, {Panel::frmExprAdv, Panel::cmbDecDigs}},
    };
    ASSERT_EQ(shown.size(), 23u);
    for (const auto& [type, panels] : shown)
        for (int panel = 0; panel <= static_cast<int>(Panel::FrmCondExpression); ++panel) {
            const auto asked = static_cast<Panel>(panel);
            EXPECT_EQ(showsPanel(type, asked), std::find(panels.begin(), panels.end(), asked) != panels.end())
                << model::fieldTypeName(type) << ' ' << panel;
        }
}

TEST(FieldPanels, listTheDefaultsAndSeparators) {
    const auto texts = [](auto entries) { return std::vector<std::string>(entries.begin(), entries.end()); };
    using Texts = std::vector<std::string>;
    EXPECT_EQ(texts(defaultEntries(FieldType::Date)), (Texts{"none", "Record Added", "Record Updated"}));
    EXPECT_EQ(texts(defaultEntries(FieldType::Time)), (Texts{"none", "Record Added", "Record Updated"}));
    EXPECT_EQ(texts(defaultEntries(FieldType::Image)), (Texts{"black & white", "16 grayscale", "256 colors"}));
    EXPECT_EQ(defaultEntries(FieldType::Checkbox).size(), 2u);
    EXPECT_TRUE(defaultEntries(FieldType::AutoIncremental).empty());
    EXPECT_EQ(texts(separatorEntries()),
              (Texts{"none", "Comma", "Space", "Semicolon", "Slash", "Back-Slash", "Dash", "None"}));
}

class FieldValues : public testing::Test {
protected:
    model::FieldDef& field() { return db.Fields[kSlot]; }
    FieldPropDraft fill() { return fillAttributeValues(db, kSlot, t); }
    void items(int count) {
        for (int i = 1; i <= count; ++i) {
            db.Lists[kSlot].ItemIds.push_back(static_cast<std::uint8_t>(i));
            db.Lists[kSlot].Items.push_back("Item " + std::to_string(i));
        }
    }
    TestServices t;
    model::DatabaseModel db;
};

TEST_F(FieldValues, comeFromTheSlot) {
    field().Type = FieldType::Integer;
    field().Name = "Count";
    field().Default = "5";
    field().AutoWriter = 3;
    field().IncDec = 1;
    items(2);
    const FieldPropDraft draft = fill();
    EXPECT_EQ(draft.txtFieldName, "Count");
    EXPECT_EQ(draft.cmbFieldType, 2);
    EXPECT_EQ(draft.txtDefault, "5");
    EXPECT_TRUE(draft.checkAutoWriter);
    EXPECT_EQ(draft.cmbSeparate, 3);
    EXPECT_EQ(draft.ListAW, db.Lists.at(kSlot));
    EXPECT_TRUE(draft.checkIncrementDecrement);
    EXPECT_EQ(draft.cmbDefaultText, "1");
}

TEST_F(FieldValues, readTextFlags) {
    field().Type = FieldType::Text;
    field().Decimals = 1;
    field().FieldFlags = 0x81;
    EXPECT_TRUE(fill().checkDisableAutoShift);
    EXPECT_TRUE(fill().chkBarcodeScan);
    field().Decimals = 0;
    field().FieldFlags = 0x7F;
    EXPECT_FALSE(fill().checkDisableAutoShift);
    EXPECT_FALSE(fill().chkBarcodeScan);
}

TEST_F(FieldValues, readDefaultsOfLists) {
    const struct {
        FieldType type;
        const char* text;
        std::uint8_t decimals;
        int position;
    } cases[] = {
        {FieldType::Date, "", 0, 0},     {FieldType::Date, "A", 0, 1}, {FieldType::Time, "U", 0, 2},
        {FieldType::Image, "", 1, 0},    {FieldType::Image, "", 4, 1}, {FieldType::Image, "", 8, 2},
        {FieldType::Checkbox, "", 1, 1},
    };
    for (const auto& c : cases) {
        field().Type = c.type;
        field().Default = c.text;
        field().Decimals = c.decimals;
        EXPECT_EQ(fill().cmbDefault, c.position) << model::fieldTypeName(c.type) << ' ' << c.text;
    }
    field().Type = FieldType::AutoIncremental;
    db.AutoIncNext[kSlot] = 77;
    EXPECT_EQ(fill().cmbDefaultText, "77");
}

TEST_F(FieldValues, digitsBeyondTheListAreNoSelection) {
    field().Type = FieldType::Float;
    field().Decimals = 3;
    EXPECT_EQ(fill().cmbDecDigs, 3);
    field().Decimals = 4;
    EXPECT_EQ(fill().cmbDecDigs, -1);
    field().Type = FieldType::RadioButton;
    items(4);
    EXPECT_EQ(fill().cmbDecDigs, 0);
}

TEST_F(FieldValues, showRadioOptions) {
    field().Type = FieldType::RadioButton;
    field().Default = "2";
    items(3);
    const RadioDraft radio = fill().FrmRadio;
    EXPECT_EQ(radio.count(), 3);
    EXPECT_EQ(radio.Optxt[2], "Item 3");
    EXPECT_EQ(radio.OptSel, 1);
    field().Default = "4";
    EXPECT_EQ(fill().FrmRadio.OptSel, -1);
}

TEST_F(FieldValues, aListGivesARadioButtonItsFirstEight) {
    field().Type = FieldType::List;
    items(9);
    FieldPropDraft draft = fill();
    selectFieldType(draft, FieldType::RadioButton, db, kSlot, t);
    ASSERT_EQ(t.user.messages.size(), 1u);
    EXPECT_EQ(t.user.messages[0].text, "Only the first Eight values of the list will be considered");
    EXPECT_EQ(t.user.messages[0].title, "Existing options found");
    EXPECT_EQ(draft.FrmRadio.CmbNobuton, 6);
    EXPECT_EQ(draft.FrmRadio.Optxt[7], "Item 8");

    db.Lists[kSlot] = {};
    items(8);
    draft = fill();
    selectFieldType(draft, FieldType::RadioButton, db, kSlot, t);
    EXPECT_EQ(t.user.messages.size(), 1u);
    EXPECT_EQ(draft.FrmRadio.count(), 8);

    db.Lists[kSlot] = {};
    items(1);
    draft = fill();
    selectFieldType(draft, FieldType::RadioButton, db, kSlot, t);
    EXPECT_EQ(draft.FrmRadio.count(), 2);
}

TEST_F(FieldValues, showAJoin) {
    field().Type = FieldType::DBJoin;
    EXPECT_FALSE(fill().external.displayField);
    db.Externals[kSlot] = {"Books", 3, 4, 1, 2, 9};
    const ExternalDraft external = fill().external;
    EXPECT_EQ(external.Source, "Books");
    EXPECT_EQ(external.joinField, 3);
    EXPECT_EQ(external.displayField, 4);
    EXPECT_EQ(external.CmbViewList, 1);
    EXPECT_EQ(external.KeyType, 2);
    EXPECT_EQ(external.ABField2, 9);
}

TEST_F(FieldValues, chooseBetweenAFieldAndAConstant) {
    db.CondExprs[kSlot].TrueField = 4;
    db.CondExprs[kSlot].FalseText = "no";
    db.CondExprs[kSlot].FalseKind = 1;
    FieldPropDraft draft = fill();
    EXPECT_EQ(draft.branchThen, (BranchDraft{true, 4, "", 0}));
    EXPECT_EQ(draft.branchElse, (BranchDraft{false, 0, "no", 1}));
    chooseBranch(draft.branchThen, 0);
    EXPECT_FALSE(draft.branchThen.useField);
    chooseBranch(draft.branchElse, 5);
    EXPECT_TRUE(draft.branchElse.useField);
    EXPECT_EQ(draft.branchElse.text, "no");
}

TEST_F(FieldValues, theAutoWriterTakesAndLosesItems) {
    FieldPropDraft draft;
    clickAutoWriter(draft);
    EXPECT_TRUE(draft.checkAutoWriter);
    EXPECT_EQ(draft.cmbSeparate, 1);
    EXPECT_FALSE(cmdAddToList(draft, "", t));
    for (int i = 1; i <= 60; ++i)
        EXPECT_TRUE(cmdAddToList(draft, std::to_string(i), t));
    EXPECT_FALSE(cmdAddToList(draft, "61", t));
    EXPECT_EQ(t.user.texts().back(), "List fields cannot have more than 60 items");
    cmdRemFrmList(draft, 4);
    cmdRemFrmList(draft, 60);
    EXPECT_EQ(draft.ListAW.Count(), 59);
    EXPECT_TRUE(cmdAddToList(draft, "again", t));
    EXPECT_EQ(draft.ListAW.ItemIds.back(), 5);
    cmdRemFrmList(draft, 0);
    EXPECT_FALSE(cmdAddToList(draft, std::string(255, 'a'), t));
    EXPECT_EQ(t.user.texts().back(), "An item may have at most 254 characters.");
}

struct DefaultCase {
    FieldType type;
    const char* text;
    int digits;
    const char* message;
};

TEST_F(FieldValues, defaultsFitTheirType) {
    const char* const integer = "Integer value expected";
    const char* const integerRange = "Value cannot exceed 32767 or -32768";
    const char* const whole = "Long value expected";
    const char* const wholeRange = "Value cannot exceed 2147483647 or -2147483648!";
    const char* const floating = "Floating value expected";
    const char* const digits = "Decimal Digits exceed!";
    const DefaultCase cases[] = {
        {FieldType::Integer, "", 0, ""},
        {FieldType::Integer, "-", 0, ""}, // refused at OK
        {FieldType::Integer, "32767", 0, ""},
        {FieldType::Integer, "-32768", 0, ""},
        {FieldType::Integer, "40000", 0, integerRange},
        {FieldType::Integer, "-32769", 0, integerRange},
        {FieldType::Integer, "1.0", 0, integer},
        {FieldType::Integer, "abc", 0, integer},
        {FieldType::Long, "2147483647", 0, ""},
        {FieldType::Long, "2147483648", 0, wholeRange},
        {FieldType::Long, "-2147483649", 0, wholeRange},
        {FieldType::Long, "1.5", 0, whole},
        {FieldType::Long, "x", 0, whole},
        {FieldType::Float, "1.25", 2, ""},
        {FieldType::Float, "1.255", 2, digits},
        {FieldType::Float, "1.2", 0, digits},
        {FieldType::Float, "1.2345", -1, ""},
        {FieldType::Float, "one", 2, floating},
        {FieldType::Text, "one", 2, ""},
    };
    for (const DefaultCase& c : cases) {
        FieldPropDraft draft;
        draft.cmbFieldType = static_cast<int>(c.type);
        draft.txtDefault = c.text;
        draft.cmbDecDigs = c.digits;
        t.user.messages.clear();
        EXPECT_EQ(checkDefault(draft, t), *c.message == 0) << c.text;
        if (*c.message == 0)
            continue;
        ASSERT_EQ(t.user.messages.size(), 1u) << c.text;
        EXPECT_EQ(t.user.messages[0].text, c.message) << c.text;
        EXPECT_EQ(t.user.messages[0].title, "Warning");
    }
}

} // namespace
} // namespace tallybook::design
