// The auto writer without its widgets, and which screen the long editor shows.
#pragma once

#include "core/model/Document.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::design {

// The sign between items: a comma, blank, semicolon, slash, back-slash or dash for 1 to 6, nothing otherwise.
std::string_view autoWriterSeparator(std::uint8_t AutoWriter);

// The entries of List1.
const std::vector<std::string>& autoWriterItems(const model::DatabaseModel& db, int slot);

enum class OptAction { Replace, Append };

// The OK of dlgAutoWriter: the text for the editor that holds `text`. A Text or Memo field takes the selected items,
// one behind the other with the separator between them, in place of the text or behind it; a field of numbers takes
// the last selected item. Without a selection the text stays.
std::string autoWriterOk(const model::DatabaseModel& db, int slot, std::span<const int> selected, OptAction action,
                         std::string_view text);

// What frmMemoAw shows for a field, which the name of its type selects.
struct MemoScreen {
    bool MaskEdBox1 = false; // instead of txtMemo: a number
    bool CmdAw = false;      // the field has an auto-writer list
    bool operator==(const MemoScreen&) const = default;
};
MemoScreen memoScreen(const model::DatabaseModel& db, int slot);

// The text in txtMemo, and back from it: editors end a line with carriage return and line feed.
std::string textForMemo(std::string_view text);
std::string textFromMemo(std::string_view shown);

} // namespace tallybook::design
