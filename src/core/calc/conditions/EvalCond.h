// Whether a record satisfies up to three conditions: filters and Conditional Expressions.
#pragma once

#include "core/model/Tallybook.h"
#include "core/model/WordColumn.h"
#include "core/platform/Services.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

namespace tallybook::calc {

// The first slot from 1 to 80 whose name is exactly this, 0 for none.
int GetDBFieldNo20(const model::DatabaseModel& db, std::string_view name);

// What an operand of a condition reads as. Text lies in the grid, in the condition, or in the reader's scratch.
struct CondValue {
    enum class Kind : std::uint8_t { Nothing, Number, Date, Text };
    enum class Numeric : std::uint8_t { Unknown, No, Yes }; // whether a text is a number

    Kind kind = Kind::Nothing;
    Numeric numeric = Numeric::Unknown; // a constant's is found out once, not for each record
    double number = 0;                  // a number, a date's serial, or what a text known to be numeric reads as
    std::string_view text = {};

    static CondValue ofNumber(double number) { return {Kind::Number, Numeric::Yes, number}; }
    static CondValue ofDate(double serial) { return {Kind::Date, Numeric::No, serial}; }
    static CondValue ofText(std::string_view text) { return {Kind::Text, Numeric::Unknown, 0, text}; }

    bool operator==(const CondValue&) const = default;
};

// A value with the type that it is compared as.
struct CondOperand {
    CondValue value;
    model::FieldType type = model::FieldType::Text;
};

// How texts are read: the region, and the day that completes dates and that "T" stands for.
struct CondContext {
    const platform::Regional& regional;
    platform::LocalTime now;
};

// The condition sets of filters and of Conditional Expressions in one form. The texts are those of the definition.
struct Conditions {
    std::array<std::uint8_t, 6> slots{}; // left 1, right 1, left 2, right 2, left 3, right 3
    std::array<std::string_view, 3> constants{};
    std::array<std::uint8_t, 3> operators{};
    std::array<std::uint8_t, 2> links{}; // 'A', 'O', or 0 where the chain ends
};
Conditions conditionsOf(const model::FilterDef& filter);
Conditions conditionsOf(const model::CondExprDef& condition);

// One comparison, by the operator's code: = ! < L > J h H s S. Any other code is false.
bool CheckCondition(std::uint8_t code, const CondOperand& left, const CondOperand& right, const CondContext& context);

// The operand at a place 0..5 of a set, for a grid row: its field, or the constant of its condition, which is read
// by `type`, the type of the condition's left field. A slot beyond 80 reads as nothing.
enum class OperandSource : std::uint8_t { Field, Constant };
CondOperand GetCalcVal(const model::Tallybook& doc, const CondContext& context, const Conditions& conditions,
                       int position, OperandSource source, model::FieldType type, int row, std::string& scratch);

// A condition set made ready for a pass over the records: fields, types and constants are settled once, a record
// costs two to six cell reads and no allocation. The document and the services must outlive it; the fields and
// their columns' coders must not change.
class ConditionSet {
public:
    ConditionSet(const model::Tallybook& doc, const platform::Services& services, const model::FilterDef& filter);
    ConditionSet(const model::Tallybook& doc, const platform::Services& services,
                 const model::CondExprDef& condition);
    ~ConditionSet();
    ConditionSet(ConditionSet&&) noexcept;
    ConditionSet& operator=(ConditionSet&&) noexcept;

    // False when it compares a field beyond slot 80, which only a damaged file names. Such a set has no effect:
    // every record satisfies it.
    bool isReadable() const;

    // Whether the record of a stored row satisfies the set.
    bool holds(std::uint32_t rowId) const;

    // The same for many: those of the rows of a block of 256 (row ids block * 256 and on) that satisfy the set.
    model::RowBits holding(std::uint32_t block, const model::RowBits& rows) const;

private:
    class Prepared;
    std::unique_ptr<Prepared> m_prepared;
};

// Whether a record satisfies a filter; `row` is its number from 1.
bool EvalCondition(const model::Tallybook& doc, const platform::Services& services, const model::FilterDef& filter,
                   int row);

// Writes the outcome of a Conditional Expression into a field's cell of a grid row, with its colour.
void SetCondValue(model::Tallybook& doc, bool result, int field, int row);

// Fills the column of a Conditional Expression, with progress; the caller hides the bar. A field without a
// condition becomes empty.
void CalcCondExppression(model::Tallybook& doc, platform::Services& services, int field);

} // namespace tallybook::calc
