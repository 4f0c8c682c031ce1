#include "core/calc/cells/CellCoders.h"

#include "core/calc/values/DatePatterns.h"
#include "core/calc/values/Digits.h"
#include "core/calc/values/SingleText.h"

#include <bit>
#include <charconv>
#include <deque>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>
#include <unordered_map>

namespace tallybook::calc {

namespace {

using model::CellCoder;
using model::FieldType;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The whole number at the front of a text, as we write it: no zero ahead of other digits, at most 18 digits. The
// digits are taken off the text.
std::optional<std::uint64_t> takeWhole(std::string_view& text) {
    std::size_t count = 0;
    std::uint64_t value = 0;
    for (; count < text.size() && isDigit(text[count]) && count < 19; ++count)
        value = value * 10 + static_cast<std::uint64_t>(text[count] - '0');
    if (count == 0 || count > 18 || (text[0] == '0' && count > 1))
        return std::nullopt;
    text.remove_prefix(count);
    return value;
}

bool takeSign(std::string_view& text) {
    if (!text.starts_with('-'))
        return false;
    text.remove_prefix(1);
    return true;
}

class WholeCoder : public CellCoder {
public:
    std::optional<std::uint32_t> encode(std::string_view text) override {
        const bool negative = takeSign(text);
        const auto value = takeWhole(text);
        const std::uint64_t limit = std::numeric_limits<std::int32_t>::max() + std::uint64_t{negative};
        if (!value || !text.empty() || *value > limit || (negative && *value == 0))
            return std::nullopt;
        const auto word = static_cast<std::uint32_t>(*value);
        return negative ? 0u - word : word;
    }

    std::string_view text(std::uint32_t word, std::string& scratch) const override {
        return formWhole(static_cast<std::int32_t>(word), roomIn(scratch, kWholeRoom));
    }

    model::CellForm form() const override { return {.words = model::WordForm::Whole}; }
};

class DecimalCoder : public CellCoder {
public:
    DecimalCoder(int decimals, char point) : m_decimals(decimals), m_point(point) {}

    std::optional<std::uint32_t> encode(std::string_view text) override {
        const std::string_view whole = text;
        const bool negative = takeSign(text);
        auto scaled = takeWhole(text);
        if (!scaled || *scaled >= kLongestPart || !takePlaces(text, *scaled))
            return encodeAnyLength(whole);
        if (*scaled == 0)
            return negative ? std::nullopt : std::optional<std::uint32_t>(0);
        if (const auto word = decimalWord(negative, *scaled, m_decimals))
            return word;
        const std::uint32_t power = kPowersOfTen[m_decimals];
        if (*scaled % power == 0)
            return wholeWord(negative, *scaled / power);
        return hasNoDecimalWord(*scaled, m_decimals) ? std::nullopt : encodeAnyLength(whole);
    }

    std::string_view text(std::uint32_t word, std::string& scratch) const override {
        return formSingle(std::bit_cast<float>(word), m_decimals, m_point, roomIn(scratch, kSingleRoom));
    }

    model::CellForm form() const override { return {model::WordForm::Decimal, m_decimals}; }

private:
    static constexpr std::uint64_t kLongestPart = 1'000'000'000'000'000; // the places still fit behind it

    bool takePlaces(std::string_view text, std::uint64_t& scaled) const {
        if (m_decimals == 0)
            return text.empty();
        if (text.size() != static_cast<std::size_t>(m_decimals) + 1 || text[0] != m_point)
            return false;
        for (const char c : text.substr(1)) {
            if (!isDigit(c))
                return false;
            scaled = scaled * 10 + static_cast<std::uint64_t>(c - '0');
        }
        return true;
    }

    // Singles from 2^23 on are whole numbers and are shown with all their digits.
    static std::optional<std::uint32_t> wholeWord(bool negative, std::uint64_t whole) {
        const auto value = static_cast<float>(whole);
        if (static_cast<std::uint64_t>(value) != whole)
            return std::nullopt;
        return std::bit_cast<std::uint32_t>(negative ? -value : value);
    }

    std::optional<std::uint32_t> encodeAnyLength(std::string_view text) const {
        if (text.empty() || text.size() > kSingleRoom || !isDigit(text.back()))
            return std::nullopt;
        char plain[kSingleRoom];
        char* end = plain;
        for (const char c : text)
            *end++ = c == m_point ? '.' : c;
        float value = 0;
        const auto read = std::from_chars(plain, end, value, std::chars_format::fixed);
        if (read.ec != std::errc{} || read.ptr != end)
            return std::nullopt;
        char back[kSingleRoom];
        return formSingle(value, m_decimals, m_point, back) == text
                   ? std::optional(std::bit_cast<std::uint32_t>(value))
                   : std::nullopt;
    }

    int m_decimals;
    char m_point;
};

class DateCoder : public CellCoder {
public:
    explicit DateCoder(const platform::Regional& regional) : m_pattern(regional) {}

    std::optional<std::uint32_t> encode(std::string_view text) override {
        const auto date = m_pattern.read(text);
        return date ? std::optional(packDate(date->year, date->month, date->day)) : std::nullopt;
    }

    std::string_view text(std::uint32_t word, std::string& scratch) const override {
        const Date date{static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF),
                        static_cast<int>(word & 0xFF)};
        return isRealDate(date) ? m_pattern.text(date, scratch) : std::string_view{};
    }

    model::CellForm form() const override { return {.words = model::WordForm::Date}; }

private:
    DatePattern m_pattern;
};

class TimeCoder : public CellCoder {
public:
    explicit TimeCoder(const platform::Regional& regional) : m_pattern(regional) {}

    std::optional<std::uint32_t> encode(std::string_view text) override {
        const auto time = m_pattern.read(text);
        return time ? std::optional(packTime(time->hour, time->minute, time->second)) : std::nullopt;
    }

    std::string_view text(std::uint32_t word, std::string& scratch) const override {
        const TimeOfDay time{static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF),
                             static_cast<int>(word & 0xFF)};
        const bool real = time.hour < 24 && time.minute < 60 && time.second < 60;
        return real ? m_pattern.text(time, scratch) : std::string_view{};
    }

    model::CellForm form() const override { return {.words = model::WordForm::Time}; }

private:
    TimePattern m_pattern;
};

class ItemCoder : public CellCoder {
public:
    std::optional<std::uint32_t> encode(std::string_view text) override {
        if (const auto found = m_words.find(text); found != m_words.end())
            return found->second;
        if (m_items.size() == kMostItems || text.empty())
            return std::nullopt;
        const auto word = static_cast<std::uint32_t>(m_items.size());
        m_words.emplace(m_items.emplace_back(text), word);
        return word;
    }

    std::string_view text(std::uint32_t word, std::string&) const override {
        return word < m_items.size() ? std::string_view(m_items[word]) : std::string_view{};
    }

private:
    static constexpr std::size_t kMostItems = 4096;

    std::deque<std::string> m_items; // a deque, as texts and the words' keys look into its strings
    std::unordered_map<std::string_view, std::uint32_t> m_words;
};

std::unique_ptr<CellCoder> decimalCoderOrNone(int decimals, const platform::Regional& regional) {
    return decimals <= 3 ? makeDecimalCoder(decimals, regional) : nullptr;
}

// The coder for an expression's results. 11 and 12 are durations and 13 is a text, which have no usual form.
std::unique_ptr<CellCoder> coderForResult(int resultType, int decimals, const platform::Regional& regional) {
    if (resultType == 0)
        return decimalCoderOrNone(decimals, regional);
    if (resultType <= 3)
        return makeDateCoder(regional);
    if (resultType == 7)
        return makeTimeCoder(regional);
    return resultType <= 10 ? makeDecimalCoder(0, regional) : nullptr;
}

} // namespace

std::optional<std::uint32_t> decimalWord(bool negative, std::uint64_t magnitude, int decimals) {
    // Numbers of fewer units of the last place are further apart than singles, and both they and the power of ten
    // are exact singles, so that their quotient is the nearest single and its display is the text again.
    constexpr std::uint64_t kAlwaysReadsBack = 1u << 23;
    if (magnitude >= kAlwaysReadsBack)
        return std::nullopt;
    const float value = static_cast<float>(magnitude) / static_cast<float>(kPowersOfTen[decimals]);
    return std::bit_cast<std::uint32_t>(negative && magnitude != 0 ? -value : value);
}

// Singles from 2^23 on have no fraction. The shortest form of one with a fraction has nine significant digits at
// most, and what is shown of it has no more.
bool hasNoDecimalWord(std::uint64_t magnitude, int decimals) {
    constexpr std::uint64_t kFirstWithoutFraction = 1u << 23;
    const std::uint32_t power = kPowersOfTen[decimals];
    if (magnitude % power == 0)
        return false;
    if (magnitude / power >= kFirstWithoutFraction)
        return true;
    while (magnitude % 10 == 0)
        magnitude /= 10;
    return magnitude >= 1'000'000'000;
}

std::unique_ptr<CellCoder> makeWholeCoder() {
    return std::make_unique<WholeCoder>();
}

std::unique_ptr<CellCoder> makeDecimalCoder(int decimals, const platform::Regional& regional) {
    return std::make_unique<DecimalCoder>(decimals, regional.decimal);
}

std::unique_ptr<CellCoder> makeDateCoder(const platform::Regional& regional) {
    return std::make_unique<DateCoder>(regional);
}

std::unique_ptr<CellCoder> makeTimeCoder(const platform::Regional& regional) {
    return std::make_unique<TimeCoder>(regional);
}

std::unique_ptr<CellCoder> makeItemCoder() {
    return std::make_unique<ItemCoder>();
}

std::unique_ptr<CellCoder> coderForField(const model::DatabaseModel& db, int slot,
                                         const platform::Regional& regional) {
    if (slot == 0)
        return makeItemCoder(); // the categories, whatever type a file gives them
    const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    switch (field.Type) {
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::AutoIncremental:
    case FieldType::Key:
        return makeWholeCoder();
    case FieldType::Float:
        return decimalCoderOrNone(field.Decimals, regional);
    case FieldType::Date:
        return makeDateCoder(regional);
    case FieldType::Time:
        return makeTimeCoder(regional);
    case FieldType::List:
    case FieldType::RadioButton:
    case FieldType::ConditionalExpression:
    case FieldType::DBLookup:
        return makeItemCoder();
    case FieldType::DBJoin: // its key; keys seldom repeat
        return db.Externals.at(slot).KeyType == static_cast<std::uint8_t>(FieldType::Text) ? nullptr
                                                                                           : makeWholeCoder();
    case FieldType::Expression:
    case FieldType::AdvExpression:
        return coderForResult(db.Expressions.at(slot).ResultType, field.Decimals, regional);
    default:
        return nullptr;
    }
}

} // namespace tallybook::calc
