// What may stand in the place of the file that is to be saved.
#include "adapters/PosixFiles.h"
#include "core/platform/WholeFile.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace tallybook::adapters {
namespace {

using platform::Bytes;
using platform::Status;
using test::getFile;
using test::namesIn;
using test::putFile;
using testing::HasSubstr;

class NameFault : public testing::Test {
protected:
    Status write() { return platform::writeWholeFile(files, target, Bytes{'n', 'e', 'w'}); }
    void expectNotRegular() {
        const Status saved = write();
        ASSERT_FALSE(saved);
        EXPECT_EQ(saved.error().kind, platform::ErrorKind::File);
        EXPECT_EQ(saved.error().text, '"' + target.string() + "\" is not a regular file.");
    }

    test::TempFolder folder;
    std::filesystem::path target = folder / "MS2_Books.pdb";
    PosixFiles files;
};

TEST_F(NameFault, aFolderStays) {
    std::filesystem::create_directory(target);
    putFile(target / "inside", "kept");
    expectNotRegular();
    EXPECT_EQ(getFile(target / "inside"), "kept");
    EXPECT_EQ(namesIn(folder.path()), "MS2_Books.pdb");
}

TEST_F(NameFault, aPipeStaysAndNobodyWaits) {
    ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
    expectNotRegular();
    EXPECT_TRUE(std::filesystem::is_fifo(target));
}

TEST_F(NameFault, aSocketStays) {
    const int server = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    target.string().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    expectNotRegular();
    close(server);
    EXPECT_TRUE(std::filesystem::is_socket(target));
}

TEST_F(NameFault, aDeviceBehindALinkIsNotWritten) {
    std::filesystem::create_symlink("/dev/null", target);
    expectNotRegular();
    EXPECT_EQ(std::filesystem::read_symlink(target), "/dev/null");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(NameFault, aLinkStaysAndItsFileIsReplaced) {
    std::filesystem::create_directory(folder / "users");
    putFile(folder / "users" / "real.pdb", "old");
    std::filesystem::create_symlink("users/real.pdb", target);
    ASSERT_TRUE(write());
    EXPECT_EQ(std::filesystem::read_symlink(target), "users/real.pdb");
    EXPECT_EQ(getFile(folder / "users" / "real.pdb"), "new");
    EXPECT_EQ(namesIn(folder.path()), "MS2_Books.pdb users");
    EXPECT_EQ(namesIn(folder / "users"), "real.pdb");
}

TEST_F(NameFault, aDanglingLinkStaysAndItsFileIsMade) {
    std::filesystem::create_symlink("real.pdb", target);
    ASSERT_TRUE(write());
    EXPECT_TRUE(std::filesystem::is_symlink(target));
    EXPECT_EQ(getFile(folder / "real.pdb"), "new");
}

TEST_F(NameFault, aLinkIntoAMissingFolderIsNamed) {
    std::filesystem::create_symlink("nowhere/real.pdb", target);
    const Status saved = write();
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.error().text, HasSubstr(target.string()));
    EXPECT_THAT(saved.error().text, HasSubstr("the file or folder does not exist"));
    EXPECT_TRUE(std::filesystem::is_symlink(target));
}

TEST_F(NameFault, aCircleOfLinksIsNamed) {
    std::filesystem::create_symlink("MS2_Books.pdb", target);
    const Status saved = write();
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().text, "Cannot find \"" + target.string() + "\": its links lead in a circle.");
}

TEST_F(NameFault, aFileInThePlaceOfItsFolderIsNamed) {
    putFile(folder / "file", "kept");
    target = folder / "file" / "MS2_Books.pdb";
    const Status saved = write();
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.error().text, HasSubstr(target.string()));
    EXPECT_EQ(getFile(folder / "file"), "kept");
}

TEST_F(NameFault, permissionsOfTheOldFileStay) {
    for (const mode_t mode : {0600, 0640, 0664, 0755}) {
        putFile(target, "old");
        ASSERT_EQ(chmod(target.c_str(), mode), 0);
        ASSERT_TRUE(write());
        struct stat status {};
        ASSERT_EQ(stat(target.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, mode);
    }
}

} // namespace
} // namespace tallybook::adapters
