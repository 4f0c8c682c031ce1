// Which of the handheld's desktop software the program works with.
#pragma once

#include "core/handheld/HandheldDesktop.h"
#include "core/platform/AppFolders.h"
#include "core/platform/Files.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tallybook::adapters {

// In place of a folder in the setting: the program's own folder, whatever else the machine has.
inline constexpr std::string_view kOwnHandheld = "own";

// Where desktop software may lie.
struct HandheldPlaces {
    std::vector<std::filesystem::path> palmDesktops; // core folders, the likeliest first
    std::filesystem::path jpilot;                    // J-Pilot's folder
    std::filesystem::path own;                       // the folder of users that the program makes itself
    std::filesystem::path copies;                    // for files that wait to be installed
    std::string account;                             // the name of the user in the own folder
};

// By the environment: Palm Desktop folders below Wine's drive C, J-Pilot's folder, the rest in the application
// folder.
HandheldPlaces handheldPlaces(const platform::Surroundings& surroundings,
                              const std::filesystem::path& applicationFolder);

// `setting` is a folder, kOwnHandheld, or empty for what is found: the first Palm Desktop folder, else J-Pilot when
// it has been used, else the own folder, which is made with its one user when it is not there. A folder with
// J-Pilot's settings in it is J-Pilot's, any other holds users' folders. `files` outlives the result.
std::unique_ptr<handheld::HandheldDesktop> chooseHandheld(platform::Files& files, const HandheldPlaces& places,
                                                          const std::filesystem::path& setting);

} // namespace tallybook::adapters
