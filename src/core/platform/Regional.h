// The user's regional settings, read once at the start. The core never asks the system for them.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tallybook::platform {

enum class DateOrder : std::uint8_t { MDY, DMY, YMD };

// The default is US English, which files and tests take unless told otherwise.
struct Regional {
    std::string shortDate = "M/d/yyyy";  // letters d, dd, M, MM, yyyy once each and one kind of separator
    std::string longTime = "h:mm:ss tt"; // or "H:mm:ss" or "HH:mm:ss"
    DateOrder dateOrder = DateOrder::MDY;
    char dateSeparator = '/';
    char timeSeparator = ':';
    bool twelveHours = true; // the setting iTime: "0" is twelve hours
    char decimal = '.';
    char group = ',';
    std::string currency = "$";
    std::string am = "AM";
    std::string pm = "PM";
    std::array<std::string, 12> monthNames = {"January", "February", "March",     "April",   "May",      "June",
                                              "July",    "August",   "September", "October", "November", "December"};
    std::array<std::string, 12> monthAbbrevs = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    int twoDigitYearMax = 2029;

    bool operator==(const Regional&) const = default;
};

} // namespace tallybook::platform
