// The key Del on the grid.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

namespace tallybook::document {

// With a whole row selected asks to delete the record, as Delete Record does. Otherwise empties the current cell when
// its field may be empty, as an edit that leaves nothing there does: guarded by read-only and password, with the mark
// of change and the stamps of the record. A field that the user cannot edit gives the message that typing there
// gives. A block is refused with a message. Nothing happens in a view, in a hidden row, and while a bulk change runs.
void deleteKey(model::Document& doc, platform::Services& services);

} // namespace tallybook::document
