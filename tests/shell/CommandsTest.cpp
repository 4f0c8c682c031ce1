#include "core/shell/Commands.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace tallybook::shell {
namespace {

const Command& find(std::string_view name) {
    const auto all = commands();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Command& c) { return c.name == name; });
    EXPECT_NE(found, all.end()) << name;
    return *found;
}

const Command* buttonAt(int position) {
    for (const Command& command : commands())
        if (command.position == position)
            return &command;
    return nullptr;
}

// Enabling as if all work were built: what UpdateToolbar's rules say.
bool ruleAllows(Command command, DocState state, int printers) {
    command.built = true;
    return isEnabled(command, state, printers);
}

TEST(Commands, menusStandInTheirOrder) {
    std::vector<std::string> names;
    for (const Menu& menu : menus())
        names.emplace_back(menu.name);
    EXPECT_EQ(names, (std::vector<std::string>{"mnuFile", "mnuEdit", "mnuSearch", "mnuRecord", "mnuView", "mnuTools",
                                               "mnuHelp", "mnuColumn", "mnuRow"}));
}

TEST(Commands, itemsStandInMenuOrder) {
    const std::vector<std::string> expected = {"mnuFileNew",
                                               "mnuFileOpen",
                                               "mnuFileClose",
                                               "mnuFileImport",
                                               "mnuFileExport",
                                               "mnuFileSaveInstall",
                                               "mnuFileSaveAs",
                                               "mnuFileSave",
                                               "mnuFilePageSetup",
                                               "mnuFilePrintPreview",
                                               "mnuFilePrint",
                                               "mnuMRUList",
                                               "mnuFileExit",
                                               "mnuEditUndo",
                                               "mnuEditCut",
                                               "mnuEditCopy",
                                               "mnuEditPaste",
                                               "mnuFind",
                                               "mnuFindNext",
                                               "mnuFindPrevious",
                                               "mnuRecordAdd",
                                               "mnuRecordDelete",
                                               "mnuRecordDeleteAll",
                                               "mnuViewToolbar",
                                               "mnuViewStatusBar",
                                               "mnuViewNotUsedFields",
                                               "mnuViewFieldTypes",
                                               "mnuViewFieldProp",
                                               "mnuFormDesigner",
                                               "mnuToolsSecurity",
                                               "mnuToolsPDBPorps",
                                               "mnuRecalculateExpressions",
                                               "mnuHelpContents",
                                               "mnuHelpSearchForHelpOn",
                                               "mnuHelpAbout",
                                               "mnuColumnSorta",
                                               "mnuColumnSortd",
                                               "mnuFieldProps",
                                               "mnuColumnConvertToKeys",
                                               "mnuCancel",
                                               "mnuRowDeleteRec",
                                               "mnuRowCancel"};
    std::vector<std::string> names;
    for (const Command& command : commands())
        if (!command.name.empty())
            names.emplace_back(command.name);
    EXPECT_EQ(names, expected);
}

TEST(Commands, everyItemStandsInAMenuThatExists) {
    std::set<std::string_view> known;
    for (const Menu& menu : menus())
        known.insert(menu.name);
    for (const Command& command : commands())
        EXPECT_EQ(known.contains(command.menu), !command.name.empty()) << command.name << command.key;
}

TEST(Commands, buttonsHaveTheirPlacesKeysAndToolTips) {
    struct Button {
        int position;
        std::string_view key;
        std::string_view toolTip;
        std::string_view item; // the menu item that does the same
    };
    const Button buttons[] = {
        {1, "new", "New", "mnuFileNew"},
        {2, "open", "Open", "mnuFileOpen"},
        {3, "save", "Save", "mnuFileSave"},
        {5, "install", "Save && Install", "mnuFileSaveInstall"},
        {7, "printpreview", "Print Preview", "mnuFilePrintPreview"},
        {8, "print", "Print this file ", "mnuFilePrint"},
        {10, "cut", "Cut", "mnuEditCut"},
        {11, "copy", "Copy", "mnuEditCopy"},
        {12, "paste", "Paste", "mnuEditPaste"},
        {14, "addrec", "Add Record", "mnuRecordAdd"},
        {15, "delrec", "Delete Record", "mnuRecordDelete"},
        {17, "sorta", "Sort Ascending", ""},
        {18, "sortd", "Sort Descending", ""},
        {19, "calc", "Recalculate Expressions", "mnuRecalculateExpressions"},
        {20, "bestfit", "Best Fit", ""},
        {22, "export", "Export to External File", "mnuFileExport"},
        {23, "convert", "Import from External File", "mnuFileImport"},
        {25, "prop", "Tallybook Properties", "mnuToolsPDBPorps"},
        {26, "formdesg", "Form Designer", "mnuFormDesigner"},
        {28, "help", "Help", "mnuHelpContents"},
    };
    int count = 0;
    for (const Command& command : commands())
        count += command.position > 0 ? 1 : 0;
    EXPECT_EQ(count, static_cast<int>(std::size(buttons)));
    for (const Button& button : buttons) {
        const Command* command = buttonAt(button.position);
        ASSERT_NE(command, nullptr) << button.position;
        EXPECT_EQ(command->key, button.key);
        EXPECT_EQ(command->toolTip, button.toolTip);
        EXPECT_EQ(command->name, button.item);
    }
}

TEST(Commands, rulesOfEnablingFollowTheState) {
    struct Rule {
        std::vector<int> positions;
        std::vector<std::string_view> items;
        bool closed; // DocState 0
        bool open;   // DocState 1 with a printer
        bool openWithoutPrinter;
    };
    const Rule rules[] = {
        {{1, 2, 22, 23, 28}, {"mnuFileNew", "mnuFileOpen", "mnuFileImport", "mnuFileExport"}, true, true, true},
        {{3, 5, 10, 11, 12, 14, 15, 17, 18, 19, 20, 25, 26},
         {"mnuFileClose", "mnuFileSave", "mnuFileSaveAs", "mnuFilePageSetup", "mnuEditCut", "mnuEditCopy",
          "mnuEditPaste", "mnuRecordAdd", "mnuRecordDelete", "mnuRecordDeleteAll", "mnuViewNotUsedFields",
          "mnuViewFieldTypes", "mnuViewFieldProp", "mnuFormDesigner", "mnuToolsSecurity", "mnuToolsPDBPorps",
          "mnuRecalculateExpressions"},
         false,
         true,
         true},
        {{7, 8}, {"mnuFilePrint", "mnuFilePrintPreview"}, false, true, false},
        {{},
         {"mnuViewToolbar", "mnuViewStatusBar", "mnuFileExit", "mnuHelpContents", "mnuHelpAbout"},
         true,
         true,
         true},
    };
    for (const Rule& rule : rules) {
        std::vector<const Command*> all;
        for (const int position : rule.positions)
            all.push_back(buttonAt(position));
        for (const auto item : rule.items)
            all.push_back(&find(item));
        for (const Command* command : all) {
            const auto name = std::string(command->name) + "/" + std::string(command->key);
            EXPECT_EQ(ruleAllows(*command, 0, 1), rule.closed) << name;
            EXPECT_EQ(ruleAllows(*command, 1, 1), rule.open) << name;
            EXPECT_EQ(ruleAllows(*command, 1, 0), rule.openWithoutPrinter) << name;
        }
    }
}

TEST(Commands, withoutADocumentOnlyTheFiveButtonsAnswer) {
    std::set<std::string_view> answering;
    for (const Command& command : commands())
        if (command.position > 0 && ruleAllows(command, 0, 1))
            answering.insert(command.key);
    EXPECT_EQ(answering, (std::set<std::string_view>{"new", "open", "export", "convert", "help"}));
}

TEST(Commands, whatIsStillToComeStaysDisabled) {
    for (const auto name :
         {"mnuFileImport", "mnuFileExport", "mnuFilePageSetup", "mnuFilePrint", "mnuFilePrintPreview", "mnuEditUndo"})
        EXPECT_FALSE(isEnabled(find(name), 1, 1)) << name;
    for (const auto name :
         {"mnuFileSaveInstall", "mnuRecordAdd", "mnuColumnConvertToKeys", "mnuToolsSecurity", "mnuRowDeleteRec",
          "mnuColumnSorta", "mnuColumnSortd", "mnuFind", "mnuFindNext", "mnuFindPrevious",
          "mnuRecalculateExpressions", "mnuViewFieldProp", "mnuFieldProps", "mnuFormDesigner", "mnuToolsPDBPorps"})
        EXPECT_TRUE(isEnabled(find(name), 1, 1)) << name;
}

TEST(Commands, shortcutsAndAccessKeysAreUniqueWhereTheyMeet) {
    std::set<std::string_view> shortcuts;
    std::set<std::string> accessKeys; // by menu
    for (const Command& command : commands()) {
        EXPECT_TRUE(command.shortcut.empty() || shortcuts.insert(command.shortcut).second) << command.shortcut;
        std::string text(command.text);
        for (auto both = text.find("&&"); both != std::string::npos; both = text.find("&&"))
            text.erase(both, 2);
        if (const auto mark = text.find('&'); mark != std::string::npos) {
            const char key = static_cast<char>(std::tolower(static_cast<unsigned char>(text[mark + 1])));
            EXPECT_TRUE(accessKeys.insert(std::string(command.menu) + key).second) << command.name;
        } else {
            EXPECT_TRUE(command.text.empty()) << command.name << " has no access key";
        }
    }
    for (const auto wanted : {"Ctrl+N", "Ctrl+O", "Ctrl+S", "Ctrl+F", "Ctrl+P", "Ctrl+X", "Ctrl+C", "Ctrl+V",
                              "Ctrl+Del", "F7", "Shift+F7", "F8"})
        EXPECT_TRUE(shortcuts.contains(wanted)) << wanted;
}

} // namespace
} // namespace tallybook::shell
