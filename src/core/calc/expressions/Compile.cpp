#include "core/calc/expressions/ExpressionEngine.h"
#include "core/calc/expressions/ExpressionLexer.h"
#include "core/calc/expressions/ExpressionTree.h"

#include <algorithm>

namespace tallybook::calc {

namespace {

// The first error in the order of the text. Where the tokens ran out, it is the sign that could not be read which
// cut them off, unless all were read.
std::optional<CompileError> firstError(const LexedExpression& lexed, const ExpressionTree& tree, std::size_t length) {
    const auto& error = tree.error();
    if (lexed.error && (!error || error->atEnd))
        return lexed.error;
    if (!error)
        return std::nullopt;
    const bool atToken = error->token < lexed.positions.size();
    return CompileError{error->text, atToken ? lexed.positions[error->token] : length};
}

} // namespace

int Compile(std::string_view text, std::span<const std::string> fieldNames, TokenArray& tokens,
            TokenTextArray& tokenTexts, CompileError& error) {
    LexedExpression lexed = lexExpression(text, fieldNames);
    const ExpressionTree tree(lexed.tokens, lexed.texts);
    if (auto found = firstError(lexed, tree, text.size())) {
        error = std::move(*found);
        return -1;
    }
    tokens.fill(token::kEnd);
    tokenTexts.fill({});
    std::copy(lexed.tokens.begin(), lexed.tokens.end(), tokens.begin());
    std::move(lexed.texts.begin(), lexed.texts.end(), tokenTexts.begin());
    return 0;
}

} // namespace tallybook::calc
