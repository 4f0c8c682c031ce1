#include "core/shell/ProgramSettings.h"

#include "shell/MemorySettings.h"

#include <gtest/gtest.h>

namespace tallybook::shell {
namespace {

TEST(ProgramSettings, firstStartHasItsDefaults) {
    const test::MemorySettings settings;
    EXPECT_EQ(loadPlacement(settings), (WindowPlacement{1000, 1000, 6500, 6500}));
    EXPECT_EQ(loadDisplayChoices(settings), (document::DisplayChoices{true, true}));
    EXPECT_EQ(loadUserId(settings), "");
}

TEST(ProgramSettings, placementIsWrittenAsDecimalTextUnderItsKeys) {
    test::MemorySettings settings;
    savePlacement({-120.5F, 30, 9600, 7200}, WindowState::Normal, settings);
    EXPECT_EQ(settings.value("Settings", "MainLeft"), "-120.5");
    EXPECT_EQ(settings.value("Settings", "MainTop"), "30");
    EXPECT_EQ(settings.value("Settings", "MainWidth"), "9600");
    EXPECT_EQ(settings.value("Settings", "MainHeight"), "7200");
    EXPECT_EQ(loadPlacement(settings), (WindowPlacement{-120.5F, 30, 9600, 7200}));
}

TEST(ProgramSettings, minimisedOrMaximisedWindowKeepsTheLastNormalPlacement) {
    test::MemorySettings settings;
    const WindowPlacement normal{1, 2, 3000, 4000};
    savePlacement(normal, WindowState::Normal, settings);
    savePlacement({0, 0, 20000, 15000}, WindowState::Minimised, settings);
    savePlacement({0, 0, 20000, 15000}, WindowState::Maximised, settings);
    EXPECT_EQ(loadPlacement(settings), normal);
}

TEST(ProgramSettings, measureThatIsNoNumberHasItsDefault) {
    test::MemorySettings settings;
    settings.set("Settings", "MainLeft", "left");
    settings.set("Settings", "MainTop", "");
    settings.set("Settings", "MainWidth", "8000");
    EXPECT_EQ(loadPlacement(settings), (WindowPlacement{1000, 1000, 8000, 6500}));
}

TEST(ProgramSettings, displayChoicesAreKeptUnderTheirKeys) {
    test::MemorySettings settings;
    saveDisplayChoices({.notUsedFields = false, .fieldTypes = true}, settings);
    EXPECT_EQ(settings.value("Settings", "ViewNotUsed"), "False");
    EXPECT_EQ(settings.value("Settings", "ViewFieldTypes"), "True");
    EXPECT_EQ(loadDisplayChoices(settings), (document::DisplayChoices{false, true}));
    settings.set("Settings", "ViewNotUsed", "maybe");
    EXPECT_TRUE(loadDisplayChoices(settings).notUsedFields);
}

TEST(ProgramSettings, userIsKept) {
    test::MemorySettings settings;
    saveUserId("Ann Smith", settings);
    EXPECT_EQ(settings.value("Settings", "UserID"), "Ann Smith");
    EXPECT_EQ(loadUserId(settings), "Ann Smith");
}

TEST(ProgramSettings, folderOfTheHandheldIsWhatIsFoundUnlessSet) {
    test::MemorySettings settings;
    EXPECT_EQ(loadHandheldFolder(settings), "");
    settings.set("Handheld", "Folder", "/media/stick/Palm");
    EXPECT_EQ(loadHandheldFolder(settings), "/media/stick/Palm");
}

} // namespace
} // namespace tallybook::shell
