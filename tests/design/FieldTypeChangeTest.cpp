#include "core/design/FieldProperties.h"
#include "document/DocumentFixture.h"

#include <array>
#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

namespace tallybook::design {
namespace {

using model::FieldType;
using model::Picture;
using platform::Answer;
using platform::Icon;
using Focus = FieldPropFocus;
using Texts = std::vector<std::string>;

constexpr int kSlot = 2;
constexpr int kOther = 1;

class FieldTypeChange : public test::DocumentFixture {
protected:
    FieldTypeChange() {
        field(kOther, FieldType::Text, "Title");
        field(kSlot, FieldType::Text, "Value");
    }

    // A column of texts under a field of a type, and the controls as the dialog opens on it.
    void open(FieldType type, const Texts& column) {
        field(kSlot, type, "Value");
        records(static_cast<int>(column.size()));
        for (std::size_t record = 0; record < column.size(); ++record)
            setCell(static_cast<int>(record), kSlot, column[record]);
        draft = fillAttributeValues(doc.CurrDB20, kSlot, t);
        doc.DocModified = false;
    }

    FieldPropResult ok(FieldPropMode mode = FieldPropMode::Document) {
        return fieldPropertiesOK(doc, t, kSlot, draft, mode);
    }
    FieldPropResult change(FieldType type, std::deque<Answer> answers = {Answer::Yes}) {
        draft.cmbFieldType = static_cast<int>(type);
        t.user.answers = std::move(answers);
        return ok();
    }
    // The refusal with its last message.
    void expectRefused(const FieldPropResult& result, Focus focus, const std::string& text, const std::string& title,
                       Icon icon = Icon::Information) {
        EXPECT_FALSE(result.accepted);
        EXPECT_EQ(result.focus, focus) << text;
        EXPECT_EQ(lastMessage().text, text);
        EXPECT_EQ(lastMessage().title, title) << text;
        EXPECT_EQ(lastMessage().icon, icon) << text;
    }

    Texts column() const {
        Texts texts;
        for (int record = 0; record < doc.NumDataRecs; ++record)
            texts.push_back(cell(record, kSlot));
        return texts;
    }
    const model::FieldDef& slot() const { return doc.CurrDB20.Fields[kSlot]; }

    void radio(const Texts& options) {
        draft.FrmRadio.CmbNobuton = static_cast<int>(options.size()) - 2;
        std::copy(options.begin(), options.end(), draft.FrmRadio.Optxt.begin());
    }
    // Fills what the checks of a type ask for.
    void complete(FieldType type) {
        draft.cmbFieldType = static_cast<int>(type);
        if (type == FieldType::Expression)
            draft.frmExpr.operands[0] = {kTypedNumber, "1"};
        if (type == FieldType::AdvExpression)
            draft.frmExprAdv.text = "1 + 1";
        if (type == FieldType::ConditionalExpression)
            draft.condition.CondFields[0] = kOther;
        if (type == FieldType::RadioButton)
            radio({"12", "abc"});
        if (type == FieldType::DBJoin)
            draft.external = {"Books", 1, 2, 3, 3, 0, 0};
    }

    FieldPropDraft draft;
};

// Beside a list's item there is nothing: the next save would store the keys of a join that is no more.
TEST_F(FieldTypeChange, aJoinThatBecomesAListLeavesNoKeys) {
    open(FieldType::DBJoin, {"Old Mill", "Old Mill"});
    doc.CellVals.set(0, kSlot, "20");
    doc.CellVals.set(1, kSlot, "20");
    EXPECT_TRUE(change(FieldType::List).accepted);
    std::string scratch;
    EXPECT_EQ(doc.CellVals.get(0, kSlot, scratch), "");
    EXPECT_EQ(doc.CellVals.get(1, kSlot, scratch), "");
    EXPECT_EQ(column(), (Texts{"Old Mill", "Old Mill"}));
    EXPECT_EQ(doc.CellLongs.get(1, kSlot), 1);
}

TEST_F(FieldTypeChange, wantsAName) {
    open(FieldType::Text, {"a"});
    draft.txtFieldName = "  ";
    expectRefused(ok(), Focus::txtFieldName, "Field Name cannot be blank", "Information");
    EXPECT_EQ(slot().Name, "Value");
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(FieldTypeChange, refusesTheNameOfAnotherSlot) {
    open(FieldType::Text, {"a"});
    draft.txtFieldName = " Title ";
    expectRefused(ok(), Focus::txtFieldName,
                  "Another Field exists with this name.\nEnter another name and save the field information ",
                  "Duplicate field name");
    draft.txtFieldName = "Value";
    EXPECT_TRUE(ok().accepted); // its own
}

TEST_F(FieldTypeChange, refusesTextsThatCannotBeStored) {
    open(FieldType::Text, {"a"});
    draft.txtFieldName = std::string(300, 'n');
    expectRefused(ok(), Focus::txtFieldName, "A name may have at most 254 characters.", "");
    draft.txtFieldName = std::string("a\0b", 3);
    expectRefused(ok(), Focus::txtFieldName, "A name holds a character that cannot be stored.", "");
    draft.txtFieldName = "Value";
    draft.txtDefault = std::string(255, 'd');
    expectRefused(ok(), Focus::txtDefault, "A default may have at most 254 characters.", "");
    draft.cmbFieldType = static_cast<int>(FieldType::OneToMany);
    draft.frmMasterDetail.Source = std::string(33, 's');
    expectRefused(ok(), Focus::frmMasterDetail, "The name of the other Tallybook may have at most 32 characters.",
                  "");
    draft.frmMasterDetail.Source.clear();
    draft.frmMasterDetail.Label2 = std::string(21, 'l');
    expectRefused(ok(), Focus::frmMasterDetail, "A label may have at most 20 characters.", "");
    draft.cmbFieldType = static_cast<int>(FieldType::ConditionalExpression);
    draft.condition.CondFields[0] = kOther;
    draft.branchElse.text = std::string(21, 'r');
    expectRefused(ok(), Focus::TxtElse, "A result may have at most 20 characters.", "");
}

TEST_F(FieldTypeChange, aLoneMinusIsNoDefault) {
    const std::pair<FieldType, const char*> cases[] = {{FieldType::Integer, "Integer value expected!"},
                                                       {FieldType::Long, "Long value expected!"},
                                                       {FieldType::Float, "Float value expected!"}};
    for (const auto& [type, text] : cases) {
        open(type, {});
        draft.txtDefault = "-";
        expectRefused(ok(), Focus::txtDefault, text, "Warning", Icon::Warning);
        EXPECT_EQ(draft.txtDefault, "");
    }
    open(FieldType::Text, {});
    draft.txtDefault = "-";
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().Default, "-");
}

TEST_F(FieldTypeChange, aDefaultOfAnotherTypeIsRefusedToo) {
    open(FieldType::Text, {});
    draft.txtDefault = "abc";
    draft.cmbFieldType = static_cast<int>(FieldType::Integer);
    expectRefused(ok(), Focus::txtDefault, "Integer value expected", "Warning", Icon::Warning);
}

TEST_F(FieldTypeChange, verifiesASimpleExpression) {
    open(FieldType::Text, {"a"});
    draft.cmbFieldType = static_cast<int>(FieldType::Expression);
    expectRefused(ok(), Focus::cmbExpr, "Complete the Expression", "Invalid Expression");
    draft.frmExpr.operands[0] = {kTypedNumber, "12345678901"};
    expectRefused(ok(), Focus::cmbExpr, "A number may have at most 10 characters.", "Error in the expression",
                  Icon::Critical);
    EXPECT_EQ(column(), Texts{"a"});
}

TEST_F(FieldTypeChange, wantsACondition) {
    open(FieldType::Text, {"a"});
    draft.cmbFieldType = static_cast<int>(FieldType::ConditionalExpression);
    expectRefused(ok(), Focus::Command1, "Enter the condition for the expression", "Incomplete information",
                  Icon::Critical);
}

TEST_F(FieldTypeChange, wantsEveryOption) {
    open(FieldType::Text, {});
    draft.cmbFieldType = static_cast<int>(FieldType::RadioButton);
    radio({"red", "", "blue"});
    const FieldPropResult result = ok();
    expectRefused(result, Focus::Optxt, "Enter the values for the options of the Radio-button ",
                  "Options cannot be empty");
    EXPECT_EQ(result.index, 1);
}

TEST_F(FieldTypeChange, wantsAWholeJoin) {
    open(FieldType::Text, {});
    draft.cmbFieldType = static_cast<int>(FieldType::DBJoin);
    draft.external.Source = "Books";
    expectRefused(ok(), Focus::frmExternal, "External view was not selected", "");
    draft.external.CmbViewList = 0;
    expectRefused(ok(), Focus::displayField, "External display field was not selected", "");
    draft.external.displayField = 1;
    expectRefused(ok(), Focus::joinField, "External join field was not selected", "");
    draft.external.joinField = 2;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(doc.CurrDB20.Externals.at(kSlot), (model::ExternalDef{"Books", 2, 1, 0, 11, 0}));
}

TEST_F(FieldTypeChange, asksBeforeAConversion) {
    open(FieldType::Text, {"12"});
    const FieldPropResult result = change(FieldType::Long, {Answer::No});
    expectRefused(result, Focus::cmbFieldType,
                  "Are you sure you want to convert this field from Text to Long?\nWarning: conversion not possible "
                  "will result in blanks or zeros",
                  "", Icon::Warning);
    EXPECT_EQ(slot().Type, FieldType::Text);
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(FieldTypeChange, asksNothingWithoutDataOrWithoutAChange) {
    open(FieldType::Text, {});
    EXPECT_TRUE(change(FieldType::Long, {}).accepted);
    open(FieldType::NotUsed, {"", ""});
    EXPECT_TRUE(change(FieldType::Long, {}).accepted);
    EXPECT_EQ(column(), (Texts{"0", "0"}));
    open(FieldType::Text, {"a"});
    EXPECT_TRUE(change(FieldType::Text, {}).accepted);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(FieldTypeChange, modeMaTouchesNoGrid) {
    open(FieldType::Text, {"12", "abc"});
    draft.cmbFieldType = static_cast<int>(FieldType::Long);
    draft.txtFieldName = "Pages";
    EXPECT_TRUE(ok(FieldPropMode::Ma).accepted);
    EXPECT_EQ(column(), (Texts{"12", "abc"}));
    EXPECT_EQ(doc.grd.text(0, kSlot + 1), "Value");
    EXPECT_EQ(slot().Type, FieldType::Long);
    EXPECT_EQ(slot().Name, "Pages");
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(FieldTypeChange, textToKeyKeepsTheKeysWhenAsked) {
    open(FieldType::Text, {"7", "8"});
    doc.RecKeys.set(0, 100);
    doc.RecKeys.set(1, 101);
    EXPECT_TRUE(change(FieldType::Key, {Answer::Yes, Answer::No}).accepted);
    EXPECT_EQ(column(), (Texts{"100", "101"}));
    EXPECT_EQ(
        t.user.messages[1].text,
        "WARNING:  This action will change the field into 'key'.   Would you like to convert the values into key "
        "values?   Note: Choosing 'YES' will delete all existing keys, cannot be undone.   If you choose 'NO' "
        "the existing keys will be preserved.");
    EXPECT_EQ(t.user.messages[1].icon, Icon::Warning);
}

TEST_F(FieldTypeChange, textToKeyMakesKeys) {
    open(FieldType::Text, {"7", "8"});
    EXPECT_TRUE(change(FieldType::Key, {Answer::Yes, Answer::Yes}).accepted);
    EXPECT_EQ(column(), (Texts{"7", "8"}));
    EXPECT_EQ(doc.RecKeys[1], 8);
    EXPECT_EQ(doc.CurrDB20.LastKey, 8);
}

TEST_F(FieldTypeChange, aColumnThatMakesNoKeysKeepsTheDialogOpen) {
    open(FieldType::Text, {"7", "x"});
    const FieldPropResult result = change(FieldType::Key, {Answer::Yes, Answer::Yes});
    expectRefused(result, Focus::cmbFieldType,
                  "Column must have numeric fields greater than zero.  Conversion not performed.", "",
                  Icon::Critical);
    EXPECT_EQ(slot().Type, FieldType::Text);
    EXPECT_EQ(column(), (Texts{"7", "x"}));
}

TEST_F(FieldTypeChange, textToListKeepsTheTexts) {
    open(FieldType::Text, {"b", "a", "", "b"});
    EXPECT_TRUE(change(FieldType::List).accepted);
    EXPECT_EQ(column(), (Texts{"b", "a", "", "b"}));
    EXPECT_EQ(doc.CurrDB20.Lists.at(kSlot).Items, (Texts{"b", "a"}));
    EXPECT_EQ(doc.CellLongs.get(3, kSlot), 1);
}

TEST_F(FieldTypeChange, sixtyDifferentTextsMakeNoList) {
    Texts texts;
    for (int i = 1; i <= 60; ++i)
        texts.push_back("Text " + std::to_string(i));
    open(FieldType::Text, texts);
    std::vector<DialogShown> shown;
    draft.cmbFieldType = static_cast<int>(FieldType::List);
    t.user.answers = {Answer::Yes};
    const FieldPropResult result = fieldPropertiesOK(doc, t, kSlot, draft, FieldPropMode::Document,
                                                     [&](DialogShown state) { shown.push_back(state); });
    EXPECT_FALSE(result.accepted);
    EXPECT_EQ(slot().Type, FieldType::Text);
    EXPECT_EQ(column(), texts);
    EXPECT_EQ(shown, (std::vector<DialogShown>{DialogShown::Hidden, DialogShown::Visible}));
    expectRefused(result, Focus::cmbFieldType,
                  "More than 60 unique items found.  Some items could not be included.\n"
                  "Convert this field back to text, reduce the number of unique items and try again.",
                  "", Icon::Critical);
    EXPECT_FALSE(doc.DocModified);
}

// The ids of the handheld's address book cannot be made anew.
TEST_F(FieldTypeChange, aListThatIsRefusedLeavesTheIdsOfAJoin) {
    Texts texts;
    for (int i = 0; i < 60; ++i)
        texts.push_back("Person " + std::to_string(i));
    open(FieldType::AddressBookJoin, texts);
    for (int record = 0; record < 60; ++record)
        doc.CellLongs.set(record, kSlot, 5000 + record);
    const model::DatabaseModel before = doc.CurrDB20;
    EXPECT_FALSE(change(FieldType::List).accepted);
    for (int record = 0; record < 60; ++record)
        EXPECT_EQ(doc.CellLongs.get(record, kSlot), 5000 + record);
    EXPECT_EQ(doc.CurrDB20, before);
}

TEST_F(FieldTypeChange, aListThatIsRefusedLeavesTheOptionsOfARadioButton) {
    items(kSlot, {{7, "red"}, {1, "green"}});
    open(FieldType::RadioButton, Texts(60, "x"));
    for (int record = 0; record < 60; ++record) {
        setCell(record, kSlot, "was " + std::to_string(record));
        doc.CellLongs.set(record, kSlot, 7);
    }
    EXPECT_FALSE(change(FieldType::List, {Answer::Yes, Answer::Yes}).accepted);
    EXPECT_EQ(t.user.messages[1].text, "Clear existing list and create new list?");
    EXPECT_EQ(t.user.messages[1].title, "Existing list found");
    EXPECT_EQ(t.user.messages[1].icon, Icon::Question);
    EXPECT_EQ(doc.CurrDB20.Lists.at(kSlot), (model::ListDef{{7, 1}, {"red", "green"}}));
    EXPECT_EQ(doc.CellLongs.get(59, kSlot), 7);
}

TEST_F(FieldTypeChange, anAdvancedExpressionLeavesNoColours) {
    open(FieldType::AdvExpression, {"late"});
    doc.grd.setColour(model::kFirstDataRow, model::columnOfSlot(kSlot), 255);
    EXPECT_TRUE(change(FieldType::Text).accepted);
    EXPECT_EQ(doc.grd.colour(model::kFirstDataRow, model::columnOfSlot(kSlot)), 0u);
}

// The letter that a date's default is stored as is no text of anybody's.
TEST_F(FieldTypeChange, onlyADefaultTextIsShownAsOne) {
    const struct {
        FieldType type;
        const char* stored;
        const char* shown;
    } cases[] = {{FieldType::Text, "a", "a"},    {FieldType::Integer, "5", "5"},       {FieldType::Long, "6", "6"},
                 {FieldType::Float, "7", "7"},   {FieldType::Memo, "m", "m"},          {FieldType::Date, "A", ""},
                 {FieldType::Time, "U", ""},     {FieldType::RadioButton, "1", ""},    {FieldType::List, "x", ""},
                 {FieldType::Checkbox, "x", ""}, {FieldType::AutoIncremental, "x", ""}};
    for (const auto& c : cases) {
        field(kSlot, c.type, "Value").Default = c.stored;
        EXPECT_EQ(fillAttributeValues(doc.CurrDB20, kSlot, t).txtDefault, c.shown) << static_cast<int>(c.type);
    }
    field(kSlot, FieldType::Date, "Value").Default = "A";
    open(FieldType::Date, {});
    EXPECT_TRUE(change(FieldType::Memo, {}).accepted);
    EXPECT_EQ(slot().Default, "");
    field(kSlot, FieldType::Date, "Value").Default = "A";
    open(FieldType::Date, {});
    EXPECT_TRUE(change(FieldType::Integer, {}).accepted); // refused for a text that nobody had typed
    EXPECT_EQ(slot().Default, "");
}

// "Checked" is the second of its list, and "Record Added" of another.
TEST_F(FieldTypeChange, aChoiceOfOneListIsNoneOfAnother) {
    field(kSlot, FieldType::Checkbox, "Value").Decimals = 1;
    open(FieldType::Checkbox, {});
    EXPECT_EQ(draft.cmbDefault, 1);
    selectFieldType(draft, FieldType::Date, doc.CurrDB20, kSlot, t);
    EXPECT_EQ(draft.cmbDefault, 0);
    selectFieldType(draft, FieldType::Checkbox, doc.CurrDB20, kSlot, t);
    EXPECT_EQ(draft.cmbDefault, 1);
    draft.cmbDefault = 0;
    selectFieldType(draft, FieldType::Date, doc.CurrDB20, kSlot, t);
    draft.cmbDefault = 2;
    selectFieldType(draft, FieldType::Time, doc.CurrDB20, kSlot, t); // the same list
    EXPECT_EQ(draft.cmbDefault, 2);
}

TEST_F(FieldTypeChange, wantsTheOtherTallybookOfAJoin) {
    open(FieldType::Text, {});
    complete(FieldType::DBJoin);
    draft.external.Source = " ";
    expectRefused(ok(), Focus::frmExternal, "The other Tallybook was not selected", "");
    draft.external.Source = "Books";
    EXPECT_TRUE(ok().accepted);
}

// While a field is made, neither its name nor its type is in the database.
TEST_F(FieldTypeChange, anExpressionMayNameItsOwnField) {
    field(3, FieldType::Float, "Amount");
    open(FieldType::NotUsed, {});
    field(kSlot, FieldType::NotUsed, "");
    draft.txtFieldName = "Balance";
    draft.frmExprAdv.text = "Prev(Balance) + Amount";
    EXPECT_TRUE(change(FieldType::AdvExpression, {}).accepted);
    EXPECT_EQ(doc.CurrDB20.Expressions.at(kSlot).Tokens[0], 100u + kSlot);
    EXPECT_EQ(doc.CurrDB20.Expressions.at(kSlot).Tokens[1], 90u);
    EXPECT_EQ(doc.CurrDB20.Expressions.at(kSlot).Tokens[2], 3u);

    open(FieldType::Date, {}); // as a date it could not be multiplied
    draft.frmExprAdv = {"Prev(Value) * Amount", 0};
    EXPECT_TRUE(change(FieldType::AdvExpression, {}).accepted);

    draft = fillAttributeValues(doc.CurrDB20, kSlot, t);
    draft.txtFieldName = "Sum";
    draft.frmExprAdv.text = "Prev(Value) + Prev(Sum)"; // its former name stood there already
    EXPECT_FALSE(ok().accepted);
    draft.frmExprAdv.text = "Prev(Value) + Amount";
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().Name, "Sum");

    open(FieldType::Text, {});
    draft.frmExpr.operands[0] = {82 + kSlot, ""}; // Prev (Value)
    draft.frmExpr.operands[1] = {3, ""};
    draft.frmExpr.operators[0] = 1;
    EXPECT_TRUE(change(FieldType::Expression, {}).accepted);
    EXPECT_EQ(doc.CurrDB20.Expressions.at(kSlot).Tokens[0], 100u + kSlot);
}

// What the entries of the lists are called decides nothing.
TEST_F(FieldTypeChange, operandsKeepTheirSlots) {
    field(kOther, FieldType::Integer, "Today");
    field(3, FieldType::Integer, "Same");
    field(4, FieldType::Integer, "Same");
    field(5, FieldType::Integer, "");
    open(FieldType::Expression, {});
    model::ExprDef stored;
    stored.Tokens = {kOther, 90, 4, 90, 5, 90, 101, 92, 86};
    stored.TokenTexts[8] = "2,50";
    doc.CurrDB20.Expressions[kSlot] = stored;
    draft = fillAttributeValues(doc.CurrDB20, kSlot, t);
    draft.txtFieldName = "Other";
    EXPECT_TRUE(ok().accepted) << lastMessage().text;
    EXPECT_EQ(doc.CurrDB20.Expressions.at(kSlot), stored);
    stored.Tokens = {87, 91, 79}; // the present time, in both its codes
    stored.ResultType = 10;
    doc.CurrDB20.Expressions[kSlot] = stored;
    draft = fillAttributeValues(doc.CurrDB20, kSlot, t);
    EXPECT_TRUE(ok().accepted) << lastMessage().text;
    EXPECT_EQ(doc.CurrDB20.Expressions.at(kSlot), stored);
}

TEST_F(FieldTypeChange, aListThatStandsIsMatchedByText) {
    items(kSlot, {{5, "a"}, {9, "b"}});
    open(FieldType::Text, {"b", "c", "a"});
    EXPECT_TRUE(change(FieldType::List, {Answer::Yes, Answer::No}).accepted);
    EXPECT_EQ(column(), (Texts{"b", "", "a"}));
    EXPECT_EQ(doc.CellLongs.get(0, kSlot), 9);
    EXPECT_EQ(doc.CellLongs.get(1, kSlot), 0);
    EXPECT_EQ(doc.CellLongs.get(2, kSlot), 5);
}

TEST_F(FieldTypeChange, reformatsAFloatsColumn) {
    open(FieldType::Float, {"1.256", "abc"});
    draft.cmbDecDigs = 2;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(column(), (Texts{"1.26", "0.00"}));
    EXPECT_EQ(slot().Decimals, 2);
    open(FieldType::Float, {"1.25"});
    draft.cmbDecDigs = 0;
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(column(), Texts{"1.25"}); // no digits: nothing is formatted
    EXPECT_EQ(slot().Decimals, 0);
}

TEST_F(FieldTypeChange, fewerDigitsAreAskedAbout) {
    field(kSlot, FieldType::Float, "Value").Decimals = 2;
    open(FieldType::Float, {"1.25"});
    draft.cmbDecDigs = 1;
    t.user.answers = {Answer::No};
    expectRefused(ok(), Focus::cmbDecDigs,
                  "Digits that are not shown any more will be gone with the next save.\nDo you want to show fewer "
                  "digits?",
                  "", Icon::Warning);
    EXPECT_EQ(lastMessage().preferred, Answer::No);
    EXPECT_EQ(lastMessage().buttons, platform::Buttons::YesNo);
    EXPECT_EQ(column(), Texts{"1.25"});
    EXPECT_EQ(slot().Decimals, 2);
    EXPECT_FALSE(doc.DocModified);
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(column(), Texts{"1.3"});

    t.user.messages.clear();
    for (const auto& [before, after, records] :
         {std::tuple{1, 2, 1}, std::tuple{2, 1, 0}, std::tuple{9, 1, 1}}) { // 9 digits show nothing
        field(kSlot, FieldType::Float, "Value").Decimals = static_cast<std::uint8_t>(before);
        open(FieldType::Float, Texts(static_cast<std::size_t>(records), "0"));
        draft.cmbDecDigs = after;
        EXPECT_TRUE(ok().accepted);
    }
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(FieldTypeChange, digitsWithoutASelectionStay) {
    field(kSlot, FieldType::Float, "Value").Decimals = 9;
    open(FieldType::Float, {});
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().Decimals, 9);
}

TEST_F(FieldTypeChange, aFaultInAnAdvancedExpressionCostsNoValue) {
    open(FieldType::Text, {"kept"});
    draft.frmExprAdv = {"1 +", 0};
    const FieldPropResult result = change(FieldType::AdvExpression);
    EXPECT_FALSE(result.accepted);
    EXPECT_EQ(result.focus, Focus::txtAdvExpression);
    EXPECT_EQ(result.index, 3);
    EXPECT_EQ(lastMessage().title, "Error in the expression");
    EXPECT_EQ(t.user.messages.size(), 2u); // asked before
    EXPECT_EQ(column(), Texts{"kept"});
    EXPECT_EQ(slot().Type, FieldType::Text);
}

TEST_F(FieldTypeChange, theFormatOfAnAdvancedExpressionIsStoredDespiteAFault) {
    open(FieldType::AdvExpression, {});
    draft.frmExprAdv = {"1 +", 2};
    EXPECT_FALSE(ok().accepted);
    EXPECT_EQ(doc.CurrDB20.Expressions.at(kSlot).ResultType, 7);
    draft.frmExprAdv = {"1 + 1", 0};
    draft.cmbDecDigs = 2;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(doc.CurrDB20.Expressions.at(kSlot).Tokens[1], 90u);
    EXPECT_EQ(slot().Decimals, 2);
}

TEST_F(FieldTypeChange, aRefusedConversionKeepsTheDigitsOfAFloat) {
    field(kSlot, FieldType::Float, "Value").Decimals = 2;
    open(FieldType::Float, {"1.25"});
    radio({"a", "b", "c", "d", "e"});
    EXPECT_FALSE(change(FieldType::RadioButton, {Answer::No}).accepted);
    EXPECT_EQ(slot().Decimals, 2); // five would leave nothing of the values
    EXPECT_EQ(doc.CurrDB20.Lists.at(kSlot).Count(), 0);
}

TEST_F(FieldTypeChange, storesOptions) {
    open(FieldType::Text, {});
    radio({"red", "green", "blue"});
    draft.FrmRadio.OptSel = 2;
    EXPECT_TRUE(change(FieldType::RadioButton, {}).accepted);
    EXPECT_EQ(doc.CurrDB20.Lists.at(kSlot), (model::ListDef{{1, 2, 3}, {"red", "green", "blue"}}));
    EXPECT_EQ(slot().Decimals, 3);
    EXPECT_EQ(slot().Default, "3");
    draft = fillAttributeValues(doc.CurrDB20, kSlot, t);
    draft.FrmRadio.OptSel = -1;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().Default, "1");
}

TEST_F(FieldTypeChange, recordsFollowTheirOptions) {
    items(kSlot, {{7, "red"}, {1, "green"}, {4, "blue"}});
    open(FieldType::RadioButton, {"red", "green", "blue", ""});
    doc.CellLongs.set(0, kSlot, 7);
    doc.CellLongs.set(1, kSlot, 1);
    doc.CellLongs.set(2, kSlot, 4);
    draft.FrmRadio.CmbNobuton = 0;
    draft.FrmRadio.Optxt[0] = "scarlet";
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(column(), (Texts{"scarlet", "green", "", ""}));
    EXPECT_EQ(doc.CellLongs.get(0, kSlot), 1);
    EXPECT_EQ(doc.CellLongs.get(1, kSlot), 2);
    EXPECT_EQ(doc.CellLongs.get(2, kSlot), 4);
}

TEST_F(FieldTypeChange, fewerOptionsLeaveTheIdsOfRecords) {
    items(kSlot, {{1, "red"}, {2, "green"}, {3, "blue"}});
    open(FieldType::RadioButton, {"red", "blue"});
    doc.CellLongs.set(0, kSlot, 1);
    doc.CellLongs.set(1, kSlot, 3);
    draft.FrmRadio.CmbNobuton = 0;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(column(), (Texts{"red", ""}));
    EXPECT_EQ(doc.CellLongs.get(1, kSlot), 3);
    draft = fillAttributeValues(doc.CurrDB20, kSlot, t);
    draft.FrmRadio.CmbNobuton = 1;
    draft.FrmRadio.Optxt[2] = "blue";
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(column(), (Texts{"red", "blue"})); // it comes back
}

// Another program's ids may be those that the options which stay get.
TEST_F(FieldTypeChange, noRecordShowsAnOptionThatWasNeverItsOwn) {
    items(kSlot, {{3, "red"}, {2, "green"}, {1, "blue"}});
    open(FieldType::RadioButton, {"red", "green", "blue"});
    for (int record = 0; record < 3; ++record)
        doc.CellLongs.set(record, kSlot, 3 - record);
    draft.FrmRadio.CmbNobuton = 0;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(column(), (Texts{"red", "green", ""}));
    EXPECT_EQ(doc.CellLongs.get(2, kSlot), 4);
}

TEST_F(FieldTypeChange, warnsWhenBothFieldsOfAJoinChange) {
    doc.CurrDB20.Externals[kSlot] = {"Books", 3, 4, 1, 2, 9};
    open(FieldType::DBJoin, {"5"});
    draft.external.displayField = 5;
    EXPECT_TRUE(ok().accepted);
    EXPECT_TRUE(t.user.messages.empty());
    draft.external.displayField = 6;
    draft.external.joinField = 7;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(lastMessage().text,
              "Both Display field and the Join Field is changed, Please reselect the join values");
    EXPECT_EQ(lastMessage().title, "Attention");
    EXPECT_EQ(doc.CurrDB20.Externals.at(kSlot), (model::ExternalDef{"Books", 7, 6, 1, 2, 9}));
}

TEST_F(FieldTypeChange, aColumnOfKeysBecomesAJoin) {
    open(FieldType::Text, {"12", "x"});
    complete(FieldType::DBJoin);
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(ok().accepted);
    std::string scratch;
    EXPECT_EQ(doc.CellVals.get(0, kSlot, scratch), "12");
    EXPECT_EQ(doc.CellVals.get(1, kSlot, scratch), "0");
}

TEST_F(FieldTypeChange, storesTheOtherDefinitions) {
    open(FieldType::DBLookup, {});
    draft.external = {"Books", std::nullopt, 4, 1, 11, 0, 0};
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(doc.CurrDB20.Externals.at(kSlot), (model::ExternalDef{"Books", 1, 4, 0, 11, 0}));
    open(FieldType::AddressBookJoin, {});
    draft.external.ABField1 = 2;
    draft.external.ABField2 = 3;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(doc.CurrDB20.Externals.at(kSlot), (model::ExternalDef{"Books", 1, 4, 2, 11, 3}));
    open(FieldType::OneToMany, {});
    draft.frmMasterDetail.Source = "Loans";
    draft.frmMasterDetail.MatchFields = {1, 2, 0};
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(doc.CurrDB20.OneToManys.at(kSlot), draft.frmMasterDetail);
    open(FieldType::ConditionalExpression, {});
    draft.condition.CondFields[0] = kOther;
    draft.condition.CondValues[0] = "x";
    draft.branchThen = {true, kOther, "unused", 2};
    draft.branchElse = {false, 0, "none", 1};
    EXPECT_TRUE(ok().accepted);
    const model::CondExprDef& condition = doc.CurrDB20.CondExprs.at(kSlot);
    EXPECT_EQ(condition.CondValues[0], "x");
    EXPECT_EQ(condition.TrueField, kOther);
    EXPECT_EQ(condition.TrueKind, 2);
    EXPECT_EQ(condition.FalseField, 0);
    EXPECT_EQ(condition.FalseText, "none");
    EXPECT_EQ(condition.FalseKind, 1);
}

TEST_F(FieldTypeChange, storesDefaultsByType) {
    const struct {
        FieldType type;
        int position;
        const char* text;
    } cases[] = {{FieldType::Date, 0, ""}, {FieldType::Date, 1, "A"}, {FieldType::Time, 2, "U"}};
    for (const auto& c : cases) {
        open(c.type, {});
        draft.cmbDefault = c.position;
        EXPECT_TRUE(ok().accepted);
        EXPECT_EQ(slot().Default, c.text);
    }
    for (const FieldType type :
         {FieldType::Text, FieldType::Integer, FieldType::Long, FieldType::Float, FieldType::Memo}) {
        open(type, {});
        draft.txtDefault = "5";
        EXPECT_TRUE(ok().accepted);
        EXPECT_EQ(slot().Default, "5");
    }
    open(FieldType::AutoIncremental, {});
    draft.cmbDefaultText = "42";
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(doc.CurrDB20.AutoIncNext.at(kSlot), 42);
    draft.cmbDefaultText = "many";
    expectRefused(ok(), Focus::cmbDefault, "The next value must be a whole number from -2147483648 to 2147483647.",
                  "Warning");
}

TEST_F(FieldTypeChange, storesTheDepthOfAnImage) {
    const std::uint8_t depths[] = {1, 4, 8};
    for (const int position : {1, 2, 0}) {
        open(FieldType::Image, {});
        draft.cmbDefault = position;
        EXPECT_TRUE(ok().accepted);
        EXPECT_EQ(slot().Decimals, depths[position]);
    }
}

TEST_F(FieldTypeChange, storesTheAutoWriterAndItsKin) {
    open(FieldType::Integer, {});
    draft.checkAutoWriter = true;
    draft.cmbSeparate = 4;
    draft.ListAW = {{1}, {"one"}};
    draft.checkIncrementDecrement = true;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().AutoWriter, 4);
    EXPECT_EQ(slot().IncDec, 1);
    EXPECT_EQ(doc.CurrDB20.Lists.at(kSlot).Items, Texts{"one"});
    draft.cmbSeparate = 0; // "none"
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().AutoWriter, 0);
    draft.cmbSeparate = 7;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().AutoWriter, 7);
    EXPECT_TRUE(change(FieldType::Date, {}).accepted);
    EXPECT_EQ(slot().AutoWriter, 0);
    EXPECT_EQ(slot().IncDec, 0);
}

TEST_F(FieldTypeChange, storesTextFlags) {
    field(kSlot, FieldType::Text, "Value").FieldFlags = 0x03;
    open(FieldType::Text, {});
    draft.chkBarcodeScan = true;
    draft.checkDisableAutoShift = true;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().FieldFlags, 0x83);
    EXPECT_EQ(slot().Decimals, 1);
    draft.chkBarcodeScan = false;
    EXPECT_TRUE(ok().accepted);
    EXPECT_EQ(slot().FieldFlags, 0x03);
}

TEST_F(FieldTypeChange, theColumnShowsItsNewNameAndType) {
    open(FieldType::Text, {"12"});
    draft.txtFieldName = " Pages ";
    EXPECT_TRUE(change(FieldType::Long).accepted);
    EXPECT_EQ(doc.grd.text(0, kSlot + 1), "Pages");
    EXPECT_EQ(doc.grd.text(1, kSlot + 1), "Long");
    EXPECT_EQ(doc.grd.alignment(kSlot + 1), model::Alignment::RightCentre);
    EXPECT_NE(doc.grd.column(kSlot + 1).coder(), nullptr);
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(FieldTypeChange, theCategoriesStayAList) {
    records(1);
    draft = fillAttributeValues(doc.CurrDB20, 0, t);
    draft.cmbFieldType = 1;
    EXPECT_TRUE(fieldPropertiesOK(doc, t, 0, draft, FieldPropMode::Document).accepted);
    EXPECT_EQ(doc.CurrDB20.Fields[0].Type, FieldType::List);
}

// What a cell shows after the change, for each type of before with a text that it may have. A check mark is "[x]" or
// "[ ]". The columns are the new types in the order of their codes: Not Used, Text, Integer, Long, Float with one
// digit, List, Checkbox, Date, Time, Expression, Memo, Key, DB Join, DB Lookup, One to Many, the two of the address
// book, Radio Button, Image, Conditional Expression, Auto Incremental, Plugin, Adv Expression. The record's key is
// 501. Serial 7 is the sixth of January 1900; "2.50" and "0.5" read as times of the day.
struct TypeRow {
    FieldType oldType;
    const char* text;
    std::array<const char*, model::kFieldTypes> shown;
};
constexpr TypeRow kTypeRows[] = {
    {FieldType::NotUsed, "", {"",  "", "0", "0", "0.0", "", "[ ]", "", "0", "", "", "501",
                              "0", "", "",  "",  "",    "", "",    "", "",  "", ""}},
    {FieldType::Text, "12 pages", {"",  "12 pages", "0",        "0",   "0.0", "12 pages", "[ ]", "",
                                   "0", "",         "12 pages", "501", "0",   "",         "",    "",
                                   "",  "",         "",         "",    "",    "",         ""}},
    {FieldType::Integer, "7", {"", "7", "7",   "7", "7.0", "7", "[x]", "1/6/1900", "12:00:00 AM",
                               "", "7", "501", "7", "",    "",  "",    "",         "",
                               "", "",  "",    "",  ""}},
    {FieldType::Long, "70000", {"", "70000", "0",   "70000", "70000.0", "70000", "[x]", "8/25/2091", "12:00:00 AM",
                                "", "70000", "501", "70000", "",        "",      "",    "",          "",
                                "", "",      "",    "",      ""}},
    {FieldType::Float, "2.50", {"",           "2.50", "2",    "2",   "2.50", "2.50", "[x]", "12/30/1899",
                                "2:50:00 AM", "",     "2.50", "501", "2",    "",     "",    "",
                                "",           "",     "",     "",    "",     "",     ""}},
    {FieldType::List, "red", {"",  "red", "0", "0", "0.0", "red", "[ ]", "", "0", "", "red", "501",
                              "0", "",    "",  "",  "",    "",    "",    "", "",  "", ""}},
    {FieldType::Checkbox, "", {"",  "", "0", "0", "0.0", "", "[x]", "", "0", "", "", "501",
                               "0", "", "",  "",  "",    "", "",    "", "",  "", ""}},
    {FieldType::Date, "1/2/2003", {"", "1/2/2003", "0",   "0", "0.0", "1/2/2003", "[ ]", "1/2/2003", "12:00:00 AM",
                                   "", "1/2/2003", "501", "0", "",    "",         "",    "",         "",
                                   "", "",         "",    "",  ""}},
    {FieldType::Time,
     "1:05:09 PM",
     {"",           "1:05:09 PM", "0",          "0",   "0.0", "1:05:09 PM", "[ ]", "12/30/1899",
      "1:05:09 PM", "",           "1:05:09 PM", "501", "0",   "",           "",    "",
      "",           "",           "",           "",    "",    "",           ""}},
    {FieldType::Expression,
     "459.5",
     {"",      "459.5", "460", "460", "459.5", "459.5", "[x]", "4/3/1901", "12:00:00 PM",
      "459.5", "459.5", "501", "460", "",      "",      "",    "",         "",
      "",      "",      "",    "",    ""}},
    {FieldType::Memo, "12/31/99", {"", "12/31/99", "0",   "0", "0.0", "12/31/99", "[ ]", "12/31/1999", "12:00:00 AM",
                                   "", "12/31/99", "501", "0", "",    "",         "",    "",           "",
                                   "", "",         "",    "",  ""}},
    {FieldType::Key, "501", {"", "501", "501", "501", "501.0", "501", "[x]", "5/15/1901", "12:00:00 AM",
                             "", "501", "501", "501", "",      "",    "",    "",          "",
                             "", "",    "",    "",    ""}},
    {FieldType::DBJoin, "Tolstoy", {"",  "Tolstoy", "0",       "0",   "0.0",     "Tolstoy", "[ ]", "",
                                    "0", "",        "Tolstoy", "501", "Tolstoy", "",        "",    "",
                                    "",  "",        "",        "",    "",        "",        ""}},
    {FieldType::DBLookup, "true", {"",  "true", "0", "0", "0.0", "true", "[x]", "", "0", "", "true", "501",
                                   "0", "true", "",  "",  "",    "",     "",    "", "",  "", ""}},
    {FieldType::OneToMany, "", {"",  "", "0", "0", "0.0", "", "[ ]", "", "0", "", "", "501",
                                "0", "", "",  "",  "",    "", "",    "", "",  "", ""}},
    {FieldType::AddressBookJoin,
     "Smith, John",
     {"",
      "Smith, John",
      "0",
      "0",
      "0.0",
      "Smith, John",
      "[ ]",
      "",
      "0",
      "",
      "Smith, John",
      "501",
      "0",
      "",
      "",
      "Smith, John",
      "",
      "",
      "",
      "",
      "",
      "",
      ""}},
    {FieldType::AddressBookLookup, "555", {"", "555", "555", "555", "555.0", "555", "[x]", "7/8/1901", "12:00:00 AM",
                                           "", "555", "501", "555", "",      "",    "",    "555",      "",
                                           "", "",    "",    "",    ""}},
    {FieldType::RadioButton, "large", {"",  "large", "0", "0", "0.0", "large", "[ ]", "", "0", "", "large", "501",
                                       "0", "",      "",  "",  "",    "large", "",    "", "",  "", ""}},
    {FieldType::Image, " {Image}", {"",  " {Image}", "0",        "0",   "0.0", " {Image}", "[ ]", "",
                                    "0", "",         " {Image}", "501", "0",   "",         "",    "",
                                    "",  "",         " {Image}", "",    "",    "",         ""}},
    {FieldType::ConditionalExpression,
     "0.5",
     {"", "0.5", "0", "0",   "0.5", "0.5", "[x]", "12/30/1899", "12:05:00 AM", "", "0.5", "501", "0", "", "", "",
      "", "",    "",  "0.5", "",    "",    ""}},
    {FieldType::AutoIncremental, "42", {"", "42", "42",  "42", "42.0", "42", "[x]", "2/10/1900", "12:00:00 AM",
                                        "", "42", "501", "42", "",     "",   "",    "",          "",
                                        "", "",   "42",  "",   ""}},
    {FieldType::Plugin, "x", {"",  "x", "0", "0", "0.0", "x", "[ ]", "", "0", "",  "x", "501",
                              "0", "",  "",  "",  "",    "",  "",    "", "",  "x", ""}},
    {FieldType::AdvExpression, "1:30", {"",           "1:30", "0",    "0",   "0.0", "1:30", "[ ]", "12/30/1899",
                                        "1:30:00 AM", "",     "1:30", "501", "0",   "",     "",    "",
                                        "",           "",     "",     "",    "",    "",     "1:30"}},
};

class EveryTypeChange : public FieldTypeChange {
protected:
    // One record whose cell shows the row's text, in a field of the row's type.
    void prepare(const TypeRow& row) {
        doc.CurrDB20.Lists.clear();
        doc.CurrDB20.Externals.clear();
        field(kSlot, row.oldType, "Value") = {};
        m_hasItems = row.oldType == FieldType::List || row.oldType == FieldType::RadioButton;
        if (m_hasItems)
            items(kSlot, {{1, row.text}, {2, "other"}});
        open(row.oldType, {row.text});
        doc.RecKeys.set(0, 501);
        if (row.oldType == FieldType::Checkbox)
            doc.grd.setPicture(2, kSlot + 1, Picture::CheckOn);
        if (row.oldType == FieldType::ConditionalExpression)
            doc.grd.setColour(2, kSlot + 1, 255);
        if (m_hasItems)
            doc.CellLongs.set(0, kSlot, 1);
    }

    void chooseType(const TypeRow& row, FieldType newType) {
        complete(newType);
        draft.external.Source = "Books";
        if (newType != row.oldType)
            draft.cmbDecDigs = 1;
        else if (newType == FieldType::RadioButton)
            radio({row.text, "other"}); // records follow their options
        const bool asked = newType != row.oldType && row.oldType != FieldType::NotUsed;
        t.user.answers.clear();
        if (asked)
            t.user.answers.push_back(Answer::Yes);
        if (asked && newType == FieldType::Key)
            t.user.answers.push_back(Answer::No);
        if (asked && newType == FieldType::List && m_hasItems)
            t.user.answers.push_back(Answer::Yes);
    }

    std::string shown() const {
        const std::string text = cell(0, kSlot);
        const Picture mark = picture(0, kSlot);
        return mark == Picture::None ? text : text + (mark == Picture::CheckOn ? "[x]" : "[ ]");
    }

private:
    bool m_hasItems = false;
};

TEST_F(EveryTypeChange, leavesWhatTheTableSays) {
    for (const TypeRow& row : kTypeRows)
        for (std::size_t to = 0; to < model::kFieldTypes; ++to) {
            const auto newType = static_cast<FieldType>(to);
            SCOPED_TRACE(std::string(model::fieldTypeName(row.oldType)) + " to " +
                         std::string(model::fieldTypeName(newType)));
            prepare(row);
            chooseType(row, newType);
            EXPECT_TRUE(ok().accepted);
            EXPECT_EQ(slot().Type, newType);
            EXPECT_EQ(shown(), row.shown[to]);
            const bool becameItem = newType == FieldType::List && row.oldType != FieldType::NotUsed && *row.text != 0;
            if (becameItem) {
                EXPECT_EQ(doc.CellLongs.get(0, kSlot), 1);
            }
            if (becameItem && row.oldType != FieldType::List) {
                EXPECT_EQ(doc.CurrDB20.Lists.at(kSlot).Items, Texts{row.text});
            }
            if (newType == FieldType::DBJoin && newType != row.oldType) {
                std::string scratch;
                EXPECT_EQ(doc.CellVals.get(0, kSlot, scratch), row.shown[to]);
            }
            if (newType != row.oldType) {
                EXPECT_EQ(doc.grd.colour(2, kSlot + 1), 0u);
            }
            EXPECT_TRUE(t.user.atRest());
            EXPECT_TRUE(t.user.answers.empty());
        }
}

} // namespace
} // namespace tallybook::design
