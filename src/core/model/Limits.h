// Capacities of the file format. They are constants of the design and never grow.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tallybook::model {

inline constexpr int MaxFieldSlots = 82;  // slots 0..81; slot 0 is the category list
inline constexpr int MaxUserFields = 80;  // slots 1..80
inline constexpr int MaxListItems = 256;  // capacity of a list; its count on file is one byte
inline constexpr int MaxViews = 13;       // slots of Views; slot 12 is carried, not offered
inline constexpr int MaxViewColumns = 81; // columns of one view
inline constexpr int MaxFilters = 12;     // named filters; the array has a 13th slot, never written
inline constexpr int MaxForms = 15;       // forms in use; the array has a 16th slot
inline constexpr int MaxFormItems = 12;   // items of one form
inline constexpr int kUserListItems = 60; // items a user may give a list
inline constexpr int kTokens = 48;        // tokens of an advanced expression
inline constexpr int kShortTokens = 15;   // tokens of a simple expression
inline constexpr int kPasswordLength = 10;
inline constexpr int kTextLength = 254;  // characters of a text value
inline constexpr int kMemoLength = 4096; // characters of a memo value
inline constexpr int kNameLength = 31;   // characters of the database's name, a NUL behind it

inline constexpr int kFixedRecords = 87;      // records 0..86 hold properties
inline constexpr int kMaxDataRecords = 65448; // 65,535 records of the container less the fixed ones
inline constexpr int kFirstDataRow = 2;       // rows 0 and 1 of the grid are headers
inline constexpr int kGridColumns = 83;       // record number, slots 0..80, scratch
inline constexpr int kNumberColumn = 0;       // column of the record number
inline constexpr int kScratchColumn = 82;     // column of width 0, used by sorting

// The grid's column of a field slot.
constexpr int columnOfSlot(int slot) {
    return slot + 1;
}
// The field slot of a grid column.
constexpr int slotOfColumn(int column) {
    return column - 1;
}

} // namespace tallybook::model
