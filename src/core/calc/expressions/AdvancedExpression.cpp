#include "core/calc/expressions/ExpressionEngine.h"
#include "core/calc/expressions/ExpressionEvaluator.h"
#include "core/calc/expressions/ExpressionLanes.h"
#include "core/calc/values/Numbers.h"
#include "core/model/FieldType.h"

#include <algorithm>
#include <utility>

namespace tallybook::calc {

namespace {

using model::FieldType;
using Needs = AdvancedExpression::Needs;

FieldForm formOfResult(std::uint8_t resultType) {
    switch (resultType) {
    case result::kDateAndDays:
    case result::kDateAndMonths:
    case result::kDateAndYears:
        return FieldForm::Date;
    case result::kTime:
        return FieldForm::DayTime;
    case result::kHoursMinutesSeconds:
    case result::kHoursMinutes:
        return FieldForm::Whole; // seconds
    case result::kText:
        return FieldForm::Text;
    default:
        return FieldForm::Number;
    }
}

FieldForm formOf(std::uint8_t type, std::uint8_t resultType) {
    switch (static_cast<FieldType>(type)) {
    case FieldType::NotUsed:
        return FieldForm::Free;
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Key:
    case FieldType::AutoIncremental:
        return FieldForm::Whole;
    case FieldType::Float:
        return FieldForm::Number;
    case FieldType::Checkbox:
        return FieldForm::Check;
    case FieldType::Date:
        return FieldForm::Date;
    case FieldType::Time:
        return FieldForm::Time;
    case FieldType::Expression:
    case FieldType::AdvExpression:
        return formOfResult(resultType);
    case FieldType::ConditionalExpression:
        return FieldForm::Conditional;
    case FieldType::List:
    case FieldType::RadioButton:
    case FieldType::DBLookup:
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        return FieldForm::Chosen;
    default:
        return FieldForm::Text;
    }
}

Needs needsOf(FieldForm form) {
    if (form == FieldForm::Text || form == FieldForm::Chosen)
        return Needs::Text;
    return form == FieldForm::Conditional ? Needs::All : Needs::Numbers;
}

int dayOf(const platform::LocalTime& now) {
    const Date date{now.year, now.month, now.day};
    return isRealDate(date) ? dayNumber(date) : 0;
}

double secondsOf(const platform::LocalTime& now) {
    return timeFromParts(now.hour, now.minute, now.second).value_or(0);
}

// hh:mm:ss, whatever the region: it is read again as a time.
void appendDuration(double duration, std::string& out) {
    const auto seconds = static_cast<int>(duration);
    const auto append = [&out](int part) {
        out += static_cast<char>('0' + part / 10);
        out += static_cast<char>('0' + part % 10);
    };
    append(seconds / 3600);
    out += ':';
    append(seconds / 60 % 60);
    out += ':';
    append(seconds % 60);
}

} // namespace

AdvancedExpression::AdvancedExpression(std::span<const Token> tokens, std::span<const std::string> texts,
                                       const FieldKinds& kinds, const EngineContext& context)
    : m_tree(std::make_unique<ExpressionTree>(tokens, texts)), m_regional(&context.regional),
      m_datePattern(context.regional), m_timePattern(context.regional), m_thisYear(context.now.year) {
    for (ExpressionNode& node : m_tree->nodes()) {
        if (node.kind == ExpressionNode::Kind::Today)
            node.number = dayOf(context.now);
        if (node.kind == ExpressionNode::Kind::Now)
            node.number = secondsOf(context.now);
        if (node.kind != ExpressionNode::Kind::Field)
            continue;
        node.form = formOf(kinds.fieldTypes[node.slot], kinds.fieldResultTypes[node.slot]);
        const FieldUse use{node.slot, node.record, needsOf(node.form)};
        if (std::find(m_uses.begin(), m_uses.end(), use) == m_uses.end())
            m_uses.push_back(use);
    }
    m_ofNumbers = ExpressionLanes::fits(*m_tree);
}

AdvancedExpression::~AdvancedExpression() = default;
AdvancedExpression::AdvancedExpression(AdvancedExpression&&) noexcept = default;
AdvancedExpression& AdvancedExpression::operator=(AdvancedExpression&&) noexcept = default;

bool AdvancedExpression::compute(const FieldValueTable& values, std::int32_t record, std::uint8_t resultType,
                                 std::uint8_t decimals, ExpressionResult& result) const {
    result.colour = 0;
    if (m_tree->error()) {
        result.text = m_tree->error()->text;
        return false;
    }
    const EvaluationSettings settings{*m_regional, m_datePattern, m_timePattern, m_thisYear};
    ExpressionEvaluator evaluator(*m_tree, values, record, settings);
    if (evaluator.compute(resultType, decimals, result))
        return true;
    result.text = evaluator.fault();
    return false;
}

void AdvancedExpression::computeLanes(std::span<const NumberLanes> cells, NumberLanes& results,
                                      model::RowBits& faults) const {
    std::array<const NumberLanes*, kFieldEntries> bySlot{};
    for (std::size_t i = 0; i < m_uses.size(); ++i)
        bySlot[static_cast<std::size_t>(m_uses[i].slot)] = &cells[i];
    ExpressionLanes(*m_tree, bySlot).compute(results, faults);
}

bool AdvancedExpression::evaluate(const FieldValueTable& values, std::int32_t record, std::uint8_t resultType,
                                  std::uint8_t decimals, std::string& result, std::uint8_t& colour) const {
    ExpressionResult computed;
    const bool done = compute(values, record, resultType, decimals, computed);
    colour = computed.colour;
    result.clear();
    if (done)
        appendText(computed, result);
    else
        result = std::move(computed.text);
    return done;
}

void AdvancedExpression::appendText(const ExpressionResult& result, std::string& out) const {
    switch (result.form) {
    case ExpressionResult::Form::Number:
        out += formatDecimals(result.value, result.decimals, *m_regional);
        break;
    case ExpressionResult::Form::Date:
        m_datePattern.append(dateOfDay(static_cast<int>(result.value)), out);
        break;
    case ExpressionResult::Form::Time:
        m_timePattern.append(timeOf(result.value / kSecondsOfDay), out);
        break;
    case ExpressionResult::Form::Duration:
        appendDuration(result.value, out);
        break;
    case ExpressionResult::Form::PlainText:
        out += result.text;
        break;
    }
}

bool Evaluate(std::int32_t record, const FieldKinds& kinds, const FieldValueTable& values,
              std::span<const Token> tokens, std::span<const std::string> tokenTexts, std::uint8_t resultType,
              std::uint8_t decimals, const EngineContext& context, std::string& result, std::uint8_t& colour) {
    return AdvancedExpression(tokens, tokenTexts, kinds, context)
        .evaluate(values, record, resultType, decimals, result, colour);
}

} // namespace tallybook::calc
