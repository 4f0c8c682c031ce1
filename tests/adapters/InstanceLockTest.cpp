#include "adapters/InstanceLock.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tallybook::adapters {
namespace {

enum Found { kTaken = 1, kHeld = 2, kFailed = 3 };

Found tryLock(const std::filesystem::path& folder) {
    const auto lock = InstanceLock::take(folder);
    if (!lock)
        return kFailed;
    return lock.value() ? kTaken : kHeld;
}

// What another program finds.
int tryElsewhere(const std::filesystem::path& folder) {
    const pid_t child = fork();
    if (child == 0)
        _exit(tryLock(folder));
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(InstanceLock, keepsASecondProgramOutWhileItIsHeld) {
    const test::TempFolder folder;
    {
        const auto lock = InstanceLock::take(folder.path());
        ASSERT_TRUE(lock);
        ASSERT_TRUE(lock.value());
        EXPECT_EQ(tryElsewhere(folder.path()), kHeld);
        EXPECT_EQ(tryLock(folder.path()), kHeld); // the same program as well
    }
    EXPECT_EQ(tryElsewhere(folder.path()), kTaken);
}

TEST(InstanceLock, isFreeAfterItsHolderWasKilled) {
    const test::TempFolder folder;
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        const auto lock = InstanceLock::take(folder.path());
        const char mark = lock && lock.value() ? 'y' : 'n';
        (void)!write(ready[1], &mark, 1);
        pause();
        _exit(0);
    }
    char mark = 0;
    ASSERT_EQ(read(ready[0], &mark, 1), 1);
    EXPECT_EQ(mark, 'y');
    EXPECT_EQ(tryLock(folder.path()), kHeld);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
    EXPECT_EQ(tryLock(folder.path()), kTaken);
}

TEST(InstanceLock, namesThePathWhenItHasNoPlace) {
    const test::TempFolder folder;
    const auto lock = InstanceLock::take(folder / "missing");
    ASSERT_FALSE(lock);
    EXPECT_EQ(lock.error().text, "Cannot write \"" + (folder / "missing").string() +
                                     "/tallybook-pocket-desktop.lock\": the file or folder does not exist.");
}

} // namespace
} // namespace tallybook::adapters
