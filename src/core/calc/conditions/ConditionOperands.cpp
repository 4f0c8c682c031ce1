#include "core/calc/conditions/ConditionOperands.h"

#include "core/calc/expressions/ExpressionTokens.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"

#include <cmath>
#include <limits>

namespace tallybook::calc {

namespace {

using model::FieldType;
using model::StoredCell;
using model::WordForm;

bool isCalculated(FieldType type) {
    return type == FieldType::Expression || type == FieldType::AdvExpression;
}

// The time of day of a serial, as a serial of its own.
double timeOfDay(double serial) {
    return serial >= 0 && serial < 1 ? serial : serialOf(Date{}, timeOf(serial));
}

ValueRule ruleOfResult(std::uint8_t resultType) {
    switch (resultType) {
    case result::kFloating:
        return ValueRule::Double;
    case result::kDateAndDays:
    case result::kDateAndMonths:
    case result::kDateAndYears:
        return ValueRule::Date;
    case result::kDays:
    case result::kMonths:
    case result::kYears:
    case result::kHours:
    case result::kMinutes:
    case result::kSeconds:
        return ValueRule::Whole;
    case result::kTime:
        return ValueRule::Time;
    case result::kText:
        return ValueRule::Text;
    default:
        return ValueRule::Nothing;
    }
}

// The type that goes with what a calculated field's text was read as.
FieldType typeOfRule(ValueRule rule) {
    switch (rule) {
    case ValueRule::Double:
        return FieldType::Float;
    case ValueRule::Whole:
        return FieldType::Long;
    case ValueRule::Date:
        return FieldType::Date;
    case ValueRule::Time:
        return FieldType::Time;
    default:
        return FieldType::Text;
    }
}

CondValue numericOrNot(std::string_view text, const CondContext& context) {
    CondValue value = CondValue::ofText(text);
    const auto number = parseNumber(text, context.regional);
    value.numeric = number ? CondValue::Numeric::Yes : CondValue::Numeric::No;
    value.number = number.value_or(0);
    return value;
}

CondValue constantByRule(ValueRule rule, std::string_view text, const CondContext& context) {
    const auto serial = [&] { return readDate(text, context.regional, context.now.year).value_or(0); };
    switch (rule) {
    case ValueRule::Whole:
        return CondValue::ofNumber(toInt32(text, context.regional).value_or(0));
    case ValueRule::Double:
        return CondValue::ofNumber(parseNumber(text, context.regional).value_or(0));
    case ValueRule::Date:
        return CondValue::ofDate(serial());
    case ValueRule::Time:
        return CondValue::ofDate(timeOfDay(serial()));
    case ValueRule::Nothing:
        return {};
    default:
        return numericOrNot(text, context);
    }
}

// `resultType` is that of the field that decides the format of a constant beside a calculated field.
CondOperand readConstant(std::string_view text, FieldType type, std::uint8_t resultType, const CondContext& context) {
    switch (type) {
    case FieldType::Integer:
    case FieldType::Long:
        return {constantByRule(ValueRule::Whole, text, context), FieldType::Long};
    case FieldType::Float:
        return {constantByRule(ValueRule::Double, text, context), FieldType::Float};
    case FieldType::Date:
        if (text == "T")
            return {CondValue::ofDate(std::floor(serialOf(context.now))), FieldType::Date};
        return {constantByRule(ValueRule::Date, text, context), FieldType::Date};
    case FieldType::Time:
        return {constantByRule(ValueRule::Time, text, context), FieldType::Time};
    case FieldType::Expression:
    case FieldType::AdvExpression: {
        const ValueRule rule = ruleOfResult(resultType);
        return {constantByRule(rule, text, context), rule == ValueRule::Nothing ? type : typeOfRule(rule)};
    }
    default:
        return {numericOrNot(text, context), FieldType::Text};
    }
}

// The format of a constant beside a calculated field is that of operand slots 0, 1 and 2 in the first, second and
// third condition, which is the left field in the first one alone. The handheld reads them so.
std::uint8_t resultTypeAt(const model::DatabaseModel& db, const Conditions& conditions, int position) {
    return db.Expressions.at(conditions.slots[static_cast<std::size_t>(position / 2)]).ResultType;
}

ValueRule ruleOfType(FieldType type) {
    switch (type) {
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Key:
    case FieldType::AutoIncremental:
        return ValueRule::Whole;
    case FieldType::Float:
        return ValueRule::Double;
    case FieldType::Checkbox:
        return ValueRule::Checked;
    case FieldType::Date:
        return ValueRule::Date;
    case FieldType::Time:
        return ValueRule::Time;
    default:
        return ValueRule::Text;
    }
}

// The nearest whole number, ties to even; nothing when the cell has none within 32 bits.
std::optional<double> wholeOf(const StoredCell& cell, const CellReader& reader, const platform::Regional& regional) {
    if (cell.kind == StoredCell::Kind::Text)
        return toInt32(cell.text, regional);
    const auto number = reader.number(cell);
    if (!number)
        return std::nullopt;
    const double rounded = std::nearbyint(*number);
    using Limits = std::numeric_limits<std::int32_t>;
    return rounded >= Limits::min() && rounded <= Limits::max() ? std::optional(rounded) : std::nullopt;
}

} // namespace

FieldType typeOf(const model::DatabaseModel& db, int slot) {
    return isFieldSlot(slot) ? db.Fields[static_cast<std::size_t>(slot)].Type : FieldType::NotUsed;
}

FieldOperand::FieldOperand(const model::Tallybook& doc, const CondContext& context, int slot)
    : m_regional(context.regional) {
    if (!isFieldSlot(slot))
        return;
    m_reader.emplace(doc.grd, model::columnOfSlot(slot), context.regional, context.now.year);
    settle(typeOf(doc.CurrDB20, slot), doc.CurrDB20.Expressions.at(slot).ResultType);
}

// A calculated field without a value is compared as a text, whatever its format.
void FieldOperand::settle(FieldType type, std::uint8_t resultType) {
    m_rule = isCalculated(type) ? ruleOfResult(resultType) : ruleOfType(type);
    m_filled = type == FieldType::Checkbox ? FieldType::Long : type;
    m_blank = type;
    if (isCalculated(type)) {
        m_filled = typeOfRule(m_rule);
        m_blank = FieldType::Text;
    }
}

CondOperand FieldOperand::read(std::uint32_t row, std::string& scratch) const {
    if (m_rule == ValueRule::Checked)
        return {CondValue::ofNumber(m_reader->isChecked(row) ? 1 : 0), m_filled};
    if (m_rule == ValueRule::Nothing)
        return {{}, m_filled};
    return read(m_reader->texts().stored(row), scratch);
}

const model::TextColumn* FieldOperand::cells() const {
    return m_rule == ValueRule::Checked || m_rule == ValueRule::Nothing ? nullptr : &m_reader->texts();
}

CondOperand FieldOperand::read(const StoredCell& cell, std::string& scratch) const {
    switch (m_rule) {
    case ValueRule::Whole:
        return numberOrZero(wholeOf(cell, *m_reader, m_regional));
    case ValueRule::Double:
        return numberOrZero(m_reader->number(cell));
    case ValueRule::Date:
        return dateOrZero(m_reader->date(cell));
    case ValueRule::Time: {
        const auto serial = m_reader->date(cell);
        return dateOrZero(serial ? std::optional(timeOfDay(*serial)) : std::nullopt);
    }
    default:
        return {CondValue::ofText(m_reader->text(cell, scratch)), FieldType::Text};
    }
}

bool FieldOperand::hasOrderedWords() const {
    switch (wordForm()) {
    case WordForm::Whole:
        return m_rule == ValueRule::Whole;
    case WordForm::Decimal:
        return m_rule == ValueRule::Double;
    case WordForm::Date:
        return m_rule == ValueRule::Date;
    case WordForm::Time:
        return m_rule == ValueRule::Time;
    default:
        return false;
    }
}

CondOperand FieldOperand::numberOrZero(std::optional<double> number) const {
    return {CondValue::ofNumber(number.value_or(0)), number ? m_filled : m_blank};
}

CondOperand FieldOperand::dateOrZero(std::optional<double> serial) const {
    return {CondValue::ofDate(serial.value_or(0)), serial ? m_filled : m_blank};
}

CondOperand constantAt(const model::DatabaseModel& db, const CondContext& context, const Conditions& conditions,
                       int position, FieldType type) {
    const std::string_view text = conditions.constants[static_cast<std::size_t>(position / 2)];
    return readConstant(text, type, resultTypeAt(db, conditions, position), context);
}

} // namespace tallybook::calc
