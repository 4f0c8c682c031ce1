// tallybook users: the handheld's users and where their databases lie.
#include "cli/frame/HandheldSession.h"
#include "cli/rows/RowText.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"

#include <memory>
#include <ostream>

namespace tallybook::cli {

namespace {

ExitCode users(const HandheldOptions& options, Terminal& terminal) {
    HandheldSession session(terminal, options);
    if (!session.start())
        return ExitCode::Refused;
    RowText line(RowForm::Tsv);
    const handheld::UserList& all = session.users();
    for (std::size_t user = 0; user < all.UserNames.size(); ++user) {
        line.add(calc::ansi::toUtf8(all.UserNames[user]));
        line.add(all.UserFolders[user].string());
        terminal.out << line.finish();
    }
    return ExitCode::Done;
}

} // namespace

void addUsers(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<HandheldOptions>();
    Verb verb = command.verb("users", "Print the handheld's users and the folders of their databases");
    addHandheldOptions(verb, *options);
    verb.runs([options, &terminal, &code] { code = users(*options, terminal); });
}

} // namespace tallybook::cli
