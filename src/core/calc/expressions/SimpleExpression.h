// The simple form of expressions: up to eight operands, joined from left to right.
#pragma once

#include "core/calc/cells/CellResult.h"
#include "core/calc/cells/RecordRows.h"
#include "core/calc/expressions/ExpressionTokens.h"
#include "core/calc/expressions/OperandList.h"
#include "core/model/Tallybook.h"
#include "core/platform/Clock.h"
#include "core/platform/Regional.h"
#include "core/platform/Services.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tallybook::calc {

// An Expression field made ready for a pass over the records: which cells are read and how is settled once. The
// document must outlive it; its fields and coders must not change meanwhile.
class SimpleExpression {
public:
    SimpleExpression(const model::Tallybook& doc, int field, const platform::Regional& regional,
                     const platform::LocalTime& now);

    CellResult evaluate(const RecordRows& record);

    // True when the result is a number that comes of numbers of the record alone: the results of a block of 256 rows
    // can then be had at once, in any order of the records. They are numbers of decimals() digits, and kNumberZero
    // where they are not finite.
    bool hasBlocks() const;
    void evaluateBlock(std::uint32_t block, NumberLanes& results) const;
    int decimals() const { return m_decimals; }

private:
    CellResult floating(const Operands& operands) const;
    CellResult movedDate(const Operands& operands, std::string_view interval) const;
    CellResult dateDifference(const Operands& operands, std::string_view interval) const;
    CellResult movedTime(const Operands& operands) const;
    CellResult timeDifference(const Operands& operands, std::string_view interval) const;
    CellResult duration(const Operands& operands, CellResult::Form form) const;

    std::uint8_t m_resultType;
    std::uint8_t m_decimals;
    std::array<Token, kSimpleOperators> m_operators{};
    OperandList m_list;
};

// The text of the result for a record from 0, without a pass.
std::string calcExpression20(const model::Tallybook& doc, const platform::Services& services, int field, int record);

} // namespace tallybook::calc
