#include "core/design/AutoWriter.h"

#include "core/calc/values/Text.h"

#include <array>

namespace tallybook::design {

namespace {

using model::FieldType;

bool isNumber(FieldType type) {
    return type == FieldType::Integer || type == FieldType::Long || type == FieldType::Float;
}

const model::FieldDef& fieldOf(const model::DatabaseModel& db, int slot) {
    return db.Fields[static_cast<std::size_t>(slot)];
}

} // namespace

std::string_view autoWriterSeparator(std::uint8_t AutoWriter) {
    static constexpr std::array<std::string_view, 7> kSigns = {"", ",", " ", ";", "/", "\\", "-"};
    return AutoWriter < kSigns.size() ? kSigns[AutoWriter] : std::string_view{};
}

const std::vector<std::string>& autoWriterItems(const model::DatabaseModel& db, int slot) {
    return db.Lists.at(slot).Items;
}

std::string autoWriterOk(const model::DatabaseModel& db, int slot, std::span<const int> selected, OptAction action,
                         std::string_view text) {
    if (selected.empty())
        return std::string(text);
    const std::vector<std::string>& items = autoWriterItems(db, slot);
    const auto item = [&](int position) -> const std::string& {
        return items.at(static_cast<std::size_t>(position));
    };
    if (isNumber(fieldOf(db, slot).Type))
        return item(selected.back());
    const std::string_view separator = autoWriterSeparator(fieldOf(db, slot).AutoWriter);
    std::string joined;
    for (const int position : selected)
        joined.append(separator).append(item(position));
    // The leading separator stands between what was there and the new.
    if (action == OptAction::Append && !text.empty())
        return std::string(text) + joined;
    return joined.substr(separator.size());
}

MemoScreen memoScreen(const model::DatabaseModel& db, int slot) {
    const model::FieldDef& field = fieldOf(db, slot);
    return {isNumber(field.Type), field.AutoWriter != 0};
}

std::string textForMemo(std::string_view text) {
    return calc::LfToCrLf(text);
}

std::string textFromMemo(std::string_view shown) {
    return calc::CrLfToLf(shown);
}

} // namespace tallybook::design
