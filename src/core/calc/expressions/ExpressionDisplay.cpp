#include "core/calc/expressions/ExpressionEngine.h"
#include "core/calc/expressions/ExpressionLexer.h"
#include "core/calc/expressions/ExpressionWords.h"

#include <algorithm>

namespace tallybook::calc {

namespace {

std::string quotedText(std::string_view text) {
    std::string shown = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\')
            shown += '\\';
        shown += c;
    }
    return shown + '\'';
}

std::string colourText(unsigned code) {
    return '{' + std::string(code < words::kColours.size() ? words::kColours[code] : "?") + '}';
}

std::string functionText(unsigned code) {
    const words::FunctionWord* word = words::functionOf(code);
    return word ? std::string(word->name) + " (" : "func?(";
}

std::string operatorText(unsigned code) {
    return std::string(code >= 1 && code <= words::kOperators.size() ? words::kOperators[code - 1] : " oper? ");
}

std::string tokenText(Token code, std::string_view text, std::span<const std::string> fieldNames) {
    const auto name = [fieldNames](Token slot) {
        return slot < fieldNames.size() ? std::string_view(fieldNames[slot]) : std::string_view();
    };
    if (token::isField(code))
        return fieldText(name(code));
    if (token::isPreviousField(code))
        return std::string(words::kPrev) + '(' + std::string(name(code - token::kPreviousRecord)) + ')';
    switch (code) {
    case token::kToday:
        return std::string(words::kToday);
    case token::kNow:
        return std::string(words::kNow);
    case token::kPrevIndex:
        return std::string(words::kPrevIndex);
    case token::kNumber:
        return std::string(text);
    case token::kText:
        return quotedText(text);
    case token::kColour:
        return colourText(words::codeOf(text));
    case token::kFunction:
        return functionText(words::codeOf(text));
    case token::kOperator:
        return operatorText(words::codeOf(text));
    case token::kPlus:
        return "+";
    case token::kMinus:
        return "-";
    case token::kTimes:
        return "*";
    case token::kDivide:
        return "/";
    case token::kOpen:
        return "(";
    case token::kClose:
        return ")";
    case token::kComma:
        return ", ";
    default:
        return "?";
    }
}

} // namespace

std::string fieldText(std::string_view name) {
    if (!FieldNameRequiresBrackets(name) && !isConstantWord(name))
        return std::string(name);
    return '[' + std::string(name) + ']';
}

bool FieldNameRequiresBrackets(std::string_view name) {
    return name.empty() || !isWordStart(name.front()) || !std::all_of(name.begin(), name.end(), isWordPart);
}

std::string displayText(std::span<const Token> tokens, std::span<const std::string> tokenTexts,
                        std::span<const std::string> fieldNames) {
    std::string shown;
    for (std::size_t i = 0; i < tokens.size() && tokens[i] != token::kEnd; ++i)
        shown += tokenText(tokens[i], i < tokenTexts.size() ? tokenTexts[i] : std::string(), fieldNames);
    return shown;
}

} // namespace tallybook::calc
