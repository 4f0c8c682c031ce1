#include "adapters/FileTraits.h"

#include "adapters/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <endian.h>
#include <linux/posix_acl.h>
#include <linux/posix_acl_xattr.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tallybook::adapters {

namespace {

using platform::Result;
using Path = std::filesystem::path;
using Entries = std::vector<AccessEntry>;
using Attributes = std::vector<std::pair<std::string, std::string>>;

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr std::string_view kUserAttribute = "user.";
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr std::uint16_t kReadAndWrite = ACL_READ | ACL_WRITE;
constexpr std::uint32_t kNobody = ACL_UNDEFINED_ID;

// The system tells that a file has no such attribute, or that its disk knows none.
bool saysNone(int number) {
    return number == ENODATA || number == ENOTSUP;
}

// An attribute's value; nothing, with errno, when there is none. One that grows meanwhile is read again.
std::optional<std::string> attribute(const Path& path, const char* name) {
    std::string value;
    for (;;) {
        const ssize_t size = getxattr(path.c_str(), name, nullptr, 0);
        if (size < 0)
            return std::nullopt;
        value.resize(static_cast<std::size_t>(size));
        const ssize_t read = getxattr(path.c_str(), name, value.data(), value.size());
        if (read >= 0) {
            value.resize(static_cast<std::size_t>(read));
            return value;
        }
        if (errno != ERANGE)
            return std::nullopt;
    }
}

// The list as the system gives it: a version and eight bytes for each entry, the low byte first.
Entries parseList(std::string_view bytes) {
    posix_acl_xattr_header header{};
    if (bytes.size() < sizeof header)
        return {};
    bytes.remove_prefix(sizeof header);
    Entries entries;
    for (posix_acl_xattr_entry entry{}; bytes.size() >= sizeof entry; bytes.remove_prefix(sizeof entry)) {
        std::memcpy(&entry, bytes.data(), sizeof entry);
        entries.push_back({le16toh(entry.e_tag), le16toh(entry.e_perm), le32toh(entry.e_id)});
    }
    return entries;
}

std::string printList(const Entries& entries) {
    const posix_acl_xattr_header header{htole32(POSIX_ACL_XATTR_VERSION)};
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    for (const AccessEntry& entry : entries) {
        const posix_acl_xattr_entry stored{htole16(entry.tag), htole16(entry.rights), htole32(entry.id)};
        bytes.append(reinterpret_cast<const char*>(&stored), sizeof stored);
    }
    return bytes;
}

bool isOfGroupClass(const AccessEntry& entry) {
    return entry.tag == ACL_USER || entry.tag == ACL_GROUP_OBJ || entry.tag == ACL_GROUP;
}

// The list, or what the mode says as a list, with the mask worked into the entries that it cuts.
Entries unmasked(const Access& access) {
    if (access.list.empty())
        return {{ACL_USER_OBJ, static_cast<std::uint16_t>(access.mode >> 6 & 7), kNobody},
                {ACL_GROUP_OBJ, static_cast<std::uint16_t>(access.mode >> 3 & 7), kNobody},
                {ACL_OTHER, static_cast<std::uint16_t>(access.mode & 7), kNobody}};
    Entries entries = access.list;
    const auto mask = std::ranges::find(entries, ACL_MASK, &AccessEntry::tag);
    if (mask == entries.end())
        return entries;
    const std::uint16_t rights = mask->rights;
    entries.erase(mask);
    for (AccessEntry& entry : entries)
        if (isOfGroupClass(entry))
            entry.rights &= rights;
    return entries;
}

// The rights of the first entry of a kind and id; none when there is no such entry.
std::uint16_t rightsOf(const Entries& entries, std::uint16_t tag, std::uint32_t id = kNobody) {
    const auto found =
        std::ranges::find_if(entries, [&](const AccessEntry& entry) { return entry.tag == tag && entry.id == id; });
    return found == entries.end() ? std::uint16_t{0} : found->rights;
}

void setRights(Entries& entries, std::uint16_t tag, std::uint16_t rights) {
    for (AccessEntry& entry : entries)
        if (entry.tag == tag)
            entry.rights = rights;
}

void removeNamed(Entries& entries, std::uint16_t tag, std::uint32_t id) {
    std::erase_if(entries, [&](const AccessEntry& entry) { return entry.tag == tag && entry.id == id; });
}

// An entry for the new owner would never be looked at.
void changeOwner(Entries& entries, uid_t former, uid_t owner) {
    const std::uint16_t rights = rightsOf(entries, ACL_USER_OBJ);
    removeNamed(entries, ACL_USER, former);
    removeNamed(entries, ACL_USER, owner);
    setRights(entries, ACL_USER_OBJ, kReadAndWrite);
    entries.push_back({ACL_USER, rights, former});
}

// Who is in several groups may do what any of them may, so the new one gets what each of them and everybody has.
void changeGroup(Entries& entries, gid_t former) {
    std::uint16_t least = rightsOf(entries, ACL_OTHER);
    for (const AccessEntry& entry : entries)
        if (entry.tag == ACL_GROUP_OBJ || entry.tag == ACL_GROUP)
            least &= entry.rights;
    const std::uint16_t rights = rightsOf(entries, ACL_GROUP_OBJ) | rightsOf(entries, ACL_GROUP, former);
    removeNamed(entries, ACL_GROUP, former);
    setRights(entries, ACL_GROUP_OBJ, least);
    entries.push_back({ACL_GROUP, rights, former});
}

// The order that the system asks for, with a mask that cuts nothing. It holds what others may do: with an empty mask
// the system does not look at the list at all, and whom an entry leaves nothing would be one of the others.
Access listed(Entries entries, uid_t owner, gid_t group) {
    std::uint16_t mask = rightsOf(entries, ACL_OTHER);
    for (const AccessEntry& entry : entries)
        if (isOfGroupClass(entry))
            mask |= entry.rights;
    entries.push_back({ACL_MASK, mask, kNobody});
    std::ranges::sort(entries, [](const AccessEntry& a, const AccessEntry& b) {
        return a.tag != b.tag ? a.tag < b.tag : a.id < b.id;
    });
    const auto mode =
        static_cast<mode_t>(rightsOf(entries, ACL_USER_OBJ) << 6 | mask << 3 | rightsOf(entries, ACL_OTHER));
    return {owner, group, mode, std::move(entries)};
}

// The owner and the group as far as the system lets this user give them. An administrator alone gives files away; to
// a group everybody does who is in it.
bool giveOwner(int descriptor, uid_t owner, gid_t group) {
    const auto forbidden = [] { return errno == EPERM || errno == EINVAL; };
    if (fchown(descriptor, owner, group) == 0)
        return true;
    if (!forbidden())
        return false;
    return fchown(descriptor, static_cast<uid_t>(-1), group) == 0 || forbidden();
}

// A folder may give its new files a list; one that this file is not to have goes first, as the mode would only set
// its mask.
bool giveMode(int descriptor, mode_t mode) {
    if (fremovexattr(descriptor, kAccessList) != 0 && !saysNone(errno))
        return false;
    return fchmod(descriptor, mode & kPermissions) == 0;
}

bool giveList(int descriptor, const Entries& entries) {
    const std::string bytes = printList(entries);
    return fsetxattr(descriptor, kAccessList, bytes.data(), bytes.size(), 0) == 0;
}

// The attributes that users and their programs have given a file. What cannot be read is left out: it says nothing
// about who may do what.
Attributes userAttributes(const Path& path) {
    const ssize_t size = listxattr(path.c_str(), nullptr, 0);
    std::string names(static_cast<std::size_t>(std::max<ssize_t>(size, 0)), '\0');
    const ssize_t length = listxattr(path.c_str(), names.data(), names.size());
    names.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    Attributes attributes;
    for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) { // each name ends with a NUL
        const std::string name = names.c_str() + at;
        if (!name.starts_with(kUserAttribute))
            continue;
        if (auto value = attribute(path, name.c_str()))
            attributes.emplace_back(name, std::move(*value));
    }
    return attributes;
}

// False when the disk has no room for them. One that has none of the kind is no reason to give up a save.
bool giveAttributes(int descriptor, const Attributes& attributes) {
    return std::ranges::all_of(attributes, [&](const auto& item) {
        const auto& [name, value] = item;
        return fsetxattr(descriptor, name.c_str(), value.data(), value.size(), 0) == 0 || errno == ENOTSUP ||
               errno == EPERM || errno == EACCES;
    });
}

bool giveAccess(int descriptor, const Access& before, uid_t owner, gid_t group) {
    const Access access = withOwner(before, owner, group);
    if (access.list.empty())
        return giveMode(descriptor, access.mode);
    return giveList(descriptor, access.list) || giveMode(descriptor, withoutList(before, owner, group).mode);
}

} // namespace

Access withOwner(const Access& before, uid_t owner, gid_t group) {
    if (owner == before.owner && group == before.group)
        return before;
    Entries entries = unmasked(before);
    if (owner != before.owner)
        changeOwner(entries, before.owner, owner);
    if (group != before.group)
        changeGroup(entries, before.group);
    return listed(std::move(entries), owner, group);
}

Access withoutList(const Access& before, uid_t owner, gid_t group) {
    Access access{owner, group, before.mode, {}};
    if (owner != before.owner)
        access.mode = (access.mode & ~mode_t{S_IRWXU}) | S_IRUSR | S_IWUSR;
    const mode_t forGroup = access.mode >> 3 & S_IRWXO;
    const mode_t forOthers = access.mode & S_IRWXO;
    if (!before.list.empty())
        access.mode &= S_IRWXU;
    else if (group != before.group) // who was in the group is one of the others now, and the other way round
        access.mode = (access.mode & S_IRWXU) | (forGroup & forOthers) << 3 | (forGroup & forOthers);
    return access;
}

Result<std::optional<FileTraits>> FileTraits::of(const Path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return std::optional<FileTraits>();
        return systemError("find", path, errno);
    }
    FileTraits traits;
    traits.m_access = {status.st_uid, status.st_gid, status.st_mode & kPermissions, {}};
    if (const auto list = attribute(path, kAccessList))
        traits.m_access.list = parseList(*list);
    else if (!saysNone(errno))
        return systemError("find", path, errno);
    traits.m_attributes = userAttributes(path);
    return std::optional(std::move(traits));
}

// The rights come last: a change of owner may clear some, and the attributes are given while nobody else may look.
bool FileTraits::giveTo(int descriptor) const {
    struct stat status {};
    return giveAttributes(descriptor, m_attributes) && giveOwner(descriptor, m_access.owner, m_access.group) &&
           fstat(descriptor, &status) == 0 && giveAccess(descriptor, m_access, status.st_uid, status.st_gid);
}

} // namespace tallybook::adapters
