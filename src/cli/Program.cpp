#include "cli/Program.h"

#include "cli/frame/NearestWord.h"
#include "cli/frame/Texts.h"
#include "cli/verbs/Verbs.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <ostream>

namespace tallybook::cli {

namespace {

std::vector<std::string> verbNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* verb : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(verb->get_name());
    return names;
}

// The verb, when the command line begins with a word that is none.
std::optional<std::string> unknownVerb(const CLI::App& app, const std::vector<std::string>& arguments) {
    if (arguments.empty() || arguments.front().starts_with('-'))
        return std::nullopt;
    const std::vector<std::string> names = verbNames(app);
    const bool known = std::find(names.begin(), names.end(), arguments.front()) != names.end();
    return known ? std::nullopt : std::optional(arguments.front());
}

// Help is an answer and goes to standard output; what is wrong with a command line goes to standard error.
ExitCode explain(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments,
                 Terminal& terminal) {
    if (error.get_exit_code() == 0) {
        app.exit(error, terminal.out, terminal.err);
        return ExitCode::Done;
    }
    if (const auto verb = unknownVerb(app, arguments)) {
        terminal.say(noSuchVerb(*verb, nearestWord(*verb, verbNames(app))));
        return ExitCode::Usage;
    }
    const bool hasVerb = !arguments.empty() && !arguments.front().starts_with('-');
    if (hasVerb)
        terminal.setSubject(arguments.front());
    terminal.say(std::string(error.what()) + helpTells(hasVerb ? arguments.front() : ""));
    return ExitCode::Usage;
}

// The file that the command line names, which is the first of a verb's arguments.
std::string fileOf(const CLI::App& app) {
    const CLI::App* verb = &app;
    while (!verb->get_subcommands().empty())
        verb = verb->get_subcommands().front();
    for (const CLI::Option* option : verb->get_options())
        if (option->get_positional() && option->count() > 0)
            return option->results().front();
    return {};
}

void addVerbs(CLI::App& app, Terminal& terminal, ExitCode& code) {
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
    addImage(command, terminal, code);
    addImages(command, terminal, code);
    addForm(command, terminal, code);
    addUsers(command, terminal, code);
    addList(command, terminal, code);
    addInstall(command, terminal, code);
    addNew(command, terminal, code);
    addSchema(command, terminal, code);
    addRetype(command, terminal, code);
}

ExitCode runVerb(const std::vector<std::string>& arguments, Terminal& terminal) {
    CLI::App app("Looks into, checks, saves and edits Tallybook databases.", "tallybook");
    app.set_version_flag("--version", "tallybook " TALLYBOOK_VERSION);
    app.footer("Exit code: 0 done or found; 1 nothing found, or something to complain of; 2 wrong command line; 3 "
               "refused or "
               "not readable, the reason on standard error.");
    ExitCode code = ExitCode::Done;
    addVerbs(app, terminal, code);
    try {
        // The parser takes its arguments from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        return explain(app, error, arguments, terminal);
    } catch (const std::bad_alloc&) { // what the verb held is given back by now
        terminal.say(notEnoughMemory(fileOf(app)));
        return ExitCode::Refused;
    }
    terminal.out.flush();
    if (!terminal.out && code == ExitCode::Done) {
        terminal.setSubject({});
        terminal.say(kOutputNotWritten);
        return ExitCode::Refused;
    }
    return code;
}

} // namespace

ExitCode run(const std::vector<std::string>& arguments, Terminal& terminal) {
    try {
        return runVerb(arguments, terminal);
    } catch (const std::bad_alloc&) { // for the command line itself, or for saying so
        terminal.say(kNotEnoughMemory);
    } catch (const std::exception& error) { // no current folder
        terminal.say(error.what());
    }
    return ExitCode::Refused;
}

} // namespace tallybook::cli
