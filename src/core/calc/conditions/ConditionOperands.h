// The operands of conditions: fields and constants, their kinds settled.
#pragma once

#include "core/calc/cells/CellReader.h"
#include "core/calc/conditions/EvalCond.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tallybook::calc {

// How a text becomes a value.
enum class ValueRule : std::uint8_t { Text, Whole, Double, Checked, Date, Time, Nothing };

inline bool isFieldSlot(int slot) {
    return slot <= model::MaxUserFields;
}

// The type of a slot; no field's beyond slot 80.
model::FieldType typeOf(const model::DatabaseModel& db, int slot);

// A field that conditions read. The document and the context's region must outlive it.
class FieldOperand {
public:
    FieldOperand(const model::Tallybook& doc, const CondContext& context, int slot);

    // The value of a stored row. A text lies in the column or in `scratch`.
    CondOperand read(std::uint32_t row, std::string& scratch) const;

    // The column whose cells alone decide the value; none where a picture does, or nothing.
    const model::TextColumn* cells() const;

    // The value of a cell of that column.
    CondOperand read(const model::StoredCell& cell, std::string& scratch) const;

    bool isText() const { return m_rule == ValueRule::Text; }

    // Whether the column's words are values of the kind that the field is read as, so that they have their order.
    bool hasOrderedWords() const;
    model::WordForm wordForm() const { return m_reader->form().words; }

private:
    void settle(model::FieldType type, std::uint8_t resultType);
    CondOperand numberOrZero(std::optional<double> number) const;
    CondOperand dateOrZero(std::optional<double> serial) const;

    const platform::Regional& m_regional;
    std::optional<CellReader> m_reader; // none beyond slot 80
    ValueRule m_rule = ValueRule::Nothing;
    model::FieldType m_filled = model::FieldType::Text;
    model::FieldType m_blank = model::FieldType::Text;
};

// The constant at an operand's place 0..5 of a set; `type` is that of the condition's left field.
CondOperand constantAt(const model::DatabaseModel& db, const CondContext& context, const Conditions& conditions,
                       int position, model::FieldType type);

} // namespace tallybook::calc
