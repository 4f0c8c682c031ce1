#include "adapters/JPilotDesktop.h"

#include "adapters/PosixFiles.h"
#include "core/handheld/DatabaseList.h"
#include "core/handheld/Users.h"
#include "support/TempFolder.h"
#include "support/TestServices.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tallybook::adapters {
namespace {

using handheld::kAlreadyQueued;
using handheld::kQueued;
using test::getFile;
using test::putFile;
using testing::HasSubstr;
namespace fs = std::filesystem;

// Holds the lock of a sync as another program.
class RunningSync {
public:
    explicit RunningSync(const fs::path& path) {
        int ready[2] = {};
        EXPECT_EQ(pipe(ready), 0);
        m_process = fork();
        if (m_process == 0) {
            struct flock lock {};
            lock.l_type = F_WRLCK;
            const int file = open(path.c_str(), O_RDWR | O_CREAT, 0600);
            const char done = fcntl(file, F_SETLK, &lock) == 0 ? 'y' : 'n';
            if (write(ready[1], &done, 1) == 1)
                pause();
            _exit(0);
        }
        char done = 'n';
        EXPECT_EQ(read(ready[0], &done, 1), 1);
        EXPECT_EQ(done, 'y');
        close(ready[0]);
        close(ready[1]);
    }
    ~RunningSync() {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }

private:
    pid_t m_process = -1;
};

class JPilotDesktopTest : public testing::Test {
protected:
    JPilotDesktopTest() {
        fs::create_directories(folder / ".jpilot/backup0");
        fs::create_directories(folder / "home");
        fs::create_directory_symlink("backup0", folder / ".jpilot/backup");
        putFile(rc, "version 1.8\nuser_id 4711\nuser Ann Smith\nport usb:\n");
        putFile(file, "first");
    }
    std::string line(const std::string& name = "MS2_A.pdb") const {
        return (folder / "copies" / name).string() + '\n';
    }

    test::TempFolder folder;
    const fs::path rc = folder / ".jpilot/jpilot.rc";
    const fs::path queue = folder / ".jpilot/jpilot.install";
    const fs::path file = folder / "home/MS2_A.pdb";
    PosixFiles files;
    JPilotDesktop desktop{files, folder / ".jpilot", folder / "copies"};
    const std::string user = "Ann Smith";
};

TEST_F(JPilotDesktopTest, hasOneUserWhoseDatabasesAreInTheBackup) {
    test::TestServices t;
    platform::Services services{t.user, t.user, files, t.clock, t.regional, folder.path()};
    handheld::UserList users;
    ASSERT_TRUE(handheld::GetUserIDs(services, desktop, users));
    EXPECT_THAT(users.UserNames, testing::ElementsAre("Ann Smith"));
    EXPECT_THAT(users.UserFolders, testing::ElementsAre(folder / ".jpilot/backup"));
}

TEST_F(JPilotDesktopTest, followsTheBackupWhenItMoves) {
    test::TestServices t;
    platform::Services services{t.user, t.user, files, t.clock, t.regional, folder.path()};
    handheld::UserList users;
    ASSERT_TRUE(handheld::GetUserIDs(services, desktop, users));
    putFile(folder / ".jpilot/backup0/MS2_Old Books.pdb", "");
    const auto listed = [&] {
        return handheld::getDBList20(files, users.UserFolders[0], handheld::NewEntry::Without).value();
    };
    ASSERT_EQ(listed().size(), 1U);
    EXPECT_EQ(listed().front().name, "Old Books"); // names keep their blanks there
    fs::create_directory(folder / ".jpilot/backup1");
    putFile(folder / ".jpilot/backup1/MS2_New.pdb", "");
    fs::remove(folder / ".jpilot/backup");
    fs::create_directory_symlink("backup1", folder / ".jpilot/backup");
    ASSERT_EQ(listed().size(), 1U);
    EXPECT_EQ(listed().front().name, "New");
}

TEST_F(JPilotDesktopTest, readsTheUserOfItsSettings) {
    const struct {
        const char* what;
        std::string text;
        int count;
        std::string name;
    } cases[] = {
        {"no line", "user_id 4711\nport usb:\n", 0, ""},
        {"an empty name", "user \n", 0, ""},
        {"the last line without an end", "port x\nuser Bob", 1, "Bob"},
        {"letters outside ASCII", "user Zo\xC3\xAB\n", 1, "Zo\xEB"},
        {"an empty file", "", 0, ""},
    };
    for (const auto& [what, text, count, name] : cases) {
        putFile(rc, text);
        EXPECT_EQ(desktop.UmGetUserCount().value(), count) << what;
        EXPECT_EQ(desktop.UmGetUserName(0).value(), name) << what;
    }
    fs::remove(rc);
    EXPECT_FALSE(desktop.UmGetUserCount());
}

TEST_F(JPilotDesktopTest, queuesACopy) {
    EXPECT_EQ(desktop.PltInstallFile(user, file).value(), kQueued);
    EXPECT_EQ(getFile(queue), line());
    EXPECT_EQ(getFile(folder / "copies/MS2_A.pdb"), "first");
    putFile(file, "second");
    EXPECT_EQ(desktop.PltInstallFile(user, file).value(), kAlreadyQueued);
    EXPECT_EQ(getFile(folder / "copies/MS2_A.pdb"), "first");
    EXPECT_TRUE(desktop.PltRemoveInstallFile(user, file));
    EXPECT_FALSE(fs::exists(queue)); // an empty queue is no file
    EXPECT_TRUE(desktop.PltRemoveInstallFile(user, file));
    EXPECT_EQ(desktop.PltInstallFile(user, file).value(), kQueued);
    EXPECT_EQ(getFile(folder / "copies/MS2_A.pdb"), "second");
    EXPECT_EQ(test::namesIn(folder / ".jpilot"), "backup backup0 jpilot.install jpilot.rc");
}

TEST_F(JPilotDesktopTest, leavesTheOtherLinesAlone) {
    const std::string longLine(2000, 'x');
    const struct {
        const char* what;
        std::string before;
        std::string queued;
        std::string removed;
    } cases[] = {
        {"lines", "/a/b.prc\n/c d\n", "/a/b.prc\n/c d\n", "/a/b.prc\n/c d\n"},
        {"no end", "/a/b.prc", "/a/b.prc\n", "/a/b.prc\n"},
        {"an empty line", "\n/a\n", "\n/a\n", "\n/a\n"},
        {"a line of another's that is too long", longLine + '\n', longLine + '\n', longLine + '\n'},
    };
    for (const auto& [what, before, queued, removed] : cases) {
        putFile(queue, before);
        EXPECT_EQ(desktop.PltInstallFile(user, file).value(), kQueued) << what;
        EXPECT_EQ(getFile(queue), queued + line()) << what;
        EXPECT_TRUE(desktop.PltRemoveInstallFile(user, file)) << what;
        EXPECT_EQ(getFile(queue), removed) << what;
    }
}

TEST_F(JPilotDesktopTest, changesNothingWhileASyncRuns) {
    putFile(queue, line());
    {
        const RunningSync sync(folder / ".jpilot/sync_pid");
        const auto result = desktop.PltInstallFile(user, file);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().text, "A sync is running.  Try again when it has ended.");
        EXPECT_FALSE(desktop.PltRemoveInstallFile(user, file));
        EXPECT_EQ(getFile(queue), line());
        EXPECT_FALSE(fs::exists(folder / "copies"));
    }
    EXPECT_EQ(desktop.PltInstallFile(user, file).value(), kAlreadyQueued); // the lock's file stays behind
}

TEST_F(JPilotDesktopTest, refusesAPathThatTheQueueCannotHold) {
    const std::string base = (folder / "copies").string() + '/';
    const struct {
        const char* what;
        std::string copies;
        bool queued;
    } cases[] = {
        {"999 bytes",
         base + std::string(200, 'd') + '/' + std::string(200, 'd') + '/' + std::string(200, 'd') + '/' +
             std::string(200, 'd') + '/' + std::string(999 - 804 - base.size() - 10, 'd'),
         true},
        {"1000 bytes",
         base + std::string(200, 'd') + '/' + std::string(200, 'd') + '/' + std::string(200, 'd') + '/' +
             std::string(200, 'd') + '/' + std::string(1000 - 804 - base.size() - 10, 'd'),
         false},
        {"a line end", base + "a\nb", false},
    };
    for (const auto& [what, copies, queued] : cases) {
        fs::remove(queue);
        const auto result = JPilotDesktop(files, folder / ".jpilot", copies).PltInstallFile(user, file);
        EXPECT_EQ(result.ok(), queued) << what;
        EXPECT_EQ(fs::exists(queue), queued) << what;
        if (!result) {
            EXPECT_THAT(result.error().text, HasSubstr("cannot be put into the install queue")) << what;
        }
    }
}

TEST_F(JPilotDesktopTest, aQueueThatIsAFolderIsSaid) {
    fs::create_directory(queue);
    const auto result = desktop.PltInstallFile(user, file);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().text, '"' + queue.string() + "\" is not a regular file.");
    EXPECT_FALSE(desktop.PltRemoveInstallFile(user, file));
    EXPECT_TRUE(fs::is_directory(queue));
    EXPECT_FALSE(fs::exists(folder / "copies"));
}

TEST_F(JPilotDesktopTest, aUserWhoIsNoLongerThereGetsNothing) {
    EXPECT_FALSE(desktop.PltInstallFile("Bob", file));
    fs::remove_all(folder / ".jpilot");
    const auto result = desktop.PltInstallFile(user, file);
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("jpilot.rc"));
    EXPECT_FALSE(fs::exists(folder / "copies"));
}

TEST_F(JPilotDesktopTest, aMissingFileLeavesTheQueueAlone) {
    putFile(queue, "/a\n");
    EXPECT_FALSE(desktop.PltInstallFile(user, folder / "home/MS2_None.pdb"));
    EXPECT_EQ(getFile(queue), "/a\n");
}

// Each call of the system fails once: the lines of the others are there, and ours only with its whole copy.
TEST(JPilotDesktopFaults, neverLoseALineOfTheQueue) {
    const std::string others = "/a/b.prc\n";
    const std::string ours = "/copies/MS2_A.pdb\n";
    bool failed = true;
    for (int nth = 1; failed; ++nth) {
        test::MemoryFiles files;
        files.put("/j/jpilot.rc", {'u', 's', 'e', 'r', ' ', 'A', '\n'});
        files.put("/j/jpilot.install", platform::Bytes(others.begin(), others.end()));
        files.put("/home/MS2_A.pdb", {1, 2, 3});
        JPilotDesktop desktop(files, "/j", "/copies");
        const int before = files.calls();
        files.failAt(nth, 28); // no room
        const auto result = desktop.PltInstallFile("A", "/home/MS2_A.pdb");
        failed = files.calls() - before >= nth;
        const platform::Bytes& bytes = files.bytes("/j/jpilot.install");
        const std::string now(bytes.begin(), bytes.end());
        EXPECT_THAT(now, testing::AnyOf(others, others + ours)) << nth;
        if (result) {
            EXPECT_EQ(now, others + ours) << nth;
        }
        if (now != others) {
            EXPECT_EQ(files.bytes("/copies/MS2_A.pdb"), (platform::Bytes{1, 2, 3})) << nth;
        }
    }
}

} // namespace
} // namespace tallybook::adapters
