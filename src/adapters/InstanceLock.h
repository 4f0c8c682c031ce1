// The lock that one running program holds, so that a second one ends at once.
#pragma once

#include "adapters/FileHandle.h"
#include "core/platform/Result.h"

#include <filesystem>
#include <optional>

namespace tallybook::adapters {

// Held while the object lives. The system lets go of it when the program ends, however it ends, so there are no
// stale locks; the empty file stays.
class InstanceLock {
public:
    // Takes the lock in an existing folder. Nothing when another program of the user holds it; an error when the
    // folder has no place for it, with a text that names the path.
    static platform::Result<std::optional<InstanceLock>> take(const std::filesystem::path& folder);

private:
    explicit InstanceLock(FileHandle file) : m_file(std::move(file)) {}

    FileHandle m_file;
};

} // namespace tallybook::adapters
