// Walks the tree of an expression with the values of one record.
#pragma once

#include "core/calc/expressions/ExpressionEngine.h"
#include "core/calc/expressions/ExpressionTree.h"
#include "core/calc/expressions/ExpressionValue.h"

#include <cstdint>
#include <forward_list>
#include <string>
#include <string_view>

namespace tallybook::calc {

// What does not change from record to record.
struct EvaluationSettings {
    const platform::Regional& regional;
    const DatePattern& datePattern;
    const TimePattern& timePattern;
    int thisYear; // completes dates without one
};

// What a cell of a field of form Number counts as.
double calculatedNumber(const FieldValues& values);

class ExpressionEvaluator {
public:
    ExpressionEvaluator(const ExpressionTree& tree, const FieldValueTable& values, std::int32_t record,
                        const EvaluationSettings& settings)
        : m_tree(tree), m_values(values), m_record(record), m_settings(settings) {}

    // The expression's value brought to the kind that a field's format wants. False when there is none.
    bool compute(std::uint8_t resultType, std::uint8_t decimals, ExpressionResult& result);

    // Why there is none.
    std::string_view fault() const { return m_fault; }

private:
    using Node = ExpressionNode;
    using Value = ExpressionValue;

    Value evaluate(int number);
    Value field(const Node& node);
    Value dateField(std::int32_t packed);
    Value conditional(const FieldValues& values);
    Value coloured(const Node& node);
    Value negate(const Node& node);
    Value invert(const Node& node);
    Value add(const Node& node);
    Value subtract(const Node& node);
    bool fitForDifference(const Node& node, Value& left, Value& right);
    Value later(const Node& node, const Value& moment, double amount);
    Value join(const Value& left, const Value& right);
    void countBeside(Value& value, const Value& other) const;
    Value multiply(const Node& node);
    Value divide(const Node& node);
    Value binary(const Node& node);
    Value arithmetic(const Node& node);
    Value logical(const Node& node);
    Value compare(const Node& node);
    Value compareTextWith(const Node& node, const Value& left, const Value& right);
    Value call(const Node& node);
    Value choose(const Node& node);
    Value numberFunction(const Node& node);
    Value round(const Node& node);
    Value squareRoot(const Node& node);
    Value fromParts(const Node& node);
    Value datePart(const Node& node);
    Value timePart(const Node& node);

    // Conversions of a node's value. False when it has none: the fault is set.
    bool toNumber(int number, Value& value);
    bool toDate(int number, Value& value);
    bool toTime(int number, Value& value);
    bool toSeconds(int number, Value& value);
    bool toDuration(int number, Value& value);
    bool toTruth(int number, bool& truth);
    bool numberAt(int number, double& value);

    bool finish(const Value& value, std::uint8_t resultType, std::uint8_t decimals, ExpressionResult& result);
    std::string_view textOf(const Value& value);

    // Something wrong with the expression itself.
    Value wrong(std::string_view text);
    // Something wrong with the values that it meets. A trial goes on with a value in its place when they come from
    // the record.
    Value failed(const Node& node, std::string_view text, Value instead);
    Value finite(const Node& node, double value);

    bool isTrial() const { return m_record == kTrialRecord; }
    bool isTrialOf(const Node& node) const { return isTrial() && node.readsRecord; }
    const Node& at(int number) const { return m_tree.node(number); }

    const ExpressionTree& m_tree;
    const FieldValueTable& m_values;
    std::int32_t m_record;
    const EvaluationSettings& m_settings;
    std::uint8_t m_colour = 0;
    bool m_blankDate = false; // one was read
    std::string_view m_fault;
    std::forward_list<std::string> m_texts; // texts that were put together
};

} // namespace tallybook::calc
