// tallybook cells FILE: the grid as text.
#include "cli/frame/Session.h"
#include "cli/rows/FieldNames.h"
#include "cli/rows/GridRows.h"
#include "cli/rows/ViewOptions.h"
#include "cli/verbs/Verbs.h"
#include "core/document/views/Sort.h"

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tallybook::cli {

namespace {

constexpr std::string_view kDescending = ":desc";

struct CellsOptions {
    CommonOptions common;
    std::filesystem::path file;
    bool csv = false;
    bool tsv = false;
    bool json = false;
    bool numbers = false;
    std::string sort; // FIELD[:desc]; empty: the order of the grid after opening
    std::string view;
    std::vector<std::string> filters;

    RowForm form() const { return json ? RowForm::Json : (tsv ? RowForm::Tsv : RowForm::Csv); }
};

// Sorts as the option says. False when that is refused; the reason then stands on standard error.
bool sortRecords(Session& session, std::string field, Terminal& terminal) {
    document::SortDirection direction = document::SortDirection::Ascending;
    if (field.ends_with(kDescending)) {
        field.erase(field.size() - kDescending.size());
        direction = document::SortDirection::Descending;
    }
    const auto column = columnNamedOrNumbered(session.document(), field);
    if (const auto* reason = std::get_if<std::string>(&column)) {
        terminal.say(*reason);
        return false;
    }
    document::SortGrid(session.document(), session.services(), model::slotOfColumn(std::get<int>(column)), direction);
    return !session.user().spoke();
}

ExitCode cells(const CellsOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file))
        return ExitCode::Refused;
    if (!options.sort.empty() && !sortRecords(session, options.sort, terminal))
        return ExitCode::Refused;
    if (const auto reason = applyView(session.document(), session.services(), options.view, options.filters)) {
        terminal.say(*reason);
        return ExitCode::Refused;
    }
    const RecordNumbers numbers = options.numbers ? RecordNumbers::Yes : RecordNumbers::No;
    const Audience audience = terminal.outputIsTerminal() ? Audience::Terminal : Audience::Program;
    writeRows(session.document(), options.form(), numbers, terminal.out, audience);
    return ExitCode::Done;
}

} // namespace

void addCells(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<CellsOptions>();
    Verb verb = command.verb("cells", "Print what the grid shows after opening");
    addFileArgument(verb, options->file);
    Verb forms = verb.alternatives("form");
    forms.flag("--csv", options->csv, "Comma-separated, quoted as RFC 4180 says (the default)");
    forms.flag("--tsv", options->tsv, "Tab-separated, with \\t \\n \\r \\\\ for what would break a line");
    forms.flag("--json", options->json, "An object with the fields and the records");
    verb.flag("-n,--numbers", options->numbers, "Begin each row with the number of its record");
    verb.option("--sort", options->sort, "Sort on FIELD (a name, or @ and a slot), with :desc the greatest first");
    verb.option("--view", options->view, "Show this view, or \"Show All Fields\"");
    verb.option("--filter", options->filters, "Use this filter, or \"No Filter\"; several hold together");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = cells(*options, terminal); });
}

} // namespace tallybook::cli
