#include "core/convert/ColumnSurvey.h"

#include "core/calc/values/SingleText.h"
#include "core/model/Limits.h"
#include "core/pdb/CellForms.h"

#include <algorithm>

namespace tallybook::convert {

namespace {

using model::FieldType;

// Singles tell all whole numbers up to here apart.
constexpr std::uint64_t kExactUnits = 1u << 23;

} // namespace

void ColumnSurvey::add(std::string_view value, const BridgeValues& values) {
    if (value.empty())
        return;
    m_hasValues = true;
    if (value.size() > model::kTextLength || value.find('\n') != std::string_view::npos)
        m_text = false;
    if (m_checkbox)
        m_checkbox = BridgeValues::isTruthWord(value);
    if (m_integer || m_long || m_float)
        addNumber(value, values);
    if (m_date)
        m_date = values.date(value).has_value();
    if (m_time)
        m_time = values.time(value).has_value();
}

void ColumnSurvey::addNumber(std::string_view value, const BridgeValues& values) {
    const auto number = values.number(value);
    const bool isNumber = number && number->isPlain && !(number->negative && number->magnitude == 0);
    const std::uint64_t most = isNumber && number->negative ? 1 : 0;
    const bool isWhole = isNumber && number->places == 0;
    m_integer = m_integer && isWhole && number->magnitude <= 32767 + most;
    m_long = m_long && isWhole && number->magnitude <= 2147483647 + most;
    m_float = m_float && isNumber && number->places <= pdb::kMostDecimals;
    if (!m_float)
        return;
    m_places = std::max(m_places, number->places);
    const auto toThousandths = calc::kPowersOfTen[pdb::kMostDecimals - number->places];
    m_largest = std::max(m_largest, std::min(number->magnitude, kExactUnits * 1000) * toThousandths);
}

FieldType ColumnSurvey::type() const {
    if (!m_hasValues)
        return FieldType::Text;
    const bool isExact = m_largest / calc::kPowersOfTen[pdb::kMostDecimals - m_places] < kExactUnits;
    if (m_checkbox)
        return FieldType::Checkbox;
    if (m_integer)
        return FieldType::Integer;
    if (m_long)
        return FieldType::Long;
    if (m_float && isExact)
        return FieldType::Float;
    if (m_date)
        return FieldType::Date;
    if (m_time)
        return FieldType::Time;
    return m_text ? FieldType::Text : FieldType::Memo;
}

} // namespace tallybook::convert
