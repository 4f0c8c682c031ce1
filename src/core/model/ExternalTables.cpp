#include "core/model/ExternalTables.h"

#include <utility>

namespace tallybook::model {

std::string_view ExternalRecords::text(int slot, std::uint32_t record, std::string& scratch) const {
    if (slot < 0 || slot >= MaxFieldSlots)
        return {};
    return fields[static_cast<std::size_t>(slot)].text(record, scratch);
}

std::string_view ExternalSlot::ExtDisplay(std::uint32_t row, std::string& scratch) const {
    return records && displayField > 0 ? records->text(displayField, row, scratch) : std::string_view{};
}

std::string_view ExternalSlot::ExtKeys(std::uint32_t row, std::string& scratch) const {
    return records && keyField > 0 ? records->text(keyField, row, scratch) : std::string_view{};
}

ExternalCoder::ExternalCoder(std::shared_ptr<const ExternalRecords> records, int field)
    : m_records(std::move(records)), m_field(field) {}

std::optional<std::uint32_t> ExternalCoder::encode(std::string_view) {
    return std::nullopt;
}

std::string_view ExternalCoder::text(std::uint32_t word, std::string& scratch) const {
    return m_records->text(m_field, word, scratch);
}

} // namespace tallybook::model
