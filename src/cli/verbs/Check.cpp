// tallybook check FILE: what is wrong with a file, a line for each.
#include "adapters/PosixFiles.h"
#include "cli/frame/FileFault.h"
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
    terminal.setSubject(options.file.string());
    if (const std::string fault = faultOfAccess(options.file); !fault.empty()) {
        terminal.say(fault);
        return ExitCode::Refused;
    }
    adapters::PosixFiles files;
    const auto bytes = files.read(options.file);
    if (!bytes) {
        terminal.say(shownText(bytes.error().description()));
        return ExitCode::Refused;
    }
    const Findings findings = checkFile(bytes.value(), options.common.regional());
    for (const Finding& finding : findings)
        terminal.out << findingLine(finding) << '\n';
    return findings.empty() ? ExitCode::Done : ExitCode::Complaint;
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
