#include "cli/schema/SchemaConditions.h"

#include "core/calc/values/Ansi.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <array>

namespace tallybook::cli {

namespace {

constexpr std::array<std::string_view, 5> kMembers = {"link", "field", "operator", "operand", "value"};
constexpr std::string_view kTooMany = "There are three conditions at most.";

std::string utf8(std::string_view text) {
    return calc::ansi::toUtf8(text);
}

// Position in a list of the dialog; 0, its entry for none, when the member is missing.
int positionOf(const SchemaObject& condition, std::string_view key, const std::vector<std::string>& entries) {
    if (!condition.has(key))
        return 0;
    const std::string name = condition.text(key);
    const auto found = std::find(entries.begin() + 1, entries.end(), name);
    if (found == entries.end())
        condition.refuse(key, utf8(platform::texts::noSuchField(name)));
    return static_cast<int>(found - entries.begin());
}

Json conditionJson(const model::DatabaseModel& db, const design::ConditionControls& condition) {
    Json json = Json::object();
    if (condition.CmbFldListCmp > 0)
        json["field"] = utf8(design::leftEntries(db)[static_cast<std::size_t>(condition.CmbFldListCmp)]);
    if (condition.CmbOpr >= 0)
        json["operator"] = design::comparisonEntries()[static_cast<std::size_t>(condition.CmbOpr)];
    if (!design::takesConstant(condition))
        json["operand"] = utf8(design::operandListEntries(db)[static_cast<std::size_t>(condition.CmbFldOpnd)]);
    else if (!condition.TxtConst.empty())
        json["value"] = utf8(condition.TxtConst);
    return json;
}

design::ConditionControls controlsOf(const model::DatabaseModel& db, const SchemaObject& described) {
    described.allowOnly(kMembers);
    design::ConditionControls condition;
    condition.CmbFldListCmp = positionOf(described, "field", design::leftEntries(db));
    condition.CmbOpr = described.entry("operator", design::comparisonEntries());
    design::selectOperand(condition, positionOf(described, "operand", design::operandListEntries(db)));
    if (described.has("value") && !design::takesConstant(condition))
        described.misuse("value", "It stands beside an operand.");
    if (design::takesConstant(condition))
        condition.TxtConst = described.text("value");
    return condition;
}

} // namespace

Json conditionsJson(const model::DatabaseModel& db, const design::FilterControls& controls) {
    Json all = Json::array();
    for (int n = 0; n < design::kConditions && design::isConditionUsed(controls, n); ++n) {
        Json json = conditionJson(db, controls.conditions[static_cast<std::size_t>(n)]);
        if (n > 0) {
            const auto link = static_cast<std::size_t>(controls.CmbRelOpr[static_cast<std::size_t>(n) - 1]);
            Json linked = {{"link", design::linkEntries()[link]}};
            linked.update(json);
            json = std::move(linked);
        }
        all.push_back(std::move(json));
    }
    return all;
}

design::FilterControls conditionControls(const model::DatabaseModel& db, const SchemaObject& owner) {
    design::FilterControls controls;
    const std::vector<SchemaObject> described = owner.objects("conditions");
    if (described.size() > controls.conditions.size())
        owner.refuse("conditions", std::string(kTooMany));
    for (std::size_t n = 0; n < described.size(); ++n) {
        controls.conditions[n] = controlsOf(db, described[n]);
        if (n == 0 && described[n].has("link"))
            described[n].misuse("link", "The first condition has none.");
        if (n > 0)
            controls.CmbRelOpr[n - 1] = described[n].entry("link", design::linkEntries().subspan(1), -1) + 1;
        if (n > 0 && controls.CmbRelOpr[n - 1] == 0)
            described[n].misuse("link", "\"AND\" or \"OR\" belongs here.");
    }
    return controls;
}

} // namespace tallybook::cli
