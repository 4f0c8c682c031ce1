// What a disk can do to a save.
#include "adapters/PosixFiles.h"
#include "adapters/faults/Machine.h"
#include "core/platform/WholeFile.h"
#include "support/FailingFiles.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tallybook::adapters {
namespace {

using platform::Bytes;
using platform::Status;
using test::getFile;
using test::namesIn;
using test::putFile;
using testing::AllOf;
using testing::HasSubstr;

// Bytes that differ from page to page, so that a lost page is seen.
std::string content(std::size_t size, char seed) {
    std::string text(size, seed);
    for (std::size_t i = 0; i < size; i += 512)
        text[i] = static_cast<char>(seed + i / 512);
    return text;
}

class DiskFault : public testing::Test {
protected:
    Status write(const std::string& text) {
        return platform::writeWholeFile(files, target, Bytes(text.begin(), text.end()));
    }
    // A save that must fail: the old file and nothing else stands there, and the text names path and reason.
    void expectRefused(const std::string& text, const std::string& reason) {
        const Status saved = write(text);
        ASSERT_FALSE(saved) << text.size();
        EXPECT_THAT(saved.error().text, AllOf(HasSubstr(target.string()), HasSubstr(reason))) << text.size();
        EXPECT_EQ(saved.error().kind, platform::ErrorKind::File);
        EXPECT_TRUE(getFile(target) == kOld) << text.size();
        EXPECT_EQ(namesIn(disk), "MS2_Books.pdb") << text.size();
    }

    const std::string kOld = content(9000, 'a');
    test::TempFolder folder;
    std::filesystem::path disk = folder.path();
    std::filesystem::path target = disk / "MS2_Books.pdb";
    PosixFiles files;
};

TEST_F(DiskFault, aFullDiskLeavesTheOldFile) {
    const test::SmallDisk small(disk, "size=64k");
    ASSERT_EQ(small.problem(), "");
    putFile(target, kOld);
    const std::uint64_t room = small.freeBytes();
    ASSERT_GT(room, 16384u);
    int refused = 0;
    for (std::uint64_t size = room - 9000; size <= room + 9000; size += 500)
        for (const std::uint64_t exact : {size - 1, size, size + 1}) {
            putFile(target, kOld);
            const std::string text = content(exact, 'k');
            if (exact > room) {
                expectRefused(text, "the disk is full");
                ++refused;
            } else {
                ASSERT_TRUE(write(text)) << exact;
                EXPECT_TRUE(getFile(target) == text) << exact;
                EXPECT_EQ(namesIn(disk), "MS2_Books.pdb");
            }
        }
    EXPECT_EQ(refused, 1 + 3 * 18); // one byte too many, and each size beyond
}

TEST_F(DiskFault, aDiskThatIsFullFromTheStartLeavesTheOldFile) {
    const test::SmallDisk small(disk, "size=64k");
    ASSERT_EQ(small.problem(), "");
    putFile(target, kOld);
    putFile(disk / "filler", std::string(small.freeBytes(), 'f'));
    ASSERT_EQ(small.freeBytes(), 0u);
    const Status saved = write(content(100, 'k'));
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.error().text, AllOf(HasSubstr(target.string()), HasSubstr("the disk is full")));
    EXPECT_TRUE(getFile(target) == kOld);
    EXPECT_EQ(namesIn(disk), "MS2_Books.pdb filler");
}

TEST_F(DiskFault, aDiskThatTakesNoMoreFilesLeavesTheOldFile) {
    const test::SmallDisk small(disk, "size=64k,nr_inodes=2");
    ASSERT_EQ(small.problem(), "");
    putFile(target, kOld);
    expectRefused(content(100, 'k'), "the disk is full");
}

// The system takes what fits and refuses the rest at the next write.
TEST_F(DiskFault, aLimitOfTheFileSizeLeavesTheOldFile) {
    putFile(target, kOld);
    for (const std::uint64_t size : {0, 1, 9999, 10000})
        for (const std::uint64_t limit : {size, size + 1}) {
            const test::FileSizeLimit bounded(limit);
            EXPECT_TRUE(write(content(size, 'k'))) << size;
        }
    putFile(target, kOld);
    for (const std::uint64_t size : {1, 9999, 10000}) {
        const test::FileSizeLimit bounded(size - 1);
        expectRefused(content(size, 'k'), "the file is too large for the disk");
    }
}

TEST_F(DiskFault, aReadOnlyDiskIsNamed) {
    test::SmallDisk small(disk, "size=64k");
    ASSERT_EQ(small.problem(), "");
    putFile(target, kOld);
    ASSERT_EQ(small.makeReadOnly(), "");
    expectRefused(content(100, 'k'), "is read-only and was not replaced");
    target = disk / "MS2_New.pdb";
    const Status saved = write("new");
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.error().text, AllOf(HasSubstr(target.string()), HasSubstr("the disk is read-only")));
    EXPECT_EQ(namesIn(disk), "MS2_Books.pdb");
}

TEST_F(DiskFault, aReadOnlyFileIsRefusedForEveryone) {
    putFile(target, kOld);
    ASSERT_EQ(chmod(target.c_str(), 0444), 0);
    expectRefused("new", "is read-only and was not replaced");
    const test::OrdinaryUser rights;
    ASSERT_EQ(rights.problem(), "");
    expectRefused("new", "is read-only and was not replaced");
}

TEST_F(DiskFault, aFileThatOthersOnlyMayWriteIsRefused) {
    const test::OrdinaryUser rights;
    ASSERT_EQ(rights.problem(), "");
    putFile(target, kOld);
    ASSERT_EQ(chmod(target.c_str(), 0466), 0);
    expectRefused("new", "is read-only and was not replaced");
}

TEST_F(DiskFault, aReadOnlyFolderLeavesTheOldFile) {
    const test::OrdinaryUser rights;
    ASSERT_EQ(rights.problem(), "");
    putFile(target, kOld);
    ASSERT_EQ(chmod(disk.c_str(), 0555), 0);
    EXPECT_FALSE(files.state(disk).value().writable);
    expectRefused("new", "permission is denied");
    ASSERT_EQ(chmod(disk.c_str(), 0755), 0);
    EXPECT_TRUE(files.state(disk).value().writable);
}

TEST_F(DiskFault, aFolderThatMayNotBeEnteredIsNamed) {
    const test::OrdinaryUser rights;
    ASSERT_EQ(rights.problem(), "");
    putFile(target, kOld);
    ASSERT_EQ(chmod(disk.c_str(), 0), 0);
    const Status saved = write("new");
    ASSERT_EQ(chmod(disk.c_str(), 0755), 0);
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.error().text, AllOf(HasSubstr(target.string()), HasSubstr("permission is denied")));
    EXPECT_TRUE(getFile(target) == kOld);
}

TEST_F(DiskFault, anUnreadableFileIsNamed) {
    const test::OrdinaryUser rights;
    ASSERT_EQ(rights.problem(), "");
    putFile(target, kOld);
    ASSERT_EQ(chmod(target.c_str(), 0), 0);
    const auto bytes = files.read(target);
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.error().text, "Cannot read \"" + target.string() + "\": permission is denied.");
}

// The folder or the file goes away before each call of a save in turn.
TEST_F(DiskFault, aFolderThatVanishesIsNamed) {
    const std::filesystem::path place = disk / "users" / "ann";
    target = place / "MS2_Books.pdb";
    test::FailingFiles counted(files);
    for (int call = 1; call <= 12; ++call) {
        std::filesystem::create_directories(place);
        putFile(target, kOld);
        counted.restart(0);
        counted.before = [&](int number) {
            if (number == call)
                std::filesystem::remove_all(place);
        };
        const Status saved = platform::writeWholeFile(counted, target, Bytes{'n', 'e', 'w'});
        ASSERT_FALSE(saved) << call;
        EXPECT_THAT(saved.error().text, HasSubstr(target.string())) << call;
    }
}

TEST_F(DiskFault, aFileThatVanishesIsMadeAnewOrNamed) {
    test::FailingFiles counted(files);
    for (int call = 1; call <= 12; ++call) {
        putFile(target, kOld);
        counted.restart(0);
        counted.before = [&](int number) {
            if (number == call)
                std::filesystem::remove(target);
        };
        const Status saved = platform::writeWholeFile(counted, target, Bytes{'n', 'e', 'w'});
        if (call <= 9) { // before the rename
            EXPECT_TRUE(saved) << call;
            EXPECT_EQ(getFile(target), "new") << call;
        } else {
            ASSERT_FALSE(saved) << call;
            EXPECT_THAT(saved.error().text, HasSubstr(target.string())) << call;
        }
    }
}

} // namespace
} // namespace tallybook::adapters
