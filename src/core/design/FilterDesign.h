// The Filter Designer without its widgets: the conditions of a named filter, or of a Conditional Expression.
#pragma once

#include "core/design/Dialog.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

inline constexpr int kConditions = 3;

// Entries of CmbFilterList: "Filter-01" and so on, the name behind a blank.
std::vector<std::string> filterListEntries(const model::DatabaseModel& db);
// Entries of CmbFldListCmp1..3: a blank one, then the used fields' names.
std::vector<std::string> leftEntries(const model::DatabaseModel& db);
// Entries of CmbOpr1..3 and of CmbRelOpr1..2.
std::span<const std::string_view> comparisonEntries();
std::span<const std::string_view> linkEntries();
// Entries of CmbFldOpnd1..3: "Constant", the used fields' names, "Today".
std::vector<std::string> operandListEntries(const model::DatabaseModel& db);

// The controls of one condition: positions in the lists, -1 for none.
struct ConditionControls {
    int CmbFldListCmp = 0;
    int CmbOpr = 0; // -1 for a code that the list does not have; it is kept
    int CmbFldOpnd = 0;
    std::string TxtConst;
    bool operator==(const ConditionControls&) const = default;
};

struct FilterControls {
    std::string LblFilterName;
    std::array<ConditionControls, kConditions> conditions;
    std::array<int, kConditions - 1> CmbRelOpr{};
    bool operator==(const FilterControls&) const = default;
};

// A selection in a left list. "Today" gives way to "Constant" when the field is none that it can stand beside.
void selectLeft(const model::DatabaseModel& db, ConditionControls& condition, int position);
// The entry "Today" can be chosen: beside a date, or while there is no field yet. Beside any other field it would be
// the letter that stands for it in a file.
bool offersToday(const model::DatabaseModel& db, const ConditionControls& condition);
// FldOpnd1..3: a selection in a right operand list. Any entry but "Constant" empties the constant.
void selectOperand(ConditionControls& condition, int position);
// TxtConst is there to be typed into.
bool takesConstant(const ConditionControls& condition);
// The controls of a condition (0..2) can be filled: the links before it are not blank.
bool isConditionOffered(const FilterControls& controls, int condition);
// The condition counts: it can be filled, and neither it nor one ahead of it lacks its field. The first one counts
// always; without a field it is refused.
bool isConditionUsed(const FilterControls& controls, int condition);

enum class FilterUse : std::uint8_t { NamedFilter, ConditionalExpression };

// CurrentDefinition: a stored set in the controls. A Conditional Expression that was read from a file has its links
// one place further, and they show where they belong.
FilterControls CurrentDefinition(const model::DatabaseModel& db, const model::FilterDef& filter);
FilterControls CurrentDefinition(const model::DatabaseModel& db, const model::CondExprDef& condition);

// Where the focus belongs after a refusal, whose message was shown.
enum class FilterFocus : std::uint8_t {
    None,
    LblFilterName,
    CmbFldListCmp, // `condition` tells which, from 0
    TxtConst,
};
struct FilterResult {
    bool accepted = false;
    FilterFocus focus = FilterFocus::None;
    int condition = 0;
    bool operator==(const FilterResult&) const = default;
};

// Validate Filter: accepted when the definition may be stored in the place of what was `shown`. A text of a file that
// nobody has changed may be longer than one that is typed.
FilterResult ValidateFilter(const FilterControls& controls, const FilterControls& shown, FilterUse use,
                            platform::Services& services);

// Ok for a filter slot 0..11: stored when accepted, which is a change of the database if it differs. A condition that
// is as it was shown keeps what is stored.
FilterResult filterOk(model::Document& doc, platform::Services& services, int filterSlot,
                      const FilterControls& controls);
// Ok for a Conditional Expression: the set goes to the definition that Field Properties holds.
FilterResult conditionOk(const model::DatabaseModel& db, platform::Services& services, const FilterControls& controls,
                         model::CondExprDef& condition);

// Before CmbFilterList shows another slot: asks when the controls differ from what this slot holds.
Leaving leaveFilter(const model::DatabaseModel& db, platform::Services& services, int filterSlot,
                    const FilterControls& controls);

// ClearButton: asks; Yes clears the controls, and the slot's definition with them, since a filter without a condition
// cannot be stored. True for Yes.
bool clearFilter(model::Document& doc, platform::Services& services, int filterSlot, FilterControls& controls);
// The same for a Conditional Expression, whose definition is stored by Field Properties.
bool clearCondition(platform::Services& services, FilterControls& controls);

} // namespace tallybook::design
