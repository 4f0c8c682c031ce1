// The combos of views and filters.
#include "core/document/edit/CellEditing.h"
#include "core/document/grid/Cells.h"
#include "core/document/views/Views.h"
#include "core/pdb/Passwords.h"

#include <algorithm>

namespace tallybook::document {

namespace {

using platform::Services;

// The program's own changes of the combos are not choices.
class GuardCombos {
public:
    explicit GuardCombos(model::Document& doc) : m_doc(doc) { m_doc.ComboGuard = true; }
    ~GuardCombos() { m_doc.ComboGuard = false; }
    GuardCombos(const GuardCombos&) = delete;
    GuardCombos& operator=(const GuardCombos&) = delete;

private:
    model::Document& m_doc;
};

template <class Defs> std::vector<std::string> namesOf(const Defs& defs) {
    std::vector<std::string> names;
    for (std::size_t slot = 0; slot + 1 < defs.size(); ++slot) // the last slot is carried, not offered
        if (!defs[slot].Name.empty())
            names.push_back(defs[slot].Name);
    return names;
}

std::vector<std::string> viewNames(const model::DatabaseModel& db) {
    return namesOf(db.Views);
}

std::vector<std::string> filterNames(const model::DatabaseModel& db) {
    return namesOf(db.Filters);
}

// The slot with a name that some filter or view has.
template <class Defs> int slotNamed(const Defs& defs, const std::string& name) {
    const auto found = std::find_if(defs.begin(), defs.end(), [&](const auto& def) { return def.Name == name; });
    return static_cast<int>(found - defs.begin());
}

// The entry of a name behind the first one; the first one when there is no such name.
int entryOf(const std::vector<std::string>& names, std::string_view name) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? 0 : static_cast<int>(found - names.begin()) + 1;
}

bool mayDesign(model::Document& doc, Services& services) {
    return !refuseReadOnly(doc, services) && pdb::AuthorizeDB(doc, services, model::PasswordKind::View);
}

Choice editViews(model::Document& doc, Services& services) {
    if (!mayDesign(doc, services))
        return Choice::Done;
    if (doc.CurrDB20.NumFields < 2) {
        showCritical(services, "No fields defined, Define fields and then edit the view");
        return Choice::Done;
    }
    return Choice::EditViews;
}

void applyFilter(model::Document& doc, Services& services, int slot) {
    const GuardCombos guard(doc);
    doc.CurrentFilter = slot == kSeveralFilters ? model::kMultipleFilter : static_cast<std::uint8_t>(slot + 1);
    SetViewFilter(doc, services, doc.CurrentView, slot);
}

void refreshFields(model::Document& doc) {
    doc.CurrDB20.NumFields = static_cast<std::uint8_t>(std::max(model::highestField(doc.CurrDB20), 1));
    rememberWidths(doc);
}

// The filter in force, as long as it is there.
int keptFilter(const model::Document& doc) {
    if (doc.CurrentFilter == model::kMultipleFilter)
        return filterNames(doc.CurrDB20).empty() ? kNoFilter : kSeveralFilters;
    return chosenFilter(doc) == 0 ? kNoFilter : doc.CurrentFilter - 1;
}

Choice multipleFilter(const model::Document& doc, Services& services) {
    if (!filterNames(doc.CurrDB20).empty())
        return Choice::MultipleFilter;
    services.ui.message({.text = "You must first create a filter", .title = {}});
    return Choice::Done;
}

} // namespace

std::vector<std::string> viewEntries(const model::DatabaseModel& db) {
    std::vector<std::string> entries = viewNames(db);
    entries.insert(entries.begin(), "Show All Fields");
    entries.push_back("Edit Views...");
    return entries;
}

std::vector<std::string> filterEntries(const model::DatabaseModel& db) {
    std::vector<std::string> entries = filterNames(db);
    entries.insert(entries.begin(), "No Filter");
    entries.push_back("Multiple");
    entries.push_back("Edit Filters...");
    return entries;
}

int chosenView(const model::Document& doc) {
    return doc.ViewShown ? entryOf(viewNames(doc.CurrDB20), doc.CurrentView) : 0;
}

int chosenFilter(const model::Document& doc) {
    const std::vector<std::string> names = filterNames(doc.CurrDB20);
    if (doc.CurrentFilter == model::kMultipleFilter)
        return static_cast<int>(names.size()) + 1;
    if (doc.CurrentFilter == 0)
        return 0;
    return entryOf(names, doc.CurrDB20.Filters[doc.CurrentFilter - 1u].Name);
}

Choice chooseView(model::Document& doc, Services& services, int entry) {
    if (doc.ComboGuard)
        return Choice::Done;
    saveCell(doc, services);
    refreshFields(doc);
    const std::vector<std::string> names = viewNames(doc.CurrDB20);
    if (entry > static_cast<int>(names.size()))
        return editViews(doc, services);
    if (entry <= 0) {
        showAllFields(doc);
        return Choice::Done;
    }
    doc.CurrentView = names[static_cast<std::size_t>(entry) - 1];
    const auto slot = static_cast<std::size_t>(slotNamed(doc.CurrDB20.Views, doc.CurrentView));
    applyFilter(doc, services, GetDefaultFilter(doc.CurrDB20.Views[slot].FilterMask));
    return Choice::Done;
}

Choice chooseFilter(model::Document& doc, Services& services, int entry) {
    if (doc.ComboGuard)
        return Choice::Done;
    saveCell(doc, services);
    const std::vector<std::string> names = filterNames(doc.CurrDB20);
    const int multiple = static_cast<int>(names.size()) + 1;
    if (entry > multiple)
        return mayDesign(doc, services) ? Choice::EditFilters : Choice::Done;
    if (entry == multiple)
        return multipleFilter(doc, services);
    const bool none = entry <= 0;
    applyFilter(doc, services,
                none ? kNoFilter : slotNamed(doc.CurrDB20.Filters, names[static_cast<std::size_t>(entry) - 1]));
    return Choice::Done;
}

void acceptMultipleFilter(model::Document& doc, Services& services, const std::bitset<model::MaxFilters>& slots) {
    doc.MultiFilterSel = slots;
    constexpr unsigned kFilters = (1u << model::MaxFilters) - 1; // other bits are carried
    doc.CurrDB20.DefaultFilterMask = static_cast<std::uint16_t>((doc.CurrDB20.DefaultFilterMask & ~kFilters) |
                                                                static_cast<unsigned>(slots.to_ulong()));
    doc.DocModified = true;
    applyFilter(doc, services, kSeveralFilters);
}

void filtersEdited(model::Document& doc, Services& services) {
    applyFilter(doc, services, keptFilter(doc));
}

} // namespace tallybook::document
