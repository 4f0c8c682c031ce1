#include "support/MemoryFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <utility>

namespace tallybook::test {

namespace {

using platform::Bytes;
using platform::Error;
using platform::ErrorKind;
using platform::FileKind;
using platform::FileState;
using platform::Result;
using platform::Status;
using std::filesystem::path;

Error failure(const path& path, int number) {
    return {
        .kind = ErrorKind::File, .tag = {}, .text = path.string() + ": " + std::strerror(number), .number = number};
}

} // namespace

class MemoryOutput : public platform::OutputFile {
public:
    MemoryOutput(MemoryFiles& files, path path) : m_files(files), m_path(std::move(path)) {}

    Result<std::size_t> write(platform::ByteSpan bytes) override {
        if (const auto error = m_files.enter(m_path))
            return *error;
        const std::size_t taken = std::min(bytes.size(), m_files.m_largestWrite);
        Bytes& file = m_files.m_files[m_path];
        file.insert(file.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(taken));
        return taken;
    }
    Status sync() override { return call(); }
    Status close() override { return call(); }

private:
    Status call() {
        const auto error = m_files.enter(m_path);
        return error ? Status(*error) : Status();
    }

    MemoryFiles& m_files;
    path m_path;
};

void MemoryFiles::addFolder(const path& path) {
    for (auto folder = path; m_folders.insert(folder).second; folder = folder.parent_path()) {
    }
}

void MemoryFiles::put(const path& path, Bytes bytes) {
    addFolder(path.parent_path());
    m_files[path] = std::move(bytes);
    m_modified[path] = m_changed[path] = ++m_changes;
}

void MemoryFiles::replaceUnseen(const path& path, Bytes bytes) {
    m_files[path] = std::move(bytes);
    m_changed[path] = ++m_changes;
}

const Bytes& MemoryFiles::bytes(const path& path) const {
    static const Bytes kNone;
    const auto found = m_files.find(path);
    EXPECT_NE(found, m_files.end()) << "no file " << path;
    return found == m_files.end() ? kNone : found->second;
}

void MemoryFiles::failAt(int nth, int number) {
    m_failingCall = m_calls + nth;
    m_failure = number;
}

void MemoryFiles::interruptAt(int nth, std::function<void()> run) {
    m_interruptedCall = m_calls + nth;
    m_interruption = std::move(run);
}

std::optional<Error> MemoryFiles::enter(const path& path) {
    if (m_calls + 1 == m_interruptedCall) {
        m_interruptedCall = 0;
        m_interruption();
    }
    return ++m_calls == m_failingCall ? std::optional(failure(path, m_failure)) : std::nullopt;
}

Result<FileState> MemoryFiles::state(const path& path) {
    if (const auto error = enter(path))
        return *error;
    if (isFolder(path))
        return FileState{.kind = FileKind::Folder, .writable = true};
    if (!has(path))
        return FileState{};
    return FileState{.kind = FileKind::Regular,
                     .size = m_files[path].size(),
                     .writable = true,
                     .modified = m_modified[path],
                     .changed = m_changed[path],
                     .identity = static_cast<std::uint64_t>(m_changed[path])};
}

Result<Bytes> MemoryFiles::read(const path& path) {
    if (const auto error = enter(path))
        return *error;
    if (!has(path))
        return failure(path, isFolder(path) ? EISDIR : ENOENT);
    return m_files[path];
}

Result<Bytes> MemoryFiles::readPart(const path& path, std::uint64_t offset, std::size_t count) {
    auto whole = read(path);
    if (!whole)
        return whole;
    const Bytes& bytes = whole.value();
    const std::size_t from = std::min<std::uint64_t>(offset, bytes.size());
    const std::size_t length = std::min(count, bytes.size() - from);
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return Bytes(begin, begin + static_cast<std::ptrdiff_t>(length));
}

Result<std::unique_ptr<platform::OutputFile>> MemoryFiles::create(const path& path, const std::filesystem::path&) {
    if (const auto error = enter(path))
        return *error;
    if (has(path) || isFolder(path))
        return failure(path, EEXIST);
    if (!isFolder(path.parent_path()))
        return failure(path, ENOENT);
    m_files[path];
    return std::unique_ptr<platform::OutputFile>(std::make_unique<MemoryOutput>(*this, path));
}

Status MemoryFiles::rename(const path& from, const path& to) {
    if (const auto error = enter(from))
        return *error;
    if (!has(from) || !isFolder(to.parent_path()))
        return failure(from, ENOENT);
    if (isFolder(to))
        return failure(to, EISDIR);
    auto bytes = std::move(m_files[from]);
    m_files.erase(from);
    m_files[to] = std::move(bytes);
    m_modified[to] = m_changed[to] = ++m_changes;
    return {};
}

Status MemoryFiles::moveToTrash(const path& path) {
    Status removed = remove(path);
    if (removed)
        m_trash.push_back(path);
    return removed;
}

Status MemoryFiles::remove(const path& path) {
    if (const auto error = enter(path))
        return *error;
    if (m_files.erase(path) == 0)
        return failure(path, isFolder(path) ? EISDIR : ENOENT);
    return {};
}

Status MemoryFiles::makeFolder(const path& path) {
    if (const auto error = enter(path))
        return *error;
    if (has(path) || isFolder(path))
        return failure(path, EEXIST);
    if (!isFolder(path.parent_path()))
        return failure(path, ENOENT);
    m_folders.insert(path);
    return {};
}

Status MemoryFiles::syncFolder(const path& path) {
    if (const auto error = enter(path))
        return *error;
    return isFolder(path) ? Status() : Status(failure(path, ENOENT));
}

class MemoryFiles::Lock : public platform::FolderLock {
public:
    Lock(MemoryFiles& files, path folder) : m_files(files), m_folder(std::move(folder)) {
        m_files.m_locked.insert(m_folder);
    }
    ~Lock() override { m_files.m_locked.erase(m_folder); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    MemoryFiles& m_files;
    path m_folder;
};

Result<std::unique_ptr<platform::FolderLock>> MemoryFiles::lockFolder(const path& folder) {
    if (const auto error = enter(folder))
        return *error;
    if (m_locked.contains(folder))
        return failure(folder, EBUSY);
    return std::unique_ptr<platform::FolderLock>(std::make_unique<Lock>(*this, folder));
}

Result<std::vector<path>> MemoryFiles::list(const path& folder) {
    if (const auto error = enter(folder))
        return *error;
    if (!isFolder(folder))
        return failure(folder, ENOENT);
    std::vector<path> names;
    for (const auto& [file, bytes] : m_files)
        if (file.parent_path() == folder)
            names.push_back(file.filename());
    for (const path& inner : m_folders)
        if (inner != folder && inner.parent_path() == folder)
            names.push_back(inner.filename());
    std::ranges::sort(names);
    return names;
}

Result<path> MemoryFiles::resolve(const path& path) {
    if (const auto error = enter(path))
        return *error;
    return path;
}

} // namespace tallybook::test
