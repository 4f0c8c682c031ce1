#include "cli/frame/HandheldSession.h"

#include "adapters/AppFolder.h"
#include "adapters/HandheldChoice.h"
#include "adapters/IniSettings.h"
#include "cli/frame/IncomingText.h"
#include "cli/frame/Regions.h"
#include "cli/frame/Texts.h"
#include "core/platform/AppFolders.h"
#include "core/shell/ProgramSettings.h"

namespace tallybook::cli {

namespace {

using Path = std::filesystem::path;

Path folderOf(platform::Files& files, const HandheldOptions& options) {
    return options.applicationFolder.empty() ? platform::applicationFolder(files, adapters::surroundings())
                                             : std::filesystem::absolute(options.applicationFolder);
}

// A folder of the command line is relative to the current one.
Path settingOf(const HandheldOptions& options, const platform::Settings& settings) {
    if (options.handheld == adapters::kOwnHandheld)
        return options.handheld;
    return options.handheld.empty() ? Path(shell::loadHandheldFolder(settings))
                                    : std::filesystem::absolute(options.handheld);
}

} // namespace

void addHandheldOptions(Verb& verb, HandheldOptions& options) {
    verb.option("--handheld", options.handheld,
                "Folder of the handheld's desktop software, or \"own\"; otherwise as the window is set");
    verb.option("--application-folder", options.applicationFolder,
                "Folder that holds the users of the program's own; otherwise that of the window")
        .existingFolder();
}

void addUserOption(Verb& verb, HandheldOptions& options) {
    verb.option("--user", options.user, "The user's name; otherwise the one chosen last in the window");
}

HandheldSession::HandheldSession(Terminal& terminal, const HandheldOptions& options)
    : m_user(terminal, {}), m_regional(regionNamed(options.region).value_or(platform::Regional{})),
      m_services{m_user, m_screen, m_files, m_clock, m_regional, folderOf(m_files, options)}, m_wanted(options.user) {
    const platform::Surroundings around = adapters::surroundings();
    const adapters::IniSettings settings(m_files, platform::configFolder(around) / adapters::kSettingsFile);
    m_users.CurrentUser = storedText(shell::loadUserId(settings)).value_or("");
    m_desktop = adapters::chooseHandheld(m_files, adapters::handheldPlaces(around, m_services.applicationFolder),
                                         settingOf(options, settings));
}

bool HandheldSession::start() {
    return handheld::GetUserIDs(m_services, *m_desktop, m_users);
}

std::optional<int> HandheldSession::user() {
    const std::optional<std::string> wanted = storedText(m_wanted); // what cannot be stored is no user's name
    if (!m_wanted.empty() && wanted)
        m_users.CurrentUser = *wanted;
    const int position = wanted ? m_users.currentPosition() : -1;
    if (position >= 0)
        return position;
    if (!m_wanted.empty())
        m_user.sayUtf8(noSuchUser(m_wanted));
    return std::nullopt;
}

} // namespace tallybook::cli
