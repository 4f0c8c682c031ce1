#include "cli/Regions.h"

#include <array>

namespace tallybook::cli {

namespace {

using platform::DateOrder;
using platform::Regional;

Regional unitedStates() {
    return {};
}

Regional unitedKingdom() {
    Regional region;
    region.shortDate = "dd/MM/yyyy";
    region.longTime = "HH:mm:ss";
    region.dateOrder = DateOrder::DMY;
    region.twelveHours = false;
    region.currency = "\xA3";
    return region;
}

Regional germany() {
    Regional region;
    region.shortDate = "dd.MM.yyyy";
    region.longTime = "HH:mm:ss";
    region.dateOrder = DateOrder::DMY;
    region.dateSeparator = '.';
    region.twelveHours = false;
    region.decimal = ',';
    region.group = '.';
    region.currency = "\x80";
    region.monthNames = {"Januar", "Februar", "M\xE4rz",   "April",   "Mai",      "Juni",
                         "Juli",   "August",  "September", "Oktober", "November", "Dezember"};
    region.monthAbbrevs = {"Jan", "Feb", "M\xE4r", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"};
    return region;
}

Regional sweden() {
    Regional region;
    region.shortDate = "yyyy-MM-dd";
    region.longTime = "HH:mm:ss";
    region.dateOrder = DateOrder::YMD;
    region.dateSeparator = '-';
    region.twelveHours = false;
    region.decimal = ',';
    region.group = '.';
    region.currency = "kr";
    region.monthNames = {"januari", "februari", "mars",      "april",   "maj",      "juni",
                         "juli",    "augusti",  "september", "oktober", "november", "december"};
    region.monthAbbrevs = {"jan", "feb", "mar", "apr", "maj", "jun", "jul", "aug", "sep", "okt", "nov", "dec"};
    return region;
}

struct NamedRegion {
    std::string_view name;
    Regional (*make)();
};
constexpr std::array<NamedRegion, 4> kRegions = {{
    {"us", unitedStates},
    {"uk", unitedKingdom},
    {"de", germany},
    {"se", sweden},
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
    for (const NamedRegion& region : kRegions)
        names.push_back(region.name);
    return names;
}

} // namespace tallybook::cli
