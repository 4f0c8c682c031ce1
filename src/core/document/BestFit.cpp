// The width that each column needs.
#include "core/document/Cells.h"
#include "core/document/GridDisplay.h"
#include "core/platform/Guards.h"

#include <algorithm>
#include <array>

namespace tallybook::document {

namespace {

using model::FieldType;

constexpr int kLeastWidth = 100; // twips
constexpr int kMargin = 150;
constexpr int kButtonMargin = 400; // room for the drop-down button
constexpr std::size_t kMeasured = 4;

using CharacterWidths = std::array<int, 256>;

CharacterWidths widthsOf(const TextMeasure& measure) {
    CharacterWidths widths{};
    for (std::size_t character = 0; character < widths.size(); ++character)
        widths[character] = measure.characterWidth(static_cast<unsigned char>(character));
    return widths;
}

// The widest texts by the sum of their characters. Measuring a text costs a hundred times its sum, and what the
// font does to neighbouring characters is far less than what parts one of the widest from the rest.
class WidestTexts {
public:
    explicit WidestTexts(const CharacterWidths& widths)
        : m_widths(widths), m_widest(*std::max_element(widths.begin(), widths.end())) {}

    void add(std::string_view text) {
        if (static_cast<std::int64_t>(text.size()) * m_widest <= m_found.back().sum)
            return;
        int sum = 0;
        for (const char c : text)
            sum += m_widths[static_cast<unsigned char>(c)];
        if (sum > m_found.back().sum)
            insert(text, sum);
    }

    int measured(const TextMeasure& measure) const {
        int width = 0;
        for (const Found& found : m_found)
            if (found.sum > 0)
                width = std::max(width, measure.textWidth(found.text));
        return width;
    }

private:
    struct Found {
        int sum = 0;
        std::string text;
    };

    void insert(std::string_view text, int sum) {
        m_found.back() = {sum, std::string(text)};
        for (std::size_t i = m_found.size() - 1; i > 0 && m_found[i - 1].sum < sum; --i)
            std::swap(m_found[i - 1], m_found[i]);
    }

    const CharacterWidths& m_widths;
    int m_widest;                         // of any character
    std::array<Found, kMeasured> m_found; // widest first
};

// The words of a column that were looked at lately: dates and list items come again and again, and a word that
// comes again brings the same text.
class SeenWords {
public:
    SeenWords() { m_words.fill(-1); }

    // True when the word is surely not new.
    bool again(std::uint32_t word) {
        std::int64_t& place = m_words[(word * kSpread) >> kShift];
        if (place == word)
            return true;
        place = word;
        return false;
    }

private:
    static constexpr std::uint32_t kSpread = 2654435769U; // 2^32 by the golden ratio
    static constexpr int kShift = 20;                     // leaves 4,096 places
    std::array<std::int64_t, 4096> m_words;
};

int marginOf(FieldType type) {
    return type == FieldType::List || type == FieldType::DBJoin ? kButtonMargin : kMargin;
}

int fittingWidth(const model::Document& doc, int column, const CharacterWidths& widths, const TextMeasure& measure) {
    WidestTexts widest(widths);
    widest.add(doc.grd.text(0, column));
    const model::TextColumn& texts = doc.grd.column(column);
    SeenWords seen;
    std::string scratch;
    for (int row = model::kFirstDataRow; row < doc.grd.rows(); ++row) {
        const model::StoredCell cell = texts.stored(doc.grd.rowId(row));
        if (cell.kind == model::StoredCell::Kind::Text) {
            widest.add(cell.text);
        } else if (cell.kind == model::StoredCell::Kind::Word && !seen.again(cell.word)) {
            scratch.clear();
            texts.coder()->append(cell.word, scratch);
            widest.add(scratch);
        }
    }
    const int text = std::max(kLeastWidth, widest.measured(measure));
    return std::min(text + marginOf(fieldOfColumn(doc, column).Type), measure.screenWidth() / 4);
}

} // namespace

void bestFit1(model::Document& doc, platform::Services& services, const TextMeasure& measure) {
    saveCell(doc, services);
    const platform::Freeze freeze(services.ui, doc);
    const CharacterWidths widths = widthsOf(measure);
    for (int column = 1; column < model::kScratchColumn; ++column)
        if (fieldOfColumn(doc, column).Type != FieldType::NotUsed)
            doc.grd.setColumnWidth(column, fittingWidth(doc, column, widths, measure));
    doc.grd.setCell(model::kFirstDataRow, 1);
}

} // namespace tallybook::document
