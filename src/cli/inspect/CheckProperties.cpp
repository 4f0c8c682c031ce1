// What check says about fields, lists, views, filters and forms.
#include "cli/inspect/Findings.h"
#include "cli/rows/ModelJson.h"
#include "core/calc/values/Ansi.h"
#include "core/pdb/Layout.h"

#include <algorithm>
#include <array>
#include <set>
#include <span>
#include <string_view>

namespace tallybook::cli {

namespace {

namespace layout = pdb::layout;
using model::DatabaseModel;
using model::FieldType;

constexpr int kStaticText = 255;     // a form's row without a field
constexpr int kPreviousRecord = 100; // a token's slot in the record before is its code less this
constexpr std::uint32_t kNow = 79;   // in the simple form the present time has the code of a field
constexpr std::string_view kOperators = "=!<L>JhHsS";

std::string fieldName(const DatabaseModel& db, int slot) {
    return "field " + std::to_string(slot) + " \"" +
           calc::ansi::toUtf8(db.Fields[static_cast<std::size_t>(slot)].Name) + '"';
}

bool isUsed(const DatabaseModel& db, int slot) {
    return slot <= model::MaxUserFields && db.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed;
}

// Collects findings about one record.
class RecordFindings {
public:
    RecordFindings(const ListEntry& entry, Findings& findings) : m_entry(entry), m_findings(findings) {}

    void add(std::string text) { m_findings.push_back({m_entry.record, m_entry.bytes.start, std::move(text)}); }

    // A slot that must be in use; 0 means none.
    void needField(const DatabaseModel& db, int slot, const std::string& owner) {
        if (slot != 0 && !isUsed(db, slot))
            add(owner + " names field " + std::to_string(slot) + ", which is not used");
    }
    // The filters of a set, bit n for slot n, must have names.
    void needFilters(const DatabaseModel& db, std::uint16_t set, const std::string& owner) {
        for (int filter = 0; filter < 16; ++filter) {
            const bool named =
                filter < model::MaxFilters && !db.Filters[static_cast<std::size_t>(filter)].Name.empty();
            if ((set >> filter & 1) != 0 && !named)
                add(owner + " names filter " + std::to_string(filter) + ", which does not exist");
        }
    }
    void noNul(const std::string& text, std::size_t width, const std::string& owner) {
        if (text.size() >= width)
            add(owner + " has no NUL behind its name");
    }

private:
    const ListEntry& m_entry;
    Findings& m_findings;
};

void checkFields(const DatabaseModel& db, RecordFindings& out) {
    if (db.NumFields != std::max(1, model::highestField(db)))
        out.add("NumFields is " + std::to_string(db.NumFields) + ", a save writes " +
                std::to_string(std::max(1, model::highestField(db))));
    for (int slot = 1; slot < model::MaxFieldSlots; ++slot) {
        const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
        if (static_cast<int>(field.Type) >= model::kFieldTypes)
            out.add(fieldName(db, slot) + " has the unknown type " + std::to_string(static_cast<int>(field.Type)));
        if (field.Type == FieldType::Float && field.Decimals > 3)
            out.add(fieldName(db, slot) + " has " + std::to_string(field.Decimals) +
                    " decimals, at most 3: its values are not shown and not saved");
        if (slot > model::MaxUserFields && field.Type != FieldType::NotUsed)
            out.add(fieldName(db, slot) + " is beyond the last slot: a save leaves it out");
    }
}

void checkListItems(const model::ListDef& list, const std::string& owner, RecordFindings& out) {
    std::set<int> seen;
    for (std::size_t at = 0; at < list.ItemIds.size(); ++at) {
        const int id = list.ItemIds[at];
        if (id == 0)
            out.add(owner + ": item " + std::to_string(at + 1) + " has the id 0, which means none");
        else if (!seen.insert(id).second)
            out.add(owner + ": item " + std::to_string(at + 1) + " has the id " + std::to_string(id) +
                    " of another item");
    }
}

void checkAttribute(const DatabaseModel& db, int slot, RecordFindings& out) {
    if (db.Lists.has(slot))
        checkListItems(db.Lists.at(slot), fieldName(db, slot), out);
    if (db.CondExprs.has(slot))
        out.noNul(db.CondExprs.at(slot).Name, layout::kConditionNameWidth, fieldName(db, slot));
    if (db.OneToManys.has(slot))
        out.noNul(db.OneToManys.at(slot).Source, layout::kOneToManySourceWidth, fieldName(db, slot));
}

std::string numbered(const char* what, std::size_t slot, const std::string& name) {
    return std::string(what) + ' ' + std::to_string(slot) + " \"" + calc::ansi::toUtf8(name) + '"';
}

void checkViews(const DatabaseModel& db, RecordFindings& out) {
    for (std::size_t slot = 0; slot < db.NumViews; ++slot) {
        const model::ViewDef& view = db.Views[slot];
        const std::string owner = numbered("view", slot, view.Name);
        out.noNul(view.Name, layout::kViewNameWidth, owner);
        if (view.NumCols != model::highestColumn(view))
            out.add(owner + " has " + std::to_string(view.NumCols) + " columns, a save writes " +
                    std::to_string(model::highestColumn(view)));
        for (const model::ViewColumn& column : std::span(view.Columns).first(view.NumCols))
            out.needField(db, column.Field, owner);
        for (const std::uint8_t field : view.SortFields)
            out.needField(db, field, owner);
        out.needFilters(db, view.FilterMask, owner);
    }
}

template <class Conditions>
void checkConditions(const DatabaseModel& db, const Conditions& conditions, const std::string& owner,
                     RecordFindings& out) {
    const std::array<std::uint8_t, 6> operands = {conditions.CondFields[0],  conditions.CondFields[1],
                                                  conditions.CondFields[2],  conditions.CondFields2[0],
                                                  conditions.CondFields2[1], conditions.CondFields2[2]};
    for (const std::uint8_t field : operands)
        out.needField(db, field, owner);
    for (std::size_t at = 0; at < conditions.CondOps.size(); ++at)
        if (operands[at * 2] != 0 && kOperators.find(static_cast<char>(conditions.CondOps[at])) == std::string::npos)
            out.add(owner + ": condition " + std::to_string(at + 1) + " has the unknown operator " +
                    std::to_string(conditions.CondOps[at]));
    for (const std::uint8_t link : conditions.CondLinks)
        if (link != 0 && link != 'A' && link != 'O')
            out.add(owner + " has the unknown link " + std::to_string(link));
}

void checkFilters(const DatabaseModel& db, RecordFindings& out) {
    for (std::size_t slot = 0; slot < db.NumFilters; ++slot) {
        const model::FilterDef& filter = db.Filters[slot];
        const std::string owner = numbered("filter", slot, filter.Name);
        out.noNul(filter.Name, layout::kConditionNameWidth, owner);
        if (!filter.Name.empty() && filter.CondFields[0] == 0)
            out.add(owner + " has no first condition");
        checkConditions(db, filter, owner, out);
    }
    if (db.NumFilters != model::highestFilter(db))
        out.add("NumFilters is " + std::to_string(db.NumFilters) + ", a save writes " +
                std::to_string(model::highestFilter(db)));
}

void checkStartFilters(const DatabaseModel& db, RecordFindings& out) {
    out.needFilters(db, db.HdrWord1, "HdrWord1");
    out.needFilters(db, db.DefaultFilterMask, "DefaultFilterMask");
}

void checkForms(const DatabaseModel& db, RecordFindings& out) {
    for (std::size_t slot = 0; slot < db.NumForms; ++slot) {
        const model::FormDef& form = db.Forms[slot];
        for (const model::FormItem& item : std::span(form.Items).first(form.NumItems))
            if (item.Field != kStaticText)
                out.needField(db, item.Field, numbered("form", slot, form.Name));
    }
}

void checkExpression(const DatabaseModel& db, int slot, RecordFindings& out) {
    const bool simple = db.Fields[static_cast<std::size_t>(slot)].Type == FieldType::Expression;
    for (const std::uint32_t token : db.Expressions.at(slot).Tokens) {
        if (token == 0)
            return;
        if (simple && token == kNow)
            continue;
        if (token <= model::MaxUserFields)
            out.needField(db, static_cast<int>(token), fieldName(db, slot));
        else if (token > kPreviousRecord && token <= kPreviousRecord + model::MaxUserFields)
            out.needField(db, static_cast<int>(token) - kPreviousRecord, fieldName(db, slot));
    }
}

// The local join of a lookup, fields of expressions and conditions.
void checkAttributeReferences(const DatabaseModel& db, int slot, RecordFindings& out) {
    switch (db.Fields[static_cast<std::size_t>(slot)].Type) {
    case FieldType::Expression:
    case FieldType::AdvExpression:
        return checkExpression(db, slot, out);
    case FieldType::DBLookup:
    case FieldType::AddressBookLookup:
        return out.needField(db, db.Externals.at(slot).SourceField, fieldName(db, slot));
    case FieldType::ConditionalExpression: {
        const model::CondExprDef& condition = db.CondExprs.at(slot);
        checkConditions(db, condition, fieldName(db, slot), out);
        out.needField(db, condition.TrueField, fieldName(db, slot));
        out.needField(db, condition.FalseField, fieldName(db, slot));
        return;
    }
    default:
        return;
    }
}

} // namespace

void checkFixedRecord(const DatabaseModel& db, const ListEntry& entry, Findings& findings) {
    RecordFindings out(entry, findings);
    if (entry.record == layout::kFieldTable)
        checkFields(db, out);
    else if (entry.record >= layout::kFirstAttribute && entry.record <= layout::kLastAttribute)
        checkAttribute(db, entry.record - layout::kFirstAttribute, out);
}

void checkReferences(const DatabaseModel& db, const FileMap& map, Findings& findings) {
    for (const ListEntry& entry : map.entries) {
        RecordFindings out(entry, findings);
        if (entry.record == layout::kHeaderValues)
            checkStartFilters(db, out);
        else if (entry.record == layout::kForms)
            checkForms(db, out);
        else if (entry.record == layout::kViews)
            checkViews(db, out);
        else if (entry.record == layout::kFilters)
            checkFilters(db, out);
        else if (entry.record >= layout::kFirstAttribute && entry.record <= layout::kLastAttribute)
            checkAttributeReferences(db, entry.record - layout::kFirstAttribute, out);
    }
}

} // namespace tallybook::cli
