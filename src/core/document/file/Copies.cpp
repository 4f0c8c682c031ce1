#include "core/document/file/Copies.h"

#include "core/platform/AppFolders.h"
#include "core/platform/Containment.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace tallybook::document {

namespace {

using platform::Bytes;
using platform::ByteSpan;
using platform::Files;
using platform::Status;
using Path = std::filesystem::path;

// What a copy holds; nothing when there is none to be read. What a link leads to is no copy.
std::optional<Bytes> contentOf(Files& files, const Path& path) {
    const auto state = files.state(path);
    if (!state || state.value().kind != platform::FileKind::Regular || !platform::staysInFolder(files, path))
        return std::nullopt;
    auto bytes = files.read(path);
    return bytes ? std::optional(std::move(bytes).value()) : std::nullopt;
}

bool holds(const std::optional<Bytes>& content, ByteSpan bytes) {
    return content && std::equal(content->begin(), content->end(), bytes.begin(), bytes.end());
}

// " 2003-03-05 130509": what parts the name of an older copy from the name of the copy. It sorts by time.
std::string stampOf(const platform::LocalTime& now) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), " %04d-%02d-%02d %02d%02d%02d", now.year, now.month, now.day, now.hour,
                  now.minute, now.second);
    return text.data();
}

bool isStamp(std::string_view text) {
    constexpr std::string_view kShape = " 0000-00-00 000000";
    return text.size() == kShape.size() &&
           std::equal(text.begin(), text.end(), kShape.begin(),
                      [](char c, char shape) { return shape == '0' ? c >= '0' && c <= '9' : c == shape; });
}

bool isOlderCopy(const Path& candidate, const Path& name) {
    const std::string stem = candidate.stem().string();
    const std::string own = name.stem().string();
    return candidate.extension() == name.extension() && stem.starts_with(own) &&
           isStamp(std::string_view(stem).substr(own.size()));
}

// An older copy too many is no reason to complain: the next opening tries again.
void dropOldest(Files& files, const Path& folder, const Path& name) {
    const auto all = files.list(folder);
    if (!all)
        return;
    std::vector<Path> older;
    for (const Path& candidate : all.value())
        if (isOlderCopy(candidate.filename(), name))
            older.push_back(candidate.filename());
    std::sort(older.begin(), older.end());
    for (std::size_t i = 0; i + kOlderBackups < older.size(); ++i)
        (void)files.remove(folder / older[i]);
}

// A database without an Image field has no picture that a save could need, and writing its bytes again would cost
// half as much as the save itself.
bool mayHavePictures(const model::DatabaseModel& db) {
    return std::any_of(db.Fields.begin(), db.Fields.end(),
                       [](const model::FieldDef& field) { return field.Type == model::FieldType::Image; });
}

} // namespace

platform::Error noMemory(const Path& path) {
    return {.kind = platform::ErrorKind::File,
            .tag = {},
            .text = platform::texts::notEnoughMemory(platform::shownPath(path))};
}

model::FileMark markOf(const platform::FileState& state) {
    if (state.kind != platform::FileKind::Regular)
        return {};
    return {.known = true,
            .size = state.size,
            .modified = state.modified,
            .changed = state.changed,
            .identity = state.identity};
}

platform::Result<model::FileMark> markOf(Files& files, const Path& file) {
    const auto state = files.state(file);
    if (!state)
        return state.error();
    return markOf(state.value());
}

void renewTempCopy(model::Document& doc, platform::Services& services, const Path& file, ByteSpan bytes) {
    Path copy = platform::applicationPath(services, platform::kTempFolder) / "Copy_";
    copy += file.filename();
    const bool mayCopy = !services.applicationFolder.empty() && mayHavePictures(doc.CurrDB20);
    const bool copied = mayCopy && platform::writeOwnFile(services.files, copy, bytes);
    doc.TempCopyPath = copied ? copy : file;
}

Status refreshBackup(platform::Services& services, const Path& file, ByteSpan bytes) {
    Files& files = services.files;
    const Path folder = platform::applicationPath(services, platform::kBackupFolder);
    const Path name = file.filename();
    const std::optional<Bytes> before = contentOf(files, folder / name);
    if (holds(before, bytes))
        return {};
    if (before) {
        Path older = folder / name.stem();
        older += stampOf(services.clock.now()) + name.extension().string();
        if (Status kept = platform::writeOwnFile(files, older, *before); !kept)
            return kept;
    }
    if (Status written = platform::writeOwnFile(files, folder / name, bytes); !written)
        return written;
    dropOldest(files, folder, name);
    return {};
}

} // namespace tallybook::document
