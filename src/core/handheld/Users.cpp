#include "core/handheld/Users.h"

#include "core/pdb/Names.h"
#include "core/platform/Ansi.h"
#include "core/platform/AppFolders.h"
#include "core/platform/Containment.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <algorithm>

namespace tallybook::handheld {

namespace {

using platform::Icon;
using platform::Services;
using Path = std::filesystem::path;

constexpr std::string_view kNoUsers = "You must first HotSync with the Palm Desktop to create a user account before "
                                      "using this application.";
constexpr std::string_view kNoUserId = "User ID not specified.  File not installed";

void complain(Services& services, std::string_view text) {
    services.ui.message({.text = std::string(text), .icon = Icon::Critical, .title = {}});
}

platform::Status learnUser(Services& services, HandheldDesktop& desktop, int index, UserList& users) {
    const auto id = desktop.UmGetUserID(index);
    if (!id)
        return id.error();
    const auto name = desktop.UmGetUserName(id.value());
    if (!name)
        return name.error();
    const auto directory = desktop.UmGetUserDirectory(id.value());
    if (!directory)
        return directory.error();
    users.UserNames.push_back(nameFromBuffer(name.value()));
    // A directory is never cut: less of its name would be another folder.
    users.UserFolders.push_back(
        platform::placeIn(services.files, users.CorePath / directory.value(), kUserBackupFolder));
    return {};
}

platform::Status learnUsers(Services& services, HandheldDesktop& desktop, int count, UserList& users) {
    for (int index = 0; index < count; ++index)
        if (platform::Status learned = learnUser(services, desktop, index, users); !learned)
            return learned;
    return {};
}

platform::Status copyIntoFolder(platform::Files& files, const Path& path, const Path& folder, std::string_view name) {
    const Path plain = Path(platform::ansi::toUtf8(pdb::addUnderscore20(name))).filename();
    const Path place = platform::findIgnoringCase(files, folder / plain);
    if (platform::isSamePlace(files, path, place))
        return {};
    if (const platform::Status inside = platform::staysInFolder(files, place); !inside)
        return inside.error();
    return platform::copyWholeFile(files, path, place);
}

} // namespace

int UserList::currentPosition() const {
    const auto found = std::ranges::find(UserNames, CurrentUser);
    return found == UserNames.end() ? -1 : static_cast<int>(found - UserNames.begin());
}

int UserList::shownPosition() const {
    return UserNames.empty() ? -1 : std::max(0, currentPosition());
}

Path UserList::currentFolder() const {
    const int position = currentPosition();
    return position < 0 ? Path() : UserFolders[static_cast<std::size_t>(position)];
}

std::string nameFromBuffer(std::string_view name) {
    return std::string(name.substr(0, std::min(name.find('\0'), kUserNameLength)));
}

bool GetUserIDs(Services& services, HandheldDesktop& desktop, UserList& users) {
    users.UserNames.clear();
    users.UserFolders.clear();
    const auto core = desktop.CmGetCorePath();
    const auto count = core ? desktop.UmGetUserCount() : platform::Result<int>(core.error());
    if (!count) {
        complain(services, count.error().text);
        return false;
    }
    if (count.value() < 0)
        return false;
    if (count.value() == 0) {
        complain(services, kNoUsers);
        return false;
    }
    users.CorePath = core.value();
    if (const platform::Status learned = learnUsers(services, desktop, count.value(), users); !learned) {
        users.UserNames.clear();
        users.UserFolders.clear();
        complain(services, learned.error().text);
        return false;
    }
    return true;
}

bool InstallFile(Services& services, HandheldDesktop& desktop, const Path& path, const std::string& user) {
    if (user.empty()) {
        complain(services, kNoUserId);
        return false;
    }
    const auto first = desktop.PltInstallFile(user, path);
    if (first && first.value() == kAlreadyQueued)
        if (const platform::Status removed = desktop.PltRemoveInstallFile(user, path); !removed) {
            complain(services, removed.error().text);
            return false;
        }
    // Once more whatever the first call gave: only then does the queue hold the file as it is now.
    const auto queued = desktop.PltInstallFile(user, path);
    if (queued)
        return true;
    complain(services, queued.error().text);
    return false;
}

std::string installToUser(Services& services, HandheldDesktop& desktop, const UserList& users, const Path& path,
                          std::string_view name, int userIndex, ForUsers which) {
    std::string handled;
    for (int index = 0; index < users.UserCount(); ++index) {
        if (index != userIndex && which == ForUsers::One)
            continue;
        const auto place = static_cast<std::size_t>(index);
        const std::string& user = users.UserNames[place];
        if (!InstallFile(services, desktop, path, user))
            continue;
        handled += (handled.empty() ? "" : ", ") + user;
        const platform::Status copied = copyIntoFolder(services.files, path, users.UserFolders[place], name);
        if (!copied)
            complain(services, copied.error().text);
    }
    return handled;
}

} // namespace tallybook::handheld
