// A save whose program is killed at each of its system calls.
#include "adapters/PosixFiles.h"
#include "core/platform/WholeFile.h"
#include "support/TempFolder.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tallybook::adapters {
namespace {

using test::getFile;
using test::putFile;

constexpr std::size_t kNewSize = 20'000;
constexpr int kSyscallStop = SIGTRAP | 0x80;

// The program that saves, held at its system calls. It dies with this object.
class Victim {
public:
    explicit Victim(const std::filesystem::path& target) {
        const std::string size = std::to_string(kNewSize);
        m_child = fork();
        if (m_child == 0) {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0)
                execl(TALLYBOOK_FAULT_VICTIM, "fault_victim", target.c_str(), "n", size.c_str(), nullptr);
            _exit(127);
        }
        const bool traced =
            waitFor() && WIFSTOPPED(m_status) &&
            ptrace(PTRACE_SETOPTIONS, m_child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) == 0;
        if (!traced)
            m_problem = std::string("This machine cannot make the fault: ptrace: ") + std::strerror(errno);
        else if (!resume(PTRACE_CONT) || !stoppedBy(SIGSTOP))
            m_problem = "The program did not come to its save.";
    }
    ~Victim() { (void)killNow(); }
    Victim(const Victim&) = delete;
    Victim& operator=(const Victim&) = delete;

    const std::string& problem() const { return m_problem; }

    // Runs to the next entry of or return from a system call. False when the save is over.
    bool step() { return resume(PTRACE_SYSCALL) && stoppedBy(kSyscallStop); }

    // Sends a signal that the program may catch, and lets it run to its end. True when the signal ended it.
    bool end(int signal) {
        if (m_child <= 0 || kill(m_child, signal) != 0)
            return false;
        int deliver = 0;
        do {
            if (ptrace(PTRACE_CONT, m_child, nullptr, deliver) != 0 || !waitFor())
                return false;
            deliver = WIFSTOPPED(m_status) && WSTOPSIG(m_status) != SIGSTOP ? WSTOPSIG(m_status) & 0x7F : 0;
        } while (WIFSTOPPED(m_status));
        m_child = 0;
        return WIFSIGNALED(m_status) && WTERMSIG(m_status) == signal;
    }

    // True when the program is gone, killed by this call.
    bool killNow() {
        if (m_child <= 0 || kill(m_child, SIGKILL) != 0)
            return false;
        const bool killed = waitFor() && WIFSIGNALED(m_status) && WTERMSIG(m_status) == SIGKILL;
        m_child = 0;
        return killed;
    }

private:
    bool waitFor() { return waitpid(m_child, &m_status, 0) == m_child; }
    bool resume(__ptrace_request request) { return ptrace(request, m_child, nullptr, nullptr) == 0 && waitFor(); }
    bool stoppedBy(int signal) const { return WIFSTOPPED(m_status) && WSTOPSIG(m_status) == signal; }

    pid_t m_child = 0;
    int m_status = 0;
    std::string m_problem;
};

struct Place {
    const char* name;
    bool fileIsThere;
    bool behindLink;
};

class KilledSave : public testing::TestWithParam<Place> {
protected:
    void prepare() {
        std::filesystem::remove_all(folder / "place");
        std::filesystem::create_directories(folder / "place");
        if (GetParam().behindLink)
            std::filesystem::create_symlink("real.pdb", named);
        if (GetParam().fileIsThere)
            putFile(real, kOld);
    }
    // Kills a save behind so many stops. False when it was over before.
    bool killBehind(int stops) {
        Victim victim(named);
        EXPECT_EQ(victim.problem(), "");
        if (!victim.problem().empty())
            return false;
        for (int stop = 0; stop < stops; ++stop)
            if (!victim.step())
                return false;
        EXPECT_TRUE(victim.killNow()) << stops;
        return true;
    }
    bool holdsOld() const { return GetParam().fileIsThere ? getFile(real) == kOld : !std::filesystem::exists(real); }
    bool holdsNew() const { return getFile(real) == kNew; }
    bool savesAgain() {
        const platform::Bytes again = {'a', 'g', 'a', 'i', 'n'};
        return platform::writeWholeFile(files, named, again) && getFile(real) == "again" &&
               std::filesystem::is_symlink(named) == GetParam().behindLink;
    }

    const std::string kOld = std::string(10'000, 'o');
    const std::string kNew = std::string(kNewSize, 'n');
    test::TempFolder folder;
    std::filesystem::path named = folder / "place" / "MS2_Books.pdb";
    std::filesystem::path real = GetParam().behindLink ? folder / "place" / "real.pdb" : named;
    PosixFiles files;
};

TEST_P(KilledSave, leavesTheOldOrTheNewFileWhole) {
    int stops = 0;
    int withNew = 0;
    for (;; ++stops) {
        prepare();
        if (!killBehind(stops))
            break;
        ASSERT_TRUE(holdsOld() || holdsNew()) << "killed behind stop " << stops;
        withNew += holdsNew() ? 1 : 0;
        EXPECT_EQ(holdsNew(), withNew > 0) << "the old file came back at stop " << stops;
        ASSERT_TRUE(savesAgain()) << "killed behind stop " << stops;
    }
    EXPECT_TRUE(holdsNew()); // the last one was not killed in time
    RecordProperty("stops", stops);
    EXPECT_GT(stops, 2 * 12); // each call of the interface is at least one of the system, entered and left
    EXPECT_GT(withNew, 2);
    EXPECT_LT(withNew, stops / 2);
}

// A signal that asks the program to end leaves nothing behind, wherever in a save it comes.
TEST_P(KilledSave, leavesNothingBesideWhenItIsAskedToEnd) {
    int stops = 0;
    for (;; ++stops) {
        prepare();
        Victim victim(named);
        ASSERT_EQ(victim.problem(), "");
        bool running = true;
        for (int stop = 0; running && stop < stops; ++stop)
            running = victim.step();
        if (!running)
            break;
        const int signal = std::array{SIGINT, SIGTERM, SIGHUP}[static_cast<std::size_t>(stops) % 3];
        ASSERT_TRUE(victim.end(signal)) << "signal " << signal << " behind stop " << stops;
        ASSERT_TRUE(holdsOld() || holdsNew()) << "ended behind stop " << stops;
        const std::string left = test::namesIn(folder / "place");
        EXPECT_EQ(left.find("tmp"), std::string::npos) << "ended behind stop " << stops << ": " << left;
    }
    EXPECT_GT(stops, 2 * 12);
}

INSTANTIATE_TEST_SUITE_P(Places, KilledSave,
                         testing::Values(Place{"overAFile", true, false}, Place{"asANewFile", false, false},
                                         Place{"behindALink", true, true}),
                         [](const auto& place) { return std::string(place.param.name); });

} // namespace
} // namespace tallybook::adapters
