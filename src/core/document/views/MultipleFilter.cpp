#include "core/document/views/MultipleFilter.h"

#include <algorithm>

namespace tallybook::document {

namespace {

// No view of an empty name is ever chosen.
const model::ViewDef* chosenViewOf(const model::Document& doc) {
    const auto& views = doc.CurrDB20.Views;
    const auto found = std::find_if(views.begin(), views.end(), [&doc](const model::ViewDef& view) {
        return !view.Name.empty() && view.Name == doc.CurrentView;
    });
    return found == views.end() ? nullptr : &*found;
}

using Slots = std::bitset<model::MaxFilters>;

Slots filtersInForce(const model::Document& doc) {
    if (doc.CurrentFilter == model::kMultipleFilter)
        return doc.MultiFilterSel;
    const model::ViewDef* view = chosenViewOf(doc);
    return Slots(view != nullptr ? view->FilterMask : doc.CurrDB20.DefaultFilterMask);
}

std::string lineText(int slot, const std::string& name) {
    const std::string number = std::to_string(slot + 1);
    return (number.size() < 2 ? "0" + number : number) + ". " + name;
}

} // namespace

std::vector<FilterLine> multipleFilterLines(const model::Document& doc) {
    const Slots inForce = filtersInForce(doc);
    std::vector<FilterLine> lines;
    for (std::size_t slot = 0; slot < model::MaxFilters; ++slot) {
        const std::string& name = doc.CurrDB20.Filters[slot].Name;
        if (!name.empty())
            lines.push_back({static_cast<int>(slot), lineText(static_cast<int>(slot), name), inForce[slot]});
    }
    return lines;
}

bool mayChooseFilters(const model::Document& doc, platform::Services& services) {
    if (!multipleFilterLines(doc).empty())
        return true;
    services.ui.message({.text = "No Filters Available.",
                         .icon = platform::Icon::Information,
                         .title = "Cannot edit/apply multiple filter"});
    return false;
}

} // namespace tallybook::document
