// The handheld's users: who they are, where their databases lie, and what their next sync installs.
#pragma once

#include "core/handheld/HandheldDesktop.h"
#include "core/platform/Services.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::handheld {

inline constexpr std::size_t kUserNameLength = 30; // of the buffer that a name is read into
inline constexpr std::string_view kUserBackupFolder = "Backup";

// Filled once at the start. Names are Windows-1252.
struct UserList {
    std::vector<std::string> UserNames;
    std::vector<std::filesystem::path> UserFolders; // of their databases, as many as UserNames
    std::string CurrentUser{};                      // picked last; may be nobody's name, or empty
    std::filesystem::path CorePath{};

    int UserCount() const { return static_cast<int>(UserNames.size()); }
    // The position of CurrentUser, -1 when the list has no such user.
    int currentPosition() const;
    // Whom a choice of users shows first: CurrentUser, else the first one; -1 without users.
    int shownPosition() const;
    // The folder of CurrentUser, empty when the list has no such user.
    std::filesystem::path currentFolder() const;
};

// A name as it comes out of its buffer: what stands before a NUL, at most kUserNameLength characters.
std::string nameFromBuffer(std::string_view name);

// Learns the users. False, after a message, when there are none or they cannot be learned; the list is then empty.
// CurrentUser stays as it is.
bool GetUserIDs(platform::Services& services, HandheldDesktop& desktop, UserList& users);

// Queues a file for the user's next sync. One that waits there already is taken out and queued anew. False after a
// message when the user is empty or the file is not in the queue in the end.
bool InstallFile(platform::Services& services, HandheldDesktop& desktop, const std::filesystem::path& path,
                 const std::string& user);

enum class ForUsers { One, All };

// Queues a file for the user at a position, or for all, and puts a copy into the folder of each unless the file lies
// there. `name` is the file's name. Gives the names of those for whom it is queued, with ", " between; what failed
// has been shown.
std::string installToUser(platform::Services& services, HandheldDesktop& desktop, const UserList& users,
                          const std::filesystem::path& path, std::string_view name, int userIndex,
                          ForUsers which = ForUsers::One);

} // namespace tallybook::handheld
