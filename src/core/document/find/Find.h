// Looking for a text in the cells.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <string>
#include <string_view>
#include <vector>

namespace tallybook::document {

// What the user is told.
inline constexpr std::string_view kNoSearchText = "Please input a search text.";
inline constexpr std::string_view kSearchTextNotFound = "Search string not found.";

// What the dialog asks for. The names are those of its boxes.
struct FindSettings {
    std::string text;
    bool chkCase = false;       // letters as they are written
    bool chkWholeWord = false;  // no letter or digit on either side
    bool chkExpression = false; // patterns of the whole cell, parts at "+" are alternatives
    bool optForward = true;

    bool operator==(const FindSettings&) const = default;
};

// Kept for as long as the program runs.
struct FindMemory {
    FindSettings settings;          // of the last search; no text before the first one
    std::vector<std::string> texts; // of cmbFindText, in the order of their first use
};

// Whether a cell's text matches. With chkExpression this is ExpressionMatch, whatever chkCase says; a search whose
// expression ignores case goes by ExpressionMatchText.
bool MatchCell(std::string_view cellText, const FindSettings& settings);

// Whether one of the patterns of a text (? * # [list] [!list], apart at "+") matches the whole cell: with letters as
// they are written, and ignoring case.
bool ExpressionMatch(std::string_view cellText, std::string_view patterns);
bool ExpressionMatchText(std::string_view cellText, std::string_view patterns);

// Makes the next cell of grd that matches the current one: from the cell behind (ahead of) the current one on, row
// by row, to the end (start) of the grid; without a current cell the first one is searched too. Hidden rows are
// searched as well; check boxes and columns without a field have no text. The open edit is committed first. False,
// without a message, when there is none or the text is empty.
bool FindText(model::Document& doc, platform::Services& services, const FindSettings& settings, bool forward);

// OK of the dialog: kNoSearchText and kSearchTextNotFound are told. True when a cell was
// found. The settings and the text are kept unless the text is empty.
bool findFromDialog(model::Document& doc, platform::Services& services, FindMemory& memory,
                    const FindSettings& settings);

// Find Next and Find Previous: the last search again, a miss told as by the dialog. False without a message when
// nothing has been sought yet: the caller opens the dialog.
bool findAgain(model::Document& doc, platform::Services& services, const FindMemory& memory, bool forward);

} // namespace tallybook::document
