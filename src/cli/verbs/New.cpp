// tallybook new FILE --schema SCHEMA.json: a database made from its description.
#include "cli/frame/Session.h"
#include "cli/frame/Texts.h"
#include "cli/schema/SchemaDatabase.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"
#include "core/document/file/OpenSave.h"
#include "core/pdb/Names.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <ostream>

namespace tallybook::cli {

namespace {

struct NewOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::filesystem::path schema;
};

// Throws a SchemaFault.
Json readDescription(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw SchemaFault{ExitCode::Refused, {}, std::string(kNoDescription)};
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& error) {
        throw SchemaFault{ExitCode::Usage, {}, error.what()};
    }
}

// The name that a file's name stands for: without prefix, with blanks for underscores.
std::string nameOf(const std::filesystem::path& file) {
    std::string name = pdb::RemoveUnderscore(calc::ansi::fromUtf8(file.stem().string()));
    if (name.starts_with(pdb::kPrefix2x))
        name.erase(0, pdb::kPrefix2x.size());
    return name;
}

void explain(const SchemaFault& fault, Terminal& terminal) {
    if (!fault.text.empty())
        terminal.say((fault.place.empty() ? "" : fault.place + ": ") + fault.text);
    if (fault.code == ExitCode::Refused)
        terminal.say(nothingWritten(fault.place.empty() ? "the description" : fault.place));
}

// What lies there already is judged as the dialog for a new file does.
bool mayWrite(Session& session, const std::filesystem::path& target) {
    std::error_code ignored;
    return !std::filesystem::exists(target, ignored) ||
           session.user().message({.text = "The file already exist\nOverwrite it ?",
                                   .icon = platform::Icon::Question,
                                   .buttons = platform::Buttons::YesNo}) == platform::Answer::Yes;
}

ExitCode make(const NewOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    const std::filesystem::path target = document::savedPath(
        session.services().files, std::filesystem::absolute(options.file), document::FileNames::AsGiven);
    if (!session.prepareFolders())
        return ExitCode::Refused;
    try {
        terminal.setSubject(options.schema.string());
        const Json description = readDescription(options.schema);
        terminal.setSubject(options.file.string());
        if (document::refusesFileName(session.document(), session.services(), options.file) ||
            !mayWrite(session, target))
            return ExitCode::Refused;
        terminal.setSubject(options.schema.string()); // what is refused now is a part of it
        makeDatabase(SchemaObject(description, {}), session.document(), session.services(), nameOf(options.file));
    } catch (const SchemaFault& fault) {
        explain(fault, terminal);
        return fault.code;
    }
    terminal.setSubject(options.file.string());
    const ExitCode saved = session.saveTo(target);
    if (saved == ExitCode::Done && target.filename() != options.file.filename())
        session.user().note(platform::texts::savedInstead(platform::shownPath(target)));
    return saved;
}

} // namespace

void addNew(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<NewOptions>();
    Verb verb = command.verb("new", "Make a database from a description");
    verb.argument("FILE", options->file, "The file to write; its name starts with MS2_");
    verb.option("--schema", options->schema, "The description, in JSON").required().existingFile();
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = make(*options, terminal); });
}

} // namespace tallybook::cli
