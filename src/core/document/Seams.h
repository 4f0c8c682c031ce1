// What a read and an edit call of the work that is still to come: joins, views. Each does nothing yet
// beyond what its comment says.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

namespace tallybook::document {

// Fills join and lookup columns from the other databases. Until then a join shows its stored key.
void loadExternalData(model::Document& doc, platform::Services& services);

// Applies the start view and filter. Until then all fields and records are shown. Remembers the columns' widths.
void AddViewFilterInfo(model::Document& doc, platform::Services& services);

// Opens the record of a view for editing: asks for the Record Update password. True when records may be changed.
// Until views are shown there is no record to be found in the grid.
bool ModifyRecord(model::Document& doc, platform::Services& services);

// True while a view is shown instead of the grid: nothing can be edited then.
bool isViewShown(const model::Document& doc);

} // namespace tallybook::document
