// What a database is made of, apart from its records: fields and their attributes, views, filters, forms.
// The members keep the names and the order that they have in a file. Texts are Windows-1252, one byte a
// character.
#pragma once

#include "core/model/FieldType.h"
#include "core/model/Limits.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tallybook::model {

// One field slot.
struct FieldDef {
    FieldType Type = FieldType::NotUsed;
    std::uint8_t HandheldByte = 0; // the handheld's own, carried
    std::uint8_t Decimals = 0;     // digits behind the point; other uses by type (see docs/file-format.md)
    std::uint8_t AutoWriter = 0;   // 0 none, else the separator's number; then the slot has a ListDef
    std::uint8_t IncDec = 0;       // 1: an Integer or Long shows increment and decrement buttons
    std::uint8_t SearchField = 0;
    std::uint8_t FieldFlags = 0; // bit 7: barcode scan; the others are carried
    std::array<std::uint8_t, 4> Reserved{};
    std::string Name;
    std::string Default; // as text; "A" record added, "U" record updated for dates and times

    bool operator==(const FieldDef&) const = default;
};

// Items of a List, a Radio Button, an auto-writer or (slot 0) the categories. An item keeps its id for life:
// records store the id, never the position.
struct ListDef {
    std::vector<std::uint8_t> ItemIds; // as many as Items, at most 255 from a file
    std::vector<std::string> Items;

    int Count() const { return static_cast<int>(Items.size()); }
    bool operator==(const ListDef&) const = default;
};

// A simple (15 tokens on file) or an advanced (48 tokens) expression.
struct ExprDef {
    std::uint8_t ResultType = 0; // 0 number, 1..3 date, 7 time, 11 and 12 duration, 13 text, others whole number
    std::array<std::uint32_t, kTokens> Tokens{};
    std::array<std::string, kTokens> TokenTexts{}; // at most 10 characters each, 11 when a file fills them

    bool operator==(const ExprDef&) const = default;
};

// A DB Join, DB Lookup, Address Book Join or Address Book Lookup. The last five members are the five bytes
// behind Source, named for joins; by type the third is ABField1 or SortField, the fifth ABField2 or Extra.
struct ExternalDef {
    std::string Source;
    std::uint8_t SourceField = 0; // join: key field's slot in the other database; lookup: slot of the join
    std::uint8_t MatchField = 0;  // slot shown of the other database
    std::uint8_t ABField1 = 0;    // address book field; for joins the picker's view, see SortField()
    std::uint8_t KeyType = 11;    // type code of the key: 1, 2, 3, 11 or 20
    std::uint8_t Extra = 0;       // second address book field, see ABField2()

    std::uint8_t SortField() const { return ABField1; }
    std::uint8_t ABField2() const { return Extra; }
    bool operator==(const ExternalDef&) const = default;
};

struct OneToManyDef {
    std::string Source; // at most 32 characters
    std::array<std::uint8_t, 3> MatchFields{};
    std::array<std::uint8_t, 3> SortFields{};
    std::string Label1; // at most 20 characters
    std::string Label2;
    std::array<std::uint8_t, 3> Options{};

    bool operator==(const OneToManyDef&) const = default;
};

struct PluginEntry {
    std::uint8_t Byte1 = 0;
    std::uint8_t Byte2 = 0;
    std::string Text;

    bool operator==(const PluginEntry&) const = default;
};

struct PluginDef {
    std::int32_t PluginId = 0;
    std::uint8_t Kind = 0;
    std::array<std::uint8_t, 10> Params{};
    std::array<std::uint8_t, 4> Params2{};
    std::vector<PluginEntry> Entries; // at most 255

    bool operator==(const PluginDef&) const = default;
};

// Three conditions with six operand slots in the order left 1, right 1, left 2, right 2, left 3, right 3.
struct FilterDef {
    std::string Name; // at most 20 characters, 21 when a file fills the area
    std::array<std::uint8_t, 3> CondFields{};
    std::array<std::uint8_t, 3> CondFields2{};
    std::array<std::string, 3> CondValues{};
    std::array<std::uint8_t, 3> CondOps{};
    std::array<std::uint8_t, 2> CondLinks{};
    std::array<std::uint8_t, 4> CondTail{};

    bool operator==(const FilterDef&) const = default;
};

// A Conditional Expression. The links have three entries: a file is read into entries 1 and 2, and entries 0
// and 1 are written, so the links move by one with each open and save. The handheld expects it so.
struct CondExprDef {
    std::string Name;
    std::array<std::uint8_t, 3> CondFields{};
    std::array<std::uint8_t, 3> CondFields2{};
    std::array<std::string, 3> CondValues{};
    std::array<std::uint8_t, 3> CondOps{};
    std::array<std::uint8_t, 3> CondLinks{};
    std::uint8_t TrueKind = 0; // colour of the result when the conditions hold
    std::string TrueText;
    std::uint8_t TrueField = 0; // slot whose text is the result, 0 for TrueText
    std::uint8_t FalseKind = 0;
    std::string FalseText;
    std::uint8_t FalseField = 0;

    bool operator==(const CondExprDef&) const = default;
};

struct ViewColumn {
    std::uint8_t Field = 0;
    std::uint8_t Width = 0;
    std::array<std::uint8_t, 3> Spare{};

    bool operator==(const ViewColumn&) const = default;
};

// A view, in the order of the file.
struct ViewDef {
    std::string Name; // at most 20 characters, 21 when a file fills the area
    std::array<std::uint8_t, 3> SortFields{};
    std::array<std::uint8_t, 3> SortDirs{};
    std::uint16_t FilterMask = 0;
    std::uint8_t FrozenCols = 0;
    std::uint8_t ViewByte = 0;
    std::array<std::uint8_t, 6> ViewTail{};
    std::uint8_t NumCols = 0; // recomputed by every save
    std::array<ViewColumn, MaxViewColumns> Columns{};

    bool operator==(const ViewDef&) const = default;
};

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const Colour&) const = default;
};

struct FormItem {
    std::uint8_t Field = 0;
    std::uint8_t Row = 0;
    std::uint8_t ItemKind = 0;
    Colour LabelFore, LabelBack;
    std::uint8_t ItemByte1 = 0;
    Colour DataFore, DataBack;
    std::uint8_t ItemByte2 = 0;
    std::array<std::uint8_t, 2> ItemPos{};
    std::string Caption;
    std::string ItemText;

    bool operator==(const FormItem&) const = default;
};

// One screen of the handheld.
struct FormDef {
    std::string Name;
    std::uint8_t FormByte = 40;
    std::array<std::uint8_t, 2> FormFlags{};
    std::uint8_t NumItems = 0; // at most 12
    std::array<FormItem, MaxFormItems> Items{};

    bool operator==(const FormDef&) const = default;
};

} // namespace tallybook::model
