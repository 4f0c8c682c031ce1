// The commands of a script that have to do with views and filters.
#include "cli/rows/ViewOptions.h"
#include "cli/script/ScriptRunner.h"
#include "core/calc/values/Ansi.h"
#include "core/document/views/Views.h"

#include <algorithm>
#include <variant>

namespace tallybook::cli {

namespace {

std::optional<std::string> expectEntry(const std::vector<std::string>& entries, int chosen,
                                       const std::string& expected) {
    const std::string found = calc::ansi::toUtf8(entries[static_cast<std::size_t>(chosen)]);
    if (found == expected)
        return std::nullopt;
    return "\"" + found + "\" is chosen, expected \"" + expected + "\"";
}

} // namespace

ScriptRunner::Failure ScriptRunner::doView(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    return applyViewNamed(m_doc, m_services, words[0].text);
}

ScriptRunner::Failure ScriptRunner::doFilter(const Words& words) {
    if (Failure failure = noModal())
        return failure;
    std::vector<std::string> names;
    for (const ScriptWord& word : words)
        names.push_back(word.text);
    return applyFiltersNamed(m_doc, m_services, names);
}

std::variant<int, std::string> ScriptRunner::shownColumnOf(const ScriptWord& word) const {
    auto named = columnOf(word);
    if (!document::isViewShown(m_doc) || std::holds_alternative<std::string>(named))
        return named;
    const auto& fields = m_doc.ViewFields;
    const auto field = std::find(fields.begin(), fields.end(), model::slotOfColumn(std::get<int>(named)));
    if (field == fields.end())
        return "the view does not show this field: " + word.text;
    return static_cast<int>(field - fields.begin()) + 1;
}

ScriptRunner::Failure ScriptRunner::gotoInView(int row, const Words& words) {
    model::GridModel& grid = m_doc.ViewGrd;
    if (grid.rowHeight(row) == 0)
        return "a filter hides this record: " + words[0].text;
    int column = grid.col();
    if (words.size() > 1) {
        const auto named = shownColumnOf(words[1]);
        if (const auto* reason = std::get_if<std::string>(&named))
            return *reason;
        column = std::get<int>(named);
    }
    grid.setCell(row, column);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doEdit(const Words&) {
    if (!document::isViewShown(m_doc))
        return "no view is shown";
    document::ModifyRecord(m_doc, m_services);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::doDone(const Words&) {
    if (Failure failure = noModal())
        return failure;
    if (!m_doc.RecordOfView)
        return "no record of a view is being edited";
    document::doneEditing(m_doc, m_services);
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::expectShown(const Words& words) {
    const std::string found = std::to_string(document::shownGrid(m_doc).visibleRows());
    if (found != words[0].text)
        return found + " records are shown, expected " + words[0].text;
    return std::nullopt;
}

ScriptRunner::Failure ScriptRunner::expectView(const Words& words) {
    return expectEntry(document::viewEntries(m_doc.CurrDB20), document::chosenView(m_doc), words[0].text);
}

ScriptRunner::Failure ScriptRunner::expectFilter(const Words& words) {
    return expectEntry(document::filterEntries(m_doc.CurrDB20), document::chosenFilter(m_doc), words[0].text);
}

} // namespace tallybook::cli
