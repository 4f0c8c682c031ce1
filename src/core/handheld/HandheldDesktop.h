// The calls that the program makes of the desktop software which syncs the handheld. An adapter answers them for the
// software that a machine has.
#pragma once

#include "core/platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace tallybook::handheld {

// What PltInstallFile gives.
inline constexpr int kQueued = 0;
inline constexpr int kAlreadyQueued = 65024;

// Names of users are Windows-1252. Errors have a text for the user.
class HandheldDesktop {
public:
    virtual ~HandheldDesktop() = default;

    // The folder that holds the users' folders.
    virtual platform::Result<std::filesystem::path> CmGetCorePath() = 0;
    virtual platform::Result<int> UmGetUserCount() = 0;
    // The id of the user at a position, from 0.
    virtual platform::Result<std::uint32_t> UmGetUserID(int index) = 0;
    virtual platform::Result<std::string> UmGetUserName(std::uint32_t id) = 0;
    // The user's folder relative to the core path.
    virtual platform::Result<std::filesystem::path> UmGetUserDirectory(std::uint32_t id) = 0;

    // Puts a file into the user's install queue: the next sync brings it to the handheld as it is now, whatever
    // becomes of the file meanwhile. kAlreadyQueued leaves the queue as it is when a file of the name waits there.
    virtual platform::Result<int> PltInstallFile(const std::string& user, const std::filesystem::path& path) = 0;
    // Takes the file of this name out of the user's queue. One that is not there is no error.
    virtual platform::Status PltRemoveInstallFile(const std::string& user, const std::filesystem::path& path) = 0;
};

} // namespace tallybook::handheld
