// The commands of a script that look and complain.
#include "cli/frame/TerminalUser.h"
#include "cli/script/ScriptRunner.h"
#include "core/calc/values/Ansi.h"

namespace tallybook::cli {

namespace {

std::string differs(const std::string& found, const std::string& expected) {
    return "\"" + found + "\" stands there, expected \"" + expected + "\"";
}

} // namespace

ScriptRunner::Failure ScriptRunner::expectCell(const Words& words) {
    const auto place = placeOf(words[0], words[1]);
    if (const auto* reason = std::get_if<std::string>(&place))
        return *reason;
    const std::string found = calc::ansi::toUtf8(cellText(std::get<Place>(place).row, std::get<Place>(place).col));
    if (found != words[2].text)
        return differs(found, words[2].text);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::expectAt(const Words& words) {
    const auto named = placeOf(words[0], words[1]);
    if (const auto* reason = std::get_if<std::string>(&named))
        return *reason;
    const Place place = std::get<Place>(named);
    const model::GridModel& grd = m_doc.grd;
    if (grd.row() != place.row || grd.col() != place.col)
        return "record " + std::to_string(grd.row() - model::kFirstDataRow + 1) + ", field \"" +
               calc::ansi::toUtf8(grd.text(0, grd.col())) + "\" is current";
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::expectEditor(const Words& words) {
    const model::EditorState& editor = m_doc.editor;
    if (words[0].is("none"))
        return editor.open() ? Failure("an editor is open") : std::nullopt;
    if (!editor.open())
        return "no editor is open";
    const bool list = editor.kind == model::EditorKind::cmb1;
    const bool chosen = editor.entry >= 0 && editor.entry < static_cast<int>(editor.entries.size());
    const std::string held =
        !list ? editor.text : (chosen ? editor.entries[static_cast<std::size_t>(editor.entry)] : std::string());
    const std::string found = calc::ansi::toUtf8(held);
    if (found != words[0].text)
        return differs(found, words[0].text);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::expectMessage(const Words& words) {
    if (m_user.messages.empty())
        return "no message came, expected \"" + words[0].text + "\"";
    const std::string found = shownText(m_user.messages.front());
    m_user.messages.pop_front();
    if (found != words[0].text)
        return "the message was \"" + found + "\", expected \"" + words[0].text + "\"";
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::expectModified(const Words& words) {
    if (!words[0].is("yes") && !words[0].is("no"))
        return "usage: expect-modified yes|no";
    if (m_doc.DocModified != words[0].is("yes"))
        return m_doc.DocModified ? "there are unsaved changes" : "there are no unsaved changes";
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::expectRecords(const Words& words) {
    const std::string found = std::to_string(m_doc.NumDataRecs);
    if (found != words[0].text)
        return "there are " + found + " records, expected " + words[0].text;
    return std::nullopt;
}

} // namespace tallybook::cli
