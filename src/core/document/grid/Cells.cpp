#include "core/document/grid/Cells.h"

#include "core/calc/values/Dates.h"

#include <limits>

namespace tallybook::document {

using model::FieldType;

bool isShownRow(const model::Document& doc, int row) {
    return row >= model::kFirstDataRow && row < doc.grd.rows() && doc.grd.rowHeight(row) != 0;
}

std::optional<int> nextRow(const model::Document& doc, int row) {
    const int position = doc.grd.visiblePosition(row + 1);
    if (row + 1 >= doc.grd.rows() || position >= doc.grd.visibleRows())
        return std::nullopt;
    return doc.grd.visibleRow(position);
}

std::optional<int> previousRow(const model::Document& doc, int row) {
    const int position = doc.grd.visiblePosition(row) - 1;
    if (position < 0)
        return std::nullopt;
    return doc.grd.visibleRow(position);
}

std::string todayText(platform::Services& services) {
    const platform::LocalTime now = services.clock.now();
    return calc::shortDate({now.year, now.month, now.day}, services.regional);
}

std::string nowText(platform::Services& services) {
    const platform::LocalTime now = services.clock.now();
    return calc::longTime({now.hour, now.minute, now.second}, services.regional);
}

void stampRow(model::Document& doc, platform::Services& services, int row) {
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const model::FieldDef& field = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
        if (field.Default != "U")
            continue;
        if (field.Type == FieldType::Date)
            doc.grd.setText(row, model::columnOfSlot(slot), todayText(services));
        else if (field.Type == FieldType::Time)
            doc.grd.setText(row, model::columnOfSlot(slot), nowText(services));
    }
}

const WholeRange& rangeOf(FieldType type) {
    static constexpr WholeRange kInteger{std::numeric_limits<std::int16_t>::min(),
                                         std::numeric_limits<std::int16_t>::max(),
                                         "Integer value allowed -32768 to 32767"};
    static constexpr WholeRange kLong{std::numeric_limits<std::int32_t>::min(),
                                      std::numeric_limits<std::int32_t>::max(),
                                      "Long value allowed -2147483648 to 2147483647"};
    return type == FieldType::Integer ? kInteger : kLong;
}

Separators separatorsOf(const platform::Regional& regional) {
    return {regional.decimal, regional.decimal == ',' ? '.' : ','};
}

std::string withoutGroups(std::string_view text, const Separators& separators) {
    std::string result;
    for (const char c : text)
        if (c != separators.group)
            result += c;
    return result;
}

void showCritical(platform::Services& services, std::string_view text) {
    services.ui.message({.text = std::string(text), .icon = platform::Icon::Critical, .title = {}});
}

bool refuseReadOnly(const model::Document& doc, platform::Services& services) {
    if (doc.CurrDB20.ReadOnly == 0)
        return false;
    showCritical(services, "Tallybook is readonly.");
    return true;
}

void report(platform::Services& services, platform::Error error, std::string_view tag) {
    if (error.tag.empty())
        error.tag = tag;
    services.ui.showError(error);
}

} // namespace tallybook::document
