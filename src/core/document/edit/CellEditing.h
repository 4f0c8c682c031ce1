// One cell at a time: what opens when a cell is entered, what happens to what was typed.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <string>
#include <string_view>

namespace tallybook::document {

inline constexpr int kKeyF2 = 65535; // the key code that asks for the long editor
inline constexpr int kKeyBlank = 32;

// What is to be opened by whoever shows the document. Everything that needed no window has been done already.
struct EditAction {
    enum class Open {
        Nothing,
        CellEditor,     // doc.editor tells which and what it holds
        MemoWindow,     // frmMemoAw with `text`; its OK calls acceptMemo
        RadioDialog,    // dlgRadio with the items of the slot's list; its OK calls acceptRadio
        ImageDialog,    // frmEditImage
        ExternalPicker, // frmExtView, which looks for `text`
    };
    Open open = Open::Nothing;
    std::string text;            // for the memo window, line feeds alone; for the picker, what was typed
    bool showAutoWriter = false; // its button CmdAw is visible
    int selected = -1;           // for the radio dialog, from 0
    bool marksRow = false;       // the record is being edited: the marker stands beside its row
};

// Opens the editor of the current cell for a key: a character's code, kKeyBlank for a click, kKeyF2. Changes
// nothing in column 0, while a view is shown or without records. A text with line breaks opens the long editor. Asks
// for the Record Update password when it was not given yet. A Checkbox flips at once; field types that cannot be
// edited give their message. In a read-only database memos and images alone open, to be looked at.
EditAction GridEdit(model::Document& doc, platform::Services& services, int key);

// The same for a key that was pressed on the grid. Nothing at all in a read-only database, where only the mouse opens
// what may be looked at, nor while a bulk change runs.
EditAction keyOnGrid(model::Document& doc, platform::Services& services, int key);

// Commits the open editor: validates, writes the cell and its tables, stamps the record. Always closes the editor;
// a value that is refused leaves the old text, with the message. Harmless when no editor is open.
void saveCell(model::Document& doc, platform::Services& services);

// Drops the open editor, whichever it is; nothing is written.
void HideGridControls(model::Document& doc);

// The OK of the memo window on the current cell. The text has line feeds alone and is cut to what the field holds.
// A text that did not change is no edit. A read-only database keeps its text.
void acceptMemo(model::Document& doc, platform::Services& services, std::string_view text);

// The OK of the radio dialog on the current cell: the option's number from 0. False with the message when there is
// no such option: the dialog stays open.
bool acceptRadio(model::Document& doc, platform::Services& services, int option);

// The right button on the date picker: asks, then empties the cell, without a stamp or a mark of change.
void clearDate(model::Document& doc, platform::Services& services);

// A text typed into Text1 so far, with the automatic capital: the text to show.
std::string textChanged(model::Document& doc, std::string_view text);

// The keys that the editors answer themselves. F2 in a Text field gives the action of the long editor. Up and Down
// in the picker take the next day and the one before.
enum class EditKey { Escape, F2, Enter, Tab, BackTab, Up, Down };
EditAction editorKey(model::Document& doc, platform::Services& services, EditKey key);

// The arrows of UpDown1, as the keys Up (+1) and Down (-1) in MebSpin: the text becomes a number one up or down. A
// text outside the field's range gives the range message and loses its last character.
void spinBy(model::Document& doc, platform::Services& services, int step);

// Moves of the grid's own keys, without an open editor: to the next shown column of the row, if there is one.
void moveRight(model::Document& doc); // Tab
void moveLeft(model::Document& doc);  // Shift+Tab

// What cmb1 does when an item is chosen with the mouse or Enter: it commits. True when the last entry
// ("Edit Items...") was chosen and the Design password allows it: the caller opens the list editor.
bool chooseEntry(model::Document& doc, platform::Services& services, int entry);

// The text of Text1 against the field's type: empty when it is accepted, else the message. May rewrite the text
// (doubled separators, a missing zero, a completed time).
std::string ValidateData(model::Document& doc, platform::Services& services);

// The same for the text of the picker, which becomes the day that it names, as the region writes it. An empty text
// passes and empties the cell.
std::string ValidateDate(model::Document& doc, platform::Services& services);

// The picker's calendar: the day on which it opens (that of the text, else today), and one that was picked in it.
// Days since 1899-12-30.
int calendarDay(const model::Document& doc, platform::Services& services);
// Writes it into the editor, all selected; the cell takes it with the next commit.
void pickDay(model::Document& doc, platform::Services& services, int day);

// A time typed tolerantly: true with the completed text, or false.
bool CheckTijd(std::string& text, const platform::Regional& regional);

// Rewrites the text of Text1 by the digits of a Float field. Other fields, texts that are no number and a number of
// digits above 3 leave it as it is.
void FormatFloatEdit(model::Document& doc, platform::Services& services);

// Puts today or now into the fields of the current row whose default is "record updated".
void doTimeStamp(model::Document& doc, platform::Services& services);

} // namespace tallybook::document
