// The records of another database by their join key.
#pragma once

#include "core/model/ExternalTables.h"
#include "core/platform/Regional.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::document {

// Finds the record that a scan from the first record on would find, by a hash of the key. What makes two keys equal
// depends on the type of the join's key:
//
//   1 (Text)         the texts are the same
//   2, 3, 20         both are numeric, and the same number
//   11 (Key)         the texts are the same and not empty
//
// No other type has a match.
class KeyIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    // `slot` has the records and the field of the keys; they and the settings must outlive the index.
    KeyIndex(const model::ExternalSlot& slot, std::uint8_t keyType, const platform::Regional& regional);

    // The record for each of the first cells of a column, or kNone.
    std::vector<std::uint32_t> find(const model::TextColumn& cells, std::uint32_t count);

private:
    enum class Compare : std::uint8_t { Nothing, Texts, FilledTexts, Numbers };

    // A text that is a whole number in its usual form counts as the number, so that columns of numbers are joined
    // without their texts. Numbers are the same when their hashes are, since hashing them loses nothing.
    struct Key {
        std::uint64_t hash = 0;
        bool isText = false;
        std::string_view text{};
    };
    struct Entry {
        std::uint64_t hash = 0;
        std::uint32_t record = kNone; // kNone: the entry is free
        bool isText = false;
    };

    static Compare compareOf(std::uint8_t keyType);
    template <class Use> void eachKey(const model::TextColumn& column, std::uint32_t count, Use&& use);
    std::optional<Key> keyOf(const model::TextColumn& column, std::uint32_t row, std::string& scratch) const;
    std::optional<std::uint64_t> numberOf(const model::TextColumn& column, const model::StoredCell& cell,
                                          std::string& scratch) const;
    std::size_t placeOf(const Key& key) const { return key.hash & (m_entries.size() - 1); }
    Entry& entryFor(const Key& key);
    bool isSame(const Entry& entry, const Key& key);

    const model::TextColumn* m_keys;
    const platform::Regional& m_regional;
    Compare m_compare;
    std::vector<Entry> m_entries; // their number is a power of 2, at least half of them are free
    std::string m_scratch;
};

} // namespace tallybook::document
