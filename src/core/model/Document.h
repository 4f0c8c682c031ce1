// A database in its window: the Tallybook, where it came from, and what the window shows of it.
#pragma once

#include "core/model/EditorState.h"
#include "core/model/Tallybook.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tallybook::model {

// What a file on the disk was when the program last read or wrote it, which tells whether somebody else has changed
// it since: another file of the same name has another identity, and a change of the same size, with the time of the
// bytes put back, has another time of change.
struct FileMark {
    bool known = false;
    std::uint64_t size = 0;
    std::int64_t modified = 0;
    std::int64_t changed = 0;
    std::uint64_t identity = 0;

    bool operator==(const FileMark&) const = default;
};

inline constexpr std::uint8_t kMultipleFilter = MaxFilters + 1; // in CurrentFilter: the filters of MultiFilterSel

// The program owns exactly one for its window. Reading another database's structure fills one of its own.
struct Document : Tallybook {
    GridModel ViewGrd; // the shown columns of a view: a snapshot of grd
    bool DocModified = false;
    bool FileOK = false; // the last read or save ended well
    bool Is2xFormat = true;
    bool GridReady = false;  // clear while a bulk change runs: the grid's own events then do nothing
    bool ComboGuard = false; // set while CmbView and CmbFilter are changed by the program

    std::filesystem::path CurrFilePath; // empty for a new database
    std::filesystem::path CurrFolder;
    std::filesystem::path TempCopyPath; // images of unchanged cells are read from it; empty when there is none
    std::string CurrFileName;
    FileMark fileMark;           // of CurrFilePath
    bool ReadOnlyInFile = false; // what the file said when it was last read or written
    std::string Caption;         // of the document window

    std::uint8_t CurrField = 0;           // slot of the cell being edited
    std::string CurrentView;              // empty: all fields
    bool ViewShown = false;               // ViewGrd is shown instead of grd
    bool RecordOfView = false;            // grd is shown for editing a record of the view; cmdEdit is "&Done"
    std::vector<std::uint8_t> ViewFields; // field slots of ViewGrd's columns, from column 1 on
    std::uint8_t CurrentFilter = 0;       // 0 none, slot + 1, or kMultipleFilter
    std::bitset<MaxFilters> MultiFilterSel;
    std::array<std::int16_t, kGridColumns> ViewColWidths{};
    int LastRowInView = 0;
    std::array<std::string, kPasswordKinds> SessionPwd; // typed right since the database was opened, plain
    EditorState editor;                                 // the editor that is open over the cell, if any
};

// Empties the document to a database without records: model, tables, grid (the placeholder row hidden), session
// passwords and flags. Paths and names are left to the caller.
void clearDocument(Document& doc);

} // namespace tallybook::model
