// tallybook dump FILE: every byte of a file, and what it means.
#include "cli/frame/FileFault.h"
#include "cli/frame/Session.h"
#include "cli/inspect/DumpFile.h"
#include "cli/inspect/FileMap.h"
#include "cli/inspect/FixedRecords.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"
#include "core/pdb/Passwords.h"
#include "core/platform/Paths.h"

#include <memory>

namespace tallybook::cli {

namespace {

using platform::ByteSpan;

struct DumpOptions {
    CommonOptions common;
    std::filesystem::path file;
};

// A password guards against looking in, so it is asked for here too, as far as the file is sound enough to have
// one.
bool login(Session& session, ByteSpan file, const FileMap& map, const std::filesystem::path& path) {
    if (map.entries.empty())
        return true;
    FixedRecords fixed(file, map);
    if (!fixed.read(map.entries.front()))
        return true;
    model::Document& doc = session.document();
    doc.CurrDB20 = fixed.database();
    doc.CurrFileName = platform::shownPath(path.filename());
    return pdb::AuthorizeDB(doc, session.services(), model::PasswordKind::Login);
}

ExitCode dump(const DumpOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    terminal.setSubject(options.file.string());
    if (const std::string fault = faultOfAccess(options.file); !fault.empty()) {
        terminal.say(fault);
        return ExitCode::Refused;
    }
    const auto bytes = session.services().files.read(options.file);
    if (!bytes) {
        session.user().say(bytes.error().description());
        return ExitCode::Refused;
    }
    const FileMap map = mapFile(bytes.value());
    if (!login(session, bytes.value(), map, options.file)) {
        session.explainRefusal();
        return ExitCode::Refused;
    }
    writeDump(bytes.value(), calc::ansi::toUtf8(platform::shownPath(options.file.filename())), terminal.out);
    return ExitCode::Done;
}

} // namespace

void addDump(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<DumpOptions>();
    Verb verb = command.verb("dump", "Print every byte of a file as JSON, with its meaning");
    addFileArgument(verb, options->file);
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = dump(*options, terminal); });
}

} // namespace tallybook::cli
