// The Filter Designer over the condition of a Conditional Expression.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Services.h"

class QWidget;

namespace tallybook::desktop {

// True when the condition has taken what the user made of it.
bool editCondition(model::Document& doc, platform::Services& services, model::CondExprDef& condition,
                   QWidget* parent);

} // namespace tallybook::desktop
