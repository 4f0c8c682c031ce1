// Settings that live in memory.
#pragma once

#include "core/platform/Settings.h"

#include <map>
#include <string>

namespace tallybook::test {

class MemorySettings : public platform::Settings {
public:
    std::optional<std::string> value(std::string_view section, std::string_view key) const override {
        const auto found = m_values.find({std::string(section), std::string(key)});
        return found == m_values.end() ? std::nullopt : std::optional(found->second);
    }
    void set(std::string_view section, std::string_view key, std::string_view value) override {
        m_values[{std::string(section), std::string(key)}] = value;
    }
    void removeSection(std::string_view section) override {
        std::erase_if(m_values, [&](const auto& entry) { return entry.first.first == section; });
    }
    platform::Status save() override { return {}; }

    std::size_t count() const { return m_values.size(); }

private:
    std::map<std::pair<std::string, std::string>, std::string> m_values;
};

} // namespace tallybook::test
