// Faults that the machine itself makes: small and read-only disks, rights that bind, limits. Where it cannot make
// one, `problem` says why, and the test fails with that text.
#pragma once

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <sys/types.h>
#include <vector>

namespace tallybook::test {

// A disk of its own kind at an existing folder, gone with this object. It is mounted in a space of this process
// alone, so that nothing is left on the machine even when the process dies. Without the rights of an administrator
// a user namespace serves.
class SmallDisk {
public:
    // Options as of tmpfs: "size=64k".
    SmallDisk(std::filesystem::path folder, const std::string& options);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    const std::string& problem() const { return m_problem; } // empty when the disk is there
    std::string makeReadOnly();                              // empty when it is
    std::uint64_t freeBytes() const;

private:
    std::filesystem::path m_folder;
    std::string m_options;
    std::string m_problem;
};

// Takes away the administrator's rights over files while it lives, so that permissions bind everyone.
class OrdinaryUser {
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    const std::string& problem() const { return m_problem; }

private:
    std::uint32_t m_before[2] = {0, 0}; // effective capabilities
    std::string m_problem;
};

// A user of the machine; the numbers need not be in its list of users.
struct Account {
    uid_t user = 0;
    gid_t group = 0;
    std::vector<gid_t> groups; // further ones
};

// What this process does to files it does as another user while this lives. An administrator alone can.
class AnotherUser {
public:
    explicit AnotherUser(const Account& account);
    ~AnotherUser();
    AnotherUser(const AnotherUser&) = delete;
    AnotherUser& operator=(const AnotherUser&) = delete;

    const std::string& problem() const { return m_problem; }

private:
    std::vector<gid_t> m_groupsBefore;
    gid_t m_groupBefore;
    uid_t m_userBefore;
    std::string m_problem;
};

// No file of this process may grow beyond a size while it lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::uint64_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    struct sigaction m_action {};
};

} // namespace tallybook::test
