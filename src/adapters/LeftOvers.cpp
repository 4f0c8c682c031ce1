#include "adapters/LeftOvers.h"

#include "adapters/FileHandle.h"
#include "core/platform/WholeFile.h"

#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <vector>

namespace tallybook::adapters {

namespace {

using Path = std::filesystem::path;

constexpr std::time_t kDay = 24 * 60 * 60; // seconds

// Names in a folder that a rule holds for; none when it cannot be looked through.
template <class Rule> std::vector<Path> namesIn(const Path& folder, Rule rule) {
    std::error_code failed;
    std::vector<Path> found;
    std::filesystem::directory_iterator entry(folder, failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed))
        if (rule(entry->path().filename().native()))
            found.push_back(entry->path());
    return found;
}

// Opens what nobody will finish any more; nothing when somebody may. A link is never followed.
std::optional<FileHandle> openAbandoned(const Path& path, mode_t kind) {
    FileHandle file(
        retried([&] { return open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY); }));
    struct stat status {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0)
        return std::nullopt;
    const bool ours = (status.st_mode & S_IFMT) == kind && status.st_uid == geteuid();
    const bool old = status.st_mtim.tv_sec < std::time(nullptr) - kDaysOfLeftOvers * kDay;
    if (!ours || !old || retried([&] { return flock(file.get(), LOCK_EX | LOCK_NB); }) != 0)
        return std::nullopt;
    return file;
}

} // namespace

void sweepFiles(const Path& folder) {
    for (const Path& path : namesIn(folder, platform::isTemporaryName))
        if (openAbandoned(path, S_IFREG))
            (void)unlink(path.c_str());
}

void sweepTemporaryFolders(const Path& parent, std::string_view stem) {
    const auto isOurs = [&](const std::string& name) { return name.starts_with(stem); };
    for (const Path& path : namesIn(parent, isOurs))
        if (openAbandoned(path, S_IFDIR)) {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
}

void holdAsOwner(int descriptor) {
    (void)flock(descriptor, LOCK_EX | LOCK_NB);
}

} // namespace tallybook::adapters
