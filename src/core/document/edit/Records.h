// Adding and deleting records.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

namespace tallybook::document {

// The start values of the last row's special cells ("Unfiled", unchecked boxes, keys); with MakeNew in a row of its
// own, which is an empty record then. Sets DocModified.
enum class AddRow { InPlace, MakeNew };
void addRow(model::Document& doc, AddRow mode);

// Add Record: a read-only database and a full one are refused with their messages. True when a record was added;
// its first user field is then current.
bool RecordAdd(model::Document& doc, platform::Services& services);

// Delete Record and Delete All, with their questions and passwords. A record that a filter hides gives way to one
// that can be seen before the question; show it there first. True when something was deleted.
bool deleteRecord(model::Document& doc, platform::Services& services);
bool deleteAllRecords(model::Document& doc, platform::Services& services);

// Convert to Keys on the current column, with its question. True when the keys were changed.
bool convertColumnToKeys(model::Document& doc, platform::Services& services);

} // namespace tallybook::document
