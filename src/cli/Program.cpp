#include "cli/Program.h"

#include "cli/Verbs.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <ostream>

namespace tallybook::cli {

namespace {

// Help is an answer and goes to standard output; what is wrong with a command line goes to standard error.
ExitCode explain(const CLI::App& app, const CLI::ParseError& error, Terminal& terminal) {
    const int code = app.exit(error, terminal.out, terminal.err);
    return code == 0 ? ExitCode::Done : ExitCode::Usage;
}

} // namespace

ExitCode run(const std::vector<std::string>& arguments, Terminal& terminal) {
    CLI::App app("Looks into, checks, saves and edits Tallybook databases.", "tallybook");
    app.set_version_flag("--version", "tallybook " TALLYBOOK_VERSION);
    app.require_subcommand(1);
    app.footer("Exit code: 0 done, 1 refused (the reason on standard error), 2 wrong command line.");
    ExitCode code = ExitCode::Done;
    addInfo(app, terminal, code);
    addCells(app, terminal, code);
    addFind(app, terminal, code);
    addDump(app, terminal, code);
    addSave(app, terminal, code);
    addConvert(app, terminal, code);
    addRecalc(app, terminal, code);
    addCheck(app, terminal, code);
    addEdit(app, terminal, code);
    addExpr(app, terminal, code);
    addUsers(app, terminal, code);
    addList(app, terminal, code);
    addInstall(app, terminal, code);
    addNew(app, terminal, code);
    addSchema(app, terminal, code);
    addRetype(app, terminal, code);
    try {
        // The parser takes its arguments from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        return explain(app, error, terminal);
    } catch (const std::exception& error) { // no memory, no current folder
        terminal.err << error.what() << '\n';
        return ExitCode::Refused;
    }
    terminal.out.flush();
    if (!terminal.out) {
        terminal.err << "The output could not be written.\n";
        return ExitCode::Refused;
    }
    return code;
}

} // namespace tallybook::cli
