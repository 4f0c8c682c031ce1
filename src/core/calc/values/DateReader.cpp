// Dates and times as people write them. A time is taken off one end of the tokens, and what is left is two or
// three numbers, or a month's name with one or two.
#include "core/calc/values/DateTokens.h"
#include "core/calc/values/Dates.h"

#include <array>
#include <cstddef>
#include <span>

namespace tallybook::calc {

namespace {

using Tokens = std::span<const DateToken>;

bool isKind(Tokens tokens, std::size_t at, DateTokenKind kind) {
    return at < tokens.size() && tokens[at].kind == kind;
}

bool isShortNumber(Tokens tokens, std::size_t at) {
    return isKind(tokens, at, DateTokenKind::Number) && tokens[at].digits <= 2;
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
    for (; count < parts.size() && isKind(tokens, at, DateTokenKind::TimeSeparator) && isShortNumber(tokens, at + 1);
         at += 2)
        parts[count++] = tokens[at + 1].value;
    const std::size_t half = isKind(tokens, at, DateTokenKind::Blank) ? at + 1 : at;
    const bool hasHalf = isKind(tokens, half, DateTokenKind::Half);
    if ((count == 1 && !hasHalf) || parts[0] > 23 || parts[1] > 59 || parts[2] > 59)
        return std::nullopt;
    const int hour = hasHalf ? hourOfDay(parts[0], tokens[half].value == 1) : parts[0];
    return TimeMatch{{hour, parts[1], parts[2]}, hasHalf ? half + 1 : at};
}

// What the date's tokens come to: its numbers in order, and the month when it is a word.
struct DatePieces {
    std::array<DateToken, 3> numbers{};
    std::size_t count = 0;
    int month = 0; // 0: no word
};

bool mayPart(const DateToken& token, bool hasMonthWord) {
    return token.kind == DateTokenKind::DateSeparator || token.kind == DateTokenKind::Blank ||
           (token.kind == DateTokenKind::Comma && hasMonthWord);
}

// Numbers and at most one month word, one separator between two of them; beside the word it may be missing.
std::optional<DatePieces> piecesOf(Tokens tokens) {
    bool hasMonthWord = false;
    for (const DateToken& token : tokens)
        hasMonthWord = hasMonthWord || token.kind == DateTokenKind::Month;
    DatePieces pieces;
    bool mayBegin = true; // a piece may stand here
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const DateToken& token = tokens[i];
        if (token.kind == DateTokenKind::Number) {
            const bool behindWord = i > 0 && tokens[i - 1].kind == DateTokenKind::Month;
            if ((!mayBegin && !behindWord) || pieces.count == pieces.numbers.size())
                return std::nullopt;
            pieces.numbers[pieces.count++] = token;
            mayBegin = false;
        } else if (token.kind == DateTokenKind::Month) {
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

bool looksLikeYear(const DateToken& number) {
    return number.digits > 2 || number.value > 31;
}

int yearOf(const DateToken& number, const Regional& regional) {
    if (number.digits > 2)
        return number.value;
    const int year = regional.twoDigitYearMax / 100 * 100 + number.value;
    return year > regional.twoDigitYearMax ? year - 100 : year;
}

std::optional<Date> real(const Date& date) {
    return isRealDate(date) ? std::optional(date) : std::nullopt;
}

// Days and months have two digits at most; a longer number is never one.
int shortValue(const DateToken& number) {
    return number.digits <= 2 ? number.value : 0;
}

std::optional<Date> threeNumbers(const std::array<DateToken, 3>& numbers, const Regional& regional) {
    const DateToken& first = numbers[0];
    const DateToken& second = numbers[1];
    const DateToken& third = numbers[2];
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

std::optional<Date> twoNumbers(const DateToken& first, const DateToken& second, const Regional& regional,
                               int thisYear) {
    const bool dayFirst = regional.dateOrder == platform::DateOrder::DMY;
    const DateToken& month = dayFirst ? second : first;
    const DateToken& day = dayFirst ? first : second;
    if (const auto date = real({thisYear, shortValue(month), shortValue(day)}))
        return date;
    if (const auto date = real({thisYear, shortValue(day), shortValue(month)}))
        return date;
    if (looksLikeYear(first))
        return real({yearOf(first, regional), shortValue(second), 1});
    return looksLikeYear(second) ? real({yearOf(second, regional), shortValue(first), 1}) : std::nullopt;
}

std::optional<Date> monthAndNumbers(const DatePieces& pieces, const Regional& regional, int thisYear) {
    const DateToken& first = pieces.numbers[0];
    const DateToken& second = pieces.numbers[1];
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
        if (tokens[time->length].kind == DateTokenKind::Blank)
            return {tokens.subspan(time->length + 1), time->time};
    }
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (tokens[i - 1].kind != DateTokenKind::Blank)
            continue;
        const auto time = matchTime(tokens.subspan(i));
        if (time && i + time->length == tokens.size())
            return {tokens.first(i - 1), time->time};
    }
    return {tokens, {}};
}

// A date, a time or both; at least one of them stood in the text.
struct Moment {
    std::optional<Date> date;
    TimeOfDay time;
};

std::optional<Moment> momentOf(std::string_view text, const Regional& regional, int thisYear) {
    const auto tokens = dateTokens(text, regional);
    if (!tokens || tokens->empty())
        return std::nullopt;
    const Split split = splitTime(*tokens);
    if (split.date.empty())
        return Moment{std::nullopt, split.time};
    const auto date = dateOfTokens(split.date, regional, thisYear);
    return date ? std::optional(Moment{date, split.time}) : std::nullopt;
}

} // namespace

std::optional<double> readDate(std::string_view text, const Regional& regional, int thisYear) {
    const auto moment = momentOf(text, regional, thisYear);
    return moment ? std::optional(serialOf(moment->date.value_or(Date{}), moment->time)) : std::nullopt;
}

std::optional<Date> readDay(std::string_view text, const Regional& regional, int thisYear) {
    const auto moment = momentOf(text, regional, thisYear);
    return moment ? moment->date : std::nullopt;
}

bool isDate(std::string_view text, const Regional& regional, int thisYear) {
    return readDate(text, regional, thisYear).has_value();
}

} // namespace tallybook::calc
