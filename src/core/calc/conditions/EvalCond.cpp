#include "core/calc/conditions/EvalCond.h"

#include "core/calc/conditions/Condition.h"
#include "core/calc/conditions/ConditionOperands.h"
#include "core/calc/conditions/RowSets.h"
#include "core/calc/expressions/ExpressionTokens.h"

#include <string>
#include <vector>

namespace tallybook::calc {

namespace {

using model::FieldType;
using model::RowBits;

constexpr int kRecordsAStep = 256; // between two looks at the progress bar

// Whether the right side of a condition is its field. The third goes by the slot of the second.
bool comparesFields(const Conditions& conditions, int condition) {
    return conditions.slots[condition == 0 ? 1 : 3] != 0;
}

// A blank link ends the chain, and so does a condition without a field.
int countOf(const Conditions& conditions) {
    if (conditions.links[0] == 0 || conditions.slots[2] == 0)
        return 1;
    return conditions.links[1] == 0 || conditions.slots[4] == 0 ? 2 : 3;
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

std::string_view textOfBranch(const model::Tallybook& doc, const Branch& branch, std::uint32_t row,
                              std::string& scratch) {
    if (branch.field == 0)
        return branch.text;
    if (!isFieldSlot(branch.field))
        return {};
    return doc.grd.column(model::columnOfSlot(branch.field)).text(row, scratch);
}

void writeBranch(model::Tallybook& doc, const Branch& branch, int field, std::uint32_t row, std::string& scratch) {
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

CondOperand GetCalcVal(const model::Tallybook& doc, const CondContext& context, const Conditions& conditions,
                       int position, OperandSource source, FieldType type, int row, std::string& scratch) {
    if (source == OperandSource::Constant)
        return constantAt(doc.CurrDB20, context, conditions, position, type);
    const FieldOperand field(doc, context, conditions.slots[static_cast<std::size_t>(position)]);
    return field.read(doc.grd.rowId(row), scratch);
}

// The conditions that count, each with its operands.
class ConditionSet::Prepared {
public:
    Prepared(const model::Tallybook& doc, const platform::Services& services, Conditions conditions)
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
        bool result = m_conditions[0].holds(row);
        for (std::size_t i = 1; i < m_conditions.size(); ++i)
            result = joined(result, m_links[i - 1], [&] { return m_conditions[i].holds(row); });
        return result;
    }

    RowBits holding(std::uint32_t block, const RowBits& rows) {
        return m_readable ? holdingFirst(m_conditions.size(), block, rows) : rows;
    }

private:
    static std::size_t leftOf(int condition) { return static_cast<std::size_t>(condition) * 2; }

    void add(const model::Tallybook& doc, const Conditions& conditions, int i) {
        const std::uint8_t code = conditions.operators[static_cast<std::size_t>(i)];
        const int slot = conditions.slots[leftOf(i)];
        const FieldOperand left(doc, m_context, slot);
        if (comparesFields(conditions, i)) {
            const FieldOperand right(doc, m_context, conditions.slots[leftOf(i) + 1]);
            m_conditions.emplace_back(code, left, right, m_context);
        } else {
            const FieldType type = typeOf(doc.CurrDB20, slot);
            const CondOperand constant = constantAt(doc.CurrDB20, m_context, conditions, i * 2 + 1, type);
            m_conditions.emplace_back(code, left, constant, m_context);
        }
    }

    // The rows that satisfy the first `count` conditions, joined from left to right. Reading a condition has no other
    // effect, so the last one is asked first when it is quick, and the others only for rows that it leaves open.
    RowBits holdingFirst(std::size_t count, std::uint32_t block, const RowBits& rows) {
        Condition& last = m_conditions[count - 1];
        if (count == 1)
            return last.holding(block, rows);
        const std::uint8_t link = m_links[count - 2];
        if (link != 'A' && link != 'O')
            return {};
        const RowBits first = last.isQuick() ? last.holding(block, rows) : holdingFirst(count - 1, block, rows);
        const RowBits open = link == 'A' ? first : rowsWithout(rows, first);
        const RowBits second = last.isQuick() ? holdingFirst(count - 1, block, open) : last.holding(block, open);
        return link == 'A' ? second : rowsOfBoth(first, second);
    }

    CondContext m_context;
    std::array<std::uint8_t, 2> m_links;
    bool m_readable = true;
    std::array<std::string, 3> m_constants; // which the conditions look into
    std::vector<Condition> m_conditions;
};

ConditionSet::ConditionSet(const model::Tallybook& doc, const platform::Services& services,
                           const model::FilterDef& filter)
    : m_prepared(std::make_unique<Prepared>(doc, services, conditionsOf(filter))) {}

ConditionSet::ConditionSet(const model::Tallybook& doc, const platform::Services& services,
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

RowBits ConditionSet::holding(std::uint32_t block, const RowBits& rows) const {
    return m_prepared->holding(block, rows);
}

bool EvalCondition(const model::Tallybook& doc, const platform::Services& services, const model::FilterDef& filter,
                   int row) {
    return ConditionSet(doc, services, filter).holds(doc.grd.rowId(row + 1));
}

void SetCondValue(model::Tallybook& doc, bool result, int field, int row) {
    std::string scratch;
    writeBranch(doc, branchOf(doc.CurrDB20.CondExprs.at(field), result), field, doc.grd.rowId(row), scratch);
    doc.grd.touch();
}

void CalcCondExppression(model::Tallybook& doc, platform::Services& services, int field) {
    const model::CondExprDef& def = doc.CurrDB20.CondExprs.at(field);
    const std::string caption = "Calculating " + doc.CurrDB20.Fields[static_cast<std::size_t>(field)].Name + " ...";
    services.screen.progress(caption, 0, doc.NumDataRecs);
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
            services.screen.progress(caption, record + 1, doc.NumDataRecs);
        const std::uint32_t row = doc.grd.order().id(record);
        writeBranch(doc, branches[conditions.holds(row) ? 1 : 0], field, row, scratch);
    }
}

} // namespace tallybook::calc
