// Numbers as text.
#include "core/calc/values/Decimal.h"
#include "core/calc/values/Numbers.h"
#include "core/calc/values/SingleText.h"

#include <algorithm>
#include <cmath>
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

// By the count of digits ahead of the point: what one unit of the 15th significant digit is worth.
constexpr double kLastDigit[] = {1e-15, 1e-14, 1e-13, 1e-12, 1e-11, 1e-10, 1e-9, 1e-8,
                                 1e-7,  1e-6,  1e-5,  1e-4,  1e-3,  1e-2,  1e-1};

std::size_t digitsOf(std::uint64_t whole) {
    std::size_t digits = 0;
    for (; whole != 0; whole /= 10)
        ++digits;
    return digits;
}

} // namespace

// The value counts with its 15 significant digits, so one that is a half but for its last bits rounds as the half
// does. The product is off by a ninth of such a digit at most: all that lies nearer to the border between the half
// and its neighbours is left to the digits.
std::optional<std::uint64_t> scaledMagnitude(double value, int decimals) {
    constexpr double kFourteenDigits = 1e14;
    const double scaled = std::fabs(value) * kPowersOfTen[decimals];
    if (!(scaled < kFourteenDigits))
        return std::nullopt;
    const auto whole = static_cast<std::uint64_t>(scaled);
    const double fromHalf = scaled - static_cast<double>(whole) - 0.5;
    if (std::fabs(fromHalf) > std::max(scaled, 1.0) * 1e-14)
        return whole + (fromHalf > 0 ? 1 : 0);
    const double digits = std::fabs(fromHalf) / kLastDigit[digitsOf(whole)];
    if (digits < 0.35)
        return whole + 1;
    if (digits < 0.65)
        return std::nullopt;
    return whole + (fromHalf > 0 ? 1 : 0);
}

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
    char room[kSingleRoom];
    if (const auto scaled = scaledMagnitude(value, decimals))
        return std::string(formScaled(value < 0, *scaled, decimals, regional.decimal, room));
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
