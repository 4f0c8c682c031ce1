// Compiles and evaluates the advanced form of expressions. docs/expressions.md has the language.
#pragma once

#include "core/calc/cells/CellReader.h"
#include "core/calc/expressions/ExpressionTokens.h"
#include "core/calc/values/DatePatterns.h"
#include "core/model/Definitions.h"
#include "core/platform/Clock.h"
#include "core/platform/Regional.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::calc {

// A field of a record in the three forms that the engine takes. Dates are packed as year * 65536 + month * 256 + day,
// times as hour * 65536 + minute * 256 + second.
struct FieldValues {
    std::int32_t longValue = 0;
    float singleValue = 0;
    std::string_view textValue;
};

// The two numbers that a number is; one that is too large for a form leaves it at 0.
void setNumber(FieldValues& values, double number);

inline constexpr int kCurrentRecord = 0;
inline constexpr int kPreviousRecord = 1;
inline constexpr std::size_t kFieldEntries = 81; // slots 0..80

// By slot and record. Only entries that the expression names need values.
using FieldValueTable = std::array<std::array<FieldValues, 2>, kFieldEntries>;

// By slot.
struct FieldKinds {
    std::array<std::uint8_t, kFieldEntries> fieldTypes{};
    std::array<std::uint8_t, kFieldEntries> fieldResultTypes{};
};

using TokenArray = std::array<Token, model::kTokens>;
using TokenTextArray = std::array<std::string, model::kTokens>;

// What an expression is computed with besides its fields.
struct EngineContext {
    const platform::Regional& regional;
    platform::LocalTime now;
};

// The number of the record that a trial of an expression is evaluated with. Its values are made up, so that a fault
// that comes from a field's value alone (a root of -1, a date that no calendar has) does not fail a trial.
inline constexpr std::int32_t kTrialRecord = 0;

// What an evaluation comes to, brought to the kind that the field's format wants.
struct ExpressionResult {
    enum class Form : std::uint8_t {
        Number,    // `value` with `decimals` digits behind the point
        Date,      // `value` is the whole serial; a short date
        Time,      // `value` is the seconds since midnight; a long time
        Duration,  // the same, as "hh:mm:ss"
        PlainText, // `text`
    };
    Form form = Form::Number;
    double value = 0;
    int decimals = 0;
    std::string text;
    std::uint8_t colour = 0; // 0..4
};

class ExpressionTree;

// An expression whose tokens are read once and evaluated for each record: evaluation allocates nothing for numbers,
// dates and times. The regional settings must outlive it.
class AdvancedExpression {
public:
    enum class Needs : std::uint8_t { Numbers, Text, All }; // of FieldValues: longValue and singleValue, textValue
    struct FieldUse {
        int slot = 0;
        int record = kCurrentRecord; // or kPreviousRecord
        Needs needs = Needs::All;
        bool operator==(const FieldUse&) const = default;
    };

    // Reads the tokens up to the first 0. Tokens that no compiler writes make an expression that always fails.
    AdvancedExpression(std::span<const Token> tokens, std::span<const std::string> texts, const FieldKinds& kinds,
                       const EngineContext& context);
    ~AdvancedExpression();
    AdvancedExpression(AdvancedExpression&&) noexcept;
    AdvancedExpression& operator=(AdvancedExpression&&) noexcept;

    // The fields that evaluation reads, each once, and what of them.
    std::span<const FieldUse> uses() const { return m_uses; }

    // True with the result of a record (numbered from 1; kTrialRecord for a trial). False with the error's text in
    // `result.text` and the colour 0. A result keeps its room for texts when it is used again.
    bool compute(const FieldValueTable& values, std::int32_t record, std::uint8_t resultType, std::uint8_t decimals,
                 ExpressionResult& result) const;

    // The same with the result as text, or false with the error's text and the colour 0.
    bool evaluate(const FieldValueTable& values, std::int32_t record, std::uint8_t resultType, std::uint8_t decimals,
                  std::string& result, std::uint8_t& colour) const;

    // True when the expression needs nothing but numbers of the record itself and comes to one: the rows of a block
    // can then be computed together.
    bool isOfNumbers() const { return m_ofNumbers; }

    // The expression's value for each row of a block from the numbers of its cells, by uses(). Rows with a bit in
    // `faults` have none: compute() may tell what they come to.
    void computeLanes(std::span<const NumberLanes> cells, NumberLanes& results, model::RowBits& faults) const;

    // The text of a result. A duration is "hh:mm:ss".
    void appendText(const ExpressionResult& result, std::string& out) const;

private:
    std::unique_ptr<ExpressionTree> m_tree;
    std::vector<FieldUse> m_uses;
    const platform::Regional* m_regional;
    DatePattern m_datePattern;
    TimePattern m_timePattern;
    int m_thisYear;
    bool m_ofNumbers = false;
};

// One evaluation from the arrays of a record. True when a result was computed; otherwise `result` has the error.
bool Evaluate(std::int32_t record, const FieldKinds& kinds, const FieldValueTable& values,
              std::span<const Token> tokens, std::span<const std::string> tokenTexts, std::uint8_t resultType,
              std::uint8_t decimals, const EngineContext& context, std::string& result, std::uint8_t& colour);

// What is wrong with a text, and where: a place from 0 in the text, its length for the end.
struct CompileError {
    std::string text;
    std::size_t position = 0;
};

// Compiles a text. 0 with the compiled form, every entry behind the last token 0 and empty; negative with the first
// error, and the arrays untouched. `fieldNames` by slot, empty for a free one; of equal names the first slot's
// counts.
int Compile(std::string_view text, std::span<const std::string> fieldNames, TokenArray& tokens,
            TokenTextArray& tokenTexts, CompileError& error);

// True unless the name may stand without square brackets: a letter A-Z or underscore first, then those and digits.
bool FieldNameRequiresBrackets(std::string_view name);

// The text that the tokens up to the first 0 stand for; compiling it gives the tokens again. Names of constants,
// which a bare word would mean, stand in brackets too. Codes that mean nothing show as "?", "func?(", " oper? " and
// "{?}".
std::string displayText(std::span<const Token> tokens, std::span<const std::string> tokenTexts,
                        std::span<const std::string> fieldNames);

} // namespace tallybook::calc
