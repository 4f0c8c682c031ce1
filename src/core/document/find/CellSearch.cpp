#include "core/document/find/CellSearch.h"

#include "core/calc/cells/CellCoders.h"
#include "core/calc/values/Text.h"

#include <bit>

namespace tallybook::document {

namespace {

using calc::TextCase;
using model::FieldType;
using model::StoredCell;
using model::WordForm;

constexpr std::uint32_t kMostItems = 4096; // words above are looked at one by one

TextCase caseOf(const FindSettings& settings) {
    return settings.chkCase ? TextCase::Binary : TextCase::Folded;
}

bool isWordCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

using Alphabet = std::bitset<256>;

void addTo(Alphabet& alphabet, std::string_view text) {
    for (const char c : text)
        alphabet.set(static_cast<std::uint8_t>(c));
}

// The characters that the words of a coder can show: digits, and what a word or two show beside them.
Alphabet alphabetOf(const model::CellCoder& coder) {
    std::string texts = "0123456789";
    std::string scratch;
    switch (coder.form().words) {
    case WordForm::Date:
        texts += coder.text(calc::packDate(2003, 12, 31), scratch);
        break;
    case WordForm::Time:
        texts += coder.text(calc::packTime(0, 0, 0), scratch);
        texts += coder.text(calc::packTime(12, 0, 0), scratch);
        break;
    case WordForm::Decimal:
        texts += coder.text(std::bit_cast<std::uint32_t>(-1.0F), scratch);
        break;
    default:
        texts += '-';
        break;
    }
    Alphabet alphabet;
    addTo(alphabet, texts);
    return alphabet;
}

// Check boxes show a picture; what no field uses is not shown at all.
bool isSearched(const model::Document& doc, int slot) {
    const FieldType type = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type;
    return slot == 0 || (type != FieldType::NotUsed && type != FieldType::Checkbox);
}

} // namespace

CellMatcher::CellMatcher(const FindSettings& settings)
    : m_settings(settings), m_finder(settings.text, caseOf(settings)) {
    if (settings.chkExpression)
        m_patterns.emplace(settings.text, caseOf(settings));
}

bool CellMatcher::matches(std::string_view text) const {
    if (m_patterns)
        return m_patterns->matches(text);
    if (m_settings.chkWholeWord)
        return hasWholeWord(text);
    return m_finder.find(text) != std::string_view::npos;
}

bool CellMatcher::mayMatchIn(std::string_view bytes) const {
    if (bytes.empty())
        return false;
    return m_patterns ? m_patterns->mayMatchIn(bytes) : m_finder.find(bytes) != std::string_view::npos;
}

bool CellMatcher::mayMatchOf(const std::bitset<256>& alphabet) const {
    return m_patterns ? m_patterns->mayMatchOf(alphabet) : m_finder.isMadeOf(alphabet);
}

bool CellMatcher::hasWholeWord(std::string_view text) const {
    const std::size_t length = m_finder.size();
    for (std::size_t at = m_finder.find(text); at != std::string_view::npos; at = m_finder.find(text, at + length)) {
        const bool begins = at == 0 || !isWordCharacter(text[at - 1]);
        const bool ends = at + length == text.size() || !isWordCharacter(text[at + length]);
        if (begins && ends)
            return true;
        if (length == 0)
            return false;
    }
    return false;
}

CellSearch::CellSearch(const model::Document& doc, const FindSettings& settings)
    : m_grd(doc.grd), m_matcher(settings), m_emptyMatches(m_matcher.matches({})), m_columns(model::kGridColumns) {
    for (int slot = 0; slot <= model::MaxUserFields; ++slot)
        if (isSearched(doc, slot))
            addColumn(model::columnOfSlot(slot));
}

// Settles how the column's words are looked at, for all of its cells.
void CellSearch::addColumn(int column) {
    Column& added = m_columns[static_cast<std::size_t>(column)];
    added.texts = &m_grd.column(column);
    const model::CellCoder* coder = added.texts->coder();
    if (coder == nullptr)
        added.words = Words::None;
    else if (coder->form().words == WordForm::Other)
        added.words = Words::Items;
    else
        added.words = m_matcher.mayMatchOf(alphabetOf(*coder)) ? Words::Each : Words::None;
}

std::optional<CellSearch::Place> CellSearch::next(Place from, bool forward) {
    const int step = forward ? 1 : -1;
    const int firstColumn = forward ? 1 : model::kScratchColumn - 1;
    int column = from.row >= m_grd.rows() ? firstColumn : from.col + step;
    int row = from.row >= m_grd.rows() ? m_grd.rows() - 1 : from.row;
    for (; row >= model::kFirstDataRow && row < m_grd.rows(); row += step, column = firstColumn) {
        const std::uint32_t id = m_grd.rowId(row);
        const Columns& columns = candidates(id / model::kBlockRows);
        if (columns.none())
            continue;
        for (; column >= 1 && column < model::kScratchColumn; column += step)
            if (columns[static_cast<std::size_t>(column)] && cellMatches(column, id))
                return Place{row, column};
    }
    return std::nullopt;
}

const CellSearch::Columns& CellSearch::candidates(std::uint32_t block) {
    if (block >= m_candidates.size())
        m_candidates.resize(block + 1);
    if (!m_candidates[block]) {
        Columns columns;
        for (std::size_t column = 0; column < m_columns.size(); ++column)
            if (m_columns[column].texts != nullptr)
                columns[column] = mayMatch(m_columns[column], block);
        m_candidates[block] = columns;
    }
    return *m_candidates[block];
}

// The texts of a block lie together and are searched in one go; only where something is found there are they looked
// at one by one.
bool CellSearch::mayMatch(Column& column, std::uint32_t block) {
    return m_emptyMatches || m_matcher.mayMatchIn(column.texts->plainTexts(block)) ||
           mayHoldMatchingWord(column, block);
}

bool CellSearch::mayHoldMatchingWord(Column& column, std::uint32_t block) {
    if (column.words == Words::None)
        return false;
    m_block.clear();
    const model::StoredBlock stored = column.texts->storedBlock(block);
    bool found = false;
    model::eachBit(stored.filled, [&, next = stored.words.begin()](std::uint32_t place) mutable {
        const std::uint32_t word = *next++;
        if (found || model::bitOf(stored.plain, place))
            return;
        if (column.words == Words::Items)
            found = itemMatches(column, word);
        else
            appendText(column, word);
    });
    if (found)
        return true;
    return m_matcher.mayMatchIn(m_block);
}

// Puts the texts of a block one behind the other, as plain ones lie in their column.
void CellSearch::appendText(const Column& column, std::uint32_t word) {
    m_block += column.texts->coder()->text(word, m_scratch);
    m_block += '\0';
}

bool CellSearch::wordMatches(Column& column, std::uint32_t word) {
    return column.words == Words::Items ? itemMatches(column, word) : textMatches(column, word);
}

// An item of a list is looked at once, however many records have it.
bool CellSearch::itemMatches(Column& column, std::uint32_t word) {
    if (word >= kMostItems)
        return textMatches(column, word);
    if (word >= column.items.size())
        column.items.resize(word + 1);
    if (column.items[word] == ItemMatch::Unknown)
        column.items[word] = textMatches(column, word) ? ItemMatch::Yes : ItemMatch::No;
    return column.items[word] == ItemMatch::Yes;
}

bool CellSearch::textMatches(const Column& column, std::uint32_t word) {
    return m_matcher.matches(column.texts->coder()->text(word, m_scratch));
}

bool CellSearch::cellMatches(int column, std::uint32_t id) {
    Column& searched = m_columns[static_cast<std::size_t>(column)];
    const StoredCell cell = searched.texts->stored(id);
    if (cell.kind != StoredCell::Kind::Word)
        return m_matcher.matches(cell.text);
    return searched.words != Words::None && wordMatches(searched, cell.word);
}

} // namespace tallybook::document
