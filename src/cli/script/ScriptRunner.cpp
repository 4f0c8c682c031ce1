#include "cli/script/ScriptRunner.h"

#include "cli/frame/IncomingText.h"
#include "cli/frame/TerminalUser.h"
#include "cli/frame/Texts.h"
#include "cli/frame/VisibleText.h"
#include "cli/rows/FieldNames.h"
#include "cli/rows/GridRows.h"
#include "core/calc/values/Ansi.h"
#include "core/document/edit/Records.h"
#include "core/document/file/OpenSave.h"
#include "core/document/grid/GridDisplay.h"
#include "core/document/grid/Recalculate.h"
#include "core/document/views/Sort.h"
#include "core/document/views/ViewPlace.h"
#include "core/document/views/Views.h"

#include <charconv>
#include <ostream>
#include <utility>
#include <variant>
#include <vector>

namespace tallybook::cli {

namespace {

using document::Outcome;
using model::columnOfSlot;
using model::kFirstDataRow;

std::optional<int> wholeNumber(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

} // namespace

ScriptRunner::ScriptRunner(model::Document& doc, platform::Services& services, ScriptUser& user, std::ostream& out,
                           std::optional<std::filesystem::path> saveTo, Audience audience)
    : m_doc(doc), m_services(services), m_user(user), m_out(out), m_saveTo(std::move(saveTo)), m_audience(audience) {}

ScriptRunner::Handler ScriptRunner::handlerOf(const std::string& command) {
    struct Row {
        std::string_view name;
        Handler handler;
    };
    static constexpr Row kHandlers[] = {
        {"goto", &ScriptRunner::doGoto},
        {"click", &ScriptRunner::doClick},
        {"type", &ScriptRunner::doType},
        {"key", &ScriptRunner::doKey},
        {"pick", &ScriptRunner::doPick},
        {"radio", &ScriptRunner::doRadio},
        {"date", &ScriptRunner::doDate},
        {"memo", &ScriptRunner::doMemo},
        {"toggle", &ScriptRunner::doToggle},
        {"add", &ScriptRunner::doAdd},
        {"delete", &ScriptRunner::doDelete},
        {"delete-all", &ScriptRunner::doDeleteAll},
        {"recalc", &ScriptRunner::doRecalc},
        {"select", &ScriptRunner::doSelect},
        {"copy", &ScriptRunner::doCopy},
        {"show", &ScriptRunner::doShow},
        {"sort", &ScriptRunner::doSort},
        {"find", &ScriptRunner::doFind},
        {"view", &ScriptRunner::doView},
        {"filter", &ScriptRunner::doFilter},
        {"edit", &ScriptRunner::doEdit},
        {"done", &ScriptRunner::doDone},
        {"answer", &ScriptRunner::doAnswer},
        {"password", &ScriptRunner::doPassword},
        {"save", &ScriptRunner::doSave},
        {"save-as", &ScriptRunner::doSaveAs},
        {"expect-cell", &ScriptRunner::expectCell},
        {"expect-at", &ScriptRunner::expectAt},
        {"expect-editor", &ScriptRunner::expectEditor},
        {"expect-message", &ScriptRunner::expectMessage},
        {"expect-modified", &ScriptRunner::expectModified},
        {"expect-records", &ScriptRunner::expectRecords},
        {"expect-shown", &ScriptRunner::expectShown},
        {"expect-view", &ScriptRunner::expectView},
        {"expect-filter", &ScriptRunner::expectFilter},
    };
    for (const Row& row : kHandlers)
        if (row.name == command)
            return row.handler;
    return nullptr;
}

// A message stops the script unless the very next command expects it, so that a value that was refused never
// passes unseen.
std::optional<ScriptError> ScriptRunner::run(const Script& script) {
    if (std::optional<ScriptError> error = checkCommands(script))
        return error;
    if (std::optional<ScriptError> error = checkTexts(script))
        return error;
    int spokeAt = 0; // line whose messages nobody has expected yet
    for (const ScriptLine& line : script) {
        if (!m_user.messages.empty() && line.command != "expect-message")
            break;
        Failure failure = runLine(line);
        if (Failure said = settle()) // nearer to the cause than what the command makes of it
            failure = said;
        if (failure)
            return ScriptError{line.number, *failure};
        if (line.command != "expect-message")
            spokeAt = line.number;
    }
    if (!m_user.messages.empty())
        return ScriptError{spokeAt, shownText(m_user.messages.front())};
    if (!m_user.answers.empty())
        return ScriptError{script.back().number, "an answer is left that no question asked for"};
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::runLine(const ScriptLine& line) {
    const Handler handler = handlerOf(line.command);
    if (handler == nullptr)
        return "unknown command: " + line.command;
    return (this->*handler)(line.arguments);
}

ScriptRunner::Failure ScriptRunner::settle() {
    const std::string failure = m_user.takeFailure();
    if (failure.empty())
        return std::nullopt;
    return shownText(failure);
}

// Places ---------------------------------------------------------------------------------------------------

std::variant<int, std::string> ScriptRunner::rowOf(const ScriptWord& word) const {
    if (model::hasNoRecords(m_doc))
        return "there are no records";
    const int last = m_doc.grd.rows() - 1;
    const int current = document::shownGrid(m_doc).row();
    int row = 0;
    if (word.is("first"))
        row = kFirstDataRow;
    else if (word.is("last"))
        row = last;
    else if (word.is("current"))
        row = current;
    else if (word.is("next"))
        row = current + 1;
    else if (word.is("previous"))
        row = current - 1;
    else if (const std::optional<int> number = wholeNumber(word.text))
        row = *number > last ? last + 1 : *number - 1 + kFirstDataRow;
    else
        return "not a record: " + word.text + " (a number from 1, first, last, next, previous or current)";
    if (row < kFirstDataRow || row > last)
        return "no such record: " + word.text;
    return row;
}

std::variant<int, std::string> ScriptRunner::columnOf(const ScriptWord& word) const {
    return word.quoted ? columnNamed(m_doc, word.text) : columnNamedOrNumbered(m_doc, word.text);
}

std::variant<ScriptRunner::Place, std::string> ScriptRunner::placeOf(const ScriptWord& rowWord,
                                                                     const ScriptWord& fieldWord) const {
    const auto row = rowOf(rowWord);
    if (const auto* reason = std::get_if<std::string>(&row))
        return *reason;
    const auto column = columnOf(fieldWord);
    if (const auto* reason = std::get_if<std::string>(&column))
        return *reason;
    return Place{std::get<int>(row), std::get<int>(column)};
}

std::string ScriptRunner::cellText(int row, int col) const {
    std::string scratch;
    return std::string(shownCell(m_doc, row, col, scratch));
}

ScriptRunner::Failure ScriptRunner::doGoto(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    if (words.size() == 3 && words[0].is("where"))
        return gotoWhere(words[1], words[2]);
    if (words.size() == 3 || words[0].is("where"))
        return "usage: goto ROW [FIELD], or goto where FIELD \"TEXT\"";
    const auto row = rowOf(words[0]);
    if (const auto* reason = std::get_if<std::string>(&row))
        return *reason;
    if (document::isViewShown(m_doc))
        return gotoInView(std::get<int>(row), words);
    int column = m_doc.grd.col();
    if (words.size() > 1) {
        const auto named = columnOf(words[1]);
        if (const auto* reason = std::get_if<std::string>(&named))
            return *reason;
        column = std::get<int>(named);
    }
    if (m_doc.grd.rowHeight(std::get<int>(row)) == 0)
        return "a filter hides this record: " + words[0].text;
    document::saveCell(m_doc, m_services); // leaving a cell commits it
    m_doc.grd.setCell(std::get<int>(row), column);
    return std::nullopt;
}

// The first record that is shown whose cell shows the very text; Y or N of a check box.
ScriptRunner::Failure ScriptRunner::gotoWhere(const ScriptWord& field, const ScriptWord& text) {
    const auto named = shownColumnOf(field);
    if (const auto* reason = std::get_if<std::string>(&named))
        return *reason;
    if (model::hasNoRecords(m_doc))
        return "there are no records";
    document::saveCell(m_doc, m_services); // leaving a cell commits it, which may be the one that is looked for
    const int column = std::get<int>(named);
    const std::string sought = checkedText(text.text);
    model::GridModel& grid = document::shownGrid(m_doc);
    const int slot = document::shownSlot(m_doc, column);
    const bool checkbox = m_doc.CurrDB20.Fields.at(static_cast<std::size_t>(slot)).Type == model::FieldType::Checkbox;
    std::string scratch;
    for (int at = 0; at < grid.visibleRows(); ++at) {
        const int row = grid.visibleRow(at);
        const bool checked = checkbox && grid.picture(row, column) == model::Picture::CheckOn;
        const std::string_view shown = checkbox ? (checked ? "Y" : "N") : grid.text(row, column, scratch);
        if (shown == sought) {
            grid.setCell(row, column);
            return std::nullopt;
        }
    }
    return "no record shows \"" + text.text + "\" there";
}

// Records --------------------------------------------------------------------------------------------------

ScriptRunner::Failure ScriptRunner::doAdd(const Words&) {
    if (Failure failure = noModal())
        return failure;
    document::RecordAdd(m_doc, m_services);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doDelete(const Words&) {
    if (Failure failure = noModal())
        return failure;
    document::deleteRecord(m_doc, m_services);
    document::leaveHiddenRows(m_doc);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doDeleteAll(const Words&) {
    if (Failure failure = noModal())
        return failure;
    document::deleteAllRecords(m_doc, m_services);
    return std::nullopt;
}

// Selection and output -------------------------------------------------------------------------------------

ScriptRunner::Failure ScriptRunner::doSelect(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    model::GridModel& grid = document::shownGrid(m_doc);
    if (words.size() == 2) {
        const auto row = rowOf(words[0]);
        if (const auto* reason = std::get_if<std::string>(&row))
            return *reason;
        const auto column = shownColumnOf(words[1]);
        if (const auto* reason = std::get_if<std::string>(&column))
            return *reason;
        document::saveCell(m_doc, m_services);
        grid.select(std::get<int>(row), std::get<int>(column));
        return std::nullopt;
    }
    // As the mouse does it: a press on the corner, a record's number or a field's header.
    document::MousePlace place;
    if (words[0].is("row"))
        place.row = grid.row();
    else if (words[0].is("column"))
        place.col = grid.col();
    else if (!words[0].is("all"))
        return "not a selection: " + words[0].text + " (all, row or column)";
    if (document::isViewShown(m_doc))
        document::clickView(m_doc, m_services, place);
    else
        document::leftClick(m_doc, m_services, place);
    return std::nullopt;
}

// As the command does it: the open edit is committed first.
ScriptRunner::Failure ScriptRunner::doRecalc(const Words&) {
    if (Failure failure = noModal())
        return failure;
    document::saveCell(m_doc, m_services);
    document::recalcExpressions(m_doc, m_services);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doCopy(const Words&) {
    const model::GridModel& grid = document::shownGrid(m_doc);
    const int slot = document::shownSlot(m_doc, grid.col());
    if (slot < 0)
        return "no cell is current";
    const std::string copied = document::hasBlock(m_doc) ? document::CopyGridCells(m_doc, m_services)
                                                         : cellText(grid.row(), model::columnOfSlot(slot));
    const std::string text = calc::ansi::toUtf8(copied);
    m_out << (m_audience == Audience::Terminal ? visibleBlock(text) : text) << '\n';
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doShow(const Words& words) {
    if (!words.empty() && !words[0].is("all"))
        return "usage: show [all]";
    if (!words.empty()) {
        RowsRequest all;
        all.form = RowForm::Tsv;
        all.slots = shownSlots(m_doc);
        all.rows = shownRows(m_doc);
        writeRows(m_doc, all, m_out);
        return std::nullopt;
    }
    if (model::hasNoRecords(m_doc))
        return "there are no records";
    for (const int column : usedColumns(m_doc)) {
        RowText line(RowForm::Tsv);
        line.add(calc::ansi::toUtf8(m_doc.grd.text(0, column)));
        line.add(calc::ansi::toUtf8(cellText(m_doc.grd.row(), column)));
        m_out << line.finish();
    }
    return std::nullopt;
}

// Sorting and finding --------------------------------------------------------------------------------------

ScriptRunner::Failure ScriptRunner::doSort(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    const bool descending = words.size() > 1;
    if (descending && !words[1].is("desc"))
        return "usage: sort FIELD [desc]";
    const auto column = columnOf(words[0]);
    if (const auto* reason = std::get_if<std::string>(&column))
        return *reason;
    document::SortGrid(m_doc, m_services, model::slotOfColumn(std::get<int>(column)),
                       descending ? document::SortDirection::Descending : document::SortDirection::Ascending);
    document::leaveHiddenRows(m_doc);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::findAgain(bool forward) {
    if (m_find.settings.text.empty())
        return "nothing has been looked for yet";
    document::findAgain(m_doc, m_services, m_find, forward);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doFind(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    if (words.size() == 1 && (words[0].is("next") || words[0].is("previous")))
        return findAgain(words[0].is("next"));
    document::FindSettings settings{.text = checkedText(words[0].text)};
    for (auto word = words.begin() + 1; word != words.end(); ++word) {
        if (word->is("case"))
            settings.chkCase = true;
        else if (word->is("whole-word"))
            settings.chkWholeWord = true;
        else if (word->is("expression"))
            settings.chkExpression = true;
        else if (word->is("backward"))
            settings.optForward = false;
        else
            return "not an option: " + word->text + " (case, whole-word, expression or backward)";
    }
    document::findFromDialog(m_doc, m_services, m_find, settings);
    return std::nullopt;
}

// Answers --------------------------------------------------------------------------------------------------

ScriptRunner::Failure ScriptRunner::doAnswer(const Words& words) {
    using platform::Answer;
    ScriptUser::QueuedAnswer queued;
    if (words[0].is("yes"))
        queued.answer = Answer::Yes;
    else if (words[0].is("no"))
        queued.answer = Answer::No;
    else if (words[0].is("ok"))
        queued.answer = Answer::Ok;
    else if (words[0].is("cancel"))
        queued.answer = Answer::Cancel;
    else
        return "not an answer: " + words[0].text + " (yes, no, ok or cancel)";
    if (words.size() > 1)
        queued.question = checkedText(words[1].text);
    m_user.answers.push_back(std::move(queued));
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doPassword(const Words& words) {
    m_user.passwords.push_back(checkedText(words[0].text));
    return std::nullopt;
}

// Saving ---------------------------------------------------------------------------------------------------

ScriptRunner::Failure ScriptRunner::needOutput() {
    m_out.flush();
    return m_out ? Failure() : std::string(kOutputNotWritten);
}

std::optional<std::string> ScriptRunner::save() {
    if (Failure failure = needOutput())
        return failure;
    m_user.takeSpoke();
    Outcome outcome = Outcome::Done;
    if (m_saveTo) {
        document::saveCell(m_doc, m_services);
        outcome = document::savePDBFile20(m_doc, m_services, *m_saveTo, document::FileNames::AsGiven);
        if (outcome == Outcome::Done)
            m_doc.DocModified = false;
    } else {
        outcome = document::saveDocument(m_doc, m_services, {}, document::FileNames::AsGiven);
    }
    if (Failure failure = settle())
        return failure;
    if (outcome != Outcome::Done && !m_user.takeSpoke())
        return "nothing was saved";
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doSave(const Words&) {
    if (Failure failure = noModal())
        return failure;
    return save();
}

ScriptRunner::Failure ScriptRunner::doSaveAs(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    if (Failure failure = needOutput())
        return failure;
    m_user.saveName = std::filesystem::absolute(words[0].text);
    const Outcome outcome = document::saveAsSub(m_doc, m_services);
    if (outcome == Outcome::Done)
        m_user.messages.clear(); // only the words that a copy was made
    else if (m_user.messages.empty())
        return "nothing was saved";
    return std::nullopt;
}

} // namespace tallybook::cli
