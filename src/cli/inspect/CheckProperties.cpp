// What check says about fields, lists, views, filters and forms.
#include "cli/inspect/Findings.h"
#include "cli/rows/ModelJson.h"
#include "core/calc/expressions/ExpressionWords.h"
#include "core/calc/values/Ansi.h"
#include "core/pdb/Layout.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <span>
#include <string_view>

namespace tallybook::cli {

namespace {

namespace layout = pdb::layout;
using model::DatabaseModel;
using model::FieldType;

constexpr int kStaticText = 255; // a form's row without a field
constexpr int kLastFont = 3;
constexpr int kScreenPixels = 160;
constexpr int kPreviousRecord = 100; // a token's slot in the record before is its code less this
constexpr std::uint32_t kNow = 79;   // in the simple form the present time has the code of a field
constexpr std::string_view kOperators = "=!<L>JhHsS";
constexpr std::uint8_t kLastColour = 4;

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
    void needSource(const std::string& source, const std::string& owner) {
        if (source.empty())
            add(owner + " names no other Tallybook");
    }
    void noNul(const std::string& text, std::size_t width, const std::string& owner) {
        if (text.size() >= width)
            add(owner + " has no NUL behind its name");
    }

private:
    const ListEntry& m_entry;
    Findings& m_findings;
};

// Expressions, conditions and people name fields by their names.
void checkFieldNames(const DatabaseModel& db, RecordFindings& out) {
    std::map<std::string_view, int> slots;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const std::string& name = db.Fields[static_cast<std::size_t>(slot)].Name;
        if (!isUsed(db, slot) || name.empty())
            continue;
        const auto [first, isNew] = slots.try_emplace(name, slot);
        if (!isNew)
            out.add(fieldName(db, slot) + " has the name of field " + std::to_string(first->second));
    }
}

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
    checkFieldNames(db, out);
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
        if (view.Name.empty() && view != model::ViewDef{})
            out.add(owner + " has no name");
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
        if (filter.Name.empty() && filter != model::FilterDef{})
            out.add(owner + " has no name");
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
    if (db.StartForm > db.NumForms)
        out.add("StartForm is " + std::to_string(db.StartForm) + ", NumForms " + std::to_string(db.NumForms));
    for (std::size_t slot = 0; slot < db.NumForms; ++slot) {
        const model::FormDef& form = db.Forms[slot];
        const std::string owner = numbered("form", slot, form.Name);
        if (form.FormByte > kScreenPixels)
            out.add(owner + " has its values at pixel " + std::to_string(form.FormByte) + ", beyond the screen");
        for (const model::FormItem& item : std::span(form.Items).first(form.NumItems)) {
            if (item.Field != kStaticText)
                out.needField(db, item.Field, owner);
            for (const std::uint8_t font : {item.ItemKind, item.ItemByte1})
                if (font > kLastFont)
                    out.add(owner + ": row " + std::to_string(item.Row) + " has the font " + std::to_string(font) +
                            ", at most " + std::to_string(kLastFont));
        }
    }
}

// The slot that a token names, in this record or in the one before; 0 for none.
int fieldOfToken(std::uint32_t token) {
    const auto code = static_cast<int>(token);
    if (code >= 1 && code <= model::MaxUserFields)
        return code;
    return code > kPreviousRecord && code <= kPreviousRecord + model::MaxUserFields ? code - kPreviousRecord : 0;
}

// Operands stand at even places of the simple form, operators at odd ones.
bool isSimpleToken(std::uint32_t token, std::size_t at) {
    namespace t = calc::token;
    if (at % 2 == 1)
        return token >= t::kPlus && token <= t::kDivide;
    return fieldOfToken(token) > 0 || token == t::kToday || token == t::kNumber || token == t::kNow;
}

bool isAdvancedToken(std::uint32_t token, const std::string& text) {
    namespace t = calc::token;
    const unsigned code = calc::words::codeOf(text);
    switch (token) {
    case t::kColour:
        return code <= kLastColour;
    case t::kFunction:
        return calc::words::functionOf(code) != nullptr;
    case t::kOperator:
        return code >= 1 && code <= calc::words::kOperators.size();
    default:
        return fieldOfToken(token) > 0 || token == t::kToday || (token >= t::kNumber && token <= t::kPrevIndex);
    }
}

// Some tokens of the advanced form say nothing without their text.
std::string tokenWords(std::uint32_t token, const std::string& text) {
    namespace t = calc::token;
    const bool hasCode = token == t::kColour || token == t::kFunction || token == t::kOperator;
    return std::to_string(token) + (hasCode ? " with " + std::to_string(calc::words::codeOf(text)) : "");
}

void checkExpression(const DatabaseModel& db, int slot, RecordFindings& out) {
    const bool simple = db.Fields[static_cast<std::size_t>(slot)].Type == FieldType::Expression;
    const model::ExprDef& expression = db.Expressions.at(slot);
    const std::string owner = fieldName(db, slot);
    if (expression.ResultType > (simple ? calc::result::kHoursMinutes : calc::result::kText))
        out.add(owner + " has the unknown result format " + std::to_string(expression.ResultType));
    for (std::size_t at = 0; at < expression.Tokens.size() && expression.Tokens[at] != 0; ++at) {
        const std::uint32_t token = expression.Tokens[at];
        const int field = fieldOfToken(token);
        if (field > 0 && !(simple && token == kNow))
            out.needField(db, field, owner);
        if (!(simple ? isSimpleToken(token, at) : isAdvancedToken(token, expression.TokenTexts[at])))
            out.add(owner + ": token " + std::to_string(at + 1) + " is " +
                    (simple ? std::to_string(token) : tokenWords(token, expression.TokenTexts[at])) +
                    ", which means nothing there");
    }
}

void checkJoin(const DatabaseModel& db, int slot, RecordFindings& out) {
    const model::ExternalDef& join = db.Externals.at(slot);
    out.needSource(join.Source, fieldName(db, slot));
    constexpr std::array kKeyTypes = {FieldType::Text, FieldType::Integer, FieldType::Long, FieldType::Key,
                                      FieldType::AutoIncremental};
    if (std::find(kKeyTypes.begin(), kKeyTypes.end(), static_cast<FieldType>(join.KeyType)) == kKeyTypes.end())
        out.add(fieldName(db, slot) + " has the key type " + std::to_string(join.KeyType) + ", which no key has");
}

void checkLookup(const DatabaseModel& db, int slot, RecordFindings& out) {
    const model::ExternalDef& lookup = db.Externals.at(slot);
    out.needSource(lookup.Source, fieldName(db, slot));
    const int join = lookup.SourceField;
    if (join == 0)
        out.add(fieldName(db, slot) + " follows no join");
    else if (isUsed(db, join) && db.Fields[static_cast<std::size_t>(join)].Type != FieldType::DBJoin)
        out.add(fieldName(db, slot) + " follows field " + std::to_string(join) + ", which is no join");
    out.needField(db, join, fieldName(db, slot));
}

// The local join of a lookup, fields of expressions and conditions.
void checkAttributeReferences(const DatabaseModel& db, int slot, RecordFindings& out) {
    switch (db.Fields[static_cast<std::size_t>(slot)].Type) {
    case FieldType::Expression:
    case FieldType::AdvExpression:
        return checkExpression(db, slot, out);
    case FieldType::DBJoin:
        return checkJoin(db, slot, out);
    case FieldType::DBLookup:
        return checkLookup(db, slot, out);
    case FieldType::AddressBookLookup:
        return out.needField(db, db.Externals.at(slot).SourceField, fieldName(db, slot));
    case FieldType::OneToMany:
        return out.needSource(db.OneToManys.at(slot).Source, fieldName(db, slot));
    case FieldType::AutoIncremental:
        if (db.AutoIncNext.at(slot) == 0)
            out.add(fieldName(db, slot) + " has the next value 0, which no record keeps");
        return;
    case FieldType::ConditionalExpression: {
        const model::CondExprDef& condition = db.CondExprs.at(slot);
        checkConditions(db, condition, fieldName(db, slot), out);
        out.needField(db, condition.TrueField, fieldName(db, slot));
        out.needField(db, condition.FalseField, fieldName(db, slot));
        for (const std::uint8_t colour : {condition.TrueKind, condition.FalseKind})
            if (colour > kLastColour)
                out.add(fieldName(db, slot) + " has the unknown colour " + std::to_string(colour));
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
