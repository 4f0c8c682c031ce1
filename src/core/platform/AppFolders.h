// Where the program keeps its own files: the application folder, the five working folders in it, and the folders of
// settings and of the lock.
#pragma once

#include "core/platform/Files.h"
#include "core/platform/Services.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

namespace tallybook::platform {

inline constexpr std::string_view kProgramFolder = "tallybook-pocket-desktop";
inline constexpr std::string_view kPortableMark = "portable"; // a file beside the executable

// The working folders, relative to the application folder, in the order in which they are made. These are the only
// places that spell them.
inline constexpr std::string_view kBackupFolder = "Backup";
inline constexpr std::string_view kTempFolder = "Temp";
inline constexpr std::string_view kSpecsFolder = "ConversionSpecs";
inline constexpr std::string_view kExportSpecsFolder = "ConversionSpecs\\Export";
inline constexpr std::string_view kImportSpecsFolder = "ConversionSpecs\\Import";
inline constexpr std::array kWorkingFolders = {kBackupFolder, kTempFolder, kSpecsFolder, kExportSpecsFolder,
                                               kImportSpecsFolder};

// What the system tells about the program and its user. Empty stands for not set; a relative folder counts as not
// set, as its meaning would change with the current folder.
struct Surroundings {
    std::filesystem::path executableFolder{};
    std::filesystem::path home{};       // $HOME
    std::filesystem::path dataHome{};   // $XDG_DATA_HOME
    std::filesystem::path configHome{}; // $XDG_CONFIG_HOME
    std::filesystem::path runtime{};    // $XDG_RUNTIME_DIR
};

// The executable's folder when files may be made in it or the file `portable` lies there; otherwise the program's
// own folder in the user's data folder. Makes nothing.
std::filesystem::path applicationFolder(Files& files, const Surroundings& surroundings);

// The program's own folder in the user's configuration folder. Makes nothing.
std::filesystem::path configFolder(const Surroundings& surroundings);

// The folder of the lock against a second instance: the runtime folder when there is one that can be written, else
// the application folder.
std::filesystem::path lockFolder(Files& files, const Surroundings& surroundings);

// Makes a folder and those above it as far as they are missing, mode 0700. An existing folder is no error.
Status makeFolderPath(Files& files, const std::filesystem::path& folder);

// The place of a name relative to a folder, parted by "\" or "/", where each part that exists in another letter
// case is taken as it exists: "temp", "Temp" and "TEMP" are one folder.
std::filesystem::path placeIn(Files& files, const std::filesystem::path& folder, std::string_view name);

// The place of a working folder, or of a file below one.
std::filesystem::path applicationPath(Services& services, std::string_view name);

// Looks for a folder relative to the application folder, makes it when it is not there and looks again. True when
// it is there at the end. The application folder itself is there.
bool CreateDir(Services& services, std::string_view name);

// Makes the application folder and the working folders. One that cannot be made is passed over: a later write into
// it fails with its own message.
void makeFolders(Services& services);

} // namespace tallybook::platform
