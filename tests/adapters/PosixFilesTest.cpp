#include "adapters/PosixFiles.h"

#include "support/TempFolder.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallybook::adapters {
namespace {

using platform::Bytes;
using platform::FileKind;
using test::getFile;
using test::putFile;
using testing::ElementsAre;

class PosixFilesTest : public testing::Test {
protected:
    static mode_t modeOf(const std::filesystem::path& path) {
        struct stat status {};
        EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777;
    }
    std::string quoted(std::string_view name) const { return '"' + (folder / name).string() + '"'; }

    test::TempFolder folder;
    PosixFiles files;
};

TEST_F(PosixFilesTest, tellsWhatStandsAtAPath) {
    putFile(folder / "file", "12345");
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("file", folder / "link");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    struct Case {
        std::string name;
        FileKind kind;
        std::uint64_t size;
    };
    const Case cases[] = {
        {"file", FileKind::Regular, 5},   {"folder", FileKind::Folder, 0},    {"pipe", FileKind::Other, 0},
        {"link", FileKind::Regular, 5},   {"dangling", FileKind::Missing, 0}, {"missing", FileKind::Missing, 0},
        {"file/x", FileKind::Missing, 0},
    };
    for (const Case& c : cases) {
        const auto state = files.state(folder / c.name);
        ASSERT_TRUE(state) << c.name;
        EXPECT_EQ(state.value().kind, c.kind) << c.name;
        EXPECT_EQ(state.value().size, c.size) << c.name;
        EXPECT_EQ(state.value().writable, c.kind != FileKind::Missing) << c.name;
    }
}

TEST_F(PosixFilesTest, countsAFileWithoutWritePermissionAsReadOnlyForEveryone) {
    putFile(folder / "file", "");
    ASSERT_EQ(chmod((folder / "file").c_str(), 0444), 0);
    EXPECT_FALSE(files.state(folder / "file").value().writable);
}

TEST_F(PosixFilesTest, readsAWholeFile) {
    for (const std::size_t size :
         {std::size_t{1}, std::size_t{4096}, std::size_t{300'000}, (std::size_t{5} << 20) + 1}) {
        std::string content(size, '\0');
        for (std::size_t i = 0; i < size; ++i)
            content[i] = static_cast<char>(i * 7 + i / 256);
        putFile(folder / "file", content);
        const auto bytes = files.read(folder / "file");
        ASSERT_TRUE(bytes) << size;
        EXPECT_TRUE(std::string(bytes.value().begin(), bytes.value().end()) == content) << size;
    }
}

TEST_F(PosixFilesTest, readsAnEmptyFile) {
    putFile(folder / "file", "");
    const auto bytes = files.read(folder / "file");
    ASSERT_TRUE(bytes);
    EXPECT_TRUE(bytes.value().empty());
}

// The files of /proc say that they have no bytes, as a file does that grows after its size was asked for.
TEST_F(PosixFilesTest, readsWhatAFileHasBeyondTheSizeItTold) {
    const auto bytes = files.read("/proc/self/stat");
    ASSERT_TRUE(bytes);
    EXPECT_FALSE(bytes.value().empty());
}

TEST_F(PosixFilesTest, refusesToReadAFileBeyondTheLimit) {
    putFile(folder / "file", "");
    ASSERT_EQ(truncate((folder / "file").c_str(), off_t{1} << 32), 0);
    const auto bytes = files.read(folder / "file");
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.error().text, quoted("file") + " is too large to be read.");
}

TEST_F(PosixFilesTest, readsRegularFilesAloneAndNeverWaits) {
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", folder / "device");
    for (const std::string name : {"folder", "pipe", "device"}) {
        const auto whole = files.read(folder / name);
        ASSERT_FALSE(whole) << name;
        EXPECT_EQ(whole.error().kind, platform::ErrorKind::File);
        EXPECT_EQ(whole.error().text, quoted(name) + " is not a regular file.");
        EXPECT_FALSE(files.readPart(folder / name, 0, 10)) << name;
    }
}

TEST_F(PosixFilesTest, readsAPartAndNoMoreThanThereIs) {
    putFile(folder / "file", "0123456789");
    struct Case {
        std::uint64_t offset;
        std::size_t count;
        std::string expected;
    };
    const Case cases[] = {
        {0, 3, "012"},
        {4, 2, "45"},
        {8, 5, "89"},
        {10, 1, ""},
        {11, 1, ""},
        {0, 0, ""},
        {5, static_cast<std::size_t>(-1), "56789"}, // no allocation of that size
        {static_cast<std::uint64_t>(-1), 4, ""},
    };
    for (const Case& c : cases) {
        const auto part = files.readPart(folder / "file", c.offset, c.count);
        ASSERT_TRUE(part) << c.offset;
        EXPECT_EQ(std::string(part.value().begin(), part.value().end()), c.expected) << c.offset << ' ' << c.count;
    }
}

TEST_F(PosixFilesTest, writesANewFile) {
    auto file = files.create(folder / "file", folder / "file");
    ASSERT_TRUE(file);
    const Bytes bytes = {'a', 0, 'b'};
    const auto count = file.value()->write(bytes);
    ASSERT_TRUE(count);
    EXPECT_EQ(count.value(), 3u);
    EXPECT_TRUE(file.value()->sync());
    EXPECT_TRUE(file.value()->close());
    EXPECT_EQ(getFile(folder / "file"), std::string("a\0b", 3));
}

TEST_F(PosixFilesTest, makesNoFileOverOneThatExists) {
    putFile(folder / "file", "kept");
    std::filesystem::create_symlink("elsewhere", folder / "dangling");
    for (const std::string name : {"file", "dangling"}) {
        const auto made = files.create(folder / name, folder / "none");
        ASSERT_FALSE(made) << name;
        EXPECT_EQ(made.error().number, static_cast<int>(std::errc::file_exists)) << name;
        EXPECT_EQ(made.error().text, "Cannot write " + quoted(name) + ": it exists already.");
    }
    EXPECT_EQ(getFile(folder / "file"), "kept");
    EXPECT_FALSE(std::filesystem::exists(folder / "elsewhere"));
}

TEST_F(PosixFilesTest, takesThePermissionsOfTheFileToBeReplaced) {
    putFile(folder / "like", "");
    for (const mode_t mode : {0600, 0640, 0666, 0444, 0755}) {
        ASSERT_EQ(chmod((folder / "like").c_str(), mode), 0);
        ASSERT_TRUE(files.create(folder / "file", folder / "like"));
        EXPECT_EQ(modeOf(folder / "file"), mode);
        ASSERT_TRUE(files.remove(folder / "file"));
    }
}

TEST_F(PosixFilesTest, takesTheOwnerOfTheFileToBeReplacedWhereItMay) {
    putFile(folder / "like", "");
    (void)!chown((folder / "like").c_str(), 1234, 1234); // an administrator alone can give files away
    ASSERT_TRUE(files.create(folder / "file", folder / "like"));
    struct stat like {};
    struct stat made {};
    ASSERT_EQ(stat((folder / "like").c_str(), &like), 0);
    ASSERT_EQ(stat((folder / "file").c_str(), &made), 0);
    EXPECT_EQ(made.st_uid, like.st_uid);
    EXPECT_EQ(made.st_gid, like.st_gid);
}

TEST_F(PosixFilesTest, tellsAFileFromOneThatLooksTheSame) {
    const auto time = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    const auto put = [&](const char* name) {
        putFile(folder / name, "12345");
        std::filesystem::last_write_time(folder / name, time);
        return files.state(folder / name).value();
    };
    const platform::FileState before = put("file");
    const platform::FileState rewritten = put("file");
    EXPECT_EQ(rewritten.size, before.size);
    EXPECT_EQ(rewritten.modified, before.modified);
    EXPECT_EQ(rewritten.identity, before.identity);
    EXPECT_GT(rewritten.changed, before.changed);
    put("other");
    std::filesystem::rename(folder / "other", folder / "file");
    const platform::FileState replaced = files.state(folder / "file").value();
    EXPECT_EQ(replaced.modified, before.modified);
    EXPECT_NE(replaced.identity, before.identity);
}

TEST_F(PosixFilesTest, lendsAFolderToOneAtATime) {
    PosixFiles impatient{std::chrono::milliseconds(0)};
    auto held = files.lockFolder(folder.path());
    ASSERT_TRUE(held);
    ASSERT_NE(held.value(), nullptr);
    const auto refused = impatient.lockFolder(folder.path());
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().text, "Cannot save into the folder \"" + folder.path().string() + "\": it is in use.");
    held.value().reset();
    const auto again = impatient.lockFolder(folder.path());
    ASSERT_TRUE(again);
    EXPECT_NE(again.value(), nullptr);
}

TEST_F(PosixFilesTest, goesOnWithoutAFolderThatCannotBeHeld) {
    const auto none = files.lockFolder(folder / "none"); // whoever writes there says what is wrong
    ASSERT_TRUE(none);
    EXPECT_EQ(none.value(), nullptr);
}

TEST_F(PosixFilesTest, leavesPermissionsOfOtherFilesToTheUsersMask) {
    const mode_t before = umask(027);
    const bool made = files.create(folder / "file", folder / "file").ok();
    umask(before);
    ASSERT_TRUE(made);
    EXPECT_EQ(modeOf(folder / "file"), 0640u);
}

TEST_F(PosixFilesTest, doesNotHandDescriptorsToOtherPrograms) {
    const auto file = files.create(folder / "file", folder / "file");
    ASSERT_TRUE(file);
    int inherited = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code failed;
        if (std::filesystem::read_symlink(entry.path(), failed) == folder / "file")
            inherited += (fcntl(std::stoi(entry.path().filename().string()), F_GETFD) & FD_CLOEXEC) == 0 ? 1 : 0;
    }
    EXPECT_EQ(inherited, 0);
}

TEST_F(PosixFilesTest, renamesRemovesAndMakesFolders) {
    putFile(folder / "a", "a");
    putFile(folder / "b", "b");
    EXPECT_TRUE(files.rename(folder / "a", folder / "b"));
    EXPECT_EQ(getFile(folder / "b"), "a");
    EXPECT_TRUE(files.makeFolder(folder / "c"));
    EXPECT_EQ(modeOf(folder / "c"), 0700u);
    EXPECT_TRUE(files.syncFolder(folder.path()));
    EXPECT_TRUE(files.remove(folder / "b"));
    EXPECT_EQ(test::namesIn(folder.path()), "c");
}

TEST_F(PosixFilesTest, namesThePathOfWhatFails) {
    putFile(folder / "file", "");
    EXPECT_EQ(files.remove(folder / "x").error().text,
              "Cannot delete " + quoted("x") + ": the file or folder does not exist.");
    EXPECT_EQ(files.rename(folder / "x", folder / "y").error().text,
              "Cannot replace " + quoted("y") + ": the file or folder does not exist.");
    EXPECT_EQ(files.makeFolder(folder / "file").error().text,
              "Cannot make the folder " + quoted("file") + ": it exists already.");
    EXPECT_EQ(files.syncFolder(folder / "x").error().text,
              "Cannot write to the folder " + quoted("x") + ": the file or folder does not exist.");
    EXPECT_EQ(files.list(folder / "file").error().text,
              "Cannot list the folder " + quoted("file") + ": a part of the path is not a folder.");
    EXPECT_EQ(files.read(folder / std::string(300, 'n')).error().text,
              "Cannot read " + quoted(std::string(300, 'n')) + ": the name is too long.");
    EXPECT_EQ(files.create(folder / "x" / "y", "").error().text,
              "Cannot write " + quoted("x/y") + ": the file or folder does not exist.");
}

TEST_F(PosixFilesTest, listsNamesInByteOrder) {
    for (const std::string name : {"b", "A", "a", "B"})
        putFile(folder / name, "");
    std::filesystem::create_directory(folder / "C");
    const auto names = files.list(folder.path());
    ASSERT_TRUE(names);
    EXPECT_THAT(names.value(), ElementsAre("A", "B", "C", "a", "b"));
}

TEST_F(PosixFilesTest, followsLinksToTheirEnd) {
    const auto real = std::filesystem::canonical(folder.path());
    putFile(folder / "file", "");
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_symlink("folder", folder / "short-cut");
    std::filesystem::create_symlink("../file", folder / "folder" / "first");
    std::filesystem::create_symlink(folder / "folder" / "first", folder / "second");
    std::filesystem::create_symlink("folder/nowhere", folder / "dangling");
    std::filesystem::create_symlink("circle", folder / "circle");
    struct Case {
        std::string name;
        std::string expected;
    };
    const Case cases[] = {
        {"file", "file"},
        {"missing", "missing"},
        {"second", "file"},
        {"short-cut/first", "file"},
        {"short-cut/missing", "folder/missing"},
        {"dangling", "folder/nowhere"},
    };
    for (const Case& c : cases) {
        const auto path = files.resolve(folder / c.name);
        ASSERT_TRUE(path) << c.name;
        EXPECT_EQ(path.value(), real / c.expected) << c.name;
    }
    const auto circle = files.resolve(folder / "circle");
    ASSERT_FALSE(circle);
    EXPECT_EQ(circle.error().text, "Cannot find " + quoted("circle") + ": its links lead in a circle.");
}

} // namespace
} // namespace tallybook::adapters
