// A number as decimal digits of any length: what stands between a text and the binary numbers, so that rounding
// happens on the digits that people see.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tallybook::calc {

// The value is 0.DIGITS times ten to the exponent. Digits have no zero at either end; none at all are zero.
struct Decimal {
    bool negative = false;
    std::string digits;
    int exponent = 0;

    bool isZero() const { return digits.empty(); }
};

// Takes the zeros off both ends of the digits, keeping the value. Zero has no sign.
void normalise(Decimal& number);

// The digits of a double rounded to `significant` ones. The value is finite.
Decimal significantDigits(double value, int significant);

// The shortest digits that read back as the same single, written without an exponent. The value is finite.
Decimal shortestDigits(float value);

// Rounds to a number of places behind the point, halves away from zero.
void roundToPlaces(Decimal& number, int places);

// The nearest whole number, halves to the even one; nothing beyond 18 digits.
std::optional<std::int64_t> nearestWhole(const Decimal& number);

// The nearest double and single; nothing beyond their range. Too small a number is 0.
std::optional<double> nearestDouble(const Decimal& number);
std::optional<float> nearestSingle(const Decimal& number);

// The number without exponent: at least one digit ahead of the point, exactly `places` behind it. No digit may
// stand further behind than that.
void appendPlain(const Decimal& number, int places, char point, std::string& out);

// Digits that the number has behind the point.
int placesOf(const Decimal& number);

} // namespace tallybook::calc
