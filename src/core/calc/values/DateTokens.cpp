#include "core/calc/values/DateTokens.h"

#include "core/calc/values/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace tallybook::calc {

namespace {

using platform::Regional;

constexpr std::string_view kBlanks = " \t\r\n\v\f\xA0";
constexpr std::size_t kMostDigits = 4;
constexpr std::size_t kUsualTokens = 8; // a date and a time
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
    std::optional<std::vector<DateToken>> run() {
        m_tokens.reserve(kUsualTokens);
        while (!m_text.empty())
            if (!takeBlanks() && !takeNumber() && !takeSeparator() && !takeWord())
                return std::nullopt;
        if (!m_tokens.empty() && m_tokens.back().kind == DateTokenKind::Blank)
            m_tokens.pop_back();
        return std::move(m_tokens);
    }

private:
    struct Match {
        std::size_t length = 0;
        DateToken token{};
    };

    static bool isSeparator(DateTokenKind kind) {
        return kind == DateTokenKind::DateSeparator || kind == DateTokenKind::TimeSeparator ||
               kind == DateTokenKind::Comma;
    }

    bool takeBlanks() {
        const std::size_t count = std::min(m_text.find_first_not_of(kBlanks), m_text.size());
        if (count == 0)
            return false;
        m_text.remove_prefix(count);
        if (!m_tokens.empty() && !isSeparator(m_tokens.back().kind))
            m_tokens.push_back({.kind = DateTokenKind::Blank});
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
        m_tokens.push_back({DateTokenKind::Number, value, static_cast<int>(digits)});
        return true;
    }

    bool takeSeparator() {
        const char c = m_text[0];
        DateTokenKind kind = DateTokenKind::Comma;
        if (c == '/' || c == '-' || c == m_regional.dateSeparator)
            kind = DateTokenKind::DateSeparator;
        else if (c == ':' || c == '.')
            kind = DateTokenKind::TimeSeparator;
        else if (c != ',')
            return false;
        m_text.remove_prefix(1);
        if (!m_tokens.empty() && m_tokens.back().kind == DateTokenKind::Blank)
            m_tokens.pop_back();
        m_tokens.push_back({.kind = kind});
        return true;
    }

    // Takes the word when it stands here whole and is longer than the one found so far.
    void offer(Match& best, std::string_view word, const DateToken& token) const {
        const bool cut = word.size() < m_text.size() && isLetter(m_text[word.size()]);
        if (!cut && word.size() > best.length && beginsWith(m_text, word))
            best = {word.size(), token};
    }

    void offerShort(Match& best, std::string_view word, const DateToken& token) const {
        offer(best, word, token);
        if (!word.ends_with('.') && word.size() < m_text.size() && m_text[word.size()] == '.' &&
            beginsWith(m_text, word) && word.size() + 1 > best.length)
            best = {word.size() + 1, token};
    }

    bool takeWord() {
        Match best;
        for (std::size_t i = 0; i < kEnglishMonths.size(); ++i) {
            const DateToken token{.kind = DateTokenKind::Month, .value = static_cast<int>(i) + 1};
            for (const std::string_view name : {kEnglishMonths[i], std::string_view(m_regional.monthNames[i])})
                offer(best, name, token);
            offerShort(best, kEnglishMonths[i].substr(0, kShortMonth), token);
            if (!m_regional.monthAbbrevs[i].empty())
                offerShort(best, m_regional.monthAbbrevs[i], token);
        }
        for (const std::string_view word :
             {std::string_view("AM"), std::string_view("A"), std::string_view(m_regional.am)})
            offer(best, word, {.kind = DateTokenKind::Half, .value = 0});
        for (const std::string_view word :
             {std::string_view("PM"), std::string_view("P"), std::string_view(m_regional.pm)})
            offer(best, word, {.kind = DateTokenKind::Half, .value = 1});
        if (best.length == 0)
            return false;
        m_text.remove_prefix(best.length);
        m_tokens.push_back(best.token);
        return true;
    }

    std::string_view m_text;
    const Regional& m_regional;
    std::vector<DateToken> m_tokens;
};

} // namespace

std::optional<std::vector<DateToken>> dateTokens(std::string_view text, const Regional& regional) {
    return Tokenizer(text, regional).run();
}

} // namespace tallybook::calc
