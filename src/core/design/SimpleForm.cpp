#include "core/calc/expressions/ExpressionWords.h"
#include "core/calc/expressions/SimpleConstant.h"
#include "core/calc/values/Numbers.h"
#include "core/design/ExpressionStore.h"
#include "core/design/FieldNames.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <cstddef>

namespace tallybook::design {

namespace {

namespace token = calc::token;
using calc::Token;
using model::ExprDef;

constexpr int kToday = 81;
constexpr int kNow = 82;
constexpr int kFirstPrevious = 83;
constexpr int kLastPrevious = 162;
constexpr int kPreviousOffset = 18; // from a list's position to its token

// "Now" is stored as the letter O, which evaluators of the present format take for slot 79. Files and the handheld
// have it so.
constexpr Token kStoredNow = 79;

constexpr std::array<std::string_view, 13> kFormats = {"Floating",        "Date +/- Days ", "Date +/- Months  ",
                                                       "Date +/- Years ", "Days",           "Months",
                                                       "Years",           "Time",           "Hours",
                                                       "Minutes",         "Seconds",        "Hours-Minutes-Seconds",
                                                       "Hours-Minutes"};

constexpr std::array<std::string_view, 5> kNumberOperators = {" ", "+", "-", "*", "/"};
constexpr std::array<std::string_view, 3> kMomentOperators = {" ", "-", "+"};
constexpr std::array<Token, 5> kNumberTokens = {token::kEnd, token::kPlus, token::kMinus, token::kTimes,
                                                token::kDivide};

// Position 1 takes away, position 2 adds.
constexpr int kTakeAway = 1;
constexpr int kAddTo = 2;

constexpr std::size_t operandToken(int operand) {
    return static_cast<std::size_t>(operand) * 2;
}
constexpr std::size_t operatorToken(int operatorNumber) {
    return static_cast<std::size_t>(operatorNumber) * 2 + 1;
}

Token tokenOfPosition(int position) {
    if (position == kToday)
        return token::kToday;
    if (position == kNow)
        return kStoredNow;
    if (position >= kFirstPrevious && position <= kLastPrevious)
        return static_cast<Token>(position + kPreviousOffset);
    return position > 0 && position <= model::MaxUserFields ? static_cast<Token>(position) : token::kEnd;
}

int positionOfToken(Token code) {
    if (code == token::kToday)
        return kToday;
    if (code == kStoredNow || code == token::kNow)
        return kNow;
    if (code == token::kNumber)
        return kTypedNumber;
    if (token::isPreviousField(code))
        return static_cast<int>(code) - kPreviousOffset;
    return token::isField(code) ? static_cast<int>(code) : 0;
}

// A typed number as it is stored: "0" for what is none.
std::string storedNumber(std::string_view text, const platform::Regional& regional) {
    const auto number = calc::constantNumber(text, regional);
    return number ? calc::constantText(*number, regional) : "0";
}

void storeOperand(const OperandChoice& choice, int operand, const platform::Regional& regional, ExprDef& expression) {
    const std::size_t place = operandToken(operand);
    if (choice.position != kTypedNumber) {
        expression.Tokens[place] = tokenOfPosition(choice.position);
        return;
    }
    expression.Tokens[place] = token::kNumber;
    expression.TokenTexts[place] = storedNumber(choice.text, regional);
}

// A position of another format may stand for another operator.
bool keepsOperator(const SimpleChoices& choices, const SimpleChoices& shown, int list) {
    const auto place = static_cast<std::size_t>(list);
    return choices.format == shown.format && choices.operators[place] == shown.operators[place];
}

void storeMomentOperator(int position, ExprDef& expression) {
    if (position == kTakeAway)
        expression.Tokens[operatorToken(0)] = token::kMinus;
    else if (position == kAddTo) // a blank entry leaves what is there
        expression.Tokens[operatorToken(0)] = token::kPlus;
}

void storeOperators(const SimpleChoices& choices, const SimpleChoices& shown, ExprDef& expression) {
    const int lists = choices.format == calc::result::kFloating ? kOperators : 1;
    for (int i = 0; i < lists; ++i) {
        if (keepsOperator(choices, shown, i))
            continue;
        const int position = choices.operators[static_cast<std::size_t>(i)];
        if (choices.format != calc::result::kFloating)
            storeMomentOperator(position, expression);
        else if (position < static_cast<int>(kNumberTokens.size()))
            expression.Tokens[operatorToken(i)] = kNumberTokens[static_cast<std::size_t>(position)];
    }
}

int operatorPosition(int format, int list, Token code) {
    if (format == calc::result::kFloating) {
        for (std::size_t position = 1; position < kNumberTokens.size(); ++position)
            if (kNumberTokens[position] == code)
                return static_cast<int>(position);
        return 0;
    }
    int position = 0;
    if (list == 0 && code == token::kMinus)
        position = kTakeAway;
    else if (list == 0 && code == token::kPlus)
        position = kAddTo;
    return position < static_cast<int>(operatorEntries(format, list).size()) ? position : 0;
}

} // namespace

std::span<const std::string_view> expressionFormats() {
    return kFormats;
}

std::vector<std::string> operandEntries(const model::DatabaseModel& db) {
    std::vector<std::string> entries = {" "};
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        entries.push_back(shownName(db, slot));
    entries.emplace_back("Today");
    entries.emplace_back("Now");
    for (int slot = 1; slot <= model::MaxUserFields; ++slot)
        entries.push_back("Prev (" + shownName(db, slot) + ')');
    return entries;
}

OperandEntry operandEntry(int position) {
    using Kind = OperandEntry::Kind;
    if (position == kToday)
        return {Kind::Today, 0};
    if (position == kNow)
        return {Kind::Now, 0};
    if (position >= kFirstPrevious && position <= kLastPrevious)
        return {Kind::Field, position - kFirstPrevious + 1};
    if (position >= 1 && position <= model::MaxUserFields)
        return {Kind::Field, position};
    return {};
}

std::span<const std::string_view> operatorEntries(int format, int list) {
    if (format == calc::result::kFloating)
        return kNumberOperators;
    const std::span<const std::string_view> entries = kMomentOperators;
    if (list != 0)
        return entries.first(1);
    const bool adds = (format >= calc::result::kDateAndDays && format <= calc::result::kDateAndYears) ||
                      format == calc::result::kTime;
    return adds ? entries : entries.first(2);
}

bool StoreExpression20(const SimpleChoices& choices, platform::Services& services, ExprDef& expression) {
    const SimpleChoices shown = choicesOf(expression);
    const auto keeps = [&](std::size_t operand) { return choices.operands[operand] == shown.operands[operand]; };
    for (std::size_t i = 0; i < choices.operands.size(); ++i) {
        const OperandChoice& operand = choices.operands[i];
        if (!keeps(i) && operand.position == kTypedNumber &&
            storedNumber(operand.text, services.regional).size() > calc::words::kLongestConstant) {
            services.ui.message({std::string(platform::texts::kNumberTooLong), platform::Icon::Critical,
                                 platform::Buttons::Ok, "Error in the expression"});
            return false;
        }
    }
    if (choices.format != shown.format)
        expression.ResultType = static_cast<std::uint8_t>(std::max(choices.format, 0));
    for (std::size_t i = 0; i < choices.operands.size(); ++i)
        if (!keeps(i))
            storeOperand(choices.operands[i], static_cast<int>(i), services.regional, expression);
    storeOperators(choices, shown, expression);
    return true;
}

SimpleChoices choicesOf(const ExprDef& expression) {
    SimpleChoices choices;
    choices.format = expression.ResultType < kFormats.size() ? expression.ResultType : -1;
    for (int i = 0; i < kOperands; ++i) {
        OperandChoice& operand = choices.operands[static_cast<std::size_t>(i)];
        operand.position = positionOfToken(expression.Tokens[operandToken(i)]);
        if (operand.position == kTypedNumber)
            operand.text = expression.TokenTexts[operandToken(i)];
    }
    for (int i = 0; i < kOperators; ++i)
        choices.operators[static_cast<std::size_t>(i)] =
            operatorPosition(choices.format, i, expression.Tokens[operatorToken(i)]);
    return choices;
}

} // namespace tallybook::design
