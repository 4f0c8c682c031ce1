#include "adapters/faults/Machine.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <grp.h>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tallybook::test {

namespace {

std::string cannot(const std::string& what) {
    return "This machine cannot make the fault: " + what + ": " + std::strerror(errno);
}

bool putLine(const char* file, const std::string& line) {
    return static_cast<bool>(std::ofstream(file) << line << std::flush);
}

// A user namespace in which this user is the administrator of a mount space.
std::string enterUserSpace() {
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return cannot("unshare");
    const bool mapped = putLine("/proc/self/setgroups", "deny") &&
                        putLine("/proc/self/uid_map", "0 " + user + " 1") &&
                        putLine("/proc/self/gid_map", "0 " + group + " 1");
    return mapped ? std::string() : cannot("mapping of users");
}

std::string enterMountSpace() {
    if (unshare(CLONE_NEWNS) != 0)
        if (const std::string problem = enterUserSpace(); !problem.empty())
            return problem;
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return cannot("private mounts");
    return {};
}

// Once for the whole process.
const std::string& mountSpaceProblem() {
    static const std::string problem = enterMountSpace();
    return problem;
}

struct Capabilities {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2] = {};

    bool get() { return syscall(SYS_capget, &header, data) == 0; }
    bool set() { return syscall(SYS_capset, &header, data) == 0; }
};

constexpr std::uint32_t bit(unsigned capability) {
    return std::uint32_t{1} << capability;
}

} // namespace

SmallDisk::SmallDisk(std::filesystem::path folder, const std::string& options)
    : m_folder(std::move(folder)), m_options(options), m_problem(mountSpaceProblem()) {
    if (m_problem.empty() && mount("tmpfs", m_folder.c_str(), "tmpfs", 0, m_options.c_str()) != 0)
        m_problem = cannot("mount");
}

SmallDisk::~SmallDisk() {
    if (m_problem.empty())
        (void)umount2(m_folder.c_str(), MNT_DETACH);
}

std::string SmallDisk::makeReadOnly() {
    if (mount("tmpfs", m_folder.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, m_options.c_str()) != 0)
        return cannot("mount");
    return {};
}

std::uint64_t SmallDisk::freeBytes() const {
    struct statvfs disk {};
    return statvfs(m_folder.c_str(), &disk) == 0 ? std::uint64_t{disk.f_bavail} * disk.f_bsize : 0;
}

OrdinaryUser::OrdinaryUser() {
    Capabilities now;
    if (!now.get()) {
        m_problem = cannot("capget");
        return;
    }
    m_before[0] = now.data[0].effective;
    m_before[1] = now.data[1].effective;
    now.data[0].effective &= ~(bit(CAP_DAC_OVERRIDE) | bit(CAP_DAC_READ_SEARCH) | bit(CAP_FOWNER));
    if (!now.set())
        m_problem = cannot("capset");
}

OrdinaryUser::~OrdinaryUser() {
    Capabilities now;
    if (!now.get())
        return;
    now.data[0].effective = m_before[0];
    now.data[1].effective = m_before[1];
    (void)now.set();
}

AnotherUser::AnotherUser(const Account& account) : m_groupBefore(getegid()), m_userBefore(geteuid()) {
    m_groupsBefore.resize(static_cast<std::size_t>(std::max(getgroups(0, nullptr), 0)));
    (void)getgroups(static_cast<int>(m_groupsBefore.size()), m_groupsBefore.data());
    if (setgroups(account.groups.size(), account.groups.data()) != 0 || setegid(account.group) != 0 ||
        seteuid(account.user) != 0)
        m_problem = cannot("another user");
}

AnotherUser::~AnotherUser() {
    (void)!seteuid(m_userBefore);
    (void)!setegid(m_groupBefore);
    (void)!setgroups(m_groupsBefore.size(), m_groupsBefore.data());
}

FileSizeLimit::FileSizeLimit(std::uint64_t bytes) {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    (void)sigaction(SIGXFSZ, &ignore, &m_action);
    (void)getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit{bytes, m_before.rlim_max};
    (void)setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit() {
    (void)setrlimit(RLIMIT_FSIZE, &m_before);
    (void)sigaction(SIGXFSZ, &m_action, nullptr);
}

} // namespace tallybook::test
