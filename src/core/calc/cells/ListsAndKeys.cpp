// A column's texts collected into a list, and a column's numbers made the records' keys.
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Numbers.h"
#include "core/platform/Guards.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tallybook::calc {

namespace {

using model::Document;
using model::FieldType;
using model::ListDef;

const std::string kCreating = "Creating list...";
constexpr int kIdOfTooMany = 60; // ids run from 1, so that a list made here has 59 items at most

void moveToColumn(Document& doc, int slot) {
    doc.grd.setCell(doc.grd.row(), model::columnOfSlot(slot));
}

std::string_view cellText(const Document& doc, int record, int slot, std::string& scratch) {
    return doc.grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot), scratch);
}

// The id of a text in a list, the text appended when it is new; nothing when there are too many.
std::optional<int> itemId(ListDef& list, std::string_view text) {
    const auto found = std::find(list.Items.begin(), list.Items.end(), text);
    if (found != list.Items.end())
        return list.ItemIds[static_cast<std::size_t>(found - list.Items.begin())];
    const int id = list.Count() + 1;
    if (id == kIdOfTooMany)
        return std::nullopt;
    list.ItemIds.push_back(static_cast<std::uint8_t>(id));
    list.Items.emplace_back(text);
    return id;
}

// A column's texts as a list, and the id that each record has in it.
struct Collected {
    ListDef list;
    std::vector<std::uint8_t> ids; // by record; 0 for no item
};

// Nothing at the first text too many.
std::optional<Collected> collectItems(const Document& doc, platform::Screen& screen, int slot) {
    Collected found;
    found.ids.reserve(static_cast<std::size_t>(doc.NumDataRecs));
    std::string scratch;
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        const std::string_view text = cellText(doc, record, slot, scratch);
        const bool none = text.empty() || (slot == 0 && text == kUnfiled);
        const auto id = none ? std::optional(0) : itemId(found.list, text);
        if (!id)
            return std::nullopt;
        found.ids.push_back(static_cast<std::uint8_t>(*id));
        screen.progress(kCreating, record + 1, doc.NumDataRecs);
    }
    return found;
}

// The numbers of a column, rounded to whole ones; nothing when a cell is not numeric.
std::optional<std::vector<double>> numbersOfColumn(const Document& doc, int slot,
                                                   const platform::Regional& regional) {
    std::vector<double> numbers;
    numbers.reserve(static_cast<std::size_t>(doc.NumDataRecs));
    std::string scratch;
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        const auto number = parseNumber(cellText(doc, record, slot, scratch), regional);
        if (!number)
            return std::nullopt;
        numbers.push_back(std::nearbyint(*number));
    }
    return numbers;
}

bool isKey(double number) {
    return number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::int32_t>::max();
}

void setKeys(Document& doc, const std::vector<double>& numbers) {
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        const auto key = static_cast<std::int32_t>(numbers[static_cast<std::size_t>(record)]);
        doc.RecKeys.set(record, key);
        doc.CurrDB20.LastKey = std::max(doc.CurrDB20.LastKey, key);
    }
}

void showKeys(Document& doc) {
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        if (doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type != FieldType::Key)
            continue;
        for (int record = 0; record < doc.NumDataRecs; ++record)
            doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(slot),
                            std::to_string(doc.RecKeys[record]));
    }
}

bool takeKeys(Document& doc, platform::Services& services, int slot) {
    const auto numbers = numbersOfColumn(doc, slot, services.regional);
    if (!numbers) {
        services.ui.message({.text = "Column must have numeric fields greater than zero.  Conversion not performed.",
                             .icon = platform::Icon::Critical});
        return false;
    }
    const auto tooLarge = std::find_if_not(numbers->begin(), numbers->end(), isKey);
    if (tooLarge != numbers->end()) {
        services.ui.showError({.kind = platform::ErrorKind::Internal,
                               .tag = "CreateKeys",
                               .text = std::string(platform::texts::kKeyOutOfRange),
                               .record = static_cast<int>(tooLarge - numbers->begin())});
        return false;
    }
    setKeys(doc, *numbers);
    showKeys(doc);
    return true;
}

} // namespace

bool createList(Document& doc, platform::Services& services, int slot) {
    platform::Screen& screen = services.screen;
    const platform::Freeze freeze(screen, doc);
    const platform::HourGlass hourGlass(screen);
    screen.progress(kCreating, 0, doc.NumDataRecs);
    moveToColumn(doc, slot);
    auto found = collectItems(doc, screen, slot);
    if (found) {
        doc.CurrDB20.Lists[slot] = std::move(found->list);
        for (int record = 0; record < doc.NumDataRecs; ++record)
            doc.CellLongs.set(record, slot, found->ids[static_cast<std::size_t>(record)]);
    }
    screen.progress({}, 0, 0);
    return found.has_value();
}

bool CreateKeys(Document& doc, platform::Services& services, int slot, KeepPosition keep) {
    const platform::Freeze freeze(services.screen, doc);
    const platform::HourGlass hourGlass(services.screen);
    const model::GridPlace before = doc.grd.place();
    moveToColumn(doc, slot);
    const bool done = takeKeys(doc, services, slot);
    if (keep == KeepPosition::No)
        doc.grd.setCell(before.Row, before.Col);
    return done;
}

} // namespace tallybook::calc
