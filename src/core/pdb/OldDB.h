// What a database of format 1.x is made of, and how it becomes one of the present format. Such files are read and
// never written; a new database takes the same way from an empty one.
#pragma once

#include "core/model/DatabaseModel.h"
#include "core/model/Definitions.h"
#include "core/model/SlotTable.h"
#include "core/pdb/OlderLayout.h"

#include <array>
#include <cstdint>
#include <string>

namespace tallybook::pdb {

struct OldView {
    std::string Name;
    std::array<model::ViewColumn, older::kColumnSets * older::kColumnsOfSet> Columns{}; // set by set
    std::uint8_t ViewByte = 0;                                                          // the handheld's own, carried

    bool operator==(const OldView&) const = default;
};

// The same kinds of thing as DatabaseModel, with smaller capacities.
struct OldDB {
    std::uint8_t Version = 0; // at least 100 once it has been read
    bool isFormat099 = false; // it was below 100 in the file
    std::uint8_t NumFields = 0;
    std::uint8_t NumViews = 0;
    std::array<OldView, older::kViews> Views{};
    std::array<model::FilterDef, older::kFilters> Filters{};
    std::uint8_t FormFlag = 0;
    std::array<std::uint8_t, 3> Splitters = {older::kSplitter, older::kSplitter, older::kSplitter};
    std::array<std::uint8_t, 5> HdrBytes{};
    std::string Password; // scrambled, at most 10 bytes
    std::array<std::string, older::kMostTexts> Texts{};
    std::array<model::FieldDef, older::kFieldSlots> Fields{};
    std::int32_t LastKey = 0;

    // Attributes by field slot.
    model::SlotTable<model::ListDef> Lists;
    model::SlotTable<model::ExprDef> Expressions; // operators are the characters of their signs
    model::SlotTable<model::ExternalDef> Externals;

    bool operator==(const OldDB&) const = default;
};

// Fills an empty record with what an older one holds, slot by slot: fields, views, filters, lists and the other
// attributes, the password and the last key. Field slots without a name get that of a free one, a first view without
// a name is "View01". Expressions keep their older operators: see renewOperators.
//
// What the older format says about the handheld's screens, its header bytes and its texts stays behind: the present
// format has other bytes in their place, and the older file keeps them.
void ConvertTo20(const OldDB& old, model::DatabaseModel& db);

// A new database: fills an empty record from an empty OldDB, which has a list of categories and one view.
void initDB(model::DatabaseModel& db);

} // namespace tallybook::pdb
