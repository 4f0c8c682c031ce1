// A folder of one's own for a while.
#pragma once

#include "adapters/FileHandle.h"

#include <filesystem>

namespace tallybook::adapters {

// Exists, with what is put into it, as long as the object does, and goes when a signal ends the program (see
// EndBySignal.h). One that a killed program left is removed a day later, when the next one is made. An empty path
// says that it could not be made.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
    FileHandle m_held; // says that its owner lives
};

} // namespace tallybook::adapters
