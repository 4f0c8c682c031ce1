#include "core/shell/Commands.h"

#include <array>

namespace tallybook::shell {

namespace {

using enum Enabled;

constexpr bool kToCome = false;
constexpr bool kBuilt = true;
constexpr bool kLine = true;

constexpr std::array kMenus = {
    Menu{"mnuFile", "&File"},     Menu{"mnuEdit", "&Edit"}, Menu{"mnuSearch", "&Search"},
    Menu{"mnuRecord", "&Record"}, Menu{"mnuView", "&View"}, Menu{"mnuTools", "&Tools"},
    Menu{"mnuHelp", "&Help"},     Menu{"mnuColumn", ""},    Menu{"mnuRow", ""},
};

// clang-format off
constexpr std::array kCommands = {
    Command{"mnuFileNew", "&New", "Ctrl+N", 1, "new", "New", Always, kBuilt, "mnuFile", false,
            "Make an empty Tallybook"},
    Command{"mnuFileOpen", "&Open...", "Ctrl+O", 2, "open", "Open", Always, kBuilt, "mnuFile", false,
            "Open a Tallybook"},
    Command{"mnuFileClose", "&Close", "Ctrl+W", 0, "", "", WithDocument, kBuilt, "mnuFile", false,
            "Close the open Tallybook"},
    Command{"mnuFileImport", "&Import...", "", 23, "convert", "Import from External File", Always, kToCome,
            "mnuFile", kLine, "Run a saved conversion into a Tallybook"},
    Command{"mnuFileExport", "&Export...", "", 22, "export", "Export to External File", Always, kToCome, "mnuFile",
            false, "Run a saved conversion out of a Tallybook"},
    Command{"mnuFileSaveInstall", "Save && Ins&tall", "", 5, "install", "Save && Install", WithDocument, kBuilt,
            "mnuFile", kLine, "Save the Tallybook and install it at the next HotSync"},
    Command{"mnuFileSaveAs", "Save &As...", "Ctrl+Shift+S", 0, "", "", WithDocument, kBuilt, "mnuFile", false,
            "Save the Tallybook under another name"},
    Command{"mnuFileSave", "&Save", "Ctrl+S", 3, "save", "Save", WithDocument, kBuilt, "mnuFile", false,
            "Save the Tallybook"},
    Command{"mnuFilePageSetup", "Page Set&up...", "", 0, "", "", WithDocument, kToCome, "mnuFile", kLine,
            "Choose paper, margins and fonts"},
    Command{"mnuFilePrintPreview", "Print Pre&view", "", 7, "printpreview", "Print Preview", WithPrinter, kToCome,
            "mnuFile", false, "Show the pages as they will be printed"},
    Command{"mnuFilePrint", "&Print...", "Ctrl+P", 8, "print", "Print this file ", WithPrinter, kToCome, "mnuFile",
            false, "Print the records that the grid shows"},
    Command{"mnuMRUList", "", "", 0, "", "", Always, kBuilt, "mnuFile", kLine, "Open this Tallybook again"},
    Command{"mnuFileExit", "E&xit", "Ctrl+Q", 0, "", "", Always, kBuilt, "mnuFile", kLine, "End the program"},

    Command{"mnuEditUndo", "&Undo", "Ctrl+Z", 0, "", "", WithDocument, kToCome, "mnuEdit", false, ""},
    Command{"mnuEditCut", "Cu&t", "Ctrl+X", 10, "cut", "Cut", WithDocument, kBuilt, "mnuEdit", kLine,
            "Move the selected text to the clipboard"},
    Command{"mnuEditCopy", "&Copy", "Ctrl+C", 11, "copy", "Copy", WithDocument, kBuilt, "mnuEdit", false,
            "Copy the selected text or cells to the clipboard"},
    Command{"mnuEditPaste", "&Paste", "Ctrl+V", 12, "paste", "Paste", WithDocument, kBuilt, "mnuEdit", false,
            "Put the clipboard's text into the cell"},

    Command{"mnuFind", "&Find...", "Ctrl+F", 0, "", "", WithDocument, kBuilt, "mnuSearch", false,
            "Look for a text in the records"},
    Command{"mnuFindNext", "Find &Next", "F3", 0, "", "", WithDocument, kBuilt, "mnuSearch", false,
            "Look for the text again, forward"},
    Command{"mnuFindPrevious", "Find &Previous", "Shift+F3", 0, "", "", WithDocument, kBuilt, "mnuSearch", false,
            "Look for the text again, backward"},

    Command{"mnuRecordAdd", "&Add Record", "Ins", 14, "addrec", "Add Record", WithDocument, kBuilt, "mnuRecord",
            false, "Add a record behind the last one"},
    Command{"mnuRecordDelete", "&Delete Record", "Ctrl+Del", 15, "delrec", "Delete Record", WithDocument, kBuilt,
            "mnuRecord", false, "Delete the current record"},
    Command{"mnuRecordDeleteAll", "Delete A&ll Records", "", 0, "", "", WithDocument, kBuilt, "mnuRecord", kLine,
            "Delete every record of the Tallybook"},

    Command{"mnuViewToolbar", "&Toolbar", "", 0, "", "", Untouched, kBuilt, "mnuView", false,
            "Show or hide the tool bar"},
    Command{"mnuViewStatusBar", "&Status Bar", "", 0, "", "", Untouched, kBuilt, "mnuView", false,
            "Show or hide the status bar"},
    Command{"mnuViewNotUsedFields", "&Not Used Fields", "", 0, "", "", WithDocument, kBuilt, "mnuView", kLine,
            "Show or hide the columns without a field"},
    Command{"mnuViewFieldTypes", "&Field Types", "", 0, "", "", WithDocument, kBuilt, "mnuView", false,
            "Show or hide the row of field types"},
    Command{"mnuViewFieldProp", "Field &Properties...", "Alt+Return", 0, "", "", WithDocument, kBuilt, "mnuView",
            kLine, "Change the field of the current column"},

    Command{"mnuFormDesigner", "&Form Designer...", "", 26, "formdesg", "Form Designer", WithDocument, kBuilt,
            "mnuTools", false, "Lay out the screens of the handheld"},
    Command{"mnuToolsSecurity", "&Security Setting...", "", 0, "", "", WithDocument, kBuilt, "mnuTools", false,
            "Set, change and delete passwords"},
    Command{"mnuToolsPDBPorps", "Tallybook &Properties...", "", 25, "prop", "Tallybook Properties", WithDocument,
            kBuilt, "mnuTools", false, "Change what holds for the whole Tallybook"},
    Command{"mnuRecalculateExpressions", "&Recalculate Expressions", "F9", 19, "calc", "Recalculate Expressions",
            WithDocument, kBuilt, "mnuTools", kLine, "Fill the calculated columns anew"},

    Command{"mnuHelpContents", "&Contents", "F1", 28, "help", "Help", Always, kBuilt, "mnuHelp", false,
            "This version has no handbook yet"},
    Command{"mnuHelpSearchForHelpOn", "&Search for Help on...", "", 0, "", "", Always, kBuilt, "mnuHelp", false,
            "This version has no handbook yet"},
    Command{"mnuHelpAbout", "&About Tallybook Pocket Desktop", "", 0, "", "", Always, kBuilt, "mnuHelp", kLine,
            "Show the version"},

    Command{"mnuColumnSorta", "Sort &Ascending", "", 0, "", "", WithDocument, kBuilt, "mnuColumn", false,
            "Sort the records on this column"},
    Command{"mnuColumnSortd", "Sort &Descending", "", 0, "", "", WithDocument, kBuilt, "mnuColumn", false,
            "Sort the records on this column, the last first"},
    Command{"mnuFieldProps", "Field &Properties...", "", 0, "", "", WithDocument, kBuilt, "mnuColumn", kLine,
            "Change the field of this column"},
    Command{"mnuColumnConvertToKeys", "Convert to &Keys", "", 0, "", "", WithDocument, kBuilt, "mnuColumn", false,
            "Make the numbers of this column the keys of the records"},
    Command{"mnuCancel", "&Cancel", "", 0, "", "", WithDocument, kBuilt, "mnuColumn", kLine, ""},

    Command{"mnuRowDeleteRec", "&Delete Record", "", 0, "", "", WithDocument, kBuilt, "mnuRow", false,
            "Delete this record"},
    Command{"mnuRowCancel", "&Cancel", "", 0, "", "", WithDocument, kBuilt, "mnuRow", kLine, ""},

    // The sort buttons refuse while a view is shown, the items of the column's menu do not: commands of their own.
    Command{"", "", "F7", 17, "sorta", "Sort Ascending", WithDocument, kBuilt, "", false,
            "Sort the records on the current column (F7)"},
    Command{"", "", "Shift+F7", 18, "sortd", "Sort Descending", WithDocument, kBuilt, "", false,
            "Sort the records on the current column, the last first (Shift+F7)"},
    Command{"", "", "F8", 20, "bestfit", "Best Fit", WithDocument, kBuilt, "", false,
            "Make each column as wide as its texts (F8)"},
};
// clang-format on

} // namespace

std::span<const Menu> menus() {
    return kMenus;
}

std::span<const Command> commands() {
    return kCommands;
}

bool isEnabled(const Command& command, DocState state, int printers) {
    if (!command.built)
        return false;
    switch (command.enabled) {
    case WithDocument:
        return state == 1;
    case WithPrinter:
        return state == 1 && printers >= 1;
    case Always:
    case Untouched:
        break;
    }
    return true;
}

} // namespace tallybook::shell
