// tallybook find FILE TEXT: the cells that match, one a line.
#include "core/document/find/Find.h"

#include "cli/frame/IncomingText.h"
#include "cli/frame/Session.h"
#include "cli/rows/GridRows.h"
#include "cli/rows/RowText.h"
#include "cli/verbs/Verbs.h"
#include "core/document/find/CellSearch.h"

#include <memory>
#include <ostream>

namespace tallybook::cli {

namespace {

using document::CellSearch;

struct FindOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::string text; // UTF-8
    document::FindSettings settings;
    bool backward = false;
};

// Where a walk over all cells begins.
CellSearch::Place startOf(const model::Document& doc, bool forward) {
    return forward ? CellSearch::Place{model::kFirstDataRow, 0} : CellSearch::Place{doc.grd.rows(), 0};
}

void writeHit(const model::Document& doc, CellSearch::Place hit, RowText& line, std::ostream& out) {
    std::string scratch;
    std::string converted;
    line.add(doc.grd.text(hit.row, model::kNumberColumn, scratch));
    line.add(utf8(doc.grd.text(0, hit.col, scratch), converted));
    line.add(utf8(doc.grd.text(hit.row, hit.col, scratch), converted));
    out << line.finish();
}

bool writeHits(const model::Document& doc, const document::FindSettings& settings, std::ostream& out) {
    if (model::hasNoRecords(doc))
        return false;
    CellSearch search(doc, settings);
    RowText line(RowForm::Tsv);
    bool any = false;
    auto hit = search.next(startOf(doc, settings.optForward), settings.optForward);
    for (; hit; hit = search.next(*hit, settings.optForward)) {
        writeHit(doc, *hit, line, out);
        any = true;
    }
    return any;
}

ExitCode find(const FindOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    document::FindSettings settings = options.settings;
    if (const std::string fault = faultOfText(options.text); !fault.empty()) {
        terminal.say(fault);
        return ExitCode::Usage;
    }
    settings.text = checkedText(options.text);
    settings.optForward = !options.backward;
    if (settings.text.empty()) {
        session.user().say(std::string(document::kNoSearchText));
        return ExitCode::Usage;
    }
    if (!session.open(options.file, Session::Purpose::Look))
        return ExitCode::Refused;
    if (writeHits(session.document(), settings, terminal.out))
        return ExitCode::Done;
    session.user().say(std::string(document::kSearchTextNotFound));
    return ExitCode::Complaint;
}

} // namespace

void addFind(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<FindOptions>();
    Verb verb = command.verb("find", "Print the record, the field and the text of each cell that matches");
    addFileArgument(verb, options->file);
    verb.argument("TEXT", options->text, "What is looked for in the cells' texts");
    verb.flag("--case", options->settings.chkCase, "Letters as they are written");
    verb.flag("--whole-word", options->settings.chkWholeWord, "No letter or digit on either side");
    verb.flag("--expression", options->settings.chkExpression,
              "TEXT is a pattern of the whole cell (? * # [list] [!list]); patterns apart at +");
    verb.flag("--backward", options->backward, "From the last cell to the first");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = find(*options, terminal); });
}

} // namespace tallybook::cli
