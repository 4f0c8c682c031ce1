#include "core/design/ConditionText.h"

#include "core/design/FilterDesign.h"

namespace tallybook::design {

namespace {

std::string oneCondition(const ConditionControls& condition, const std::vector<std::string>& left,
                         const std::vector<std::string>& right) {
    std::string text = left[static_cast<std::size_t>(condition.CmbFldListCmp)];
    text += ' ';
    text += condition.CmbOpr < 0 ? "?" : comparisonEntries()[static_cast<std::size_t>(condition.CmbOpr)];
    text += ' ';
    text += takesConstant(condition) ? '"' + condition.TxtConst + '"'
                                     : right[static_cast<std::size_t>(condition.CmbFldOpnd)];
    return text;
}

} // namespace

std::string conditionText(const model::DatabaseModel& db, const model::CondExprDef& condition) {
    if (condition.CondFields[0] == 0)
        return {};
    const FilterControls controls = CurrentDefinition(db, condition);
    const std::vector<std::string> left = leftEntries(db);
    const std::vector<std::string> right = operandListEntries(db);
    std::string text = oneCondition(controls.conditions[0], left, right);
    for (int n = 1; n < kConditions && isConditionUsed(controls, n); ++n) {
        const auto place = static_cast<std::size_t>(n);
        text += ' ';
        text += linkEntries()[static_cast<std::size_t>(controls.CmbRelOpr[place - 1])];
        text += ' ' + oneCondition(controls.conditions[place], left, right);
    }
    return text;
}

} // namespace tallybook::design
