#include "adapters/SystemError.h"

#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <array>
#include <cerrno>
#include <system_error>

namespace tallybook::adapters {

namespace {

struct Words {
    int number;
    std::string_view text;
};
// The failures that a user can do something about. The system's own words for the rest change with the language of
// the desktop.
constexpr std::array kWords = std::to_array<Words>({
    {ENOSPC, "the disk is full"},
    {EDQUOT, "your share of the disk is used up"},
    {EROFS, "the disk is read-only"},
    {EACCES, "permission is denied"},
    {EPERM, "it is not permitted"},
    {ENOENT, "the file or folder does not exist"},
    {ENOTDIR, "a part of the path is not a folder"},
    {EISDIR, "it is a folder"},
    {EEXIST, "it exists already"},
    {ELOOP, "its links lead in a circle"},
    {ENAMETOOLONG, "the name is too long"},
    {EIO, "the disk reports a fault"},
    {EMFILE, "too many files are open"},
    {ENFILE, "too many files are open"},
    {EBUSY, "it is in use"},
    {ETXTBSY, "it is in use"},
    {EFBIG, "the file is too large for the disk"},
    {ENOMEM, "there is not enough memory"},
    {ESTALE, "the file or folder is gone from its server"},
});

} // namespace

std::string systemWords(int number) {
    for (const Words& words : kWords)
        if (words.number == number)
            return std::string(words.text);
    return std::generic_category().message(number);
}

platform::Error systemError(std::string_view action, const std::filesystem::path& path, int number) {
    return {.kind = platform::ErrorKind::File,
            .tag = {},
            .text = platform::texts::cannot(action, platform::shownPath(path), systemWords(number)),
            .number = number};
}

} // namespace tallybook::adapters
