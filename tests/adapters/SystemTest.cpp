#include "adapters/AppFolder.h"
#include "adapters/SystemClock.h"
#include "adapters/SystemError.h"
#include "support/Variable.h"

#include <cerrno>
#include <ctime>
#include <gtest/gtest.h>
#include <string>

namespace tallybook::adapters {
namespace {

using test::Variable;

TEST(SystemClock, tellsTheTimeOfTheUsersZone) {
    const Variable zone("TZ", "TST-5:30"); // five and a half hours east
    tzset();
    platform::LocalTime told;
    std::time_t before = 0;
    do { // until no second passed meanwhile
        before = std::time(nullptr);
        told = SystemClock().now();
    } while (std::time(nullptr) != before);
    const std::time_t local = before + 5 * 3600 + 30 * 60;
    const std::tm parts = *std::gmtime(&local);
    EXPECT_EQ(told, (platform::LocalTime{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour,
                                         parts.tm_min, parts.tm_sec}));
}

TEST(SystemClock, tellsWhenAFileWasChangedInTheUsersZone) {
    const Variable zone("TZ", "TST-5:30");
    tzset();
    // 2003-03-05 07:35:09 by Greenwich.
    const std::int64_t moment = 1046849709;
    EXPECT_EQ(localTimeOf(moment * 1'000'000'000 + 999'999'999), (platform::LocalTime{2003, 3, 5, 13, 5, 9}));
    EXPECT_EQ(localTimeOf(-1), (platform::LocalTime{1970, 1, 1, 5, 29, 59})); // a moment before the count begins
}

TEST(SurroundingsOfTheProgram, knowTheAccount) {
    EXPECT_FALSE(accountName().empty());
}

TEST(SurroundingsOfTheProgram, comeFromTheSystem) {
    const Variable home("HOME", "/home/ann");
    const Variable data("XDG_DATA_HOME", "/data");
    const Variable config("XDG_CONFIG_HOME", nullptr);
    const platform::Surroundings around = surroundings();
    EXPECT_EQ(around.home, "/home/ann");
    EXPECT_EQ(around.dataHome, "/data");
    EXPECT_EQ(around.configHome, "");
    EXPECT_EQ(around.executableFolder, std::filesystem::read_symlink("/proc/self/exe").parent_path());
}

TEST(SurroundingsOfTheProgram, knowAHomeWithoutTheEnvironment) {
    const Variable home("HOME", nullptr);
    EXPECT_TRUE(surroundings().home.is_absolute());
}

TEST(SystemError, saysInWordsWhatFailedAndWhere) {
    const platform::Error error = systemError("write", "/a/b", ENOSPC);
    EXPECT_EQ(error.kind, platform::ErrorKind::File);
    EXPECT_EQ(error.number, ENOSPC);
    EXPECT_EQ(error.text, "Cannot write \"/a/b\": the disk is full.");
    EXPECT_FALSE(systemWords(ENOTTY).empty()); // without words of our own
}

} // namespace
} // namespace tallybook::adapters
