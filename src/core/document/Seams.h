// What a read calls of the work that is still to come: joins.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

namespace tallybook::document {

// Fills join and lookup columns from the other databases. Until then a join shows its stored key.
void loadExternalData(model::Document& doc, platform::Services& services);

} // namespace tallybook::document
