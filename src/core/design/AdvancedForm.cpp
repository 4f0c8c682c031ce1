#include "core/design/ExpressionStore.h"

#include <algorithm>
#include <optional>
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

CompiledForm storedForm(const ExprDef& expression) {
    return {expression.Tokens, expression.TokenTexts};
}

// The kinds with the field that is being made as it will be.
calc::FieldKinds kindsWith(const DatabaseModel& db, const FieldInDesign& own, std::uint8_t resultType) {
    calc::FieldKinds kinds = fieldKinds(db);
    if (own.slot > 0) {
        const auto slot = static_cast<std::size_t>(own.slot);
        kinds.fieldTypes[slot] = static_cast<std::uint8_t>(model::FieldType::AdvExpression);
        kinds.fieldResultTypes[slot] = resultType;
    }
    return kinds;
}

// The error's text when the expression has no value for the record of the trial.
std::string trialError(const CompiledForm& compiled, const DatabaseModel& db, const FieldInDesign& own,
                       std::uint8_t resultType, std::uint8_t decimals, const platform::Services& services) {
    calc::FieldValueTable values;
    values.fill({kTrialValues, calc::FieldValues{}});
    std::string result;
    std::uint8_t colour = 0;
    const bool done =
        Evaluate(calc::kTrialRecord, kindsWith(db, own, resultType), values, compiled.tokens, compiled.texts,
                 resultType, decimals, {services.regional, services.clock.now()}, result, colour);
    return done ? std::string() : result;
}

// A field that is being given another name may be called by either in its own expression.
int compile(std::string_view text, const DatabaseModel& db, const FieldInDesign& own, CompiledForm& compiled,
            calc::CompileError& error) {
    std::vector<std::string> names = usableFieldNames(db);
    if (own.slot <= 0)
        return calc::Compile(text, names, compiled.tokens, compiled.texts, error);
    std::string& ownName = names[static_cast<std::size_t>(own.slot)];
    const std::string former = std::exchange(ownName, std::string(own.name));
    const int outcome = calc::Compile(text, names, compiled.tokens, compiled.texts, error);
    if (outcome >= 0 || former.empty() || former == own.name)
        return outcome;
    ownName = former;
    calc::CompileError ofFormer;
    return calc::Compile(text, names, compiled.tokens, compiled.texts, ofFormer);
}

// What is wrong with a text, and where: a place from 0, none for what the trial found.
struct ExpressionFault {
    std::string text;
    std::optional<std::size_t> place;
};

// Without a fault the tokens are stored; a text that is the one shown keeps those that are there.
ExpressionFault compileAndTry(std::string_view text, const DatabaseModel& db, const FieldInDesign& own,
                              std::uint8_t decimals, const platform::Services& services, ExprDef& expression) {
    CompiledForm compiled = storedForm(expression);
    const bool stands = compiled.tokens[0] != calc::token::kEnd && text == DisplayExpression25(db, expression).text;
    calc::CompileError error;
    if (!stands && compile(text, db, own, compiled, error) < 0)
        return {error.text, error.position};
    std::string fault = trialError(compiled, db, own, expression.ResultType, decimals, services);
    if (!fault.empty())
        return {std::move(fault), std::nullopt};
    expression.Tokens = compiled.tokens;
    expression.TokenTexts = std::move(compiled.texts);
    return {};
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

bool StoreExpression25(const AdvancedChoices& choices, const DatabaseModel& db, const FieldInDesign& own,
                       std::uint8_t decimals, platform::Services& services, ExprDef& expression,
                       std::size_t* errorPlace) {
    if (choices.format != formatOfResultType(expression.ResultType))
        expression.ResultType = resultTypeOfFormat(choices.format); // whatever becomes of the text
    const ExpressionFault fault = compileAndTry(choices.text, db, own, decimals, services, expression);
    if (fault.text.empty())
        return true;
    if (errorPlace && fault.place)
        *errorPlace = *fault.place;
    return refuse(fault.text, services);
}

} // namespace tallybook::design
