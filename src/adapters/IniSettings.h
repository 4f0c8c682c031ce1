// Settings in one text file of the user.
#pragma once

#include "core/platform/Files.h"
#include "core/platform/Settings.h"

#include <filesystem>
#include <map>
#include <string>

namespace tallybook::adapters {

inline constexpr std::string_view kSettingsFile = "settings.ini";

// UTF-8, lines "[section]" and "key=value". In a value "\\", "\n" and "\r" stand for a backslash, a line feed and a
// carriage return. A line that is none of these is passed over when reading, as is a file that cannot be read, so
// that damage costs settings and never the start of the program. Sections and keys are written in byte order.
class IniSettings : public platform::Settings {
public:
    // Reads the file; a missing one holds no settings. `files` outlives this object.
    IniSettings(platform::Files& files, std::filesystem::path file);

    std::optional<std::string> value(std::string_view section, std::string_view key) const override;
    void set(std::string_view section, std::string_view key, std::string_view value) override;
    void removeSection(std::string_view section) override;

    // Writes the file if anything changed, and makes its folder when that is missing.
    platform::Status save() override;

private:
    using Section = std::map<std::string, std::string, std::less<>>;

    void parse(std::string_view text);
    std::string print() const;

    platform::Files& m_files;
    std::filesystem::path m_file;
    std::map<std::string, Section, std::less<>> m_sections;
    bool m_changed = false;
};

} // namespace tallybook::adapters
