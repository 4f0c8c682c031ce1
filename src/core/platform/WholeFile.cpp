#include "core/platform/WholeFile.h"

#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <system_error>

namespace tallybook::platform {

namespace {

using Path = std::filesystem::path;

constexpr int kTemporaryNames = 1000;
constexpr std::string_view kTemporaryMark = ".tallybook-tmp-";
constexpr std::size_t kMostDigits = 4;
constexpr std::size_t kStemBytes = 255 - kTemporaryMark.size() - kMostDigits; // of a name, which may have 255 bytes
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

// A new file beside the target, with the rights of `like`. Left-overs of a program that was killed keep their names,
// so the next free number is taken.
Result<Created> createBeside(Files& files, const Path& target, const Path& like) {
    const std::string stem = target.filename().string().substr(0, kStemBytes);
    for (int number = 1; number <= kTemporaryNames; ++number) {
        Path path = target.parent_path() / (stem + std::string(kTemporaryMark) + std::to_string(number));
        Result<std::unique_ptr<OutputFile>> file = files.create(path, like);
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
    return {};
}

// What a file must read back as: its size and its first bytes.
struct Written {
    std::uint64_t size = 0;
    Bytes front;

    void add(ByteSpan bytes) {
        size += bytes.size();
        const ByteSpan kept = bytes.first(std::min(bytes.size(), kReadBack - front.size()));
        front.insert(front.end(), kept.begin(), kept.end());
    }
};

// Compares size and first bytes of a file with what was written to it, and gives what it is.
Result<FileState> readBack(Files& files, const Path& path, const Written& written) {
    const Result<FileState> state = files.state(path);
    if (!state)
        return state.error();
    const Result<Bytes> read = files.readPart(path, 0, written.front.size());
    if (!read)
        return read.error();
    const bool same = state.value().kind == FileKind::Regular && state.value().size == written.size &&
                      std::ranges::equal(read.value(), written.front);
    if (!same)
        return fileError(std::string(texts::kReadBackDiffers), static_cast<int>(std::errc::io_error));
    return state;
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

// A failure ahead of the rename: the target is what it was.
Error notSaved(const Path& path, const Error& cause) {
    return fileError(texts::notSaved(shownPath(path), cause.text), cause.number);
}

} // namespace

struct GrowingFile::Parts {
    Files& files;
    Path path;   // as the caller names it
    Path target; // with links followed
    std::unique_ptr<TemporaryFile> temporary;
    std::unique_ptr<OutputFile> file;
    Written written{};
    FileState committed{};

    // Everything up to the rename.
    Status replaceTarget() {
        if (Status synced = file->sync(); !synced)
            return synced;
        if (Status closed = file->close(); !closed)
            return closed;
        if (const auto checked = readBack(files, temporary->path(), written); !checked)
            return checked.error();
        if (Status renamed = files.rename(temporary->path(), target); !renamed)
            return renamed;
        temporary->keep();
        return {};
    }

    // The name becomes durable, and the disk is asked once more what it holds.
    Status confirmTarget() {
        if (Status synced = files.syncFolder(target.parent_path()); !synced)
            return synced;
        const auto state = readBack(files, target, written);
        if (!state)
            return state.error();
        committed = state.value();
        return {};
    }
};

GrowingFile::GrowingFile(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
GrowingFile::~GrowingFile() = default;

Result<std::unique_ptr<GrowingFile>> GrowingFile::begin(Files& files, const Path& path, Privacy privacy) {
    const Result<Path> target = files.resolve(path);
    if (!target)
        return target.error();
    if (Status allowed = checkTarget(files, path); !allowed)
        return allowed.error();
    return beginAt(files, path, target.value(), privacy == Privacy::Usual ? target.value() : Path());
}

Result<std::unique_ptr<GrowingFile>> GrowingFile::beginOwn(Files& files, const Path& path) {
    return beginAt(files, path, path, {});
}

Result<std::unique_ptr<GrowingFile>> GrowingFile::beginAt(Files& files, const Path& path, const Path& target,
                                                          const Path& like) {
    Result<Created> created = createBeside(files, target, like);
    if (!created)
        return notSaved(path, created.error());
    auto temporary = std::make_unique<TemporaryFile>(files, created.value().path);
    return std::unique_ptr<GrowingFile>(new GrowingFile(std::unique_ptr<Parts>(
        new Parts{files, path, target, std::move(temporary), std::move(created.value().file)})));
}

Status GrowingFile::write(ByteSpan bytes) {
    if (Status written = writeAll(*m_parts->file, bytes); !written)
        return notSaved(m_parts->path, written.error());
    m_parts->written.add(bytes);
    return {};
}

Status GrowingFile::commit() {
    if (Status replaced = m_parts->replaceTarget(); !replaced)
        return notSaved(m_parts->path, replaced.error());
    if (Status confirmed = m_parts->confirmTarget(); !confirmed)
        return fileError(texts::savedUnsafely(shownPath(m_parts->path), confirmed.error().text),
                         confirmed.error().number);
    return {};
}

const FileState& GrowingFile::committed() const {
    return m_parts->committed;
}

namespace {

Result<FileState> writeAndCommit(Result<std::unique_ptr<GrowingFile>> file, ByteSpan bytes) {
    if (!file)
        return file.error();
    if (const Status written = file.value()->write(bytes); !written)
        return written.error();
    if (const Status committed = file.value()->commit(); !committed)
        return committed.error();
    return file.value()->committed();
}

Status statusOf(const Result<FileState>& written) {
    return written ? Status() : Status(written.error());
}

} // namespace

Status writeWholeFile(Files& files, const Path& path, ByteSpan bytes, Privacy privacy) {
    return statusOf(writeAndCommit(GrowingFile::begin(files, path, privacy), bytes));
}

Result<FileState> replaceWholeFile(Files& files, const Path& path, ByteSpan bytes) {
    return writeAndCommit(GrowingFile::begin(files, path), bytes);
}

Status writeOwnFile(Files& files, const Path& path, ByteSpan bytes) {
    return statusOf(writeAndCommit(GrowingFile::beginOwn(files, path), bytes));
}

bool isTemporaryName(std::string_view name) {
    const std::size_t mark = name.rfind(kTemporaryMark);
    if (mark == std::string_view::npos || mark == 0)
        return false;
    const std::string_view number = name.substr(mark + kTemporaryMark.size());
    return !number.empty() && number.size() <= kMostDigits &&
           number.find_first_not_of("0123456789") == std::string_view::npos;
}

Status copyWholeFile(Files& files, const Path& from, const Path& to) {
    const Result<Bytes> bytes = files.read(from);
    if (!bytes)
        return bytes.error();
    return writeWholeFile(files, to, bytes.value());
}

} // namespace tallybook::platform
