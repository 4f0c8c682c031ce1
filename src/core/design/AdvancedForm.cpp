#include "core/design/ExpressionStore.h"

#include <algorithm>
#include <utility>

namespace tallybook::design {

namespace {

using model::DatabaseModel;
using model::ExprDef;

constexpr std::string_view kErrorTitle = "Error in the expression";

constexpr std::array<std::string_view, 9> kFormats = {
    "Floating", "Date", "Time", "Hours", "Minutes", "Seconds", "Hours-Minutes-Seconds", "Hours-Minutes", "Text"};

constexpr int kDate = 1;       // position; those behind it stand for codes from 7 on
constexpr int kCodeOffset = 5; // from such a position to its code

// Values for the trial, other than 0 so that it does not divide by one. The record before has none.
constexpr calc::FieldValues kTrialValues = {-1, -1, "True"};

bool refuse(const std::string& text, platform::Services& services) {
    services.ui.message({text, platform::Icon::Critical, platform::Buttons::Ok, std::string(kErrorTitle)});
    return false;
}

struct CompiledForm {
    calc::TokenArray tokens{};
    calc::TokenTextArray texts;
};

// The error's text when the expression has no value for the record of the trial.
std::string trialError(const CompiledForm& compiled, const DatabaseModel& db, std::uint8_t resultType,
                       std::uint8_t decimals, const platform::Services& services) {
    calc::FieldValueTable values;
    values.fill({kTrialValues, calc::FieldValues{}});
    std::string result;
    std::uint8_t colour = 0;
    const bool done = Evaluate(calc::kTrialRecord, fieldKinds(db), values, compiled.tokens, compiled.texts,
                               resultType, decimals, {services.regional, services.clock.now()}, result, colour);
    return done ? std::string() : result;
}

} // namespace

std::span<const std::string_view> advancedFormats() {
    return kFormats;
}

std::uint8_t resultTypeOfFormat(int position) {
    const int chosen = std::clamp(position, 0, static_cast<int>(kFormats.size()) - 1);
    return static_cast<std::uint8_t>(chosen <= kDate ? chosen : chosen + kCodeOffset);
}

int formatOfResultType(std::uint8_t resultType) {
    if (resultType >= calc::result::kDateAndDays && resultType <= calc::result::kDateAndYears)
        return kDate;
    if (resultType >= calc::result::kTime && resultType <= calc::result::kText)
        return resultType - kCodeOffset;
    return 0;
}

std::vector<std::string> usableFieldNames(const DatabaseModel& db) {
    std::vector<std::string> names(calc::kFieldEntries);
    for (std::size_t slot = 1; slot < names.size(); ++slot)
        if (db.Fields[slot].Type != model::FieldType::NotUsed)
            names[slot] = db.Fields[slot].Name;
    return names;
}

calc::FieldKinds fieldKinds(const DatabaseModel& db) {
    calc::FieldKinds kinds;
    for (std::size_t slot = 1; slot < calc::kFieldEntries; ++slot) {
        kinds.fieldTypes[slot] = static_cast<std::uint8_t>(db.Fields[slot].Type);
        kinds.fieldResultTypes[slot] = db.Expressions.at(static_cast<int>(slot)).ResultType;
    }
    return kinds;
}

AdvancedChoices DisplayExpression25(const DatabaseModel& db, const ExprDef& expression) {
    std::vector<std::string> names(calc::kFieldEntries);
    for (std::size_t slot = 1; slot < names.size(); ++slot)
        names[slot] = db.Fields[slot].Name;
    return {calc::displayText(expression.Tokens, expression.TokenTexts, names),
            formatOfResultType(expression.ResultType)};
}

bool StoreExpression25(const AdvancedChoices& choices, const DatabaseModel& db, std::uint8_t decimals,
                       platform::Services& services, ExprDef& expression, std::size_t* errorPlace) {
    expression.ResultType = resultTypeOfFormat(choices.format); // whatever becomes of the text
    CompiledForm compiled;
    calc::CompileError error;
    if (calc::Compile(choices.text, usableFieldNames(db), compiled.tokens, compiled.texts, error) < 0) {
        if (errorPlace)
            *errorPlace = error.position;
        return refuse(error.text, services);
    }
    const std::string fault = trialError(compiled, db, expression.ResultType, decimals, services);
    if (!fault.empty())
        return refuse(fault, services);
    expression.Tokens = compiled.tokens;
    expression.TokenTexts = std::move(compiled.texts);
    return true;
}

} // namespace tallybook::design
