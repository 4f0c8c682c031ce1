// How the program names itself.
#pragma once

#include <string>
#include <string_view>

namespace tallybook::shell {

inline constexpr std::string_view kProgramName = "Tallybook Pocket Desktop";
inline constexpr std::string_view kAlreadyRunning = "Tallybook Pocket Desktop is already running";
inline constexpr std::string_view kNoHelp =
    "Unable to display Help Contents. There is no Help associated with this project.";

struct VersionNumbers {
    int major = 0;
    int minor = 0;
    int build = 0;
};

// The numbers that the program was built with.
VersionNumbers programVersion();

// The version as the splash and the about box show it: "Version 1.0 (001)", the build with three digits.
std::string versionText(const VersionNumbers& version);

} // namespace tallybook::shell
