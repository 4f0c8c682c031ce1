// A folder of one's own for a while.
#pragma once

#include <filesystem>

namespace tallybook::adapters {

// Exists, with what is put into it, as long as the object does. An empty path says that it could not be made.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace tallybook::adapters
