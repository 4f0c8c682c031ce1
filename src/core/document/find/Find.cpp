#include "core/document/find/Find.h"

#include "core/document/edit/CellEditing.h"
#include "core/document/find/CellSearch.h"
#include "core/document/find/PatternList.h"

#include <algorithm>

namespace tallybook::document {

namespace {

void tell(platform::Services& services, std::string_view text) {
    services.ui.message({.text = std::string(text), .icon = platform::Icon::Information, .title = {}});
}

// Where the walk starts from. Without a current cell that is ahead of (behind) the first cell, so that it is the
// first one to be looked at.
CellSearch::Place startOf(const model::GridModel& grd, bool forward) {
    const bool current = grd.row() >= model::kFirstDataRow && grd.row() < grd.rows() && grd.col() >= 1;
    return current ? CellSearch::Place{grd.row(), grd.col()}
                   : CellSearch::Place{model::kFirstDataRow, forward ? 0 : 2};
}

bool findOrTell(model::Document& doc, platform::Services& services, const FindSettings& settings, bool forward) {
    if (FindText(doc, services, settings, forward))
        return true;
    tell(services, kSearchTextNotFound);
    return false;
}

} // namespace

bool MatchCell(std::string_view cellText, const FindSettings& settings) {
    if (settings.chkExpression)
        return ExpressionMatch(cellText, settings.text);
    return CellMatcher(settings).matches(cellText);
}

bool ExpressionMatch(std::string_view cellText, std::string_view patterns) {
    return PatternList(patterns, calc::TextCase::Binary).matches(cellText);
}

bool ExpressionMatchText(std::string_view cellText, std::string_view patterns) {
    return PatternList(patterns, calc::TextCase::Folded).matches(cellText);
}

bool FindText(model::Document& doc, platform::Services& services, const FindSettings& settings, bool forward) {
    saveCell(doc, services);
    if (settings.text.empty() || model::hasNoRecords(doc))
        return false;
    const auto found = CellSearch(doc, settings).next(startOf(doc.grd, forward), forward);
    if (found)
        doc.grd.setCell(found->row, found->col);
    return found.has_value();
}

bool findFromDialog(model::Document& doc, platform::Services& services, FindMemory& memory,
                    const FindSettings& settings) {
    if (settings.text.empty()) {
        tell(services, kNoSearchText);
        return false;
    }
    memory.settings = settings;
    if (std::find(memory.texts.begin(), memory.texts.end(), settings.text) == memory.texts.end())
        memory.texts.push_back(settings.text);
    return findOrTell(doc, services, settings, settings.optForward);
}

bool findAgain(model::Document& doc, platform::Services& services, const FindMemory& memory, bool forward) {
    return !memory.settings.text.empty() && findOrTell(doc, services, memory.settings, forward);
}

} // namespace tallybook::document
