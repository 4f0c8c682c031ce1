#include "core/pdb/Names.h"

#include "core/calc/values/Text.h"
#include "core/model/Limits.h"

#include <algorithm>

namespace tallybook::pdb {

namespace {

// Where a prefix first stands, without regard to case; npos when it does not.
std::size_t placeOf(std::string_view prefix, std::string_view name) {
    const std::size_t place = calc::findText(name, prefix, calc::TextCase::Folded);
    return place == 0 ? std::string_view::npos : place - 1;
}

void replaceFrom(std::string& text, std::size_t start, char from, char to) {
    std::replace(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), from, to);
}

} // namespace

std::string addUnderscore20(std::string_view path) {
    std::size_t start = placeOf(kPrefix1x, path);
    if (start == std::string_view::npos)
        start = placeOf(kPrefix2x, path);
    std::string result(path);
    replaceFrom(result, start == std::string_view::npos ? 0 : start, ' ', '_');
    return result;
}

std::string RemoveUnderscore(std::string_view name) {
    std::size_t start = placeOf(kPrefix2x, name);
    if (start == std::string_view::npos)
        start = placeOf(kPrefix1x, name);
    std::string result(name);
    if (start != std::string_view::npos)
        replaceFrom(result, start + kPrefix2x.size(), '_', ' ');
    return result;
}

bool has2xPrefix(std::string_view name) {
    return placeOf(kPrefix2x, name) != std::string_view::npos;
}

bool has1xPrefix(std::string_view name) {
    return placeOf(kPrefix1x, name) != std::string_view::npos;
}

std::string freeFieldName(int slot) {
    return (slot < 10 ? "Fld0" : "Fld") + std::to_string(slot);
}

std::string presentName(std::string_view name) {
    std::string present(name);
    const std::size_t place = placeOf(kPrefix1x, name);
    if (place != std::string_view::npos)
        present.replace(place, kPrefix1x.size(), kPrefix2x);
    return present;
}

std::string headerName(std::string_view dbName, std::string_view fileStem) {
    std::string name(dbName.empty() ? fileStem : dbName);
    if (!has2xPrefix(name))
        name.insert(0, kPrefix2x);
    name.resize(std::min<std::size_t>(name.size(), model::kNameLength));
    return name;
}

} // namespace tallybook::pdb
