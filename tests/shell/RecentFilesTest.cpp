#include "core/shell/RecentFiles.h"

#include "shell/MemorySettings.h"

#include <gtest/gtest.h>

namespace tallybook::shell {
namespace {

TEST(RecentFiles, newSettingsGiveAnEmptyList) {
    const test::MemorySettings settings;
    EXPECT_TRUE(GetLatestList(settings).empty());
}

TEST(RecentFiles, listSavedWithACountOfZeroReadsBackEmpty) {
    test::MemorySettings settings;
    SaveMRUListToRegistry({{"MS2_a.pdb", "/home/ann"}}, settings);
    SaveMRUListToRegistry({}, settings);
    EXPECT_EQ(settings.value("Recent Files", "Files"), "0");
    EXPECT_TRUE(GetLatestList(settings).empty());
}

TEST(RecentFiles, settingsNumberEntriesFromZero) {
    test::MemorySettings settings;
    const RecentList list{{"MS2_a.pdb", "/home/ann"}, {"MS2_b.pdb", "/home/bob/my books"}};
    SaveMRUListToRegistry(list, settings);
    EXPECT_EQ(settings.value("Recent Files", "Files"), "2");
    EXPECT_EQ(settings.value("Recent Files\\File0", "Name"), "MS2_a.pdb");
    EXPECT_EQ(settings.value("Recent Files\\File0", "Path"), "/home/ann");
    EXPECT_EQ(settings.value("Recent Files\\File1", "Name"), "MS2_b.pdb");
    EXPECT_EQ(settings.value("Recent Files\\File1", "Path"), "/home/bob/my books");
    EXPECT_EQ(GetLatestList(settings), list);
}

TEST(RecentFiles, shorterListLeavesNoOldEntryBehind) {
    test::MemorySettings settings;
    SaveMRUListToRegistry({{"a", "/1"}, {"b", "/2"}}, settings);
    SaveMRUListToRegistry({{"c", "/3"}}, settings);
    EXPECT_EQ(settings.count(), 3U);
    EXPECT_FALSE(settings.value("Recent Files\\File1", "Name"));
}

TEST(RecentFiles, damagedSettingsAreReadAsFarAsTheyGo) {
    test::MemorySettings settings;
    settings.set("Recent Files", "Files", "2000000000");
    settings.set("Recent Files\\File1", "Name", "MS2_a.pdb");
    settings.set("Recent Files\\File1", "Path", "/home");
    EXPECT_EQ(GetLatestList(settings), (RecentList{{"MS2_a.pdb", "/home"}}));
    settings.set("Recent Files", "Files", "many");
    EXPECT_TRUE(GetLatestList(settings).empty());
    settings.set("Recent Files", "Files", "-3");
    EXPECT_TRUE(GetLatestList(settings).empty());
}

TEST(RecentFiles, separatorsOfAnotherSystemAreReadAsOurs) {
    struct Row {
        const char* stored;
        const char* folder;
    };
    const Row rows[] = {{"\\home\\ann", "/home/ann"},
                        {"home\\ann\\", "home/ann"},
                        {"C:\\Palm\\Ann", "C:/Palm/Ann"},
                        {"/home/a\\b", "/home/a\\b"}}; // a character here
    for (const Row& row : rows) {
        test::MemorySettings settings;
        settings.set("Recent Files", "Files", "1");
        settings.set("Recent Files\\File0", "Name", "MS2_a.pdb");
        settings.set("Recent Files\\File0", "Path", row.stored);
        EXPECT_EQ(GetLatestList(settings), (RecentList{{"MS2_a.pdb", row.folder}})) << row.stored;
    }
}

TEST(RecentFiles, newFileStandsFirst) {
    const RecentList list = BuildUsableFileList("/home/ann/MS2_b.pdb", {{"MS2_a.pdb", "/home/ann"}});
    EXPECT_EQ(list, (RecentList{{"MS2_b.pdb", "/home/ann"}, {"MS2_a.pdb", "/home/ann"}}));
}

TEST(RecentFiles, fileOpenedAgainMovesToTheTopWithoutADuplicate) {
    const RecentList before{{"MS2_a.pdb", "/x"}, {"MS2_b.pdb", "/x"}, {"MS2_b.pdb", "/y"}};
    EXPECT_EQ(BuildUsableFileList("/x/MS2_b.pdb", before),
              (RecentList{{"MS2_b.pdb", "/x"}, {"MS2_a.pdb", "/x"}, {"MS2_b.pdb", "/y"}}));
}

TEST(RecentFiles, duplicatesAreFoundWithoutRegardToCase) {
    EXPECT_EQ(BuildUsableFileList("/x/ms2_B.PDB", {{"MS2_b.pdb", "/X"}}), (RecentList{{"ms2_B.PDB", "/x"}}));
}

TEST(RecentFiles, nineEntriesAtMost) {
    RecentList list;
    for (int number = 0; number < 12; ++number)
        list = BuildUsableFileList("/x/MS2_" + std::to_string(number) + ".pdb", list);
    ASSERT_EQ(list.size(), 9U);
    EXPECT_EQ(list.front().name, "MS2_11.pdb");
    EXPECT_EQ(list.back().name, "MS2_3.pdb");
}

TEST(RecentFiles, fileOfTheRootFolderKeepsItsPath) {
    const RecentList list = BuildUsableFileList("/MS2_a.pdb", {});
    EXPECT_EQ(list, (RecentList{{"MS2_a.pdb", ""}}));
    EXPECT_EQ(list.front().path(), "/MS2_a.pdb");
}

TEST(RecentFiles, menuNumbersFromOne) {
    EXPECT_EQ(UpdateMenuList({{"MS2_a.pdb", "/home/ann"}, {"MS2_b.pdb", "/x"}}),
              (std::vector<std::string>{"1 /home/ann/MS2_a.pdb", "2 /x/MS2_b.pdb"}));
    EXPECT_TRUE(UpdateMenuList({}).empty());
}

} // namespace
} // namespace tallybook::shell
