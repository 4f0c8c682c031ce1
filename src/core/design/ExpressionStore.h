// What the dialog of a calculated field's expression shows and stores: the lists of the simple form, the text of the
// advanced one. The dialog holds the choices; the rules are here.
#pragma once

#include "core/calc/expressions/ExpressionEngine.h"
#include "core/model/DatabaseModel.h"
#include "core/platform/Services.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

inline constexpr int kOperands = 8;
inline constexpr int kOperators = 7;
inline constexpr int kTypedNumber = -1; // position of an operand list with a text that none of its entries is

// An operand list `cmbExpr`: the entry chosen, or the text that was typed.
struct OperandChoice {
    int position = 0;
    std::string text;
    bool operator==(const OperandChoice&) const = default;
};

// The lists of the simple form.
struct SimpleChoices {
    int format = 0; // `cmbExpFormat`
    std::array<OperandChoice, kOperands> operands;
    std::array<int, kOperators> operators{}; // `cmbOper`
    bool operator==(const SimpleChoices&) const = default;
};

// The entries of `cmbExpFormat`, by result type 0 to 12.
std::span<const std::string_view> expressionFormats();

// The entries of each `cmbExpr`: the blank one, slots 1 to 80, "Today", "Now", the same slots of the previous record.
std::vector<std::string> operandEntries(const model::DatabaseModel& db);

// What an entry of an operand list stands for.
struct OperandEntry {
    enum class Kind : std::uint8_t { None, Field, Today, Now };
    Kind kind = Kind::None;
    int slot = 0; // of a field, of the present record or the one before
};
OperandEntry operandEntry(int position);

// The entries of a `cmbOper` at a format: at format 0 all seven lists have four operators, at the others the first
// list has one or two and the rest stay blank.
std::span<const std::string_view> operatorEntries(int format, int list);

// Stores the choices in the place of what `expression` shows. A choice that is the one shown keeps its token: the
// stored one may be another that shows alike. False with a message when a number has more than ten characters;
// nothing is changed then.
bool StoreExpression20(const SimpleChoices& choices, platform::Services& services, model::ExprDef& expression);

// The choices that show a stored expression. "Now" is token 79, which is also the last slot but one: it shows as
// "Now".
SimpleChoices choicesOf(const model::ExprDef& expression);

// The entries of `cmbAdvExpFormat`, the result type that each stands for, and the entry that shows a result type.
std::span<const std::string_view> advancedFormats();
std::uint8_t resultTypeOfFormat(int position);
int formatOfResultType(std::uint8_t resultType);

// The field whose expression is stored: while it is being made, the database has neither its name nor its type yet.
struct FieldInDesign {
    int slot = 0; // 0 for an expression without a field
    std::string_view name;
};

// The names by slot as the compiler takes them: those of slots in use. A free slot keeps a name that means nothing.
std::vector<std::string> usableFieldNames(const model::DatabaseModel& db);

// The kinds of all fields, as the engine takes them.
calc::FieldKinds fieldKinds(const model::DatabaseModel& db);

// The text `txtAdvExpression` of a field, and the entry of `cmbAdvExpFormat`.
struct AdvancedChoices {
    std::string text;
    int format = 0;
    bool operator==(const AdvancedChoices&) const = default;
};
AdvancedChoices DisplayExpression25(const model::DatabaseModel& db, const model::ExprDef& expression);

// Stores the choices in the place of what `expression` shows, so that a text that is the one shown keeps its tokens.
// True when they were stored; false with a message under "Error in the expression", the tokens as they were. The
// result type takes the chosen format in any case, unless it shows it already. The place of an error in the text goes
// to `errorPlace` when it is given.
bool StoreExpression25(const AdvancedChoices& choices, const model::DatabaseModel& db, const FieldInDesign& own,
                       std::uint8_t decimals, platform::Services& services, model::ExprDef& expression,
                       std::size_t* errorPlace = nullptr);

} // namespace tallybook::design
