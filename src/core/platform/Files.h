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
};

// A file being written. Destroying it closes it without a word.
class OutputFile {
public:
    virtual ~OutputFile() = default;
    // Writes some of the bytes and gives how many, at least 1.
    virtual Result<std::size_t> write(ByteSpan bytes) = 0;
    virtual Status sync() = 0;
    virtual Status close() = 0;
};

// Errors have kind File, the system's number, and a text that names the path.
class Files {
public:
    virtual ~Files() = default;

    virtual Result<FileState> state(const std::filesystem::path& path) = 0; // follows links; Missing is no error
    virtual Result<Bytes> read(const std::filesystem::path& path) = 0;      // regular files only, whole
    // At most `count` bytes from `offset`; fewer at the file's end.
    virtual Result<Bytes> readPart(const std::filesystem::path& path, std::uint64_t offset, std::size_t count) = 0;

    // A new file that did not exist, with the permissions of `like` when that exists.
    virtual Result<std::unique_ptr<OutputFile>> create(const std::filesystem::path& path,
                                                       const std::filesystem::path& like) = 0;
    virtual Status rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    virtual Status remove(const std::filesystem::path& path) = 0;
    virtual Status makeFolder(const std::filesystem::path& path) = 0; // its parents exist; mode 0700
    virtual Status syncFolder(const std::filesystem::path& path) = 0;
    virtual Result<std::vector<std::filesystem::path>> list(const std::filesystem::path& folder) = 0; // names
    virtual Result<std::filesystem::path> resolve(const std::filesystem::path& path) = 0; // links followed
};

} // namespace tallybook::platform
