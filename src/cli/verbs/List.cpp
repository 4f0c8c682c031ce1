// tallybook list: the databases of a handheld user.
#include "cli/frame/HandheldSession.h"
#include "cli/frame/Options.h"
#include "cli/rows/RowText.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"
#include "core/handheld/DatabaseList.h"

#include <memory>
#include <ostream>

namespace tallybook::cli {

namespace {

void writeRow(const handheld::DatabaseRow& row, const platform::Regional& regional, RowText& line,
              std::ostream& out) {
    line.add(row.file.string());
    line.add(calc::ansi::toUtf8(row.name));
    line.add(row.format);
    line.add(std::to_string(row.records));
    line.add(calc::ansi::toUtf8(handheld::lastModifiedText(adapters::localTimeOf(row.modified), regional)));
    out << line.finish();
}

ExitCode list(const HandheldOptions& options, Terminal& terminal) {
    HandheldSession session(terminal, options);
    if (!session.start())
        return ExitCode::Refused;
    const auto user = session.user();
    if (!user && !options.user.empty())
        return ExitCode::Refused;
    const auto rows = handheld::getDBList(session.services().files,
                                          session.users().UserFolders[static_cast<std::size_t>(user.value_or(0))]);
    if (!rows) {
        session.terminalUser().say(rows.error().text);
        return ExitCode::Refused;
    }
    RowText line(RowForm::Tsv);
    for (const handheld::DatabaseRow& row : rows.value())
        writeRow(row, session.services().regional, line, terminal.out);
    return ExitCode::Done;
}

} // namespace

void addList(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<HandheldOptions>();
    Verb verb = command.verb("list", "Print the databases of a handheld user");
    addUserOption(verb, *options);
    addHandheldOptions(verb, *options);
    addRegionOption(verb, options->region);
    verb.runs([options, &terminal, &code] { code = list(*options, terminal); });
}

} // namespace tallybook::cli
