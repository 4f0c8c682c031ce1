// Conditions of filters and of conditional expressions, as a description has them.
#pragma once

#include "cli/schema/SchemaObject.h"
#include "core/design/FilterDesign.h"
#include "core/model/DatabaseModel.h"

namespace tallybook::cli {

// The conditions that the controls show, up to the first blank link.
Json conditionsJson(const model::DatabaseModel& db, const design::FilterControls& controls);

// The controls as if the member "conditions" had been chosen and typed. A field that is not there is a refusal.
design::FilterControls conditionControls(const model::DatabaseModel& db, const SchemaObject& owner);

} // namespace tallybook::cli
