// Every command of the main window with its rule of enabling, in one table that the window, the tests and the
// documentation read.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tallybook::shell {

enum class Enabled : std::uint8_t {
    Always,       // with and without a document
    WithDocument, // only while a document is open
    WithPrinter,  // only while a document is open and at least one printer is installed
    Untouched,    // no rule
};

// One row: the menu item, and the tool bar button that does the same.
struct Command {
    std::string_view name;     // of the menu item, as "mnuFileNew"; empty for a button without one
    std::string_view text;     // caption with its access key, as "&New"
    std::string_view shortcut; // portable text, as "Ctrl+N"; empty for none
    int position = 0;          // of the button in tbToolBar, 0 for none
    std::string_view key;      // of the button, as "new"
    std::string_view toolTip;
    Enabled enabled = Enabled::Always;
    bool built = true;            // false: the work behind it is still to come, the command stays disabled
    std::string_view menu;        // the menu that the item stands in, as "mnuFile"; empty for a button without one
    bool separatorBefore = false; // a line stands above the item
    std::string_view statusTip;   // a sentence for the status bar
};

// The menus of the menu bar in order, then the two pop-up menus of the grid.
struct Menu {
    std::string_view name;
    std::string_view text; // caption with its access key; empty for a pop-up menu
};
std::span<const Menu> menus();

// Menu items in menu order, each with its button; the buttons without a menu item last. The item "mnuMRUList"
// marks the place of the recent files.
std::span<const Command> commands();

// The frame's state: 0 no document, 1 a document is open.
using DocState = int;

// What UpdateToolbar decides for a command.
bool isEnabled(const Command& command, DocState state, int printers);

} // namespace tallybook::shell
