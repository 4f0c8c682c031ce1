// tallybook edit FILE --script SCRIPT: an edit session without a window.
#include "cli/frame/IncomingText.h"
#include "cli/frame/Session.h"
#include "cli/frame/Texts.h"
#include "cli/rows/RowText.h"
#include "cli/script/Script.h"
#include "cli/script/ScriptRunner.h"
#include "cli/script/ScriptUser.h"
#include "cli/verbs/Verbs.h"
#include "core/document/edit/CellEditing.h"
#include "core/document/file/OpenSave.h"

#include <fstream>
#include <iterator>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tallybook::cli {

namespace {

constexpr std::string_view kScriptOrStatements = "It takes a script: --script FILE, or a line each with -e.";

struct EditOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::string out;
    std::string script;
    std::vector<std::string> statements; // instead of a script, a line each
    bool lossy = false;
    bool discard = false;

    std::string scriptName() const {
        if (!statements.empty())
            return "-e";
        return script == "-" ? "standard input" : script;
    }
};

std::optional<std::string> scriptText(const EditOptions& options, Terminal& terminal) {
    if (!options.statements.empty()) {
        std::string lines;
        for (const std::string& statement : options.statements)
            lines += statement + '\n';
        return lines;
    }
    if (options.script == "-")
        return std::string(std::istreambuf_iterator<char>(terminal.in), {});
    std::ifstream file(options.script, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::string text(std::istreambuf_iterator<char>(file), {});
    return file.bad() ? std::nullopt : std::optional(text);
}

void say(Terminal& terminal, const EditOptions& options, const ScriptError& error) {
    terminal.setSubject(options.scriptName() + ':' + std::to_string(error.line));
    terminal.say(error.text);
}

void tellReplaced(const Replaced& replaced, Terminal& terminal) {
    if (replaced.characters > 0)
        terminal.say(replacedCharacters(replaced.characters, replaced.lines, replaced.questionMarks));
}

// The script's lines, or nothing after what is wrong with them was said.
std::optional<Script> readScript(const EditOptions& options, Terminal& terminal) {
    terminal.setSubject(options.scriptName());
    const std::optional<std::string> text = scriptText(options, terminal);
    if (!text) {
        terminal.say(kScriptNotRead);
        return std::nullopt;
    }
    const std::variant<Script, ScriptError> parsed = parseScript(*text);
    if (const auto* error = std::get_if<ScriptError>(&parsed)) {
        say(terminal, options, *error);
        return std::nullopt;
    }
    auto script = std::get<Script>(parsed);
    if (options.lossy)
        tellReplaced(takeNearestTexts(script), terminal);
    for (const auto check : {checkCommands, checkTexts})
        if (const std::optional<ScriptError> error = check(script)) {
            say(terminal, options, *error);
            return std::nullopt;
        }
    return script;
}

// What is left to do when the script ran to its end: with --out the result is saved there.
bool finish(ScriptRunner& runner, const EditOptions& options, Session& session, ScriptUser& user,
            Terminal& terminal) {
    if (!options.out.empty()) {
        std::optional<std::string> failure = runner.save();
        if (!failure && !user.messages.empty())
            failure = shownText(user.messages.front());
        terminal.setSubject(options.out);
        if (failure)
            terminal.say(*failure);
        return !failure;
    }
    document::saveCell(session.document(), session.services()); // an edit that is still open counts as well
    if (!session.document().DocModified || options.discard)
        return true;
    terminal.setSubject(options.file.string());
    terminal.say(kChangesNotSaved);
    return false;
}

ExitCode edit(const EditOptions& options, Terminal& terminal) {
    if (options.script.empty() == options.statements.empty()) {
        terminal.setSubject("edit");
        terminal.say(kScriptOrStatements);
        return ExitCode::Usage;
    }
    const std::optional<Script> script = readScript(options, terminal);
    if (!script)
        return ExitCode::Usage;
    if (const std::string fault = faultOfText(options.common.password().value_or("")); !fault.empty()) {
        terminal.setSubject(options.file.string());
        terminal.say(passwordFault(fault));
        return ExitCode::Refused;
    }
    Session session(terminal, options.common);
    if (!session.open(options.file, Session::Purpose::Save))
        return ExitCode::Refused;

    ScriptUser user;
    user.onNote = [&session](const std::string& text) { session.user().note(text); };
    user.yes = options.common.yes;
    if (const std::optional<std::string> password = options.common.password())
        user.passwordForAll = checkedText(*password);
    platform::Services& opened = session.services();
    platform::Services services{user,         opened.screen,   opened.files,
                                opened.clock, opened.regional, opened.applicationFolder};
    std::optional<std::filesystem::path> saveTo;
    if (!options.out.empty())
        saveTo = std::filesystem::absolute(options.out);
    if (saveTo && document::refusesFileName(session.document(), session.services(), *saveTo))
        return ExitCode::Refused;
    ScriptRunner runner(session.document(), services, user, terminal.out, saveTo,
                        terminal.outputIsTerminal() ? Audience::Terminal : Audience::Program);
    if (const std::optional<ScriptError> error = runner.run(*script)) {
        say(terminal, options, *error);
        return ExitCode::Refused;
    }
    return finish(runner, options, session, user, terminal) ? ExitCode::Done : ExitCode::Refused;
}

} // namespace

void addEdit(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<EditOptions>();
    Verb verb = command.verb("edit", "Change records by a script of the grid's own operations");
    addFileArgument(verb, options->file);
    verb.option("--script", options->script, "The script, or - for standard input");
    verb.option("-e", options->statements, "A line of a script, instead of --script; as many as there are lines");
    verb.option("--out", options->out, "Save the result there and leave FILE alone");
    verb.flag("--discard", options->discard, "Changes that the script does not save are no failure");
    verb.flag("--lossy", options->lossy,
              "Take the nearest for characters of the script that a database cannot hold, and tell how many");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = edit(*options, terminal); });
}

} // namespace tallybook::cli
