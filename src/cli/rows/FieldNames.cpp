#include "cli/rows/FieldNames.h"

#include "cli/frame/IncomingText.h"
#include "cli/frame/Texts.h"
#include "cli/rows/GridRows.h"
#include "core/calc/values/Ansi.h"
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

std::optional<std::size_t> placeNamed(const std::vector<std::string>& names, const std::string& name,
                                      std::string_view what, std::string& why) {
    const std::optional<std::string> sought = storedText(name);
    std::vector<std::size_t> like;
    for (std::size_t i = 0; sought && i < names.size(); ++i) {
        if (names[i] == *sought)
            return i;
        if (calc::equalText(names[i], *sought, calc::TextCase::Folded))
            like.push_back(i);
    }
    if (like.size() == 1)
        return like.front();
    std::vector<std::string> shown;
    for (const std::string& one : names)
        if (!one.empty())
            shown.push_back(calc::ansi::toUtf8(one));
    why = like.empty() ? noSuchName(what, name, shown) : ambiguousName(what, name);
    return std::nullopt;
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
