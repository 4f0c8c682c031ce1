// Widths and codes of files of format 1.x, the one before the present format, where they differ from Layout.h. The
// tables of bytes stand in docs/file-format.md.
#pragma once

#include "core/model/FieldType.h"
#include "core/pdb/Layout.h"

#include <cstddef>
#include <cstdint>

namespace tallybook::pdb::older {

inline constexpr int kFixedRecords = layout::kOlderFixedRecords;
inline constexpr int kFieldSlots = 37; // 0 the categories, 1 to 36 the user's

// Numbers of the fixed records.
inline constexpr int kHeaderValues = 0;
inline constexpr int kFieldTable = 1;
inline constexpr int kFirstAttribute = 2; // of slot 0; slot 36 has 38
inline constexpr int kLastKey = 39;

// Record 0.
inline constexpr int kViews = 12;
inline constexpr int kFilters = 12;
inline constexpr int kColumnSets = 4;      // of a view
inline constexpr int kColumnsOfSet = 9;    // each a field and a width; all sets together show every user field
inline constexpr std::size_t kViewGap = 4; // bytes without a meaning behind a view's or a filter's values
inline constexpr std::size_t kFilterGap = 4;
inline constexpr std::size_t kHeaderGap = 1 + 6 + 8; // behind the header bytes
inline constexpr std::size_t kTexts = 3;
inline constexpr std::size_t kMostTexts = 14;
inline constexpr std::uint8_t kSplitter = 40;  // where a screen's column of values begins
inline constexpr std::uint8_t kFormat10 = 100; // first version of format 1.0; versions below are of format 0.99
inline constexpr int kOldestViews = 5;         // views in a file of format 0.99
inline constexpr int kOldestHeaderBytes = 2;

// Types whose attribute record and cells the format has: those up to Radio Button, One to Many excepted.
constexpr bool hasType(model::FieldType type) {
    return type <= model::FieldType::RadioButton && type != model::FieldType::OneToMany;
}
constexpr bool hasCells(model::FieldType type) {
    using model::FieldType;
    return hasType(type) && type != FieldType::NotUsed && type != FieldType::Key && type != FieldType::DBLookup;
}

} // namespace tallybook::pdb::older
