#include "core/calc/values/Numbers.h"

#include "core/calc/values/Decimal.h"
#include "core/calc/values/Text.h"

#include <algorithm>
#include <limits>
#include <string>

namespace tallybook::calc {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f\xA0";
constexpr int kExponentLimit = 100000; // far beyond every double; digits of an exponent stop counting here

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The digit's value in a base up to 16, -1 when it has none.
int digitValue(char c, int base) {
    const char u = upper(c);
    const int value = isDigit(u) ? u - '0' : u >= 'A' && u <= 'F' ? u - 'A' + 10 : base;
    return value < base ? value : -1;
}

// The base that &H, &O or & announce, with the letters taken off the text; 0 for a decimal number.
int takeBase(std::string_view& text) {
    if (!text.starts_with('&'))
        return 0;
    text.remove_prefix(1);
    const char letter = text.empty() ? '\0' : upper(text[0]);
    if (letter == 'H' || letter == 'O')
        text.remove_prefix(1);
    return letter == 'H' ? 16 : 8;
}

constexpr std::size_t mostDigits(int base) {
    return base == 16 ? 8 : 11;
}

// Digits of a base at the front of a text, taken off it; nothing when there is none.
std::optional<std::uint64_t> takeDigits(std::string_view& text, int base) {
    std::uint64_t value = 0;
    std::size_t count = 0;
    for (; count < text.size() && count < mostDigits(base); ++count) {
        const int digit = digitValue(text[count], base);
        if (digit < 0)
            break;
        value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
    }
    text.remove_prefix(count);
    return count > 0 ? std::optional(value) : std::nullopt;
}

Decimal decimalOf(std::int64_t value) {
    Decimal number{value < 0, std::to_string(std::abs(value)), 0};
    number.exponent = static_cast<int>(number.digits.size());
    normalise(number);
    return number;
}

// An exponent "E", "e", "D" or "d" with its digits, taken off the text; nothing, and the text as it was, when
// there is none.
std::optional<int> takeExponent(std::string_view& text) {
    const char letter = text.empty() ? '\0' : upper(text[0]);
    if (letter != 'E' && letter != 'D')
        return std::nullopt;
    std::size_t at = 1;
    const bool negative = text.size() > 1 && text[1] == '-';
    if (negative || (text.size() > 1 && text[1] == '+'))
        ++at;
    const std::size_t first = at;
    int value = 0;
    for (; at < text.size() && isDigit(text[at]); ++at)
        value = std::min(value * 10 + (text[at] - '0'), kExponentLimit);
    if (at == first)
        return std::nullopt;
    text.remove_prefix(at);
    return negative ? -value : value;
}

// Digits with one point at most, taken off the front of a text. Group separators behind a digit are
// dropped; a group of 0 is none.
std::optional<Decimal> takeMantissa(std::string_view& text, char point, char group) {
    Decimal number;
    bool digits = false;
    bool pointed = false;
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (isDigit(c)) {
            digits = true;
            number.digits += c;
            number.exponent += pointed ? 0 : 1;
        } else if (c == point && !pointed) {
            pointed = true;
        } else if (c != group || group == 0 || !digits) {
            break;
        }
    }
    if (!digits)
        return std::nullopt;
    text.remove_prefix(at);
    return number;
}

// Reads a whole text by the marks that may stand around a number.
class NumberReader {
public:
    NumberReader(std::string_view text, const Regional& regional) : m_text(text), m_regional(regional) {}

    std::optional<Decimal> read() {
        skipBlanks();
        while (takeMarkAhead())
            skipBlanks();
        auto number = m_marked ? readDecimal() : readEither();
        if (!number)
            return std::nullopt;
        skipBlanks();
        while (takeMarkBehind())
            skipBlanks();
        if (!m_text.empty() || m_open)
            return std::nullopt;
        number->negative = number->negative != m_negative;
        normalise(*number);
        return number;
    }

private:
    void skipBlanks() { m_text.remove_prefix(std::min(m_text.find_first_not_of(kBlanks), m_text.size())); }

    bool take(std::string_view mark) {
        if (mark.empty() || !m_text.starts_with(mark))
            return false;
        m_text.remove_prefix(mark.size());
        return m_marked = true;
    }

    bool takeSign() {
        if (m_signed || m_bracket)
            return false;
        m_negative = m_text.starts_with('-');
        return m_signed = take("-") || take("+");
    }

    bool takeMarkAhead() {
        if (takeSign())
            return true;
        if (!m_currency && take(m_regional.currency))
            return m_currency = true;
        if (!m_bracket && !m_signed && take("("))
            return m_bracket = m_open = m_negative = true;
        return false;
    }

    bool takeMarkBehind() {
        if (takeSign() || take(m_regional.currency))
            return true;
        if (!m_open || !take(")"))
            return false;
        m_open = false;
        return true;
    }

    std::optional<Decimal> readDecimal() {
        auto number = takeMantissa(m_text, m_regional.decimal, m_regional.group);
        if (number)
            number->exponent += takeExponent(m_text).value_or(0);
        return number;
    }

    // A number without marks ahead may be one of another base, and then has none behind.
    std::optional<Decimal> readEither() {
        const int base = takeBase(m_text);
        if (base == 0)
            return readDecimal();
        const auto value = takeDigits(m_text, base);
        skipBlanks();
        if (!value || !m_text.empty() || *value > std::numeric_limits<std::uint32_t>::max())
            return std::nullopt;
        return decimalOf(static_cast<std::int32_t>(static_cast<std::uint32_t>(*value)));
    }

    std::string_view m_text;
    const Regional& m_regional;
    bool m_marked = false; // a sign, a currency or a bracket was there
    bool m_signed = false;
    bool m_currency = false;
    bool m_bracket = false;
    bool m_open = false;
    bool m_negative = false;
};

template <class T> std::optional<T> toWhole(std::string_view text, const Regional& regional) {
    const auto number = NumberReader(text, regional).read();
    const auto whole = number ? nearestWhole(*number) : std::nullopt;
    const bool fits = whole && *whole >= std::numeric_limits<T>::min() && *whole <= std::numeric_limits<T>::max();
    return fits ? std::optional(static_cast<T>(*whole)) : std::nullopt;
}

} // namespace

std::optional<double> parseNumber(std::string_view text, const Regional& regional) {
    const auto number = NumberReader(text, regional).read();
    return number ? nearestDouble(*number) : std::nullopt;
}

bool isNumeric(std::string_view text, const Regional& regional) {
    return parseNumber(text, regional).has_value();
}

std::optional<std::int16_t> toInt16(std::string_view text, const Regional& regional) {
    return toWhole<std::int16_t>(text, regional);
}

std::optional<std::int32_t> toInt32(std::string_view text, const Regional& regional) {
    return toWhole<std::int32_t>(text, regional);
}

std::optional<std::uint8_t> toByte(std::string_view text, const Regional& regional) {
    return toWhole<std::uint8_t>(text, regional);
}

std::optional<float> toSingle(std::string_view text, const Regional& regional) {
    const auto number = NumberReader(text, regional).read();
    return number ? nearestSingle(*number) : std::nullopt;
}

std::optional<bool> toBoolean(std::string_view text, const Regional& regional) {
    for (const std::string_view word : {"True", "#TRUE#"})
        if (equalText(text, word, TextCase::Folded))
            return true;
    for (const std::string_view word : {"False", "#FALSE#"})
        if (equalText(text, word, TextCase::Folded))
            return false;
    const auto number = parseNumber(text, regional);
    return number ? std::optional(*number != 0) : std::nullopt;
}

double val(std::string_view text) {
    std::string packed(text);
    std::erase_if(packed, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
    std::string_view rest = packed;
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+'))
        rest.remove_prefix(1);
    Decimal number;
    if (const int base = takeBase(rest); base != 0) {
        // the width of the number is that of its value: 16 bits up to FFFF, 32 bits above
        const auto bits = static_cast<std::uint32_t>(takeDigits(rest, base).value_or(0));
        number = decimalOf(bits <= 0xFFFF ? static_cast<std::int16_t>(bits) : static_cast<std::int32_t>(bits));
    } else if (auto mantissa = takeMantissa(rest, '.', 0)) {
        number = *mantissa;
        number.exponent += takeExponent(rest).value_or(0);
        normalise(number);
    }
    const double value = nearestDouble(number).value_or(std::numeric_limits<double>::max());
    return negative && value != 0 ? -value : value;
}

} // namespace tallybook::calc
