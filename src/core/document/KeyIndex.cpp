#include "core/document/KeyIndex.h"

#include "core/calc/Numbers.h"
#include "core/model/FieldType.h"

#include <bit>
#include <charconv>
#include <functional>

namespace tallybook::document {

namespace {

using model::CellForm;
using model::FieldType;
using model::StoredCell;
using model::TextColumn;
using model::WordForm;

const TextColumn& keyColumn(const model::ExternalSlot& slot) {
    static const TextColumn kNone;
    const bool known = slot.records && slot.keyField > 0 && slot.keyField < model::MaxFieldSlots;
    return known ? slot.records->fields[static_cast<std::size_t>(slot.keyField)] : kNone;
}

WordForm wordsOf(const TextColumn& column) {
    return column.coder() == nullptr ? WordForm::Other : column.coder()->form().words;
}

// Neighbouring numbers are spread over the table.
std::uint64_t mixed(std::uint64_t bits) {
    bits ^= bits >> 32;
    bits *= 0x9E3779B97F4A7C15;
    return bits ^ bits >> 29;
}

// The whole number whose usual text this is.
std::optional<std::int32_t> usualWhole(std::string_view text) {
    std::int32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, value);
    const bool leadingZero = text.starts_with("0") ? text.size() > 1 : text.starts_with("-0");
    if (error != std::errc{} || read != end || leadingZero)
        return std::nullopt;
    return value;
}

std::uint64_t bitsOf(std::int32_t whole) {
    return static_cast<std::uint32_t>(whole);
}

} // namespace

KeyIndex::Compare KeyIndex::compareOf(std::uint8_t keyType) {
    switch (static_cast<FieldType>(keyType)) {
    case FieldType::Text:
        return Compare::Texts;
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::AutoIncremental:
        return Compare::Numbers;
    case FieldType::Key:
        return Compare::FilledTexts;
    default:
        return Compare::Nothing;
    }
}

KeyIndex::KeyIndex(const model::ExternalSlot& slot, std::uint8_t keyType, const platform::Regional& regional)
    : m_keys(&keyColumn(slot)), m_regional(regional), m_compare(compareOf(keyType)) {
    m_entries.resize(std::bit_ceil(std::size_t{slot.rows()} * 2 + 2));
    for (std::uint32_t record = 0; record < slot.rows(); ++record) {
        const auto key = keyOf(*m_keys, record, m_other);
        if (!key)
            continue;
        Entry& entry = entryFor(*key);
        if (entry.record == kFree) // the first record of a key is the one that counts
            entry = {key->hash, record};
    }
}

std::optional<std::uint32_t> KeyIndex::find(const TextColumn& cells, std::uint32_t row) {
    const auto key = keyOf(cells, row, m_other);
    if (!key)
        return std::nullopt;
    const Entry& entry = entryFor(*key);
    return entry.record == kFree ? std::nullopt : std::optional(entry.record);
}

// Nothing for a cell that has no match whatever there is.
std::optional<KeyIndex::Key> KeyIndex::keyOf(const TextColumn& column, std::uint32_t row, std::string& scratch) {
    const StoredCell cell = column.stored(row);
    if (m_compare == Compare::Nothing || (m_compare == Compare::FilledTexts && cell.kind == StoredCell::Kind::Empty))
        return std::nullopt;
    if (m_compare == Compare::Numbers) {
        const auto number = numberOf(column, cell, scratch);
        return number ? std::optional(Key{mixed(*number), false, {}}) : std::nullopt;
    }
    if (cell.kind == StoredCell::Kind::Word && wordsOf(column) == WordForm::Whole)
        return Key{mixed(cell.word), false, {}};
    const std::string_view text = column.text(row, scratch);
    if (const auto whole = usualWhole(text))
        return Key{mixed(bitsOf(*whole)), false, {}};
    return Key{mixed(std::hash<std::string_view>{}(text)), true, text};
}

// The bits of the number of a cell; minus zero is zero.
std::optional<std::uint64_t> KeyIndex::numberOf(const TextColumn& column, const StoredCell& cell,
                                                std::string& scratch) const {
    if (cell.kind == StoredCell::Kind::Empty)
        return std::nullopt;
    std::optional<double> number;
    if (cell.kind == StoredCell::Kind::Word && wordsOf(column) == WordForm::Whole)
        number = static_cast<std::int32_t>(cell.word);
    else if (cell.kind == StoredCell::Kind::Word)
        number = calc::parseNumber(column.coder()->text(cell.word, scratch), m_regional);
    else
        number = calc::parseNumber(cell.text, m_regional);
    return number ? std::optional(std::bit_cast<std::uint64_t>(*number + 0.0)) : std::nullopt;
}

// The key's entry, or the free one that it would take.
KeyIndex::Entry& KeyIndex::entryFor(const Key& key) {
    const std::size_t mask = m_entries.size() - 1;
    std::size_t place = key.hash & mask;
    while (m_entries[place].record != kFree && !isSame(m_entries[place], key))
        place = (place + 1) & mask;
    return m_entries[place];
}

// Numbers are the same when their hashes are, as mixing loses nothing. Texts with the same hash are compared.
bool KeyIndex::isSame(const Entry& entry, const Key& key) {
    if (entry.hash != key.hash)
        return false;
    if (m_compare == Compare::Numbers)
        return true;
    const auto other = keyOf(*m_keys, entry.record, m_scratch);
    return other && other->isText == key.isText && other->text == key.text;
}

} // namespace tallybook::document
