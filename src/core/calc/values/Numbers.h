// Numbers read from text and written as text, by the user's region.
#pragma once

#include "core/platform/Regional.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::calc {

using platform::Regional;

// The double that the whole text reads as, or nothing when it is not numeric: signs, currency, brackets, group
// and decimal separators, exponents, &H and &O as the platform's numeric text has them.
std::optional<double> parseNumber(std::string_view text, const Regional& regional);
bool isNumeric(std::string_view text, const Regional& regional);

// Conversions of a whole text, the decimal value rounded to the nearest whole number with ties to even; nothing
// when the text is not numeric or the number is out of range.
std::optional<std::int16_t> toInt16(std::string_view text, const Regional& regional);
std::optional<std::int32_t> toInt32(std::string_view text, const Regional& regional);
std::optional<std::uint8_t> toByte(std::string_view text, const Regional& regional);
std::optional<float> toSingle(std::string_view text, const Regional& regional);

// "True", "False", "#TRUE#", "#FALSE#" in any letter case, or whether a number is other than 0; nothing when the
// text is neither.
std::optional<bool> toBoolean(std::string_view text, const Regional& regional);

// The number that the text begins with; blanks dropped, the point always '.', 0 when there is none. One beyond
// the range of a double is the largest double.
double val(std::string_view text);

// Decimal text: 15 significant digits for a double, 7 for a single (8 or 9 when fewer would not read back), the
// region's decimal separator, no blank in front. Plain while neither side of the point has more digits than that,
// otherwise as "1E+15". The value is finite.
std::string decimalText(double value, const Regional& regional);
std::string decimalText(float value, const Regional& regional);

// A double's digits with a blank in front, or the minus: " 0", " 459", "-459.65", " .5". The point is always '.',
// without a zero ahead of it.
std::string spacedText(double value);

// The pictures "00", "000" and so on: the number with zeros in front, to so many digits at least.
std::string zeroPadded(std::uint64_t value, std::size_t digits);

// The formats "0", "0.0", "0.00", "0.000": decimals 0..3, halves away from zero, on the 15 significant digits of
// a double (which is finite) and on the shortest decimal form of a single. Zero has no sign.
std::string formatDecimals(double value, int decimals, const Regional& regional);

// The digits that formatDecimals writes for a double, as a whole number (12.50 with two decimals is 1250), without
// the sign. Nothing where integer arithmetic alone cannot tell, from 14 digits on for one.
std::optional<std::uint64_t> scaledMagnitude(double value, int decimals);

std::string formatDecimals(float value, int decimals, const Regional& regional);

// The same for a text; one that is not numeric comes back unchanged.
std::string formatDecimals(std::string_view text, int decimals, const Regional& regional);

} // namespace tallybook::calc
