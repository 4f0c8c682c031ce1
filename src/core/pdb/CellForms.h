// How the words of a column's coder stand to the values of a file, settled once per column and read or save.
#pragma once

#include "core/model/DatabaseModel.h"
#include "core/model/TextColumn.h"
#include "core/platform/Regional.h"

#include <cstdint>

namespace tallybook::pdb {

// What a word of the column is. Where it is the value as it stands in a file, cells need no text on their way.
enum class WordForm : std::uint8_t {
    Other,   // no coder, or one whose words say nothing to a file
    Whole,   // a whole number in two's complement
    Decimal, // the bits of a single, shown with `decimals` digits
    Date,    // year, month, day
    Time,    // hour, minute, second
};
struct CellForm {
    WordForm words = WordForm::Other;
    int decimals = 0; // that the field's numbers are shown with; above 3 they are not shown at all
};

// The form of a slot's column. What the coder shows decides, not what the field's type lets expect, so that a coder
// that does not belong to the field can never turn its words into other values.
CellForm cellForm(const model::DatabaseModel& db, int slot, const model::TextColumn& column,
                  const platform::Regional& regional);

// Digits behind the point of the field's numbers: those of the field, or 0 for a result that is a whole number.
int shownDecimals(const model::DatabaseModel& db, int slot);

// The kinds of result of a calculated field.
enum class ResultKind : std::uint8_t { Number, Date, Whole, Time, Seconds, Minutes, Text, Unknown };
ResultKind resultKind(std::uint8_t ResultType);

inline constexpr int kMostDecimals = 3;

} // namespace tallybook::pdb
