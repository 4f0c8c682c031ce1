// tallybook recalc FILE --out OUT: the calculated fields computed anew, and saved.
#include "cli/frame/Session.h"
#include "cli/verbs/Verbs.h"
#include "core/document/grid/Recalculate.h"

#include <memory>

namespace tallybook::cli {

namespace {

struct RecalcOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::filesystem::path out;
};

// Opening computes the fields already; the command does so once more, which settles fields that name later ones.
ExitCode recalc(const RecalcOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file, Session::Purpose::Save))
        return ExitCode::Refused;
    document::recalcExpressions(session.document(), session.services());
    return session.saveTo(options.out);
}

} // namespace

void addRecalc(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<RecalcOptions>();
    Verb verb = command.verb("recalc", "Compute the calculated fields anew and save the database elsewhere");
    addFileArgument(verb, options->file);
    verb.option("--out", options->out, "The file to write, replaced whole when it exists").required();
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = recalc(*options, terminal); });
}

} // namespace tallybook::cli
