// Dates and times as people write them. A text is cut into tokens, a time is taken off one end, and what is left
// is two or three numbers, or a month's name with one or two.
#include "core/calc/Dates.h"
#include "core/calc/Text.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace tallybook::calc {

namespace {

enum class TokenKind { Number, Month, Half, DateSeparator, TimeSeparator, Comma, Blank };

struct Token {
    TokenKind kind;
    int value = 0;  // number; month 1..12; 0 for AM and 1 for PM
    int digits = 0; // of a number
};

using Tokens = std::span<const Token>;

constexpr std::string_view kBlanks = " \t\r\n\v\f\xA0";
constexpr std::size_t kMostDigits = 4;
constexpr std::array<std::string_view, 12> kEnglishMonths = {"January",   "February", "March",    "April",
                                                             "May",       "June",     "July",     "August",
                                                             "September", "October",  "November", "December"};
constexpr std::size_t kShortMonth = 3; // letters of an English short form

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return upper(c) != lower(c) || static_cast<unsigned char>(c) == 0xDF;
}

bool beginsWith(std::string_view text, std::string_view word) {
    return equalText(text.substr(0, word.size()), word, TextCase::Folded);
}

class Tokenizer {
public:
    Tokenizer(std::string_view text, const Regional& regional) : m_text(text), m_regional(regional) {}

    // The tokens without blanks at the ends and beside separators; nothing when the text holds anything else.
    std::optional<std::vector<Token>> run() {
        while (!m_text.empty())
            if (!takeBlanks() && !takeNumber() && !takeWord() && !takeSeparator())
                return std::nullopt;
        if (!m_tokens.empty() && m_tokens.back().kind == TokenKind::Blank)
            m_tokens.pop_back();
        return std::move(m_tokens);
    }

private:
    struct Match {
        std::size_t length = 0;
        Token token{};
    };

    static bool isSeparator(TokenKind kind) {
        return kind == TokenKind::DateSeparator || kind == TokenKind::TimeSeparator || kind == TokenKind::Comma;
    }

    bool takeBlanks() {
        const std::size_t count = std::min(m_text.find_first_not_of(kBlanks), m_text.size());
        if (count == 0)
            return false;
        m_text.remove_prefix(count);
        if (!m_tokens.empty() && !isSeparator(m_tokens.back().kind))
            m_tokens.push_back({.kind = TokenKind::Blank});
        return true;
    }

    bool takeNumber() {
        std::size_t digits = 0;
        int value = 0;
        for (; digits < m_text.size() && digits <= kMostDigits && isDigit(m_text[digits]); ++digits)
            value = value * 10 + (m_text[digits] - '0');
        if (digits == 0 || digits > kMostDigits)
            return false;
        m_text.remove_prefix(digits);
        m_tokens.push_back({TokenKind::Number, value, static_cast<int>(digits)});
        return true;
    }

    bool takeSeparator() {
        const char c = m_text[0];
        TokenKind kind = TokenKind::Comma;
        if (c == '/' || c == '-' || c == m_regional.dateSeparator)
            kind = TokenKind::DateSeparator;
        else if (c == ':' || c == '.')
            kind = TokenKind::TimeSeparator;
        else if (c != ',')
            return false;
        m_text.remove_prefix(1);
        if (!m_tokens.empty() && m_tokens.back().kind == TokenKind::Blank)
            m_tokens.pop_back();
        m_tokens.push_back({.kind = kind});
        return true;
    }

    // Takes the word when it stands here whole and is longer than the one found so far.
    void offer(Match& best, std::string_view word, const Token& token) const {
        const bool cut = word.size() < m_text.size() && isLetter(m_text[word.size()]);
        if (!cut && word.size() > best.length && beginsWith(m_text, word))
            best = {word.size(), token};
    }

    void offerShort(Match& best, std::string_view word, const Token& token) const {
        offer(best, word, token);
        if (!word.ends_with('.') && word.size() < m_text.size() && m_text[word.size()] == '.' &&
            beginsWith(m_text, word) && word.size() + 1 > best.length)
            best = {word.size() + 1, token};
    }

    bool takeWord() {
        Match best;
        for (std::size_t i = 0; i < kEnglishMonths.size(); ++i) {
            const Token token{.kind = TokenKind::Month, .value = static_cast<int>(i) + 1};
            for (const std::string_view name : {kEnglishMonths[i], std::string_view(m_regional.monthNames[i])})
                offer(best, name, token);
            offerShort(best, kEnglishMonths[i].substr(0, kShortMonth), token);
            if (!m_regional.monthAbbrevs[i].empty())
                offerShort(best, m_regional.monthAbbrevs[i], token);
        }
        for (const std::string_view word :
             {std::string_view("AM"), std::string_view("A"), std::string_view(m_regional.am)})
            offer(best, word, {.kind = TokenKind::Half, .value = 0});
        for (const std::string_view word :
             {std::string_view("PM"), std::string_view("P"), std::string_view(m_regional.pm)})
            offer(best, word, {.kind = TokenKind::Half, .value = 1});
        if (best.length == 0)
            return false;
        m_text.remove_prefix(best.length);
        m_tokens.push_back(best.token);
        return true;
    }

    std::string_view m_text;
    const Regional& m_regional;
    std::vector<Token> m_tokens;
};

bool isKind(Tokens tokens, std::size_t at, TokenKind kind) {
    return at < tokens.size() && tokens[at].kind == kind;
}

bool isShortNumber(Tokens tokens, std::size_t at) {
    return isKind(tokens, at, TokenKind::Number) && tokens[at].digits <= 2;
}

struct TimeMatch {
    TimeOfDay time;
    std::size_t length = 0; // tokens
};

// Twelve is where a half of the day begins; hours above it say their half themselves.
int hourOfDay(int hour, bool afternoon) {
    return hour > 12 ? hour : hour % 12 + (afternoon ? 12 : 0);
}

// The time at the front of the tokens.
std::optional<TimeMatch> matchTime(Tokens tokens) {
    if (!isShortNumber(tokens, 0))
        return std::nullopt;
    std::array<int, 3> parts{tokens[0].value, 0, 0};
    std::size_t count = 1;
    std::size_t at = 1;
    for (; count < parts.size() && isKind(tokens, at, TokenKind::TimeSeparator) && isShortNumber(tokens, at + 1);
         at += 2)
        parts[count++] = tokens[at + 1].value;
    const std::size_t half = isKind(tokens, at, TokenKind::Blank) ? at + 1 : at;
    const bool hasHalf = isKind(tokens, half, TokenKind::Half);
    if ((count == 1 && !hasHalf) || parts[0] > 23 || parts[1] > 59 || parts[2] > 59)
        return std::nullopt;
    const int hour = hasHalf ? hourOfDay(parts[0], tokens[half].value == 1) : parts[0];
    return TimeMatch{{hour, parts[1], parts[2]}, hasHalf ? half + 1 : at};
}

// What the date's tokens come to: its numbers in order, and the month when it is a word.
struct DatePieces {
    std::array<Token, 3> numbers{};
    std::size_t count = 0;
    int month = 0; // 0: no word
};

bool mayPart(const Token& token, bool hasMonthWord) {
    return token.kind == TokenKind::DateSeparator || token.kind == TokenKind::Blank ||
           (token.kind == TokenKind::Comma && hasMonthWord);
}

// Numbers and at most one month word, one separator between two of them; beside the word it may be missing.
std::optional<DatePieces> piecesOf(Tokens tokens) {
    bool hasMonthWord = false;
    for (const Token& token : tokens)
        hasMonthWord = hasMonthWord || token.kind == TokenKind::Month;
    DatePieces pieces;
    bool mayBegin = true; // a piece may stand here
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens[i];
        if (token.kind == TokenKind::Number) {
            const bool behindWord = i > 0 && tokens[i - 1].kind == TokenKind::Month;
            if ((!mayBegin && !behindWord) || pieces.count == pieces.numbers.size())
                return std::nullopt;
            pieces.numbers[pieces.count++] = token;
            mayBegin = false;
        } else if (token.kind == TokenKind::Month) {
            if (pieces.month != 0)
                return std::nullopt;
            pieces.month = token.value;
            mayBegin = false;
        } else if (mayBegin || !mayPart(token, hasMonthWord)) {
            return std::nullopt;
        } else {
            mayBegin = true;
        }
    }
    return mayBegin ? std::nullopt : std::optional(pieces);
}

bool looksLikeYear(const Token& number) {
    return number.digits > 2 || number.value > 31;
}

int yearOf(const Token& number, const Regional& regional) {
    if (number.digits > 2)
        return number.value;
    const int year = regional.twoDigitYearMax / 100 * 100 + number.value;
    return year > regional.twoDigitYearMax ? year - 100 : year;
}

std::optional<Date> real(const Date& date) {
    return isRealDate(date) ? std::optional(date) : std::nullopt;
}

// Days and months have two digits at most; a longer number is never one.
int shortValue(const Token& number) {
    return number.digits <= 2 ? number.value : 0;
}

std::optional<Date> threeNumbers(const std::array<Token, 3>& numbers, const Regional& regional) {
    const auto& [first, second, third] = numbers;
    const auto ymd = [&] { return real({yearOf(first, regional), shortValue(second), shortValue(third)}); };
    const auto mdy = [&] { return real({yearOf(third, regional), shortValue(first), shortValue(second)}); };
    const auto dmy = [&] { return real({yearOf(third, regional), shortValue(second), shortValue(first)}); };
    if (looksLikeYear(first))
        return ymd();
    std::optional<Date> date;
    switch (regional.dateOrder) {
    case platform::DateOrder::MDY:
        return (date = mdy()) ? date : dmy();
    case platform::DateOrder::DMY:
        return (date = dmy()) ? date : mdy();
    case platform::DateOrder::YMD:
        break;
    }
    if ((date = ymd()) || (date = mdy()))
        return date;
    return dmy();
}

std::optional<Date> twoNumbers(const Token& first, const Token& second, const Regional& regional, int thisYear) {
    const bool dayFirst = regional.dateOrder == platform::DateOrder::DMY;
    const Token& month = dayFirst ? second : first;
    const Token& day = dayFirst ? first : second;
    if (const auto date = real({thisYear, shortValue(month), shortValue(day)}))
        return date;
    if (const auto date = real({thisYear, shortValue(day), shortValue(month)}))
        return date;
    if (looksLikeYear(first))
        return real({yearOf(first, regional), shortValue(second), 1});
    return looksLikeYear(second) ? real({yearOf(second, regional), shortValue(first), 1}) : std::nullopt;
}

std::optional<Date> monthAndNumbers(const DatePieces& pieces, const Regional& regional, int thisYear) {
    const auto& [first, second, third] = pieces.numbers;
    if (pieces.count == 1)
        return looksLikeYear(first) ? real({yearOf(first, regional), pieces.month, 1})
                                    : real({thisYear, pieces.month, first.value});
    if (looksLikeYear(first))
        return real({yearOf(first, regional), pieces.month, shortValue(second)});
    return real({yearOf(second, regional), pieces.month, first.value});
}

std::optional<Date> dateOfTokens(Tokens tokens, const Regional& regional, int thisYear) {
    const auto pieces = piecesOf(tokens);
    if (!pieces)
        return std::nullopt;
    if (pieces->month != 0)
        return pieces->count == 1 || pieces->count == 2 ? monthAndNumbers(*pieces, regional, thisYear) : std::nullopt;
    if (pieces->count == 3)
        return threeNumbers(pieces->numbers, regional);
    return pieces->count == 2 ? twoNumbers(pieces->numbers[0], pieces->numbers[1], regional, thisYear) : std::nullopt;
}

// The tokens of the date and the time beside them.
struct Split {
    Tokens date;
    TimeOfDay time;
};

Split splitTime(Tokens tokens) {
    if (const auto time = matchTime(tokens)) {
        if (time->length == tokens.size())
            return {{}, time->time};
        if (tokens[time->length].kind == TokenKind::Blank)
            return {tokens.subspan(time->length + 1), time->time};
    }
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (tokens[i - 1].kind != TokenKind::Blank)
            continue;
        const auto time = matchTime(tokens.subspan(i));
        if (time && i + time->length == tokens.size())
            return {tokens.first(i - 1), time->time};
    }
    return {tokens, {}};
}

} // namespace

std::optional<double> readDate(std::string_view text, const Regional& regional, int thisYear) {
    const auto tokens = Tokenizer(text, regional).run();
    if (!tokens || tokens->empty())
        return std::nullopt;
    const Split split = splitTime(*tokens);
    if (split.date.empty())
        return serialOf(Date{}, split.time);
    const auto date = dateOfTokens(split.date, regional, thisYear);
    return date ? std::optional(serialOf(*date, split.time)) : std::nullopt;
}

bool isDate(std::string_view text, const Regional& regional, int thisYear) {
    return readDate(text, regional, thisYear).has_value();
}

} // namespace tallybook::calc
