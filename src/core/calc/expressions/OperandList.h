// The operands that the tokens of a simple expression name, whatever is done with them.
#pragma once

#include "core/calc/cells/RecordRows.h"
#include "core/calc/expressions/ExpressionTokens.h"
#include "core/calc/expressions/Operands.h"
#include "core/model/Tallybook.h"
#include "core/platform/Clock.h"
#include "core/platform/Regional.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tallybook::calc {

inline constexpr int kSimpleOperands = 8;
inline constexpr int kSimpleOperators = 7;

// Which files an expression comes from: the older ones have another code for the present time, take check boxes by
// their stored value, and know h:m:s as a time of day.
enum class ExpressionAge : std::uint8_t { Old, Present };

// Made ready for a pass over the records: which cells are read and how is settled once. The document must outlive it;
// its fields and coders must not change meanwhile.
class OperandList {
public:
    OperandList(const model::Tallybook& doc, int field, ExpressionAge age, const platform::Regional& regional,
                const platform::LocalTime& now);

    // The operands of a record, until the next call.
    const Operands& read(const RecordRows& record);

    // True when all operands are constants and fields of the record itself that count as numbers: then operand
    // `number` can be had for the rows of a block of 256 at once.
    bool isOfNumbers() const;
    void numbers(std::size_t number, std::uint32_t block, NumberLanes& lanes) const;

private:
    enum class Record : std::uint8_t { Current, Previous };
    struct FieldOperand {
        std::size_t position; // of its token
        OperandReading reading;
        Record record;
        CellReader cells;
        const model::WordColumn* stored; // of a check box that counts by its stored value
    };

    void addOperand(int field, std::size_t position);
    void addField(std::size_t position, int slot, int ownField, Record record);
    void readField(const FieldOperand& operand, std::uint32_t row);

    const model::Tallybook& m_doc;
    ExpressionAge m_age;
    const platform::Regional& m_regional;
    platform::LocalTime m_now;
    std::vector<FieldOperand> m_fields;
    Operands m_operands; // constants are filled for good
};

} // namespace tallybook::calc
