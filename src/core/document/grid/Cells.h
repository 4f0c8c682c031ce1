// Small things that editing, adding and deleting share.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::document {

inline const model::FieldDef& fieldOfColumn(const model::Document& doc, int column) {
    return doc.CurrDB20.Fields[static_cast<std::size_t>(model::slotOfColumn(column))];
}

// True for a column that belongs to a field slot: not the record's number, not the scratch column.
constexpr bool isFieldColumn(int column) {
    return column > model::kNumberColumn && column < model::kScratchColumn;
}

// True for a record's row that is there to be seen.
bool isShownRow(const model::Document& doc, int row);

// The next shown record's row below or above; nothing at the ends.
std::optional<int> nextRow(const model::Document& doc, int row);
std::optional<int> previousRow(const model::Document& doc, int row);

// Today's short date and the long time of now, as cells hold them.
std::string todayText(platform::Services& services);
std::string nowText(platform::Services& services);

// Puts today or now into the fields of a grid row whose default is "record updated".
void stampRow(model::Document& doc, platform::Services& services, int row);

// The limits of an Integer or a Long, both included, and the message that names them.
struct WholeRange {
    std::int32_t lowest;
    std::int32_t highest;
    std::string_view message;

    bool holds(double value) const { return value >= lowest && value <= highest; }
};
const WholeRange& rangeOf(model::FieldType type);

// The two separators that the cell editors go by: the region's decimal one, and "." or "," as the group separator,
// whichever is left.
struct Separators {
    char decimal;
    char group;
};
Separators separatorsOf(const platform::Regional& regional);
std::string withoutGroups(std::string_view text, const Separators& separators);

// Message boxes.
void showCritical(platform::Services& services, std::string_view text);

// True with "Tallybook is readonly." when the database is read-only: the command ends.
bool refuseReadOnly(const model::Document& doc, platform::Services& services);

// Tells an error of an operation; the operation's tag serves when the error brought none.
void report(platform::Services& services, platform::Error error, std::string_view tag);

} // namespace tallybook::document
