#include "cli/Program.h"

#include "cli/verbs/Verbs.h"

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
    app.footer("Exit code: 0 done, 1 refused (the reason on standard error), 2 wrong command line.");
    ExitCode code = ExitCode::Done;
    Verb command(app);
    addInfo(command, terminal, code);
    addCells(command, terminal, code);
    addFind(command, terminal, code);
    addDump(command, terminal, code);
    addSave(command, terminal, code);
    addConvert(command, terminal, code);
    addRecalc(command, terminal, code);
    addCheck(command, terminal, code);
    addEdit(command, terminal, code);
    addExpr(command, terminal, code);
    addUsers(command, terminal, code);
    addList(command, terminal, code);
    addInstall(command, terminal, code);
    addNew(command, terminal, code);
    addSchema(command, terminal, code);
    addRetype(command, terminal, code);
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
