// tallybook save FILE OUT: opened and saved, and nothing else.
#include "cli/Session.h"
#include "cli/Verbs.h"

#include <CLI/CLI.hpp>
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
    if (!session.open(options.file))
        return ExitCode::Refused;
    return session.saveTo(options.out);
}

} // namespace

void addSave(CLI::App& app, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<SaveOptions>();
    CLI::App* verb = app.add_subcommand("save", "Open a database and save it elsewhere, as the desktop does");
    addFileArgument(*verb, options->file);
    verb->add_option("OUT", options->out, "The file to write, replaced whole when it exists")->required();
    addOpenOptions(*verb, options->common);
    verb->callback([options, &terminal, &code] { code = save(*options, terminal); });
}

} // namespace tallybook::cli
