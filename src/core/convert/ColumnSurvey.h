// What the type of a column is that nobody has named: the narrowest that takes every value of it as it stands.
#pragma once

#include "core/convert/BridgeValues.h"
#include "core/model/FieldType.h"

#include <cstdint>
#include <string_view>

namespace tallybook::convert {

// In this order: Checkbox (by its words alone: a column of 1 and 0 is one of numbers), Integer, Long, Float, Date,
// Time, Text, Memo. Numbers with zeros ahead, with groups or with a plus stay texts, and so do those that a Float
// would show otherwise. A column without values is a Text.
class ColumnSurvey {
public:
    void add(std::string_view value, const BridgeValues& values);

    model::FieldType type() const;
    int decimals() const { return m_places; } // that its numbers show, at most 3

private:
    void addNumber(std::string_view value, const BridgeValues& values);

    // Types that no value has ruled out yet.
    bool m_checkbox = true;
    bool m_integer = true;
    bool m_long = true;
    bool m_float = true;
    bool m_date = true;
    bool m_time = true;
    bool m_text = true;
    bool m_hasValues = false;
    int m_places = 0;
    std::uint64_t m_largest = 0; // number, in thousandths, its sign left out
};

} // namespace tallybook::convert
