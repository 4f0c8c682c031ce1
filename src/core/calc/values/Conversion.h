// A value brought to the text form of a field type, and the small conversions between ids, texts and keys.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tallybook::calc {

// What a record without a category shows.
inline constexpr std::string_view kUnfiled = "Unfiled";

// The text form of a type, as checkFormat gives it: the failure value of the type when the text does not fit
// ("0" for numbers and times, otherwise empty). A Checkbox gives "True" or "False" or "0".
std::string checkFormat(model::FieldType type, std::string_view value, const platform::Regional& regional,
                        int thisYear);

// Position in the list of the item stored for a record, -1 for none.
int getListInd(const model::Tallybook& doc, int slot, int record);

// Text of an item: slot 0 with id 0 is "Unfiled", an id that no item has is empty.
std::string_view getListText(const model::DatabaseModel& db, int slot, int id);

// Rewrites a column for a new field type. `decimalsChoice` is the selection of the digits list, -1 for none.
void convertType(model::Document& doc, platform::Services& services, int slot, model::FieldType oldType,
                 model::FieldType newType, int decimalsChoice);

// Builds the slot's list from its column, at most 59 items, in place of the one that it has, and gives the records
// their ids. False when there are more different texts; list and ids are then as they were.
bool createList(model::Document& doc, platform::Services& services, int slot);

// Turns a numeric column into the records' keys, and shows them in every Key column. False when a cell is not
// numeric or no key can be so large; nothing is changed then.
enum class KeepPosition { No, Yes };
bool CreateKeys(model::Document& doc, platform::Services& services, int slot, KeepPosition keep);

} // namespace tallybook::calc
