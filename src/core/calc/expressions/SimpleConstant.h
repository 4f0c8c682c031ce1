// The constants of the simple form of expressions, as a file holds them: decimal text with a point, the same in every
// region. Files of other programs, and of older versions of this one, may have another region's sign instead.
#pragma once

#include "core/platform/Regional.h"

#include <optional>
#include <string>
#include <string_view>

namespace tallybook::calc {

// The region with the decimal sign that a constant is read by: a single point or comma with other than three digits
// behind it is the decimal sign; otherwise the region's own.
platform::Regional regionOfConstant(std::string_view text, const platform::Regional& regional);

// The number that a constant stands for; nothing when it is none.
std::optional<double> constantNumber(std::string_view text, const platform::Regional& regional);

// The text of a number for a file. Where the region's decimal sign is no point, three digits behind it get a zero
// more: they would be read as thousands there.
std::string constantText(double value, const platform::Regional& regional);

} // namespace tallybook::calc
