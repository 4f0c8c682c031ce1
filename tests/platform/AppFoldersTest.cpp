#include "core/platform/AppFolders.h"

#include "adapters/PosixFiles.h"
#include "support/ScriptedUser.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace tallybook::platform {
namespace {

// Folders as a test describes them; nothing can be changed.
class DescribedFiles : public adapters::PosixFiles {
public:
    std::filesystem::path writable;
    std::filesystem::path readOnly;
    std::filesystem::path regular;

    Result<FileState> state(const std::filesystem::path& path) override {
        if (path == writable)
            return FileState{.kind = FileKind::Folder, .writable = true};
        if (path == readOnly)
            return FileState{.kind = FileKind::Folder, .writable = false};
        return path == regular ? FileState{.kind = FileKind::Regular} : FileState{};
    }
};

TEST(ApplicationFolder, isTheExecutablesFolderWhenThatIsWritable) {
    DescribedFiles files;
    files.writable = "/opt/tally";
    EXPECT_EQ(applicationFolder(files, {.executableFolder = "/opt/tally", .home = "/home/ann"}), "/opt/tally");
}

TEST(ApplicationFolder, isTheExecutablesFolderWhenAFileSaysPortable) {
    DescribedFiles files;
    files.readOnly = "/opt/tally";
    files.regular = "/opt/tally/portable";
    EXPECT_EQ(applicationFolder(files, {.executableFolder = "/opt/tally", .home = "/home/ann"}), "/opt/tally");
}

TEST(ApplicationFolder, isInTheUsersDataFolderOtherwise) {
    struct Case {
        std::filesystem::path dataHome;
        std::filesystem::path expected;
    };
    const Case cases[] = {
        {"", "/home/ann/.local/share/tallybook-pocket-desktop"},
        {"/data/ann", "/data/ann/tallybook-pocket-desktop"},
        {"data/ann", "/home/ann/.local/share/tallybook-pocket-desktop"}, // relative
    };
    DescribedFiles files;
    files.readOnly = "/usr/bin";
    for (const Case& c : cases)
        EXPECT_EQ(
            applicationFolder(files, {.executableFolder = "/usr/bin", .home = "/home/ann", .dataHome = c.dataHome}),
            c.expected)
            << c.dataHome;
}

TEST(ConfigFolder, isInTheUsersConfigurationFolder) {
    EXPECT_EQ(configFolder({.home = "/home/ann"}), "/home/ann/.config/tallybook-pocket-desktop");
    EXPECT_EQ(configFolder({.home = "/home/ann", .configHome = "/conf"}), "/conf/tallybook-pocket-desktop");
    EXPECT_EQ(configFolder({.home = "/home/ann", .configHome = "conf"}),
              "/home/ann/.config/tallybook-pocket-desktop");
}

TEST(LockFolder, isTheRuntimeFolderWhenThatCanBeWritten) {
    DescribedFiles files;
    files.readOnly = "/usr/bin";
    const Surroundings around{.executableFolder = "/usr/bin", .home = "/home/ann", .runtime = "/run/user/1000"};
    EXPECT_EQ(lockFolder(files, around), "/home/ann/.local/share/tallybook-pocket-desktop");
    files.writable = "/run/user/1000";
    EXPECT_EQ(lockFolder(files, around), "/run/user/1000");
}

class WorkingFolders : public testing::Test {
protected:
    test::TempFolder folder;
    adapters::PosixFiles files;
    test::ScriptedUser ui;
    FixedClock clock{LocalTime{}};
    Regional regional;
    Services services{ui, ui, files, clock, regional, folder.path()};
};

TEST_F(WorkingFolders, areMadeWhereTheyAreAbsent) {
    makeFolders(services);
    EXPECT_EQ(test::namesIn(folder.path()), "Backup ConversionSpecs Temp");
    EXPECT_EQ(test::namesIn(folder / "ConversionSpecs"), "Export Import");
    makeFolders(services);
    EXPECT_EQ(test::namesIn(folder.path()), "Backup ConversionSpecs Temp");
}

TEST_F(WorkingFolders, areMadeForTheUserAloneWithTheApplicationFolder) {
    services.applicationFolder = folder / "share" / "tallybook";
    makeFolders(services);
    EXPECT_EQ(test::namesIn(services.applicationFolder), "Backup ConversionSpecs Temp");
    EXPECT_EQ(std::filesystem::status(services.applicationFolder).permissions(), std::filesystem::perms::owner_all);
    EXPECT_EQ(std::filesystem::status(services.applicationFolder / "Temp").permissions(),
              std::filesystem::perms::owner_all);
}

TEST_F(WorkingFolders, areTakenInAnotherLetterCase) {
    std::filesystem::create_directories(folder / "TEMP");
    std::filesystem::create_directories(folder / "BACKUP");
    std::filesystem::create_directories(folder / "conversionspecs" / "IMPORT");
    makeFolders(services);
    EXPECT_EQ(test::namesIn(folder.path()), "BACKUP TEMP conversionspecs");
    EXPECT_EQ(test::namesIn(folder / "conversionspecs"), "Export IMPORT");
    EXPECT_EQ(applicationPath(services, kTempFolder), folder / "TEMP");
    EXPECT_EQ(applicationPath(services, "temp\\Copy_MS2_Books.pdb"), folder / "TEMP" / "Copy_MS2_Books.pdb");
    EXPECT_EQ(applicationPath(services, kImportSpecsFolder), folder / "conversionspecs" / "IMPORT");
}

TEST_F(WorkingFolders, cannotBeMadeWhereAFileHasTheName) {
    test::putFile(folder / "Temp", "");
    EXPECT_FALSE(CreateDir(services, kTempFolder));
    EXPECT_TRUE(CreateDir(services, kBackupFolder));
    makeFolders(services);
    EXPECT_EQ(test::namesIn(folder.path()), "Backup ConversionSpecs Temp");
}

TEST_F(WorkingFolders, cannotBeMadeBelowAMissingOne) {
    EXPECT_FALSE(CreateDir(services, kExportSpecsFolder));
    EXPECT_TRUE(CreateDir(services, kSpecsFolder));
    EXPECT_TRUE(CreateDir(services, kExportSpecsFolder));
    EXPECT_TRUE(CreateDir(services, kExportSpecsFolder));
}

TEST(PlaceIn, partsNamesAtBothSeparators) {
    test::TempFolder folder;
    adapters::PosixFiles files;
    EXPECT_EQ(placeIn(files, folder.path(), "a\\b/c"), folder / "a" / "b" / "c");
    EXPECT_EQ(placeIn(files, folder.path(), "\\a\\"), folder / "a");
    EXPECT_EQ(placeIn(files, folder.path(), ""), folder.path());
}

} // namespace
} // namespace tallybook::platform
