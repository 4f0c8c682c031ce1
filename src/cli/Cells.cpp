// tallybook cells FILE: the grid as text.
#include "cli/GridRows.h"
#include "cli/Session.h"
#include "cli/Verbs.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace tallybook::cli {

namespace {

struct CellsOptions {
    CommonOptions common;
    std::filesystem::path file;
    bool csv = false;
    bool tsv = false;
    bool json = false;
    bool numbers = false;

    RowForm form() const { return json ? RowForm::Json : (tsv ? RowForm::Tsv : RowForm::Csv); }
};

ExitCode cells(const CellsOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file))
        return ExitCode::Refused;
    const RecordNumbers numbers = options.numbers ? RecordNumbers::Yes : RecordNumbers::No;
    writeRows(session.document(), options.form(), numbers, terminal.out);
    return ExitCode::Done;
}

} // namespace

void addCells(CLI::App& app, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<CellsOptions>();
    CLI::App* verb = app.add_subcommand("cells", "Print what the grid shows after opening");
    addFileArgument(*verb, options->file);
    auto* forms = verb->add_option_group("form");
    forms->add_flag("--csv", options->csv, "Comma-separated, quoted as RFC 4180 says (the default)");
    forms->add_flag("--tsv", options->tsv, "Tab-separated, with \\t \\n \\r \\\\ for what would break a line");
    forms->add_flag("--json", options->json, "An object with the fields and the records");
    forms->require_option(0, 1);
    verb->add_flag("-n,--numbers", options->numbers, "Begin each row with the number of its record");
    addOpenOptions(*verb, options->common);
    verb->callback([options, &terminal, &code] { code = cells(*options, terminal); });
}

} // namespace tallybook::cli
