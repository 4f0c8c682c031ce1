#include "calc/expressions/ExpressionBench.h"

#include "core/calc/cells/CellCoders.h"

#include <utility>

namespace tallybook::calc::test {

namespace {

constexpr platform::LocalTime kNow = {2003, 3, 5, 13, 5, 9};
const platform::Regional kRegional;

FieldValues number(double value, std::string_view text = "") {
    return {static_cast<std::int32_t>(value), static_cast<float>(value), text};
}

FieldValues packed(std::uint32_t value, std::string_view text = "") {
    return {static_cast<std::int32_t>(value), static_cast<float>(value), text};
}

} // namespace

ExpressionBench::ExpressionBench() {
    names.emplace_back();
    field("Price", 4, number(2.5, "2.5"), number(0.5, "0.5"));
    field("Qty", 2, number(4, "4"), number(3, "3"));
    field("Unit Price", 4, number(0.1, "0.1"));
    field("Price_2", 3, {16777217, 16777216, "16777217"});
    field("2nd", 1, number(7, "7"));
    field("Name", 1, {0, 0, "Ann"}, {0, 0, "Bob"});
    field("Done", 6, {1, 1, ""});
    field("Due", 7, packed(packDate(2003, 3, 10), "3/10/2003"));
    field("Start", 8, packed(packTime(9, 30, 15), "9:30:15 AM"));
    field("Kind", 5, number(12, "12"));
    field("Chosen", 19, number(5, "5"));
    field("Total", 22, number(1.25, "1.25"));
    field("Finish", 9, packed(packDate(2003, 3, 1), "3/1/2003"), {}, 1);
    field("Clock", 22, packed(46801, "1:00:01 PM"), {}, 7);
    field("Length", 9, packed(3661, "1:1:1"), {}, 11);
    field("Label", 22, {0, 0, "x"}, {}, 13);
    field("Today", 1, {0, 0, "a field"});
    field("Cost (net)", 4, number(8), number(6));
    field("a]b", 2, number(19));
    field("Day", 2, number(20));
    field("", 0, {});
    field("Number", 11, number(77));
    field("Name", 1, {0, 0, "second"});
    field("Blank", 7, {});
    names.resize(kFieldEntries);
}

void ExpressionBench::field(std::string name, std::uint8_t type, FieldValues current, FieldValues previous,
                            std::uint8_t resultType) {
    const std::size_t slot = names.size();
    names.push_back(std::move(name));
    kinds.fieldTypes[slot] = type;
    kinds.fieldResultTypes[slot] = resultType;
    values[slot] = {current, previous};
}

ExpressionBench::Outcome ExpressionBench::run(std::string_view text, std::uint8_t resultType, std::uint8_t decimals,
                                              std::int32_t record) const {
    TokenArray tokens{};
    TokenTextArray texts;
    CompileError error;
    if (Compile(text, names, tokens, texts, error) < 0)
        return {false, "not compiled: " + error.text, 0};
    Outcome outcome;
    std::uint8_t colour = 0;
    outcome.done =
        Evaluate(record, kinds, values, tokens, texts, resultType, decimals, {kRegional, kNow}, outcome.text, colour);
    outcome.colour = colour;
    return outcome;
}

ExpressionBench::Outcome ExpressionBench::run(const TokenArray& tokens, const TokenTextArray& texts,
                                              std::uint8_t resultType) const {
    Outcome outcome;
    std::uint8_t colour = 0;
    outcome.done = Evaluate(2, kinds, values, tokens, texts, resultType, 0, {kRegional, kNow}, outcome.text, colour);
    outcome.colour = colour;
    return outcome;
}

std::string ExpressionBench::errorOf(std::string_view text) const {
    TokenArray tokens{};
    TokenTextArray texts;
    CompileError error;
    if (Compile(text, names, tokens, texts, error) >= 0)
        return "";
    return std::to_string(error.position) + ": " + error.text;
}

std::string ExpressionBench::displayed(std::string_view text) const {
    TokenArray tokens{};
    TokenTextArray texts;
    CompileError error;
    if (Compile(text, names, tokens, texts, error) < 0)
        return "not compiled: " + error.text;
    return displayText(tokens, texts, names);
}

} // namespace tallybook::calc::test
