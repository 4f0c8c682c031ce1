#include "core/shell/Version.h"

#include <algorithm>

namespace tallybook::shell {

// The build hands the project's own numbers in, so that they stand in one place.
VersionNumbers programVersion() {
    return {TALLYBOOK_MAJOR, TALLYBOOK_MINOR, TALLYBOOK_BUILD};
}

std::string versionText(const VersionNumbers& version) {
    std::string build = std::to_string(version.build);
    build.insert(0, 3 - std::min<std::size_t>(build.size(), 3), '0');
    return "Version " + std::to_string(version.major) + "." + std::to_string(version.minor) + " (" + build + ")";
}

} // namespace tallybook::shell
