// Expressions made from numbers: whatever can be written comes back from its display, and whatever a file may hold is
// taken without harm.
#include "core/calc/expressions/ExpressionEngine.h"
#include "core/calc/expressions/ExpressionWords.h"

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tallybook::calc {
namespace {

// Names of every sort: words, functions, constants, brackets of both kinds, quotes, beginnings of each other.
const std::vector<std::string>& fieldNames() {
    static const std::vector<std::string> kNames = [] {
        std::vector<std::string> names = {"",    "Price", "Unit Price", "Unit", "a]b",  "Cost (net)", "Today",
                                          "now", "PI",    "If",         "Prev", "it's", "9th",        "\xC9t\xE9",
                                          "[x]", "{red}", "_",          "Day",  "a, b", "PrevIndex",  "1",
                                          "-",   "'",     "\\",         "(",    "\x01"};
        names.resize(kFieldEntries);
        return names;
    }();
    return kNames;
}
constexpr unsigned kNamed = 25; // slots with a name

// Puts together tokens that the grammar allows.
class AnyExpression {
public:
    explicit AnyExpression(std::uint32_t seed) : m_random(seed) {
        expression(6);
        std::copy(m_tokens.begin(), m_tokens.end(), tokens.begin());
        std::copy(m_texts.begin(), m_texts.end(), texts.begin());
    }

    TokenArray tokens{};
    TokenTextArray texts;

private:
    unsigned upTo(unsigned most) { return static_cast<unsigned>(m_random() % (most + 1)); }
    bool oneIn(unsigned chances) { return upTo(chances - 1) == 0; }
    void add(Token code, std::string text = {}) {
        m_tokens.push_back(code);
        m_texts.push_back(std::move(text));
    }
    void addCode(Token code, unsigned value) { add(code, std::string(1, static_cast<char>(value))); }

    // Room is kept for one operand, so that every part can end with one.
    std::size_t room() const { return model::kTokens - m_tokens.size() - m_owed; }

    void expression(int depth) {
        operand(depth);
        while (room() >= 2 && depth > 0 && !oneIn(3)) {
            binaryOperator();
            operand(depth - 1);
        }
    }

    void binaryOperator() {
        const unsigned choice = upTo(14);
        if (choice < 4)
            return add(token::kPlus + choice);
        const unsigned code = choice - 3; // 1..11
        addCode(token::kOperator, code == 11 ? 12 : code);
    }

    void operand(int depth) {
        if (depth > 0 && room() >= 2 && oneIn(5)) {
            prefix();
            return operand(depth - 1);
        }
        if (depth > 0 && room() >= 10 && oneIn(3))
            nested(depth);
        else
            value();
        if (room() >= 1 && oneIn(9))
            colour();
    }

    void prefix() {
        switch (upTo(2)) {
        case 0:
            return add(token::kMinus);
        case 1:
            return addCode(token::kOperator, 11);
        default:
            return colour();
        }
    }

    void colour() {
        const unsigned code = upTo(4);
        if (code == 0)
            add(token::kColour);
        else
            addCode(token::kColour, code);
    }

    void nested(int depth) {
        const unsigned function = upTo(17);
        ++m_owed;
        if (function == 0) {
            add(token::kOpen);
            expression(depth - 1);
        } else {
            addCode(token::kFunction, function);
            const auto& word = words::kFunctions[function - 1];
            const int most = std::min(word.most, word.fewest + 1);
            const int count = word.fewest + static_cast<int>(upTo(static_cast<unsigned>(most - word.fewest)));
            m_owed += 2 * static_cast<std::size_t>(count - 1); // a comma and a value each
            expression(depth - 1);
            for (int i = 1; i < count; ++i) {
                m_owed -= 2;
                add(token::kComma);
                expression(depth - 1);
            }
        }
        --m_owed;
        add(token::kClose);
    }

    void value() {
        switch (upTo(8)) {
        case 0:
            return add(token::kToday);
        case 1:
            return add(token::kNow);
        case 2:
            return add(token::kPrevIndex);
        case 3:
            return add(token::kNumber, std::to_string(upTo(99999)));
        case 4:
            return add(token::kNumber, '.' + std::to_string(upTo(99999)));
        case 5:
            return add(token::kText, text());
        case 6:
            return add(token::kPreviousRecord + 1 + upTo(kNamed - 1));
        default:
            return add(1 + upTo(kNamed - 1));
        }
    }

    std::string text() {
        std::string made;
        for (unsigned length = upTo(10); length > 0; --length)
            made += oneIn(3) ? "'\\"[upTo(1)] : static_cast<char>(1 + upTo(254));
        return made;
    }

    std::mt19937 m_random;
    std::vector<Token> m_tokens;
    std::vector<std::string> m_texts;
    std::size_t m_owed = 0;
};

TEST(AnyExpression, comesBackFromItsDisplay) {
    std::size_t longest = 0;
    for (std::uint32_t seed = 0; seed < 6000; ++seed) {
        const AnyExpression any(seed);
        const std::string shown = displayText(any.tokens, any.texts, fieldNames());
        TokenArray tokens{};
        TokenTextArray texts;
        CompileError error;
        ASSERT_EQ(Compile(shown, fieldNames(), tokens, texts, error), 0) << seed << ": " << shown << "\n"
                                                                         << error.position << ": " << error.text;
        ASSERT_EQ(tokens, any.tokens) << seed << ": " << shown;
        ASSERT_EQ(texts, any.texts) << seed << ": " << shown;
        const auto end = std::find(tokens.begin(), tokens.end(), token::kEnd);
        longest = std::max(longest, static_cast<std::size_t>(end - tokens.begin()));
    }
    EXPECT_GE(longest, 40u); // the property has seen large ones
}

// Any kinds of fields and any values, the odd ones often.
class AnyRecord {
public:
    explicit AnyRecord(std::mt19937& random) {
        static constexpr std::int32_t kLongs[] = {0, 1, -1, 2147483647, -2147483647 - 1, 131269386, 86399, 983040};
        static constexpr float kSingles[] = {0, 1, -1, 0.1F, 1e38F, -1e-40F, 16777216, 123456.78F};
        static constexpr std::string_view kTexts[] = {"",           "True", "5",      "3/5/2003",
                                                      "1:02:03 PM", "abc",  "-1e300", " "};
        for (std::size_t slot = 0; slot < kFieldEntries; ++slot) {
            kinds.fieldTypes[slot] = static_cast<std::uint8_t>(random() % 25);
            kinds.fieldResultTypes[slot] = static_cast<std::uint8_t>(random() % 15);
            for (FieldValues& value : values[slot]) {
                value = {kLongs[random() % 8], kSingles[random() % 8], kTexts[random() % 8]};
                if (random() % 8 == 0)
                    value.longValue = static_cast<std::int32_t>(random());
                if (random() % 8 == 0)
                    value.singleValue = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
            }
        }
    }

    FieldKinds kinds;
    FieldValueTable values;
};

void evaluateSafely(const TokenArray& tokens, const TokenTextArray& texts, std::mt19937& random) {
    const platform::Regional regional;
    const AnyRecord record(random);
    const auto number = static_cast<std::int32_t>(random() % 4 == 0 ? random() : random() % 3);
    std::string result = "before";
    std::uint8_t colour = 99;
    const bool done =
        Evaluate(number, record.kinds, record.values, tokens, texts, static_cast<std::uint8_t>(random() % 15),
                 static_cast<std::uint8_t>(random() % 5), {regional, {2003, 3, 5, 13, 5, 9}}, result, colour);
    ASSERT_LT(colour, 5);
    if (!done) {
        ASSERT_EQ(colour, 0);
        ASSERT_NE(result, "");
    }
    ASSERT_NE(result, "before");
}

TEST(AnyExpression, hasAValueOrAReasonForAnyRecord) {
    std::mt19937 random(31);
    for (std::uint32_t seed = 0; seed < 6000; ++seed) {
        const AnyExpression any(seed);
        ASSERT_NO_FATAL_FAILURE(evaluateSafely(any.tokens, any.texts, random)) << seed;
    }
}

TEST(AnyTokens, haveAValueOrAReason) {
    std::mt19937 random(37);
    for (int i = 0; i < 8000; ++i) {
        TokenArray tokens{};
        TokenTextArray texts;
        const std::size_t count = random() % 49;
        for (std::size_t place = 0; place < count; ++place) {
            tokens[place] =
                random() % 3 == 0 ? static_cast<Token>(random() % 256) : 84 + static_cast<Token>(random() % 16);
            if (random() % 20 == 0)
                tokens[place] = static_cast<Token>(random());
            for (auto length = random() % 12; length > 0; --length)
                texts[place] += static_cast<char>(random() % 3 == 0 ? random() : random() % 18);
        }
        ASSERT_NO_FATAL_FAILURE(evaluateSafely(tokens, texts, random)) << i;
    }
}

// A token taken out or put in makes a text that compiles or does not, but never one that shows something else.
TEST(AnyExpressionText, compilesToWhatItShowsOrNotAtAll) {
    std::mt19937 random(41);
    for (std::uint32_t seed = 0; seed < 6000; ++seed) {
        const AnyExpression any(seed);
        std::string text = displayText(any.tokens, any.texts, fieldNames());
        for (int change = 0; change < 3 && !text.empty(); ++change) {
            const std::size_t place = random() % text.size();
            if (random() % 2 == 0)
                text.erase(place, 1 + random() % 3);
            else
                text.insert(place, 1, text[random() % text.size()]);
        }
        TokenArray tokens{};
        TokenTextArray texts;
        CompileError error;
        if (Compile(text, fieldNames(), tokens, texts, error) < 0) {
            ASSERT_LE(error.position, text.size()) << text;
            ASSERT_NE(error.text, "") << text;
            continue;
        }
        TokenArray again{};
        TokenTextArray textsAgain;
        const std::string shown = displayText(tokens, texts, fieldNames());
        ASSERT_EQ(Compile(shown, fieldNames(), again, textsAgain, error), 0) << text << "\n" << shown;
        ASSERT_EQ(tokens, again) << text;
        ASSERT_EQ(texts, textsAgain) << text;
    }
}

} // namespace
} // namespace tallybook::calc
