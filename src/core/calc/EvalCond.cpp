#include "core/calc/EvalCond.h"

#include "core/calc/Dates.h"
#include "core/calc/ExpressionTokens.h"
#include "core/calc/Numbers.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace tallybook::calc {

namespace {

using model::FieldType;

constexpr int kRecordsAStep = 256; // between two looks at the progress bar

bool isFieldSlot(int slot) {
    return slot <= model::MaxUserFields;
}

FieldType typeOf(const model::DatabaseModel& db, int slot) {
    return isFieldSlot(slot) ? db.Fields[static_cast<std::size_t>(slot)].Type : FieldType::NotUsed;
}

bool isCalculated(FieldType type) {
    return type == FieldType::Expression || type == FieldType::AdvExpression;
}

// The time of day of a serial, as a serial of its own.
double timeOfDay(double serial) {
    return serial >= 0 && serial < 1 ? serial : serialOf(Date{}, timeOf(serial));
}

// How a text becomes a value.
enum class Rule : std::uint8_t { Text, Whole, Double, Checked, Date, Time, Nothing };

Rule ruleOfResult(std::uint8_t resultType) {
    switch (resultType) {
    case result::kFloating:
        return Rule::Double;
    case result::kDateAndDays:
    case result::kDateAndMonths:
    case result::kDateAndYears:
        return Rule::Date;
    case result::kDays:
    case result::kMonths:
    case result::kYears:
    case result::kHours:
    case result::kMinutes:
    case result::kSeconds:
        return Rule::Whole;
    case result::kTime:
        return Rule::Time;
    case result::kText:
        return Rule::Text;
    default:
        return Rule::Nothing;
    }
}

// The type that goes with what a calculated field's text was read as.
FieldType typeOfRule(Rule rule) {
    switch (rule) {
    case Rule::Double:
        return FieldType::Float;
    case Rule::Whole:
        return FieldType::Long;
    case Rule::Date:
        return FieldType::Date;
    case Rule::Time:
        return FieldType::Time;
    default:
        return FieldType::Text;
    }
}

// Constants ------------------------------------------------------------------------------------------------

CondValue numericOrNot(std::string_view text, const CondContext& context) {
    CondValue value = CondValue::ofText(text);
    const auto number = parseNumber(text, context.regional);
    value.numeric = number ? CondValue::Numeric::Yes : CondValue::Numeric::No;
    value.number = number.value_or(0);
    return value;
}

CondValue constantByRule(Rule rule, std::string_view text, const CondContext& context) {
    const auto serial = [&] { return readDate(text, context.regional, context.now.year).value_or(0); };
    switch (rule) {
    case Rule::Whole:
        return CondValue::ofNumber(toInt32(text, context.regional).value_or(0));
    case Rule::Double:
        return CondValue::ofNumber(parseNumber(text, context.regional).value_or(0));
    case Rule::Date:
        return CondValue::ofDate(serial());
    case Rule::Time:
        return CondValue::ofDate(timeOfDay(serial()));
    case Rule::Nothing:
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
        return {constantByRule(Rule::Whole, text, context), FieldType::Long};
    case FieldType::Float:
        return {constantByRule(Rule::Double, text, context), FieldType::Float};
    case FieldType::Date:
        if (text == "T")
            return {CondValue::ofDate(std::floor(serialOf(context.now))), FieldType::Date};
        return {constantByRule(Rule::Date, text, context), FieldType::Date};
    case FieldType::Time:
        return {constantByRule(Rule::Time, text, context), FieldType::Time};
    case FieldType::Expression:
    case FieldType::AdvExpression: {
        const Rule rule = ruleOfResult(resultType);
        return {constantByRule(rule, text, context), rule == Rule::Nothing ? type : typeOfRule(rule)};
    }
    default:
        return {numericOrNot(text, context), FieldType::Text};
    }
}

// Fields ---------------------------------------------------------------------------------------------------

// A field that conditions read, its kind settled.
class FieldOperand {
public:
    FieldOperand(const model::Document& doc, const CondContext& context, int slot) : m_regional(context.regional) {
        if (!isFieldSlot(slot))
            return;
        m_reader.emplace(doc.grd, model::columnOfSlot(slot), context.regional, context.now.year);
        settle(typeOf(doc.CurrDB20, slot), doc.CurrDB20.Expressions.at(slot).ResultType);
    }

    CondOperand read(std::uint32_t row, std::string& scratch) const {
        switch (m_rule) {
        case Rule::Text:
            return {CondValue::ofText(m_reader->text(row, scratch)), FieldType::Text};
        case Rule::Whole:
            return numberOrZero(whole(row));
        case Rule::Double:
            return numberOrZero(m_reader->number(row));
        case Rule::Checked:
            return {CondValue::ofNumber(m_reader->isChecked(row) ? 1 : 0), m_filled};
        case Rule::Date:
            return dateOrZero(m_reader->date(row));
        case Rule::Time: {
            const auto serial = m_reader->date(row);
            return dateOrZero(serial ? std::optional(timeOfDay(*serial)) : std::nullopt);
        }
        default:
            return {{}, m_filled};
        }
    }

private:
    // A calculated field without a value is compared as a text, whatever its format.
    void settle(FieldType type, std::uint8_t resultType) {
        m_rule = isCalculated(type) ? ruleOfResult(resultType) : ruleOfType(type);
        m_filled = type == FieldType::Checkbox ? FieldType::Long : type;
        m_blank = type;
        if (isCalculated(type)) {
            m_filled = typeOfRule(m_rule);
            m_blank = FieldType::Text;
        }
    }

    static Rule ruleOfType(FieldType type) {
        switch (type) {
        case FieldType::Integer:
        case FieldType::Long:
        case FieldType::Key:
        case FieldType::AutoIncremental:
            return Rule::Whole;
        case FieldType::Float:
            return Rule::Double;
        case FieldType::Checkbox:
            return Rule::Checked;
        case FieldType::Date:
            return Rule::Date;
        case FieldType::Time:
            return Rule::Time;
        default:
            return Rule::Text;
        }
    }

    // The nearest whole number, ties to even; nothing when the text has none within 32 bits.
    std::optional<double> whole(std::uint32_t row) const {
        const model::StoredCell cell = m_reader->texts().stored(row);
        if (cell.kind == model::StoredCell::Kind::Text)
            return toInt32(cell.text, m_regional);
        const auto number = m_reader->number(row);
        if (!number)
            return std::nullopt;
        const double rounded = std::nearbyint(*number);
        using Limits = std::numeric_limits<std::int32_t>;
        return rounded >= Limits::min() && rounded <= Limits::max() ? std::optional(rounded) : std::nullopt;
    }

    CondOperand numberOrZero(std::optional<double> number) const {
        return {CondValue::ofNumber(number.value_or(0)), number ? m_filled : m_blank};
    }
    CondOperand dateOrZero(std::optional<double> serial) const {
        return {CondValue::ofDate(serial.value_or(0)), serial ? m_filled : m_blank};
    }

    const platform::Regional& m_regional;
    std::optional<CellReader> m_reader; // none beyond slot 80
    Rule m_rule = Rule::Nothing;
    FieldType m_filled = FieldType::Text;
    FieldType m_blank = FieldType::Text;
};

// The format of a constant beside a calculated field is that of operand slots 0, 1 and 2 in the first, second and
// third condition, which is the left field in the first one alone. The handheld reads them so.
std::uint8_t resultTypeAt(const model::DatabaseModel& db, const Conditions& conditions, int position) {
    return db.Expressions.at(conditions.slots[static_cast<std::size_t>(position / 2)]).ResultType;
}

CondOperand constantAt(const model::DatabaseModel& db, const CondContext& context, const Conditions& conditions,
                       int position, FieldType type) {
    const std::string_view text = conditions.constants[static_cast<std::size_t>(position / 2)];
    return readConstant(text, type, resultTypeAt(db, conditions, position), context);
}

// Whether the right side of a condition is its field. The third goes by the slot of the second.
bool comparesFields(const Conditions& conditions, int condition) {
    return conditions.slots[condition == 0 ? 1 : 3] != 0;
}

int countOf(const Conditions& conditions) {
    if (conditions.links[0] == 0)
        return 1;
    return conditions.links[1] == 0 ? 2 : 3;
}

// `right` is asked for when it decides: reading a condition has no other effect.
template <class Right> bool joined(bool left, std::uint8_t link, Right right) {
    if (link == 'A')
        return left && right();
    return link == 'O' && (left || right());
}

// A Conditional Expression has a third link, which never counts.
template <class Def> Conditions conditionsOfAny(const Def& def) {
    Conditions conditions;
    for (std::size_t i = 0; i < 3; ++i) {
        conditions.slots[i] = def.CondFields[i];
        conditions.slots[i + 3] = def.CondFields2[i];
        conditions.constants[i] = def.CondValues[i];
        conditions.operators[i] = def.CondOps[i];
    }
    conditions.links = {def.CondLinks[0], def.CondLinks[1]};
    return conditions;
}

// The result of a Conditional Expression for one outcome.
struct Branch {
    int field; // 0: the text
    std::string_view text;
    std::uint8_t colour;
};

Branch branchOf(const model::CondExprDef& def, bool result) {
    return result ? Branch{def.TrueField, def.TrueText, def.TrueKind}
                  : Branch{def.FalseField, def.FalseText, def.FalseKind};
}

std::string_view textOfBranch(const model::Document& doc, const Branch& branch, std::uint32_t row,
                              std::string& scratch) {
    if (branch.field == 0)
        return branch.text;
    if (!isFieldSlot(branch.field))
        return {};
    return doc.grd.column(model::columnOfSlot(branch.field)).text(row, scratch);
}

void writeBranch(model::Document& doc, const Branch& branch, int field, std::uint32_t row, std::string& scratch) {
    const int column = model::columnOfSlot(field);
    if (branch.field != field) // a field that names itself keeps its text
        doc.grd.column(column).setText(row, textOfBranch(doc, branch, row, scratch));
    if (branch.colour >= kResultColourCount)
        return;
    if (const std::uint32_t colour = kResultColours[branch.colour]; colour != 0)
        doc.grd.colours(column).set(row, colour);
    else
        doc.grd.colours(column).erase(row);
}

} // namespace

int GetDBFieldNo20(const model::DatabaseModel& db, std::string_view name) {
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        if (db.Fields[static_cast<std::size_t>(slot)].Name == name)
            return slot;
    return 0;
}

Conditions conditionsOf(const model::FilterDef& filter) {
    return conditionsOfAny(filter);
}

// A reader fills links 1 and 2, and 0 and 1 count: after a load the first condition alone decides, until the field
// is stored anew. The handheld expects the links to move so.
Conditions conditionsOf(const model::CondExprDef& condition) {
    return conditionsOfAny(condition);
}

CondOperand GetCalcVal(const model::Document& doc, const CondContext& context, const Conditions& conditions,
                       int position, OperandSource source, FieldType type, int row, std::string& scratch) {
    if (source == OperandSource::Constant)
        return constantAt(doc.CurrDB20, context, conditions, position, type);
    const FieldOperand field(doc, context, conditions.slots[static_cast<std::size_t>(position)]);
    return field.read(doc.grd.rowId(row), scratch);
}

// The conditions that count, each with its operands.
class ConditionSet::Prepared {
public:
    Prepared(const model::Document& doc, const platform::Services& services, Conditions conditions)
        : m_context{services.regional, services.clock.now()}, m_links(conditions.links) {
        for (std::size_t i = 0; i < m_constants.size(); ++i)
            conditions.constants[i] = m_constants[i] = conditions.constants[i];
        const int count = countOf(conditions);
        for (int i = 0; i < count; ++i)
            m_readable = m_readable && isFieldSlot(conditions.slots[leftOf(i)]) &&
                         (!comparesFields(conditions, i) || isFieldSlot(conditions.slots[leftOf(i) + 1]));
        for (int i = 0; i < count && m_readable; ++i)
            add(doc, conditions, i);
    }

    bool isReadable() const { return m_readable; }

    bool holds(std::uint32_t row) {
        if (!m_readable)
            return true;
        bool result = meets(m_conditions[0], row);
        for (std::size_t i = 1; i < m_conditions.size(); ++i)
            result = joined(result, m_links[i - 1], [&] { return meets(m_conditions[i], row); });
        return result;
    }

private:
    struct Condition {
        std::uint8_t code;
        FieldOperand left;
        std::optional<FieldOperand> right; // none: the constant
        CondOperand constant;
    };

    static std::size_t leftOf(int condition) { return static_cast<std::size_t>(condition) * 2; }

    void add(const model::Document& doc, const Conditions& conditions, int i) {
        const int left = conditions.slots[leftOf(i)];
        Condition& made = m_conditions.emplace_back(
            Condition{conditions.operators[static_cast<std::size_t>(i)], FieldOperand(doc, m_context, left), {}, {}});
        if (comparesFields(conditions, i))
            made.right.emplace(doc, m_context, conditions.slots[leftOf(i) + 1]);
        else
            made.constant = constantAt(doc.CurrDB20, m_context, conditions, i * 2 + 1, typeOf(doc.CurrDB20, left));
    }

    bool meets(const Condition& condition, std::uint32_t row) {
        const CondOperand left = condition.left.read(row, m_leftText);
        if (condition.right)
            return CheckCondition(condition.code, left, condition.right->read(row, m_rightText), m_context);
        return CheckCondition(condition.code, left, condition.constant, m_context);
    }

    CondContext m_context;
    std::array<std::uint8_t, 2> m_links;
    bool m_readable = true;
    std::array<std::string, 3> m_constants; // which the conditions look into
    std::vector<Condition> m_conditions;
    std::string m_leftText; // where texts that a column keeps as words are made
    std::string m_rightText;
};

ConditionSet::ConditionSet(const model::Document& doc, const platform::Services& services,
                           const model::FilterDef& filter)
    : m_prepared(std::make_unique<Prepared>(doc, services, conditionsOf(filter))) {}

ConditionSet::ConditionSet(const model::Document& doc, const platform::Services& services,
                           const model::CondExprDef& condition)
    : m_prepared(std::make_unique<Prepared>(doc, services, conditionsOf(condition))) {}

ConditionSet::~ConditionSet() = default;
ConditionSet::ConditionSet(ConditionSet&&) noexcept = default;
ConditionSet& ConditionSet::operator=(ConditionSet&&) noexcept = default;

bool ConditionSet::isReadable() const {
    return m_prepared->isReadable();
}

bool ConditionSet::holds(std::uint32_t rowId) const {
    return m_prepared->holds(rowId);
}

bool EvalCondition(const model::Document& doc, const platform::Services& services, const model::FilterDef& filter,
                   int row) {
    return ConditionSet(doc, services, filter).holds(doc.grd.rowId(row + 1));
}

void SetCondValue(model::Document& doc, bool result, int field, int row) {
    std::string scratch;
    writeBranch(doc, branchOf(doc.CurrDB20.CondExprs.at(field), result), field, doc.grd.rowId(row), scratch);
    doc.grd.touch();
}

void CalcCondExppression(model::Document& doc, platform::Services& services, int field) {
    const model::CondExprDef& def = doc.CurrDB20.CondExprs.at(field);
    const std::string caption = "Calculating " + doc.CurrDB20.Fields[static_cast<std::size_t>(field)].Name + " ...";
    services.ui.progress(caption, 0, doc.NumDataRecs);
    doc.grd.touch();
    if (def.CondFields[0] == 0) {
        doc.grd.column(model::columnOfSlot(field)).clear();
        return;
    }
    const ConditionSet conditions(doc, services, def);
    if (!conditions.isReadable())
        return;
    const Branch branches[] = {branchOf(def, false), branchOf(def, true)};
    std::string scratch;
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        if (record % kRecordsAStep == 0)
            services.ui.progress(caption, record + 1, doc.NumDataRecs);
        const std::uint32_t row = doc.grd.order().id(record);
        writeBranch(doc, branches[conditions.holds(row) ? 1 : 0], field, row, scratch);
    }
}

} // namespace tallybook::calc
