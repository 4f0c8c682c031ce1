#include "core/handheld/SaveInstall.h"

#include "core/document/file/OpenSave.h"

namespace tallybook::handheld {

namespace {

void say(platform::Services& services, const std::string& text) {
    services.ui.message({.text = text, .icon = platform::Icon::Information, .title = {}});
}

} // namespace

std::string installedText(std::string_view fileName, std::string_view names) {
    return std::string(fileName) + " will be installed during next HotSync for username(s) " + std::string(names) +
           '.';
}

SaveInstallEnd saveAndInstall(model::Document& doc, platform::Services& services, HandheldDesktop& desktop,
                              UserList& users, const std::function<std::uint16_t()>& frmUser) {
    if (document::saveDocument(doc, services, users.currentFolder()) != document::Outcome::Done)
        return SaveInstallEnd::NotSaved;
    const std::uint16_t target = users.UserCount() > 1 ? frmUser() : std::uint16_t{0};
    if (target == kInstallCancelled) {
        say(services, "File will not be installed");
        return SaveInstallEnd::NotInstalled;
    }
    const std::string names = installToUser(services, desktop, users, doc.CurrFilePath, doc.CurrFileName, target,
                                            target == kInstallToAll ? ForUsers::All : ForUsers::One);
    if (names.empty())
        return SaveInstallEnd::NotInstalled;
    doc.DocModified = false;
    say(services, installedText(doc.CurrFileName, names));
    return SaveInstallEnd::Installed;
}

} // namespace tallybook::handheld
