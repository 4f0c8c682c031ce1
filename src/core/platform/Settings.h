// The user's settings: named texts in sections, each read with a default.
#pragma once

#include "core/platform/Result.h"

#include <optional>
#include <string>
#include <string_view>

namespace tallybook::platform {

// Values are UTF-8 and may hold any character but NUL. Sections and keys are the program's own names: not empty,
// on one line, a key without "=" and a blank or "[" in front. A section may be named as if below another,
// "Recent Files\File0"; that has no meaning of its own.
class Settings {
public:
    virtual ~Settings() = default;

    virtual std::optional<std::string> value(std::string_view section, std::string_view key) const = 0;

    // Changes are kept in memory until `save`.
    virtual void set(std::string_view section, std::string_view key, std::string_view value) = 0;
    virtual void removeSection(std::string_view section) = 0;

    // Stores what was changed since the last time, all of it or nothing. The error names the file.
    virtual Status save() = 0;

    std::string get(std::string_view section, std::string_view key, std::string_view preset) const {
        return value(section, key).value_or(std::string(preset));
    }
};

} // namespace tallybook::platform
