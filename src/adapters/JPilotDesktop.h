// The user and the install queue of J-Pilot, the PIM desktop for handhelds.
#pragma once

#include "core/handheld/HandheldDesktop.h"
#include "core/platform/Files.h"

#include <filesystem>

namespace tallybook::adapters {

inline constexpr std::string_view kJPilotSettings = "jpilot.rc";

// J-Pilot keeps one user. Its folder holds "jpilot.rc" with a line "user NAME", the backup folder "backup", a link
// that each full backup moves on, the queue "jpilot.install" of one absolute path a line, which is missing when it is
// empty, and "sync_pid", which is locked while a sync runs.
//
// What is queued is a copy in a folder of ours: the file itself may lie in a backup that is gone when the sync comes.
// While a sync runs nothing is changed.
class JPilotDesktop : public handheld::HandheldDesktop {
public:
    // `home` is J-Pilot's folder, absolute; `copies` is made when it is needed. `files` outlives this object.
    JPilotDesktop(platform::Files& files, std::filesystem::path home, std::filesystem::path copies);

    platform::Result<std::filesystem::path> CmGetCorePath() override { return m_home.parent_path(); }
    platform::Result<int> UmGetUserCount() override;
    platform::Result<std::uint32_t> UmGetUserID(int index) override;
    platform::Result<std::string> UmGetUserName(std::uint32_t id) override;
    platform::Result<std::filesystem::path> UmGetUserDirectory(std::uint32_t id) override;
    platform::Result<int> PltInstallFile(const std::string& user, const std::filesystem::path& path) override;
    platform::Status PltRemoveInstallFile(const std::string& user, const std::filesystem::path& path) override;

private:
    platform::Result<std::string> userName();
    platform::Status mayChangeQueue(const std::string& user);
    platform::Result<std::string> readQueue();
    platform::Status writeQueue(const std::string& text);

    platform::Files& m_files;
    std::filesystem::path m_home;
    std::filesystem::path m_copies;
};

} // namespace tallybook::adapters
