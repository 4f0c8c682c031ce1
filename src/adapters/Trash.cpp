#include "adapters/Trash.h"

#include "adapters/FileHandle.h"
#include "adapters/SystemClock.h"
#include "adapters/SystemError.h"

#include <cctype>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace tallybook::adapters {

namespace {

using platform::Status;
using Path = std::filesystem::path;

constexpr int kNames = 1000;              // tried for a file whose name is taken in the trash
constexpr std::size_t kLongestStem = 240; // bytes of a name that ".trashinfo" goes behind

std::optional<struct stat> look(const Path& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return status;
}

// Exists in the end as a folder, and not as a link to one.
bool makePrivateFolder(const Path& folder) {
    if (mkdir(folder.c_str(), S_IRWXU) == 0)
        return true;
    const auto status = look(folder);
    return status && S_ISDIR(status->st_mode);
}

// The highest folder of the volume that a folder lies on.
Path topOf(Path folder, dev_t device) {
    while (folder.has_parent_path() && folder.parent_path() != folder) {
        const auto above = look(folder.parent_path());
        if (!above || above->st_dev != device)
            break;
        folder = folder.parent_path();
    }
    return folder;
}

struct Trash {
    Path folder;
    Path base; // that the places of files are told relative to; empty for absolute ones
};

// The trash that an administrator has prepared on a volume, else the user's own there.
Trash trashOnVolume(const Path& top) {
    const std::string user = std::to_string(getuid());
    const auto shared = look(top / ".Trash");
    if (shared && S_ISDIR(shared->st_mode) && (shared->st_mode & S_ISVTX) != 0 &&
        makePrivateFolder(top / ".Trash" / user))
        return {top / ".Trash" / user, top};
    return {top / (".Trash-" + user), top};
}

std::optional<Trash> trashFor(const Path& path, const Path& dataHome) {
    std::error_code failed;
    std::filesystem::create_directories(dataHome, failed);
    const auto folder = look(path.parent_path());
    const auto home = look(dataHome);
    if (!folder)
        return std::nullopt;
    Trash trash = home && home->st_dev == folder->st_dev ? Trash{dataHome / "Trash", {}}
                                                         : trashOnVolume(topOf(path.parent_path(), folder->st_dev));
    if (!makePrivateFolder(trash.folder) || !makePrivateFolder(trash.folder / "files") ||
        !makePrivateFolder(trash.folder / "info"))
        return std::nullopt;
    return trash;
}

std::string percentEncoded(const std::string& path) {
    std::string text;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain =
            byte < 0x80 && (std::isalnum(byte) != 0 || std::string("-_.~/").find(c) != std::string::npos);
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned>(byte));
        text += plain ? std::string(1, c) : std::string(escape);
    }
    return text;
}

std::string trashInfo(const Path& place) {
    const platform::LocalTime now = SystemClock().now();
    char date[32];
    std::snprintf(date, sizeof date, "%04d-%02d-%02dT%02d:%02d:%02d", now.year, now.month, now.day, now.hour,
                  now.minute, now.second);
    return "[Trash Info]\nPath=" + percentEncoded(place.string()) + "\nDeletionDate=" + date + '\n';
}

bool writeAll(int descriptor, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = retried([&] { return write(descriptor, text.data() + done, text.size() - done); });
        if (count <= 0)
            return false;
        done += static_cast<std::size_t>(count);
    }
    return retried([&] { return fsync(descriptor); }) == 0;
}

// What comes of one name in the trash; the number of the system's error otherwise.
int moveAs(const Path& path, const Trash& trash, const std::string& name) {
    const Path info = trash.folder / "info" / (name + ".trashinfo");
    // Making the note takes the name: two programs never get the same.
    FileHandle note(retried([&] { return open(info.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600); }));
    if (!note.isOpen())
        return errno;
    const Path place = trash.base.empty() ? path : path.lexically_relative(trash.base);
    const Path target = trash.folder / "files" / name;
    int number = writeAll(note.get(), trashInfo(place)) ? 0 : errno;
    if (number == 0 && renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) != 0)
        number = errno;
    if (number != 0)
        (void)unlink(info.c_str());
    return number;
}

} // namespace

Status moveToTrash(const Path& given, const Path& dataHome) {
    std::error_code failed;
    // The folder's links are followed, the file's own is not: the link is what goes.
    const Path folder = std::filesystem::canonical(std::filesystem::absolute(given).parent_path(), failed);
    const Path path = folder / given.filename();
    if (failed || !look(path))
        return systemError("delete", given, failed ? failed.value() : ENOENT);
    const auto trash = trashFor(path, dataHome);
    if (!trash)
        return systemError("make the trash for", given, errno);
    const std::string stem = path.filename().string().substr(0, kLongestStem);
    int number = EEXIST;
    for (int i = 1; i <= kNames && number == EEXIST; ++i)
        number = moveAs(path, *trash, i == 1 ? stem : stem + '.' + std::to_string(i));
    if (number != 0)
        return systemError("move to the trash", given, number);
    return {};
}

} // namespace tallybook::adapters
