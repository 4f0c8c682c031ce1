// The operands of simple expressions, read from the cells of their fields.
#pragma once

#include "core/calc/cells/CellReader.h"
#include "core/model/DatabaseModel.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tallybook::calc {

inline constexpr std::size_t kOperandEntries = 9;

// What an operand is.
enum class OperandKind : std::uint8_t {
    None,   // of a field that gives no value
    Number, // "N", in NumVals
    Date,   // "D", in DateVals
    Time,   // "T", in TimeVals
    NoTime, // "NULL": a Time field whose text is no time
};

// By the operand's number from 0. Dates and times are serials. What is not filled is 0.
struct Operands {
    std::array<double, kOperandEntries> NumVals{};
    std::array<double, kOperandEntries> DateVals{};
    std::array<double, kOperandEntries> TimeVals{};
    std::array<OperandKind, kOperandEntries> Kinds{};

    // Sets an entry as a whole, so that nothing is left of the record before.
    void set(std::size_t number, OperandKind kind, double value) {
        Kinds[number] = kind;
        NumVals[number] = kind == OperandKind::Number ? value : 0;
        DateVals[number] = kind == OperandKind::Date ? value : 0;
        TimeVals[number] = kind == OperandKind::Time ? value : 0;
    }
};

// How the cells of a field are read as operands.
enum class OperandReading : std::uint8_t {
    Nothing,
    Number,              // text that is no number is 0
    Checked,             // 1 for the checked picture
    DateField,           // a date; text that is none is date 0
    TimeField,           // a time; text that is none is NoTime
    Condition,           // a number, else a date, else the number 0
    DateResult,          // a date with its time of day; text that is none is date 0
    TimeResult,          // a time; text that is none is 0
    HoursMinutesSeconds, // "h:m:s" as a number of seconds
    HoursMinutes,        // "h:m" as a number of seconds
    Zero,                // the number 0
};

// How a field is read. A calculated field's text is read by the ResultType of the slot ahead of `ownField`, the field
// that is being calculated (for an operand of the previous record: the operand's own slot). The handheld reads it so.
OperandReading readingOf(const model::DatabaseModel& db, int slot, int ownField);

// Reads a cell into entry position / 2: `position` is the place of the operand's token.
void RetFldVal20(OperandReading reading, const CellReader& cells, std::uint32_t row, std::size_t position,
                 Operands& operands);

} // namespace tallybook::calc
