// Numbers as text.
#include "core/calc/Decimal.h"
#include "core/calc/Numbers.h"
#include "core/calc/SingleText.h"

#include <cstdlib>
#include <limits>
#include <string>

namespace tallybook::calc {

namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;

void appendScientific(const Decimal& number, char point, std::string& out) {
    if (number.negative)
        out += '-';
    out += number.digits[0];
    if (number.digits.size() > 1) {
        out += point;
        out += number.digits.substr(1);
    }
    const int power = number.exponent - 1;
    out += power < 0 ? "E-" : "E+";
    out += std::abs(power) < 10 ? "0" : "";
    out += std::to_string(std::abs(power));
}

// Plain while neither side of the point has more than `significant` digits.
std::string generalText(const Decimal& number, int significant, char point) {
    std::string text;
    const int places = placesOf(number);
    if (number.exponent <= significant && places <= significant)
        appendPlain(number, places, point, text);
    else
        appendScientific(number, point, text);
    return text;
}

// The digits that read back as the same single, at least 7.
int digitsThatReadBack(float value) {
    int digits = kSingleDigits;
    while (digits < std::numeric_limits<float>::max_digits10 &&
           nearestSingle(significantDigits(value, digits)) != value)
        ++digits;
    return digits;
}

} // namespace

std::string decimalText(double value, const Regional& regional) {
    return generalText(significantDigits(value, kDoubleDigits), kDoubleDigits, regional.decimal);
}

std::string decimalText(float value, const Regional& regional) {
    const int digits = digitsThatReadBack(value);
    return generalText(significantDigits(value, digits), digits, regional.decimal);
}

std::string spacedText(double value) {
    std::string text = decimalText(value, Regional{.decimal = '.'});
    const bool negative = text.starts_with('-');
    if (!negative)
        text.insert(text.begin(), ' ');
    if (text.compare(1, 2, "0.") == 0)
        text.erase(1, 1);
    return text;
}

std::string zeroPadded(std::uint64_t value, std::size_t digits) {
    const std::string text = std::to_string(value);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

std::string formatDecimals(double value, int decimals, const Regional& regional) {
    Decimal number = significantDigits(value, kDoubleDigits);
    roundToPlaces(number, decimals);
    std::string text;
    appendPlain(number, decimals, regional.decimal, text);
    return text;
}

std::string formatDecimals(float value, int decimals, const Regional& regional) {
    std::string text;
    appendSingle(value, decimals, regional.decimal, text);
    return text;
}

std::string formatDecimals(std::string_view text, int decimals, const Regional& regional) {
    const auto number = parseNumber(text, regional);
    return number ? formatDecimals(*number, decimals, regional) : std::string(text);
}

} // namespace tallybook::calc
