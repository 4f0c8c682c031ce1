#include "adapters/FolderDesktop.h"

#include "core/handheld/Users.h"
#include "core/platform/AppFolders.h"
#include "core/platform/Containment.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tallybook::adapters {

namespace {

using platform::FileKind;
using platform::Files;
using platform::Result;
using platform::Status;
using Path = std::filesystem::path;

constexpr std::string_view kInstallFolder = "Install";

platform::Error refusal(std::string text) {
    return {.kind = platform::ErrorKind::File, .tag = {}, .text = std::move(text)};
}

FileKind kindOf(Files& files, const Path& path) {
    const auto state = files.state(path);
    return state ? state.value().kind : FileKind::Other;
}

std::string userName(const Path& directory) {
    return handheld::nameFromBuffer(platform::shownPath(directory));
}

// Where a file waits, or nothing. A link of the name counts, whatever it leads to.
bool waits(Files& files, const Path& place) {
    return kindOf(files, place) != FileKind::Missing || !platform::staysInFolder(files, place);
}

} // namespace

FolderDesktop::FolderDesktop(Files& files, Path core, Absent absent)
    : m_files(files), m_core(std::move(core)), m_absent(absent) {}

Result<std::vector<Path>> FolderDesktop::directories() {
    if (m_absent == Absent::HasNoUsers && kindOf(m_files, m_core) == FileKind::Missing)
        return std::vector<Path>();
    auto names = m_files.list(m_core);
    if (!names)
        return names.error();
    std::erase_if(names.value(), [this](const Path& name) {
        return kindOf(m_files, platform::placeIn(m_files, m_core / name, handheld::kUserBackupFolder)) !=
               FileKind::Folder;
    });
    return names;
}

Result<int> FolderDesktop::UmGetUserCount() {
    auto found = directories();
    if (!found)
        return found.error();
    m_users = std::move(found).value();
    return static_cast<int>(m_users.size());
}

Result<std::uint32_t> FolderDesktop::UmGetUserID(int index) {
    return static_cast<std::uint32_t>(index);
}

Result<std::string> FolderDesktop::UmGetUserName(std::uint32_t id) {
    return platform::shownPath(m_users.at(id));
}

Result<Path> FolderDesktop::UmGetUserDirectory(std::uint32_t id) {
    return m_users.at(id);
}

// The user's folder for installs, made when it is missing. Users are looked for on the disk each time: one may have
// gone since they were counted.
Result<Path> FolderDesktop::queueOf(const std::string& user) {
    const auto found = directories();
    if (!found)
        return found.error();
    const auto isUser = [&user](const Path& directory) { return userName(directory) == user; };
    const auto same = std::ranges::count_if(found.value(), isUser);
    if (same == 0)
        return refusal(platform::texts::userGone(user));
    if (same > 1)
        return refusal(platform::texts::userAmbiguous(user));
    const Path folder = m_core / *std::ranges::find_if(found.value(), isUser);
    const Path queue = platform::placeIn(m_files, folder, kInstallFolder);
    if (const Status made = platform::makeFolderPath(m_files, queue); !made)
        return made.error();
    return queue;
}

Result<int> FolderDesktop::PltInstallFile(const std::string& user, const Path& path) {
    const auto queue = queueOf(user);
    if (!queue)
        return queue.error();
    const Path place = platform::findIgnoringCase(m_files, queue.value() / path.filename());
    if (waits(m_files, place))
        return handheld::kAlreadyQueued;
    if (const Status copied = platform::copyWholeFile(m_files, path, place); !copied)
        return copied.error();
    return handheld::kQueued;
}

Status FolderDesktop::PltRemoveInstallFile(const std::string& user, const Path& path) {
    const auto queue = queueOf(user);
    if (!queue)
        return queue.error();
    const Path place = platform::findIgnoringCase(m_files, queue.value() / path.filename());
    return waits(m_files, place) ? m_files.remove(place) : Status();
}

Status makeUser(Files& files, const Path& core, const std::string& directory) {
    for (const std::string_view name : {handheld::kUserBackupFolder, kInstallFolder})
        if (Status made = platform::makeFolderPath(files, platform::placeIn(files, core / directory, name)); !made)
            return made;
    return {};
}

} // namespace tallybook::adapters
