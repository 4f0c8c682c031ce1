#include "adapters/HandheldChoice.h"

#include "adapters/AppFolder.h"
#include "core/handheld/Users.h"
#include "support/TestServices.h"
#include "support/Variable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::adapters {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Path = std::filesystem::path;

class HandheldChoice : public testing::Test {
protected:
    HandheldChoice() {
        places.palmDesktops = {"/wine/Palm", "/wine/palmOne"};
        places.jpilot = "/home/.jpilot";
        places.own = "/app/Handheld";
        places.copies = "/app/Install";
        places.account = "ann";
    }
    void makeJPilot(const Path& folder) {
        const std::string text = "user Jay\n";
        t.files.put(folder / "jpilot.rc", platform::Bytes(text.begin(), text.end()));
        t.files.addFolder(folder / "backup");
    }
    // The folders of the users that a start would learn; nothing when it would end.
    std::vector<Path> folders(const Path& setting = {}) {
        const auto desktop = chooseHandheld(t.files, places, setting);
        handheld::UserList users;
        started = handheld::GetUserIDs(t, *desktop, users);
        return users.UserFolders;
    }

    test::TestServices t;
    HandheldPlaces places;
    bool started = false;
};

TEST_F(HandheldChoice, aFreshMachineGetsAFolderOfOurOwn) {
    EXPECT_THAT(folders(), ElementsAre("/app/Handheld/ann/Backup"));
    EXPECT_TRUE(t.files.state("/app/Handheld/ann/Install").value().kind == platform::FileKind::Folder);
    t.files.addFolder("/app/Handheld/bob/Backup");
    EXPECT_THAT(folders(), ElementsAre("/app/Handheld/ann/Backup", "/app/Handheld/bob/Backup"));
}

TEST_F(HandheldChoice, theOwnFolderIsMadeOnce) {
    t.files.addFolder("/app/Handheld");
    EXPECT_THAT(folders(), IsEmpty());
    EXPECT_FALSE(started);
    ASSERT_EQ(t.user.messages.size(), 1U);
    EXPECT_THAT(t.user.messages.front().text, testing::StartsWith("You must first HotSync"));
}

TEST_F(HandheldChoice, anOwnFolderThatCannotBeMadeHasNoUsers) {
    t.files.put("/blocked", {});
    places.own = "/blocked/Handheld";
    EXPECT_THAT(folders(), IsEmpty());
    ASSERT_EQ(t.user.messages.size(), 1U);
    EXPECT_THAT(t.user.messages.front().text, testing::StartsWith("You must first HotSync"));
}

TEST_F(HandheldChoice, takesWhatIsThereInOrder) {
    makeJPilot("/home/.jpilot");
    EXPECT_THAT(folders(), ElementsAre("/home/.jpilot/backup"));
    t.files.addFolder("/wine/palmOne/Pam/Backup");
    EXPECT_THAT(folders(), ElementsAre("/wine/palmOne/Pam/Backup"));
    t.files.addFolder("/wine/Palm/Ann/Backup");
    EXPECT_THAT(folders(), ElementsAre("/wine/Palm/Ann/Backup"));
    EXPECT_FALSE(t.files.state("/app/Handheld").value().kind == platform::FileKind::Folder);
}

TEST_F(HandheldChoice, aFolderWithoutUsersEndsTheStart) {
    t.files.addFolder("/wine/Palm");
    EXPECT_THAT(folders(), IsEmpty());
    EXPECT_FALSE(started);
    EXPECT_THAT(t.user.messages.front().text, testing::StartsWith("You must first HotSync"));
}

TEST_F(HandheldChoice, theSettingWins) {
    makeJPilot("/home/.jpilot");
    makeJPilot("/other/jay");
    t.files.addFolder("/wine/Palm/Ann/Backup");
    t.files.addFolder("/stick/Pam/Backup");
    EXPECT_THAT(folders("/stick"), ElementsAre("/stick/Pam/Backup"));
    EXPECT_THAT(folders("/stick/"), ElementsAre("/stick/Pam/Backup"));
    EXPECT_THAT(folders("/other/jay/"), ElementsAre("/other/jay/backup"));
    EXPECT_THAT(folders("own"), ElementsAre("/app/Handheld/ann/Backup"));
    EXPECT_TRUE(t.user.messages.empty());
}

TEST_F(HandheldChoice, aSettingThatIsNotThereIsSaid) {
    EXPECT_THAT(folders("/stick"), IsEmpty());
    EXPECT_FALSE(started);
    ASSERT_EQ(t.user.messages.size(), 1U);
    EXPECT_THAT(t.user.messages.front().text, testing::HasSubstr("/stick"));
}

TEST(HandheldPlacesOfTheSystem, followTheEnvironment) {
    const platform::Surroundings around{.home = "/home/ann"};
    {
        const test::Variable wine("WINEPREFIX", nullptr);
        const test::Variable jpilot("JPILOT_HOME", nullptr);
        const HandheldPlaces places = handheldPlaces(around, "/app");
        EXPECT_EQ(places.jpilot, "/home/ann/.jpilot");
        EXPECT_THAT(places.palmDesktops, testing::Contains(Path("/home/ann/.wine/drive_c/Program Files/Palm")));
        EXPECT_EQ(places.own, "/app/Handheld");
        EXPECT_EQ(places.account, accountName());
    }
    const test::Variable wine("WINEPREFIX", "/prefix");
    const test::Variable jpilot("JPILOT_HOME", "/pilot");
    const HandheldPlaces places = handheldPlaces(around, "/app");
    EXPECT_EQ(places.jpilot, "/pilot/.jpilot");
    EXPECT_EQ(places.palmDesktops.front(), "/prefix/drive_c/Program Files (x86)/Palm");
}

} // namespace
} // namespace tallybook::adapters
