// Parts of a database made from their descriptions by the decisions of the dialogs, and described.
#pragma once

#include "cli/schema/SchemaObject.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <set>
#include <string>

namespace tallybook::cli {

// Name, type and result type of a field, so that others can name it before it is made. Everything else of the slot
// is taken out.
void announceField(const SchemaObject& field, model::DatabaseModel& db, int slot);

// Makes an announced field, a filter, a view. Throws a SchemaFault when it is refused.
void makeField(const SchemaObject& field, model::Document& doc, platform::Services& services, int slot);
void makeFilter(const SchemaObject& filter, model::Document& doc, platform::Services& services, int slot);
void makeView(const SchemaObject& view, model::Document& doc, platform::Services& services, int slot);

// The values of DB Properties. `stem` is the name when the description has none.
void makeProperties(const SchemaObject& whole, model::Document& doc, platform::Services& services,
                    const std::set<int>& searchedSlots, const std::string& stem);

// The member "multipleFilter" as a set of filters.
std::uint16_t multipleFilter(const SchemaObject& whole, const model::DatabaseModel& db);

// True when the object has nothing but its slot and "carried": no dialog is asked about it.
bool isCarriedOnly(const SchemaObject& object);

// A part as its description; null when there is nothing to say about the slot.
Json describeField(const model::DatabaseModel& db, int slot, platform::Services& quiet);
Json describeFilter(const model::DatabaseModel& db, int slot, platform::Services& quiet);
Json describeView(const model::DatabaseModel& db, int slot, platform::Services& quiet);
// The members of the whole but for its fields, filters and views. `stem` as for makeProperties.
Json describeProperties(const model::DatabaseModel& db, const std::string& stem, platform::Services& quiet);

// The name that a free slot of a new database has.
std::string freeSlotName(int slot);

} // namespace tallybook::cli
