// The real files of a POSIX system.
#pragma once

#include "core/platform/Files.h"

#include <chrono>

namespace tallybook::adapters {

// Every call goes straight to the system; interrupted ones are made again. Descriptors do not reach programs that
// this one starts.
class PosixFiles : public platform::Files {
public:
    explicit PosixFiles(std::chrono::milliseconds longestWait = kLongestWait) : m_longestWait(longestWait) {}

    platform::Result<platform::FileState> state(const std::filesystem::path& path) override;
    platform::Result<platform::Bytes> read(const std::filesystem::path& path) override;
    platform::Result<platform::Bytes> readPart(const std::filesystem::path& path, std::uint64_t offset,
                                               std::size_t count) override;
    platform::Bytes buffer(std::size_t size) const override;
    platform::Result<std::unique_ptr<platform::OutputFile>> create(const std::filesystem::path& path,
                                                                   const std::filesystem::path& like) override;
    platform::Status rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    platform::Status remove(const std::filesystem::path& path) override;
    // The trash of the desktop, in the user's data folder or on the file's volume.
    platform::Status moveToTrash(const std::filesystem::path& path) override;
    platform::Status makeFolder(const std::filesystem::path& path) override;
    platform::Status syncFolder(const std::filesystem::path& path) override;
    void sweepLeftOvers(const std::filesystem::path& folder) override;
    // Programs of ours on all computers that share the folder take part, where its disk can tell them of each other.
    platform::Result<std::unique_ptr<platform::FolderLock>> lockFolder(const std::filesystem::path& path) override;
    platform::Result<std::vector<std::filesystem::path>> list(const std::filesystem::path& folder) override;
    platform::Result<std::filesystem::path> resolve(const std::filesystem::path& path) override;

private:
    static constexpr std::chrono::seconds kLongestWait{20}; // for another program's save

    std::chrono::milliseconds m_longestWait;
};

} // namespace tallybook::adapters
