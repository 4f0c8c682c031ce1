// What a field's cells are in a file, settled once per column and read or save.
#pragma once

#include "core/model/TextColumn.h"

#include <cstdint>

namespace tallybook::pdb {

using model::CellForm;
using model::WordForm;

// The form of a column's words: its coder's.
inline model::CellForm cellForm(const model::TextColumn& column) {
    return column.coder() == nullptr ? model::CellForm{} : column.coder()->form();
}

// The kinds of result of a calculated field.
enum class ResultKind : std::uint8_t { Number, Date, Whole, Time, Seconds, Minutes, Text, Unknown };
ResultKind resultKind(std::uint8_t ResultType);

inline constexpr int kMostDecimals = 3;

} // namespace tallybook::pdb
