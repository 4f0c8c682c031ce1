// What the program remembers for its user between two starts. Changes are kept in the settings object; its save()
// stores them.
#pragma once

#include "core/document/grid/GridDisplay.h"
#include "core/platform/Settings.h"

#include <string>

namespace tallybook::shell {

// The main window's place on the screen, in twips.
struct WindowPlacement {
    float left = 1000;
    float top = 1000;
    float width = 6500;
    float height = 6500;

    bool operator==(const WindowPlacement&) const = default;
};

enum class WindowState : std::uint8_t { Normal = 0, Minimised = 1, Maximised = 2 };

// A measure that is missing or no number has its default.
WindowPlacement loadPlacement(const platform::Settings& settings);

// Keeps the placement of a normal window; a minimised or maximised one leaves what was saved before.
void savePlacement(const WindowPlacement& placement, WindowState state, platform::Settings& settings);

// The choices of the View menu, both on by default.
document::DisplayChoices loadDisplayChoices(const platform::Settings& settings);
void saveDisplayChoices(const document::DisplayChoices& choices, platform::Settings& settings);

// The handheld user chosen last, UTF-8; empty when there is none.
std::string loadUserId(const platform::Settings& settings);
void saveUserId(const std::string& user, platform::Settings& settings);

// Where the handheld's desktop software lies, UTF-8: a folder, or "own" for the program's own; empty for what is
// found.
std::string loadHandheldFolder(const platform::Settings& settings);

} // namespace tallybook::shell
