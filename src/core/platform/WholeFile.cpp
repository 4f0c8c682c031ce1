#include "core/platform/WholeFile.h"

#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <system_error>

namespace tallybook::platform {

namespace {

using Path = std::filesystem::path;

constexpr int kTemporaryNames = 1000;
constexpr std::size_t kStemBytes = 240; // of a temporary name, which may have 255 bytes in all
constexpr std::size_t kReadBack = 4096; // bytes at the front of the file: the header and the record list's start

Error fileError(std::string text, int number = 0) {
    return {.kind = ErrorKind::File, .tag = {}, .text = std::move(text), .number = number};
}

// A file under a temporary name. It goes with this object unless it was kept.
class TemporaryFile {
public:
    TemporaryFile(Files& files, Path path) : m_files(files), m_path(std::move(path)) {}
    ~TemporaryFile() {
        if (!m_kept)
            (void)m_files.remove(m_path); // the first failure is the one to report
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const Path& path() const { return m_path; }
    void keep() { m_kept = true; }

private:
    Files& m_files;
    Path m_path;
    bool m_kept = false;
};

struct Created {
    Path path;
    std::unique_ptr<OutputFile> file;
};

// A new file beside the target. Left-overs of a program that was killed keep their names, so the next free number
// is taken.
Result<Created> createBeside(Files& files, const Path& target) {
    const std::string stem = target.filename().string().substr(0, kStemBytes);
    for (int number = 1; number <= kTemporaryNames; ++number) {
        Path path = target.parent_path() / (stem + ".tmp-" + std::to_string(number));
        Result<std::unique_ptr<OutputFile>> file = files.create(path, target);
        if (file)
            return Created{std::move(path), std::move(file).value()};
        if (file.error().number != static_cast<int>(std::errc::file_exists))
            return file.error();
    }
    return fileError(texts::cannot("write", shownPath(target), texts::kNoTemporaryName),
                     static_cast<int>(std::errc::file_exists));
}

Status writeAll(OutputFile& file, ByteSpan bytes) {
    while (!bytes.empty()) {
        const Result<std::size_t> written = file.write(bytes);
        if (!written)
            return written.error();
        bytes = bytes.subspan(written.value());
    }
    if (Status synced = file.sync(); !synced)
        return synced;
    return file.close();
}

// Compares size and first bytes of a file with what was written to it.
Status readBack(Files& files, const Path& path, ByteSpan bytes) {
    const Result<FileState> state = files.state(path);
    if (!state)
        return state.error();
    const ByteSpan front = bytes.first(std::min(bytes.size(), kReadBack));
    const Result<Bytes> read = files.readPart(path, 0, front.size());
    if (!read)
        return read.error();
    const bool same = state.value().kind == FileKind::Regular && state.value().size == bytes.size() &&
                      std::ranges::equal(read.value(), front);
    if (!same)
        return fileError(std::string(texts::kReadBackDiffers), static_cast<int>(std::errc::io_error));
    return {};
}

// What may stand at the target's place: nothing, or a regular file that is not read-only.
Status checkTarget(Files& files, const Path& path) {
    const Result<FileState> state = files.state(path);
    if (!state)
        return state.error();
    const FileKind kind = state.value().kind;
    if (kind != FileKind::Missing && kind != FileKind::Regular)
        return fileError(texts::notRegular(shownPath(path)));
    if (kind == FileKind::Regular && !state.value().writable)
        return fileError(texts::readOnlyFile(shownPath(path)), static_cast<int>(std::errc::permission_denied));
    return {};
}

// Everything up to the rename. After a failure the target is what it was.
Status replaceTarget(Files& files, const Path& target, ByteSpan bytes) {
    Result<Created> created = createBeside(files, target);
    if (!created)
        return created.error();
    TemporaryFile temporary(files, std::move(created.value().path));
    const std::unique_ptr<OutputFile> file = std::move(created.value().file);
    if (Status written = writeAll(*file, bytes); !written)
        return written;
    if (Status checked = readBack(files, temporary.path(), bytes); !checked)
        return checked;
    if (Status renamed = files.rename(temporary.path(), target); !renamed)
        return renamed;
    temporary.keep();
    return {};
}

// The name becomes durable, and the disk is asked once more what it holds.
Status confirmTarget(Files& files, const Path& target, ByteSpan bytes) {
    if (Status synced = files.syncFolder(target.parent_path()); !synced)
        return synced;
    return readBack(files, target, bytes);
}

} // namespace

Status writeWholeFile(Files& files, const Path& path, ByteSpan bytes) {
    const Result<Path> target = files.resolve(path);
    if (!target)
        return target.error();
    if (Status allowed = checkTarget(files, path); !allowed)
        return allowed;
    if (Status replaced = replaceTarget(files, target.value(), bytes); !replaced)
        return fileError(texts::notSaved(shownPath(path), replaced.error().text), replaced.error().number);
    if (Status confirmed = confirmTarget(files, target.value(), bytes); !confirmed)
        return fileError(texts::savedUnsafely(shownPath(path), confirmed.error().text), confirmed.error().number);
    return {};
}

Status copyWholeFile(Files& files, const Path& from, const Path& to) {
    const Result<Bytes> bytes = files.read(from);
    if (!bytes)
        return bytes.error();
    return writeWholeFile(files, to, bytes.value());
}

} // namespace tallybook::platform
