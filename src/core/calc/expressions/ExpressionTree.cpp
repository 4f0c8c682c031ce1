#include "core/calc/expressions/ExpressionTree.h"

#include "core/calc/expressions/ExpressionWords.h"
#include "core/model/Limits.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace tallybook::calc {

namespace {

namespace own = platform::texts;
using Kind = ExpressionNode::Kind;

// Brackets, functions, signs ahead of operands and powers within each other. Evaluation is as deep as this, and a
// handheld has little room to be so.
constexpr int kDeepest = 32;

// A constant's digits, always with a point; nothing for what is no number.
std::optional<double> numberOf(std::string_view text) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc{} || read.ptr != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

// How tightly an operator binds; 0 for what is no operator between two operands. Power stands apart.
enum Level { kNone, kOr, kXor, kAnd, kComparison, kSum, kProduct };

int levelOf(Operator operation) {
    switch (operation) {
    case Operator::Or:
        return kOr;
    case Operator::Xor:
        return kXor;
    case Operator::And:
        return kAnd;
    case Operator::Modulo:
        return kProduct;
    case Operator::Not:
    case Operator::Power:
        return kNone;
    default:
        return kComparison;
    }
}

class Parser {
public:
    Parser(std::span<const Token> tokens, std::span<const std::string> texts, std::vector<ExpressionNode>& nodes)
        : m_texts(texts), m_nodes(nodes) {
        const auto limited = tokens.first(std::min<std::size_t>(tokens.size(), model::kTokens));
        const auto end = std::find(limited.begin(), limited.end(), token::kEnd);
        m_tokens = limited.first(static_cast<std::size_t>(end - limited.begin()));
    }

    int run() {
        if (m_tokens.empty())
            return fail(own::kExpressionEmpty, 0);
        const int root = binary(kOr);
        if (!m_error && m_place < m_tokens.size())
            return unexpected();
        return root;
    }

    std::optional<TreeError> takeError() { return std::move(m_error); }

private:
    bool atEnd() const { return m_place >= m_tokens.size(); }
    Token peek() const { return atEnd() ? token::kEnd : m_tokens[m_place]; }
    std::string_view textAt(std::size_t place) const {
        return place < m_texts.size() ? std::string_view(m_texts[place]) : std::string_view();
    }

    std::optional<Operator> operatorHere() const {
        if (peek() != token::kOperator)
            return std::nullopt;
        const unsigned code = words::codeOf(textAt(m_place));
        if (code < 1 || code > words::kOperators.size())
            return std::nullopt;
        return static_cast<Operator>(code);
    }

    int fail(std::string_view text, std::size_t place) {
        if (!m_error)
            m_error = TreeError{std::string(text), place, place >= m_tokens.size()};
        return -1;
    }

    int add(ExpressionNode node) {
        m_nodes.push_back(std::move(node));
        return static_cast<int>(m_nodes.size()) - 1;
    }
    ExpressionNode& at(int number) { return m_nodes[static_cast<std::size_t>(number)]; }

    int addUnary(Kind kind, int operand) {
        if (operand < 0)
            return -1;
        const int number = add({.kind = kind});
        at(number).first = operand;
        at(number).readsRecord = at(operand).readsRecord;
        return number;
    }

    int addBinary(Kind kind, int left, int right) {
        if (left < 0 || right < 0)
            return -1;
        const int number = addUnary(kind, left);
        at(left).next = right;
        at(number).readsRecord = at(left).readsRecord || at(right).readsRecord;
        return number;
    }

    // What stands where a value or an operator ought to.
    bool isKnown() const {
        const Token code = peek();
        if (token::isField(code) || token::isPreviousField(code))
            return true;
        if (code == token::kOperator)
            return operatorHere().has_value();
        if (code == token::kFunction)
            return words::functionOf(words::codeOf(textAt(m_place))) != nullptr;
        if (code == token::kColour)
            return words::codeOf(textAt(m_place)) < words::kColours.size();
        return code == token::kToday || (code >= token::kNumber && code <= token::kPrevIndex);
    }

    // An operand where none can be, an operator or a bracket: names what is wrong with what stands here.
    int unexpected() {
        if (!isKnown())
            return fail(own::unknownToken(peek()), m_place);
        if (peek() == token::kClose)
            return fail(own::kNothingToClose, m_place);
        if (peek() == token::kComma)
            return fail(own::kCommaOutside, m_place);
        return fail(own::kOperatorMissing, m_place);
    }

    int valueMissing() {
        if (!atEnd() && !isKnown())
            return unexpected();
        if (peek() == token::kClose && m_open == 0)
            return unexpected();
        if (peek() == token::kComma && m_calls == 0)
            return unexpected();
        return fail(own::kValueMissing, m_place);
    }

    std::pair<int, Kind> binaryHere() const {
        switch (peek()) {
        case token::kPlus:
            return {kSum, Kind::Add};
        case token::kMinus:
            return {kSum, Kind::Subtract};
        case token::kTimes:
            return {kProduct, Kind::Multiply};
        case token::kDivide:
            return {kProduct, Kind::Divide};
        default:
            const auto operation = operatorHere();
            return {operation ? levelOf(*operation) : kNone, Kind::Binary};
        }
    }

    // Operators of a level from left to right, those that bind tighter first.
    int binary(int level) {
        int left = unary();
        while (left >= 0) {
            const auto [here, kind] = binaryHere();
            if (here < level || here == kNone)
                break;
            const Operator operation = operatorHere().value_or(Operator::Modulo);
            ++m_place;
            left = addBinary(kind, left, binary(here + 1));
            if (left >= 0)
                at(left).operation = operation;
        }
        return left;
    }

    // Signs and colours ahead of an operand. A power binds tighter: -2 ** 2 is -4.
    int unary() {
        if (m_depth == kDeepest)
            return fail(own::kNestedTooDeeply, m_place);
        ++m_depth;
        const int node = signedOperand();
        --m_depth;
        return node;
    }

    int signedOperand() {
        if (peek() == token::kMinus) {
            ++m_place;
            return addUnary(Kind::Negate, unary());
        }
        if (operatorHere() == Operator::Not) {
            ++m_place;
            return addUnary(Kind::Not, unary());
        }
        if (peek() == token::kColour && isKnown()) {
            const auto colour = words::codeOf(textAt(m_place));
            ++m_place;
            if (!atOperand())
                return add({.kind = Kind::ColourAlone, .colour = static_cast<std::uint8_t>(colour)});
            return coloured(Kind::ColourAhead, colour, unary());
        }
        return power();
    }

    // Something that a colour can stand ahead of; what is not known is left for its message.
    bool atOperand() const {
        if (atEnd())
            return false;
        switch (peek()) {
        case token::kPlus:
        case token::kTimes:
        case token::kDivide:
        case token::kClose:
        case token::kComma:
            return false;
        default:
            return !operatorHere() || operatorHere() == Operator::Not;
        }
    }

    int coloured(Kind kind, unsigned colour, int operand) {
        const int number = addUnary(kind, operand);
        if (number >= 0)
            at(number).colour = static_cast<std::uint8_t>(colour);
        return number;
    }

    // From right to left: the exponent is an operand with its own signs and powers.
    int power() {
        const int base = operandWithColours();
        if (base < 0 || operatorHere() != Operator::Power)
            return base;
        ++m_place;
        const int number = addBinary(Kind::Binary, base, unary());
        if (number >= 0)
            at(number).operation = Operator::Power;
        return number;
    }

    int operandWithColours() {
        int node = operand();
        for (; node >= 0 && peek() == token::kColour && isKnown(); ++m_place)
            node = coloured(Kind::ColourBehind, words::codeOf(textAt(m_place)), node);
        return node;
    }

    int operand() {
        if (!isKnown())
            return valueMissing();
        const Token code = peek();
        if (token::isField(code))
            return field(code, 0);
        if (token::isPreviousField(code))
            return field(code - token::kPreviousRecord, 1);
        switch (code) {
        case token::kToday:
            return constant({.kind = Kind::Today});
        case token::kNow:
            return constant({.kind = Kind::Now});
        case token::kPrevIndex:
            return constant({.kind = Kind::PrevIndex, .readsRecord = true});
        case token::kNumber:
            return number();
        case token::kText:
            return constant({.kind = Kind::Text, .text = std::string(textAt(m_place))});
        case token::kFunction:
            return call();
        case token::kOpen:
            return bracket();
        default:
            return valueMissing();
        }
    }

    int constant(ExpressionNode node) {
        ++m_place;
        return add(std::move(node));
    }

    int field(Token slot, std::uint8_t record) {
        return constant(
            {.kind = Kind::Field, .readsRecord = true, .slot = static_cast<std::uint8_t>(slot), .record = record});
    }

    int number() {
        const auto value = numberOf(textAt(m_place));
        if (!value)
            return fail(own::noNumber(textAt(m_place)), m_place);
        return constant({.kind = Kind::Number, .number = *value});
    }

    int bracket() {
        const std::size_t open = m_place++;
        const int calls = std::exchange(m_calls, 0); // a comma in here belongs to no function
        ++m_open;
        const int inside = binary(kOr);
        if (inside >= 0 && !close(open))
            return -1;
        --m_open;
        m_calls = calls;
        return inside;
    }

    bool close(std::size_t open) {
        if (peek() == token::kClose) {
            ++m_place;
            return true;
        }
        if (!atEnd())
            unexpected();
        else if (!m_error)
            m_error = TreeError{std::string(own::kBracketNotClosed), open, true};
        return false;
    }

    int call() {
        const std::size_t open = m_place++;
        const auto code = words::codeOf(textAt(open));
        const int number = add({.kind = Kind::Function, .function = static_cast<Function>(code)});
        const int calls = std::exchange(m_calls, 1);
        ++m_open;
        const int count = arguments(number);
        if (m_error || !close(open))
            return -1;
        --m_open;
        m_calls = calls;
        const words::FunctionWord& word = *words::functionOf(code);
        if (count < word.fewest || count > word.most)
            return fail(own::argumentCount(word.name, word.fewest, word.most), open);
        return number;
    }

    // Joins the arguments to their function; their count.
    int arguments(int function) {
        int count = 0;
        int last = -1;
        do {
            if (count > 0)
                ++m_place; // the comma
            const int argument = binary(kOr);
            if (argument < 0)
                return count;
            (last < 0 ? at(function).first : at(last).next) = argument;
            at(function).readsRecord |= at(argument).readsRecord;
            last = argument;
            ++count;
        } while (peek() == token::kComma);
        return count;
    }

    std::span<const Token> m_tokens;
    std::span<const std::string> m_texts;
    std::vector<ExpressionNode>& m_nodes;
    std::size_t m_place = 0;
    int m_depth = 0;
    int m_open = 0;  // brackets that wait for their end
    int m_calls = 0; // 1 directly inside a function's brackets
    std::optional<TreeError> m_error;
};

} // namespace

ExpressionTree::ExpressionTree(std::span<const Token> tokens, std::span<const std::string> texts) {
    m_nodes.reserve(model::kTokens);
    Parser parser(tokens, texts, m_nodes);
    m_root = parser.run();
    m_error = parser.takeError();
}

} // namespace tallybook::calc
