// A table for measuring, as large as asked for.
#include "SampleBuilder.h"
#include "Samples.h"

#include <array>
#include <string>

namespace tallybook::samples {

namespace {

using model::FieldType;

constexpr std::array<FieldType, 20> kPattern = {
    FieldType::Text,  FieldType::Text, FieldType::Integer,     FieldType::Text, FieldType::Long,
    FieldType::Float, FieldType::Date, FieldType::Text,        FieldType::List, FieldType::Checkbox,
    FieldType::Text,  FieldType::Time, FieldType::Integer,     FieldType::Text, FieldType::Long,
    FieldType::Float, FieldType::Date, FieldType::RadioButton, FieldType::Text, FieldType::Memo};

constexpr std::array<const char*, 24> kWords = {"amber",  "birch",   "cedar",   "delta",   "ember",   "fjord",
                                                "glade",  "harbour", "island",  "juniper", "kestrel", "lagoon",
                                                "meadow", "nettle",  "orchard", "prairie", "quarry",  "ridge",
                                                "summit", "thicket", "upland",  "valley",  "willow",  "zephyr"};

// Numbers that look random and are the same everywhere: the standard's distributions differ by library.
class Numbers {
public:
    // From 0 to below the limit.
    std::uint32_t next(std::uint32_t limit) {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return static_cast<std::uint32_t>(m_state >> 32) % limit;
    }

private:
    std::uint64_t m_state = 0x9E3779B97F4A7C15;
};

const char* word(Numbers& numbers) {
    return kWords[numbers.next(static_cast<std::uint32_t>(kWords.size()))];
}

std::string padded(std::uint32_t number, std::size_t digits) {
    const std::string text = std::to_string(number);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

std::string words(Numbers& numbers, int count) {
    std::string text = word(numbers);
    while (--count > 0) {
        text += ' ';
        text += word(numbers);
    }
    return text;
}

std::string dateText(Numbers& numbers) {
    return std::to_string(numbers.next(12) + 1) + '/' + std::to_string(numbers.next(28) + 1) + '/' +
           std::to_string(1980 + numbers.next(40));
}

std::string timeText(Numbers& numbers) {
    return std::to_string(numbers.next(12) + 1) + ':' + padded(numbers.next(60), 2) + ':' +
           padded(numbers.next(60), 2) + (numbers.next(2) == 0 ? " AM" : " PM");
}

// Text of a cell that is neither an item nor a check box.
std::string cellText(FieldType type, Numbers& numbers) {
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
    case FieldType::Memo:
        return words(numbers, 12) + '\n' + words(numbers, 12);
    default:
        return words(numbers, 1 + static_cast<int>(numbers.next(3)));
    }
}

void addFields(SampleBuilder& sample, int count) {
    for (int slot = 1; slot <= count; ++slot) {
        const FieldType type = kPattern[static_cast<std::size_t>(slot - 1) % kPattern.size()];
        sample.addField(type, std::string(model::fieldTypeName(type)) + ' ' + std::to_string(slot));
        if (type == FieldType::Float)
            sample.field(slot).Decimals = 2;
        if (type == FieldType::List || type == FieldType::RadioButton)
            sample.addItems(slot, {"first", "second", "third", "fourth", "fifth", "sixth", "seventh", "eighth"});
    }
}

void fillCell(SampleBuilder& sample, int slot, Numbers& numbers) {
    const FieldType type = sample.field(slot).Type;
    const auto& items = sample.database().Lists.at(slot).Items;
    if (type == FieldType::Checkbox)
        sample.check(slot, numbers.next(2) == 0);
    else if (!items.empty())
        sample.setItem(slot, items[numbers.next(static_cast<std::uint32_t>(items.size()))]);
    else if (type != FieldType::Memo || numbers.next(10) == 0)
        sample.set(slot, cellText(type, numbers));
}

} // namespace

platform::Bytes large(const LargeTable& table) {
    SampleBuilder sample("MS2_Large");
    sample.setCategories({"North", "East", "South", "West"});
    addFields(sample, table.fields);
    const std::array<const char*, 5> categories = {"", "North", "East", "South", "West"};
    Numbers numbers;
    for (int record = 0; record < table.records; ++record) {
        sample.addRecord(categories[numbers.next(5)]);
        for (int slot = 1; slot <= table.fields; ++slot)
            if (numbers.next(100) < static_cast<std::uint32_t>(table.filled))
                fillCell(sample, slot, numbers);
    }
    return sample.build();
}

} // namespace tallybook::samples
