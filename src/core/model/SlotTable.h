// A table by field slot that costs only what its filled slots need.
#pragma once

#include <map>

namespace tallybook::model {

template <class T> class SlotTable {
public:
    // The entry of a slot, made when it is not there.
    T& operator[](int slot) { return m_entries[slot]; }

    // The entry of a slot, or a default one when it is not there.
    const T& at(int slot) const {
        static const T kNone{};
        const auto found = m_entries.find(slot);
        return found == m_entries.end() ? kNone : found->second;
    }

    bool has(int slot) const { return m_entries.contains(slot); }
    void erase(int slot) { m_entries.erase(slot); }
    void clear() { m_entries.clear(); }

    bool operator==(const SlotTable&) const = default;

private:
    std::map<int, T> m_entries;
};

} // namespace tallybook::model
