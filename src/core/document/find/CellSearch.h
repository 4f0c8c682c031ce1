// A search through all cells, settled once and then asked for hit after hit.
#pragma once

#include "core/calc/values/TextFinder.h"
#include "core/document/find/Find.h"
#include "core/document/find/PatternList.h"
#include "core/model/Document.h"

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::document {

// Whether texts match the settings of a search; the same answers as MatchCell and ExpressionMatchText.
class CellMatcher {
public:
    explicit CellMatcher(const FindSettings& settings);

    bool matches(std::string_view text) const;

    // False when no text that lies among these bytes can match.
    bool mayMatchIn(std::string_view bytes) const;
    // False when no text made of these characters alone can match.
    bool mayMatchOf(const std::bitset<256>& alphabet) const;

private:
    bool hasWholeWord(std::string_view text) const;

    const FindSettings m_settings;
    calc::TextFinder m_finder;
    std::optional<PatternList> m_patterns; // of chkExpression
};

// The cells of grd that match, in the order of the walk: row by row, in a row column by column. What is found out
// about blocks of rows is kept, so the grid must stay as it is meanwhile.
class CellSearch {
public:
    struct Place {
        int row = 0;
        int col = 0;
    };

    CellSearch(const model::Document& doc, const FindSettings& settings);

    // The first match behind (ahead of) a place. Behind {kFirstDataRow, 0} is the first cell, ahead of {rows(), 0}
    // the last.
    std::optional<Place> next(Place from, bool forward);

private:
    using Columns = std::bitset<model::kGridColumns>;

    // How the words of a column are looked at.
    enum class Words : std::uint8_t { None, Each, Items };
    enum class ItemMatch : std::uint8_t { Unknown, No, Yes };
    struct Column {
        const model::TextColumn* texts = nullptr;
        Words words = Words::Each;
        std::vector<ItemMatch> items; // by word
    };

    void addColumn(int column);
    const Columns& candidates(std::uint32_t block);
    bool mayMatch(Column& column, std::uint32_t block);
    bool mayHoldMatchingWord(Column& column, std::uint32_t block);
    void appendText(const Column& column, std::uint32_t word);
    bool wordMatches(Column& column, std::uint32_t word);
    bool textMatches(const Column& column, std::uint32_t word);
    bool itemMatches(Column& column, std::uint32_t word);
    bool cellMatches(int column, std::uint32_t id);

    const model::GridModel& m_grd;
    CellMatcher m_matcher;
    bool m_emptyMatches;
    std::vector<Column> m_columns;                    // by grid column; those that are not searched have no texts
    std::vector<std::optional<Columns>> m_candidates; // by block of rows: the columns in which one may match
    std::string m_scratch;
    std::string m_block; // the texts of a block's words, each with a NUL behind it
};

} // namespace tallybook::document
