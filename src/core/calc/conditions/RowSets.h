// Sets of a block's 256 rows.
#pragma once

#include "core/model/WordColumn.h"

namespace tallybook::calc {

inline model::RowBits rowsWithout(model::RowBits rows, const model::RowBits& others) {
    for (std::size_t group = 0; group < rows.size(); ++group)
        rows[group] &= ~others[group];
    return rows;
}

inline model::RowBits rowsOfBoth(model::RowBits rows, const model::RowBits& others) {
    for (std::size_t group = 0; group < rows.size(); ++group)
        rows[group] |= others[group];
    return rows;
}

} // namespace tallybook::calc
