// A table for measuring, as large as asked for.
#include "LargeTexts.h"
#include "SampleBuilder.h"
#include "Samples.h"
#include "SteadyNumbers.h"

#include <array>
#include <optional>
#include <string>

namespace tallybook::samples {

namespace {

using model::FieldType;

using Pattern = std::array<FieldType, 20>;

constexpr Pattern kMixed = {FieldType::Text,    FieldType::Text,        FieldType::Integer, FieldType::Text,
                            FieldType::Long,    FieldType::Float,       FieldType::Date,    FieldType::Text,
                            FieldType::List,    FieldType::Checkbox,    FieldType::Text,    FieldType::Time,
                            FieldType::Integer, FieldType::Text,        FieldType::Long,    FieldType::Float,
                            FieldType::Date,    FieldType::RadioButton, FieldType::Text,    FieldType::Memo};

constexpr Pattern kNumbers = {FieldType::Text,    FieldType::Long,    FieldType::Integer, FieldType::Text,
                              FieldType::Long,    FieldType::Float,   FieldType::Date,    FieldType::Text,
                              FieldType::List,    FieldType::Integer, FieldType::Text,    FieldType::Time,
                              FieldType::Integer, FieldType::Float,   FieldType::Long,    FieldType::Float,
                              FieldType::Date,    FieldType::Integer, FieldType::Integer, FieldType::Float};

constexpr Pattern kTexts = {FieldType::Text,    FieldType::Text,     FieldType::Integer, FieldType::Text,
                            FieldType::Long,    FieldType::Float,    FieldType::Date,    FieldType::Text,
                            FieldType::List,    FieldType::Checkbox, FieldType::Text,    FieldType::Text,
                            FieldType::Integer, FieldType::Text,     FieldType::Text,    FieldType::Text,
                            FieldType::Text,    FieldType::Text,     FieldType::Memo,    FieldType::Memo};

constexpr std::array<const char*, 24> kWords = {"amber",  "birch",   "cedar",   "delta",   "ember",   "fjord",
                                                "glade",  "harbour", "island",  "juniper", "kestrel", "lagoon",
                                                "meadow", "nettle",  "orchard", "prairie", "quarry",  "ridge",
                                                "summit", "thicket", "upland",  "valley",  "willow",  "zephyr"};

const Pattern& patternOf(LargeKind kind) {
    switch (kind) {
    case LargeKind::Numbers:
        return kNumbers;
    case LargeKind::Texts:
        return kTexts;
    case LargeKind::Mixed:
        break;
    }
    return kMixed;
}

const char* word(SteadyNumbers& numbers) {
    return kWords[numbers.next(static_cast<std::uint32_t>(kWords.size()))];
}

std::string padded(std::uint32_t number, std::size_t digits) {
    const std::string text = std::to_string(number);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

std::string fewWords(SteadyNumbers& numbers, int count) {
    std::string text = word(numbers);
    while (--count > 0) {
        text += ' ';
        text += word(numbers);
    }
    return text;
}

// "k-20417": what an article or a customer is called in a table of numbers.
std::string code(SteadyNumbers& numbers) {
    std::string text(1, static_cast<char>('a' + numbers.next(26)));
    return text + '-' + padded(numbers.next(100000), 5);
}

std::string dateText(SteadyNumbers& numbers) {
    return std::to_string(numbers.next(12) + 1) + '/' + std::to_string(numbers.next(28) + 1) + '/' +
           std::to_string(1980 + numbers.next(40));
}

std::string timeText(SteadyNumbers& numbers) {
    return std::to_string(numbers.next(12) + 1) + ':' + padded(numbers.next(60), 2) + ':' +
           padded(numbers.next(60), 2) + (numbers.next(2) == 0 ? " AM" : " PM");
}

// A Text or a Memo.
std::string wordsOf(FieldType type, LargeKind kind, SteadyNumbers& numbers) {
    if (kind == LargeKind::Numbers)
        return code(numbers);
    if (type == FieldType::Memo)
        return fewWords(numbers, 12) + '\n' + fewWords(numbers, 12);
    return fewWords(numbers, 1 + static_cast<int>(numbers.next(3)));
}

// Text of a cell that is neither an item nor a check box.
std::string cellText(FieldType type, LargeKind kind, SteadyNumbers& numbers) {
    switch (type) {
    case FieldType::Integer:
        return std::to_string(static_cast<int>(numbers.next(60000)) - 30000);
    case FieldType::Long:
        return std::to_string(static_cast<std::int64_t>(numbers.next(2000000000)) - 1000000000);
    case FieldType::Float:
        return std::to_string(numbers.next(10000)) + '.' + padded(numbers.next(100), 2);
    case FieldType::Date:
        return dateText(numbers);
    case FieldType::Time:
        return timeText(numbers);
    default:
        return wordsOf(type, kind, numbers);
    }
}

// Fills a table's cells, the same way each time.
class Filler {
public:
    Filler(SampleBuilder& sample, const LargeTable& table) : m_sample(sample), m_table(table) {
        if (table.kind == LargeKind::Texts)
            m_texts.emplace(table.words, m_numbers);
    }

    void addFields() {
        const Pattern& pattern = patternOf(m_table.kind);
        for (int slot = 1; slot <= m_table.fields; ++slot) {
            const FieldType type = pattern[static_cast<std::size_t>(slot - 1) % pattern.size()];
            m_sample.addField(type, std::string(model::fieldTypeName(type)) + ' ' + std::to_string(slot));
            if (type == FieldType::Float)
                m_sample.field(slot).Decimals = 2;
            if (type == FieldType::List || type == FieldType::RadioButton)
                m_sample.addItems(slot,
                                  {"first", "second", "third", "fourth", "fifth", "sixth", "seventh", "eighth"});
        }
    }

    void addRecord() {
        constexpr std::array<const char*, 5> kCategories = {"", "North", "East", "South", "West"};
        m_sample.addRecord(kCategories[m_numbers.next(5)]);
        for (int slot = 1; slot <= m_table.fields; ++slot)
            if (m_numbers.next(100) < static_cast<std::uint32_t>(m_table.filled))
                fillCell(slot);
    }

private:
    void fillCell(int slot) {
        const FieldType type = m_sample.field(slot).Type;
        const auto& items = m_sample.database().Lists.at(slot).Items;
        if (type == FieldType::Checkbox)
            m_sample.check(slot, m_numbers.next(2) == 0);
        else if (!items.empty())
            m_sample.setItem(slot, items[m_numbers.next(static_cast<std::uint32_t>(items.size()))]);
        else if (m_texts && (type == FieldType::Text || type == FieldType::Memo))
            m_sample.set(slot, m_texts->text((slot - 1) % static_cast<int>(kTexts.size()) + 1));
        else if (type != FieldType::Memo || m_numbers.next(10) == 0)
            m_sample.set(slot, cellText(type, m_table.kind, m_numbers));
    }

    SampleBuilder& m_sample;
    const LargeTable& m_table;
    SteadyNumbers m_numbers;
    std::optional<LargeTexts> m_texts;
};

} // namespace

platform::Bytes large(const LargeTable& table) {
    SampleBuilder sample("MS2_Large");
    sample.setCategories({"North", "East", "South", "West"});
    Filler filler(sample, table);
    filler.addFields();
    for (int record = 0; record < table.records; ++record)
        filler.addRecord();
    return sample.build();
}

} // namespace tallybook::samples
