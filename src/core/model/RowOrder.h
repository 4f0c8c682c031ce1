// Which stored row stands where. Rows are stored once and never move; adding, deleting and sorting only change
// this index.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace tallybook::model {

class RowOrder {
public:
    int count() const { return static_cast<int>(m_ids.size()); }

    // The id of the stored row at a position from 0.
    std::uint32_t id(int position) const { return m_ids[static_cast<std::size_t>(position)]; }

    // Rows 0..count-1 with ids of the same number; everything before is forgotten.
    void reset(int count) {
        m_ids.resize(static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < m_ids.size(); ++i)
            m_ids[i] = static_cast<std::uint32_t>(i);
        m_free.clear();
        m_next = static_cast<std::uint32_t>(count);
    }

    // A row at the end. Its id may have been used before: the caller empties what is stored under it.
    std::uint32_t append() {
        std::uint32_t id = m_next;
        if (m_free.empty()) {
            ++m_next;
        } else {
            id = m_free.back();
            m_free.pop_back();
        }
        m_ids.push_back(id);
        return id;
    }

    void remove(int position) {
        m_free.push_back(id(position));
        m_ids.erase(m_ids.begin() + position);
    }

    // Puts the row that stood at order[i] at position i. `order` is a permutation of 0..count-1.
    void permute(const std::vector<std::uint32_t>& order) {
        std::vector<std::uint32_t> ids(m_ids.size());
        for (std::size_t i = 0; i < ids.size(); ++i)
            ids[i] = m_ids[order[i]];
        m_ids = std::move(ids);
    }

private:
    std::vector<std::uint32_t> m_ids;
    std::vector<std::uint32_t> m_free; // ids of deleted rows, given out again
    std::uint32_t m_next = 0;
};

} // namespace tallybook::model
