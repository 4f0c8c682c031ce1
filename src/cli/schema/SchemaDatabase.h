// The description of a whole database: made into one, and told of one.
#pragma once

#include "cli/schema/SchemaObject.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <string>

namespace tallybook::cli {

// The description of a database that was read from a file. Making it gives the same structure again: what no dialog
// makes stands under "carried". Passwords, records and spare filters are left out. `stem` is the name where the
// header has none.
Json describeDatabase(const model::DatabaseModel& db, const std::string& stem, const platform::Services& services);

// Makes a database in the document, by the decisions of the dialogs. Throws a SchemaFault when something is refused;
// the document is then good for nothing. `stem` is the name where the description has none, Windows-1252.
void makeDatabase(const SchemaObject& whole, model::Document& doc, platform::Services& services,
                  const std::string& stem);

// The description as a person reads it: what fits into a line stands on one.
std::string shownJson(const Json& json);

} // namespace tallybook::cli
