#include "core/platform/RecycleBin.h"

#include "core/platform/OwnTexts.h"

namespace tallybook::platform {

bool MoveToRecycleBin(Services& services, const std::filesystem::path& path) {
    const Status moved = services.files.moveToTrash(path);
    if (moved)
        return true;
    if (services.ui.message({.text = texts::deleteForGood(moved.error().text),
                             .icon = Icon::Warning,
                             .buttons = Buttons::YesNo,
                             .title = {},
                             .preferred = Answer::No}) != Answer::Yes)
        return false;
    const Status removed = services.files.remove(path);
    if (!removed)
        services.ui.message({.text = removed.error().text, .icon = Icon::Critical, .title = {}});
    return removed.ok();
}

} // namespace tallybook::platform
