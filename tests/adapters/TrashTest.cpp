#include "adapters/PosixFiles.h"
#include "support/TempFolder.h"
#include "support/Variable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallybook::adapters {
namespace {

using test::getFile;
using test::namesIn;
using test::putFile;
using testing::MatchesRegex;
namespace fs = std::filesystem;

class Trash : public testing::Test {
protected:
    test::TempFolder folder;
    // Missing at first, as on a fresh account.
    const test::Variable data{"XDG_DATA_HOME", (folder / "data").c_str()};
    const fs::path trash = folder / "data/Trash";
    PosixFiles files;
};

TEST_F(Trash, takesAFileWithANoteOfItsPlace) {
    const fs::path file = folder / "MS2_50% Zo\xC3\xAB.pdb";
    putFile(file, "content");
    ASSERT_TRUE(files.moveToTrash(file));
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(getFile(trash / "files" / file.filename()), "content");
    const std::string place = fs::canonical(folder.path()).string() + "/MS2_50%25%20Zo%C3%AB.pdb";
    EXPECT_THAT(getFile(trash / "info" / (file.filename().string() + ".trashinfo")),
                MatchesRegex("\\[Trash Info\\]\nPath=" + place +
                             "\nDeletionDate=[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\n"));
    EXPECT_EQ(fs::status(trash).permissions(), fs::perms::owner_all);
}

TEST_F(Trash, keepsFilesOfTheSameName) {
    for (const char* content : {"one", "two", "three"}) {
        putFile(folder / "MS2_A.pdb", content);
        ASSERT_TRUE(files.moveToTrash(folder / "MS2_A.pdb"));
    }
    EXPECT_EQ(namesIn(trash / "files"), "MS2_A.pdb MS2_A.pdb.2 MS2_A.pdb.3");
    EXPECT_EQ(getFile(trash / "files/MS2_A.pdb"), "one");
    EXPECT_EQ(getFile(trash / "files/MS2_A.pdb.3"), "three");
    EXPECT_EQ(namesIn(trash / "info"), "MS2_A.pdb.2.trashinfo MS2_A.pdb.3.trashinfo MS2_A.pdb.trashinfo");
}

TEST_F(Trash, neverCoversAFileWithoutANote) {
    fs::create_directories(trash / "files");
    putFile(trash / "files/MS2_A.pdb", "stray");
    putFile(folder / "MS2_A.pdb", "new");
    ASSERT_TRUE(files.moveToTrash(folder / "MS2_A.pdb"));
    EXPECT_EQ(getFile(trash / "files/MS2_A.pdb"), "stray");
    EXPECT_EQ(getFile(trash / "files/MS2_A.pdb.2"), "new");
    EXPECT_EQ(namesIn(trash / "info"), "MS2_A.pdb.2.trashinfo");
}

TEST_F(Trash, takesALinkAndNotWhatItLeadsTo) {
    putFile(folder / "target", "stays");
    fs::create_symlink("target", folder / "MS2_A.pdb");
    ASSERT_TRUE(files.moveToTrash(folder / "MS2_A.pdb"));
    EXPECT_EQ(getFile(folder / "target"), "stays");
    EXPECT_FALSE(fs::is_symlink(folder / "MS2_A.pdb"));
}

TEST_F(Trash, aMissingFileIsAnError) {
    EXPECT_FALSE(files.moveToTrash(folder / "MS2_None.pdb"));
    EXPECT_FALSE(files.moveToTrash(folder / "nowhere/MS2_None.pdb"));
}

TEST_F(Trash, aTrashThatCannotBeMadeLeavesTheFile) {
    putFile(folder / "MS2_A.pdb", "content");
    putFile(folder / "data", "a file where the folder should be");
    const auto moved = files.moveToTrash(folder / "MS2_A.pdb");
    ASSERT_FALSE(moved);
    EXPECT_THAT(moved.error().text, testing::HasSubstr("MS2_A.pdb"));
    EXPECT_EQ(getFile(folder / "MS2_A.pdb"), "content");
}

// /dev/shm is a volume of its own on Linux. Its top may be written by everybody.
TEST_F(Trash, ofAnotherVolumeLiesOnItsTop) {
    struct stat shm {};
    struct stat here {};
    if (stat("/dev/shm", &shm) != 0 || stat(folder.path().c_str(), &here) != 0 || shm.st_dev == here.st_dev ||
        access("/dev/shm", W_OK) != 0)
        GTEST_SKIP() << "there is no second volume";
    const std::string user = std::to_string(getuid());
    const std::string name = "MS2_tallybook-test-" + std::to_string(getpid()) + ".pdb";
    putFile(fs::path("/dev/shm") / name, "content");
    ASSERT_TRUE(files.moveToTrash(fs::path("/dev/shm") / name));
    fs::path top = "/dev/shm/.Trash-" + user;
    if (!fs::exists(top / "files" / name))
        top = "/dev/shm/.Trash/" + user;
    EXPECT_EQ(getFile(top / "files" / name), "content");
    const std::string note = getFile(top / "info" / (name + ".trashinfo"));
    EXPECT_THAT(note, testing::HasSubstr("\nPath=" + name + "\n"));
    fs::remove(top / "files" / name);
    fs::remove(top / "info" / (name + ".trashinfo"));
    EXPECT_FALSE(fs::exists(fs::path("/dev/shm") / name));
}

} // namespace
} // namespace tallybook::adapters
