#include "core/design/FilterDesign.h"

#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::design {
namespace {

using model::FieldType;
using platform::Answer;
using test::TestServices;
using Texts = std::vector<std::string>;

// Used slots: 1 "Title", 3 "Pages", 4 "Bought". Slot 2 is free.
class FilterDesign : public testing::Test {
protected:
    FilterDesign() {
        field(1, FieldType::Text, "Title");
        field(2, FieldType::NotUsed, "Fld02");
        field(3, FieldType::Integer, "Pages");
        field(4, FieldType::Date, "Bought");
    }
    void field(std::size_t slot, FieldType type, const std::string& name) {
        doc.CurrDB20.Fields[slot].Type = type;
        doc.CurrDB20.Fields[slot].Name = name;
    }
    const model::FilterDef& stored(std::size_t slot = 0) const { return doc.CurrDB20.Filters[slot]; }
    bool ok(int slot = 0) {
        result = filterOk(doc, t, slot, controls);
        return result.accepted;
    }
    void expectCritical(const std::string& text) {
        ASSERT_FALSE(t.user.messages.empty());
        EXPECT_EQ(t.user.messages.back().text, text);
        EXPECT_EQ(t.user.messages.back().icon, platform::Icon::Critical);
    }

    TestServices t;
    model::Document doc;
    FilterControls controls;
    FilterResult result;
};

constexpr int kTitle = 1; // positions
constexpr int kPages = 2;
constexpr int kBought = 3;
constexpr int kToday = 4;
constexpr int kAnd = 1;
constexpr int kOr = 2;

TEST_F(FilterDesign, fillsItsLists) {
    doc.CurrDB20.Filters[1].Name = "New ones";
    const Texts slots = filterListEntries(doc.CurrDB20);
    ASSERT_EQ(slots.size(), 12u);
    EXPECT_EQ(slots[0], "Filter-01");
    EXPECT_EQ(slots[1], "Filter-02 New ones");
    EXPECT_EQ(slots[11], "Filter-12");
    EXPECT_EQ(leftEntries(doc.CurrDB20), (Texts{" ", "Title", "Pages", "Bought"}));
    EXPECT_EQ(operandListEntries(doc.CurrDB20), (Texts{"Constant", "Title", "Pages", "Bought", "Today"}));
    const auto operators = comparisonEntries();
    EXPECT_EQ((Texts{operators.begin(), operators.end()}),
              (Texts{"=", "<>", "<", "<=", ">", ">=", "contains", "Contains (Case Sensitive)", "starts",
                     "Starts (Case Sensitive)"}));
    const auto links = linkEntries();
    EXPECT_EQ((Texts{links.begin(), links.end()}), (Texts{" ", "AND", "OR"}));
}

TEST_F(FilterDesign, wantsANameAndAFirstCondition) {
    EXPECT_FALSE(ok());
    expectCritical("Filter name has not been entered");
    EXPECT_EQ(result, (FilterResult{.focus = FilterFocus::LblFilterName}));
    controls.LblFilterName = "Thick";
    controls.CmbRelOpr[0] = kAnd;
    controls.conditions[1].CmbFldListCmp = kPages; // the second does not help
    EXPECT_FALSE(ok());
    expectCritical("The filter condition has not been completed");
    EXPECT_EQ(result, (FilterResult{.focus = FilterFocus::CmbFldListCmp}));
    controls.conditions[0].CmbFldListCmp = kPages;
    EXPECT_TRUE(ok());
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(FilterDesign, aConditionalExpressionNeedsNoName) {
    model::CondExprDef condition;
    EXPECT_FALSE(conditionOk(doc.CurrDB20, t, controls, condition).accepted);
    expectCritical("The filter condition has not been completed");
    controls.conditions[0] = {kPages, 4, 0, "300"};
    controls.CmbRelOpr = {kOr, 0};
    controls.conditions[1] = {kBought, 0, kToday, ""};
    EXPECT_TRUE(conditionOk(doc.CurrDB20, t, controls, condition).accepted);
    EXPECT_EQ(condition.CondFields, (std::array<std::uint8_t, 3>{3, 0, 4}));
    EXPECT_EQ(condition.CondLinks, (std::array<std::uint8_t, 3>{'O', 0, 0}));
    EXPECT_FALSE(doc.DocModified); // Field Properties stores it
}

TEST_F(FilterDesign, refusesTextsThatAFileWouldCut) {
    controls.LblFilterName = std::string(21, 'n');
    controls.conditions[0] = {kTitle, 0, 0, std::string(20, 'c')};
    EXPECT_FALSE(ok());
    EXPECT_EQ(t.user.texts().back(), "A filter's name may have at most 20 characters.");
    controls.LblFilterName.pop_back();
    EXPECT_FALSE(ok());
    EXPECT_EQ(t.user.texts().back(), "A constant may have at most 19 characters.");
    EXPECT_EQ(result, (FilterResult{.focus = FilterFocus::TxtConst, .condition = 0}));
    controls.conditions[0].TxtConst.pop_back();
    EXPECT_TRUE(ok());
    EXPECT_EQ(stored().CondValues[0], std::string(19, 'c'));
}

TEST_F(FilterDesign, translatesEveryOperator) {
    const std::string codes = "=!<L>JhHsS";
    controls.LblFilterName = "Any";
    for (int entry = 0; entry < 10; ++entry) {
        controls.conditions[0] = {kTitle, entry, 0, "x"};
        EXPECT_TRUE(ok());
        EXPECT_EQ(stored().CondOps[0], codes[static_cast<std::size_t>(entry)]);
        EXPECT_EQ(CurrentDefinition(doc.CurrDB20, stored()), controls);
    }
}

TEST_F(FilterDesign, storesThreeConditions) {
    controls.LblFilterName = "All";
    controls.conditions = {{{kTitle, 6, 0, "sea"}, {kPages, 5, kPages, ""}, {kBought, 2, kToday, ""}}};
    controls.CmbRelOpr = {kAnd, kOr};
    EXPECT_TRUE(ok(11));
    const model::FilterDef& filter = stored(11);
    EXPECT_EQ(filter.Name, "All");
    EXPECT_EQ(filter.CondFields, (std::array<std::uint8_t, 3>{1, 0, 3})); // left 1, right 1, left 2
    EXPECT_EQ(filter.CondFields2, (std::array<std::uint8_t, 3>{3, 4, 0}));
    EXPECT_EQ(filter.CondValues, (std::array<std::string, 3>{"sea", "", "T"}));
    EXPECT_EQ(filter.CondOps, (std::array<std::uint8_t, 3>{'h', 'J', '<'}));
    EXPECT_EQ(filter.CondLinks, (std::array<std::uint8_t, 2>{'A', 'O'}));
    EXPECT_EQ(CurrentDefinition(doc.CurrDB20, filter), controls);
}

TEST_F(FilterDesign, aBlankLinkEndsTheChain) {
    controls.LblFilterName = "Short";
    controls.conditions = {{{kTitle, 0, 0, "a"}, {kPages, 0, 0, "1"}, {kPages, 0, 0, "2"}}};
    controls.CmbRelOpr = {0, kOr};
    EXPECT_TRUE(isConditionUsed(controls, 0));
    EXPECT_FALSE(isConditionUsed(controls, 1));
    EXPECT_FALSE(isConditionUsed(controls, 2));
    EXPECT_TRUE(ok());
    EXPECT_EQ(stored().CondFields, (std::array<std::uint8_t, 3>{1, 0, 0}));
    EXPECT_EQ(stored().CondFields2, (std::array<std::uint8_t, 3>{0, 0, 0}));
    EXPECT_EQ(stored().CondLinks, (std::array<std::uint8_t, 2>{0, 0}));
    EXPECT_EQ(stored().CondValues[1], "");
}

TEST_F(FilterDesign, todayIsShownForADateAlone) {
    controls.LblFilterName = "T";
    controls.conditions[0] = {kBought, 0, kToday, ""};
    EXPECT_TRUE(ok());
    EXPECT_EQ(stored().CondValues[0], "T");
    EXPECT_EQ(CurrentDefinition(doc.CurrDB20, stored()).conditions[0].CmbFldOpnd, kToday);
    controls.conditions[0] = {kTitle, 0, 0, "T"};
    EXPECT_TRUE(ok());
    EXPECT_EQ(CurrentDefinition(doc.CurrDB20, stored()), controls);
}

TEST_F(FilterDesign, onlyAConstantIsTyped) {
    ConditionControls condition{kTitle, 0, 0, "abc"};
    EXPECT_TRUE(takesConstant(condition));
    selectOperand(condition, 0);
    EXPECT_EQ(condition.TxtConst, "abc");
    selectOperand(condition, kPages);
    EXPECT_EQ(condition.TxtConst, "");
    EXPECT_FALSE(takesConstant(condition));
    selectOperand(condition, kToday);
    EXPECT_FALSE(takesConstant(condition));
}

TEST_F(FilterDesign, linksOfALoadedConditionShowWhereTheyBelong) {
    model::CondExprDef condition;
    condition.CondFields = {1, 0, 3};
    condition.CondLinks = {0, 'A', 'O'}; // as a file is read
    EXPECT_EQ(CurrentDefinition(doc.CurrDB20, condition).CmbRelOpr, (std::array<int, 2>{kAnd, kOr}));
    condition.CondLinks = {'O', 0, 0};
    EXPECT_EQ(CurrentDefinition(doc.CurrDB20, condition).CmbRelOpr, (std::array<int, 2>{kOr, 0}));
}

TEST_F(FilterDesign, keepsWhatItDoesNotShow) {
    model::FilterDef& filter = doc.CurrDB20.Filters[0];
    filter.Name = "Odd";
    filter.CondFields[0] = 1;
    filter.CondOps[0] = 'Z';
    filter.CondTail = {1, 2, 3, 4};
    controls = CurrentDefinition(doc.CurrDB20, filter);
    EXPECT_EQ(controls.conditions[0].CmbOpr, -1);
    EXPECT_TRUE(ok());
    EXPECT_EQ(filter.CondOps[0], 'Z');
    EXPECT_EQ(filter.CondTail, (std::array<std::uint8_t, 4>{1, 2, 3, 4}));
}

TEST_F(FilterDesign, clearsAfterAQuestion) {
    controls.LblFilterName = "Gone";
    controls.conditions[0] = {kTitle, 0, 0, "a"};
    EXPECT_TRUE(ok());
    const FilterControls before = controls;
    const model::FilterDef storedBefore = stored();
    doc.DocModified = false;
    t.user.answers = {Answer::No};
    EXPECT_FALSE(clearFilter(doc, t, 0, controls));
    EXPECT_EQ(controls, before);
    EXPECT_EQ(stored(), storedBefore);
    EXPECT_FALSE(doc.DocModified);
    EXPECT_EQ(
        t.user.texts().back(),
        "Once a filter condition is cleared it cannot be retrieved\nDo you want to clear the filter definition?");
    EXPECT_EQ(t.user.messages.back().title, "Clear Filter");

    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(clearFilter(doc, t, 0, controls));
    EXPECT_EQ(controls, FilterControls{});
    EXPECT_EQ(stored(), model::FilterDef{});
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(FilterDesign, todayStandsBesideADateAlone) {
    ConditionControls condition;
    EXPECT_TRUE(offersToday(doc.CurrDB20, condition)); // no field yet
    selectOperand(condition, kToday);
    selectLeft(doc.CurrDB20, condition, kBought);
    EXPECT_EQ(condition, (ConditionControls{kBought, 0, kToday, ""}));
    selectLeft(doc.CurrDB20, condition, kPages);
    EXPECT_EQ(condition, (ConditionControls{kPages, 0, 0, ""}));
    EXPECT_FALSE(offersToday(doc.CurrDB20, condition));
    condition.TxtConst = "12";
    selectLeft(doc.CurrDB20, condition, kTitle);
    EXPECT_EQ(condition, (ConditionControls{kTitle, 0, 0, "12"}));
}

TEST_F(FilterDesign, anOkWithoutAChangeIsNone) {
    controls.LblFilterName = "Same";
    controls.conditions[0] = {kTitle, 0, 0, "a"};
    EXPECT_TRUE(ok());
    doc.DocModified = false;
    EXPECT_TRUE(ok());
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(FilterDesign, asksBeforeAChangedFilterIsLeft) {
    controls = CurrentDefinition(doc.CurrDB20, stored());
    EXPECT_EQ(leaveFilter(doc.CurrDB20, t, 0, controls), Leaving::Leave); // untouched: no question
    EXPECT_TRUE(t.user.messages.empty());
    controls.LblFilterName = "New";
    t.user.answers = {Answer::Cancel, Answer::Yes, Answer::No};
    EXPECT_EQ(leaveFilter(doc.CurrDB20, t, 0, controls), Leaving::Stay);
    EXPECT_EQ(t.user.texts().back(), "The filter was changed. Do you want to store its changes?");
    EXPECT_EQ(leaveFilter(doc.CurrDB20, t, 0, controls), Leaving::SaveFirst);
    EXPECT_EQ(leaveFilter(doc.CurrDB20, t, 0, controls), Leaving::Leave);
    EXPECT_EQ(stored(), model::FilterDef{});
}

TEST_F(FilterDesign, clearsAConditionInItsControlsOnly) {
    controls.conditions[0] = {kTitle, 0, 0, "a"};
    t.user.answers = {Answer::Yes};
    EXPECT_TRUE(clearCondition(t, controls));
    EXPECT_EQ(controls, FilterControls{});
}

// The entries carry their slots: two fields may have one name.
TEST_F(FilterDesign, anEntryStandsForItsOwnField) {
    field(5, FieldType::Text, "Title");
    controls.LblFilterName = "Second";
    controls.conditions[0] = {4, 0, 4, ""};
    EXPECT_TRUE(ok());
    EXPECT_EQ(stored().CondFields, (std::array<std::uint8_t, 3>{5, 5, 0}));
    EXPECT_EQ(CurrentDefinition(doc.CurrDB20, stored()), controls);
}

TEST_F(FilterDesign, aConditionThatWasNotChangedKeepsItsBytes) {
    model::FilterDef& filter = doc.CurrDB20.Filters[0];
    filter = {"Odd", {1, 2, 3}, {99, 77, 0}, {std::string(20, 'c'), "T", "left"}, {'Z', '=', 'x'}, {'A', 'Q'}, {}};
    const model::FilterDef before = filter;
    controls = CurrentDefinition(doc.CurrDB20, filter);
    EXPECT_TRUE(ok());
    EXPECT_EQ(filter, before);
    EXPECT_FALSE(doc.DocModified);
    controls.LblFilterName = "Renamed";
    EXPECT_TRUE(ok());
    filter.Name = before.Name;
    EXPECT_EQ(filter, before);
    controls.conditions[0].CmbOpr = 0;
    EXPECT_TRUE(ok());
    EXPECT_EQ(filter.CondOps, (std::array<std::uint8_t, 3>{'=', '=', 'x'}));
    EXPECT_EQ(filter.CondFields, (std::array<std::uint8_t, 3>{1, 0, 3})); // slot 2 is free, and was shown as none
    EXPECT_EQ(filter.CondFields2, before.CondFields2);
}

TEST_F(FilterDesign, aBlankFieldEndsTheChain) {
    controls.LblFilterName = "Gap";
    controls.conditions = {{{kTitle, 0, 0, "a"}, {0, 0, 0, "no field"}, {kPages, 0, 0, "2"}}};
    controls.CmbRelOpr = {kAnd, kOr};
    EXPECT_TRUE(isConditionOffered(controls, 1));
    EXPECT_FALSE(isConditionUsed(controls, 1));
    EXPECT_TRUE(isConditionOffered(controls, 2));
    EXPECT_FALSE(isConditionUsed(controls, 2));
    EXPECT_TRUE(ok());
    EXPECT_EQ(stored().CondLinks, (std::array<std::uint8_t, 2>{0, 0}));
    EXPECT_EQ(stored().CondFields2, (std::array<std::uint8_t, 3>{0, 0, 0}));
    EXPECT_EQ(stored().CondValues, (std::array<std::string, 3>{"a", "", ""}));
}

TEST_F(FilterDesign, aConstantThatIsNotUsedRefusesNothing) {
    controls.LblFilterName = "One";
    controls.conditions[0] = {kTitle, 0, 0, "a"};
    controls.conditions[2] = {kTitle, 0, 0, std::string(30, 'c')};
    EXPECT_TRUE(ok());
    controls.conditions[0] = {kTitle, 0, kPages, std::string(30, 'c')};
    EXPECT_TRUE(ok());
}

TEST_F(FilterDesign, refusesANameOfTheList) {
    doc.CurrDB20.Filters[3].Name = "Cheap";
    controls.conditions[0] = {kTitle, 0, 0, "a"};
    for (const char* name : {"Cheap", "cheap", "Multiple", "NO FILTER"}) {
        controls.LblFilterName = name;
        EXPECT_FALSE(ok());
        EXPECT_EQ(t.user.texts().back(),
                  "A filter cannot have the name \"" + std::string(name) + "\": another entry of the list has it.");
        EXPECT_EQ(result.focus, FilterFocus::LblFilterName);
    }
    EXPECT_EQ(stored(), model::FilterDef{});
    EXPECT_TRUE(ok(3) == false); // "NO FILTER" is refused there, too
    controls.LblFilterName = "CHEAP";
    EXPECT_TRUE(ok(3)); // its own
}

} // namespace
} // namespace tallybook::design
