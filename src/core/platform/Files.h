// The few calls about files that the program makes, one to one with what a system offers, so that a test can
// make the nth of them fail. What is built of them stands in WholeFile.h.
#pragma once

#include "core/platform/Result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tallybook::platform {

using Bytes = std::vector<std::uint8_t>;
using ByteSpan = std::span<const std::uint8_t>;

enum class FileKind : std::uint8_t { Missing, Regular, Folder, Other };

struct FileState {
    FileKind kind = FileKind::Missing;
    std::uint64_t size = 0; // bytes, of a regular file
    // A folder in which files may be made, or a file that is not marked read-only. A file without any write
    // permission counts as read-only for an administrator too.
    bool writable = false;
    // Only good for telling a change: nanoseconds of the system's own count, when the bytes were changed, and when
    // anything of the file was, which no program can set; and its number, which a file that replaces it has not.
    std::int64_t modified = 0;
    std::int64_t changed = 0;
    std::uint64_t identity = 0;
};

// No file that the program reads is larger: places in a database are 32-bit numbers.
inline constexpr std::uint64_t kMaxFileSize = 0xFFFFFFFF;

// A file being written. Destroying it closes it without a word.
class OutputFile {
public:
    virtual ~OutputFile() = default;
    // Writes some of the bytes and gives how many, at least 1.
    virtual Result<std::size_t> write(ByteSpan bytes) = 0;
    virtual Status sync() = 0;
    virtual Status close() = 0;
};

// A folder that other programs of ours leave alone while this lives.
class FolderLock {
public:
    virtual ~FolderLock() = default;
};

// Errors have kind File, the system's number (that of std::errc, as file_exists from create), and a text that
// names the path.
class Files {
public:
    virtual ~Files() = default;

    virtual Result<FileState> state(const std::filesystem::path& path) = 0; // follows links; Missing is no error
    // The whole of a regular file, to its end even when that moves meanwhile. Never waits for a pipe.
    virtual Result<Bytes> read(const std::filesystem::path& path) = 0;
    // At most `count` bytes from `offset`; fewer at the file's end.
    virtual Result<Bytes> readPart(const std::filesystem::path& path, std::uint64_t offset, std::size_t count) = 0;

    // An empty buffer with room for so many bytes of a file. A system may know how memory that is about to be filled
    // is had for less.
    virtual Bytes buffer(std::size_t size) const {
        Bytes bytes;
        bytes.reserve(size);
        return bytes;
    }

    // A new file that did not exist, with the owner, the rights and the attributes of `like` when that exists, as far
    // as the system lets this user give them; what it does not never ends in more rights. Without `like`, an empty
    // path, it is for its owner alone.
    // When a signal ends the program ahead of its rename or its removal, the file is removed.
    virtual Result<std::unique_ptr<OutputFile>> create(const std::filesystem::path& path,
                                                       const std::filesystem::path& like) = 0;
    virtual Status rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    virtual Status remove(const std::filesystem::path& path) = 0; // a file; a missing one is an error
    // A file to the user's trash, from where it can be had back. Where there is no trash this is an error; a file is
    // never removed instead.
    virtual Status moveToTrash(const std::filesystem::path& path);
    virtual Status makeFolder(const std::filesystem::path& path) = 0; // its parents exist; mode 0700
    virtual Status syncFolder(const std::filesystem::path& path) = 0;
    // Takes away what saves that were killed left in a folder, as far as it is this user's, older than a day and
    // nobody is at work on it. What cannot be taken away stays.
    virtual void sweepLeftOvers(const std::filesystem::path& folder) { static_cast<void>(folder); }
    // Waits for those who hold the folder, and holds it. An error when one does not let go in time. Where a folder
    // cannot be held at all this gives nothing, and the caller goes on without.
    virtual Result<std::unique_ptr<FolderLock>> lockFolder(const std::filesystem::path& path) {
        static_cast<void>(path);
        return std::unique_ptr<FolderLock>();
    }
    // The names in a folder, in byte order.
    virtual Result<std::vector<std::filesystem::path>> list(const std::filesystem::path& folder) = 0;
    // The absolute path with links followed, also one at its end that points to nothing yet.
    virtual Result<std::filesystem::path> resolve(const std::filesystem::path& path) = 0;
};

} // namespace tallybook::platform
