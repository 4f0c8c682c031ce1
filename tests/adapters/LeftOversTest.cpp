#include "adapters/LeftOvers.h"

#include "adapters/FileHandle.h"
#include "adapters/PosixFiles.h"
#include "adapters/TemporaryFolder.h"
#include "core/platform/WholeFile.h"
#include "support/TempFolder.h"
#include "support/Variable.h"

#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace tallybook::adapters {
namespace {

using test::namesIn;
using test::putFile;

class LeftOversTest : public testing::Test {
protected:
    void age(const std::filesystem::path& path, int hours) const {
        std::filesystem::last_write_time(path,
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours(hours));
    }
    std::filesystem::path put(const std::string& name, int hours) const {
        putFile(folder / name, "of a save that was killed");
        age(folder / name, hours);
        return folder / name;
    }

    test::TempFolder folder;
};

TEST_F(LeftOversTest, goWhenTheyAreOlderThanADay) {
    put("MS2_Books.pdb.tallybook-tmp-1", 25);
    put("settings.ini.tallybook-tmp-1000", 1000);
    put("MS2_Books.pdb.tallybook-tmp-2", 23);
    for (const char* name :
         {"MS2_Books.pdb", "MS2_Books.pdb.tmp-1", "MS2_Books.pdb.tallybook-tmp-", "MS2_Books.pdb.tallybook-tmp-1.pdb",
          "MS2_Books.pdb.tallybook-tmp-12345", ".tallybook-tmp-1"})
        put(name, 1000);
    sweepFiles(folder.path());
    EXPECT_EQ(namesIn(folder.path()),
              ".tallybook-tmp-1 MS2_Books.pdb MS2_Books.pdb.tallybook-tmp- MS2_Books.pdb.tallybook-tmp-1.pdb "
              "MS2_Books.pdb.tallybook-tmp-12345 MS2_Books.pdb.tallybook-tmp-2 MS2_Books.pdb.tmp-1");
    sweepFiles(folder / "none");
}

TEST_F(LeftOversTest, stayWhileSomebodyIsAtWorkOnThem) {
    const auto path = folder / "MS2_Books.pdb.tallybook-tmp-1";
    PosixFiles files;
    auto file = files.create(path, {});
    ASSERT_TRUE(file);
    age(path, 25);
    files.sweepLeftOvers(folder.path());
    EXPECT_TRUE(std::filesystem::exists(path));
    file.value().reset();
    files.sweepLeftOvers(folder.path());
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(LeftOversTest, areFilesAndNothingElse) {
    std::filesystem::create_directory(folder / "a.tallybook-tmp-1");
    putFile(folder / "a.tallybook-tmp-1" / "inside", "");
    age(folder / "a.tallybook-tmp-1", 25);
    put("real", 25);
    std::filesystem::create_symlink("real", folder / "b.tallybook-tmp-1");
    sweepFiles(folder.path());
    EXPECT_EQ(namesIn(folder.path()), "a.tallybook-tmp-1 b.tallybook-tmp-1 real");
}

// A folder for temporary files of the test's own.
TEST_F(LeftOversTest, temporaryFoldersGoWithAllThatIsInThem) {
    const test::Variable variable("TMPDIR", folder.path().c_str());
    std::filesystem::create_directories(folder / "tallybook-temporary-abcdef/Temp");
    putFile(folder / "tallybook-temporary-abcdef/Temp/Copy_MS2_Books.pdb", "");
    age(folder / "tallybook-temporary-abcdef", 25);
    std::filesystem::create_directories(folder / "tallybook-temporary-fresh1");
    std::filesystem::create_directories(folder / "tallybook-backup");
    age(folder / "tallybook-backup", 1000);
    {
        const TemporaryFolder living;
        age(living.path(), 25);
        const TemporaryFolder next;
        EXPECT_TRUE(std::filesystem::exists(living.path()));
        EXPECT_EQ(std::filesystem::status(next.path()).permissions(), std::filesystem::perms::owner_all);
    }
    EXPECT_EQ(namesIn(folder.path()), "tallybook-backup tallybook-temporary-fresh1");
}

} // namespace
} // namespace tallybook::adapters
