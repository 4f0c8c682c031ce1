#include "core/calc/expressions/ExpressionLexer.h"

#include "core/calc/expressions/ExpressionWords.h"
#include "core/calc/values/Text.h"
#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <utility>

namespace tallybook::calc {

namespace {

namespace own = platform::texts;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\xA0';
}

bool equalWords(std::string_view a, std::string_view b) {
    return equalText(a, b, TextCase::Folded);
}

std::string codeText(unsigned code) {
    return std::string(1, static_cast<char>(code));
}

struct Sign {
    std::string_view text;
    Token token;
    Operator code = Operator::Modulo; // of token 98
};

// A sign that begins with another stands ahead of it.
constexpr Sign kSigns[] = {
    {"**", token::kOperator, Operator::Power},
    {"<=", token::kOperator, Operator::LessEqual},
    {">=", token::kOperator, Operator::GreaterEqual},
    {"<>", token::kOperator, Operator::NotEqual},
    {"<", token::kOperator, Operator::Less},
    {">", token::kOperator, Operator::Greater},
    {"=", token::kOperator, Operator::Equal},
    {"&", token::kOperator, Operator::And},
    {"|", token::kOperator, Operator::Or},
    {"^", token::kOperator, Operator::Xor},
    {"!", token::kOperator, Operator::Not},
    {"%", token::kOperator, Operator::Modulo},
    {"+", token::kPlus},
    {"-", token::kMinus},
    {"*", token::kTimes},
    {"/", token::kDivide},
    {"(", token::kOpen},
    {")", token::kClose},
    {",", token::kComma},
};

// Signs of other languages, with those that mean the same here.
struct ForeignSign {
    std::string_view text;
    std::string_view here;
};
constexpr ForeignSign kForeignSigns[] = {{"!=", "<>"}, {"==", "="},  {"&&", "&"},
                                         {"||", "|"},  {"=>", ">="}, {"=<", "<="}};

// Letters that no bare word has: a name with one stands in brackets.
bool isOtherLetter(char c) {
    const auto code = static_cast<unsigned char>(c);
    constexpr std::string_view kBelow = "\x8A\x8C\x8E\x9A\x9C\x9E\x9F\xAA\xB5\xBA";
    return (code >= 0xC0 && code != 0xD7 && code != 0xF7) || kBelow.find(c) != std::string_view::npos;
}

class Lexer {
public:
    Lexer(std::string_view text, std::span<const std::string> fieldNames) : m_text(text), m_names(fieldNames) {}

    LexedExpression run() {
        for (skipBlanks(); m_place < m_text.size() && !m_result.error; skipBlanks())
            readToken();
        return std::move(m_result);
    }

private:
    char at(std::size_t place) const { return place < m_text.size() ? m_text[place] : '\0'; }
    std::string_view from(std::size_t place) const { return m_text.substr(std::min(place, m_text.size())); }
    std::size_t behindBlanks(std::size_t place) const {
        while (place < m_text.size() && isBlank(m_text[place]))
            ++place;
        return place;
    }
    void skipBlanks() { m_place = behindBlanks(m_place); }

    void fail(std::size_t place, std::string text) { m_result.error = CompileError{std::move(text), place}; }

    // Adds the token that begins at m_place and ends ahead of `end`.
    void add(Token code, std::size_t end, std::string text = {}) {
        if (m_result.tokens.size() == model::kTokens)
            return fail(m_place, std::string(own::kTooManyTokens));
        m_result.tokens.push_back(code);
        m_result.texts.push_back(std::move(text));
        m_result.positions.push_back(m_place);
        m_place = end;
    }

    void readToken() {
        const char c = at(m_place);
        if (isWordStart(c) || isOtherLetter(c))
            readWord();
        else if (isDigit(c) || (c == '.' && isDigit(at(m_place + 1))))
            readNumber();
        else if (c == '\'')
            readText();
        else if (c == '[')
            readBracketedField();
        else if (c == '{')
            readColour();
        else
            readSign();
    }

    void readSign() {
        for (const ForeignSign& foreign : kForeignSigns)
            if (from(m_place).starts_with(foreign.text))
                return fail(m_place, own::foreignSign(foreign.text, foreign.here));
        const auto found = std::find_if(std::begin(kSigns), std::end(kSigns),
                                        [this](const Sign& sign) { return from(m_place).starts_with(sign.text); });
        if (found == std::end(kSigns))
            return fail(m_place, own::noSuchSign(m_text.substr(m_place, 1)));
        const bool hasCode = found->token == token::kOperator;
        add(found->token, m_place + found->text.size(),
            hasCode ? codeText(static_cast<unsigned>(found->code)) : std::string());
    }

    void readNumber() {
        std::size_t end = m_place;
        while (isDigit(at(end)))
            ++end;
        if (at(end) == '.' && isDigit(at(end + 1)))
            for (++end; isDigit(at(end));)
                ++end;
        const std::string_view number = m_text.substr(m_place, end - m_place);
        if (number.size() > words::kLongestConstant)
            return fail(m_place, std::string(own::kNumberTooLong));
        add(token::kNumber, end, std::string(number));
    }

    void readText() {
        std::string text;
        for (std::size_t place = m_place + 1; place < m_text.size(); ++place) {
            char c = m_text[place];
            if (c == '\'') {
                if (text.size() > words::kLongestConstant)
                    return fail(m_place, std::string(own::kTextTooLong));
                return add(token::kText, place + 1, std::move(text));
            }
            if (c == '\\' && ++place < m_text.size())
                c = m_text[place];
            if (c == '\0')
                return fail(place, own::noSuchSign("\\0"));
            if (text.size() <= words::kLongestConstant)
                text += c;
        }
        fail(m_place, std::string(own::kTextNotClosed));
    }

    void readColour() {
        const std::size_t close = m_text.find('}', m_place);
        if (close == std::string_view::npos)
            return fail(m_place, std::string(own::kBraceNotClosed));
        std::string_view name = m_text.substr(m_place + 1, close - m_place - 1);
        while (!name.empty() && isBlank(name.front()))
            name.remove_prefix(1);
        while (!name.empty() && isBlank(name.back()))
            name.remove_suffix(1);
        for (unsigned code = 0; code < words::kColours.size(); ++code) {
            // Black's code is the byte 0, which a file cuts away: it is written as an empty text from the start.
            if (equalWords(name, words::kColours[code]))
                return add(token::kColour, close + 1, code == 0 ? std::string() : codeText(code));
        }
        fail(m_place, own::noSuchColour(name));
    }

    // Constants first, then functions, which have a bracket behind them, then fields.
    void readWord() {
        std::size_t end = m_place;
        while (isWordPart(at(end)) || isOtherLetter(at(end)))
            ++end;
        const std::string_view word = m_text.substr(m_place, end - m_place);
        if (readConstant(word, end))
            return;
        const std::size_t bracket = behindBlanks(end);
        const bool called = at(bracket) == '(';
        if (called && equalWords(word, words::kPrev))
            return readPrev(bracket + 1);
        const unsigned function = functionNamed(word);
        if (called && function != 0)
            return add(token::kFunction, bracket + 1, codeText(function));
        if (const int slot = slotNamed(word); slot != 0 && !FieldNameRequiresBrackets(word))
            return add(static_cast<Token>(slot), end);
        fail(m_place, whatIsMissing(word, called, function != 0 || equalWords(word, words::kPrev)));
    }

    std::string whatIsMissing(std::string_view word, bool called, bool isFunction) const {
        if (isFunction)
            return own::functionNeedsBracket(word);
        const std::string_view meant = nameMeantAt(m_place);
        if (called && meant.empty())
            return own::noSuchFunction(word);
        return own::noSuchWord(word) + own::didYouMean(meant.empty() ? std::string() : fieldText(meant));
    }

    // The longest field name that stands at a place in any letter case, with no letter or digit behind it.
    std::string_view nameMeantAt(std::size_t place) const {
        std::string_view meant;
        for (int slot = 1; slot <= lastSlot(); ++slot) {
            const std::string_view name = nameOf(slot);
            const char behind = at(place + name.size());
            if (name.size() > meant.size() && equalWords(from(place).substr(0, name.size()), name) &&
                !isWordPart(behind) && !isOtherLetter(behind))
                meant = name;
        }
        return meant;
    }

    // The message for a name between brackets that no field has. A field that differs in letter case alone is named.
    std::string noField(std::string_view name) const {
        std::string_view trimmed = name;
        while (!trimmed.empty() && isBlank(trimmed.front()))
            trimmed.remove_prefix(1);
        while (!trimmed.empty() && isBlank(trimmed.back()))
            trimmed.remove_suffix(1);
        for (int slot = 1; slot <= lastSlot(); ++slot)
            if (!trimmed.empty() && equalWords(nameOf(slot), trimmed))
                return own::noSuchField(name) + own::didYouMean(std::string(nameOf(slot)));
        return own::noSuchField(name);
    }

    bool readConstant(std::string_view word, std::size_t end) {
        if (equalWords(word, words::kToday))
            add(token::kToday, end);
        else if (equalWords(word, words::kNow))
            add(token::kNow, end);
        else if (equalWords(word, words::kPrevIndex))
            add(token::kPrevIndex, end);
        else if (equalWords(word, words::kPi))
            add(token::kNumber, end, std::string(words::kPiDigits));
        else
            return false;
        return true;
    }

    static unsigned functionNamed(std::string_view word) {
        for (unsigned code = 1; code <= words::kFunctions.size(); ++code)
            if (equalWords(word, words::kFunctions[code - 1].name))
                return code;
        return 0;
    }

    int lastSlot() const { return std::min(static_cast<int>(m_names.size()) - 1, model::MaxUserFields); }
    std::string_view nameOf(int slot) const { return m_names[static_cast<std::size_t>(slot)]; }

    int slotNamed(std::string_view name) const {
        for (int slot = 1; slot <= lastSlot(); ++slot)
            if (!name.empty() && nameOf(slot) == name)
                return slot;
        return 0;
    }

    struct NameAt {
        int slot = 0;
        std::size_t end = 0; // behind the closing sign
    };

    // The longest name that stands at a place with `close` behind it: a name may hold the closing sign itself.
    NameAt nameAt(std::size_t place, char close) const {
        NameAt found;
        std::size_t longest = 0;
        for (int slot = 1; slot <= lastSlot(); ++slot) {
            const std::string_view name = nameOf(slot);
            if (name.size() <= longest || !from(place).starts_with(name))
                continue;
            const std::size_t end = close == ')' ? behindBlanks(place + name.size()) : place + name.size();
            if (at(end) != close)
                continue;
            longest = name.size();
            found = {slot, end + 1};
        }
        return found;
    }

    std::string_view upTo(std::size_t place, char close) const {
        return m_text.substr(place, m_text.find(close, place) - place);
    }

    void readBracketedField() {
        if (const NameAt found = nameAt(m_place + 1, ']'); found.slot != 0)
            return add(static_cast<Token>(found.slot), found.end);
        if (m_text.find(']', m_place) == std::string_view::npos)
            return fail(m_place, std::string(own::kSquareBracketNotClosed));
        fail(m_place, noField(upTo(m_place + 1, ']')));
    }

    // The name between the brackets of Prev stands bare, as it is shown; square brackets do no harm.
    void readPrev(std::size_t inside) {
        const std::size_t name = behindBlanks(inside);
        NameAt found = nameAt(inside, ')');
        if (found.slot == 0)
            found = nameAt(name, ')');
        if (found.slot == 0 && at(name) == '[') {
            found = nameAt(name + 1, ']');
            const std::size_t close = behindBlanks(found.end);
            found = found.slot != 0 && at(close) == ')' ? NameAt{found.slot, close + 1} : NameAt{};
        }
        if (found.slot != 0)
            return add(token::kPreviousRecord + static_cast<Token>(found.slot), found.end);
        if (m_text.find(')', inside) == std::string_view::npos)
            return fail(m_place, std::string(own::kPrevNotClosed));
        fail(std::min(name, m_text.size()), noField(upTo(name, ')')));
    }

    std::string_view m_text;
    std::span<const std::string> m_names;
    std::size_t m_place = 0;
    LexedExpression m_result;
};

} // namespace

bool isWordStart(char c) {
    return isLetter(c) || c == '_';
}

bool isWordPart(char c) {
    return isWordStart(c) || isDigit(c);
}

bool isConstantWord(std::string_view word) {
    return equalWords(word, words::kToday) || equalWords(word, words::kNow) || equalWords(word, words::kPi) ||
           equalWords(word, words::kPrevIndex);
}

LexedExpression lexExpression(std::string_view text, std::span<const std::string> fieldNames) {
    return Lexer(text, fieldNames).run();
}

} // namespace tallybook::calc
