#include "Calculation.h"

#include "Queries.h"
#include "core/calc/cells/CellCoders.h"
#include "core/calc/expressions/ExpressionEngine.h"

#include <array>
#include <stdexcept>
#include <vector>

namespace tallybook::bench {

namespace {

using model::FieldType;

int fieldForResults(const model::Document& doc) {
    if (const auto unused = slotsOf(doc.CurrDB20, FieldType::NotUsed); !unused.empty())
        return unused.front();
    if (const auto texts = slotsOf(doc.CurrDB20, FieldType::Text); !texts.empty())
        return texts.back();
    throw std::runtime_error("the file has no slot for a calculated field");
}

Calculation choose(const model::Document& doc) {
    const auto floats = slotsOf(doc.CurrDB20, FieldType::Float);
    const auto integers = slotsOf(doc.CurrDB20, FieldType::Integer);
    if (floats.empty() || integers.size() < 2)
        throw std::runtime_error("the file has no Float or not two Integers");
    return {fieldForResults(doc), floats[0], integers[0], integers[1]};
}

model::ExprDef simple(const Calculation& calculation) {
    model::ExprDef def;
    def.Tokens = {static_cast<calc::Token>(calculation.a), calc::token::kPlus,
                  static_cast<calc::Token>(calculation.b), calc::token::kTimes,
                  static_cast<calc::Token>(calculation.c)};
    return def;
}

model::ExprDef advanced(const Calculation& calculation) {
    std::array<std::string, calc::kFieldEntries> names;
    names[static_cast<std::size_t>(calculation.a)] = "a";
    names[static_cast<std::size_t>(calculation.b)] = "b";
    names[static_cast<std::size_t>(calculation.c)] = "c";
    model::ExprDef def;
    calc::CompileError error;
    if (calc::Compile("If(b > c, Round(a * 2), Abs(b - c) / 2)", names, def.Tokens, def.TokenTexts, error) != 0)
        throw std::runtime_error(error.text);
    return def;
}

std::string operand(int slot) {
    return "ifnull(f" + std::to_string(slot) + ",0)";
}

} // namespace

Calculation addCalculation(model::Document& doc, const platform::Services& services, CalculationForm form) {
    const Calculation made = choose(doc);
    model::FieldDef& field = doc.CurrDB20.Fields[static_cast<std::size_t>(made.field)];
    field.Type = form == CalculationForm::Simple ? FieldType::Expression : FieldType::AdvExpression;
    field.Decimals = 2;
    doc.CurrDB20.Expressions[made.field] = form == CalculationForm::Simple ? simple(made) : advanced(made);
    clearResults(doc, made);
    doc.grd.column(model::columnOfSlot(made.field))
        .setCoder(calc::coderForField(doc.CurrDB20, made.field, services.regional));
    return made;
}

void clearResults(model::Document& doc, const Calculation& calculation) {
    doc.grd.column(model::columnOfSlot(calculation.field)).clear();
}

std::string sqlOf(const Calculation& calculation, CalculationForm form) {
    const std::string a = operand(calculation.a);
    const std::string b = operand(calculation.b);
    const std::string c = operand(calculation.c);
    if (form == CalculationForm::Simple)
        return "(" + a + "+" + b + ")*" + c;
    return "CASE WHEN " + b + ">" + c + " THEN round(" + a + "*2) ELSE abs(" + b + "-" + c + ")/2.0 END";
}

} // namespace tallybook::bench
