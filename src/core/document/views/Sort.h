// The order of the records.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

namespace tallybook::document {

enum class SortDirection : char { Ascending = 'A', Descending = 'D' };

// Sorts the records on the current column of grd, whatever is displayed; a current column 0 becomes column 1. The
// open edit is committed first. Records with equal keys keep their order in both directions; keys, table entries,
// colours, pictures and heights follow their records, and the same cell is current afterwards. The order of the file
// changes with the next save; DocModified stays as it is. False with a message for a field that has no order.
bool sortCol(model::Document& doc, platform::Services& services, SortDirection direction);

// The same on a field slot; the current column stays. A slot that has no field changes nothing.
void SortGrid(model::Document& doc, platform::Services& services, int slot, SortDirection direction);

// The sort buttons of the tool bar: as sortCol, but refused with a message while a view is shown.
bool sortFromToolBar(model::Document& doc, platform::Services& services, SortDirection direction);

} // namespace tallybook::document
