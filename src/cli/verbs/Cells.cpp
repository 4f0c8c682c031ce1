// tallybook cells FILE: the grid as text.
#include "cli/frame/IncomingText.h"
#include "cli/frame/Session.h"
#include "cli/rows/FieldNames.h"
#include "cli/rows/GridRows.h"
#include "cli/rows/RecordFilter.h"
#include "cli/rows/ViewOptions.h"
#include "cli/verbs/Verbs.h"
#include "core/document/views/Sort.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tallybook::cli {

namespace {

constexpr std::string_view kDescending = ":desc";

constexpr std::string_view kLimitIsNoNumber = "--limit takes a number of records, 999999999 at most.";
constexpr std::string_view kNoIdsInJson = "--ids goes with --jsonl, --csv and --tsv, not with --json.";
constexpr std::string_view kOneFileInJson = "--json takes one file; of several --jsonl makes lines.";
constexpr std::string_view kOtherColumns =
    "Its columns are not those of the files before it: choose them with --fields, or use --jsonl.";

struct CellsOptions {
    CommonOptions common;
    std::vector<std::string> files;
    bool csv = false;
    bool tsv = false;
    bool json = false;
    bool jsonLines = false;
    bool numbers = false;
    bool ids = false;
    bool noHeader = false;
    bool noCategories = false;
    std::string sort; // FIELD[:desc]; empty: the order of the grid after opening
    std::string view;
    std::vector<std::string> filters;
    std::vector<std::string> fields; // each a name, or names with commas between
    std::string where;
    std::string limit;

    RowForm form() const { return json ? RowForm::Json : (tsv ? RowForm::Tsv : RowForm::Csv); }
};

using Failure = std::optional<std::string>; // a sentence, UTF-8

// Sorts as the option says.
Failure sortRecords(Session& session, std::string field) {
    document::SortDirection direction = document::SortDirection::Ascending;
    if (field.ends_with(kDescending)) {
        field.erase(field.size() - kDescending.size());
        direction = document::SortDirection::Descending;
    }
    const auto column = columnNamedOrNumbered(session.document(), field);
    if (const auto* reason = std::get_if<std::string>(&column))
        return *reason;
    document::SortGrid(session.document(), session.services(), model::slotOfColumn(std::get<int>(column)), direction);
    return session.user().spoke() ? Failure("") : std::nullopt; // what was said is the reason
}

// A name may hold a comma: what is a field's name as a whole is that field.
Failure chooseFields(const model::Document& doc, const std::string& names, std::vector<int>& slots) {
    const auto whole = columnNamedOrNumbered(doc, names);
    if (const int* column = std::get_if<int>(&whole)) {
        slots.push_back(model::slotOfColumn(*column));
        return std::nullopt;
    }
    const std::size_t comma = names.find(',');
    if (comma == std::string::npos)
        return std::get<std::string>(whole);
    if (Failure failure = chooseFields(doc, names.substr(0, comma), slots))
        return failure;
    return chooseFields(doc, names.substr(comma + 1), slots);
}

Failure chooseSlots(const CellsOptions& options, const model::Document& doc, RowsRequest& request) {
    for (const std::string& names : options.fields)
        if (Failure failure = chooseFields(doc, names, request.slots))
            return failure;
    if (options.fields.empty())
        request.slots = shownSlots(doc);
    if (options.noCategories)
        std::erase(request.slots, 0);
    return std::nullopt;
}

// The records that are shown, for which the condition holds, and of those the first ones.
Failure chooseRows(const CellsOptions& options, Session& session, RowsRequest& request) {
    request.rows = shownRows(session.document());
    if (!options.where.empty()) {
        std::string reason;
        auto filter = RecordFilter::compile(options.where, session.document(), session.services(), reason);
        if (!filter)
            return reason;
        std::erase_if(request.rows, [&](const ShownRow& row) { return !filter->holds(row.row); });
    }
    std::size_t most = 0;
    std::from_chars(options.limit.data(), options.limit.data() + options.limit.size(), most);
    if (!options.limit.empty() && request.rows.size() > most)
        request.rows.resize(most);
    return std::nullopt;
}

Failure prepare(const CellsOptions& options, Session& session, RowsRequest& request) {
    if (!options.sort.empty())
        if (Failure failure = sortRecords(session, options.sort))
            return failure;
    if (Failure failure = applyView(session.document(), session.services(), options.view, options.filters))
        return failure;
    if (Failure failure = chooseSlots(options, session.document(), request))
        return failure;
    return chooseRows(options, session, request);
}

RowsRequest requestOf(const CellsOptions& options, const Terminal& terminal) {
    RowsRequest request;
    request.form = options.form();
    request.jsonLines = options.jsonLines;
    request.audience = terminal.outputIsTerminal() ? Audience::Terminal : Audience::Program;
    request.numbers = options.numbers;
    request.ids = options.ids;
    request.header = !options.noHeader;
    return request;
}

// One file. `names` are the columns of the first one of several, which the others must have too.
ExitCode cellsOf(const CellsOptions& options, const std::string& file, std::vector<std::string>& names,
                 Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(file, Session::Purpose::Look))
        return ExitCode::Refused;
    RowsRequest request = requestOf(options, terminal);
    if (options.files.size() > 1)
        request.file = file;
    if (const Failure failure = prepare(options, session, request)) {
        if (!failure->empty())
            terminal.say(*failure);
        return ExitCode::Refused;
    }
    const std::vector<std::string> columns = columnNames(session.document(), request);
    if (!names.empty() && columns != names && !options.jsonLines) {
        terminal.say(kOtherColumns);
        return ExitCode::Refused;
    }
    request.header = request.header && names.empty();
    names = columns;
    writeRows(session.document(), request, terminal.out);
    return ExitCode::Done;
}

bool isCount(const std::string& text) {
    return text.size() <= 9 && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// What the command line asks for that cannot be.
Failure misuse(const CellsOptions& options) {
    if (!isCount(options.limit))
        return std::string(kLimitIsNoNumber);
    if (options.json && options.ids)
        return std::string(kNoIdsInJson);
    if (options.json && options.files.size() > 1)
        return std::string(kOneFileInJson);
    const std::string fault = faultOfText(options.where);
    return fault.empty() ? Failure() : "--where: " + fault;
}

ExitCode cells(CellsOptions& options, Terminal& terminal) {
    if (const Failure failure = misuse(options)) {
        terminal.say(*failure);
        return ExitCode::Usage;
    }
    if (options.jsonLines)
        options.common.region = "iso"; // values, not what a region makes of them
    ExitCode worst = ExitCode::Done;
    std::vector<std::string> names;
    for (const std::string& file : options.files)
        worst = std::max(worst, cellsOf(options, file, names, terminal));
    return worst;
}

} // namespace

void addCells(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<CellsOptions>();
    Verb verb = command.verb("cells", "Print what the grid shows after opening");
    verb.arguments("FILE", options->files, "The databases; of several, a column tells which");
    Verb forms = verb.alternatives("form");
    forms.flag("--csv", options->csv, "Comma-separated, quoted as RFC 4180 says (the default)");
    forms.flag("--tsv", options->tsv, "Tab-separated, with \\t \\n \\r \\\\ for what would break a line");
    forms.flag("--json", options->json, "An object with the fields and the records");
    forms.flag("--jsonl", options->jsonLines, "An object a line for each record, with values of their types");
    verb.flag("-n,--numbers", options->numbers, "Begin each row with the number of its record");
    verb.flag("--ids", options->ids, "With the key of each record and the ids of its category and items");
    verb.option("--fields", options->fields, "These fields in this order, commas between (names, or @ and a slot)");
    verb.option("--where", options->where, "Records for which this advanced expression is true");
    verb.option("--limit", options->limit, "So many records at most");
    verb.flag("--no-header", options->noHeader, "Without the names of the columns");
    verb.flag("--no-categories", options->noCategories, "Without the category");
    verb.option("--sort", options->sort, "Sort on FIELD (a name, or @ and a slot), with :desc the greatest first");
    verb.option("--view", options->view, "Show this view, or \"Show All Fields\"");
    verb.option("--filter", options->filters, "Use this filter, or \"No Filter\"; several hold together");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = cells(*options, terminal); });
}

} // namespace tallybook::cli
