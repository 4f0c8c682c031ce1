// The current record in grd and in the view that is shown instead of it.
#pragma once

#include "core/model/Document.h"

namespace tallybook::document {

// Makes the next visible row, or the last one, current in a grid whose current row is hidden: nobody should type into
// a record that cannot be seen. Nothing where no row is visible.
void leaveHiddenRow(model::GridModel& grid);

// The same in grd and in the view, after what moves or takes away records. An open edit keeps its cell.
void leaveHiddenRows(model::Document& doc);

// Before a search, which goes through grd: the cell that is current in the view becomes current in grd. A column of
// grd that the view does not show stays current while the view's row is the same. Nothing without a view.
void takePlaceFromView(model::Document& doc);

// After a search: the view's current cell goes to the record, and to the column when the view shows it. Nothing
// without a view.
void givePlaceToView(model::Document& doc);

} // namespace tallybook::document
