// Users and install queues as folders on the disk: those of a Palm Desktop, wherever they lie, or the program's own.
#pragma once

#include "core/handheld/HandheldDesktop.h"
#include "core/platform/Files.h"

#include <filesystem>
#include <vector>

namespace tallybook::adapters {

// Each folder in the core folder that holds a folder "Backup" is a user of its name. The queue is the folder
// "Install" beside that: the sync installs the files in it and takes them out. Letter case of the two does not count.
class FolderDesktop : public handheld::HandheldDesktop {
public:
    enum class Absent { IsAFault, HasNoUsers };

    // `absent` tells what a core folder that is not there means. `files` outlives this object.
    FolderDesktop(platform::Files& files, std::filesystem::path core, Absent absent = Absent::IsAFault);

    platform::Result<std::filesystem::path> CmGetCorePath() override { return m_core; }
    platform::Result<int> UmGetUserCount() override;
    platform::Result<std::uint32_t> UmGetUserID(int index) override;
    platform::Result<std::string> UmGetUserName(std::uint32_t id) override;
    platform::Result<std::filesystem::path> UmGetUserDirectory(std::uint32_t id) override;
    platform::Result<int> PltInstallFile(const std::string& user, const std::filesystem::path& path) override;
    platform::Status PltRemoveInstallFile(const std::string& user, const std::filesystem::path& path) override;

private:
    platform::Result<std::vector<std::filesystem::path>> directories();
    platform::Result<std::filesystem::path> queueOf(const std::string& user);

    platform::Files& m_files;
    std::filesystem::path m_core;
    Absent m_absent;
    std::vector<std::filesystem::path> m_users; // at the last count; the id is the position
};

// Makes the folders of a user for FolderDesktop. Those that are there stay as they are.
platform::Status makeUser(platform::Files& files, const std::filesystem::path& core, const std::string& directory);

} // namespace tallybook::adapters
