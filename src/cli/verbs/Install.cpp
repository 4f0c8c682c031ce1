// tallybook install FILE: queues a database for the handheld's next sync.
#include "cli/frame/HandheldSession.h"
#include "cli/frame/Options.h"
#include "cli/frame/Texts.h"
#include "cli/frame/VisibleText.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"
#include "core/handheld/SaveInstall.h"
#include "core/platform/Paths.h"
#include "core/shell/OpenChoice.h"

#include <memory>
#include <ostream>

namespace tallybook::cli {

namespace {

struct InstallOptions {
    HandheldOptions handheld;
    std::filesystem::path file;
    bool all = false;
};

// For whom; nothing when that is not clear, which has been said then.
std::optional<int> target(HandheldSession& session, const InstallOptions& options) {
    if (options.all || session.users().UserCount() == 1)
        if (options.handheld.user.empty())
            return 0;
    const auto user = session.user();
    if (!user && options.handheld.user.empty())
        session.terminalUser().say(std::string(kWhichUser));
    return user;
}

ExitCode install(const InstallOptions& options, Terminal& terminal) {
    HandheldSession session(terminal, options.handheld);
    terminal.setSubject(options.file.string());
    const std::filesystem::path file = std::filesystem::absolute(options.file);
    const std::string name = platform::shownPath(file.filename());
    if (!shell::isTallybookName(name)) {
        session.terminalUser().say(std::string(shell::kNoValidFile));
        return ExitCode::Refused;
    }
    if (!session.start())
        return ExitCode::Refused;
    const auto user = target(session, options);
    if (!user)
        return ExitCode::Refused;
    const std::string names =
        handheld::installToUser(session.services(), session.desktop(), session.users(), file, name, *user,
                                options.all ? handheld::ForUsers::All : handheld::ForUsers::One);
    if (!names.empty())
        terminal.out << visibleLine(calc::ansi::toUtf8(handheld::installedText(name, names))) << '\n';
    return session.terminalUser().spoke() ? ExitCode::Refused : ExitCode::Done;
}

} // namespace

void addInstall(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<InstallOptions>();
    Verb verb = command.verb("install", "Queue a database for the handheld's next sync");
    addFileArgument(verb, options->file);
    addUserOption(verb, options->handheld);
    verb.flag("--all", options->all, "For all users").excludes("--user");
    addHandheldOptions(verb, options->handheld);
    verb.runs([options, &terminal, &code] { code = install(*options, terminal); });
}

} // namespace tallybook::cli
