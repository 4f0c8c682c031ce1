// tallybook check FILE: what is wrong with a file, a line for each.
#include "adapters/PosixFiles.h"
#include "cli/frame/Options.h"
#include "cli/frame/TerminalUser.h"
#include "cli/inspect/Findings.h"
#include "cli/verbs/Verbs.h"

#include <memory>
#include <ostream>

namespace tallybook::cli {

namespace {

struct CheckOptions {
    CommonOptions common;
    std::filesystem::path file;
};

ExitCode check(const CheckOptions& options, Terminal& terminal) {
    adapters::PosixFiles files;
    const auto bytes = files.read(options.file);
    if (!bytes) {
        terminal.err << shownText(bytes.error().description()) << '\n';
        return ExitCode::Refused;
    }
    const Findings findings = checkFile(bytes.value(), options.common.regional());
    for (const Finding& finding : findings)
        terminal.out << findingLine(finding) << '\n';
    return findings.empty() ? ExitCode::Done : ExitCode::Refused;
}

} // namespace

void addCheck(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<CheckOptions>();
    Verb verb = command.verb("check", "Say what is wrong with a file, with record number and byte");
    addFileArgument(verb, options->file);
    addRegionOption(verb, options->common.region);
    verb.runs([options, &terminal, &code] { code = check(*options, terminal); });
}

} // namespace tallybook::cli
