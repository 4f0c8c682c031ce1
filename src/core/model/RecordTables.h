// What the text of a cell cannot hold, record by record. All three follow the rows of the grid by themselves:
// they are indexed by record (the grid's row less 2) and look up the stored row in the grid's order.
#pragma once

#include "core/model/Limits.h"
#include "core/model/RowOrder.h"
#include "core/model/TextColumn.h"
#include "core/model/WordColumn.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::model {

// The key of each record.
class RecordKeys {
public:
    explicit RecordKeys(const RowOrder& order) : m_order(order) {}

    std::int32_t operator[](int record) const {
        const std::uint32_t id = m_order.id(record);
        return id < m_keys.size() ? m_keys[id] : 0;
    }
    void set(int record, std::int32_t key) { setById(m_order.id(record), key); }
    void setById(std::uint32_t id, std::int32_t key) {
        if (id >= m_keys.size())
            m_keys.resize(id + 1);
        m_keys[id] = key;
    }
    void reserve(int records) { m_keys.reserve(static_cast<std::size_t>(records)); }
    void clear() { m_keys.clear(); }

private:
    const RowOrder& m_order;
    std::vector<std::int32_t> m_keys; // by row id
};

// Record by slot: the id of a list item or category (slot 0), the place of an image in the temporary copy, the
// handheld's id of an address, the key of a Key field. 0 is the same as nothing.
class CellLongTable {
public:
    explicit CellLongTable(const RowOrder& order) : m_order(order) {}

    std::int32_t get(int record, int slot) const {
        return static_cast<std::int32_t>(slotColumn(slot).get(m_order.id(record)).value_or(0));
    }
    void set(int record, int slot, std::int32_t value) { setById(m_order.id(record), slot, value); }
    void setById(std::uint32_t id, int slot, std::int32_t value) {
        WordColumn& column = slotColumn(slot);
        if (value == 0)
            column.erase(id);
        else
            column.set(id, static_cast<std::uint32_t>(value));
    }
    WordColumn& slotColumn(int slot) { return m_columns[static_cast<std::size_t>(slot)]; }
    const WordColumn& slotColumn(int slot) const { return m_columns[static_cast<std::size_t>(slot)]; }
    void clearById(std::uint32_t id) {
        for (WordColumn& column : m_columns)
            column.erase(id);
    }
    void clear() {
        for (WordColumn& column : m_columns)
            column.clear();
    }

private:
    const RowOrder& m_order;
    std::array<WordColumn, MaxFieldSlots> m_columns;
};

// Record by slot: the stored key of a DB Join, as text (a number as its decimal text). Empty is nothing.
class CellValTable {
public:
    explicit CellValTable(const RowOrder& order) : m_order(order) {}

    std::string_view get(int record, int slot, std::string& scratch) const {
        return slotColumn(slot).text(m_order.id(record), scratch);
    }
    void set(int record, int slot, std::string_view key) { slotColumn(slot).setText(m_order.id(record), key); }
    TextColumn& slotColumn(int slot) { return m_columns[static_cast<std::size_t>(slot)]; }
    const TextColumn& slotColumn(int slot) const { return m_columns[static_cast<std::size_t>(slot)]; }
    void clearById(std::uint32_t id) {
        for (TextColumn& column : m_columns)
            column.erase(id);
    }
    void clear() {
        for (TextColumn& column : m_columns)
            column.clear();
    }

private:
    const RowOrder& m_order;
    std::array<TextColumn, MaxFieldSlots> m_columns;
};

} // namespace tallybook::model
