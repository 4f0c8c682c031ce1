// A record as a pass over the records meets it.
#pragma once

#include "core/model/GridModel.h"

#include <cstdint>
#include <optional>

namespace tallybook::calc {

// The row's id, and that of the row above; the first record has none.
struct RecordRows {
    std::uint32_t row = 0;
    std::optional<std::uint32_t> above;
};

// The record at a position from 0.
inline RecordRows recordRows(const model::GridModel& grid, int record) {
    RecordRows rows{grid.order().id(record), std::nullopt};
    if (record > 0)
        rows.above = grid.order().id(record - 1);
    return rows;
}

} // namespace tallybook::calc
