#include "core/calc/expressions/ExpressionLanes.h"

#include "core/calc/expressions/ExpressionEvaluator.h"
#include "core/calc/expressions/ExpressionValue.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tallybook::calc {

namespace {

using Kind = ExpressionNode::Kind;

bool isField(const ExpressionNode& node) {
    return node.record == kCurrentRecord && (node.form == FieldForm::Whole || node.form == FieldForm::Number);
}

bool isFunction(Function function) {
    switch (function) {
    case Function::If:
    case Function::Sqrt:
    case Function::Abs:
    case Function::Sign:
    case Function::Ceil:
    case Function::Floor:
    case Function::Round:
        return true;
    default:
        return false;
    }
}

bool isOperator(Operator operation) {
    switch (operation) {
    case Operator::LessEqual:
    case Operator::GreaterEqual:
    case Operator::Less:
    case Operator::Greater:
    case Operator::Equal:
    case Operator::NotEqual:
    case Operator::And:
    case Operator::Or:
    case Operator::Xor:
        return true;
    default:
        return false;
    }
}

bool isComputed(const ExpressionNode& node) {
    switch (node.kind) {
    case Kind::Number:
    case Kind::Negate:
    case Kind::Not:
    case Kind::Add:
    case Kind::Subtract:
    case Kind::Multiply:
    case Kind::Divide:
        return true;
    case Kind::Field:
        return isField(node);
    case Kind::Binary:
        return isOperator(node.operation);
    case Kind::Function:
        return isFunction(node.function);
    default:
        return false;
    }
}

// The number that a cell's number is to the expression. Most cells hold a whole number that both forms take as it is.
double wholeOf(double number) {
    constexpr double kMost = 2147483647;
    if (std::trunc(number) == number && std::fabs(number) <= kMost)
        return number;
    FieldValues values;
    setNumber(values, number);
    return values.longValue;
}

double numberOf(double number) {
    FieldValues values;
    setNumber(values, number);
    return calculatedNumber(values);
}

// What meets a fault elsewhere stays as it is.
double roundedTo(double value, double digits) {
    constexpr double kMostDigits = 400; // beyond every digit of a double
    if (!std::isfinite(value) || !std::isfinite(digits))
        return value;
    return roundShown(value, static_cast<int>(std::clamp(digits, -kMostDigits, kMostDigits)));
}

template <class Change> void change(NumberLanes& numbers, Change&& changed) {
    std::transform(numbers.begin(), numbers.end(), numbers.begin(), changed);
}

// A loop without a branch, which compilers have done for several rows at once.
template <class Combine> void combine(NumberLanes& left, const NumberLanes& right, Combine&& combined) {
    std::transform(left.begin(), left.end(), right.begin(), left.begin(), combined);
}

double truth(bool holds) {
    return holds ? 1 : 0;
}

} // namespace

bool ExpressionLanes::fits(const ExpressionTree& tree) {
    return !tree.error() && std::ranges::all_of(tree.nodes(), isComputed);
}

void ExpressionLanes::compute(NumberLanes& results, model::RowBits& faults) const {
    Lanes lanes;
    evaluate(m_tree.root(), lanes);
    results = lanes.numbers;
    faults = {};
    if (!lanes.anyFault)
        return;
    for (std::uint32_t place = 0; place < model::kBlockRows; ++place)
        if (lanes.faults[place] != 0)
            model::setBit(faults, place);
}

void ExpressionLanes::evaluate(int place, Lanes& lanes) const {
    const Node& node = at(place);
    switch (node.kind) {
    case Kind::Number:
        lanes.numbers.fill(node.number);
        break;
    case Kind::Field:
        field(node, lanes);
        break;
    case Kind::Negate:
        evaluate(node.first, lanes);
        change(lanes.numbers, [](double value) { return 0 - value; });
        break;
    case Kind::Not:
        evaluate(node.first, lanes);
        change(lanes.numbers, [](double value) { return truth(value == 0); });
        break;
    case Kind::Function:
        function(node, lanes);
        break;
    default:
        operation(node, lanes);
        break;
    }
}

void ExpressionLanes::field(const Node& node, Lanes& lanes) const {
    const NumberLanes& cells = *m_cells[node.slot];
    std::transform(cells.begin(), cells.end(), lanes.numbers.begin(),
                   node.form == FieldForm::Whole ? wholeOf : numberOf);
}

void ExpressionLanes::addFaults(const Marks& faults, Lanes& lanes) {
    if (!lanes.anyFault)
        lanes.faults.fill(0);
    lanes.anyFault = true;
    std::transform(lanes.faults.begin(), lanes.faults.end(), faults.begin(), lanes.faults.begin(),
                   [](std::uint8_t one, std::uint8_t other) { return static_cast<std::uint8_t>(one | other); });
}

void ExpressionLanes::wantFinite(Lanes& lanes) {
    constexpr double kMost = std::numeric_limits<double>::max();
    unsigned any = 0;
    for (const double number : lanes.numbers)
        any |= static_cast<unsigned>(!(std::fabs(number) <= kMost));
    if (any == 0)
        return;
    Marks faults;
    std::transform(lanes.numbers.begin(), lanes.numbers.end(), faults.begin(),
                   [](double number) { return static_cast<std::uint8_t>(!std::isfinite(number)); });
    addFaults(faults, lanes);
}

void ExpressionLanes::operation(const Node& node, Lanes& lanes) const {
    evaluate(node.first, lanes);
    Lanes right;
    evaluate(at(node.first).next, right);
    if (right.anyFault)
        addFaults(right.faults, lanes);
    switch (node.kind) {
    case Kind::Add:
        combine(lanes.numbers, right.numbers, [](double a, double b) { return a + b; });
        return wantFinite(lanes);
    case Kind::Subtract:
        combine(lanes.numbers, right.numbers, [](double a, double b) { return a - b; });
        return wantFinite(lanes);
    case Kind::Multiply:
        combine(lanes.numbers, right.numbers, [](double a, double b) { return a * b; });
        return wantFinite(lanes);
    case Kind::Divide:
        return divide(right, lanes);
    default:
        return binary(node, right, lanes);
    }
}

void ExpressionLanes::divide(const Lanes& right, Lanes& lanes) const {
    combine(lanes.numbers, right.numbers, [](double a, double b) { return a / b; });
    if (std::ranges::find(right.numbers, 0.0) != right.numbers.end()) {
        Marks faults;
        std::ranges::transform(right.numbers, faults.begin(),
                               [](double number) { return static_cast<std::uint8_t>(number == 0); });
        addFaults(faults, lanes);
    }
    wantFinite(lanes);
}

void ExpressionLanes::binary(const Node& node, const Lanes& right, Lanes& lanes) const {
    const auto decide = [&](auto&& holds) {
        combine(lanes.numbers, right.numbers, [&](double a, double b) { return truth(holds(a, b)); });
    };
    switch (node.operation) {
    case Operator::Less:
        return decide([](double a, double b) { return compareShown(a, b) < 0; });
    case Operator::LessEqual:
        return decide([](double a, double b) { return compareShown(a, b) <= 0; });
    case Operator::Greater:
        return decide([](double a, double b) { return compareShown(a, b) > 0; });
    case Operator::GreaterEqual:
        return decide([](double a, double b) { return compareShown(a, b) >= 0; });
    case Operator::Equal:
        return decide([](double a, double b) { return compareShown(a, b) == 0; });
    case Operator::NotEqual:
        return decide([](double a, double b) { return compareShown(a, b) != 0; });
    case Operator::And:
        return decide([](double a, double b) { return a != 0 && b != 0; });
    case Operator::Or:
        return decide([](double a, double b) { return a != 0 || b != 0; });
    default:
        return decide([](double a, double b) { return (a != 0) != (b != 0); });
    }
}

void ExpressionLanes::function(const Node& node, Lanes& lanes) const {
    if (node.function == Function::If)
        return choose(node, lanes);
    evaluate(node.first, lanes);
    switch (node.function) {
    case Function::Abs:
        return change(lanes.numbers, [](double value) { return std::fabs(value); });
    case Function::Sign:
        return change(lanes.numbers, [](double value) { return value > 0 ? 1.0 : (value < 0 ? -1.0 : 0.0); });
    case Function::Ceil:
        return change(lanes.numbers, ceilShown);
    case Function::Floor:
        return change(lanes.numbers, floorShown);
    case Function::Round:
        return round(node, lanes);
    default: // a root, of which a negative number has none
        change(lanes.numbers, [](double value) { return std::sqrt(value); });
        return wantFinite(lanes);
    }
}

void ExpressionLanes::round(const Node& node, Lanes& lanes) const {
    Lanes digits;
    if (const int second = at(node.first).next; second >= 0)
        evaluate(second, digits);
    else
        digits.numbers.fill(0);
    if (digits.anyFault)
        addFaults(digits.faults, lanes);
    combine(lanes.numbers, digits.numbers, roundedTo);
    wantFinite(lanes);
}

// Both answers are computed for all rows; of the one that a row does not take, its fault does not count either.
void ExpressionLanes::choose(const Node& node, Lanes& lanes) const {
    evaluate(node.first, lanes);
    const int then = at(node.first).next;
    Lanes held;
    Lanes other;
    evaluate(then, held);
    evaluate(at(then).next, other);
    const NumberLanes holds = lanes.numbers;
    for (std::size_t place = 0; place < holds.size(); ++place)
        lanes.numbers[place] = holds[place] != 0 ? held.numbers[place] : other.numbers[place];
    if (!held.anyFault && !other.anyFault)
        return;
    if (!held.anyFault)
        held.faults.fill(0);
    if (!other.anyFault)
        other.faults.fill(0);
    Marks faults;
    for (std::size_t place = 0; place < faults.size(); ++place)
        faults[place] = holds[place] != 0 ? held.faults[place] : other.faults[place];
    addFaults(faults, lanes);
}

} // namespace tallybook::calc
