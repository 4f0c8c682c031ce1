// Fills the calculated columns.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

namespace tallybook::document {

// Computes every Expression, Adv Expression and Conditional Expression anew, slot by slot, so that a field sees the
// new texts of the fields ahead of it and the old ones of those behind. Shows progress; DocModified stays as it is.
void recalcExpressions(model::Document& doc, platform::Services& services);

// Computes the Expressions of a file of format 1.x by the rules of that format, slot by slot. Shows progress;
// DocModified stays as it is. The expressions must still have their older operators.
void calcOlderExpressions(model::Document& doc, platform::Services& services);

} // namespace tallybook::document
