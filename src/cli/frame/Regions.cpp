#include "cli/frame/Regions.h"

#include <array>

namespace tallybook::cli {

namespace {

using platform::DateOrder;
using platform::Regional;

Regional unitedStates() {
    return {};
}

Regional unitedKingdom() {
    return {.shortDate = "dd/MM/yyyy",
            .longTime = "HH:mm:ss",
            .dateOrder = DateOrder::DMY,
            .twelveHours = false,
            .currency = "\xA3"};
}

Regional germany() {
    return {.shortDate = "dd.MM.yyyy",
            .longTime = "HH:mm:ss",
            .dateOrder = DateOrder::DMY,
            .dateSeparator = '.',
            .twelveHours = false,
            .decimal = ',',
            .group = '.',
            .currency = "\x80",
            .monthNames = {"Januar", "Februar", "M\xE4rz", "April", "Mai", "Juni", "Juli", "August", "September",
                           "Oktober", "November", "Dezember"},
            .monthAbbrevs = {"Jan", "Feb", "M\xE4r", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"}};
}

Regional sweden() {
    return {.shortDate = "yyyy-MM-dd",
            .longTime = "HH:mm:ss",
            .dateOrder = DateOrder::YMD,
            .dateSeparator = '-',
            .twelveHours = false,
            .decimal = ',',
            .group = '.',
            .currency = "kr",
            .monthNames = {"januari", "februari", "mars", "april", "maj", "juni", "juli", "augusti", "september",
                           "oktober", "november", "december"},
            .monthAbbrevs = {"jan", "feb", "mar", "apr", "maj", "jun", "jul", "aug", "sep", "okt", "nov", "dec"}};
}

// Dates, times and numbers as other programs take them, whatever the country.
Regional international() {
    return {.shortDate = "yyyy-MM-dd",
            .longTime = "HH:mm:ss",
            .dateOrder = DateOrder::YMD,
            .dateSeparator = '-',
            .twelveHours = false,
            .currency = ""};
}

struct NamedRegion {
    std::string_view name;
    Regional (*make)();
};
constexpr std::array<NamedRegion, 5> kRegions = {{
    {"us", unitedStates},
    {"uk", unitedKingdom},
    {"de", germany},
    {"se", sweden},
    {"iso", international},
}};

} // namespace

std::optional<Regional> regionNamed(std::string_view name) {
    for (const NamedRegion& region : kRegions)
        if (region.name == name)
            return region.make();
    return std::nullopt;
}

std::vector<std::string_view> regionNames() {
    std::vector<std::string_view> names;
    names.reserve(kRegions.size());
    for (const NamedRegion& region : kRegions)
        names.push_back(region.name);
    return names;
}

} // namespace tallybook::cli
