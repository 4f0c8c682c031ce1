// The arithmetic of dates and times that simple expressions know.
#pragma once

#include "core/calc/cells/CellResult.h"
#include "core/calc/expressions/ExpressionTokens.h"

#include <cstdint>
#include <string_view>

namespace tallybook::calc {

// How often the calendar turned between two moments: days ("d"), months ("m") or years ("yyyy") from the second
// date to the first, negative when the first is earlier. Any other interval gives 0.
std::int32_t CalcDate20(double firstDate, double secondDate, std::string_view interval);

// All that is added to and taken from dates and times. `interval`, of which the first character counts:
//   "TT"             the number 0, since the sum of two times means nothing
//   "TS"             first: a time, second: seconds that are added; gives the time of day of the sum
//   "d", "m", "yyyy" first: a date, second: days, months or years that are added (rounded to a whole, halves to the
//                    even one; a day that the month does not have becomes its last); gives the date. The number 0
//                    when the calendar ends before.
//   "h", "n", "s"    hours, minutes or seconds begun between the second time of day and the first
//   anything else    nothing
// The token token::kMinus subtracts, every other one adds. Dates and times are serials.
CellResult CalcTime20(double first, double second, std::string_view interval, Token operatorToken);

} // namespace tallybook::calc
