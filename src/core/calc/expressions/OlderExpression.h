// The expressions of the older files, whose results depend on what is joined and not on a chosen format.
#pragma once

#include "core/model/Tallybook.h"
#include "core/platform/Services.h"

#include <string>

namespace tallybook::calc {

// The text of an expression's result for a record from 0. Operands are joined from left to right, by numbers of
// single precision: a date among them makes the result a short date, else a time makes it h:mm:ss, else it is a
// number with the field's Decimals, empty when those are above 3. A result that no calendar or single holds is the
// number 0.
std::string calcExpression(const model::Tallybook& doc, const platform::Services& services, int field, int record);

} // namespace tallybook::calc
