#include "cli/rows/ViewOptions.h"

#include "cli/frame/IncomingText.h"
#include "cli/frame/Texts.h"
#include "core/document/views/Views.h"

#include <algorithm>
#include <bitset>

namespace tallybook::cli {

namespace {

// The place of a UTF-8 name among entries of which the last `commands` are none; nothing when it is not there. A view
// may have the name of the first entry, and is meant then.
std::optional<int> entryNamed(std::vector<std::string> entries, std::size_t commands, const std::string& utf8) {
    const std::optional<std::string> name = storedText(utf8);
    if (!name)
        return std::nullopt;
    entries.resize(entries.size() - commands);
    const auto found = std::find(entries.begin() + 1, entries.end(), *name);
    if (found != entries.end())
        return static_cast<int>(found - entries.begin());
    return entries[0] == *name ? std::optional(0) : std::nullopt;
}

std::optional<int> filterEntry(const model::Document& doc, const std::string& name) {
    return entryNamed(document::filterEntries(doc.CurrDB20), 2, name); // "Multiple" and "Edit Filters..."
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
    const auto entry = entryNamed(document::viewEntries(doc.CurrDB20), 1, name); // "Edit Views..."
    if (!entry)
        return noSuchView(name);
    document::chooseView(doc, services, *entry);
    return std::nullopt;
}

std::optional<std::string> applyFiltersNamed(model::Document& doc, platform::Services& services,
                                             const std::vector<std::string>& names) {
    std::bitset<model::MaxFilters> slots;
    std::optional<int> entry;
    for (const std::string& name : names) {
        entry = filterEntry(doc, name);
        if (!entry || (*entry == 0 && names.size() > 1))
            return noSuchFilter(name);
        if (*entry > 0)
            slots.set(slotOfFilter(doc.CurrDB20, checkedText(name)));
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
