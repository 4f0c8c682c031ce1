// The region's two fixed forms, short date and long time, taken apart once and then written and read by integer
// arithmetic. They are on the road of every date and time of a file.
#pragma once

#include "core/calc/values/Dates.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::calc {

// A short date as "M/d/yyyy". Years have four digits, so that what is written can be read.
class DatePattern {
public:
    explicit DatePattern(const Regional& regional);

    // The text of a real date; it lies in `scratch`.
    std::string_view text(const Date& date, std::string& scratch) const;
    void append(const Date& date, std::string& out) const;

    // The real date that text() writes as this very text.
    std::optional<Date> read(std::string_view text) const;

private:
    char* put(const Date& date, char* out) const;

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

    // The text of a time of day; it lies in `scratch`.
    std::string_view text(const TimeOfDay& time, std::string& scratch) const;
    void append(const TimeOfDay& time, std::string& out) const;

    // The time that text() writes as this very text.
    std::optional<TimeOfDay> read(std::string_view text) const;

private:
    std::size_t room() const;
    char* put(const TimeOfDay& time, char* out) const;

    bool m_twelveHours = false;
    bool m_padded = false;
    bool m_hasHalf = false; // AM or PM behind
    char m_separator = ':';
    std::array<std::string, 2> m_halves; // AM and PM
};

} // namespace tallybook::calc
