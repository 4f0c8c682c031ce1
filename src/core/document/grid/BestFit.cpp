// The width that each column needs.
#include "core/document/grid/Cells.h"
#include "core/document/grid/GridDisplay.h"
#include "core/document/views/Views.h"
#include "core/platform/Guards.h"

#include <algorithm>
#include <array>
#include <cstdint>

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
    explicit WidestTexts(const CharacterWidths& widths) : m_widths(widths) {}

    void add(std::string_view text) {
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
    std::array<Found, kMeasured> m_found; // widest first
};

int marginOf(FieldType type) {
    return type == FieldType::List || type == FieldType::DBJoin ? kButtonMargin : kMargin;
}

int fittingWidth(const model::Document& doc, int column, const CharacterWidths& widths, const TextMeasure& measure) {
    WidestTexts widest(widths);
    widest.add(doc.grd.text(0, column));
    doc.grd.column(column).eachText([&](std::uint32_t, std::string_view text) { widest.add(text); });
    const int text = std::max(kLeastWidth, widest.measured(measure));
    return std::min(text + marginOf(fieldOfColumn(doc, column).Type), measure.screenWidth() / 4);
}

} // namespace

void bestFit1(model::Document& doc, platform::Services& services, const TextMeasure& measure) {
    saveCell(doc, services);
    const platform::Freeze freeze(services.screen, doc);
    const CharacterWidths widths = widthsOf(measure);
    for (int column = 1; column < model::kScratchColumn; ++column)
        if (fieldOfColumn(doc, column).Type != FieldType::NotUsed)
            doc.grd.setColumnWidth(column, fittingWidth(doc, column, widths, measure));
    takeColumnLook(doc);
    doc.grd.setCell(firstRow(doc.grd), 1);
}

void bestFitColumn(model::Document& doc, platform::Services& services, const TextMeasure& measure, int column) {
    saveCell(doc, services);
    if (fieldOfColumn(doc, column).Type != FieldType::NotUsed)
        doc.grd.setColumnWidth(column, fittingWidth(doc, column, widthsOf(measure), measure));
    takeColumnLook(doc);
}

} // namespace tallybook::document
