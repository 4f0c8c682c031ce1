// Files that live in memory, with one call that can be made to fail.
#pragma once

#include "core/platform/Files.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tallybook::test {

// Paths are absolute and compared as they stand; there are no links. A file's folder must exist.
class MemoryFiles : public platform::Files {
public:
    // Puts a file there, with the folders above it.
    void put(const std::filesystem::path& path, platform::Bytes bytes);
    void addFolder(const std::filesystem::path& path); // with the folders above it

    // Folders that left-overs were to be taken away from.
    const std::vector<std::filesystem::path>& swept() const { return m_swept; }
    // Files that were moved to the trash.
    const std::vector<std::filesystem::path>& trash() const { return m_trash; }

    bool has(const std::filesystem::path& path) const { return m_files.contains(path); }
    const platform::Bytes& bytes(const std::filesystem::path& path) const; // fails the test when missing
    std::size_t count() const { return m_files.size(); }                   // files, no folders

    // Changes the bytes of a file and nothing that is told about it but its identity and its time of change.
    void replaceUnseen(const std::filesystem::path& path, platform::Bytes bytes);
    // Runs ahead of the nth call (from 1), and may make calls of its own.
    void interruptAt(int nth, std::function<void()> run);

    // Calls so far, those of open output files included.
    int calls() const { return m_calls; }
    // From now on the nth call (from 1) fails with the system's error number; the ones behind it work again.
    void failAt(int nth, int number);
    // At most this many bytes are taken by one write.
    void setLargestWrite(std::size_t bytes) { m_largestWrite = bytes; }

    platform::Result<platform::FileState> state(const std::filesystem::path& path) override;
    platform::Result<platform::Bytes> read(const std::filesystem::path& path) override;
    platform::Result<platform::Bytes> readPart(const std::filesystem::path& path, std::uint64_t offset,
                                               std::size_t count) override;
    platform::Result<std::unique_ptr<platform::OutputFile>> create(const std::filesystem::path& path,
                                                                   const std::filesystem::path& like) override;
    platform::Status rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    platform::Status remove(const std::filesystem::path& path) override;
    platform::Status moveToTrash(const std::filesystem::path& path) override;
    platform::Status makeFolder(const std::filesystem::path& path) override;
    platform::Status syncFolder(const std::filesystem::path& path) override;
    void sweepLeftOvers(const std::filesystem::path& folder) override { m_swept.push_back(folder); }
    // A folder that is held already cannot be had.
    platform::Result<std::unique_ptr<platform::FolderLock>> lockFolder(const std::filesystem::path& path) override;
    platform::Result<std::vector<std::filesystem::path>> list(const std::filesystem::path& folder) override;
    platform::Result<std::filesystem::path> resolve(const std::filesystem::path& path) override;

private:
    friend class MemoryOutput;
    class Lock;

    // Counts a call; its error when it is the one that fails.
    std::optional<platform::Error> enter(const std::filesystem::path& path);
    bool isFolder(const std::filesystem::path& path) const { return m_folders.contains(path); }

    std::map<std::filesystem::path, platform::Bytes> m_files;
    std::map<std::filesystem::path, std::int64_t> m_modified; // the number of the change
    std::map<std::filesystem::path, std::int64_t> m_changed;  // the same, also of those that are not told
    std::int64_t m_changes = 0;
    std::set<std::filesystem::path> m_locked;
    int m_interruptedCall = 0;
    std::function<void()> m_interruption;
    std::set<std::filesystem::path> m_folders{"/"};
    std::vector<std::filesystem::path> m_trash;
    std::vector<std::filesystem::path> m_swept;
    int m_calls = 0;
    int m_failingCall = 0;
    int m_failure = 0;
    std::size_t m_largestWrite = static_cast<std::size_t>(-1);
};

} // namespace tallybook::test
