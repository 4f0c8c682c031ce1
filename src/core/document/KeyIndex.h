// The records of another database by their join key.
#pragma once

#include "core/model/ExternalTables.h"
#include "core/platform/Regional.h"

#include <cstdint>
#include <optional>
#include <string>
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
    // `slot` has the records and the field of the keys; the records must outlive the index.
    KeyIndex(const model::ExternalSlot& slot, std::uint8_t keyType, const platform::Regional& regional);

    // The record with the key that a cell holds.
    std::optional<std::uint32_t> find(const model::TextColumn& cells, std::uint32_t row);

private:
    // How keys are compared. A text that is a whole number in its usual form counts as the number, so that it is
    // found without being made.
    enum class Compare : std::uint8_t { Nothing, Texts, FilledTexts, Numbers };
    struct Key {
        std::uint64_t hash = 0;
        bool isText = false; // otherwise the hash is all of it
        std::string_view text;
    };
    struct Entry {
        std::uint64_t hash = 0;
        std::uint32_t record = kFree;
    };
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    static Compare compareOf(std::uint8_t keyType);
    std::optional<Key> keyOf(const model::TextColumn& column, std::uint32_t row, std::string& scratch);
    std::optional<std::uint64_t> numberOf(const model::TextColumn& column, const model::StoredCell& cell,
                                          std::string& scratch) const;
    Entry& entryFor(const Key& key);
    bool isSame(const Entry& entry, const Key& key);

    const model::TextColumn* m_keys;
    const platform::Regional& m_regional;
    Compare m_compare;
    std::vector<Entry> m_entries; // their number is a power of 2, more than half of them free
    std::string m_scratch;
    std::string m_other; // of the text that is compared with
};

} // namespace tallybook::document
