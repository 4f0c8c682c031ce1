#include "ExpressionProbe.h"

#include "core/calc/expressions/ExpressionEngine.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tallybook::fuzz {

namespace {

using platform::ByteSpan;

const std::vector<std::string>& fieldNames() {
    static const std::vector<std::string> kNames = [] {
        std::vector<std::string> names = {"", "Price", "Unit Price", "a]b", "Cost (net)", "Today", "If", "Day"};
        names.resize(calc::kFieldEntries);
        return names;
    }();
    return kNames;
}

std::string_view asText(ByteSpan input) {
    return {reinterpret_cast<const char*>(input.data()), input.size()};
}

// Takes the input apart; behind its end everything is 0.
class Bytes {
public:
    explicit Bytes(ByteSpan input) : m_input(input) {}

    std::uint8_t byte() { return m_place < m_input.size() ? m_input[m_place++] : std::uint8_t{0}; }
    std::uint32_t word() {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i)
            value = value << 8 | byte();
        return value;
    }
    std::string text(std::size_t most) {
        const std::size_t length = std::min<std::size_t>(byte() % (most + 1), m_input.size() - m_place);
        const std::string_view taken = asText(m_input.subspan(m_place, length));
        m_place += length;
        return std::string(taken);
    }
    bool atEnd() const { return m_place >= m_input.size(); }

private:
    ByteSpan m_input;
    std::size_t m_place = 0;
};

bool hasText(calc::Token code) {
    namespace token = calc::token;
    return code == token::kNumber || code == token::kText || code == token::kColour || code == token::kFunction ||
           code == token::kOperator;
}

} // namespace

std::string probeCompile(ByteSpan input) {
    const std::string_view text = asText(input);
    calc::TokenArray tokens{};
    calc::TokenTextArray texts;
    calc::CompileError error;
    if (calc::Compile(text, fieldNames(), tokens, texts, error) < 0)
        return error.text.empty() || error.position > text.size() ? "an error without reason or place" : "";
    const std::string shown = calc::displayText(tokens, texts, fieldNames());
    calc::TokenArray again{};
    calc::TokenTextArray textsAgain;
    if (calc::Compile(shown, fieldNames(), again, textsAgain, error) < 0)
        return "what is shown does not compile: " + shown;
    return again == tokens && textsAgain == texts ? "" : "what is shown compiles to something else: " + shown;
}

std::string probeEvaluate(ByteSpan input) {
    constexpr std::size_t kLongestText = 11;
    Bytes in(input);
    const std::uint8_t resultType = in.byte();
    const std::uint8_t decimals = in.byte();
    const std::size_t count = in.byte() % (calc::TokenArray{}.size() + 1);
    calc::TokenArray tokens{};
    calc::TokenTextArray texts;
    for (std::size_t i = 0; i < count; ++i) {
        tokens[i] = in.byte();
        if (hasText(tokens[i]))
            texts[i] = in.text(kLongestText);
    }
    const auto record = static_cast<std::int32_t>(in.word());
    std::vector<std::string> fieldTexts(2 * calc::kFieldEntries);
    calc::FieldKinds kinds;
    calc::FieldValueTable values{};
    for (std::size_t slot = 1; slot < calc::kFieldEntries && !in.atEnd(); ++slot) {
        kinds.fieldTypes[slot] = in.byte();
        kinds.fieldResultTypes[slot] = in.byte();
        for (std::size_t place = 0; place < 2; ++place) {
            std::string& text = fieldTexts[2 * slot + place];
            const auto whole = static_cast<std::int32_t>(in.word());
            const auto single = std::bit_cast<float>(in.word());
            text = in.text(20);
            values[slot][place] = {whole, single, text};
        }
    }
    const platform::Regional regional;
    std::string result;
    std::uint8_t colour = 99;
    const bool done = calc::Evaluate(record, kinds, values, tokens, texts, resultType, decimals,
                                     {regional, {2003, 3, 5, 13, 5, 9}}, result, colour);
    if (colour > 4)
        return "a colour that does not exist";
    return !done && result.empty() ? "a failure without reason" : "";
}

} // namespace tallybook::fuzz
