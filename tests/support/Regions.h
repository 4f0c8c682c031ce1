// Regional settings that tests name. US English is Regional's default.
#pragma once

#include "core/platform/Regional.h"

namespace tallybook::test {

inline platform::Regional us() {
    return {};
}

inline platform::Regional uk() {
    platform::Regional region;
    region.shortDate = "dd/MM/yyyy";
    region.longTime = "HH:mm:ss";
    region.dateOrder = platform::DateOrder::DMY;
    region.twelveHours = false;
    region.currency = "\xA3";
    return region;
}

inline platform::Regional german() {
    platform::Regional region;
    region.shortDate = "dd.MM.yyyy";
    region.longTime = "HH:mm:ss";
    region.dateOrder = platform::DateOrder::DMY;
    region.dateSeparator = '.';
    region.twelveHours = false;
    region.decimal = ',';
    region.group = '.';
    region.currency = "\x80";
    return region;
}

inline platform::Regional swedish() {
    platform::Regional region;
    region.shortDate = "yyyy-MM-dd";
    region.longTime = "HH:mm:ss";
    region.dateOrder = platform::DateOrder::YMD;
    region.dateSeparator = '-';
    region.twelveHours = false;
    region.decimal = ',';
    region.group = '.';
    region.currency = "kr";
    return region;
}

} // namespace tallybook::test
