#include "adapters/JPilotDesktop.h"

#include "adapters/FileHandle.h"
#include "core/handheld/Users.h"
#include "core/platform/Ansi.h"
#include "core/platform/AppFolders.h"
#include "core/platform/Containment.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <fcntl.h>
#include <string>
#include <string_view>
#include <utility>

namespace tallybook::adapters {

namespace {

using platform::FileKind;
using platform::Result;
using platform::Status;
using Path = std::filesystem::path;

constexpr std::string_view kQueue = "jpilot.install";
constexpr std::string_view kLock = "sync_pid";
constexpr std::string_view kUserKey = "user ";
constexpr std::size_t kLongestLine = 999; // bytes of a path that J-Pilot reads

platform::Error refusal(std::string text) {
    return {.kind = platform::ErrorKind::File, .tag = {}, .text = std::move(text)};
}

// Takes the next line off a text, without its end.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

bool holdsLine(std::string_view text, std::string_view wanted) {
    while (!text.empty())
        if (takeLine(text) == wanted)
            return true;
    return false;
}

// All other lines, as they stand.
std::string withoutLine(std::string_view text, std::string_view unwanted) {
    std::string rest;
    while (!text.empty())
        if (const std::string_view line = takeLine(text); line != unwanted)
            rest.append(line) += '\n';
    return rest;
}

std::string withLine(std::string text, std::string_view line) {
    if (!text.empty() && !text.ends_with('\n'))
        text += '\n';
    return text.append(line) += '\n';
}

// Whether another program holds the lock. A file that is not there is held by nobody.
bool isLocked(const Path& path) {
    const FileHandle file(retried([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
    if (!file.isOpen())
        return false;
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return retried([&] { return fcntl(file.get(), F_GETLK, &lock); }) == 0 && lock.l_type != F_UNLCK;
}

} // namespace

JPilotDesktop::JPilotDesktop(platform::Files& files, Path home, Path copies)
    : m_files(files), m_home(std::move(home)), m_copies(std::move(copies)) {}

// Windows-1252; empty before the first sync.
Result<std::string> JPilotDesktop::userName() {
    const auto bytes = m_files.read(m_home / kJPilotSettings);
    if (!bytes)
        return bytes.error();
    const std::string all(bytes.value().begin(), bytes.value().end());
    std::string_view text = all;
    while (!text.empty())
        if (const std::string_view line = takeLine(text); line.starts_with(kUserKey))
            return handheld::nameFromBuffer(platform::ansi::fromUtf8(line.substr(kUserKey.size())));
    return std::string();
}

Result<int> JPilotDesktop::UmGetUserCount() {
    const auto name = userName();
    if (!name)
        return name.error();
    return name.value().empty() ? 0 : 1;
}

Result<std::uint32_t> JPilotDesktop::UmGetUserID(int index) {
    return static_cast<std::uint32_t>(index);
}

Result<std::string> JPilotDesktop::UmGetUserName(std::uint32_t) {
    return userName();
}

Result<Path> JPilotDesktop::UmGetUserDirectory(std::uint32_t) {
    return m_home.filename();
}

Status JPilotDesktop::mayChangeQueue(const std::string& user) {
    const auto name = userName();
    if (!name)
        return name.error();
    if (name.value() != user)
        return refusal(platform::texts::userGone(user));
    if (isLocked(m_home / kLock))
        return refusal(std::string(platform::texts::kSyncRuns));
    return {};
}

Result<std::string> JPilotDesktop::readQueue() {
    const Path queue = m_home / kQueue;
    const auto state = m_files.state(queue);
    if (!state)
        return state.error();
    if (state.value().kind == FileKind::Missing)
        return std::string();
    if (state.value().kind != FileKind::Regular)
        return refusal(platform::texts::notRegular(platform::shownPath(queue)));
    const auto bytes = m_files.read(queue);
    if (!bytes)
        return bytes.error();
    return std::string(bytes.value().begin(), bytes.value().end());
}

// An empty queue is no file.
Status JPilotDesktop::writeQueue(const std::string& text) {
    const Path queue = m_home / kQueue;
    if (text.empty())
        return m_files.remove(queue);
    return platform::writeWholeFile(m_files, queue, platform::Bytes(text.begin(), text.end()));
}

Result<int> JPilotDesktop::PltInstallFile(const std::string& user, const Path& path) {
    if (const Status may = mayChangeQueue(user); !may)
        return may.error();
    const Path copy = m_copies / path.filename();
    const std::string line = copy.string();
    if (line.size() > kLongestLine || line.find('\n') != std::string::npos)
        return refusal(platform::texts::noQueueLine(platform::shownPath(copy)));
    auto queue = readQueue();
    if (!queue)
        return queue.error();
    if (holdsLine(queue.value(), line))
        return handheld::kAlreadyQueued;
    if (const Status made = platform::makeFolderPath(m_files, m_copies); !made)
        return made.error();
    if (const Status inside = platform::staysInFolder(m_files, copy); !inside)
        return inside.error();
    if (const Status copied = platform::copyWholeFile(m_files, path, copy); !copied)
        return copied.error();
    if (const Status written = writeQueue(withLine(std::move(queue).value(), line)); !written)
        return written.error();
    const auto now = readQueue();
    if (!now || !holdsLine(now.value(), line))
        return refusal(platform::texts::queueChanged(platform::shownPath(m_home / kQueue)));
    return handheld::kQueued;
}

Status JPilotDesktop::PltRemoveInstallFile(const std::string& user, const Path& path) {
    if (Status may = mayChangeQueue(user); !may)
        return may;
    const std::string line = (m_copies / path.filename()).string();
    const auto queue = readQueue();
    if (!queue)
        return queue.error();
    return holdsLine(queue.value(), line) ? writeQueue(withoutLine(queue.value(), line)) : Status();
}

} // namespace tallybook::adapters
