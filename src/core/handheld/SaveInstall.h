// Saving what is open and queueing it for the handheld.
#pragma once

#include "core/handheld/OpenDialog.h"
#include "core/model/Document.h"

#include <cstdint>
#include <functional>

namespace tallybook::handheld {

enum class SaveInstallEnd {
    NotSaved,     // refused or cancelled; the reason has been said
    NotInstalled, // the file is saved
    Installed,    // for one user at least
};

// The command Save & Install. `frmUser` asks for whom when there are several users and gives the dialog's
// InstallTarget. The caller updates the recent files.
SaveInstallEnd saveAndInstall(model::Document& doc, platform::Services& services, HandheldDesktop& desktop,
                              UserList& users, const std::function<std::uint16_t()>& frmUser);

} // namespace tallybook::handheld
