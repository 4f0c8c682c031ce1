#include "core/platform/AppFolders.h"

#include "core/platform/Paths.h"

namespace tallybook::platform {

namespace {

using Path = std::filesystem::path;

bool isFolder(Files& files, const Path& path) {
    const Result<FileState> state = files.state(path);
    return state && state.value().kind == FileKind::Folder;
}

bool isWritableFolder(Files& files, const Path& path) {
    const Result<FileState> state = files.state(path);
    return state && state.value().kind == FileKind::Folder && state.value().writable;
}

Path absoluteOr(const Path& path, const Path& fallback) {
    return path.is_absolute() ? path : fallback;
}

} // namespace

Path applicationFolder(Files& files, const Surroundings& surroundings) {
    const Path& own = surroundings.executableFolder;
    if (isWritableFolder(files, own))
        return own;
    const Result<FileState> mark = files.state(own / kPortableMark);
    if (mark && mark.value().kind == FileKind::Regular)
        return own;
    return absoluteOr(surroundings.dataHome, surroundings.home / ".local" / "share") / kProgramFolder;
}

Path configFolder(const Surroundings& surroundings) {
    return absoluteOr(surroundings.configHome, surroundings.home / ".config") / kProgramFolder;
}

Path lockFolder(Files& files, const Surroundings& surroundings) {
    if (surroundings.runtime.is_absolute() && isWritableFolder(files, surroundings.runtime))
        return surroundings.runtime;
    return applicationFolder(files, surroundings);
}

Status makeFolderPath(Files& files, const Path& folder) {
    if (folder.empty() || isFolder(files, folder))
        return {};
    if (folder.parent_path() != folder)
        if (Status parent = makeFolderPath(files, folder.parent_path()); !parent)
            return parent;
    return files.makeFolder(folder);
}

Path placeIn(Files& files, const Path& folder, std::string_view name) {
    Path place = folder;
    while (!name.empty()) {
        const std::size_t end = name.find_first_of("\\/");
        if (const std::string_view part = name.substr(0, end); !part.empty())
            place = findIgnoringCase(files, place / part);
        name = end == std::string_view::npos ? std::string_view() : name.substr(end + 1);
    }
    return place;
}

Path applicationPath(Services& services, std::string_view name) {
    return placeIn(services.files, services.applicationFolder, name);
}

bool CreateDir(Services& services, std::string_view name) {
    const Path folder = applicationPath(services, name);
    if (isFolder(services.files, folder))
        return true;
    (void)services.files.makeFolder(folder); // the second look decides
    return isFolder(services.files, folder);
}

void makeFolders(Services& services) {
    (void)makeFolderPath(services.files, services.applicationFolder);
    for (const std::string_view name : kWorkingFolders)
        (void)CreateDir(services, name);
}

} // namespace tallybook::platform
