// tallybook schema FILE: the structure of a database as a description that `new` makes it from again.
#include "cli/frame/Session.h"
#include "cli/frame/Texts.h"
#include "cli/frame/VisibleText.h"
#include "cli/schema/SchemaDatabase.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"
#include "core/pdb/Names.h"

#include <algorithm>
#include <memory>
#include <ostream>

namespace tallybook::cli {

namespace {

struct SchemaOptions {
    CommonOptions common;
    std::filesystem::path file;
};

// What a description leaves out is said, so that nobody takes the new file for a copy.
void tellWhatIsMissing(const model::DatabaseModel& db, Terminal& terminal) {
    if (!passwordKindsJson(db).empty())
        terminal.say(kNotDescribedPasswords);
    if (db.SpareFilters != decltype(db.SpareFilters){})
        terminal.say(kNotDescribedSpareFilters);
}

ExitCode schema(const SchemaOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file, Session::Purpose::Look))
        return ExitCode::Refused;
    const model::DatabaseModel& db = session.document().CurrDB20;
    const std::string stem = calc::ansi::fromUtf8(options.file.stem().string());
    terminal.out << visibleJson(shownJson(describeDatabase(db, stem, session.services())));
    tellWhatIsMissing(db, terminal);
    return ExitCode::Done;
}

} // namespace

void addSchema(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<SchemaOptions>();
    Verb verb = command.verb("schema", "Print the structure of a database as a description for `new`");
    addFileArgument(verb, options->file);
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = schema(*options, terminal); });
}

} // namespace tallybook::cli
