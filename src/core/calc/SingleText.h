// The display of a single with 0 to 3 digits behind the point, by integer arithmetic: it is on the road of every
// number of a file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tallybook::calc {

// Appends the shortest decimal form of the single, rounded to `decimals` (0..3) places with halves away from
// zero. A value that rounds to zero has no sign; infinities and what is no number append nothing.
void appendSingle(float value, int decimals, char point, std::string& out);

// The double that the display of the single reads as; nothing when there is none.
std::optional<double> displayedValue(float value, int decimals);

// The same text as appendSingle by digits of any length, for values that integer arithmetic cannot decide; tests
// compare the two.
void appendSingleByDigits(float value, int decimals, char point, std::string& out);

// Appends whole * 10^-decimals; the sign is left out for zero.
void appendScaled(bool negative, std::uint64_t scaled, int decimals, char point, std::string& out);

inline constexpr std::uint32_t kPowersOfTen[] = {1, 10, 100, 1000};

} // namespace tallybook::calc
