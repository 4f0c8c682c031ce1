#include "core/calc/values/Conversion.h"

#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/platform/Guards.h"

#include <cstddef>
#include <string>

namespace tallybook::calc {

namespace {

using model::Document;
using model::FieldType;
using model::ListDef;
using platform::Regional;

// Shorter than what such fields may hold elsewhere, on purpose: the handheld's own conversion cuts there too.
constexpr std::size_t kConvertedText = 250;
constexpr std::size_t kConvertedListText = 200;

const std::string kConverting = "Converting data...";

// What a text is brought to its form by.
struct Rules {
    const Regional& regional;
    int thisYear;
};
using Formatter = std::string (*)(std::string_view value, const Rules& rules);

std::string toNothing(std::string_view, const Rules&) {
    return {};
}

std::string toText(std::string_view value, const Rules&) {
    return std::string(value.substr(0, kConvertedText));
}

std::string toListText(std::string_view value, const Rules&) {
    return std::string(value.substr(0, kConvertedListText));
}

std::string toMemo(std::string_view value, const Rules&) {
    return std::string(value);
}

std::string toIntegerText(std::string_view value, const Rules& rules) {
    return std::to_string(toInt16(value, rules.regional).value_or(0));
}

std::string toLongText(std::string_view value, const Rules& rules) {
    return std::to_string(toInt32(value, rules.regional).value_or(0));
}

std::string toFloatText(std::string_view value, const Rules& rules) {
    return decimalText(toSingle(value, rules.regional).value_or(0.0f), rules.regional);
}

std::string toCheckText(std::string_view value, const Rules& rules) {
    const auto truth = toBoolean(value, rules.regional);
    return !truth ? "0" : *truth ? "True" : "False";
}

std::string toDateText(std::string_view value, const Rules& rules) {
    const auto serial = toDate(value, rules.regional, rules.thisYear);
    return serial ? shortDate(dateOf(*serial), rules.regional) : std::string();
}

std::string toTimeText(std::string_view value, const Rules& rules) {
    const auto serial = toDate(value, rules.regional, rules.thisYear);
    return serial ? longTime(timeOf(*serial), rules.regional) : "0";
}

Formatter formatterOf(FieldType type) {
    switch (type) {
    case FieldType::Text:
        return toText;
    case FieldType::Integer:
        return toIntegerText;
    case FieldType::Long:
    case FieldType::DBJoin:
        return toLongText;
    case FieldType::Float:
        return toFloatText;
    case FieldType::List:
        return toListText;
    case FieldType::Checkbox:
        return toCheckText;
    case FieldType::Date:
        return toDateText;
    case FieldType::Time:
        return toTimeText;
    case FieldType::Memo:
        return toMemo;
    default:
        return toNothing;
    }
}

// The column that is being rewritten.
struct Column {
    Document& doc;
    int slot;

    std::string_view text(int record, std::string& scratch) const {
        return doc.grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot), scratch);
    }
    // A cell that is left empty has nothing beside it either: no item, no place of an image.
    void setText(int record, std::string_view text) const {
        doc.grd.setText(record + model::kFirstDataRow, model::columnOfSlot(slot), text);
        if (text.empty())
            doc.CellLongs.set(record, slot, 0);
    }
    void setPicture(int record, model::Picture picture) const {
        doc.grd.setPicture(record + model::kFirstDataRow, model::columnOfSlot(slot), picture);
    }
};

// Calls `convert` with every record, the bar following when there is more than one.
template <class Convert> void eachRecord(const Document& doc, platform::Screen& screen, Convert convert) {
    const int records = doc.NumDataRecs;
    const bool shown = records > 1;
    if (shown)
        screen.progress(kConverting, records, records);
    for (int record = 0; record < records; ++record) {
        convert(record);
        if (shown)
            screen.progress(kConverting, record + 1, records);
    }
    screen.progress({}, 0, 0);
}

void clearColours(Document& doc, int slot) {
    doc.grd.colours(model::columnOfSlot(slot)).clear();
    doc.grd.touch();
}

void clearPictures(Document& doc, int slot) {
    doc.grd.pictures(model::columnOfSlot(slot)).clear();
    doc.grd.touch();
}

} // namespace

std::string checkFormat(FieldType type, std::string_view value, const Regional& regional, int thisYear) {
    return formatterOf(type)(value, {regional, thisYear});
}

int getListInd(const model::Tallybook& doc, int slot, int record) {
    const int id = doc.CellLongs.get(record, slot);
    const ListDef& list = doc.CurrDB20.Lists.at(slot);
    if (id < 1)
        return -1;
    for (int position = 0; position < list.Count(); ++position)
        if (list.ItemIds[static_cast<std::size_t>(position)] == id)
            return position;
    return -1;
}

std::string_view getListText(const model::DatabaseModel& db, int slot, int id) {
    if (id == 0)
        return slot == 0 ? kUnfiled : std::string_view{};
    const ListDef& list = db.Lists.at(slot);
    for (std::size_t position = 0; position < list.Items.size(); ++position)
        if (list.ItemIds[position] == id)
            return list.Items[position];
    return {};
}

void convertType(Document& doc, platform::Services& services, int slot, FieldType oldType, FieldType newType,
                 int decimalsChoice) {
    const platform::Freeze freeze(services.screen, doc);
    const platform::HourGlass hourGlass(services.screen);
    const Column column{doc, slot};
    const Rules rules{services.regional, services.clock.now().year};
    std::string scratch;

    if (oldType == FieldType::Checkbox)
        clearPictures(doc, slot);
    if (oldType == FieldType::ConditionalExpression || oldType == FieldType::AdvExpression)
        clearColours(doc, slot);

    switch (newType) {
    case FieldType::List:
        eachRecord(doc, services.screen, [&](int record) { column.setText(record, {}); });
        break;
    case FieldType::Checkbox:
        eachRecord(doc, services.screen, [&](int record) {
            const bool checked = toBoolean(column.text(record, scratch), rules.regional).value_or(false);
            column.setText(record, {});
            column.setPicture(record, checked ? model::Picture::CheckOn : model::Picture::CheckOff);
        });
        break;
    case FieldType::Key:
        eachRecord(doc, services.screen,
                   [&](int record) { column.setText(record, std::to_string(doc.RecKeys[record])); });
        break;
    default: {
        const Formatter format = formatterOf(newType);
        const bool digits = newType == FieldType::Float && decimalsChoice >= 1 && decimalsChoice <= 3;
        eachRecord(doc, services.screen, [&](int record) {
            const std::string text = format(column.text(record, scratch), rules);
            column.setText(record, digits ? formatDecimals(text, decimalsChoice, rules.regional) : text);
        });
    }
    }
}

} // namespace tallybook::calc
