// Widths and codes of the file, record kind by record kind, for readers and writers alike. The tables of bytes
// stand in docs/file-format.md.
#pragma once

#include "core/model/DatabaseModel.h"
#include "core/model/Limits.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tallybook::pdb::layout {

// The header of the file and the list of its records.
inline constexpr std::size_t kNameWidth = 32; // the name and at least one NUL
inline constexpr std::size_t kHeaderSize = 78;
inline constexpr std::uint16_t kFileAttributes = 0x8000;
inline constexpr std::uint16_t kFileVersion = 1;
inline constexpr std::uint32_t kModificationNumber = 1;
inline constexpr std::string_view kType = "data";
inline constexpr std::string_view kCreator = "MOSS";
inline constexpr std::string_view kOlderCreator = "MOSA"; // of format 1.x
inline constexpr std::size_t kEntrySize = 8;              // offset, attributes, three bytes of id
inline constexpr std::size_t kListPadding = 2;            // zeros behind the list
inline constexpr std::uint8_t kEntryAttributes = 0x40;
inline constexpr std::uint8_t kDeletedEntry = 0x80;
inline constexpr int kFirstDroppedEntry = 86; // deleted entries ahead of it are records all the same

// Numbers of the fixed records. Each record's first byte is its number; all data records have that of the first.
inline constexpr int kHeaderValues = 0;
inline constexpr int kFieldTable = 1;
inline constexpr int kFirstAttribute = 2; // of slot 0; slot 80 has 82
inline constexpr int kLastAttribute = 82;
inline constexpr int kLastKey = 83;
inline constexpr int kForms = 84;
inline constexpr int kViews = 85;
inline constexpr int kFilters = 86;
inline constexpr int kFirstData = model::kFixedRecords;
inline constexpr int kOlderFixedRecords = 40; // of format 1.x

// Record 0. The passwords stand in this order, which is not the one of their kinds.
using model::PasswordKind;
inline constexpr std::array kPasswordOrder = {PasswordKind::Login,  PasswordKind::Modify, PasswordKind::View,
                                              PasswordKind::Design, PasswordKind::Beam,   PasswordKind::Copy};
inline constexpr std::uint8_t kFormatVersion = 21; // what every save writes

// Records 2 to 82, attributes of the field slots.
inline constexpr std::uint8_t kEmptyBlock = 1;
inline constexpr std::size_t kTokenTextWidth = 11;
inline constexpr int kOldTokens = 7;                // of the block that older files hold
inline constexpr std::int64_t kFullExpression = 92; // bytes from which a block has all its tokens
inline constexpr std::uint8_t kNewOperators = 21;   // format version from which operators have their new codes
inline constexpr std::size_t kOneToManySourceWidth = 33;
inline constexpr std::size_t kOneToManyLabelWidth = 21;
inline constexpr std::size_t kResultTextWidth = 21; // texts of a conditional expression's branches
inline constexpr std::size_t kConditionGap = 4;     // zeros behind a conditional expression's links
inline constexpr std::int32_t kOldestKey = 1;       // LastKey of a file without data records
inline constexpr std::size_t kMostInByte = 255;     // items of a list, entries of a plugin

// Three conditions, in filters and conditional expressions.
inline constexpr std::size_t kConditionNameWidth = 21;
inline constexpr std::size_t kConditionValueWidth = 20;
inline constexpr std::size_t kFilterSize = 96;

// Record 85.
inline constexpr std::size_t kViewNameWidth = 21;

// Data records: number, category, key; then cells, each with its type and slot ahead; then two zeros.
inline constexpr std::size_t kRecordHeader = 6;
inline constexpr std::size_t kCellHeader = 2;
inline constexpr std::size_t kEndMark = 2;
inline constexpr std::size_t kMostPictureBytes = 65534; // their number plus 1 is a word
inline constexpr std::size_t kMostMemo = 65535;
inline constexpr std::size_t kMostKeyText = 255; // a longer join key is cut to that of a text

// Colours of a result by their index in the file: black, red, green, blue, yellow.
inline constexpr std::array<std::uint32_t, 5> kResultColours = {0, 0xFF, 0xFF00, 0xFF0000, 0xFFFF};

} // namespace tallybook::pdb::layout
