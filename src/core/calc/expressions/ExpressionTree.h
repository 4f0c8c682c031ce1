// The structure of an expression, read from its tokens: which operator takes which operands. The one place that knows
// the grammar, for texts that are compiled and for tokens that a file carries.
#pragma once

#include "core/calc/expressions/ExpressionTokens.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tallybook::calc {

// How a field's value is read, by its type.
enum class FieldForm : std::uint8_t {
    Free,        // no field there
    Whole,       // longValue
    Number,      // singleValue, longValue for large whole numbers
    Check,       // longValue, other than 0 is 1
    Date,        // longValue, packed
    Time,        // longValue, packed
    DayTime,     // longValue, seconds since midnight
    Text,        // textValue
    Chosen,      // textValue, a number beside a number if it reads as one
    Conditional, // a number, a date or a text, as the record has it
};

struct ExpressionNode {
    enum class Kind : std::uint8_t {
        Number,
        Text,
        Today,
        Now,
        PrevIndex,
        Field,
        ColourAhead,  // sets the colour, then gives its operand
        ColourBehind, // gives its operand, then sets the colour
        ColourAlone,  // sets the colour; no text
        Negate,
        Not,
        Add,
        Subtract,
        Multiply,
        Divide,
        Binary, // `operation`
        Function,
    };
    Kind kind = Kind::Number;
    Operator operation = Operator::Modulo;
    Function function = Function::If;
    FieldForm form = FieldForm::Free;
    std::uint8_t colour = 0;
    bool readsRecord = false; // its value depends on the record
    std::uint8_t slot = 0;
    std::uint8_t record = 0;
    int first = -1; // operand or argument
    int next = -1;  // the one behind this among the operands of the same node
    double number = 0;
    std::string text{};
};

// What is wrong, and at which token; the count of tokens for their end.
struct TreeError {
    std::string text;
    std::size_t token = 0;
    bool atEnd = false; // found only when there were no more tokens
};

class ExpressionTree {
public:
    // The tokens up to the first 0, at most 48.
    ExpressionTree(std::span<const Token> tokens, std::span<const std::string> texts);

    const std::optional<TreeError>& error() const { return m_error; }
    int root() const { return m_root; }
    const ExpressionNode& node(int number) const { return m_nodes[static_cast<std::size_t>(number)]; }
    std::span<ExpressionNode> nodes() { return m_nodes; }
    std::span<const ExpressionNode> nodes() const { return m_nodes; }

private:
    std::vector<ExpressionNode> m_nodes;
    int m_root = -1;
    std::optional<TreeError> m_error;
};

} // namespace tallybook::calc
