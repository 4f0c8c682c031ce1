#include "core/design/ListItems.h"

#include "core/calc/values/Conversion.h"
#include "core/design/Dialog.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tallybook::design {

namespace {

constexpr int kFirstForbiddenId = 255;

int lowestFreeId(const model::ListDef& list) {
    int id = 1;
    while (std::find(list.ItemIds.begin(), list.ItemIds.end(), id) != list.ItemIds.end())
        ++id;
    return id;
}

} // namespace

bool refusesFullList(const model::ListDef& list, platform::Services& services) {
    if (list.Count() < model::kUserListItems)
        return false;
    say(services, "List fields cannot have more than 60 items", {}, platform::Icon::Critical);
    return true;
}

bool addItem(model::ListDef& list, const std::string& text, platform::Services& services) {
    if (trimmed(text).empty() || refusesText(services, "An item", text, model::kTextLength))
        return false;
    const int id = lowestFreeId(list);
    if (id >= kFirstForbiddenId)
        return false;
    list.ItemIds.push_back(static_cast<std::uint8_t>(id));
    list.Items.push_back(text);
    return true;
}

void removeItem(model::ListDef& list, int position) {
    list.ItemIds.erase(list.ItemIds.begin() + position);
    list.Items.erase(list.Items.begin() + position);
}

void refreshItemTexts(model::Document& doc, int slot) {
    std::array<std::string_view, 256> texts;
    for (std::size_t id = 0; id < texts.size(); ++id)
        texts[id] = calc::getListText(doc.CurrDB20, slot, static_cast<int>(id));
    const int column = model::columnOfSlot(slot);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        const std::int32_t id = doc.CellLongs.get(record, slot);
        const bool known = id >= 0 && id < static_cast<std::int32_t>(texts.size());
        doc.grd.setText(record + model::kFirstDataRow, column,
                        known ? texts[static_cast<std::size_t>(id)] : std::string_view{});
    }
}

} // namespace tallybook::design
