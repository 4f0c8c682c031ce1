// Runs an edit script over the operations that the windows use.
#pragma once

#include "cli/rows/RowText.h"
#include "cli/script/Script.h"
#include "cli/script/ScriptUser.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/find/Find.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

namespace tallybook::cli {

// Where the grid's keys, the mouse and the dialogs stand in a window, this stands for a script. It decides nothing
// about values: that is the work of the operations in document/.
class ScriptRunner {
public:
    // `services` must carry `user` as its user. What show and copy print goes to `out`, as UTF-8. With `saveTo` the
    // command save writes there; otherwise it saves as the window's Save does. Nothing is saved once `out` has
    // refused to take what was printed.
    ScriptRunner(model::Document& doc, platform::Services& services, ScriptUser& user, std::ostream& out,
                 std::optional<std::filesystem::path> saveTo, Audience audience = Audience::Program);

    // Nothing when the script ran to its end. The document is as the last command left it either way.
    std::optional<ScriptError> run(const Script& script);

    // Commits the open edit and saves, as the command save does. Nothing when all went well, else the reason.
    std::optional<std::string> save();

private:
    using Failure = std::optional<std::string>; // UTF-8
    using Words = std::vector<ScriptWord>;
    using Handler = Failure (ScriptRunner::*)(const Words&);
    static Handler handlerOf(const std::string& command);
    Failure runLine(const ScriptLine& line);
    Failure needOutput(); // what was printed so far must have gone out
    Failure settle();     // what the user was told or asked by the command that just ran

    // Places
    struct Place {
        int row = 0;
        int col = 0;
    };
    std::variant<int, std::string> rowOf(const ScriptWord& word) const;
    std::variant<int, std::string> columnOf(const ScriptWord& word) const;
    std::variant<Place, std::string> placeOf(const ScriptWord& row, const ScriptWord& field) const;
    std::string cellText(int row, int col) const; // Windows-1252; Y or N of a check box

    // Editors
    void remember(const document::EditAction& action); // a modal editor, if that is what it opens
    Failure open(int key);                             // GridEdit on the current cell
    Failure needEditor(model::EditorKind kind, const char* what);
    Failure needModal(document::EditAction::Open kind, int key, const char* what);
    Failure noModal() const;
    Failure gridKey(const std::string& key);
    void moveTo(std::optional<int> row);
    Failure typeFurther(const std::string& text);

    Failure doGoto(const Words& words);
    Failure gotoWhere(const ScriptWord& field, const ScriptWord& text);
    std::variant<int, std::string> shownColumnOf(const ScriptWord& word) const; // of the view when one is shown
    Failure gotoInView(int row, const Words& words);
    Failure doClick(const Words& words);
    Failure doType(const Words& words);
    Failure doKey(const Words& words);
    Failure doPick(const Words& words);
    Failure pickRecord(const ScriptWord& word);
    Failure doRadio(const Words& words);
    Failure doDate(const Words& words);
    Failure doMemo(const Words& words);
    Failure doToggle(const Words& words);
    Failure doAdd(const Words& words);
    Failure doDelete(const Words& words);
    Failure doDeleteAll(const Words& words);
    Failure doRecalc(const Words& words);
    Failure doSelect(const Words& words);
    Failure doCopy(const Words& words);
    Failure doShow(const Words& words);
    Failure doSort(const Words& words);
    Failure doFind(const Words& words);
    Failure findAgain(bool forward);
    Failure doView(const Words& words);
    Failure doFilter(const Words& words);
    Failure doEdit(const Words& words);
    Failure doDone(const Words& words);
    Failure doAnswer(const Words& words);
    Failure doPassword(const Words& words);
    Failure doSave(const Words& words);
    Failure doSaveAs(const Words& words);
    Failure expectCell(const Words& words);
    Failure expectAt(const Words& words);
    Failure expectEditor(const Words& words);
    Failure expectMessage(const Words& words);
    Failure expectModified(const Words& words);
    Failure expectRecords(const Words& words);
    Failure expectShown(const Words& words);
    Failure expectView(const Words& words);
    Failure expectFilter(const Words& words);

    model::Document& m_doc;
    platform::Services& m_services;
    ScriptUser& m_user;
    std::ostream& m_out;
    std::optional<std::filesystem::path> m_saveTo;
    Audience m_audience;
    document::FindMemory m_find;
    document::EditAction m_modal; // the window that is open over the grid, if any
};

} // namespace tallybook::cli
