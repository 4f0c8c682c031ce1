#include "core/platform/WholeFile.h"

#include "adapters/PosixFiles.h"
#include "support/FailingFiles.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::platform {
namespace {

using test::FailingFiles;
using test::getFile;
using test::namesIn;
using test::putFile;
using testing::HasSubstr;

Bytes bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

const std::string kOld = "the old file";
const std::string kNew = "the new file, which is longer";

class WholeFileTest : public testing::Test {
protected:
    Status write(std::string_view content) { return writeWholeFile(files, target, bytesOf(content)); }

    test::TempFolder folder;
    std::filesystem::path target = folder / "MS2_Books.pdb";
    adapters::PosixFiles posix;
    FailingFiles files{posix};
};

TEST_F(WholeFileTest, makesAFileThatWasNotThere) {
    ASSERT_TRUE(write(kNew));
    EXPECT_EQ(getFile(target), kNew);
    EXPECT_EQ(namesIn(folder.path()), "MS2_Books.pdb");
}

TEST_F(WholeFileTest, replacesAFile) {
    putFile(target, kOld);
    ASSERT_TRUE(write(kNew));
    EXPECT_EQ(getFile(target), kNew);
    EXPECT_EQ(namesIn(folder.path()), "MS2_Books.pdb");
}

TEST_F(WholeFileTest, writesAnEmptyFile) {
    putFile(target, kOld);
    ASSERT_TRUE(write(""));
    EXPECT_TRUE(std::filesystem::exists(target));
    EXPECT_EQ(getFile(target), "");
}

TEST_F(WholeFileTest, takesTheStepsOfASafeReplacementInOrder) {
    putFile(target, kOld);
    ASSERT_TRUE(write(kNew));
    EXPECT_THAT(files.names(), testing::ElementsAre("resolve", "state", "create", "write", "sync", "close", "state",
                                                    "readPart", "rename", "syncFolder", "state", "readPart"));
}

TEST_F(WholeFileTest, goesOnAfterPartialWrites) {
    files.mostPerWrite = 3;
    ASSERT_TRUE(write(kNew));
    EXPECT_EQ(getFile(target), kNew);
    EXPECT_EQ(std::ranges::count(files.names(), "write"), (kNew.size() + 2) / 3);
}

// Whatever call fails, and with every write cut in pieces so that there are several.
class FailureOfEachCall : public WholeFileTest, public testing::WithParamInterface<FailingFiles::Mode> {
protected:
    int callsOfASave() {
        files.mostPerWrite = 10;
        files.restart(0);
        putFile(target, kOld);
        EXPECT_TRUE(write(kNew));
        return files.calls();
    }
};

TEST_P(FailureOfEachCall, leavesTheOldFileWholeOrTheNewOne) {
    const int all = callsOfASave();
    for (int call = 1; call <= all; ++call) {
        putFile(target, kOld);
        files.mode = GetParam();
        files.restart(call);
        const Status saved = write(kNew);
        const std::string name =
            "call " + std::to_string(call) + ", " + files.names()[static_cast<std::size_t>(call) - 1];
        ASSERT_FALSE(saved) << name;
        EXPECT_EQ(saved.error().kind, ErrorKind::File) << name;
        EXPECT_EQ(saved.error().number, static_cast<int>(std::errc::io_error)) << name;
        EXPECT_THAT(saved.error().text, HasSubstr(target.string())) << name;
        const bool renamed = std::ranges::count(files.names(), "syncFolder") > 0;
        EXPECT_EQ(getFile(target), renamed ? kNew : kOld) << name;
        EXPECT_THAT(saved.error().text, HasSubstr(renamed ? "was saved, but" : "")) << name;
        if (GetParam() == FailingFiles::Mode::Once) {
            EXPECT_EQ(namesIn(folder.path()), "MS2_Books.pdb") << name;
        }
    }
}

TEST_P(FailureOfEachCall, leavesNothingBehindWhereNothingWas) {
    const int all = callsOfASave();
    for (int call = 1; call <= all; ++call) {
        std::filesystem::remove(target);
        files.mode = GetParam();
        files.restart(call);
        ASSERT_FALSE(write(kNew)) << call;
        const bool renamed = std::ranges::count(files.names(), "syncFolder") > 0;
        EXPECT_EQ(std::filesystem::exists(target), renamed) << call;
    }
}

TEST_P(FailureOfEachCall, isMadeGoodByTheNextSave) {
    const int all = callsOfASave();
    for (int call = 1; call <= all; ++call) {
        files.mode = GetParam();
        files.restart(call);
        ASSERT_FALSE(write(kNew)) << call;
        files.restart(0);
        EXPECT_TRUE(write(kOld)) << call;
        EXPECT_EQ(getFile(target), kOld) << call;
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, FailureOfEachCall,
                         testing::Values(FailingFiles::Mode::Once, FailingFiles::Mode::Onward));

// A device that says that all went well and keeps less.
TEST_F(WholeFileTest, refusesAFileThatCameOutShort) {
    putFile(target, kOld);
    files.before = [&](int call) {
        if (call == 7) // the size is asked for next
            std::filesystem::resize_file(folder / "MS2_Books.pdb.tallybook-tmp-1", 5);
    };
    const Status saved = write(kNew);
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().text, "\"" + target.string() +
                                      "\" was not saved; what was there before is untouched. "
                                      "What was read back differs from what was written.");
    EXPECT_EQ(getFile(target), kOld);
    EXPECT_EQ(namesIn(folder.path()), "MS2_Books.pdb");
}

TEST_F(WholeFileTest, refusesAFileThatReadsBackWithOtherBytes) {
    putFile(target, kOld);
    files.before = [&](int call) {
        if (call == 7)
            putFile(folder / "MS2_Books.pdb.tallybook-tmp-1", std::string(kNew.size(), '\0'));
    };
    ASSERT_FALSE(write(kNew));
    EXPECT_EQ(getFile(target), kOld);
}

TEST_F(WholeFileTest, tellsOfAFileThatChangedBehindTheRename) {
    files.before = [&](int call) {
        if (call == 11)
            putFile(target, "other");
    };
    const Status saved = write(kNew);
    ASSERT_FALSE(saved);
    EXPECT_THAT(saved.error().text, HasSubstr("was saved, but the disk did not confirm it."));
}

TEST_F(WholeFileTest, leavesTemporaryFilesOfOthersAlone) {
    putFile(folder / "MS2_Books.pdb.tallybook-tmp-1", "of a program that was killed");
    std::filesystem::create_directory(folder / "MS2_Books.pdb.tallybook-tmp-2");
    ASSERT_TRUE(write(kNew));
    EXPECT_EQ(getFile(target), kNew);
    EXPECT_EQ(namesIn(folder.path()), "MS2_Books.pdb MS2_Books.pdb.tallybook-tmp-1 MS2_Books.pdb.tallybook-tmp-2");
    EXPECT_EQ(getFile(folder / "MS2_Books.pdb.tallybook-tmp-1"), "of a program that was killed");
}

TEST_F(WholeFileTest, writesAFileWhoseNameHasTheLongestLength) {
    target = folder / (std::string(251, 'n') + ".pdb");
    putFile(target, kOld);
    ASSERT_TRUE(write(kNew));
    EXPECT_EQ(getFile(target), kNew);
}

TEST_F(WholeFileTest, copiesAFile) {
    putFile(folder / "from", kNew);
    putFile(target, kOld);
    ASSERT_TRUE(copyWholeFile(files, folder / "from", target));
    EXPECT_EQ(getFile(target), kNew);
}

TEST_F(WholeFileTest, keepsTheCopyThatWasWhenTheOriginalCannotBeRead) {
    putFile(target, kOld);
    const Status copied = copyWholeFile(files, folder / "missing", target);
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().text,
              "Cannot read \"" + (folder / "missing").string() + "\": the file or folder does not exist.");
    EXPECT_EQ(getFile(target), kOld);
}

} // namespace
} // namespace tallybook::platform
