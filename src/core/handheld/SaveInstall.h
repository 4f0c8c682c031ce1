// Saving what is open and queueing it for the handheld.
#pragma once

#include "core/handheld/OpenDialog.h"
#include "core/model/Document.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tallybook::handheld {

// What is said when a file waits for the next sync of the users whose names installToUser gave.
std::string installedText(std::string_view fileName, std::string_view names);

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
