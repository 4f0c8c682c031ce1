#include "cli/rows/ViewOptions.h"

#include "cli/frame/Texts.h"
#include "cli/rows/FieldNames.h"
#include "core/document/views/Views.h"

#include <algorithm>
#include <bitset>

namespace tallybook::cli {

namespace {

// The place of a name among the entries of a list, of which the last `commands` are none. A view may have the name of
// the first entry, and is meant then.
std::optional<int> entryNamed(std::vector<std::string> entries, std::size_t commands, const std::string& name,
                              std::string_view what, std::string& why) {
    entries.resize(entries.size() - commands);
    std::rotate(entries.begin(), entries.begin() + 1, entries.end());
    const std::optional<std::size_t> place = placeNamed(entries, name, what, why);
    if (!place)
        return std::nullopt;
    return static_cast<int>((*place + 1) % entries.size());
}

// The first slot of a filter that is there.
std::size_t slotOfFilter(const model::DatabaseModel& db, const std::string& name) {
    const auto found =
        std::find_if(db.Filters.begin(), db.Filters.end(), [&](const auto& filter) { return filter.Name == name; });
    return static_cast<std::size_t>(found - db.Filters.begin());
}

} // namespace

std::optional<std::string> applyViewNamed(model::Document& doc, platform::Services& services,
                                          const std::string& name) {
    std::string why;
    const auto entry = entryNamed(document::viewEntries(doc.CurrDB20), 1, name, "view", why); // "Edit Views..."
    if (!entry)
        return why;
    document::chooseView(doc, services, *entry);
    return std::nullopt;
}

std::optional<std::string> applyFiltersNamed(model::Document& doc, platform::Services& services,
                                             const std::vector<std::string>& names) {
    std::bitset<model::MaxFilters> slots;
    std::optional<int> entry;
    std::string why;
    for (const std::string& name : names) {
        const std::vector<std::string> entries = document::filterEntries(doc.CurrDB20);
        entry = entryNamed(entries, 2, name, "filter", why); // "Multiple" and "Edit Filters..."
        if (!entry)
            return why;
        if (*entry == 0 && names.size() > 1)
            return noFilterAmongOthers(name);
        if (*entry > 0)
            slots.set(slotOfFilter(doc.CurrDB20, entries[static_cast<std::size_t>(*entry)]));
    }
    if (names.size() == 1)
        document::chooseFilter(doc, services, *entry);
    else
        document::acceptMultipleFilter(doc, services, slots);
    return std::nullopt;
}

std::optional<std::string> applyView(model::Document& doc, platform::Services& services, const std::string& view,
                                     const std::vector<std::string>& filters) {
    if (!view.empty())
        if (auto reason = applyViewNamed(doc, services, view))
            return reason;
    return filters.empty() ? std::nullopt : applyFiltersNamed(doc, services, filters);
}

} // namespace tallybook::cli
