// A calculated field for measuring, added to any table that has numbers.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <string>

namespace tallybook::bench {

enum class CalculationForm : std::uint8_t {
    Simple,   // (a + b) * c
    Advanced, // If(b > c, Round(a * 2), Abs(b - c) / 2)
};

// The field and its operands by slot: the first Float, and the first two Integers.
struct Calculation {
    int field = 0; // the first free slot, or the last Text field when there is none
    int a = 0;
    int b = 0;
    int c = 0;
};

// Makes the field an Expression or an Adv Expression with two digits behind the point and without results. Throws
// when the table has not enough numbers.
Calculation addCalculation(model::Document& doc, const platform::Services& services, CalculationForm form);

// Empties the results, so that the next recalculation has to store all of them.
void clearResults(model::Document& doc, const Calculation& calculation);

// The same as an SQL expression over columns f1, f2 and so on; an empty cell counts as 0.
std::string sqlOf(const Calculation& calculation, CalculationForm form);

} // namespace tallybook::bench
