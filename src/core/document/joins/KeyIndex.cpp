#include "core/document/joins/KeyIndex.h"

#include "core/calc/values/Numbers.h"
#include "core/model/FieldType.h"

#include <array>
#include <bit>
#include <charconv>
#include <functional>

namespace tallybook::document {

namespace {

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

// Spreads neighbouring numbers over all bits, and loses nothing: each step can be undone.
std::uint64_t mixed(std::uint64_t bits) {
    bits ^= bits >> 33;
    bits *= 0xFF51AFD7ED558CCD;
    bits ^= bits >> 33;
    bits *= 0xC4CEB9FE1A85EC53;
    return bits ^ bits >> 33;
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
    eachKey(*m_keys, slot.rows(), [this](std::uint32_t record, const std::optional<Key>& key) {
        if (!key)
            return;
        Entry& entry = entryFor(*key);
        if (entry.record == kNone) // the first record of a key is the one that counts
            entry = {key->hash, record, key->isText};
    });
}

std::vector<std::uint32_t> KeyIndex::find(const TextColumn& cells, std::uint32_t count) {
    std::vector<std::uint32_t> records(count, kNone);
    eachKey(cells, count, [&](std::uint32_t row, const std::optional<Key>& key) {
        if (key)
            records[row] = entryFor(*key).record;
    });
    return records;
}

// Calls use(row, key) for each row in turn. Keys are made some rows ahead, and the memory of their entries is asked
// for then: entries lie anywhere, and waiting for each of them would cost more than all the rest.
template <class Use> void KeyIndex::eachKey(const TextColumn& column, std::uint32_t count, Use&& use) {
    constexpr std::uint32_t kAhead = 16;
    struct Made {
        std::optional<Key> key;
        std::string scratch;
    };
    std::array<Made, kAhead> ring;
    for (std::uint32_t row = 0; row < count + kAhead; ++row) {
        Made& made = ring[row % kAhead];
        if (row >= kAhead)
            use(row - kAhead, made.key);
        if (row >= count)
            continue;
        made.key = keyOf(column, row, made.scratch);
        if (made.key)
            __builtin_prefetch(&m_entries[placeOf(*made.key)]);
    }
}

// Nothing for a cell that has no match whatever there is.
std::optional<KeyIndex::Key> KeyIndex::keyOf(const TextColumn& column, std::uint32_t row,
                                             std::string& scratch) const {
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
    std::size_t place = placeOf(key);
    while (m_entries[place].record != kNone && !isSame(m_entries[place], key))
        place = (place + 1) & mask;
    return m_entries[place];
}

bool KeyIndex::isSame(const Entry& entry, const Key& key) {
    if (entry.hash != key.hash || entry.isText != key.isText)
        return false;
    return !key.isText || m_keys->text(entry.record, m_scratch) == key.text;
}

} // namespace tallybook::document
