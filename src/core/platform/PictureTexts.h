// The program's own messages about pictures; see OwnTexts.h.
#pragma once

#include <string>
#include <string_view>

namespace tallybook::platform::texts {

inline constexpr std::string_view kNoPicture = "There is no picture that could be read.";
inline std::string cannotStart(std::string_view program) {
    return "The program \"" + std::string(program) + "\" could not be started.";
}

} // namespace tallybook::platform::texts
