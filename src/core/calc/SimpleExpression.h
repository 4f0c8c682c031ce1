// The simple form of expressions: up to eight operands, joined from left to right.
#pragma once

#include "core/calc/CellResult.h"
#include "core/calc/ExpressionTokens.h"
#include "core/calc/Operands.h"
#include "core/calc/RecordRows.h"
#include "core/model/Document.h"
#include "core/platform/Clock.h"
#include "core/platform/Regional.h"
#include "core/platform/Services.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::calc {

inline constexpr int kSimpleOperands = 8;
inline constexpr int kSimpleOperators = 7;

// An Expression field made ready for a pass over the records: which cells are read and how is settled once. The
// document must outlive it; its fields and coders must not change meanwhile.
class SimpleExpression {
public:
    SimpleExpression(const model::Document& doc, int field, const platform::Regional& regional,
                     const platform::LocalTime& now);

    CellResult evaluate(const RecordRows& record);

private:
    enum class Record : std::uint8_t { Current, Previous };
    struct FieldOperand {
        std::size_t position; // of its token
        OperandReading reading;
        Record record;
        CellReader cells;
    };

    void addOperand(const model::Document& doc, int field, std::size_t position, const platform::Regional& regional,
                    const platform::LocalTime& now);
    void readOperands(const RecordRows& record);
    CellResult floating() const;
    CellResult movedDate(std::string_view interval) const;
    CellResult dateDifference(std::string_view interval) const;
    CellResult movedTime() const;
    CellResult timeDifference(std::string_view interval) const;
    CellResult duration(CellResult::Form form) const;

    std::uint8_t m_resultType;
    std::uint8_t m_decimals;
    std::array<Token, kSimpleOperators> m_operators{};
    std::vector<FieldOperand> m_fields;
    Operands m_operands; // constants are filled for good
};

// The text of the result for a record from 0, without a pass.
std::string calcExpression20(const model::Document& doc, const platform::Services& services, int field, int record);

} // namespace tallybook::calc
