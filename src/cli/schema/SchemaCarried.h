// What a file has and no dialog makes: values under the names that `info --json` gives them, and blocks of bytes in
// hex. A description has them in the member "carried" of a field, a view, a filter or the whole.
#pragma once

#include "cli/schema/SchemaObject.h"
#include "core/model/DatabaseModel.h"

namespace tallybook::cli {

// Each function that describes gives the values of `db` that differ from those of `made`; null for none. Each that
// carries puts the values of a description in their place.

Json carriedOfField(const model::DatabaseModel& db, const model::DatabaseModel& made, int slot);
void carryField(const SchemaObject& carried, model::DatabaseModel& db, int slot);

Json carriedOfView(const model::ViewDef& view, const model::ViewDef& made);
void carryView(const SchemaObject& carried, model::ViewDef& view);

Json carriedOfFilter(const model::FilterDef& filter, const model::FilterDef& made);
void carryFilter(const SchemaObject& carried, model::FilterDef& filter);

// Header, forms and the number of views.
Json carriedOfDatabase(const model::DatabaseModel& db, const model::DatabaseModel& made);
void carryDatabase(const SchemaObject& carried, model::DatabaseModel& db);

// The reader puts the links of a conditional expression one place behind the one that the writer takes them from.
// This moves those of one that was just read, once, so that it says what its file says.
void straightenLinks(model::CondExprDef& condition);

inline constexpr const char* kCategoriesName = "Categories"; // of slot 0, unless a description says another

// Takes all that belongs to a slot out; the next value of an Auto Incremental is 1, as in a new database, and slot 0
// is an empty list.
void clearSlot(model::DatabaseModel& db, int slot);

} // namespace tallybook::cli
