// The database record of one Tallybook: everything of a file but its data records.
#pragma once

#include "core/model/Definitions.h"
#include "core/model/SlotTable.h"

#include <array>
#include <cstdint>
#include <string>

namespace tallybook::model {

// Kinds of passwords, in the order of Passwords. A file stores Design behind View.
enum class PasswordKind : std::uint8_t { Login = 0, Modify = 1, Design = 2, View = 3, Beam = 4, Copy = 5 };
inline constexpr int kPasswordKinds = 6;

struct DatabaseModel {
    std::string DBName; // name of the header with its prefix, without the padding
    std::array<FieldDef, MaxFieldSlots> Fields{};
    std::array<ViewDef, MaxViews> Views{};
    std::array<FilterDef, MaxFilters + 1> Filters{};
    std::uint8_t NumForms = 1;
    std::uint8_t StartForm = 1;
    std::array<FormDef, MaxForms + 1> Forms{};
    std::uint8_t NumFields = 0; // recomputed by every save, see highestField()
    std::uint8_t NumViews = 0;
    std::uint8_t NumFilters = 0; // recomputed by every save
    std::uint8_t HdrByte1 = 0;
    std::uint8_t HdrByte2 = 0; // view slot that opens first
    std::uint8_t HdrByte3 = 0;
    std::uint8_t HdrByte4 = 0;
    std::uint8_t HdrByte5 = 0;
    std::uint16_t HdrWord1 = 0; // filters in force when all fields are shown, bit n for slot n
    std::uint8_t SearchFlags = 0;
    std::uint8_t ReadOnly = 0;
    std::uint8_t FormatVersion = 21;
    std::uint8_t ShowStartup = 0;
    std::uint16_t DefaultFilterMask = 0;
    std::array<std::string, kPasswordKinds> Passwords{}; // scrambled, at most 10 bytes each
    std::int32_t LastKey = 0;
    std::string StartupText;
    std::uint8_t NoBackup = 0;
    std::array<FilterDef, 2> SpareFilters{};
    std::array<std::uint8_t, 9> OpaqueHeader9{};
    std::array<std::uint8_t, 40> OpaqueHeader40{};

    // Attributes by field slot. A slot that has none reads as a default one.
    SlotTable<ListDef> Lists;
    SlotTable<std::int32_t> AutoIncNext;
    SlotTable<ExprDef> Expressions;
    SlotTable<ExternalDef> Externals;
    SlotTable<OneToManyDef> OneToManys;
    SlotTable<PluginDef> Plugins;
    SlotTable<CondExprDef> CondExprs;

    bool operator==(const DatabaseModel&) const = default;
};

// Empties the record: version 21, one form, start form 1, every form slot empty with byte 40.
void Clearg_CurrDB20(DatabaseModel& db);

// The highest slot of 0..80 whose type is not 0, plus 1; 0 when no slot is used. This is NumFields on file.
int highestField(const DatabaseModel& db);

// The highest slot of 0..11 whose first condition has a field, plus 1; 0 when none. This is NumFilters on file.
int highestFilter(const DatabaseModel& db);

// The highest column of 0..80 whose field is not 0, plus 1; 0 when none. This is NumCols on file.
int highestColumn(const ViewDef& view);

} // namespace tallybook::model
