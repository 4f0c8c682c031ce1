// What a text that may be a date or a time is made of.
#pragma once

#include "core/platform/Regional.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tallybook::calc {

// Half is AM or PM.
enum class DateTokenKind { Number, Month, Half, DateSeparator, TimeSeparator, Comma, Blank };

struct DateToken {
    DateTokenKind kind;
    int value = 0;  // number; month 1..12; 0 for AM and 1 for PM
    int digits = 0; // of a number
};

// The tokens of a text, without blanks at its ends and beside separators; nothing when the text holds a word that
// is no month and no half of the day, a number of more than four digits, or any other sign.
std::optional<std::vector<DateToken>> dateTokens(std::string_view text, const platform::Regional& regional);

} // namespace tallybook::calc
