#include "adapters/InstanceLock.h"

#include "adapters/SystemError.h"
#include "core/platform/AppFolders.h"

#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>

namespace tallybook::adapters {

platform::Result<std::optional<InstanceLock>> InstanceLock::take(const std::filesystem::path& folder) {
    const std::filesystem::path path = folder / (std::string(platform::kProgramFolder) + ".lock");
    FileHandle file(retried([&] {
        return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, S_IRUSR | S_IWUSR);
    }));
    if (!file.isOpen())
        return systemError("write", path, errno);
    if (retried([&] { return flock(file.get(), LOCK_EX | LOCK_NB); }) == 0)
        return std::optional<InstanceLock>(InstanceLock(std::move(file)));
    if (errno == EWOULDBLOCK)
        return std::optional<InstanceLock>();
    return systemError("lock", path, errno);
}

} // namespace tallybook::adapters
