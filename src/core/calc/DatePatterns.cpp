#include "core/calc/DatePatterns.h"

#include <cstddef>

namespace tallybook::calc {

namespace {

char* putTwoDigits(int value, char* out) {
    out[0] = static_cast<char>('0' + value / 10);
    out[1] = static_cast<char>('0' + value % 10);
    return out + 2;
}

char* putNumber(int value, bool padded, char* out) {
    if (padded || value > 9)
        return putTwoDigits(value, out);
    *out = static_cast<char>('0' + value);
    return out + 1;
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

void DatePattern::append(const Date& date, std::string& out) const {
    char text[16];
    char* end = text;
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        if (m_parts[i].letter == 'y')
            end = putTwoDigits(date.year % 100, putTwoDigits(date.year / 100, end));
        else
            end = putNumber(m_parts[i].letter == 'M' ? date.month : date.day, m_parts[i].padded, end);
        *end++ = m_separators[i];
    }
    out.append(text, static_cast<std::size_t>(end - 1 - text));
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
      m_halves(regional.longTime.find("tt") != std::string::npos), m_separator(regional.timeSeparator),
      m_am(regional.am), m_pm(regional.pm) {}

void TimePattern::append(const TimeOfDay& time, std::string& out) const {
    const int twelve = time.hour % 12 == 0 ? 12 : time.hour % 12;
    char text[16];
    char* end = putNumber(m_twelveHours ? twelve : time.hour, m_padded, text);
    *end++ = m_separator;
    end = putTwoDigits(time.minute, end);
    *end++ = m_separator;
    end = putTwoDigits(time.second, end);
    if (m_halves)
        *end++ = ' ';
    out.append(text, static_cast<std::size_t>(end - text));
    if (m_halves)
        out += time.hour < 12 ? m_am : m_pm;
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
    if (!hourFits || (m_halves ? !digits.skip(' ') : !digits.rest().empty()))
        return std::nullopt;
    TimeOfDay time{*hour, *minute, *second};
    if (!m_halves)
        return m_twelveHours ? std::nullopt : std::optional(time); // half of the day unknown
    const bool before = digits.rest() == m_am;
    if (!before && digits.rest() != m_pm)
        return std::nullopt;
    if (m_twelveHours)
        time.hour = time.hour % 12 + (before ? 0 : 12);
    return before == (time.hour < 12) ? std::optional(time) : std::nullopt;
}

} // namespace tallybook::calc
