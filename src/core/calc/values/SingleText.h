// The display of a single with 0 to 3 digits behind the point, by integer arithmetic: it is on the road of every
// number of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::calc {

inline constexpr std::size_t kSingleRoom = 48; // the largest single has 39 digits

// The shortest decimal form of the single, rounded to `decimals` (0..3) places with halves away from zero; it lies
// somewhere in the room's kSingleRoom characters. A value that rounds to zero has no sign; infinities and what is no
// number are empty.
std::string_view formSingle(float value, int decimals, char point, char* room);

// scaled * 10^-decimals in the same room; the sign is left out for zero. The whole part has at most 16 digits.
std::string_view formScaled(bool negative, std::uint64_t scaled, int decimals, char point, char* room);

// Appends the text of a single.
void appendSingle(float value, int decimals, char point, std::string& out);

// The double that the display of the single reads as; nothing when there is none.
std::optional<double> displayedValue(float value, int decimals);

// The same text as appendSingle by digits of any length, for values that integer arithmetic cannot decide; tests
// compare the two.
void appendSingleByDigits(float value, int decimals, char point, std::string& out);

inline constexpr std::uint32_t kPowersOfTen[] = {1, 10, 100, 1000};

} // namespace tallybook::calc
