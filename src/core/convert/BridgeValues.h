// Values of the outside's texts, by the conventions that a call of the bridge names. Reading is strict, as a guess
// would put a wrong value into somebody's records: a date in the other order or a number with misplaced groups is
// none.
#pragma once

#include "core/calc/values/Dates.h"
#include "core/model/FieldType.h"
#include "core/platform/Regional.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::convert {

// The arguments that both functions of the bridge share, as they come.
struct BridgeFlags {
    std::int16_t HasSeconds = 0;
    std::int16_t WithCategories = 0;
    std::int16_t ListsAsIndex = 0;
    std::int16_t Delimiter = 0; // 0 comma, 1 semicolon, 2 tab
    std::int16_t TimeFlag = 0;  // 0 AM/PM, 1 24 hours
    std::int16_t WithTypeRow = 0;
    std::int16_t DateFlag = 0; // 0 month first, 1 day first
    std::int16_t WithNameRow = 0;
    std::int16_t DecimalFlag = 0; // 0 point, 1 comma
};

// True when each is a value that there is.
bool areValid(const BridgeFlags& flags);

// The user's region with the decimal sign of a call.
platform::Regional bridgeRegional(const platform::Regional& own, const BridgeFlags& flags);

inline char delimiterOf(const BridgeFlags& flags) {
    return flags.Delimiter == 0 ? ',' : flags.Delimiter == 1 ? ';' : '\t';
}

// A decimal number of at most 18 digits: magnitude * 10^-places.
struct DecimalNumber {
    bool negative = false;
    std::uint64_t magnitude = 0;
    int places = 0;      // digits behind the point, as written
    bool isPlain = true; // nothing but a minus, digits, a point: no groups, no zeros ahead of other digits
    double value() const;
};

class BridgeValues {
public:
    BridgeValues(const platform::Regional& regional, const BridgeFlags& flags, int thisYear);

    // A number; groups of digits count where the region puts them. Nothing for what is no number, or has more digits
    // than 18 or an exponent: see wideNumber.
    std::optional<DecimalNumber> number(std::string_view text) const;
    // What numeric text there is beside: exponents, currency signs, brackets.
    std::optional<double> wideNumber(std::string_view text) const;

    // A date in the call's order, or with the year first, or with the month's name; a time of day behind it is passed
    // over.
    std::optional<calc::Date> date(std::string_view text) const;
    std::optional<calc::TimeOfDay> time(std::string_view text) const;

    // "1" and "0", "Y" and "N", "true" and "false", in letters of either case.
    static std::optional<bool> truth(std::string_view text);
    static bool isTruthWord(std::string_view text); // one of these that is no digit

    // Appends "03/05/2003" or "05/03/2003", and "01:05:09 PM" or "13:05:09", without seconds when so set.
    void appendDate(const calc::Date& date, std::string& out) const;
    void appendTime(const calc::TimeOfDay& time, std::string& out) const;

    const platform::Regional& regional() const { return m_regional; }

private:
    std::optional<calc::Date> numericDate(std::string_view text) const;
    std::optional<calc::Date> namedDate(std::string_view text) const;

    const platform::Regional& m_regional;
    BridgeFlags m_flags;
    int m_thisYear;
};

// The text without blanks at its ends.
std::string_view trimmed(std::string_view text);

// The word of a type in a line of types; empty for a type that has none. And the type of a word, letters of either
// case.
std::string_view typeWord(model::FieldType type);
std::optional<model::FieldType> typeOfWord(std::string_view word);

} // namespace tallybook::convert
