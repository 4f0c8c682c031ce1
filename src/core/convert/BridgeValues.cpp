#include "core/convert/BridgeValues.h"

#include "core/calc/values/Digits.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tallybook::convert {

namespace {

using model::FieldType;

constexpr int kMostDigits = 18; // that fit into 64 bits in any case

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isFlag(std::int16_t value) {
    return value == 0 || value == 1;
}

bool equal(std::string_view a, std::string_view b) {
    return calc::equalText(a, b, calc::TextCase::Folded);
}

// The number at the front of a text, of 1 to `most` digits, which are taken off it.
std::optional<int> takeNumber(std::string_view& text, std::size_t most, std::size_t* digits = nullptr) {
    std::size_t count = 0;
    int value = 0;
    for (; count < text.size() && isDigit(text[count]) && count <= most; ++count)
        value = value * 10 + (text[count] - '0');
    if (count == 0 || count > most)
        return std::nullopt;
    text.remove_prefix(count);
    if (digits != nullptr)
        *digits = count;
    return value;
}

bool takeOneOf(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
}

// Digits ahead of the point with their group signs: the first group of one to three, all others of three.
struct WholePart {
    std::uint64_t value = 0;
    int digits = 0;
    bool hasGroups = false;
    bool isGood = true;
};

WholePart takeWholePart(std::string_view& text, char group) {
    WholePart part;
    int inGroup = 0;
    std::size_t place = 0;
    for (; place < text.size(); ++place) {
        const char c = text[place];
        if (isDigit(c)) {
            if (++part.digits > kMostDigits)
                part.isGood = false;
            else
                part.value = part.value * 10 + static_cast<std::uint64_t>(c - '0');
            ++inGroup;
        } else if (c == group && part.digits > 0) {
            part.isGood = part.isGood && (part.hasGroups ? inGroup == 3 : inGroup <= 3);
            part.hasGroups = true;
            inGroup = 0;
        } else {
            break;
        }
    }
    if (part.hasGroups && inGroup != 3)
        part.isGood = false;
    text.remove_prefix(place);
    return part;
}

struct TypeWord {
    FieldType type;
    std::string_view word;
};
constexpr std::array kTypeWords = {
    TypeWord{FieldType::Text, "text"},         TypeWord{FieldType::Integer, "integer"},
    TypeWord{FieldType::Long, "long"},         TypeWord{FieldType::Float, "float"},
    TypeWord{FieldType::List, "list"},         TypeWord{FieldType::Checkbox, "checkbox"},
    TypeWord{FieldType::Date, "date"},         TypeWord{FieldType::Time, "time"},
    TypeWord{FieldType::Memo, "memo"},         TypeWord{FieldType::Key, "key"},
    TypeWord{FieldType::RadioButton, "radio"}, TypeWord{FieldType::AutoIncremental, "auto"},
};

} // namespace

bool areValid(const BridgeFlags& flags) {
    return isFlag(flags.HasSeconds) && isFlag(flags.WithCategories) && isFlag(flags.ListsAsIndex) &&
           flags.Delimiter >= 0 && flags.Delimiter <= 2 && isFlag(flags.TimeFlag) && isFlag(flags.WithTypeRow) &&
           isFlag(flags.DateFlag) && isFlag(flags.WithNameRow) && isFlag(flags.DecimalFlag);
}

platform::Regional bridgeRegional(const platform::Regional& own, const BridgeFlags& flags) {
    platform::Regional regional = own;
    regional.decimal = flags.DecimalFlag == 1 ? ',' : '.';
    regional.group = flags.DecimalFlag == 1 ? '.' : ',';
    return regional;
}

double DecimalNumber::value() const {
    const double size = static_cast<double>(magnitude) / std::pow(10.0, places);
    return negative ? -size : size;
}

BridgeValues::BridgeValues(const platform::Regional& regional, const BridgeFlags& flags, int thisYear)
    : m_regional(regional), m_flags(flags), m_thisYear(thisYear) {}

std::optional<DecimalNumber> BridgeValues::number(std::string_view text) const {
    DecimalNumber number;
    text = trimmed(text);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        number.negative = text.front() == '-';
        number.isPlain = number.negative;
        text.remove_prefix(1);
    }
    const bool leadingZero = text.size() > 1 && text.front() == '0' && text[1] != m_regional.decimal;
    const WholePart whole = takeWholePart(text, m_regional.group);
    number.magnitude = whole.value;
    number.isPlain = number.isPlain && !whole.hasGroups && !leadingZero && whole.digits > 0;
    int digits = whole.digits;
    if (takeOneOf(text, std::string_view(&m_regional.decimal, 1))) {
        for (; !text.empty() && isDigit(text.front()) && digits < kMostDigits; text.remove_prefix(1), ++digits) {
            number.magnitude = number.magnitude * 10 + static_cast<std::uint64_t>(text.front() - '0');
            ++number.places;
        }
        number.isPlain = number.isPlain && number.places > 0;
    }
    if (!text.empty() || !whole.isGood || digits == 0)
        return std::nullopt;
    return number;
}

std::optional<double> BridgeValues::wideNumber(std::string_view text) const {
    if (text.find(m_regional.group) != std::string_view::npos)
        return std::nullopt; // groups have been looked at
    return calc::parseNumber(text, m_regional);
}

std::optional<calc::Date> BridgeValues::date(std::string_view text) const {
    text = trimmed(text);
    if (const auto date = numericDate(text))
        return date;
    const std::size_t blank = text.find_first_of(" T");
    if (blank != std::string_view::npos)
        if (const auto date = numericDate(text.substr(0, blank)); date && time(text.substr(blank + 1)))
            return date;
    return namedDate(text);
}

// Three numbers: the year ahead of month and day when it has more than two digits, otherwise behind them.
std::optional<calc::Date> BridgeValues::numericDate(std::string_view text) const {
    constexpr std::string_view kSeparators = "/-.";
    std::size_t firstDigits = 0;
    const auto first = takeNumber(text, 4, &firstDigits);
    if (!first || !takeOneOf(text, kSeparators))
        return std::nullopt;
    const auto second = takeNumber(text, 2);
    if (!second || !takeOneOf(text, kSeparators))
        return std::nullopt;
    std::size_t thirdDigits = 0;
    const auto third = takeNumber(text, 4, &thirdDigits);
    if (!third || !text.empty())
        return std::nullopt;
    calc::Date date;
    if (firstDigits > 2) {
        date = {*first, *second, *third};
    } else {
        const int century = m_regional.twoDigitYearMax / 100 * 100;
        const int fullYear =
            century + *third > m_regional.twoDigitYearMax ? century - 100 + *third : century + *third;
        const int year = thirdDigits > 2 ? *third : fullYear;
        date = m_flags.DateFlag == 1 ? calc::Date{year, *second, *first} : calc::Date{year, *first, *second};
    }
    return calc::isRealDate(date) ? std::optional(date) : std::nullopt;
}

// With a month's name there is no order to mistake. No name is shorter than three letters.
std::optional<calc::Date> BridgeValues::namedDate(std::string_view text) const {
    int letters = 0;
    int longest = 0;
    for (const char c : text) {
        const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<signed char>(c) < 0;
        letters = isLetter ? letters + 1 : 0;
        longest = std::max(longest, letters);
    }
    if (longest < 3)
        return std::nullopt;
    const auto serial = calc::readDate(text, m_regional, m_thisYear);
    if (!serial || (*serial >= 0 && *serial < 1))
        return std::nullopt;
    return calc::dateOf(*serial);
}

std::optional<calc::TimeOfDay> BridgeValues::time(std::string_view text) const {
    text = trimmed(text);
    const std::string_view whole = text;
    calc::TimeOfDay time;
    const auto hour = takeNumber(text, 2);
    const bool parted = hour && takeOneOf(text, ":");
    const auto minute = parted ? takeNumber(text, 2) : std::nullopt;
    if (minute) {
        time.hour = *hour;
        time.minute = *minute;
        bool good = true;
        if (takeOneOf(text, ":")) {
            const auto second = takeNumber(text, 2);
            good = second.has_value();
            time.second = second.value_or(0);
        }
        text = trimmed(text);
        const bool before = equal(text, "AM") || equal(text, m_regional.am);
        const bool after = equal(text, "PM") || equal(text, m_regional.pm);
        if (!text.empty() && (before || after) && time.hour >= 1 && time.hour <= 12)
            time.hour = time.hour % 12 + (after ? 12 : 0);
        else
            good = good && text.empty();
        if (good && time.hour < 24 && time.minute < 60 && time.second < 60)
            return time;
        if (good)
            return std::nullopt;
    }
    const std::size_t blank = whole.find(' ');
    if (blank == std::string_view::npos || !numericDate(whole.substr(0, blank)))
        return std::nullopt;
    return this->time(whole.substr(blank + 1));
}

std::optional<bool> BridgeValues::truth(std::string_view text) {
    text = trimmed(text);
    if (text == "1" || equal(text, "Y") || equal(text, "true"))
        return true;
    if (text == "0" || equal(text, "N") || equal(text, "false"))
        return false;
    return std::nullopt;
}

bool BridgeValues::isTruthWord(std::string_view text) {
    return truth(text) && !isDigit(trimmed(text).front());
}

void BridgeValues::appendDate(const calc::Date& date, std::string& out) const {
    char room[10];
    const bool dayFirst = m_flags.DateFlag == 1;
    char* end = calc::putTwoDigits(static_cast<std::uint32_t>(dayFirst ? date.day : date.month), room);
    *end++ = '/';
    end = calc::putTwoDigits(static_cast<std::uint32_t>(dayFirst ? date.month : date.day), end);
    *end++ = '/';
    end = calc::putTwoDigits(static_cast<std::uint32_t>(date.year / 100), end);
    end = calc::putTwoDigits(static_cast<std::uint32_t>(date.year % 100), end);
    out.append(room, end);
}

void BridgeValues::appendTime(const calc::TimeOfDay& time, std::string& out) const {
    char room[8];
    const bool twelve = m_flags.TimeFlag == 0;
    const int hour = twelve ? (time.hour + 11) % 12 + 1 : time.hour;
    char* end = calc::putTwoDigits(static_cast<std::uint32_t>(hour), room);
    *end++ = ':';
    end = calc::putTwoDigits(static_cast<std::uint32_t>(time.minute), end);
    if (m_flags.HasSeconds == 1) {
        *end++ = ':';
        end = calc::putTwoDigits(static_cast<std::uint32_t>(time.second), end);
    }
    out.append(room, end);
    if (twelve)
        out += time.hour < 12 ? " AM" : " PM";
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\xA0'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\xA0'))
        text.remove_suffix(1);
    return text;
}

std::string_view typeWord(FieldType type) {
    const auto found =
        std::find_if(kTypeWords.begin(), kTypeWords.end(), [&](const TypeWord& entry) { return entry.type == type; });
    return found == kTypeWords.end() ? std::string_view() : found->word;
}

std::optional<FieldType> typeOfWord(std::string_view word) {
    const auto found = std::find_if(kTypeWords.begin(), kTypeWords.end(),
                                    [&](const TypeWord& entry) { return equal(entry.word, trimmed(word)); });
    return found == kTypeWords.end() ? std::nullopt : std::optional(found->type);
}

} // namespace tallybook::convert
