// The command that opens Field Properties: which field it is for, who may, and what is done when the dialog closes.
#pragma once

#include "core/document/grid/GridDisplay.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <optional>

namespace tallybook::design {

// The field slot of the current column of the grid that is shown; nothing when there is none.
std::optional<int> fieldPropsSlot(const model::Document& doc);

// Before the dialog opens: commits the open edit, refuses a read-only database with its message, asks for the right
// to change the design, and brings an Expression or Conditional Expression up to date while there are records.
// False: it does not open.
bool mayOpenFieldProps(model::Document& doc, platform::Services& services, int slot);

// After its OK: the calculated columns, the look of the grid, and a view that is shown, are made anew.
void fieldPropsAccepted(model::Document& doc, platform::Services& services, const document::DisplayChoices& choices);

} // namespace tallybook::design
