#include "adapters/HandheldChoice.h"

#include "adapters/AppFolder.h"
#include "adapters/FolderDesktop.h"
#include "adapters/JPilotDesktop.h"

#include <cstdlib>

namespace tallybook::adapters {

namespace {

using handheld::HandheldDesktop;
using platform::FileKind;
using platform::Files;
using Path = std::filesystem::path;

// Names of Palm Desktop's folder through its versions, relative to drive C.
constexpr const char* kPalmFolders[] = {"Program Files (x86)/Palm", "Program Files/Palm",
                                        "Program Files (x86)/palmOne", "Program Files/palmOne"};

Path fromEnvironment(const char* name, const Path& fallback) {
    const char* value = std::getenv(name);
    const Path path = value == nullptr ? Path() : Path(value);
    return path.is_absolute() ? path : fallback;
}

bool is(Files& files, const Path& path, FileKind kind) {
    const auto state = files.state(path);
    return state && state.value().kind == kind;
}

bool isJPilots(Files& files, const Path& folder) {
    return is(files, folder / kJPilotSettings, FileKind::Regular);
}

std::unique_ptr<HandheldDesktop> ownDesktop(Files& files, const HandheldPlaces& places) {
    // A folder without users is the user's own doing. What cannot be made has no users, which is said then.
    if (is(files, places.own, FileKind::Missing))
        (void)makeUser(files, places.own, places.account);
    return std::make_unique<FolderDesktop>(files, places.own, FolderDesktop::Absent::HasNoUsers);
}

std::unique_ptr<HandheldDesktop> desktopIn(Files& files, const HandheldPlaces& places, const Path& folder) {
    if (isJPilots(files, folder))
        return std::make_unique<JPilotDesktop>(files, folder, places.copies);
    return std::make_unique<FolderDesktop>(files, folder);
}

} // namespace

HandheldPlaces handheldPlaces(const platform::Surroundings& surroundings, const Path& applicationFolder) {
    HandheldPlaces places;
    const Path drive = fromEnvironment("WINEPREFIX", surroundings.home / ".wine") / "drive_c";
    for (const char* folder : kPalmFolders)
        places.palmDesktops.push_back(drive / folder);
    const std::string account = accountName();
    places.palmDesktops.push_back(drive / "users" / account / "Documents" / "Palm OS Desktop");
    places.jpilot = fromEnvironment("JPILOT_HOME", surroundings.home) / ".jpilot";
    places.own = applicationFolder / "Handheld";
    places.copies = applicationFolder / "Install";
    places.account = account;
    return places;
}

std::unique_ptr<HandheldDesktop> chooseHandheld(Files& files, const HandheldPlaces& places, const Path& setting) {
    if (setting == kOwnHandheld)
        return ownDesktop(files, places);
    if (!setting.empty())
        return desktopIn(files, places, setting.has_filename() ? setting : setting.parent_path());
    for (const Path& folder : places.palmDesktops)
        if (is(files, folder, FileKind::Folder))
            return desktopIn(files, places, folder);
    if (isJPilots(files, places.jpilot))
        return desktopIn(files, places, places.jpilot);
    return ownDesktop(files, places);
}

} // namespace tallybook::adapters
