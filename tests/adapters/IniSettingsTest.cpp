#include "adapters/IniSettings.h"

#include "adapters/PosixFiles.h"
#include "support/FailingFiles.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace tallybook::adapters {
namespace {

using namespace std::string_literals;

class IniSettingsTest : public testing::Test {
protected:
    IniSettings open() { return {files, file}; }
    // What a program finds after the next start.
    std::string reread(std::string_view section, std::string_view key) { return open().get(section, key, "(none)"); }

    test::TempFolder folder;
    std::filesystem::path file = folder / "config" / "tallybook" / "settings.ini";
    PosixFiles posix;
    test::FailingFiles files{posix};
};

TEST_F(IniSettingsTest, givesTheDefaultWhereNothingIsStored) {
    const IniSettings settings = open();
    EXPECT_EQ(settings.get("Settings", "MainLeft", "1000"), "1000");
    EXPECT_EQ(settings.value("Settings", "MainLeft"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(IniSettingsTest, keepsTextsBySectionAndKey) {
    IniSettings settings = open();
    settings.set("Settings", "UserID", "Ann");
    settings.set("Recent Files", "Files", "1");
    settings.set("Recent Files\\File0", "Name", "MS2_Books.pdb");
    settings.set("Recent Files\\File0", "Path", "/home/ann/backup");
    ASSERT_TRUE(settings.save());
    EXPECT_EQ(test::getFile(file), "[Recent Files]\n"
                                   "Files=1\n"
                                   "[Recent Files\\File0]\n"
                                   "Name=MS2_Books.pdb\n"
                                   "Path=/home/ann/backup\n"
                                   "[Settings]\n"
                                   "UserID=Ann\n");
    EXPECT_EQ(reread("Recent Files\\File0", "Path"), "/home/ann/backup");
    EXPECT_EQ(reread("Recent Files", "Files"), "1");
}

TEST_F(IniSettingsTest, makesTheFolderForTheUserAlone) {
    IniSettings settings = open();
    settings.set("Settings", "UserID", "Ann");
    ASSERT_TRUE(settings.save());
    EXPECT_EQ(std::filesystem::status(file.parent_path()).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(IniSettingsTest, keepsEveryCharacterOfAValue) {
    const std::string values[] = {"",   " ",    " a ", "=",           "a=b", "[x]",  "\\", "\\n",
                                  "\n", "\r\n", "a\\", "caf\xC3\xA9", "\t",  "\xFF", ";#"};
    for (const std::string& value : values) {
        IniSettings settings = open();
        settings.set("Settings", "UserID", value);
        ASSERT_TRUE(settings.save());
        EXPECT_EQ(reread("Settings", "UserID"), value);
    }
}

TEST_F(IniSettingsTest, replacesAndRemoves) {
    IniSettings settings = open();
    settings.set("A", "x", "1");
    settings.set("A", "x", "2");
    settings.set("B", "x", "3");
    settings.removeSection("A");
    settings.removeSection("none");
    EXPECT_EQ(settings.value("A", "x"), std::nullopt);
    ASSERT_TRUE(settings.save());
    EXPECT_EQ(test::getFile(file), "[B]\nx=3\n");
}

TEST_F(IniSettingsTest, writesOnlyWhatChanged) {
    IniSettings settings = open();
    settings.set("A", "x", "1");
    ASSERT_TRUE(settings.save());
    std::filesystem::remove(file);
    settings.set("A", "x", "1");
    ASSERT_TRUE(settings.save());
    EXPECT_FALSE(std::filesystem::exists(file));
    settings.set("A", "x", "2");
    ASSERT_TRUE(settings.save());
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(IniSettingsTest, passesOverDamagedLines) {
    std::filesystem::create_directories(file.parent_path());
    test::putFile(file, "lost=before any section\n"
                        "[Settings]\r\n"
                        "UserID=Ann\r\n"
                        "no sign\n"
                        "=no key\n"
                        "\n"
                        "nul=a\0b\n"
                        "MainLeft=1000\n"
                        "[broken\n"
                        "MainTop=1\n"
                        "[]\n"
                        "MainTop=2\n"
                        "[Settings]\n"
                        "MainWidth=50\\x"s);
    EXPECT_EQ(reread("Settings", "UserID"), "Ann");
    EXPECT_EQ(reread("Settings", "MainLeft"), "1000");
    EXPECT_EQ(reread("Settings", "MainTop"), "(none)");
    EXPECT_EQ(reread("Settings", "MainWidth"), "50\\x");
    EXPECT_EQ(reread("Settings", "nul"), "(none)");
    EXPECT_EQ(reread("Settings", ""), "(none)");
    EXPECT_EQ(reread("", "MainTop"), "(none)");
}

TEST_F(IniSettingsTest, startsEmptyWhereTheFileCannotBeRead) {
    std::filesystem::create_directories(file);
    IniSettings settings = open();
    EXPECT_EQ(settings.value("Settings", "UserID"), std::nullopt);
    settings.set("Settings", "UserID", "Ann");
    const platform::Status saved = settings.save();
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().text, "\"" + file.string() + "\" is not a regular file.");
}

TEST_F(IniSettingsTest, passesOverAFileThatIsNoneOfOurs) {
    std::filesystem::create_directories(file.parent_path());
    test::putFile(file, "[Settings]\nUserID=Ann\n" + std::string(1 << 20, 'x'));
    EXPECT_EQ(reread("Settings", "UserID"), "(none)");
}

TEST_F(IniSettingsTest, triesAgainAfterASaveThatFailed) {
    IniSettings settings = open();
    settings.set("Settings", "UserID", "Ann");
    ASSERT_TRUE(settings.save());
    settings.set("Settings", "UserID", "Bob");
    const int before = files.calls();
    files.failAt = before + 5;
    ASSERT_FALSE(settings.save());
    EXPECT_EQ(reread("Settings", "UserID"), "Ann");
    files.failAt = 0;
    ASSERT_TRUE(settings.save());
    EXPECT_EQ(reread("Settings", "UserID"), "Bob");
}

} // namespace
} // namespace tallybook::adapters
