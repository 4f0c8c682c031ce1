#include "core/calc/values/DatePatterns.h"

#include "core/calc/values/Digits.h"

#include <algorithm>
#include <cstddef>

namespace tallybook::calc {

namespace {

// What a text takes without AM and PM, and one character that is written too many.
constexpr std::size_t kPatternRoom = 16;

char* putNumber(int value, bool padded, char* out) {
    const auto number = static_cast<std::uint32_t>(value);
    return padded ? putTwoDigits(number, out) : putOneOrTwoDigits(number, out);
}

char* putYear(int value, char* out) {
    const auto year = static_cast<std::uint32_t>(value);
    return putTwoDigits(year % 100, putTwoDigits(year / 100, out));
}

// Takes digits off the front of a text.
class DigitReader {
public:
    explicit DigitReader(std::string_view text) : m_text(text) {}

    std::optional<int> fixed(std::size_t digits) {
        if (m_text.size() < digits)
            return std::nullopt;
        int value = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            if (!isDigit(m_text[i]))
                return std::nullopt;
            value = value * 10 + (m_text[i] - '0');
        }
        m_text.remove_prefix(digits);
        return value;
    }

    // One or two digits, without a zero ahead unless padded.
    std::optional<int> number(bool padded) {
        if (padded)
            return fixed(2);
        const bool two = m_text.size() > 1 && isDigit(m_text[1]);
        if (two && m_text[0] == '0')
            return std::nullopt;
        return fixed(two ? 2 : 1);
    }

    bool skip(char c) {
        if (m_text.empty() || m_text[0] != c)
            return false;
        m_text.remove_prefix(1);
        return true;
    }

    std::string_view rest() const { return m_text; }

private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    std::string_view m_text;
};

} // namespace

DatePattern::DatePattern(const Regional& regional) {
    std::size_t part = 0;
    for (const char c : regional.shortDate) {
        const bool letter = c == 'd' || c == 'M' || c == 'y';
        if (!letter) {
            m_separators[part] = c;
            continue;
        }
        if (m_parts[part].letter == c) {
            m_parts[part].padded = true;
        } else {
            if (m_parts[part].letter != 0 && part + 1 < m_parts.size())
                ++part;
            m_parts[part] = {c, false};
        }
    }
}

char* DatePattern::put(const Date& date, char* out) const {
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        if (m_parts[i].letter == 'y')
            out = putYear(date.year, out);
        else
            out = putNumber(m_parts[i].letter == 'M' ? date.month : date.day, m_parts[i].padded, out);
        *out++ = m_separators[i];
    }
    return out - 1;
}

std::string_view DatePattern::text(const Date& date, std::string& scratch) const {
    const char* start = roomIn(scratch, kPatternRoom);
    return {start, static_cast<std::size_t>(put(date, scratch.data()) - start)};
}

void DatePattern::append(const Date& date, std::string& out) const {
    const std::size_t size = out.size();
    out.resize(size + kPatternRoom);
    out.resize(static_cast<std::size_t>(put(date, out.data() + size) - out.data()));
}

std::optional<Date> DatePattern::read(std::string_view text) const {
    DigitReader digits(text);
    Date date;
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        const char letter = m_parts[i].letter;
        const auto value = letter == 'y' ? digits.fixed(4) : digits.number(m_parts[i].padded);
        if (!value || (i + 1 < m_parts.size() && !digits.skip(m_separators[i])))
            return std::nullopt;
        (letter == 'y' ? date.year : letter == 'M' ? date.month : date.day) = *value;
    }
    return digits.rest().empty() && isRealDate(date) ? std::optional(date) : std::nullopt;
}

TimePattern::TimePattern(const Regional& regional)
    : m_twelveHours(regional.longTime.find('h') != std::string::npos),
      m_padded(regional.longTime.find("hh") != std::string::npos ||
               regional.longTime.find("HH") != std::string::npos),
      m_hasHalf(regional.longTime.find("tt") != std::string::npos),
      m_separator(regional.timeSeparator), m_halves{regional.am, regional.pm} {}

std::size_t TimePattern::room() const {
    return kPatternRoom + std::max(m_halves[0].size(), m_halves[1].size());
}

char* TimePattern::put(const TimeOfDay& time, char* out) const {
    out = putNumber(m_twelveHours ? (time.hour + 11) % 12 + 1 : time.hour, m_padded, out);
    *out++ = m_separator;
    out = putTwoDigits(static_cast<std::uint32_t>(time.minute), out);
    *out++ = m_separator;
    out = putTwoDigits(static_cast<std::uint32_t>(time.second), out);
    if (!m_hasHalf)
        return out;
    const std::string& half = m_halves[static_cast<std::size_t>(time.hour / 12)];
    *out++ = ' ';
    return std::copy(half.begin(), half.end(), out);
}

std::string_view TimePattern::text(const TimeOfDay& time, std::string& scratch) const {
    const char* start = roomIn(scratch, room());
    return {start, static_cast<std::size_t>(put(time, scratch.data()) - start)};
}

void TimePattern::append(const TimeOfDay& time, std::string& out) const {
    const std::size_t size = out.size();
    out.resize(size + room());
    out.resize(static_cast<std::size_t>(put(time, out.data() + size) - out.data()));
}

std::optional<TimeOfDay> TimePattern::read(std::string_view text) const {
    DigitReader digits(text);
    const auto hour = digits.number(m_padded);
    if (!hour || !digits.skip(m_separator))
        return std::nullopt;
    const auto minute = digits.fixed(2);
    if (!minute || !digits.skip(m_separator))
        return std::nullopt;
    const auto second = digits.fixed(2);
    if (!second || *minute > 59 || *second > 59)
        return std::nullopt;
    const bool hourFits = m_twelveHours ? *hour >= 1 && *hour <= 12 : *hour <= 23;
    if (!hourFits || (m_hasHalf ? !digits.skip(' ') : !digits.rest().empty()))
        return std::nullopt;
    TimeOfDay time{*hour, *minute, *second};
    if (!m_hasHalf)
        return m_twelveHours ? std::nullopt : std::optional(time); // half of the day unknown
    const bool before = digits.rest() == m_halves[0];
    if (!before && digits.rest() != m_halves[1])
        return std::nullopt;
    if (m_twelveHours)
        time.hour = time.hour % 12 + (before ? 0 : 12);
    return before == (time.hour < 12) ? std::optional(time) : std::nullopt;
}

} // namespace tallybook::calc
