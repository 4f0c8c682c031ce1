// The advanced form of expressions over the records: what the engine is given, and what becomes of its results.
#pragma once

#include "core/calc/cells/CellReader.h"
#include "core/calc/cells/CellResult.h"
#include "core/calc/cells/RecordRows.h"
#include "core/calc/expressions/ExpressionEngine.h"
#include "core/model/Tallybook.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tallybook::calc {

// What the engine's two numbers of a cell are, besides the number that its text may be.
enum class ValueReading : std::uint8_t {
    Number,
    Checked,             // 1 for the checked picture
    PackedDate,          // year * 65536 + month * 256 + day
    PackedTime,          // hour * 65536 + minute * 256 + second
    SecondsOfDay,        // of a time
    HoursMinutesSeconds, // of a duration, in seconds
    HoursMinutes,        // the same without its seconds
};
ValueReading valueReadingOf(const model::DatabaseModel& db, int slot);

// Reads a cell into the three forms that the engine takes, or those of them that it needs. The text lies in the
// column or in `scratch` until either changes.
void GetFldVals25(ValueReading reading, const CellReader& cells, std::uint32_t row, AdvancedExpression::Needs needs,
                  std::string& scratch, FieldValues& values);

// An Adv Expression field made ready for a pass over the records: its tokens are read once, and of the fields only
// those that it names. The document must outlive it; its fields and coders must not change meanwhile.
class AdvancedField {
public:
    AdvancedField(const model::Tallybook& doc, int field, const platform::Regional& regional,
                  const platform::LocalTime& now);

    // The result of a record from 0; it lasts until the next one. Where there is none it is the number 0 in black.
    struct Outcome {
        CellResult cell;
        std::uint8_t colour = 0;
    };
    Outcome evaluate(const RecordRows& record, int number);

    // True when the result is a black number that comes of numbers of the record alone: the results of a block of 256
    // rows can then be had at once, in any order of the records. They have decimals() digits. Rows with a bit in
    // `faults` are left to evaluate().
    bool hasBlocks() const;
    void evaluateBlock(std::uint32_t block, NumberLanes& results, model::RowBits& faults);
    int decimals() const { return m_decimals; }

private:
    struct Source {
        AdvancedExpression::FieldUse use;
        ValueReading reading;
        CellReader cells;
        std::string scratch;
    };

    AdvancedExpression m_expression;
    std::vector<Source> m_sources;    // as the expression's uses
    std::vector<NumberLanes> m_lanes; // of the sources, of a block
    FieldValueTable m_values{};
    ExpressionResult m_result;
    std::uint8_t m_resultType;
    std::uint8_t m_decimals;
};

// Gives a calculated cell the colour of a code 0 to 4; other codes leave the colour that is there.
void setResultColour(model::WordColumn& colours, std::uint32_t row, std::uint8_t code);

// The text of the result for a record from 0, without a pass; sets the cell's colour.
std::string calcNewExpression25(model::Tallybook& doc, const platform::Services& services, int field, int record);

} // namespace tallybook::calc
