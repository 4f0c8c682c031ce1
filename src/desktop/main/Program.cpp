#include "desktop/main/Program.h"

#include "adapters/AppFolder.h"
#include "adapters/HandheldChoice.h"
#include "adapters/IniSettings.h"
#include "adapters/InstanceLock.h"
#include "adapters/PosixFiles.h"
#include "adapters/SystemClock.h"
#include "core/forms/ImageCell.h"
#include "core/handheld/Users.h"
#include "core/platform/Ansi.h"
#include "core/platform/AppFolders.h"
#include "core/shell/ProgramSettings.h"
#include "core/shell/Version.h"
#include "desktop/dialogs/QtUserInterface.h"
#include "desktop/dialogs/frmSplash.h"
#include "desktop/grid/GridAccessible.h"
#include "desktop/main/frmMain.h"
#include "desktop/platform/RegionalFromQt.h"
#include "desktop/platform/Resources.h"
#include "desktop/platform/Text.h"

#include <QApplication>
#include <QLocale>
#include <QPointer>

namespace tallybook::desktop {

namespace {

constexpr int kSplashTime = 1500; // milliseconds

#ifndef TALLYBOOK_SUPPORT_PAGE
#define TALLYBOOK_SUPPORT_PAGE ""
#endif

// What was left by saves that the end of the computer, or of the program, cut short.
void sweepLeftOvers(platform::Services& services, const handheld::UserList& users) {
    for (const std::string_view folder : platform::kWorkingFolders)
        services.files.sweepLeftOvers(platform::applicationPath(services, folder));
    for (const std::filesystem::path& folder : users.UserFolders)
        services.files.sweepLeftOvers(folder);
}

} // namespace

Instance::Instance(const std::filesystem::path& folder, platform::UserInterface& ui) {
    auto taken = adapters::InstanceLock::take(folder);
    if (!taken)
        return;
    m_lock = std::move(taken).value();
    m_mayRun = m_lock.has_value();
    if (!m_mayRun)
        ui.message({std::string(shell::kAlreadyRunning), platform::Icon::Information});
}

int run() {
    QApplication::setApplicationName(QStringLiteral("Tallybook Pocket Desktop"));
    QApplication::setDesktopFileName(QStringLiteral("tallybook-pocket-desktop"));
    QApplication::setWindowIcon(icon(QStringLiteral("tallybook")));
    installGridAccessible();

    adapters::PosixFiles files;
    adapters::SystemClock clock;
    const platform::Regional regional = regionalFrom(QLocale::system());
    const platform::Surroundings surroundings = adapters::surroundings();
    QtUserInterface ui;
    platform::Services services{ui, ui, files, clock, regional, platform::applicationFolder(files, surroundings)};
    platform::makeFolders(services);

    const Instance instance(platform::lockFolder(files, surroundings), ui);
    if (!instance.mayRun())
        return 0;
    forms::dropStrayPictures(services);
    std::error_code ignored; // a path is never left to the current folder
    std::filesystem::current_path(services.applicationFolder, ignored);
    ui.setSupportPage(QStringLiteral(TALLYBOOK_SUPPORT_PAGE));
    QPointer<frmSplash> splash = new frmSplash;
    splash->setAttribute(Qt::WA_DeleteOnClose);
    ui.setBeforeAsking([splash] {
        if (splash)
            splash->close();
    });
    splash->showFor(kSplashTime);

    adapters::IniSettings settings(files, platform::configFolder(surroundings) / adapters::kSettingsFile);
    const std::filesystem::path handheldFolder = shell::loadHandheldFolder(settings);
    const auto desktop = adapters::chooseHandheld(
        files, adapters::handheldPlaces(surroundings, services.applicationFolder), handheldFolder);
    handheld::UserList users;
    users.CurrentUser = platform::ansi::fromUtf8(shell::loadUserId(settings));
    if (!handheld::GetUserIDs(services, *desktop, users)) // has closed the splash to say why
        return 0;
    sweepLeftOvers(services, users);
    frmMain frame(services, ui, settings);
    frame.setHandheld(*desktop, std::move(users));
    frame.show();
    return QApplication::exec();
}

} // namespace tallybook::desktop
