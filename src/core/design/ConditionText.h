// A condition set in words, for a window that shows it without its designer.
#pragma once

#include "core/model/DatabaseModel.h"

#include <string>

namespace tallybook::design {

// As Pages > "100" AND Title starts "Sea"; empty when the set has no condition.
std::string conditionText(const model::DatabaseModel& db, const model::CondExprDef& condition);

} // namespace tallybook::design
