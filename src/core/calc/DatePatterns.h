// The region's two fixed forms, short date and long time, taken apart once and then written and read by integer
// arithmetic. They are on the road of every date and time of a file.
#pragma once

#include "core/calc/Dates.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::calc {

// A short date as "M/d/yyyy". Years have four digits, so that what is written can be read.
class DatePattern {
public:
    explicit DatePattern(const Regional& regional);

    void append(const Date& date, std::string& out) const;

    // The real date that append() writes as this very text.
    std::optional<Date> read(std::string_view text) const;

private:
    struct Part {
        char letter = 0; // d, M or y
        bool padded = false;
    };
    std::array<Part, 3> m_parts;
    std::array<char, 3> m_separators{}; // behind each part, the last one unused
};

// A long time as "h:mm:ss tt", "H:mm:ss" or "HH:mm:ss".
class TimePattern {
public:
    explicit TimePattern(const Regional& regional);

    void append(const TimeOfDay& time, std::string& out) const;

    // The time that append() writes as this very text.
    std::optional<TimeOfDay> read(std::string_view text) const;

private:
    bool m_twelveHours = false;
    bool m_padded = false;
    bool m_halves = false; // AM or PM behind
    char m_separator = ':';
    std::string m_am;
    std::string m_pm;
};

} // namespace tallybook::calc
