#include "core/convert/ConversionSpec.h"

#include "core/platform/Ansi.h"

#include <algorithm>

namespace tallybook::convert {

int lastRow(const ConversionSpec& spec) {
    return std::min<int>(spec.LastEntry, kSpecRows - 1);
}

int slotOfRow(const ConversionSpecEntry& row) {
    return row.SlotPlusOne >= 1 && row.SlotPlusOne <= model::MaxFieldSlots ? row.SlotPlusOne - 1 : -1;
}

char delimiterOf(const ConversionSpec& spec) {
    if (spec.SourceKind == "C")
        return ',';
    return spec.SourceKind == "S" ? ';' : '\t';
}

std::filesystem::path storedPath(std::string_view path, const std::filesystem::path& folder) {
    std::string text = platform::ansi::toUtf8(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    const std::filesystem::path made(text);
    return made.is_absolute() ? made : folder / made;
}

std::string GetStrVal(std::string_view source, std::string_view key) {
    const std::size_t found = source.find(key);
    if (found == std::string_view::npos)
        return {};
    const std::string_view value = source.substr(found + key.size());
    return std::string(value.substr(0, value.find(';')));
}

} // namespace tallybook::convert
