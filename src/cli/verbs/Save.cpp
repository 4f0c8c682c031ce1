// tallybook save FILE OUT: opened and saved, and nothing else.
#include "cli/frame/Session.h"
#include "cli/verbs/Verbs.h"

#include <memory>

namespace tallybook::cli {

namespace {

struct SaveOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::filesystem::path out;
};

ExitCode save(const SaveOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file, Session::Purpose::Save))
        return ExitCode::Refused;
    return session.saveTo(options.out);
}

} // namespace

void addSave(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<SaveOptions>();
    Verb verb = command.verb("save", "Open a database and save it elsewhere, as the desktop does");
    addFileArgument(verb, options->file);
    verb.argument("OUT", options->out, "The file to write, replaced whole when it exists");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = save(*options, terminal); });
}

} // namespace tallybook::cli
