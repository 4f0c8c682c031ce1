// Who may do what with a file after another user has saved it.
#include "adapters/FileTraits.h"
#include "adapters/PosixFiles.h"
#include "adapters/faults/Machine.h"
#include "core/platform/WholeFile.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace tallybook::adapters {
namespace {

using platform::Bytes;
using test::getFile;
using test::putFile;

// The owner, one of his group, one whom lists name, one of the saver's group, anybody, and the saver.
constexpr gid_t kTeam = 2000;
constexpr gid_t kSaversGroup = 2002;
const test::Account kOwner{1001, 1001, {}};
const test::Account kColleague{1003, 1003, {kTeam}};
const test::Account kNamed{1004, 1004, {}};
const test::Account kNeighbour{1005, kSaversGroup, {}};
const test::Account kStranger{1006, 1006, {}};
const test::Account kSaver{1002, kSaversGroup, {}};
const test::Account kSaverInTheTeam{1002, kSaversGroup, {kTeam}};

// An access list in the short form of its entries: tag, rights, id.
struct Entry {
    std::uint16_t tag;
    std::uint16_t rights;
    std::uint32_t id;
};
constexpr std::uint32_t kNone = 0xFFFFFFFF;
const std::vector<Entry> kWithNames = {{1, 6, kNone}, {2, 6, 1002},   {2, 4, 1004},
                                       {4, 4, kNone}, {16, 6, kNone}, {32, 0, kNone}};

std::string listBytes(const std::vector<Entry>& entries) {
    std::string bytes("\2\0\0\0", 4);
    const auto put = [&](std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i)
            bytes += static_cast<char>(value >> 8 * i & 255);
    };
    for (const Entry& entry : entries) {
        put(entry.tag, 2);
        put(entry.rights, 2);
        put(entry.id, 4);
    }
    return bytes;
}

std::string attributeOf(const std::filesystem::path& path, const char* name) {
    std::string value(4096, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    value.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    return value;
}

class RightsFault : public testing::Test {
protected:
    void SetUp() override {
        {
            const test::AnotherUser other(kStranger);
            ASSERT_EQ(other.problem(), "");
        }
        std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
    }
    // A file of the owner and his team.
    void make(mode_t mode, const std::vector<Entry>& list = {}) {
        std::filesystem::remove(target);
        putFile(target, "old");
        ASSERT_EQ(chown(target.c_str(), kOwner.user, kTeam), 0);
        ASSERT_EQ(chmod(target.c_str(), mode), 0);
        if (!list.empty())
            setList("system.posix_acl_access", target, list);
    }
    static void setList(const char* name, const std::filesystem::path& path, const std::vector<Entry>& list) {
        const std::string bytes = listBytes(list);
        ASSERT_EQ(setxattr(path.c_str(), name, bytes.data(), bytes.size(), 0), 0)
            << "This machine cannot make the fault: the disk has no access lists";
    }
    void save() { ASSERT_TRUE(platform::writeWholeFile(files, target, Bytes{'n', 'e', 'w'})); }
    void saveAs(const test::Account& account) {
        const test::AnotherUser saver(account);
        ASSERT_EQ(saver.problem(), "");
        save();
    }
    // 4 for reading and 2 for writing.
    static int rightsOf(const test::Account& account, const std::filesystem::path& path) {
        const test::AnotherUser user(account);
        EXPECT_EQ(user.problem(), "");
        const auto may = [&](int what) { return faccessat(AT_FDCWD, path.c_str(), what, AT_EACCESS) == 0; };
        return (may(R_OK) ? 4 : 0) + (may(W_OK) ? 2 : 0);
    }
    struct stat statusOf(const std::filesystem::path& path) const {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status;
    }

    test::TempFolder folder;
    std::filesystem::path target = folder / "MS2_Books.pdb";
    PosixFiles files;
};

TEST_F(RightsFault, aColleaguesFileStaysTheTeamsAndItsOwnersToUse) {
    make(0660);
    saveAs(kSaverInTheTeam);
    EXPECT_EQ(getFile(target), "new");
    EXPECT_EQ(statusOf(target).st_gid, kTeam);
    EXPECT_EQ(rightsOf(kOwner, target), 6);
    EXPECT_EQ(rightsOf(kColleague, target), 6);
    EXPECT_EQ(rightsOf(kStranger, target), 0);
    saveAs(kOwner); // and back
    EXPECT_EQ(statusOf(target).st_uid, kOwner.user);
    EXPECT_EQ(rightsOf(kSaverInTheTeam, target), 6);
    EXPECT_EQ(rightsOf(kStranger, target), 0);
}

TEST_F(RightsFault, aListIsKept) {
    make(0600, kWithNames);
    saveAs({kOwner.user, kOwner.group, {kTeam}});
    EXPECT_EQ(attributeOf(target, "system.posix_acl_access"), listBytes(kWithNames));
    save(); // as administrator
    EXPECT_EQ(attributeOf(target, "system.posix_acl_access"), listBytes(kWithNames));
    EXPECT_EQ(statusOf(target).st_uid, kOwner.user);
}

TEST_F(RightsFault, whomAListLetsWriteDoesNotLockTheOwnerOut) {
    make(0600, kWithNames);
    saveAs(kSaver);
    EXPECT_EQ(rightsOf(kOwner, target), 6);
    EXPECT_EQ(rightsOf(kNamed, target), 4);
    EXPECT_EQ(rightsOf(kColleague, target), 4);
    EXPECT_EQ(rightsOf(kNeighbour, target), 0);
    EXPECT_EQ(rightsOf(kStranger, target), 0);
}

// Every mode and some lists, whoever saves: nobody may do more than before.
TEST_F(RightsFault, nobodyMayDoMoreThanBefore) {
    const std::vector<std::vector<Entry>> lists = {
        {},
        kWithNames,
        {{1, 6, kNone}, {2, 6, 1002}, {2, 0, 1004}, {4, 6, kNone}, {16, 2, kNone}, {32, 6, kNone}},
        {{1, 4, kNone}, {4, 0, kNone}, {8, 6, kSaversGroup}, {8, 0, 1003}, {16, 6, kNone}, {32, 4, kNone}},
    };
    const std::filesystem::path made = folder / "made";
    int saved = 0;
    for (const std::vector<Entry>& list : lists)
        for (mode_t mode = 0; mode <= 0777; mode += list.empty() ? 1 : 0777 + 1)
            for (const test::Account& saver : {kOwner, kSaver, kSaverInTheTeam}) {
                if ((mode & 0111) != 0)
                    continue; // nobody runs a database
                make(mode, list);
                if ((rightsOf(saver, target) & 2) == 0)
                    continue;
                {
                    const test::AnotherUser user(saver);
                    ASSERT_TRUE(files.create(made, target)) << std::oct << mode;
                }
                for (const test::Account& account : {kOwner, kColleague, kNamed, kNeighbour, kStranger}) {
                    if (account.user == saver.user)
                        continue;
                    const int before = rightsOf(account, target);
                    const int after = rightsOf(account, made);
                    EXPECT_EQ(after & ~before, 0)
                        << std::oct << mode << std::dec << " saved by " << saver.user << ", user " << account.user;
                    EXPECT_TRUE(account.user != kOwner.user || after == before) << std::oct << mode;
                }
                EXPECT_EQ(rightsOf(saver, made) & 2, 2) << std::oct << mode;
                std::filesystem::remove(made);
                ++saved;
            }
    EXPECT_GT(saved, 100);
}

TEST_F(RightsFault, aListOfTheFolderIsNotAddedToAFileWithoutOne) {
    setList("system.posix_acl_default", folder.path(),
            {{1, 7, kNone}, {2, 7, 1004}, {4, 7, kNone}, {16, 7, kNone}, {32, 7, kNone}});
    make(0640);
    ASSERT_EQ(removexattr(target.c_str(), "system.posix_acl_access"), 0);
    ASSERT_EQ(chmod(target.c_str(), 0640), 0);
    save();
    EXPECT_EQ(attributeOf(target, "system.posix_acl_access"), "");
    EXPECT_EQ(statusOf(target).st_mode & 07777, 0640U);
    EXPECT_EQ(rightsOf(kNamed, target), 0);
}

TEST_F(RightsFault, attributesOfUsersAreKept) {
    make(0640);
    const std::string value("green\0and blue", 14);
    ASSERT_EQ(setxattr(target.c_str(), "user.xdg.tags", value.data(), value.size(), 0), 0);
    ASSERT_EQ(setxattr(target.c_str(), "user.empty", "", 0, 0), 0);
    saveAs(kOwner);
    EXPECT_EQ(getFile(target), "new");
    EXPECT_EQ(attributeOf(target, "user.xdg.tags"), value);
    EXPECT_EQ(getxattr(target.c_str(), "user.empty", nullptr, 0), 0);
}

TEST_F(RightsFault, aFileWhoseRightsCannotBeToldIsNotReplaced) {
    const test::OrdinaryUser rights;
    ASSERT_EQ(rights.problem(), "");
    std::filesystem::create_directory(folder / "shut");
    putFile(folder / "shut" / "file", "old");
    ASSERT_EQ(chmod((folder / "shut").c_str(), 0), 0);
    const auto made = files.create(folder / "new", folder / "shut" / "file");
    ASSERT_EQ(chmod((folder / "shut").c_str(), 0700), 0);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().text,
              "Cannot find \"" + (folder / "shut" / "file").string() + "\": permission is denied.");
    EXPECT_FALSE(std::filesystem::exists(folder / "new"));
}

TEST_F(RightsFault, leftOversOfAnotherUserStay) {
    const std::filesystem::path left = folder / "MS2_Books.pdb.tallybook-tmp-1";
    putFile(left, "of a save that was killed");
    std::filesystem::last_write_time(left, std::filesystem::file_time_type::clock::now() - std::chrono::hours(25));
    {
        const test::AnotherUser other(kStranger);
        ASSERT_EQ(other.problem(), "");
        files.sweepLeftOvers(folder.path());
    }
    EXPECT_TRUE(std::filesystem::exists(left));
    files.sweepLeftOvers(folder.path());
    EXPECT_FALSE(std::filesystem::exists(left));
}

TEST_F(RightsFault, theProgramsOwnCopiesAreForTheirOwnerAlone) {
    const std::filesystem::path copy = folder / "Copy_MS2_Books.pdb";
    setList("system.posix_acl_default", folder.path(),
            {{1, 7, kNone}, {2, 7, 1004}, {4, 7, kNone}, {16, 7, kNone}, {32, 7, kNone}});
    const mode_t before = umask(0);
    ASSERT_TRUE(platform::writeOwnFile(files, copy, Bytes{'a'}));
    EXPECT_EQ(statusOf(copy).st_mode & 07777, 0600U);
    EXPECT_EQ(rightsOf(kNamed, copy), 0);
    ASSERT_EQ(chmod(copy.c_str(), 0644), 0);
    ASSERT_TRUE(platform::writeOwnFile(files, copy, Bytes{'b'}));
    umask(before);
    EXPECT_EQ(statusOf(copy).st_mode & 07777, 0600U);
    EXPECT_EQ(getFile(copy), "b");
}

TEST_F(RightsFault, aLinkInThePlaceOfACopyIsReplaced) {
    const std::filesystem::path copy = folder / "Copy_MS2_Books.pdb";
    putFile(folder / "letter", "precious");
    for (const char* leadsTo : {"letter", "nowhere", "."}) {
        std::filesystem::remove(copy);
        std::filesystem::create_symlink(leadsTo, copy);
        ASSERT_TRUE(platform::writeOwnFile(files, copy, Bytes{'b'})) << leadsTo;
        EXPECT_FALSE(std::filesystem::is_symlink(copy));
        EXPECT_EQ(getFile(copy), "b");
    }
    EXPECT_EQ(getFile(folder / "letter"), "precious");
    EXPECT_EQ(test::namesIn(folder.path()), "Copy_MS2_Books.pdb letter");
}

} // namespace
} // namespace tallybook::adapters
