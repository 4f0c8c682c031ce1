#include "core/design/FilterDesign.h"

#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/design/FieldNames.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>

namespace tallybook::design {

namespace {

using model::DatabaseModel;
using model::FieldType;

constexpr std::array<std::string_view, 10> kOperators = {
    "=", "<>", "<", "<=", ">", ">=", "contains", "Contains (Case Sensitive)", "starts", "Starts (Case Sensitive)"};
constexpr std::string_view kOperatorCodes = "=!<L>JhHsS"; // of the entries
constexpr std::array<std::string_view, 3> kLinks = {" ", "AND", "OR"};
constexpr std::string_view kLinkCodes("\0AO", 3);
constexpr std::string_view kTodayConstant = "T";
constexpr int kConstant = 0; // position in CmbFldOpnd
constexpr std::size_t kOperandSlots = 6;

// The slots of the used fields. Both lists of fields have one entry ahead of them.
std::vector<int> usedSlots(const DatabaseModel& db) {
    std::vector<int> slots;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        if (db.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed)
            slots.push_back(slot);
    return slots;
}

std::vector<std::string> usedNames(const DatabaseModel& db) {
    std::vector<std::string> names;
    for (const int slot : usedSlots(db))
        names.push_back(shownName(db, slot));
    return names;
}

// The entry of a slot; 0 for none.
int positionOfSlot(const DatabaseModel& db, int slot) {
    const std::vector<int> slots = usedSlots(db);
    const auto found = std::find(slots.begin(), slots.end(), slot);
    return found == slots.end() ? 0 : static_cast<int>(found - slots.begin()) + 1;
}

// The slot that an entry stands for, whatever its text: two fields may share a name. 0 for the other entries.
std::uint8_t slotOfPosition(const DatabaseModel& db, int position) {
    const std::vector<int> slots = usedSlots(db);
    if (position < 1 || position > static_cast<int>(slots.size()))
        return 0;
    return static_cast<std::uint8_t>(slots[static_cast<std::size_t>(position) - 1]);
}

int todayPosition(const DatabaseModel& db) {
    return static_cast<int>(usedSlots(db).size()) + 1;
}

bool isDate(const DatabaseModel& db, int slot) {
    return db.Fields[static_cast<std::size_t>(std::min(slot, model::MaxUserFields))].Type == FieldType::Date;
}

// Six operand slots as the two arrays of a definition hold them: the left ones stand at even places.
template <class Def> std::array<std::uint8_t, kOperandSlots> slotsOf(const Def& def) {
    const auto& a = def.CondFields;
    const auto& b = def.CondFields2;
    return {a[0], a[1], a[2], b[0], b[1], b[2]};
}
template <class Def> void setSlots(Def& def, const std::array<std::uint8_t, kOperandSlots>& slots) {
    std::copy_n(slots.begin(), 3, def.CondFields.begin());
    std::copy_n(slots.begin() + 3, 3, def.CondFields2.begin());
}

int positionIn(std::string_view codes, std::uint8_t code, int otherwise) {
    const std::size_t place = codes.find(static_cast<char>(code));
    return place == std::string_view::npos ? otherwise : static_cast<int>(place);
}

template <class Def> ConditionControls conditionControls(const DatabaseModel& db, const Def& def, std::size_t n) {
    const auto slots = slotsOf(def);
    const int left = slots[2 * n];
    const int right = slots[2 * n + 1];
    ConditionControls controls;
    controls.CmbFldListCmp = positionOfSlot(db, left);
    if (def.CondOps[n] != 0 || left != 0)
        controls.CmbOpr = positionIn(kOperatorCodes, def.CondOps[n], -1);
    if (right != 0)
        controls.CmbFldOpnd = positionOfSlot(db, right);
    else if (isDate(db, left) && def.CondValues[n] == kTodayConstant)
        controls.CmbFldOpnd = todayPosition(db);
    if (controls.CmbFldOpnd == kConstant)
        controls.TxtConst = def.CondValues[n];
    return controls;
}

using Links = std::array<std::uint8_t, 2>;

Links linksOf(const model::FilterDef& filter) {
    return filter.CondLinks;
}

// A Conditional Expression that was read from a file has its links one place further.
Links linksOf(const model::CondExprDef& condition) {
    const auto& links = condition.CondLinks;
    const bool fromFile = links[0] == 0 && links[1] != 0;
    return fromFile ? Links{links[1], links[2]} : Links{links[0], links[1]};
}

template <class Def> FilterControls controlsOf(const DatabaseModel& db, const Def& def) {
    FilterControls controls;
    for (std::size_t n = 0; n < controls.conditions.size(); ++n)
        controls.conditions[n] = conditionControls(db, def, n);
    const Links links = linksOf(def);
    for (std::size_t i = 0; i < links.size(); ++i)
        controls.CmbRelOpr[i] = positionIn(kLinkCodes, links[i], 0);
    return controls;
}

// One condition that was changed, translated back.
template <class Def>
void storeCondition(const DatabaseModel& db, const ConditionControls& condition, std::size_t n, Def& def) {
    auto slots = slotsOf(def);
    slots[2 * n] = slotOfPosition(db, condition.CmbFldListCmp);
    slots[2 * n + 1] = 0;
    if (condition.CmbOpr >= 0)
        def.CondOps[n] = static_cast<std::uint8_t>(kOperatorCodes[static_cast<std::size_t>(condition.CmbOpr)]);
    def.CondValues[n].clear();
    if (condition.CmbFldOpnd == todayPosition(db))
        def.CondValues[n] = kTodayConstant;
    else if (condition.CmbFldOpnd > kConstant)
        slots[2 * n + 1] = slotOfPosition(db, condition.CmbFldOpnd);
    else
        def.CondValues[n] = condition.TxtConst;
    setSlots(def, slots);
}

template <class Def> void clearStored(std::size_t n, Def& def) {
    auto slots = slotsOf(def);
    slots[2 * n] = slots[2 * n + 1] = 0;
    def.CondOps[n] = 0;
    def.CondValues[n].clear();
    setSlots(def, slots);
}

// The controls translated back in the place of what `def` shows. A condition that was not changed keeps what is
// stored, which may be more than the controls can show. Those behind the end of the chain go.
template <class Def> void storeConditions(const DatabaseModel& db, const FilterControls& controls, Def& def) {
    const FilterControls shown = controlsOf(db, def);
    const auto sameUse = [&](std::size_t n) {
        return isConditionUsed(controls, static_cast<int>(n)) == isConditionUsed(shown, static_cast<int>(n));
    };
    Links links = linksOf(def);
    for (std::size_t i = 0; i < links.size(); ++i)
        if (controls.CmbRelOpr[i] != shown.CmbRelOpr[i] || !sameUse(i + 1))
            links[i] = isConditionUsed(controls, static_cast<int>(i) + 1)
                           ? static_cast<std::uint8_t>(kLinkCodes[static_cast<std::size_t>(controls.CmbRelOpr[i])])
                           : std::uint8_t{0};
    for (std::size_t n = 0; n < controls.conditions.size(); ++n) {
        if (controls.conditions[n] == shown.conditions[n] && sameUse(n))
            continue;
        if (isConditionUsed(controls, static_cast<int>(n)))
            storeCondition(db, controls.conditions[n], n, def);
        else
            clearStored(n, def);
    }
    def.CondLinks = {};
    std::copy(links.begin(), links.end(), def.CondLinks.begin());
}

// A name is chosen from lists that have entries of their own, and a filter is found by its name.
bool refusesFilterName(const DatabaseModel& db, platform::Services& services, int filterSlot,
                       const std::string& name) {
    const auto isName = [&](std::string_view other) { return calc::equalText(name, other, calc::TextCase::Folded); };
    bool taken = isName("Multiple") || isName("No Filter");
    for (int slot = 0; slot < model::MaxFilters; ++slot)
        taken = taken || (slot != filterSlot && isName(db.Filters[static_cast<std::size_t>(slot)].Name));
    if (taken)
        say(services, platform::texts::filterNameTaken(name));
    return taken;
}

FilterResult refuse(platform::Services& services, std::string_view text, FilterFocus focus) {
    say(services, text, {}, platform::Icon::Critical);
    return {.focus = focus};
}

bool asksToClear(platform::Services& services) {
    return asksToDestroy(services,
                         "Once a filter condition is cleared it cannot be retrieved\nDo you want to clear the filter "
                         "definition?",
                         "Clear Filter");
}

} // namespace

std::vector<std::string> filterListEntries(const DatabaseModel& db) {
    std::vector<std::string> entries;
    for (int slot = 0; slot < model::MaxFilters; ++slot) {
        const std::string& name = db.Filters[static_cast<std::size_t>(slot)].Name;
        entries.push_back("Filter-" + calc::zeroPadded(static_cast<std::uint64_t>(slot) + 1, 2) +
                          (name.empty() ? "" : ' ' + name));
    }
    return entries;
}

std::vector<std::string> leftEntries(const DatabaseModel& db) {
    std::vector<std::string> entries = usedNames(db);
    entries.insert(entries.begin(), " ");
    return entries;
}

std::span<const std::string_view> comparisonEntries() {
    return kOperators;
}

std::span<const std::string_view> linkEntries() {
    return kLinks;
}

std::vector<std::string> operandListEntries(const DatabaseModel& db) {
    std::vector<std::string> entries = usedNames(db);
    entries.insert(entries.begin(), "Constant");
    entries.emplace_back("Today");
    return entries;
}

void selectLeft(const DatabaseModel& db, ConditionControls& condition, int position) {
    condition.CmbFldListCmp = position;
    if (condition.CmbFldOpnd == todayPosition(db) && !offersToday(db, condition))
        condition.CmbFldOpnd = kConstant;
}

bool offersToday(const DatabaseModel& db, const ConditionControls& condition) {
    const int slot = slotOfPosition(db, condition.CmbFldListCmp);
    return slot == 0 || isDate(db, slot);
}

void selectOperand(ConditionControls& condition, int position) {
    condition.CmbFldOpnd = position;
    if (!takesConstant(condition))
        condition.TxtConst.clear();
}

bool takesConstant(const ConditionControls& condition) {
    return condition.CmbFldOpnd == kConstant;
}

bool isConditionOffered(const FilterControls& controls, int condition) {
    return std::all_of(controls.CmbRelOpr.begin(), controls.CmbRelOpr.begin() + condition,
                       [](int link) { return link > 0; });
}

bool isConditionUsed(const FilterControls& controls, int condition) {
    const auto first = controls.conditions.begin();
    return isConditionOffered(controls, condition) &&
           std::all_of(first + std::min(condition, 1), first + condition + (condition > 0 ? 1 : 0),
                       [](const ConditionControls& one) { return one.CmbFldListCmp > 0; });
}

FilterControls CurrentDefinition(const DatabaseModel& db, const model::FilterDef& filter) {
    FilterControls controls = controlsOf(db, filter);
    controls.LblFilterName = filter.Name;
    return controls;
}

FilterControls CurrentDefinition(const DatabaseModel& db, const model::CondExprDef& condition) {
    return controlsOf(db, condition);
}

FilterResult ValidateFilter(const FilterControls& controls, const FilterControls& shown, FilterUse use,
                            platform::Services& services) {
    const bool named = use == FilterUse::NamedFilter;
    if (named && trimmed(controls.LblFilterName).empty())
        return refuse(services, "Filter name has not been entered", FilterFocus::LblFilterName);
    if (controls.conditions[0].CmbFldListCmp <= 0)
        return refuse(services, "The filter condition has not been completed", FilterFocus::CmbFldListCmp);
    if (named && controls.LblFilterName != shown.LblFilterName &&
        refusesText(services, "A filter's name", controls.LblFilterName, kMostInName))
        return {.focus = FilterFocus::LblFilterName};
    for (std::size_t n = 0; n < controls.conditions.size(); ++n) {
        const ConditionControls& condition = controls.conditions[n];
        const bool typed = isConditionUsed(controls, static_cast<int>(n)) && takesConstant(condition) &&
                           condition.TxtConst != shown.conditions[n].TxtConst;
        if (typed && refusesText(services, "A constant", condition.TxtConst, kMostInConstant))
            return {.focus = FilterFocus::TxtConst, .condition = static_cast<int>(n)};
    }
    return {.accepted = true};
}

FilterResult filterOk(model::Document& doc, platform::Services& services, int filterSlot,
                      const FilterControls& controls) {
    model::FilterDef& filter = doc.CurrDB20.Filters[static_cast<std::size_t>(filterSlot)];
    const FilterControls shown = CurrentDefinition(doc.CurrDB20, filter);
    const FilterResult valid = ValidateFilter(controls, shown, FilterUse::NamedFilter, services);
    if (!valid.accepted)
        return valid;
    if (controls.LblFilterName != filter.Name &&
        refusesFilterName(doc.CurrDB20, services, filterSlot, controls.LblFilterName))
        return {.focus = FilterFocus::LblFilterName};
    const model::FilterDef before = filter;
    filter.Name = controls.LblFilterName;
    storeConditions(doc.CurrDB20, controls, filter);
    doc.DocModified = doc.DocModified || filter != before;
    return valid;
}

FilterResult conditionOk(const DatabaseModel& db, platform::Services& services, const FilterControls& controls,
                         model::CondExprDef& condition) {
    const FilterControls shown = CurrentDefinition(db, condition);
    const FilterResult valid = ValidateFilter(controls, shown, FilterUse::ConditionalExpression, services);
    if (valid.accepted)
        storeConditions(db, controls, condition);
    return valid;
}

Leaving leaveFilter(const DatabaseModel& db, platform::Services& services, int filterSlot,
                    const FilterControls& controls) {
    const bool same = controls == CurrentDefinition(db, db.Filters[static_cast<std::size_t>(filterSlot)]);
    return same ? Leaving::Leave : asksToKeep(services, platform::texts::kKeepFilter);
}

bool clearFilter(model::Document& doc, platform::Services& services, int filterSlot, FilterControls& controls) {
    if (!clearCondition(services, controls))
        return false;
    model::FilterDef& filter = doc.CurrDB20.Filters[static_cast<std::size_t>(filterSlot)];
    if (filter != model::FilterDef{}) {
        filter = {};
        doc.DocModified = true;
    }
    return true;
}

bool clearCondition(platform::Services& services, FilterControls& controls) {
    if (!asksToClear(services))
        return false;
    controls = {};
    return true;
}

} // namespace tallybook::design
