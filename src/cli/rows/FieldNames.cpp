#include "cli/rows/FieldNames.h"

#include "cli/frame/IncomingText.h"
#include "cli/rows/GridRows.h"
#include "core/calc/values/Text.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace tallybook::cli {

namespace {

std::optional<int> slotNumber(std::string_view text) {
    int slot = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), slot);
    const bool whole = error == std::errc{} && end == text.data() + text.size();
    return whole && slot >= 0 && slot <= model::MaxUserFields ? std::optional(slot) : std::nullopt;
}

} // namespace

std::variant<int, std::string> columnNamed(const model::Document& doc, const std::string& name) {
    const std::optional<std::string> stored = storedText(name);
    if (!stored)
        return "no such field: " + name;
    const std::string& sought = *stored;
    int found = 0;
    int matches = 0;
    for (const int column : usedColumns(doc)) {
        const std::string header = doc.grd.text(0, column);
        if (header == sought)
            return column;
        if (!calc::equalText(header, sought, calc::TextCase::Folded))
            continue;
        found = column;
        ++matches;
    }
    if (matches == 0)
        return "no such field: " + name;
    if (matches > 1)
        return "more than one field has this name but for its case: " + name;
    return found;
}

std::variant<int, std::string> columnNamedOrNumbered(const model::Document& doc, const std::string& name) {
    if (!name.starts_with('@'))
        return columnNamed(doc, name);
    const std::optional<int> slot = slotNumber(std::string_view(name).substr(1));
    if (!slot)
        return "no such field: " + name;
    return model::columnOfSlot(*slot);
}

} // namespace tallybook::cli
