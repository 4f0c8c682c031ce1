#include "adapters/EndBySignal.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tallybook::adapters {

namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};
constexpr int kDeepest = 8; // folders in folders

struct Unfinished {
    volatile std::sig_atomic_t isNoted = 0;
    std::array<char, PATH_MAX> path{};
};
// A signal's handler reaches nothing but what stands still, and may not allocate.
std::array<Unfinished, 32> g_unfinished; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

sigset_t ourSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : kSignals)
        sigaddset(&signals, number);
    return signals;
}

// From here on nothing but calls that a signal's handler may make: the library's own ways through a folder allocate.

struct FolderEntry { // as the system writes it
    std::uint64_t inode;
    std::int64_t next;
    std::uint16_t size;
    std::uint8_t type;
    char name[1]; // NOLINT(modernize-avoid-c-arrays): as long as it is
};

bool isDots(const char* name) {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

// Removes a file or a link, or a folder with all that is in it. Links are never followed.
void removeAll(int parent, const char* name, int depth) { // NOLINT(misc-no-recursion): kDeepest
    if (unlinkat(parent, name, 0) == 0 || depth > kDeepest)
        return;
    const int folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0)
        return;
    alignas(FolderEntry) std::array<char, 4096> buffer;
    for (;;) {
        const long filled = syscall(SYS_getdents64, folder, buffer.data(), buffer.size());
        if (filled <= 0)
            break;
        for (long at = 0; at < filled;) {
            const auto* entry = reinterpret_cast<const FolderEntry*>(buffer.data() + at);
            if (!isDots(entry->name))
                removeAll(folder, entry->name, depth + 1);
            at += entry->size;
        }
    }
    (void)close(folder);
    (void)unlinkat(parent, name, AT_REMOVEDIR);
}

// The action is the system's own again by now; the signal comes once more when the handler returns.
void cleanUpAndEnd(int number) {
    for (const Unfinished& unfinished : g_unfinished)
        if (unfinished.isNoted != 0)
            removeAll(AT_FDCWD, unfinished.path.data(), 0);
    (void)raise(number);
}

} // namespace

void cleanUpAtSignals() {
    (void)std::signal(SIGXFSZ, SIG_IGN);
    struct sigaction action {};
    action.sa_handler = cleanUpAndEnd;
    action.sa_mask = ourSignals();
    action.sa_flags = SA_RESETHAND;
    for (const int number : kSignals) {
        struct sigaction before {};
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            (void)sigaction(number, &action, nullptr);
    }
}

void noteUnfinished(const std::filesystem::path& path) {
    const auto free = std::ranges::find_if(g_unfinished, [](const Unfinished& one) { return one.isNoted == 0; });
    if (free == g_unfinished.end() || path.native().size() >= free->path.size())
        return;
    const SignalsWait wait;
    std::memcpy(free->path.data(), path.c_str(), path.native().size() + 1);
    free->isNoted = 1;
}

void forgetUnfinished(const std::filesystem::path& path) {
    const auto noted = std::ranges::find_if(g_unfinished, [&](const Unfinished& one) {
        return one.isNoted != 0 && std::strcmp(one.path.data(), path.c_str()) == 0;
    });
    if (noted != g_unfinished.end())
        noted->isNoted = 0;
}

SignalsWait::SignalsWait() {
    const sigset_t signals = ourSignals();
    (void)pthread_sigmask(SIG_BLOCK, &signals, &m_before);
}

SignalsWait::~SignalsWait() {
    (void)pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

} // namespace tallybook::adapters
