// tallybook convert OLD NEW: a file of the older format as one of the present format.
#include "cli/frame/FileFault.h"
#include "cli/frame/Session.h"
#include "cli/verbs/Verbs.h"
#include "core/document/file/OpenSave.h"

#include <memory>

namespace tallybook::cli {

namespace {

struct ConvertOptions {
    CommonOptions common;
    std::filesystem::path older;
    std::filesystem::path present;
};

ExitCode convert(const ConvertOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    terminal.setSubject(options.present.string());
    const std::filesystem::path target = std::filesystem::absolute(options.present);
    constexpr auto kNames = document::FileNames::AsGiven;
    if (document::refusesFileName(session.document(), session.services(), target))
        return ExitCode::Refused;
    terminal.setSubject(options.older.string());
    if (const std::string missing = faultOfFile(options.older); !missing.empty()) {
        terminal.say(missing);
        return ExitCode::Refused;
    }
    const document::Outcome outcome = document::convertOlder(
        session.services(), std::filesystem::absolute(options.older), target, document::kLoadFailed, kNames);
    return outcome == document::Outcome::Done ? ExitCode::Done : ExitCode::Refused;
}

} // namespace

void addConvert(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<ConvertOptions>();
    Verb verb = command.verb("convert", "Write a database of the older format in the present one");
    verb.argument("OLD", options->older, "The database of the older format, which stays as it is");
    verb.argument("NEW", options->present, "The file to write; its name begins with MS2_");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = convert(*options, terminal); });
}

} // namespace tallybook::cli
