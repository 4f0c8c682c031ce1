#include "adapters/PosixFiles.h"

#include "adapters/AppFolder.h"
#include "adapters/EndBySignal.h"
#include "adapters/FileHandle.h"
#include "adapters/FileTraits.h"
#include "adapters/LeftOvers.h"
#include "adapters/SystemError.h"
#include "adapters/Trash.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <fcntl.h>
#include <memory>
#include <new>
#include <span>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <thread>

namespace tallybook::adapters {

using platform::Bytes;
using platform::ByteSpan;
using platform::FileKind;
using platform::FileState;
using platform::Result;
using platform::Status;
using Path = std::filesystem::path;

namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000; // of a second
constexpr int kLinksFollowed = 40;                   // as the system's own limit
constexpr mode_t kOwnOnly = S_IRUSR | S_IWUSR;
constexpr mode_t kAnybody = kOwnOnly | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH; // less what the user's mask takes
constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

std::int64_t nanoseconds(const timespec& time) {
    return time.tv_sec * kNanoseconds + time.tv_nsec;
}

FileKind kindOf(const struct stat& status) {
    if (S_ISREG(status.st_mode))
        return FileKind::Regular;
    return S_ISDIR(status.st_mode) ? FileKind::Folder : FileKind::Other;
}

// The effective rights decide, as they do when the file is opened.
bool mayWrite(const Path& path, const struct stat& status) {
    if (S_ISREG(status.st_mode) && (status.st_mode & kAnyWrite) == 0)
        return false;
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

struct Source {
    FileHandle file;
    std::uint64_t size = 0;
};

// Opens a regular file for reading. O_NONBLOCK keeps a pipe of that name from holding the program.
Result<Source> openSource(const Path& path) {
    FileHandle file(retried([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    if (!file.isOpen())
        return systemError("read", path, errno);
    struct stat status {};
    if (fstat(file.get(), &status) != 0)
        return systemError("read", path, errno);
    if (!S_ISREG(status.st_mode))
        return platform::Error{.kind = platform::ErrorKind::File,
                               .tag = {},
                               .text = platform::texts::notRegular(platform::shownPath(path))};
    return Source{std::move(file), static_cast<std::uint64_t>(status.st_size)};
}

platform::Error tooLarge(const Path& path) {
    return {.kind = platform::ErrorKind::File,
            .tag = {},
            .text = platform::texts::tooLarge(platform::shownPath(path)),
            .number = EFBIG};
}

// Fills the buffer from a place in the file and gives the bytes that there were, or -1.
ssize_t readAt(int descriptor, std::uint64_t offset, std::span<std::uint8_t> buffer) {
    std::size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = retried([&] {
            return pread(descriptor, buffer.data() + done, buffer.size() - done, static_cast<off_t>(offset + done));
        });
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

// Appends a file to its end, wherever that is by then, or until it is too large. False when a read fails. A vector
// clears its new bytes, so they are made in steps that are still in the processor's cache when they are read over.
bool readToEnd(int descriptor, Bytes& bytes) {
    constexpr std::size_t kStep = 256 << 10;
    constexpr std::size_t kBeyondRoom = 4096; // for a file that has grown
    ssize_t count = 0;
    std::size_t asked = 0;
    do {
        const std::size_t size = bytes.size();
        asked = std::clamp(bytes.capacity() - size, kBeyondRoom, kStep);
        bytes.resize(size + asked);
        count = readAt(descriptor, size, std::span(bytes).subspan(size));
        bytes.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    } while (count == static_cast<ssize_t>(asked) && bytes.size() <= platform::kMaxFileSize);
    return count >= 0;
}

class PosixOutputFile : public platform::OutputFile {
public:
    PosixOutputFile(FileHandle file, Path path) : m_file(std::move(file)), m_path(std::move(path)) {
        holdAsOwner(m_file.get());
    }

    // The disk begins at once with what it has been given, so that the sync at the end has less to wait for.
    Result<std::size_t> write(ByteSpan bytes) override {
        const std::size_t part = std::min(bytes.size(), kWritten);
        if (m_written == 0 && bytes.size() > part)
            prepareFor(bytes.size());
        const ssize_t count = retried([&] { return ::write(m_file.get(), bytes.data(), part); });
        if (count < 0)
            return systemError("write", m_path, errno);
        if (count == 0 && !bytes.empty()) // the caller would try for ever
            return systemError("write", m_path, EIO);
        (void)sync_file_range(m_file.get(), m_written, count, SYNC_FILE_RANGE_WRITE); // a hint; the sync decides
        m_written += count;
        return static_cast<std::size_t>(count);
    }
    // A failed sync must not be tried again: the system may have dropped the pages that it could not write.
    Status sync() override {
        if (retried([&] { return fsync(m_file.get()); }) != 0)
            return systemError("write", m_path, errno);
        return {};
    }
    Status close() override {
        if (!m_file.close())
            return systemError("write", m_path, errno);
        return {};
    }

private:
    static constexpr std::size_t kWritten = 1 << 20; // at most, by one call

    // Room on the disk in one piece, which costs less than a page at a time. A hint: where it cannot be had, the
    // writes say so. The size of the file stays what has been written.
    void prepareFor(std::size_t size) {
        (void)fallocate(m_file.get(), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size));
    }

    FileHandle m_file;
    Path m_path;
    off_t m_written = 0;
};

// The system lets go of the folder when the descriptor is closed, also at the end of the program.
class PosixFolderLock : public platform::FolderLock {
public:
    explicit PosixFolderLock(FileHandle folder) : m_folder(std::move(folder)) {}

private:
    FileHandle m_folder;
};

} // namespace

Result<FileState> PosixFiles::state(const Path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return FileState{};
        return systemError("find", path, errno);
    }
    const FileKind kind = kindOf(status);
    return FileState{.kind = kind,
                     .size = kind == FileKind::Regular ? static_cast<std::uint64_t>(status.st_size) : 0,
                     .writable = mayWrite(path, status),
                     .modified = nanoseconds(status.st_mtim),
                     .changed = nanoseconds(status.st_ctim),
                     .identity = status.st_ino};
}

Result<Bytes> PosixFiles::read(const Path& path) {
    Result<Source> source = openSource(path);
    if (!source)
        return source.error();
    if (source.value().size > platform::kMaxFileSize)
        return tooLarge(path);
    try {
        // One byte more than there is: the read that meets the end then needs no further room.
        Bytes bytes = buffer(static_cast<std::size_t>(source.value().size) + 1);
        if (!readToEnd(source.value().file.get(), bytes))
            return systemError("read", path, errno);
        if (bytes.size() > platform::kMaxFileSize)
            return tooLarge(path);
        return bytes;
    } catch (const std::bad_alloc&) {
        return systemError("read", path, ENOMEM);
    }
}

// Much of the time of reading or building a file goes into the first touch of new memory, page by page, so the system
// is asked for large pages: 12 MB then take 3 ms instead of 10.
Bytes PosixFiles::buffer(std::size_t size) const {
    constexpr std::size_t kWorthwhile = 4 << 20; // a large page has 2 MiB and its own alignment
    constexpr std::size_t kPage = 4096;
    Bytes bytes;
    bytes.reserve(size);
    if (size >= kWorthwhile) {
        void* pages = bytes.data();
        std::size_t room = size;
        if (std::align(kPage, size - kPage, pages, room) != nullptr)
            (void)madvise(pages, room / kPage * kPage, MADV_HUGEPAGE); // a hint, no more
    }
    return bytes;
}

Result<Bytes> PosixFiles::readPart(const Path& path, std::uint64_t offset, std::size_t count) {
    Result<Source> source = openSource(path);
    if (!source)
        return source.error();
    const std::uint64_t size = source.value().size;
    const std::uint64_t there = offset < size ? size - offset : 0;
    Bytes bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, there)));
    const ssize_t filled = readAt(source.value().file.get(), offset, bytes);
    if (filled < 0)
        return systemError("read", path, errno);
    bytes.resize(static_cast<std::size_t>(filled));
    return bytes;
}

// The file is its maker's alone until it has the rights of the other one.
Result<std::unique_ptr<platform::OutputFile>> PosixFiles::create(const Path& path, const Path& like) {
    const Result<std::optional<FileTraits>> traits =
        like.empty() ? std::optional<FileTraits>() : FileTraits::of(like);
    if (!traits)
        return traits.error();
    const mode_t mode = like.empty() || traits.value() ? kOwnOnly : kAnybody;
    const SignalsWait wait;
    FileHandle file(
        retried([&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode); }));
    if (!file.isOpen())
        return systemError("write", path, errno);
    noteUnfinished(path);
    if (traits.value() && !traits.value()->giveTo(file.get())) {
        const int number = errno;
        (void)remove(path);
        return systemError("write", path, number);
    }
    return std::unique_ptr<platform::OutputFile>(std::make_unique<PosixOutputFile>(std::move(file), path));
}

Status PosixFiles::rename(const Path& from, const Path& to) {
    const SignalsWait wait;
    if (::rename(from.c_str(), to.c_str()) != 0)
        return systemError("replace", to, errno);
    forgetUnfinished(from);
    return {};
}

Status PosixFiles::remove(const Path& path) {
    const SignalsWait wait;
    if (unlink(path.c_str()) != 0)
        return systemError("delete", path, errno);
    forgetUnfinished(path);
    return {};
}

Status PosixFiles::moveToTrash(const Path& path) {
    return adapters::moveToTrash(path, dataFolder(surroundings()));
}

Status PosixFiles::makeFolder(const Path& path) {
    if (mkdir(path.c_str(), S_IRWXU) != 0)
        return systemError("make the folder", path, errno);
    return {};
}

Status PosixFiles::syncFolder(const Path& path) {
    const FileHandle folder(retried([&] { return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!folder.isOpen())
        return systemError("write to the folder", path, errno);
    if (retried([&] { return fsync(folder.get()); }) == 0)
        return {};
    if (errno == EINVAL || errno == ENOTSUP) // a file system whose folders need no sync
        return {};
    return systemError("write to the folder", path, errno);
}

void PosixFiles::sweepLeftOvers(const Path& folder) {
    sweepFiles(folder);
}

Result<std::unique_ptr<platform::FolderLock>> PosixFiles::lockFolder(const Path& path) {
    constexpr std::chrono::milliseconds kBetweenTries{5};
    FileHandle folder(retried([&] { return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!folder.isOpen())
        return std::unique_ptr<platform::FolderLock>(); // who may not read a folder may write into it all the same
    const auto end = std::chrono::steady_clock::now() + m_longestWait;
    while (retried([&] { return flock(folder.get(), LOCK_EX | LOCK_NB); }) != 0) {
        if (errno != EWOULDBLOCK)
            return std::unique_ptr<platform::FolderLock>(); // a disk without locks
        if (std::chrono::steady_clock::now() >= end)
            return systemError("save into the folder", path, EBUSY);
        std::this_thread::sleep_for(kBetweenTries);
    }
    return std::unique_ptr<platform::FolderLock>(std::make_unique<PosixFolderLock>(std::move(folder)));
}

Result<std::vector<Path>> PosixFiles::list(const Path& folder) {
    std::error_code failed;
    std::vector<Path> names;
    std::filesystem::directory_iterator entry(folder, failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed))
        names.push_back(entry->path().filename());
    if (failed)
        return systemError("list the folder", folder, failed.value());
    std::ranges::sort(names, {}, [](const Path& name) -> const std::string& { return name.native(); });
    return names;
}

// The standard library follows links only as far as files exist, so the links at the end are followed here.
Result<Path> PosixFiles::resolve(const Path& path) {
    std::error_code failed;
    Path end = std::filesystem::absolute(path, failed);
    int links = 0;
    while (!failed && std::filesystem::is_symlink(end, failed)) {
        if (++links > kLinksFollowed)
            return systemError("find", path, ELOOP);
        end = end.parent_path() / std::filesystem::read_symlink(end, failed);
    }
    if (failed && failed != std::errc::no_such_file_or_directory && failed != std::errc::not_a_directory)
        return systemError("find", path, failed.value());
    end = std::filesystem::weakly_canonical(end, failed);
    if (failed)
        return systemError("find", path, failed.value());
    return end;
}

} // namespace tallybook::adapters
