// Owner, group, permissions, access list and user attributes: what a file that takes the place of another one has
// from it.
#pragma once

#include "core/platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace tallybook::adapters {

// An entry of an access list, as the system counts it.
struct AccessEntry {
    std::uint16_t tag = 0;    // ACL_USER_OBJ and so on
    std::uint16_t rights = 0; // read 4, write 2, execute 1
    std::uint32_t id = 0;     // of a named user or group

    bool operator==(const AccessEntry&) const = default;
};

// Who may do what with a file.
struct Access {
    uid_t owner = 0;
    gid_t group = 0;
    mode_t mode = 0;               // rwx for owner, group and others; the group's are the list's mask if there is one
    std::vector<AccessEntry> list; // empty where the mode says it all

    bool operator==(const Access&) const = default;
};

// What remains of the rights when the system gives a file to another owner or group than it had. Nobody may do more
// than before, but that the new owner reads and writes what he has just written: the former owner and the former
// group keep their rights as entries of the list, and the new group has those alone that everybody had.
Access withOwner(const Access& before, uid_t owner, gid_t group);

// The same where the disk has no lists: rights that a list told apart are cut to the least.
Access withoutList(const Access& before, uid_t owner, gid_t group);

// Read from a file once, to be given to the one that replaces it.
class FileTraits {
public:
    // Follows links. Nothing when there is no file; an error when it cannot be told what it has.
    static platform::Result<std::optional<FileTraits>> of(const std::filesystem::path& path);

    // Gives an open file that this user has made, and that nobody else may read yet, what the other one has, as far
    // as the system allows. False, with errno, when it could not be done.
    bool giveTo(int descriptor) const;

private:
    Access m_access;
    std::vector<std::pair<std::string, std::string>> m_attributes; // of users: name and value
};

} // namespace tallybook::adapters
