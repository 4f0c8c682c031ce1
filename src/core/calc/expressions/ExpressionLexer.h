// Takes the text of an expression apart into tokens, before anyone asks whether they make sense together.
#pragma once

#include "core/calc/expressions/ExpressionEngine.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::calc {

// Tokens with their texts and the places where they begin, at most model::kTokens. With an error they are those ahead
// of it.
struct LexedExpression {
    std::vector<Token> tokens;
    std::vector<std::string> texts;
    std::vector<std::size_t> positions;
    std::optional<CompileError> error;
};

LexedExpression lexExpression(std::string_view text, std::span<const std::string> fieldNames);

// A field's name as it is written in an expression: in square brackets where it cannot stand bare, or would mean a
// constant.
std::string fieldText(std::string_view name);

// Whether a bare word of this spelling is a constant, in any letter case.
bool isConstantWord(std::string_view word);

// Letters A-Z, digits and underscore; a word begins with no digit.
bool isWordStart(char c);
bool isWordPart(char c);

} // namespace tallybook::calc
