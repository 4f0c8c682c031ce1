#include "desktop/dialogs/EditCondition.h"

#include "core/platform/OwnTexts.h"

namespace tallybook::desktop {

bool editCondition(model::Document&, platform::Services& services, model::CondExprDef&, QWidget*) {
    services.ui.message({platform::texts::notBuilt(platform::texts::kFilterDesigner), platform::Icon::Information});
    return false;
}

} // namespace tallybook::desktop
